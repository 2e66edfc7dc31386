#!/usr/bin/env python3
"""The solver on a terminal, which is a pseudo terminal here: the line of long phases, colour, and what stays as it is.

    terminal_test.py SOLVER SCRIPT_MAN_PAGE

Also --threads, --memory against the measured peak of a run, --check against masses and forces by hand, the man page.
"""
import fcntl
import os
import pathlib
import pty
import re
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import term_decks  # noqa: E402

SOLVER = pathlib.Path(sys.argv.pop(1)).resolve()
MAN_PAGE = pathlib.Path(sys.argv.pop(1)).resolve()
WIDTH = 40
WARNED = term_decks.plate(2).replace("*STEP", "*NODE FILE\nU\n*STEP", 1).replace("*STATIC", "*STATIC\n*CONTROLS", 1)


def environment(**changes):
    kept = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "TERM")}
    return {**kept, "TERM": "xterm", **changes}


def piped(folder, *arguments, **changes):
    return subprocess.run([SOLVER, *arguments], cwd=folder, env=environment(**changes), capture_output=True,
                          check=False)


def on_terminal(folder, *arguments, **changes):
    """Runs with the error stream on a terminal of WIDTH columns: status, standard output, what the terminal got."""
    leader, follower = pty.openpty()
    fcntl.ioctl(follower, termios.TIOCSWINSZ, struct.pack("HHHH", 24, WIDTH, 0, 0))
    got = bytearray()

    def read():
        while True:
            try:
                piece = os.read(leader, 65536)
            except OSError:  # the other side is closed
                return
            if not piece:
                return
            got.extend(piece)

    reader = threading.Thread(target=read)
    reader.start()
    with tempfile.TemporaryFile() as out:
        status = subprocess.run([SOLVER, *arguments], cwd=folder, env=environment(**changes), stdout=out,
                                stderr=follower, check=False).returncode
        os.close(follower)
        reader.join()
        os.close(leader)
        out.seek(0)
        return status, out.read(), bytes(got).replace(b"\r\n", b"\n")


def seen(shown):
    """What is left on the screen: lines written over by CR, wiped by CSI K."""
    left = []
    for line in shown.split(b"\n"):
        kept = b""
        for piece in line.split(b"\r"):
            kept = piece.split(b"\033[K")[-1] if b"\033[K" in piece else piece + kept[len(piece):]
        left.append(kept)
    return b"\n".join(left)


def without_times(out):
    return out.split(b"\ntime\n")[0]


