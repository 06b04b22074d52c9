#!/usr/bin/env python3
"""Checks that every declaration of the public headers has its comment, and counts those without.

What counts as a declaration's comment stands in declarations.py. No comment of their own need

- a class that the first paragraph of its header names, and what an `override` declares: both are
  told there and at the base;
- what is declared `= default` or `= delete`, and destructors that free what the class says it owns;
- what nobody outside can name or call: private members, pxd::detail, and whatever takes or gives a
  type of pxd::detail;
- specialisations, forward declarations, and definitions of what a class has declared before.
"""

import re

import declarations
import tree


def is_told_elsewhere(one, introduced):
    """`introduced` is the first paragraph of the header."""
    if not one.public or one.kind == "other" or one.is_outside or one.plain_name.startswith("~"):
        return True
    if one.kind in ("class", "macro"):
        is_specialised = [token.text for token in one.tokens[:3]] == ["template", "<", ">"]
        return is_specialised or bool(re.search(rf"\b{one.plain_name}\b", introduced))
    last = [token.text for token in one.tokens[-2:]]
    return last in (["=", "default"], ["=", "delete"]) or one.has("override", "detail")


def without_comment(text):
    introduced = declarations.opening_comment(text).split("\n\n")[0]
    declared = declarations.of(text)
    told = {one.name for one in declared if one.placed and one.kind == "macro"}
    return [
        one
        for one in declared
        if not one.placed and one.name not in told and not is_told_elsewhere(one, introduced)
    ]


def check(root):
    problems = []
    looked_at = 0
    for header in tree.public_headers(root):
        text = (root / header).read_text(encoding="utf-8")
        looked_at += len([one for one in declarations.of(text) if one.public])
        problems += [
            f"{header}:{one.line}: {one.kind} {one.name} has no comment"
            for one in without_comment(text)
        ]
    return problems, looked_at


if __name__ == "__main__":
    tree.report("comments", *check(tree.ROOT))
