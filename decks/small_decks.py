"""Decks of shells and membranes in triangles. Each states in its heading what must come out, and why."""

import math


class Sheet:
    """A rectangle of squares cut in two along alternating diagonals; side 1-2 of every triangle runs along x."""

    def __init__(self, length, width, along, across):
        self.length, self.width, self.along, self.across = length, width, along, across

    def node(self, i, j):
        return i * (self.across + 1) + j + 1

    def column(self, i):
        return [self.node(i, j) for j in range(self.across + 1)]

    def row(self, j):
        return [self.node(i, j) for i in range(self.along + 1)]

    def lines(self, kind):
        yield "*NODE"
        for i in range(self.along + 1):
            for j in range(self.across + 1):
                yield f"{self.node(i, j)}, {self.length * i / self.along!r}, {self.width * j / self.across!r}, 0"
        yield f"*ELEMENT, TYPE={kind}, ELSET=SHEET"
        number = 0
        for i in range(self.along):
            for j in range(self.across):
                a, b, c, d = self.node(i, j), self.node(i + 1, j), self.node(i + 1, j + 1), self.node(i, j + 1)
                for corners in ((a, b, c), (c, d, a)) if (i + j) % 2 == 0 else ((a, b, d), (c, d, b)):
                    number += 1
                    yield f"{number}, " + ", ".join(map(str, corners))


def node_set(name, members):
    yield f"*NSET, NSET={name}"
    for start in range(0, len(members), 16):
        yield ", ".join(map(str, members[start : start + 16]))


def rounded(value):
    return repr(round(value, 12) + 0.0)


def line_load(nodes, direction, total):
    """A uniform load on equal sides: the end nodes take half a side."""
    share = total / (len(nodes) - 1)
    for n in nodes:
        yield f"{n}, {direction}, {share / 2 if n in (nodes[0], nodes[-1]) else share!r}"


def strip(title, section, material, boundary, step):
    sheet = Sheet(10.0, 2.0, 20, 4)
    yield "*HEADING"
    yield from title
    yield from sheet.lines("S3")
    yield from node_set("ROOT", sheet.column(0))
    yield from node_set("TIP", sheet.column(20))
    yield from node_set("CORNER", [sheet.node(0, 0)])
    yield from material
    yield f"*SHELL SECTION, ELSET=SHEET, MATERIAL=M, FORMULATION=THIN{section}"
    yield "0.1"
    yield "*BOUNDARY"
    yield from boundary
    yield "*STEP"
    yield "*STATIC"
    yield from step(sheet)
    yield "*END STEP"


STEEL = ["*MATERIAL, NAME=M", "*ELASTIC", "200000, 0"]
BOARD = ["*MATERIAL, NAME=M", "*ELASTIC, TYPE=LAMINA", "160000, 40000, 0.25, 20000, 16000, 16000"]
CLAMPED = ["ROOT, ENCASTRE"]
FREE_TO_NARROW = ["ROOT, 1", "ROOT, 5", "CORNER, 2, 4"]


def cantilever_strip():
    return strip(
        ["Cantilever strip 10 x 2 x 0.1, E 200000, nu 0, 0.01 down at the tip:",
         "the tip goes down by P L^3 / 3 E I = 0.1, with I = 2 0.1^3 / 12"],
        "", STEEL, CLAMPED, lambda s: ["*CLOAD", *line_load(s.column(20), 3, -0.01)])


def offset_strip():
    return strip(
        ["Strip whose nodes lie 0.07 above the mid surface, pulled by 3 at its nodes:",
         "the tip goes down by P d L^2 / 2 E I = 0.315 and out by P L / E A + P d^2 L / E I = 0.00516"],
        ", OFFSET=0.7", STEEL, CLAMPED, lambda s: ["*CLOAD", *line_load(s.column(20), 1, 3.0)])


def orthotropic_strip():
    return strip(
        ["Orthotropic strip with its second axis along x (E 40000, nu 0.0625), pulled by 8, turned down at the tip by "
         "0.02:",
         "the tip goes out by P L / E A = 0.01 and down by M L^2 / 2 E I = 0.15;",
         "its far corner goes in by nu P B / E A = 0.000125"],
        ", ORIENTATION ANGLE=90", BOARD, FREE_TO_NARROW,
        lambda s: ["*CLOAD", *line_load(s.column(20), 1, 8.0), *line_load(s.column(20), 5, 0.02)])


def heated_strip():
    return strip(
        ["Strip, free to expand, 50 warmer in the middle, 200 per length warmer towards the top, alpha 1.2e-5:",
         "no stress; the tip goes out by alpha T L = 0.006 and down by alpha g L^2 / 2 = 0.12"],
        "", STEEL + ["*EXPANSION", "1.2e-5"], FREE_TO_NARROW,
        lambda s: ["*TEMPERATURE", *(f"{n}, 50, 200" for i in range(21) for n in s.column(i))])


