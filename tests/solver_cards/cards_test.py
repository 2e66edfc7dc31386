#!/usr/bin/env python3
"""What script/cards.py must find: each line here, alone in a deck that is otherwise right, fails with its message.

    cards_test.py SOLVER
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOLVER = pathlib.Path(sys.argv.pop()).resolve()
sys.path.insert(0, str(ROOT / "script"))
import cards  # noqa: E402

BAR = """*HEADING
A bar of length 2 and stiffness 100 under a force of 10, and its step again under 20
{lines}
*NODE
1, 0., 0., 0.
2, 2., 0., 0.
*ELEMENT, TYPE=T3D2, ELSET=BAR
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
200., 0.3
*SOLID SECTION, ELSET=BAR, MATERIAL=M
1.
*BOUNDARY
1, 1, 3
2, 2, 3
*STEP
*STATIC
*CLOAD
{loaded}, 1, 10.
*END STEP
*STEP
*STATIC
*CLOAD
2, 1, 20.
*END STEP
"""

RIGHT = (
    "** expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; P L / (E A)",
    "** expect nodes step=2 node=2 ux = 0.2 within 1e-9 ; twice that",
    "** expect nodes step=2 node=2 uy = 0 within 1e-9 abs ; held",
    "** expect members step=1 element=1 end=2 force_x = 10 within 1e-9 ; the force",
    "** expect stations step=1 element=1 distance=2 N = 10 within 1e-9 ; the force",
    '** expect output "elements 1   T3D2 1"',
    '** expect warning "do not carry over"',
    "** expect nodes step=1 node=1 ux = 0 within 1e-9 abs ; held\n** run with --station-count 3",
)

WRONG = (
    ("", "nothing is tested"),
    ("** a comment", "nothing is tested"),
    ("** expect nodes step=1 node=2 ux = 0.1001 within 1e-4 ; wrong", "expected 0.1001 within"),
    ("** expect nodes step=1 node=2 ux = -0.1 within 0.2 ; the sign", "expected -0.1"),
    ("** expect nodes step=1 node=2 uy = 1e-3 within 1e-9 ; not moved", "uy is"),
    ("** expect nodes step=1 node=2 ux = 0.1 ; no tolerance", "within TOLERANCE"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9", "where does the number come from"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9 ;  ", "where does the number come from"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 0.5 ; wide", "tests nothing"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 0.1 abs ; wide", "lets 0 pass"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 0 ; no tolerance", "above 0"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9 relative ; a word", "expected a number"),
    ("** expect nodes step=1 node=2 uy = 0 within 1e-9 ; a share of nothing", "with 'abs'"),
    ("** expect nodes step=1 node=2 ux = nan within 1e-9 ; no number", "not finite"),
    ("** expect nodes step=1 node=2 ux = x within 1e-9 ; no number", "no number"),
    ("** expect nodes step=1 node=2 ux uy = 0.1 within 1e-9 ; two columns", "expected one column"),
    ("** expect nodes step=1 node=2 = 0.1 within 1e-9 ; no column", "expected one column"),
    ("** expect nodes step=1 node=2 u = 0.1 within 1e-9 ; a column that is not there", "no column u"),
    ("** expect nodes step=1 knot=2 ux = 0.1 within 1e-9 ; a key that is not there", "no column knot"),
    ("** expect nodes step=1 node=3 ux = 0.1 within 1e-9 ; a row that is not there", "0 of 2 rows"),
    ("** expect nodes step=1 ux = 0.1 within 1e-9 ; two rows", "2 of 2 rows"),
    ("** expect nodes step=1 node=2 node=1 ux = 0.1 within 1e-9 ; a key twice", "stands twice"),
    ("** expect nodes node=2 ux = 0.1 within 1e-9 ; no step", "which step"),
    ("** expect nodes step=3 node=2 ux = 0.1 within 1e-9 ; no such step", "no table nodes of step 3"),
    ("** expect solids step=1 node=2 sxx = 0.1 within 1e-9 ; no solids", "no rows"),
    ("** expect curve step=1 factor=1 displacement = 0.1 within 1e-9 ; no pushover", "no table curve"),
    ("** expect frequency step=1 mode=1 = 0.1 within 1e-9 ; a static step", "no column mode"),
    ("** expect frequency step=1 = 0.1 within 1e-9 ; no mode", "which mode"),
    ("** expect node step=1 node=2 ux = 0.1 within 1e-9 ; an unknown table", "nothing that can be expected"),
    ("** expects nodes step=1 node=2 ux = 0.1 within 1e-9 ; another word", "written like this"),
    ("**expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; no blank", "written like this"),
    ("** Expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; a capital", "written like this"),
    ('** expect warning "no such warning"', "no warning has"),
    ('** expect warning ""', 'warning "part of the text"'),
    ("** expect warning do not carry over", 'warning "part of the text"'),
    ("** expect no warning", "there are warnings"),
    ('** expect output "do not carry over"', "no output has"),
    ('** expect dat "displacements"', "no dat has"),
    ('** expect error "not defined"', "an error is expected"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; right\n** run with --bogus", "exit status 2"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; right\n** run with --quiet\n** run with --quiet", "second line"),
    ("** run with --quiet", "nothing is tested"),
)

REFUSED = (
    ('** expect error "*CLOAD: node 7 is not defined"', None),
    ('** expect error "another message"', "no error has"),
    ('** expect warning "do not carry over"', "exit status 1"),
    ("** expect nodes step=1 node=2 ux = 0.1 within 1e-9 ; right", "exit status 1"),
    ('** expect error "*CLOAD"\n** expect nodes step=1 node=2 ux = 1 within 1e-9 ; nothing', "has no results"),
)


def compared(text, *more):
    with tempfile.TemporaryDirectory() as folder:
        deck = pathlib.Path(folder, "bar.inp")
        deck.write_text(text)
        return subprocess.run([sys.executable, "-B", ROOT / "script/cards.py", "--solver", SOLVER, deck, *more],
                              text=True, capture_output=True, check=False)


class Cards(unittest.TestCase):
    def expect(self, lines, loaded, message):
        with tempfile.TemporaryDirectory() as folder, self.subTest(lines=lines):
            deck = pathlib.Path(folder, "bar.inp")
            deck.write_text(BAR.format(lines=lines, loaded=loaded))
            faults, _ = cards.faults_of(SOLVER, deck)
            if message is None:
                self.assertEqual(faults, [])
            else:
                self.assertEqual(len(faults), 1, faults)
                self.assertIn(message, faults[0])
                self.assertIn("bar.inp", faults[0])

    def test_right_lines_pass(self):
        for lines in (*RIGHT, "\n".join(RIGHT)):
            self.expect(lines, 2, None)

    def test_wrong_lines_fail(self):
        for lines, message in WRONG:
            self.expect(lines, 2, message)

    def test_one_wrong_line_among_right_ones_fails(self):
        lines = "\n".join((*RIGHT, WRONG[2][0]))
        self.expect(lines, 2, WRONG[2][1])
        self.assertEqual(compared(BAR.format(lines=RIGHT[0], loaded=2)).returncode, 0)
        ended = compared(BAR.format(lines=lines, loaded=2))
        self.assertEqual(ended.returncode, 1)
        self.assertIn("bar.inp:12: expect nodes", ended.stdout)
        self.assertIn("1 decks, 9 expectations; 1 deck fails", ended.stdout)

    def test_decks_that_are_refused(self):
        for lines, message in REFUSED:
            self.expect(lines, 7, message)

    def test_a_deck_or_program_that_is_not_there_fails(self):
        self.assertEqual(compared(BAR.format(lines=RIGHT[0], loaded=2), ROOT / "no_such_deck.inp").returncode, 1)
        self.assertEqual(compared(BAR.format(lines=RIGHT[0], loaded=2), "--solver", ROOT / "no_such_program").returncode, 1)

    def test_every_keyword_of_the_reader_has_a_deck(self):
        """That of an export counts; a name in a comment does not."""
        table = (ROOT / "solver/deck/keywords.cpp").read_text()
        known = {name.replace(" ", "") for name in re.findall(r'^    \{"(\*[A-Z ]+)",', table, re.MULTILINE)}
        self.assertGreater(len(known), 30)
        text = "\n".join(path.read_text().upper() for folder in ("cards", "exports")
                         for path in (ROOT / "decks" / folder).rglob("*.*") if path.suffix in (".inp", ".msh"))
        used = {name.replace(" ", "") for name in re.findall(r"^(\*[A-Z ]+)", text, re.MULTILINE)}
        self.assertEqual(sorted(known - used), [])

    def test_a_program_that_ends_otherwise_fails(self):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder, "program")
            for script in ("exit 0", "kill -SEGV $$", "exit 3"):
                program.write_text(f"#!/bin/sh\n{script}\n")
                program.chmod(0o755)
                for lines in (RIGHT[0], '** expect error "x"', '** expect output "x"', '** expect warning "x"'):
                    ended = compared(BAR.format(lines=lines, loaded=2), "--solver", program)
                    self.assertEqual(ended.returncode, 1, (script, lines))


if __name__ == "__main__":
    unittest.main()
