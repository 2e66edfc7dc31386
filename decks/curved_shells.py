#!/usr/bin/env python3
"""The curved shells by which shell elements are compared since MacNeal and Harder (1985): decks in triangles and in
quadrilaterals, thin and thick.

    curved_shells.py problem [--element S3|S4] [--formulation THIN|THICK] [--sides N] > deck.inp

A problem is a function here; it returns the text of the deck and the nodes that count, by name.
"""

import argparse
import math

import scordelis_lo as roof
from shell_deck import grid, line_load, shell_deck


def scordelis_lo(form, sides):
    """A quarter of the roof under its own weight (Scordelis and Lo, 1964); the deck of triangles has a file of its
    own."""
    angle = roof.HALF_ANGLE
    mesh = grid(sides, sides, lambda u, v: (0.5 * roof.LENGTH * u, roof.RADIUS * math.sin(angle * v),
                                            roof.RADIUS * math.cos(angle * v)))
    row = sides + 1
    sets = {"MIDDLE": list(range(1, row + 1)), "DIAPHRAGM": list(range(sides * row + 1, row * row + 1)),
            "CROWN": list(range(1, row * row + 1, row)), "FREE_EDGE_MIDDLE": [row]}
    text = shell_deck(
        f"Scordelis-Lo roof, a quarter, {sides} by {sides}: 0.3024 down at the middle of the free edge", mesh, form,
        roof.THICKNESS, (roof.YOUNG, roof.POISSON), sets,
        ["MIDDLE, XSYMM", "CROWN, YSYMM", "DIAPHRAGM, 2, 3"],
        [["*STATIC", "*DLOAD", f"SKIN, GRAV, {roof.GRAVITY!r}, 0, 0, -1"]],
        density=roof.WEIGHT_PER_AREA / (roof.THICKNESS * roof.GRAVITY))
    return text, {"free edge": row}


def pinched_cylinder(form, sides):
    """An eighth of a cylinder on end diaphragms, pinched by two unit forces: radius 300, length 600, thickness 3."""
    radius, length = 300.0, 600.0
    mesh = grid(sides, sides, lambda u, v: (0.5 * length * u, radius * math.sin(0.5 * math.pi * v),
                                            radius * math.cos(0.5 * math.pi * v)))
    row = sides + 1
    sets = {"MIDDLE": list(range(1, row + 1)), "DIAPHRAGM": list(range(sides * row + 1, row * row + 1)),
            "CROWN": list(range(1, row * row + 1, row)), "SIDE": list(range(row, row * row + 1, row))}
    text = shell_deck(
        f"Pinched cylinder on end diaphragms, an eighth, {sides} by {sides}: 1.8248e-5 under the force", mesh, form,
        3.0,
        (3.0e6, 0.3), sets, ["MIDDLE, XSYMM", "CROWN, YSYMM", "SIDE, ZSYMM", "DIAPHRAGM, 2, 3"],
        [["*STATIC", "*CLOAD", "1, 3, -0.25"]])
    return text, {"force": 1}


def pinched_hemisphere(form, sides):
    """A quarter of a hemisphere with a hole of 18 degrees at its top, forces of 2 outwards and inwards at the
    equator."""
    radius, top = 10.0, math.radians(72.0)

    def place(u, v):
        longitude, latitude = 0.5 * math.pi * u, top * v
        return (radius * math.cos(latitude) * math.cos(longitude), radius * math.cos(latitude) * math.sin(longitude),
                radius * math.sin(latitude))

    mesh = grid(sides, sides, place)
    row = sides + 1
    outwards, inwards = 1, sides * row + 1
    sets = {"PLANE_Y": list(range(1, row + 1)), "PLANE_X": list(range(inwards, row * row + 1))}
    text = shell_deck(
        f"Hemisphere with a hole, a quarter, {sides} by {sides}: 0.0940 under each force", mesh, form, 0.04,
        (6.825e7, 0.3), sets, ["PLANE_Y, YSYMM", "PLANE_X, XSYMM", f"{outwards}, 3"],
        [["*STATIC", "*CLOAD", f"{outwards}, 1, 1.", f"{inwards}, 2, -1."]])
    return text, {"outwards": outwards, "inwards": inwards}


