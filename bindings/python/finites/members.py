"""Trusses and cables, links and springs."""
from __future__ import annotations

from typing import NamedTuple

import numpy as np
from numpy.typing import ArrayLike

from . import _finites
from ._arrays import Floats, Given
from ._elements import Elements, Field, nodes_of
from .errors import ArgumentError
from .materials import Isotropic, require_material
from .results import MemberMeasures

_MEASURES = _finites.member_measures_dtype()


class Truss(Elements):
    """A bar that carries an axial force alone, or a batch of them. Vectors: ux, uy, uz of both nodes.

    Parameters
    ----------
    nodes : (2, 3) or (n, 2, 3)
        Coordinates.
    material : Isotropic
        E, density and expansion count.
    area : float or (n,)
        Area.
    pretension : float or (n,)
        A force; its string stiffness belongs to the stiffness.

    Examples
    --------
    >>> bar = Truss([[0, 0, 0], [2, 0, 0]], Isotropic(E=200e9, nu=0.3), area=1e-4)
    >>> float(bar.stiffness()[0, 0])  # E A / L
    10000000.0
    >>> float(bar.axial_force([0, 0, 0, 1e-3, 0, 0]))
    10000.0
    """

    _fresh = staticmethod(_finites.truss_init)
    __slots__ = ()

    nodes = Field("Coordinates (2, 3), or (n, 2, 3) of a batch.", "xyz")
    E = Field("Modulus of elasticity.")
    area = Field("Area.")
    density = Field("Mass per volume.")
    pretension = Field("Pretension.")

    order = 6

    def __init__(self, nodes: ArrayLike, material: Isotropic, area: ArrayLike, *,
                 pretension: ArrayLike = 0.0) -> None:
        require_material(material, (Isotropic,))
        self._build([("xyz", nodes_of("nodes", nodes, (2,))), ("E", Given("material.E", material.E)),
                     ("density", Given("material.density", material.density)),
                     ("expansion", Given("material.expansion", material.expansion)), ("area", Given("area", area)),
                     ("pretension", Given("pretension", pretension))], {})

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K, (6, 6) or (n, 6, 6)."""
        matrices: Floats = self._run(_finites.truss_stiffness, (6, 6), threads=threads)
        return matrices

    def mass(self, *, lumped: bool = False, threads: int = 1) -> Floats:
        """The mass M: consistent or lumped."""
        matrices: Floats = self._run(_finites.truss_mass, (6, 6), extra=(int(bool(lumped)),), threads=threads)
        return matrices

    def geometric(self, u: ArrayLike | None = None, *, axial: ArrayLike | None = None, threads: int = 1) -> Floats:
        """The geometric stiffness KG of the axial force of displacements u (6,) or (n, 6), or of a given one."""
        if (u is None) == (axial is None):
            raise ArgumentError("geometric takes either u or axial", argument="u, axial")
        if axial is not None:
            matrices: Floats = self._run(_finites.truss_geometric_of_force, (6, 6), [Given("axial", axial)],
                                         threads=threads)
        else:
            assert u is not None
            matrices = self._run(_finites.truss_geometric, (6, 6), [Given("u", u, (6,))], threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces of displacements u, (6,) or (n, 6)."""
        vectors: Floats = self._run(_finites.truss_forces, (6,), [Given("u", u, (6,))], threads=threads)
        return vectors

    def loads(self, line: ArrayLike = (0.0, 0.0, 0.0), temperature: ArrayLike = 0.0, *, threads: int = 1) -> Floats:
        """The nodal forces (6,) or (n, 6) of a force per length (3,), global axes, and a change of temperature."""
        given = [Given("line", line, (3,)), Given("temperature", temperature)]
        vectors: Floats = self._run(_finites.truss_loads, (6,), given, threads=threads)
        return vectors

    def axial_force(self, u: ArrayLike, temperature: ArrayLike = 0.0, *, threads: int = 1) -> Floats:
        """The axial force, with the pretension; tension positive."""
        given = [Given("u", u, (6,)), Given("temperature", temperature)]
        axial: Floats = self._run(_finites.truss_axial_force, (), given, threads=threads)
        return axial

    def measures(self, *, threads: int = 1) -> MemberMeasures:
        """Length, volume, mass, center and axes."""
        return MemberMeasures(self._run(_finites.truss_measure, (), threads=threads, dtype=_MEASURES))


class CableForces(NamedTuple):
    """What nodes exert on cables, (6,) or (n, 6), and the tensions at both ends, (2,) or (n, 2)."""

    forces: Floats
    tension: Floats


class CableShape(NamedTuple):
    """Where points of cables hang, (k, 3) or (n, k, 3), and their tensions, (k,) or (n, k)."""

    xyz: Floats
    tension: Floats


