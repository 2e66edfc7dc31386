"""Plates and beams that yield."""
import copy
import pickle
import threading

import numpy as np
import pytest

import finites as fe

SQUARE = np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]])
E, NU, FY, H = 200e3, 0.3, 200.0, 0.1


def plate(count=None, theory="thick"):
    nodes = SQUARE if count is None else np.tile(SQUARE, (count, 1, 1))
    return fe.Plate(nodes, H, fe.Isotropic(E=E, nu=NU), theory)


def stretched(strain, factor=1.0):
    """Displacements of a uniaxial stress of FY at so many times the strain of yield; plastic flow keeps the volume."""
    ex = strain * FY / E
    ey = -NU * min(ex, FY / E) - 0.5 * max(0.0, ex - FY / E)
    u = np.zeros((4, 6))
    u[:, 0], u[:, 1] = ex * SQUARE[:, 0], ey * SQUARE[:, 1]
    return factor * u.ravel()


@pytest.mark.parametrize("theory", ["thick", "thin"])
@pytest.mark.parametrize("model", ["layered", "whole-section"])
def test_elastic_below_yield(model, theory, random):
    """Bending as the elastic element; its membrane has the shear of its center alone, that of a state does not."""
    elements = plate(theory=theory)
    state = fe.PlateState(elements, FY, model=model)
    u = 1e-6 * random.standard_normal((4, 6))
    u[:, [0, 1, 5]] = 0
    u = u.ravel() + stretched(0.1)
    forces, tangent = state.try_(u)
    assert np.allclose(forces, elements.forces(u), rtol=0, atol=1e-9 * np.abs(forces).max())
    bending = np.flatnonzero(np.tile([0, 0, 1, 1, 1, 0], 4))
    K = elements.stiffness()[np.ix_(bending, bending)]
    assert np.allclose(tangent[np.ix_(bending, bending)], K, rtol=0, atol=1e-9 * np.abs(K).max())


def test_uniaxial_tension_stays_at_the_yield_stress():
    for strain in (0.5, 1.0, 3.0, 20.0):
        state = fe.PlateState(plate(), FY)
        force = state.try_(stretched(strain)).forces.reshape(4, 6)
        assert np.isclose(force[[1, 2], 0].sum(), H * FY * min(1.0, strain), rtol=1e-6)
        state.commit(stretched(strain))
        r = state.results()
        assert np.allclose(r.top.von_mises, FY * min(1.0, strain), rtol=1e-6)
        assert np.allclose(r.middle.plastic_strain[:, 0], max(0.0, strain - 1) * FY / E, rtol=1e-6, atol=1e-12)


@pytest.mark.parametrize("model", ["layered", "whole-section"])
def test_trying_leaves_no_trace(model, random):
    state, other = (fe.PlateState(plate(), FY, model=model) for _ in range(2))
    for one in (state, other):
        one.commit(stretched(3.0))
        one.accept()
    for _ in range(5):
        state.try_(stretched(4.0) + 1e-3 * random.standard_normal(24))
    u = stretched(3.5)
    for before, after in zip(other.try_(u), state.try_(u)):
        assert before.tobytes() == after.tobytes()
    assert state.results().records.tobytes() == other.results().records.tobytes()
    for before, after in zip(other.forces(), state.forces()):
        assert before.tobytes() == after.tobytes()


def test_copies_are_independent():
    state = fe.PlateState(plate(), FY)
    state.commit(stretched(2.0))
    state.accept()
    copies = [state.copy(), copy.copy(state), copy.deepcopy(state)]
    before = state.results().records.tobytes()
    for one in copies:
        assert one.results().records.tobytes() == before
        one.commit(stretched(6.0))
    assert state.results().records.tobytes() == before
    state.commit(stretched(4.0))
    assert copies[0].results().records.tobytes() != state.results().records.tobytes()


@pytest.mark.parametrize("model", ["layered", "whole-section"])
@pytest.mark.parametrize("threads", [1, 4])
def test_a_batch_has_the_bits_of_single_states(model, threads):
    strains = np.linspace(0.2, 5.0, 9)
    u = np.array([stretched(s) for s in strains])
    u[:, 2::6] += 0.001 * SQUARE[:, 0] ** 2
    batch = fe.PlateState(plate(9), FY, model=model, hardening=1e3)
    batch.commit(u, threads=threads)
    batch.accept()
    forces, tangent = batch.try_(1.1 * u, threads=threads)
    for i in range(9):
        one = fe.PlateState(plate(), FY, model=model, hardening=1e3)
        one.commit(u[i])
        one.accept()
        f, k = one.try_(1.1 * u[i])
        assert f.tobytes() == forces[i].tobytes() and k.tobytes() == tangent[i].tobytes()
        assert one.results().records.tobytes() == batch.results(threads=threads).records[i].tobytes()
    assert len(batch) == 9 and batch.elements == plate(9)


