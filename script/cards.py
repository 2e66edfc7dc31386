#!/usr/bin/env python3
"""Solves small decks whose comments say what the answers must be, and compares.

    cards.py [--solver PROGRAM] [--jobs N] [DECK ...]      without decks: those of decks/cards and decks/exports

Lines of a deck, each beginning with "** expect", or of the file NAME.expect beside NAME.inp, where the deck is to stay
as a program has exported it:

    ** expect TABLE step=S KEY=VALUE ... COLUMN = NUMBER within TOLERANCE ; where the number comes from
    ** expect frequency step=S mode=N = NUMBER within TOLERANCE ; source
    ** expect factor step=S mode=N = NUMBER within TOLERANCE ; source
    ** expect warning "text"          a warning holds the text
    ** expect no warning              there is none about the deck (those about options begin with --)
    ** expect error "text"            the deck is refused (exit status 1), and an error holds the text
    ** expect output "text"           the summary on the terminal holds the text
    ** expect dat "text"              the file of *NODE PRINT and its like holds the text
    ** run with --option ...          once: further options of finites-solve

TABLE is nodes, members, stations, stresses, solids, layers, reactions, conditions (their forces), modes (their masses),
points (of sections), curve or events: the tables of finites-solve, with their columns. The keys choose exactly one row;
a value that is no number is a name, without its blanks. `step` may be left out of a deck with one step.
TOLERANCE is a share of the number; with `abs` behind it, a difference. Texts are compared with every run of blanks as
one. A deck without such a line, a line that is not understood, a table, column or row that is not there: all fail.
Exit status 1 where anything does.
"""

import argparse
import concurrent.futures
import csv
import math
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLES = {"nodes": "--csv", "members": "--members", "stations": "--stations", "stresses": "--stresses",
          "solids": "--solids", "layers": "--layers", "reactions": "--reactions", "conditions": "--conditions",
          "modes": "--modes", "points": "--section-points", "curve": "--curve", "events": "--events"}
MODES = {"frequency", "factor"}  # in the table of --csv of a step that looks for modes
TEXTS = {"warning", "error", "output", "dat"}
LARGEST_SHARE = 0.2  # a wider tolerance tests nothing
TIME_LIMIT = 120  # seconds for a deck


class Fault(Exception):
    """What is wrong with a line, or with an answer."""


def number(text, what):
    try:
        value = float(text)
    except ValueError:
        raise Fault(f"{what} '{text}' is no number") from None
    if not math.isfinite(value):
        raise Fault(f"{what} {text} is not finite")
    return value


def tolerance_of(text, value):
    """'1e-6' or '1e-9 abs' as a largest difference."""
    fields = text.split()
    if len(fields) not in (1, 2) or (len(fields) == 2 and fields[1] != "abs"):
        raise Fault(f"'within {text}': expected a number, or a number and 'abs'")
    size = number(fields[0], "the tolerance")
    if size <= 0:
        raise Fault("a tolerance is above 0")
    if len(fields) == 1:
        if value == 0:
            raise Fault("a share of 0 is 0: give the tolerance with 'abs'")
        if size > LARGEST_SHARE:
            raise Fault(f"a tolerance of {size} tests nothing; the largest is {LARGEST_SHARE}")
        return size * abs(value)
    if value != 0 and size >= abs(value):
        raise Fault(f"an absolute tolerance of {size} lets 0 pass for {value}")
    return size


