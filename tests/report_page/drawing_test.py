#!/usr/bin/env python3
"""What report pages draw, beside mechanics: sides of diagrams, directions of arrows and crosses, hinges, legends, tables;
the keyboard, the saved picture and a narrow window.

    drawing_test.py SOLVER
"""

import json
import math
import pathlib
import unittest

from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

import report_page_test as pages
from runs import Run

chromium = pages.chromium
CLOSE = 2e-6

# A cantilever of 4 along x, local y and z the global ones, 0.2 wide (y) and 0.6 deep (z): 2 to +y, 3 down, 5 outwards,
# a moment at its end; and a tie of two bars from its end, held apart.
CANTILEVER = """*NODE
1, 0, 0, 0
2, 4, 0, 0
3, 6, 0, 0
*ELEMENT, TYPE=B33, ELSET=BEAM
1, 1, 2
*ELEMENT, TYPE=T3D2, ELSET=TIE
2, 2, 3
*ELSET, ELSET=ALL
1, 2
*MATERIAL, NAME=WOOD
*ELASTIC
{modulus}, 0.
*MATERIAL, NAME=STEEL
*ELASTIC
{modulus}, 0.
*BEAM SECTION, ELSET=BEAM, MATERIAL=WOOD, SECTION=RECT
0.2, 0.6
0, 1, 0
*SOLID SECTION, ELSET=TIE, MATERIAL=STEEL
0.01
*BOUNDARY
1, 1, 6
3, 2, 3
*STEP, NAME=LOADS
*STATIC
*CLOAD
2, 2, 2.
2, 3, -3.
3, 1, 5.
2, 5, 7.
*END STEP
*STEP, NAME=SPREAD
*STATIC
*DLOAD
BEAM, PZ, -2.
*CLOAD
2, 3, 1.
*END STEP
"""

# A beam on two supports cut at a third of its span of 6, with 4 stations on each part: none in the middle of the span.
SPAN = """*NODE
1, 0, 0, 0
2, 2, 0, 0
3, 6, 0, 0
*ELEMENT, TYPE=B33, ELSET=BEAM
1, 1, 2
2, 2, 3
*MATERIAL, NAME=M
*ELASTIC
1e6, 0.
*BEAM SECTION, ELSET=BEAM, MATERIAL=M, SECTION=RECT
0.2, 0.6
0, 1, 0
*BOUNDARY
1, 1, 4
3, 2, 3
*STEP
*STATIC
*DLOAD
BEAM, PZ, -4.
BEAM, PY, 3.
*END STEP
"""

# A portal in the x-y plane on pins, 6 wide and 3 high: pressed down on its beam, then pushed to the right.
PORTAL = """*NODE
1, 0, 0, 0
2, 0, 3, 0
3, 3, 3, 0
4, 6, 3, 0
5, 6, 0, 0
*ELEMENT, TYPE=B33, ELSET=FRAME
1, 1, 2
2, 2, 3
3, 3, 4
4, 5, 4
*MATERIAL, NAME=M
*ELASTIC
210e6, 0.3
*BEAM SECTION, ELSET=FRAME, MATERIAL=M, SECTION=RECT
0.1, 0.2
0., 0., 1.
*BOUNDARY
1, 1, 5
5, 1, 5
*STEP
*STATIC
*CLOAD
3, 2, -60.
*END STEP
*STEP
*STATIC
*CLOAD
2, 1, 19.
*END STEP
"""

# A beam of 6 along x on two supports, in two elements, under a load of 12 across it.
# Without a direction of its own the section has local y along -z.
BEAM = """*NODE
1, 0
2, 3
3, 6
*ELEMENT, TYPE=B33, ELSET=B
1, 1, 2
2, 2, 3
*MATERIAL, NAME=M
*ELASTIC
210E6, 0.3
*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=RECT
0.3, 0.15
*BOUNDARY
1, 1, 4
3, 2, 3
*STEP
*STATIC
*DLOAD
B, {across}, -12
*END STEP
"""

# A portal 6 wide and 3 high with clamped feet, pushed at its head: it sways by a tenth of its size as it is drawn, and
# the moment at the head of the right column stands on its right side.
SWAY = """*NODE
1, 0, 0, 0
2, 0, 0, 3
3, 6, 0, 3
4, 6, 0, 0
*ELEMENT, TYPE=B33, ELSET=FRAME
1, 1, 2
2, 2, 3
3, 3, 4
*MATERIAL, NAME=M
*ELASTIC
1e6, 0.
*BEAM SECTION, ELSET=FRAME, MATERIAL=M, SECTION=RECT
0.2, 0.2
0, 1, 0
*BOUNDARY
1, 1, 6
4, 1, 6
*STEP
*STATIC
*CLOAD
2, 1, 50.
*END STEP
"""

# A sheet of 1 by 1 in the plane stress sx = 1, sy = -1, sxy = 1: s1 = -s2 = sqrt 2, 22.5 degrees from x.
SHEET = """*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 1, 1, 0
4, 0, 1, 0
*ELEMENT, TYPE=M3D4, ELSET=SHEET
1, {corners}
*MATERIAL, NAME=M
*ELASTIC
1000., 0.25
*MEMBRANE SECTION, ELSET=SHEET, MATERIAL=M
1.
*BOUNDARY
1, 1, 3
2, 2, 3
3, 3
4, 3
*STEP
*STATIC
*CLOAD
3, 1, 1.
4, 2, -1.
*END STEP
"""

# Three sheets of 1 by 1 side by side along x, of which the second carries 1 and the third 4 per area, downwards.
SHEETS = """*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 2, 0, 0
4, 3, 0, 0
5, 0, 1, 0
6, 1, 1, 0
7, 2, 1, 0
8, 3, 1, 0
*ELEMENT, TYPE=S4, ELSET=PLATE
1, 1, 2, 6, 5
2, 2, 3, 7, 6
3, 3, 4, 8, 7
*MATERIAL, NAME=M
*ELASTIC
1e6, 0.3
*SHELL SECTION, ELSET=PLATE, MATERIAL=M
0.1
*BOUNDARY
1, 1, 6
5, 1, 6
*STEP
*STATIC
*DLOAD
2, BZ, -10.
3, BZ, -40.
*END STEP
"""

# A brick of 1 by 1 by 1 on its lower face, whose node 1 also has its rotations held, and 3 per volume along x.
BRICK = """*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 1, 1, 0
4, 0, 1, 0
5, 0, 0, 1
6, 1, 0, 1
7, 1, 1, 1
8, 0, 1, 1
*ELEMENT, TYPE=C3D8, ELSET=BOX
1, 1, 2, 3, 4, 5, 6, 7, 8
*MATERIAL, NAME=M
*ELASTIC
1000., 0.25
*SOLID SECTION, ELSET=BOX, MATERIAL=M
*BOUNDARY
1, 1, 6
2, 1, 3
3, 1, 3
4, 1, 3
*STEP
*STATIC
*DLOAD
BOX, BX, 3.
*END STEP
"""
TENSION, PRESSURE = (0.1, 0.35, 0.85), (0.85, 0.15, 0.1)
POSITIVE, NEGATIVE = (0.1, 0.38, 0.78), (0.82, 0.24, 0.12)


class Drawn(pages.Page):
    def opened_text(self, name, text, options=()):
        if name not in self.runs:
            path = pathlib.Path(self.folder.name) / f"{name}.inp"
            path.write_text(text)
            self.runs[name] = Run(pages.SOLVER, path, pathlib.Path(self.folder.name), options)
        chromium.open_page(self.browser, self.runs[name].page)
        return self.runs[name]

    def cantilever(self):
        return self.opened_text("own-cantilever", CANTILEVER.format(modulus=1e6))

    def overlays(self, name):
        return [mesh for mesh in self.call("overlays") if mesh["name"] == name]

    def symbols(self, name):
        """(place, direction) of each symbol of a shape, rounded."""
        text = lambda v: tuple(round(x, 5) + 0.0 for x in v)
        return sorted((text(place), text(direction)) for mesh in self.overlays(name)
                      for place, direction in zip(mesh["place"], mesh["direction"]))

    def only(self, *switches):
        for name in ("supports", "loads", "reactions", "axes", "crosses", "marks"):
            self.call("setSwitch", name, name in switches)

    def texts(self, selector):
        return self.browser.execute_script(
            "return [...document.querySelectorAll(arguments[0])].map((node) => node.textContent)", selector)

    def json(self, path):
        return self.browser.execute_script(
            f"return JSON.parse(document.getElementById('finites-report').textContent){path}")

    def close(self, a, b, what=""):
        self.assertLessEqual(abs(a - b), CLOSE * max(1, abs(b)), f"{what}: {a}, {b}")


