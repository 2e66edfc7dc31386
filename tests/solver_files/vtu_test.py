#!/usr/bin/env python3
"""Opens the files for viewers with VTK: every array is finite, documented in solver/output/vtu_writer.h and the other
way round, has names for its components, and holds the numbers of the tables.

    vtu_test.py SOLVER
"""
import pathlib
import re
import sys
import tempfile
import unittest
import xml.etree.ElementTree

import numpy as np
from vtkmodules.util.numpy_support import vtk_to_numpy
from vtkmodules.vtkCommonCore import vtkStringArray
from vtkmodules.vtkIOXML import vtkXMLUnstructuredGridReader

import runs

SOLVER = pathlib.Path(sys.argv.pop()).resolve()
VECTOR = ["x", "y", "z"]


class Data:
    """Numbers, texts and names of components by the names of arrays."""

    def __init__(self, data):
        self.numbers, self.texts, self.components = {}, {}, {}
        for i in range(data.GetNumberOfArrays()):
            array = data.GetAbstractArray(i)
            name = array.GetName()
            if name in self.numbers or name in self.texts:
                raise AssertionError(f"{name} is there twice")
            if isinstance(array, vtkStringArray):
                self.texts[name] = [array.GetValue(k) for k in range(array.GetNumberOfValues())]
                continue
            self.numbers[name] = vtk_to_numpy(array)
            self.components[name] = [array.GetComponentName(k) for k in range(array.GetNumberOfComponents())]

    def names(self):
        return {*self.numbers, *self.texts}


class Grid:
    def __init__(self, path):
        reader, said = vtkXMLUnstructuredGridReader(), []
        for event in ("ErrorEvent", "WarningEvent"):
            reader.AddObserver(event, lambda _, what: said.append(what))
        reader.SetFileName(str(path))
        reader.Update()
        if said:
            raise AssertionError(f"VTK does not like {path}")
        self.grid = reader.GetOutput()
        self.points = Data(self.grid.GetPointData())
        self.cells = Data(self.grid.GetCellData())
        self.fields = Data(self.grid.GetFieldData())

    def of_nodes(self, name):
        """Values by the number of a node."""
        ids = self.points.numbers["node_id"]
        return {int(n): v for n, v in zip(ids, self.points.numbers[name]) if n > 0}


def documented():
    """Names of arrays by the part of a file, from the comment of vtu_writer.h."""
    parts, part = {"points": set(), "cells": set(), "fields": set()}, None
    for line in (runs.ROOT / "solver/output/vtu_writer.h").read_text().splitlines():
        if not line.startswith("//"):
            break
        if heading := re.match(r"// (Point|Cell|Field) data", line):
            part = {"Point": "points", "Cell": "cells", "Field": "fields"}[heading[1]]
        elif named := re.match(r"//   (\w+(?:, \w+)*)(?:  .*)?$", line):
            parts[part].update(named[1].split(", "))
    return parts


def documented_name(name):
    """That under which an array is documented; an envelope has four of each (vtu_envelope.h)."""
    name = re.sub(r"^mode_\d+", "mode_K", name)
    if not name.startswith("set_"):
        name = re.sub(r"_(min|max)(_case)?$", "", name)
    return "set_NAME" if name.startswith("set_") else name


