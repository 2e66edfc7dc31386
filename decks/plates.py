#!/usr/bin/env python3
"""Plates with known answers: square, circular and skew plates under load, buckling, frequencies, and the patches of
MacNeal and Harder (1985): decks in triangles and in quadrilaterals, thin and thick.

    plates.py problem [--element S3|S4] [--formulation THIN|THICK] [--sides N] > deck.inp

A problem is a function here; it returns the text of the deck and the nodes that count, by name. Plates lie in the plane
z = 0 with the normal upwards; their motions in the plane are held unless the problem is one of buckling.
"""

import argparse
import math

from shell_deck import Mesh, grid, line_load, shell_deck

YOUNG, POISSON = 1.0e7, 0.3
IN_PLANE = ["ALL, 1, 2", "ALL, 6"]


def square_plate(form, sides, support="simple", ratio=1e-3, distorted=False):
    """A quarter of a square plate of side 1: `sides` elements on half a side, thickness `ratio`.

    First step: unit pressure; second: a unit force in the middle. Simple supports are hard: they hold the rotation
    about the normal of the edge as well, as the series of Navier does.
    """
    half = 0.5

    def place(u, v):
        if distorted:  # the inner nodes leave their places by up to a quarter of a side
            bump = 0.25 / sides
            u, v = (u + bump * math.sin(math.pi * u) * math.sin(7.0 * v + 1.0) * min(1.0, 4 * v * (1 - v)),
                    v + bump * math.sin(math.pi * v) * math.sin(9.0 * u + 2.0) * min(1.0, 4 * u * (1 - u)))
        return (half * u, half * v, 0.0)

    mesh = grid(sides, sides, place)
    row, count = sides + 1, (sides + 1) ** 2
    sets = {"EDGE_X": list(range(1, row + 1)), "EDGE_Y": list(range(1, count + 1, row)),
            "MIDDLE_X": list(range(sides * row + 1, count + 1)), "MIDDLE_Y": list(range(row, count + 1, row))}
    edges = ["EDGE_X, 3, 4", "EDGE_Y, 3", "EDGE_Y, 5"] if support == "simple" else ["EDGE_X, 3, 5", "EDGE_Y, 3, 5"]
    text = shell_deck(
        f"Square plate, a quarter, {support} supports, thickness {ratio:g} of the side, {sides} by {sides}", mesh, form,
        ratio, (YOUNG, POISSON), sets, [*IN_PLANE, *edges, "MIDDLE_X, 5", "MIDDLE_Y, 4"],
        [["*STATIC", "*DLOAD", "SKIN, P, 1."], ["*STATIC", "*CLOAD", f"{count}, 3, 0.25"]])
    return text, {"middle": count, "middle of the edge": row}


def circular_plate(form, sides, support="simple", ratio=0.01):
    """A quarter of a circular plate of radius 1 in three blocks of `sides` by `sides`, under unit pressure.

    A simple support holds the deflection of the nodes on the circle alone: to hold the rotation along the sides of the
    polygon too would keep the slope at every corner at zero, and the limit would be another plate (Babuska, 1961).
    """
    mesh = Mesh()
    inner = [(0.5, 0.0), (0.4, 0.4), (0.0, 0.5)]

    def between(p, q, t):
        return tuple(a + (b - a) * t for a, b in zip(p, q))

    def ring(first, start):
        def place(u, v):
            angle = start + 0.25 * math.pi * v
            x, y = between(between(inner[first], inner[first + 1], v), (math.cos(angle), math.sin(angle)), u)
            return (x, y, 0.0)
        return place

    def core(u, v):
        x, y = between(between((0.0, 0.0), inner[0], u), between(inner[2], inner[1], u), v)
        return (x, y, 0.0)

    mesh.add_grid(sides, sides, core)
    mesh.add_grid(sides, sides, ring(0, 0.0))
    mesh.add_grid(sides, sides, ring(1, 0.25 * math.pi))
    sets = {"RIM": mesh.where(lambda x, y, z: x * x + y * y > 1 - 1e-9), "AXIS_X": mesh.where(lambda x, y, z: y < 1e-9),
            "AXIS_Y": mesh.where(lambda x, y, z: x < 1e-9)}
    text = shell_deck(
        f"Circular plate, a quarter, {support} support, thickness {ratio:g} of the radius, three blocks of {sides}",
        mesh,
        form, ratio, (YOUNG, POISSON), sets,
        [*IN_PLANE, "RIM, 3" if support == "simple" else "RIM, 3, 5", "AXIS_X, 4", "AXIS_Y, 5"],
        [["*STATIC", "*DLOAD", "SKIN, P, 1."]])
    return text, {"middle": mesh.at(0.0, 0.0, 0.0), "rim": mesh.at(1.0, 0.0, 0.0)}


