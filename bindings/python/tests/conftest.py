"""What the tests share: shapes of elements that are not special, and a steel."""
import numpy as np
import pytest

import finites as fe


@pytest.fixture
def random():
    return np.random.default_rng(20261122)


@pytest.fixture
def steel():
    return fe.Isotropic(E=210e9, nu=0.3, density=7850.0, expansion=1.2e-5)


def rotation(random):
    """A rotation of space."""
    q, r = np.linalg.qr(random.standard_normal((3, 3)))
    q = q * np.sign(np.diag(r))
    return q if np.linalg.det(q) > 0 else q[:, ::-1]


def turned(nodes, random):
    """The same elements turned and moved in space, each in its own way."""
    return np.array([one @ rotation(random).T + random.standard_normal(3) for one in nodes])


def quadrilaterals(random, count):
    """Flat convex quadrilaterals (count, 4, 3)."""
    square = np.array([[0.0, 0, 0], [2, 0, 0], [2, 1.5, 0], [0, 1.5, 0]])
    flat = square + np.concatenate([random.uniform(-0.3, 0.3, (count, 4, 2)), np.zeros((count, 4, 1))], axis=2)
    return turned(flat, random)


def triangles(random, count):
    """Triangles (count, 3, 3)."""
    return quadrilaterals(random, count)[:, :3]


def members(random, count):
    """Members of lengths 1 to 3 (count, 2, 3)."""
    straight = np.zeros((count, 2, 3))
    straight[:, 1, 0] = random.uniform(1, 3, count)
    return turned(straight, random)


SHAPES = {
    4: np.array([[0.0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]]),
    6: np.array([[0.0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [0, 1, 1]]),
    8: np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [0, 0, 1], [1, 0, 1], [1, 1, 1], [0, 1, 1]]),
}


def solids(random, count, nodes):
    """Distorted tetrahedra, wedges or bricks (count, nodes, 3)."""
    return turned(SHAPES[nodes] + random.uniform(-0.1, 0.1, (count, nodes, 3)), random)


def rigid_motions(nodes, per_node):
    """Six small rigid motions of nodes (k, 3) as vectors."""
    motions = []
    for i in range(6):
        u = np.zeros((len(nodes), per_node))
        unit = np.eye(3)[i % 3]
        if i < 3:
            u[:, :3] = unit
        else:
            u[:, :3] = np.cross(unit, nodes - nodes.mean(axis=0))
            u[:, 3:] = unit if per_node == 6 else 0
        motions.append(u.ravel())
    return motions


class Shapes:
    """The builders above for tests, by one fixture."""

    rotation = staticmethod(rotation)
    quadrilaterals = staticmethod(quadrilaterals)
    triangles = staticmethod(triangles)
    members = staticmethod(members)
    solids = staticmethod(solids)
    rigid_motions = staticmethod(rigid_motions)


@pytest.fixture
def shapes():
    return Shapes
