#!/usr/bin/env python3
"""Both engines, and any number of processes, give the same answers.

    engines_test.py <finites-solve> <decks>

A deck of every family and analysis is solved by the embedded engine and by that of PETSc in one to four processes: all
tables must be the same to 1e-9, of paths at their end after all increments too. Then what goes wrong: in all processes,
in one alone, and one that is killed.
"""
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree as ET

import pieces
import tables
from processes import ENVIRONMENT, children_of

SOLVER, DECKS = pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1))
MODEL = DECKS.parent / "bench" / "scale" / "model.py"
EMBEDDED = 0
SAME = 1e-9
TABLES = ("csv", "reactions", "members", "stations", "stresses", "solids")
# Statics of every element, conditions, frequencies (also of a structure that moves freely), buckling, P-delta, cables,
# a loaded state with its frequencies, pushover in first and second order, yielding plates by section and by layers.
FAMILIES = {
    "wound_cylinder": (), "solid_wedges": (), "membrane_patch_quads": (), "offset_strip": (), "cards/releases": (),
    "cards/composite_cross_ply": (), "cards/section_print": (), "cards/beam_placed": (), "cards/lumped_mass": (),
    "cards/combination": (),
    "cards/mpc_tie": (), "cards/tie_shells": (), "cards/coupling_distributing": (), "cards/rigid_body": (),
    "vibrating_plate_quads": (), "solid_vibration": ("modes",), "cards/mpc_beam_frequency": ("modes",),
    "buckling_plate_quads": (), "cards/p_delta": (), "cards/rigid_second_order": (), "two_cables": (),
    "tensioned_beam": (), "pushover_portal": ("curve", "events"),
    "pushover_two_storeys": ("curve", "events"),
    "pushover_two_storeys_p_delta": ("curve", "events"), "plastic_square_simple": ("curve",),
    "plastic_strip_layered": ("curve",), "plastic_square_simple_layered": ("curve",),
}
# One of each analysis is solved by every number of processes, the others by two: paths of many small factorisations
# take long on a machine with fewer cores than processes.
ALL_COUNTS = {"wound_cylinder", "solid_vibration", "buckling_plate_quads", "pushover_portal", "plastic_square_simple",
              "cards/mpc_tie"}
SINGULAR = """*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 2, 0, 0
*ELEMENT, TYPE=T3D2, ELSET=RODS
1, 1, 2
2, 2, 3
*MATERIAL, NAME=STEEL
*ELASTIC
2.1e11, 0.3
*SOLID SECTION, ELSET=RODS, MATERIAL=STEEL
1e-4
*BOUNDARY
1, 1, 3
3, 1, 3
*STEP
*STATIC
*CLOAD
2, 2, -1
*END STEP
"""


def stiff_beams(*stiff):
    """A cantilever of forty beams, some of which have a stiffness beyond all numbers."""
    nodes = "".join(f"{n}, {n}, 0, 0\n" for n in range(1, 42))
    beams = "".join(f"{n}, {n}, {n + 1}\n" for n in range(1, 41) if n not in stiff)
    beyond = "".join(f"{n}, {n}, {n + 1}\n" for n in stiff)
    section = "0.01, 1e-5, 0, 1e-5, 1e-5\n0, 0, 1\n"
    return (f"*NODE\n{nodes}*ELEMENT, TYPE=B33, ELSET=ALL\n{beams}*ELEMENT, TYPE=B33, ELSET=STIFF\n{beyond}"
            "*MATERIAL, NAME=STEEL\n*ELASTIC\n2.1e11, 0.3\n*MATERIAL, NAME=NONE\n*ELASTIC\n1e307, 0.3\n"
            f"*BEAM GENERAL SECTION, ELSET=ALL, MATERIAL=STEEL\n{section}"
            "*BEAM GENERAL SECTION, ELSET=STIFF, MATERIAL=NONE\n100, 10, 0, 10, 10\n0, 0, 1\n"
            "*BOUNDARY\n1, 1, 6\n*STEP\n*STATIC\n*CLOAD\n41, 2, 1\n*END STEP\n")


def command(processes, *arguments):
    if processes == EMBEDDED:
        return [str(SOLVER), *map(str, arguments)]
    own = [str(SOLVER), "--engine", "petsc", *map(str, arguments)]
    return own if processes == 1 else ["mpirun", "-n", str(processes), *own]


