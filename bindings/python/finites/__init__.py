"""Elements of structures as plain calls: plates, beams, trusses, cables, links, springs and solids over numpy.

>>> import finites as fe
>>> steel = fe.Isotropic(E=210e9, nu=0.3, density=7850)
>>> nodes = [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]]
>>> plate = fe.Plate(nodes, thickness=0.02, material=steel, theory="thick")
>>> plate.stiffness().shape
(24, 24)

Nodes of shape (n, 4, 3) make a batch: every answer has a leading axis of n then, and ``threads=`` cuts it. Units are
the caller's, consistent; angles are in radians; vectors go node by node in global axes.
"""
from __future__ import annotations

from ._elements import lanes, version
from .assembly import assemble, freedoms
from .beams import Beam, BeamLoad
from .errors import ArgumentError, ElementError, FinitesError, Status
from .materials import Isotropic, Orthotropic
from .members import Cable, CableForces, CableShape, Link, Spring, Truss
from .plates import Plate
from .solids import Solid
from .yielding import BeamState, PlateState, Response, YieldSurface

__version__ = version()

__all__ = [
    "ArgumentError", "Beam", "BeamLoad", "BeamState", "Cable", "CableForces", "CableShape", "ElementError",
    "FinitesError", "Isotropic", "Link", "Orthotropic", "Plate", "PlateState", "Response", "Solid", "Spring", "Status",
    "Truss", "YieldSurface", "assemble", "freedoms", "lanes", "version",
]
