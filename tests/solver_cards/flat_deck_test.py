#!/usr/bin/env python3
"""A deck written by --write gives the answers of the deck that it was made from: every table of every step, to 1e-12 of
the largest value of the columns of one kind, and what it prints, to the last digit.

    flat_deck_test.py SOLVER [DECK ...]      without decks: those of decks, decks/cards and decks/exports
"""
import concurrent.futures
import csv
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLES = ("csv", "members", "stations", "stresses", "solids", "curve", "events", "section-points")
TOLERANCE = 1e-12
# Columns that share a unit: what is rounding in one of them is measured by the others. Every other column stands alone.
KINDS = (r"u[xyz]$|displacement_max$", r"r[xyz]$", r"(force_[xyz]|N|V[yz])(_min|_max)?$", r"(moment_[xyz]|T|M[yz])(_min|_max)?$",
         r"(s[xyz]{1,2}|first|second|third|von_mises)(_|$)",
         r"(axial|bending|stress|shear_[12])$")
# Paths of shells that yield: they take minutes. Their decks are written and read all the same.
# What --write refuses by name, as solver/README.md tells.
REFUSED = ("--write writes conditions as *EQUATION: the arm of this one would no longer turn",)
# Quadratic elements stand in a flat deck as the linear ones that they are read as, or into which --refine divides them.
PARTS = re.compile(r"(are read as \d+ \w+, \w+ each|is read as \d+ \w+(,|$))", re.MULTILINE)
SURFACES = ("top", "mid", "bot")  # in rows of printed tables
SLOW = ("plastic_circle", "plastic_square")


def run(solver, *words):
    variables = {**os.environ, "OPENBLAS_NUM_THREADS": "1"}
    return subprocess.run([str(solver), *map(str, words)], env=variables, text=True, capture_output=True, check=False)


def solve(solver, deck, folder, more=()):
    folder.mkdir()
    options = [word for name in TABLES for word in (f"--{name}", folder / f"{name}.csv")]
    return run(solver, deck, "-o", folder / "deck.vtu", *options, *more)


def columns(path):
    with open(path, newline="") as file:
        rows = list(csv.reader(file))
    return rows[0], [[number(row[i]) for row in rows[1:]] for i in range(len(rows[0]))]


def number(text):
    try:
        return float(text)
    except ValueError:
        return text


def size_of(heads, values, head):
    """The largest number in the columns of the same kind."""
    kind = next((k for k in KINDS if re.match(k, head)), None)
    alike = [column for name, column in zip(heads, values) if (re.match(kind, name) if kind else name == head)]
    return max((abs(v) for column in alike for v in column if isinstance(v, float)), default=0)


def difference(first, second, largest):
    """What two columns do not share; None where they agree."""
    if len(first) != len(second):
        return f"{len(first)} and {len(second)} rows"
    for a, b in zip(first, second):
        both = isinstance(a, float) and isinstance(b, float)
        if a != b and not (both and abs(a - b) <= TOLERANCE * largest):
            return f"{a!r} and {b!r}, the largest being {largest!r}"
    return None


def is_nowhere(heads, values, head):
    """The place of the largest of values that are all rounding."""
    of = head[:-3]
    if not head.endswith("_at") or of not in heads:
        return False
    largest = max((abs(v) for v in values[heads.index(of)] if isinstance(v, float)), default=0)
    return largest <= TOLERANCE * size_of(heads, values, of)


def table_faults(first, second, parts=False):
    """`parts`: the second deck has other elements and more nodes, which its tables name."""
    names = sorted(path.name for path in first.iterdir() if path.suffix == ".csv")
    if names != sorted(path.name for path in second.iterdir() if path.suffix == ".csv"):
        yield "the two runs leave different tables"
        return
    for name in names:
        (heads, one), (others, two) = columns(first / name), columns(second / name)
        if heads != others:
            yield f"{name}: other columns"
            continue
        if parts:
            if heads[0] != "node":
                continue
            kept = [i for i, node in enumerate(two[0]) if node in one[0]]
            two = [[column[i] for i in kept] for column in two]
        # Angles and principal axes of states that are the same in all directions hang on the last digit.
        for head, a, b in zip(heads, one, two):
            wrong = None if head.startswith("angle_") or is_nowhere(heads, one, head) else difference(a, b, size_of(heads, one, head))
            if wrong:
                yield f"{name}: {head}: {wrong}"


