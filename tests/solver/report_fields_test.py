#!/usr/bin/env python3
"""Fields, sections and summaries of report pages beside the files for viewers and the tables of the same run, and beside
what the decks say.

    report_fields_test.py SOLVER DECKS [name of a test ...]
"""
import csv
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

from report_data import Page

SOLVER, DECKS = sys.argv[1], pathlib.Path(sys.argv[2])
FLOAT = 1.2e-7  # of numbers of 32 bits
TABLES = ("csv", "stations", "stresses", "solids", "curve", "events", "modes")


class Grid:
    """The arrays of a file for viewers, written as text."""

    def __init__(self, path):
        whole = xml.etree.ElementTree.parse(path).getroot().find("UnstructuredGrid")
        self.fields = {a.get("Name"): self.numbers(a) for a in whole.find("FieldData")}
        self.cells = {a.get("Name"): self.items(a) for a in whole.find("Piece").find("CellData")}
        self.points = {a.get("Name"): self.items(a) for a in whole.find("Piece").find("PointData")}

    @staticmethod
    def numbers(array):
        return [float(word) for word in (array.text or "").split()]

    def items(self, array):
        width, values = int(array.get("NumberOfComponents") or 1), self.numbers(array)
        return [values[i : i + width] for i in range(0, len(values), width)]

    def texts(self, name):
        """Texts stand as their letters, each with a 0 behind it."""
        return "".join(chr(int(letter)) for letter in self.fields.get(name, [])).split("\0")[:-1]


class Run:
    """A deck with its page, its tables and its files for viewers."""

    def __init__(self, deck, *options):
        for old in [*pathlib.Path(".").glob("*.csv"), *pathlib.Path(".").glob("*.vtu")]:
            old.unlink()
        tables = [word for name in TABLES for word in (f"--{name}", f"{name}.csv")]
        done = subprocess.run([SOLVER, deck, "--ascii", "-o", "r.vtu", "--report", "page.html", *tables, *options],
                              capture_output=True, text=True, errors="replace", check=False)
        assert done.returncode == 0, done.stderr
        self.page = Page("page.html")
        self.steps = self.page["steps"]

    def place(self, name, step):
        stem, end = name.split(".")
        return name if len(self.steps) == 1 else f"{stem}.{step['number']}.{end}"

    def rows(self, table, step):
        path = self.place(f"{table}.csv", step)
        if not os.path.exists(path):
            return []
        with open(path, newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))

    def grid(self, step):
        return Grid(self.place("r.vtu", step))


def run_text(text, *options):
    pathlib.Path("own.inp").write_text(text, encoding="utf-8")
    return Run("own.inp", *options)


def items(values):
    return [value if isinstance(value, tuple) else (value,) for value in values]


class Beside(unittest.TestCase):
    def near(self, value, expected, size, what):
        self.assertLessEqual(abs(value - expected), FLOAT * max(abs(expected), size) + 1e-37, f"{what}: {value}, {expected}")

    def compare(self, values, expected, what):
        """Items with numbers; NaN on the page stands for the 0 of an element that has no such value."""
        values = items(values)
        self.assertEqual(len(values), len(expected), what)
        seen = 0
        for got, wanted in zip(values, expected):
            self.assertEqual(len(got), len(wanted), what)
            for a, b in zip(got, wanted):
                if math.isnan(a):
                    self.assertEqual(b, 0, what)
                else:
                    self.near(a, b, 0, what)
                    seen += b != 0
        return seen


