"""Frames that are cut into many elements, and a cable: small decks with closed forms."""

import math


def lines_of_nodes(first, points):
    return [f"{first + i}, {x!r}, {y!r}, {z!r}" for i, (x, y, z) in enumerate(points)]


def member(first_node, first_element, count, start, end):
    """Nodes and B33 elements of a straight member."""
    points = [tuple(a + (b - a) * i / count for a, b in zip(start, end)) for i in range(count + 1)]
    elements = [f"{first_element + i}, {first_node + i}, {first_node + i + 1}" for i in range(count)]
    return lines_of_nodes(first_node, points), elements


def vibrating_beam():
    """A simply supported beam: frequencies i^2 pi / 2 sqrt(EI / rho A) / L^2."""
    length, area, inertia, modulus, density = 10000.0, 400.0, 1000.0, 210000.0, 7.85e-9
    nodes, elements = member(1, 1, 20, (0.0, 0.0, 0.0), (length, 0.0, 0.0))
    first = math.pi / 2 * math.sqrt(modulus * inertia / (density * area)) / length**2
    return [
        "*HEADING",
        "A simply supported beam, its first five bending frequencies in one plane",
        f"** N, mm, t, s. Closed form: {first:.6g} Hz times 1, 4, 9, 16, 25.",
        "*NODE, NSET=ALL", *nodes, "*ELEMENT, TYPE=B33, ELSET=BEAM", *elements,
        "*MATERIAL, NAME=STEEL", "*ELASTIC", f"{modulus!r}, 0.3", "*DENSITY", f"{density!r}",
        "*BEAM GENERAL SECTION, ELSET=BEAM, MATERIAL=STEEL", f"{area!r}, {inertia!r}, 0., {inertia!r}, 1000.",
        "0., 1., 0.",
        "*BOUNDARY", "ALL, 3, 5", "1, 1, 2", "21, 2", "*STEP", "*FREQUENCY", "5", "*END STEP"]


def tensioned_beam():
    """The same beam under five times its buckling load in tension: frequencies, a transverse force, its buckling
    load."""
    length, area, inertia, modulus, density = 10000.0, 400.0, 1000.0, 210000.0, 7.85e-9
    nodes, elements = member(1, 1, 20, (0.0, 0.0, 0.0), (length, 0.0, 0.0))
    critical = math.pi**2 * modulus * inertia / length**2
    tension, force = round(5 * critical, 3), 3.0
    alone = math.pi / 2 * math.sqrt(modulus * inertia / (density * area)) / length**2
    first, second = (n * n * alone * math.sqrt(1 + tension / (n * n * critical)) for n in (1, 2))
    a = length / 2 * math.sqrt(tension / (modulus * inertia))
    middle = force * length / (4 * tension) * (1 - math.tanh(a) / a)
    small = "*STEP, PERTURBATION"
    return [
        "*HEADING",
        "A beam between pins under tension: its frequencies, its answer to a force, the load that makes it buckle",
        f"** N, mm, t, s. Closed forms: {first:.6g} and {second:.6g} Hz; {middle:.6g} in the middle; a pressure of",
        f"** {critical + tension:.6g}.",
        "*NODE, NSET=ALL", *nodes, "*ELEMENT, TYPE=B33, ELSET=BEAM", *elements,
        "*MATERIAL, NAME=STEEL", "*ELASTIC", f"{modulus!r}, 0.3", "*DENSITY", f"{density!r}",
        "*BEAM GENERAL SECTION, ELSET=BEAM, MATERIAL=STEEL", f"{area!r}, {inertia!r}, 0., {inertia!r}, 1000.",
        "0., 1., 0.",
        "*BOUNDARY", "ALL, 3, 5", "1, 1, 2", "21, 2", "*STEP", "*STATIC", "*CLOAD", f"21, 1, {tension!r}", "*END STEP",
        small, "*FREQUENCY", "2", "*END STEP", small, "*STATIC", "*CLOAD", f"11, 2, {force!r}", "*END STEP",
        small, "*BUCKLE", "1", "*CLOAD", "21, 1, -1.", "*END STEP"]


def euler_columns():
    """Four columns side by side, each with other ends: free, pinned, pinned and clamped, clamped."""
    count, length, inertia, modulus = 10, 4000.0, 1.0e6, 210000.0
    nodes, elements, boundary, loads = [], [], ["ALL, 3, 5"], []
    for c, (foot, head) in enumerate([("1, 6", ""), ("1, 2", "1"), ("1, 6", "1"), ("1, 6", "1, 6")]):
        first, top = 100 * c + 1, 100 * c + 1 + count
        some_nodes, some_elements = member(first, 100 * c + 1, count, (1000.0 * c, 0.0, 0.0), (1000.0 * c, length, 0.0))
        nodes += some_nodes
        elements += some_elements
        boundary.append(f"{first}, {foot}")
        if head == "1":
            boundary.append(f"{top}, 1")
        elif head:
            boundary += [f"{top}, 1", f"{top}, 6"]
        loads.append(f"{top}, 2, -1000.")
    pinned = math.pi**2 * modulus * inertia / length**2
    return [
        "*HEADING",
        "Four Euler columns: a free head, pinned ends, a clamped foot with a pinned head, clamped ends",
        f"** N, mm; 1000 N on each. The pinned column buckles at the factor {pinned / 1000:.6g}; the others at that "
        "over the",
        "** square of 2, 0.699156 and 0.5. Between them comes the second mode of the first column, at nine times its "
        "first.",
        "*NODE, NSET=ALL", *nodes, "*ELEMENT, TYPE=B33, ELSET=COLUMNS", *elements,
        "*MATERIAL, NAME=STEEL", "*ELASTIC", f"{modulus!r}, 0.3",
        "*BEAM GENERAL SECTION, ELSET=COLUMNS, MATERIAL=STEEL", f"1000., {inertia!r}, 0., {inertia!r}, 1000.",
        "0., 0., 1.",
        "*BOUNDARY", *boundary, "*STEP", "*BUCKLE", "6", "*CLOAD", *loads, "*END STEP"]


def hanging_cable():
    """A level catenary of eight cables."""
    count, span, length = 8, 100.0, 105.0
    points = [(span * i / count, -14.0 * 4 * i * (count - i) / count**2, 0.0) for i in range(count + 1)]
    return [
        "*HEADING",
        "A level cable of eight pieces: span 100, unstressed length 105, 10 per unstressed length, nearly inextensible",
        "** The inextensible catenary sags 13.9304; horizontal tension 919.64, tension at the supports 1058.94. The "
        "deck starts",
        "** from a parabola.",
        "*NODE", *lines_of_nodes(1, points), "*ELEMENT, TYPE=T3D2, ELSET=CABLE",
        *[f"{i}, {i}, {i + 1}" for i in range(1, count + 1)], "*NSET, NSET=MIDDLE", f"{count // 2 + 1}",
        "*MATERIAL, NAME=ROPE", "*ELASTIC", "1.E10, 0.3", "*CABLE SECTION, ELSET=CABLE, MATERIAL=ROPE",
        f"1., {length / count!r}", "*BOUNDARY", "1, PINNED", f"{count + 1}, PINNED",
        "*STEP", "*STATIC", "*DLOAD", "CABLE, PY, -10.", "*END STEP"]


def decks():
    for deck in (vibrating_beam, tensioned_beam, euler_columns, hanging_cable):
        yield deck.__name__, deck()