class Members(Drawn):
    def ribbon(self, quantity, axis):
        """Along the beam: (x, distance of the value from the member along an axis, tint)."""
        self.call("setDiagram", quantity)
        mesh = self.overlays("ribbon")[0]
        return [(base[0], tip[axis], tint) for base, tip, tint in
                zip(mesh["position"][::2], mesh["position"][1::2], mesh["tint"][1::2]) if base[0] < 4]

    def test_moments_stand_on_the_side_of_the_tension(self):
        # The load down and the moment of 7 about y, which turns the end down, pull on top: 3 x 4 + 7 at the root, 7 at the
        # end. The load to +y pulls on the side of -y.
        self.cantilever()
        my, mz = self.ribbon("My", 2), self.ribbon("Mz", 1)
        self.assertGreater(my[0][1], 0)
        self.assertLess(mz[0][1], 0)
        self.close(my[0][1] / my[-1][1], 19 / (19 - 3 * my[-1][0]))
        info = self.call("pickElement", 1)
        ends = {row["label"].split(", ")[1]: row["values"] for row in info["rows"] if "end" in row["label"]}
        self.close(abs(ends["end 1"]["My"]), 19)
        self.close(abs(ends["end 2"]["My"]), 7)
        self.close(abs(ends["end 1"]["Mz"]), 8)
        self.close(ends["end 2"]["Mz"], 0)
        for points, sign in ((my, ends["end 1"]["My"]), (mz, ends["end 1"]["Mz"])):
            wanted = POSITIVE if sign > 0 else NEGATIVE
            for a, b in zip(points[0][2], wanted):
                self.close(a, b, "tint")

    def test_diagrams_beside_the_picture_have_the_same_sides(self):
        self.cantilever()
        self.call("pickElement", 1)
        sides = {}
        for figure in self.browser.find_elements(By.CSS_SELECTOR, "#diagrams figure"):
            name = figure.find_element(By.CSS_SELECTOR, "b").text
            points = figure.find_element(By.CSS_SELECTOR, "polyline").get_attribute("points").split()
            sides[name] = float(points[0].split(",")[1])
        self.assertLess(sides["My"], 0)  # top of the root: upwards, which SVG counts down
        self.assertGreater(sides["Mz"], 0)  # the side of -y, y upwards

    def test_the_size_of_diagrams_and_their_labels(self):
        self.cantilever()
        tips = {}
        for stretch in (0, 0.3):
            self.browser.execute_script("""
                const slider = document.querySelector('[aria-label="size of the diagram"]');
                slider.value = arguments[0];
                slider.dispatchEvent(new Event("input"));""", stretch)
            tips[stretch] = self.ribbon("Mz", 1)[0][1]
        self.assertAlmostEqual(tips[0.3] / tips[0], 10**0.3, 5)
        labels = [label for label in self.call("labels") if label["className"] == "value"]
        self.assertEqual([label["text"].lstrip("-") for label in labels], ["8"])
        self.assertAlmostEqual(labels[0]["place"][0], 0)
        self.assertAlmostEqual(labels[0]["place"][1], tips[0.3], 5)

    def test_labels_move_with_their_stations(self):
        # The moment of 7 stands at the free end, and goes where the end goes.
        run = self.cantilever()
        self.call("setDiagram", "My")
        label = next(label for label in self.call("labels") if label["text"].lstrip("-") == "7")
        row = next(row for row in run.table("csv", 1) if row["node"] == 2)
        for moved, freedom in zip(label["move"].values() if isinstance(label["move"], dict) else label["move"], pages.FREEDOMS):
            self.close(moved, row[freedom], freedom)

    def test_the_largest_moment_between_stations(self):
        # w L^2 / 8 in the middle of the span, in either direction, of a beam that is two elements.
        self.opened_text("own-span", SPAN, ("--station-count", "4"))
        for quantity, size in (("My", 4 * 36 / 8), ("Mz", 3 * 36 / 8)):
            points = self.call("profile", 1, quantity)[0]["points"]
            self.assertEqual((points[0]["x"], points[-1]["x"]), (0, 6))
            most = max(points, key=lambda point: abs(point["value"]))
            self.close(most["x"], 3, quantity)
            self.close(abs(most["value"]), size, quantity)
            self.assertEqual(sorted(p["x"] for p in points), [p["x"] for p in points])
        self.call("pickElement", 1)
        figure = next(f for f in self.browser.find_elements(By.CSS_SELECTOR, "#diagrams figure") if f.text.startswith("My"))
        self.assertIn("18", [text.text.lstrip("-") for text in figure.find_elements(By.CSS_SELECTOR, "text")])
        figure = next(f for f in self.browser.find_elements(By.CSS_SELECTOR, "#diagrams figure") if f.text.startswith("Vz"))
        named = {text.text for text in figure.find_elements(By.CSS_SELECTOR, "text")}
        self.assertEqual(named, {"12", "-12"})

    def test_diagrams_are_carried_by_their_members(self):
        # Both edges of the ribbon move as the station does.
        run = self.cantilever()
        self.call("setDiagram", "My")
        rows = run.table("stations", 1)
        moves = self.overlays("ribbon")[0]["move"]
        self.assertEqual(len(moves), 2 * len(rows))
        for base, tip, row in zip(moves[::2], moves[1::2], rows):
            for a, b, freedom in zip(base, tip, pages.FREEDOMS):
                self.close(a, row[freedom], "on the member")
                self.close(b, row[freedom], "at the value")

    def test_hidden_members_have_no_diagram(self):
        # N is 5 in the beam and in the tie, which begins at 4.
        self.cantilever()
        self.call("setDiagram", "N")
        ends = lambda: max(place[0] for place in self.overlays("ribbon")[0]["position"])
        labels = lambda: [label["place"][0] for label in self.call("labels") if label["className"] == "value"]
        self.close(ends(), 6)
        self.close(max(labels()), 6)
        tie = [section["material"] for section in self.json(".sections")].index(1)
        self.call("hide", f"section {tie}", True)
        try:
            self.close(ends(), 4)
            self.close(max(labels()), 4)
        finally:
            self.call("hide", f"section {tie}", False)

    def test_both_bounds_of_an_envelope_are_drawn(self):
        # Over the middle support 87e6 (ULS1) is the largest; in the spans 72750^2 / (2 43.5) = 60.8e6 of ULS2 the least,
        # of which a station at 1600 of 4000 has 72750 1600 - 43.5 1600^2 / 2.
        self.opened("cards/combination")
        self.call("setStep", 8)
        self.call("setDiagram", "My")
        self.assertEqual(len(self.overlays("ribbon")), 2)
        values = [float(label["text"]) for label in self.call("labels") if label["className"] == "value"]
        least = -(72750 * 1600 - 43.5 * 1600**2 / 2)
        self.assertAlmostEqual(max(values) / 87e6, 1, 3)
        self.assertAlmostEqual(min(values) / least, 1, 3)
        self.call("pickElement", 1)
        figure = next(f for f in self.browser.find_elements(By.CSS_SELECTOR, "#diagrams figure") if f.text.startswith("My"))
        named = dict(reversed(text.text.split()) for text in figure.find_elements(By.CSS_SELECTOR, "text") if " " in text.text)
        self.assertIn("8.7e7 largest", figure.text)
        self.assertAlmostEqual(float(named["least"]) / least, 1, 3)

    def test_members_at_an_angle_have_diagrams_of_their_own(self):
        # Two beams of one section: a knee of 30 degrees, and one straight line.
        for name, end, length in (("knee", "3.732, 1, 0", 2), ("straight", "4, 0, 0", 4)):
            with self.subTest(name):
                self.opened_text(f"own-{name}", "*NODE\n1, 0, 0, 0\n2, 2, 0, 0\n3, " + end + """
*ELEMENT, TYPE=B33, ELSET=A
1, 1, 2
2, 2, 3
*MATERIAL, NAME=M
*ELASTIC
1e6, 0.
*BEAM SECTION, ELSET=A, MATERIAL=M, SECTION=RECT
0.2, 0.6
0, 1, 0
*BOUNDARY
1, 1, 6
*STEP
*STATIC
*CLOAD
3, 3, -1.
*END STEP
""")
                self.close(self.call("profile", 1, "Vz")[0]["points"][-1]["x"], length)

    def test_a_beam_is_whole_from_each_of_its_elements(self):
        # w L^2 / 8 in the middle of 6, which lies in the second of three elements.
        text = SPAN.replace("3, 6, 0, 0", "4, 4, 0, 0\n3, 6, 0, 0").replace("2, 2, 3\n", "2, 2, 4\n3, 4, 3\n", 1)
        self.opened_text("own-three", text, ("--station-count", "4"))
        for element in (1, 2, 3):
            points = self.call("profile", element, "My")[0]["points"]
            self.assertEqual((points[0]["x"], points[-1]["x"]), (0, 6))
            self.assertEqual(sorted(p["x"] for p in points), [p["x"] for p in points])
            most = max(points, key=lambda point: abs(point["value"]))
            self.close(most["x"], 3, element)
            self.close(abs(most["value"]), 18, element)

    def test_the_least_displacement_lies_between_nodes(self):
        # 5 w L^4 / (384 E I) in the middle of the span, where a station stands and no node.
        self.opened_text("own-middle", SPAN, ("--station-count", "5"))
        self.call("setField", "displacement", "uz")
        limits = self.call("range")
        self.close(limits["low"], -5 * 4 * 6**4 / (384 * 1e6 * 0.2 * 0.6**3 / 12))
        self.assertEqual(limits["lowName"], "element 2 at x = 1")
        self.call("setField", "displacement", "uy")
        limits = self.call("range")
        self.close(limits["high"], 5 * 3 * 6**4 / (384 * 1e6 * 0.6 * 0.2**3 / 12))
        self.assertEqual(limits["highName"], "element 2 at x = 1")

    def test_deflections_are_in_local_axes(self):
        run = self.cantilever()
        row = next(row for row in run.table("csv", 1) if row["node"] == 2)
        for quantity, freedom in (("u", "ux"), ("v", "uy"), ("w", "uz")):
            self.close(self.call("profile", 1, quantity)[0]["points"][-1]["value"], row[freedom], quantity)
        self.assertNotAlmostEqual(row["uy"], row["uz"], 4)
        # Drawn along their axes, to the side to which the member goes.
        self.assertGreater(self.ribbon("v", 1)[-1][1], 0)
        self.assertLess(self.ribbon("w", 2)[-1][1], 0)

    def test_sections_are_drawn_in_their_axes(self):
        self.cantilever()
        flat = self.call("members")["position"]
        beam = [flat[i : i + 3] for i in range(0, len(flat), 3) if flat[i] < 3.9]
        for axis, size in ((1, 0.2), (2, 0.6)):
            self.close(max(p[axis] for p in beam) - min(p[axis] for p in beam), size)

    def test_sections_without_symmetry_stand_the_right_way(self):
        # An L of 0.2 along y and 0.3 along z, 0.02 and 0.01 thick, the nodes where the middle lines of its legs meet.
        text = CANTILEVER.format(modulus=1e6).replace("SECTION=RECT\n0.2, 0.6", "SECTION=L\n0.2, 0.3, 0.02, 0.01")
        self.opened_text("own-angle", text)
        flat = self.call("members")["position"]
        beam = [flat[i : i + 3] for i in range(0, len(flat), 3) if flat[i] < 3.9]
        for axis, low, high in ((1, -0.005, 0.195), (2, -0.01, 0.29)):
            self.close(min(p[axis] for p in beam), low)
            self.close(max(p[axis] for p in beam), high)

    def test_members_and_faces_go_where_they_are_displaced(self):
        run = self.cantilever()
        rows = run.table("stations", 1)
        found = self.call("members")
        self.assertEqual(len(set(found["station"])), len(rows))
        for i, station in enumerate(found["station"]):
            for k, freedom in enumerate(pages.FREEDOMS):
                self.close(found["move"][3 * i + k], rows[station][freedom], f"{freedom} of station {station}")
        run = self.opened_text("own-brick", BRICK)
        nodes = {(row["x"], row["y"], row["z"]): row for row in run.table("csv")}
        found = self.call("faces")
        places = [tuple(found["position"][i : i + 3]) for i in range(0, len(found["position"]), 3)]
        self.assertEqual(len(places), 24)
        for i, place in enumerate(places):
            for k, freedom in enumerate(pages.FREEDOMS):
                self.close(found["move"][3 * i + k], nodes[place][freedom], f"{freedom} at {place}")
        self.assertGreater(max(abs(x) for x in found["move"]), 1e-3)

    def test_values_along_members(self):
        run = self.cantilever()
        places = lambda found: [found["position"][i : i + 3] for i in range(0, len(found["position"]), 3)]
        # At the ends the rotations of the nodes, straight between.
        rows = {row["node"]: row for row in run.table("csv", 1)}
        self.call("setField", "rotation", "rz")
        found = self.call("members")
        for (x, _, _), value in zip(places(found), found["value"]):
            if x < 3.99:
                self.close(value, rows[2]["rz"] * x / 4, f"rz at {x}")
        # What belongs to elements is that of the own one: 5 comes through both, and 0 from the second step.
        self.call("setStep", 0)
        self.call("setField", "axial_force", "N")
        found = self.call("members")
        for (x, _, _), value in zip(places(found), found["value"]):
            self.close(value, 5, f"N at {x}")
        self.assertEqual(self.call("range")["high"], self.call("range")["low"])

    def test_stations_are_named_by_their_member(self):
        # The tie alone has a force in the step of an axial load behind its end: its first station names it.
        self.opened_text("own-named", CANTILEVER.format(modulus=1e6).replace("3, 1, 5.", "3, 1, 5.\n2, 1, -5."))
        field = next(f["name"] for f in self.call("fields") if f["on"] == "station")
        self.call("setField", field, "N")
        limits = self.call("range")
        self.close(limits["high"], 5)
        self.close(limits["low"], 0)
        self.assertEqual(limits["highName"], "element 2 at x = 0")
        self.assertEqual(limits["lowName"], "element 1 at x = 0")


