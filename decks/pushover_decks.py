"""Frames that are pushed to collapse."""

from frame_decks import lines_of_nodes, member

E, AREA, INERTIA, TORSION = 210000.0, 5000.0, 8.0e7, 1.0e6
MOMENT, AXIAL = 1.0e8, 1.0e9  # plastic capacities, N mm and N
SPAN = 4000.0
FORCE, LINE = MOMENT / SPAN, MOMENT / SPAN**2  # Mp/L, Mp/L^2
UNITS = f"** N, mm. Mp {MOMENT!r}, L {SPAN!r}."


def steel(elset):
    """One section with hinges under bending alone, for plane frames."""
    return ["*MATERIAL, NAME=STEEL", "*ELASTIC", f"{E!r}, 0.3", f"*BEAM GENERAL SECTION, ELSET={elset}, MATERIAL=STEEL",
            f"{AREA!r}, {INERTIA!r}, 0., {INERTIA!r}, {TORSION!r}", "0., 0., 1.",
            f"*PLASTIC HINGE, ELSET={elset}, CURVE=SINGLE, FORCES=M1", f"{AXIAL!r}, {MOMENT!r}, {MOMENT!r}"]


def beam(title, comment, count, supports, *steps):
    """A straight beam along x, bent in the x-y plane."""
    nodes, elements = member(1, 1, count, (0.0, 0.0, 0.0), (SPAN, 0.0, 0.0))
    return ["*HEADING", title, *comment, UNITS, "*NODE, NSET=ALL", *nodes, "*ELEMENT, TYPE=B33, ELSET=BEAM",
            *elements, *steel("BEAM"), "*BOUNDARY", *supports, *[line for step in steps for line in step]]


def pushover(options, *cards):
    return ["*STEP", "*PUSHOVER" + options, *cards, "*END STEP"]


def straight_beams():
    """Load factors are multiples of Mp/L or Mp/L^2."""
    yield "pushover_propped_beam", beam(
        "A propped beam under a force in the middle: plastic collapse at 6 Mp/L",
        ["** The load is Mp/L: a hinge at the clamped end at 16/3, collapse at 6."], 2, ["1, ENCASTRE", "3, 2, 5"],
        pushover(", NODE=2, DOF=2", "*CLOAD", f"2, 2, {-FORCE!r}"))
    yield "pushover_fixed_beam", beam(
        "A clamped beam under a uniform load: plastic collapse at 16 Mp/L^2",
        ["** The load is Mp/L^2: hinges at both ends at 12, collapse at 16."], 8, ["1, ENCASTRE", "9, ENCASTRE"],
        pushover(", NODE=5, DOF=2", "*DLOAD", f"BEAM, PY, {-LINE!r}"))
    yield "pushover_unloading", beam(
        "A propped beam loaded beyond its first hinge, unloaded and loaded the other way",
        ["** The load is Mp/L, in the first step to 5.8. The second pulls back: the hinge closes at once, yields the "
         "other",
         "** way when its moment has changed by 2 Mp, at 32/3, and the beam collapses under -6 in all, at 11.8."], 2,
        ["1, ENCASTRE", "3, 2, 5"],
        pushover(", NODE=2, DOF=2", "5.8", "*CLOAD", f"2, 2, {-FORCE!r}"),
        pushover(", NODE=2, DOF=2, CONTINUE", "*CLOAD", f"2, 2, {FORCE!r}"))


def portal(title, comment, *steps):
    """Height half the span, clamped feet; the node under the force on the beam is 5."""
    half = SPAN / 2
    points = [(0.0, 0.0, 0.0), (0.0, half, 0.0), (SPAN, half, 0.0), (SPAN, 0.0, 0.0), (half, half, 0.0)]
    return ["*HEADING", title, *comment, UNITS, "*NODE, NSET=ALL", *lines_of_nodes(1, points),
            "*ELEMENT, TYPE=B33, ELSET=FRAME", "1, 1, 2", "2, 4, 3", "3, 2, 5", "4, 5, 3", *steel("FRAME"),
            "*BOUNDARY", "ALL, 3, 5", "1, ENCASTRE", "4, ENCASTRE", *[line for step in steps for line in step]]


