"""The grid of a VTU file, or of a PVTU file with its pieces, by what its points and cells are and not by their order:
a node by its number, a station by its member and the place along it, a cell by its element and part."""
import pathlib
import sys
import xml.etree.ElementTree as ET

import numpy as np

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "script"))
import vtu  # noqa: E402


def arrays(piece, kind):
    found = {}
    for array in piece.find(kind):
        components = int(array.get("NumberOfComponents", "1"))
        found[array.get("Name")] = vtu.numbers(array).reshape(-1, components)
    return found


def heads(parent):
    """The arrays of a file as it announces them, without values."""
    kept = ("type", "Name", "NumberOfComponents", "ComponentName0", "ComponentName1", "ComponentName2")
    return [tuple(array.get(name) for name in kept) for array in parent]


def point_keys(piece, data):
    places = arrays(piece, "Points")["Points"]
    own = [data[name] for name in ("node_id", "station_element", "station_distance") if name in data]
    return [tuple(np.round(np.concatenate([*(column[p] for column in own), places[p]]), 9))
            for p in range(len(places))]


def files_of(path):
    path = pathlib.Path(path)
    root = ET.parse(path).getroot()
    if root.get("type") == "UnstructuredGrid":
        return [path]
    return [path.parent / piece.get("Source") for piece in root.find("PUnstructuredGrid").findall("Piece")]


class Grid:
    def __init__(self, path):
        self.points, self.cells, self.joins, self.counts = {}, {}, {}, []
        self.equal = True  # what several pieces have of one node
        for file in files_of(path):
            self.add(ET.parse(file).getroot().find("UnstructuredGrid/Piece"))

    def add(self, piece):
        points, cells = arrays(piece, "PointData"), arrays(piece, "CellData")
        keys = point_keys(piece, points)
        assert len(keys) == int(piece.get("NumberOfPoints")), "points"
        for p, key in enumerate(keys):
            values = {name: array[p] for name, array in points.items()}
            first = self.points.setdefault(key, values)
            self.equal = self.equal and all(np.array_equal(first[name], value) for name, value in values.items())
        mesh = arrays(piece, "Cells")
        ends = mesh["offsets"].astype(int).ravel()
        assert len(ends) == int(piece.get("NumberOfCells")), "cells"
        self.counts.append(len(ends))
        for c, end in enumerate(ends):
            key = (cells["element_id"][c, 0], cells["element_part"][c, 0] if "element_part" in cells else 0)
            assert key not in self.cells, f"element {key} stands in two pieces"
            self.cells[key] = {name: array[c] for name, array in cells.items()}
            join = mesh["connectivity"].astype(int).ravel()[ends[c - 1] if c else 0:end]
            self.joins[key] = (mesh["types"][c, 0], tuple(keys[p] for p in join))


KINDS = (("motion", ("displacement", "rotation", "mode_")), ("strain", ("plastic",)),
         ("stress", ("stress", "mises")),
         ("force", ("force", "moment", "diagram", "reaction")))


def kind_of(name):
    if name in ("N", "Vy", "Vz", "T", "My", "Mz"):
        return "force"
    return next((kind for kind, words in KINDS if any(word in name for word in words)), name)


def apart(one, other):
    """The largest difference of an array, by the largest value of its kind, and which."""
    worst = (0.0, "")
    for items, others in ((one.points, other.points), (one.cells, other.cells)):
        assert set(items) == set(others), "other points or cells"
        keys = list(items)
        names = list(items[keys[0]])
        assert names == list(others[keys[0]]), "other arrays"
        here = {name: np.array([items[key][name] for key in keys]) for name in names}
        largest = {}
        for name in names:
            kind = kind_of(name)
            largest[kind] = max(largest.get(kind, 0.0), np.abs(here[name]).max())
        for name in names:
            if "principal" in name:
                continue  # of equal principal stresses the direction is any
            there = np.array([others[key][name] for key in keys])
            worst = max(worst, (np.abs(here[name] - there).max() / (largest[kind_of(name)] or 1), name))
    return worst
