#!/usr/bin/env python3
"""The data of report pages beside the tables of the same run, and beside geometry known by hand.

    report_data_test.py SOLVER DECKS [name of a test ...]
"""
import csv
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

from report_data import Page

SOLVER, DECKS = sys.argv[1], pathlib.Path(sys.argv[2])
TABLES = ["csv", "stations", "stresses", "solids", "curve", "events", "modes"]
DIRECTIONS = ["ux", "uy", "uz", "rx", "ry", "rz"]
FLOAT = 1.2e-7  # of numbers of 32 bits


def run(deck, *options):
    page = pathlib.Path("page.html")
    page.unlink(missing_ok=True)
    done = subprocess.run([SOLVER, str(deck), "--report", str(page), *options], capture_output=True, check=False)
    assert done.returncode == 0, done.stderr.decode(errors="replace")
    return Page(page), done


def run_text(text, *options):
    pathlib.Path("own.inp").write_bytes(text if isinstance(text, bytes) else text.encode())
    return run("own.inp", *options)[0]


def rows(table, step, steps):
    name = f"{table}.csv" if steps == 1 else f"{table}.{step}.csv"
    if not os.path.exists(name):
        return []
    with open(name, newline="", encoding="utf-8", errors="replace") as file:
        return list(csv.DictReader(file))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


