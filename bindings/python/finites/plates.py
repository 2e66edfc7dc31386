"""Plates and shells: flat triangles and quadrilaterals."""
from __future__ import annotations

from numpy.typing import ArrayLike

from . import _finites
from ._arrays import Floats, Given, code_of
from ._elements import Elements, Field, nodes_of
from .errors import ArgumentError
from .materials import Isotropic, Orthotropic, fields, require_material
from .results import Location, PlateMeasures, PlateResults

THEORIES = {"thick": 0, "thin": 1, "membrane": 2, "membrane-reduced": 98}
_ISOTROPIC = {"E": "E", "nu": "nu", "density": "density", "expansion": "expansion"}
_ORTHOTROPIC = {"E1": "E", "E2": "E2", "nu12": "nu", "G12": "G12", "G13": "G13", "G23": "G23", "density": "density",
                "expansion1": "expansion", "expansion2": "expansion2"}
_MEASURES = _finites.plate_measures_dtype()
_LOCATION = _finites.location_dtype()
_RESULTS = _finites.plate_results_dtype()


class Plate(Elements):
    """A flat shell element with three or four nodes, or a batch of them: a membrane and a plate in bending.

    Element axes: x from node 1 to node 2, z normal to the nodes by the right-hand rule, y = z cross x. Vectors go node
    by node: ux, uy, uz, rx, ry, rz of the first node, then of the second, in global axes; m = 6 times the nodes. Units
    are the caller's, consistent.

    Parameters
    ----------
    nodes : (4, 3), (3, 3), (n, 4, 3) or (n, 3, 3)
        Coordinates; three axes make a batch of n elements.
    thickness : float or (n,)
        Thickness.
    material : Isotropic or Orthotropic
        Its numbers may be arrays (n,) too.
    theory : {"thick", "thin", "membrane", "membrane-reduced"}
        Mindlin's plate with transverse shear; Kirchhoff's; a membrane alone; a membrane with 0.01 of the axial
        stiffness.
    angle : float or (n,)
        From axis x of the element to direction 1 of an orthotropic material, radians.
    offset : (4, 3) or (n, 4, 3), optional
        From each node to the corner of the element, global axes: a rigid link. (3, 3) for triangles.
    membrane_factor : float or (n,)
        On the membrane stiffness.
    bending_factor : float or (n,)
        On the bending stiffness.
    shear_factor : float or (n,)
        On the transverse shear stiffness of a thick plate, above 0: at 0 an isotropic plate keeps about the stiffness
        of 1, and its shear forces are zero.
    twist_factor : float or (n,)
        On the twisting stiffness G12 h^3 / 12 of an orthotropic plate.
    inplane_shear_factor : float or (n,)
        On the membrane shear stiffness G12 h of an orthotropic plate.
    mass_factor : float or (n,)
        On the mass.

    References
    ----------
    Thick: Katili (1993), the discrete Kirchhoff-Mindlin triangle and quadrilateral. Thin: Batoz, Bathe and Ho (1980),
    Batoz and Ben Tahar (1982). docs/theory.md of the sources says how each is made.

    Examples
    --------
    >>> steel = Isotropic(E=210e9, nu=0.3, density=7850)
    >>> square = [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]]
    >>> plate = Plate(square, thickness=0.02, material=steel, theory="thick")
    >>> plate.stiffness().shape
    (24, 24)
    >>> plates = Plate([square, square], thickness=[0.02, 0.03], material=steel)
    >>> plates.stiffness().shape
    (2, 24, 24)
    >>> plates.measures().mass
    array([157. , 235.5])
    """

    _fresh = staticmethod(_finites.plate_init)
    _hidden = ("unused", "xyz", "nodes", "theory")
    __slots__ = ()

    thickness = Field("Thickness.")
    E = Field("Modulus of elasticity; in direction 1 of an orthotropic plate.")
    nu = Field("Poisson's ratio; nu12 of an orthotropic plate.")
    density = Field("Mass per volume.")
    angle = Field("From axis x to direction 1.")

    def __init__(self, nodes: ArrayLike, thickness: ArrayLike, material: Isotropic | Orthotropic,
                 theory: str = "thick", *, angle: ArrayLike = 0.0, offset: ArrayLike | None = None,
                 membrane_factor: ArrayLike = 1.0, bending_factor: ArrayLike = 1.0, shear_factor: ArrayLike = 1.0,
                 twist_factor: ArrayLike = 1.0, inplane_shear_factor: ArrayLike = 1.0,
                 mass_factor: ArrayLike = 1.0) -> None:
        require_material(material, (Isotropic, Orthotropic))
        xyz = nodes_of("nodes", nodes, (3, 4))
        given = [("xyz", xyz), ("thickness", Given("thickness", thickness)), ("angle", Given("angle", angle)),
                 ("membrane_factor", Given("membrane_factor", membrane_factor)),
                 ("bending_factor", Given("bending_factor", bending_factor)),
                 ("shear_factor", Given("shear_factor", shear_factor)),
                 ("twist_factor", Given("twist_factor", twist_factor)),
                 ("inplane_shear_factor", Given("inplane_shear_factor", inplane_shear_factor)),
                 ("mass_factor", Given("mass_factor", mass_factor))]
        if offset is not None:
            given.append(("offset", Given("offset", offset, xyz.inner)))
        orthotropic = isinstance(material, Orthotropic)
        given += fields(material, _ORTHOTROPIC if orthotropic else _ISOTROPIC)
        codes = {"nodes": xyz.inner[0], "theory": code_of("theory", theory, THEORIES), "orthotropic": int(orthotropic)}
        self._build(given, codes)

    @property
    def nodes(self) -> Floats:
        """Coordinates (k, 3), or (n, k, 3) of a batch."""
        every = self._records["xyz"][:, : self._node_count()]
        xyz: Floats = every if self.batch else every[0]
        return xyz

    @property
    def theory(self) -> str:
        """The theory by its name."""
        code = int(self._records["theory"][0])
        return next(name for name, value in THEORIES.items() if value == code)

    @property
    def order(self) -> int:
        """m, the degrees of freedom: 18 or 24."""
        return 6 * self._node_count()

    def _shape_text(self) -> str:
        return f"{super()._shape_text()} of {self._node_count()} nodes, theory={self.theory!r}"

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K.

        Returns
        -------
        (m, m) or (n, m, m)
        """
        matrices: Floats = self._run(_finites.plate_stiffness, (self.order, self.order), threads=threads)
        return matrices

    def mass(self, *, threads: int = 1) -> Floats:
        """The consistent mass M, of the shape of the stiffness."""
        matrices: Floats = self._run(_finites.plate_mass, (self.order, self.order), threads=threads)
        return matrices

    def geometric(self, u: ArrayLike | None = None, *, forces: ArrayLike | None = None, threads: int = 1) -> Floats:
        """The geometric stiffness KG of membrane forces: K + KG is the stiffness under them; tension stiffens.

        Parameters
        ----------
        u : (m,) or (n, m)
            Displacements whose membrane forces count.
        forces : (4, 6) or (n, 4, 6)
            Section forces Nx, Ny, Nxy, Mx, My, Mxy by integration point, instead of displacements.
        """
        shape = (self.order, self.order)
        if (u is None) == (forces is None):
            raise ArgumentError("geometric takes either u or forces", argument="u, forces")
        if forces is not None:
            given = Given("forces", forces, (4, 6))
            matrices: Floats = self._run(_finites.plate_geometric_of_forces, shape, [given], threads=threads)
        else:
            assert u is not None
            matrices = self._run(_finites.plate_geometric, shape, [Given("u", u, (self.order,))], threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces K u that hold the elastic element in the displacements u, (m,) or (n, m)."""
        vectors: Floats = self._run(_finites.plate_forces, (self.order,), [Given("u", u, (self.order,))],
                                    threads=threads)
        return vectors

    def surface_load(self, load: ArrayLike, *, axes: str = "global", threads: int = 1) -> Floats:
        """Nodal forces of a force per area.

        Parameters
        ----------
        load : (3,) or (n, 3)
            Force per area.
        axes : {"global", "element"}
            Axes of the load.

        Returns
        -------
        (m,) or (n, m)

        Examples
        --------
        >>> square = [[0, 0, 0], [2, 0, 0], [2, 2, 0], [0, 2, 0]]
        >>> plate = Plate(square, thickness=0.02, material=Isotropic(E=210e9, nu=0.3))
        >>> float(plate.surface_load([0, 0, -5.0])[2::6].sum())
        -20.0
        """
        given = Given("load", load, (3,))
        pair = [given, None] if _is_global(axes) else [None, given]
        vectors: Floats = self._run(_finites.plate_surface_load, (self.order,), pair, threads=threads)
        return vectors

    def body_load(self, load: ArrayLike, *, threads: int = 1) -> Floats:
        """Nodal forces (m,) or (n, m) of a force per volume, (3,) or (n, 3), global axes."""
        vectors: Floats = self._run(_finites.plate_body_load, (self.order,), [Given("load", load, (3,))],
                                    threads=threads)
        return vectors

    def temperature_load(self, temperature: ArrayLike, *, threads: int = 1) -> Floats:
        """Nodal forces (m,) or (n, m) of temperatures.

        Parameters
        ----------
        temperature : (2,) or (n, 2)
            The change at the middle surface, and the difference through the thickness, top minus bottom.
        """
        vectors: Floats = self._run(_finites.plate_temperature_load, (self.order,),
                                    [Given("temperature", temperature, (2,))], threads=threads)
        return vectors

    def point_load(self, point: ArrayLike, force: ArrayLike, *, axes: str = "global", threads: int = 1) -> Floats:
        """Nodal forces (m,) or (n, m) of a force at a point.

        Parameters
        ----------
        point, force : (3,) or (n, 3)
            Global coordinates of the point, and the force.
        axes : {"global", "element"}
            Axes of the force.
        """
        where, given = Given("point", point, (3,)), Given("force", force, (3,))
        pair = [where, given, None] if _is_global(axes) else [where, None, given]
        vectors: Floats = self._run(_finites.plate_point_load, (self.order,), pair, threads=threads)
        return vectors

    def measures(self, *, threads: int = 1) -> PlateMeasures:
        """Area, volume, mass, center and axes."""
        return PlateMeasures(self._run(_finites.plate_measure, (), threads=threads, dtype=_MEASURES))

    def locate(self, point: ArrayLike, *, threads: int = 1) -> Location:
        """Where points (3,) or (n, 3) lie: on the element, above it, how far away."""
        return Location(self._run(_finites.plate_locate, (), [Given("point", point, (3,))], threads=threads,
                                  dtype=_LOCATION))

    def results(self, u: ArrayLike, temperature: ArrayLike | None = None, *, threads: int = 1) -> PlateResults:
        """Elastic strains, stresses and section forces of displacements.

        Parameters
        ----------
        u : (m,) or (n, m)
            Displacements.
        temperature : (2,) or (n, 2), optional
            Change and difference, as for the load.

        Examples
        --------
        A strip in pure bending with the curvature 0.001 about y: Mx = E h^3 / 12 * 0.001 where nu is 0.

        >>> import numpy as np
        >>> square = np.array([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]], dtype=float)
        >>> plate = Plate(square, thickness=0.1, material=Isotropic(E=1.2e9, nu=0.0))
        >>> u = np.zeros((4, 6))
        >>> u[:, 2], u[:, 4] = -0.0005 * square[:, 0] ** 2, 0.001 * square[:, 0]
        >>> plate.results(u.ravel()).moments[:, 0].round(6)
        array([100., 100., 100., 100.])
        """
        warm = None if temperature is None else Given("temperature", temperature, (2,))
        records = self._run(_finites.plate_result, (), [Given("u", u, (self.order,)), warm], threads=threads,
                            dtype=_RESULTS)
        return PlateResults(records, self._node_count())


def _is_global(axes: str) -> bool:
    return code_of("axes", axes, {"global": 0, "element": 1}) == 0


__all__ = ["Plate"]