class Elements(Beside):
    """What belongs to elements, in files for viewers and on the page."""

    NAMES = ("membrane_force", "moment", "shear_force", "axial_force", "equivalent_plastic_strain", "plastic_strain_top",
             "plastic_strain_middle", "plastic_strain_bottom", "plastic_shear_strain")

    def test_fields(self):
        seen = dict.fromkeys(self.NAMES, 0)
        for name in ("thick_plate_quads", "membrane_patch", "plastic_strip_bending", "semi_rigid_portal", "offset_strip",
                     "plastic_strip_layered"):
            run = Run(DECKS / f"{name}.inp")
            for step in run.steps:
                grid = run.grid(step)
                for field in step["fields"]:
                    if field["name"] in self.NAMES:
                        seen[field["name"]] += self.compare(run.page.array(field["array"]), grid.cells[field["name"]],
                                                            f"{name}, {field['name']}")
        self.assertNotIn(0, [seen[name] for name in self.NAMES if name not in ("plastic_shear_strain",
                                                                               "plastic_strain_middle")], seen)

    def test_extremes(self):
        """Of the forces of plates: the least and the largest of the fields."""
        seen = set()
        for run in (Run(DECKS / "membrane_patch.inp"), Run(DECKS / "offset_strip.inp"), run_text(HEAD + STEPS)):
            for step in run.steps:
                of = {e["name"]: e for e in step["extremes"]}
                for field in step["fields"]:
                    values = items(run.page.array(field["array"]))
                    for k, component in enumerate(field["components"]):
                        if "of" in field or field["name"] not in ("membrane_force", "moment", "shear_force") or component not in of:
                            continue
                        own = [value[k] for value in values if not math.isnan(value[k])]
                        self.assertLessEqual(abs(of[component]["min"] - min(own)), 1e-6 * max(map(abs, own)), component)
                        self.assertLessEqual(abs(of[component]["max"] - max(own)), 1e-6 * max(map(abs, own)), component)
                        seen.add(component)
        self.assertEqual(seen, {"N1", "N2", "N12", "M1", "M2", "M12", "Q1", "Q2"})

    def test_sections_of_solids_and_masses(self):
        text = HEAD.replace("*ELEMENT, TYPE=B31", "*ELEMENT, TYPE=MASS, ELSET=M1\n5, 7\n*ELEMENT, TYPE=MASS, ELSET=M2\n6, 8\n*ELEMENT, TYPE=B31")
        text += "*MASS, ELSET=M1\n1.\n*MASS, ELSET=M2\n2.\n"
        run = run_text(text + STEPS[: STEPS.index("*STEP, NAME=DOWN")])
        page = run.page
        names = {i: page["sections"][s]["name"] for i, s in
                 zip(page.array(page["elements"]["id"]), page.array(page["elements"]["section"]))}
        self.assertEqual(names, {1: "*SHELL SECTION, ELSET=P", 4: "*SHELL SECTION, ELSET=P", 2: "*SOLID SECTION, ELSET=S",
                                 3: "*BEAM SECTION, ELSET=B", 5: "*MASS, ELSET=M1", 6: "*MASS, ELSET=M2"})
        self.assertEqual({page["sections"][s]["name"] for s in page.array(page["solid_parts"]["section"])}, {names[2]})
        self.assertEqual({page["sections"][s]["name"] for s in page.array(page["plate_parts"]["section"])}, {names[1]})

    def test_sections_materials_axes_and_parts(self):
        for name in ("offset_strip", "semi_rigid_portal", "cards/quadratic_shell", "cards/gravity_everywhere", "cards/mass"):
            with self.subTest(name):
                run = Run(DECKS / f"{name}.inp")
                page, grid = run.page, run.grid(run.steps[0])
                elements = {key: page.array(page["elements"][key]) for key in ("id", "part", "section")}
                self.assertEqual(elements["id"], [int(v) for v, in grid.cells["element_id"]])
                if "element_part" in grid.cells:
                    self.assertEqual(elements["part"], [int(v) for v, in grid.cells["element_part"]])
                else:
                    self.assertEqual(set(elements["part"]), {0})
                names = grid.texts("section_names")
                self.assertEqual([page["sections"][s]["name"] if s >= 0 else None for s in elements["section"]],
                                 [names[int(v)] if v >= 0 else None for v, in grid.cells["section"]])
                materials = grid.texts("material_names")
                own = [page["sections"][s]["material"] if s >= 0 else -1 for s in elements["section"]]
                self.assertEqual([page["materials"][k]["name"] if k >= 0 else None for k in own],
                                 [materials[int(v)] if v >= 0 else None for v, in grid.cells["material"]])
                counts = [elements["section"].count(s) for s in range(len(page["sections"]))]
                self.assertEqual([section["elements"] for section in page["sections"]], counts)
                if "normal" not in grid.cells:
                    continue
                axes = page.array(page["axes"])
                for own, x, normal in zip(axes, grid.cells["axis_x"], grid.cells["normal"]):
                    if any(normal):  # a plate
                        for a, b in zip(own, x + normal):
                            self.near(a, b, 1, "axes")


