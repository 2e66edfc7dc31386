#!/usr/bin/env python3
"""A plate with a hole and a stiffener: from Gmsh's Python interface through finites-solve to a picture.

    gmsh_plate.py [--size 0.04] [--folder out] [--solver build/release/bin/finites-solve]

The plate, 1.2 m by 0.8 m and 10 mm thick, is clamped at x = 0 with its stiffener, 100 mm high and 8 mm thick, which
runs below it at y = 0.55; the hole has a radius of 0.12. A pressure of 2 kPa presses the plate down. Gmsh writes the
mesh in the form of Abaqus; the deck includes it and says the rest. Needs python3-gmsh and what script/picture needs.
"""

import argparse
import csv
import math
import pathlib
import subprocess
import sys

import gmsh

ROOT = pathlib.Path(__file__).resolve().parents[2]
LENGTH, WIDTH, RADIUS, HEIGHT, PRESSURE = 1.2, 0.8, 0.12, 0.1, 2000.0

DECK = f"""*INCLUDE, INPUT=mesh.inp
*MATERIAL, NAME=STEEL
*ELASTIC
2.1E11, 0.3
*SHELL SECTION, ELSET=PLATE, MATERIAL=STEEL
0.01
*SHELL SECTION, ELSET=STIFFENER, MATERIAL=STEEL
0.008
*BOUNDARY
CLAMPED, ENCASTRE
*STEP
*STATIC
*DLOAD
PLATE, P, {-PRESSURE}
*NODE PRINT, NSET=CLAMPED, TOTALS=ONLY
RF
*END STEP
"""


def geometry():
    """Plate and stiffener, cut at one another so that their meshes share nodes; named groups for the deck."""
    shapes = gmsh.model.occ
    plate = shapes.addRectangle(0, 0, 0, LENGTH, WIDTH)
    shapes.cut([(2, plate)], [(2, shapes.addDisk(0.6, 0.25, 0, RADIUS, RADIUS))])
    stiffener = shapes.addRectangle(0, 0, 0, LENGTH, HEIGHT)
    shapes.rotate([(2, stiffener)], 0, 0, 0, 1, 0, 0, -math.pi / 2)
    shapes.translate([(2, stiffener)], 0, 0.55, 0)
    _, (plates, stiffeners) = shapes.fragment([(2, plate)], [(2, stiffener)])
    shapes.synchronize()
    near = 1e-6
    clamped = gmsh.model.getEntitiesInBoundingBox(-near, -near, -1, near, WIDTH + near, 1, dim=1)
    for number, (name, entities) in enumerate((("PLATE", plates), ("STIFFENER", stiffeners), ("CLAMPED", clamped)), 1):
        dimension = entities[0][0]
        gmsh.model.addPhysicalGroup(dimension, [tag for _, tag in entities], number)
        gmsh.model.setPhysicalName(dimension, number, name)


def mesh(path, size):
    gmsh.initialize()
    gmsh.option.setNumber("General.Terminal", 0)
    gmsh.option.setNumber("Mesh.CharacteristicLengthMax", size)
    gmsh.option.setNumber("Mesh.SaveGroupsOfNodes", 1)
    geometry()
    gmsh.model.mesh.generate(2)
    gmsh.write(str(path))
    gmsh.finalize()
    path.write_text(as_shells(path.read_text()))


def as_shells(text):
    """Gmsh calls every triangle CPS3, of plane stress: here they are shells. Its elements on curves, T3D2, have done
    their work, the set of nodes CLAMPED, and go with the sets of their numbers."""
    kept, keep = [], True
    for line in text.splitlines():
        if line.startswith("*") and not line.startswith("**"):
            keep = "T3D2" not in line and not line.endswith("*ELSET,ELSET=CLAMPED")
        if keep:
            kept.append(line.replace("type=CPS3", "type=S3"))
    return "\n".join(kept) + "\n"


def solve(solver, folder):
    (folder / "plate.inp").write_text(DECK)
    subprocess.run([solver, "plate.inp", "-o", "plate.vtu", "--csv", "plate.csv"], cwd=folder, check=True)
    with open(folder / "plate.csv", newline="") as file:
        return [{name: float(value) for name, value in row.items()} for row in csv.DictReader(file)]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--size", type=float, default=0.04, help="largest side of an element")
    parser.add_argument("--folder", type=pathlib.Path, default=pathlib.Path("out"))
    parser.add_argument("--solver", type=pathlib.Path, default=ROOT / "build/release/bin/finites-solve")
    wanted = parser.parse_args()
    wanted.folder.mkdir(parents=True, exist_ok=True)
    mesh(wanted.folder / "mesh.inp", wanted.size)
    nodes = solve(wanted.solver.resolve(), wanted.folder)
    picture = wanted.folder / "plate.png"
    subprocess.run([sys.executable, ROOT / "script/picture", wanted.folder / "plate.vtu", picture, "--field", "uz",
                    "--factor", "30", "--title", "Plate with a hole and a stiffener, displacements 30 times"], check=True)
    print(f"{len(nodes)} nodes, largest deflection {min(node['uz'] for node in nodes):.5g} m, "
          f"reaction {sum(node['force_z'] for node in nodes):.6g} N; picture in {picture}")


if __name__ == "__main__":
    main()
