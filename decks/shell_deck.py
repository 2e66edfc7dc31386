"""Meshes of shells and the decks that hold them: what the generators of shell problems share.

A mesh is made of quadrilaterals; in a deck of triangles each is cut in two, along alternating diagonals so that no
direction is preferred. A form is a tuple of element, formulation and, where it is given, a further parameter of the
section: ("S4", "THICK", "DRILLING=0").
"""

FORMS = [("S3", "THIN"), ("S4", "THIN"), ("S3", "THICK"), ("S4", "THICK")]


class Mesh:
    """Points, and cells of four indices into them with a parity by which they are cut. Nodes are numbered from 1."""

    def __init__(self):
        self.points, self.cells = [], []
        self._index = {}

    def point(self, xyz):
        """The index of a point; points that coincide within rounding are one."""
        key = tuple(round(c, 9) + 0.0 for c in xyz)
        if key not in self._index:
            self._index[key] = len(self.points)
            self.points.append(tuple(xyz))
        return self._index[key]

    def add_grid(self, along, across, place):
        """Cells of a unit square; place(u, v) takes it to the surface. Returns the indices by row."""
        rows = [[self.point(place(i / along, j / across)) for j in range(across + 1)] for i in range(along + 1)]
        for i in range(along):
            for j in range(across):
                corners = (rows[i][j], rows[i + 1][j], rows[i + 1][j + 1], rows[i][j + 1])
                self.cells.append((*corners, (i + j) % 2))
        return rows

    def where(self, condition):
        """The numbers of the nodes whose coordinates fulfil a condition."""
        return [n for n, xyz in enumerate(self.points, start=1) if condition(*xyz)]

    def at(self, *xyz):
        """The number of the node in a place."""
        return self._index[tuple(round(c, 9) + 0.0 for c in xyz)] + 1

    def elements(self, corners):
        """Corner numbers of the elements, three or four each."""
        for a, b, c, d, parity in self.cells:
            if corners == 4:
                cut = ((a, b, c, d),)
            else:
                cut = ((a, b, d), (b, c, d)) if parity else ((a, b, c), (a, c, d))
            for element in cut:
                yield [n + 1 for n in element]


def grid(along, across, place):
    mesh = Mesh()
    mesh.add_grid(along, across, place)
    return mesh


def numbers(values):
    return ", ".join(repr(float(v)) for v in values)


def node_set(name, members):
    """Empty sets are left out: a mesh that is too coarse has none of the nodes of a line inside."""
    if not members:
        return []
    rows = [", ".join(map(str, members[i : i + 16])) for i in range(0, len(members), 16)]
    return [f"*NSET, NSET={name}", *rows]


def mesh_lines(mesh, element):
    yield "*NODE, NSET=ALL"
    for number, xyz in enumerate(mesh.points, start=1):
        yield f"{number}, " + ", ".join(repr(round(c, 12) + 0.0) for c in xyz)
    yield f"*ELEMENT, TYPE={element}, ELSET=SKIN"
    for number, corners in enumerate(mesh.elements(int(element[-1])), start=1):
        yield f"{number}, " + ", ".join(map(str, corners))


def shell_deck(title, mesh, form, thickness, elastic, sets, boundary, steps, density=None, expansion=None):
    """The whole deck as a text. `sets`: lists of nodes by name; `boundary`: lines; `steps`: a list of lines a step."""
    element, formulation, *more = form
    lines = ["*HEADING", title, *mesh_lines(mesh, element)]
    for name, members in sets.items():
        lines += node_set(name, members)
    lines += ["*MATERIAL, NAME=M", "*ELASTIC", numbers(elastic)]
    if density is not None:
        lines += ["*DENSITY", numbers([density])]
    if expansion is not None:
        lines += ["*EXPANSION", numbers([expansion])]
    if element.startswith("M"):
        lines += ["*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=M", numbers([thickness])]
    else:
        options = ", ".join([f"FORMULATION={formulation}", *more])
        lines += [f"*SHELL SECTION, ELSET=SKIN, MATERIAL=M, {options}", numbers([thickness])]
    lines += ["*BOUNDARY", *boundary]
    for step in steps:
        # A path of yielding plates is no linear response.
        flag = "" if step[0].startswith("*ELASTOPLASTIC") else ", PERTURBATION"
        lines += ["*STEP" + flag, *step, "*END STEP"]
    return "\n".join(lines) + "\n"


def line_load(nodes, dof, per_length, lengths):
    """Nodal forces of a uniform load on a chain of nodes; lengths of its sides."""
    share = [0.0] * len(nodes)
    for i, length in enumerate(lengths):
        share[i] += per_length * length / 2
        share[i + 1] += per_length * length / 2
    return [f"{n}, {dof}, {value!r}" for n, value in zip(nodes, share)]
