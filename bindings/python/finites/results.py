"""Results by name: views of the records that the library writes. The first axis of a batch is its elements."""
from __future__ import annotations

from typing import Any, overload

from ._arrays import Floats, Records


class Column:
    """A named quantity of a record, as an array."""

    def __init__(self, doc: str, name: str | None = None, component: int | None = None) -> None:
        self.__doc__ = doc
        self._name = name or ""
        self._component = component

    def __set_name__(self, owner: type, name: str) -> None:
        self._name = self._name or name

    @overload
    def __get__(self, instance: None, owner: type) -> Column: ...

    @overload
    def __get__(self, instance: Result, owner: type) -> Floats: ...

    def __get__(self, instance: Result | None, owner: type) -> Column | Floats:
        if instance is None:
            return self
        values: Floats = instance.records[self._name]
        return values if self._component is None else values[..., self._component]


class Result:
    """Named arrays over an array of records."""

    def __init__(self, records: Records) -> None:
        self.records = records

    def __repr__(self) -> str:
        names = [name for name in dir(type(self)) if isinstance(getattr(type(self), name), (Column, property))]
        return f"{type(self).__name__}{self.records.shape}: {', '.join(names)}"


class Surface(Result):
    """Strains and stresses at one of the three surfaces of a plate, in element axes."""

    strain = Column("Strains x, y, xy (..., 3); the shear strain is the full angle.")
    stress = Column("Stresses x, y, xy (..., 3).")
    angle = Column("Angle from axis x to the first principal stress, radians.")
    s1 = Column("First principal stress.")
    s2 = Column("Second principal stress.")
    max_shear = Column("Largest shear stress.")
    von_mises = Column("Equivalent stress of von Mises.")
    plastic_strain = Column("Plastic strains x, y, xy (..., 3).")


class PlatePoints(Result):
    """Results of plates at their integration points, or at their nodes: (points,) or (n, points)."""

    xyz = Column("Places in element axes (..., 3): from node 1 of a triangle, from the mean of the nodes of a "
                 "quadrilateral.")
    forces = Column("Membrane forces per length Nx, Ny, Nxy (..., 3).", "force")
    moments = Column("Moments per length Mx, My, Mxy (..., 3); positive gives tension at the top face.", "moment")
    shear_strain = Column("Transverse shear strains xz, yz (..., 2).")
    shear_forces = Column("Transverse shear forces per length Qx, Qy (..., 2).", "shear_force")
    shear_stress = Column("Mean transverse shear stresses xz, yz (..., 2).")
    plastic_shear_strain = Column("Plastic transverse shear strains xz, yz (..., 2).")

    @property
    def top(self) -> Surface:
        """The face z = +h/2."""
        return Surface(self.records["top"])

    @property
    def middle(self) -> Surface:
        """The middle surface."""
        return Surface(self.records["middle"])

    @property
    def bottom(self) -> Surface:
        """The face z = -h/2."""
        return Surface(self.records["bottom"])


class PlateResults(PlatePoints):
    """Results of plates at their integration points, four of an element; `at_nodes` has those of the nodes."""

    def __init__(self, results: Records, nodes: int) -> None:
        super().__init__(results["point"])
        self._at_nodes = results["node"][..., :nodes]

    @property
    def at_nodes(self) -> PlatePoints:
        """The same, extrapolated to the nodes."""
        return PlatePoints(self._at_nodes)


class PlateMeasures(Result):
    """Sizes of plates."""

    area = Column("Area.")
    volume = Column("Volume: area times thickness.")
    mass = Column("Mass: density times volume times the mass factor.")
    center = Column("Mean of the corners (..., 3).")
    axes = Column("Element axes: axes[..., a, :] is the axis x, y or z in global components (..., 3, 3).")


class Location(Result):
    """Where a point lies."""

    distance = Column("Distance from the plane of the element, positive on the side of its normal.")

    @property
    def inside(self) -> Any:
        """True on the element, and up to 0.001 length units beyond a side."""
        return self.records["inside"] == 1

    @property
    def above(self) -> Any:
        """True above the plane by more than 0.05 of the longest side."""
        return self.records["above"] == 1


class MemberMeasures(Result):
    """Sizes of beams and trusses."""

    length = Column("Length.")
    volume = Column("Volume: area times length.")
    mass = Column("Mass.")
    center = Column("Middle of the member (..., 3).")
    axes = Column("Local axes: axes[..., a, :] is the axis x, y or z in global components (..., 3, 3).")


class BeamSections(Result):
    """Section forces and displacements at places along beams, in local axes: (places,) or (n, places).

    They are what the part beyond the place exerts on the part before it; N is positive in tension.
    """

    x = Column("Distance from the first end.")
    forces = Column("N, Vy, Vz (..., 3).", "force")
    moments = Column("T, My, Mz (..., 3).", "moment")
    displacement = Column("Displacements u, v, w of the axis (..., 3).")
    rotation = Column("Rotations about x, y, z (..., 3).")
    N = Column("Axial force.", "force", 0)
    Vy = Column("Shear force along y.", "force", 1)
    Vz = Column("Shear force along z.", "force", 2)
    T = Column("Torque.", "moment", 0)
    My = Column("Bending moment about y.", "moment", 1)
    Mz = Column("Bending moment about z.", "moment", 2)


class Hinges(Result):
    """The hinges at both ends of beams: (2,) or (n, 2)."""

    forces = Column("P, My, Mz of the end (..., 3).", "force")
    value = Column("Value of the yield function: 1 on the surface.")
    plastic = Column("Plastic deformation since the start: axial, about y, about z (..., 3).")

    @property
    def yields(self) -> Any:
        """True on the yield surface with plastic flow in the step that was committed last."""
        return self.records["yields"] == 1


class SolidMeasures(Result):
    """Sizes of solids."""

    volume = Column("Volume.")
    mass = Column("Mass.")
    center = Column("Mean of the nodes (..., 3).")
    axes = Column("Element axes, in which stresses are (..., 3, 3).")


class SolidPoints(Result):
    """Results of solids at their integration points, or at their nodes: (points,) or (n, points)."""

    xyz = Column("Places, global (..., 3).")
    strain = Column("Strains xx, yy, zz, xy, xz, yz in element axes (..., 6); shear strains are full angles.")
    stress = Column("Stresses in the same order (..., 6).")
    principal = Column("Principal stresses s1 >= s2 >= s3 (..., 3).")
    von_mises = Column("Equivalent stress of von Mises.")


class SolidResults(SolidPoints):
    """Results of solids at their integration points; `at_nodes` has those of the nodes."""

    def __init__(self, results: Records, points: int, nodes: int) -> None:
        super().__init__(results["point"][..., :points])
        self._at_nodes = results["node"][..., :nodes]

    @property
    def at_nodes(self) -> SolidPoints:
        """The same, computed at the nodes."""
        return SolidPoints(self._at_nodes)


class YieldEquations(Result):
    """The active equations of a yield surface: up to four of each force."""

    value = Column("Value of each equation (..., 4); those from `count` on are 0.")
    gradient = Column("Gradient of each equation by P, My, Mz (..., 4, 3).")

    @property
    def count(self) -> Any:
        """How many equations are active."""
        return self.records["count"]

    @property
    def segment(self) -> Any:
        """Segment number of each equation (..., 4); 0 for a smooth curve."""
        return self.records["segment"]


__all__ = ["Surface", "PlatePoints", "PlateResults", "PlateMeasures", "Location", "MemberMeasures", "BeamSections",
           "Hinges", "SolidMeasures", "SolidPoints", "SolidResults", "YieldEquations"]