HEAD = """*NODE, NSET=ALL
1, 0, 0, 0
2, 1, 0, 0
3, 1, 1, 0
4, 0, 1, 0
5, 3, 0, 0
6, 4, 0, 0
7, 4, 1, 0
8, 3, 1, 0
9, 3, 0, 1
10, 4, 0, 1
11, 4, 1, 1
12, 3, 1, 1
13, 1, 0, -1
14, 1, 1, -1
*ELEMENT, TYPE=S4, ELSET=P
1, 1, 2, 3, 4
4, 2, 13, 14, 3
*ELEMENT, TYPE=C3D8, ELSET=S
2, 5, 6, 7, 8, 9, 10, 11, 12
*ELEMENT, TYPE=B31, ELSET=B
3, 2, 5
*MATERIAL, NAME=SOFT
*ELASTIC
1000, 0.25
*MATERIAL, NAME=HARD
*ELASTIC
3000, 0.2
*SHELL SECTION, ELSET=P, MATERIAL=SOFT, FORMULATION=THICK
0.1
*SOLID SECTION, ELSET=S, MATERIAL=HARD
*BEAM SECTION, ELSET=B, MATERIAL=HARD, SECTION=RECT
0.2, 0.3
0, 1, 0
"""
STEPS = """*STEP, NAME=OTHER
*STATIC
*BOUNDARY, OP=NEW
1, 1, 6
4, 1, 6
8, 1, 3
12, 1, 3
11, 1, 3
*CLOAD
5, 3, 1
*END STEP
*STEP, NAME=DOWN
*STATIC
*BOUNDARY, OP=NEW
1, 1, 6
4, 1, 6
7, 1, 3
11, 1, 3
10, 1, 3
*CLOAD, OP=NEW
3, 3, -2
9, 1, 7
5, 2, 1
*DLOAD, OP=NEW
P, P, 3
B, PZ, -4
*END STEP
*STEP, NAME=ASIDE
*STATIC
*BOUNDARY, OP=NEW
1, 1, 6
4, 1, 6
7, 1, 3
11, 1, 3
10, 1, 3
*CLOAD, OP=NEW
2, 2, 5
3, 1, 3
12, 2, -4
*DLOAD, OP=NEW
B, PY, 6
*END STEP
*COMBINATION, NAME=SUM
DOWN, 1.5, ASIDE, -0.5
*ENVELOPE, NAME=E
DOWN, ASIDE, SUM
"""
SURFACES = ("top", "middle", "bottom")
DIRECTIONS = ("ux", "uy", "uz", "rx", "ry", "rz")
FORCES = ("force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z")


