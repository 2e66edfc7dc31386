#!/usr/bin/env python3
"""Writes the decks of frames that are pushed to collapse, into the folder of this file."""

from frame_decks import lines_of_nodes, member, write

E, AREA, INERTIA, TORSION = 210000.0, 5000.0, 8.0e7, 1.0e6
MOMENT, AXIAL = 1.0e8, 1.0e9  # plastic capacities, N mm and N
SPAN = 4000.0
FORCE, LINE = MOMENT / SPAN, MOMENT / SPAN**2  # Mp/L, Mp/L^2
UNITS = f"** N, mm. Mp {MOMENT!r}, L {SPAN!r}. Written by pushover_decks.py."


def steel(elset):
    """One section with hinges under bending alone, for plane frames."""
    return ["*MATERIAL, NAME=STEEL", "*ELASTIC", f"{E!r}, 0.3", f"*BEAM GENERAL SECTION, ELSET={elset}, MATERIAL=STEEL",
            f"{AREA!r}, {INERTIA!r}, 0., {INERTIA!r}, {TORSION!r}", "0., 0., 1.",
            f"*PLASTIC HINGE, ELSET={elset}, CURVE=SINGLE, FORCES=M1", f"{AXIAL!r}, {MOMENT!r}, {MOMENT!r}"]


def beam(name, title, comment, count, supports, *steps):
    """A straight beam along x, bent in the x-y plane."""
    nodes, elements = member(1, 1, count, (0.0, 0.0, 0.0), (SPAN, 0.0, 0.0))
    write(name, ["*HEADING", title, *comment, UNITS, "*NODE, NSET=ALL", *nodes, "*ELEMENT, TYPE=B33, ELSET=BEAM",
                 *elements, *steel("BEAM"), "*BOUNDARY", *supports, *[line for step in steps for line in step]])


def pushover(options, *cards):
    return ["*STEP", "*PUSHOVER" + options, *cards, "*END STEP"]


def straight_beams():
    """Load factors are multiples of Mp/L or Mp/L^2."""
    beam("pushover_propped_beam.inp", "A propped beam under a force in the middle: plastic collapse at 6 Mp/L",
         ["** The load is Mp/L: a hinge at the clamped end at 16/3, collapse at 6."], 2, ["1, ENCASTRE", "3, 2, 5"],
         pushover(", NODE=2, DOF=2", "*CLOAD", f"2, 2, {-FORCE!r}"))
    beam("pushover_fixed_beam.inp", "A clamped beam under a uniform load: plastic collapse at 16 Mp/L^2",
         ["** The load is Mp/L^2: hinges at both ends at 12, collapse at 16."], 8, ["1, ENCASTRE", "9, ENCASTRE"],
         pushover(", NODE=5, DOF=2", "*DLOAD", f"BEAM, PY, {-LINE!r}"))
    beam("pushover_unloading.inp", "A propped beam loaded beyond its first hinge, unloaded and loaded the other way",
         ["** The load is Mp/L, in the first step to 5.8. The second pulls back: the hinge closes at once, yields the other",
          "** way when its moment has changed by 2 Mp, at 32/3, and the beam collapses under -6 in all, at 11.8."], 2,
         ["1, ENCASTRE", "3, 2, 5"],
         pushover(", NODE=2, DOF=2", "5.8", "*CLOAD", f"2, 2, {-FORCE!r}"),
         pushover(", NODE=2, DOF=2, CONTINUE", "*CLOAD", f"2, 2, {FORCE!r}"))


def portal(name, title, comment, *steps):
    """Height half the span, clamped feet; the node under the force on the beam is 5."""
    half = SPAN / 2
    points = [(0.0, 0.0, 0.0), (0.0, half, 0.0), (SPAN, half, 0.0), (SPAN, 0.0, 0.0), (half, half, 0.0)]
    write(name, ["*HEADING", title, *comment, UNITS, "*NODE, NSET=ALL", *lines_of_nodes(1, points),
                 "*ELEMENT, TYPE=B33, ELSET=FRAME", "1, 1, 2", "2, 4, 3", "3, 2, 5", "4, 5, 3", *steel("FRAME"),
                 "*BOUNDARY", "ALL, 3, 5", "1, ENCASTRE", "4, ENCASTRE", *[line for step in steps for line in step]])


