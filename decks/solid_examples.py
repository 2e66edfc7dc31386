"""Small decks of solids. The heading of each states what must come out, and why."""

import solids


def retitled(text, *title):
    """The deck with another heading."""
    lines = text.split("\n")
    return "\n".join([lines[0], *title, *lines[2:]])


def solid_patch():
    return retitled(solids.patch()[0],
                    "Solid patch of MacNeal and Harder, 1985: normal stresses 2000, shear stresses 400 everywhere")


def solid_cantilever():
    text, nodes = solids.cantilever("C3D8", 2)
    return retitled(
        text, f"Cantilever of bricks, 10 by 1 by 1: node {nodes['tip']} rises by {solids.cantilever_deflection():.6g} "
              "by beam theory under a unit force.",
        "Bricks of eight nodes are too stiff in bending: parasitic shear, (l/h)^2 / 2 (1 + nu) = 2.4 per cent for "
        "elements of",
        "length l = h/4, and a contraction that is constant in each of two layers, 8.7 per cent at most. They reach "
        "0.93")


def solid_cylinder():
    text, nodes = solids.thick_cylinder("C3D8", 4)
    return retitled(text, f"Thick cylinder under a unit pressure inside, plane strain: node {nodes['inside']} moves "
                          f"out by {solids.lame_displacement(1):.6g}, node {nodes['outside']} by "
                          f"{solids.lame_displacement(2):.6g} (Lame)")


def solid_wedges():
    text, nodes = solids.thick_cylinder("C3D6", 4)
    return retitled(text, "Thick cylinder of wedges under a unit pressure inside, plane strain: "
                          f"node {nodes['inside']} moves out by {solids.lame_displacement(1):.6g}, node "
                          f"{nodes['outside']} by {solids.lame_displacement(2):.6g} (Lame)")


def solid_vibration():
    return retitled(
        solids.vibrating_bar("C3D8", 8)[0],
        "Block of bricks that vibrates along itself: frequencies " + ", ".join(
            f"{solids.bar_frequency(i):.5g}" for i in (1, 2, 3)) + " by the theory of the bar;",
        "elements with consistent masses give more, by (k l)^2 / 24 at first")


def solid_column():
    return retitled(solids.column("C3D8", 2)[0],
                    f"Column of bricks: it buckles at {solids.column_load():.6g} (Euler, with shear); parasitic shear "
                    "makes the bricks stiffer by 1 + (l/h)^2 / 2 = 1.125")


def decks():
    for deck in (solid_patch, solid_cantilever, solid_cylinder, solid_wedges, solid_vibration, solid_column):
        yield deck.__name__, deck()