def skew_plate(form, sides, degrees=30.0, ratio=0.01):
    """A rhombus of side 1, simply supported (Morley, 1963), under unit pressure. Only deflections are held."""
    angle = math.radians(degrees)
    mesh = grid(sides, sides, lambda u, v: (u + v * math.cos(angle), v * math.sin(angle), 0.0))
    row = sides + 1
    edge = sorted({row * i + j + 1 for i in range(row) for j in range(row) if i in (0, sides) or j in (0, sides)})
    text = shell_deck(
        f"Rhombic plate of {degrees:g} degrees, thickness {ratio:g} of the side, {sides} by {sides}", mesh, form, ratio,
        (YOUNG, POISSON), {"EDGE": edge}, [*IN_PLANE, "EDGE, 3"], [["*STATIC", "*DLOAD", "SKIN, P, 1."]])
    return text, {"middle": (row * row + 1) // 2}


def whole_square(sides):
    """A square of side 1 and the nodes of its edges: left, right, lower, upper."""
    mesh = grid(sides, sides, lambda u, v: (u, v, 0.0))
    row = sides + 1
    return mesh, {"LEFT": list(range(1, row + 1)), "RIGHT": list(range(sides * row + 1, row * row + 1)),
                  "LOWER": list(range(1, row * row + 1, row)), "UPPER": list(range(row, row * row + 1, row))}


def edges_held(support):
    if support == "clamped":
        return [f"{edge}, 3, 5" for edge in ("LEFT", "RIGHT", "LOWER", "UPPER")]
    return ["LEFT, 3, 4", "RIGHT, 3, 4", "LOWER, 3", "LOWER, 5", "UPPER, 3", "UPPER, 5"]


def plate_buckling(form, sides, support="simple", ratio=1e-3):
    """A square plate of side 1 under unit forces per length: compressed along x, along x and y, and sheared, a step
    each.

    In its plane it is held at three degrees of freedom only, whose reactions are zero.
    """
    mesh, sets = whole_square(sides)
    lengths = [1.0 / sides] * sides

    def step(*loads):
        lines = []
        for edge, dof, value in loads:
            lines += line_load(sets[edge], dof, value, lengths)
        return ["*BUCKLE", "2", "*CLOAD", *lines]

    along_x = (("LEFT", 1, 1.0), ("RIGHT", 1, -1.0))
    along_y = (("LOWER", 2, 1.0), ("UPPER", 2, -1.0))
    shear = (("LEFT", 2, -1.0), ("RIGHT", 2, 1.0), ("LOWER", 1, -1.0), ("UPPER", 1, 1.0))
    corner, other = sets["LEFT"][0], sets["RIGHT"][0]
    text = shell_deck(
        f"Buckling of a square plate, {support} supports, {sides} by {sides}", mesh, form, ratio, (YOUNG, POISSON),
        sets,
        ["ALL, 6", f"{corner}, 1, 2", f"{other}, 2", *edges_held(support)],
        [step(*along_x), step(*along_x, *along_y), step(*shear)])
    return text, {}


def plate_frequencies(form, sides, support="simple", ratio=1e-3):
    """A square plate of side 1 and unit density: its first four frequencies."""
    mesh, sets = whole_square(sides)
    text = shell_deck(
        f"Frequencies of a square plate, {support} supports, {sides} by {sides}", mesh, form, ratio, (YOUNG, POISSON),
        sets, [*IN_PLANE, *edges_held(support)], [["*FREQUENCY", "4"]], density=1.0)
    return text, {}


def steel_plate(form, sides, support="free"):
    """A plate of 10 by 10 by 0.05, E 200e9, density 8000, free or held at one side: frequencies in Hz."""
    mesh = grid(sides, sides, lambda u, v: (10 * u, 10 * v, 0.0))
    held = [] if support == "free" else ["LEFT, 3, 5"]
    text = shell_deck(
        f"Frequencies of a {support} plate of steel, {sides} by {sides}", mesh, form, 0.05, (200e9, 0.3),
        {"LEFT": list(range(1, sides + 2))}, [*IN_PLANE, *held], [["*FREQUENCY", "9" if support == "free" else "6"]],
        density=8000.0)
    return text, {}


PATCH_CORNERS = [(0.0, 0.0), (0.24, 0.0), (0.24, 0.12), (0.0, 0.12)]
PATCH_INNER = [(0.04, 0.02), (0.18, 0.03), (0.16, 0.08), (0.08, 0.08)]


def patch_mesh():
    mesh = Mesh()
    for x, y in PATCH_CORNERS + PATCH_INNER:
        mesh.point((x, y, 0.0))
    for parity, corners in enumerate(((0, 1, 5, 4), (1, 2, 6, 5), (2, 3, 7, 6), (3, 0, 4, 7), (4, 5, 6, 7))):
        mesh.cells.append((*corners, parity % 2))
    return mesh


def membrane_patch(form):
    """u = 1e-3 (x + y/2), v = 1e-3 (y + x/2) on the border: sx = sy = 1333.3, txy = 400 everywhere."""
    boundary = []
    for number, (x, y) in enumerate(PATCH_CORNERS, start=1):
        boundary += [f"{number}, 1, 1, {1e-3 * (x + y / 2)!r}", f"{number}, 2, 2, {1e-3 * (y + x / 2)!r}"]
        if form[0].startswith("S"):
            boundary.append(f"{number}, 3, 5")
    text = shell_deck("Membrane patch of MacNeal and Harder: sx = sy = 1333.3, txy = 400", patch_mesh(), form, 0.001,
                      (1e6, 0.25), {}, boundary, [["*STATIC"]])
    return text, {}


def bending_patch(form):
    """w = 1e-3 (x^2 + xy + y^2) / 2 on the border: 0.667 and 0.200 at the faces."""
    boundary = ["ALL, 1, 2", "ALL, 6"]
    for number, (x, y) in enumerate(PATCH_CORNERS, start=1):
        boundary += [f"{number}, 3, 3, {1e-3 * (x * x + x * y + y * y) / 2!r}",
                     f"{number}, 4, 4, {1e-3 * (x / 2 + y)!r}", f"{number}, 5, 5, {-1e-3 * (x + y / 2)!r}"]
    text = shell_deck("Bending patch of MacNeal and Harder: 0.6667 and 0.2000 at the faces", patch_mesh(), form, 0.001,
                      (1e6, 0.25), {}, boundary, [["*STATIC"]])
    return text, {}


def cook(form, sides):
    """Cook's membrane: a panel of width 48, its left edge of 44 held, its right one of 16 under a shear force of 1.
    Thickness 1, E 1, nu 1/3."""
    mesh = grid(sides, sides, lambda u, v: (48 * u, 44 * u + (44 - 28 * u) * v, 0.0))
    row = sides + 1
    right = list(range(sides * row + 1, row * row + 1))
    held = ["LEFT, 1, 2", "ALL, 3"] + (["ALL, 4, 5"] if form[0].startswith("S") else [])
    text = shell_deck(f"Cook's membrane, {sides} by {sides}: 23.965 in the middle of the right edge", mesh, form, 1.0,
                      (1.0, 1 / 3), {"LEFT": list(range(1, row + 1)), "RIGHT": right}, held,
                      [["*STATIC", "*CLOAD", *line_load(right, 2, 1 / 16, [16 / sides] * sides)]])
    return text, {"middle of the edge": right[sides // 2]}


PROBLEMS = {f.__name__: f for f in (square_plate, circular_plate, skew_plate, plate_buckling, plate_frequencies,
                                    steel_plate, cook)}
PATCHES = {f.__name__: f for f in (membrane_patch, bending_patch)}

if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Writes the deck of a plate to the standard output.")
    parser.add_argument("problem", choices=[*PROBLEMS, *PATCHES])
    parser.add_argument("--element", choices=["S3", "S4", "M3D3", "M3D4"], default="S4")
    parser.add_argument("--formulation", choices=["THIN", "THICK"], default="THIN")
    parser.add_argument("--sides", type=int, default=8)
    arguments = parser.parse_args()
    if not 1 <= arguments.sides <= 500:
        parser.error("--sides: 1 to 500")
    wanted = (arguments.element, arguments.formulation)
    if arguments.problem in PATCHES:
        print(PATCHES[arguments.problem](wanted)[0], end="")
    else:
        print(PROBLEMS[arguments.problem](wanted, arguments.sides)[0], end="")