def portals():
    yield "pushover_portal", portal(
        "A portal frame under a sway force and a force on the beam: plastic collapse at 6 Mp/L",
        ["** Both forces are Mp/L; the combined mechanism works 2 P L/2 = 6 Mp."],
        pushover(", NODE=3, DOF=1", "*CLOAD", f"2, 1, {FORCE!r}", f"5, 2, {-FORCE!r}"))
    yield "pushover_portal_two_phases", portal(
        "A portal frame, first loaded on the beam, then pushed sideways",
        ["** 7.5 Mp/L stay on the beam. A sway force of 12 - 7.5 = 4.5 Mp/L makes the combined mechanism."],
        pushover(", NODE=5, DOF=2", "7.5", "*CLOAD", f"5, 2, {-FORCE!r}"),
        pushover(", NODE=3, DOF=1, CONTINUE", "*CLOAD", f"2, 1, {FORCE!r}"))


def section(elset, material, values, n1, yield_stress, hinge):
    """Axis 1 of the section is local y, towards n1 and along the web: axis 2 is the strong one."""
    area, strong, weak, torsion, plastic_strong, plastic_weak = values
    return [f"*BEAM GENERAL SECTION, ELSET={elset}, MATERIAL={material}",
            f"{area:.6g}, {weak:.6g}, 0., {strong:.6g}, {torsion:.6g}", n1,
            f"*PLASTIC HINGE, ELSET={elset}, {hinge}",
            f"{yield_stress * area:.6g}, {yield_stress * plastic_weak:.6g}, {yield_stress * plastic_strong:.6g}"]


class two_storeys:
    """An invented frame of two storeys, one bay by one, clamped at its feet. The horizontal forces act on two of its
    sides, one of them out of the middle: it goes sideways in both directions and turns."""

    X, Y, Z = (0.0, 6000.0), (0.0, 5000.0), (0.0, 4500.0, 8000.0)
    FLOOR = 900000.0  # a floor, on four joints: forces along columns for second order to act on
    ALONG_X, ALONG_Y = 50000.0, 20000.0  # at each joint of the side x = 0, of the side y = 0
    # Area, I about axes 1 and 2, J; plastic axial force and moments about axes 1 and 2. Hollow: they resist torsion.
    COLUMN = ("15000., 2.0e8, 0., 3.0e8, 3.5e8", "3.75e6, 3.5e8, 4.5e8")
    BEAM = ("7000., 4.0e7, 0., 1.4e8, 8.0e7", "1.75e6, 8.0e7, 1.6e8")

    def __init__(self):
        self.points, self.number = [], {}
        for k, z in enumerate(self.Z):
            for j, y in enumerate(self.Y):
                for i, x in enumerate(self.X):
                    self.points.append((x, y, z))
                    self.number[i, j, k] = len(self.points)
        joints = [place for place in self.number if place[2] > 0]
        columns = [(i, j, k - 1, i, j, k) for i, j, k in joints]
        beams = [(0, j, k, 1, j, k) for i, j, k in joints if i == 0]
        beams += [(i, 0, k, i, 1, k) for i, j, k in joints if j == 0]
        self.columns, self.beams = ([(self.number[m[:3]], self.number[m[3:]]) for m in some]
                                    for some in (columns, beams))

    def loads(self):
        """A quarter of the floor on each joint; forces that grow with the storey, those along y twice as large at x =
        0."""
        for (i, j, k), n in self.number.items():
            if k == 0:
                continue
            yield f"{n}, 3, {-self.FLOOR / 4!r}"
            if i == 0:
                yield f"{n}, 1, {self.ALONG_X * k!r}"
            if j == 0:
                yield f"{n}, 2, {self.ALONG_Y * k * (2 if i == 0 else 1)!r}"

    def section(self, elset, n1, constants, capacities, hinge):
        return [f"*BEAM GENERAL SECTION, ELSET={elset}, MATERIAL=STEEL", constants, n1,
                f"*PLASTIC HINGE, ELSET={elset}, {hinge}", capacities]

    def deck(self, title, surfaces, column_hinge, beam_hinge, flags=""):
        count = len(self.columns)
        return ["*HEADING", title,
                "** N, mm. Everything in it is invented: geometry, sections, plastic capacities, loads. " + surfaces[0],
                *(f"** {line}" for line in surfaces[1:]),
                "*NODE, NSET=ALL", *lines_of_nodes(1, self.points),
                "*ELEMENT, TYPE=B33, ELSET=COLUMNS", *(f"{e}, {a}, {b}" for e, (a, b) in enumerate(self.columns, 1)),
                "*ELEMENT, TYPE=B33, ELSET=BEAMS",
                *(f"{e}, {a}, {b}" for e, (a, b) in enumerate(self.beams, count + 1)),
                "*MATERIAL, NAME=STEEL", "*ELASTIC", f"{E!r}, 0.3",
                *self.section("COLUMNS", "0., 1., 0.", *self.COLUMN, column_hinge),
                *self.section("BEAMS", "0., 0., 1.", *self.BEAM, beam_hinge),
                "*BOUNDARY", *(f"{n}, ENCASTRE" for (_, _, k), n in self.number.items() if k == 0),
                f"*STEP{flags}", f"*PUSHOVER, NODE={self.number[1, 0, 2]}, DOF=1", "*CLOAD", *self.loads(), "*END STEP"]


