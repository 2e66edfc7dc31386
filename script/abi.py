#!/usr/bin/env python3
"""The binary interface of the library as a list of lines: what it exports, what it asks of the common library, the
offset and size of every field of its records, the number behind every name of fields.h.

    script/abi.py --check     the list is that of script/abi.txt
    script/abi.py --write     writes script/abi.txt

A line that goes or changes breaks callers that were compiled before, and a service that is added breaks common
libraries that do not have it: the soname (SOVERSION in src/CMakeLists.txt) rises with either. Any other line that is
added breaks nobody, an optional service among them, nor does a service that is no longer asked for.
"""
import argparse
import difflib
import pathlib
import re
import subprocess
import sys

LIBRARY = pathlib.Path("build/release/lib/libfinites.so")
KEPT = pathlib.Path("script/abi.txt")
CONTRACT = pathlib.Path("include/finites")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def soname():
    return re.search(r"\(SONAME\).*\[(.+)\]", output_of("readelf", "--dynamic", "--wide", LIBRARY)).group(1)


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


def codes():
    text = (CONTRACT / "fields.h").read_text()
    for name, value in re.findall(r"^FINITES_(?:CODE|NUMBER)\((\w+), ([^)]+)\);", text, re.MULTILINE):
        yield f"code {name}: {value}"


def interface():
    lines = [f"export {name}" for name in symbols("--defined-only")]
    lines += asked_services()
    lines += [*layout(), *codes()]
    return [f"soname {soname()}", *sorted(lines)]


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
