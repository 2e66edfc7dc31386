#!/usr/bin/env python3
"""Solids with known answers: the patch of MacNeal and Harder (1985), a cantilever, a thick cylinder, a bar that
vibrates and a column that buckles: decks of bricks (C3D8) and, where a mesh is a stack of layers, of wedges (C3D6).

    solids.py problem [--element C3D8|C3D6] [--mesh N] > deck.inp

A problem is a function here; it returns the text of the deck and the nodes that count, by name.
"""

import argparse
import math

from shell_deck import node_set, numbers

YOUNG, POISSON = 1.0e7, 0.3


class Block:
    """Bricks of a box of parameters 0 to 1, taken to their place. In wedges each brick is cut in two, by a plane
    through its third direction, along alternating diagonals."""

    def __init__(self, counts, place):
        self.counts = counts
        nx, ny, nz = counts
        self.points = [tuple(place(i / nx, j / ny, k / nz))
                       for i in range(nx + 1) for j in range(ny + 1) for k in range(nz + 1)]

    def node(self, i, j, k):
        _, ny, nz = self.counts
        return (i * (ny + 1) + j) * (nz + 1) + k + 1

    def nodes(self, i=None, j=None, k=None):
        """The nodes of a face, an edge or a corner: indices that are not given run."""
        ranges = [range(n + 1) if at is None else [at % (n + 1)] for at, n in zip((i, j, k), self.counts)]
        return [self.node(a, b, c) for a in ranges[0] for b in ranges[1] for c in ranges[2]]

    def elements(self, kind):
        nx, ny, nz = self.counts
        for i in range(nx):
            for j in range(ny):
                for k in range(nz):
                    lower, upper = ([self.node(i, j, h), self.node(i + 1, j, h), self.node(i + 1, j + 1, h),
                                     self.node(i, j + 1, h)] for h in (k, k + 1))
                    if kind == "C3D8":
                        cuts = ((0, 1, 2, 3),)
                    else:
                        cuts = ((0, 1, 2), (0, 2, 3)) if (i + j) % 2 == 0 else ((0, 1, 3), (1, 2, 3))
                    for cut in cuts:
                        yield [lower[c] for c in cut] + [upper[c] for c in cut]


def solid_deck(title, points, elements, kind, elastic, sets, boundary, steps, density=None):
    """The whole deck as a text. `sets`: lists of nodes by name; `boundary`: lines; `steps`: a list of lines a step."""
    lines = ["*HEADING", title, "*NODE, NSET=ALL"]
    lines += [f"{n}, " + ", ".join(repr(round(c, 12) + 0.0) for c in xyz) for n, xyz in enumerate(points, start=1)]
    lines += [f"*ELEMENT, TYPE={kind}, ELSET=BODY"]
    lines += [f"{n}, " + ", ".join(map(str, nodes)) for n, nodes in enumerate(elements, start=1)]
    for name, members in sets.items():
        lines += node_set(name, members)
    lines += ["*MATERIAL, NAME=M", "*ELASTIC", numbers(elastic)]
    if density is not None:
        lines += ["*DENSITY", numbers([density])]
    lines += ["*SOLID SECTION, ELSET=BODY, MATERIAL=M", "*BOUNDARY", *boundary]
    for step in steps:
        lines += ["*STEP, PERTURBATION", *step, "*END STEP"]
    return "\n".join(lines) + "\n"


INNER = [(.249, .342, .192), (.826, .288, .288), (.850, .649, .263), (.273, .750, .230),
         (.320, .186, .643), (.677, .305, .683), (.788, .693, .644), (.165, .745, .702)]


def patch(kind="C3D8", mesh=1):
    """A cube round a distorted brick; its corners follow u = 1e-3 (2x + y + z) / 2 and so on in turn: all normal
    stresses are 2000, all shear stresses 400. In one mesh and in bricks alone."""
    del mesh
    outer = [(x, y, z) for z in (0., 1.) for x, y in ((0., 0.), (1., 0.), (1., 1.), (0., 1.))]
    faces = [(0, 1, 2, 3), (4, 7, 6, 5), (0, 4, 5, 1), (1, 5, 6, 2), (2, 6, 7, 3), (3, 7, 4, 0)]
    elements = [[9, 10, 11, 12, 13, 14, 15, 16]]
    elements += [[n + 1 for n in face] + [n + 9 for n in face] for face in faces]
    boundary = []
    for n, xyz in enumerate(outer, start=1):
        for dof in (1, 2, 3):
            boundary.append(f"{n}, {dof}, {dof}, {1e-3 * (sum(xyz) + xyz[dof - 1]) / 2!r}")
    text = solid_deck("Solid patch of MacNeal and Harder, 1985: normal stresses 2000, shear stresses 400 everywhere",
                      outer + INNER, elements, kind, (1e6, 0.25), {}, boundary, [["*STATIC"]])
    return text, {}


def face_forces(block, dof, face, total):
    """A uniform traction on a face of equal rectangles, by its corner, edge and inner nodes."""
    axes = [axis for axis in range(3) if axis not in face]
    cells = block.counts[axes[0]] * block.counts[axes[1]]
    index = [0, 0, 0]
    for axis, at in face.items():
        index[axis] = at % (block.counts[axis] + 1)
    for a in range(block.counts[axes[0]] + 1):
        for b in range(block.counts[axes[1]] + 1):
            index[axes[0]], index[axes[1]] = a, b
            share = (1 if a in (0, block.counts[axes[0]]) else 2) * (1 if b in (0, block.counts[axes[1]]) else 2)
            yield f"{block.node(*index)}, {dof}, {total * share / (4 * cells)!r}"


