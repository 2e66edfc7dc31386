#!/usr/bin/env python3
"""The works of docs/references.md and their citations by author and year, "Katili (1993)" or "(Batoz and Tahar, 1982)":
each citation in code, decks and documents has an entry, and each entry is cited."""
import pathlib
import re
import subprocess
import sys

ENTRIES = pathlib.Path("docs/references.md")
KINDS = ("*.md", "*.h", "*.hpp", "*.cpp", "*.c", "*.f90", "*.py", "*.inp", "*.expect", "*.js", "CMakeLists.txt")
YEAR = r"(1[89]\d\d|20[0-2]\d)"
# The year in brackets of its own, or within brackets behind the authors.
CITATION = re.compile(rf"\b([A-Z][\w-]*[a-z](?:'s)?|NAFEMS)(?: \({YEAR}\)|,? {YEAR}(?=[);,]| and [A-Z]))")
NO_AUTHORS = {"Fortran"}  # with a year, but no work


def running(text):
    """A text without its ends of lines and the marks of comments that begin the next line."""
    return re.sub(r"\s*\n\s*(?:///?|#+|\*\*?|!+>?)?[ \t]*", " ", text)


def entries():
    """(first line of the entry, year, words of authors and title)"""
    for entry in re.split(r"^- ", ENTRIES.read_text(), flags=re.MULTILINE)[1:]:
        entry = running(entry.split("\n\n")[0])
        year = re.search(rf"\({YEAR}\)", entry)
        if year is None:
            raise SystemExit(f"{ENTRIES}: an entry has no year in brackets: {entry[:60]}")
        yield f"{entry[:year.end()]}", year.group(1), set(re.findall(r"[\w-]+", entry))


def citations():
    names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", *KINDS], check=True,
                           text=True, stdout=subprocess.PIPE).stdout.split()
    for path in map(pathlib.Path, names):
        if path != ENTRIES and path.exists():
            for word, *years in CITATION.findall(running(path.read_text())):
                word = word.removesuffix("'s")
                if word not in NO_AUTHORS:
                    yield path, word, years[0] or years[1]


def main():
    works = list(entries())
    cited = set()
    bad = []
    for path, word, year in citations():
        found = {title for title, of_year, words in works if of_year == year and word in words}
        if not found:
            bad.append(f"{path}: {word} ({year}) has no entry in {ENTRIES}")
        cited |= found
    bad += [f"{ENTRIES}: nothing cites {title}" for title, *_ in works if title not in cited]
    print(*dict.fromkeys(bad), sep="\n", end="\n" if bad else "")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
