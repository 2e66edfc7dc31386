"""Each argument reaches its place: what it must do to matrices and loads, by hand."""
import numpy as np
import pytest

import finites as fe
from finites._arrays import thread_count

SQUARE = np.array([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]], dtype=float)
E1, E2, G12, H = 8.0e4, 3.0e4, 1.1e4, 0.05
ORTHOTROPIC = fe.Orthotropic(E1=E1, E2=E2, nu12=0.0, G12=G12, G13=2e4, G23=5e4, expansion1=1e-5, expansion2=4e-5)


def energy(plate, u):
    return u.ravel() @ plate.stiffness() @ u.ravel()


def test_expansions_of_both_directions():
    """h E alpha T along an edge, half of it at each of its nodes."""
    plate = fe.Plate(SQUARE, H, ORTHOTROPIC, theory="thin")
    F = plate.temperature_load([10.0, 0.0]).reshape(4, 6)
    assert F[1, 0] == pytest.approx(0.5 * H * E1 * 1e-5 * 10)
    assert F[2, 1] == pytest.approx(0.5 * H * E2 * 4e-5 * 10)


@pytest.mark.parametrize("G13, G23", [(1e2, 1e5), (1e5, 1e2)])
def test_transverse_shear_moduli(G13, G23):
    """A strip along x, as thick as long: P L^3 / (3 E I) + P L / (5/6 G13 A)."""
    n, E, h = 16, 1e5, 1.0
    x = np.linspace(0, 1, n + 1)
    nodes = np.array([[[x[i], 0, 0], [x[i + 1], 0, 0], [x[i + 1], 1, 0], [x[i], 1, 0]] for i in range(n)])
    material = fe.Orthotropic(E1=E, E2=E, nu12=0.0, G12=E / 2, G13=G13, G23=G23)
    K = fe.Plate(nodes, h, material, theory="thick").stiffness()
    mesh = np.array([[2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1] for i in range(n)])
    unknowns, count = fe.freedoms(mesh, fixed=np.arange(12))
    tip = fe.assemble(K, unknowns, count).toarray()
    load = np.zeros(count)
    load[[-10, -4]] = 0.5  # uz of the last two nodes
    deflection = np.linalg.solve(tip, load)[-10]
    assert deflection == pytest.approx(1 / (3 * E / 12) + 1 / (5 / 6 * G13), rel=0.02)


def test_factors_of_twist_and_shear():
    """w = c x y twists by 2 c: energy 4 c^2 G12 h^3 / 12; ux = g y shears by g: energy g^2 G12 h."""
    twist, shear = np.zeros((4, 6)), np.zeros((4, 6))
    x, y = SQUARE[:, 0], SQUARE[:, 1]
    twist[:, 2], twist[:, 3], twist[:, 4] = 0.1 * x * y, 0.1 * x, -0.1 * y
    shear[:, 0], shear[:, 5] = 0.1 * y, -0.05
    for changes, factor_twist, factor_shear in (({}, 1, 1), ({"twist_factor": 3.0}, 3, 1),
                                                ({"inplane_shear_factor": 5.0}, 1, 5)):
        plate = fe.Plate(SQUARE, H, ORTHOTROPIC, theory="thin", **changes)
        assert energy(plate, twist) == pytest.approx(factor_twist * 4 * 0.01 * G12 * H**3 / 12)
        assert energy(plate, shear) == pytest.approx(factor_shear * 0.01 * G12 * H)


def test_mass_factor():
    plate = fe.Plate(SQUARE, H, fe.Isotropic(E=1e5, nu=0.3, density=40.0), mass_factor=2.5)
    assert plate.mass()[2::6, 2::6].sum() == pytest.approx(2.5 * 40 * H)


def test_point_load_in_element_axes():
    """A plate in the plane x = 0: its normal is global x."""
    upright = np.array([[0, 0, 0], [0, 1, 0], [0, 1, 1], [0, 0, 1]], dtype=float)
    plate = fe.Plate(upright, H, fe.Isotropic(E=1e5, nu=0.3))
    middle = [0.0, 0.5, 0.5]
    local, same = plate.point_load(middle, [2.0, 0.0, -5.0], axes="element"), plate.point_load(middle, [-5.0, 2.0, 0.0])
    assert local.reshape(4, 6)[:, :3].sum(axis=0) == pytest.approx([-5.0, 2.0, 0.0])
    assert local == pytest.approx(same)


BEAM = {"area": 0.02, "Iz": 3e-4, "Iy": 5e-5, "J": 7e-5}
WOOD = fe.Isotropic(E=1e6, nu=0.25, expansion=2e-5)


def beam(**changes):
    return fe.Beam([[0, 0, 0], [4, 0, 0]], WOOD, **BEAM, up=(0, 1, 0), **changes)


def test_released_forces_by_their_names():
    axial, torsion = 1e6 * 0.02 / 4, 4e5 * 7e-5 / 4
    along_y, along_z = 12 * 1e6 * 3e-4 / 64, 12 * 1e6 * 5e-5 / 64
    names = ("release_axial", "release_y", "release_z", "release_torsion")
    for released in (None, *names):
        K = beam(**({released: "first"} if released else {})).stiffness()
        wanted = {"release_axial": (0, axial), "release_y": (1, along_y), "release_z": (2, along_z),
                  "release_torsion": (3, torsion)}
        for name, (row, value) in wanted.items():
            assert K[row, row] == pytest.approx(0.0 if name == released else value, abs=1e-12 * axial)


@pytest.mark.parametrize("end, first, second", [("first", 0, -12), ("second", -12, 0), ("none", -6, -6)])
def test_released_end_bears_no_load(end, first, second):
    F = beam(release_y=end).loads(fe.BeamLoad(line=[0, -3.0, 0]))
    assert (F[1], F[7]) == pytest.approx((first, second))