def space_frames():
    frame = two_storeys()
    flat, smooth = "CURVE=SINGLE, FORCES=M2", "CURVE=ORBISON"
    yield "pushover_two_storeys", frame.deck(
        "A space frame of two storeys to collapse, yield surfaces with flat faces",
        ["Moments about", "both axes yield in columns, m1 + m2 = 1, those about axis 2 in beams.",
         "The load factor of collapse lies between bounds by linear programmes, limit_analysis.py: "
         "1.222468 to 1.222469"],
        "CURVE=LINEAR, FORCES=M1-M2", flat)
    yield "pushover_two_storeys_orbison", frame.deck(
        "A space frame of two storeys to collapse, smooth yield surfaces",
        ["Axial forces and", "both moments yield together, on the surface of Orbison, McGuire and Abel (1982).",
         "The load factor of collapse lies between bounds by linear programmes, limit_analysis.py: 1.29547 to 1.29549"],
        smooth, flat)
    yield "pushover_two_storeys_p_delta", frame.deck(
        "A space frame of two storeys to collapse, smooth yield surfaces, second order",
        ["The frame of", "pushover_two_storeys_orbison.inp, with PDELTA."], smooth, flat, ", PDELTA")


# A portal frame that leans, for decks and for sway_portal.py: area, second moments about the axes across and in the
# plane, torsion, plastic moduli.
HEIGHT, WIDTH, LEAN = 5000.0, 4000.0, 12.5
COLUMN = (14910.0, 2.517e8, 8.563e7, 1.85e6, 1.869e6, 8.701e5)
TOP = (17090.0, 3.666e8, 9.690e7, 2.57e6, 2.408e6, 9.857e5)
YOUNG, YIELD, THRUST, SIDEWAYS = 205000.0, 235.0, 2.8e6, 35e3


def leaning_portal():
    """A portal frame of heavy columns, out of plumb by 1/400."""
    parts = 4
    left, first = member(1, 1, parts, (0.0, 0.0, 0.0), (LEAN, HEIGHT, 0.0))
    right, second = member(101, 101, parts, (WIDTH, 0.0, 0.0), (WIDTH + LEAN, HEIGHT, 0.0))
    hinge = "CURVE=LINEAR, FORCES=N-M2"
    yield "pushover_leaning_portal", [
        "*HEADING", "A slender portal frame to collapse, second order",
        "** N, mm. Columns of 5 m, a beam of 4 m, E 205 GPa, yield stress 235 MPa, clamped feet, out of plumb by "
        "1/400;",
        "** 2800 kN on each column and 35 kN sideways. The load factor of collapse by stability functions and six "
        "hinges,",
        "** without a mesh: sway_portal.py: 1.04849",
        "*NODE, NSET=ALL", *left, *right, "*ELEMENT, TYPE=B33, ELSET=COLUMNS", *first, *second,
        "*ELEMENT, TYPE=B33, ELSET=BEAM", f"201, {1 + parts}, {101 + parts}",
        "*MATERIAL, NAME=STEEL", "*ELASTIC", "205000., 0.3",
        *section("COLUMNS", "STEEL", COLUMN, "1., 0., 0.", YIELD, hinge),
        *section("BEAM", "STEEL", TOP, "0., 1., 0.", YIELD, hinge),
        "*BOUNDARY", "ALL, 3, 5", "1, ENCASTRE", "101, ENCASTRE",
        "*STEP, PDELTA", f"*PUSHOVER, NODE={101 + parts}, DOF=1", "*CLOAD", f"{1 + parts}, 2, -2800000.",
        f"{101 + parts}, 2, -2800000.", f"{1 + parts}, 1, 35000.", "*END STEP"]


def decks():
    yield from straight_beams()
    yield from portals()
    yield from space_frames()
    yield from leaning_portal()
