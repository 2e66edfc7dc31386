#!/usr/bin/python3
"""Limit analysis of a frame with plastic hinges by linear programming, from the text of its deck alone.

    limit_analysis.py deck.inp ...            prints the bounds of the collapse factor of each
    limit_analysis.py --check deck.inp ...    exit status 1 where the heading of a deck tells others:
                                              "limit_analysis.py: 1.5 to 1.6"

By the static theorem the collapse factor is the largest lambda for which forces exist that are in equilibrium with
lambda times the loads and lie within the yield surface at both ends of every member (Charnes, Lemke and Zienkiewicz,
1959). Of a straight member that carries no load between its ends six forces are free: N, T and two moments at each
end. They and lambda are the unknowns; each free degree of freedom gives an equation, each face of a yield surface an
inequality. The elastic constants do not enter.

The programme's optimum is the upper bound: its faces hold the whole yield surface. Forces in equilibrium that lie
within all surfaces are the lower one. Surfaces with flat faces are the programme's own, and both bounds agree. The
smooth surface is cut by its tangent planes where the forces of the last programme leave it: on the ray to them, and on
the way to them from the best forces within, which then move as far as they can. This goes on until the optimum is a
millionth above those forces. The surface is a little concave in places, where tangent planes cut off as much as 0.7
per cent of it: for the upper bound the planes move out until the whole surface lies behind them.

Needs python3-scipy. Reads decks of B31 and B33 with *BEAM GENERAL SECTION, *PLASTIC HINGE, *BOUNDARY and one step with
*CLOAD; anything that it would have to leave out is an error.
"""

import collections
import itertools
import re
import sys

import numpy as np
from scipy.optimize import linprog
from scipy.sparse import coo_matrix

HELD = {"ENCASTRE": range(1, 7), "PINNED": range(1, 4)}
LEFT_OUT = {"*HEADING", "*MATERIAL", "*ELASTIC", "*PUSHOVER", "*END STEP"}
CLOSE = 1e-6  # the optimum over tangent planes and the forces within
GRID = 1e-5  # what a grid of points may miss of a smooth surface
TOLD = 2e-5  # what a heading may round
FREE = 6  # unknown forces of a member: N, T, My and Mz at end 1, My and Mz at end 2


def cards(text):
    """Keyword, parameters and data lines of each card."""
    found = []
    for line in text.splitlines():
        if line.startswith("**") or not line.strip():
            continue
        fields = [field.strip().upper() for field in line.split(",")]
        if line.startswith("*"):
            found.append((fields[0], dict(field.partition("=")[::2] for field in fields[1:]), []))
        else:
            found[-1][2].append(fields)
    return found


