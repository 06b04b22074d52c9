#!/usr/bin/env python3
"""Makes a program of a guide, so that the tests can compile and run what the guide shows.

All blocks marked `cpp` make one program, in their order: those that begin with #include, class,
struct or namespace stand outside of main(), the others are its body. What it prints must be the
blocks marked `text`, in their order. Messages of the compiler name the lines of the guide.
"""

import argparse
import pathlib
import re

_BLOCK = re.compile(r"^```(cpp|text)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
_OUTSIDE = re.compile(r"(?:#include|class|struct|namespace)\b")
_INCLUDES = "#include <pxdutil/pxdutil.h>\n#include <cstdio>\n#include <memory>\n#include <vector>\n"


def program_and_output(text, name):
    outside, inside, output = [], [], []
    for match in _BLOCK.finditer(text):
        kind, code = match.groups()
        if kind == "text":
            output.append(code)
            continue
        line = text.count("\n", 0, match.start(2)) + 1
        place = outside if _OUTSIDE.match(code) else inside
        place.append(f'#line {line} "{name}"\n{code}')
    program = _INCLUDES + "".join(outside) + "int main() {\n" + "".join(inside) + "}\n"
    return program, "".join(output)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("guide", type=pathlib.Path)
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    made = program_and_output(arguments.guide.read_text(encoding="utf-8"), arguments.guide.name)
    arguments.program.write_text(made[0], encoding="utf-8")
    arguments.output.write_text(made[1], encoding="utf-8")
