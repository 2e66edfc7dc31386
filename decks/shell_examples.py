"""Small decks of quadrilaterals, one for each thing that a deck of shells can ask for. The heading of
each states what must come out, and why."""

import math

import plates
from shell_deck import Mesh, shell_deck


def retitled(text, title):
    """The deck with another heading."""
    lines = text.split("\n")
    return "\n".join([lines[0], title, *lines[2:]])


def flexural(ratio):
    return plates.YOUNG * ratio**3 / (12 * (1 - plates.POISSON**2))


def thick_plate_quads():
    """*SHELL SECTION, FORMULATION=THICK."""
    w = (0.0040624 + 0.073677 * 0.1**2 / (6 * (1 - plates.POISSON) * 5 / 6)) / flexural(0.1)
    text, nodes = plates.square_plate(("S4", "THICK"), 8, "simple", 0.1)
    return retitled(text, f"A quarter of a thick square plate, h/a 0.1: node {nodes['middle']} rises by {w:.5g} under "
                          "pressure (Navier's series with the shear of Mindlin's plate; the second step is a point "
                          "force)")


def buckling_plate_quads():
    """*BUCKLE of shells."""
    unit = math.pi**2 * flexural(1e-3)
    text, _ = plates.plate_buckling(("S4", "THIN"), 8)
    return retitled(text, f"A simply supported square plate buckles at {4 * unit:.5g} one way, {2 * unit:.5g} both "
                          f"ways, {9.325 * unit:.5g} in shear (k = 4, 2, 9.325)")


def vibrating_plate_quads():
    """*FREQUENCY of shells."""
    unit = math.sqrt(flexural(1e-3) / 1e-3) / (2 * math.pi)
    text, _ = plates.plate_frequencies(("S4", "THIN"), 12, "clamped")
    return retitled(text, f"A clamped square plate: frequencies {35.985 * unit:.5g}, {73.394 * unit:.5g} (twice), "
                          f"{108.22 * unit:.5g}")


def membrane_patch_quads():
    """M3D4 and *MEMBRANE SECTION."""
    return retitled(plates.membrane_patch(("M3D4", ""))[0],
                    "Membrane patch of MacNeal and Harder, 1985, in quadrilaterals: sx = sy = 1333.3, txy = 400 "
                    "everywhere")


def heated_plate_quads():
    """*TEMPERATURE with a gradient through the thickness: a clamped plate, and one that is free to bend."""
    mesh = Mesh()
    mesh.add_grid(2, 2, lambda u, v: (u, v, 0.0))
    free = mesh.add_grid(2, 2, lambda u, v: (u + 2, v, 0.0))
    clamped = mesh.where(lambda x, y, z: x < 1.5)
    corner, other = free[0][0] + 1, free[2][0] + 1
    text = shell_deck(
        "heated", mesh, ("S4", "THIN"), 0.01, (2.0e5, 0.3), {"HELD": clamped},
        ["HELD, ENCASTRE", f"{corner}, 1, 5", f"{other}, 2"], [["*STATIC", "*TEMPERATURE", "ALL, 0., 2000."]],
        expansion=1.2e-5)
    return retitled(text, "Two plates, 2000 per length warmer towards the top: the clamped one has moments -E h^3 "
                          "alpha g / 12 (1 - nu) = -5.7143e-4, the free one none; its far corner sinks by alpha g "
                          "(x^2 + y^2) / 2 = 0.024")


def decks():
    for deck in (thick_plate_quads, buckling_plate_quads, vibrating_plate_quads, membrane_patch_quads,
                 heated_plate_quads):
        yield deck.__name__, deck()
