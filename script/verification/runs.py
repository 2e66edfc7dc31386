"""Runs of the solver: each deck once, its tables and its file in JSON (docs/results.schema.json) read when they are
asked for. Nothing is taken from what the program prints."""

import csv
import json
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
             self._place("stresses"), "--solids", self._place("solids"), "--json", self._base.with_suffix(".json"),
             "--quiet"],
            capture_output=True, text=True, check=False)
        if answer.returncode != 0:
            raise SystemExit(f"{deck}: exit status {answer.returncode}\n{answer.stderr}")
        self._deck, self._tables = deck, {}
        with open(self._base.with_suffix(".json"), encoding="utf-8") as file:
            self.steps = json.load(file)["steps"]

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
        mode = self.steps[step - 1]["modes"][number - 1]
        return mode["frequency"] if "frequency" in mode else mode["factor"]

    def imbalance(self):
        """The largest sum of loads and reactions, forces by the largest force and moments by that and the size of the
        model, of the steps that end in displacements."""
        worst = 0.0
        for step in self.steps:
            if "loads" not in step:
                continue
            rows = self._table(self._base.with_suffix(".csv"), step["number"])
            reach = max(abs(float(row[axis])) for row in rows for axis in "xyz")
            ends = [one[end]["value"] for one in step["extremes"] for end in ("least", "largest")
                    if one["quantity"].startswith("reaction_u")]
            force = max(abs(v) for v in [*ends, *step["loads"]["force"], *step["reactions"]["force"]])
            for kind, size in (("force", force), ("moment", force * reach)):
                rest = [a + b for a, b in zip(step["loads"][kind], step["reactions"][kind])]
                worst = max(worst, max(map(abs, rest)) / size if size > 0 else 0.0)
        return worst

    def stresses(self, step=1):
        return self._table(self._place("stresses"), step)

    def solids(self, step=1):
        return self._table(self._place("solids"), step)

    def limit_load(self, step=1):
        """The largest load factor, of a path that has passed its limit point."""
        path = self.steps[step - 1]["path"]
        if path["end"] != "limit":
            raise SystemExit(f"{self._deck}: no limit point was reached: {path['end']}")
        return path["largest_load_factor"]

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

    def imbalance(self):
        """The worst of all runs, and its deck."""
        return max((run.imbalance(), name) for name, (run, _) in self._done.items())

    def __len__(self):
        return len(self._done)
