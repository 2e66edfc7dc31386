"""Yield surfaces, and the states of plates and beams that yield."""
from __future__ import annotations

from typing import Any, NamedTuple, NoReturn, Sequence, TypeVar

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _finites
from ._arrays import Floats, Given, Records, code_of, length_mismatch, thread_count
from ._elements import Elements
from .beams import Beam
from .errors import ArgumentError, element_error
from .plates import Plate
from .results import Hinges, PlateResults, YieldEquations

CURVES = {"single": 1, "orbison": 2, "segments": 3}
_INTERACTIONS = {("P",): 1, ("My",): 2, ("Mz",): 3, ("P", "My"): 4, ("P", "Mz"): 5, ("My", "Mz"): 6,
                 ("P", "My", "Mz"): 7}
_MODELS = {"whole-section": 1, "layered": 2}
_ENDS = {"first": 1, "second": 2, "both": 3}
_EQUATIONS = _finites.yield_equations_dtype()
_PLASTIC = _finites.plastic_dtype()
_RESULTS = _finites.plate_results_dtype()
_HINGE = _finites.hinge_dtype()

State = TypeVar("State", bound="_States")


class YieldSurface(Elements):
    """The yield surface of a section, value = 1, of those of the forces P, My and Mz whose capacity is given.

    Parameters
    ----------
    P, My, Mz : float or (n,), optional
        Capacities; a force without one does not count.
    curve : {"segments", "orbison", "single"}
        p + 8/9 m = 1 for p >= 0.2, p/2 + m = 1 below; a smooth surface (Orbison, McGuire and Abel, 1982), Mz the
        strong axis; one force alone.

    Examples
    --------
    >>> surface = YieldSurface(P=1000.0, Mz=200.0)
    >>> surface.value([[500.0, 0, 112.5], [100.0, 0, 190.0]]).round(9)
    array([1., 1.])
    """

    _fresh = staticmethod(_finites.yield_init)
    __slots__ = ()

    def __init__(self, P: ArrayLike | None = None, My: ArrayLike | None = None, Mz: ArrayLike | None = None, *,
                 curve: str = "segments") -> None:
        capacities = {"P": P, "My": My, "Mz": Mz}
        named = tuple(name for name, value in capacities.items() if value is not None)
        if not named:
            raise ArgumentError("a yield surface takes a capacity of P, My or Mz", argument="P, My, Mz")
        code = code_of("curve", curve, CURVES)
        if curve == "single" and len(named) > 1:
            raise ArgumentError(f"curve 'single' is about one force: expected one capacity, not {', '.join(named)}",
                                argument="curve")
        if curve != "single" and named == ("P",):
            raise ArgumentError(f"curve {curve!r} takes a capacity of My or Mz: for P alone the curve is 'single'",
                                argument="curve")
        given = [Given(name, 1.0 if value is None else value) for name, value in capacities.items()]
        lengths = {one.length for one in given if one.length is not None}
        if len(lengths) > 1:
            raise ArgumentError(f"capacities are for different numbers of elements: {sorted(lengths)}",
                                argument="P, My, Mz")
        columns = np.broadcast_arrays(*(one.array for one in given))
        self._build([("capacity", Given("capacity", np.stack(columns, axis=-1), (3,)))],
                    {"curve": code, "forces": _INTERACTIONS[named]})

    def _value_text(self, name: str, values: Any) -> str:
        if name == "curve":
            return next(repr(curve) for curve, code in CURVES.items() if code == values[0])
        if name == "forces":
            return "-".join(next(names for names, code in _INTERACTIONS.items() if code == values[0]))
        return super()._value_text(name, values)

    @property
    def interacting(self) -> tuple[str, ...]:
        """The names of the forces that count."""
        return next(names for names, code in _INTERACTIONS.items() if code == self._records["forces"][0])

    @property
    def capacity(self) -> Floats:
        """Capacities of P, My, Mz, (3,) or (n, 3); 1 for a force that does not count."""
        values: Floats = self._field("capacity")
        return values

    def value(self, force: ArrayLike, *, threads: int = 1) -> Floats:
        """The largest value of the active equations for forces P, My, Mz, (3,) or (n, 3): below 1 elastic."""
        values: Floats = self._run(_finites.yield_value, (), [Given("force", force, (3,))], threads=threads)
        return values

    def equations(self, force: ArrayLike, *, threads: int = 1) -> YieldEquations:
        """The active equations for forces P, My, Mz, (3,) or (n, 3): their count, segments, values and gradients."""
        return YieldEquations(self._run(_finites.yield_equations, (), [Given("force", force, (3,))], threads=threads,
                                        dtype=_EQUATIONS))

    def gradient(self, force: ArrayLike, *, threads: int = 1) -> Floats:
        """The gradient of the equation with the largest value, (3,) or (n, 3)."""
        found = self.equations(force, threads=threads)
        active = np.arange(4) < np.expand_dims(found.count, -1)
        largest = np.argmax(np.where(active, found.value, -np.inf), axis=-1)
        chosen: Floats = np.take_along_axis(found.gradient, np.expand_dims(largest, (-1, -2)), axis=-2)[..., 0, :]
        return chosen


