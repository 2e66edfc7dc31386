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
            self.assertEqual(self.most_threads("--threads", "2", "--csv", "two.csv"), 2)
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

    def test_what_does_not_fit(self):
        deck = self.deck(term_decks.plate(60))
        said = piped(self.folder, deck, "--memory", "--memory-limit", "50")
        self.assertEqual(said.returncode, 1)
        self.assertIn(b"MB of --memory-limit beside what the program holds: it does not fit\n", said.stdout)

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
