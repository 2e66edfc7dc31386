"""Every argument reaches the field of the record that it is called after, and what is left out has the value of the
header; what a load or a factor means by closed forms."""
import inspect
import pickle

import numpy as np
import pytest

import finites as fe
from finites import _finites
from finites._elements import Elements

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
MEMBER = np.array([[0.0, 0, 0], [2, 0, 0]])
CUBE = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
STEEL = fe.Isotropic(E=210e9, nu=0.3, density=7850.0, expansion=1.2e-5)
WOOD = fe.Orthotropic(E1=11e9, E2=0.5e9, nu12=0.4, G12=0.7e9, G13=0.6e9, G23=0.1e9, density=450.0, expansion1=4e-6,
                      expansion2=3e-5)
OF_STEEL = {"E": 210e9, "density": 7850.0, "expansion": 1.2e-5}

# A kind of element with all its arguments, and the fields that they make.
RECORDS = [
    (fe.Plate(SQUARE, 0.02, STEEL, "membrane-reduced", offset=SQUARE + 0.1, membrane_factor=0.9, bending_factor=0.8,
              shear_factor=0.7, mass_factor=0.6),
     {"nodes": 4, "theory": 98, "orthotropic": 0, "xyz": SQUARE, "offset": SQUARE + 0.1, "thickness": 0.02, "nu": 0.3,
      "membrane_factor": 0.9, "bending_factor": 0.8, "shear_factor": 0.7, "mass_factor": 0.6, **OF_STEEL}),
    (fe.Plate(SQUARE[:3], 0.03, WOOD, "thin", angle=0.4, twist_factor=0.5, inplane_shear_factor=0.25),
     {"nodes": 3, "theory": 1, "orthotropic": 1, "angle": 0.4, "twist_factor": 0.5, "inplane_shear_factor": 0.25,
      "thickness": 0.03, "E": 11e9, "E2": 0.5e9, "nu": 0.4, "G12": 0.7e9, "G13": 0.6e9, "G23": 0.1e9, "density": 450.0,
      "expansion": 4e-6, "expansion2": 3e-5, "xyz": np.concatenate([SQUARE[:3], np.zeros((1, 3))])}),
    (fe.Plate(SQUARE[:3], 0.02, STEEL, offset=SQUARE[:3] + 0.1),
     {"nodes": 3, "thickness": 0.02, "nu": 0.3, **OF_STEEL, "xyz": np.concatenate([SQUARE[:3], np.zeros((1, 3))]),
      "offset": np.concatenate([SQUARE[:3] + 0.1, np.zeros((1, 3))])}),
    (fe.Plate(SQUARE, 0.02, STEEL, "membrane"), {"nodes": 4, "theory": 2, "xyz": SQUARE, "thickness": 0.02, "nu": 0.3,
                                                 **OF_STEEL}),
    (fe.Beam(MEMBER, STEEL, 1.0, 2.0, 3.0, 4.0, shear_area_y=5.0, shear_area_z=6.0, up=[0, 1, 2], offset=MEMBER + 0.1,
             E2=7.0, fixity_z=[0.1, 0.2], fixity_y=[0.3, 0.4], release_axial="first", release_y="second",
             release_z="none", release_torsion="first"),
     {"xyz": MEMBER, "area": 1.0, "Iz": 2.0, "Iy": 3.0, "J": 4.0, "shear_area_y": 5.0, "shear_area_z": 6.0,
      "up": [0, 1, 2], "offset": MEMBER + 0.1, "E2": 7.0, "fixity_z": [0.1, 0.2], "fixity_y": [0.3, 0.4],
      "release_axial": 1, "release_y": 2, "release_z": 0, "release_torsion": 1, "G": 210e9 / 2.6, **OF_STEEL}),
    (fe.Beam(MEMBER, STEEL, 1.0, 2.0, 3.0, 4.0, release_axial="none", release_y="first", release_z="second",
             release_torsion="second"),
     {"xyz": MEMBER, "area": 1.0, "Iz": 2.0, "Iy": 3.0, "J": 4.0, "release_y": 1, "release_z": 2, "release_torsion": 2,
      "G": 210e9 / 2.6, **OF_STEEL}),
    (fe.Truss(MEMBER, STEEL, 1.0, pretension=2.0), {"xyz": MEMBER, "area": 1.0, "pretension": 2.0, **OF_STEEL}),
    (fe.Cable(MEMBER, 1.0, 2.0, 3.0, load=[4, 5, 6], strain=7.0),
     {"xyz": MEMBER, "E": 1.0, "area": 2.0, "length": 3.0, "load": [4, 5, 6], "strain": 7.0}),
    (fe.Link(MEMBER, np.arange(6), up=[0, 1, 2], at_ends=True),
     {"xyz": MEMBER, "k": np.arange(6), "up": [0, 1, 2], "at_ends": 1}),
    (fe.Link(MEMBER, np.arange(6)), {"xyz": MEMBER, "k": np.arange(6)}),
    (fe.Spring(np.arange(6), axes=np.eye(3)[[1, 2, 0]]), {"k": np.arange(6), "axes": np.eye(3)[[1, 2, 0]]}),
    (fe.Solid(CUBE, STEEL, stiffness_factor=0.5), {"nodes": 8, "xyz": CUBE, "nu": 0.3, "stiffness_factor": 0.5,
                                                   **OF_STEEL}),
    (fe.Solid(CUBE, STEEL), {"nodes": 8, "xyz": CUBE, "nu": 0.3, **OF_STEEL}),
    (fe.YieldSurface(My=2.0, Mz=3.0), {"curve": 3, "forces": 6, "capacity": [1, 2, 3]}),
    (fe.YieldSurface(P=1.5, My=2.0, curve="orbison"), {"curve": 2, "forces": 4, "capacity": [1.5, 2, 1]}),
    (fe.YieldSurface(P=1.5, Mz=2.0), {"curve": 3, "forces": 5, "capacity": [1.5, 1, 2]}),
    (fe.YieldSurface(P=1.5, My=2.0, Mz=3.0), {"curve": 3, "forces": 7, "capacity": [1.5, 2, 3]}),
    (fe.YieldSurface(P=1.5, curve="single"), {"curve": 1, "forces": 1, "capacity": [1.5, 1, 1]}),
    (fe.YieldSurface(My=2.0, curve="single"), {"curve": 1, "forces": 2, "capacity": [1, 2, 1]}),
    (fe.YieldSurface(Mz=2.0, curve="single"), {"curve": 1, "forces": 3, "capacity": [1, 1, 2]}),
]