class Tables(unittest.TestCase):
    """All arrays of the decks beside their tables."""

    def near(self, values, expected, scale=0.0, what=""):
        self.assertEqual(len(values), len(expected), what)
        for i, (a, b) in enumerate(zip(values, expected)):
            self.assertLessEqual(abs(a - b), FLOAT * max(abs(b), scale) + 1e-37, f"{what} {i}: {a}, {b}")

    def check_nodes(self, page, step, table):
        ids = page.array(page["nodes"]["id"])
        self.assertEqual([max(i, 0) for i in ids], [int(r["node"]) for r in table])
        xyz = page.array(page["nodes"]["xyz"])
        u = page.array(step["displacement"])
        reactions = dict(zip(page.array(step["reactions"]["node"]), page.array(step["reactions"]["value"])))
        fields = {f["name"]: f for f in step["fields"]}
        self.assertEqual(page.array(fields["displacement"]["array"]), u)
        turns = page.array(fields["rotation"]["array"]) if "rotation" in fields else [(0, 0, 0)] * len(u)
        for n, row in enumerate(table):
            self.near([a + o for a, o in zip(xyz[n], page["origin"])], [float(row[x]) for x in "xyz"],
                      max(map(abs, xyz[n])), "xyz")
            self.near(list(u[n]) + list(turns[n]), [float(row[d]) for d in DIRECTIONS], 0, f"node {row['node']}")
            names = ["force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"]
            self.near(reactions.get(n, [0] * 6), [float(row[d]) for d in names], 0, f"reaction of {row['node']}")
        self.check_sums(page, step, table)
        self.check_extremes(step, table)

    def check_sums(self, page, step, table):
        def total(of):
            sum6 = [0.0] * 6
            for xyz, force in of:
                moment = cross(xyz, force[:3])
                for i in range(3):
                    sum6[i] += force[i]
                    sum6[3 + i] += force[3 + i] + moment[i]
            return sum6

        place = [[float(r[x]) for x in "xyz"] for r in table]
        names = ["force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"]
        force = [[float(r[d]) for d in names] for r in table]
        size = sum(abs(x) for f in force for x in f) * (1 + max(abs(x) for p in place for x in p))
        close = lambda a, b, s: self.assertTrue(all(abs(x - y) <= 1e-6 * s + 1e-30 for x, y in zip(a, b)), f"{a} {b}")
        close(step["sums"]["reaction"], total(zip(place, force)), 1e-6 * size)
        loads = list(zip(page.array(step["loads"]["node"]), page.array(step["loads"]["force"])))
        size = sum(abs(x) for _, f in loads for x in f) * (1 + max(abs(x) for p in place for x in p))
        close(step["sums"]["applied"], total((place[n], f) for n, f in loads), size)
        held = set(page.array(step["supports"]["node"]))
        sets = {s["name"]: page.array(s["members"]) for s in page["sets"]["nodes"]}
        named = set()
        made = [i < 0 for i in page.array(page["nodes"]["id"])]
        for each in step["reaction_sets"]:
            if each["set"] == "other supports":
                members = held - set(n for s in sets.values() for n in s)
            else:
                members = set(sets[each["set"]]) & held
            named.add(each["set"])
            if any(made):
                continue  # made nodes belong to the sets of their neighbours
            self.assertEqual(each["nodes"], len(members))
            close(each["sum"], total((place[n], force[n]) for n in members), max(map(abs, each["sum"]), default=0))
        for name, members in sets.items():
            self.assertEqual(name in named, bool(set(members) & held), name)

    def check_extremes(self, step, table):
        of = {e["name"]: e for e in step["extremes"]}
        for d in DIRECTIONS:
            values = [float(r[d]) for r in table]
            if max(map(abs, values)) == 0:
                self.assertNotIn(d, of)
                continue
            # The first of values that are equal up to rounding is taken.
            self.assertAlmostEqual(of[d]["min"] / min(values) if min(values) else 1, 1, 6)
            self.assertAlmostEqual(of[d]["max"] / max(values) if max(values) else 1, 1, 6)

    def check_parts(self, page, step, table):
        fields = {f["name"]: f for f in step["fields"]}
        names = [s for s in ("top", "middle", "bottom") if "stress_" + s in fields]
        if not names:
            self.assertEqual(table, [])
            return
        parts, made = page["plate_parts"], [i < 0 for i in page.array(page["nodes"]["id"])]
        own = [p for p, n in enumerate(page.array(parts["node"])) if not made[n]]
        self.assertEqual(len(own), len(table))
        ids, nodes = page.array(page["nodes"]["id"]), page.array(parts["node"])
        axes = page.array(parts["axes"])
        for surface in names:
            stress = page.array(fields["stress_" + surface]["array"])
            shear = page.array(fields["stress_middle"]["shear"]) if "shear" in fields["stress_middle"] else None
            for p, row in zip(own, table):
                self.assertEqual(ids[nodes[p]], int(row["node"]))
                self.near(stress[p], [float(row[f"{c}_{surface}"]) for c in ("sx", "sy", "sxy")], 0, surface)
                names = ("x_x", "x_y", "x_z", "normal_x", "normal_y", "normal_z")
                self.near(axes[p], [float(row[c]) for c in names], 1, "axes")
                sx, sy, sxy = stress[p]
                squares = sx * sx + sy * sy - sx * sy + 3 * sxy * sxy
                if surface == "middle" and shear:
                    squares += 3 * (shear[p][0] ** 2 + shear[p][1] ** 2)
                largest = abs(sx) + abs(sy) + abs(sxy) + (sum(map(abs, shear[p])) if shear else 0)
                self.assertLessEqual(abs(math.sqrt(squares) - float(row["von_mises_" + surface])), 1e-6 * largest)
        corner, first = page.array(parts["corner"]), page.array(page["elements"]["first"])
        around = page.array(page["elements"]["nodes"])
        self.assertEqual(len(corner), len(around))
        for k, part in enumerate(corner):
            if part >= 0:
                self.assertEqual(nodes[part], around[k])
        self.assertEqual(first[-1], len(around))

    def check_solids(self, page, step, table):
        field = next((f for f in step["fields"] if f["name"] == "stress_solid"), None)
        if field is None:
            self.assertEqual(table, [])
            return
        ids, nodes = page.array(page["nodes"]["id"]), page.array(page["solid_parts"]["node"])
        stress = page.array(field["array"])
        own = [p for p, n in enumerate(nodes) if ids[n] > 0]
        self.assertEqual(len(own), len(table))
        for p, row in zip(own, table):
            self.assertEqual(ids[nodes[p]], int(row["node"]))
            self.near(stress[p], [float(row[c]) for c in ("sxx", "syy", "szz", "sxy", "syz", "sxz")])
        around = page.array(page["elements"]["nodes"])
        for k, part in enumerate(page.array(page["solid_parts"]["corner"])):
            if part >= 0:
                self.assertEqual(nodes[part], around[k])

    def check_stations(self, page, step, table):
        u, force = page.array(step["stations"]["displacement"]), page.array(step["stations"]["force"])
        distance, place = page.array(page["stations"]["distance"]), page.array(page["stations"]["place"])
        self.assertEqual(len(table), len(u))
        first, element = page.array(page["members"]["first"]), page.array(page["members"]["element"])
        ids = page.array(page["elements"]["id"])
        owner = [ids[element[k]] for k in range(len(element)) for _ in range(first[k], first[k + 1])]
        for k, row in enumerate(table):
            self.assertEqual(owner[k], int(row["element"]))
            self.near([distance[k]], [float(row["distance"])], 0, "distance")
            self.near(place[k], [float(row[x]) for x in "xyz"], max(map(abs, place[k])) * 10, "place")
            self.near(u[k], [float(row[d]) for d in DIRECTIONS[:3]], 0, "displacement of a station")
            self.near(force[k], [float(row[f]) for f in ("N", "Vy", "Vz", "T", "My", "Mz")], 0, "force of a station")

    def check_path(self, page, step, curve, events):
        self.assertEqual("path" in step, bool(curve))
        if not curve:
            return
        path = step["path"]
        displacement = page.array(path["displacement"])
        self.near(page.array(path["factor"]), [float(r["load_factor"]) for r in curve], 0, "factor")
        self.near(displacement, [float(r["displacement"]) for r in curve], 0, "displacement")
        ids, element = page.array(page["nodes"]["id"]), page.array(page["elements"]["id"])
        self.assertEqual(ids[path["node"]], int(curve[0]["node"]))
        self.assertEqual(path["dof"], curve[0]["direction"])
        got = [(e["factor"], element[e["element"]], e["end"], e["kind"]) for e in path["events"]]
        self.assertEqual(got, [(float(r["load_factor"]), int(r["element"]), int(r["end"]), r["hinge"]) for r in events])
        for event in path["events"]:
            self.assertAlmostEqual(float(curve[event["point"]]["load_factor"]), event["factor"], 9)
        points = [s["point"] for s in path["states"]]
        self.assertEqual(points, sorted(set(points)))
        self.assertEqual(points[0], 0)
        self.assertEqual(points[-1], len(curve) - 1)
        self.assertLessEqual(len(points), 60)
        self.assertGreaterEqual(len(points), min(len(curve), 25))
        d = DIRECTIONS.index(path["dof"])
        for state in path["states"]:
            u = page.array(state["displacement"])
            if d < 3:
                self.near([u[path["node"]][d]], [displacement[state["point"]]], 0, "state")
        self.assertEqual(page.array(path["states"][-1]["displacement"]), page.array(step["displacement"]))
        if step["kind"] == "pushover":
            return
        for state in path["states"]:
            for field in state["fields"]:
                self.assertEqual(field["name"], "equivalent_plastic_strain")
        end = next((f for f in step["fields"] if f["name"] == "equivalent_plastic_strain"), None)
        if end is not None and path["states"][-1]["fields"]:
            here = page.array(path["states"][-1]["fields"][0]["array"])
            for a, b in zip(here, page.array(end["array"])):
                if not math.isnan(b):
                    self.assertLessEqual(abs(a - b), FLOAT * abs(b))

    def check_modes(self, page, step, modes, masses):
        self.assertEqual(len(step["modes"]), len(modes))
        self.assertIn("supports", step)
        for own, row in zip(step["modes"], modes):
            self.assertEqual(own["value"], float(row.get("frequency") or row.get("factor")))
            shape = page.array(own["shape"])
            self.assertEqual(len(shape), page["nodes"]["id"]["n"])
            self.assertAlmostEqual(max(abs(x) for v in shape for x in v), 1, 6)
        self.assertEqual("masses" in step, step["kind"] == "frequency")
        for own, row in zip(step["modes"], masses if step["kind"] == "frequency" else []):
            names = [n for n in row if n.startswith("effective")]
            self.assertEqual(own["effective"], [float(row[n]) for n in names])
            self.assertEqual(own["factor"], [float(row[n]) for n in row if n.startswith("factor")])

    def check_envelope(self, page, step, nodes, stations):
        names = [c["name"] or str(c["step"]) for c in step["combined"]]
        fields = {(f["name"], f["of"]): f for f in step["fields"]}

        def compare(name, of, table):
            if (name, of) not in fields:
                return False
            field = fields[name, of]
            values, governs = page.array(field["array"]), page.array(field["governs"])
            self.assertEqual(len(values), len(table))
            for got, cases, row in zip(values, governs, table):
                for value, case, c in zip(got, cases, field["components"]):
                    self.near([value], [float(row[f"{c}_{of}"])], 0, c)
                    self.assertEqual(names[case], row[f"{c}_{of}_case"])
            return True

        for of in ("min", "max"):
            for name, directions in (("displacement", DIRECTIONS[:3]), ("rotation", DIRECTIONS[3:])):
                # What is 0 everywhere is no field: a node stands on every support of a beam, and none between.
                moves = any(float(row[f"{d}_{b}"]) != 0 for row in nodes for d in directions for b in ("min", "max"))
                self.assertEqual(compare(name, of, nodes), moves)
            self.assertEqual(compare("section_force", of, stations), bool(stations))
        self.check_bounds_of_reactions(page, step, nodes)

    def check_bounds_of_reactions(self, page, step, nodes):
        """A node that is free in a direction has no reaction of 0 there that could be the least or the largest."""
        extremes = {e["name"]: e for e in step["extremes"]}
        for d in DIRECTIONS:
            name, column = f"reaction_{d}", ("force_" if d[0] == "u" else "moment_") + d[1]
            held = [row for row in nodes if float(row[f"{column}_min"]) != 0 or float(row[f"{column}_max"]) != 0]
            self.assertEqual(name in extremes, bool(held), name)
            if held:
                least, largest = (of(float(row[f"{column}_{b}"]) for row in held) for of, b in ((min, "min"), (max, "max")))
                self.near([extremes[name]["min"], extremes[name]["max"]], [least, largest], max(abs(least), abs(largest)))
        supported = {page.array(page["nodes"]["id"])[n] for n in page.array(step["supports"]["node"])}
        self.assertTrue(supported >= {int(row["node"]) for row in nodes if any(
            float(row[f"force_{d}_{b}"]) != 0 for d in "xyz" for b in ("min", "max"))})

    def check_deck(self, deck):
        for old in pathlib.Path(".").glob("*.csv"):
            old.unlink()
        options = [word for t in TABLES for word in (f"--{t}", f"{t}.csv")]
        page, done = run(deck, *options)
        for reference in page.references():
            page.array(reference)  # every buffer has what its reference says
        warnings = page["warnings"] + [w for s in page["steps"] for w in s["warnings"]]
        told = [line[len("warning: "):] for line in done.stderr.decode().splitlines() if line.startswith("warning: ")]
        told = [text for text in told if not text.startswith("--")]  # of options, not of the model
        self.assertEqual(sorted(warnings), sorted(told))
        steps = len(page["steps"])
        for step in page["steps"]:
            n = step["number"]
            table = rows("csv", n, steps)
            if "modes" in step:
                self.check_modes(page, step, table, rows("modes", n, steps))
                continue
            if step["kind"] == "envelope":
                self.check_envelope(page, step, table, rows("stations", n, steps))
                continue
            self.check_nodes(page, step, table)
            self.check_parts(page, step, rows("stresses", n, steps))
            self.check_solids(page, step, rows("solids", n, steps))
            self.check_stations(page, step, rows("stations", n, steps))
            self.check_path(page, step, rows("curve", n, steps), rows("events", n, steps))

    def test_decks(self):
        slow = ("plastic_square", "plastic_circle")
        for deck in sorted([*DECKS.glob("*.inp"), *DECKS.glob("cards/combination*.inp")]):
            if deck.name.startswith(slow) or deck.name.endswith("_refused.inp"):
                continue
            with self.subTest(deck=deck.name):
                self.check_deck(deck)


