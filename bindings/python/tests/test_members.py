"""Beams, trusses, cables, links and springs against closed forms."""
import numpy as np
import pytest

import finites as fe

E, A, I, J = 200e9, 8e-3, 6e-5, 2e-5


@pytest.fixture
def beam():
    return fe.Beam([[0, 0, 0], [2.0, 0, 0]], fe.Isotropic(E=E, nu=0.25), A, Iz=I, Iy=I / 2, J=J)


def test_entries_of_a_beam(beam):
    """Axial EA/L, torsion GJ/L, bending 12EI/L^3, 6EI/L^2, 4EI/L, 2EI/L."""
    K, L, G = beam.stiffness(), 2.0, E / 2.5
    assert np.isclose(K[0, 0], E * A / L) and np.isclose(K[3, 3], G * J / L)
    assert np.isclose(K[2, 2], 12 * E * I / L**3) and np.isclose(K[4, 4], 4 * E * I / L)  # x-z: local y is global Z
    assert np.isclose(K[4, 10], 2 * E * I / L) and np.isclose(abs(K[2, 4]), 6 * E * I / L**2)
    assert np.isclose(K[1, 1], 12 * E * I / 2 / L**3)


def test_shear_makes_a_beam_softer():
    """Tip of a cantilever: P L^3 / 3EI + P L / (G As)."""
    soft = fe.Beam([[0, 0, 0], [2.0, 0, 0]], fe.Isotropic(E=E, nu=0.25), A, Iz=I, Iy=I, J=J, shear_area_y=5e-3)
    w = np.linalg.solve(soft.stiffness()[6:, 6:], [0, 0, 1000.0, 0, 0, 0])[2]
    assert np.isclose(w, 1000 * 8 / (3 * E * I) + 1000 * 2 / (E / 2.5 * 5e-3))


def test_a_pin_has_no_moment():
    pinned = fe.Beam([[0, 0, 0], [2.0, 0, 0]], fe.Isotropic(E=E, nu=0.25), A, Iz=I, Iy=I, J=J, fixity_z=[1, 0])
    K = pinned.stiffness()
    assert np.isclose(K[2, 2], 3 * E * I / 8) and np.abs(K[10]).max() < 1e-9 * np.abs(K).max()


def test_batches_threads_and_rigid_motion(shapes, random):
    nodes = shapes.members(random, 21)
    beams = fe.Beam(nodes, fe.Isotropic(E=E, nu=0.25, density=7850), A, Iz=I, Iy=random.uniform(1e-5, 5e-5, 21), J=J)
    u, axial = random.standard_normal((21, 12)), random.standard_normal(21)
    calls = [lambda b, i, t: b.stiffness(threads=t), lambda b, i, t: b.mass(threads=t),
             lambda b, i, t: b.mass(lumped=True, threads=t), lambda b, i, t: b.geometric(u[i], threads=t),
             lambda b, i, t: b.geometric(axial=axial[i], threads=t), lambda b, i, t: b.forces(u[i], threads=t),
             lambda b, i, t: b.loads(fe.BeamLoad(line=u[i][..., :3]), threads=t)]
    for call in calls:
        together = call(beams, slice(None), 1)
        assert together.tobytes() == call(beams, slice(None), 4).tobytes()
        assert together.tobytes() == np.array([call(beams[i], i, 1) for i in range(21)]).tobytes()
    for motion in shapes.rigid_motions(nodes[0], 6):
        assert np.abs(beams[0].forces(motion)).max() < 1e-10 * np.abs(beams[0].stiffness()).max()


def test_loads_of_a_clamped_beam(beam):
    """q L / 2 and q L^2 / 12; P at the middle P / 2 and P L / 8; E A alpha T."""
    F = beam.loads(fe.BeamLoad(line=[0, 0, -5.0]))
    assert np.allclose(F[[2, 8]], -5) and np.allclose(np.abs(F[[4, 10]]), 5 * 4 / 12)
    F = beam.loads(fe.BeamLoad(points=[(1.0, [0, 0, -8.0])]))
    assert np.allclose(F[[2, 8]], -4) and np.allclose(np.abs(F[[4, 10]]), 8 * 2 / 8)
    warm = fe.Beam([[0, 0, 0], [2.0, 0, 0]], fe.Isotropic(E=E, nu=0.25, expansion=1e-5), A, Iz=I, Iy=I, J=J)
    assert np.allclose(warm.loads(fe.BeamLoad(temperature=20.0))[[0, 6]], [-E * A * 2e-4, E * A * 2e-4])


def test_sections_of_a_clamped_beam(beam):
    """Under q: M = q L^2 / 24 in the middle, w = q L^4 / 384 EI."""
    s = beam.sections(np.zeros(12), fe.BeamLoad(line=[0, 0, -5.0]), places=5)
    assert np.allclose(s.x, [0, 0.5, 1, 1.5, 2])
    assert np.allclose(np.abs(s.Mz[[0, 2, 4]]), [5 * 4 / 12, 5 * 4 / 24, 5 * 4 / 12]) and s.Mz[0] * s.Mz[2] < 0
    assert np.allclose(s.Vy[2], 0, atol=1e-9) and np.isclose(abs(s.Vy[0]), 5)
    assert np.isclose(s.displacement[2, 1], -5 * 16 / (384 * E * I))
    assert beam.sections(np.zeros(12), x=[0.3]).N.shape == (1,)
    many = beam.sections(np.zeros((4, 12)), places=3)
    assert many.forces.shape == (4, 3, 3) and many.x.shape == (4, 3)


