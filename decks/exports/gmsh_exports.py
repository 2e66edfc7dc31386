#!/usr/bin/env python3
"""Writes the meshes of the folder gmsh as Gmsh saves them in the form of Abaqus, with python3-gmsh; the tests read the
meshes and do not need this program.

    gmsh_exports.py FOLDER

A strip of 40 by 10 with named edges, as triangles and as quadrilaterals; a block of 40 by 10 by 10 with named faces; a
truss of three bars. Everything is saved that Gmsh saves: elements of named edges and faces too.
"""
import pathlib
import sys

import gmsh


def save(path, dimension, size, draw):
    gmsh.initialize()
    gmsh.option.setNumber("General.Terminal", 0)
    gmsh.option.setNumber("Mesh.CharacteristicLengthMin", size)
    gmsh.option.setNumber("Mesh.CharacteristicLengthMax", size)
    gmsh.option.setNumber("Mesh.SaveGroupsOfNodes", 1)
    draw()
    gmsh.model.mesh.generate(dimension)
    gmsh.write(str(path))
    gmsh.finalize()
    # Gmsh puts the path of the file into the heading.
    path.write_text("\n".join([path.read_text().split("\n", 1)[0], f" {path.name}", *path.read_text().splitlines()[2:]]) + "\n")


def named(dimension, name, tags):
    gmsh.model.setPhysicalName(dimension, gmsh.model.addPhysicalGroup(dimension, tags), name)


def at(x, dimension):
    return [tag for _, tag in gmsh.model.getEntitiesInBoundingBox(x - 1e-6, -1, -1, x + 1e-6, 11, 11, dimension)]


def strip(quadrilaterals):
    surface = gmsh.model.occ.addRectangle(0, 0, 0, 40, 10)
    gmsh.model.occ.synchronize()
    named(2, "STRIP", [surface])
    named(1, "FIXED", at(0, 1))
    named(1, "PULLED", at(40, 1))
    if quadrilaterals:
        gmsh.model.mesh.setTransfiniteSurface(surface)
        gmsh.model.mesh.setRecombine(2, surface)


def block():
    volume = gmsh.model.occ.addBox(0, 0, 0, 40, 10, 10)
    gmsh.model.occ.synchronize()
    named(3, "BLOCK", [volume])
    named(2, "FIXED", at(0, 2))
    named(2, "PULLED", at(40, 2))


def truss():
    shapes = gmsh.model.geo
    points = [shapes.addPoint(*place) for place in ((0, 0, 0), (4, 0, 0), (2, 1.5, 0))]
    lines = [shapes.addLine(a, b) for a, b in zip(points, points[1:] + points[:1])]
    shapes.synchronize()
    named(1, "BARS", lines)
    for name, point in zip(("PIN", "ROLLER", "TOP"), points):
        named(0, name, [point])


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1])
    save(folder / "strip_triangles.inp", 2, 5, lambda: strip(False))
    save(folder / "strip_quadrilaterals.inp", 2, 5, lambda: strip(True))
    save(folder / "block.inp", 3, 5, block)
    save(folder / "truss.inp", 1, 100, truss)
