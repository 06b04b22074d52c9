#!/usr/bin/env python3
"""Checks that no file names a place on somebody's machine, or puts work off with a mark.

A script that needs a folder for a moment takes it from the environment (${TMPDIR:-...}).
"""

import re

import tree

_RULES = [
    (
        re.compile(r"(?<![\w:.~-])/(?:home|Users|root|work|tmp|var/tmp)(?![\w-])|[A-Z]:\\Users\\"),
        "a path of one machine",
    ),
    (re.compile(r"\b(?:TO" r"DO|FIX" r"ME|XX" r"X)\b"), "work that was put off"),
]
# The rules themselves, and the tests that they hold.
_EXEMPT = {"scripts/checks/words.py", "scripts/checks/selftest.py"}


def check(root):
    problems = []
    looked_at = 0
    for path in tree.files(root):
        place = path.relative_to(root)
        if place.as_posix() in _EXEMPT or place.parts[:2] == ("fuzz", "corpus"):
            continue
        try:
            text = path.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue  # sample bytes
        looked_at += 1
        for number, line in enumerate(text.splitlines(), start=1):
            for rule, what in _RULES:
                if match := rule.search(line):
                    problems.append(f"{place}:{number}: {what}: {match[0]}")
    return problems, looked_at


if __name__ == "__main__":
    tree.report("words", *check(tree.ROOT))
