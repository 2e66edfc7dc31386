#!/usr/bin/env python3
"""A run that is killed goes on from its restart file, with the answers of one that was not.

    restart_test.py <finites-solve> <decks> [engines]

Runs are killed at ten random moments, started again until they end, and compared with a run that nobody has disturbed:
every table must be the same, of one process to the last bit. engines: "embedded" alone, or "embedded,petsc".
"""
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import tables
from processes import ENVIRONMENT, children_of

SOLVER, DECKS = pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1))
ENGINES = sys.argv.pop(1).split(",") if len(sys.argv) > 1 and not sys.argv[1].startswith("-") else ["embedded"]
KILLS = 10
SAME = 1e-9  # of two runs of several processes, whose messages come in no fixed order
# Layers and sections that yield, a step that goes on and unloads; hinges on curved surfaces, in second order, in phases.
PATHS = {"plastic_square_clamped_layered": ("csv", "stresses", "curve"), "plastic_strip_unloading": ("csv", "curve"),
         "pushover_two_storeys_orbison": ("csv", "members", "curve", "events"),
         "pushover_leaning_portal": ("csv", "curve", "events"), "pushover_portal_two_phases": ("csv", "curve", "events")}
ON_PROCESSES = ("plastic_square_clamped_layered", "pushover_leaning_portal")


def command(engine, deck, wanted):
    options = [word for table in wanted for word in (f"--{table}", f"{table}.csv")]
    own = [str(SOLVER), str(deck), "-o", "r.vtu", "--ascii", *options]
    return own if engine == "embedded" else ["mpirun", "-n", "2", *own, "--engine", "petsc"]


def tables_of(folder):
    return [file.name for file in sorted(folder.glob("*.csv"))]


def results(folder):
    return {file.name: file.read_text() for file in sorted(folder.iterdir()) if file.suffix in (".csv", ".vtu")}


