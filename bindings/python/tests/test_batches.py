"""Batches whose elements differ in one number alone, whichever it is, have the bits of their single calls; where the
rest of a description differs they are called one by one. Other threads of Python run meanwhile."""
import threading
import time

import numpy as np
import pytest

import finites as fe
from finites import _finites

COUNT = 11
STEEL = fe.Isotropic(E=210e9, nu=0.3, density=7850.0, expansion=1.2e-5)
SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
CUBE = np.concatenate([SQUARE, SQUARE + [0, 0, 1]])
WOOD = fe.Orthotropic(E1=11e9, E2=0.5e9, nu12=0.4, G12=0.7e9, density=450.0)

BEAM = fe.Beam([[0, 0, 0], [2, 0.5, 0]], STEEL, 1e-2, 3e-5, 2e-5, 1e-5, up=[0, 0, 1.0], shear_area_y=4e-3,
               shear_area_z=5e-3, E2=200e9, fixity_z=[0.5, 0.5], fixity_y=[0.5, 0.5], offset=np.full((2, 3), 0.01))
PLATE = fe.Plate(SQUARE, 0.02, STEEL, bending_factor=0.9)
WOODEN = fe.Plate(SQUARE, 0.02, WOOD, angle=0.3, offset=np.full((4, 3), 0.01))
SOLID = fe.Solid(CUBE, STEEL)

NAMES = [
    (BEAM, "nodes up offset E G E2 density expansion area Iz Iy J shear_area_y shear_area_z fixity_z fixity_y"),
    (PLATE, "nodes offset thickness E nu density expansion membrane_factor bending_factor shear_factor mass_factor"),
    (WOODEN, "angle offset E2 G12 G13 G23 expansion2 twist_factor inplane_shear_factor"),
    (SOLID, "nodes E nu density expansion stiffness_factor"),
]
CASES = [pytest.param(element, name, id=f"{type(element).__name__}-{name}") for element, names in NAMES
         for name in names.split()]


def calls(element, u):
    """What can be asked of a batch."""
    yield "stiffness", lambda e, i: e.stiffness()
    yield "mass", lambda e, i: e.mass()
    yield "forces", lambda e, i: e.forces(u[i])
    yield "geometric", lambda e, i: e.geometric(u[i])
    if isinstance(element, fe.Beam):
        yield "of a force", lambda e, i: e.geometric(axial=u[i][..., 0])
        yield "lumped", lambda e, i: e.mass(lumped=True)
        yield "loads", lambda e, i: e.loads(fe.BeamLoad(temperature=u[i][..., 0], line=u[i][..., :3]))
    elif isinstance(element, fe.Plate):
        yield "temperature", lambda e, i: e.temperature_load(u[i][..., :2])
        yield "surface", lambda e, i: e.surface_load(u[i][..., :3])
        yield "body", lambda e, i: e.body_load(u[i][..., :3])
        yield "results", lambda e, i: e.results(u[i], u[i][..., :2]).records.view(np.uint8)
    else:
        yield "temperature", lambda e, i: e.temperature_load(u[i][..., 0])
        yield "results", lambda e, i: e.results(u[i], u[i][..., 0]).records.view(np.uint8)


@pytest.mark.parametrize("element, name", CASES)
def test_elements_that_differ_in_one_number(element, name, random):
    value = np.asarray(element.nodes if name == "nodes" else element.records[name][0])
    scale = 0.05 * (np.abs(value) + (name in ("nodes", "up", "offset")) * 0.5)
    values = value + scale * random.uniform(-1, 1, (COUNT, *value.shape))
    if name == "nodes" and isinstance(element, fe.Plate):
        values[..., 2] = 0
    batch = element.replace(**{name: values})
    singles = [element.replace(**{name: one}) for one in values]
    assert all(batch[i] == singles[i] for i in range(COUNT))
    u = 1e-3 * random.standard_normal((COUNT, element.order))
    for what, call in calls(element, u):
        together = call(batch, slice(None))
        singly = np.array([call(singles[i], i) for i in range(COUNT)])
        assert together.tobytes() == singly.tobytes(), what


def test_copies_of_a_row_of_states_are_of_their_elements():
    """Each element of a copy goes on from where it was."""
    plates = fe.Plate(np.tile(SQUARE, (3, 1, 1)), 0.1, fe.Isotropic(E=200e3, nu=0.3))
    state = fe.PlateState(plates, 200.0)
    u = np.zeros((3, 4, 6))
    u[:, :, 0] = np.array([1e-4, 2e-4, 3e-4])[:, None] * SQUARE[:, 0]
    state.commit(u.reshape(3, 24))
    copied = state.copy()
    assert copied.results().records.tobytes() == state.results().records.tobytes()
    assert copied.forces().forces.tobytes() == state.forces().forces.tobytes()


def test_other_threads_run_meanwhile():
    """While a batch is computed another thread looks at the clock; with the lock of the interpreter held it could not
    for as long as the call computes."""
    plates = fe.Plate(np.tile(SQUARE, (20000, 1, 1)), 0.02, STEEL, offset=np.full((4, 3), 0.01))
    done, looks = threading.Event(), []

    def look():
        while not done.is_set():
            looks.append(time.perf_counter())
            time.sleep(0.001)

    def blind():
        """The longest time without a look during a call, by the time that it computes."""
        start, worked = time.perf_counter(), time.thread_time()
        _finites.plate_stiffness(plates.records, out, 1)
        worked, end = time.thread_time() - worked, time.perf_counter()
        times = [start, *(at for at in list(looks) if start < at < end), end]
        return np.diff(times).max() / worked

    other = threading.Thread(target=look)
    other.start()
    try:
        out = np.zeros((20000, 24, 24))
        assert any(blind() < 0.5 for _ in range(20))
    finally:
        done.set()
        other.join()
