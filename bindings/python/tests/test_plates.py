"""Plates: shapes of answers, laws and closed forms."""
import numpy as np
import pytest

import finites as fe

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
THEORIES = ["thick", "thin", "membrane", "membrane-reduced"]


def nodes_of(shapes, random, corners, count):
    return (shapes.quadrilaterals if corners == 4 else shapes.triangles)(random, count)


@pytest.mark.parametrize("corners", [3, 4])
@pytest.mark.parametrize("theory", THEORIES)
def test_shapes_of_one_and_of_a_batch(shapes, random, steel, corners, theory):
    nodes = nodes_of(shapes, random, corners, 5)
    one, five = fe.Plate(nodes[0], 0.02, steel, theory), fe.Plate(nodes, 0.02, steel, theory)
    m = 6 * corners
    u = random.standard_normal((5, m))
    for call in (lambda p: p.stiffness(), lambda p: p.mass()):
        assert call(one).shape == (m, m) and call(five).shape == (5, m, m)
    assert one.geometric(u[0]).shape == (m, m) and five.geometric(u).shape == (5, m, m)
    assert one.forces(u[0]).shape == (m,) and five.forces(u).shape == (5, m)
    r1, r5 = one.results(u[0]), five.results(u)
    assert r1.moments.shape == (4, 3) and r5.moments.shape == (5, 4, 3)
    assert r5.top.von_mises.shape == (5, 4) and r5.at_nodes.top.stress.shape == (5, corners, 3)
    assert five.measures().axes.shape == (5, 3, 3) and one.measures().area.shape == ()


@pytest.mark.parametrize("corners", [3, 4])
@pytest.mark.parametrize("theory", THEORIES)
def test_a_batch_has_the_bits_of_single_calls(shapes, random, steel, corners, theory):
    nodes = nodes_of(shapes, random, corners, 23)
    thickness = random.uniform(0.01, 0.05, 23)
    batch = fe.Plate(nodes, thickness, steel, theory)
    u = random.standard_normal((23, 6 * corners)) * 1e-3
    load = random.standard_normal((23, 3))
    calls = {
        "stiffness": lambda p, i: p.stiffness(),
        "mass": lambda p, i: p.mass(),
        "geometric": lambda p, i: p.geometric(u[i]),
        "forces": lambda p, i: p.forces(u[i]),
        "surface": lambda p, i: p.surface_load(load[i], axes="element"),
        "body": lambda p, i: p.body_load(load[i]),
        "temperature": lambda p, i: p.temperature_load(load[i][..., :2]),
        "results": lambda p, i: p.results(u[i], load[i][..., :2]).records["top"]["stress"],
    }
    for name, call in calls.items():
        together = call(batch, slice(None))
        singly = np.array([call(batch[i], i) for i in range(23)])
        assert together.tobytes() == singly.tobytes(), name


def test_a_batch_whose_elements_differ_in_factors(shapes, random, steel):
    nodes = shapes.quadrilaterals(random, 9)
    factor = np.linspace(0.5, 1.5, 9)
    batch = fe.Plate(nodes, 0.02, steel, bending_factor=factor)
    single = [fe.Plate(nodes[i], 0.02, steel, bending_factor=factor[i]).stiffness() for i in range(9)]
    assert np.array_equal(batch.stiffness(threads=3), single)


@pytest.mark.parametrize("threads", [2, 3, 8, 100])
def test_threads_change_nothing(shapes, random, steel, threads):
    plates = fe.Plate(shapes.quadrilaterals(random, 37), 0.02, steel)
    u = random.standard_normal((37, 24))
    assert plates.stiffness(threads=threads).tobytes() == plates.stiffness().tobytes()
    assert plates.results(u, threads=threads).records.tobytes() == plates.results(u).records.tobytes()


@pytest.mark.parametrize("corners", [3, 4])
@pytest.mark.parametrize("theory", ["thick", "thin"])
def test_rigid_motion_needs_no_force(shapes, random, steel, corners, theory):
    nodes = nodes_of(shapes, random, corners, 1)[0]
    plate = fe.Plate(nodes, 0.02, steel, theory)
    K = plate.stiffness()
    assert np.allclose(K, K.T, rtol=0, atol=1e-12 * np.abs(K).max())
    for motion in shapes.rigid_motions(nodes, 6):
        assert np.abs(plate.forces(motion)).max() < 1e-11 * np.abs(K).max() * np.abs(motion).max()


