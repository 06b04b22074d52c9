"""What the checks share: the files of the tree, and how a check reports."""

import os
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]

_SKIPPED_FOLDERS = {".git", ".cache", "__pycache__"}


def files(root, *suffixes, under=()):
    """The tree's files with these suffixes (all files without any), as sorted paths."""
    found = []
    for folder, folders, names in os.walk(root):
        folders[:] = [
            name
            for name in folders
            if name not in _SKIPPED_FOLDERS
            and not (pathlib.Path(folder) == pathlib.Path(root) and name.startswith("build"))
        ]
        found += [pathlib.Path(folder) / name for name in names if name != ".git"]
    return sorted(
        path
        for path in found
        if (not suffixes or path.suffix in suffixes)
        and (not under or path.relative_to(root).parts[0] in under)
    )


def public_headers(root):
    """Every header of the library as it is included, but the umbrella and those in detail/."""
    return [
        path.relative_to(root).as_posix()
        for path in files(root, ".h", under=("pxdutil",))
        if "detail" not in path.relative_to(root).parts and path.name != "pxdutil.h"
    ]


def report(name, problems, looked_at):
    """Prints what is wrong and ends the process. A check that looked at nothing has failed too."""
    for problem in problems:
        print(problem)
    if not looked_at:
        print("there was nothing to look at")
    failed = bool(problems) or not looked_at
    print(f"{name}: {looked_at} looked at, {len(problems)} problems")
    sys.exit(1 if failed else 0)