class Cable(Elements):
    """An elastic cable that hangs between its nodes under its dead load, or a batch of them.

    The equilibrium is that of the deformed cable between the nodes where they are now: an iteration moves the nodes by
    ``cable.replace(nodes=...)``.

    Parameters
    ----------
    nodes : (2, 3) or (n, 2, 3)
        Coordinates of the nodes where they are now.
    E, area : float or (n,)
        Modulus and area.
    length : float or (n,)
        Unstressed length.
    load : (3,) or (n, 3)
        Dead load per unstressed length, global axes.
    strain : float or (n,)
        Stress-free strain, for example from temperature.

    Examples
    --------
    A cable carries half of its weight to each of two nodes at one level.

    >>> cable = Cable([[0, 0, 0], [10, 0, 0]], E=160e9, area=1e-4, length=12.0, load=[0, 0, -8.0])
    >>> cable.forces().forces[[2, 5]].round(6)
    array([48., 48.])
    """

    _fresh = staticmethod(_finites.cable_init)
    __slots__ = ()

    nodes = Field("Coordinates (2, 3), or (n, 2, 3) of a batch.", "xyz")
    E = Field("Modulus of elasticity.")
    area = Field("Area.")
    length = Field("Unstressed length.")
    strain = Field("Stress-free strain.")
    load = Field("Dead load per unstressed length.")

    order = 6

    def __init__(self, nodes: ArrayLike, E: ArrayLike, area: ArrayLike, length: ArrayLike, *,
                 load: ArrayLike = (0.0, 0.0, 0.0), strain: ArrayLike = 0.0) -> None:
        self._build([("xyz", nodes_of("nodes", nodes, (2,))), ("E", Given("E", E)), ("area", Given("area", area)),
                     ("length", Given("length", length)), ("strain", Given("strain", strain)),
                     ("load", Given("load", load, (3,)))], {})

    def forces(self, *, threads: int = 1) -> CableForces:
        """The forces that the nodes exert on the cable, and the tensions at its ends."""
        values: Floats = self._run(_finites.cable_forces, (8,), threads=threads)
        return CableForces(values[..., :6], values[..., 6:])

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The tangent of the forces by the coordinates of the nodes, (6, 6) or (n, 6, 6)."""
        matrices: Floats = self._run(_finites.cable_stiffness, (6, 6), threads=threads)
        return matrices

    def shape(self, s: ArrayLike | None = None, *, places: int = 21, threads: int = 1) -> CableShape:
        """Where points of the cable hang, and their tension.

        Parameters
        ----------
        s : (k,) or (n, k), optional
            Unstressed distances from the first node. Default: equal steps.
        places : int
            How many places there are where s is not given.
        """
        if s is None:
            if places < 2:
                raise ArgumentError(f"places is {places}: expected 2 or more", argument="places")
            at = np.multiply.outer(np.asarray(self.length), np.linspace(0.0, 1.0, places))
        else:
            at = np.asarray(s, dtype=np.float64)
            if at.ndim == 0 or at.shape[-1] == 0:
                raise ArgumentError(f"s has shape {at.shape}, expected (k,) or (n, k)", argument="s")
        count = at.shape[-1]
        values: Floats = self._run(_finites.cable_shape, (4 * count,), [Given("s", at, (count,))], (count,),
                                   threads=threads)
        return CableShape(values[..., : 3 * count].reshape(*values.shape[:-1], count, 3), values[..., 3 * count:])


class Link(Elements):
    """Six springs between two nodes along and about the axes of a member, or a batch of them.

    Parameters
    ----------
    nodes : (2, 3) or (n, 2, 3)
        Coordinates; they may coincide: the axes are the global ones then.
    k : (6,) or (n, 6)
        Stiffness along and about x, y, z of the link.
    up : (3,) or (n, 3)
        As of beams.
    at_ends : bool
        False: the deformable point is at mid-length, so that shear turns the ends; True: the length has no effect.

    Examples
    --------
    >>> link = Link([[0, 0, 0], [0, 0, 0]], k=[5.0, 0, 0, 0, 0, 0])
    >>> link.stiffness()[[0, 0], [0, 6]]
    array([ 5., -5.])
    """

    _fresh = staticmethod(_finites.link_init)
    __slots__ = ()

    nodes = Field("Coordinates (2, 3), or (n, 2, 3) of a batch.", "xyz")
    k = Field("Stiffness (6,), or (n, 6) of a batch.")

    order = 12

    def __init__(self, nodes: ArrayLike, k: ArrayLike, *, up: ArrayLike = (0.0, 0.0, 0.0),
                 at_ends: bool = False) -> None:
        self._build([("xyz", nodes_of("nodes", nodes, (2,))), ("k", Given("k", k, (6,))),
                     ("up", Given("up", up, (3,)))], {"at_ends": int(bool(at_ends))})

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K, (12, 12) or (n, 12, 12)."""
        matrices: Floats = self._run(_finites.link_stiffness, (12, 12), threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces of displacements u, (12,) or (n, 12)."""
        vectors: Floats = self._run(_finites.link_forces, (12,), [Given("u", u, (12,))], threads=threads)
        return vectors


class Spring(Elements):
    """Six springs between two nodes in axes of their own, or a batch of them.

    Parameters
    ----------
    k : (6,) or (n, 6)
        Stiffness along and about x, y, z of the spring.
    axes : (3, 3) or (n, 3, 3)
        Rows x, y, z; zeros: the global axes.

    Examples
    --------
    >>> Spring(k=[1.0, 2.0, 3.0, 0, 0, 0]).forces([0] * 6 + [1, 1, 1, 0, 0, 0])[6:9]
    array([1., 2., 3.])
    """

    _fresh = staticmethod(_finites.spring_init)
    __slots__ = ()

    k = Field("Stiffness (6,), or (n, 6) of a batch.")
    axes = Field("Rows x, y, z (3, 3), or (n, 3, 3) of a batch.")

    order = 12

    def __init__(self, k: ArrayLike, *, axes: ArrayLike | None = None) -> None:
        self._build([("k", Given("k", k, (6,))),
                     ("axes", Given("axes", np.zeros((3, 3)) if axes is None else axes, (3, 3)))], {})

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K, (12, 12) or (n, 12, 12)."""
        matrices: Floats = self._run(_finites.spring_stiffness, (12, 12), threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces of displacements u, (12,) or (n, 12)."""
        vectors: Floats = self._run(_finites.spring_forces, (12,), [Given("u", u, (12,))], threads=threads)
        return vectors


__all__ = ["Truss", "Cable", "CableForces", "CableShape", "Link", "Spring"]