@pytest.mark.parametrize("element, fields", RECORDS, ids=lambda value: type(value).__name__)
def test_arguments_reach_their_fields(element, fields):
    record, fresh = element.records[0], type(element)._fresh()[0]
    for name in element.records.dtype.names:
        assert np.allclose(record[name], fields.get(name, fresh[name]), rtol=1e-15), name


def test_what_the_library_starts_with():
    """As the header says: factors and fixities 1, four nodes of a thick plate, eight of a solid, all else 0."""
    ones = {"twist_factor", "inplane_shear_factor", "membrane_factor", "bending_factor", "shear_factor", "mass_factor",
            "fixity_z", "fixity_y", "stiffness_factor"}
    for kind, nodes in ((fe.Plate, 4), (fe.Beam, 0), (fe.Truss, 0), (fe.Cable, 0), (fe.Link, 0), (fe.Spring, 0),
                        (fe.Solid, 8)):
        fresh = kind._fresh()[0]
        for name in fresh.dtype.names:
            assert np.all(fresh[name] == (nodes if name == "nodes" else name in ones)), (kind.__name__, name)


def test_materials_that_are_left_out():
    assert (fe.Isotropic(1.0, 0.3).density, fe.Isotropic(1.0, 0.3).expansion) == (0, 0)
    plain = fe.Orthotropic(11e9, 0.5e9, 0.4, 0.7e9)
    assert (plain.G13, plain.G23, plain.density, plain.expansion1, plain.expansion2) == (0.7e9, 0.7e9, 0, 0, 0)
    many = fe.Isotropic([1.0, 2.0], 0.3)
    with pytest.raises(ValueError, match="read-only"):
        many.E[0] = 5.0

    class Steel(fe.Isotropic):
        """A material of another kind, of the same numbers."""

    assert Steel(1.0, 0.3) != fe.Isotropic(1.0, 0.3)


