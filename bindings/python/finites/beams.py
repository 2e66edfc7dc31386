"""Beams and what loads them."""
from __future__ import annotations

from typing import Any, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _finites
from ._arrays import Floats, Given, Records, code_of
from ._elements import Elements, Field, nodes_of
from .errors import ArgumentError
from .materials import Isotropic, require_material
from .results import BeamSections, MemberMeasures

_RELEASES = {"none": 0, "first": 1, "second": 2}
_MEASURES = _finites.member_measures_dtype()
_SECTION = _finites.beam_section_dtype()
_POINT = _finites.beam_point_load_dtype()


class BeamLoad:
    """A load along a beam.

    Parameters
    ----------
    line : (3,) or (n, 3)
        Force per length, global axes.
    line_local : (3,) or (n, 3)
        Force per length, axes of the beam.
    temperature : float or (n,)
        Change of the axis.
    gradient_y, gradient_z : float or (n,)
        Change per length along y and z.
    points : sequence of (x, force) or (x, force, moment)
        Forces and moments (3,) in global axes at the distance x from the first end; the same for all of a batch.

    Examples
    --------
    >>> BeamLoad(line=[0, 0, -5.0], points=[(1.5, [0, 0, -10.0])])
    BeamLoad(line=[0.0, 0.0, -5.0], points=1)
    """

    def __init__(self, *, line: ArrayLike = (0.0, 0.0, 0.0), line_local: ArrayLike = (0.0, 0.0, 0.0),
                 temperature: ArrayLike = 0.0, gradient_y: ArrayLike = 0.0, gradient_z: ArrayLike = 0.0,
                 points: Sequence[tuple[Any, ...]] = ()) -> None:
        given = [Given("line", line, (3,)), Given("line_local", line_local, (3,)), Given("temperature", temperature),
                 Given("gradient_y", gradient_y), Given("gradient_z", gradient_z)]
        lengths = [one.length for one in given if one.length is not None]
        count = lengths[0] if lengths else None
        if any(length != count for length in lengths):
            raise ArgumentError(f"the parts of a load are for different numbers of elements: {lengths}",
                                argument="line")
        rows = [np.broadcast_to(one.rows(), (count or 1, one.rows().shape[1])) for one in given]
        distributed = np.concatenate(rows, axis=1)
        self._given = Given("load", distributed if count is not None else distributed[0], (9,))
        self._points = _points(points)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, BeamLoad):
            return NotImplemented
        return (np.array_equal(self._given.array, other._given.array)
                and self._points.tobytes() == other._points.tobytes())

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        parts = []
        columns: dict[str, Any] = {"line": slice(0, 3), "line_local": slice(3, 6), "temperature": 6, "gradient_y": 7,
                                   "gradient_z": 8}
        for name, column in columns.items():
            values = self._given.array[..., column]
            if np.any(values):
                parts.append(f"{name}={values.tolist() if self._given.length is None else values.shape}")
        if self._points.size:
            parts.append(f"points={self._points.size}")
        return f"BeamLoad({', '.join(parts)})"


def _points(points: Sequence[tuple[Any, ...]]) -> Records:
    records = np.zeros(len(points), _POINT)
    for record, point in zip(records, points):
        if not isinstance(point, (tuple, list)) or len(point) not in (2, 3):
            raise ArgumentError(f"points has {point!r}: expected (x, force) or (x, force, moment)", argument="points")
        record["x"] = _single("x of a point", point[0], ())
        record["force"] = _single("force of a point", point[1], (3,))
        if len(point) == 3:
            record["moment"] = _single("moment of a point", point[2], (3,))
    return records


def _single(name: str, value: ArrayLike, inner: tuple[int, ...]) -> NDArray[np.float64]:
    given = Given(name, value, inner)
    if given.length is not None:
        raise ArgumentError(f"{name} has shape {given.array.shape}, expected {inner}", argument="points")
    return given.array


_NO_LOAD = BeamLoad()


