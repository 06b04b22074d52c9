#!/usr/bin/env python3
"""Checks that every source is in a build list: a file that nothing compiles tests nothing.

A source is listed by its path in a CMakeLists.txt of its own folder, of one above
it or of one just below; the fuzz harness fuzz_<name>.cpp and the benchmark <room>_bench.cpp by
pxdutil_fuzz(name) and pxdutil_bench(room).
"""

import os
import pathlib
import re

import tree

_FOLDERS = ("pxdutil", "tools", "tests", "fuzz", "bench", "examples")


def _ways_to_list(source, folder):
    yield r"(?<![\w/.-])" + re.escape(os.path.relpath(source, folder).replace(os.sep, "/"))
    if harness := re.fullmatch(r"fuzz_(\w+)", source.stem):
        yield r"pxdutil_fuzz\(\s*" + harness[1]
    if bench := re.fullmatch(r"(\w+)_bench", source.stem):
        yield r"pxdutil_bench\(\s*" + bench[1]


def _is_listed(root, source):
    # Small projects side by side may share a source of the folder above them.
    lists = list(source.parent.glob("*/CMakeLists.txt"))
    lists += [folder / "CMakeLists.txt" for folder in source.parents if folder.is_relative_to(root)]
    for build_list in filter(pathlib.Path.is_file, lists):
        text = re.sub(r"#.*", "", build_list.read_text(encoding="utf-8"))
        for way in _ways_to_list(source, build_list.parent):
            if re.search(way + r"(?![\w.])", text):
                return True
    return False


def check(root):
    sources = tree.files(root, ".cpp", under=_FOLDERS)
    problems = [
        f"{source.relative_to(root)}: in no CMakeLists.txt"
        for source in sources
        if not _is_listed(root, source)
    ]
    return problems, len(sources)


if __name__ == "__main__":
    tree.report("sources", *check(tree.ROOT))