def test_forces_are_stiffness_times_displacements(shapes, random, steel):
    plates = fe.Plate(shapes.quadrilaterals(random, 6), 0.02, steel)
    u = random.standard_normal((6, 24))
    product = np.einsum("nij,nj->ni", plates.stiffness(), u)
    assert np.allclose(plates.forces(u), product, rtol=0, atol=1e-11 * np.abs(product).max())


@pytest.mark.parametrize("theory", ["thick", "thin", "membrane"])
def test_constant_strain(steel, theory):
    """A field of strains ex, ey, gxy has the stresses of plane stress everywhere."""
    plate = fe.Plate(SQUARE + [[0.1, 0, 0], [0, 0.2, 0], [0.1, 0, 0], [0, 0, 0]], 0.02, steel, theory)
    x, y = np.asarray(plate.nodes)[:, 0], np.asarray(plate.nodes)[:, 1]
    ex, ey, gxy = 1e-3, -4e-4, 6e-4
    u = np.zeros((4, 6))
    u[:, 0], u[:, 1] = ex * x + gxy / 2 * y, ey * y + gxy / 2 * x
    r = plate.results(u.ravel())
    # Element axes: x along the first side.
    angle = np.arctan2(y[1] - y[0], x[1] - x[0])
    c, s = np.cos(angle), np.sin(angle)
    strain = np.array([[ex, gxy / 2], [gxy / 2, ey]])
    local = np.array([[c, s], [-s, c]]) @ strain @ np.array([[c, s], [-s, c]]).T
    e = steel.E / (1 - steel.nu**2)
    sx, sy = e * (local[0, 0] + steel.nu * local[1, 1]), e * (local[1, 1] + steel.nu * local[0, 0])
    sxy = steel.G * 2 * local[0, 1]
    for points in (r, r.at_nodes):
        assert np.allclose(points.top.stress, [sx, sy, sxy], rtol=1e-9)
        assert np.allclose(points.forces, 0.02 * np.array([sx, sy, sxy]), rtol=1e-9)
        assert np.allclose(points.middle.von_mises, np.sqrt(sx**2 - sx * sy + sy**2 + 3 * sxy**2), rtol=1e-9)


@pytest.mark.parametrize("theory", ["thick", "thin"])
def test_constant_curvature(steel, theory):
    """Mx = D (kx + nu ky), tension at the top face for a positive moment."""
    plate = fe.Plate(SQUARE, 0.02, steel, theory)
    x, y = SQUARE[:, 0], SQUARE[:, 1]
    kx, ky = 1e-3, 2e-3
    u = np.zeros((4, 6))
    u[:, 2], u[:, 3], u[:, 4] = -(kx * x**2 + ky * y**2) / 2, -ky * y, kx * x
    D = steel.E * 0.02**3 / (12 * (1 - steel.nu**2))
    r = plate.results(u.ravel())
    mx = D * (kx + steel.nu * ky)
    assert np.allclose(r.moments[:, 0], mx, rtol=1e-9)
    assert np.allclose(r.top.stress[:, 0], 6 * mx / 0.02**2, rtol=1e-9)
    assert np.allclose(r.bottom.stress[:, 0], -6 * mx / 0.02**2, rtol=1e-9)


def test_sums_of_mass_and_loads(shapes, random, steel):
    nodes = shapes.quadrilaterals(random, 4)
    plates = fe.Plate(nodes, [0.01, 0.02, 0.03, 0.04], steel)
    # Area of a flat quadrilateral: half the cross product of its diagonals.
    area = np.linalg.norm(np.cross(nodes[:, 2] - nodes[:, 0], nodes[:, 3] - nodes[:, 1]), axis=1) / 2
    sizes = plates.measures()
    assert np.allclose(sizes.area, area, rtol=1e-12)
    assert np.allclose(sizes.volume, area * plates.thickness, rtol=1e-12)
    assert np.allclose(sizes.mass, 7850 * area * plates.thickness, rtol=1e-12)
    assert np.allclose(sizes.center, nodes.mean(axis=1))
    along_x = np.tile([1.0, 0, 0, 0, 0, 0], 4)
    assert np.allclose(np.einsum("i,nij,j->n", along_x, plates.mass(), along_x), sizes.mass, rtol=1e-9)
    load = np.array([1.0, -2.0, 3.0])
    total = plates.surface_load(load).reshape(4, 4, 6)[:, :, :3].sum(axis=1)
    assert np.allclose(total, area[:, None] * load, rtol=1e-9)
    total = plates.body_load(load).reshape(4, 4, 6)[:, :, :3].sum(axis=1)
    assert np.allclose(total, (area * plates.thickness)[:, None] * load, rtol=1e-9)
    normal = sizes.axes[:, 2]
    total = plates.surface_load([0, 0, 5.0], axes="element").reshape(4, 4, 6)[:, :, :3].sum(axis=1)
    assert np.allclose(total, 5 * area[:, None] * normal, rtol=1e-9)


