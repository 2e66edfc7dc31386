#!/usr/bin/env python3
"""Runs a program that stands in a document and compares what it prints with the block of text behind it.

    run.py DOCUMENT LANGUAGE INCLUDE LIBRARIES [-- command of the compiler or interpreter]

The first block of the language is the program, the next one (text) its output. Programs are compiled with the headers
of INCLUDE and linked with libfinites_elements of LIBRARIES; a program of Python runs as it is.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

SUFFIX = {"c": "c", "cpp": "cpp", "fortran": "f90", "python": "py"}


def program_of(document, language):
    text = pathlib.Path(document).read_text(encoding="utf-8")
    found = re.search(rf"^```{language}\n(.*?)^```\n+```text\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    if not found:
        sys.exit(f"{document} has no block of {language} with its output behind it")
    return found.groups()


def output_of(language, program, include, libraries, tool):
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder, f"program.{SUFFIX[language]}")
        source.write_text(program, encoding="utf-8")
        if language == "python":
            run = [*tool, source]
        else:
            run = [pathlib.Path(folder, "program")]
            extra = [pathlib.Path(include, "finites", "finites.f90")] if language == "fortran" else []
            subprocess.run([*tool, *extra, source, f"-I{include}", f"-L{libraries}", "-lfinites_elements", "-lfinites",
                            "-lTarnix", f"-Wl,-rpath,{libraries}", "-lm", "-o", *run], check=True, cwd=folder)
        return subprocess.run(run, check=True, stdout=subprocess.PIPE, text=True, env=os.environ).stdout


document, language, include, libraries, *tool = [word for word in sys.argv[1:] if word != "--"]
program, expected = program_of(document, language)
printed = output_of(language, program, include, libraries, tool)
if printed.split() != expected.split():
    sys.exit(f"the document says\n{expected}but the program prints\n{printed}")
