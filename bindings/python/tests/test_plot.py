"""Pictures: what they draw agrees with closed forms."""
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
