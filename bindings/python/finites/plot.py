"""Pictures of elements by matplotlib, which has to be installed: modes, yield surfaces, moment and curvature, section
forces.

Every function draws into axes of the caller's, or into new ones, and returns them.
"""
from __future__ import annotations

from typing import Any, Sequence

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Floats
from ._elements import Elements
from .beams import Beam, BeamLoad
from .errors import ArgumentError
from .plates import Plate
from .solids import Solid
from .yielding import PlateState, YieldSurface

_EDGES = {2: [(0, 1)], 3: [(0, 1), (1, 2), (2, 0)], 4: [(0, 1), (1, 2), (2, 3), (3, 0)]}
_SOLID_EDGES = {
    4: [(0, 1), (1, 2), (2, 0), (0, 3), (1, 3), (2, 3)],
    6: [(0, 1), (1, 2), (2, 0), (3, 4), (4, 5), (5, 3), (0, 3), (1, 4), (2, 5)],
    8: [(0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)],
}
_FORCES = ("P", "My", "Mz")


def _pyplot() -> Any:
    try:
        from matplotlib import pyplot
    except ImportError as error:
        raise ImportError("finites.plot draws by matplotlib, which is not installed (Debian: python3-matplotlib)") \
            from error
    return pyplot


def _one(element: Elements, name: str) -> None:
    if not isinstance(element, Elements):
        raise ArgumentError(f"{name} is {type(element).__name__}: expected one element", argument=name)
    if element.batch:
        raise ArgumentError(f"{name} is a batch of {len(element)}: expected one element, for example {name}[0]",
                            argument=name)


