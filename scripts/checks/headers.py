#!/usr/bin/env python3
"""Checks that every public header compiles alone, and that the umbrella includes each of them.

Each header is included twice in an otherwise empty source, which its guard must stand; no two
headers may have the same guard, or one of them would vanish. With --write the umbrella's list is
written anew, floor by floor.
"""

import argparse
import concurrent.futures
import os
import re
import subprocess

import floors
import tree

_UMBRELLA = "pxdutil/pxdutil.h"
_FLAGS = ["-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Werror"]


def compile_alone(root, header, compiler):
    source = f"#include <{header}>\n#include <{header}>\n"
    result = subprocess.run(
        [compiler, *_FLAGS, f"-I{root}", "-x", "c++", "-"],
        input=source,
        capture_output=True,
        text=True,
        check=False,
    )
    if result.returncode == 0:
        return []
    return [f"{header}: doesn't compile alone\n{result.stderr.rstrip()}"]


def check_umbrella(root, headers):
    path = root / _UMBRELLA
    text = path.read_text(encoding="utf-8") if path.is_file() else ""
    included = re.findall(r"^#include <(pxdutil/[^>]*)>", text, re.MULTILINE)
    problems = [
        f"{_UMBRELLA}: lacks #include <{name}>" for name in sorted(set(headers) - set(included))
    ]
    problems += [
        f"{_UMBRELLA}: includes {name}, which is no public header"
        for name in sorted(set(included) - set(headers))
    ]
    return problems


def write_umbrella(root, headers):
    rooms = list(floors.BELOW)
    groups = [[name for name in headers if name.split("/")[1] == room] for room in rooms]
    groups.append([name for name in headers if name.count("/") == 1])
    listing = "\n\n".join(
        "\n".join(f"#include <{name}>" for name in group) for group in groups if group
    )
    (root / _UMBRELLA).write_text(
        "// Every public header of the library, floor by floor.\n"
        f"#ifndef PXDUTIL_PXDUTIL_H\n#define PXDUTIL_PXDUTIL_H\n\n{listing}\n\n#endif\n",
        encoding="utf-8",
    )


def check_guards(root, headers):
    problems = []
    owner = {}
    for header in headers:
        text = (root / header).read_text(encoding="utf-8")
        guard = re.search(r"^#ifndef (\w+)\n#define \1\n", text, re.MULTILINE)
        if guard is None:
            problems.append(f"{header}: has no include guard")
        elif guard[1] in owner:
            problems.append(f"{header}: has the guard of {owner[guard[1]]}")
        else:
            owner[guard[1]] = header
    return problems


def check(root, compiler):
    headers = tree.public_headers(root)
    problems = check_umbrella(root, headers) + check_guards(root, headers)
    jobs = int(os.environ.get("PXD_JOBS", "2"))
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for found in pool.map(lambda name: compile_alone(root, name, compiler), headers):
            problems += found
    return problems, len(headers)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--compiler", default=os.environ.get("CXX", "c++"))
    parser.add_argument("--write", action="store_true", help="write the umbrella anew")
    arguments = parser.parse_args()
    if arguments.write:
        write_umbrella(tree.ROOT, tree.public_headers(tree.ROOT))
    tree.report("headers", *check(tree.ROOT, arguments.compiler))
