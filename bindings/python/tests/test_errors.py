"""Every status from Python with its text, and every wrong argument by its name, shape and what was expected."""
import pickle
import re
from pathlib import Path

import numpy as np
import pytest

import finites as fe
from finites import _finites
from finites.errors import element_error

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
MEMBER = np.array([[0.0, 0, 0], [1, 0, 0]])
CUBE = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
STEEL = fe.Isotropic(E=210e9, nu=0.3)
HEADER = Path(__file__).parents[3] / "include/finites/elements.h"


def plate(nodes=SQUARE, thickness=0.02, material=STEEL, **more):
    return fe.Plate(nodes, thickness, material, **more)


def beam(nodes=MEMBER, material=STEEL, area=1e-2, Iz=1e-5, Iy=1e-5, J=1e-5, **more):
    return fe.Beam(nodes, material, area, Iz, Iy, J, **more)


def with_field(elements, **fields):
    """The same elements with codes that the package does not let through."""
    records = elements.records.copy()
    for name, value in fields.items():
        records[name] = value
    return type(elements)._of(records, False)


CASES = {
    "NAN": (lambda: plate(thickness=np.nan).stiffness(), "thickness"),
    "RANGE": (lambda: plate(thickness=1e31).stiffness(), "thickness"),
    "BAD_CODE": (lambda: with_field(plate(), theory=7).stiffness(), None),
    "COINCIDENT": (lambda: plate(SQUARE[[0, 0, 2, 3]]).stiffness(), "nodes"),
    "DEGENERATE": (lambda: plate([[0, 0, 0], [1, 0, 0], [2, 0, 0]]).stiffness(), "nodes"),
    "ORIENTATION": (lambda: beam(up=[2.0, 0, 0]).stiffness(), "up"),
    "THICKNESS": (lambda: plate(thickness=-0.02).mass(), "thickness"),
    "MODULUS": (lambda: plate(material=fe.Isotropic(E=-1.0, nu=0.3)).stiffness(), "E"),
    "POISSON": (lambda: fe.Solid(CUBE, fe.Isotropic(E=1.0, nu=0.5)).stiffness(), "nu"),
    "FACTOR": (lambda: plate(bending_factor=-1.0).stiffness(), "bending_factor"),
    "DENSITY": (lambda: plate(material=fe.Isotropic(1.0, 0.3, density=-1.0)).mass(), "density"),
    "SECTION": (lambda: beam(Iy=0.0).stiffness(), "Iy"),
    "FIXITY": (lambda: beam(fixity_z=[1.0, 1.5]).stiffness(), "fixity_z"),
    "RELEASE": (lambda: with_field(beam(), release_y=3).stiffness(), "release_y"),
    "LENGTH": (lambda: fe.Cable(MEMBER, 1.0, 1.0, -2.0, load=[0, 0, -1]).forces(), "length"),
    "STIFFNESS": (lambda: fe.Spring([-1.0, 0, 0, 0, 0, 0]).stiffness(), "k"),
    "SLACK": (lambda: fe.Cable(MEMBER, 1.0, 1.0, 2.0).forces(), None),
    "NO_CONVERGENCE": (lambda: fe.Cable(MEMBER, 1e30, 1e30, 1e-300, load=[0, 0, -1]).forces(), None),
    "RESULT": (lambda: fe.Cable(MEMBER, 1e-200, 1e-200, 2.0, load=[0, 0, -1]).forces(), None),
    "MECHANISM": (lambda: beam(fixity_z=[0, 0], release_y="first").loads(fe.BeamLoad(line_local=[0, 1.0, 0])), None),
    "YIELD": (lambda: fe.PlateState(plate(), yield_stress=0.0), "yield_stress"),
    "HARDENING": (lambda: fe.PlateState(plate(), 250e6, hardening=300e9), "hardening"),
    "LAYERS": (lambda: fe.PlateState(plate(), 250e6, layers=4), "layers"),
    "STATE": (lambda: fe.PlateState(plate(theory="membrane"), 250e6, model="whole-section"), None),
}