def test_mass_of_a_beam(beam):
    heavy = fe.Beam(beam.nodes, fe.Isotropic(E=E, nu=0.25, density=7850), A, Iz=I, Iy=I, J=J)
    move = np.tile([0, 1.0, 0, 0, 0, 0], 2)
    for lumped in (False, True):
        assert np.isclose(move @ heavy.mass(lumped=lumped) @ move, 7850 * A * 2)
    assert np.isclose(heavy.measures().mass, 7850 * A * 2) and np.isclose(heavy.measures().length, 2)


def test_a_truss(shapes, random):
    nodes = shapes.members(random, 5)
    bars = fe.Truss(nodes, fe.Isotropic(E=E, nu=0.3, density=7850, expansion=1e-5), 1e-4)
    d = nodes[:, 1] - nodes[:, 0]
    L = np.linalg.norm(d, axis=1)
    d = d / L[:, None]
    k = (E * 1e-4 / L)[:, None, None] * d[:, :, None] * d[:, None, :]
    assert np.allclose(bars.stiffness(), np.block([[k, -k], [-k, k]]), rtol=1e-9, atol=1e-3)
    u = random.standard_normal((5, 6)) * 1e-3
    stretch = np.einsum("ni,ni->n", d, u[:, 3:] - u[:, :3])
    assert np.allclose(bars.axial_force(u, 10.0), E * 1e-4 * (stretch / L - 1e-4), rtol=1e-9)
    # String stiffness: N / L across.
    string = fe.Truss([[0, 0, 0], [2.0, 0, 0]], fe.Isotropic(E=E, nu=0.3), 1e-4, pretension=60.0)
    assert np.isclose(string.stiffness()[1, 1], 30.0) and np.isclose(string.geometric(axial=60.0)[2, 2], 30.0)
    assert np.allclose(bars.loads([0, 0, -2.0])[:, [2, 5]].sum(axis=1), -2 * L)


def test_a_cable_hangs_as_a_catenary():
    """A stiff cable: 2 a sinh(L / 2a) = S, the pull is q a, the tension at the ends q (a + sag)."""
    L, S, q = 10.0, 12.0, 8.0
    cable = fe.Cable([[0, 0, 0], [L, 0, 0]], 1e15, 1e-2, S, load=[0, 0, -q])
    low, high = 0.5, 100.0
    for _ in range(200):
        a = (low + high) / 2
        low, high = (a, high) if 2 * a * np.sinh(L / (2 * a)) > S else (low, a)
    forces, tension = cable.forces()
    sag = a * (np.cosh(L / (2 * a)) - 1)
    assert np.isclose(forces[3], q * a) and np.isclose(forces[0], -q * a)
    assert np.allclose(forces[[2, 5]], q * S / 2) and np.allclose(tension, q * (a + sag))
    shape = cable.shape(places=3)
    assert np.allclose(shape.xyz[1], [L / 2, 0, -sag]) and np.isclose(shape.tension[1], q * a)


def test_the_stiffness_of_a_cable_is_the_derivative_of_its_forces(random):
    cable = fe.Cable([[0, 0, 0], [8.0, 1, 2]], 160e9, 1e-5, 9.0, load=[0, 0, -8.0])
    K, step = cable.stiffness(), 1e-5
    for j in range(6):
        moved = np.zeros(6)
        moved[j] = step
        at = [cable.replace(nodes=cable.nodes + s * moved.reshape(2, 3)).forces().forces for s in (1, -1)]
        assert np.allclose((at[0] - at[1]) / (2 * step), K[:, j], rtol=0, atol=1e-5 * np.abs(K).max())


def test_links_and_springs(random, shapes):
    k = np.array([5.0, 6, 7, 8, 9, 10])
    link = fe.Link([[1, 2, 3], [1, 2, 3]], k)
    assert np.allclose(np.diag(link.stiffness()), np.tile(k, 2))
    axes = shapes.rotation(random)
    spring = fe.Spring(k, axes=axes)
    K = spring.stiffness()[6:, 6:]
    assert np.allclose(K[:3, :3], axes.T @ np.diag(k[:3]) @ axes) and np.allclose(K[3:, 3:],
                                                                                  axes.T @ np.diag(k[3:]) @ axes)
    u = random.standard_normal(12)
    assert np.allclose(spring.forces(u), spring.stiffness() @ u) and np.allclose(link.forces(u), link.stiffness() @ u)
    # A link of length 2 with its point at mid-length: shear turns the ends.
    long = fe.Link([[0, 0, 0], [2.0, 0, 0]], [0, 7.0, 0, 0, 0, 0], up=[0, 1.0, 0])
    assert np.isclose(long.stiffness()[1, 1], 7.0) and np.isclose(long.stiffness()[5, 5], 7.0)
    at_ends = fe.Link([[0, 0, 0], [2.0, 0, 0]], [0, 7.0, 0, 0, 0, 0], up=[0, 1.0, 0], at_ends=True)
    assert np.isclose(at_ends.stiffness()[5, 5], 0.0)
