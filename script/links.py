#!/usr/bin/env python3
"""Relative links of the documents: each leads to a file of the tree, or to a heading where it names one. And their
lines, which end before column 120 but in tables.

The pages of docs/site have their place among the gathered documents: Sphinx looks at their links."""
import pathlib
import re
import subprocess
import sys

COLUMNS = 120

INLINE = re.compile(r"\]\(\s*([^)\s]+)(?:\s+[\"'][^)]*)?\)|<(?:img|a)\b[^>]*?(?:src|href)=[\"']([^\"']+)")
DEFINED = re.compile(r"^\[([^\]]+)\]: (\S+)$", re.MULTILINE)
NAMED = re.compile(r"\]\[([^\]]+)\]")
SHORTCUT = re.compile(r"\[([\w/]+\.(?:cpp|hpp|h|py|md))\](?![(:])")


def anchors(text):
    """The names by which the headings of a document can be reached."""
    text = re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)
    headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def faults(path):
    text = path.read_text()
    prose = re.sub(r"^```.*?^```$|`[^`\n]*`", "", text, flags=re.MULTILINE | re.DOTALL)
    defined = dict(DEFINED.findall(prose))
    for name in sorted({*SHORTCUT.findall(prose), *NAMED.findall(prose)} - set(defined)):
        yield f"{path}: [{name}] leads nowhere: the document does not define it"
    inline = [target or tagged for target, tagged in INLINE.findall(prose)]
    for target in inline + list(defined.values()):
        if re.match(r"[a-z]+:", target):
            continue
        name, _, heading = target.partition("#")
        place = path.parent / name if name else path
        if not place.exists():
            yield f"{path}: {target}: there is no such file"
        elif pathlib.Path.cwd() not in (place.resolve(), *place.resolve().parents):
            yield f"{path}: {target}: this leads out of the tree"
        elif heading and heading not in anchors(place.read_text()):
            yield f"{path}: {target}: {place.name} has no such heading"


def long_lines(path):
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if len(line) >= COLUMNS and not line.lstrip().startswith("|"):
            yield f"{path}:{number}: the line has {len(line)} characters, not less than {COLUMNS}"


listing = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.md", ":!docs/site"]
documents = subprocess.run(listing, check=True, text=True, stdout=subprocess.PIPE).stdout.split()
paths = [path for path in map(pathlib.Path, documents) if path.exists()]
found = [fault for path in paths for fault in (*faults(path), *long_lines(path))]
print(*found, sep="\n", end="\n" if found else "")
sys.exit(1 if found else 0)
