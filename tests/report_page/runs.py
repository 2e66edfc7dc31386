"""Runs of decks with their report page and their tables."""

import csv
import os
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLES = ("csv", "stations", "stresses", "solids", "modes", "events", "curve")


class Run:
    """A deck that was solved in a folder; tables are read step by step."""

    def __init__(self, solver, deck, folder, options=()):
        self.folder, self.name = folder, pathlib.Path(deck).stem
        self.page = folder / f"{self.name}.html"
        tables = [word for table in TABLES for word in (f"--{table}", folder / f"{self.name}-{table}.csv")]
        command = [solver, deck, "--quiet", "-o", folder / f"{self.name}.vtu", "--report", self.page, *tables, *options]
        ended = subprocess.run(command, text=True, capture_output=True, check=False, timeout=120,
                               env={**os.environ, "OPENBLAS_NUM_THREADS": "1"})
        if ended.returncode != 0:
            raise RuntimeError(f"{deck}: {ended.stderr}")

    def table(self, name, step=1):
        """Rows of a table, numbers as numbers."""
        whole = self.folder / f"{self.name}-{name}.csv"
        path = whole if whole.exists() else self.folder / f"{self.name}-{name}.{step}.csv"
        if not path.exists():
            return []
        with open(path, newline="") as file:
            return [{key: number(value) for key, value in row.items()} for row in csv.DictReader(file)]


def number(text):
    try:
        return float(text)
    except (TypeError, ValueError):
        return text


def deck(name):
    return ROOT / "decks" / f"{name}.inp"
