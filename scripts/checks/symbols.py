#!/usr/bin/env python3
"""Checks that the shared library exports what is public and nothing else.

Every function, object, vtable and type description that it exports stands in pxdutil/symbols.txt,
demangled, vtables with their size; a change to it is a change to what users link with. Inline
functions and the constants of templates are left out of the list, since it is the compiler's choice
which of them get a copy, but they too may only be of names that a public header has.

  symbols.py LIBRARY           compares
  symbols.py LIBRARY --write   writes the list
  symbols.py LIBRARY --static LIBRARY.a --users FOLDER
                               also looks whether the shared library has all of the static one that
                               the object files below FOLDER take from it
"""

import argparse
import difflib
import pathlib
import re
import subprocess

import tree

LIST = "pxdutil/symbols.txt"

# One pool for the whole process; see pxdutil/pxdutil.map.
_SHARED_WITH_ALL = {"std::__detail::__waiter_pool_base::_S_for(void const*)::__w"}
# Kinds of nm that it is the compiler's choice to make: weak functions and unique objects.
_CHOSEN = {"W", "u"}


def read_symbols(library, nm="nm"):
    """The (kind, demangled name, size) of everything that the library exports."""
    output = subprocess.run(
        [nm, "-D", "-S", "--defined-only", "-C", str(library)],
        capture_output=True,
        text=True,
        check=True,
    ).stdout
    rows = re.findall(r"^[0-9a-f]+ (?:([0-9a-f]+) )?(\w) (.+)$", output, re.MULTILINE)
    return [(kind, name, int(size or "0", 16)) for size, kind, name in rows]


def line_of(kind, name, size):
    return f"{name}, {size} bytes" if name.startswith("vtable for ") or kind in "BDR" else name


def owner(name):
    """The outermost name that a symbol belongs to, but for the namespace pxd."""
    name = re.sub(r"^(?:vtable for|typeinfo for|typeinfo name for|guard variable for) ", "", name)
    name = re.sub(r"^(?:non-)?virtual thunk to ", "", name)
    # A return type stands ahead of a template function's name.
    name = re.sub(r"^[\w:]+(?:<[^()]*>)?[&* ]+(?=[\w:]+[<(])", "", name)
    name = re.split(r"[<(\[*]", name)[0]
    parts = name.removeprefix("pxd::").split("::")
    return "::".join(parts[:2]) if parts[0] == "detail" else parts[0]


def check(symbols, listed, public_words):
    """`public_words` are all words of the public headers, and what they name of pxd::detail, which
    public classes derive from."""
    problems = []
    found = set()
    for kind, name, size in symbols:
        if name in _SHARED_WITH_ALL:
            continue
        if owner(name) not in public_words:
            problems.append(f"{name}: exported, and in no public header")
        elif kind not in _CHOSEN:
            found.add(line_of(kind, name, size))
    difference = difflib.unified_diff(sorted(listed), sorted(found), LIST, "library", lineterm="", n=0)
    problems += [line for line in difference if line[:1] in "+-" and line[:3] not in ("+++", "---")]
    return problems, len(symbols), found


def names_in(files, *options, nm="nm"):
    """The decorated names that nm lists of these files."""
    output = subprocess.run(
        [nm, "--format=just-symbols", *options, *map(str, files)],
        capture_output=True,
        text=True,
        check=True,
    ).stdout
    return {line for line in output.splitlines() if line and not line.endswith(":")}


def missing(used, in_static, in_shared, public_words, filt=None):
    """What users of the public headers take from the static library and the shared one lacks. What
    only private headers declare is no concern of theirs."""
    lacking = sorted(used & in_static - in_shared)
    if not lacking:
        return []
    names = (filt or demangled)(lacking)
    return [f"{name}: used, and not exported" for name in names if owner(name) in public_words]


def demangled(names):
    return subprocess.run(
        ["c++filt"], input="\n".join(names), capture_output=True, text=True, check=True
    ).stdout.splitlines()


def words_of_public_headers(root):
    text = "".join((root / header).read_text(encoding="utf-8") for header in tree.public_headers(root))
    text = re.sub(r"//.*", "", text)
    return set(re.findall(r"detail::\w+|\w+", text)) - {"std", "gnu"}


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("library", type=pathlib.Path)
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--write", action="store_true")
    parser.add_argument("--static", type=pathlib.Path)
    parser.add_argument("--users", type=pathlib.Path)
    arguments = parser.parse_args()
    path = tree.ROOT / LIST
    known = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    symbols = read_symbols(arguments.library, arguments.nm)
    public = words_of_public_headers(tree.ROOT)
    problems, looked_at, found = check(symbols, known, public)
    if arguments.users:
        # Consumers that take the sources in build the library there too; it may use its own insides.
        files = [f for f in arguments.users.rglob("*.o") if "pxdutil_objects.dir" not in f.parts]
        used = names_in(files, "-u", nm=arguments.nm)
        if not used:
            problems.append(f"{arguments.users}: no object file is there")
        in_static = names_in([arguments.static], "--defined-only", nm=arguments.nm)
        in_shared = names_in([arguments.library], "-D", "--defined-only", nm=arguments.nm)
        problems += missing(used, in_static, in_shared, public)
    if arguments.write:
        path.write_text("".join(f"{line}\n" for line in sorted(found)), encoding="utf-8")
        problems = [problem for problem in problems if problem[0] not in "+-"]
    tree.report("symbols", problems, looked_at)