class Frame:
    def __init__(self, text):
        self.nodes, self.sets = {}, collections.defaultdict(list)
        self.members, self.n1, self.hinges = [], {}, {}  # a member: its set, its two nodes
        self.held, self.load = set(), collections.defaultdict(float)
        for keyword, parameters, lines in cards(text):
            self.read(keyword, parameters, lines)

    def read(self, keyword, parameters, lines):
        if keyword == "*NODE":
            for number, *xyz in lines:
                self.nodes[number] = np.array([float(c) for c in xyz])
                self.sets[parameters.get("NSET")].append(number)
        elif keyword == "*ELEMENT" and parameters["TYPE"] in ("B31", "B33"):
            self.members += [(parameters["ELSET"], *ends) for _, *ends in lines]
        elif keyword == "*BEAM GENERAL SECTION":
            self.n1[parameters["ELSET"]] = np.array([float(c) for c in lines[1]])
        elif keyword == "*PLASTIC HINGE":
            self.hinges[parameters["ELSET"]] = (parameters["CURVE"], parameters.get("FORCES", "N-M1-M2"),
                                                np.array([float(c) for c in lines[0]]))
        elif keyword == "*BOUNDARY":
            for name, first, *last in lines:
                dofs = HELD[first] if first in HELD else range(int(first), int((last or [first])[0]) + 1)
                self.held |= {(number, dof) for number in self.sets.get(name, [name]) for dof in dofs}
        elif keyword == "*STEP":
            if self.load or "PDELTA" in parameters:
                raise SystemExit("limit analysis knows one step of first order")
        elif keyword == "*CLOAD":
            for name, dof, value in lines:
                for number in self.sets.get(name, [name]):
                    self.load[number, int(dof)] += float(value)
        elif keyword not in LEFT_OUT:
            raise SystemExit(f"{keyword}: this card has no place in a limit analysis")

    def equilibrium(self):
        """A matrix and a vector: A q = lambda b at the free degrees of freedom. q are the free forces of the members.

        A node exerts F1, C1 on end 1 and F2, C2 on end 2, in local axes: F2 = (N, -(Mz1 + Mz2)/L, (My1 + My2)/L) = -F1,
        C1 = (-T, My1, Mz1), C2 = (T, My2, Mz2). N is positive in tension."""
        row = {}
        for number in self.nodes:
            for dof in range(1, 7):
                if (number, dof) not in self.held:
                    row[number, dof] = len(row)
        A = np.zeros((len(row), FREE * len(self.members)))
        for m, (name, *ends) in enumerate(self.members):
            along = self.nodes[ends[1]] - self.nodes[ends[0]]
            length = np.linalg.norm(along)
            x = along / length
            y = self.n1[name] - x * (x @ self.n1[name])
            y /= np.linalg.norm(y)
            axes = np.array([x, y, np.cross(x, y)]).T
            force = np.array([[1, 0, 0, 0, 0, 0], [0, 0, 0, -1 / length, 0, -1 / length],
                              [0, 0, 1 / length, 0, 1 / length, 0]])
            couples = np.zeros((2, 3, FREE))
            couples[0, [0, 1, 2], [1, 2, 3]] = -1, 1, 1
            couples[1, [0, 1, 2], [1, 4, 5]] = 1, 1, 1
            for end, sign in enumerate((-1, 1)):
                exerted = np.vstack([sign * axes @ force, axes @ couples[end]])
                for dof in range(1, 7):
                    if (ends[end], dof) in row:
                        A[row[ends[end], dof], FREE * m : FREE * (m + 1)] += exerted[dof - 1]
        b = np.zeros(len(row))
        for place, value in self.load.items():
            if place in row:
                b[row[place]] += value
        return A, b

    def ends(self):
        """Of each end with a hinge: curve, forces, capacities, where P, My, Mz stand among the unknowns."""
        for m, (name, *_) in enumerate(self.members):
            if name in self.hinges:
                for end in (0, 1):
                    yield (*self.hinges[name], [FREE * m, FREE * m + 2 + 2 * end, FREE * m + 3 + 2 * end])


def faces(curve, forces):
    """Outward normals of a surface with flat faces, scaled so that normal . (p, my, mz) <= 1 within."""
    counts = ["N" in forces, "M1" in forces, "M2" in forces]
    if curve == "SINGLE":
        weights = [[1.0, 1.0, 1.0]]
    elif curve == "LINEAR":
        weights = [[1.0, 8 / 9, 8 / 9], [0.5, 1.0, 1.0]]
    elif forces != "N-M1-M2":
        raise SystemExit(f"CURVE={curve}, FORCES={forces}: the smooth surface is known for all three forces")
    else:  # it lies within the cube
        return [sign * axis for axis in np.eye(3) for sign in (1, -1)]
    return [np.array(signs) * np.array(w) * counts for w in weights for signs in itertools.product((1, -1), repeat=3)]


def orbison(s):
    """Value and gradient of the surface of Orbison, McGuire and Abel (1982); My is about the weak axis."""
    p, y, z = s
    value = 1.15 * p**2 + z**2 + y**4 + 3.67 * p**2 * z**2 + 3 * p**6 * y**2 + 4.65 * z**4 * y**2
    gradient = np.array([2.3 * p + 7.34 * p * z**2 + 18 * p**5 * y**2, 4 * y**3 + 6 * p**6 * y + 9.3 * z**4 * y,
                         2 * z + 7.34 * p**2 * z + 18.6 * z**3 * y**2])
    return value, gradient


def to_surface(inside, outside):
    """The point of the smooth surface between a point inside and one outside."""
    low, high = 0.0, 1.0
    for _ in range(60):
        middle = (low + high) / 2
        low, high = (middle, high) if orbison(inside + middle * (outside - inside))[0] < 1 else (low, middle)
    return low, inside + low * (outside - inside)


def smooth_surface(angles):
    """Points by two angles, in the octant where all forces are positive."""
    first, second = (grid.ravel() for grid in np.meshgrid(angles, angles))
    ray = np.array([np.cos(first) * np.cos(second), np.sin(first) * np.cos(second), np.sin(second)])
    low, high = np.zeros(len(first)), np.full(len(first), 3.0)
    for _ in range(50):
        middle = (low + high) / 2
        within = orbison(middle * ray)[0] < 1
        low, high = np.where(within, middle, low), np.where(within, high, middle)
    return high * ray