def square_plate():
    sides = 24
    sheet = Sheet(10.0, 10.0, sides, sides)
    yield "*HEADING"
    yield "Simply supported square plate, a 10, h 0.1, E 200000, nu 0.3, pressure 0.001:"
    yield "the middle moves by 0.0040624 q a^4 / D = 0.0022181 by the series of Navier"
    yield from sheet.lines("S3")
    yield from node_set("ENDS", sheet.column(0) + sheet.column(sides))
    yield from node_set("SIDES", sheet.row(0) + sheet.row(sides))
    yield from node_set("CORNER", [sheet.node(0, 0)])
    yield from node_set("OTHER_CORNER", [sheet.node(sides, 0)])
    yield from node_set("MIDDLE", [sheet.node(sides // 2, sides // 2)])
    yield from ["*MATERIAL, NAME=M", "*ELASTIC", "200000, 0.3",
                "*SHELL SECTION, ELSET=SHEET, MATERIAL=M, FORMULATION=THIN", "0.1"]
    yield from ["*BOUNDARY", "ENDS, 3, 4", "SIDES, 3", "SIDES, 5", "CORNER, 1, 2", "OTHER_CORNER, 2"]
    yield from ["*STEP", "*STATIC", "*DLOAD", "SHEET, P, 0.001", "*END STEP"]


def membrane_patch():
    corners = [(0.0, 0.0), (0.24, 0.0), (0.24, 0.12), (0.0, 0.12)]
    inner = [(0.04, 0.02), (0.18, 0.03), (0.16, 0.08), (0.08, 0.08)]
    yield "*HEADING"
    yield "Membrane patch of MacNeal and Harder, 1985, cut in triangles: sx = sy = 1333.3, txy = 400 everywhere"
    yield "*NODE"
    for number, (x, y) in enumerate(corners + inner, start=1):
        yield f"{number}, {x!r}, {y!r}, 0"
    yield "*ELEMENT, TYPE=M3D3, ELSET=SHEET"
    number = 0
    for a, b, c, d in ((1, 2, 6, 5), (2, 3, 7, 6), (3, 4, 8, 7), (4, 1, 5, 8), (5, 6, 7, 8)):
        for triangle in ((a, b, c), (c, d, a)):
            number += 1
            yield f"{number}, " + ", ".join(map(str, triangle))
    yield from ["*MATERIAL, NAME=M", "*ELASTIC", "1e6, 0.25", "*MEMBRANE SECTION, ELSET=SHEET, MATERIAL=M", "0.001"]
    yield "*BOUNDARY"
    for number, (x, y) in enumerate(corners, start=1):
        yield f"{number}, 1, 1, {1e-3 * (x + y / 2)!r}"
        yield f"{number}, 2, 2, {1e-3 * (y + x / 2)!r}"
    yield from ["*STEP", "*STATIC", "*END STEP"]


def wound_cylinder():
    """Facets of a quarter of a cylinder under equal radial forces at their nodes: a polygon that only grows."""
    radius, length, sides = 2.0, 1.0, 12
    sheet = Sheet(sides, length, sides, 1)
    force = 2 * 8.0 * math.sin(math.pi / 4 / sides)  # 8 is the force along the facets, per length
    angles = [math.pi / 2 * i / sides for i in range(sides + 1)]
    yield "*HEADING"
    yield ("Quarter of a cylinder of radius 2, 0.1 thick, wound round its axis, which is z (E 160000 along the hoop, "
           "40000 along")
    yield "the axis, nu12 0.25): a hoop force N of 8 per length widens it by N R / E1 h = 0.001"
    yield "and shortens it by nu12 N L / E1 h = 0.000125"
    lines = list(sheet.lines("S3"))
    first_element = next(k for k, line in enumerate(lines) if line.startswith("*ELEMENT"))
    yield lines[0]
    for i, angle in enumerate(angles):
        for j in range(2):
            x, y = rounded(radius * math.cos(angle)), rounded(radius * math.sin(angle))
            yield f"{sheet.node(i, j)}, {x}, {y}, {length * j!r}"
    yield from lines[first_element:]
    yield from node_set("FOOT", sheet.row(0))
    yield from node_set("HEAD", sheet.row(1))
    yield from node_set("ON_X", sheet.column(0))
    yield from node_set("ON_Y", sheet.column(sides))
    yield from BOARD
    yield from ["*ORIENTATION, NAME=WOUND, SYSTEM=CYLINDRICAL", "0, 0, 0, 0, 0, 1", "1, 0."]
    yield from ["*SHELL SECTION, ELSET=SHEET, MATERIAL=M, FORMULATION=THIN, ORIENTATION=WOUND", "0.1"]
    yield from ["*BOUNDARY", "ON_X, YSYMM", "ON_Y, XSYMM", "FOOT, 3", "*STEP", "*STATIC", "*CLOAD"]
    for i, angle in enumerate(angles):
        share = force * length / (4 if i in (0, sides) else 2)
        for n in sheet.column(i):
            if i < sides:
                yield f"{n}, 1, {rounded(share * math.cos(angle))}"
            if i > 0:
                yield f"{n}, 2, {rounded(share * math.sin(angle))}"
    yield "*END STEP"


def decks():
    for deck in (cantilever_strip, offset_strip, orthotropic_strip, heated_strip, square_plate, membrane_patch,
                 wound_cylinder):
        yield deck.__name__, deck()
