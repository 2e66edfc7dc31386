"""A strip of plate in bending, elastic to plastic
===================================================

A strip of steel is bent by turning its ends against each other, to six times the curvature at which it begins to
yield, and let go again. The theory of bending (no hardening, stress along the strip alone) has

    My = b h^2 fy / 6   where the faces begin to yield, at the curvature ky = 2 fy / (E h)
    M  = Mp (1 - (ky / k)^2 / 3)   beyond, towards Mp = b h^2 fy / 4 = 1.5 My

What you should see: points through the thickness (`model="layered"`) follow that curve, in short straight lines from
one point that yields to the next, up to 0.992 Mp, which is what their rule of 15 points makes of a stress block. The
yield surface of section forces (`model="whole-section"`) stays elastic up to Mp and then stands at it: it knows no
elastic core. Both unload elastically: a curvature stays.
"""
from pathlib import Path

import matplotlib.pyplot as plt
import numpy as np
from scipy.sparse.linalg import spsolve

import finites as fe

length, width, thickness = 1.0, 0.05, 0.01
modulus, poisson, yield_stress = 200e9, 0.3, 250e6
My, Mp = width * thickness**2 * yield_stress / np.array([6, 4])
yield_curvature = 2 * yield_stress / (modulus * thickness)

n = 6
x = np.linspace(0, length, n + 1)
nodes = np.concatenate([np.column_stack([x, 0 * x + y, 0 * x]) for y in (0, width)])
first = np.arange(n)
elements = np.column_stack([first, first + 1, first + n + 2, first + n + 1])
plates = fe.Plate(nodes[elements], thickness, fe.Isotropic(modulus, poisson), theory="thin")

# The ends turn about Y and keep their deflection at the left; the strip is free to curve across.
left, right = np.array([0, n + 1]), np.array([n, 2 * n + 1])
every = np.arange(len(nodes))
held = np.concatenate([6 * every, 6 * every + 1, 6 * every + 5, 6 * left + 2])
turned = np.concatenate([6 * left + 4, 6 * right + 4])
freedoms = (6 * elements[:, :, None] + np.arange(6)).reshape(n, 24)
total = 6 * len(nodes)
free = np.setdiff1d(np.arange(total), np.concatenate([held, turned]))


def bend(model, curvatures):
    """End moments for one curvature after the other."""
    state = fe.PlateState(plates, yield_stress, model=model, layers=15)
    u = np.zeros(total)
    tangent = fe.assemble(state.forces().tangent, freedoms, total)
    moments = []
    for curvature in curvatures:
        # The ends turn; a first guess moves all other nodes with them, after the tangent of the last step.
        step = np.zeros(total)
        step[turned] = curvature * length / 2 * np.array([-1, -1, 1, 1]) - u[turned]
        step[free] = spsolve(tangent[free][:, free].tocsc(), -tangent[free] @ step)
        u = u + step
        # A few iterations, since the tangents of the tries are those of the returns to the yield surface. These end within
        # about a millionth of it: what is left of the forces of the whole section need not become less.
        for _ in range(100):
            force, matrices = state.try_(u[freedoms])
            F = fe.assemble(force, freedoms, total)
            tangent = fe.assemble(matrices, freedoms, total)
            if np.max(np.abs(F[free])) < 1e-5 * My:
                break
            u[free] -= spsolve(tangent[free][:, free].tocsc(), F[free])
        else:
            raise RuntimeError(f"{model}: no equilibrium at the curvature {curvature}")
        state.commit(u[freedoms])
        state.accept()
        moments.append(F[6 * right + 4].sum())
    return np.array(moments)


up = np.linspace(0, 6 * yield_curvature, 37)[1:]
down = np.linspace(6, 4.7, 6)[1:] * yield_curvature
path = np.concatenate([up, down])
lines = {model: bend(model, path) for model in ("layered", "whole-section")}

k = np.linspace(0, 6, 200) * yield_curvature
exact = np.where(k < yield_curvature, k / yield_curvature * My,
                 Mp * (1 - np.minimum(1, yield_curvature / np.maximum(k, 1e-30)) ** 2 / 3))
last = {"layered": Mp * (1 - 1 / 6**2 / 3), "whole-section": Mp}  # the theory at six times ky
for model, moments in lines.items():
    print(f"{model}: M / Mp = {moments[len(up) - 1] / Mp:.4f} (theory {last[model] / Mp:.4f})")
assert abs(lines["layered"][len(up) - 1] / last["layered"] - 1) < 0.005
assert abs(lines["whole-section"][len(up) - 1] / last["whole-section"] - 1) < 1e-4
elastic = lines["layered"][5] / (up[5] / yield_curvature * My)  # at the curvature ky
assert abs(elastic - 1) < 0.02

figure, axes = plt.subplots(figsize=(6.4, 3.8), layout="constrained")
axes.plot(k / yield_curvature, exact / Mp, color="0.6", linewidth=4, label="theory of bending")
for model, moments in lines.items():
    axes.plot(np.append(0, path) / yield_curvature, np.append(0, moments) / Mp, ".-", linewidth=1, label=model)
axes.axhline(My / Mp, color="0.5", linestyle=":", linewidth=1)
axes.text(0.05, My / Mp + 0.015, "My", color="0.3")
axes.axhline(1, color="0.5", linestyle=":", linewidth=1)
axes.text(0.05, 1.015, "Mp", color="0.3")
axes.set_ylim(0, 1.12)
axes.set_xlabel("curvature / ky")
axes.set_ylabel("moment / Mp")
axes.legend(loc="center")
figure.savefig(Path(__file__).with_suffix(".png"), dpi=80)