MATERIAL = "*MATERIAL, NAME=STEEL\n*ELASTIC\n2.1e11,0.3\n"


def bricks(nx, ny, nz, size=(3.0, 2.0, 1.0), inner=0.0):
    """A box of bricks whose inner nodes may be moved."""
    text, number = "*NODE, NSET=ALL\n", {}
    for k in range(nz + 1):
        for j in range(ny + 1):
            for i in range(nx + 1):
                number[i, j, k] = len(number) + 1
                move = inner if 0 < i < nx and 0 < j < ny and 0 < k < nz else 0
                text += f"{number[i, j, k]},{size[0] * i / nx + move},{size[1] * j / ny - move},{size[2] * k / nz}\n"
    text += "*ELEMENT, TYPE=C3D8, ELSET=BOX\n"
    for k in range(nz):
        for j in range(ny):
            for i in range(nx):
                low = [number[i + a, j + b, k] for a, b in ((0, 0), (1, 0), (1, 1), (0, 1))]
                high = [number[i + a, j + b, k + 1] for a, b in ((0, 0), (1, 0), (1, 1), (0, 1))]
                text += f"{nx * ny * k + nx * j + i + 1}," + ",".join(map(str, low + high)) + "\n"
    held = [n for (i, _, _), n in number.items() if i == 0]
    text += "*NSET, NSET=BASE\n" + "".join(f"{n}\n" for n in held)
    return text + MATERIAL + "*SOLID SECTION, ELSET=BOX, MATERIAL=STEEL\n*STEP\n*STATIC\n*BOUNDARY\nBASE,1,3\n" \
        f"*CLOAD\n{number[nx, ny, nz]},3,-1000\n*END STEP\n"


