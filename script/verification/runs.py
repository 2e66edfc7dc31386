"""Runs of the solver: each deck once, its tables read when they are asked for."""

import csv
import pathlib
import subprocess


class Run:
    """One deck that is solved: displacements, stresses at nodes, modes and load factors by step, counted from 1."""

    def __init__(self, program, folder, name, text):
        self._base, self._steps = pathlib.Path(folder) / name, text.count("*STEP")
        deck = self._base.with_suffix(".inp")
        deck.write_text(text)
        answer = subprocess.run(
            [program, deck, "-o", self._base.with_suffix(".vtu"), "--csv", self._base.with_suffix(".csv"), "--stresses",
             self._place("stresses"), "--solids", self._place("solids"),
             *(["--curve", self._place("curve")] if "*ELASTOPLASTIC" in text else [])],
            capture_output=True, text=True, check=False)
        if answer.returncode != 0:
            raise SystemExit(f"{deck}: exit status {answer.returncode}\n{answer.stderr}")
        self._deck, self._said, self._tables = deck, answer.stdout, {}

    def _place(self, what):
        return self._base.with_name(f"{self._base.name}_{what}.csv")

    def _table(self, path, step):
        if self._steps > 1:
            path = path.with_suffix(f".{step}{path.suffix}")
        if path not in self._tables:
            with open(path, newline="", encoding="utf-8") as file:
                self._tables[path] = list(csv.DictReader(file))
        return self._tables[path]

    def displacement(self, node, direction, step=1):
        row = next(r for r in self._table(self._base.with_suffix(".csv"), step) if int(r["node"]) == node)
        return float(row[direction])

    def mode(self, number, step=1):
        """Frequency or buckling factor, modes counted from 1."""
        rows = self._table(self._base.with_suffix(".csv"), step)
        return float(next(v for k, v in rows[number - 1].items() if k != "mode"))

    def stresses(self, step=1):
        return self._table(self._place("stresses"), step)

    def solids(self, step=1):
        return self._table(self._place("solids"), step)

    def limit_load(self, step=1):
        """The largest load factor, of a path that has passed its limit point."""
        if "limit point" not in self._said:
            raise SystemExit(f"{self._deck}: no limit point was reached")
        return max(float(point["load_factor"]) for point in self._table(self._place("curve"), step))

    def stress(self, node, column, step=1):
        return next(float(r[column]) for r in self.stresses(step) if int(r["node"]) == node)


class Runs:
    """The runs so far, by the name of their deck."""

    def __init__(self, program, folder):
        self._program, self._folder, self._done = program, pathlib.Path(folder), {}
        self._folder.mkdir(parents=True, exist_ok=True)

    def of(self, name, make):
        """make() gives the text of the deck and its nodes; returns the run and the nodes."""
        if name not in self._done:
            text, nodes = make()
            self._done[name] = (Run(self._program, self._folder, name, text), nodes)
        return self._done[name]

    def __len__(self):
        return len(self._done)