def twisted_beam(form, sides, thickness=0.32, load=1.0):
    """A cantilever twisted by 90 degrees (length 12, width 1.1): `sides` elements across, six times as many along it.

    The first step loads the tip along its width (in plane), the second along its normal (out of plane).
    """
    length, width = 12.0, 1.1

    def place(u, v):
        angle, across = 0.5 * math.pi * u, width * (v - 0.5)
        return (length * u, across * math.cos(angle), across * math.sin(angle))

    mesh = grid(6 * sides, sides, place)
    row = sides + 1
    tip = list(range(6 * sides * row + 1, 6 * sides * row + row + 1))
    lengths = [width / sides] * sides

    def step(dof):
        return ["*STATIC", "*CLOAD", *line_load(tip, dof, load / width, lengths)]

    text = shell_deck(
        f"Twisted beam, thickness {thickness:g}, tip load {load:g}, {6 * sides} by {sides}", mesh, form, thickness,
        (29.0e6, 0.22), {"ROOT": list(range(1, row + 1)), "TIP": tip}, ["ROOT, ENCASTRE"], [step(3), step(2)])
    return text, {"tip": tip[sides // 2]}


def curved_beam(form, sides):
    """A quarter of a ring in its plane, radii 4.12 and 4.32, held at one end: `sides` elements across, 24 times as many
    along it.

    The first step loads the other end along the radius (in plane), the second along the normal (out of plane).
    """
    inner, outer = 4.12, 4.32

    def place(u, v):
        angle, radius = 0.5 * math.pi * u, inner + (outer - inner) * v
        return (radius * math.sin(angle), radius * math.cos(angle), 0.0)

    mesh = grid(24 * sides, sides, place)
    row = sides + 1
    tip = list(range(24 * sides * row + 1, 24 * sides * row + row + 1))
    lengths = [(outer - inner) / sides] * sides

    def step(dof):
        return ["*STATIC", "*CLOAD", *line_load(tip, dof, 1 / (outer - inner), lengths)]

    text = shell_deck(f"Curved beam, {24 * sides} by {sides}", mesh, form, 0.1, (1.0e7, 0.25),
                      {"ROOT": list(range(1, row + 1)), "TIP": tip}, ["ROOT, ENCASTRE"], [step(1), step(3)])
    return text, {"tip": tip[sides // 2]}


# Radius and angle, bent to one side and to the other.
HOOK_ARCS = ((14.0, math.radians(60.0)), (46.0, math.radians(150.0)))


def hook_curve(s):
    """The middle line of the hook at its length s: x and y."""
    (first, opening), (second, _) = HOOK_ARCS
    turn = s / first
    if turn <= opening:
        return first * (1 - math.cos(turn)), first * math.sin(turn)
    turn = opening - (s - first * opening) / second
    centre = ((first + second) * math.cos(opening), (first + second) * math.sin(opening))
    return first - centre[0] + second * math.cos(turn), centre[1] - second * math.sin(turn)


def raasch_hook(form, sides):
    """The hook of Raasch: a strip of width 20 and thickness 2 along two arcs, held at one end, under a shear force of
    8.7 along its width at the other. `sides` elements across, eight times as many along it."""
    width = 20.0
    (first, opening), (second, rest) = HOOK_ARCS
    near, far = first * opening, second * rest

    def place(u, v):
        s = 8 * u * near if u <= 0.125 else near + (8 * u - 1) / 7 * far
        return (*hook_curve(s), width * v)

    mesh = grid(8 * sides, sides, place)
    row = sides + 1
    tip = list(range(8 * sides * row + 1, 8 * sides * row + row + 1))
    text = shell_deck(f"Raasch hook, {8 * sides} by {sides}", mesh, form, 2.0, (3300.0, 0.35),
                      {"ROOT": list(range(1, row + 1)), "TIP": tip}, ["ROOT, ENCASTRE"],
                      [["*STATIC", "*CLOAD", *line_load(tip, 3, 8.7 / width, [width / sides] * sides)]])
    return text, {"tip": tip[sides // 2]}


def hypar_height(x, y):
    return 10.0 * x * y / 50.0**2


def clamped_hypar(form, sides):
    """A hyperbolic paraboloid over a square of side 100, its corners 10 above and below the middle, thickness 0.8,
    clamped all round, under a load of 0.01 downwards per area of the surface."""
    mesh = grid(sides, sides, lambda u, v: (100 * u - 50, 100 * v - 50, hypar_height(100 * u - 50, 100 * v - 50)))
    border = mesh.where(lambda x, y, z: max(abs(x), abs(y)) > 50 - 1e-6)
    text = shell_deck(f"Clamped hyperbolic paraboloid, {sides} by {sides}", mesh, form, 0.8, (28500.0, 0.4),
                      {"BORDER": border}, ["BORDER, ENCASTRE"], [["*STATIC", "*DLOAD", "SKIN, GRAV, 1.0, 0, 0, -1"]],
                      density=0.01 / 0.8)
    return text, {"middle": mesh.at(0.0, 0.0, 0.0)}


PROBLEMS = {f.__name__: f for f in (scordelis_lo, pinched_cylinder, pinched_hemisphere, twisted_beam, curved_beam,
                                    raasch_hook, clamped_hypar)}

if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Writes the deck of a curved shell to the standard output.")
    parser.add_argument("problem", choices=PROBLEMS)
    parser.add_argument("--element", choices=["S3", "S4"], default="S4")
    parser.add_argument("--formulation", choices=["THIN", "THICK"], default="THIN")
    parser.add_argument("--sides", type=int, default=8)
    arguments = parser.parse_args()
    if not 1 <= arguments.sides <= 500:
        parser.error("--sides: 1 to 500")
    print(PROBLEMS[arguments.problem]((arguments.element, arguments.formulation), arguments.sides)[0], end="")
