#!/usr/bin/env python3
"""Gathers the documents of the repository as one source of Sphinx: stage.py TARGET.

Documents keep their places. A link to a source file leads to a page that shows it; one to a folder becomes its name.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
LANGUAGES = {".c": "c", ".h": "cpp", ".hpp": "cpp", ".cpp": "cpp", ".f90": "fortran", ".py": "python"}
TARGET = re.compile(r"(\]\(|^\[[^\]]+\]: )([^)\s]+)(\)?)", re.MULTILINE)
FENCE = re.compile(r"(^```.*?^```$|`[^`\n]+`)", re.MULTILINE | re.DOTALL)


def page_of(path):
    """The page that shows a source file."""
    return pathlib.Path("sources") / f"{path}.md"


def relink(text, here, shown):
    """The text of a document of the folder `here`, its links turned; the files that they show are added to `shown`."""

    def turned(match):
        before, target, after = match.groups()
        name, _, heading = target.partition("#")
        if re.match(r"[a-z]+:", target) or not name:
            return match.group(0)
        path = pathlib.Path(os.path.relpath((ROOT / here / name).resolve(), ROOT))
        if path.suffix in (".md", ".png"):
            return match.group(0)
        if not (ROOT / path).is_file():
            sys.exit(f"{here}: {target}: a link to a folder or to nothing cannot be shown")
        shown.add(path)
        return f"{before}{os.path.relpath(page_of(path), here)}{after}"

    parts = FENCE.split(text)
    return "".join(part if i % 2 else TARGET.sub(turned, part) for i, part in enumerate(parts))


def show(path, target):
    """Writes the page of a source file."""
    text = (ROOT / path).read_text()
    page = target / page_of(path)
    page.parent.mkdir(parents=True, exist_ok=True)
    page.write_text(f"---\norphan: true\n---\n\n# {path.name}\n\n`{path}`\n\n"
                    f"````{LANGUAGES.get(path.suffix, 'text')}\n{text}````\n")


def main(target):
    shutil.rmtree(target, ignore_errors=True)
    shown = set()
    listed = subprocess.run(["git", "ls-files", "*.md", "*.png", ":!docs/site"], cwd=ROOT, check=True, text=True,
                            stdout=subprocess.PIPE).stdout.split()
    for name in map(pathlib.Path, listed):
        place = target / name
        place.parent.mkdir(parents=True, exist_ok=True)
        if name.suffix == ".png":
            shutil.copy(ROOT / name, place)
        else:
            place.write_text(relink((ROOT / name).read_text(), name.parent, shown))
    for page in sorted((ROOT / "docs/site").glob("*.md")):
        shutil.copy(page, target / page.name)
    for path in sorted(shown):
        show(path, target)


main(pathlib.Path(sys.argv[1]))