class Envelopes(Beside):
    """Bounds on the page, in tables and for viewers, of plates, a solid and a beam whose supports change by step."""

    def setUp(self):
        self.run_of_all = run_text(HEAD + STEPS)
        self.page = self.run_of_all.page
        self.step = self.run_of_all.steps[4]
        self.fields = {(f["name"], f["of"]): f for f in self.step["fields"]}
        self.names = [part["name"] for part in self.step["combined"]]

    def test_what_is_combined(self):
        combined = [(c["step"], c["name"], c["factor"]) for c in self.run_of_all.steps[3]["combined"]]
        self.assertEqual(combined, [(2, "DOWN", 1.5), (3, "ASIDE", -0.5)])
        self.assertEqual([(c["step"], c["name"]) for c in self.step["combined"]], [(2, "DOWN"), (3, "ASIDE"), (4, "SUM")])

    def bounds(self, name, of, rows, columns):
        field = self.fields[name, of]
        values, governs = items(self.page.array(field["array"])), items(self.page.array(field["governs"]))
        self.assertEqual(len(values), len(rows))
        self.assertEqual(len(field["components"]), len(columns))
        for got, cases, row in zip(values, governs, rows):
            for value, case, column in zip(got, cases, columns):
                if math.isnan(value):
                    self.assertEqual((float(row[f"{column}_min"]), float(row[f"{column}_max"])), (0, 0), column)
                    continue
                self.near(value, float(row[f"{column}_{of}"]), 0, column)
                self.assertEqual(self.names[case], row[f"{column}_{of}_case"], column)

    def test_tables(self):
        run, step = self.run_of_all, self.step
        solid = ("sxx", "syy", "szz", "sxy", "syz", "sxz", "first", "second", "third", "von_mises")
        for of in ("min", "max"):
            self.bounds("reaction", of, run.rows("csv", step), FORCES)
            self.bounds("station_displacement", of, run.rows("stations", step), DIRECTIONS[:3])
            self.bounds("stress_solid", of, run.rows("solids", step), solid)
            for side in SURFACES:
                columns = [f"{name}_{side}" for name in ("sx", "sy", "sxy", "first", "second", "von_mises")]
                self.bounds(f"stress_{side}", of, run.rows("stresses", step), columns)

    def test_a_reaction_of_0_is_none(self):
        values = self.page.array(self.fields["reaction", "max"]["array"])
        ids = self.page.array(self.page["nodes"]["id"])
        free = [all(map(math.isnan, values[ids.index(node)])) for node in (2, 5, 12)]
        self.assertEqual(free, [True] * 3)
        self.assertTrue(math.isfinite(values[ids.index(7)][0]))

    def test_elements_for_viewers(self):
        grid = self.run_of_all.grid(self.step)
        for name in ("membrane_force", "moment", "shear_force"):
            for of in ("min", "max"):
                field = self.fields[name, of]
                self.assertGreater(self.compare(self.page.array(field["array"]), grid.cells[f"{name}_{of}"], name), 0)
                cases, numbers = self.page.array(field["governs"])[0], grid.cells[f"{name}_{of}_case"][0]
                self.assertEqual([self.step["combined"][case]["step"] for case in cases], numbers)

    def test_parts_for_viewers(self):
        """A node of a fold has two parts: the file has the one with the largest von Mises stress of any surface."""
        grid = self.run_of_all.grid(self.step)
        rows = {}
        for row in self.run_of_all.rows("stresses", self.step):
            rows.setdefault(int(row["node"]), []).append(row)
        most = lambda row: max(float(row[f"von_mises_{side}_max"]) for side in SURFACES)
        numbers = {c["name"]: c["step"] for c in self.step["combined"]}
        chosen = set()
        for p, (node,) in enumerate(grid.points["node_id"]):
            if node not in rows:
                continue
            parts = rows[node]
            self.assertEqual(grid.points["nodal_parts"][p], [len(parts)])
            row = max(parts, key=most)
            chosen.add((len(parts), parts.index(row)))
            for array, names in (("nodal_axis_x", ("x_x", "x_y", "x_z")), ("nodal_normal", ("normal_x", "normal_y", "normal_z"))):
                self.assertEqual(grid.points[array][p], [float(row[name]) for name in names])
            for side in SURFACES:
                for array, names in (("stress", ("sx", "sy", "sxy")), ("principal", ("first", "second")), ("von_mises", ("von_mises",))):
                    for of in ("min", "max"):
                        columns = [f"{name}_{side}_{of}" for name in names]
                        self.assertEqual(grid.points[f"part_{array}_{side}_{of}"][p], [float(row[c]) for c in columns])
                        self.assertEqual(grid.points[f"part_{array}_{side}_{of}_case"][p], [numbers[row[f"{c}_case"]] for c in columns])
        self.assertLessEqual({(1, 0), (2, 1)}, chosen)

    def test_places_of_stresses_are_those_of_the_steps(self):
        for row, own in zip(self.run_of_all.rows("stresses", self.step), self.run_of_all.rows("stresses", self.run_of_all.steps[1])):
            for name in ("node", "elset", "x_x", "x_y", "x_z", "normal_x", "normal_y", "normal_z"):
                self.assertEqual(row[name], own[name])

    def test_extremes_of_stresses(self):
        of = {e["name"]: e for e in self.step["extremes"]}
        seen = 0
        for table, start in (("stresses", ""), ("solids", "solid_")):
            rows = self.run_of_all.rows(table, self.step)
            for name, one in of.items():
                column = name.removeprefix(start)
                if name.startswith(start) and f"{column}_min" in rows[0]:
                    self.near(one["min"], min(float(row[f"{column}_min"]) for row in rows), 0, name)
                    self.near(one["max"], max(float(row[f"{column}_max"]) for row in rows), 0, name)
                    seen += 1
        self.assertGreater(seen, 15)

    def test_supports_are_those_of_its_steps(self):
        ids = self.page.array(self.page["nodes"]["id"])
        held = {ids[n] for n in self.page.array(self.step["supports"]["node"])}
        self.assertEqual(held, {1, 4, 7, 10, 11})

    def test_extremes_name_the_node_and_the_case(self):
        rows = {int(row["node"]): row for row in self.run_of_all.rows("csv", self.step)}
        of = {e["name"]: e for e in self.step["extremes"]}
        names = [(d, d) for d in DIRECTIONS] + [(f"reaction_{d}", f) for d, f in zip(DIRECTIONS, FORCES)]
        cases = set()
        for name, column in names:
            for bound in ("min", "max"):
                if name not in of:
                    continue
                node, case = of[name][f"{bound}_at"].split(", ")
                row = rows[int(node.split()[1])]
                self.near(of[name][bound], float(row[f"{column}_{bound}"]), 0, name)
                self.assertEqual(case, row[f"{column}_{bound}_case"], name)
                cases.add(case)
        self.assertEqual(cases, {"DOWN", "ASIDE", "SUM"})