def test_what_calls_take_when_nothing_is_said():
    defaults = {
        fe.Plate.surface_load: {"axes": "global"}, fe.Plate.point_load: {"axes": "global"},
        fe.Plate.results: {"temperature": None}, fe.Beam.mass: {"lumped": False}, fe.Truss.mass: {"lumped": False},
        fe.Beam.sections: {"load": None, "x": None, "places": 11}, fe.Cable.shape: {"s": None, "places": 21},
        fe.Solid.results: {"temperature": 0.0}, fe.Truss.axial_force: {"temperature": 0.0},
        fe.PlateState.__init__: {"hardening": 0.0, "model": "layered", "layers": 7},
        fe.BeamState.__init__: {"ends": "both"}, fe.freedoms: {"per_node": 6, "nodes": None},
        fe.assemble: {"size": None},
    }
    for call, expected in defaults.items():
        parameters = inspect.signature(call).parameters
        for name, value in expected.items():
            assert parameters[name].default == value, (call.__qualname__, name)
    for kind in (fe.Plate, fe.Beam, fe.Truss, fe.Cable, fe.Link, fe.Spring, fe.Solid, fe.PlateState, fe.YieldSurface):
        for name, call in inspect.getmembers(kind, inspect.isfunction):
            if "threads" in inspect.signature(call).parameters and not name.startswith("_"):
                assert inspect.signature(call).parameters["threads"].default == 1, (kind.__name__, name)


def test_threads_reach_the_library(monkeypatch):
    seen = []

    def stiffness(records, out, threads):
        seen.append(threads)
        return 0, -1

    monkeypatch.setattr(_finites, "plate_stiffness", stiffness)
    fe.Plate(SQUARE, 0.02, STEEL).stiffness(threads=5)
    assert seen == [5]


def test_consistent_and_lumped_mass():
    """A half of the mass at each end; A rho L / 3 and / 6 of a consistent truss, 156 / 420 of a beam across."""
    truss, m = fe.Truss(MEMBER, STEEL, 1e-2), 7850 * 1e-2 * 2
    assert np.allclose(truss.mass(lumped=True), np.eye(6) * m / 2)
    assert np.isclose(truss.mass()[0, 0], m / 3) and np.isclose(truss.mass()[0, 3], m / 6)
    beam = fe.Beam(MEMBER, STEEL, 1e-2, 1e-12, 1e-12, 1e-12)
    assert np.isclose(beam.mass()[1, 1], 156 / 420 * m) and np.isclose(beam.mass(lumped=True)[1, 1], m / 2)


@pytest.mark.parametrize("name, u", [
    # Free bending under a gradient g = 3: the hot side is outside, v = -alpha g x^2 / 2 and v' = rz, w' = -ry.
    ("gradient_y", {1: -1.2e-5 * 3 * 4 / 2, 5: -1.2e-5 * 3 * 2}),
    ("gradient_z", {2: -1.2e-5 * 3 * 4 / 2, 4: 1.2e-5 * 3 * 2}),
    ("temperature", {0: 1.2e-5 * 3 * 2})])
def test_free_bending_under_a_temperature(name, u):
    beam = fe.Beam(MEMBER, STEEL, 1e-2, 3e-5, 2e-5, 1e-5, up=[0, 1.0, 0])
    free = np.zeros(12)
    for i, value in u.items():
        free[6 + i] = value
    F = beam.loads(fe.BeamLoad(**{name: 3.0}))
    assert np.allclose(F, beam.forces(free), rtol=0, atol=1e-9 * np.abs(F).max())
    s = beam.sections(free, fe.BeamLoad(**{name: 3.0}), places=3)
    assert np.abs(s.forces).max() < 1e-8 * np.abs(F).max() and np.abs(s.moments).max() < 1e-8 * np.abs(F).max()
    assert f"{name}=3.0" in repr(fe.BeamLoad(**{name: 3.0}))


def test_a_truss_between_walls():
    """E A alpha T at both ends, outwards; half of a force per length to each."""
    truss, N = fe.Truss(MEMBER, STEEL, 1e-2), 210e9 * 1e-2 * 1.2e-5 * 20
    assert np.allclose(truss.loads(temperature=20.0), [-N, 0, 0, N, 0, 0])
    assert np.allclose(truss.loads([1.0, 2, 3]), [1, 2, 3, 1, 2, 3])
    assert np.allclose(truss.axial_force(np.zeros(6), 20.0), -N)


