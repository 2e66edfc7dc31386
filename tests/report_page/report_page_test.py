#!/usr/bin/env python3
"""Report pages in a browser: they open without a complaint, a click shows what the tables of the same run have, colours
are those of the values, nothing of a deck runs, paper has no cut tables.

    report_page_test.py SOLVER
"""

import math
import pathlib
import re
import sys
import tempfile
import time
import unittest

from matplotlib import colormaps
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

from runs import ROOT, Run, deck
import paper

sys.path.insert(0, str(ROOT / "script"))
import browser as chromium  # noqa: E402

SOLVER = pathlib.Path(sys.argv.pop()).resolve() if len(sys.argv) > 1 else None
DIGITS = 1e-6                              # numbers of the page have 32 bits and seven digits
DECKS = ("thick_plate_quads", "solid_cantilever", "timoshenko_cantilever", "semi_rigid_portal", "hanging_cable",
         "vibrating_plate_quads", "vibrating_beam", "buckling_plate_quads", "pushover_two_storeys", "plastic_strip_bending",
         "cards/quadratic_shell", "offset_strip")
FREEDOMS = ("ux", "uy", "uz")

HOSTILE = """*HEADING
</script><script>window.hacked = 1</script><img src=x onerror="window.hacked=2">
*NODE, NSET="A<img src=x onerror=window.hacked=3>"
1, 0., 0., 0.
2, 1., 0., 0.
*ELEMENT, TYPE=B31, ELSET="B<b onclick=alert(1)>"
1, 1, 2
*MATERIAL, NAME="M</script><script>window.hacked=4</script>"
*ELASTIC
210000., 0.3
*BEAM SECTION, ELSET="B<b onclick=alert(1)>", MATERIAL="M</script><script>window.hacked=4</script>", SECTION=RECT
0.1, 0.2
0., 0., -1.
*BOUNDARY
1, 1, 6
*STEP, NAME="<script>window.hacked=5</script>"
<script>window.hacked = 6</script>
*STATIC
*CLOAD
2, 2, -1.
*END STEP
"""


def size_of(rows, names):
    return max((abs(row[name]) for row in rows for name in names if isinstance(row[name], float)), default=0.0)


def values_of(info, field):
    """Components of a field among the rows that a click shows."""
    return next((row["values"] for row in info["rows"] if row["field"]["name"] == field), None)