class Programme:
    def __init__(self, frame):
        self.A, self.b = frame.equilibrium()
        self.ends = list(frame.ends())
        self.rows = []  # of the inequalities: places, normals, capacities: normal . s <= 1
        for curve, forces, capacities, places in self.ends:
            self.rows += [(places, normal, capacities) for normal in faces(curve, forces)]
        self.flat = len(self.rows)

    def solve(self, limits):
        """Forces and lambda. The programme sees shares of the capacities: its tolerances are absolute."""
        unknowns = self.A.shape[1]
        scale = np.ones(unknowns)
        for _, _, capacities, places in self.ends:
            scale[places] = capacities
        equations = np.hstack([self.A * scale, -self.b[:, None]])
        equations /= np.abs(equations).max(axis=1, keepdims=True)
        data = [(r, place, c) for r, (places, normal, _) in enumerate(self.rows)
                for place, c in zip(places, normal) if c]
        r, c, v = zip(*data)
        inequalities = coo_matrix((v, (r, c)), shape=(len(self.rows), unknowns + 1)).tocsr()
        cost = np.zeros(unknowns + 1)
        cost[-1] = -1
        found = linprog(cost, inequalities, limits, equations, np.zeros(len(self.b)), (None, None), method="highs-ds",
                        options={"primal_feasibility_tolerance": 1e-10, "dual_feasibility_tolerance": 1e-10})
        if found.status != 0:
            raise SystemExit(f"the programme has no optimum: {found.message}")
        return scale * found.x[:-1], found.x[-1]

    def tangent_optimum(self):
        return self.solve(np.ones(len(self.rows)))

    def upper_bound(self):
        """With planes behind which the whole smooth surface lies, as a grid of its points tells up to a share of
        GRID."""
        limits = np.ones(len(self.rows))
        if len(self.rows) > self.flat:
            points = smooth_surface(np.linspace(0, np.pi / 2, 400))
            limits[self.flat :] = [(np.abs(normal) @ points).max() * (1 + GRID)
                                   for _, normal, _ in self.rows[self.flat :]]
        return self.solve(limits)[1]

    def cut(self, inner, forces):
        """How far the way from forces within all surfaces to others stays within; tangent planes where it leaves the
        smooth ones, and where the ray from the unloaded state does."""
        share = 1.0
        for curve, _, capacities, places in self.ends:
            there = forces[places] / capacities
            if curve != "ORBISON" or orbison(there)[0] <= 1:
                continue
            part, point = to_surface(inner[places] / capacities, there)
            share = min(share, part)
            for touched in (point, to_surface(np.zeros(3), there)[1]):
                gradient = orbison(touched)[1]
                self.rows.append((places, gradient / (gradient @ touched), capacities))
        return share

    def outside(self, forces):
        """The largest factor by which an end lies outside a smooth surface."""
        rays = [forces[places] / capacities for curve, _, capacities, places in self.ends if curve == "ORBISON"]
        return max([1.0, *(1 / to_surface(np.zeros(3), 2 * s)[0] / 2 for s in rays if orbison(s)[0] > 1)])


def limit_factor(text):
    """The bounds of the collapse factor of a deck."""
    programme = Programme(Frame(text))
    best, lower, upper = np.zeros(programme.A.shape[1]), 0.0, np.inf
    for _ in range(100):
        forces, upper = programme.tangent_optimum()
        inside = 1 - min(0.1, (upper - lower) / upper)  # away from the surfaces, so that the way leads on
        share = programme.cut(inside * best, forces)
        reached = inside * lower + share * (upper - inside * lower)
        if reached > lower:
            best, lower = inside * best + share * (forces - inside * best), reached
        if upper - lower <= CLOSE * upper:
            break
    return lower / programme.outside(best), programme.upper_bound()


def told(text):
    """The bounds in the heading of a deck."""
    found = re.search(r"limit_analysis.py: ([0-9.]+) to ([0-9.]+)", text)
    return tuple(map(float, found.groups())) if found else None


def main():
    check = sys.argv[1:2] == ["--check"]
    decks = sys.argv[2:] if check else sys.argv[1:]
    if not decks:
        raise SystemExit(__doc__)
    wrong = 0
    for deck in decks:
        with open(deck, encoding="utf-8") as file:
            text = file.read()
        bounds = limit_factor(text)
        print(deck, "{:.8f} to {:.8f}".format(*bounds))
        if check and not (told(text) and np.allclose(told(text), bounds, rtol=TOLD, atol=0)):
            print(f"{deck}: the heading tells {told(text)}")
            wrong = 1
    raise SystemExit(wrong)


if __name__ == "__main__":
    main()