def portals():
    portal("pushover_portal.inp", "A portal frame under a sway force and a force on the beam: plastic collapse at 6 Mp/L",
           ["** Both forces are Mp/L; the combined mechanism works 2 P L/2 = 6 Mp."],
           pushover(", NODE=3, DOF=1", "*CLOAD", f"2, 1, {FORCE!r}", f"5, 2, {-FORCE!r}"))
    portal("pushover_portal_two_phases.inp", "A portal frame, first loaded on the beam, then pushed sideways",
           ["** 7.5 Mp/L stay on the beam. A sway force of 12 - 7.5 = 4.5 Mp/L makes the combined mechanism."],
           pushover(", NODE=5, DOF=2", "7.5", "*CLOAD", f"5, 2, {-FORCE!r}"),
           pushover(", NODE=3, DOF=1, CONTINUE", "*CLOAD", f"2, 1, {FORCE!r}"))


# Wide-flange sections of the AISC manual, inches: area, I strong, I weak, J, Z strong, Z weak.
WIDE_FLANGE = {
    "W12X120": (35.3, 1070.0, 345.0, 12.9, 186.0, 85.4),
    "W12X87": (25.6, 740.0, 241.0, 5.10, 132.0, 60.4),
    "W12X53": (15.6, 425.0, 95.8, 1.58, 77.9, 29.1),
    "W12X26": (7.65, 204.0, 17.3, 0.300, 37.2, 8.17),
    "W10X60": (17.6, 341.0, 116.0, 2.48, 74.6, 35.0),
}


def section(elset, material, values, n1, yield_stress, hinge):
    """Axis 1 of the section is local y, towards n1 and along the web: axis 2 is the strong one."""
    area, strong, weak, torsion, plastic_strong, plastic_weak = values
    return [f"*BEAM GENERAL SECTION, ELSET={elset}, MATERIAL={material}",
            f"{area:.6g}, {weak:.6g}, 0., {strong:.6g}, {torsion:.6g}", n1,
            f"*PLASTIC HINGE, ELSET={elset}, {hinge}",
            f"{yield_stress * area:.6g}, {yield_stress * plastic_weak:.6g}, {yield_stress * plastic_strong:.6g}"]


def millimetres(values):
    powers = (2, 4, 4, 4, 3, 3)
    return tuple(value * 25.4**power for value, power in zip(values, powers))


class six_storeys:
    """Six storeys, one bay by two in the lower three and one by one above; the wind blows along the two bays."""

    HEIGHT, BAY, STOREYS, LOW = 3658.0, 7315.0, 6, 3
    FLOOR, WIND = 9.6e-3, 53376.0

    def __init__(self):
        self.nodes, self.number, self.elements = [], {}, {}
        for level in range(self.STOREYS + 1):
            for j in range(self.rows(level)):
                for i in range(2):
                    self.number[i, j, level] = len(self.nodes) + 1
                    self.nodes.append((i * self.BAY, j * self.BAY, level * self.HEIGHT))
        self.count = 0
        self.columns()
        self.beams()

    def rows(self, level):
        return 3 if level <= self.LOW else 2

    def add(self, kind, start, end):
        self.count += 1
        self.elements.setdefault(kind, []).append(f"{self.count}, {self.number[start]}, {self.number[end]}")

    def columns(self):
        for level in range(1, self.STOREYS + 1):
            for j in range(self.rows(level)):
                for i in range(2):
                    name = "W10X60" if level > self.LOW else "W12X120" if j == 1 else "W12X87"
                    self.add(("C", name), (i, j, level - 1), (i, j, level))

    def beams(self):
        for level in range(1, self.STOREYS + 1):
            rows = self.rows(level)
            for j in range(rows):
                self.add(("X", "W12X26"), (0, j, level), (1, j, level))
            for i in range(2):
                for j in range(rows - 1):
                    self.add(("Y", "W12X87" if level <= self.LOW else "W12X53"), (i, j, level), (i, j + 1, level))

    def loads(self):
        """A quarter of each bay's floor on each of its joints; wind on every joint of the front, which is the high side."""
        lines = []
        for level in range(1, self.STOREYS + 1):
            rows = self.rows(level)
            for j in range(rows):
                for i in range(2):
                    bays = 2 if 0 < j < rows - 1 else 1
                    lines.append(f"{self.number[i, j, level]}, 3, {-bays * self.FLOOR * self.BAY**2 / 4!r}")
                    if j == 0:
                        lines.append(f"{self.number[i, j, level]}, 2, {self.WIND!r}")
        return lines

    def deck(self, name, title, flags):
        n1 = {"C": "0., 1., 0.", "X": "0., 0., 1.", "Y": "0., 0., 1."}
        lines = ["*HEADING", title,
                 "** N, mm. The frame of Orbison, McGuire and Abel (1982), with E, G, yield stress, storey height, bays, floor",
                 "** load and wind as Liew et al. (2000) and Kim et al. (2001) give them; their load factors are 1.99 to 2.07.",
                 "** Which sections stand where, that the upper storeys have one bay and on which side the wind acts is put",
                 "** down from memory and not confirmed. Sections: AISC manual. Written by pushover_decks.py.",
                 "*NODE, NSET=ALL", *lines_of_nodes(1, self.nodes)]
        for (kind, name_of), members in self.elements.items():
            lines += [f"*ELEMENT, TYPE=B33, ELSET={kind}_{name_of}", *members]
        lines += ["*MATERIAL, NAME=STEEL", "*ELASTIC", f"206850., {206850.0 / (2 * 79290.0) - 1!r}"]
        for kind, name_of in self.elements:
            lines += section(f"{kind}_{name_of}", "STEEL", millimetres(WIDE_FLANGE[name_of]), n1[kind], 250.0, "CURVE=ORBISON")
        top = self.number[0, 0, self.STOREYS]
        lines += ["*BOUNDARY", *[f"{n}, ENCASTRE" for (_, _, level), n in self.number.items() if level == 0],
                  f"*STEP{flags}", f"*PUSHOVER, NODE={top}, DOF=2", "*CLOAD", *self.loads(), "*END STEP"]
        write(name, lines)


