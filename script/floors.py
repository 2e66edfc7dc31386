#!/usr/bin/env python3
"""The floors of the sources: an include points downwards, never up, never sideways, and never round in a circle.

Each tree has a list of floors, from the ground up. A floor is a list of rooms that stand side by side: folders, or
single files where a folder has parts on several floors. A file may include what lies in its own room or on a floor
below its own.
"""
import os
import pathlib
import re
import sys

LIBRARY = [
    ["finites"],
    ["common"],
    ["plate_results"],
    ["plate_material", "frame_elements", "hinges", "solids"],
    ["shells/common"],
    ["shells/triangle", "shells/quadrilateral"],
    [f"shells/{shape}/{theory}" for shape in ("triangle", "quadrilateral") for theory in ("thin", "thick")],
    ["shells/plastic"],
    ["shells/engines"],
    ["plain_calls/lanes"],
    ["element_calls"],
    ["plain_calls", "plain_calls/checks"],
]
SOLVER = [
    ["finites"],
    ["model"],
    ["elements"],
    ["deck", "system"],
    ["analyses"],
    ["pushover", "elastoplastic"],
    ["engines/embedded"],
    ["output"],
    ["options.h"],
    ["steps"],
    ["report_page"],
    ["."],
    ["engines/petsc"],
]
TREES = {"src": LIBRARY, "solver": SOLVER}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def floors_of(table):
    return {room: floor for floor, rooms in enumerate(table) for room in rooms}


def room_of(path, floors):
    """The innermost room that holds a path, which is relative to its tree."""
    parts = pathlib.PurePath(path).parts
    for length in range(len(parts), 0, -1):
        room = "/".join(parts[:length])
        if room in floors:
            return room
    return "." if "." in floors else None


def includes_of(tree):
    """Every include between files of a tree, or from it into the contract: (file, included), relative to the tree."""
    files = sorted(p for p in tree.rglob("*") if p.suffix in (".h", ".hpp", ".cpp"))
    for path in files:
        for name in INCLUDE.findall(path.read_text()):
            if ".." in name or not (tree / name).exists():
                beside = pathlib.Path(os.path.normpath(path.parent / name))
                if beside.exists() and tree in beside.parents:
                    name = beside.relative_to(tree).as_posix()
            if (tree / name).exists() or name.startswith("finites/"):
                yield path.relative_to(tree).as_posix(), name


def unknown_folders(tree, table):
    """Folders with sources that are no room: they would pass for a part of the room around them."""
    rooms = floors_of(table)
    for folder in sorted({p.parent for p in tree.rglob("*") if p.suffix in (".h", ".hpp", ".cpp")}):
        name = folder.relative_to(tree).as_posix()
        if name not in rooms:
            yield f"{folder} is no room of script/floors.py: give it a floor"


def breaches(tree, table):
    floors = floors_of(table)
    for path, name in includes_of(tree):
        here, there = room_of(path, floors), room_of(name, floors)
        if here is None or there is None:
            yield f"{tree}/{path}: {path if here is None else name} is on no floor of script/floors.py"
        elif here != there and floors[there] >= floors[here]:
            way = "sideways" if floors[there] == floors[here] else "up"
            yield f"{tree}/{path} includes {name}, which is {way}: from {here} to {there}"


def circles(tree):
    """Files that include themselves by way of others."""
    graph = {}
    for path, name in includes_of(tree):
        graph.setdefault(path, []).append(name)
    done, way = set(), []

    def visit(path):
        if path in way:
            yield " -> ".join(way[way.index(path):] + [path])
            return
        if path in done:
            return
        way.append(path)
        for name in graph.get(path, []):
            yield from visit(name)
        way.pop()
        done.add(path)

    for path in sorted(graph):
        yield from visit(path)


def lost_mirrors(tree):
    """Lines "Mirror: <file>." that name no file of the tree."""
    for path in sorted(tree.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        for name in re.findall(r"^// Mirror: (\S+)\.$", path.read_text(), re.MULTILINE):
            if not (tree / name).exists():
                yield f"{path}: its mirror {name} does not exist"


def main():
    bad = []
    for name, table in TREES.items():
        tree = pathlib.Path(name)
        bad += unknown_folders(tree, table)
        bad += breaches(tree, table)
        bad += lost_mirrors(tree)
        bad += [f"{tree}: a circle of includes: {circle}" for circle in circles(tree)]
    print("\n".join(bad), end="\n" if bad else "")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
