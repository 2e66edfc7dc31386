"""Calls and states give back what they take, also where they fail."""
import resource
from pathlib import Path

import numpy as np
import pytest

import finites as fe

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])


def resident():
    """Bytes of memory in use."""
    return int(Path("/proc/self/statm").read_text().split()[1]) * resource.getpagesize()


def rounds():
    steel = fe.Isotropic(E=210e9, nu=0.3)
    plates = fe.Plate(np.tile(SQUARE, (200, 1, 1)), 0.02, steel)
    state = fe.PlateState(plates, 250e6)
    u = np.zeros((200, 24))
    u[:, 6] = 5e-3
    plates.stiffness(threads=2)
    plates.results(u)
    state.try_(u, threads=2)
    state.commit(u)
    state.accept()
    state.copy().results()
    with pytest.raises(fe.ElementError):
        state.commit(np.full((200, 24), np.nan))
    with pytest.raises(fe.ElementError):
        fe.PlateState(plates, 250e6, layers=4)
    with pytest.raises(fe.ElementError):
        plates.replace(thickness=-1.0).mass()


def test_memory_does_not_grow():
    for _ in range(5):
        rounds()
    before = resident()
    for _ in range(40):
        rounds()
    # One round allocates some 3 MB.
    assert resident() - before < 3e6
