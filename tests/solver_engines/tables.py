"""Tables of two runs of the same deck, and how far they lie apart.

A value is compared by the largest value of its kind in the table: what is zero but for rounding has no scale of its own.
Kinds are displacements with rotations (times a length), forces with moments (by a length), and stresses.
"""
import csv
import re

import numpy

KINDS = {
    "displacement": (r"u[xyz]$|displacement_max$|sag$", r"r[xyz]$"),
    "force": (r"force_|(N|V[yz])(_min|_max)?$", r"moment_|(T|M[yz])(_min|_max)?$"),
    "stress": (r"s[xyz]{1,2}|first|second|third|von_mises", None),
}
# Where along a member the largest value stands, and an angle of principal axes, have no meaning where the value is the
# same all over; the set of a place is a name.
MEANINGLESS = re.compile(r"_at$|^angle_")


def read(path):
    with open(path, newline="", encoding="utf-8") as file:
        return list(csv.reader(file))


def columns(rows):
    """Columns of numbers by name; an empty field is not a number."""
    found = {}
    for at, name in enumerate(rows[0]):
        try:
            found[name] = numpy.array([float(row[at]) if row[at] else numpy.nan for row in rows[1:]])
        except ValueError:
            continue
    return found


def kind_of(name):
    """The kind of a column, and whether its values have a length in them that those of the kind do not."""
    for kind, (plain, turned) in KINDS.items():
        if re.match(plain, name):
            return kind, 0
        if turned and re.match(turned, name):
            return kind, -1 if kind == "displacement" else 1
    return name, 0


def size_of(found):
    """The largest extent of the nodes of a table, 1 where it has no coordinates."""
    extents = [numpy.nanmax(found[axis]) - numpy.nanmin(found[axis])
               for axis in "xyz" if axis in found and numpy.any(numpy.isfinite(found[axis]))]
    return max(extents, default=0.0) or 1.0


def apart(one, other):
    """The largest difference of two tables of the same form by the scale of its kind, and where it is."""
    if one[0] != other[0] or len(one) != len(other):
        return numpy.inf, "form of the table"
    first, second = columns(one), columns(other)
    length = size_of(first)
    scale, difference = {}, {}
    for name, values in first.items():
        if MEANINGLESS.search(name):
            continue
        if numpy.any(numpy.isfinite(values) != numpy.isfinite(second[name])):
            return numpy.inf, name
        kind, lengths = kind_of(name)
        by = length**-lengths
        largest = numpy.max(numpy.abs(values[numpy.isfinite(values)]), initial=0.0) * by
        scale[kind] = max(scale.get(kind, 0.0), largest)
        between = numpy.nanmax(numpy.abs(values - second[name]), initial=0.0) * by
        difference[name] = between, kind
    return max(((value / scale[kind] if value > 0 else 0.0, name) for name, (value, kind) in difference.items()),
               default=(0.0, ""))