def run(folder, processes, *arguments):
    return subprocess.run(command(processes, *arguments), cwd=folder, env=ENVIRONMENT, text=True, capture_output=True,
                          timeout=300, check=False)


def told(errors):
    """The lines of the solver on the error stream, beside which mpirun may have its own."""
    return [line for line in errors.splitlines() if line.startswith(("warning:", "finites-solve:"))]


class Engines(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def solved(self, deck, processes, more):
        folder = self.folder / str(processes)
        folder.mkdir()
        options = [word for table in (*TABLES, *more) for word in (f"--{table}", f"{table}.csv")]
        done = run(folder, processes, deck, "-o", "r.vtu", "--json", "r.json", *options)
        self.assertEqual(done.returncode, 0, f"{deck}, {processes} processes: {done.stdout}{done.stderr}")
        found = {file.name: tables.read(file) for file in sorted(folder.glob("*.csv"))}
        return found, json.loads((folder / "r.json").read_text()), done

    def compare(self, name, more):
        deck = DECKS / f"{name}.inp"
        expected, results, embedded = self.solved(deck, EMBEDDED, more)
        self.assertNotIn("PETSc", results["solver"])
        for processes in (1, 2, 3, 4) if name in ALL_COUNTS else (2,):
            found, others, done = self.solved(deck, processes, more)
            self.assertEqual(list(found), list(expected))
            self.assertIn("PETSc", others["solver"])
            self.assertEqual(processes > 1, f"on {processes} processes" in others["solver"])
            self.assertEqual(told(done.stderr), told(embedded.stderr))
            self.assertEqual([step["number"] for step in others["steps"]],
                             [step["number"] for step in results["steps"]])
            for table, rows in expected.items():
                worst, where = tables.apart(rows, found[table])
                self.assertLess(worst, SAME, f"{name}, {processes} processes, {table}: {where}")

    def test_an_iteration_gives_the_same(self):
        for name in ("solid_cantilever", "thick_plate_quads", "timoshenko_cantilever"):
            with self.subTest(deck=name):
                deck = DECKS / f"{name}.inp"
                done = run(self.folder, EMBEDDED, deck, "-o", "a.vtu", "--csv", f"{name}.csv")
                self.assertEqual(done.returncode, 0, done.stderr)
                for processes in (1, 3):
                    done = run(self.folder, processes, "--solver", "cg", deck, "-o", "b.vtu", "--csv", "found.csv")
                    self.assertEqual(done.returncode, 0, done.stderr)
                    self.assertIn("CG and GAMG", done.stdout)
                    for one in sorted(self.folder.glob(f"{name}*.csv")):
                        other = self.folder / one.name.replace(name, "found")
                        worst, where = tables.apart(tables.read(one), tables.read(other))
                        self.assertLess(worst, SAME, f"{name}, {processes} processes: {where}")

    def test_an_iteration_says_what_it_cannot_do(self):
        done = run(self.folder, 2, "--solver", "cg", DECKS / "vibrating_plate_quads.inp")
        self.assertEqual(done.returncode, 1)
        self.assertIn("--solver mumps", done.stderr)

    def test_an_error_of_all_is_told_once(self):
        deck = self.folder / "singular.inp"
        deck.write_text(SINGULAR)
        start = time.monotonic()
        done = run(self.folder, 3, deck)
        self.assertLess(time.monotonic() - start, 10)
        alone = run(self.folder, EMBEDDED, deck)
        self.assertEqual((done.returncode, alone.returncode), (1, 1))
        self.assertIn("mechanism", alone.stderr)
        self.assertEqual(done.stderr.count("finites-solve: "), 1)
        self.assertIn(alone.stderr.strip(), done.stderr)
        self.assertEqual(list(self.folder.iterdir()), [deck])

    def test_an_error_of_one_element_is_told_as_in_one_process(self):
        """One process has the beam whose load is not finite."""
        deck = self.folder / "stiff.inp"
        deck.write_text(stiff_beams(33))
        done, alone = run(self.folder, 3, deck), run(self.folder, EMBEDDED, deck)
        self.assertEqual((done.returncode, alone.returncode), (1, 1))
        self.assertIn("of element 33 is not finite", alone.stderr)
        self.assertEqual(told(done.stderr), told(alone.stderr))
        self.assertEqual(list(self.folder.iterdir()), [deck])

    def test_of_errors_of_several_processes_the_first_of_the_deck_is_told(self):
        deck = self.folder / "stiff.inp"
        for first, second in ((4, 37), (37, 4)):
            deck.write_text(stiff_beams(first, second))
            done = run(self.folder, 3, deck)
            self.assertEqual(done.returncode, 1)
            self.assertEqual(len(told(done.stderr)), 1, done.stderr)
            self.assertIn("of element 4 is not finite" if first == 4 else "of element 37 is not finite", done.stderr)

    def test_more_elements_than_are_exchanged_at_once(self):
        """10,000 elements with the results of one process, at every node and by each kind of result."""
        deck = self.folder / "plate.inp"
        with deck.open("w") as file:
            subprocess.run([sys.executable, "-B", MODEL, "plate", "100"], stdout=file, check=True)
        found = []
        for processes in (EMBEDDED, 2):
            folder = self.folder / str(processes)
            folder.mkdir()
            done = run(folder, processes, deck, "-o", "r.vtu", "--csv", "csv.csv", "--stresses", "stresses.csv")
            self.assertEqual(done.returncode, 0, done.stderr)
            found.append([tables.read(folder / name) for name in ("csv.csv", "stresses.csv")])
        for rows, others in zip(*found):
            self.assertGreater(len(rows), 10000)
            worst, where = tables.apart(rows, others)
            self.assertLess(worst, SAME, where)

    def test_processes_without_elements(self):
        """Two beams of a cantilever on four processes: P l^3 / (3 E I) at the tip."""
        deck = self.folder / "few.inp"
        deck.write_text("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 2, 0, 0\n*ELEMENT, TYPE=B33, ELSET=ALL\n1, 1, 2\n"
                        "2, 2, 3\n*MATERIAL, NAME=STEEL\n*ELASTIC\n2.1e11, 0.3\n"
                        "*BEAM GENERAL SECTION, ELSET=ALL, MATERIAL=STEEL\n0.01, 1e-5, 0, 1e-5, 1e-5\n0, 0, 1\n"
                        "*BOUNDARY\n1, 1, 6\n*STEP\n*STATIC\n*CLOAD\n3, 2, -1000\n*END STEP\n")
        done = run(self.folder, 4, deck, "-o", "r.vtu", "--csv", "r.csv")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("2 elements, 0 to 1 on each of 4 processes", done.stdout)
        tip = tables.columns(tables.read(self.folder / "r.csv"))["uy"][-1]
        self.assertAlmostEqual(tip / (-1000 * 2**3 / (3 * 2.1e11 * 1e-5)), 1, delta=1e-9)

    def run_on_two_machines(self, deck):
        """The processes as on machines with files of their own: each has its folder, and only the first the deck."""
        own = [str(SOLVER), "--engine", "petsc", deck, "-o", "r.vtu", "--csv", "r.csv"]
        return subprocess.run(["mpirun", "-n", "1", "-wdir", str(self.folder / "first"), *own,
                               ":", "-n", "2", "-wdir", str(self.folder / "second"), *own],
                              env=ENVIRONMENT, capture_output=True, text=True, timeout=60, check=False)

    def test_the_first_process_has_the_deck(self):
        """Also what it includes; what another machine has under the same name does not count."""
        deck = (DECKS / "solid_cantilever.inp").read_text()
        split = deck.index("*MATERIAL")
        for place in ("first/parts", "second"):
            (self.folder / place).mkdir(parents=True)
        (self.folder / "first" / "d.inp").write_text(deck[:split] + "*INCLUDE, INPUT=parts/rest.inp\n")
        (self.folder / "first" / "parts" / "rest.inp").write_text(deck[split:])
        (self.folder / "second" / "d.inp").write_text("of yesterday\n")
        done = self.run_on_two_machines("d.inp")
        self.assertEqual(done.returncode, 0, done.stderr)
        alone = run(self.folder, EMBEDDED, DECKS / "solid_cantilever.inp", "-o", "r.vtu", "--csv", "r.csv")
        self.assertEqual(alone.returncode, 0, alone.stderr)
        ours, theirs = (tables.columns(tables.read(file)) for file in (self.folder / "first" / "r.csv",
                                                                      self.folder / "r.csv"))
        largest = max(abs(value) for value in theirs["uz"] + theirs["uy"] + theirs["ux"])
        for name in ("ux", "uy", "uz"):
            self.assertLess(max(abs(a - b) for a, b in zip(ours[name], theirs[name], strict=True)), SAME * largest)
        self.assertEqual([file.name for file in (self.folder / "second").iterdir()], ["d.inp"])

    def test_a_file_that_the_first_process_does_not_have(self):
        for place in ("first", "second"):
            (self.folder / place).mkdir()
        (self.folder / "second" / "d.inp").write_text((DECKS / "solid_cantilever.inp").read_text())
        done = self.run_on_two_machines("d.inp")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(told(done.stderr),
                         ["finites-solve: d.inp: the file cannot be opened: No such file or directory"])
        for included, fault in (("d.inp", "includes itself"),
                                ("gone.inp", "cannot be opened: No such file or directory")):
            (self.folder / "first" / "d.inp").write_text(f"*INCLUDE, INPUT={included}\n")
            done = self.run_on_two_machines("d.inp")
            self.assertEqual(done.returncode, 1)
            self.assertEqual(told(done.stderr),
                             [f"finites-solve: d.inp:1: *INCLUDE: the file '{included}' {fault}"])

    def test_memory_is_shared_by_the_processes_of_a_machine(self):
        """The limit is that of the run: two processes, each of which holds some 60 MB, have no room in 100 MB."""
        deck = DECKS / "solid_cantilever.inp"
        for limit, returncode in ((4000, 0), (100, 1)):
            done = run(self.folder, 2, deck, "-o", "r.vtu", "--memory-limit", str(limit))
            self.assertEqual(done.returncode, returncode, done.stderr)
        (complaint,) = told(done.stderr)
        self.assertRegex(complaint, r"not enough memory: .* in each of 2 processes on this machine, \d+ MB for each are "
                                    "left of the 100 MB of --memory-limit")

    def test_a_solver_of_the_other_engine(self):
        deck = DECKS / "solid_cantilever.inp"
        for processes, name, advice in ((EMBEDDED, "cg", "add --engine petsc"),
                                        (1, "eigen", "leave out --engine petsc")):
            done = run(self.folder, processes, deck, "--solver", name)
            self.assertEqual(done.returncode, 2)
            self.assertIn(f"--solver {name} is a solver of the engine", done.stderr)
            self.assertIn(advice, done.stderr)

    def test_printed_tables_are_the_same(self):
        """Forces through surfaces, to which elements of several processes belong."""
        found = []
        for processes in (EMBEDDED, 2, 3):
            done = run(self.folder, processes, DECKS / "cards" / "section_print.inp", "-o", f"{processes}.vtu")
            self.assertEqual(done.returncode, 0, done.stderr)
            words = (self.folder / f"{processes}.dat").read_text().split()
            numbers = [float(word) for word in words if re.fullmatch(r"-?\d\.\d+E[+-]\d+", word)]
            found.append((numbers, [word for word in words if not re.fullmatch(r"-?\d\.\d+E[+-]\d+", word)]))
        (numbers, words), *others = found
        self.assertGreater(len(numbers), 30)
        for other_numbers, other_words in others:
            self.assertEqual(other_words, words)
            self.assertEqual(len(other_numbers), len(numbers))
            apart = max(abs(one - other) for one, other in zip(numbers, other_numbers))
            self.assertLess(apart, SAME * max(map(abs, numbers)))

    def test_elements_are_divided(self):
        """Evenly, alike in every run, and so that parts have few nodes in common."""
        deck = self.folder / "plate.inp"
        with deck.open("w") as file:
            subprocess.run([sys.executable, "-B", MODEL, "plate", "40"], stdout=file, check=True)
        lines, entries = [], {}
        for processes in (1, 4, 4):
            done = run(self.folder, processes, deck, "-o", "r.vtu")
            self.assertEqual(done.returncode, 0, done.stderr)
            lines.append(re.search(r"(\d+) elements, (\d+) to (\d+) on each of (\d+) processes", done.stdout))
            entries[processes] = int(re.search(r"(\d+) entries", done.stdout).group(1))
        self.assertIsNone(lines[0])
        self.assertEqual(lines[1].group(0), lines[2].group(0))
        count, least, most, processes = map(int, lines[1].groups())
        self.assertEqual((count, processes), (1600, 4))
        self.assertLess(most, 1.1 * count / processes)
        self.assertGreater(least, 0.9 * count / processes)
        # Two cuts across the middle pass 82 of 1681 nodes, whose blocks with one another two parts have.
        self.assertGreater(entries[4], entries[1])
        self.assertLess(entries[4], 1.05 * entries[1])

    def test_results_in_pieces(self):
        """All that one file of one process has, each element in one piece, nodes between pieces alike in both."""
        for name in ("wound_cylinder", "solid_wedges", "cards/section_print", "cards/tie_shells", "tensioned_beam",
                     "plastic_square_simple", "solid_vibration", "pushover_portal"):
            folder = self.folder / name.replace("/", "_")
            folder.mkdir()
            deck = DECKS / f"{name}.inp"
            self.assertEqual(run(folder, EMBEDDED, deck, "-o", "whole.vtu", "--quiet").returncode, 0)
            wholes = sorted(file.name for file in folder.glob("whole*.vtu"))
            done = run(folder, 3, deck, "-o", "parts.pvtu", "--quiet")
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
            for file in wholes:
                parts = file.replace("whole", "parts").replace(".vtu", ".pvtu")
                whole, together = pieces.Grid(folder / file), pieces.Grid(folder / parts)
                self.assertEqual(len(together.counts), 3)
                self.assertEqual(sum(together.counts), sum(whole.counts))
                self.assertEqual(together.joins, whole.joins, name)
                self.assertTrue(together.equal, name)
                self.assertLess(pieces.apart(whole, together)[0], SAME, (name, pieces.apart(whole, together)))
            self.assertEqual(len(list(folder.glob("*.part"))), 0)

    def test_pieces_are_named_with_their_arrays(self):
        """By the file that names them, as each of them has them; an envelope, which one process has, is one piece."""
        deck = DECKS / "cards" / "combination.inp"
        self.assertEqual(run(self.folder, 2, deck, "-o", "r.pvtu").returncode, 0)
        counts = set()
        for file in sorted(self.folder.glob("r.*.pvtu")):
            root = ET.parse(file).getroot()
            self.assertEqual((root.get("type"), root.get("header_type")), ("PUnstructuredGrid", "UInt32"))
            whole = root.find("PUnstructuredGrid")
            sources = [piece.get("Source") for piece in whole.findall("Piece")]
            counts.add(len(sources))
            self.assertEqual(sources, [f"{file.stem}_{k}.vtu" for k in range(len(sources))])
            for source in sources:
                piece = ET.parse(self.folder / source).getroot().find("UnstructuredGrid/Piece")
                for kind in ("PointData", "CellData", "Points"):
                    self.assertEqual(pieces.heads(whole.find("P" + kind)), pieces.heads(piece.find(kind)))
                    self.assertGreater(len(pieces.heads(piece.find(kind))), 0)
        self.assertEqual(counts, {1, 2})
        self.assertIn("r.1.pvtu", (self.folder / "r.pvd").read_text())

    def test_one_process_writes_one_piece(self):
        self.assertEqual(run(self.folder, EMBEDDED, DECKS / "wound_cylinder.inp", "-o", "r.pvtu").returncode, 0)
        self.assertEqual(run(self.folder, EMBEDDED, DECKS / "wound_cylinder.inp", "-o", "whole.vtu").returncode, 0)
        self.assertEqual((self.folder / "r_0.vtu").read_bytes(), (self.folder / "whole.vtu").read_bytes())

    def test_a_result_with_the_name_of_a_piece_is_refused(self):
        for deck, table in (("wound_cylinder", "r_0.vtu"), ("two_cables", "r.2_0.vtu")):
            done = run(self.folder, EMBEDDED, DECKS / f"{deck}.inp", "-o", "r.pvtu", "--csv", table)
            self.assertEqual(done.returncode, 2)
            self.assertIn(f"{table}: is wanted for two results, one of them a piece of r.pvtu", done.stderr)
            self.assertEqual(list(self.folder.iterdir()), [])

    def test_a_piece_that_cannot_be_written(self):
        """Nothing is left, and nothing names pieces that are not there."""
        (self.folder / "r_1.vtu").mkdir()
        done = run(self.folder, 2, DECKS / "wound_cylinder.inp", "-o", "r.pvtu")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("r_1.vtu: is a directory"), 1, done.stderr)
        self.assertEqual([file.name for file in self.folder.iterdir()], ["r_1.vtu"])

    def test_an_error_of_usage_is_told_once(self):
        done = run(self.folder, 3, "--no-such-option")
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.stderr.count("finites-solve: "), 1)

    def test_results_that_only_the_first_process_cannot_write(self):
        done = run(self.folder, 3, DECKS / "solid_cantilever.inp", "-o", self.folder / "nowhere" / "r.vtu")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("cannot be written"), 1)

    def test_a_process_that_fails_alone_ends_all(self):
        """The second one may not take the memory that it needs."""
        deck = self.folder / "plate.inp"
        with deck.open("w") as file:
            subprocess.run([sys.executable, "-B", MODEL, "plate", "100"], stdout=file, check=True)
        own = [str(SOLVER), "--engine", "petsc", str(deck), "-o", "r.vtu"]
        limit = most_addresses(["mpirun", "-n", "2", *own], self.folder) - 100_000
        limited = ["sh", "-c", f"ulimit -v {limit}; exec " + " ".join(own)]
        (self.folder / "r.vtu").unlink()
        start = time.monotonic()
        done = subprocess.run(["mpirun", "-n", "1", *own, ":", "-n", "1", *limited], cwd=self.folder, env=ENVIRONMENT,
                              capture_output=True, text=True, timeout=60, check=False)
        self.assertNotEqual(done.returncode, 0)
        self.assertLess(time.monotonic() - start, 30)
        self.assertRegex(done.stderr, "finites-solve: .*memory")
        self.assertFalse((self.folder / "r.vtu").exists())

    def test_a_process_that_is_killed_ends_all(self):
        with subprocess.Popen(command(3, DECKS / "pushover_two_storeys_orbison.inp", "-o", "r.vtu"), cwd=self.folder,
                              env=ENVIRONMENT, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True) as started:
            ranks = []
            while len(ranks) < 3 and started.poll() is None:
                ranks = children_of(started.pid, "finites-solve-petsc")
                time.sleep(0.02)
            self.assertEqual(len(ranks), 3, "the processes have not started")
            time.sleep(0.3)
            os.kill(ranks[-1], signal.SIGKILL)
            killed = time.monotonic()
            output = started.communicate(timeout=60)
        self.assertLess(time.monotonic() - killed, 10)
        self.assertNotEqual(started.returncode, 0)
        self.assertIn("signal 9", "".join(output))
        self.assertFalse((self.folder / "r.vtu").exists())

    def test_a_run_that_is_ended_by_a_signal_leaves_nothing(self):
        """Files in the making go, and who has started the run learns of the signal. mpirun passes it on after a second."""
        deck = self.folder / "plate.inp"
        with deck.open("w") as file:
            subprocess.run([sys.executable, "-B", MODEL, "plate", "250"], stdout=file, check=True)
        options = ["-o", "r.pvtu", "--csv", "r.csv", "--json", "r.json"]
        for processes, number in ((EMBEDDED, signal.SIGINT), (EMBEDDED, signal.SIGTERM), (2, signal.SIGTERM)):
            with subprocess.Popen(command(processes, deck, *options), cwd=self.folder, env=ENVIRONMENT,
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True) as started:
                while len(list(self.folder.glob("*.part"))) < 3 + max(processes, 1) and started.poll() is None:
                    time.sleep(0.005)
                self.assertIsNone(started.poll(), "the run has ended too early")
                started.send_signal(number)
                started.communicate(timeout=60)
            if processes == EMBEDDED:
                self.assertEqual(started.returncode, -number)
            else:
                self.assertNotEqual(started.returncode, 0)
            self.assertEqual(list(self.folder.iterdir()), [deck])

    def test_several_processes_of_the_embedded_engine_are_refused(self):
        done = subprocess.run(["mpirun", "-n", "2", str(SOLVER), str(DECKS / "solid_cantilever.inp")], cwd=self.folder,
                              env=ENVIRONMENT, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("--engine petsc", done.stderr)
        self.assertEqual(list(self.folder.iterdir()), [])


def most_addresses(program, folder):
    """The largest address space of a process of a run, in kilobytes."""
    most = 0
    with subprocess.Popen(program, cwd=folder, env=ENVIRONMENT, stdout=subprocess.DEVNULL) as started:
        while started.poll() is None:
            for number in children_of(started.pid, "finites-solve-petsc"):
                try:
                    status = pathlib.Path(f"/proc/{number}/status").read_text()
                except OSError:
                    continue
                sizes = [line.split()[1] for line in status.splitlines() if line.startswith("VmPeak")]
                most = max(most, *map(int, sizes), 0)
            time.sleep(0.01)
    return most


def family_test(name, more):
    return lambda self: self.compare(name, more)


for family, extra in FAMILIES.items():
    setattr(Engines, "test_same_" + family.replace("/", "_"), family_test(family, extra))

if __name__ == "__main__":
    unittest.main()