class Value:
    """A number in a table."""

    def __init__(self, table, text):
        rule, semicolon, source = text.partition(";")
        if not semicolon or not source.strip():
            raise Fault("where does the number come from? Write it after a semicolon")
        left, within, tolerance = rule.partition(" within ")
        if not within:
            raise Fault("expected '... = NUMBER within TOLERANCE ; source'")
        left, equals, wanted = left.rpartition("=")
        if not equals:
            raise Fault("expected '= NUMBER' before 'within'")
        self.table = table
        self.wanted = number(wanted.strip(), "the value")
        self.tolerance = tolerance_of(tolerance.strip(), self.wanted)
        self.keys, words = {}, []
        for key, name, word in re.findall(r"(\w+)\s*=\s*(\S+)|(\S+)", left):
            if word:
                words.append(word)
            elif key in self.keys:
                raise Fault(f"the key {key} stands twice")
            else:
                self.keys[key] = name
        if table in MODES:
            words.append(table)
            if "mode" not in self.keys:
                raise Fault("which mode? Write mode=1 or another")
        if len(words) != 1:
            raise Fault(f"expected one column before '= {wanted.strip()}', found {' '.join(words) or 'none'}")
        self.column = words[0]
        self.step = self.keys.pop("step", None)

    def check(self, answer):
        rows = answer.table("nodes" if self.table in MODES else self.table, self.step)
        columns = list(rows[0]) if rows else []
        if not rows:
            raise Fault(f"the table {self.table} has no rows")
        for name in [*self.keys, self.column]:
            if name not in columns:
                raise Fault(f"the table has no column {name}; it has {', '.join(columns)}")
        found = [row for row in rows if all(same(row[key], name) for key, name in self.keys.items())]
        if len(found) != 1:
            chosen = " ".join(f"{key}={name}" for key, name in self.keys.items()) or "no key"
            raise Fault(f"{len(found)} of {len(rows)} rows have {chosen}; expected exactly one")
        value = number(found[0][self.column], f"{self.column} of the answer:")
        if not abs(value - self.wanted) <= self.tolerance:
            apart = f", {value / self.wanted - 1:+.2e} of it" if self.wanted else ""
            raise Fault(f"{self.column} is {value!r}, expected {self.wanted!r} within {self.tolerance:.3g}: "
                        f"{value - self.wanted:+.3g} apart{apart}")


class Text:
    """A piece of what the program says."""

    def __init__(self, kind, text):
        quoted = re.fullmatch(r'"(.*\S.*)"', text.strip())
        if not quoted:
            raise Fault(f'expected {kind} "part of the text"')
        self.kind, self.wanted = kind, squeezed(quoted[1])

    def check(self, answer):
        lines = [squeezed(line) for line in answer.lines(self.kind)]
        if not any(self.wanted in line for line in lines):
            said = "\n".join(f"      {line}" for line in lines[:20]) or "      (nothing)"
            raise Fault(f'no {self.kind} has "{self.wanted}"; there is\n{said}')


class NoWarning:
    kind = "no warning"

    def check(self, answer):
        # All tables are asked for, whatever the deck has: what is said of options is not said of the deck.
        lines = [line for line in answer.lines("warning") if not line.startswith("warning: --")]
        if lines:
            raise Fault("there are warnings:\n" + "\n".join(f"      {line}" for line in lines[:20]))


def squeezed(text):
    return " ".join(text.split())


def same(cell, name):
    try:
        return math.isclose(float(cell), float(name), rel_tol=1e-9)
    except ValueError:
        return cell.upper().replace(" ", "") == name.upper()


def expectation(text):
    kind, _, rest = text.strip().partition(" ")
    if kind in TABLES or kind in MODES:
        return Value(kind, rest)
    if kind in TEXTS:
        return Text(kind, rest)
    if squeezed(text) == "no warning":
        return NoWarning()
    raise Fault(f"'{kind}' is nothing that can be expected: "
                f"{', '.join([*TABLES, *sorted(MODES), *sorted(TEXTS), 'no warning'])}")


def lines_of(path):
    """(place, line) of the deck and of the file beside it."""
    beside = path.with_suffix(".expect")
    for file in [path, *([beside] if beside.exists() else [])]:
        for count, line in enumerate(file.read_text().splitlines(), 1):
            yield f"{file.name}:{count}", line


def expectations(path):
    """[(place and rule, expectation)], options. What is not understood is a Fault with its line."""
    found, options = [], None
    for place, line in lines_of(path):
        comment = re.match(r"\*\*\s*(expect|run with)(.*)", line, re.IGNORECASE)
        named = f"{place}: {squeezed(line[2:])}"
        try:
            if comment is None:
                continue
            if not re.match(r"\*\* (expect|run with) ", line):
                raise Fault("expected '** expect ...' or '** run with ...', written like this")
            if comment[1] == "expect":
                found.append((named, expectation(comment[2])))
            elif options is not None:
                raise Fault("a second line of options")
            else:
                options = comment[2].split()
        except Fault as fault:
            raise Fault(f"{named}\n    {fault}") from None
    if not found:
        raise Fault(f"{path.name}: has no line '** expect ...': nothing is tested")
    return found, options or []


