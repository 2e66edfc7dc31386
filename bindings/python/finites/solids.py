"""Solids: tetrahedra, wedges and bricks."""
from __future__ import annotations

from numpy.typing import ArrayLike

from . import _finites
from ._arrays import Floats, Given
from ._elements import Elements, Field, nodes_of
from .errors import ArgumentError
from .materials import Isotropic, require_material
from .results import SolidMeasures, SolidResults

_MEASURES = _finites.solid_measures_dtype()
_RESULTS = _finites.solid_results_dtype()
_POINTS = {4: 1, 6: 6, 8: 8}


class Solid(Elements):
    """A tetrahedron (4 nodes), wedge (6) or brick (8), or a batch of them: first the nodes of one face, then those above.

    Vectors have ux, uy, uz of each node, global axes; m = 3 times the nodes.

    Parameters
    ----------
    nodes : (4, 3), (6, 3), (8, 3), or with a leading axis n
        Coordinates.
    material : Isotropic
        Its numbers may be arrays (n,).
    stiffness_factor : float or (n,)
        On the stiffness.

    Examples
    --------
    >>> cube = [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]]
    >>> brick = Solid(cube, Isotropic(E=210e9, nu=0.3, density=7850))
    >>> brick.stiffness().shape, float(brick.measures().mass)
    ((24, 24), 7850.0)
    """

    _fresh = staticmethod(_finites.solid_init)
    _hidden = ("unused", "xyz", "nodes")
    __slots__ = ()

    E = Field("Modulus of elasticity.")
    nu = Field("Poisson's ratio.")
    density = Field("Mass per volume.")

    def __init__(self, nodes: ArrayLike, material: Isotropic, *, stiffness_factor: ArrayLike = 1.0) -> None:
        require_material(material, (Isotropic,))
        xyz = nodes_of("nodes", nodes, (4, 6, 8))
        self._build([("xyz", xyz), ("E", Given("material.E", material.E)), ("nu", Given("material.nu", material.nu)),
                     ("density", Given("material.density", material.density)),
                     ("expansion", Given("material.expansion", material.expansion)),
                     ("stiffness_factor", Given("stiffness_factor", stiffness_factor))], {"nodes": xyz.inner[0]})

    @property
    def nodes(self) -> Floats:
        """Coordinates (k, 3), or (n, k, 3) of a batch."""
        every = self._records["xyz"][:, : self._node_count()]
        xyz: Floats = every if self.batch else every[0]
        return xyz

    @property
    def order(self) -> int:
        """m, the degrees of freedom: 12, 18 or 24."""
        return 3 * self._node_count()

    def _shape_text(self) -> str:
        return f"{super()._shape_text()} of {self._node_count()} nodes"

    def stiffness(self, *, threads: int = 1) -> Floats:
        """The stiffness K, (m, m) or (n, m, m)."""
        matrices: Floats = self._run(_finites.solid_stiffness, (self.order, self.order), threads=threads)
        return matrices

    def mass(self, *, threads: int = 1) -> Floats:
        """The consistent mass M, of the shape of the stiffness."""
        matrices: Floats = self._run(_finites.solid_mass, (self.order, self.order), threads=threads)
        return matrices

    def geometric(self, u: ArrayLike | None = None, *, stresses: ArrayLike | None = None, threads: int = 1) -> Floats:
        """The geometric stiffness KG of stresses.

        Parameters
        ----------
        u : (m,) or (n, m)
            Displacements whose stresses count.
        stresses : (p, 6) or (n, p, 6)
            xx, yy, zz, xy, xz, yz in element axes by integration point (p = 8, 6 and 1), instead.
        """
        shape = (self.order, self.order)
        if (u is None) == (stresses is None):
            raise ArgumentError("geometric takes either u or stresses", argument="u, stresses")
        if stresses is not None:
            given = Given("stresses", stresses, (_POINTS[self._node_count()], 6))
            matrices: Floats = self._run(_finites.solid_geometric_of_stresses, shape, [given], threads=threads)
        else:
            assert u is not None
            matrices = self._run(_finites.solid_geometric, shape, [Given("u", u, (self.order,))], threads=threads)
        return matrices

    def forces(self, u: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces K u of displacements u, (m,) or (n, m)."""
        vectors: Floats = self._run(_finites.solid_forces, (self.order,), [Given("u", u, (self.order,))],
                                    threads=threads)
        return vectors

    def body_load(self, load: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces (m,) or (n, m) of a force per volume (3,) or (n, 3), global axes."""
        vectors: Floats = self._run(_finites.solid_body_load, (self.order,), [Given("load", load, (3,))],
                                    threads=threads)
        return vectors

    def temperature_load(self, change: ArrayLike, *, threads: int = 1) -> Floats:
        """The nodal forces (m,) or (n, m) of a change of temperature."""
        vectors: Floats = self._run(_finites.solid_temperature_load, (self.order,), [Given("change", change)],
                                    threads=threads)
        return vectors

    def face_load(self, face: int, traction: ArrayLike = (0.0, 0.0, 0.0), pressure: ArrayLike = 0.0, *,
                  threads: int = 1) -> Floats:
        """The nodal forces (m,) or (n, m) of a load on a face.

        Parameters
        ----------
        face : int
            1 the first, 2 the one above it, 3 on the faces between, from the edge of the first two nodes on; a
            tetrahedron has 1 and, from the edges 12, 23, 31, the faces 2, 3, 4.
        traction : (3,) or (n, 3)
            Force per area, global axes.
        pressure : float or (n,)
            Positive into the solid.
        """
        faces = {4: 4, 6: 5, 8: 6}[self._node_count()]
        if isinstance(face, bool) or not isinstance(face, int) or not 1 <= face <= faces:
            raise ArgumentError(f"face is {face!r}: expected a whole number from 1 to {faces}", argument="face")
        given = [Given("traction", traction, (3,)), Given("pressure", pressure)]
        vectors: Floats = self._run(_finites.solid_face_load, (self.order,), given, (face,), threads=threads)
        return vectors

    def measures(self, *, threads: int = 1) -> SolidMeasures:
        """Volume, mass, center and axes."""
        return SolidMeasures(self._run(_finites.solid_measure, (), threads=threads, dtype=_MEASURES))

    def results(self, u: ArrayLike, temperature: ArrayLike = 0.0, *, threads: int = 1) -> SolidResults:
        """Strains and stresses of displacements u, (m,) or (n, m), and a change of temperature."""
        given = [Given("u", u, (self.order,)), Given("temperature", temperature)]
        records = self._run(_finites.solid_result, (), given, threads=threads, dtype=_RESULTS)
        return SolidResults(records, _POINTS[self._node_count()], self._node_count())


__all__ = ["Solid"]