class Places(Beside):
    def test_extremes_are_where_they_are_said_to_be(self):
        seen = 0
        for name in ("thick_plate_quads", "solid_cantilever", "semi_rigid_portal", "offset_strip"):
            run = Run(DECKS / f"{name}.inp")
            for step in run.steps:
                rows = {row["node"]: row for row in run.rows("csv", step)}
                parts = [row for table in ("stresses", "solids") for row in run.rows(table, step)]
                for one in step["extremes"]:
                    column = one["name"].removeprefix("solid_")
                    for value, at in ((one["min"], one["min_at"]), (one["max"], one["max_at"])):
                        node = at.removeprefix("node ")
                        here = [rows[node]] if column in DIRECTIONS else [row for row in parts if row["node"] == node]
                        if column not in (here[0] if here else {}):
                            continue
                        self.assertTrue(any(abs(float(row[column]) - value) <= 1e-6 * abs(value) for row in here),
                                        f"{name}: {one}")
                        seen += 1
        self.assertGreater(seen, 60)

    def test_a_support_in_axes_of_its_own(self):
        # TRANSFORM by 30 degrees: what is held is across the plane, at 120 degrees from x: uy more than ux; and uz.
        run = Run(DECKS / "cards/transform.inp")
        supports, ids = run.steps[0]["supports"], run.page.array(run.page["nodes"]["id"])
        held = dict(zip((ids[n] for n in run.page.array(supports["node"])), run.page.array(supports["dofs"])))
        self.assertEqual(held, {1: 0b111, 2: 0b110})

    def test_loads_are_those_of_the_deck(self):
        run = run_text(HEAD + STEPS[: STEPS.index("*STEP, NAME=DOWN")])
        loads, ids = run.steps[0]["loads"], run.page.array(run.page["nodes"]["id"])
        found = {ids[n]: force for n, force in zip(run.page.array(loads["node"]), run.page.array(loads["force"]))}
        self.assertEqual(found, {5: (0, 0, 1, 0, 0, 0)})

    def test_sets_of_elements(self):
        run = run_text(HEAD + "*ELSET, ELSET=TWO\n1, 3\n" + STEPS)
        ids = run.page.array(run.page["elements"]["id"])
        sets = {s["name"]: {ids[e] for e in run.page.array(s["members"])} for s in run.page["sets"]["elements"]}
        self.assertEqual(sets, {"P": {1, 4}, "S": {2}, "B": {3}, "TWO": {1, 3}})


