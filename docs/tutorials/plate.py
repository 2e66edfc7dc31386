"""A plate solved in forty lines
================================

A square plate of steel, simply supported, carries a uniform pressure. Stiffness and loads come from finites, the
equations are solved by scipy. Navier's series gives the exact deflection of the thin plate:

    w = 16 q / (pi^6 D) sum sum 1 / (m n (m^2/a^2 + n^2/a^2)^2) sin(m pi x / a) sin(n pi y / a),   m, n = 1, 3, 5, ...

What you should see: the deflection in the middle meets the series within three percent with 8 elements a side, and the
error falls by four with every halving of the mesh, for thin and thick elements alike, until the thick ones come near
what the series leaves out: the plate has a thickness of a hundredth of its side, and shear adds half a thousandth to
its deflection.
"""
from pathlib import Path

import matplotlib.pyplot as plt
import numpy as np
from scipy.sparse.linalg import spsolve

import finites as fe

side, thickness, pressure = 2.0, 0.02, 2000.0
steel = fe.Isotropic(E=210e9, nu=0.3, density=7850)


def deflections(n, theory):
    """The deflections of (n + 1)^2 nodes."""
    # The mesh: nodes row by row, elements by their four nodes.
    grid = np.linspace(0, side, n + 1)
    x, y = (axis.ravel() for axis in np.meshgrid(grid, grid))
    nodes = np.column_stack([x, y, 0 * x])
    first = (np.arange(n)[:, None] * (n + 1) + np.arange(n)).ravel()
    elements = first[:, None] + [0, 1, n + 2, n + 1]

    # Supports: no motion in the plane anywhere; on the border no deflection and no rotation along the border.
    every = np.arange(len(nodes))
    along_x, along_y = (y == 0) | (y == side), (x == 0) | (x == side)
    fixed = [6 * every + c for c in (0, 1, 5)]
    fixed += [6 * every[along_x | along_y] + 2, 6 * every[along_x] + 4, 6 * every[along_y] + 3]
    freedoms, unknowns = fe.freedoms(elements, fixed=np.concatenate(fixed))

    # All elements are one batch.
    plates = fe.Plate(nodes[elements], thickness, steel, theory)
    K = fe.assemble(plates.stiffness(threads=2), freedoms, unknowns)
    load = fe.assemble(plates.surface_load([0, 0, -pressure]), freedoms, unknowns)
    u = spsolve(K.tocsc(), load)

    # Back to the elements: what is held stays 0.
    of_elements = np.append(u, 0.0)[freedoms]
    w = np.zeros(len(nodes))
    w[elements] = of_elements[:, 2::6]
    return grid, w.reshape(n + 1, n + 1), plates.results(of_elements)


def navier(terms=199):
    """The deflection of the middle."""
    D = steel.E * thickness**3 / (12 * (1 - steel.nu**2))
    m = np.arange(1, terms, 2)
    sign = np.where(m % 4 == 1, 1.0, -1.0)
    k = (m[:, None] ** 2 + m[None, :] ** 2) / side**2
    return 16 * pressure / (np.pi**6 * D) * np.sum(sign[:, None] * sign / (np.outer(m, m) * k**2))


exact = navier()
sizes = [4, 8, 16, 32]
errors = {}
for theory in ("thin", "thick"):
    middle = [-deflections(n, theory)[1][n // 2, n // 2] for n in sizes]
    errors[theory] = np.abs(np.array(middle) / exact - 1)
    print(f"{theory:5}", "  ".join(f"{n}: {value / exact:.5f}" for n, value in zip(sizes, middle)), "of the series")
    assert errors[theory][1] < 0.03 and errors[theory][-1] < 0.0025
assert np.all(errors["thin"][:-1] / errors["thin"][1:] > 3.9)

grid, w, r = deflections(32, "thin")
figure, (left, right) = plt.subplots(1, 2, figsize=(8.4, 3.4), layout="constrained")
levels = left.contourf(grid, grid, 1000 * w, 12, cmap="viridis")
figure.colorbar(levels, ax=left, label="deflection, mm")
left.set_aspect("equal")
left.set_xlabel("x, m")
left.set_ylabel("y, m")
left.set_title(f"largest von Mises stress {r.at_nodes.top.von_mises.max() / 1e6:.1f} MPa", fontsize=10)
for theory, marker in (("thin", "o-"), ("thick", "s--")):
    right.loglog(sizes, errors[theory], marker, label=theory)
right.loglog(sizes, 0.2 * np.array(sizes, float) ** -2, color="0.6", linewidth=1, label="slope 2")
right.set_xticks(sizes, [str(n) for n in sizes])
right.minorticks_off()
right.set_xlabel("elements a side")
right.set_ylabel("error of the middle")
right.legend()
figure.savefig(Path(__file__).with_suffix(".png"), dpi=80)
