"""Elastic materials."""
from __future__ import annotations

import dataclasses
from typing import Any

import numpy as np

from ._arrays import Given
from .errors import ArgumentError


class Material:
    """The base of materials: numbers, or arrays (n,) with one for each element of a batch."""

    def __post_init__(self) -> None:
        for field in dataclasses.fields(self):
            array = Given(field.name, getattr(self, field.name)).array
            array.flags.writeable = False
            object.__setattr__(self, field.name, array if array.ndim else float(array))

    def __eq__(self, other: object) -> bool:
        if type(self) is not type(other):
            return NotImplemented
        return all(np.array_equal(getattr(self, field.name), getattr(other, field.name))
                   for field in dataclasses.fields(self))


@dataclasses.dataclass(frozen=True, eq=False)
class Isotropic(Material):
    """An isotropic elastic material.

    Parameters
    ----------
    E : float or (n,)
        Modulus of elasticity.
    nu : float or (n,)
        Poisson's ratio.
    density : float or (n,)
        Mass per volume.
    expansion : float or (n,)
        Thermal expansion per degree.

    Examples
    --------
    >>> steel = Isotropic(E=210e9, nu=0.3, density=7850)
    >>> steel
    Isotropic(E=210000000000.0, nu=0.3, density=7850.0, expansion=0.0)
    >>> round(steel.G / 1e9, 3)
    80.769
    """

    E: Any
    nu: Any
    density: Any = 0.0
    expansion: Any = 0.0

    @property
    def G(self) -> Any:
        """Shear modulus E / (2 (1 + nu))."""
        with np.errstate(divide="ignore", invalid="ignore"):
            return np.divide(self.E, 2 * (1 + np.asarray(self.nu)))[()]


@dataclasses.dataclass(frozen=True, eq=False)
class Orthotropic(Material):
    """An orthotropic elastic material of a plate; direction 1 has the angle of the plate from its axis x.

    Parameters
    ----------
    E1, E2 : float or (n,)
        Moduli in the directions 1 and 2.
    nu12 : float or (n,)
        Strain in direction 2 under a stress in direction 1, with the opposite sign, by the strain in direction 1.
    G12 : float or (n,)
        Shear modulus in the plane.
    G13, G23 : float or (n,)
        Transverse shear moduli; they matter to thick plates alone. Default: G12.
    density : float or (n,)
        Mass per volume.
    expansion1, expansion2 : float or (n,)
        Thermal expansions per degree.

    Examples
    --------
    >>> Orthotropic(E1=11e9, E2=0.37e9, nu12=0.4, G12=0.69e9).G13
    690000000.0
    """

    E1: Any
    E2: Any
    nu12: Any
    G12: Any
    G13: Any = None
    G23: Any = None
    density: Any = 0.0
    expansion1: Any = 0.0
    expansion2: Any = 0.0

    def __post_init__(self) -> None:
        for name in ("G13", "G23"):
            if getattr(self, name) is None:
                object.__setattr__(self, name, self.G12)
        super().__post_init__()


def require_material(value: object, kinds: tuple[type, ...]) -> None:
    """Refuses what is no material of these kinds."""
    if not isinstance(value, kinds):
        listed = " or ".join(kind.__name__ for kind in kinds)
        raise ArgumentError(f"material is {type(value).__name__}: expected {listed}", argument="material")


def fields(material: Material, names: dict[str, str]) -> list[tuple[str, Given]]:
    """Fields of records from a material: record name by attribute."""
    return [(record, Given(f"material.{attribute}", getattr(material, attribute)))
            for attribute, record in names.items()]


__all__ = ["Isotropic", "Orthotropic", "Material"]