class InAFolder(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def deck(self, text):
        (self.folder / "d.inp").write_text(text)
        return "d.inp"


class OnATerminal(InAFolder):
    # A block whose factorisation by Eigen takes seconds.
    def test_the_line_of_a_long_phase_comes_and_goes(self):
        deck = self.deck(term_decks.block(14))
        status, out, shown = on_terminal(self.folder, deck, "--solver", "eigen")
        self.assertEqual(status, 0, shown)
        lines = [piece.replace(b"\033[K", b"") for line in shown.split(b"\n") for piece in line.split(b"\r")[1:]
                 if not piece.startswith(b"\033[K")]
        self.assertTrue(any(re.match(rb"factorisation, \d+ s", line) for line in lines), shown)
        for line in lines:
            self.assertLess(len(line), WIDTH)
        in_pipe = piped(self.folder, deck, "--solver", "eigen")
        self.assertEqual(re.sub(rb"\033\[[0-9;]*m", b"", seen(shown)), in_pipe.stderr)
        self.assertEqual(without_times(out), without_times(in_pipe.stdout))
        self.assertNotIn(b"\r", in_pipe.stderr + in_pipe.stdout + out)
        # --quiet has no line.
        self.assertNotIn(b"\r", on_terminal(self.folder, deck, "--solver", "eigen", "--quiet")[2])

    def test_iterations_of_cables(self):
        n = 60
        text = term_decks.net(n)
        status, _, shown = on_terminal(self.folder, self.deck(text))
        self.assertEqual(status, 0, shown)
        self.assertRegex(shown, rb"\rcables: iteration \d+, \d")
        self.assertNotIn(b"cables: iteration", seen(shown))

    def test_a_dumb_terminal_gets_what_a_pipe_gets(self):
        deck = self.deck(term_decks.block(6))
        for kind in ("dumb", ""):
            _, _, shown = on_terminal(self.folder, deck, "--solver", "eigen", TERM=kind)
            self.assertEqual(shown, piped(self.folder, deck, "--solver", "eigen").stderr)

    def test_colour(self):
        deck = self.deck(WARNED)
        colour = b"\033[1;35mwarning:\033[0m "
        plain = piped(self.folder, deck).stderr
        self.assertIn(b"warning: ", plain)
        self.assertNotIn(b"\033", plain)
        self.assertEqual(piped(self.folder, deck, "--color", "always").stderr, plain.replace(b"warning: ", colour))
        self.assertEqual(piped(self.folder, deck, "--color=always", NO_COLOR="1").stderr.count(colour),
                         plain.count(b"warning: "))
        self.assertEqual(on_terminal(self.folder, deck)[2], plain.replace(b"warning: ", colour))
        self.assertEqual(on_terminal(self.folder, deck, NO_COLOR="")[2], plain.replace(b"warning: ", colour))
        for arguments, changes in (((), {"NO_COLOR": "1"}), ((), {"TERM": "dumb"}), (("--color=never",), {})):
            self.assertEqual(on_terminal(self.folder, deck, *arguments, **changes)[2], plain)
        for wrong in (("no.inp",), ("--threads", "0", deck)):
            status, _, shown = on_terminal(self.folder, *wrong)
            self.assertNotEqual(status, 0)
            self.assertTrue(shown.startswith(b"\033[1;31mfinites-solve:\033[0m "), shown)
        self.assertEqual(on_terminal(self.folder, "no.inp", "--color=never")[2], piped(self.folder, "no.inp").stderr)


class Threads(InAFolder):
    def most_threads(self, *arguments):
        with subprocess.Popen([SOLVER, "d.inp", "--quiet", *arguments], cwd=self.folder,
                              env=environment(OPENBLAS_NUM_THREADS="1"), stderr=subprocess.PIPE) as run:
            most = 0
            while run.poll() is None:
                most = max(most, len(os.listdir(f"/proc/{run.pid}/task")) if os.path.exists(f"/proc/{run.pid}") else 0)
                time.sleep(0.01)
            self.assertEqual(run.returncode, 0, run.stderr.read())
        return most

    def test_their_number_and_their_answer(self):
        self.deck(term_decks.plate(40))
        self.assertEqual(self.most_threads("--threads", "1", "--csv", "one.csv"), 1)
        if b"MUMPS" in piped(self.folder, "d.inp").stdout:
            # OpenBLAS keeps its second thread; those of the loops over elements live too shortly to be seen for sure.
            self.assertIn(self.most_threads("--threads", "2", "--csv", "two.csv"), (2, 3))
            one, two = ([float(x) for line in (self.folder / name).read_text().splitlines()[1:] for x in line.split(",")]
                        for name in ("one.csv", "two.csv"))
            largest = max(abs(x) for x in one)
            for a, b in zip(one, two):
                self.assertLess(abs(a - b), 1e-9 * largest)

    def test_wrong_numbers(self):
        self.deck(WARNED)
        for wrong in ("0", "-1", "129", "two", "1.5", ""):
            said = piped(self.folder, "d.inp", "--threads=" + wrong)
            self.assertEqual(said.returncode, 2, wrong)
            self.assertIn(b"--threads", said.stderr)
        more = str((os.cpu_count() or 1) + 1)
        self.assertIn(b"processors", piped(self.folder, "d.inp", "--threads", more).stderr)


class Memory(InAFolder):
    def peak(self, *arguments):
        """Of a run, in megabytes."""
        run = os.spawnve(os.P_NOWAIT, SOLVER, [SOLVER, *arguments], environment())
        _, status, used = os.wait4(run, 0)
        self.assertEqual(status, 0)
        return used.ru_maxrss * 1024 / 1e6

    def test_estimate_and_peak(self):
        for name, text in (("plate", term_decks.plate(80)), ("frame", term_decks.frame(10)),
                           ("block", term_decks.block(12)),
                           ("modes", term_decks.plate(60, "*FREQUENCY\n10", ()))):
            deck = str(self.folder / self.deck(text))
            for kind in ("mumps", "eigen"):
                said = piped(self.folder, deck, "--memory", "--solver", kind)
                if b"has no MUMPS" in said.stderr:
                    continue
                self.assertEqual(said.returncode, 0, said.stderr)
                self.assertEqual(os.listdir(self.folder), ["d.inp"])  # nothing is written
                lines = dict(re.findall(r"^  (\S.*?) +(\d+) MB", said.stdout.decode(), re.MULTILINE))
                self.assertEqual(set(lines), {"program", "model", "element records", "matrix", "factors", "results",
                                              "at its peak"})
                with tempfile.TemporaryDirectory() as results:
                    measured = self.peak(deck, "--quiet", "--solver", kind, "-o", os.path.join(results, "r.vtu"))
                ratio = float(lines["at its peak"]) / measured
                print(f"{name} {kind} estimate by peak {ratio:.2f}", file=sys.stderr)
                self.assertGreater(ratio, 0.7, (kind, said.stdout))
                self.assertLess(ratio, 1.5, (kind, said.stdout))

    def test_what_combinations_keep(self):
        # 40 steps whose solutions wait for combinations, and two envelopes: more than a third of the whole.
        text = term_decks.plate(50)
        start = text.index("*STEP")
        step, text = text[start:], text[:start]
        text += "".join(step.replace("*STEP", f"*STEP, NAME=S{k}", 1) for k in range(40))
        text += "".join(f"*COMBINATION, NAME=C{c}\n" + "".join(f"S{k}, 1.{k}\n" for k in range(40)) for c in range(2))
        text += "*ENVELOPE, NAME=E\nC0\nC1\n*ENVELOPE, NAME=F\nC0\n"
        lines, _ = self.estimate(text)
        deck = str(self.folder / "d.inp")
        with tempfile.TemporaryDirectory() as results:
            measured = self.peak(deck, "--quiet", "-o", os.path.join(results, "r.vtu"))
        self.assertGreater(lines["combinations"], lines["at its peak"] / 3)
        self.assertGreater(lines["at its peak"] / measured, 0.75, lines)
        self.assertLess(lines["at its peak"] / measured, 1.35, lines)

    def test_what_does_not_fit(self):
        deck = self.deck(term_decks.plate(60))
        said = piped(self.folder, deck, "--memory", "--memory-limit", "50")
        self.assertEqual(said.returncode, 1)
        self.assertIn(b"MB of --memory-limit beside what the program holds: it does not fit\n", said.stdout)

    def estimate(self, text, *options, **changes):
        said = piped(self.folder, self.deck(text), "--memory", *options, **changes)
        return {name: int(size) for name, size in
                re.findall(r"^  (\S.*?) +(\d+) MB", said.stdout.decode(), re.MULTILINE)}, said

    def test_the_peak_is_the_sum_of_what_is_held_at_once(self):
        lines, _ = self.estimate(term_decks.block(12))
        held = sum(lines[name] for name in ("program", "model", "element records", "factors"))
        self.assertLessEqual(abs(lines["at its peak"] - held - max(lines["matrix"], lines["results"])), 5)  # each rounded up
        self.assertGreater(lines["program"], 5)

    def test_the_largest_step_counts(self):
        first = term_decks.plate(40, "*FREQUENCY\n60", ())
        alone, _ = self.estimate(first)
        with_another, _ = self.estimate(first + "*STEP\n*STATIC\n*CLOAD\n1600, 3, 1.\n*END STEP\n")
        self.assertGreaterEqual(with_another["at its peak"], alone["at its peak"] - 2)
        static, _ = self.estimate(term_decks.plate(40))
        self.assertGreater(alone["at its peak"], static["at its peak"] + 10)

    def test_modes_take_their_vectors(self):
        # Each mode is held once with its results, and three times as wide a basis while it is sought.
        vectors = 41 * 41 * 6 * 8 * 90 / 1e6
        few, _ = self.estimate(term_decks.plate(40, "*FREQUENCY\n10", ()))
        many, _ = self.estimate(term_decks.plate(40, "*FREQUENCY\n100", ()))
        self.assertGreater(many["results"] - few["results"], vectors - 1)
        self.assertGreater(many["matrix"] - few["matrix"], 2 * vectors - 1)

    def test_paths_hold_a_second_matrix(self):
        # 12 bytes an entry: a value and the row.
        text = term_decks.plate(60).replace("*DENSITY", "*PLASTIC\n1e6, 0\n*DENSITY").replace("10.\n", "10., 5\n", 1)
        static, _ = self.estimate(text.replace("*STATIC", "*STATIC, ELASTIC"))
        path, said = self.estimate(text.replace("*STATIC", "*ELASTOPLASTIC, NODE=3000, DOF=3"))
        self.assertIn("matrix", path, said.stderr)
        entries = int(re.search(rb"(\d+) entries", said.stdout).group(1))
        self.assertGreater(path["matrix"] - static["matrix"], 0.8 * 12 * entries / 1e6)

    def test_limits_of_the_process_count(self):
        self.deck(term_decks.block(14))
        limit = lambda megabytes: lambda: resource.setrlimit(resource.RLIMIT_AS, (megabytes * 1000000,) * 2)
        said = [subprocess.run([SOLVER, "d.inp", "--memory"], cwd=self.folder, env=environment(OPENBLAS_NUM_THREADS="1"),
                               preexec_fn=limit(size), capture_output=True, check=False) for size in (260, 2000)]
        self.assertEqual([each.returncode for each in said], [1, 0], said)
        self.assertIn(b"left by the limit of the process (ulimit -v): it does not fit", said[0].stdout)

    def test_a_number_is_told_where_it_belongs(self):
        deck = self.deck(WARNED)
        for words in (("--memory", "500", deck), ("--memory=500", deck), (deck, "--memory", "500")):
            said = piped(self.folder, *words)
            self.assertEqual(said.returncode, 2)
            self.assertIn(b"--memory-limit 500", said.stderr)


class Contents(InAFolder):
    # 1000 by 1000 by 10 of 7.85e-9: 0.0785, in the middle; 0.01 along the normal gives 1e4 at (500, 500).
    def test_of_a_plate(self):
        said = piped(self.folder, self.deck(term_decks.plate(8)), "--check")
        self.assertEqual(said.returncode, 0, said.stderr)
        for line in ("  nodes         81; x 0 to 1000, y 0 to 1000, z 0 to 0", "  elements      64: 64 S4",
                     "  node sets     1: HELD (9)", "  mass          0.0785, centre at 500, 500, 0",
                     "  step 1: static", "force 0, 0, 10000; moment about the origin 5e+06, -5e+06, 0",
                     "    supports    54 degrees of freedom of 9 nodes: 9 ux, 9 uy, 9 uz, 9 rx, 9 ry, 9 rz"):
            self.assertIn(line, said.stdout.decode())
        self.assertTrue(said.stdout.endswith(b"d.inp: 64 elements checked, nothing found\n"), said.stdout)


    def check_of(self, text):
        return piped(self.folder, self.deck(text), "--check").stdout.decode()

    def test_mass_off_the_diagonal(self):
        # A tetrahedron of 1/6 by 6 with its centre at a quarter, and 2 at (1, 0, 0).
        text = "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n4, 0, 0, 1\n*ELEMENT, TYPE=C3D4, ELSET=T\n1, 1, 2, 3, 4\n" \
               "*ELEMENT, TYPE=MASS, ELSET=M\n2, 2\n*MASS, ELSET=M\n2.\n*MATERIAL, NAME=S\n*ELASTIC\n1., 0.\n*DENSITY\n6.\n" \
               "*SOLID SECTION, ELSET=T, MATERIAL=S\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n3, 3\n*STEP\n*STATIC\n*CLOAD\n4, 3, 1.\n*END STEP\n"
        self.assertIn("  mass          3, centre at 0.75, 0.0833333, 0.0833333\n", self.check_of(text))

    def test_combinations_surfaces_and_quadratic_elements(self):
        text = "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 2, 0, 0\n4, 0, 1, 0\n5, 1, 1, 0\n6, 2, 1, 0\n*ELEMENT, TYPE=B32, ELSET=B\n1, 1, 2, 3\n" \
               "*ELEMENT, TYPE=S4, ELSET=P\n2, 1, 2, 5, 4\n3, 2, 3, 6, 5\n*SURFACE, NAME=BOTH\nP, SPOS\n*SURFACE, NAME=DOTS, TYPE=NODE\n1\n2\n3\n" \
               "*MATERIAL, NAME=S\n*ELASTIC\n1000., 0.\n*SHELL SECTION, ELSET=P, MATERIAL=S\n0.1\n" \
               "*BEAM SECTION, ELSET=B, MATERIAL=S, SECTION=RECT\n1., 1.\n0, 1, 0\n*BOUNDARY\n1, 1, 6\n" \
               "*STEP, NAME=G\n*STATIC\n*CLOAD\n3, 1, 0.1\n3, 1, 0.2\n6, 1, -0.3\n3, 2, 5.\n*END STEP\n*STEP, NAME=Q\n*STATIC\n*CLOAD\n3, 1, 1.\n*END STEP\n" \
               "*COMBINATION, NAME=C\nG, 1.35, Q, -1.5\n"
        said = self.check_of(text)
        self.assertIn("1.35 G + -1.5 Q", said)
        self.assertIn("2 of them are the parts of 1 quadratic one", said)
        self.assertIn("BOTH (2), DOTS (3)", said)
        # 0.1 + 0.2 - 0.3 is rounding; 5 at x = 2 turns by 10, -0.3 at y = 1 by 0.3.
        self.assertIn("force 0, 5, 0; moment about the origin 0, 0, 10.3\n", said)


@unittest.skipUnless(shutil.which("help2man"), "help2man is not installed: the build makes no man page")
class ManPage(InAFolder):
    def test_it_names_every_option_and_is_well_formed(self):
        page = self.folder / "finites-solve.1"
        subprocess.run([MAN_PAGE, SOLVER, page], check=True)
        options = set(re.findall(r"--[a-z][a-z-]+", piped(self.folder, "--help").stdout.decode()))
        self.assertGreater(len(options), 20)
        text = page.read_text().replace("\\-", "-")
        for option in options:
            self.assertIn(option, text)
        if shutil.which("groff"):
            said = subprocess.run(["groff", "-man", "-ww", "-z", page], capture_output=True, text=True, check=False)
            self.assertEqual(said.stderr, "")
        if shutil.which("mandoc"):
            said = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page], capture_output=True, text=True,
                                  check=False)
            self.assertEqual([line for line in said.stdout.splitlines() if "cannot parse date" not in line], [])


if __name__ == "__main__":
    unittest.main()
