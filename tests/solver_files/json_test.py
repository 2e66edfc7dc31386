#!/usr/bin/env python3
"""The file of --json: valid by docs/results.schema.json, without a number that is not finite, and its values those of
the tables and of sums made here.

    json_test.py SOLVER
"""
import json
import pathlib
import sys
import tempfile
import unittest

import jsonschema
import numpy as np

import runs

SOLVER = pathlib.Path(sys.argv.pop()).resolve()
FORCES = [f"{kind}_{axis}" for kind in ("force", "moment") for axis in "xyz"]
PLATES = [f"{value}_{face}" for value in ("first", "second", "von_mises") for face in ("top", "middle", "bottom")]
SOLIDS = {f"solid_{c}": c for c in ("sxx", "syy", "szz", "sxy", "syz", "sxz", "first", "third", "von_mises")}


def refused(name):
    raise AssertionError(f"{name} is no number of JSON")


def read(text):
    return json.loads(text.decode("utf-8"), parse_constant=refused)


def schema():
    return json.loads((runs.ROOT / "docs/results.schema.json").read_text())


def column(rows, name):
    return np.array([float(row[name]) for row in rows])


def resultant(rows):
    """Forces, and moments about the origin."""
    place = np.array([[float(row[c]) for c in "xyz"] for row in rows]).reshape(-1, 3)
    values = np.array([[float(row[c]) for c in FORCES] for row in rows]).reshape(-1, 6)
    return values[:, :3].sum(axis=0), (values[:, 3:] + np.cross(place, values[:, :3])).sum(axis=0)


