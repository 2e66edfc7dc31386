"""Exceptions, and the statuses of the library.

Every exception of this package is a `FinitesError`, and so a `ValueError`: an `ArgumentError` where an argument has
the wrong type or shape, an `ElementError` where the library refuses what an element or a call is given.
"""
from __future__ import annotations

import enum
from typing import Any, Mapping

import numpy as np

from . import _finites


class Status(enum.IntEnum):
    """What a call of the library answers; `Status.text` says it in words."""

    OK = 0
    NULL = 1
    NAN = 2
    RANGE = 3
    NODES = 4
    BAD_CODE = 5
    COINCIDENT = 6
    DEGENERATE = 7
    ORIENTATION = 8
    THICKNESS = 9
    MODULUS = 10
    POISSON = 11
    FACTOR = 12
    DENSITY = 13
    SECTION = 14
    FIXITY = 15
    RELEASE = 16
    LENGTH = 17
    STIFFNESS = 18
    SLACK = 19
    NO_CONVERGENCE = 20
    YIELD = 21
    HARDENING = 22
    LAYERS = 23
    RETURN = 24
    MECHANISM = 25
    MEMORY = 26
    STATE = 27
    RESULT = 28

    @property
    def text(self) -> str:
        """The sentence of the library about this status.

        >>> Status.THICKNESS.text
        'thickness must be above 0'
        """
        return _finites.text(int(self))


class FinitesError(ValueError):
    """The base of all exceptions of this package.

    Attributes
    ----------
    status : Status or None
        What the library answered; None where the call did not reach it.
    element : int or None
        Index of the first element at fault in a batch, from 0.
    argument : str or None
        Name of the argument or field at fault, where one is known.
    """

    def __init__(self, message: str, *, status: Status | None = None, element: int | None = None,
                 argument: str | None = None) -> None:
        super().__init__(message)
        self.status = status
        self.element = element
        self.argument = argument

    def __reduce__(self) -> tuple[Any, ...]:
        return (_error_again, (type(self), str(self), self.status, self.element, self.argument))


class ArgumentError(FinitesError):
    """An argument has the wrong type or shape: the message names it, its shape and what was expected."""


class ElementError(FinitesError):
    """The library refuses an element or a call: the message has its sentence, the element and the values at fault."""


def _error_again(kind: type[FinitesError], message: str, status: Status | None, element: int | None,
                 argument: str | None) -> FinitesError:
    return kind(message, status=status, element=element, argument=argument)


# Fields that a status can be about, in the words of the records.
_FIELDS: dict[Status, tuple[str, ...]] = {
    Status.COINCIDENT: ("xyz",),
    Status.DEGENERATE: ("xyz",),
    Status.ORIENTATION: ("up", "axes"),
    Status.THICKNESS: ("thickness",),
    Status.MODULUS: ("E", "E2", "G", "G12", "G13", "G23"),
    Status.POISSON: ("nu", "nu21"),
    Status.FACTOR: ("twist_factor", "inplane_shear_factor", "membrane_factor", "bending_factor", "shear_factor",
                    "mass_factor", "stiffness_factor"),
    Status.DENSITY: ("density",),
    Status.SECTION: ("area", "Iz", "Iy", "J", "shear_area_y", "shear_area_z"),
    Status.FIXITY: ("fixity_z", "fixity_y"),
    Status.RELEASE: ("release_axial", "release_y", "release_z", "release_torsion"),
    Status.LENGTH: ("length", "x", "s"),
    Status.STIFFNESS: ("k",),
    Status.YIELD: ("yield_stress", "capacity"),
    Status.HARDENING: ("hardening",),
    Status.LAYERS: ("layers",),
}
_MATERIAL = (Status.MODULUS, Status.POISSON)
# Constants that are read of an orthotropic plate alone.
_ORTHOTROPIC = ("E2", "nu21", "G12", "G13", "G23")
_POSITIVE = ("thickness", "E", "G", "G12", "G13", "G23", "area", "Iz", "Iy", "J", "length", "yield_stress", "capacity")
_NOT_NEGATIVE = ("E2", "density", "shear_area_y", "shear_area_z", "k") + _FIELDS[Status.FACTOR]


def _is_read(name: str, values: Mapping[str, Any]) -> bool:
    """Whether the library reads a field of this element: those of both directions in orthotropic plates alone."""
    if name not in _ORTHOTROPIC or "orthotropic" not in values:
        return True
    return bool(values["orthotropic"] == 1) and (name not in ("G13", "G23") or bool(values["theory"] == 0))


def _at_fault(status: Status, name: str, value: Any, orthotropic: bool) -> bool:
    """Whether a value can be what the status is about."""
    if status is Status.NAN:
        return not bool(np.all(np.isfinite(value)))
    if status is Status.RANGE:
        return bool(np.any(np.abs(value) > 1e30))
    if name not in _FIELDS.get(status, ()):
        return False
    if name in _POSITIVE or (name == "E2" and orthotropic):
        return bool(np.any(value <= 0))
    if name in _NOT_NEGATIVE:
        return bool(np.any(value < 0))
    if status is Status.FIXITY:
        return bool(np.any((value < 0) | (value > 1)))
    if status is Status.RELEASE:
        return bool(np.any((value < 0) | (value > 2)))
    return True


def element_error(status: int, element: int | None, values: Mapping[str, Any]) -> ElementError:
    """The exception for a status: its sentence, the element of a batch, and the values that it can be about."""
    code = Status(status)
    orthotropic = bool(values.get("orthotropic", 0) == 1)
    found = {name: value for name, value in values.items()
             if _at_fault(code, name, value, orthotropic) and (code not in _MATERIAL or _is_read(name, values))}
    message = code.text
    if found:
        shown = (f"{_public(name)} = {np.array2string(np.asarray(value), separator=', ', threshold=24, max_line_width=10_000)}"
                 for name, value in found.items())
        message += ": " + ", ".join(shown)
    if element is not None:
        message += f" (element {element})"
    return ElementError(message, status=code, element=element,
                        argument=", ".join(_public(name) for name in found) or None)


def _public(name: str) -> str:
    return "nodes" if name == "xyz" else name
