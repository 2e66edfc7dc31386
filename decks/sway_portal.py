#!/usr/bin/python3
"""The leaning portal frame pushed to collapse, once more: columns and beam by the stability functions of a bar under
thrust (Livesley and Chandler, 1956), plastic hinges at their six ends, no mesh and nothing of the solver.

At a given sway of the beam the unknowns are the load factor, the displacements of both corners and the flow of each
hinge. A hinge that flows stands on its surface, p + 8/9 m = 1 for p >= 0.2 and p/2 + m = 1 below, and flows along its
normal; one that does not lies inside. The load factor of collapse is the largest over all sways.
"""

import re
import sys
from math import cos, sin, sqrt
from pathlib import Path

import numpy as np
from scipy.optimize import least_squares, minimize_scalar

from pushover_decks import COLUMN as COLUMN_DATA
from pushover_decks import HEIGHT, LEAN, SIDEWAYS, THRUST, TOP, YIELD
from pushover_decks import WIDTH as SPAN
from pushover_decks import YOUNG as E

COLUMN, BEAM = ({"A": data[0], "I": data[1], "Z": data[4]} for data in (COLUMN_DATA, TOP))


def end_moments(member, length, thrust, near, far):
    """Moments at both ends of a bar whose ends turn by near and far against its chord."""
    stiffness, square = E * member["I"] / length, thrust * length**2 / (E * member["I"])
    if abs(square) < 1e-4:
        s, carried = 4 - 2 * square / 15, 2 + square / 30
    else:
        f = sqrt(abs(square))
        if square > 0:
            d = 2 - 2 * cos(f) - f * sin(f)
            s, carried = f * (sin(f) - f * cos(f)) / d, f * (f - sin(f)) / d
        else:
            d = 2 - 2 * np.cosh(f) + f * np.sinh(f)
            s, carried = f * (f * np.cosh(f) - np.sinh(f)) / d, f * (np.sinh(f) - f) / d
    return stiffness * (s * near + carried * far), stiffness * (carried * near + s * far)


def surface(member, thrust, moment):
    """Value of the yield surface and its normal: by the thrust, by the moment."""
    axial, bending = member["A"] * YIELD, member["Z"] * YIELD
    p, m = abs(thrust) / axial, abs(moment) / bending
    a, b = (1.0, 8 / 9) if p >= 0.2 else (0.5, 1.0)
    return a * p + b * m - 1, a * np.sign(thrust) / axial, b * np.sign(moment) / bending


def residual(x, sway, plastic=True):
    """Equilibrium of both corners and the conditions of the hinges. x: load factor, displacements (sideways of the
    right corner; downwards and rotations, anticlockwise, of both), thrusts, flows of the hinges."""
    factor, right = x[0], sway + x[1]
    down, turn, thrust, flow = x[2:4], x[4:6], x[6:9], x[9:15] if plastic else np.zeros(6)
    bars, conditions, result = [], [], []
    for k, sideways in enumerate((sway, right)):  # columns from the foot up; a chord that leans right turns clockwise
        bars.append((COLUMN, HEIGHT, thrust[k], 0.0, turn[k], -sideways / HEIGHT, down[k]))
    bars.append((BEAM, SPAN, thrust[2], turn[0], turn[1], -(down[1] - down[0]) / SPAN, sway - right))
    ends = []
    for i, (member, length, P, near, far, chord, shorter) in enumerate(bars):
        z = flow[2 * i:2 * i + 2]
        # A hinge turns the bar's end against its node by the flow; the moment it has without it tells the sense.
        elastic = end_moments(member, length, P, near - chord, far - chord)
        normals = [surface(member, P, m) for m in elastic]
        moments = end_moments(member, length, P, near - chord - z[0] * normals[0][2],
                              far - chord - z[1] * normals[1][2])
        plastic_shortening = sum(n[1] * flow_of for n, flow_of in zip(normals, z))
        result.append((shorter - plastic_shortening) * E * member["A"] / length / THRUST - P / THRUST)
        ends.append(moments)
        for m, flow_of in zip(moments, z):
            inside, turned = -surface(member, P, m)[0], flow_of / (1e-3 * member["Z"] * YIELD)
            conditions.append(inside + turned - sqrt(inside**2 + turned**2 + 1e-20))  # Fischer (1992)
    shear = [-(sum(ends[k]) - thrust[k] * (LEAN + s)) / HEIGHT for k, s in enumerate((sway, right))]  # on the corner
    across = sum(ends[2]) / SPAN  # what the left corner lifts the beam by
    unit = THRUST * HEIGHT / 100
    result += [(ends[0][1] + ends[2][0]) / unit, (ends[1][1] + ends[2][1]) / unit,
               (factor * SIDEWAYS + shear[0] - thrust[2]) / SIDEWAYS, (shear[1] + thrust[2]) / SIDEWAYS,
               (thrust[0] - factor * THRUST - across) / THRUST, (thrust[1] - factor * THRUST + across) / THRUST]
    return result + conditions if plastic else result


SCALE = np.array([1.0, 0.1, 1.0, 1.0, 0.01, 0.01, THRUST, THRUST, SIDEWAYS] + 6 * [1e-3 * COLUMN["Z"] * YIELD])


def equilibrium(sway, start):
    """The state at a sway, from that at a smaller one."""
    solution = least_squares(lambda y: residual(y * SCALE, sway), start / SCALE, xtol=1e-15, ftol=1e-15, gtol=1e-15)
    if np.max(np.abs(solution.fun)) > 1e-7:
        raise SystemExit(f"sway_portal.py: no equilibrium at a sway of {sway} mm")
    return solution.x * SCALE


def collapse(step=0.5):
    """Load factor and sway at the top of the path."""
    state, sway, best = np.zeros(15), 0.0, None
    while best is None or state[0] > best[0] - 0.01:
        sway += step
        before, state = state, equilibrium(sway, state)
        if best is None or state[0] > best[0]:
            best = (state[0], sway, before)
    top = minimize_scalar(lambda s: -equilibrium(s, best[2])[0], bounds=(best[1] - step, best[1] + step),
                          method="bounded",
                          options={"xatol": 1e-4})
    return -top.fun, top.x


if __name__ == "__main__":
    load_factor, at = collapse()
    print(f"load factor {load_factor:.5f} at a sway of {at:.2f} mm")
    if sys.argv[1:] == ["--check"]:
        deck = Path(__file__).with_name("pushover_leaning_portal.inp")
        told = re.search(r"sway_portal\.py: (\S+)", deck.read_text())
        if told is None or told[1] != f"{load_factor:.5f}":
            raise SystemExit(f"{deck.name}: sway_portal.py gives {load_factor:.5f}, the heading another load factor")
