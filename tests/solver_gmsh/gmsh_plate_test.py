#!/usr/bin/env python3
"""The example of a plate from Gmsh: what its supports carry, how its deflection converges, and the picture.

    gmsh_plate_test.py SOLVER
"""
import csv
import math
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOLVER = pathlib.Path(sys.argv.pop()).resolve()
PRESSURE, AREA = 2000.0, 1.2 * 0.8 - math.pi * 0.12 ** 2


def run(folder, size):
    subprocess.run([sys.executable, "-B", ROOT / "examples/gmsh_plate/gmsh_plate.py", "--folder", folder, "--size", str(size),
                    "--solver", SOLVER], check=True, capture_output=True, text=True)
    with open(folder / "plate.csv", newline="") as file:
        return {int(row["node"]): {name: float(value) for name, value in row.items()} for row in csv.DictReader(file)}


def blocks(path):
    """(keyword line, data lines) of a deck."""
    for block in re.split(r"^(?=\*[A-Za-z])", path.read_text(), flags=re.MULTILINE)[1:]:
        first, *lines = block.splitlines()
        yield first, [line for line in lines if not line.startswith("**")]


def area_of_plate(path):
    """The area of the triangles of the set PLATE, from the mesh."""
    places, corners, plate = {}, {}, set()
    for keyword, lines in blocks(path):
        fields = [[field for field in re.split(r"[,\s]+", line) if field] for line in lines]
        if keyword == "*NODE":
            places = {int(f[0]): [float(x) for x in f[1:]] for f in fields}
        elif keyword.startswith("*ELEMENT"):
            corners.update({int(f[0]): [int(n) for n in f[1:]] for f in fields})
        elif keyword == "*ELSET,ELSET=PLATE":
            plate = {int(number) for f in fields for number in f}
    total = 0
    for triangle in (corners[number] for number in plate):
        (xa, ya, za), (xb, yb, zb), (xc, yc, zc) = (places[n] for n in triangle)
        assert za == zb == zc == 0
        total += abs((xb - xa) * (yc - ya) - (xc - xa) * (yb - ya)) / 2
    return total


class GmshPlate(unittest.TestCase):
    def test_plate(self):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            coarse, fine = run(folder / "coarse", 0.08), run(folder / "fine", 0.04)
            area = area_of_plate(folder / "fine/mesh.inp")
            self.assertLess(abs(area / AREA - 1), 2e-3)  # a polygon in the place of the hole
            carried = sum(row["force_z"] for row in fine.values())
            self.assertLess(abs(carried / (PRESSURE * area) - 1), 1e-9)
            self.assertTrue(all(row["force_z"] == 0 for row in fine.values() if row["x"] > 1e-9))
            printed = re.search(r"total force .* for set CLAMPED.*\n\n(.*)\n", (folder / "fine/plate.dat").read_text())
            self.assertAlmostEqual(float(printed[1].split()[2]) / carried, 1, delta=1e-6)
            sag = [min(row["uz"] for row in nodes.values()) for nodes in (coarse, fine)]
            self.assertLess(sag[1], 0)
            self.assertLess(abs(sag[0] / sag[1] - 1), 0.03)
            # It sags most at the corner that is farthest from the stiffener and the wall.
            lowest = min(fine.values(), key=lambda row: row["uz"])
            self.assertEqual((lowest["x"], lowest["y"]), (1.2, 0))
            picture = (folder / "fine/plate.png").read_bytes()
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            self.assertGreater(len(picture), 10000)


if __name__ == "__main__":
    unittest.main()