def test_the_tangent_is_the_derivative_of_the_forces(random):
    """On the yield surface, along steps that flow further; rows are forces, columns displacements."""
    state = fe.PlateState(plate(), FY, hardening=2e4)
    u = stretched(2.0)
    state.commit(u)
    state.accept()
    size = 1e-5 * FY / E
    start = state.try_(u).forces
    for _ in range(5):
        step = size * (stretched(1.0) * E / FY + 0.2 * random.standard_normal(24) * np.tile([1, 1, 0, 0, 0, 0], 4))
        forces, tangent = state.try_(u + step)
        assert np.allclose(forces - start, tangent @ step, rtol=0, atol=1e-3 * np.abs(forces - start).max())
        assert np.abs(tangent @ step - plate().stiffness() @ step).max() > 0.1 * np.abs(forces - start).max()


def test_a_failed_commit_of_a_batch_commits_nothing():
    state = fe.PlateState(plate(3), FY)
    before = state.results().records.tobytes()
    u = np.array([stretched(3.0)] * 3)
    u[2, 0] = np.nan
    with pytest.raises(fe.ElementError) as caught:
        state.commit(u)
    assert caught.value.element == 2 and state.results().records.tobytes() == before


def test_states_are_not_pickled():
    with pytest.raises(TypeError, match="cannot be pickled"):
        pickle.dumps(fe.PlateState(plate(), FY))


def test_threads_of_python_may_share_a_state():
    state = fe.PlateState(plate(4), FY)
    u = np.array([stretched(3.0)] * 4)
    expected = state.try_(u).forces.tobytes()
    wrong = []

    def work():
        for _ in range(50):
            if state.try_(u).forces.tobytes() != expected:
                wrong.append(1)

    workers = [threading.Thread(target=work) for _ in range(4)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    assert not wrong


def test_yield_surfaces(random):
    segments = fe.YieldSurface(P=1000.0, Mz=200.0)
    p, m = np.linspace(0, 1, 11), np.zeros(11)
    m = np.where(p >= 0.2, (1 - p) * 9 / 8, 1 - p / 2)  # p + 8/9 m = 1; p/2 + m = 1
    force = np.column_stack([1000 * p, 0 * p, 200 * m])
    assert np.allclose(segments.value(force), 1, rtol=1e-9)
    assert segments.value([500.0, 0, 0]).shape == () and segments.interacting == ("P", "Mz")
    orbison = fe.YieldSurface(P=10.0, My=3.0, Mz=5.0, curve="orbison")
    p, y, z = 0.4, 0.3, 0.5
    # Orbison, McGuire and Abel (1982): 1.15 p^2 + mz^2 + my^4 + 3.67 p^2 mz^2 + 3 p^6 my^2 + 4.65 mz^4 my^2.
    value = 1.15 * p**2 + z**2 + y**4 + 3.67 * p**2 * z**2 + 3 * p**6 * y**2 + 4.65 * z**4 * y**2
    at = np.array([10 * p, 3 * y, 5 * z])
    assert np.isclose(orbison.value(at), value, rtol=1e-6)
    step = 1e-5
    slope = [(orbison.value(at + step * e) - orbison.value(at - step * e)) / (2 * step) for e in np.eye(3)]
    assert np.allclose(orbison.gradient(at), slope, rtol=1e-5)
    found = segments.equations([100.0, 0, 50.0])
    assert found.count == 1 and found.gradient.shape == (4, 3)
    assert np.allclose(fe.YieldSurface(Mz=5.0, curve="single").value([[0, 0, 2.5], [0, 0, -5]]), [0.5, 1])


@pytest.mark.parametrize("step", [0.3, 3.0])
def test_a_cantilever_carries_its_plastic_moment(step):
    """Tip deflection prescribed: elastic 3 E I w / L^3, then Mp / L."""
    L, EI, Mp = 2.0, 200e9 * 8e-5, 50e3
    beam = fe.Beam([[0, 0, 0], [L, 0, 0]], fe.Isotropic(E=200e9, nu=0.3), 1e-2, Iz=8e-5, Iy=8e-5, J=1e-5)
    state = fe.BeamState(beam, fe.YieldSurface(Mz=Mp, curve="single"), ends="first")
    yields = Mp * L**2 / (3 * EI)
    u = np.zeros(12)
    for w in np.arange(step, 6.01, step) * yields:
        u[8] = -w
        for _ in range(20):
            forces, tangent = state.try_(u)
            free = [6, 7, 9, 10, 11]
            if np.abs(forces[free]).max() < 1e-9 * Mp:
                break
            u[free] -= np.linalg.solve(tangent[np.ix_(free, free)], forces[free])
        else:
            pytest.fail("no equilibrium")
        state.commit(u)
        state.accept()
        assert np.isclose(-forces[8], min(Mp / L, 3 * EI * w / L**3), rtol=1e-9)
    hinges = state.hinges()
    assert hinges.yields.tolist() == [True, False] and np.isclose(abs(hinges.forces[0, 2]), Mp)
    assert np.isclose(abs(hinges.plastic[0, 2]), (6 * yields - yields) / L, rtol=1e-6) and hinges.plastic[1, 2] == 0