class Page(unittest.TestCase):
    """One browser for all tests."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.browser = chromium.start(1000, 760)
        cls.runs = {}

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.folder.cleanup()

    def call(self, name, *values):
        return chromium.call(self.browser, name, *values)

    def run_of(self, name):
        if name not in self.runs:
            self.runs[name] = Run(SOLVER, deck(name), pathlib.Path(self.folder.name))
        return self.runs[name]

    def opened(self, name):
        run = self.run_of(name)
        chromium.open_page(self.browser, run.page)
        return run

    def quiet(self):
        self.assertEqual(chromium.complaints(self.browser), [])
        self.assertFalse(self.browser.find_element(By.ID, "failure").is_displayed())

    def near(self, value, expected, size, what):
        self.assertTrue(math.isfinite(value), what)
        self.assertLessEqual(abs(value - expected), DIGITS * max(abs(expected), size * 0.1), f"{what}: {value}, the table has {expected}")

    # Text of a table of the page by its caption: rows of cells.
    def shown_table(self, caption, inside="body"):
        return self.browser.execute_script("""
            const tables = [...document.querySelectorAll(arguments[1] + " table")];
            const found = tables.find((table) => table.caption?.textContent.startsWith(arguments[0]));
            return found ? [...found.tBodies[0].rows].map((row) => [...row.cells].map((cell) => cell.textContent)) : null;
            """, caption, inside)


class EveryDeck(Page):
    def test_opens_without_a_complaint_and_draws(self):
        for name in DECKS:
            with self.subTest(name):
                self.opened(name)
                self.quiet()
                self.assertTrue(self.browser.find_element(By.ID, "steps").text.startswith("Step 1"))
                self.drawn()

    # Somewhere along a line through the picture there is something else than the ground.
    def drawn(self):
        width, height = self.browser.execute_script("const c = document.getElementById('canvas'); return [c.clientWidth, c.clientHeight]")
        for switch in ("supports", "loads", "marks"):
            self.call("setSwitch", switch, False)
        colours = set(map(tuple, self.call("pixels", [[x, height * part] for x in range(5, width, 3) for part in (0.42, 0.5, 0.6)])))
        self.assertGreater(len(colours), 1)


class Clicks(Page):
    def displacements(self, name, step=1):
        run = self.opened(name)
        if step > 1:
            self.call("setStep", step - 1)
        rows = run.table("csv", step)
        self.assertGreater(len(rows), 0)
        size = size_of(rows, FREEDOMS)
        self.assertGreater(size, 0)
        for row in rows[:: max(1, len(rows) // 12)]:
            shown = values_of(self.call("pickNode", int(row["node"])), "displacement")
            for freedom in FREEDOMS:
                self.near(shown[freedom], row[freedom], size, f"{name}: {freedom} of node {row['node']}")
            self.near(shown["length"], math.hypot(*(row[f] for f in FREEDOMS)), size, "length")
        self.quiet()

    def test_displacements_are_those_of_the_table(self):
        for name in ("thick_plate_quads", "solid_cantilever", "hanging_cable", "semi_rigid_portal", "pushover_two_storeys"):
            with self.subTest(name):
                self.displacements(name)

    def test_another_step_has_its_own_displacements(self):
        self.displacements("thick_plate_quads", 2)

    def test_values_follow_the_step_and_the_envelope(self):
        # Shear at the left support: that of the table of each step; the envelope has its bound and the case.
        run = self.opened("cards/combination")
        self.call("pickElement", 1)
        for step in (0, 3):
            self.call("setStep", step)
            self.assertIn(self.vz(), [f"{row['Vz']:g}" for row in run.table("stations", step + 1)][:1])
        self.call("setStep", 8)
        self.assertIn("Lift", self.browser.find_element(By.ID, "selection").text)
        self.quiet()

    def vz(self):
        """Vz at the first end, as the panel of the chosen element shows it."""
        rows = self.browser.find_elements(By.CSS_SELECTOR, "#selection tbody tr")
        return next(row.text.split()[-1] for row in rows if row.text.startswith("Vz"))

    def stresses(self, name, table, fields, columns, step=1):
        run = self.opened(name)
        rows = run.table(table, step)
        self.assertGreater(len(rows), 0)
        for row in rows[:: max(1, len(rows) // 10)]:
            info = self.call("pickNode", int(row["node"]))
            parts = [part for part in info["parts"] if len(info["parts"]) == 1 or row["elset"] in part["section"]]
            self.assertEqual(len(parts), 1, f"{name}: parts of node {row['node']}")
            for field, side in fields:
                shown = values_of(parts[0], field)
                size = size_of(rows, [column + side for column, _ in columns])
                for column, component in columns:
                    self.near(shown[component], row[column + side], size, f"{name}: {component} of {field} at node {row['node']}")

    def test_stresses_of_plates_at_nodes_are_those_of_the_table(self):
        columns = (("sx", "sx"), ("sy", "sy"), ("sxy", "sxy"), ("first", "s1"), ("second", "s2"), ("von_mises", "von Mises"))
        fields = (("stress_top", "_top"), ("stress_middle", "_middle"), ("stress_bottom", "_bottom"))
        for name in ("thick_plate_quads", "offset_strip"):
            with self.subTest(name):
                self.stresses(name, "stresses", fields, columns)

    def test_stresses_of_solids_at_nodes_are_those_of_the_table(self):
        columns = (("sxx", "xx"), ("syy", "yy"), ("szz", "zz"), ("sxy", "xy"), ("syz", "yz"), ("sxz", "xz"), ("first", "s1"),
                   ("second", "s2"), ("third", "s3"), ("von_mises", "von Mises"))
        self.stresses("solid_cantilever", "solids", (("stress_solid", ""),), columns)

    def test_section_forces_along_members_are_those_of_the_table(self):
        for name in ("semi_rigid_portal", "pushover_two_storeys", "timoshenko_cantilever"):
            with self.subTest(name):
                run = self.opened(name)
                rows = run.table("stations")
                elements = sorted({int(row["element"]) for row in rows})
                for quantity in ("N", "Vy", "Vz", "T", "My", "Mz"):
                    size = size_of(rows, [quantity])
                    for element in elements[:4]:
                        points = self.call("profile", element, quantity)[0]["points"]
                        values = [point["value"] for point in points]
                        for row in (row for row in rows if int(row["element"]) == element):
                            least = min(abs(value - row[quantity]) for value in values)
                            self.assertLessEqual(least, DIGITS * (size + 1e-9), f"{name}: {quantity} of {element} at {row['distance']}")

    def test_a_click_on_the_picture_shows_the_node_in_the_table_beside_it(self):
        run = self.opened("thick_plate_quads")
        self.call("view", "top")
        rows = {int(row["node"]): row for row in run.table("csv")}
        node = max(rows, key=lambda n: abs(rows[n]["uz"]) * (0.2 < rows[n]["x"] < 4.7))
        x, y, _ = self.call("project", node)
        canvas = self.browser.find_element(By.ID, "canvas")
        size = canvas.size
        ActionChains(self.browser).move_to_element_with_offset(canvas, round(x - size["width"] / 2), round(y - size["height"] / 2)).click().perform()
        self.call("range")
        text = self.browser.find_element(By.ID, "selection").text
        self.assertTrue(text.startswith(f"Node {node}\n"), text[:80])
        cells = self.browser.execute_script(
            "return [...document.querySelectorAll('#selection tbody tr')].map((row) => [...row.cells].map((cell) => cell.textContent))")
        shown = {row[1]: row[2] for row in cells[:4]}
        self.near(float(shown["uz"]), rows[node]["uz"], abs(rows[node]["uz"]), "uz beside the picture")


class Colours(Page):
    def compare(self, name, field, component, expected, view, inner):
        """Colours at inner nodes, where no border is smoothed, against the colour map of matplotlib; `expected` are
        values by node."""
        self.call("setField", field, component)
        for switch in ("shading", "edges", "mesh", "supports", "loads", "marks"):
            self.call("setSwitch", switch, False)
        self.call("setScale", 0)
        self.call("view", view)
        limits = self.call("range")
        low, high = min(expected.values()), max(expected.values())
        self.near(limits["low"], low, high - low, f"{name}: least {component}")
        self.near(limits["high"], high, high - low, f"{name}: largest {component}")
        seen = set()
        for node, colour in zip(inner, self.call("colours", inner)):
            t = (expected[node] - low) / (high - low)
            wanted = [255 * c for c in colormaps["viridis"](round(255 * t))[:3]]
            self.assertLess(max(abs(a - b) for a, b in zip(colour, wanted)), 9, f"{name}: {component} at node {node}: {colour}, {wanted}")
            seen.add(tuple(colour))
        self.assertGreater(len(seen), 4, "too few nodes were seen")

    def test_colours_of_a_plate_are_those_of_the_values(self):
        run = self.opened("thick_plate_quads")
        rows = run.table("csv")
        side = max(row["x"] for row in rows)
        inner = [int(row["node"]) for row in rows if 0 < row["x"] < side and 0 < row["y"] < side]
        self.compare("plate", "displacement", "uz", {int(r["node"]): r["uz"] for r in rows}, "top", inner)
        for column, component in (("von_mises_top", "von Mises"), ("first_top", "s1")):
            self.compare("plate", "stress_top", component, {int(r["node"]): r[column] for r in run.table("stresses")}, "top", inner)

    def test_colours_of_a_frame_are_those_of_the_values(self):
        run = self.opened("semi_rigid_portal")
        self.call("view", "front")
        stations = run.table("stations")
        limits = self.call("range")
        largest = max(math.hypot(*(row[f] for f in FREEDOMS)) for row in stations)
        self.near(limits["high"], largest, largest, "largest displacement along members")


class Steps(Page):
    def test_frequencies_and_buckling_factors_are_those_of_the_tables(self):
        for name in ("vibrating_plate_quads", "buckling_plate_quads"):
            with self.subTest(name):
                run = self.opened(name)
                rows = [row for row in run.table("modes", 1) if isinstance(row["mode"], float)]  # no totals
                shown = self.shown_table("Modes")
                self.assertEqual(len(shown), len(rows))
                for cells, row in zip(shown, rows):
                    value = row.get("frequency", row.get("factor"))
                    self.assertAlmostEqual(float(cells[1]) / value, 1, delta=1e-5)

    def test_a_mode_moves(self):
        self.opened("vibrating_plate_quads")
        self.call("setMode", 1)
        self.browser.execute_script(
            "[...document.querySelectorAll('.tick')].find((label) => label.textContent === 'move').querySelector('input').click()")
        width, height = self.browser.execute_script("const c = document.getElementById('canvas'); return [c.clientWidth, c.clientHeight]")
        places = [[x, y] for x in range(0, width, 5) for y in range(0, height, 5)]
        pictures = set()
        for _ in range(4):
            pictures.add(str(self.call("pixels", places)))
            time.sleep(0.15)
        self.assertGreater(len(pictures), 1, "the shape stands still")
        self.quiet()

    def test_hinges_of_a_pushover_appear_along_its_path(self):
        run = self.opened("pushover_two_storeys")
        events = run.table("events")
        shown = self.shown_table("Hinges")
        self.assertEqual([(int(c[1]), int(c[2]), c[3]) for c in shown], [(int(e["element"]), int(e["end"]), e["hinge"]) for e in events])
        for cells, event in zip(shown, events):
            self.assertAlmostEqual(float(cells[0]) / event["load_factor"], 1, delta=1e-4)
        curve = run.table("curve")
        states = int(self.browser.execute_script("return document.querySelector('#path input').max")) + 1
        self.assertGreater(states, 2)
        for state in (0, states // 2, states - 1):
            self.call("setState", state)
            text = self.browser.find_element(By.CSS_SELECTOR, "#path output").text
            factor = float(re.search(r"load factor ([-\d.e]+)", text).group(1))
            self.assertTrue(any(abs(factor - row["load_factor"]) <= 1e-4 * max(abs(factor), 1e-9) for row in curve), text)
        self.quiet()

    def test_sums_and_reactions_are_those_of_the_table(self):
        run = self.opened("thick_plate_quads")
        rows = run.table("csv")
        applied, reaction, left = self.shown_table("Loads against reactions")
        total = sum(row["force_z"] for row in rows)
        self.assertAlmostEqual(float(reaction[3]) / total, 1, delta=1e-4)
        self.assertAlmostEqual(float(applied[3]) / -total, 1, delta=1e-4)
        self.assertEqual(left[3], "0")


class Safety(Page):
    def test_nothing_of_a_deck_runs(self):
        path = pathlib.Path(self.folder.name) / "hostile.inp"
        path.write_text(HOSTILE)
        run = Run(SOLVER, path, pathlib.Path(self.folder.name))
        chromium.open_page(self.browser, run.page)
        self.call("pickElement", 1)
        self.call("pickNode", 2)
        self.call("setColouring", "set")
        self.quiet()
        self.assertIsNone(self.browser.execute_script("return window.hacked ?? null"))
        self.assertIn("<script>window.hacked = 1</script>", self.browser.find_element(By.ID, "title").text)
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, "img, b[onclick]"), [])
        self.assertIn("<script>window.hacked = 6</script>", self.browser.find_element(By.ID, "steps").text)

    def test_the_policy_lets_no_other_script_and_no_resource_in(self):
        self.opened("offset_strip")
        self.browser.execute_script("""
            const script = document.createElement("script");
            script.textContent = "window.hacked = 7";
            document.body.append(script);
            const image = document.createElement("img");
            image.src = "http://127.0.0.1:9/none.png";
            document.body.append(image);""")
        self.assertIsNone(self.browser.execute_script("return window.hacked ?? null"))
        said = " ".join(chromium.complaints(self.browser))
        self.assertIn("Content Security Policy", said)
        self.assertIn("none.png", said)


class Paper(Page):
    def printed(self, name):
        run = self.opened(name)
        return run, paper.print_page(self.browser, pathlib.Path(self.folder.name) / "page.pdf")

    def test_tables_are_not_cut_and_repeat_their_headings(self):
        run, pdf = self.printed("solid_cantilever")
        self.assertEqual(paper.beyond_margins(pdf), [])
        held = [int(row["node"]) for row in run.table("csv") if any(row[f"force_{k}"] != 0 for k in "xyz")]
        found, heads = [], 0
        for _, words in paper.pages(pdf):
            lines = paper.lines(words)
            rows = [line for line in lines if line[0] == "node" and len(line) >= 2 and line[1].isdigit()]
            if not rows:
                continue
            heads += 1
            first = lines.index(rows[0])
            self.assertIn(["node", "Fx", "Fy", "Fz", "Mx", "My", "Mz"], lines[:first], "rows without their heading above")
            for line in rows:
                self.assertEqual(len(line), 8, line)
                found.append(int(line[1]))
        self.assertEqual(sorted(found), sorted(set(found)))
        self.assertLessEqual(set(held), set(found))
        self.assertGreaterEqual(heads, 1)

    def test_captions_stay_with_their_tables(self):
        # Wherever on a page the tables begin.
        self.opened("cards/combination")
        first = {"Summary": ("equations", "steps"), "Largest": ("quantity",), "Combination": ("step",)}
        seen = 0
        for room in range(0, 240, 40):
            self.browser.execute_script("document.getElementById('steps').style.paddingTop = `${arguments[0]}px`", room)
            pdf = paper.print_page(self.browser, pathlib.Path(self.folder.name) / "page.pdf")
            for _, words in paper.pages(pdf):
                lines = paper.lines(words)
                for i, line in enumerate(lines):
                    if line in (["Summary"], ["Largest", "values", "and", "where"], ["Combination", "of"]):
                        seen += 1
                        self.assertLess(i + 1, len(lines), f"{line} at the bottom of a page")
                        self.assertIn(lines[i + 1][0], first[line[0]])
        self.assertGreaterEqual(seen, 6 * 20)

    def test_the_axes_do_not_cover_the_legend_on_paper(self):
        self.opened("cards/combination")
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        try:
            boxes = self.browser.execute_script("""
                return ["axes", "legend"].map((id) => {
                  const box = document.getElementById(id).getBoundingClientRect();
                  return [box.left, box.right];
                });""")
            self.assertGreater(boxes[0][0], boxes[1][1])
        finally:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})

    def test_a_long_table_goes_over_pages_with_its_heading(self):
        run, pdf = self.printed("thick_plate_quads")
        self.assertEqual(paper.beyond_margins(pdf), [])
        pages = paper.pages(pdf)
        with_rows = 0
        for _, words in pages:
            lines = paper.lines(words)
            rows = [i for i, line in enumerate(lines) if line[0] == "node" and len(line) == 8 and line[1].isdigit()]
            if rows:
                with_rows += 1
                self.assertIn(["node", "Fx", "Fy", "Fz", "Mx", "My", "Mz"], lines[: rows[0]])
        self.assertGreaterEqual(with_rows, 2)
        self.assertGreaterEqual(len(pages), 3)
        self.assertIsNotNone(run)


if __name__ == "__main__":
    unittest.main(verbosity=2)
