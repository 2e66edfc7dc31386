"""Pictures: what they draw agrees with closed forms."""
import warnings

import matplotlib
import numpy as np
import pytest

import finites as fe

matplotlib.use("Agg")
plot = pytest.importorskip("finites.plot")
pyplot = pytest.importorskip("matplotlib.pyplot")

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
STEEL = fe.Isotropic(E=200e9, nu=0.3)


@pytest.fixture(autouse=True)
def closed():
    yield
    pyplot.close("all")


@pytest.mark.parametrize("element", [
    fe.Plate(SQUARE, 0.1, STEEL), fe.Plate(SQUARE[:3], 0.1, STEEL, "thin"),
    fe.Beam(SQUARE[:2], STEEL, 1e-2, 1e-5, 1e-5, 1e-5), fe.Truss(SQUARE[:2], STEEL, 1e-2),
    fe.Solid(np.concatenate([SQUARE, SQUARE + [0, 0, 1]]), STEEL)], ids=lambda e: type(e).__name__)
def test_modes(element):
    values, vectors = plot.deformation_modes(element)
    K = element.stiffness()
    rigid = 5 if isinstance(element, fe.Truss) else 6
    nodes = len(element.nodes)
    drilling = nodes if isinstance(element, fe.Plate) else 0
    assert len(values) == len(K) - rigid - drilling
    assert np.allclose(np.einsum("ij,ik,kj->j", vectors, K, vectors) / values, 1, rtol=1e-6)
    figure = plot.modes(element, 4)
    with warnings.catch_warnings():
        warnings.simplefilter("error")  # a layout that collapses is a warning of matplotlib
        figure.canvas.draw()
    assert len(figure.axes) == min(4, len(values))
    assert all(np.isfinite(line.get_data_3d()).all() for axes in figure.axes for line in axes.lines)


def test_a_yield_surface():
    ax = plot.yield_surface(fe.YieldSurface(P=10.0, Mz=4.0), [[0, 0, 0], [2.0, 0, 3.6]])
    x, y = ax.lines[0].get_data()
    p, m = np.abs(y) / 10, np.abs(x) / 4
    assert np.allclose(np.where(p >= 0.2, p + 8 / 9 * m, p / 2 + m), 1, atol=1e-6)
    assert ax.get_xlabel() == "Mz" and len(ax.lines[1].get_xdata()) == 2
    with pytest.raises(fe.ArgumentError, match="plane"):
        plot.yield_surface(fe.YieldSurface(P=10.0, Mz=4.0), plane=("My", "P"))


def test_moment_and_curvature():
    """M = Mp (1 - (ky / k)^2 / 3), elastic below ky."""
    plate = fe.Plate(SQUARE, 0.02, STEEL)
    ky, Mp = 2 * 250e6 / (200e9 * 0.02), 250e6 * 0.02**2 / 4
    k = np.linspace(0, 5, 21) * ky
    moment = plot.bending_line(plate, 250e6, k)
    exact = np.where(k <= ky, 2 / 3 * k / ky, 1 - (ky / np.maximum(k, ky)) ** 2 / 3)
    assert np.allclose(moment[:5] / Mp, exact[:5], rtol=1e-9) and np.allclose(moment / Mp, exact, atol=0.02)
    ax = plot.moment_curvature(plate, 250e6, k[:8], model="whole-section")
    assert np.allclose(ax.lines[0].get_ydata() / Mp, np.minimum(1, 2 / 3 * k[:8] / ky), atol=0.02)


def test_section_forces():
    beam = fe.Beam([[0, 0, 0], [2.0, 0, 0]], STEEL, 1e-2, 1e-5, 1e-5, 1e-5)
    figure = plot.section_forces(beam, np.zeros(12), fe.BeamLoad(line=[0, 0, -6.0]), forces=("Vy", "Mz"))
    moment = figure.axes[1].lines[0].get_ydata()
    assert np.isclose(np.ptp(moment), 6 * 4 / 8) and figure.axes[1].get_ylabel() == "Mz"
    # Clamped at both ends, P in the middle: Vz jumps from P / 2 to -P / 2 within nothing.
    figure = plot.section_forces(beam, np.zeros(12), fe.BeamLoad(points=[(1.0, [0, 0, -6.0])]), forces=("Vy",), places=4)
    x, shear = figure.axes[0].lines[0].get_data()
    jump = np.argmax(np.abs(np.diff(shear)))
    assert np.isclose(abs(shear[jump + 1] - shear[jump]), 6.0) and x[jump] == 1 and x[jump + 1] - 1 < 1e-15
    with pytest.raises(fe.ArgumentError, match="element is int: expected one element"):
        plot.modes(3)


