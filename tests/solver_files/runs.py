"""Decks that are solved with every table, and what the runs have left."""

import concurrent.futures
import csv
import os
import pathlib
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLES = ("csv", "reactions", "members", "stations", "stresses", "solids", "curve", "events", "modes", "json")
# Beside the cards: every family of elements and every kind of step.
DECKS = ("vibrating_plate_quads", "buckling_plate_quads", "euler_columns", "pushover_portal_two_phases",
         "plastic_strip_layered", "solid_wedges", "two_cables", "timoshenko_cantilever", "thick_plate_quads",
         "pushover_unloading")


class Run:
    """A deck that was solved in a folder of its own."""

    def __init__(self, solver, deck, folder, options=(), place=None):
        self.deck, self.folder = deck, folder
        tables = [word for name in TABLES for word in (f"--{name}", folder / f"{name}.csv")]
        place = place or ["-o", folder / "r.vtu"]
        ended = subprocess.run([solver, deck, *place, *tables, *options], cwd=deck.parent, text=True,
                               errors="replace", capture_output=True, check=False,
                               env={**os.environ, "OPENBLAS_NUM_THREADS": "1"})
        self.status, self.output, self.errors = ended.returncode, ended.stdout, ended.stderr

    def grids(self):
        """(step, file) of the results of all steps."""
        whole = self.folder / "r.vtu"
        if whole.exists():
            return [(1, whole)]
        return sorted((int(path.name.split(".")[1]), path) for path in self.folder.glob("r.*.vtu"))

    def table(self, name, step):
        """Rows of a table of a step; none where there is no table."""
        several = not (self.folder / "r.vtu").exists()
        path = self.folder / (f"{name}.{step}.csv" if several else f"{name}.csv")
        if not path.exists():
            return []
        with open(path, newline="") as file:
            return list(csv.DictReader(file))

    def json_text(self):
        return (self.folder / "json.csv").read_bytes()


def of_text(solver, folder, text, options=(), place=None):
    """A deck given by its text, or its bytes."""
    folder = pathlib.Path(tempfile.mkdtemp(dir=folder))
    deck = folder / "deck.inp"
    deck.write_bytes(text if isinstance(text, bytes) else text.encode())
    return Run(solver, deck, folder, options, place)


def all_runs(solver, folder, options=()):
    """The decks that are solved, of decks/cards and of DECKS."""
    decks = sorted((ROOT / "decks/cards").glob("*.inp")) + [ROOT / f"decks/{name}.inp" for name in DECKS]

    def solved(deck):
        own = pathlib.Path(folder) / deck.stem
        own.mkdir()
        return Run(solver, deck, own, options)

    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        runs = [run for run in pool.map(solved, decks) if run.status == 0]
    if len(runs) < 75:
        raise SystemExit(f"only {len(runs)} of {len(decks)} decks were solved")
    return runs