class Utilisation(Beside):
    def test_plates_and_solids(self):
        """The largest von Mises stress of the surfaces by the yield stress of the own material, whichever side governs."""
        yields = {"P": 50.0, "S": 70.0}
        text = HEAD
        for name, line in (("SOFT", "*PLASTIC\n50, 0\n"), ("HARD", "*PLASTIC\n70, 0\n")):
            at = text.index("\n", text.index("*ELASTIC", text.index(f"NAME={name}")) + 10) + 1
            text = text[:at] + line + text[at:]
        sides = set()
        for pull in (1e-3, -1e-3):
            loads = f"*STEP\n*STATIC, ELASTIC\n*BOUNDARY\n1, 1, 6\n4, 1, 6\n7, 1, 3\n11, 1, 3\n10, 1, 3\n*CLOAD\n2, 1, {pull}\n" \
                    "3, 1, 1e-3\n3, 5, 1e-4\n9, 1, 1e-3\n*END STEP\n"
            run = run_text(text + loads)
            step = run.steps[0]
            fields = {f["name"]: run.page.array(f["array"]) for f in step["fields"]}
            rows = run.rows("stresses", step)
            self.assertEqual(len(fields["utilisation_plates"]), len(rows))
            for value, row in zip(fields["utilisation_plates"], rows):
                of_sides = [float(row[f"von_mises_{side}"]) for side in SURFACES]
                self.near(value, max(of_sides) / yields["P"], 0, "plates")
                sides.add(of_sides.index(max(of_sides)))
            for value, row in zip(fields["utilisation_solids"], run.rows("solids", step)):
                self.near(value, float(row["von_mises"]) / yields["S"], 0, "solids")
        self.assertLessEqual({0, 2}, sides)

    def test_hinges(self):
        """A column with a force at its top has its moment F L at its foot, whichever end that is; the capacity is Mp."""
        for foot, top in ((1, 2), (2, 1)):
            deck = f"""*NODE
{foot}, 0, 0
{top}, 0, 2
*ELEMENT, TYPE=B33, ELSET=F
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
1000., 0.3
*BEAM GENERAL SECTION, ELSET=F, MATERIAL=M
5., 8., 0., 8., 1.
0., 0., 1.
*PLASTIC HINGE, ELSET=F, CURVE=SINGLE, FORCES=M1
1000., 10., 10.
*BOUNDARY
{foot}, ENCASTRE
{top}, 3, 5
*STEP
*PUSHOVER, NODE={top}, DOF=1
0.5
*CLOAD
{top}, 1, 4
*END STEP
"""
            run = run_text(deck)
            field = next(f for f in run.steps[0]["fields"] if f["name"] == "utilisation_hinges")
            factor = float(run.rows("curve", run.steps[0])[-1]["load_factor"])
            self.assertGreater(factor, 0)
            self.near(run.page.array(field["array"])[0], 4 * factor * 2 / 10, 0, "hinge")