class StepsWithoutFields(Drawn):
    # What a page of many steps leaves out of the later ones.
    def test_a_step_with_tables_and_shape_alone(self):
        run = self.cantilever()
        text = run.page.read_text()
        start = text.index(">", text.index('id="finites-report"')) + 1
        end = text.index("</script>", start)
        data = json.loads(text[start:end])
        later = data["steps"][1]
        del later["stations"]
        later["fields"] = [field for field in later["fields"] if field["name"] == "displacement"]
        page = run.page.with_name("later.html")
        page.write_text(text[:start] + json.dumps(data).replace("<", "\\u003c") + text[end:])
        chromium.open_page(self.browser, page)
        self.call("setField", "section_force", "My")
        self.call("setDiagram", "My")
        self.assertTrue(self.overlays("ribbon"))
        self.call("setStep", 1)
        self.quiet()
        self.assertEqual(self.overlays("ribbon"), [])
        self.assertEqual([field["name"] for field in self.call("fields")], ["displacement"])
        row = next(row for row in run.table("csv", 2) if row["node"] == 2)
        shown = pages.values_of(self.call("pickNode", 2), "displacement")
        self.close(shown["uz"], row["uz"])
        self.call("pickElement", 1)
        self.quiet()
        self.call("setStep", 0)
        self.assertTrue(self.overlays("ribbon"))


class Symbols(Drawn):
    def test_arrows_point_as_loads_act(self):
        self.cantilever()
        self.only("loads")
        self.assertEqual(self.symbols("arrow"), [((4, 0, 0), (0, 2, -3)), ((6, 0, 0), (5, 0, 0))])
        self.assertEqual(self.symbols("twofold"), [((4, 0, 0), (0, 7, 0))])
        self.assertEqual(self.symbols("thin"), [])

    def test_a_load_along_a_member_is_a_row_without_moments(self):
        self.cantilever()
        self.call("setStep", 1)
        self.only("loads")
        self.assertEqual(self.symbols("arrow"), [((4, 0, 0), (0, 0, 1))])
        self.assertEqual(self.symbols("twofold"), [])
        row = self.symbols("thin")
        self.assertGreater(len(row), 3)
        self.assertEqual({direction for _, direction in row}, {(0, 0, -2)})
        self.assertEqual((row[0][0], row[-1][0]), ((0, 0, 0), (4, 0, 0)))

    def test_a_load_that_rises_along_a_member(self):
        # Turning about z at x = -2: 0.5 0.12 10 (x + 2) per length, along x, from 1.2 to 3.6; lengths go with it.
        text = BEAM.format(across="PZ").replace("0.3, 0.15", "0.3, 0.4").replace("*BEAM", "*DENSITY\n0.5\n*BEAM", 1)
        text = text.replace("B, PZ, -12", "B, CENTRIF, 10., -2., 0., 0., 0., 0., 1.").replace("2, 3\n3, 6", "2, 2\n3, 4", 1)
        self.opened_text("own-turning", text)
        self.only("loads")
        mesh = self.overlays("thin")[0]
        for place, direction in zip(mesh["place"], mesh["direction"]):
            for value, wanted in zip(direction, (0.6 * (place[0] + 2), 0, 0)):
                self.close(value, wanted, place)
        rows = sorted((place[0], size[0]) for place, size in zip(mesh["place"], mesh["size"]))
        self.assertEqual((rows[0][0], rows[-1][0]), (0, 4))
        # Of the second member, with the largest load, the arrow at its beginning has 4 sixths of the longest; the first
        # one has 4 sixths of the largest load, and at its beginning half of its own.
        longest = rows[-1][1]
        at_middle = sorted(size for x, size in rows if abs(x - 2) < 1e-6)
        self.close(at_middle[0] / longest, 4 / 6)
        self.close(at_middle[1] / longest, 0.3 + 0.7 * 4 / 6)
        self.close(rows[0][1] / at_middle[1], 1 / 2)

    def test_symbols_are_carried_by_what_they_stand_on(self):
        run = self.cantilever()
        nodes = {row["x"]: row for row in run.table("csv", 1)}
        for switch, shapes in (("loads", ("arrow", "twofold")), ("supports", ("cone", "box")), ("reactions", ("arrow",))):
            self.only(switch)
            for shape in shapes:
                for place, move in zip(self.overlays(shape)[0]["place"], self.overlays(shape)[0]["move"]):
                    for value, freedom in zip(move, pages.FREEDOMS):
                        self.close(value, nodes[place[0]][freedom], f"{switch}: {freedom} of {shape} at {place}")
        self.call("setStep", 1)
        self.only("loads")
        stations = {round(row["distance"], 4): row for row in run.table("stations", 2) if row["element"] == 1}
        mesh = self.overlays("thin")[0]
        for place, move in zip(mesh["place"], mesh["move"]):
            for value, freedom in zip(move, pages.FREEDOMS):
                self.close(value, stations[round(place[0], 4)][freedom], f"{freedom} of the row at {place}")

    def test_colours_of_symbols(self):
        # Loads red, their moments violet, reactions blue, held freedoms green and held rotations violet.
        self.cantilever()
        tint = lambda shape: {max(range(3), key=lambda k: t[k]) for mesh in self.overlays(shape) for t in mesh["tint"]}
        self.only("loads")
        self.assertEqual(tint("arrow"), {0})
        self.assertTrue(all(abs(t[0] - t[2]) < 0.05 > t[1] - 0.2 for t in self.overlays("twofold")[0]["tint"]))
        self.only("reactions")
        self.assertEqual(tint("arrow") | tint("twofold"), {2})
        self.only("supports")
        self.assertEqual(tint("cone") | tint("box"), {1})

    def test_small_loads_along_members_are_seen(self):
        # 0.02 along one half beside 12 along the other: three tenths of its arrows, as of forces at nodes.
        text = BEAM.format(across="PZ").replace("B, PZ, -12", "1, PZ, -12\n2, PZ, -0.02")
        self.opened_text("own-small-load", text)
        self.only("loads")
        mesh = self.overlays("thin")[0]
        lengths = {round(direction[2], 5): size[0] for direction, size in zip(mesh["direction"], mesh["size"])}
        self.close(lengths[-0.02] / lengths[-12], 0.3 + 0.7 * 0.02 / 12)

    def test_a_load_per_volume_of_a_member(self):
        # 0.5 times 10 times the area of 0.2 by 0.6, beside 2 per length.
        text = CANTILEVER.format(modulus=1e6).replace("*BEAM SECTION", "*DENSITY\n0.5\n*BEAM SECTION", 1)
        text = text.replace("1000000.0, 0.\n*MATERIAL", "1000000.0, 0.\n*DENSITY\n0.5\n*MATERIAL")
        self.opened_text("own-heavy", text.replace("BEAM, PZ, -2.", "BEAM, PZ, -2.\nBEAM, GRAV, 10., 0, 1, 0"))
        self.call("setStep", 1)
        self.only("loads")
        directions = {tuple(round(x, 4) for x in direction) for _, direction in self.symbols("thin")}
        self.assertEqual(directions, {(0, 0.6, -2)})

    def test_loads_on_areas(self):
        self.opened("thick_plate_quads")
        self.assertEqual(self.symbols("thin"), [])  # arrows would cover the colours
        self.only("loads")
        arrows = self.symbols("thin")
        self.assertEqual(len(arrows), self.json(".steps[0].area_loads.element.n"))
        along = {tuple(abs(x) > 0 for x in direction) for _, direction in arrows}
        self.assertEqual(along, {(False, False, True)})
        applied = self.json(".steps[0].sums.applied")
        self.assertEqual({math.copysign(1, direction[2]) for _, direction in arrows}, {math.copysign(1, applied[2])})

    def test_each_area_has_its_own_arrow(self):
        # 10 and 40 per volume times the thickness of 0.1; the first plate has none.
        run = self.opened_text("own-sheets", SHEETS)
        self.only("loads")
        self.assertEqual(self.symbols("thin"), [((1.5, 0.5, 0), (0, 0, -1)), ((2.5, 0.5, 0), (0, 0, -4))])
        mesh = self.overlays("thin")[0]
        sizes = {place[0]: size[0] for place, size in zip(mesh["place"], mesh["size"])}
        self.close(sizes[1.5] / sizes[2.5], 0.3 + 0.7 / 4)
        moves = {place[0]: move[2] for place, move in zip(mesh["place"], mesh["move"])}
        nodes = {int(row["node"]): row["uz"] for row in run.table("csv")}
        self.close(moves[2.5] / (sum(nodes[n] for n in (3, 4, 7, 8)) / 4), 1)
        self.assertLess(moves[2.5], 0)

    def test_loads_and_supports_of_solids(self):
        # Nothing resists rotations at nodes of solids: cones alone, though node 1 has them held.
        run = self.opened_text("own-brick", BRICK)
        self.only("loads")
        self.assertEqual(self.symbols("thin"), [((0.5, 0.5, 0.5), (3, 0, 0))])
        rows = run.table("csv")
        for value, freedom in zip(self.overlays("thin")[0]["move"][0], pages.FREEDOMS):
            self.close(value, sum(row[freedom] for row in rows) / 8, freedom)
        self.only("supports")
        self.assertEqual(self.symbols("disc") + self.symbols("box"), [])
        self.assertEqual(len(self.symbols("cone")), 12)

    def test_reactions_and_supports(self):
        self.cantilever()
        self.only("supports", "reactions")
        self.assertEqual(self.symbols("box"), [((0, 0, 0), (0, 0, 1))])
        self.assertEqual(self.symbols("cone"), [((6, 0, 0), (0, 0, 1)), ((6, 0, 0), (0, 1, 0))])
        self.assertEqual(self.symbols("disc"), [])
        found = dict(self.symbols("arrow"))
        self.assertEqual([round(x, 3) + 0.0 for x in found[(0, 0, 0)]], [-5, -2, 3])
        self.assertEqual([round(x, 3) + 0.0 for x in dict(self.symbols("twofold"))[(0, 0, 0)]], [0, -12 - 7, -8])

    def test_reactions_are_those_of_the_end(self):
        # A state before it has no reactions of its own.
        self.opened("pushover_portal")
        self.only("reactions")
        self.assertEqual(len({place for place, _ in self.symbols("arrow")}), 2)  # at either foot
        self.call("setState", 1)
        self.assertEqual(self.symbols("arrow") + self.symbols("twofold"), [])

    def test_held_rotations_are_discs(self):
        self.opened_text("own-discs", CANTILEVER.format(modulus=1e6).replace("3, 2, 3\n", "3, 2, 3\n2, 4\n"))
        self.only("supports")
        self.assertEqual(self.symbols("disc"), [((4, 0, 0), (1, 0, 0))])
        self.assertNotIn((4, 0, 0), [place for place, _ in self.symbols("cone")])

    def test_local_axes(self):
        self.cantilever()
        self.only("axes")
        mesh = self.overlays("axis")[0]
        found = {tuple(round(c, 2) for c in tint): tuple(round(x) for x in direction)
                 for place, direction, tint in zip(mesh["place"], mesh["direction"], mesh["tint"]) if place[0] < 4}
        self.assertEqual(found, {(0.85, 0.15, 0.15): (1, 0, 0), (0.1, 0.6, 0.2): (0, 1, 0), (0.15, 0.3, 0.85): (0, 0, 1)})

    def test_modes_of_vibration_have_no_loads(self):
        self.opened("vibrating_beam")
        self.only("loads")
        self.assertEqual(self.symbols("arrow") + self.symbols("thin"), [])

    def test_modes_of_buckling_have_the_loads_that_the_factor_multiplies(self):
        self.opened("euler_columns")
        self.only("loads")
        self.assertEqual(self.symbols("arrow"), [((x, 4000, 0), (0, -1000, 0)) for x in (0, 1000, 2000, 3000)])


    def test_springs_and_links_are_lines(self):
        self.opened("cards/springs")
        self.only()
        for one, other in ((3, 4), (5, 6)):
            ends = [self.call("project", node)[:2] for node in (one, other)]
            x, y = [(a + b) / 2 for a, b in zip(*ends)]
            around = [[x + i, y + k] for i in range(-3, 4) for k in range(-3, 4)]
            for edges in (True, False):
                self.call("setSwitch", "edges", edges)
                self.assertEqual(len(set(map(tuple, self.call("pixels", around)))) > 1, edges, one)


