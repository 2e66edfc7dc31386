"""What an exception says is at fault: of every status the argument with a wrong value, and no other."""
import pickle

import numpy as np
import pytest

import finites as fe

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
MEMBER = np.array([[0.0, 0, 0], [2, 0, 0]])
CUBE = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
STEEL = fe.Isotropic(E=210e9, nu=0.3)
WOOD = fe.Orthotropic(E1=11e9, E2=0.5e9, nu12=0.4, G12=0.7e9)


def plate(**changes):
    return fe.Plate(SQUARE, 0.02, STEEL).replace(**changes)


def wood(**changes):
    return fe.Plate(SQUARE, 0.02, WOOD).replace(**changes)


def beam(**changes):
    return fe.Beam(MEMBER, STEEL, 1e-2, 1e-5, 1e-5, 1e-5).replace(**changes)


def released(**changes):
    made = fe.Beam(MEMBER, STEEL, 1e-2, 1e-5, 1e-5, 1e-5)
    records = made.records.copy()
    for name, value in changes.items():
        records[name] = value
    return fe.Beam._of(records, False)


def hung(**changes):
    return fe.Cable(MEMBER, 160e9, 1e-4, 2.5, load=[0, 0, -8.0]).replace(**changes)


FAULTS = [
    ("MODULUS", "G", lambda: beam(G=0.0).stiffness()), ("MODULUS", "E", lambda: beam(E=0.0).stiffness()),
    ("MODULUS", "E2", lambda: beam(E2=-1.0).stiffness()), ("MODULUS", "E2", lambda: wood(E2=-1.0).stiffness()),
    ("MODULUS", "G12", lambda: wood(G12=0.0).stiffness()), ("MODULUS", "G13", lambda: wood(G13=0.0).stiffness()),
    ("MODULUS", "G23", lambda: wood(G23=-1.0).stiffness()), ("MODULUS", "E", lambda: plate(E=-1.0).stiffness()),
    ("POISSON", "nu", lambda: plate(nu=0.6).stiffness()),
    ("POISSON", "nu, nu21", lambda: wood(nu21=0.9).stiffness()),
    ("POISSON", "nu", lambda: fe.Solid(CUBE, fe.Isotropic(1.0, 0.5)).stiffness()),
    ("ORIENTATION", "axes", lambda: fe.Spring(np.ones(6), axes=2 * np.eye(3)).stiffness()),
    ("FACTOR", "stiffness_factor", lambda: fe.Solid(CUBE, STEEL, stiffness_factor=-1.0).stiffness()),
    ("FACTOR", "twist_factor", lambda: wood(twist_factor=-1.0).stiffness()),
    ("FACTOR", "inplane_shear_factor", lambda: wood(inplane_shear_factor=-1.0).stiffness()),
    ("FACTOR", "membrane_factor", lambda: plate(membrane_factor=-1.0).stiffness()),
    ("FACTOR", "shear_factor", lambda: plate(shear_factor=-1.0).stiffness()),
    ("FACTOR", "mass_factor", lambda: plate(mass_factor=-1.0).mass()),
    ("SECTION", "area", lambda: beam(area=0.0).stiffness()), ("SECTION", "Iz", lambda: beam(Iz=0.0).stiffness()),
    ("SECTION", "J", lambda: beam(J=0.0).stiffness()),
    ("SECTION", "shear_area_y", lambda: beam(shear_area_y=-1.0).stiffness()),
    ("SECTION", "shear_area_z", lambda: beam(shear_area_z=-1.0).stiffness()),
    ("FIXITY", "fixity_y", lambda: beam(fixity_y=[0.0, 1.5]).stiffness()),
    ("FIXITY", "fixity_z", lambda: beam(fixity_z=[-0.5, 1.0]).stiffness()),
    ("RELEASE", "release_axial", lambda: released(release_axial=-1).stiffness()),
    ("RELEASE", "release_z", lambda: released(release_z=3).stiffness()),
    ("RELEASE", "release_torsion", lambda: released(release_torsion=3).stiffness()),
    ("LENGTH", "x", lambda: beam().sections(np.zeros(12), x=[1.0, 2.5])),
    ("LENGTH", "s", lambda: hung().shape([1.0, 3.5])),
    ("LENGTH", "length", lambda: hung(length=0.0).forces()),
    ("RANGE", "thickness", lambda: plate(thickness=2e30).stiffness()),
    ("RANGE", "nodes", lambda: plate(nodes=SQUARE * -2e30).stiffness()),
    ("YIELD", "capacity", lambda: fe.YieldSurface(P=-1.0, Mz=2.0).value([0.0, 0, 0])),
    ("DENSITY", "density", lambda: plate(density=-1.0).mass()),
    ("THICKNESS", "thickness", lambda: plate(thickness=0.0).stiffness()),
    ("STIFFNESS", "k", lambda: fe.Link(MEMBER, [1, 1, 1, 1, 1, -1.0]).stiffness()),
]