class Sections(Beside):
    def rows(self, entry):
        return dict(map(tuple, entry["rows"]))

    def test_a_beam_bends_as_its_section_says(self):
        """Fl^3 / 3 E I in either direction, I about the other axis, in the axes of the page."""
        run = run_text("""*NODE
1, 0, 0, 0
2, 0, 2, 0
*ELEMENT, TYPE=B33, ELSET=B
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
1000., 0.
*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=RECT
0.2, 0.5
1, 0, 1
*BOUNDARY
1, 1, 6
*STEP
*STATIC
*CLOAD
2, 1, 3
2, 3, 5
*END STEP
""")
        page, (row,) = run.page, [r for r in run.rows("csv", run.steps[0]) if r["node"] == "2"]
        data = self.rows(page["sections"][0])
        axes = page.array(page["members"]["axes"])[0]
        self.assertEqual(page.array(page["members"]["length"]), [2])
        moved, force = [float(row[d]) for d in DIRECTIONS[:3]], (3, 0, 5)
        for axis, about in ((axes[3:6], "z"), (axes[6:9], "y")):
            u, f = (sum(a * b for a, b in zip(axis, v)) for v in (moved, force))
            self.assertGreater(abs(f), 1)
            self.near(u, f * 8 / (3 * 1000 * data[f"moment of inertia about {about}"]), 10 * abs(u), about)
        self.assertEqual(sorted(data[f"moment of inertia about {a}"] for a in "yz"),
                         sorted((0.2 * 0.5**3 / 12, 0.5 * 0.2**3 / 12)))

    def test_constants_are_those_of_the_deck(self):
        run = run_text("""*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 1, 1, 0
4, 0, 1, 0
*ELEMENT, TYPE=S4, ELSET=P
1, 1, 2, 3, 4
*ELEMENT, TYPE=ROTARYI, ELSET=DISC
2, 3
*ELEMENT, TYPE=M3D4, ELSET=SKIN
3, 1, 2, 3, 4
*MATERIAL, NAME=PLY
*ELASTIC, TYPE=LAMINA
140., 10., 0.3, 5., 6., 3.
*MATERIAL, NAME=FOIL
*ELASTIC
1000., 0.3
*PLASTIC
12., 0.
*SHELL SECTION, ELSET=P, COMPOSITE, SYMMETRIC, FORMULATION=THIN
0.25, 3, PLY, 30.
0.5, 3, PLY, -45.
*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=FOIL
0.125
*ROTARY INERTIA, ELSET=DISC
1., 4., 9., 0.25, 0.5, 0.75
*BOUNDARY
1, 1, 6
4, 1, 6
*STEP
*STATIC, ELASTIC
*CLOAD
2, 3, 1e-6
*END STEP
""")
        ply, foil = ({e["name"]: self.rows(e) for e in run.page["materials"]}[name] for name in ("PLY", "FOIL"))
        self.assertEqual(ply, {"E1": 140, "E2": 10, "nu12": 0.3, "G12": 5, "G13": 6, "G23": 3})
        self.assertEqual(foil["yield stress"], 12)
        shell, skin, disc = run.page["sections"]
        self.assertEqual([self.rows(shell)[f"layer {k}: {what}"] for k in (1, 2) for what in ("thickness", "angle")],
                         [0.25, 30, 0.5, -45])
        self.assertEqual((shell["material"], skin["material"]), (-1, 1))
        names = ("xx", "yy", "zz", "xy", "xz", "yz")
        self.assertEqual([self.rows(disc)[f"inertia {name}"] for name in names], [1, 4, 9, 0.25, 0.5, 0.75])

    def test_shear_stiffness(self):
        run = run_text(HEAD.replace("0.3\n0, 1, 0\n", "0.3\n0, 1, 0\n*TRANSVERSE SHEAR STIFFNESS\n70., 90.\n") + STEPS)
        data = self.rows(run.page["sections"][1])
        self.assertEqual({data["shear stiffness along y"], data["shear stiffness along z"]}, {70, 90})
        # K23 stands before K13: the second number belongs to the first axis of the section, which points along y.
        axes = run.page.array(run.page["members"]["axes"])[0]
        first = "y" if abs(axes[4]) > 0.5 else "z"
        self.assertEqual(data[f"shear stiffness along {first}"], 90)