class Skin(unittest.TestCase):
    def geometry(self, page):
        xyz = page.array(page["nodes"]["xyz"])
        faces = page["faces"]
        first, nodes = page.array(faces["first"]), page.array(faces["nodes"])
        around, corner = page.array(page["elements"]["nodes"]), page.array(faces["corner"])
        self.assertEqual([around[k] for k in corner], nodes)
        polygons = [[xyz[n] for n in nodes[a:b]] for a, b in zip(first, first[1:])]
        # The divergence theorem on the triangles of a fan: a sixth of the triple products is the volume.
        volume, area = 0.0, [0.0] * 3
        for p in polygons:
            for a, b in zip(p[1:], p[2:]):
                normal = cross([y - x for x, y in zip(p[0], a)], [y - x for x, y in zip(p[0], b)])
                volume += sum(x * y for x, y in zip(p[0], normal)) / 6
                area = [s + n / 2 for s, n in zip(area, normal)]
        return len(polygons), volume, area

    def test_box_of_bricks(self):
        page = run_text(bricks(3, 2, 2, inner=0.1))
        count, volume, area = self.geometry(page)
        self.assertEqual(count, 2 * (3 * 2 + 3 * 2 + 2 * 2))
        self.assertAlmostEqual(volume, 3 * 2 * 1, 5)
        self.assertLess(max(map(abs, area)), 1e-5)
        # Twelve edges of the box, in pieces: the faces between are flat.
        self.assertEqual(page["edges"]["n"], 4 * (3 + 2 + 2))

    def test_supports_are_those_of_the_deck(self):
        # The analysis holds the rotations of all nodes, which the deck does not.
        step = (page := run_text(bricks(2, 1, 1)))["steps"][0]
        ids = page.array(page["nodes"]["id"])
        nodes, dofs = page.array(step["supports"]["node"]), page.array(step["supports"]["dofs"])
        held = {ids[n]: bits for n, bits in zip(nodes, dofs)}
        self.assertEqual(held, {1: 7, 4: 7, 7: 7, 10: 7})
        self.assertEqual([(s["set"], s["nodes"]) for s in step["reaction_sets"]], [("ALL", 4), ("BASE", 4)])

    def test_decks_of_solids(self):
        for name in ("solid_wedges", "solid_cylinder", "solid_column"):
            page = run(DECKS / f"{name}.inp")[0]
            _, volume, area = self.geometry(page)
            self.assertGreater(volume, 0, name)
            size = max(abs(x) for p in page.array(page["nodes"]["xyz"]) for x in p)
            self.assertLess(max(map(abs, area)), 1e-5 * size * size, name)

    def test_tetrahedra(self):
        # A unit cube in five tetrahedra: twelve triangles outside.
        cube = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)]
        text = "*NODE, NSET=ALL\n" + "".join(f"{n + 1},{x},{y},{z}\n" for n, (x, y, z) in enumerate(cube))
        text += "*ELEMENT, TYPE=C3D4, ELSET=T\n1,1,2,4,5\n2,2,3,4,7\n3,2,6,7,5\n4,4,8,5,7\n5,2,4,5,7\n"
        text += "*NSET, NSET=BASE\n1,2,3,4\n" + MATERIAL + "*SOLID SECTION, ELSET=T, MATERIAL=STEEL\n"
        page = run_text(text + "*STEP\n*STATIC\n*BOUNDARY\nBASE,1,3\n*CLOAD\n7,3,1\n*END STEP\n")
        count, volume, _ = self.geometry(page)
        self.assertEqual(count, 12)
        self.assertAlmostEqual(volume, 1, 6)
        self.assertEqual(page["edges"]["n"], 12)

    def test_edges_of_plates(self):
        flat = "*NODE, NSET=ALL\n1,0,0,0\n2,1,0,0\n3,1,1,0\n4,0,1,0\n5,{0},0,{1}\n6,{0},1,{1}\n" \
            "*ELEMENT, TYPE=S4, ELSET=P\n1,1,2,3,4\n2,2,5,6,3\n" + MATERIAL + \
            "*SHELL SECTION, ELSET=P, MATERIAL=STEEL\n0.1\n*STEP\n*STATIC\n" \
            "*BOUNDARY\n1,1,6\n4,1,6\n*CLOAD\n5,3,1\n*END STEP\n"
        for far, count in (((2, 0), 6), ((1, 1), 7)):  # in one plane, and folded at a right angle
            page = run_text(flat.format(*far))
            self.assertEqual(page["edges"]["n"], count)
            self.assertEqual(page["faces"]["element"]["n"], 2)
            # At the fold two parts of nodes 2 and 3, one a plate.
            parts = page.array(page["plate_parts"]["corner"])
            self.assertEqual(len(set(parts)), 6 if count == 6 else 8)
        # A fold is an edge from 20 degrees on, whichever way round the plates are.
        for degrees, count in ((15, 6), (25, 7), (40, 7)):
            turn = math.radians(degrees)
            deck = flat.format(1 + math.cos(turn), math.sin(turn))
            for own in (deck, deck.replace("2,2,5,6,3", "2,2,3,6,5")):
                self.assertEqual(run_text(own)["edges"]["n"], count, degrees)