class Solved(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.runs = runs.all_runs(SOLVER, cls.folder.name)
        cls.read = [(run, read(run.json_text())) for run in cls.runs]
        cls.steps = [(run, step["number"], step) for run, all_of in cls.read for step in all_of["steps"]]

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def near(self, value, wanted, size):
        np.testing.assert_allclose(value, wanted, rtol=0, atol=1e-9 * size + 1e-300)

    def test_schema(self):
        jsonschema.Draft202012Validator.check_schema(schema())
        validator = jsonschema.Draft202012Validator(schema())
        for run, all_of in self.read:
            with self.subTest(deck=run.deck.stem):
                self.assertEqual([e.message for e in validator.iter_errors(all_of)], [])
                self.assertTrue(all_of["finished"])
                self.assertEqual(len(all_of["steps"]), len(run.grids()))
                self.assertEqual(len(all_of["warnings"]) + sum(len(s["warnings"]) for s in all_of["steps"]),
                                 len([line for line in run.errors.splitlines() if line.startswith("warning: ")
                                      and not line.startswith("warning: --")]))  # of options, not of the model

    def test_schema_refuses(self):
        """What is not described, or is no number, does not pass."""
        validator = jsonschema.Draft202012Validator(schema())
        for spoil in (lambda a: a.update(more=1), lambda a: a["steps"][0].update(number="1"),
                      lambda a: a["steps"][0].update(residual=None), lambda a: a.pop("time")):
            all_of = json.loads(json.dumps(self.read[0][1]))
            spoil(all_of)
            self.assertFalse(validator.is_valid(all_of))

    def test_sums(self):
        """Of the table of nodes by their places, whatever the solver has added up itself."""
        seen = 0
        for run, number, step in self.steps:
            rows = run.table("csv", number)
            with self.subTest(deck=run.deck.stem, step=number):
                if "reactions" not in step:
                    continue
                made = json.loads(run.json_text())["model"]["made_nodes"]
                if made > 0:
                    continue  # the table has no made nodes
                force, moment = resultant(rows)
                size = [abs(column(rows, c)).max() for c in FORCES]
                reach = max(abs(column(rows, c)).max() for c in "xyz")
                self.near(step["reactions"]["force"], force, len(rows) * max(size[:3]))
                self.near(step["reactions"]["moment"], moment, len(rows) * (max(size[:3]) * reach + max(size[3:])))
                seen += 1
        self.assertGreater(seen, 50)

    def test_equilibrium(self):
        """Of decks whose conditions, if any, hold in rigid motions: loads and reactions are in balance."""
        seen = 0
        for run, number, step in self.steps:
            grounded = "SPRING1" in read(run.json_text())["model"]["types"]  # what it carries is in no reaction
            if "loads" not in step or "conditions" in step or step["kind"] == "P-delta" or grounded:
                continue
            force = np.array(step["loads"]["force"]) + step["reactions"]["force"]
            size = max(np.abs(step["loads"]["force"]).max(), np.abs(step["reactions"]["force"]).max())
            with self.subTest(deck=run.deck.stem, step=number):
                if size > 1e-6:
                    np.testing.assert_allclose(force, 0, atol=1e-6 * size)
                    seen += 1
        self.assertGreater(seen, 30)

    def test_equilibrium_with_conditions(self):
        """Loads, reactions and the forces of conditions between nodes: their sum is 0."""
        seen = 0
        for run, number, step in self.steps:
            grounded = "SPRING1" in read(run.json_text())["model"]["types"]
            if "conditions" not in step or "loads" not in step or step["kind"] == "P-delta" or grounded:
                continue
            parts = [np.array(step[what]["force"]) for what in ("loads", "reactions", "conditions")]
            size = max(np.abs(part).max() for part in parts)
            if size > 1e-6:
                with self.subTest(deck=run.deck.stem, step=number):
                    np.testing.assert_allclose(sum(parts), 0, atol=1e-6 * size)
                    seen += 1
        self.assertGreater(seen, 2)

    def test_cables_far_from_their_chords_have_no_deflection(self):
        """The largest displacement is that of a node, and tables of envelopes have none of such cables."""
        run, all_of = next((run, all_of) for run, all_of in self.read if run.deck.stem == "two_cables")
        for step in all_of["steps"]:
            lengths = [np.hypot(np.hypot(float(r["ux"]), float(r["uy"])), float(r["uz"])) for r in run.table("csv", step["number"])]
            own = next(e for e in step["extremes"] if e["quantity"] == "displacement")
            self.near(own["largest"]["value"], max(lengths), max(lengths))

    def test_reaction_table(self):
        """Rows of nodes are those of the table of nodes; rows of sets are sums of them, as in JSON."""
        sets = 0
        for run, number, step in self.steps:
            if "reactions" not in step:
                self.assertEqual(bool(run.table("reactions", number)), step["kind"] == "envelope")
                continue
            with self.subTest(deck=run.deck.stem, step=number):
                table = run.table("reactions", number)
                nodes = {row["name"]: row for row in table if row["kind"] == "node"}
                for row in run.table("csv", number):
                    if own := nodes.get(row["node"]):
                        self.assertEqual([own[c] for c in ["x", "y", "z", *FORCES]],
                                         [row[c] for c in ["x", "y", "z", *FORCES]])
                    else:
                        self.assertEqual([float(row[c]) for c in FORCES], [0] * 6)
                force, moment = resultant(list(nodes.values()))
                totals = {row["name"]: row for row in table if row["kind"] == "total"}
                size = max((abs(float(row[c])) for row in nodes.values() for c in FORCES), default=0) * len(nodes)
                reach = 1 + max((abs(float(row[c])) for row in nodes.values() for c in "xyz"), default=0)
                self.near([float(totals["reactions"][c]) for c in FORCES], [*force, *moment], size * reach)
                self.assertEqual([float(totals["loads"][c]) for c in FORCES],
                                 step["loads"]["force"] + step["loads"]["moment"])
                rows = [row for row in table if row["kind"] == "set"]
                self.assertEqual([row["name"] for row in rows], [one["set"] for one in step["reaction_sets"]])
                for row, one in zip(rows, step["reaction_sets"]):
                    self.assertEqual([float(row[c]) for c in FORCES], one["force"] + one["moment"])
                    self.assertEqual(int(row["nodes"]), one["nodes"])
                    sets += 1
        self.assertGreater(sets, 60)

    def test_extremes(self):
        seen = set()
        for run, number, step in self.steps:
            for one in step.get("extremes", []):
                name = one["quantity"]
                table, of = (("csv", name) if name in ("ux", "uy", "uz", "rx", "ry", "rz") else
                             ("stresses", name) if name in PLATES else
                             ("solids", SOLIDS[name]) if name in SOLIDS else
                             ("members", name) if name in ("N", "Vy", "Vz", "T", "My", "Mz") else (None, None))
                if table is None:
                    continue
                with self.subTest(deck=run.deck.stem, step=number, quantity=name):
                    rows = run.table(table, number)
                    if table == "members":
                        low, high = ([float(row[f"{of}_{end}"]) for row in rows if row[f"{of}_{end}"]]
                                     for end in ("min", "max"))
                        if len(low) < len(rows):
                            continue  # springs have nothing between their ends
                    else:
                        ends = ("_min", "_max") if step["kind"] == "envelope" else ("", "")
                        low, high = (list(column(rows, of + end)) for end in ends)
                    if table != "members" and not ("node" in one["least"] and "node" in one["largest"]):
                        continue  # at a made node, which the table does not have
                    size = max(abs(one["least"]["value"]), abs(one["largest"]["value"]))
                    self.near([one["least"]["value"], one["largest"]["value"]], [min(low), max(high)], 10 * size)
                    if "node" in one["largest"]:
                        at = [value for row, value in zip(rows, high) if int(row["node"]) == one["largest"]["node"]]
                        self.assertIn(one["largest"]["value"], at)
                    seen.add(name)
        for name in ("ux", "rz", "N", "Mz", "T", "von_mises_top", "first_bottom", "solid_sxx", "solid_von_mises"):
            self.assertIn(name, seen)

    def test_combinations_and_envelopes(self):
        """Sums of a combination are those of its steps; the bounds of an envelope are those of its steps, and the step
        that is named has them."""
        kinds = set()
        for run, all_of in self.read:
            steps = all_of["steps"]
            for step in steps:
                parts = [(steps[part["step"] - 1], part.get("factor", 1)) for part in step.get("combined", [])]
                self.assertEqual(bool(parts), step["kind"] in ("combination", "envelope"))
                with self.subTest(deck=run.deck.stem, step=step["number"]):
                    if step["kind"] == "combination":
                        for what in ("loads", "reactions"):
                            wanted = sum(factor * np.array(part[what]["force"]) for part, factor in parts)
                            self.near(step[what]["force"], wanted, 1 + np.abs(wanted).max())
                    if step["kind"] == "envelope" and not any(part["kind"] == "envelope" for part, _ in parts):
                        self.check_bounds(steps, [part for part, _ in parts], step)
                    kinds.add(step["kind"])
        self.assertLessEqual({"combination", "envelope"}, kinds)

    def test_reactions_of_envelopes(self):
        """Bounds of nodes, of sets and of the sums are those of the tables of the steps; a step that does not hold a node
        or a set has the reaction 0 there."""
        kinds, cases = set(), set()
        for run, all_of in self.read:
            for step in all_of["steps"]:
                if step["kind"] != "envelope" or any(all_of["steps"][part["step"] - 1]["kind"] == "envelope"
                                                     for part in step["combined"]):
                    continue
                spanned = {all_of["steps"][part["step"] - 1]["name"] or str(part["step"]):
                           {(row["kind"], row["name"]): row for row in run.table("reactions", part["step"])}
                           for part in step["combined"]}
                table = {(row["kind"], row["name"]): row for row in run.table("reactions", step["number"])}
                self.assertEqual(set(table), {key for rows in spanned.values() for key in rows})
                for key, row in table.items():
                    for name in FORCES:
                        values = {case: float(rows[key][name]) if key in rows else 0 for case, rows in spanned.items()}
                        for ending, of in (("min", min), ("max", max)):
                            self.assertEqual(float(row[f"{name}_{ending}"]), of(values.values()))
                            case = row[f"{name}_{ending}_case"]
                            self.near(values[case], of(values.values()), 10 * max(map(abs, values.values())) + 1e-6)
                            cases.add(case)
                    if key[0] == "set":
                        self.assertEqual(int(row["nodes"]), max(int(rows[key]["nodes"]) for rows in spanned.values()
                                                                if key in rows))
                    kinds.add(key[0])
        self.assertEqual(kinds, {"node", "set", "total"})
        self.assertGreater(len(cases), 3)

    def test_reactions_of_an_envelope_by_hand(self):
        """decks/cards/combination.inp: (13.5 + 30) 8000 in ULS1, (10 - 22.5) 8000 in Lift, about x no moment."""
        run = next(run for run in self.runs if run.deck.stem == "combination")
        row = next(row for row in run.table("reactions", 9) if row["name"] == "reactions")
        self.near([float(row["force_y_max"]), float(row["force_y_min"])], [348000, -100000], 348000)
        self.assertEqual((row["force_y_max_case"], row["force_y_min_case"], row["nodes"]), ("ULS1", "Lift", "3"))
        loads = next(row for row in run.table("reactions", 9) if row["name"] == "loads")
        self.near([float(loads["force_y_max"]), float(loads["force_y_min"])], [100000, -348000], 348000)

    def check_bounds(self, steps, parts, step):
        for one in step["extremes"]:
            of_parts = [next((e for e in part["extremes"] if e["quantity"] == one["quantity"]), None) for part in parts]
            least = min(e["least"]["value"] if e else 0 for e in of_parts)
            largest = max(e["largest"]["value"] if e else 0 for e in of_parts)
            size = max(abs(least), abs(largest))
            self.near([one["least"]["value"], one["largest"]["value"]], [least, largest], 1e3 * size)
            governs = next((e for e in steps[one["largest"]["step"] - 1]["extremes"]
                            if e["quantity"] == one["quantity"]), None)
            self.near(governs["largest"]["value"] if governs else 0, largest, 1e3 * size)

    def test_modes(self):
        seen = 0
        for run, number, step in self.steps:
            if "modes" not in step:
                continue
            with self.subTest(deck=run.deck.stem, step=number):
                rows = run.table("csv", number)
                key = "frequency" if step["kind"] == "frequency" else "factor"
                self.assertEqual([one[key] for one in step["modes"]], list(column(rows, key)))
                if key == "factor":
                    continue
                masses = run.table("modes", number)
                for one, row in zip(step["modes"], masses):
                    for k, axis in enumerate(("x", "y", "z", "rx", "ry", "rz")):
                        self.assertEqual(one["effective_mass"][k], float(row[f"effective_{axis}"]))
                        # p^2 m, the definition
                        self.near(one["effective_mass"][k], one["participation_factor"][k] ** 2
                                  * one["generalised_mass"], one["effective_mass"][k])
                seen += 1
        self.assertGreater(seen, 4)

    def test_paths(self):
        kinds, seen = set(), set()
        for run, number, step in self.steps:
            rows = run.table("curve", number)
            self.assertEqual("path" in step, bool(rows))
            if not rows:
                continue
            with self.subTest(deck=run.deck.stem, step=number):
                path = step["path"]
                for key, of in (("load_factor", "load_factor"), ("displacement", "displacement")):
                    self.assertEqual([point[key] for point in path["curve"]], list(column(rows, of)))
                self.assertEqual(path["load_factor"], path["curve"][-1]["load_factor"])
                self.assertEqual({(str(path["node"]), path["direction"])}, {(r["node"], r["direction"]) for r in rows})
                for key, of in (("open_hinges", "open_hinges"), ("flowing", "flowing_points"), ("iterations", "iterations")):
                    if of in rows[0]:
                        self.assertEqual([point[key] for point in path["curve"]], list(column(rows, of)))
                        seen.add(key)
                events = run.table("events", number)
                keys = ("load_factor", "element", "end", "P", "My", "Mz")
                self.assertEqual([[*(e[key] for key in keys), e["hinge"]] for e in path.get("events", [])],
                                 [[*(float(e[key]) for key in keys), e["hinge"]] for e in events])
                if step["kind"] == "elastoplastic":
                    factors = column(rows, "load_factor")
                    self.assertEqual(path["largest_load_factor"], factors.max())
                    if "first_yield" in path:
                        flows = int(np.flatnonzero(column(rows, "flowing_points") > 0)[0])
                        self.assertTrue(factors[flows - 1] * (1 - 1e-9) <= path["first_yield"] <= factors[flows] * (1 + 1e-9))
                        seen.add("first_yield")
                if "valid_up_to" in path:
                    self.assertIn(f"{path['valid_up_to']:.6g}", run.output)
                    seen.add("valid_up_to")
                kinds.add((step["kind"], path["end"]))
        self.assertLessEqual({"open_hinges", "flowing", "iterations", "first_yield"}, seen)
        self.assertLessEqual({("pushover", "mechanism")}, kinds)
        self.assertIn(("elastoplastic", "limit"), kinds)


SPRING = """*HEADING
{title}
*NODE
1, 0, 0, 0
2, 1, 0, 0
*ELEMENT, TYPE=SPRINGA, ELSET=S
1, 1, 2
*SPRING, ELSET=S

100.
*BOUNDARY
1, 1, 3
2, 2, 3
*STEP, NAME=GOOD
*STATIC
*CLOAD
2, 1, 5.
*END STEP
"""


BEND = """*NODE, NSET=ALL
1, 0, 0, 0
2, 1, 0, 0
3, 2, 0, 0
4, 3.5, 0, 0
5, 5, 0, 0
*ELEMENT, TYPE=B32, ELSET=B
1, 1, 2, 3
2, 3, 4, 5
*MATERIAL, NAME=M
*ELASTIC
1e6, 0.3
*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=RECT
0.2, 0.3
0, 1, 0
*BOUNDARY
1, 1, 4
5, 2, 3
*STEP, NAME=A
*STATIC
*DLOAD
1, PZ, -3
2, PY, 1.
*END STEP
*STEP, NAME=B
*STATIC
*DLOAD
2, PZ, -5
*CLOAD
2, 2, 4.
5, 1, -2.
*END STEP
*STEP, NAME=C
*STATIC
*CLOAD
4, 3, 7.
3, 4, 1.
*END STEP
*ENVELOPE, NAME=E
A, B, C
"""


class Envelopes(unittest.TestCase):
    """Along beams of two parts each: every bound with its place and its step."""

    def test_members(self):
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, BEND)
            self.assertEqual(run.status, 0, run.errors)
            spanned = {name: run.table("members", k) for k, name in enumerate("ABC", 1)}
            rows = run.table("members", 4)
            self.assertEqual(len(rows), 4)
            places = set()
            for k, row in enumerate(rows):
                for name in FORCES:
                    values = {case: float(table[k][name]) for case, table in spanned.items()}
                    for ending, of in (("min", min), ("max", max)):
                        self.assertEqual(float(row[f"{name}_{ending}"]), of(values.values()), name)
                        np.testing.assert_allclose(values[row[f"{name}_{ending}_case"]], of(values.values()), atol=1e-9)
                for name in ("N", "Vy", "Vz", "T", "My", "Mz"):
                    for ending, of in (("min", min), ("max", max)):
                        bound = float(row[f"{name}_{ending}"])
                        self.assertEqual(bound, of(float(table[k][f"{name}_{ending}"]) for table in spanned.values()))
                        governs = spanned[row[f"{name}_{ending}_case"]][k]
                        np.testing.assert_allclose(float(governs[f"{name}_{ending}"]), bound, atol=1e-9)
                        if abs(bound) > 1e-6:
                            self.assertEqual(row[f"{name}_{ending}_at"], governs[f"{name}_{ending}_at"], name)
                            places.add(float(row[f"{name}_{ending}_at"]) > 1.5)
            self.assertEqual(places, {False, True})
            extremes = {e["quantity"]: e for e in read(run.json_text())["steps"][3]["extremes"]}
            most = max(rows, key=lambda row: float(row["My_max"]))
            self.assertEqual(extremes["My"]["largest"]["element"], int(most["element"]))
            self.assertEqual(extremes["My"]["largest"]["distance"], float(most["My_max_at"]))

    def test_the_exact_largest_of_values_that_are_equal_to_rounding(self):
        text = SPRING.format(title="t") + "*STEP, NAME=MORE\n*STATIC\n*CLOAD\n2, 1, 5.0000000000002\n*END STEP\n*ENVELOPE, NAME=E\nGOOD, MORE\n"
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, text)
            self.assertEqual(run.status, 0, run.errors)
            row = run.table("csv", 3)[1]
            self.assertEqual(row["ux_max"], run.table("csv", 2)[1]["ux"])
            self.assertGreater(float(row["ux_max"]), float(run.table("csv", 1)[1]["ux"]))
            self.assertEqual(row["ux_max_case"], "GOOD")

    def test_cables(self):
        deck = (runs.ROOT / "decks/two_cables.inp").read_text() + "*ENVELOPE, NAME=E\nDEAD, FORCE\n"
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, deck)
            self.assertEqual(run.status, 0, run.errors)
            self.assertEqual({row["displacement_max"] for row in run.table("members", 3)}, {""})


