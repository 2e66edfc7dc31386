"""Results by name: every name shows the field of the record that it is called after, and the laws between them hold."""
import numpy as np
import pytest

import finites as fe
from finites import _finites, results

STEEL = fe.Isotropic(E=210e9, nu=0.3, density=7850.0, expansion=1.2e-5)
SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])

# Where a name is not that of its field.
FIELDS = {"forces": "force", "moments": "moment", "shear_forces": "shear_force"}
COMPONENTS = {"N": ("force", 0), "Vy": ("force", 1), "Vz": ("force", 2), "T": ("moment", 0), "My": ("moment", 1),
              "Mz": ("moment", 2)}


def numbered(dtype, count=2):
    """Records whose numbers are all different."""
    records = np.zeros(count, dtype)
    records.view(np.uint8)[:] = np.arange(records.nbytes // 8, dtype=np.float64).view(np.uint8)
    return records


def wholes(dtype):
    """Records whose whole numbers are 1, 2, 3, ... one after the other."""
    records = np.zeros(2, dtype)
    records.view(np.uint8)[:] = np.arange(1, records.nbytes // 4 + 1, dtype=np.int32).view(np.uint8)
    return records


PLATES, SOLIDS = _finites.plate_results_dtype(), _finites.solid_results_dtype()
VIEWS = {
    "Surface": results.Surface(numbered(PLATES)["point"]["top"]),
    "PlatePoints": results.PlatePoints(numbered(PLATES)["point"]),
    "PlateMeasures": results.PlateMeasures(numbered(_finites.plate_measures_dtype())),
    "Location": results.Location(numbered(_finites.location_dtype())),
    "MemberMeasures": results.MemberMeasures(numbered(_finites.member_measures_dtype())),
    "BeamSections": results.BeamSections(numbered(_finites.beam_section_dtype())),
    "Hinges": results.Hinges(numbered(_finites.hinge_dtype())),
    "SolidMeasures": results.SolidMeasures(numbered(_finites.solid_measures_dtype())),
    "SolidPoints": results.SolidPoints(numbered(SOLIDS)["point"]),
    "YieldEquations": results.YieldEquations(numbered(_finites.yield_equations_dtype())),
}


@pytest.mark.parametrize("name", VIEWS)
def test_a_name_shows_its_field(name):
    view = VIEWS[name]
    columns = [c for c in dir(type(view)) if isinstance(getattr(type(view), c), results.Column)]
    assert columns
    for column in columns:
        if column in COMPONENTS:
            field, i = COMPONENTS[column]
            assert np.array_equal(getattr(view, column), view.records[field][..., i]), column
        else:
            assert np.array_equal(getattr(view, column), view.records[FIELDS.get(column, column)]), column
    # Every field can be had by a name, but what fills up and what has a property.
    shown = {COMPONENTS.get(c, (FIELDS.get(c, c),))[0] for c in columns}
    properties = {c for c in dir(type(view)) if isinstance(getattr(type(view), c), property)}
    assert set(view.records.dtype.names) - {"unused"} == shown | (properties & set(view.records.dtype.names))


def test_surfaces_points_and_nodes():
    records = numbered(PLATES)
    r = fe.plates.PlateResults(records, 3)
    for points, field in ((r, records["point"]), (r.at_nodes, records["node"][:, :3])):
        assert np.array_equal(points.xyz, field["xyz"])
        for surface in ("top", "middle", "bottom"):
            assert np.array_equal(getattr(points, surface).strain, field[surface]["strain"]), surface
    records = numbered(SOLIDS)
    r = fe.solids.SolidResults(records, 1, 4)
    assert np.array_equal(r.stress, records["point"]["stress"][:, :1])
    assert np.array_equal(r.at_nodes.stress, records["node"]["stress"][:, :4])


def test_whole_numbers():
    records = wholes(_finites.yield_equations_dtype())
    found = results.YieldEquations(records)
    assert np.array_equal(found.count, records["count"]) and np.array_equal(found.segment, records["segment"])
    records = wholes(_finites.location_dtype())
    where = results.Location(records)
    assert np.array_equal(where.inside, records["inside"] == 1) and np.array_equal(where.above, records["above"] == 1)
    assert where.inside.tolist() != where.above.tolist()


def test_principal_stresses_of_a_plate(random):
    """s1 acts along the angle, s2 across; the largest shear stress is half of their difference."""
    plate = fe.Plate(SQUARE, 0.02, STEEL)
    u = random.standard_normal(24) * 1e-3
    r = plate.results(u)
    for points in (r, r.at_nodes):
        for s in (points.top, points.middle, points.bottom):
            tensor = s.stress[:, [[0, 2], [2, 1]]]
            along = np.stack([np.cos(s.angle), np.sin(s.angle)], axis=-1)
            size = np.abs(tensor).max()
            assert np.allclose(np.einsum("pij,pj->pi", tensor, along), s.s1[:, None] * along, rtol=0, atol=1e-5 * size)
            assert np.allclose(s.s1 + s.s2, np.trace(tensor, axis1=1, axis2=2), rtol=0, atol=1e-6 * size)
            assert np.all(s.s1 >= s.s2) and np.allclose(s.max_shear, (s.s1 - s.s2) / 2, rtol=0, atol=1e-6 * size)
        middle = (points.top.stress + points.bottom.stress) / 2
        assert np.allclose(points.middle.stress, middle, rtol=0, atol=1e-9 * np.abs(points.top.stress).max())
        # With the shear coefficient k = 5/6: Q = k G h gamma, the stress Q / (k h), the strain gamma / k.
        assert np.allclose(points.shear_stress, points.shear_forces / (5 / 6 * 0.02), rtol=1e-9)
        assert np.allclose(points.shear_stress, STEEL.G * 5 / 6 * points.shear_strain, rtol=1e-6)


def test_places_of_the_results_of_a_square():
    """Nodes at the corners, points at 1/sqrt(3) of the way, from the middle of the square in element axes."""
    r = fe.Plate(SQUARE, 0.02, STEEL).results(np.zeros(24))
    corners = SQUARE - 0.5
    corners[:, 2] = 0
    assert np.allclose(r.at_nodes.xyz, corners, atol=1e-12)
    assert sorted(map(tuple, np.abs(r.xyz[:, :2]).round(9))) == [(round(0.5 / np.sqrt(3), 9),) * 2] * 4


def test_places_of_the_results_of_a_solid():
    cube = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
    solid = fe.Solid(cube + [5.0, 6, 7], STEEL)
    r = solid.results(np.zeros(24))
    assert np.allclose(r.at_nodes.xyz, cube + [5.0, 6, 7])
    assert np.allclose(np.abs(r.xyz - [5.5, 6.5, 7.5]), 0.5 / np.sqrt(3))
    assert np.allclose(solid.measures().center, [5.5, 6.5, 7.5])
    tetrahedron = fe.Solid([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]], STEEL).results(np.zeros(12))
    assert tetrahedron.xyz.shape == (1, 3) and tetrahedron.at_nodes.xyz.shape == (4, 3)


def test_section_forces_by_statics():
    """A cantilever with a force F and a moment M at its tip: F everywhere, and M + (L - x) ex x F."""
    L, F, M = 2.0, np.array([10.0, 20.0, 30.0]), np.array([4.0, 5.0, 6.0])
    beam = fe.Beam([[0, 0, 0], [L, 0, 0]], STEEL, 1e-2, 3e-5, 2e-5, 1e-5, up=[0, 1.0, 0])
    u = np.zeros(12)
    u[6:] = np.linalg.solve(beam.stiffness()[6:, 6:], np.concatenate([F, M]))
    s = beam.sections(u, places=5)
    arm = np.zeros((5, 3))
    arm[:, 0] = L - s.x
    assert np.allclose(s.forces, F, rtol=1e-9) and np.allclose(s.moments, M + np.cross(arm, F), rtol=1e-8, atol=1e-8)
    assert np.allclose([s.N, s.Vy, s.Vz], F[:, None]) and np.allclose([s.T, s.My, s.Mz], (M + np.cross(arm, F)).T)
    assert np.allclose(s.displacement[-1], u[6:9], rtol=1e-9) and np.allclose(s.rotation[-1], u[9:], rtol=1e-9)
    # v' = rz and w' = -ry without shear deformation: halfway by the cubic.
    EI = 210e9 * 3e-5
    x = 1.0
    v = (F[1] * (L * x**2 / 2 - x**3 / 6) + M[2] * x**2 / 2) / EI
    slope = (F[1] * (L * x - x**2 / 2) + M[2] * x) / EI
    assert np.isclose(s.displacement[2, 1], v, rtol=1e-9) and np.isclose(s.rotation[2, 2], slope, rtol=1e-9)


def test_where_a_beam_is_looked_at():
    beams = fe.Beam(np.array([[[0, 0, 0], [2, 0, 0]], [[0, 0, 0], [3.0, 0, 0]]]), STEEL, 1e-2, 3e-5, 2e-5, 1e-5)
    x = beams.sections(np.zeros((2, 12))).x
    assert x.shape == (2, 11) and np.allclose(x[:, -1], [2, 3]) and np.allclose(x[:, 5], [1, 1.5])
    cables = fe.Cable([[0, 0, 0], [10, 0, 0]], 160e9, 1e-4, [12.0, 14.0], load=[0, 0, -8.0])
    hung = cables.shape()
    assert hung.xyz.shape == (2, 21, 3) and np.allclose(hung.xyz[:, -1], [10, 0, 0], atol=1e-6)


def test_measures_of_members():
    for member in (fe.Beam([[1, 2, 3], [1, 4, 3]], STEEL, 1e-2, 3e-5, 2e-5, 1e-5),
                   fe.Truss([[1, 2, 3], [1, 4, 3]], STEEL, 1e-2)):
        m = member.measures()
        assert np.allclose(m.center, [1, 3, 3]) and np.isclose(m.volume, 0.02) and np.isclose(m.mass, 0.02 * 7850)
        # Along global Y; y is global Z, z = x cross y.
        assert np.allclose(m.axes, [[0, 1, 0], [0, 0, 1], [1, 0, 0]])


def test_a_cable_carries_more_at_its_upper_end():
    """The tensions of a cable in its plane differ by the weight per length times the height between the places."""
    cable = fe.Cable([[0, 0, 0], [6.0, 0, 4]], 1e12, 1e-2, 9.0, load=[0, 0, -8.0])
    tension = cable.forces().tension
    assert np.isclose(tension[1] - tension[0], 8.0 * 4, rtol=1e-6)
    hung = cable.shape(places=4)
    assert np.allclose(hung.tension[[0, 3]], tension, rtol=1e-9)
    assert np.allclose(hung.tension - hung.tension[0], 8.0 * hung.xyz[:, 2], rtol=1e-6)


def test_equations_of_a_corner():
    """Segments p + 8/9 m = 1 for p >= 0.2, p/2 + m = 1 below; at p = 0.2, m = 0.9 both have a gradient."""
    surface = fe.YieldSurface(P=1000.0, Mz=200.0)
    at = [[800.0, 0, 45.0], [100.0, 0, 190.0], [-100.0, 0, -190.0]]
    found = surface.equations(at)
    assert found.count.tolist() == [1, 1, 1] and found.segment.shape == (3, 4)
    assert len(set(found.segment[:, 0].tolist())) == 3  # a segment for each quadrant and each branch
    assert np.allclose(found.value[:, 0], [1, 1, 1], rtol=1e-6)
    expected = [[1 / 1000, 0, 8 / 9 / 200], [0.5 / 1000, 0, 1 / 200], [-0.5 / 1000, 0, -1 / 200]]
    assert np.allclose(surface.gradient(at), expected, rtol=1e-6)


def test_hinge_values_of_a_beam():
    """An elastic end has its share of the capacity; signs of the forces as in `BeamState`."""
    beam = fe.Beam([[0, 0, 0], [2.0, 0, 0]], STEEL, 1e-2, 8e-5, 8e-5, 1e-5)
    state = fe.BeamState(beam, fe.YieldSurface(Mz=50e3, curve="single"))
    u = np.zeros(12)
    u[8] = 1e-3  # both ends clamped, one moved: 6 E I w / L^2
    state.commit(u)
    moment = 6 * 210e9 * 8e-5 * 1e-3 / 4
    h = state.hinges()
    assert np.allclose(np.abs(h.forces[:, 2]), moment, rtol=1e-9) and np.allclose(h.value, moment / 50e3, rtol=1e-6)
    assert not h.yields.any() and np.all(h.plastic == 0)
