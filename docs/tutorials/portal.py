"""A portal frame pushed to collapse
=====================================

A portal with fixed feet carries a load V in the middle of its girder and a push H = V at its top. The ends of its
members yield as plastic hinges (elastic, perfectly plastic). Limit analysis gives the collapse load by hand, from the
work of three mechanisms with the plastic moment Mp everywhere:

    girder    V L / 2           = 4 Mp
    sway      H h               = 4 Mp
    combined  V L / 2 + H h     = 6 Mp

With L = 8, h = 4 and H = V the combined mechanism has the smallest load, V = 6 Mp / (L / 2 + h) = 0.75 Mp: hinges at
both feet, under the load and at the far corner.

What you should see: a line that bends at each new hinge and ends on the load that limit analysis gives, with four
hinges; where the axial force counts too (segments of AISC's curve), the load is a little lower.
"""
from pathlib import Path

import matplotlib.pyplot as plt
import numpy as np

import finites as fe

span, height = 8.0, 4.0
steel = fe.Isotropic(E=200e6, nu=0.3)  # kN, m
area, inertia = 8.0e-3, 1.2e-4
plastic_moment, squash_load = 240.0, 1900.0

# Nodes in the plane of X and Z; local axis y lies in that plane, so that the moment of bending is Mz.
nodes = np.array([[0, 0, 0], [0, 0, height], [span / 2, 0, height], [span, 0, height], [span, 0, 0]])
members = np.array([[0, 1], [1, 2], [2, 3], [4, 3]])
beams = fe.Beam(nodes[members], steel, area, Iz=inertia, Iy=inertia, J=1e-6)

# Motion in the plane alone: ux, uz, ry; the feet are held.
out_of_plane = (6 * np.arange(5)[:, None] + [1, 3, 5]).ravel()
freedoms, unknowns = fe.freedoms(members, fixed=np.concatenate([out_of_plane, np.arange(6), 24 + np.arange(6)]))
push, weight = 0, 4  # unknowns: ux of the first corner, uz of the middle
assert freedoms[0, 6] == push and freedoms[1, 8] == weight
pattern = np.zeros(unknowns)
pattern[push], pattern[weight] = 1.0, -1.0  # H = V = 1


def collapse(surface, largest=0.12, steps=96):
    """Load by sway, with the sway prescribed: Newton on displacements and load together."""
    # Where two members meet, one of the two ends yields: the feet, both corners and the middle have a hinge each.
    state = fe.BeamState(beams, surface, ends=["first", "both", "second", "first"])
    u, load = np.zeros(unknowns), 0.0
    history = [(0.0, 0.0, 0)]
    for sway in np.linspace(0, largest, steps + 1)[1:]:
        for _ in range(50):
            force, tangent = state.try_(np.append(u, 0.0)[freedoms])
            F = fe.assemble(force, freedoms, unknowns)
            K = fe.assemble(tangent, freedoms, unknowns).toarray()
            rest = np.append(load * pattern - F, sway - u[push])
            if np.max(np.abs(rest)) < 1e-9 * plastic_moment:
                break
            system = np.zeros((unknowns + 1, unknowns + 1))
            system[:-1, :-1], system[:-1, -1], system[-1, push] = K, -pattern, 1.0
            change = np.linalg.solve(system, rest)
            u, load = u + change[:-1], load + change[-1]
        else:
            raise RuntimeError(f"no equilibrium at the sway {sway}")
        state.commit(np.append(u, 0.0)[freedoms])
        state.accept()
        history.append((sway, load, int(np.sum(np.abs(state.hinges().plastic[..., 2]) > 1e-9))))
    return np.array(history), u, state.hinges()


by_hand = 6 * plastic_moment / (span / 2 + height)
moment_alone, u, hinges = collapse(fe.YieldSurface(Mz=plastic_moment, curve="single"))
with_axial, _, _ = collapse(fe.YieldSurface(P=squash_load, Mz=plastic_moment))
print(f"limit analysis {by_hand:.3f} kN, moments alone {moment_alone[-1, 1]:.3f} kN, with P {with_axial[-1, 1]:.3f} kN")
assert abs(moment_alone[-1, 1] / by_hand - 1) < 1e-6 and moment_alone[-1, 2] == 4
assert 0.9 * by_hand < with_axial[-1, 1] < by_hand

figure, (left, right) = plt.subplots(1, 2, figsize=(8.4, 3.4), layout="constrained")
left.axhline(by_hand, color="0.5", linestyle="--", linewidth=1, label="limit analysis")
left.plot(moment_alone[:, 0], moment_alone[:, 1], color="C0", label="moments alone")
left.plot(with_axial[:, 0], with_axial[:, 1], color="C1", label="with axial force")
born = np.flatnonzero(np.diff(moment_alone[:, 2])) + 1
left.plot(moment_alone[born, 0], moment_alone[born, 1], "o", color="C3", label="new hinge")
left.set_xlabel("sway, m")
left.set_ylabel("load V = H, kN")
left.legend(fontsize=8)
scale = 6.0
of_members = np.append(u, 0.0)[freedoms].reshape(4, 2, 6)
for ends, motion in zip(nodes[members], of_members):
    # Chords: the curve of a member between hinges that have turned is not that of its nodes.
    right.plot(*ends[:, [0, 2]].T, color="0.7")
    moved = ends + scale * motion[:, :3]
    right.plot(*moved[:, [0, 2]].T, color="C0")
turned = np.abs(hinges.plastic[..., 2]) > 1e-9
for member, end in zip(*np.nonzero(turned)):
    place = nodes[members][member] + scale * of_members[member, :, :3]
    inward = place[end] + 0.06 * (place[1 - end] - place[end])
    right.plot(inward[0], inward[2], "o", color="C3", markerfacecolor="white")
right.set_aspect("equal")
right.set_title(f"hinges of the mechanism, sway x {scale:g}", fontsize=10)
right.set_axis_off()
figure.savefig(Path(__file__).with_suffix(".png"), dpi=80)
