#!/usr/bin/env python3
"""Writes a header with its comments in the form that Doxygen reads; docs/Doxyfile.in calls it.

The headers carry plain comments (scripts/checks/declarations.py says which belongs to what). Here a
comment above becomes ///, one behind ///<, and the declarations of a group each get their comment
once more. Every declaration stays on its line, so that Doxygen's warnings point to the header.
"""

import pathlib
import re
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent / "checks"))

import declarations  # noqa: E402

_CODE_INDENT = "   "  # what a comment indents by this much is code, or a table


def _escaped(line):
    """The words of a comment, without what Doxygen would take for commands, tags or links."""
    parts = line.split("`")
    for place in range(0, len(parts), 2):
        parts[place] = re.sub(r"([\\@<>#&%*~])", r"\\\1", parts[place])
    if len(parts) % 2 == 0:  # a backtick without its twin
        parts[-2:] = [parts[-2] + "\\`" + parts[-1]]
    return "`".join(parts)


def _marked(lines, first="///", behind="///"):
    marked = []
    for place, line in enumerate(lines):
        words = " " * 5 + line if line.startswith(_CODE_INDENT) else _escaped(line)
        marked.append((behind if place else first) + words)
    return marked


def _flat(comment):
    """A whole comment within one line, behind which code may stand."""
    prose = [line.strip() for line in comment.split("\n") if not line.startswith(_CODE_INDENT)]
    return "/** " + _escaped(" ".join(filter(None, prose))).replace("*/", "* /") + " */ "


def _opening_paragraph(text, one):
    """What the header's first paragraph says of a class that has no comment of its own."""
    paragraph = " ".join(declarations.opening_comment(text).split("\n\n")[0].split())
    name, _, words = paragraph.partition(": ")
    return words[:1].upper() + words[1:] if name == one.plain_name else paragraph


def filtered(text):
    lines = text.split("\n")
    opening = declarations.opening_comment(text).split("\n")
    lines[: len(opening)] = _marked(opening, first="/// @opening")
    in_front = {}  # by line, the columns where a comment is put in
    for one in declarations.of(text):
        if not one.public or one.kind == "other" or one.is_outside:
            continue
        put = None
        if one.placed == "above":
            first, last = one.comment_lines[0], one.comment_lines[-1]
            if not lines[first - 1].lstrip().startswith("///"):
                indent = " " * (len(lines[first - 1]) - len(lines[first - 1].lstrip()))
                words = [re.sub(r"^\s*//", "", line).rstrip() for line in lines[first - 1 : last]]
                lines[first - 1 : last] = [indent + line for line in _marked(words)]
        for line in one.lines_behind:
            code, _, words = lines[line - 1].partition("//")
            if not words.startswith("/<"):
                lines[line - 1] = code + "///<" + _escaped(words)
        if one.placed in ("above", "behind"):
            continue
        if one.placed and not one.has("override"):
            put = _flat(one.comment)
        elif one.kind == "class":
            put = _flat(_opening_paragraph(text, one))
        if put and one.kind != "macro":
            in_front.setdefault(one.line, []).append((one.column, put))
    for line, places in in_front.items():
        for column, put in sorted(places, reverse=True):
            lines[line - 1] = lines[line - 1][:column] + put + lines[line - 1][column:]
    return "\n".join(lines)


if __name__ == "__main__":
    sys.stdout.write(filtered(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")))