def test_edges_of_every_kind():
    """Every edge runs between neighbours: unit elements have edges of length 1, and of the slanted sides sqrt(2)."""
    cube = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
    wedge = np.concatenate([SQUARE[[0, 1, 3]], SQUARE[[0, 1, 3]] + [0, 0, 1]])
    for element, straight, slanted in ((fe.Plate(SQUARE, 0.1, STEEL), 4, 0),
                                       (fe.Plate(SQUARE[[0, 1, 3]], 0.1, STEEL), 2, 1),
                                       (fe.Solid(cube, STEEL), 12, 0), (fe.Solid(wedge, STEEL), 7, 2),
                                       (fe.Solid(wedge[:4], STEEL), 3, 3)):
        figure = plot.modes(element, 1)
        lines = [np.transpose(line.get_data_3d()) for line in figure.axes[0].lines]
        lengths = sorted(round(float(np.linalg.norm(line[-1] - line[0])), 9) for line in lines[::2])
        assert lengths == [1.0] * straight + [round(2**0.5, 9)] * slanted, element
        # The largest displacement is a quarter of the size.
        moved = max(np.abs(after - before).max() for before, after in zip(lines[::2], lines[1::2]))
        assert np.isclose(moved, 0.25) and figure.axes[0].get_title().startswith("mode 1: ")
    assert len(plot.modes(fe.Solid(cube, STEEL)).axes) == 6


def test_a_beam_bends_as_its_cubic():
    """The line between nodes that turn: w = sin-like for opposite turns, t L / 4 in the middle of two equal ones."""
    vector = np.array([[0, 0, 0, 0, -0.3, 0], [0, 0, 0, 0, 0.3, 0]])
    start, moved = plot._edge(np.array([[0.0, 0, 0], [2, 0, 0]]), vector, (0, 1), parts=5)
    # w' = -ry: slopes 0.3 and -0.3, the parabola 0.3 x (1 - x / 2).
    x = start[:, 0]
    assert np.allclose(x, [0, 0.5, 1, 1.5, 2]) and np.allclose((moved - start)[:, 2], 0.3 * x * (1 - x / 2))
    vector[1, 4] = -0.3  # the same turn at both ends: x (1 - x/2) (1 - x)
    start, moved = plot._edge(np.array([[0.0, 0, 0], [2, 0, 0]]), vector, (0, 1), parts=5)
    assert np.allclose((moved - start)[:, 2], 0.3 * x * (1 - x / 2) * (1 - x))
    vector[1, 4] = 0.0  # the first end alone: slope 0.3 there, 0 at the other end
    start, moved = plot._edge(np.array([[0.0, 0, 0], [2, 0, 0]]), vector, (0, 1), parts=5)
    assert np.allclose((moved - start)[:, 2], 0.3 * x * (1 - x / 2) ** 2)


def test_axes_of_a_yield_surface():
    ax = plot.yield_surface(fe.YieldSurface(P=10.0, Mz=4.0), [[1.0, 0, 3.0], [2.0, 0, 3.6]])
    assert (ax.get_xlabel(), ax.get_ylabel()) == ("Mz", "P")
    assert ax.lines[1].get_xdata().tolist() == [3, 3.6] and ax.lines[1].get_ydata().tolist() == [1, 2]


def test_hardening_of_a_strip():
    """Far beyond yield the line rises by Et h^3 / 12 and more, as of a strip free across: below E h^3 / 12."""
    plate = fe.Plate(SQUARE, 0.02, STEEL)
    k = np.array([0.0, 50, 60]) * 2 * 250e6 / (200e9 * 0.02)
    flat, rising = (plot.bending_line(plate, 250e6, k, hardening=Et) for Et in (0.0, 2e9))
    slope = (rising[2] - rising[1]) / (k[2] - k[1]) / (0.02**3 / 12)
    assert 0.95 * 2e9 < slope < 1.4 * 2e9 and flat[2] - flat[1] < 0.01 * flat[2]
    ax = plot.moment_curvature(plate, 250e6, [0.0, 1e-2])
    assert ax.lines[0].get_label() == "15 layers"


def test_what_a_beam_shows_when_nothing_is_said():
    beam = fe.Beam([[0, 0, 0], [2.0, 0, 0]], STEEL, 1e-2, 1e-5, 1e-5, 1e-5)
    figure = plot.section_forces(beam, np.zeros(12))
    assert [ax.get_ylabel() for ax in figure.axes] == ["N", "Vy", "Mz"]
    assert len(figure.axes[0].lines[0].get_xdata()) == 51


def test_without_matplotlib(monkeypatch):
    import sys

    monkeypatch.setitem(sys.modules, "matplotlib", None)
    with pytest.raises(ImportError, match="python3-matplotlib"):
        plot.yield_surface(fe.YieldSurface(P=10.0, Mz=4.0))
