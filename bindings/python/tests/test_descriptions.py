"""Descriptions: pickled, compared, shown, cut and changed; the module and its stub agree."""
import ast
import copy
import pickle
from pathlib import Path

import numpy as np
import pytest

import finites as fe
from finites import _finites

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
MEMBER = np.array([[0.0, 0, 0], [1, 0, 0]])
STEEL = fe.Isotropic(E=210e9, nu=0.3, density=7850.0)
CUBE = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])

EVERY = [
    fe.Plate(SQUARE, 0.02, STEEL),
    fe.Plate(np.tile(SQUARE, (3, 1, 1)), [0.01, 0.02, 0.03], STEEL, "thin"),
    fe.Plate(SQUARE[:3], 0.02, fe.Orthotropic(11e9, 0.4e9, 0.3, 0.7e9), angle=0.3),
    fe.Beam(MEMBER, STEEL, 1e-2, 1e-5, 1e-5, 1e-5, release_torsion="second"),
    fe.Truss(MEMBER, STEEL, 1e-4, pretension=[1.0, 2.0]),
    fe.Cable(MEMBER, 160e9, 1e-4, 1.2, load=[0, 0, -8]),
    fe.Link(MEMBER, np.arange(6.0)),
    fe.Spring(np.arange(6.0)),
    fe.Solid(CUBE, STEEL),
    fe.YieldSurface(P=1000.0, Mz=[10.0, 20.0], curve="orbison"),
]


@pytest.mark.parametrize("element", EVERY, ids=lambda e: type(e).__name__)
def test_pickled_and_compared(element):
    again = pickle.loads(pickle.dumps(element))
    assert type(again) is type(element) and again == element and not again != element
    assert copy.deepcopy(element) == element and element != STEEL
    assert not again.records.flags.writeable
    assert repr(again) == repr(element) and repr(element).startswith(type(element).__name__ + "(")
    with pytest.raises(TypeError):
        hash(element)


def test_what_is_shown():
    assert repr(EVERY[0]) == ("Plate(one element of 4 nodes, theory='thick', thickness=0.02, E=2.1e+11, nu=0.3, "
                              "density=7850)")
    assert "3 elements of 4 nodes, theory='thin', thickness=0.01..0.03" in repr(EVERY[1])
    assert repr(fe.YieldSurface(P=5.0, My=2.0)).startswith("YieldSurface(one element, curve='segments', forces=P-My")


def test_fields_of_one_and_of_a_batch():
    one, three = EVERY[0], EVERY[1]
    assert one.thickness == 0.02 and three.thickness.tolist() == [0.01, 0.02, 0.03]
    assert np.array_equal(one.nodes, SQUARE) and three.nodes.shape == (3, 4, 3) and EVERY[2].nodes.shape == (3, 3)
    assert one.theory == "thick" and three.theory == "thin"
    with pytest.raises(ValueError):
        three.thickness[0] = 1.0
    with pytest.raises(AttributeError):
        one.thickness = 0.03


def test_parts_of_a_batch():
    three = EVERY[1]
    assert len(three) == 3 and three.batch and not EVERY[0].batch
    assert three[1] == fe.Plate(SQUARE, 0.02, STEEL, "thin")
    assert len(three[1:]) == 2 and len(three[[2, 0]]) == 2 and three[[2, 0]].thickness.tolist() == [0.03, 0.01]
    assert three[three.thickness > 0.015].thickness.tolist() == [0.02, 0.03]
    assert [p.thickness for p in three] == [0.01, 0.02, 0.03]
    with pytest.raises(IndexError):
        three[3]
    with pytest.raises(TypeError):
        len(EVERY[0])
    with pytest.raises(TypeError):
        EVERY[0][0]


def test_replaced_numbers():
    one = EVERY[0]
    thicker = one.replace(thickness=0.03, nodes=SQUARE * 2)
    assert thicker == fe.Plate(SQUARE * 2, 0.03, STEEL) and one.thickness == 0.02
    assert len(one.replace(thickness=[0.1, 0.2])) == 2
    triangle = EVERY[2].replace(nodes=SQUARE[:3] * 2)
    assert np.array_equal(triangle.nodes, SQUARE[:3] * 2)


def test_materials():
    assert STEEL == fe.Isotropic(210e9, 0.3, 7850) and STEEL != fe.Isotropic(210e9, 0.25, 7850)
    assert pickle.loads(pickle.dumps(STEEL)) == STEEL
    assert np.isclose(STEEL.G, 210e9 / 2.6)
    many = fe.Isotropic([1.0, 2.0], 0.3)
    assert many == fe.Isotropic(np.array([1.0, 2.0]), 0.3) and many != fe.Isotropic([1.0, 3.0], 0.3)
    assert len(fe.Plate(SQUARE, 0.02, many)) == 2
    with pytest.raises(AttributeError):
        STEEL.E = 1.0
    wood = fe.Orthotropic(E1=11e9, E2=0.4e9, nu12=0.3, G12=0.7e9)
    assert wood.G13 == wood.G23 == 0.7e9


def test_loads_of_beams_are_compared():
    assert fe.BeamLoad(line=[0, 0, 1]) == fe.BeamLoad(line=[0, 0, 1.0]) != fe.BeamLoad(line=[0, 0, 2])
    assert fe.BeamLoad(points=[(1.0, [0, 0, 1])]) != fe.BeamLoad()
    assert pickle.loads(pickle.dumps(fe.BeamLoad(points=[(1.0, [0, 0, 1])]))) == fe.BeamLoad(points=[(1.0, [0, 0, 1])])


def test_what_came_in_is_not_kept():
    nodes = SQUARE.copy()
    plate = fe.Plate(nodes, 0.02, STEEL)
    before = plate.stiffness()
    nodes[:] = 0
    assert np.array_equal(plate.stiffness(), before)


def test_results_can_be_pickled(random):
    r = EVERY[0].results(random.standard_normal(24))
    again = pickle.loads(pickle.dumps(r))
    assert np.array_equal(again.top.stress, r.top.stress)
    assert np.array_equal(again.at_nodes.moments, r.at_nodes.moments) and "moments" in repr(r)


def test_the_stub_lists_what_the_module_has():
    tree = ast.parse((Path(fe.__file__).parent / "_finites.pyi").read_text())
    listed = {node.name for node in tree.body if isinstance(node, (ast.FunctionDef, ast.ClassDef))}
    assert listed == {name for name in vars(_finites) if not name.startswith("__")}
    for node in tree.body:
        if isinstance(node, ast.FunctionDef):
            names = [argument.arg for argument in node.args.args]
            signature = getattr(_finites, node.name).__doc__.split("\n")[0]
            places = [signature.index(f"{name}: ") for name in names]
            assert places == sorted(places), node.name


def test_versions():
    assert fe.version() == fe.__version__ and fe.version().count(".") == 2 and fe.lanes() in (2, 4, 8)