def area_and_centroid(outline):
    total, moment = 0.0, [0.0, 0.0]
    for k, polygon in enumerate(outline):
        sign = 1 if k == 0 else -1
        twice, own = 0.0, [0.0, 0.0]
        for a, b in zip(polygon, polygon[1:] + polygon[:1]):
            part = a[0] * b[1] - a[1] * b[0]
            twice += part
            own = [own[i] + part * (a[i] + b[i]) / 6 for i in (0, 1)]
        turn = sign * math.copysign(1, twice)
        if k == 0:
            assert twice > 0, "the outer polygon runs from axis 1 to axis 2"
        total += sign * abs(twice) / 2
        moment = [moment[i] + turn * own[i] for i in (0, 1)]
    return total, [x / total for x in moment]


class Outlines(unittest.TestCase):
    def outline(self, card):
        text = "*NODE, NSET=ALL\n1,0,0,0\n2,3,0,0\n*ELEMENT, TYPE=B31, ELSET=B\n1,1,2\n" + MATERIAL
        text += f"*BEAM SECTION, ELSET=B, MATERIAL=STEEL, SECTION={card}\n0,1,0\n"
        page = run_text(text + "*STEP\n*STATIC\n*BOUNDARY\n1,1,6\n*CLOAD\n2,3,1\n*END STEP\n")
        section = page["sections"][0]
        return section["outline"], dict(map(tuple, section["rows"]))["area"]

    def check(self, card, area, centroid, holes=0, own=None):
        """`own`: the area that the section has, where polygons and formulas differ."""
        outline, of_section = self.outline(card)
        self.assertEqual(len(outline), 1 + holes, card)
        found, middle = area_and_centroid(outline)
        self.assertAlmostEqual(found / area, 1, 9, card)
        self.assertAlmostEqual(of_section / (own or area), 1, 9, card)
        for a, b in zip(middle, centroid):
            self.assertAlmostEqual(a, b, 9, card)

    def test_shapes(self):
        circle = 16 * math.sin(2 * math.pi / 32)  # of 32 corners on a unit circle
        hexagon = 1.5 * math.sqrt(3)
        inner = 0.2 - 2 * 0.02 / math.sqrt(3)
        self.check("RECT\n0.2,0.4", 0.08, (0, 0))
        self.check("CIRC\n0.1", circle * 0.01, (0, 0), own=math.pi * 0.01)
        self.check("CIRC\n0.2,0.4", circle * 0.02, (0, 0), own=math.pi * 0.02)
        self.check("PIPE\n0.1,0.02", circle * (0.01 - 0.0064), (0, 0), 1, own=math.pi * (0.01 - 0.0064))
        self.check("BOX\n0.2,0.4,0.01,0.02,0.01,0.02", 0.08 - 0.18 * 0.36, (0, 0), 1)
        # Walls of 0.03 and 0.01 at the ends of axis 1: the hollow lies 0.01 to the negative side.
        hollow = 0.16 * 0.36
        self.check("BOX\n0.2,0.4,0.03,0.02,0.01,0.02", 0.08 - hollow, (hollow * 0.01 / (0.08 - hollow), 0), 1)
        self.check("HEX\n0.2,0.02", hexagon * (0.04 - inner * inner), (0, 0), 1)
        self.check("I\n0.15,0.3,0.2,0.2,0.02,0.02,0.01", 2 * 0.2 * 0.02 + 0.26 * 0.01, (0, 0))
        # The node at the bottom: the centroid of an I of equal flanges is half the depth above it.
        self.check("I\n0,0.3,0.2,0.2,0.02,0.02,0.01", 2 * 0.2 * 0.02 + 0.26 * 0.01, (0, 0.15))
        low, web, high = (0.3 * 0.02, 0.01), (0.25 * 0.01, 0.145), (0.1 * 0.03, 0.285)
        area = low[0] + web[0] + high[0]
        self.check("I\n0,0.3,0.3,0.1,0.02,0.03,0.01", area, (0, sum(a * z for a, z in (low, web, high)) / area))
        area = 0.2 * 0.03 + 0.27 * 0.01
        self.check("T\n0.2,0.3,0,0.03,0.01", area, (0, (0.2 * 0.03 * 0.285 + 0.27 * 0.01 * 0.135) / area))
        legs = (0.2 * 0.02, 0.1 - 0.005, 0.0), (0.28 * 0.01, 0.0, 0.01 + 0.14)
        area = sum(a for a, _, _ in legs)
        self.check("L\n0.2,0.3,0.02,0.01", area,
                   (sum(a * x for a, x, _ in legs) / area, sum(a * y for a, _, y in legs) / area))

    def test_walls(self):
        # A channel: two corners are mitred, so that the polygon has the area of the strips. It is the rectangle from
        # -0.005 to 0.1 without that from 0.005 to 0.1.
        outer, inner = 0.105 * 0.21, 0.095 * 0.19
        self.check("ARBITRARY\n3,0.1,0,0,0,0.01\n0,0.2,0.01\n0.1,0.2,0.01", 0.4 * 0.01,
                   ((outer * 0.0475 - inner * 0.0525) / (outer - inner), 0.1))
        # A closed square tube.
        self.check("ARBITRARY\n4,0,0,0.1,0,0.01\n0.1,0.1,0.01\n0,0.1,0.01\n0,0,0.01", 0.4 * 0.01, (0.05, 0.05), 1)
        # A T: of the web the part within the flange counts once in the polygon, twice in the strips.
        flange, web = 0.2 * 0.02, (0.3 - 0.01) * 0.01
        self.check("ARBITRARY\n4,-0.1,0,0,0,0.02\n0.1,0,0.02\n0,0,0\n0,-0.3,0.01", flange + web,
                   (0, -web * (0.01 + 0.145) / (flange + web)), own=0.2 * 0.02 + 0.3 * 0.01)

    def test_offset(self):
        # CalculiX's OFFSET1=0.5: the line of nodes on the positive side face.
        outline, _ = self.outline("RECT, OFFSET1=0.5, OFFSET2=-0.25\n0.2,0.4")
        _, middle = area_and_centroid(outline)
        self.assertAlmostEqual(middle[0], -0.1, 12)
        self.assertAlmostEqual(middle[1], 0.1, 12)