class Paths(Beside):
    def summary(self, step):
        return {name: value for name, value in step["summary"]}

    def test_hinges(self):
        closed = 0
        for name in ("pushover_portal", "pushover_unloading", "pushover_portal_two_phases"):
            run = Run(DECKS / f"{name}.inp")
            for step in run.steps:
                events = run.rows("events", step)
                if "path" not in step:
                    continue
                forces = [[float(row[c]) for c in ("P", "My", "Mz")] for row in events]
                self.assertEqual([e["forces"] for e in step["path"]["events"]], forces)
                kinds = [row["hinge"] for row in events]
                said = self.summary(step)
                self.assertEqual((int(said["hinges formed"]), int(said["hinges closed"])),
                                 (kinds.count("formed"), kinds.count("closed")))
                closed += kinds.count("closed")
        self.assertGreater(closed, 0)

    def test_yielding(self):
        for name in ("plastic_strip_bending", "plastic_strip_layered"):
            run = Run(DECKS / f"{name}.inp")
            for step in run.steps:
                curve = run.rows("curve", step)
                if not curve:
                    continue
                said, factors = self.summary(step), [float(row["load_factor"]) for row in curve]
                flowing = [int(row["flowing_points"]) > 0 for row in curve].index(True)
                self.assertLessEqual(float(said["first yield at load factor"]), factors[flowing] * (1 + 1e-8))
                self.assertGreaterEqual(float(said["first yield at load factor"]), factors[flowing - 1] * (1 - 1e-8))
                self.assertEqual(float(said["largest load factor"]), float(f"{max(factors):.9g}"))
                self.assertEqual(int(said["increments"].split(",")[0]), len(curve) - 1)


class Modes(Beside):
    def test_masses(self):
        """A bar of mass 2 x 3 x 0.5 x 4 / 2 at each of its nodes, of which one is held, and a mass of 5 at the other."""
        run = run_text("""*NODE
1, 1, 2, 3
2, 4, 2, 3
*ELEMENT, TYPE=T3D2, ELSET=B
1, 1, 2
*ELEMENT, TYPE=MASS, ELSET=M
2, 2
*MATERIAL, NAME=M
*ELASTIC
1000., 0.
*DENSITY
4.
*SOLID SECTION, ELSET=B, MATERIAL=M
0.5
*MASS, ELSET=M
5.
*BOUNDARY
1, 1, 3
2, 2, 3
*STEP
*FREQUENCY
1
*END STEP
""")
        bar, mass = 3 * 0.5 * 4.0, 5.0
        found = run.steps[0]["masses"]
        self.near(found["total"][0], bar + mass, 0, "total")
        self.assertLess(found["free"][0], found["total"][0] - 1)  # the held end does not move
        for a, b in zip(found["centre"], ((bar * 2.5 + mass * 4) / (bar + mass), 2, 3)):
            self.near(a, b, 1, "centre")
        names = [run.page["sections"][s]["name"] for s in run.page.array(run.page["elements"]["section"])]
        self.assertEqual(names, ["*SOLID SECTION, ELSET=B", "*MASS, ELSET=M"])

    def test_generalised_masses(self):
        run = Run(DECKS / "vibrating_plate_quads.inp")
        rows = run.rows("modes", run.steps[0])
        own = [mode["generalised"] for mode in run.steps[0]["modes"]]
        self.assertEqual(own, [float(row["generalized_mass"]) for row in rows[: len(own)]])


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        SOLVER, DECKS = os.path.abspath(SOLVER), DECKS.resolve()
        os.chdir(place)
        unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