def modes(element: Any, count: int = 6, *, scale: float = 0.25) -> Any:
    """The deformation modes of an element: eigenvectors of its stiffness above those of rigid motion, softest first.

    Parameters
    ----------
    element : Plate, Beam, Truss or Solid
        One element.
    count : int
        How many modes to draw.
    scale : float
        Largest displacement by the size of the element.

    Returns
    -------
    matplotlib Figure
    """
    _one(element, "element")
    values, vectors = deformation_modes(element)
    count = min(count, len(values))
    columns = min(count, 3)
    figure = _pyplot().figure(figsize=(3.2 * columns, 2.9 * -(-count // columns)))
    figure.subplots_adjust(left=0.01, right=0.99, bottom=0.01, top=0.92, wspace=0.02, hspace=0.12)
    nodes = np.asarray(element.nodes)
    size = float(np.max(np.ptp(nodes, axis=0)))
    edges = _SOLID_EDGES[len(nodes)] if isinstance(element, Solid) else _EDGES[len(nodes)]
    for i in range(count):
        axes = figure.add_subplot(-(-count // columns), columns, i + 1, projection="3d")
        vector = vectors[:, i].reshape(len(nodes), -1)
        lines = [_edge(nodes, vector, edge) for edge in edges]
        largest = max(float(np.max(np.abs(moved - start))) for start, moved in lines)
        for start, moved in lines:
            axes.plot(*start.T, color="0.7", linewidth=1, clip_on=False)
            axes.plot(*(start + (moved - start) * (scale * size / largest)).T, color="C0", linewidth=1.8,
                      clip_on=False)
        _level_box(axes, nodes, size)
        axes.set_title(f"mode {i + 1}: {values[i]:.3g}", fontsize=9)
    return figure


def deformation_modes(element: Any) -> tuple[Floats, Floats]:
    """Eigenvalues and eigenvectors of the stiffness of one element, without those of rigid motion.

    The rotations of a plate about its normal have a small stiffness that only keeps a structure from being singular:
    they follow the other degrees of freedom here.
    """
    K = element.stiffness()
    if not isinstance(element, Plate):
        return _above_rigid(*np.linalg.eigh(K))
    turn = np.kron(np.eye(2 * len(element.nodes)), element.measures().axes)
    local = turn @ K @ turn.T
    drilling = np.arange(len(local)) % 6 == 5
    follow = -np.linalg.lstsq(local[np.ix_(drilling, drilling)], local[np.ix_(drilling, ~drilling)], rcond=None)[0]
    reduced = local[np.ix_(~drilling, ~drilling)] + local[np.ix_(~drilling, drilling)] @ follow
    values, chosen = _above_rigid(*np.linalg.eigh((reduced + reduced.T) / 2))
    vectors = np.zeros((len(local), len(values)))
    vectors[~drilling], vectors[drilling] = chosen, follow @ chosen
    return values, turn.T @ vectors


def _above_rigid(values: Floats, vectors: Floats) -> tuple[Floats, Floats]:
    kept = values > 1e-9 * values[-1]
    return values[kept], vectors[:, kept]


def _edge(nodes: Floats, vector: Floats, edge: tuple[int, int], parts: int = 12) -> tuple[Floats, Floats]:
    """Points along an edge before and after; where nodes turn it is the cubic that has their slopes."""
    a, b = edge
    s = np.linspace(0.0, 1.0, parts)[:, None]
    start = nodes[a] + s * (nodes[b] - nodes[a])
    if vector.shape[1] == 3:
        return start, start + (1 - s) * vector[a] + s * vector[b]
    along = nodes[b] - nodes[a]
    slope_a, slope_b = np.cross(vector[a, 3:], along), np.cross(vector[b, 3:], along)
    across = ((1 - 3 * s**2 + 2 * s**3) * vector[a, :3] + (3 * s**2 - 2 * s**3) * vector[b, :3]
              + (s - 2 * s**2 + s**3) * slope_a + (s**3 - s**2) * slope_b)
    return start, start + across


def _level_box(axes: Any, nodes: Floats, size: float) -> None:
    middle = (nodes.max(axis=0) + nodes.min(axis=0)) / 2
    for set_limits, center in zip((axes.set_xlim, axes.set_ylim, axes.set_zlim), middle):
        set_limits(center - 0.55 * size, center + 0.55 * size)
    axes.set_box_aspect((1, 1, 1), zoom=1.05)
    axes.set_axis_off()


def yield_surface(surface: YieldSurface, path: ArrayLike | None = None, *, plane: Sequence[str] = ("Mz", "P"),
                  ax: Any = None) -> Any:
    """The curve value = 1 in the plane of two forces, and a path of forces on it.

    Parameters
    ----------
    surface : YieldSurface
        One surface.
    path : (k, 3), optional
        Forces P, My, Mz, drawn as they appear in this plane.
    plane : two of {"P", "My", "Mz"}
        Forces of the horizontal and the vertical axis; the third is 0 on the curve.
    """
    _one(surface, "surface")
    if len(plane) != 2 or plane[0] == plane[1] or not set(plane) <= set(surface.interacting):
        raise ArgumentError(f"plane is {tuple(plane)}: expected two of {surface.interacting}", argument="plane")
    ax = _pyplot().subplots(layout="constrained")[1] if ax is None else ax
    first, second = (_FORCES.index(name) for name in plane)
    curve = _curve(surface, first, second)
    ax.plot(curve[:, first], curve[:, second], color="0.2", label="value = 1")
    if path is not None:
        forces = np.asarray(path, dtype=np.float64)
        if forces.ndim != 2 or forces.shape[1] != 3:
            raise ArgumentError(f"path has shape {forces.shape}, expected (k, 3)", argument="path")
        ax.plot(forces[:, first], forces[:, second], ".-", color="C3", linewidth=1, label="path")
    ax.axhline(0, color="0.8", linewidth=0.8, zorder=0)
    ax.axvline(0, color="0.8", linewidth=0.8, zorder=0)
    ax.ticklabel_format(scilimits=(-3, 4))  # numbers of six digits would run into each other
    ax.set_xlabel(plane[0])
    ax.set_ylabel(plane[1])
    ax.legend()
    return ax


def _curve(surface: YieldSurface, first: int, second: int, parts: int = 361) -> Floats:
    """Points of the curve, one a direction: the value grows along each, so that bisection finds where it is 1."""
    angle = np.linspace(0.0, 2 * np.pi, parts)
    direction = np.zeros((parts, 3))
    direction[:, first], direction[:, second] = np.cos(angle), np.sin(angle)
    direction *= surface.capacity
    low, high = np.zeros(parts), np.full(parts, 2.0)
    for _ in range(50):
        middle = (low + high) / 2
        inside = surface.value(direction * middle[:, None]) < 1
        low, high = np.where(inside, middle, low), np.where(inside, high, middle)
    return np.asarray(direction * low[:, None])


def moment_curvature(plate: Plate, yield_stress: float, curvatures: ArrayLike, *, hardening: float = 0.0,
                     model: str = "layered", layers: int = 15, ax: Any = None) -> Any:
    """The moment of a point of a plate in bending about one axis over the curvature; `bending_line` has the numbers."""
    ax = _pyplot().subplots(layout="constrained")[1] if ax is None else ax
    curvature = np.asarray(curvatures, dtype=np.float64)
    moment = bending_line(plate, yield_stress, curvature, hardening=hardening, model=model, layers=layers)
    label = f"{layers} layers" if model == "layered" else "whole section"
    ax.plot(curvature, moment, label=label)
    ax.set_xlabel("curvature")
    ax.set_ylabel("moment per length")
    ax.legend()
    return ax


def bending_line(plate: Plate, yield_stress: float, curvatures: ArrayLike, *, hardening: float = 0.0,
                 model: str = "layered", layers: int = 15) -> Floats:
    """Moments Mx of a plate that bends freely (My = 0) for one curvature after the other.

    The thickness and the material are those of the plate; its shape does not matter. The curvature across the strip
    follows from My = 0 by a secant iteration on the moments that tried copies of the state have.
    """
    _one(plate, "plate")
    h = float(plate.thickness)
    side = 10 * h
    square = side * np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
    strip = Plate(square, h, _material_of(plate), theory="thin")
    state = PlateState(strip, yield_stress, hardening=hardening, model=model, layers=layers)
    moments = []
    across = 0.0
    rate = -float(plate.nu)
    last = 0.0
    for curvature in np.asarray(curvatures, dtype=np.float64):
        across, moment = _free_across(state, square, float(curvature), across + rate * (float(curvature) - last))
        state.commit(_bent(square, float(curvature), across))
        state.accept()
        last = float(curvature)
        moments.append(moment)
        rate = -0.5 if abs(last) * h * float(plate.E) > 2 * yield_stress else rate
    return np.array(moments)


def _material_of(plate: Plate) -> Any:
    from .materials import Isotropic

    return Isotropic(E=float(plate.E), nu=float(plate.nu))


def _bent(square: Floats, along: float, across: float) -> Floats:
    """Displacements of constant curvatures: w = -(along x^2 + across y^2) / 2, rx = dw/dy, ry = -dw/dx."""
    u = np.zeros((4, 6))
    x, y = square[:, 0], square[:, 1]
    u[:, 2] = -(along * x**2 + across * y**2) / 2
    u[:, 3], u[:, 4] = -across * y, along * x
    return u.ravel()


def _free_across(state: PlateState, square: Floats, along: float, guess: float) -> tuple[float, float]:
    """The curvature across that leaves My = 0, and Mx."""
    def moments(across: float) -> Floats:
        tried = state.copy()
        tried.commit(_bent(square, along, across))
        mean: Floats = tried.results().moments[..., :2].mean(axis=-2)
        return mean

    step = max(1e-4 * abs(along), 1e-12)
    first, second = guess, guess + step
    at_first, at_second = moments(first), moments(second)
    for _ in range(40):
        slope = at_second[1] - at_first[1]
        if abs(at_second[1]) <= 1e-9 * abs(at_second[0]) or slope == 0.0:
            break
        first, second = second, second - at_second[1] * (second - first) / slope
        at_first, at_second = at_second, moments(second)
    return second, float(at_second[0])


def section_forces(beam: Beam, u: ArrayLike, load: BeamLoad | None = None, *,
                   forces: Sequence[str] = ("N", "Vy", "Mz"), places: int = 51) -> Any:
    """Diagrams of section forces along a beam, of N, Vy, Vz, T, My, Mz; they jump where a point load acts.

    Returns
    -------
    matplotlib Figure
    """
    _one(beam, "beam")
    known = ("N", "Vy", "Vz", "T", "My", "Mz")
    if not forces or not set(forces) <= set(known):
        raise ArgumentError(f"forces is {tuple(forces)}: expected some of {known}", argument="forces")
    sections = beam.sections(u, load, places=places)
    if load is not None and len(load._points):  # both sides of a jump: at a load, and just beyond it
        at = load._points["x"]
        beyond = np.minimum(np.nextafter(at, np.inf), sections.x[-1])
        sections = beam.sections(u, load, x=np.sort(np.concatenate([sections.x, at, beyond])))
    figure, axes = _pyplot().subplots(len(forces), 1, sharex=True, figsize=(6.4, 1.7 * len(forces)), squeeze=False,
                                      layout="constrained")
    for ax, name in zip(axes[:, 0], forces):
        values = getattr(sections, name)
        ax.fill_between(sections.x, values, color="C0", alpha=0.25)
        ax.plot(sections.x, values, color="C0")
        ax.axhline(0, color="0.2", linewidth=1)
        ax.set_ylabel(name)
        ax.margins(x=0.02)
    axes[-1, 0].set_xlabel("x")
    return figure


__all__ = ["modes", "deformation_modes", "yield_surface", "moment_curvature", "bending_line", "section_forces"]