PLATE = "*NODE, NSET=ALL\n1,0,0,0\n2,1,0,0\n3,1,1,0\n4,0,1,0\n*ELEMENT, TYPE=S4, ELSET=P\n1,1,2,3,4\n"
END = "*SHELL SECTION, ELSET=P, MATERIAL=STEEL\n0.1\n" \
    "*STEP\n*STATIC\n*BOUNDARY\n1,1,6\n4,1,6\n*CLOAD\n2,3,1\n*END STEP\n"


class ManySteps(unittest.TestCase):
    def test_an_envelope_of_300_steps(self):
        """A bar under a load of 1: the least of 300 factors is that of step 290, the largest that of step 280."""
        text = "*NODE\n1,0,0,0\n2,2,0,0\n*ELEMENT, TYPE=T3D2, ELSET=B\n1,1,2\n" + MATERIAL
        text += "*SOLID SECTION, ELSET=B, MATERIAL=STEEL\n1.\n*BOUNDARY\n1,1,3\n2,2,3\n"
        text += "*STEP, NAME=LOAD\n*STATIC\n*CLOAD\n2,1,2.1e11\n*END STEP\n"
        names = [f"C{i}" for i in range(1, 301)]
        factors = {"C280": 9, "C290": -9}
        for name in names:
            text += f"*COMBINATION, NAME={name}\nLOAD, {factors.get(name, 1)}\n"
        text += "*ENVELOPE, NAME=ALL\n" + "".join(f"{name}\n" for name in names)
        page = run_text(text)
        step = page["steps"][-1]
        self.assertEqual([c["name"] for c in step["combined"]], names)
        for of, name in (("max", "C280"), ("min", "C290")):
            field = next(f for f in step["fields"] if f["name"] == "displacement" and f["of"] == of)
            value, governs = page.array(field["array"])[1][0], page.array(field["governs"])[1][0]
            self.assertEqual(names[governs], name)
            self.assertAlmostEqual(value, 2 * factors[name], 5)  # F L / (E A)