class Solved(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.runs = runs.all_runs(SOLVER, cls.folder.name, ["--increments", "4"])
        cls.grids = [(run, step, Grid(path)) for run in cls.runs for step, path in run.grids()]

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_finite_with_names_of_components(self):
        for run, step, grid in self.grids:
            with self.subTest(deck=run.deck.stem, step=step):
                self.assertGreater(grid.grid.GetNumberOfCells(), 0)
                for data in (grid.points, grid.cells, grid.fields):
                    for name, values in data.numbers.items():
                        self.assertTrue(np.isfinite(values).all(), name)
                        names = data.components[name]
                        if len(names) > 1:
                            self.assertNotIn(None, names, name)
                            self.assertEqual(len(set(names)), len(names), name)
                for name in ("displacement", "axis_x", "end_force_1"):
                    for data in (grid.points, grid.cells):
                        self.assertEqual(data.components.get(name, VECTOR), VECTOR)

    def test_documented_and_the_other_way_round(self):
        wanted = documented()
        found = {part: set() for part in wanted}
        files = [grid for _, _, grid in self.grids]
        files += [Grid(path) for run in self.runs for path in run.folder.glob("*/*_1.vtu")]
        for grid in files:
            for part in found:
                found[part] |= {documented_name(name) for name in getattr(grid, part).names()}
        many = runs.of_text(SOLVER, self.folder.name, sheet(sets(45)))
        found["fields"] |= Grid(many.folder / "r.vtu").fields.names()
        for part, names in wanted.items():
            self.assertGreater(len(names), 5)
            self.assertEqual(found[part], names, part)

    def test_displacements_and_reactions_of_the_tables(self):
        seen = 0
        for run, step, grid in self.grids:
            with self.subTest(deck=run.deck.stem, step=step):
                rows = run.table("csv", step)
                if "ux" not in rows[0]:
                    continue
                moved, pushed = grid.of_nodes("displacement"), grid.of_nodes("reaction_force")
                self.assertEqual(set(moved), {int(row["node"]) for row in rows})
                for row in rows:
                    node = int(row["node"])
                    self.assertEqual([float(row[c]) for c in ("ux", "uy", "uz")], list(moved[node]))
                    self.assertEqual([float(row[f"force_{c}"]) for c in VECTOR], list(pushed[node]))
                seen += 1
        self.assertGreater(seen, 60)

    def test_section_forces_and_stresses_of_the_tables(self):
        stations, stresses = 0, 0
        for run, step, grid in self.grids:
            with self.subTest(deck=run.deck.stem, step=step):
                at = grid.points.numbers
                endings = ("_min", "_max") if grid.fields.texts["step_kind"] == ["envelope"] else ("",)
                rows = run.table("stations", step)
                if rows:
                    places = np.flatnonzero(at["station_element"] >= 0)
                    self.assertEqual(len(places), len(rows))
                    for p, row in zip(places, rows):
                        self.assertEqual(at["station_element"][p], int(row["element"]))
                        self.assertEqual(at["station_distance"][p], float(row["distance"]))
                        forces = [force + end for force in ("N", "Vy", "Vz", "T", "My", "Mz") for end in endings]
                        for name in forces:
                            if name in at:
                                self.assertEqual(at[name][p], float(row[name]))
                    stations += 1
                of_node = {}
                for row in run.table("stresses", step):
                    of_node.setdefault(int(row["node"]), []).append(row)
                faces = [f"von_mises_{face}{ending}" for face in ("top", "middle", "bottom") for ending in endings]
                for array in faces if of_node else ():
                    values = grid.of_nodes(f"part_{array}")
                    for node, parts in of_node.items():
                        if len(parts) == 1:
                            self.assertEqual(float(parts[0][array]), values[node])
                            stresses += 1
        self.assertGreater(stations, 20)
        self.assertGreater(stresses, 100)

    def test_field_data(self):
        kinds = set()
        for run, step, grid in self.grids:
            with self.subTest(deck=run.deck.stem, step=step):
                fields = grid.fields
                self.assertEqual(fields.numbers["step_number"], [step])
                self.assertEqual(fields.numbers["TimeValue"], [step])
                self.assertRegex(fields.texts["program"][0], r"^finites-solve \d+\.\d+\.\d+$")
                kinds.add(fields.texts["step_kind"][0])
                rows = run.table("csv", step)
                for column in ("frequency", "factor"):
                    if column in rows[0]:
                        name = "frequency" if column == "frequency" else "buckling_factor"
                        self.assertEqual([float(row[column]) for row in rows], list(fields.numbers[name]))
                if curve := run.table("curve", step):
                    self.assertEqual(fields.numbers["load_factor"], [float(curve[-1]["load_factor"])])
                else:
                    self.assertNotIn("load_factor", fields.numbers)
                for array, names in (("section", "section_names"), ("material", "material_names")):
                    values = grid.cells.numbers[array]
                    self.assertGreaterEqual(values.min(), -1)
                    self.assertLess(values.max(), len(fields.texts.get(names, [])))
        self.assertEqual(kinds, {"static", "P-delta", "perturbation", "frequency", "buckle", "pushover",
                                 "elastoplastic", "combination", "envelope"})

    def test_collections(self):
        found = {"steps": 0, "modes": 0}
        for run in self.runs:
            steps = run.grids()
            collection = run.folder / "r.pvd"
            with self.subTest(deck=run.deck.stem):
                self.assertEqual(collection.exists(), len(steps) > 1)
                if len(steps) > 1:
                    entries = entries_of(collection)
                    self.assertEqual([file for _, file in entries], [path for _, path in steps])
                    self.assertEqual([time for time, _ in entries], [float(number) for number, _ in steps])
                    found["steps"] += 1
                for number, path in steps:
                    grid = Grid(path)
                    of_modes = path.with_suffix(".modes.pvd")
                    looks = grid.fields.texts["step_kind"][0] in ("frequency", "buckle")
                    self.assertEqual(of_modes.exists(), looks)
                    if looks:
                        self.check_modes(run, number, grid, entries_of(of_modes))
                        found["modes"] += 1
        self.assertGreater(found["steps"], 5)
        self.assertGreater(found["modes"], 5)

    def test_increments(self):
        """States along the paths: the factors of the curve, the displacement of its node, as many open hinges."""
        seen = {"open_hinges": 0, "equivalent_plastic_strain": 0}
        for run, step, whole in self.grids:
            with self.subTest(deck=run.deck.stem, step=step):
                curve = run.table("curve", step)
                path = dict(run.grids())[step].with_suffix(".increments.pvd")
                self.assertEqual(path.exists(), bool(curve))
                if not curve:
                    continue
                entries = entries_of(path)
                self.assertTrue(2 <= len(entries) <= 5, len(entries))  # 4, and the last
                by_factor = {}
                for row in curve:
                    by_factor.setdefault(float(row["load_factor"]), []).append(row)
                for k, (time, file) in enumerate(entries):
                    grid = Grid(file)
                    factor = grid.fields.numbers["load_factor"][0]
                    self.assertIn(time, (factor, k + 1))
                    rows = by_factor[factor]
                    moved = grid.of_nodes("displacement").get(int(rows[0]["node"]))
                    if moved is not None and rows[0]["direction"] in ("ux", "uy", "uz"):
                        value = moved["xyz".index(rows[0]["direction"][1])]
                        self.assertTrue(any(abs(value - float(row["displacement"])) <= 1e-6 * abs(value) + 1e-30
                                            for row in rows))
                    if "open_hinges" in grid.cells.numbers:
                        ends = sum(bin(value).count("1") for value in grid.cells.numbers["open_hinges"])
                        self.assertEqual(ends, int(rows[-1]["open_hinges"]))
                        seen["open_hinges"] += ends > 0
                    strain = grid.cells.numbers.get("equivalent_plastic_strain")
                    seen["equivalent_plastic_strain"] += strain is not None and strain.max() > 0
                first, last = Grid(entries[0][1]), Grid(entries[-1][1])
                np.testing.assert_allclose(last.points.numbers["displacement"],
                                           whole.points.numbers["displacement"][:last.grid.GetNumberOfPoints()],
                                           atol=1e-6 * abs(last.points.numbers["displacement"]).max())
                self.assertLess(first.fields.numbers["load_factor"], last.fields.numbers["load_factor"])
        self.assertGreater(min(seen.values()), 3, seen)

    def check_modes(self, run, step, whole, entries):
        rows = run.table("csv", step)
        self.assertEqual(len(entries), len(rows))
        values = [float(row.get("frequency", row.get("factor"))) for row in rows]
        grows = all(a < b for a, b in zip(values, values[1:]))
        self.assertEqual([time for time, _ in entries], values if grows else list(range(1, len(rows) + 1)))
        for k, (time, path) in enumerate(entries):
            grid = Grid(path)
            self.assertEqual(grid.fields.numbers["TimeValue"], [time])
            self.assertEqual(grid.fields.numbers["mode"], [k + 1])
            shape = grid.points.numbers["displacement"]
            np.testing.assert_array_equal(shape, whole.points.numbers[f"mode_{k + 1}"])
            self.assertLessEqual(np.linalg.norm(shape, axis=1).max(), 1 + 1e-12)


def entries_of(collection):
    """(time, file) of a .pvd; times grow."""
    root = xml.etree.ElementTree.parse(collection).getroot()
    assert root.get("type") == "Collection"
    entries = [(float(one.get("timestep")), collection.parent / one.get("file")) for one in root.iter("DataSet")]
    assert all(a < b for (a, _), (b, _) in zip(entries, entries[1:])), collection
    assert all(path.exists() for _, path in entries), collection
    return entries


def sheet(more=""):
    """Two squares in tension of materials and sections of their own, and a bar."""
    return f"""*NODE
1, 0, 0, 0
2, 1, 0, 0
3, 2, 0, 0
4, 0, 1, 0
5, 1, 1, 0
6, 2, 1, 0
*ELEMENT, TYPE=M3D4, ELSET=LEFT
11, 1, 2, 5, 4
*ELEMENT, TYPE=M3D4, ELSET=RIGHT
12, 2, 3, 6, 5
*ELEMENT, TYPE=T3D2, ELSET=BAR
20, 4, 5
*MATERIAL, NAME=SOFT
*ELASTIC
1000., 0.
*MATERIAL, NAME=STIFF
*ELASTIC
2000., 0.
*MEMBRANE SECTION, ELSET=RIGHT, MATERIAL=STIFF
0.25
*MEMBRANE SECTION, ELSET=LEFT, MATERIAL=SOFT
0.5
*SOLID SECTION, ELSET=BAR, MATERIAL=STIFF
0.125
*NSET, NSET=HELD
1, 4
{more}*BOUNDARY
HELD, 1, 3
2, 3
3, 3
5, 3
6, 3
*STEP, NAME=PULL
*STATIC
*CLOAD
3, 1, 1.
6, 1, 1.
*END STEP
"""


def sets(count):
    return "".join(f"*NSET, NSET=N{k}\n{k % 6 + 1}\n" for k in range(1, count + 1))


class ModelArrays(unittest.TestCase):
    """What the deck of sheet() says, by element and node."""

    def grid(self, more=""):
        with tempfile.TemporaryDirectory() as folder:
            run = runs.of_text(SOLVER, folder, sheet(more))
            self.assertEqual(run.status, 0, run.errors)
            return Grid(run.folder / "r.vtu"), run

    def test_sections_materials_thickness(self):
        grid, _ = self.grid()
        cells, texts = grid.cells.numbers, grid.fields.texts
        self.assertEqual(list(cells["element_id"]), [11, 12, 20])
        self.assertEqual([texts["section_names"][k] for k in cells["section"]],
                         ["*MEMBRANE SECTION, ELSET=LEFT", "*MEMBRANE SECTION, ELSET=RIGHT",
                          "*SOLID SECTION, ELSET=BAR"])
        self.assertEqual([texts["material_names"][k] for k in cells["material"]], ["SOFT", "STIFF", "STIFF"])
        self.assertEqual(list(cells["thickness"]), [0.5, 0.25, 0])
        self.assertEqual(texts["step_name"], ["PULL"])

    def test_sets(self):
        grid, _ = self.grid("*ELSET, ELSET=ENDS\n12, 20\n")
        ids = grid.points.numbers["node_id"]
        held = grid.points.numbers["set_HELD"]
        self.assertEqual(sorted(ids[held == 1]), [1, 4])
        self.assertEqual(held.sum(), 2)
        self.assertEqual(list(grid.cells.numbers["set_ENDS"]), [0, 1, 1])
        self.assertEqual(list(grid.cells.numbers["set_LEFT"]), [1, 0, 0])
        self.assertEqual(held.dtype.itemsize, 1)

    def test_names_of_sets_that_are_not_safe(self):
        grid, _ = self.grid('*NSET, NSET="A B"\n1\n*NSET, NSET=A_B\n2\n*NSET, NSET="A/B"\n3\n')
        ids = grid.points.numbers["node_id"]
        for name, node in (("set_A_B", 1), ("set_A_B_2", 2), ("set_A_B_3", 3)):
            self.assertEqual(list(ids[grid.points.numbers[name] == 1]), [node])

    def test_many_sets(self):
        grid, run = self.grid(sets(45))
        self.assertIn("set_N39", grid.points.numbers)
        self.assertNotIn("set_N40", grid.points.numbers)
        self.assertEqual(grid.fields.texts["sets_left_out"], [f"*NSET N{k}" for k in range(40, 46)])
        self.assertIn("*NSET N40", run.output)

    def test_text_form(self):
        with tempfile.TemporaryDirectory() as folder:
            text = Grid(runs.of_text(SOLVER, folder, sheet(), ["--ascii"]).folder / "r.vtu")
            bits = Grid(runs.of_text(SOLVER, folder, sheet()).folder / "r.vtu")
            for part in ("points", "cells", "fields"):
                one, other = getattr(text, part), getattr(bits, part)
                self.assertEqual(one.texts, other.texts)
                for name, values in other.numbers.items():
                    np.testing.assert_array_equal(one.numbers[name], values, name)


class Failures(unittest.TestCase):
    def test_collection_of_the_steps_that_were_solved(self):
        with tempfile.TemporaryDirectory() as folder:
            mechanism = "*STEP\n*STATIC\n*BOUNDARY, OP=NEW\n3, 3\n*CLOAD\n3, 1, 1.\n*END STEP\n"
            run = runs.of_text(SOLVER, folder, sheet() + mechanism)
            if run.status == 0:
                self.skipTest("the second step stands")
            self.assertEqual([path.name for _, path in entries_of(run.folder / "r.pvd")], ["r.1.vtu"])

    def test_place_of_another_result(self):
        with tempfile.TemporaryDirectory() as folder:
            second = "*STEP\n*STATIC\n*CLOAD\n3, 1, 1.\n*END STEP\n"
            run = runs.of_text(SOLVER, folder, sheet() + second, ["--section-points", "r.pvd"], ["-o", "r.vtu"])
            self.assertEqual(run.status, 2)
            self.assertIn("r.pvd: is wanted for two results", run.errors)


if __name__ == "__main__":
    unittest.main()