class Restart(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def run_to_the_end(self, words, folder, **more):
        folder.mkdir(exist_ok=True)
        return subprocess.run(words, cwd=folder, env=ENVIRONMENT, text=True, capture_output=True, timeout=300,
                              check=False, **more)

    def interrupted(self, words, folder, moments):
        """Kills a run at each moment after its start, until one ends before. How many had left a state."""
        left = 0
        folder.mkdir(exist_ok=True)
        for count, moment in enumerate(moments, 1):
            with subprocess.Popen(words, cwd=folder, env=ENVIRONMENT, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL) as started:
                time.sleep(moment)
                # The last one is killed on its path however long it took to get there.
                while count == len(moments) and not (folder / "state.rst").exists() and started.poll() is None:
                    time.sleep(0.005)
                if started.poll() is not None:
                    break
                # mpirun ends the others when one has gone; those would not notice that mpirun has.
                ranks = children_of(started.pid, "finites-solve-petsc")
                os.kill(ranks[-1] if ranks else started.pid, signal.SIGKILL)
            left += (folder / "state.rst").exists()
        return left

    def goes_on(self, name, wanted, engine):
        words = command(engine, DECKS / f"{name}.inp", wanted)
        whole = self.folder / f"{engine}_{name}_whole"
        start = time.monotonic()
        done = self.run_to_the_end(words, whole)
        length = time.monotonic() - start
        self.assertEqual(done.returncode, 0, done.stderr)
        cut = self.folder / f"{engine}_{name}_cut"
        seeded = random.Random(name)
        moments = [seeded.uniform(0.1, 0.7) * length for _ in range(KILLS if engine == "embedded" else 4)]
        words += ["--restart", "state.rst"]
        left = self.interrupted(words, cut, moments)
        done = self.run_to_the_end(words, cut)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertFalse((cut / "state.rst").exists())
        if engine == "embedded":
            self.assertEqual(results(cut), results(whole))
        for table in tables_of(whole):
            worst, where = tables.apart(tables.read(whole / table), tables.read(cut / table))
            self.assertLess(worst, SAME, f"{name}, {table}: {where}")
        return left

    def test_goes_on(self):
        for engine in ENGINES:
            left = 0
            for name, wanted in PATHS.items():
                if engine != "embedded" and name not in ON_PROCESSES:
                    continue
                with self.subTest(engine=engine, deck=name):
                    left += self.goes_on(name, wanted, engine)
            self.assertGreater(left, 0, "hardly a run was killed on its path")

    def test_static_steps_go_on(self):
        """Shells yield on the way to the full load of a *STATIC, which is below that of the collapse."""
        name, procedure, load = "plastic_square_clamped_layered", "*ELASTOPLASTIC\n, 120\n", "P, 0.0235\n"
        text = (DECKS / f"{name}.inp").read_text()
        self.assertEqual((text.count(procedure), text.count(load)), (1, 1))
        deck = self.folder / f"{name}.inp"
        deck.write_text(text.replace(procedure, "*STATIC\n").replace(load, "P, 0.95\n"))
        for engine in ENGINES:
            with self.subTest(engine=engine):
                words = command(engine, deck, ("csv", "curve"))
                whole, cut = self.folder / f"{engine}_whole", self.folder / f"{engine}_cut"
                done = self.run_to_the_end(words, whole)
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertIn("shells yield from 0", done.stdout)
                words += ["--restart", "state.rst"]
                # The path takes a tenth of a second: it may be at its end before it can be killed.
                self.assertTrue(any(self.interrupted(words, cut, [0]) for _ in range(20)))
                done = self.run_to_the_end(words, cut)
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertIn("goes on in step 1", done.stdout)
                if engine == "embedded":
                    self.assertEqual(results(cut), results(whole))
                for table in tables_of(whole):
                    worst, where = tables.apart(tables.read(whole / table), tables.read(cut / table))
                    self.assertLess(worst, SAME, f"{table}: {where}")

    def test_other_processes_go_on(self):
        """What two processes have left three go on from: each takes the states of its own elements."""
        if "petsc" not in ENGINES:
            self.skipTest("needs processes")
        name = "plastic_square_clamped_layered"
        words = command("petsc", DECKS / f"{name}.inp", PATHS[name])
        whole, cut = self.folder / "whole", self.folder / "cut"
        self.assertEqual(self.run_to_the_end(words, whole).returncode, 0)
        words += ["--restart", "state.rst"]
        self.assertEqual(self.interrupted(words, cut, [0]), 1)
        words[words.index("-n") + 1] = "3"
        done = self.run_to_the_end(words, cut)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("goes on in step 1", done.stdout)
        for table in tables_of(whole):
            worst, where = tables.apart(tables.read(whole / table), tables.read(cut / table))
            self.assertLess(worst, SAME, f"{table}: {where}")

    def test_all_go_on_from_what_the_first_process_has(self):
        """The state lies on a machine on which the other process does not run."""
        if "petsc" not in ENGINES:
            self.skipTest("needs processes")
        name = "plastic_square_clamped_layered"
        words = command("petsc", DECKS / f"{name}.inp", PATHS[name])
        whole, cut, other = (self.folder / place for place in ("whole", "cut", "other"))
        self.assertEqual(self.run_to_the_end(words, whole).returncode, 0)
        words += ["--restart", "state.rst"]
        self.assertEqual(self.interrupted(words, cut, [0]), 1)
        other.mkdir()
        own = words[3:]  # behind mpirun -n 2
        done = self.run_to_the_end(["mpirun", "-n", "1", "-wdir", str(cut), *own,
                                    ":", "-n", "1", "-wdir", str(other), *own], cut)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("goes on in step 1", done.stdout)
        self.assertEqual(list(other.iterdir()), [])
        for table in tables_of(whole):
            worst, where = tables.apart(tables.read(whole / table), tables.read(cut / table))
            self.assertLess(worst, SAME, f"{table}: {where}")

    def state_of(self, name):
        """The restart file of a run that is killed on its path."""
        file = self.folder / "state.rst"
        deck = DECKS / f"{name}.inp" if isinstance(name, str) else name
        words = [str(SOLVER), str(deck), "-o", "r.vtu", "--restart", "state.rst"]
        with subprocess.Popen(words, cwd=self.folder, env=ENVIRONMENT, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL) as started:
            while not file.exists() and started.poll() is None:
                time.sleep(0.002)
            started.kill()
        self.assertTrue(file.exists())
        return file

    def test_another_deck_is_refused(self):
        file = self.state_of("pushover_two_storeys_orbison")
        before = file.read_bytes()
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_portal.inp"), "--restart", "state.rst"],
                                   self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("state.rst: belongs to another deck", done.stderr)
        self.assertEqual(file.read_bytes(), before)

    def test_a_deck_that_has_changed_is_refused(self):
        """The name and the length of the deck are the same."""
        deck = self.folder / "frame.inp"
        text = (DECKS / "pushover_two_storeys_orbison.inp").read_text()
        changed = text.replace("9, 0.0, 0.0, 8000.0", "9, 0.0, 0.0, 8100.0")
        self.assertNotEqual(changed, text)
        deck.write_text(text)
        file = self.state_of(deck)
        before = file.read_bytes()
        deck.write_text(changed)
        done = self.run_to_the_end([str(SOLVER), str(deck), "--restart", "state.rst"], self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("state.rst: belongs to another deck", done.stderr)
        self.assertEqual(file.read_bytes(), before)

    def test_other_states_along_the_path_are_refused(self):
        """What was not kept before the run was ended cannot be written after it."""
        file = self.state_of("pushover_two_storeys_orbison")
        before = file.read_bytes()
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_two_storeys_orbison.inp"), "--restart",
                                    "state.rst", "--increments", "7"], self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("state.rst: ", done.stderr)
        self.assertIn("--increments", done.stderr)
        self.assertEqual(file.read_bytes(), before)

    def test_a_file_that_is_none_is_refused(self):
        file = self.state_of("pushover_two_storeys_orbison")
        for content in (b"", b"text\n" * 100, file.read_bytes()[:-40]):
            file.write_bytes(content)
            done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_two_storeys_orbison.inp"), "--restart",
                                        "state.rst"], self.folder)
            self.assertEqual(done.returncode, 1, content[:10])
            self.assertIn("state.rst: is no restart file", done.stderr)
            self.assertEqual(file.read_bytes(), content)

    def test_a_run_without_a_path_says_so(self):
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "solid_wedges.inp"), "--restart", "state.rst"], self.folder)
        self.assertEqual(done.returncode, 0)
        self.assertIn("--restart", done.stderr)
        self.assertFalse((self.folder / "state.rst").exists())

    def test_a_place_that_cannot_be_written(self):
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_portal.inp"), "--restart", "no/state.rst"],
                                   self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("no/state.rst: cannot be written", done.stderr)

    def test_a_folder_is_no_place(self):
        (self.folder / "states").mkdir()
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_portal.inp"), "--restart", "states"], self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("states: is a directory", done.stderr)

    def test_says_where_it_goes_on(self):
        self.state_of("pushover_two_storeys_orbison")
        done = self.run_to_the_end([str(SOLVER), str(DECKS / "pushover_two_storeys_orbison.inp"), "--restart",
                                    "state.rst"], self.folder)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout, "goes on in step 1 .*state.rst")


if __name__ == "__main__":
    unittest.main()