class Texts(unittest.TestCase):
    def test_nothing_of_a_deck_runs(self):
        heading = '</script><script>alert("x")</script> & <!-- \u2028 \\ '
        plain = run_text(PLATE + MATERIAL + END)
        page = run_text(f"*HEADING\n{heading}\n" + PLATE + MATERIAL + END)
        self.assertEqual(page["title"].strip(), heading.strip())
        self.assertEqual(page.text.count("<script"), plain.text.count("<script"))
        self.assertEqual(page.text.count("</script"), plain.text.count("</script"))
        self.assertEqual(page.text.count("<!--"), plain.text.count("<!--"))
        self.assertNotIn("\u2028", page.text[page.text.index("finites-report") :])

    def test_bytes_that_are_no_text(self):
        page = run_text(b"*HEADING\nK\xf6ln \xff\xc3\n" + (PLATE + MATERIAL + END).encode())
        self.assertEqual(page["title"].replace("\ufffd", "?"), "K?ln ??")


class Files(unittest.TestCase):
    def refused(self, *options, deck=PLATE + MATERIAL + END, code=2):
        pathlib.Path("own.inp").write_text(deck, encoding="utf-8")
        before = set(os.listdir("."))
        done = subprocess.run([SOLVER, "own.inp", *options], capture_output=True, check=False)
        self.assertEqual(done.returncode, code, done.stderr)
        self.assertEqual({f for f in set(os.listdir(".")) - before}, set(), "something is left behind")
        return done.stderr.decode()

    def test_places(self):
        for old in pathlib.Path(".").glob("*.*"):
            old.unlink()
        self.assertIn("is the deck itself", self.refused("--report", "own.inp"))
        self.assertIn("wanted for two results", self.refused("--report", "x.csv", "--csv", "./x.csv"))
        two = PLATE + MATERIAL + END + END[END.index("*STEP") :]
        self.assertIn("wanted for two results", self.refused("--report", "x.2.csv", "--csv", "x.csv", deck=two))
        self.refused("--report", "no/such/place.html", code=1)

    def test_an_error_leaves_nothing(self):
        for old in pathlib.Path(".").glob("*.*"):
            old.unlink()
        free = (PLATE + MATERIAL + END).replace("*BOUNDARY\n1,1,6\n4,1,6\n", "")
        self.refused("--report", "page.html", deck=free, code=1)


