#!/usr/bin/env python3
"""Writes the decks of this folder that a program makes.

    make.py [name ...]              writes those that are kept, all or the named ones, into this folder
    make.py --into DIR [name ...]   writes elsewhere, those too that are made at build time and not kept
    make.py --list                  names all and where they come from
    make.py --check                 exit status 1 where the decks here are not those that would be written

A deck comes from decks() of a module beside this file: its name and its text or lines. Decks written by hand lie here
too and say so in their heading. What sines, cosines and roots go into is rounded to twelve digits: their last bits
differ from one C library to the next, and the text must not. Other decks (plates.py, curved_shells.py, solids.py) are
made as they are wanted and not kept.
"""

import argparse
import pathlib

import frame_decks
import plastic_plates
import pushover_decks
import scordelis_lo
import shell_examples
import small_decks
import solid_examples

HERE = pathlib.Path(__file__).resolve().parent
MODULES = (small_decks, shell_examples, scordelis_lo, solid_examples, plastic_plates, frame_decks, pushover_decks)
AT_BUILD_TIME = {"scordelis_lo_tri", "square_plate"}  # large: CMake makes them in the folder `decks` of a build
BY_HAND = "** Written by hand."


def signed(lines, module):
    """The deck with a line below its title that says where it comes from."""
    below = next(i for i, line in enumerate(lines) if i > 0 and line.startswith("*"))
    return [*lines[:below], f"** Written by make.py with {module.__name__}.py: changes belong there.", *lines[below:]]


def all_decks():
    """Text and module of each, by name."""
    made = {}
    for module in MODULES:
        for name, deck in module.decks():
            lines = deck.splitlines() if isinstance(deck, str) else list(deck)
            if name in made:
                raise SystemExit(f"make.py: two decks of the name {name}")
            made[name] = ("\n".join(signed(lines, module)) + "\n", module)
    return made


def heading(text):
    """The lines before the second card: title and comments."""
    lines = []
    for line in text.splitlines()[1:]:
        if line.startswith("*") and not line.startswith("**"):
            break
        lines.append(line)
    return lines


def drift(made):
    """What is wrong with the decks of this folder, one sentence each."""
    there = {path.stem: path.read_bytes() for path in HERE.glob("*.inp")}
    for name, (text, module) in sorted(made.items()):
        if name in AT_BUILD_TIME:
            continue
        if name not in there:
            yield f"decks/{name}.inp is missing: run decks/make.py {name}"
        elif there[name] != text.encode():
            yield (f"decks/{name}.inp is not what {module.__name__}.py writes: run decks/make.py {name}, "
                   f"or change {module.__name__}.py")
    for name in sorted(there):
        if name in AT_BUILD_TIME:
            yield f"decks/{name}.inp is made at build time and not kept: remove it"
        elif name not in made and BY_HAND not in heading(there[name].decode()):
            yield f"decks/{name}.inp comes from no generator and its heading has no line '{BY_HAND}'"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("names", nargs="*", metavar="name")
    parser.add_argument("--into", type=pathlib.Path, metavar="DIR")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--check", action="store_true")
    wanted = parser.parse_args()
    made = all_decks()
    if wanted.list:
        for name, (_, module) in sorted(made.items()):
            print(f"{name:32} {module.__name__}.py{', made at build time' if name in AT_BUILD_TIME else ''}")
        return
    if wanted.check:
        found = list(drift(made))
        print("\n".join(found) or f"{len(made) - len(AT_BUILD_TIME)} decks are those that make.py writes")
        raise SystemExit(1 if found else 0)
    names = [name[:-4] if name.endswith(".inp") else name for name in wanted.names]
    for name in names:
        if name not in made:
            parser.error(f"no module makes {name}; --list names all")
        if name in AT_BUILD_TIME and wanted.into is None:
            parser.error(f"{name} is large and not kept here: give --into DIR")
    folder = wanted.into or HERE
    folder.mkdir(parents=True, exist_ok=True)
    for name in names or made:
        if wanted.into is not None or name not in AT_BUILD_TIME:
            (folder / f"{name}.inp").write_bytes(made[name][0].encode())


if __name__ == "__main__":
    main()