@pytest.mark.parametrize("name", CASES)
def test_a_status_is_an_exception_with_its_text(name):
    call, argument = CASES[name]
    with pytest.raises(fe.ElementError) as caught:
        call()
    error = caught.value
    assert isinstance(error, ValueError) and error.status is fe.Status[name] and error.element is None
    assert str(error).startswith(_finites.text(int(error.status)))
    if argument is not None:
        assert argument in (error.argument or ""), str(error)
        assert f"{argument} = " in str(error)


# The message names the constants that are wrong, and none that this plate does not have.
@pytest.mark.parametrize("material, theory, argument", [
    (fe.Isotropic(E=0.0, nu=0.3), "thick", "E"),
    (fe.Isotropic(E=1.0, nu=0.6), "thick", "nu"),
    (fe.Orthotropic(1.0, 0.0, 0.1, 1.0), "thick", "E2"),
    (fe.Orthotropic(1.0, 1.0, 0.1, 0.0), "thin", "G12"),
    (fe.Orthotropic(1.0, 1.0, 0.1, 1.0, G13=-1.0), "thick", "G13"),
])
def test_the_constants_at_fault_are_named(material, theory, argument):
    with pytest.raises(fe.ElementError) as caught:
        plate(material=material, theory=theory).stiffness()
    assert caught.value.argument == argument, str(caught.value)


def test_the_number_of_nodes_is_checked_below_too():
    records = plate().records.copy()
    records["nodes"] = 5
    assert _finites.plate_stiffness(records, np.empty((1, 30, 30)), 1) == (fe.Status.NODES, 0)


@pytest.mark.parametrize("status", [status for status in fe.Status if status])
def test_every_status_makes_an_exception(status):
    error = element_error(int(status), 3, {})
    assert error.status is status and error.element == 3
    assert str(error) == f"{status.text} (element 3)" and status.text == _finites.text(int(status))
    again = pickle.loads(pickle.dumps(error))
    assert (type(again), str(again), again.status, again.element) == (type(error), str(error), status, 3)


def test_statuses_are_those_of_the_header():
    declared = re.search(r"typedef enum finites_status \{(.*?)\} finites_status;", HEADER.read_text(), re.DOTALL).group(1)
    listed = re.findall(r"^  FINITES_(\w+) = (\d+)", declared, re.MULTILINE)
    assert {name: int(value) for name, value in listed} == {status.name: int(status) for status in fe.Status}


def test_the_first_element_at_fault_is_named():
    thickness = np.full(50, 0.02)
    thickness[[31, 44]] = [0.0, -1.0]
    plates = plate(np.tile(SQUARE, (50, 1, 1)), thickness)
    for threads in (1, 2, 7):
        with pytest.raises(fe.ElementError, match=r"thickness must be above 0: thickness = 0\.? \(element 31\)") as caught:
            plates.stiffness(threads=threads)
        assert caught.value.element == 31 and caught.value.argument == "thickness"


def test_a_bad_displacement_is_named():
    u = np.zeros((3, 24))
    u[1, 5] = np.inf
    with pytest.raises(fe.ElementError, match=r"u = .*inf.*\(element 1\)"):
        plate(np.tile(SQUARE, (3, 1, 1))).forces(u)