def square(n):
    text = "*NODE, NSET=ALL\n" + "".join(
        f"{j * (n + 1) + i + 1},{10 * i / n:.9g},{10 * j / n:.9g},0\n" for j in range(n + 1) for i in range(n + 1))
    text += "*ELEMENT, TYPE=S4, ELSET=P\n"
    for j in range(n):
        for i in range(n):
            a = j * (n + 1) + i + 1
            text += f"{j * n + i + 1},{a},{a + 1},{a + n + 2},{a + n + 1}\n"
    edge = {k for i in range(n + 1) for k in (i + 1, n * (n + 1) + i + 1, i * (n + 1) + 1, i * (n + 1) + n + 1)}
    text += "*NSET, NSET=EDGE\n" + "".join(f"{k}\n" for k in sorted(edge))
    return text + MATERIAL + "*SHELL SECTION, ELSET=P, MATERIAL=STEEL\n0.1\n*STEP\n*STATIC\n*BOUNDARY\nEDGE,1,3\n" \
        f"*DLOAD\nP,P,1000\n*CLOAD\n{(n + 1) * (n + 1) // 3},3,5000\n*END STEP\n"


class Size(unittest.TestCase):
    def test_budget(self):
        """15 MB for 100,000 shells, by the element; and what rounding leaves of the digits."""
        count = 145 * 145
        page = run_text(square(145), "--csv", "csv.csv", "--quiet")
        per_element = sum(map(len, page.buffers)) / count
        self.assertLess(1e5 * per_element + 2e6, 15e6)
        self.assertEqual(len(page["left_out"]), 1)
        u = page.array(page["steps"][0]["displacement"])
        for own, row in zip(u, rows("csv", 1, 1)):
            for value, d in zip(own, DIRECTIONS):
                self.assertLessEqual(abs(value - float(row[d])), 2.0**-17 * abs(float(row[d])))


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        SOLVER, DECKS = os.path.abspath(SOLVER), DECKS.resolve()
        os.chdir(place)
        unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
