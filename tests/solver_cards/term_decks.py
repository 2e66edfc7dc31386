"""Decks of any size for tests of the terminal: a plate of shells, a frame of storeys, a block of bricks."""


def deck(nodes, elements, kind, section, held, loads, step="*STATIC"):
    lines = ["*NODE", *(f"{n}, {x}, {y}, {z}" for n, (x, y, z) in nodes)]
    lines += [f"*ELEMENT, TYPE={kind}, ELSET=ALL", *(", ".join(map(str, e)) for e in elements)]
    lines += ["*MATERIAL, NAME=STEEL", "*ELASTIC", "210000., 0.3", "*DENSITY", "7.85e-9", *section]
    lines += ["*NSET, NSET=HELD", *map(str, held), "*BOUNDARY", "HELD, 1, 6" if kind != "C3D8" else "HELD, 1, 3"]
    return "\n".join([*lines, "*STEP", step, *loads, "*END STEP", ""])


def plate(n, step="*STATIC", loads=("*DLOAD", "ALL, P, 0.01")):
    """A square of n by n S4, 1000 wide and 10 thick, clamped along x = 0."""
    number = lambda i, j: i * (n + 1) + j + 1
    nodes = [(number(i, j), (1000 * i / n, 1000 * j / n, 0)) for i in range(n + 1) for j in range(n + 1)]
    elements = [(i * n + j + 1, number(i, j), number(i + 1, j), number(i + 1, j + 1), number(i, j + 1))
                for i in range(n) for j in range(n)]
    return deck(nodes, elements, "S4", ["*SHELL SECTION, ELSET=ALL, MATERIAL=STEEL", "10."],
                [number(0, j) for j in range(n + 1)], loads, step)


def frame(n):
    """Columns on a grid of n by n, n storeys high, and the beams between them."""
    number = lambda i, j, k: (k * (n + 1) + i) * (n + 1) + j + 1
    grid = [(i, j, k) for k in range(n + 1) for i in range(n + 1) for j in range(n + 1)]
    nodes = [(number(*p), (5000 * p[0], 5000 * p[1], 3000 * p[2])) for p in grid]
    elements = []
    for i, j, k in grid:
        for to in ((i, j, k + 1), (i + 1, j, k), (i, j + 1, k)):
            if max(to) <= n and (k > 0 or to[2] > 0):
                elements.append((len(elements) + 1, number(i, j, k), number(*to)))
    section = ["*BEAM GENERAL SECTION, ELSET=ALL, MATERIAL=STEEL", "5000., 8.e7, 0., 2.e7, 1.e6", "1., 1., 0.5"]
    held = [number(i, j, 0) for i in range(n + 1) for j in range(n + 1)]
    return deck(nodes, elements, "B31", section, held, ["*DLOAD", "ALL, BZ, -1."])


def block(n):
    """A cube of n by n by n C3D8 that hangs from x = 0."""
    number = lambda i, j, k: (i * (n + 1) + j) * (n + 1) + k + 1
    line = range(n + 1)
    nodes = [(number(i, j, k), (10 * i, 10 * j, 10 * k)) for i in line for j in line for k in line]
    elements = []
    for i in range(n):
        for j in range(n):
            for k in range(n):
                low = [number(i, j, k), number(i + 1, j, k), number(i + 1, j + 1, k), number(i, j + 1, k)]
                elements.append((len(elements) + 1, *low, *(node + 1 for node in low)))
    return deck(nodes, elements, "C3D8", ["*SOLID SECTION, ELSET=ALL, MATERIAL=STEEL"],
                [number(0, j, k) for j in line for k in line], ["*DLOAD", "ALL, BX, 1."])


def net(n):
    """Cables over a square of n by n meshes, held along its border, each a fiftieth longer than its chord."""
    number = lambda i, j: i * (n + 1) + j + 1
    line = range(n + 1)
    nodes = [(number(i, j), (10 * i, 10 * j, 0)) for i in line for j in line]
    pairs = [(number(i, j), number(*to)) for i in line for j in line for to in ((i + 1, j), (i, j + 1)) if max(to) <= n]
    held = [number(i, j) for i in line for j in line if {i, j} & {0, n}]
    text = deck(nodes, [(k + 1, *pair) for k, pair in enumerate(pairs)], "T3D2",
                ["*CABLE SECTION, ELSET=ALL, MATERIAL=STEEL", "1., 10.2"], held, ["*DLOAD", "ALL, PZ, -0.01"])
    return text.replace("HELD, 1, 6", "HELD, PINNED")