def test_loads_in_both_axes_and_at_a_place():
    """A beam along global Y with y up: local (x, y, z) is global (Y, Z, X). A force P at a: P b^2 (3a + b) / L^3."""
    beam = fe.Beam([[0, 0, 0], [0, 2, 0]], STEEL, 1e-2, 3e-5, 2e-5, 1e-5)
    local, world = beam.loads(fe.BeamLoad(line_local=[1, 2, 3])), beam.loads(fe.BeamLoad(line=[3, 1, 2]))
    assert np.allclose(local, world) and np.allclose(world[[0, 1, 2]], [3, 1, 2])
    a, b, L, P, M = 0.5, 1.5, 2.0, 8.0, 6.0
    F = beam.loads(fe.BeamLoad(points=[(a, [0, 0, P])]))
    assert np.allclose(F[[2, 8]], [P * b**2 * (3 * a + b) / L**3, P * a**2 * (a + 3 * b) / L**3])
    # A moment M about X at a: forces 6 M a b / L^3 across, and the whole of it in moments and their couple.
    F = beam.loads(fe.BeamLoad(points=[(a, [0, 0, 0], [M, 0, 0])]))
    assert np.allclose(np.abs(F[[2, 8]]), 6 * M * a * b / L**3) and np.isclose(F[2] + F[8], 0, atol=1e-12)
    assert np.isclose(F[3] + F[9] + L * F[8], M)


def test_section_forces_of_a_triangle_have_four_points():
    triangle = fe.Plate(SQUARE[:3], 0.02, STEEL)
    forces = np.zeros((4, 6))
    forces[:, 0] = 100.0
    u = np.zeros((3, 6))
    u[:, 2], u[:, 4] = 0.01 * SQUARE[:3, 0], -0.01
    # N times the square of the slope times the area.
    assert np.isclose(u.ravel() @ triangle.geometric(forces=forces) @ u.ravel(), 100 * 0.01**2 / 2)


def test_states_of_a_batch_have_numbers_of_their_own():
    """Membrane forces beyond yield are the yield stress times the thickness, of each plate its own."""
    plates = fe.Plate(np.tile(SQUARE, (3, 1, 1)), 0.1, fe.Isotropic(E=200e3, nu=0.3))
    state = fe.PlateState(plates, [100.0, 200.0, 300.0])
    u = np.zeros((4, 6))
    u[:, 0], u[:, 1] = 0.02 * SQUARE[:, 0], -0.01 * SQUARE[:, 1]
    state.commit(np.tile(u.ravel(), (3, 1)))
    assert np.allclose(state.results().forces[:, 0, 0], [10, 20, 30], rtol=1e-2)
    wrong = np.zeros((3, 24))
    wrong[2, 1] = np.nan
    with pytest.raises(fe.ElementError, match=r"u = \[ *0\. *, *nan"):
        state.try_(wrong)

    beams = fe.Beam(np.tile(MEMBER, (2, 1, 1)), STEEL, 1e-2, 8e-5, 8e-5, 1e-5)
    surfaces = fe.YieldSurface(Mz=[50e3, 80e3], curve="single")
    for ends, yields in (("both", [True, True]), ("first", [True, False]), ("second", [False, True])):
        hinged = fe.BeamState(beams, surfaces, ends=ends)
        turned = np.zeros(12)
        turned[8] = 1.0
        hinged.commit(np.tile(turned, (2, 1)))
        h = hinged.hinges()
        assert h.yields.tolist() == [yields, yields]
        at = yields.index(True)
        assert np.allclose(np.abs(h.forces[:, at, 2]), [50e3, 80e3])
    mixed = fe.BeamState(beams, surfaces, ends=["second", "first"])
    mixed.commit(np.tile(turned, (2, 1)))
    assert mixed.hinges().yields.tolist() == [[False, True], [True, False]]


def test_one_and_a_batch_of_one_differ():
    one, batch = fe.Plate(SQUARE, 0.02, STEEL), fe.Plate(SQUARE[None], 0.02, STEEL)
    assert one != batch and one == batch[0] and len(batch) == 1
    again = pickle.loads(pickle.dumps(batch))
    assert again.batch and again == batch and batch.stiffness().shape == (1, 24, 24)
    many = fe.Plate(np.tile(SQUARE, (3, 1, 1)), [0.1, 0.2, 0.3], STEEL)
    part = many[1:]
    assert isinstance(part, Elements) and not np.shares_memory(part.records, many.records)
    with pytest.raises(IndexError, match="some of them in a row"):
        many[[]]
    with pytest.raises(fe.ElementError, match=r"\(element 0\)"):
        many.replace(thickness=-1.0).stiffness()
    with pytest.raises(fe.ElementError, match=r"\(element 1\)"):
        one.forces(np.array([np.zeros(24), np.full(24, np.nan)]))