def test_gradients_of_temperature():
    """E I alpha times the gradient is the moment about the other axis; the warmer side is the convex one."""
    about_z, about_y = 1e6 * 3e-4 * 2e-5 * 50, 1e6 * 5e-5 * 2e-5 * 50
    along_y = beam().loads(fe.BeamLoad(gradient_y=50.0))
    along_z = beam().loads(fe.BeamLoad(gradient_z=50.0))
    assert np.abs(along_y[[4, 5, 10, 11]]) == pytest.approx([0, about_z, 0, about_z])
    assert np.abs(along_z[[4, 5, 10, 11]]) == pytest.approx([about_y, 0, about_y, 0])
    # Warmer on the side of +y: a cantilever bends to the side of -y.
    free = np.linalg.solve(beam().stiffness()[6:, 6:], along_y[6:])
    assert free[1] == pytest.approx(-2e-5 * 50 * 4**2 / 2)
    free = np.linalg.solve(beam().stiffness()[6:, 6:], along_z[6:])
    assert free[2] == pytest.approx(-2e-5 * 50 * 4**2 / 2)


def test_moment_of_a_point():
    """A torsion at a quarter of the length: three quarters of it go to the near end."""
    F = beam().loads(fe.BeamLoad(points=[(1.0, [0, 0, 0], [8.0, 0, 0])]))
    assert F == pytest.approx([0, 0, 0, 6, 0, 0, 0, 0, 0, 2, 0, 0], abs=1e-12)


def test_second_modulus_of_a_beam():
    K = beam(E2=4e6).stiffness()
    assert K[1, 1] == pytest.approx(12 * 1e6 * 3e-4 / 64)
    assert K[2, 2] == pytest.approx(12 * 4e6 * 5e-5 / 64)


def test_points_of_a_wedge():
    nodes = [[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [0, 1, 1]]
    wedge = fe.Solid(nodes, fe.Isotropic(E=1e5, nu=0.3))
    assert wedge.geometric(stresses=np.ones((6, 6))).shape == (18, 18)
    assert wedge.results(np.zeros(18)).records.shape == (6,)
    with pytest.raises(fe.ArgumentError, match=r"stresses has shape \(2, 6\)"):
        wedge.geometric(stresses=np.ones((2, 6)))


def test_stiffness_factor_of_a_solid():
    cube = [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]]
    one, half = (fe.Solid(cube, fe.Isotropic(E=1e5, nu=0.3), stiffness_factor=f).stiffness() for f in (1.0, 0.5))
    assert half == pytest.approx(0.5 * one)


def test_seven_layers_unless_told_otherwise():
    """A rotation that yields half of the thickness: the moment depends on how many points see it."""
    plate = fe.Plate(SQUARE, 0.1, fe.Isotropic(E=200e3, nu=0.3))
    u = np.zeros((4, 6))
    kappa = 2 * 2 * 200.0 / 200e3 / 0.1
    u[:, 2], u[:, 4] = -0.5 * kappa * SQUARE[:, 0] ** 2, kappa * SQUARE[:, 0]
    moment = {layers: fe.PlateState(plate, 200.0, **({"layers": layers} if layers else {})).try_(u.ravel()).forces
              for layers in (None, 7, 5)}
    assert np.array_equal(moment[None], moment[7])
    assert not np.allclose(moment[7], moment[5])


def test_threads_are_counted():
    assert [thread_count(n) for n in (1, 3, 1024, 5000)] == [1, 3, 1024, 1024]


def test_each_element_of_a_batch_has_its_own_numbers():
    """All that may differ within a batch does; every matrix is that of the element alone, bit by bit."""
    random = np.random.default_rng(5)
    n = 19
    some = lambda low, high, *shape: random.uniform(low, high, (n, *shape))
    material = fe.Isotropic(E=some(1e5, 2e5), nu=some(0.1, 0.4), density=some(1, 9))
    cube = np.array([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]])
    beams = fe.Beam(some(0, 1, 2, 3) + [[0, 0, 0], [3, 0, 0]], material, area=some(1, 2), Iz=some(1, 2), Iy=some(3, 4),
                    J=some(5, 6), up=some(-1, 1, 3))
    plates = fe.Plate(SQUARE + some(-0.1, 0.1, 4, 3), some(0.1, 0.2), material)
    solids = fe.Solid(cube + some(-0.1, 0.1, 8, 3), material)
    for batch in (beams, plates, solids):
        for answer in (type(batch).stiffness, type(batch).mass):
            together = answer(batch, threads=2)
            for e in range(n):
                assert np.array_equal(together[e], answer(batch[e]))


def test_each_solid_has_its_own_temperature():
    """Held on all sides: -E alpha T / (1 - 2 nu)."""
    cube = [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]]
    solids = fe.Solid([cube, cube, cube], fe.Isotropic(E=1e5, nu=0.25, expansion=1e-5))
    for change in (np.array([0.0, 10.0, -4.0]), 10.0):
        stress = solids.results(np.zeros(24), change).stress
        assert stress[..., 0] == pytest.approx(np.broadcast_to(np.reshape(change, (-1, 1)) * -2.0, (3, 8)))


def test_nodes_of_a_triangle():
    """In element axes: from the first node, x to the second."""
    plate = fe.Plate([[1, 1, 0], [1, 3, 0], [0, 1, 0]], H, WOOD)
    assert plate.results(np.zeros(18)).at_nodes.xyz == pytest.approx(np.array([[0, 0, 0], [2, 0, 0], [0, 1, 0]]))