def test_free_expansion_has_no_stress(steel):
    plate = fe.Plate(SQUARE, 0.02, steel)
    u = np.zeros((4, 6))
    u[:, :2] = steel.expansion * 30 * SQUARE[:, :2]
    r = plate.results(u.ravel(), [30.0, 0.0])
    assert np.abs(r.top.stress).max() < 1e-9 * steel.E * steel.expansion * 30
    assert np.allclose(plate.temperature_load([30.0, 0.0]), plate.forces(u.ravel()), rtol=0,
                       atol=1e-9 * np.abs(plate.forces(u.ravel())).max())


def test_tension_stiffens(steel):
    """Under N per length the deflections w of a square give the energy N/2 int (dw/dx)^2."""
    plate = fe.Plate(SQUARE, 0.02, steel)
    forces = np.tile([100.0, 0, 0, 0, 0, 0], (4, 1))
    KG = plate.geometric(forces=forces)
    u = np.zeros((4, 6))
    u[:, 2] = 0.01 * SQUARE[:, 0]
    u[:, 4] = -0.01
    assert np.isclose(u.ravel() @ KG @ u.ravel(), 100 * 0.01**2, rtol=1e-9)


def test_one_element_under_many_load_cases(steel, random):
    plate = fe.Plate(SQUARE, 0.02, steel)
    u = random.standard_normal((7, 24))
    assert plate.forces(u).shape == (7, 24)
    assert np.array_equal(plate.forces(u)[3], plate.forces(u[3]))


def test_where_a_point_lies(steel):
    plate = fe.Plate(SQUARE, 0.02, steel)
    found = plate.locate([[0.5, 0.5, 0.0], [0.5, 0.5, 0.4], [3.0, 0.5, -0.2]])
    assert found.inside.tolist() == [True, True, False] or found.inside.tolist() == [True, False, False]
    assert found.above.tolist() == [False, True, False]
    assert np.allclose(found.distance, [0, 0.4, -0.2])


def test_a_force_at_a_node_stays_there(steel):
    load = fe.Plate(SQUARE, 0.02, steel).point_load(SQUARE[2], [0, 0, -7.0]).reshape(4, 6)
    assert np.isclose(load[2, 2], -7.0) and np.isclose(load[:, 2].sum(), -7.0)


def test_an_orthotropic_plate_of_isotropic_numbers(steel):
    G = steel.G
    same = fe.Orthotropic(E1=steel.E, E2=steel.E, nu12=steel.nu, G12=G, density=7850.0)
    for theory in ("thick", "thin"):
        K, other = (fe.Plate(SQUARE, 0.02, m, theory).stiffness() for m in (steel, same))
        assert np.allclose(K, other, rtol=0, atol=1e-9 * np.abs(K).max())


def test_wood_along_its_grain():
    """A strain along direction 1, at 30 degrees: s1 = E1 / (1 - nu12 nu21) e1."""
    wood = fe.Orthotropic(E1=11e9, E2=0.5e9, nu12=0.4, G12=0.7e9)
    angle = np.pi / 6
    plate = fe.Plate(SQUARE, 0.02, wood, "thin", angle=angle)
    d = np.array([np.cos(angle), np.sin(angle)])
    u = np.zeros((4, 6))
    u[:, :2] = 1e-3 * (SQUARE[:, :2] @ d)[:, None] * d
    nu21 = 0.4 * 0.5 / 11
    # The angle counts in single precision.
    assert np.allclose(d @ plate.results(u.ravel()).forces[0][[[0, 2], [2, 1]]] @ d,
                       0.02 * 11e9 / (1 - 0.4 * nu21) * 1e-3, rtol=1e-6)


def test_an_offset_is_a_rigid_link(steel):
    """A plate whose corners lie 0.1 above its nodes: the stiffness of the corners by the rigid link."""
    up = np.tile([0.0, 0, 0.1], (4, 1))
    K = fe.Plate(SQUARE, 0.02, steel, offset=up).stiffness()
    corner = fe.Plate(SQUARE + up, 0.02, steel).stiffness()
    link = np.eye(6)
    link[:3, 3:] = -np.array([[0, -0.1, 0], [0.1, 0, 0], [0, 0, 0]])
    T = np.kron(np.eye(4), link)
    assert np.allclose(K, T.T @ corner @ T, rtol=0, atol=1e-10 * np.abs(K).max())
