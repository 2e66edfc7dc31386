"""Solids: laws and closed forms."""
import numpy as np
import pytest

import finites as fe


@pytest.mark.parametrize("nodes", [4, 6, 8])
def test_batches_threads_and_rigid_motion(shapes, random, steel, nodes):
    xyz = shapes.solids(random, 19, nodes)
    solids = fe.Solid(xyz, steel)
    m = 3 * nodes
    u = random.standard_normal((19, m)) * 1e-3
    calls = [lambda s, i, t: s.stiffness(threads=t), lambda s, i, t: s.mass(threads=t),
             lambda s, i, t: s.geometric(u[i], threads=t), lambda s, i, t: s.forces(u[i], threads=t),
             lambda s, i, t: s.body_load(u[i][..., :3], threads=t),
             lambda s, i, t: s.temperature_load(u[i][..., 0], threads=t),
             lambda s, i, t: s.face_load(1, u[i][..., :3], u[i][..., 3], threads=t),
             lambda s, i, t: s.results(u[i], 3.0, threads=t).records["stress"]]
    for number, call in enumerate(calls):
        together = call(solids, slice(None), 1)
        assert together.tobytes() == call(solids, slice(None), 4).tobytes(), number
        assert together.tobytes() == np.array([call(solids[i], i, 1) for i in range(19)]).tobytes(), number
    K = solids[0].stiffness()
    assert K.shape == (m, m) and np.allclose(K, K.T, rtol=0, atol=1e-12 * np.abs(K).max())
    for motion in shapes.rigid_motions(xyz[0], 3):
        assert np.abs(solids[0].forces(motion)).max() < 1e-10 * np.abs(K).max()


@pytest.mark.parametrize("nodes", [4, 6, 8])
def test_constant_strain(shapes, random, steel, nodes):
    """A field of strain e has the stresses of Hooke's law; its invariants do not depend on the element axes."""
    xyz = shapes.solids(random, 1, nodes)[0]
    solid = fe.Solid(xyz, steel)
    e = random.standard_normal((3, 3)) * 1e-3
    e = (e + e.T) / 2
    r = solid.results((xyz @ e).ravel())
    stress = 2 * steel.G * e + steel.E * steel.nu / ((1 + steel.nu) * (1 - 2 * steel.nu)) * np.trace(e) * np.eye(3)
    principal = np.sort(np.linalg.eigvalsh(stress))[::-1]
    s = stress - np.trace(stress) / 3 * np.eye(3)
    for points in (r, r.at_nodes):
        assert np.allclose(points.principal, principal, rtol=1e-6, atol=1e-6 * np.abs(principal).max())
        assert np.allclose(points.von_mises, np.sqrt(1.5 * np.sum(s * s)), rtol=1e-6)
    axes = solid.measures().axes
    local = axes @ stress @ axes.T
    assert np.allclose(r.stress[0], local[[0, 1, 2, 0, 0, 1], [0, 1, 2, 1, 2, 2]], rtol=0,
                       atol=1e-8 * np.abs(stress).max())


def test_sums_of_mass_and_loads(steel):
    box = np.array([[0.0, 0, 0], [2, 0, 0], [2, 3, 0], [0, 3, 0], [0, 0, 4], [2, 0, 4], [2, 3, 4], [0, 3, 4]])
    brick = fe.Solid(box, steel)
    assert np.isclose(brick.measures().volume, 24) and np.isclose(brick.measures().mass, 24 * 7850)
    move = np.tile([1.0, 0, 0], 8)
    assert np.isclose(move @ brick.mass() @ move, 24 * 7850)
    total = brick.body_load([1.0, 2, 3]).reshape(8, 3).sum(axis=0)
    assert np.allclose(total, [24, 48, 72])
    # Pressure on the first face, z = 0, acts upwards into the solid.
    assert np.allclose(brick.face_load(1, pressure=5.0).reshape(8, 3).sum(axis=0), [0, 0, 30])
    assert np.allclose(brick.face_load(2, [0, 0, 7.0]).reshape(8, 3).sum(axis=0), [0, 0, 42])


def test_free_expansion_has_no_stress(steel, shapes, random):
    xyz = shapes.solids(random, 1, 8)[0]
    solid = fe.Solid(xyz, steel)
    u = (steel.expansion * 40 * xyz).ravel()
    assert np.abs(solid.results(u, 40.0).stress).max() < 1e-8 * steel.E * steel.expansion * 40
    F = solid.forces(u)
    assert np.allclose(solid.temperature_load(40.0), F, rtol=0, atol=1e-9 * np.abs(F).max())


def test_geometric_of_stresses(steel):
    """A bar of area 1 under sx: a turn w = phi x has the energy sx phi^2 V / 2."""
    cube = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]])
    solid = fe.Solid(cube, steel)
    axes = solid.measures().axes
    sigma = axes @ np.diag([100.0, 0, 0]) @ axes.T
    given = np.tile(sigma[[0, 1, 2, 0, 0, 1], [0, 1, 2, 1, 2, 2]], (8, 1))
    u = np.zeros((8, 3))
    u[:, 2] = 0.01 * cube[:, 0]
    assert np.isclose(u.ravel() @ solid.geometric(stresses=given) @ u.ravel(), 100 * 1e-4)
