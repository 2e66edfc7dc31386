#!/usr/bin/env python3
"""The binary interface of the two libraries as a list of lines: what libfinites.so exports, what it asks of the common
library, what those routines and those of Tarnix take, the type, offset and size of every field of its records, the
number behind every name of fields.h; of the plain calls of libfinites_elements.so what they take and return, the fields
of their structs, their codes.

    script/abi.py --check     the list is that of script/abi.txt
    script/abi.py --write     writes script/abi.txt

A line that goes or changes breaks callers that were compiled before, and a service that is added breaks common
libraries that do not have it: the soname (SOVERSION in src/CMakeLists.txt, of the plain calls in src/plain_calls)
rises with either. Any other line that is added breaks nobody, an optional service among them, nor does a service that
is no longer asked for.
"""
import argparse
import difflib
import pathlib
import re
import subprocess
import sys
import tempfile

import headers

LIBRARY = pathlib.Path("build/release/lib/libfinites.so")
PLAIN_LIBRARY = pathlib.Path("build/release/lib/libfinites_elements.so")
KEPT = pathlib.Path("script/abi.txt")
CONTRACT = pathlib.Path("include/finites")
TARNIX = pathlib.Path("companions/tarnix/tarnix.h")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def soname(library):
    return re.search(r"\(SONAME\).*\[(.+)\]", output_of("readelf", "--dynamic", "--wide", library)).group(1)


def symbols(kind):
    return [line.split()[-1] for line in output_of("nm", "--dynamic", kind, LIBRARY).splitlines()]


def asked_services():
    """Undefined symbols that services.h or records.h declares; those of the C and C++ libraries carry a version. A weak
    one is optional: the library works without it."""
    declared = set(re.findall(r"\w+", (CONTRACT / "services.h").read_text() + (CONTRACT / "records.h").read_text()))
    for line in output_of("nm", "--dynamic", "--undefined-only", LIBRARY).splitlines():
        kind, name = line.split()[-2:]
        if name in declared:
            yield f"optional service {name}" if kind in "wv" else f"service {name}"


def layout():
    text = (CONTRACT / "record_layout.h").read_text()
    for record, size in re.findall(r"\bRECORD\((\w+), (\d+)\)", text):
        yield f"record {record}: {size} bytes"
    for record, field, offset, size in re.findall(r"\bFIELD\((\w+), (\w+), (\d+), (\d+)\)", text):
        yield f"field {record}.{field}: {size} bytes at {offset}"


def types():
    """A field that another one of its width replaces keeps its place: what it holds tells them apart. A field that fits
    into a gap moves none, and the compiler misses none of which record_layout.h does not know."""
    layout_list = (CONTRACT / "record_layout.h").read_text()
    for struct in headers.structs(CONTRACT / "records.h"):
        for field in struct.fields:
            if struct.name != "ARRAY_DIMENSION" and not re.search(rf"\({struct.name}, {field.name}, ", layout_list):
                raise SystemExit(f"record_layout.h does not list {struct.name}.{field.name}")
            yield f"type of {struct.name}.{field.name}: {argument_text(field)}"


def routines():
    for path in (CONTRACT / "finites.h", CONTRACT / "services.h", TARNIX):
        for function in headers.functions(path):
            arguments = ", ".join(map(argument_text, function.arguments))
            yield f"routine {function.result} {function.name}({arguments})"


def codes():
    text = (CONTRACT / "fields.h").read_text() + (CONTRACT / "thickness_rule.h").read_text()
    for name, value in re.findall(r"^FINITES_(?:CODE|NUMBER)\((\w+), ([^)]+)\);", text, re.MULTILINE):
        yield f"code {name}: {value}"


def plain_layout():
    """As the compiler has it: the headers of plain calls have no list of their own."""
    structs = [struct for name in headers.PLAIN for struct in headers.structs(CONTRACT / name)]
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "layout.c"
        source.write_text("\n".join(headers.layout_program(headers.PLAIN, [(s, s.name) for s in structs])) + "\n")
        program = pathlib.Path(folder) / "layout"
        output_of("gcc", f"-I{CONTRACT.parent}", source, "-o", program)
        places = output_of(program)
    for name, *numbers in map(str.split, places.splitlines()):
        if len(numbers) == 1:
            yield f"struct {name}: {numbers[0]} bytes"
        else:
            yield f"field {name.replace('%', '.')}: {numbers[1]} bytes at {numbers[0]}"


def argument_text(argument):
    extents = "".join(f"[{'' if n is None else n}]" for n in argument.extents)
    stars = "*" * (argument.stars - (None in argument.extents))
    return f"{'const ' if argument.constant else ''}{argument.type}{stars}{extents}"


def plain_calls():
    for name in headers.PLAIN:
        for function in headers.functions(CONTRACT / name):
            arguments = ", ".join(map(argument_text, function.arguments))
            yield f"plain {function.result} {function.name}({arguments})"
        for code, value in headers.codes(CONTRACT / name):
            yield f"code {code}: {value}"


def interface():
    lines = [f"export {name}" for name in symbols("--defined-only")]
    lines += asked_services()
    lines += [*layout(), *types(), *routines(), *codes(), *plain_layout(), *plain_calls(), f"soname {soname(PLAIN_LIBRARY)}"]
    return [f"soname {soname(LIBRARY)}", *sorted(lines)]


def check(lines):
    kept = KEPT.read_text().splitlines()
    if kept == lines:
        return 0
    print("\n".join(difflib.unified_diff(kept, lines, str(KEPT), "built", lineterm="", n=0)))
    services = ("service ", "optional service ")
    breaking = {line for line in set(kept[1:]) - set(lines[1:]) if not line.startswith(services)}
    breaking |= {line for line in set(lines[1:]) - set(kept[1:]) if line.startswith("service ")}
    if breaking and kept[0] == lines[0]:
        print(f"{len(breaking)} of these lines break what was compiled before: raise SOVERSION")
    print("script/abi.py --write takes the new interface over")
    return 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    choice = parser.add_mutually_exclusive_group(required=True)
    choice.add_argument("--check", action="store_true")
    choice.add_argument("--write", action="store_true")
    lines = interface()
    if parser.parse_args().check:
        return check(lines)
    KEPT.write_text("\n".join(lines) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())