class Answer:
    """What a run has left."""

    def __init__(self, folder, ended):
        self.folder, self.status = folder, ended.returncode
        self.output, self.errors = ended.stdout, ended.stderr.splitlines()

    def lines(self, kind):
        if kind == "output":
            return self.output.splitlines()
        if kind == "dat":
            return [line for path in sorted(self.folder.glob("*.dat")) for line in path.read_text().splitlines()]
        start = "warning: " if kind == "warning" else "finites-solve: "
        return [line for line in self.errors if line.startswith(start)]

    def table(self, name, step):
        steps = {}
        for path in self.folder.glob(f"{name}*.csv"):
            middle = path.name[len(name):-len(".csv")]
            steps[int(middle[1:]) if middle else 1] = path
        if step is None and len(steps) > 1:
            raise Fault(f"which step? There are tables of {len(steps)}")
        wanted = 1 if step is None else number(step, "the step")
        if wanted not in steps:
            raise Fault(f"there is no table {name} of step {step or 1}; steps with one: {sorted(steps) or 'none'}")
        with open(steps[wanted], newline="") as file:
            return list(csv.DictReader(file))


def solved(solver, path, options, folder):
    tables = [word for name, option in TABLES.items() for word in (option, str(folder / f"{name}.csv"))]
    command = [str(solver), path.name, "-o", str(folder / f"{path.stem}.vtu"), *tables, *options]
    variables = {**os.environ, "OPENBLAS_NUM_THREADS": "1"}
    try:
        ended = subprocess.run(command, cwd=path.parent, env=variables, text=True, errors="replace",
                               stdin=subprocess.DEVNULL, capture_output=True, timeout=TIME_LIMIT, check=False)
    except subprocess.TimeoutExpired:
        raise Fault(f"{path.name}: not solved in {TIME_LIMIT} s") from None
    return Answer(folder, ended)


def check_status(path, answer, refused):
    if answer.status == (1 if refused else 0):
        return
    said = "\n".join(f"      {line}" for line in answer.errors[-20:])
    if refused and answer.status == 0:
        raise Fault(f"{path.name}: is solved, and an error is expected")
    raise Fault(f"{path.name}: exit status {answer.status}, expected {1 if refused else 0}\n{said}")


def faults_of(solver, path):
    """What is wrong with a deck, one text each, and how many expectations it has."""
    try:
        wanted, options = expectations(path)
        refused = any(getattr(each, "kind", "") == "error" for _, each in wanted)
        if refused and any(getattr(each, "kind", "") not in ("error", "warning") for _, each in wanted):
            raise Fault(f"{path.name}: a deck that is refused has no results to expect")
    except (Fault, OSError, UnicodeDecodeError) as fault:
        return [str(fault)], 0
    found = []
    with tempfile.TemporaryDirectory() as folder:
        try:
            answer = solved(solver, path, options, pathlib.Path(folder))
            check_status(path, answer, refused)
        except Fault as fault:
            return [str(fault)], len(wanted)
        for named, each in wanted:
            try:
                each.check(answer)
            except Fault as fault:
                found.append(f"{named}\n    {fault}")
    return found, len(wanted)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("decks", nargs="*", type=pathlib.Path, metavar="DECK")
    parser.add_argument("--solver", type=pathlib.Path, default=ROOT / "build/release/bin/finites-solve")
    parser.add_argument("--jobs", type=int, default=2, help="decks at a time")
    wanted = parser.parse_args()
    decks = [deck.resolve() for deck in wanted.decks] or sorted(
        deck for folder in ("cards", "exports") for deck in (ROOT / "decks" / folder).glob("*.inp"))
    if not decks:
        raise SystemExit("cards.py: there is no deck")
    if not os.access(wanted.solver, os.X_OK):
        raise SystemExit(f"cards.py: there is no program {wanted.solver}")
    solver = wanted.solver.resolve()
    with concurrent.futures.ThreadPoolExecutor(wanted.jobs) as pool:
        results = list(pool.map(lambda deck: faults_of(solver, deck), decks))
    failed = 0
    for faults, _ in results:
        failed += bool(faults)
        for fault in faults:
            print(fault)
    print(f"cards.py: {len(decks)} decks, {sum(count for _, count in results)} expectations; "
          f"{failed} {'deck fails' if failed == 1 else 'decks fail'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