def space_frames():
    six_storeys().deck("pushover_six_storeys.inp", "A space frame of six storeys to collapse, first order", "")
    six_storeys().deck("pushover_six_storeys_p_delta.inp", "A space frame of six storeys to collapse, second order", ", PDELTA")


def vogel_portal():
    """The portal frame of Vogel (1985): HEB 300 columns, an HEB 340 beam, out of plumb by 1/400."""
    height, span, lean, parts = 5000.0, 4000.0, 5000.0 / 400, 4
    left, first = member(1, 1, parts, (0.0, 0.0, 0.0), (lean, height, 0.0))
    right, second = member(101, 101, parts, (span, 0.0, 0.0), (span + lean, height, 0.0))
    column = (14910.0, 2.517e8, 8.563e7, 1.85e6, 1.869e6, 8.701e5)
    top = (17090.0, 3.666e8, 9.690e7, 2.57e6, 2.408e6, 9.857e5)
    hinge = "CURVE=LINEAR, FORCES=N-M2"
    write("pushover_vogel_portal.inp", [
        "*HEADING", "A slender portal frame to collapse, second order",
        "** N, mm. Vogel (1985): columns HEB 300 of 5 m, beam HEB 340 of 4 m, E 205 GPa, yield stress 235 MPa, clamped feet,",
        "** out of plumb by 1/400; 2800 kN on each column and 35 kN sideways. Load factor by plastic zones 1.02. From memory;",
        "** section values of the European tables. Written by pushover_decks.py.",
        "*NODE, NSET=ALL", *left, *right, "*ELEMENT, TYPE=B33, ELSET=COLUMNS", *first, *second,
        "*ELEMENT, TYPE=B33, ELSET=BEAM", f"201, {1 + parts}, {101 + parts}",
        "*MATERIAL, NAME=STEEL", "*ELASTIC", "205000., 0.3",
        *section("COLUMNS", "STEEL", column, "1., 0., 0.", 235.0, hinge),
        *section("BEAM", "STEEL", top, "0., 1., 0.", 235.0, hinge),
        "*BOUNDARY", "ALL, 3, 5", "1, ENCASTRE", "101, ENCASTRE",
        "*STEP, PDELTA", f"*PUSHOVER, NODE={101 + parts}, DOF=1", "*CLOAD", f"{1 + parts}, 2, -2800000.",
        f"{101 + parts}, 2, -2800000.", f"{1 + parts}, 1, 35000.", "*END STEP"])


if __name__ == "__main__":
    straight_beams()
    portals()
    space_frames()
    vogel_portal()
