#!/usr/bin/env python3
"""Plates of steel that yield: strips in tension and in bending, square and circular plates under uniform load to
collapse.

    plastic_plates.py problem [--element S3|S4] [--formulation THIN|THICK] [--sides N] [--support simple|clamped]
                      [--model SECTION|LAYERED] [--points N] [--hardening E/100] > deck.inp

N, mm. Loads are given so that a load factor of 1 is fy h of the strip in tension, fy h^2/4 of the strip in bending, and
Mp/L^2 or Mp/R^2 of the plates, Mp = fy h^2/4: the load factor reached is the collapse load as books give it.

Limits of perfectly plastic plates after von Mises: circular, simply supported 6.51, clamped 12.5 (Hopkins and Wang,
1955); square, simply supported 24.86 to 26.54, clamped 42.86 to 49.25 (Hodge and Belytschko, 1968).
"""

import argparse

from plates import IN_PLANE, circular_plate, square_plate
from shell_deck import grid, line_load, shell_deck

YOUNG, POISSON, YIELD = 210000.0, 0.3, 235.0


def yielding(text, hardening=0.0, model="SECTION", points=None):
    """The deck with a yield stress, and with a model of plasticity in its section."""
    lines = [f"{YIELD!r}, 0."]
    if hardening > 0:  # the plastic modulus; the line is given at a plastic strain of 1
        lines.append(f"{YIELD + hardening!r}, 1.")
    choice = f", MODEL={model}" + (f", POINTS={points}" if points else "")
    head, tail = text.split("*SHELL SECTION", 1)
    first, rest = tail.split("\n", 1)
    return head + "*PLASTIC\n" + "\n".join(lines) + "\n*SHELL SECTION" + first + choice + "\n" + rest


def strip(form, sides, load, length=100.0, width=20.0, thickness=4.0, steps=None, **material):
    """A strip of `sides` by 1 elements: half of it, held at its middle by symmetry, free to narrow and to curve
    across."""
    mesh = grid(sides, 2, lambda u, v: (length * u, width * (v - 0.5), 0.0))
    row = 3
    end = list(range(row * sides + 1, row * (sides + 1) + 1))
    dof, value = (1, YIELD * thickness) if load == "tension" else (5, YIELD * thickness**2 / 4)
    lines = ["*CLOAD", *line_load(end, dof, value, [width / 2] * 2)]
    text = shell_deck(
        f"Strip in {load}, a load factor of 1 is the plastic {'force' if dof == 1 else 'moment'}", mesh, form,
        thickness,
        (YOUNG, POISSON), {"MIDDLE": [1, 2, 3], "AXIS": list(range(2, row * (sides + 1) + 1, row)), "END": end},
        ["MIDDLE, 1", "MIDDLE, 5", "AXIS, 2", "AXIS, 4", "AXIS, 6", "2, 3"],
        steps(lines) if steps else [["*ELASTOPLASTIC", "1.5, 40", *lines]])
    return yielding(text, **material)


def strip_tension(form, sides, **material):
    return strip(form, sides, "tension", **material)


def strip_bending(form, sides, **material):
    return strip(form, sides, "bending", **material)


def collapse(text, unit, increments):
    """The elastic deck of a unit square or circle, of a steel that yields, loaded by `unit` to collapse."""
    head, _ = text.split("*STEP", 1)
    head = head.replace("*ELASTIC\n" + "10000000.0, 0.3", f"*ELASTIC\n{YOUNG!r}, {POISSON!r}")
    return head + f"*STEP\n*ELASTOPLASTIC\n, {increments}\n*DLOAD\nSKIN, P, {unit!r}\n*END STEP\n"


def square(form, sides, support="simple", ratio=0.02, increments=120, **material):
    """A quarter of a square plate of side 1. In its plane it is held by symmetry alone: it may draw in."""
    text, _ = square_plate(form, sides, support, ratio)
    text = free_in_plane(text, "MIDDLE_X, 1", "MIDDLE_Y, 2")
    return yielding(collapse(text, YIELD * (ratio * ratio) / 4, increments), **material)


def circle(form, sides, support="simple", ratio=0.04, increments=120, **material):
    """A quarter of a circular plate of radius 1, likewise."""
    text, _ = circular_plate(form, sides, support, ratio)
    text = free_in_plane(text, "AXIS_Y, 1", "AXIS_X, 2")
    return yielding(collapse(text, YIELD * (ratio * ratio) / 4, increments), **material)


def free_in_plane(text, *symmetry):
    return text.replace("\n".join(IN_PLANE) + "\n", "\n".join([*symmetry, "ALL, 6"]) + "\n")


def strip_unloading(form, sides, **material):
    """To 1.1 of the plastic moment of a steel that hardens, and back."""
    def steps(lines):
        halves = [line.rsplit(",", 1) for line in lines[1:]]
        back = [lines[0], *(f"{name}, {-1.1 * float(value)!r}" for name, value in halves)]
        return [["*ELASTOPLASTIC", "1.1, 80", *lines], ["*ELASTOPLASTIC, CONTINUE", "1., 40", *back]]
    return strip(form, sides, "bending", steps=steps,
                 **{**material, "hardening": material.get("hardening") or YOUNG / 50})


def decks():
    yield "plastic_strip_tension", strip_tension(("S4", "THIN"), 4)
    yield "plastic_strip_bending", strip_bending(("S3", "THICK"), 4)
    yield "plastic_strip_unloading", strip_unloading(("S4", "THICK"), 4)
    yield "plastic_strip_layered", strip_bending(("S4", "THIN"), 4, model="LAYERED", points=7)
    yield "plastic_strip_hardening", strip(
        ("S4", "THIN"), 4, "tension", steps=lambda lines: [["*ELASTOPLASTIC", "1.05, 80", *lines]],
        model="LAYERED", points=5, hardening=YOUNG / 100)
    yield "plastic_strip_residual", strip_unloading(("S4", "THIN"), 4, model="LAYERED", points=9)
    yield "plastic_square_simple", square(("S4", "THIN"), 6)
    yield "plastic_square_clamped", square(("S3", "THICK"), 6, "clamped")
    yield "plastic_square_simple_layered", square(("S4", "THIN"), 6, model="LAYERED", points=7)
    yield "plastic_square_clamped_layered", square(("S4", "THIN"), 6, "clamped", model="LAYERED", points=7)
    yield "plastic_circle_simple", circle(("S3", "THIN"), 3)
    yield "plastic_circle_clamped", circle(("S4", "THIN"), 3, "clamped")


PROBLEMS = {"strip_tension": strip_tension, "strip_bending": strip_bending,
            "strip_unloading": strip_unloading, "square": square, "circle": circle}

if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Writes the deck of a yielding plate to the standard output.")
    parser.add_argument("problem", choices=PROBLEMS)
    parser.add_argument("--element", choices=["S3", "S4"], default="S4")
    parser.add_argument("--formulation", choices=["THIN", "THICK"], default="THIN")
    parser.add_argument("--sides", type=int, default=8)
    parser.add_argument("--support", choices=["simple", "clamped"], default="simple")
    parser.add_argument("--model", choices=["SECTION", "LAYERED"], default="SECTION")
    parser.add_argument("--points", type=int)
    parser.add_argument("--hardening", type=float, default=0.0, help="the plastic modulus")
    arguments = parser.parse_args()
    more = {"support": arguments.support} if arguments.problem in ("square", "circle") else {}
    print(PROBLEMS[arguments.problem]((arguments.element, arguments.formulation), arguments.sides, **more,
                                      hardening=arguments.hardening, model=arguments.model, points=arguments.points),
          end="")