def cantilever(kind="C3D8", mesh=2):
    """10 by 1 by 1, clamped at one end, a unit force in y spread over the other: `mesh` layers across the height and
    the width, 20 a layer along. Wedges are cut in the plane of bending."""
    block = Block((20 * mesh, mesh, mesh), lambda u, v, w: (10 * u, v, w))
    text = solid_deck(f"Cantilever of solids, 10 by 1 by 1, a unit force across its end, {mesh} layers", block.points,
                      block.elements(kind), kind, (YOUNG, POISSON),
                      {"ROOT": block.nodes(i=0), "TIP": block.nodes(i=-1)},
                      ["ROOT, 1, 3"], [["*STATIC", "*CLOAD", *face_forces(block, 2, {0: -1}, 1.0)]])
    return text, {"tip": block.node(20 * mesh, mesh // 2, mesh // 2)}


def cantilever_deflection():
    """Bending and shear, shear factor of a rectangle by Cowper (1966)."""
    factor = 10 * (1 + POISSON) / (12 + 11 * POISSON)
    return 1000 / (3 * YOUNG / 12) + 10 * 2 * (1 + POISSON) / (factor * YOUNG)


def thick_cylinder(kind="C3D8", mesh=4):
    """A quarter of a cylinder of radii 1 and 2 under a unit pressure inside, in plane strain: `mesh` elements through
    the wall, twice as many round the quarter. The pressure on each flat facet goes to its nodes by quarters."""
    around, height = 2 * mesh, 0.25

    def place(u, v, w):
        radius, angle = 1 + u, math.pi / 2 * v
        return (radius * math.cos(angle), radius * math.sin(angle), height * w)

    block = Block((mesh, around, 1), place)
    force = {}
    for j in range(around):
        p, q = block.points[block.node(0, j, 0) - 1], block.points[block.node(0, j + 1, 0) - 1]
        outwards = (height * (q[1] - p[1]), height * (p[0] - q[0]))
        for n in (block.node(0, j, 0), block.node(0, j + 1, 0), block.node(0, j, 1), block.node(0, j + 1, 1)):
            for dof in (1, 2):
                force[n, dof] = force.get((n, dof), 0.0) + outwards[dof - 1] / 4
    loads = [f"{n}, {dof}, {value:.12g}" for (n, dof), value in force.items()]
    text = solid_deck(f"Thick cylinder, radii 1 and 2, unit pressure inside, plane strain, {mesh} elements through "
                      "the wall",
                      block.points, block.elements(kind), kind, (YOUNG, POISSON),
                      {"ON_X": block.nodes(j=0), "ON_Y": block.nodes(j=-1)}, ["ALL, 3", "ON_X, 2", "ON_Y, 1"],
                      [["*STATIC", "*CLOAD", *loads]])
    return text, {"inside": block.node(0, 0, 0), "outside": block.node(mesh, 0, 0)}


def lame_displacement(radius):
    return (1 + POISSON) / (3 * YOUNG) * ((1 - 2 * POISSON) * radius + 4 / radius)


def vibrating_bar(kind="C3D8", mesh=8):
    """10 by 1 by 1, held at one end and everywhere across, density 2: five longitudinal frequencies, `mesh` elements
    along."""
    block = Block((mesh, 1, 1), lambda u, v, w: (10 * u, v, w))
    text = solid_deck(f"A bar that vibrates along itself, {mesh} elements", block.points, block.elements(kind), kind,
                      (YOUNG, 0.0), {"ROOT": block.nodes(i=0)}, ["ALL, 2, 3", "ROOT, 1"], [["*FREQUENCY", "3"]], 2.0)
    return text, {}


def bar_frequency(mode):
    return (2 * mode - 1) / (4 * 10) * math.sqrt(YOUNG / 2)


def column(kind="C3D8", mesh=2):
    """20 by 1 by 1.5, clamped at its foot, pressed by 1 at its free end: `mesh` layers across, 20 a layer along."""
    block = Block((20 * mesh, mesh, 1), lambda u, v, w: (20 * u, v, 1.5 * w))
    text = solid_deck(f"Column of solids, 20 by 1 by 1.5, {mesh} layers", block.points, block.elements(kind), kind,
                      (YOUNG, 0.0), {"FOOT": block.nodes(i=0)}, ["FOOT, 1, 3"],
                      [["*BUCKLE", "2", "*CLOAD", *face_forces(block, 1, {0: -1}, -1.0)]])
    return text, {}


def column_load():
    """Euler's load, with the shear of the column (Engesser, 1891)."""
    euler = math.pi**2 * YOUNG * 1.5 / 12 / 1600
    return euler / (1 + euler / (5 / 6 * YOUNG / 2 * 1.5))


PROBLEMS = {f.__name__: f for f in (patch, cantilever, thick_cylinder, vibrating_bar, column)}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("problem", choices=PROBLEMS)
    parser.add_argument("--element", choices=("C3D8", "C3D6"), default="C3D8")
    parser.add_argument("--mesh", type=int, default=2)
    wanted = parser.parse_args()
    if wanted.problem == "patch" and wanted.element != "C3D8":
        parser.error("the patch is made of bricks")
    print(PROBLEMS[wanted.problem](wanted.element, wanted.mesh)[0], end="")


if __name__ == "__main__":
    main()
