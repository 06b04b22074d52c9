#!/usr/bin/env python3
"""Checks that every test in the sources is known to ctest, so that none silently stops running.

Tests between #if and #endif are left out, since a build may rightly lack them.
"""

import argparse
import json
import pathlib
import re
import subprocess

import tree

_TEST = re.compile(
    r"^(?:TYPED_)?TEST(?:_[FP])?\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.MULTILINE
)


def tests_in(text):
    """The (suite, name) pairs that a source declares unconditionally."""
    kept = []
    depth = 0
    for line in text.splitlines():
        if re.match(r"\s*#\s*if", line):
            depth += 1
        elif re.match(r"\s*#\s*endif", line):
            depth -= 1
        elif depth == 0:
            kept.append(re.sub(r"//.*", "", line))
    return _TEST.findall("\n".join(kept))


def registered_tests(ctest, build):
    output = subprocess.run(
        [ctest, "--test-dir", build, "--show-only=json-v1"],
        capture_output=True,
        text=True,
        check=True,
    ).stdout
    return [test["name"] for test in json.loads(output)["tests"]]


def check(root, names):
    """`names` are the tests that ctest knows: Suite.Name, for the members of a parametrised or
    typed suite Instance/Suite.Name/member, Suite/member.Name or Suite.Name<member>."""
    plain = set()
    for name in names:
        if match := re.match(r"([\w/]+)\.(\w+)", name):
            plain.update((part, match[2]) for part in match[1].split("/"))
    problems = []
    looked_at = 0
    for path in tree.files(root, ".cpp", under=("tests",)):
        place = path.relative_to(root)
        if not path.stem.endswith("_test"):
            continue
        looked_at += 1
        declared = tests_in(path.read_text(encoding="utf-8"))
        if not declared:
            problems.append(f"{place}: declares no test")
        for suite, name in declared:
            if suite.startswith("DISABLED_") or name.startswith("DISABLED_"):
                problems.append(f"{place}: {suite}.{name} is disabled")
            elif (suite, name) not in plain:
                problems.append(f"{place}: {suite}.{name} is not registered")
    return problems, looked_at


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--ctest", default="ctest")
    arguments = parser.parse_args()
    tree.report("registered", *check(tree.ROOT, registered_tests(arguments.ctest, arguments.build)))
