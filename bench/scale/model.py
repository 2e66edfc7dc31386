#!/usr/bin/env python3
"""Models of any size for measurements: a plate, a tower of storeys in space, a block.

    bench/scale/model.py plate N > deck.inp     N by N quadrilaterals under a pressure, its edges held: 6 (N + 1)^2 freedoms
    bench/scale/model.py tower N > deck.inp     N storeys of 4 by 4 bays, columns in two parts: some 300 freedoms a storey
    bench/scale/model.py block N > deck.inp     N by N by N bricks under a load on top: 3 (N + 1)^3 freedoms

One line per node and one per element: what a mesher writes. SI units, steel.
"""
import argparse
import sys

STEEL = """*MATERIAL, NAME=STEEL
*ELASTIC
2.1e11, 0.3
*DENSITY
7850
"""


def grid(counts):
    """Numbers of nodes of a grid by their indices, from 1."""
    def number(*at):
        result = 0
        for index, count in zip(reversed(at), reversed(counts)):
            result = result * (count + 1) + index
        return result + 1
    return number


def plate(n, write):
    node = grid((n, n))
    write("*HEADING\nSquare plate, edges simply supported, under a pressure\n*NODE, NSET=ALL\n")
    for j in range(n + 1):
        write("".join(f"{node(i, j)}, {10 * i / n!r}, {10 * j / n!r}, 0\n" for i in range(n + 1)))
    write("*ELEMENT, TYPE=S4, ELSET=PLATE\n")
    for j in range(n):
        write("".join(f"{j * n + i + 1}, {node(i, j)}, {node(i + 1, j)}, {node(i + 1, j + 1)}, {node(i, j + 1)}\n"
                      for i in range(n)))
    write(STEEL + "*SHELL SECTION, ELSET=PLATE, MATERIAL=STEEL\n0.1\n*BOUNDARY\n")
    for k in range(n + 1):
        for at in {(k, 0), (k, n), (0, k), (n, k)}:
            write(f"{node(*at)}, 3\n")
    write(f"{node(0, 0)}, 1, 2\n{node(n, 0)}, 2\n")
    write("*STEP\n*STATIC\n*DLOAD\nPLATE, P, 1000\n*END STEP\n")


def tower(storeys, write):
    bays, parts, height, width = 4, 2, 3.5, 6.0
    levels = storeys * parts
    node = grid((bays, bays, levels))
    write("*HEADING\nTower of storeys, columns and beams, weight and wind\n*NODE, NSET=ALL\n")
    for k in range(levels + 1):
        write("".join(f"{node(i, j, k)}, {width * i!r}, {width * j!r}, {height * k / parts!r}\n"
                      for j in range(bays + 1) for i in range(bays + 1)))
    number = 0
    write("*ELEMENT, TYPE=B33, ELSET=COLUMNS\n")
    for k in range(levels):
        for j in range(bays + 1):
            for i in range(bays + 1):
                number += 1
                write(f"{number}, {node(i, j, k)}, {node(i, j, k + 1)}\n")
    for name, step in (("BEAMSX", (1, 0)), ("BEAMSY", (0, 1))):
        write(f"*ELEMENT, TYPE=B33, ELSET={name}\n")
        for k in range(parts, levels + 1, parts):
            for j in range(bays + 1 - step[1]):
                for i in range(bays + 1 - step[0]):
                    number += 1
                    write(f"{number}, {node(i, j, k)}, {node(i + step[0], j + step[1], k)}\n")
    write(STEEL)
    write("*BEAM SECTION, ELSET=COLUMNS, MATERIAL=STEEL, SECTION=BOX\n0.5, 0.5, 0.02, 0.02, 0.02, 0.02\n1, 0, 0\n")
    for name, axis in (("BEAMSX", "0, 1, 0"), ("BEAMSY", "1, 0, 0")):
        write(f"*BEAM SECTION, ELSET={name}, MATERIAL=STEEL, SECTION=RECT\n0.2, 0.4\n{axis}\n")
    write("*BOUNDARY\n")
    for j in range(bays + 1):
        write("".join(f"{node(i, j, 0)}, 1, 6\n" for i in range(bays + 1)))
    write("*STEP\n*STATIC\n*DLOAD\nCOLUMNS, GRAV, 9.81, 0, 0, -1\nBEAMSX, GRAV, 9.81, 0, 0, -1\n"
          "BEAMSY, GRAV, 9.81, 0, 0, -1\n*CLOAD\n")
    for k in range(parts, levels + 1, parts):
        write("".join(f"{node(0, j, k)}, 1, 10000\n" for j in range(bays + 1)))
    write("*END STEP\n")


def block(n, write):
    node = grid((n, n, n))
    write("*HEADING\nBlock on a fixed base under a load on top\n*NODE, NSET=ALL\n")
    for k in range(n + 1):
        for j in range(n + 1):
            write("".join(f"{node(i, j, k)}, {i / n!r}, {j / n!r}, {k / n!r}\n" for i in range(n + 1)))
    write("*ELEMENT, TYPE=C3D8, ELSET=BLOCK\n")
    for k in range(n):
        for j in range(n):
            write("".join(
                f"{(k * n + j) * n + i + 1}, {node(i, j, k)}, {node(i + 1, j, k)}, {node(i + 1, j + 1, k)}, "
                f"{node(i, j + 1, k)}, {node(i, j, k + 1)}, {node(i + 1, j, k + 1)}, {node(i + 1, j + 1, k + 1)}, "
                f"{node(i, j + 1, k + 1)}\n" for i in range(n)))
    write(STEEL + "*SOLID SECTION, ELSET=BLOCK, MATERIAL=STEEL\n*BOUNDARY\n")
    for j in range(n + 1):
        write("".join(f"{node(i, j, 0)}, 1, 3\n" for i in range(n + 1)))
    write("*STEP\n*STATIC\n*CLOAD\n")
    for j in range(n + 1):
        write("".join(f"{node(i, j, n)}, 3, {-1e6 / (n + 1) ** 2!r}\n" for i in range(n + 1)))
    write("*END STEP\n")


MODELS = {"plate": plate, "tower": tower, "block": block}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("kind", choices=sorted(MODELS))
    parser.add_argument("size", type=int)
    wanted = parser.parse_args()
    if wanted.size < 1:
        parser.error(f"the size is {wanted.size}: it counts from 1")
    MODELS[wanted.kind](wanted.size, sys.stdout.write)


if __name__ == "__main__":
    main()