ARGUMENTS = [
    (lambda: plate(np.zeros((5, 3))), "nodes", r"nodes has shape \(5, 3\), expected \(3, 3\) or \(n, 3, 3\) or \(4, 3\)"),
    (lambda: plate(np.zeros((0, 4, 3))), "nodes", r"nodes has shape \(0, 4, 3\)"),
    (lambda: plate([[0, 0], [1]]), "nodes", "nodes"),
    (lambda: plate(thickness=[[1.0]]), "thickness", r"thickness has shape \(1, 1\), expected \(\) or \(n,\)"),
    (lambda: plate(thickness="thin"), "thickness", "expected real numbers"),
    (lambda: plate(thickness=None), "thickness", "thickness is NoneType"),
    (lambda: plate(thickness=1j), "thickness", "array of complex128"),
    (lambda: plate(np.tile(SQUARE, (2, 1, 1)), [1, 2, 3]), "thickness", "thickness is for 3 elements, nodes for 2"),
    (lambda: plate(theory="mindlin"), "theory", "expected one of 'thick', 'thin'"),
    (lambda: plate(material=3), "material", "material is int: expected Isotropic or Orthotropic"),
    (lambda: fe.Solid(CUBE, fe.Orthotropic(1, 1, 0, 1)), "material", "expected Isotropic"),
    (lambda: plate().forces(np.zeros(18)), "u", r"u has shape \(18,\), expected \(24,\) or \(n, 24\)"),
    (lambda: plate().stiffness(threads=0), "threads", "threads is 0"),
    (lambda: plate().stiffness(threads=1.5), "threads", "threads is 1.5"),
    (lambda: plate().geometric(), "u, forces", "either u or forces"),
    (lambda: plate().surface_load([0, 0, 1], axes="local"), "axes", "expected one of 'global', 'element'"),
    (lambda: plate().replace(colour=1), "colour", "cannot be replaced"),
    (lambda: beam().loads([0, 0, 1]), "load", "expected BeamLoad"),
    (lambda: beam().sections(np.zeros(12), places=1), "places", "places is 1"),
    (lambda: beam(release_y="left"), "release_y", "expected one of 'none', 'first', 'second'"),
    (lambda: fe.BeamLoad(points=[3]), "points", "expected \\(x, force\\)"),
    (lambda: fe.Solid(CUBE, STEEL).face_load("top"), "face", "face is 'top'"),
    (lambda: fe.Solid(CUBE, STEEL).face_load(7), "face", "face is 7: expected a whole number from 1 to 6"),
    (lambda: fe.YieldSurface(), "P, My, Mz", "capacity"),
    (lambda: fe.YieldSurface(P=1.0, Mz=2.0, curve="single"), "curve", "one capacity, not P, Mz"),
    (lambda: fe.YieldSurface(P=1.0, curve="orbison"), "curve", "for P alone the curve is 'single'"),
    (lambda: fe.Plate([[0, 0, 0], [1, 0]], 0.02, STEEL), "nodes", "nodes is no regular array"),
    (lambda: fe.PlateState(SQUARE, 1.0), "plates", "expected Plate"),
    (lambda: fe.PlateState(plate(), [1.0, 2.0]), "yield_stress", "yield_stress is for 2 elements"),
    (lambda: fe.PlateState(plate(), 1.0).try_(np.zeros((2, 24))), "u", "u is for 2 elements, the state has 1"),
    (lambda: fe.BeamState(beam(), fe.YieldSurface(Mz=1.0), ends="left"), "ends", "expected one of 'first'"),
    (lambda: fe.BeamState(beam(), fe.YieldSurface(Mz=1.0), ends=["both", "both"]), "ends", "ends is for 2 elements"),
    (lambda: fe.BeamState(beam(), 3), "surface", "expected YieldSurface"),
    (lambda: fe.assemble(np.zeros((2, 3, 3)), [[0, 1, 2]]), "blocks", r"blocks has shape \(2, 3, 3\)"),
    (lambda: fe.assemble(np.zeros((1, 2, 2)), [[0.5, 1]]), "freedoms", "whole numbers"),
    (lambda: fe.assemble(np.zeros((1, 2, 2)), [[0, 5]], 3), "freedoms", "unknown 5, size is 3"),
    (lambda: fe.assemble(np.zeros((1, 2, 2)), [[0, -2]]), "freedoms", "-2"),
    (lambda: fe.freedoms([[0, 1]], fixed=[12]), "fixed", "there are 0 to 11"),
]


@pytest.mark.parametrize("call, argument, message", ARGUMENTS)
def test_a_wrong_argument_is_named(call, argument, message):
    with pytest.raises(fe.ArgumentError, match=message) as caught:
        call()
    assert isinstance(caught.value, ValueError) and caught.value.argument == argument and caught.value.status is None


def test_arrays_of_a_wrong_size_do_not_reach_the_library():
    records, out = plate().records, np.empty((1, 24, 24))
    with pytest.raises(ValueError, match="wrong size"):
        _finites.plate_stiffness(records, np.empty((1, 23, 24)), 1)
    with pytest.raises(ValueError, match="wrong size"):
        _finites.plate_geometric(records, np.empty(12), out, 1)
    with pytest.raises(TypeError):
        _finites.plate_stiffness(np.zeros(4), out, 1)
    with pytest.raises(TypeError):  # an output that would be copied
        _finites.plate_stiffness(records, np.empty((1, 24, 48))[:, :, ::2], 1)
