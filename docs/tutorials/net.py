"""A hanging net
================

A square net of cables hangs from its border under its own weight. Each cable between two knots is a catenary of its
own, in equilibrium with itself; Newton's method moves the knots until the cables pull equally from all sides.

First one cable alone: that it hangs as a catenary can be checked by hand. A cable of length S between two points of one
level at the distance L has the parameter a with 2 a sinh(L / 2a) = S, its sag is a (cosh(L / 2a) - 1), its horizontal
pull q a (the cable of this example hardly stretches).

What you should see: a net that sags like a shallow bowl, steeper at the border than in the middle. Its supports carry its
weight, together and with no horizontal rest; and where a section cuts it in halves, the horizontal pull times the sag
balances the moment of the weight and of the supports.
"""
from pathlib import Path

import matplotlib.pyplot as plt
import numpy as np
from scipy.optimize import brentq
from scipy.sparse.linalg import spsolve

import finites as fe

modulus, area, weight = 160e9, 5e-5, 4.0  # per unstressed length

# One cable.
L, S = 10.0, 11.0
one = fe.Cable([[0, 0, 0], [L, 0, 0]], modulus, area, S, load=[0, 0, -weight])
a = brentq(lambda a: 2 * a * np.sinh(L / (2 * a)) - S, 1.0, 100.0)
sag, pull = a * (np.cosh(L / (2 * a)) - 1), weight * a
hangs = one.shape(places=41)
print(f"one cable: sag {-hangs.xyz[:, 2].min():.5f} (catenary {sag:.5f}), pull {one.forces().forces[3]:.5f} ({pull:.5f})")
assert abs(-hangs.xyz[:, 2].min() / sag - 1) < 1e-4 and abs(one.forces().forces[3] / pull - 1) < 1e-4

# The net: n by n meshes, every cable a little longer than the distance of its knots.
n = 8
grid = np.arange(n + 1)
knots = np.array([[x, y, 0.0] for y in grid for x in grid])
number = np.arange((n + 1) ** 2).reshape(n + 1, n + 1)
along_x = np.column_stack([number[1:-1, :-1].ravel(), number[1:-1, 1:].ravel()])
along_y = np.column_stack([number[:-1, 1:-1].ravel(), number[1:, 1:-1].ravel()])
cables = np.concatenate([along_x, along_y])
inner = number[1:-1, 1:-1].ravel()
border = np.setdiff1d(number, inner)
freedoms, unknowns = fe.freedoms(cables, per_node=3, fixed=(3 * border[:, None] + np.arange(3)).ravel(),
                                 nodes=len(knots))
net = fe.Cable(knots[cables], modulus, area, 1.06, load=[0, 0, -weight])

# A first shape below the border, then Newton with steps of at most a tenth of a mesh.
x, y = knots[:, 0] / n, knots[:, 1] / n
knots[:, 2] = -0.25 * n * np.minimum(1, 16 * x * (1 - x) * y * (1 - y)) ** 0.5
free = np.zeros(knots.size, bool)
free[(3 * inner[:, None] + np.arange(3)).ravel()] = True
for iteration in range(200):
    moved = net.replace(nodes=knots[cables])
    rest = fe.assemble(moved.forces().forces, freedoms, unknowns)
    if np.max(np.abs(rest)) < 1e-9 * weight:
        break
    K = fe.assemble(moved.stiffness(), freedoms, unknowns)
    step = -spsolve(K.tocsc(), rest)
    knots.ravel()[free] += step * min(1.0, 0.1 / np.max(np.abs(step)))
else:
    raise RuntimeError("the net found no equilibrium")

# What the border holds.
held = np.zeros(knots.shape)
for end in (0, 1):
    np.add.at(held, cables[:, end], moved.forces().forces[:, 3 * end: 3 * end + 3])
total = weight * 1.06 * len(cables)
print(f"net: {iteration} iterations, sag {-knots[:, 2].min():.4f}, supports {held[border].sum(axis=0).round(9)}, "
      f"weight {total:.6f}")
assert np.allclose(held[border].sum(axis=0), [0, 0, total], atol=1e-7 * total)

# A section at x = n/2 cuts the cables along x in their knots; moments about the line z = 0 of the section.
half = knots[border, 0] < n / 2 - 1e-9
points = moved.shape(places=201)
lever = n / 2 - points.xyz[..., 0]
left = np.clip(lever, 0, None)
# The weight of each cable lies along its unstressed length; a knot's row on the section has lever 0.
weights = weight * 1.06 * np.trapz(left, axis=1, dx=1 / 200)
supports = np.sum(held[border][half, 2] * (n / 2 - knots[border][half, 0]))
ending = np.isclose(knots[cables[:, 1], 0], n / 2, atol=1e-6) & (knots[cables[:, 0], 0] < n / 2 - 1e-6)
pulls = moved.forces().forces[ending, 3]
turning = np.sum(pulls * -knots[cables[ending, 1], 2])
print(f"section: pull times sag {turning:.4f}, supports less weight {supports - weights.sum():.4f}")
assert abs(turning / (supports - weights.sum()) - 1) < 1e-3

figure = plt.figure(figsize=(6.4, 3.6))
axes = figure.add_axes([-0.12, -0.3, 1.24, 1.5], projection="3d")
pull = moved.forces().tension.mean(axis=1)
colors = plt.cm.viridis_r((pull - pull.min()) / np.ptp(pull))
for line, color in zip(moved.shape(places=9).xyz, colors):
    axes.plot(*line.T, color=color, linewidth=1.5, clip_on=False)
axes.plot([0, n, n, 0, 0], [0, 0, n, n, 0], np.zeros(5), color="0.3", linewidth=2, clip_on=False)
axes.set_box_aspect((n, n, -knots[:, 2].min() * 1.3))
axes.view_init(elev=32, azim=-63)
axes.set_axis_off()
figure.text(0.02, 0.04, f"darker: larger tension, {pull.min():.1f} to {pull.max():.1f}", fontsize=9)
figure.savefig(Path(__file__).with_suffix(".png"), dpi=80)