def printed_blocks(path):
    """The tables of a .dat file: heading and rows, of which an empty line is the end."""
    blocks, rows = [], []
    for line in path.read_text().splitlines():
        words = [number(word) for word in line.split()]
        if any(isinstance(word, str) and word not in SURFACES for word in words):
            blocks.append((line.split(), rows := []))
        elif words:
            rows.append(words)
    return blocks


def print_faults(first, second):
    """Both runs print the same tables; their seven digits may differ by one in the last."""
    one, two = (sorted(folder.glob("*.dat")) for folder in (first, second))
    if len(one) != len(two):
        yield "one run prints tables, the other does not"
        return
    for path, other in zip(one, two):
        blocks, others = printed_blocks(path), printed_blocks(other)
        if [heading for heading, _ in blocks] != [heading for heading, _ in others]:
            yield f"{path.name}: other tables"
            continue
        for (heading, rows), (_, more) in zip(blocks, others):
            largest = max((abs(v) for row in rows for v in row if isinstance(v, float)), default=0)
            wrong = [(a, b) for a, b in zip(rows, more) if not is_same_row(a, b, largest)]
            if wrong or len(rows) != len(more):
                yield f"{path.name}: {' '.join(heading)}: {wrong[0] if wrong else 'other rows'}"


def is_same_row(first, second, largest):
    def same(a, b):
        both = isinstance(a, float) and isinstance(b, float)
        return a == b or (both and abs(a - b) <= 2e-6 * max(abs(a), abs(b)) + 1e-9 * largest)

    return len(first) == len(second) and all(same(a, b) for a, b in zip(first, second))


def faults_of(solver, deck):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        flat, again = folder / "flat.inp", folder / "again.inp"
        options = re.findall(r"^\*\* run with +(.*)$", deck.read_text(errors="replace"), re.MULTILINE)
        refine = [word for word in " ".join(options).split() if word == "--refine"]
        written = run(solver, deck, "--write", flat, *refine)
        if written.returncode == 1 and "** expect error" in deck.read_text(errors="replace"):
            return [f"{deck.name}: refused, and written all the same"] if flat.exists() else []
        if written.returncode == 1 and any(text in written.stderr for text in REFUSED):
            return [f"{deck.name}: refused, and written all the same"] if flat.exists() else []
        if written.returncode != 0:
            return [f"{deck.name}: not written: {written.stderr}"]
        rewritten = run(solver, flat, "--write", again)
        if rewritten.returncode != 0:
            return [f"{deck.name}: the flat deck is refused: {rewritten.stderr}"]
        if deck.name.startswith(SLOW):
            return []
        first, second = solve(solver, deck, folder / "first", refine), solve(solver, flat, folder / "second")
        if first.returncode != second.returncode:
            return [f"{deck.name}: exit status {first.returncode}, then {second.returncode}: {second.stderr}"]
        if first.returncode != 0:
            return []
        parts = refine or PARTS.search(written.stderr)
        faults = list(table_faults(folder / "first", folder / "second", parts))
        if not parts:
            faults += print_faults(folder / "first", folder / "second")
        return [f"{deck.name}: {fault}" for fault in faults]


def main():
    solver = pathlib.Path(sys.argv[1]).resolve()
    named = [pathlib.Path(word) for word in sys.argv[2:]]
    decks = named or sorted(deck for folder in ("decks", "decks/cards", "decks/exports") for deck in (ROOT / folder).glob("*.inp"))
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = list(pool.map(lambda deck: faults_of(solver, deck), decks))
    found = [fault for faults in results for fault in faults]
    print(*found, sep="\n", end="\n" if found else "")
    print(f"flat_deck_test.py: {len(decks)} decks, {len(found)} faults")
    return 1 if found or not decks else 0


if __name__ == "__main__":
    sys.exit(main())
