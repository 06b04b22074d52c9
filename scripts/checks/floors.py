#!/usr/bin/env python3
"""Checks that every folder of the library includes only what stands below it.

The library names its own headers as <pxdutil/...>, so they read the same in the tree and after
installation. Otherwise it takes nothing but the standard library, and in a source, never in a
header, the platform's own calls.
"""

import re

import tree

# For each folder, the folders that it may include besides itself. Every folder may take the version.
_TOWER = ["foundation", "sessions", "quotes", "reference", "fields", "datapoints", "history"]
BELOW = {room: set(_TOWER[:floor]) for floor, room in enumerate(_TOWER)}
BELOW["query"] = {"foundation", "sessions"}

_INCLUDE = re.compile(r'^\s*#\s*include\s*(?:<([^>]*)>|"([^"]*)")', re.MULTILINE)
_STANDARD_HEADER = re.compile(r"[a-z_]+\d*")  # <vector>, <cstdint>: no folder, no suffix
_PLATFORM_HEADERS = {"fcntl.h", "io.h", "sys/stat.h", "sys/types.h", "unistd.h", "windows.h"}


def _problem_with(room, is_source, quoted, name):
    if quoted:
        return f'"{name}": own headers are included as <pxdutil/...>'
    if not name.startswith("pxdutil/"):
        if _STANDARD_HEADER.fullmatch(name) or (is_source and name in _PLATFORM_HEADERS):
            return None
        return f"<{name}>: the library takes nothing but the standard library"
    parts = name.split("/")
    if len(parts) == 2:
        return None if name == "pxdutil/version.h" else f"<{name}>: for the library's users alone"
    if parts[1] != room and parts[1] not in BELOW[room]:
        return f"<{name}>: {parts[1]} doesn't stand below {room}"
    return None


def check(root):
    problems = []
    looked_at = 0
    for path in tree.files(root, ".h", ".cpp", ".inc", under=("pxdutil",)):
        place = path.relative_to(root)
        if len(place.parts) == 2:
            continue  # the umbrella and the version
        looked_at += 1
        room = place.parts[1]
        if room not in BELOW:
            problems.append(f"{place}: the folder {room} has no floor")
            continue
        text = path.read_text(encoding="utf-8")
        for match in _INCLUDE.finditer(text):
            quoted = match[2] is not None
            problem = _problem_with(
                room, path.suffix == ".cpp", quoted, match[2] if quoted else match[1]
            )
            if problem:
                line = text.count("\n", 0, match.start()) + 1
                problems.append(f"{place}:{line}: {problem}")
    return problems, looked_at


if __name__ == "__main__":
    tree.report("floors", *check(tree.ROOT))