class Response(NamedTuple):
    """Nodal forces (m,) or (n, m), and the tangent at them (m, m) or (n, m, m), not symmetric in general."""

    forces: Floats
    tangent: Floats


class _States:
    """What the states of plates and beams share."""

    _elements: Elements
    _states: Any
    _order: int

    @property
    def elements(self) -> Any:
        """The description of the elements."""
        return self._elements

    def _shape(self, *inner: int) -> tuple[int, ...]:
        return (len(self._elements), *inner) if self._elements.batch else inner

    def _displacements(self, u: ArrayLike) -> Floats:
        given = Given("u", u, (self._order,))
        if given.length is not None and (not self._elements.batch or given.length != len(self._elements)):
            raise length_mismatch("u", given.length, self._elements._length)
        return given.rows()

    def _check(self, answer: tuple[int, int], u: Floats | None = None) -> None:
        status, element = answer
        if status == 0:
            return
        values = {} if u is None else {"u": u[element if u.shape[0] > 1 else 0]}
        raise element_error(status, element if self._elements.batch else None, values)

    def __len__(self) -> int:
        return len(self._elements)

    def try_(self, u: ArrayLike, *, threads: int = 1) -> Response:
        """The answer to displacements; the state stays as it is.

        Parameters
        ----------
        u : (m,) or (n, m)
            Total displacements.

        Returns
        -------
        Response
            The nodal forces of the stresses (of the section forces) that u has, returned to the yield surface, and the
            tangent at them.
        """
        rows = self._displacements(u)
        forces, tangent = np.empty(self._shape(self._order)), np.empty(self._shape(self._order, self._order))
        self._check(self._states.try_(rows, forces, tangent, thread_count(threads)), rows)
        return Response(forces, tangent)

    def commit(self, u: ArrayLike, *, threads: int = 1) -> None:
        """Stores what displacements u lead to: once an iteration has converged. It may be repeated within a step.

        All elements of a batch are committed, or on an error none.
        """
        rows = self._displacements(u)
        self._check(self._states.commit(rows, thread_count(threads)), rows)

    def accept(self) -> None:
        """Ends a step: plastic strains count from here on."""
        self._check(self._states.accept())

    def forces(self, *, threads: int = 1) -> Response:
        """Nodal forces and tangent of what was committed last."""
        forces, tangent = np.empty(self._shape(self._order)), np.empty(self._shape(self._order, self._order))
        self._check(self._states.forces(forces, tangent, thread_count(threads)))
        return Response(forces, tangent)

    def copy(self: State) -> State:
        """An independent copy."""
        made = type(self).__new__(type(self))
        made._elements, made._order = self._elements, self._order
        made._states, answer = self._states.copy(0, len(self._states))
        self._check(answer)
        return made

    def __copy__(self: State) -> State:
        return self.copy()

    def __deepcopy__(self: State, memo: dict[int, Any]) -> State:
        return self.copy()

    def __reduce__(self) -> NoReturn:
        raise TypeError(f"a {type(self).__name__} cannot be pickled: it is memory of the library; pickle the elements "
                        "and the displacements that were committed")

    def __repr__(self) -> str:
        return f"{type(self).__name__}({self._elements!r})"


