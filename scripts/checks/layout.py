#!/usr/bin/env python3
"""Checks that no public class has changed its size: programs that were compiled with another one
would read and write beside it.

The list is pxdutil/layout.txt, a line for each class and struct of the public headers with its size
and alignment on 64-bit Linux.

  layout.py --compiler g++           compares
  layout.py --compiler g++ --write   writes the list
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import tempfile

import tree

LIST = "pxdutil/layout.txt"

_NAMESPACE = re.compile(r"^namespace ([\w:]*) ?\{")
_END = re.compile(r"^\}  // namespace")
_CLASS = re.compile(r"^(?:class|struct) (?:PXDUTIL_API )?(?:alignas\(\w+\) )?(\w+)(?: final)?(?: :.*)?\s*(?:\{.*)?$")
# What one name asks for is in the public headers as a template, and has no size of its own.
_TEMPLATE = re.compile(r"^template ?<")


def classes_in(text):
    """The qualified names of the classes and structs that a header defines, but for templates and
    those in a namespace detail."""
    found = []
    spaces = []
    lines = text.splitlines()
    for number, line in enumerate(lines):
        if match := _NAMESPACE.match(line):
            spaces.append(match[1])
        elif _END.match(line):
            spaces.pop()
        elif (match := _CLASS.match(line)) and not _TEMPLATE.match(lines[number - 1]):
            name = "::".join([*filter(None, spaces), match[1]])
            if "detail::" not in name:
                found.append(name)
    return found


def public_classes(root):
    names = set()
    for header in tree.public_headers(root):
        names.update(classes_in((root / header).read_text(encoding="utf-8")))
    return sorted(names)


def measured(compiler, root, names):
    rows = "".join(
        f'  std::printf("{name} %zu %zu\\n", sizeof({name}), alignof({name}));\n' for name in names
    )
    source = f"#include <cstdio>\n#include <pxdutil/pxdutil.h>\nint main() {{\n{rows}}}\n"
    with tempfile.TemporaryDirectory() as folder:
        program = pathlib.Path(folder) / "layout"
        subprocess.run(
            [compiler, "-std=c++20", "-x", "c++", "-", f"-I{root}", "-o", str(program)],
            input=source,
            text=True,
            check=True,
        )
        output = subprocess.run([program], capture_output=True, text=True, check=True).stdout
    return [
        "{}: {} bytes, aligned to {}".format(*line.rsplit(" ", 2)) for line in output.splitlines()
    ]


def check(listed, found):
    difference = difflib.unified_diff(listed, found, LIST, "headers", lineterm="", n=0)
    problems = [line for line in difference if line[:1] in "+-" and line[:3] not in ("+++", "---")]
    return problems, len(found)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--write", action="store_true")
    arguments = parser.parse_args()
    path = tree.ROOT / LIST
    found = measured(arguments.compiler, tree.ROOT, public_classes(tree.ROOT))
    if arguments.write:
        path.write_text("".join(f"{line}\n" for line in found), encoding="utf-8")
    known = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    tree.report("layout", *check(known, found))
