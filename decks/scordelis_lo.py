#!/usr/bin/env python3
"""The Scordelis-Lo roof, a quarter of it, in triangles.

A cylindrical roof under its own weight: radius 25, length 50, thickness 0.25, half angle 40 degrees, E 4.32e8, nu 0,
weight 90 per unit area. Its curved ends stand on diaphragms that are rigid in their plane and free along the roof;
the straight edges are free. Scordelis and Lo, 1964; the vertical deflection at the middle of the free edge, 0.3024 by
their theory, is the value by which shell elements are compared since MacNeal and Harder, 1985.

    scordelis_lo.py [sides] > deck.inp        sides: squares a side of the quarter, each cut in two (default 32)

x runs along the roof from its middle, z points up, the angle counts from the crown. The node at the middle of the free
edge is the last one of the first row, number sides + 1.
"""

import argparse
import math

from shell_deck import node_set

RADIUS, LENGTH, THICKNESS, HALF_ANGLE = 25.0, 50.0, 0.25, math.radians(40.0)
YOUNG, POISSON = 4.32e8, 0.0
WEIGHT_PER_AREA = 90.0
GRAVITY = 9.81


def nodes(sides):
    """Row by row along the roof; in a row from the crown to the free edge."""
    for i in range(sides + 1):
        for j in range(sides + 1):
            angle = HALF_ANGLE * j / sides
            yield (0.5 * LENGTH * i / sides, RADIUS * math.sin(angle), RADIUS * math.cos(angle))


def triangles(sides):
    """Each square cut along alternating diagonals, so that no direction is preferred; normals point outwards."""
    for i in range(sides):
        for j in range(sides):
            a = i * (sides + 1) + j + 1
            b, c, d = a + sides + 1, a + sides + 2, a + 1
            if (i + j) % 2 == 0:
                yield (a, b, c)
                yield (a, c, d)
            else:
                yield (a, b, d)
                yield (b, c, d)


def deck(sides):
    row = sides + 1
    yield "*HEADING"
    yield f"Scordelis-Lo roof, a quarter, {2 * sides * sides} triangles"
    yield "*NODE"
    for number, xyz in enumerate(nodes(sides), start=1):
        yield f"{number}, " + ", ".join(repr(round(c, 12)) for c in xyz)
    yield "*ELEMENT, TYPE=S3, ELSET=ROOF"
    for number, corners in enumerate(triangles(sides), start=1):
        yield f"{number}, " + ", ".join(str(n) for n in corners)
    yield from node_set("MIDDLE", range(1, row + 1))
    yield from node_set("DIAPHRAGM", range(sides * row + 1, row * row + 1))
    yield from node_set("CROWN", range(1, row * row + 1, row))
    yield from node_set("FREE_EDGE_MIDDLE", [row])
    yield from ["*MATERIAL, NAME=CONCRETE", "*ELASTIC", f"{YOUNG:g}, {POISSON:g}", "*DENSITY",
                repr(WEIGHT_PER_AREA / (THICKNESS * GRAVITY)),
                "*SHELL SECTION, ELSET=ROOF, MATERIAL=CONCRETE, FORMULATION=THIN", f"{THICKNESS:g}",
                "** the planes of symmetry across and along the roof, and the diaphragm",
                "*BOUNDARY", "MIDDLE, XSYMM", "CROWN, YSYMM", "DIAPHRAGM, 2, 3",
                "*STEP, NAME=OWN_WEIGHT", "*STATIC", "*DLOAD", f"ROOF, GRAV, {GRAVITY:g}, 0, 0, -1", "*END STEP"]


def decks():
    yield "scordelis_lo_tri", deck(32)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Writes the deck of the Scordelis-Lo roof to the standard output.")
    parser.add_argument("sides", nargs="?", type=int, default=32, help="squares a side of the quarter")
    arguments = parser.parse_args()
    if not 1 <= arguments.sides <= 1000:
        parser.error("sides: 1 to 1000")
    print("\n".join(deck(arguments.sides)))