class Crosses(Drawn):
    def test_principal_directions(self):
        for name, corners in (("up", "1, 2, 3, 4"), ("down", "1, 4, 3, 2")):
            with self.subTest(name):
                self.opened_text(f"own-sheet-{name}", SHEET.format(corners=corners))
                field = next(f["name"] for f in self.call("fields") if f["on"] == "plate_part")
                self.call("setField", field)
                self.only("crosses")
                mesh = self.overlays("crosses")[0]
                arms = list(zip(mesh["position"][::2], mesh["position"][1::2], mesh["tint"][::2]))
                self.assertEqual(len(arms), 8)
                lengths = set()
                for a, b, tint in arms:
                    turned = math.degrees(math.atan2(b[1] - a[1], b[0] - a[0])) % 180
                    tension = abs(tint[2] - TENSION[2]) < 0.01
                    self.assertAlmostEqual(turned, 22.5 if tension else 112.5, 3)
                    lengths.add(round(math.dist(a, b), 4))
                self.assertEqual(len(lengths), 1)
                self.assertEqual(sum(abs(tint[2] - TENSION[2]) < 0.01 for _, _, tint in arms), 4)
                # A cross moves with its node.
                nodes = {(row["x"], row["y"]): row for row in self.runs[f"own-sheet-{name}"].table("csv")}
                for a, b, move in zip(mesh["position"][::2], mesh["position"][1::2], mesh["move"][::2]):
                    near = min(nodes, key=lambda node: math.dist(node, a[:2]) + math.dist(node, b[:2]))
                    for value, freedom in zip(move, pages.FREEDOMS):
                        self.close(value, nodes[near][freedom], freedom)
        info = self.call("pickNode", 1)["parts"][0]["rows"][0]["values"]
        self.close(info["s1"], math.sqrt(2))
        self.close(info["s2"], -math.sqrt(2))

    def test_the_angle_of_the_first(self):
        self.opened_text("own-sheet-up", SHEET.format(corners="1, 2, 3, 4"))
        info = self.call("pickNode", 1)["parts"][0]["rows"][0]["values"]
        self.assertAlmostEqual(info["angle"], 22.5, 3)


class Shape(Drawn):
    def test_the_scale_makes_displacements_visible_and_stays_1_where_they_are_large(self):
        run = self.cantilever()
        most = max(math.hypot(*(row[f] for f in pages.FREEDOMS)) for row in run.table("csv", 1))
        shown = self.call("scale") * most / 6
        self.assertLessEqual(shown, 0.1)
        self.assertGreater(shown, 0.1 / 2.6)
        automatic = self.call("scale")
        for place, times in ((60, 1), (80, 10), (0, 0)):
            self.browser.execute_script("""
                const slider = document.querySelector('[aria-label="scale of the displacements, slider"]');
                slider.value = arguments[0];
                slider.dispatchEvent(new Event("input"));""", place)
            self.assertAlmostEqual(self.call("scale") / automatic, times, 6)
        self.opened_text("own-soft", CANTILEVER.format(modulus=2e3))
        self.assertEqual(self.call("scale"), 1)


    def test_every_direction_counts_in_the_scale(self):
        # 6 is the size of the model: drawn, the largest displacement is between a tenth of it and 1 / 2.5 of that.
        for name, load in (("x", "3, 1, 5."), ("y", "2, 2, 5."), ("z", "2, 3, 5.")):
            text = CANTILEVER.format(modulus=1e6)
            loads = text.index("2, 2, 2.")
            run = self.opened_text(f"own-scale-{name}", text[:loads] + load + "\n*END STEP\n")
            most = max(abs(row[f"u{name}"]) for row in run.table("csv", 1))
            shown = self.call("scale") * most / 6
            self.assertTrue(0.04 * (1 - 1e-6) <= shown <= 0.1, (name, shown))

    def test_the_slider_stands_at_the_scale(self):
        # 60 is the automatic scale, 20 are a factor of ten.
        self.cantilever()
        automatic = self.call("scale")
        box = '[aria-label="scale of the displacements"]'
        for times, place in ((1, 60), (10, 80), (0.1, 40)):
            found = self.browser.execute_script("""
                const [box, value] = arguments;
                document.querySelector(box).value = value;
                document.querySelector(box).dispatchEvent(new Event("change"));
                return Number(document.querySelector('[aria-label="scale of the displacements, slider"]').value);""",
                box, times * automatic)
            self.assertAlmostEqual(found, place, delta=0.5)


