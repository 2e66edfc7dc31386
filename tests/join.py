"""Writes one source out of several files of tests, so that the compiler reads their headers once.

    join.py joined.cpp a_test.cpp b_test.cpp ...

The includes at the heads of the files come first, those of what is tested before those of the tests, then each file in
a namespace of its own, since files of tests use the same short names for different things; the namespace without a name
in it keeps what they define to themselves. Messages and failures name the files and lines that people edit.
"""
import pathlib
import re
import sys

HEAD = re.compile(r"\s*(//.*)?$|#include ")


def parts(path):
    """The includes at the head of a file, and its text with empty lines in their places."""
    lines = pathlib.Path(path).read_text().splitlines()
    head = next((i for i, line in enumerate(lines) if not HEAD.match(line)), len(lines))
    includes = [line for line in lines[:head] if line.startswith("#include")]
    return includes, [""] * head + lines[head:]


def joined(paths):
    includes, bodies = {}, []
    for path in paths:
        own, body = parts(path)
        includes.update(dict.fromkeys(own))
        name = re.sub(r"\W", "_", pathlib.Path(path).stem)
        bodies += [f"namespace joined_{name} {{\nnamespace {{", f'#line 1 "{path}"', *body, "}\n}"]
    # Headers of tests declare short names that are arguments in those of the library.
    includes = sorted(includes, key=lambda line: "/" not in line)
    return "\n".join([*includes, *bodies, ""])


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_text(joined(sys.argv[2:]))