class Beam(Elements):
    """A straight beam with shear deformation, elastic end fixities and releases, or a batch of them.

    x runs from the first end to the second; y lies in the plane of x and `up`; z = x cross y. Bending in the x-y plane
    turns about z (Iz), bending in the x-z plane about y (Iy). Vectors have 12 entries: ux, uy, uz, rx, ry, rz of both
    nodes, global axes.

    Parameters
    ----------
    nodes : (2, 3) or (n, 2, 3)
        Coordinates.
    material : Isotropic
        Its numbers may be arrays (n,). G is E / (2 (1 + nu)).
    area, Iz, Iy, J : float or (n,)
        Area, second moments about z and y, torsion constant.
    shear_area_y, shear_area_z : float or (n,)
        0: no shear deformation of that plane.
    up : (3,) or (n, 3)
        On the side of y, in the x-y plane; zeros: global Z, and global X for a member along Z.
    offset : (2, 3) or (n, 2, 3), optional
        From each node to the end of the beam, global axes: a rigid link.
    E2 : float or (n,)
        Modulus of bending in the x-z plane; 0: E.
    fixity_z, fixity_y : (2,) or (n, 2)
        Of the rotation about z and y at both ends: 0 a pin, 1 rigid. K has zeros for the rotation of a pin: something
        else must hold it, or it is left out of the equations.
    release_axial, release_y, release_z, release_torsion : {"none", "first", "second"}
        End that does not carry the force along x, y, z or the torsion.

    Examples
    --------
    The tip of a cantilever under a force P: P L^3 / (3 E I).

    >>> import numpy as np
    >>> beam = Beam([[0, 0, 0], [2, 0, 0]], Isotropic(E=200e9, nu=0.3), area=1e-2, Iz=8e-5, Iy=8e-5, J=1e-5)
    >>> u = np.linalg.solve(beam.stiffness()[6:, 6:], [0, 0, -1000.0, 0, 0, 0])
    >>> bool(np.isclose(u[2], -1000 * 2**3 / (3 * 200e9 * 8e-5)))
    True
    """

    _fresh = staticmethod(_finites.beam_init)
    __slots__ = ()

    nodes = Field("Coordinates (2, 3), or (n, 2, 3) of a batch.", "xyz")
    E = Field("Modulus of elasticity.")
    G = Field("Shear modulus.")
    area = Field("Area.")
    Iz = Field("Second moment about z.")
    Iy = Field("Second moment about y.")
    J = Field("Torsion constant.")
    density = Field("Mass per volume.")

    order = 12

    def __init__(self, nodes: ArrayLike, material: Isotropic, area: ArrayLike, Iz: ArrayLike, Iy: ArrayLike,
                 J: ArrayLike, *, shear_area_y: ArrayLike = 0.0, shear_area_z: ArrayLike = 0.0,
                 up: ArrayLike = (0.0, 0.0, 0.0), offset: ArrayLike | None = None, E2: ArrayLike = 0.0,
                 fixity_z: ArrayLike = (1.0, 1.0), fixity_y: ArrayLike = (1.0, 1.0), release_axial: str = "none",
                 release_y: str = "none", release_z: str = "none", release_torsion: str = "none") -> None:
        require_material(material, (Isotropic,))
        given = [("xyz", nodes_of("nodes", nodes, (2,))), ("up", Given("up", up, (3,))),
                 ("E", Given("material.E", material.E)), ("G", Given("material.G", material.G)),
                 ("density", Given("material.density", material.density)),
                 ("expansion", Given("material.expansion", material.expansion)), ("E2", Given("E2", E2)),
                 ("area", Given("area", area)), ("Iz", Given("Iz", Iz)), ("Iy", Given("Iy", Iy)), ("J", Given("J", J)),
                 ("shear_area_y", Given("shear_area_y", shear_area_y)),
                 ("shear_area_z", Given("shear_area_z", shear_area_z)),
                 ("fixity_z", Given("fixity_z", fixity_z, (2,))), ("fixity_y", Given("fixity_y", fixity_y, (2,)))]
        if offset is not None:
            given.append(("offset", Given("offset", offset, (2, 3))))
        self._build(given, {"release_axial": code_of("release_axial", release_axial, _RELEASES),
                            "release_y": code_of("release_y", release_y, _RELEASES),
                            "release_z": code_of("release_z", release_z, _RELEASES),
                            "release_torsion": code_of("release_torsion", release_torsion, _RELEASES)})

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K, (12, 12) or (n, 12, 12)."""
        matrices: Floats = self._run(_finites.beam_stiffness, (12, 12), threads=threads)
        return matrices

    def mass(self, *, lumped: bool = False, threads: int = 1) -> Floats:
        """The mass M: consistent with rotary inertia, or lumped."""
        matrices: Floats = self._run(_finites.beam_mass, (12, 12), extra=(int(bool(lumped)),), threads=threads)
        return matrices

    def geometric(self, u: ArrayLike | None = None, *, axial: ArrayLike | None = None, threads: int = 1) -> Floats:
        """The geometric stiffness KG of an axial force, tension positive.

        Parameters
        ----------
        u : (12,) or (n, 12)
            Displacements whose axial force counts.
        axial : float or (n,)
            The force itself, instead.
        """
        if (u is None) == (axial is None):
            raise ArgumentError("geometric takes either u or axial", argument="u, axial")
        if axial is not None:
            matrices: Floats = self._run(_finites.beam_geometric_of_force, (12, 12), [Given("axial", axial)],
                                         threads=threads)
        else:
            assert u is not None
            matrices = self._run(_finites.beam_geometric, (12, 12), [Given("u", u, (12,))], threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces K u of displacements u, (12,) or (n, 12)."""
        vectors: Floats = self._run(_finites.beam_forces, (12,), [Given("u", u, (12,))], threads=threads)
        return vectors

    def loads(self, load: BeamLoad, *, threads: int = 1) -> Floats:
        """The nodal forces (12,) or (n, 12) of a load, with releases and fixities taken into account."""
        _require_load(load)
        vectors: Floats = self._run(_finites.beam_loads, (12,), [load._given], (load._points,), threads=threads)
        return vectors

    def sections(self, u: ArrayLike, load: BeamLoad | None = None, *, x: ArrayLike | None = None, places: int = 11,
                 threads: int = 1) -> BeamSections:
        """Section forces and displacements along the beam.

        Parameters
        ----------
        u : (12,) or (n, 12)
            Displacements of the nodes.
        load : BeamLoad, optional
            What acts between the nodes.
        x : (k,) or (n, k), optional
            Distances from the first end. Default: equal steps over the length.
        places : int
            How many places there are where x is not given.
        """
        load = _NO_LOAD if load is None else load
        _require_load(load)
        if x is None:
            if places < 2:
                raise ArgumentError(f"places is {places}: expected 2 or more", argument="places")
            at = np.multiply.outer(self.measures().length, np.linspace(0.0, 1.0, places))
        else:
            at = np.asarray(x, dtype=np.float64)
            if at.ndim == 0 or at.shape[-1] == 0:
                raise ArgumentError(f"x has shape {at.shape}, expected (k,) or (n, k)", argument="x")
        count = at.shape[-1]
        given = [Given("u", u, (12,)), load._given, Given("x", at, (count,))]
        return BeamSections(self._run(_finites.beam_sections, (count,), given, (load._points, count), threads=threads,
                                      dtype=_SECTION))

    def measures(self, *, threads: int = 1) -> MemberMeasures:
        """Length, volume, mass, center and axes."""
        return MemberMeasures(self._run(_finites.beam_measure, (), threads=threads, dtype=_MEASURES))


def _require_load(load: object) -> None:
    if not isinstance(load, BeamLoad):
        raise ArgumentError(f"load is {type(load).__name__}: expected BeamLoad", argument="load")


__all__ = ["Beam", "BeamLoad"]