class Cases(unittest.TestCase):
    def test_springs(self):
        """5 pulls: a normal force of 5 at both ends."""
        _, all_of = self.run_text(SPRING.format(title="t"))
        own = next(e for e in all_of["steps"][0]["extremes"] if e["quantity"] == "N")
        self.assertAlmostEqual(own["least"]["value"], 5, 12)
        self.assertAlmostEqual(own["largest"]["value"], 5, 12)

    def test_hinges_about_the_other_axis(self):
        """A force of 4 at the end of a cantilever of 2 by a capacity of 10 forms a hinge at 10 / 8; its moment is that of
        the deck's axis: M2 about z, with the sign of N y: a force along -y at the far end turns by -8 about z there."""
        text = """*NODE
1, 0, 0
2, 2, 0
*ELEMENT, TYPE=B33, ELSET=F
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
1000., 0.3
*BEAM GENERAL SECTION, ELSET=F, MATERIAL=M
5., 8., 0., 8., 1.
0., 1., 0.
*PLASTIC HINGE, ELSET=F, CURVE=SINGLE, FORCES=M2
1000., 10., 10.
*BOUNDARY
1, ENCASTRE
2, 3, 5
*STEP
*PUSHOVER, NODE=2, DOF=2
*CLOAD
2, 2, -4.
2, 1, -1.
*END STEP
"""
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, text)
            self.assertEqual(run.status, 0, run.errors)
            (event,) = read(run.json_text())["steps"][0]["path"]["events"]
            row, member = run.table("events", 1)[0], run.table("members", 1)[0]
        self.assertAlmostEqual(event["load_factor"], 1.25, 9)
        self.assertAlmostEqual(abs(event["Mz"]), 10, 9)
        self.assertAlmostEqual(event["My"], 0, 9)
        self.assertAlmostEqual(abs(event["P"]), 1.25, 9)
        self.assertEqual([event[key] for key in ("P", "My", "Mz")], [float(row[key]) for key in ("P", "My", "Mz")])
        self.assertEqual(member["end"], "1")
        self.assertAlmostEqual(event["Mz"] / float(member["moment_z"]), 1, 6)

    def test_where_a_pushover_leaves_its_capacities(self):
        """A portal with q along its girder of 8: with hinges at the ends of the girder its middle, where none can form,
        has q 8^2 / 8 - M = M at q = M / 4: 25000 of 35000."""
        text = """*NODE, NSET=ALL
1, 0, 0, 0
2, 0, 4, 0
3, 8, 4, 0
4, 8, 0, 0
*ELEMENT, TYPE=B33, ELSET=MEMBER
1, 1, 2
2, 2, 3
3, 3, 4
*MATERIAL, NAME=S
*ELASTIC
210e9, 0.3
*BEAM GENERAL SECTION, ELSET=MEMBER, MATERIAL=S
0.01, 1e-4, 0, 1e-4, 1e-4
0, 0, 1
*PLASTIC HINGE, ELSET=MEMBER, CURVE=SINGLE, FORCES=M1
1e7, 1e5, 1e5
*BOUNDARY
1, ENCASTRE
4, ENCASTRE
ALL, 3, 5
*STEP
*PUSHOVER, NODE=2, DOF=1
*DLOAD
2, PY, -3.5e4
*END STEP
"""
        _, all_of = self.run_text(text)
        path = all_of["steps"][0]["path"]
        self.assertAlmostEqual(path["valid_up_to"], 25 / 35, 4)
        self.assertLess(path["events"][0]["load_factor"], path["valid_up_to"])

    def test_a_cable_between_supports_does_not_move(self):
        """Its nodes are held; that it hangs, far from its chord, is no displacement."""
        text = """*NODE
1, 0, 0, 0
2, 10, 0, 0
*ELEMENT, TYPE=T3D2, ELSET=C
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
1e9, 0.3
*CABLE SECTION, ELSET=C, MATERIAL=M
0.01, 12.
*BOUNDARY
1, PINNED
2, PINNED
*STEP, NAME=A
*STATIC
*DLOAD
C, PY, -3.
*END STEP
"""
        run, all_of = self.run_text(text)
        self.assertEqual(run.status, 0, run.errors)
        self.assertNotIn("displacement", [e["quantity"] for e in all_of["steps"][0]["extremes"]])

    def test_smallest_relative_stiffness(self):
        """Springs of 100 and 300 in a row, scaled to a diagonal of 1: the eigenvalues are 1 - and 1 + sqrt(300 / 400)."""
        text = SPRING.format(title="t").replace("2, 1, 0, 0\n", "2, 1, 0, 0\n3, 2, 0, 0\n", 1)
        text = text.replace("*SPRING, ELSET=S", "*ELEMENT, TYPE=SPRINGA, ELSET=T\n2, 2, 3\n*SPRING, ELSET=T\n\n300.\n*SPRING, ELSET=S")
        _, all_of = self.run_text(text.replace("2, 2, 3\n*STEP", "2, 2, 3\n3, 2, 3\n*STEP"))
        self.assertAlmostEqual(all_of["steps"][0]["smallest_relative_stiffness"] / (1 - 0.75**0.5), 1, delta=0.01)

    def test_the_step_below_a_perturbation(self):
        text = SPRING.format(title="t") + "*STEP, NAME=MORE, PERTURBATION\n*STATIC\n*CLOAD\n2, 1, 1.\n*END STEP\n"
        _, all_of = self.run_text(text)
        self.assertNotIn("base_step", all_of["steps"][0])
        self.assertEqual(all_of["steps"][1]["base_step"], 1)

    def test_masses(self):
        """A bar of 0.5 x 3 x 4 from (1, 2, 3) to (4, 2, 3), a mass of 5 at its end."""
        _, all_of = self.run_text("*NODE\n1, 1, 2, 3\n2, 4, 2, 3\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n"
                                  "*ELEMENT, TYPE=MASS, ELSET=M\n2, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.\n*DENSITY\n4.\n"
                                  "*SOLID SECTION, ELSET=B, MATERIAL=M\n0.5\n*MASS, ELSET=M\n5.\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n"
                                  "*STEP\n*FREQUENCY\n1\n*END STEP\n")
        masses = all_of["steps"][0]["masses"]
        self.assertAlmostEqual(masses["total"][0], 11, 9)
        self.assertLess(masses["free"][0], 10)
        np.testing.assert_allclose(masses["centre"], [(6 * 2.5 + 5 * 4) / 11, 2, 3], rtol=1e-9)

    def test_sets_have_the_nodes_inside_quadratic_elements(self):
        """All that is held is in one set: what it carries is what is loaded."""
        grid = {(i, j): 1 + i + 3 * j for i in range(3) for j in range(3) if (i, j) != (1, 1)}
        text = "*NODE\n" + "".join(f"{n}, {i / 2}, {j / 2}, 0\n" for (i, j), n in grid.items())
        order = ((0, 0), (2, 0), (2, 2), (0, 2), (1, 0), (2, 1), (1, 2), (0, 1))
        text += "*ELEMENT, TYPE=S8R, ELSET=S\n1, " + ", ".join(str(grid[at]) for at in order) + "\n*NSET, NSET=ALL, GENERATE\n1, 9\n"
        text = text.replace("1, 9\n", "1, 4\n6, 9\n")
        text += "*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n*SHELL SECTION, ELSET=S, MATERIAL=M\n0.1\n*BOUNDARY\nALL, 3\n1, 1, 2\n3, 2\n"
        text += "1, 6\n*STEP\n*STATIC\n*DLOAD\nS, P, 8.\n*END STEP\n"
        run, all_of = self.run_text(text)
        step = all_of["steps"][0]
        (own,) = step["reaction_sets"]
        self.assertAlmostEqual(abs(step["loads"]["force"][2]), 8, 9)
        self.assertAlmostEqual(own["force"][2], -step["loads"]["force"][2], 9)
    def test_names_with_commas(self):
        """Names of sets are one field of a table, as they stand in the deck."""
        text = SPRING.format(title="t").replace("*BOUNDARY", '*NSET, NSET="BASE, left"\n1\n*BOUNDARY', 1).replace("1, 1, 3\n2, 2", '"Base, LEFT", 1, 3\n2, 2')
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, text)
            self.assertEqual(run.status, 0, run.errors)
            sets = [row for row in run.table("reactions", 1) if row["kind"] == "set"]
            named = [one["set"] for one in read(run.json_text())["steps"][0]["reaction_sets"]]
            self.assertEqual([row["name"] for row in sets], named)
            self.assertIn(",", named[0])
            self.assertAlmostEqual(float(sets[0]["force_x"]), -5, 12)  # all of the load
    def run_text(self, text):
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, text)
            all_of = read(run.json_text())
            self.assertTrue(jsonschema.Draft202012Validator(schema()).is_valid(all_of))
            return run, all_of

    def test_text_that_is_no_utf_8(self):
        run, all_of = self.run_text(SPRING.format(title="Br\xfccke").encode("latin-1"))
        self.assertEqual(run.status, 0, run.errors)
        self.assertTrue(all_of["title"].startswith("Br"))
        self.assertTrue(all_of["title"].endswith("cke"))

    def test_quotes_and_utf_8(self):
        _, all_of = self.run_text(SPRING.format(title='Br\xfccke "A\\B" <b>').encode())
        self.assertEqual(all_of["title"], 'Br\xfccke "A\\B" <b>')

    def test_step_that_is_not_solved(self):
        """Its force finds nothing that resists."""
        text = SPRING.format(title="t").replace("2, 2, 3\n", "2, 3\n") + "*STEP\n*STATIC\n*CLOAD\n2, 2, 1.\n*END STEP\n"
        text = text.replace("*STEP, NAME=GOOD\n*STATIC\n", "*STEP, NAME=GOOD\n*STATIC\n*BOUNDARY\n2, 2\n")
        run, all_of = self.run_text(text)
        self.assertEqual(run.status, 1, run.output)
        self.assertFalse(all_of["finished"])
        self.assertIn(all_of["error"], run.errors)
        self.assertEqual([step["name"] for step in all_of["steps"]], ["GOOD"])
        np.testing.assert_allclose(all_of["steps"][0]["reactions"]["force"], [-5, 0, 0], atol=1e-12)


if __name__ == "__main__":
    unittest.main()