@pytest.mark.parametrize("status, argument, call", FAULTS, ids=lambda value: value if isinstance(value, str) else "")
def test_the_argument_at_fault_is_named(status, argument, call):
    with pytest.raises(fe.ElementError) as caught:
        call()
    error = caught.value
    assert error.status is fe.Status[status] and error.argument == argument, str(error)
    again = pickle.loads(pickle.dumps(error))
    assert (again.argument, again.element, str(again)) == (argument, None, str(error))


def test_the_first_element_of_a_batch_has_the_number_0():
    with pytest.raises(fe.ElementError, match=r"\(element 0\)") as caught:
        fe.Plate(np.tile(SQUARE, (2, 1, 1)), 0.0, STEEL).mass()
    assert caught.value.element == 0


ARGUMENTS = [
    (lambda: fe.Plate(SQUARE, True, STEEL), "thickness", "array of bool"),
    (lambda: fe.Plate(np.zeros((1, 2, 4, 3)), 0.02, STEEL), "nodes", r"nodes has shape \(1, 2, 4, 3\)"),
    (lambda: plate().stiffness(threads=True), "threads", "threads is True"),
    (lambda: beam().replace(release_y=1), "release_y", "cannot be replaced"),
    (lambda: fe.PlateState(plate(), 1.0, layers=10**12), "layers", "expected 3, 5, 7"),
    (lambda: fe.assemble(np.zeros((1, 2, 2)), [[0, 3]], 3), "freedoms", "unknown 3, size is 3"),
    (lambda: fe.assemble([np.zeros((1, 2, 2)), np.zeros((1, 2))], [[[0, 1]], [[0, 1]]]), "blocks",
     "matrices and vectors"),
    (lambda: fe.assemble([np.zeros((1, 2, 2))], [[[0, 1]], [[0, 1]]]), "freedoms", "1 arrays of blocks and 2"),
    (lambda: fe.freedoms([[0, -1]]), "elements", "nodes count from 0"),
    (lambda: fe.freedoms([[0, 3]], nodes=3), "elements", "node 3, there are 3 nodes"),
    (lambda: fe.plot.section_forces(fe.Beam(MEMBER[None], STEEL, 1, 1, 1, 1), np.zeros(12)), "beam", "batch of 1"),
    (lambda: fe.plot.bending_line(fe.Plate(SQUARE[None], 1.0, STEEL), 1.0, [0.0]), "plate", "batch of 1"),
]


@pytest.mark.parametrize("call, argument, message", ARGUMENTS)
def test_a_wrong_argument_is_named(call, argument, message):
    pytest.importorskip("finites.plot")
    with pytest.raises(fe.ArgumentError, match=message) as caught:
        call()
    assert caught.value.argument == argument


def test_kinds_of_elements_may_be_given_as_a_tuple():
    blocks = (np.ones((1, 2, 2)), np.ones((2, 1, 1)))
    freedoms = ([[0, 1]], [[1], [1]])
    matrix = fe.assemble(blocks, freedoms)
    assert matrix.toarray().tolist() == [[1, 1], [1, 3]] and matrix.nnz == 4


def test_what_came_in_stays_as_it_is():
    E = np.array([1.0, 2.0])
    material = fe.Isotropic(E, 0.3)
    E[0] = 7.0
    assert material.E.tolist() == [1, 2] and E.flags.writeable