class Paths(Drawn):
    def test_hinges_stand_at_their_ends_when_they_have_formed(self):
        kinds = set()
        for name in ("pushover_portal", "pushover_unloading", "pushover_portal_two_phases"):
            run = self.opened(name)
            for number, step in enumerate(self.json(".steps"), 1):
                kinds |= {event["hinge"] for event in run.table("events", number)}
                self.call("setStep", number - 1)
                curve = run.table("curve", number)
                for index, state in enumerate(step["path"]["states"]):
                    self.call("setState", index)
                    balls = [place for mesh in self.overlays("ball") for place in mesh["place"]]
                    self.assertEqual(len(balls), int(curve[state["point"]]["open_hinges"]), f"{name}, step {number}, {index}")
        self.assertLessEqual({"formed", "closed"}, kinds)
        # pushover_portal: its hinges are at ends of known elements, the nearer end of which is their own.
        run = self.opened("pushover_portal")
        nodes = {1: (0, 0), 2: (0, 2000), 3: (4000, 2000), 4: (4000, 0), 5: (2000, 2000)}
        ends = {1: (1, 2), 2: (4, 3), 3: (2, 5), 4: (5, 3)}
        balls = [place for mesh in self.overlays("ball") for place in mesh["place"]]
        wanted = set()
        for event in run.table("events"):
            near, far = ends[int(event["element"])][:: 1 if event["end"] == 1 else -1]
            wanted.add(tuple(round(0.93 * a + 0.07 * b) for a, b in zip(nodes[near], nodes[far])))
        self.assertEqual({(round(p[0]), round(p[1])) for p in balls}, wanted)
        # They go with their members.
        moved = {int(row["node"]): [row[f] for f in pages.FREEDOMS] for row in run.table("csv")}
        wanted = {}
        for event in run.table("events"):
            near, far = ends[int(event["element"])][:: 1 if event["end"] == 1 else -1]
            place = tuple(round(0.93 * a + 0.07 * b) for a, b in zip(nodes[near], nodes[far]))
            wanted[place] = [0.93 * a + 0.07 * b for a, b in zip(moved[near], moved[far])]
        size = max(abs(x) for move in moved.values() for x in move)
        for mesh in self.overlays("ball"):
            for place, move in zip(mesh["place"], mesh["move"]):
                for value, expected in zip(move, wanted[round(place[0]), round(place[1])]):
                    self.assertAlmostEqual(value / size, expected / size, 5)

    def test_closed_hinges_have_a_mark_of_their_own(self):
        for name in ("pushover_portal", "pushover_unloading", "pushover_portal_two_phases"):
            run = self.opened(name)
            for number, _ in enumerate(self.json(".steps"), 1):
                self.call("setStep", number - 1)
                marks = [c.get_attribute("class") for c in self.browser.find_elements(By.CSS_SELECTOR, "#path circle.event")]
                self.assertEqual(["closed" in mark.split() for mark in marks],
                                 [event["hinge"] == "closed" for event in run.table("events", number)], name)

    def test_states_of_a_long_path(self):
        # A strip of 10, yielding at 20 with a line of hardening of 1000 and E 10000, under a stress of 24 times the
        # factor: more points than the page has states, which are spread over all of the path.
        text = pages.deck("cards/elastoplastic").read_text().replace("1., 400", "1., 400, 0.01")
        # A viewer that is to have more of them leaves it to the page to choose.
        for name, options in (("own-long-path", ()), ("own-many-states", ("--increments", "150"))):
            self.states_are_spread(self.opened_text(name, text, options))

    def states_are_spread(self, run):
        curve = run.table("curve", 1)
        count = self.json(".steps[0].path.states.length")
        self.assertLess(count, len(curve))
        for index in (1, count // 2, count - 1):
            self.call("setState", index)
            factor = float(self.texts("#caption")[0].split("load factor ")[1])
            stress = 24 * factor
            shown = pages.values_of(self.call("pickNode", 2), "displacement")
            strained = stress / 10000 + max(0, stress - 20) / 1000
            self.assertAlmostEqual(shown["ux"] / (10 * strained), 1, 3)
            own = min(range(len(curve)), key=lambda k: abs(curve[k]["load_factor"] - factor))
            self.assertAlmostEqual(own / (len(curve) - 1), index / (count - 1), delta=1.5 / count)
        self.assertAlmostEqual(factor, 1, 4)

    def test_the_curve(self):
        run = self.opened("pushover_portal")
        curve, events = run.table("curve"), run.table("events")
        points = [tuple(map(float, p.split(","))) for p in
                  self.browser.find_element(By.CSS_SELECTOR, "#path polyline").get_attribute("points").split()]
        factors = [row["load_factor"] for row in curve]
        self.assertEqual(len(points), len(curve))
        named = f"{curve[0]['direction']} of node {int(curve[0]['node'])}"
        self.assertIn(named, self.texts("#path svg text"))
        low, high = points[factors.index(min(factors))], points[factors.index(max(factors))]
        self.assertGreater(low[1], high[1])  # upwards in the picture
        for point, row in zip(points, curve):
            share = (row["load_factor"] - min(factors)) / (max(factors) - min(factors))
            self.assertAlmostEqual(point[1], low[1] + share * (high[1] - low[1]), 1)
        circles = [(float(c.get_attribute("cx")), float(c.get_attribute("cy"))) for c in
                   self.browser.find_elements(By.CSS_SELECTOR, "#path circle.event")]
        self.assertEqual(len(circles), len(events))
        for (x, y), event in zip(circles, events):
            at = factors.index(event["load_factor"])
            self.assertAlmostEqual(x, points[at][0], 1)
            self.assertAlmostEqual(y, points[at][1], 1)
        for index, state in enumerate(self.json(".steps[0].path.states")):
            self.call("setState", index)
            mark = self.browser.find_element(By.CSS_SELECTOR, "#path circle.mark")
            self.assertAlmostEqual(float(mark.get_attribute("cx")), points[state["point"]][0], 1)
            said = self.browser.find_element(By.CSS_SELECTOR, "#path output").text
            row = curve[state["point"]]
            self.assertEqual(said.split(", ")[1].split()[0], row["direction"])
            self.assertLessEqual(abs(float(said.split()[2].rstrip(",")) - row["load_factor"]), 1e-4 * row["load_factor"])
            self.assertLessEqual(abs(float(said.split()[-1]) - row["displacement"]), 1e-4 * abs(row["displacement"]))


class Numbers(Drawn):
    def test_the_legend(self):
        self.opened("thick_plate_quads")
        ticks = self.browser.execute_script("""
            return [...document.querySelectorAll("#legend svg text")].map((t) => [Number(t.textContent), Number(t.getAttribute("y"))])""")
        self.assertEqual(sorted(ticks), sorted(ticks, key=lambda tick: -tick[1]))
        bars = self.browser.execute_script("""
            return [...document.querySelectorAll("#legend svg rect")].map((r) => [Number(r.getAttribute("y")), getComputedStyle(r).fill])""")
        lowest, highest = max(bars), min(bars)
        self.assertEqual([int(c) for c in lowest[1].strip("rgb()").split(",")], [68, 1, 84])  # viridis begins so
        self.assertGreater(int(highest[1].strip("rgb()").split(",")[0]), 200)
        self.assertIn(f"at {self.call('range')['highName']}", self.texts("#legend dd")[0])

    def test_marks_and_limits(self):
        run = self.opened("thick_plate_quads")
        rows = run.table("csv", 1)
        most = max(rows, key=lambda row: row["uz"])
        self.call("setField", "displacement", "uz")
        labels = {label["text"].split()[0]: label for label in self.call("labels") if label["className"] == "extreme"}
        self.assertEqual([round(x, 5) for x in labels["max"]["place"]], [round(most[c], 5) for c in "xyz"])
        self.assertAlmostEqual(float(labels["max"]["text"].split()[1]) / most["uz"], 1, 3)
        self.browser.execute_script("""
            const box = document.querySelector('[aria-label="largest value of the colours"]');
            box.value = arguments[0];
            box.dispatchEvent(new Event("change"));""", most["uz"] / 2)
        ticks = [float(text) for text in self.texts("#legend svg text")]
        self.assertLessEqual(max(ticks), most["uz"] / 2 * (1 + 1e-9))
        self.assertGreater(max(ticks), most["uz"] / 4)

    def test_rounding_is_0(self):
        # Nothing pulls along x: what the solution has there is rounding.
        run = self.opened_text("own-round", CANTILEVER.format(modulus=1e6).replace("3, 1, 5.", "3, 1, 5e-12"))
        self.assertGreater(max(abs(row["ux"]) for row in run.table("csv", 1)), 0)
        self.assertEqual(self.call("pickNode", 2)["rows"][0]["values"]["ux"], 0)
        self.call("setField", "displacement", "ux")
        self.assertEqual([self.call("range")[end] for end in ("low", "high")], [0, 0])
        cells = dict((row[0], (row[1], row[3])) for row in self.shown_table("Largest values"))
        self.assertEqual(cells["ux of nodes"], ("0", "0"))
        self.assertNotEqual(cells["uy of nodes"], ("0", "0"))

    def test_rounding_in_diagrams_is_0(self):
        # M = 12 (6 / 2)^2 / 2 = 54 in the middle; 0 at the supports, where section and displacement have rounding.
        run = self.opened_text("own-beam", BEAM.format(across="PZ"))
        self.assertTrue(any(0 < abs(row["Mz"]) < 1e-9 for row in run.table("stations")))
        self.call("pickElement", 1)
        numbers = [float(text) for text in self.texts("#diagrams svg text")]
        self.assertIn(-54, numbers)
        self.assertEqual([x for x in numbers if 0 < abs(x) < 1e-9], [])

    def test_rounding_of_modal_masses_is_0(self):
        # A beam that is held along x and about it: no mode has mass there but rounding.
        self.opened("vibrating_plate_quads")
        shares = [text.removesuffix(" %") for row in self.shown_table("Modes") for text in row[2:]]
        self.assertTrue(any(float(text) > 1 for text in shares if text != "–"))
        self.assertEqual([text for text in shares if text != "–" and 0 < float(text) < 1e-7], [])

    def test_the_picture_says_which_mode_and_which_state(self):
        self.opened("vibrating_plate_quads")
        step = next(i for i, s in enumerate(self.json(".steps")) if s.get("modes"))
        self.call("setStep", step)
        self.call("setMode", 2)
        value = self.json(f".steps[{step}].modes[2].value")
        word, shown = self.texts("#caption")[0].split(" · mode 3: ")[1].split()
        self.assertEqual(word, "frequency")
        self.assertAlmostEqual(float(shown) / value, 1, 4)
        run = self.opened("pushover_portal")
        self.assertNotIn("load factor", self.texts("#caption")[0])
        self.call("setState", 1)
        first = next(row["load_factor"] for row in run.table("events"))
        self.assertAlmostEqual(float(self.texts("#caption")[0].split("load factor ")[1]) / first, 1, 4)

    def test_lists_of_modes(self):
        for name, word in (("vibrating_plate_quads", "frequency"), ("buckling_plate_quads", "factor")):
            self.opened(name)
            step = next(i for i, s in enumerate(self.json(".steps")) if s.get("modes"))
            self.call("setStep", step)
            options = [text for text in self.texts('[aria-label="Mode"] option') if text[0].isdigit()]
            self.assertTrue(all(f": {word} " in text for text in options), options)

    def test_tables_of_modes_and_masses(self):
        run = self.opened("vibrating_beam")
        step = self.json(".steps[0]")
        free = step["masses"]["free"]
        self.assertNotEqual(free, step["masses"]["total"])
        for cells, row in zip(self.shown_table("Modes"), run.table("modes", 1)):
            for text, direction, mass in zip(cells[2:], ("x", "y", "z"), free):
                self.assertNotIn("e-", text)  # rounding is 0
                if mass > 0:
                    self.assertAlmostEqual(float(text.rstrip(" %")), 100 * row[f"effective_{direction}"] / mass, delta=0.06)
        total, can_move, share = self.shown_table("Masses")
        for shown, mass in ((total, step["masses"]["total"]), (can_move, free)):
            self.assertAlmostEqual(float(shown[1]), mass[0], delta=1e-4 * mass[0])
        modes = [row for row in run.table("modes", 1) if isinstance(row["mode"], float)]
        for text, direction, mass in zip(share[1:], ("x", "y", "z"), free):
            if mass > 0:
                parts = sum(row[f"effective_{direction}"] for row in modes)
                self.assertAlmostEqual(float(text.rstrip(" %")), 100 * parts / mass, delta=0.06)

    def test_the_first_mode_comes_first(self):
        self.opened("vibrating_beam")
        first = self.json(".steps[0].modes[0].value")
        for said in (self.texts("#caption")[0].split(" · mode 1: frequency ")[1],
                     self.texts("#step-1 summary")[0].split(" · first frequency ")[1]):
            self.assertAlmostEqual(float(said) / first, 1, 4)

    def test_rounding_of_moments_is_measured_by_moments(self):
        # 1e6 along the beam, and 1e-4 across at 4: moments of 4e-4 are small beside the force, and yet no rounding.
        text = CANTILEVER.format(modulus=1e6).replace("2, 2, 2.\n2, 3, -3.\n3, 1, 5.\n2, 5, 7.", "3, 1, 1e6\n2, 3, -1e-4")
        text = text[: text.index("*STEP, NAME=SPREAD")]
        self.opened_text("own-small-moment", text)
        loads, reactions, _ = self.shown_table("Loads against reactions")
        self.assertAlmostEqual(float(loads[5]), 4e-4, 9)  # Fz = -1e-4 at x = 4: My = -x Fz
        self.assertAlmostEqual(float(reactions[5]), -4e-4, 9)
        self.assertEqual(loads[3], "0")  # the force itself is 1e-10 of the largest
        points = self.call("profile", 1, "My")[0]["points"]
        self.assertAlmostEqual(abs(points[0]["value"]) / 4e-4, 1, 5)
        self.assertEqual({point["value"] for point in self.call("profile", 1, "Vz")[0]["points"]}, {0})

    def test_warnings_of_steps_are_on_top(self):
        self.opened("two_cables")
        lines = self.texts("#notes li")
        for number in (1, 2):
            self.assertTrue(any(line.startswith(f"Step {number}: ") and "held 9 rotations" in line for line in lines), lines)

    def test_rounding_of_torsion_is_0(self):
        # A slanted cantilever under a force at its end: it bends and does not twist.
        text = CANTILEVER.format(modulus=1e6)
        text = text[: text.index("*STEP")] + "*STEP\n*STATIC\n*CLOAD\n2, 1, 2.1\n2, 2, -3.3\n2, 3, 0.7\n*END STEP\n"
        text = text.replace("2, 4, 0, 0\n3, 6, 0, 0", "2, 1.1, 2.3, 3.7\n3, 2.2, 4.6, 7.4").replace("3, 2, 3\n", "3, 1, 3\n")
        self.opened_text("own-slanted", text)
        raw = {row["name"]: max(abs(row["min"]), abs(row["max"])) for row in self.json(".steps[0].extremes")}
        self.assertGreater(raw.get("T", 0), 0)
        shown = {row[0]: (row[1], row[3]) for row in self.shown_table("Largest values")}
        self.assertEqual(shown["T"], ("0", "0"))
        self.assertNotEqual(shown["Mz"], ("0", "0"))

    def test_reactions_are_named_by_their_nodes(self):
        # N = 5 at the root; the tie is held across at node 3, and nothing comes there.
        self.cantilever()
        rows = {row[0]: row[1:] for row in self.shown_table("Reactions at nodes")}
        self.assertEqual(list(rows), ["node 1"])
        for text, value in zip(rows["node 1"], (-5, -2, 3, 0, -19, -8)):
            self.assertAlmostEqual(float(text), value, 3)
        # ULS2: 3/8 13.5 L + 7/16 30 L, 10/8 13.5 L + 10/16 30 L, 3/8 13.5 L - 1/16 30 L with L = 4000.
        self.opened("cards/combination")
        rows = {row[0]: row[1:] for row in self.shown_table("Reactions at nodes", "#step-6")}
        for name, value in (("node 1", 72750), ("node 2", 142500), ("node 3", 12750)):
            self.assertEqual(float(rows[name][1]), value)

    def test_the_tables_of_the_step_that_is_shown_are_open(self):
        self.opened("cards/combination")
        is_open = lambda n: self.browser.execute_script("return document.getElementById(`step-${arguments[0]}`).open", n)
        self.assertEqual((is_open(1), is_open(9)), (True, False))
        self.call("setStep", 8)
        self.assertTrue(is_open(9))

    def test_what_is_found_by_its_number(self):
        # Element 2 is the tie; node 2 the end of the beam.
        self.cantilever()
        for kind, said in (("node", "Node 2"), ("element", "Element 2")):
            self.browser.execute_script("""
                document.querySelector('[aria-label="number of a node or element"]').value = arguments[1];
                [...document.querySelectorAll("#controls button")].find((b) => b.textContent === arguments[0]).click();""", kind, 2)
            self.call("range")
            self.assertTrue(self.texts("#selection")[0].startswith(said), self.texts("#selection")[0][:40])
        self.browser.execute_script("""
            document.querySelector('[aria-label="number of a node or element"]').value = 3;
            [...document.querySelectorAll("#controls button")].find((b) => b.textContent === "element").click();""")
        self.assertIn("no element 3", self.texts("#controls [role=status]"))

    def test_tables_of_combinations_and_envelopes(self):
        run = self.opened("cards/combination")
        rows = {row[0]: row[2] for row in self.shown_table("Combination of", "#step-5")}
        self.assertEqual(rows, {"1": "1.35", "2": "1.5", "3": "1.5"})
        bounds = {row["node"]: row for row in run.table("csv", 9)}
        seen = set()
        for field, component, value, at, case in self.shown_table("Governing cases", "#step-9"):
            if not field.startswith("Reactions") or component != "fy":
                continue
            which = "min" if "least" in field else "max"
            row = bounds[int(at.removeprefix("node "))]
            self.assertAlmostEqual(float(value) / row[f"force_y_{which}"], 1, 4)
            self.assertEqual(case, row[f"force_y_{which}_case"])
            extreme = (min if which == "min" else max)(r[f"force_y_{which}"] for r in bounds.values())
            self.assertEqual(row[f"force_y_{which}"], extreme)
            seen.add(which)
        self.assertEqual(seen, {"min", "max"})
        # ULS2: spans of 4000 under 1.35 G + 1.5 Q1 = 43.5 and 13.5 (N/mm) have 57e6 above the middle support, the left
        # reaction 43.5 L / 2 - 57e6 / L = 72750 and the moment R^2 / (2 q) where the shear force vanishes. One table says
        # it, not another one beside it with a station's.
        governing = self.shown_table("Governing cases", "#step-9")
        self.assertEqual([row for row in governing if row[1] in ("Vz", "My")], [])
        self.assertTrue(any("of members" in row[0] and row[0].endswith(", at stations") for row in governing))
        extremes = {row[0]: row for row in self.shown_table("Largest values", "#step-9")}
        self.assertAlmostEqual(float(extremes["My"][1]), -72750 ** 2 / (2 * 43.5), delta=1e3)
        self.assertTrue(extremes["My"][2].endswith("ULS2"), extremes["My"])
        self.assertIn("rz of nodes", extremes)

    def test_tables_of_extremes_and_sets(self):
        run = self.opened("thick_plate_quads")
        rows = {row["node"]: row for row in run.table("csv", 1)}
        for name, least, at, largest, where in self.shown_table("Largest values"):
            if name in ("ux", "uy", "uz", "rx", "ry", "rz"):
                for value, place in ((least, at), (largest, where)):
                    self.assertAlmostEqual(float(value), rows[int(place.removeprefix("node "))][name], delta=1e-4 * abs(float(value)))
        sums = {one["set"]: one["sum"] for one in self.json(".steps[0].reaction_sets")}
        for cells in self.shown_table("Reactions per support set"):
            self.assertAlmostEqual(float(cells[4]), sums[cells[0]][2], delta=1e-4 * abs(sums[cells[0]][2]))

    def test_envelopes_are_called_least_and_largest(self):
        self.opened("cards/combination")
        self.call("setStep", 8)
        for field in self.call("fields"):
            self.assertTrue(field["of"] in ("min", "max"))
        options = self.texts('[aria-label="Field"] option')
        least = [text for text in options if "(least)" in text]
        self.assertEqual(len(least) * 2, len(options))
        self.call("setField", "section_force", "My", "station", "min")
        self.assertIn("(least)", self.texts("#legend .legend-title")[0])
        self.assertLess(self.call("range")["low"], -6e7)  # ULS2: -60.8e6 in the spans


class Groups(Drawn):
    def test_groups(self):
        # The section of the tie stands first, so that no number of an element is that of its section.
        text = CANTILEVER.format(modulus=1e6)
        tie = "*SOLID SECTION, ELSET=TIE, MATERIAL=STEEL\n0.01\n"
        text = text.replace(tie, "").replace("*BEAM SECTION", tie + "*BEAM SECTION", 1)
        self.opened_text("own-groups", text)
        self.assertEqual(self.call("tints", "set"), ["BEAM", "TIE"])  # not ALL, which has both
        self.assertEqual(self.call("tints", "material"), ["WOOD", "STEEL"])
        self.assertEqual(self.call("tints", "type"), ["B33", "T3D2"])
        self.call("setColouring", "field")
        self.call("setField", "displacement", "length")
        self.assertEqual(self.call("range")["low"], 0)
        beam = [section["name"] for section in self.json(".sections")].index("*BEAM SECTION, ELSET=BEAM")
        self.call("hide", f"section {beam}", True)  # and with it node 1, which does not move
        self.assertGreater(self.call("range")["low"], 0)
        self.call("hide", f"section {beam}", False)
        self.call("hide", "set 1", True)
        self.assertEqual(self.call("range")["low"], 0)
        self.assertNotIn("node 3", self.call("range")["highName"])


    def flat_picture(self):
        """Colours alone, seen from above."""
        for switch in ("shading", "edges", "mesh", "supports", "loads", "marks"):
            self.call("setSwitch", switch, False)
        self.call("setScale", 0)
        self.call("view", "top")

    def legend_colours(self, selector):
        return [tuple(int(c) for c in text.strip("rgb()").replace(",", " ").split()) for text in self.browser.execute_script(
            "return [...document.querySelectorAll(arguments[0])].map((r) => getComputedStyle(r).fill)", selector)]

    def test_groups_have_the_colours_of_their_legend(self):
        text = SHEETS.replace("*MATERIAL", "*ELSET, ELSET=LEFT\n1\n*ELSET, ELSET=RIGHT\n2, 3\n*MATERIAL", 1)
        self.opened_text("own-coloured", text)
        self.flat_picture()
        self.call("setColouring", "set")
        names = self.texts("#legend .groups li")
        colours = dict(zip(names, self.legend_colours("#legend .groups rect")))
        self.assertNotEqual(colours["LEFT"], colours["RIGHT"])
        for x, name in ((0.5, "LEFT"), (1.5, "RIGHT"), (2.5, "RIGHT")):
            place = self.call("projectPlace", [x, 0.5, 0])[:2]
            found = self.call("pixels", [place])[0]
            self.assertLess(max(abs(a - b) for a, b in zip(found, colours[name])), 4, (x, found, colours))

    def test_the_other_colours(self):
        # The legend of turbo, from below, beside that of matplotlib.
        self.opened("thick_plate_quads")
        self.browser.execute_script("""
            const box = document.querySelector('[aria-label="Colour map"]');
            box.value = "turbo";
            box.dispatchEvent(new Event("change"));""")
        found = self.legend_colours("#legend svg rect")
        for i, colour in enumerate(found):
            wanted = [255 * c for c in pages.colormaps["turbo"](i / (len(found) - 1))[:3]]
            self.assertLess(max(abs(a - b) for a, b in zip(colour, wanted)), 6, i)

    def test_bands(self):
        # Ten colours, each that of the middle of its band, in the picture and in the legend.
        run = self.opened("thick_plate_quads")
        self.flat_picture()
        self.call("setField", "displacement", "uz")
        self.call("setSwitch", "bands", True)
        middle = [[255 * c for c in pages.colormaps["viridis"]((i + 0.5) / 10)[:3]] for i in range(10)]
        legend = self.legend_colours("#legend svg rect")
        self.assertEqual(len(legend), 10)
        for a, b in zip(legend, middle):
            self.assertLess(max(abs(x - y) for x, y in zip(a, b)), 4)
        rows = run.table("csv", 1)
        low, high = (of(row["uz"] for row in rows) for of in (min, max))
        side = max(row["x"] for row in rows)
        seen = set()
        for row in rows:
            t = 10 * (row["uz"] - low) / (high - low)
            if not (0 < row["x"] < side and 0 < row["y"] < side and 0.2 < t % 1 < 0.8):
                continue
            found = self.call("colourAt", int(row["node"]))
            self.assertLess(max(abs(x - y) for x, y in zip(found, middle[int(t)])), 9, row["node"])
            seen.add(int(t))
        self.assertGreater(len(seen), 4)

    def test_numbers_of_the_legend_stand_at_their_colours(self):
        # Shear forces of 12 and -12 at the ends.
        self.opened_text("own-span", SPAN, ("--station-count", "4"))
        self.call("setField", "section_force", "Vz")
        limits = self.call("range")
        found = self.browser.execute_script("""
            return [...document.querySelectorAll("#legend svg text")].map((text) => {
              const line = text.previousElementSibling;
              const bars = [...document.querySelectorAll("#legend svg rect")].map((bar) => bar.getBBox());
              const top = Math.min(...bars.map((bar) => bar.y));
              const end = Math.max(...bars.map((bar) => bar.y + bar.height));
              return [Number(text.textContent), (end - Number(line.getAttribute("y1"))) / (end - top)];
            });""")
        self.assertGreater(len(found), 2)
        for value, height in found:
            self.assertAlmostEqual(height, (value - limits["low"]) / (limits["high"] - limits["low"]), delta=0.01)


class Handling(Drawn):
    def test_views_and_axes(self):
        self.opened("solid_cantilever")
        for view, axis, sign in (("front", 1, -1), ("back", 1, 1), ("right", 0, 1), ("left", 0, -1), ("top", 2, 1), ("bottom", 2, -1)):
            self.call("view", view)
            camera = self.call("camera")
            arm = [p - t for p, t in zip(camera["position"], camera["target"])]
            self.assertEqual(max(range(3), key=lambda k: abs(arm[k])), axis, view)
            self.assertGreater(arm[axis] * sign, 0, view)
        self.call("view", "front")
        self.call("pixels", [[1, 1]])  # draws
        letters = self.browser.execute_script(
            "return Object.fromEntries([...document.querySelectorAll('#axes text')].map((t) => [t.textContent, [Number(t.getAttribute('x')), Number(t.getAttribute('y'))]]))")
        self.assertLess(letters["z"][1], letters["x"][1] - 10)  # upwards
        self.assertGreater(letters["x"][0], 10)

    def test_the_keyboard(self):
        self.opened("solid_cantilever")
        self.call("view", "front")
        for _ in range(12):
            self.browser.switch_to.active_element.send_keys(Keys.TAB)
            if self.browser.switch_to.active_element.get_attribute("id") == "canvas":
                break
        canvas = self.browser.switch_to.active_element
        self.assertEqual(canvas.get_attribute("id"), "canvas", "the keyboard reaches the picture")
        across = lambda: self.call("camera")["position"][0] - self.call("camera")["target"][0]
        over = lambda: self.call("camera")["position"][2] - self.call("camera")["target"][2]
        canvas.send_keys(Keys.ARROW_LEFT)
        self.assertLess(across(), -1e-3)
        canvas.send_keys(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
        self.assertGreater(across(), 1e-3)
        before = over()
        canvas.send_keys(Keys.ARROW_UP)
        first = over()
        canvas.send_keys(Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertLess((first - before) * (over() - before), 0)
        canvas.send_keys("+")
        self.assertAlmostEqual(self.call("camera")["zoom"], 1.2)
        canvas.send_keys("-", "-")
        self.assertAlmostEqual(self.call("camera")["zoom"], 1 / 1.2)
        canvas.send_keys("f")
        self.assertEqual(self.call("camera")["zoom"], 1)
        # Controls by the keyboard: the one that is used keeps it.
        box = self.browser.find_element(By.CSS_SELECTOR, '[aria-label="Component"]')
        box.send_keys("u")
        self.call("range")
        self.assertEqual(self.browser.switch_to.active_element.get_attribute("aria-label"), "Component")
        self.assertEqual(self.texts("#legend .legend-unit")[0].split()[0], "ux")
        self.quiet()

    def outside(self):
        return self.browser.execute_async_script("""
            const [done] = arguments;
            window.finitesReport.outside().then(done);""")

    def test_the_deflected_shape_stays_in_the_picture(self):
        # A bar that is drawn a tenth longer than it is, in windows of other shapes.
        self.opened_text("drawn-bar", CANTILEVER.format(modulus=1e3))
        self.assertEqual(self.outside(), 0)
        try:
            for width, height in ((700, 900), (1800, 500)):
                self.browser.execute_cdp_cmd(
                    "Emulation.setDeviceMetricsOverride",
                    {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
                self.call("range")
                self.assertEqual(self.outside(), 0, (width, height))
            # Who has come nearer stays there.
            self.call("zoom", 3)
            self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                         {"width": 900, "height": 700, "deviceScaleFactor": 1, "mobile": False})
            self.call("range")
            self.assertGreater(self.outside(), 0)
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})

    def test_cables_hang_as_they_are(self):
        # Level, span 100, length 105: a catenary, lowest in its middle, without a kink where its pieces meet.
        run = self.opened("hanging_cable")
        self.assertEqual(self.call("scale"), 1)
        self.assertGreater(max(abs(row[f]) for row in run.table("csv") for f in ("ux", "uy", "uz")), 0.01)
        self.opened("semi_rigid_portal")
        self.assertGreater(self.call("scale"), 1)

    def test_diagrams_do_not_leave_the_picture(self):
        self.opened_text("own-span", SPAN, ("--station-count", "4"))
        self.browser.execute_script("""
            const slider = document.querySelector('[aria-label="size of the diagram"]');
            slider.value = 1;
            slider.dispatchEvent(new Event("input"));""")
        for name in ("My", "Vz"):
            self.call("setDiagram", name)
            self.assertEqual(self.outside(), 0, name)

    def test_diagrams_stay_in_the_picture_on_the_deflected_shape(self):
        # In the second step the corner moves to the right, and the moment of the column stands to the right of it.
        self.opened_text("own-portal", PORTAL)
        self.call("setStep", 1)
        self.call("setDiagram", "My")
        scale, width = self.call("scale"), self.browser.execute_script("return document.getElementById('canvas').clientWidth")
        left, right = self.call("project", 1)[0], self.call("project", 5)[0]  # they do not move: 0 and 6
        places = [label["place"][0] + scale * label["move"]["0"] for label in self.call("labels")
                  if label["className"] == "value" and label["move"]]
        self.assertGreater(max(places), 6.5)
        self.assertLess(left + (right - left) / 6 * max(places), width)

    def test_the_first_view_shows_how_a_beam_bends(self):
        for across, up in (("PZ", "z"), ("PY", "y")):
            self.opened_text(f"own-beam-{across}", BEAM.format(across=across))
            self.assertEqual(self.browser.execute_script(
                "return document.querySelector('[aria-label=\"Axis that points up\"]').value"), up)
            end, middle = self.call("project", 1), self.call("project", 2)
            self.assertGreater(middle[1], end[1] + 20)  # downwards
        # Along y, it is seen from the right.
        self.opened_text("own-beam-y", BEAM.format(across="PZ").replace("2, 3\n3, 6", "2, 0, 3\n3, 0, 6", 1)
                         .replace("1, 1, 4", "1, 1, 3\n1, 5").replace("3, 2, 3\n*STEP", "3, 1\n3, 3\n*STEP"))
        arm = [p - t for p, t in zip(self.call("camera")["position"], self.call("camera")["target"])]
        self.assertEqual([abs(part) > 1e-3 for part in arm], [True, False, False])
        self.assertGreater(arm[0], 0)
        self.assertGreater(self.call("project", 2)[1], self.call("project", 1)[1] + 20)
        # A portal as a grillage: what moves across its plane is not seen from above.
        self.opened_text("own-grillage", PORTAL.replace("3, 2, -60.", "3, 3, -60."))
        self.assertGreater(self.call("camera")["position"][0], 4)
        self.assertGreater(self.call("camera")["position"][2], 1)

    def test_a_diagram_that_is_not_there_says_so(self):
        self.opened("pushover_portal")
        box = self.browser.find_element(By.CSS_SELECTOR, '[aria-label="Diagram on the model"]')
        box.send_keys("T")
        self.call("setSwitch", "bands", False)
        self.assertIn("T is 0 everywhere.", self.texts("#controls p"))
        self.call("setDiagram", "My")
        self.assertEqual(self.texts("#controls p"), [])
        self.call("setState", 1)
        self.assertIn("This state has no My.", self.texts("#controls p"))

    def test_the_limits_of_the_colours_are_read_in_full(self):
        self.opened("semi_rigid_portal")
        cut = self.browser.execute_script("""
            const box = document.querySelector('[aria-label="largest value of the colours"]');
            const pen = document.createElement("canvas").getContext("2d");
            const style = getComputedStyle(box);
            pen.font = style.font;
            box.placeholder = "-0.0088888";
            return pen.measureText(box.placeholder).width - (box.clientWidth - parseFloat(style.paddingLeft) - parseFloat(style.paddingRight));""")
        self.assertLessEqual(cut, 0)

    def test_words_of_tables_stay_whole(self):
        # The data of a section with a shape are longer than a line; its kind is one word.
        self.opened_text("own-beam", BEAM.format(across="PZ"))
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                     {"width": 700, "height": 800, "deviceScaleFactor": 1, "mobile": False})
        try:
            heights = self.browser.execute_script("""
                const table = [...document.querySelectorAll("table")].find((t) => t.caption?.textContent === "Sections");
                return [...table.rows].map((row) => {
                  const range = document.createRange();
                  range.selectNodeContents(row.cells[1]);
                  return new Set([...range.getClientRects()].map((box) => Math.round(box.top))).size;
                });""")
            self.assertEqual(heights, [1, 1])
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})
    def test_diagrams_stand_on_the_deflected_shape_in_the_picture(self):
        # The last one is 16 wide and leans to the legend.
        wide = SWAY.replace("6, 0, ", "8, 0, ").replace("0, 3\n", "0, 4\n").replace("50.", "-30.")
        wide = wide.replace("*ELEMENT", "5, 10, 0, 0\n6, 16, 0, 0\n*ELEMENT", 1).replace("*MATERIAL", "4, 5, 6\n*MATERIAL", 1)
        wide = wide.replace("1, 1, 6", "1, 1, 4\n5, 1, 6").replace("4, 1, 6", "4, 1, 4\n6, 1, 6")
        wide = wide.replace("*CLOAD", "*DLOAD\n2, PZ, -10.\n*CLOAD")
        for name, text, quantity in (("own-sway", SWAY, "My"), ("own-sway-back", SWAY.replace("50.", "-50."), "My"),
                                     ("own-sway-wide", wide, "Vz")):
            self.opened_text(name, text)
            self.call("setDiagram", quantity)
            left, width, height = self.browser.execute_script("""
                const c = document.getElementById("canvas"), own = c.getBoundingClientRect();
                const legend = document.getElementById("legend").getBoundingClientRect();
                return [legend.right - own.left, c.clientWidth, c.clientHeight];""")
            scale, heads = self.call("scale"), 0
            ribbon = self.overlays("ribbon")[0]
            for place, move in zip(ribbon["position"], ribbon["move"]):
                x, y = self.call("projectPlace", [p + scale * m for p, m in zip(place, move)])[:2]
                self.assertTrue(left <= x <= width and 0 <= y <= height, (name, place, x, y, left))
                heads += place[2] > 2.99 and place[0] not in (0, 6, 8)
            self.assertGreater(heads, 0)

    def test_the_saved_picture(self):
        self.opened("thick_plate_quads")
        self.browser.execute_script("""
            HTMLAnchorElement.prototype.click = function () { window.saved.name = this.download; };
            const toBlob = HTMLCanvasElement.prototype.toBlob;
            window.saved = {};
            HTMLCanvasElement.prototype.toBlob = function (...all) {
              const { data } = this.getContext("2d").getImageData(0, 0, this.width, this.height);
              const at = (x, y) => [...data.subarray(4 * (y * this.width + x), 4 * (y * this.width + x) + 3)].join();
              window.saved.size = [this.width, this.height];
              window.saved.corner = at(this.width - 3, this.height - 3);
              window.saved.bar = Array.from({ length: this.height }, (_, y) => at(16, y));
              window.saved.colours = new Set(Array.from({ length: this.width }, (_, x) => at(x, this.height >> 1))).size;
              return toBlob.apply(this, all);
            };
            document.getElementById("save").click();""")
        for _ in range(40):
            saved = self.browser.execute_script("return window.saved")
            if saved.get("name"):
                break
            self.call("range")
        self.assertEqual(saved["name"], "thick_plate_quads.png")
        self.assertEqual(saved["corner"], "255,255,255")
        self.assertGreater(saved["colours"], 10)
        bar = [tuple(map(int, text.split(","))) for text in saved["bar"]]
        self.assertIn((68, 1, 84), bar)
        top = next(i for i, colour in enumerate(bar) if colour[0] > 230 and colour[2] < 90)
        self.assertLess(top, bar.index((68, 1, 84)))  # the largest above the least
        self.quiet()

    def test_a_narrow_window(self):
        run = self.opened("semi_rigid_portal")
        try:
            self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                         {"width": 380, "height": 800, "deviceScaleFactor": 1, "mobile": False})
            chromium.open_page(self.browser, run.page)
            self.call("pickElement", 1)
            self.assertEqual(self.browser.execute_script("return window.innerWidth"), 380)
            self.assertLessEqual(self.browser.execute_script("return document.documentElement.scrollWidth"), 380)
            beyond = self.browser.execute_script("""
                const parts = [...document.querySelectorAll("header *, main *, #controls *, #selection, #diagrams svg, .step")];
                return parts.filter((part) => part.checkVisibility() && !part.closest("#labels, #axes"))
                  .filter((part) => part.getBoundingClientRect().right > 381)
                  .map((part) => part.tagName + "#" + part.id + " " + part.textContent.slice(0, 30));""")
            self.assertEqual(beyond, [])
            picture = self.browser.execute_script("""
                const canvas = document.getElementById("canvas").getBoundingClientRect();
                const legend = document.getElementById("legend").getBoundingClientRect();
                return [canvas.width, canvas.height, legend.top >= canvas.bottom - 1];""")
            self.assertGreater(picture[0], 300)
            self.assertGreater(picture[1], 200)
            self.assertTrue(picture[2], "the legend covers the picture")
            self.quiet()
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})


if __name__ == "__main__":
    unittest.main(verbosity=2)