class PlateState(_States):
    """Plates that yield after von Mises: what they must remember, one plate or a batch.

    A step is: `try_` as often as the iteration wants, `commit` where it has converged, `accept` at its end. Trying never
    changes the state. Forces are those of stresses on the yield surface: a Newton iteration that ends is in equilibrium
    there.

    Parameters
    ----------
    plates : Plate
        Isotropic, thin or thick, the factors of its stiffness 1; membranes do not yield.
    yield_stress : float or (n,)
        Uniaxial yield stress.
    hardening : float or (n,)
        Tangent modulus of stress over total strain beyond yield, below E; 0: perfectly plastic.
    model : {"layered", "whole-section"}
        Stresses at points through the thickness, or one yield surface of section forces, whose results have the
        stresses N / h and 6 M / h^2 at the faces.
    layers : {3, 5, 7, 9, 11, 13, 15}
        Points through the thickness of the layered model (Lobatto's rule). Fully plastic they carry 0.667, 0.913,
        0.960, 0.977, 0.985, 0.989, 0.992 of the plastic moment.

    Examples
    --------
    >>> import numpy as np
    >>> square = np.array([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]], dtype=float)
    >>> from finites import Isotropic
    >>> plate = Plate(square, thickness=0.1, material=Isotropic(E=200e3, nu=0.3))
    >>> state = PlateState(plate, yield_stress=200.0)
    >>> u = np.zeros((4, 6))
    >>> u[:, 0], u[:, 1] = 0.01 * square[:, 0], -0.0048 * square[:, 1]  # uniaxial stress
    >>> state.commit(u.ravel())
    >>> state.results().forces[:, 0].round(2)  # thickness * yield stress
    array([20., 20., 20., 20.])
    """

    def __init__(self, plates: Plate, yield_stress: ArrayLike, *, hardening: ArrayLike = 0.0, model: str = "layered",
                 layers: int = 7) -> None:
        if not isinstance(plates, Plate):
            raise ArgumentError(f"plates is {type(plates).__name__}: expected Plate", argument="plates")
        plastic = np.zeros(plates.records.size, _PLASTIC)
        plastic["model"] = code_of("model", model, _MODELS)
        if isinstance(layers, bool) or not isinstance(layers, int) or not 0 <= layers <= 1000:
            raise ArgumentError(f"layers is {layers!r}: expected 3, 5, 7, 9, 11, 13 or 15", argument="layers")
        plastic["layers"] = layers
        for given in (Given("yield_stress", yield_stress), Given("hardening", hardening)):
            if given.length is not None and (not plates.batch or given.length != len(plates)):
                raise length_mismatch(given.name, given.length, plates._length)
            plastic[given.name] = given.array
        self._elements = plates
        self._order = plates.order
        self._states, (status, element) = _finites.plate_states(plates.records, plastic)
        if status != 0:
            raise element_error(status, element if plates.batch else None, _values(plates.records, plastic, element))

    def results(self, *, threads: int = 1) -> PlateResults:
        """Stored strains, stresses, section forces and plastic strains of what was committed last."""
        records = np.zeros(self._shape(), _RESULTS)
        self._check(self._states.results(records, thread_count(threads)))
        return PlateResults(records, self._elements._node_count())


class BeamState(_States):
    """Beams with elastic-perfectly plastic hinges at their ends: one beam or a batch; steps as those of `PlateState`.

    Parameters
    ----------
    beams : Beam
        The beams.
    surface : YieldSurface
        Of P, My and Mz, one for all or one for each.
    ends : {"both", "first", "second"}, or a sequence of them
        Ends that may yield, for all beams or for each. Where two beams meet alone, one of the two ends should: if both
        yield, nothing holds the rotation of the node.

    Examples
    --------
    A cantilever carries no more than its plastic moment by its length.

    >>> import numpy as np
    >>> from finites import Isotropic
    >>> beam = Beam([[0, 0, 0], [2, 0, 0]], Isotropic(E=200e9, nu=0.3), area=1e-2, Iz=8e-5, Iy=8e-5, J=1e-5)
    >>> state = BeamState(beam, YieldSurface(Mz=50e3, curve="single"), ends="first")
    >>> force, tangent = state.try_(np.zeros(12))
    >>> bool(np.allclose(tangent, beam.stiffness()))
    True
    """

    def __init__(self, beams: Beam, surface: YieldSurface, *, ends: str | Sequence[str] = "both") -> None:
        if not isinstance(beams, Beam):
            raise ArgumentError(f"beams is {type(beams).__name__}: expected Beam", argument="beams")
        if not isinstance(surface, YieldSurface):
            raise ArgumentError(f"surface is {type(surface).__name__}: expected YieldSurface", argument="surface")
        if surface.batch and (not beams.batch or len(surface) != len(beams)):
            raise length_mismatch("surface", surface._length, beams._length)
        yields = surface.records if surface.batch else np.repeat(surface.records, beams.records.size)
        self._elements = beams
        self._order = 12
        self._states, (status, element) = _finites.beam_states(beams.records, yields, _end_codes(ends, beams))
        if status != 0:
            raise element_error(status, element if beams.batch else None, _values(beams.records, yields, element))

    def hinges(self) -> Hinges:
        """Forces, yield value and plastic deformation of both ends, as committed last."""
        records = np.zeros(self._shape(2), _HINGE)
        self._check(self._states.hinges(records))
        return Hinges(records)


def _end_codes(ends: str | Sequence[str], beams: Beam) -> NDArray[np.int32]:
    codes = [code_of("ends", one, _ENDS) for one in ([ends] if isinstance(ends, str) else ends)]
    if not isinstance(ends, str) and (not beams.batch or len(codes) != len(beams)):
        raise length_mismatch("ends", len(codes), beams._length)
    return np.array(np.broadcast_to(codes, beams.records.size), dtype=np.int32)


def _values(elements: Records, material: Records, element: int) -> dict[str, Any]:
    return {name: records[name][element] for records in (elements, material) for name in records.dtype.names or ()}


__all__ = ["YieldSurface", "PlateState", "BeamState", "Response"]
