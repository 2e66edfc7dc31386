"""Deflections of shells by a Ritz method that shares nothing with the elements: Naghdi's theory on the exact surface,
in polynomials of high degree.

A surface x(a, b) is cut into a few rectangles of its parameters. On each the displacement u of the mid surface and the
change d of its normal, d = beta_1 t_1 + beta_2 t_2, are products of Lagrange polynomials at the points of Gauss and
Lobatto; x and the normal n are interpolated likewise. With a_i = x,i the strains are

    membrane  (a_i . u,j + a_j . u,i) / 2
    bending   (a_i . d,j + a_j . d,i + n,i . u,j + n,j . u,i) / 2
    shear      a_i . d + n . u,i

turned to orthonormal axes, with plane stress and the shear factor 5/6. `shear` multiplies the shear stiffness: 1 is
Mindlin's plate, 1e4 is as good as Kirchhoff's. There is no rotation about the normal.
"""

import numpy as np

SHEAR_FACTOR = 5.0 / 6.0


def lobatto_points(degree):
    inner = np.polynomial.legendre.Legendre.basis(degree).deriv().roots()
    return np.concatenate([[-1.0], np.sort(inner.real), [1.0]])


def lagrange(nodes, at):
    """Values and slopes of the Lagrange polynomials of `nodes`, by Legendre polynomials."""
    degree = len(nodes) - 1
    coefficients = np.linalg.inv(np.polynomial.legendre.legvander(nodes, degree))
    slopes = np.array([np.polynomial.legendre.legder(c) for c in coefficients.T])
    legvander = np.polynomial.legendre.legvander
    return legvander(at, degree) @ coefficients, legvander(at, degree - 1) @ slopes.T


def strains(places, tables, t1, t2):
    """Membrane strains, curvatures and shear strains at a point by the unknowns of a rectangle: eight rows."""
    (a1, a2, n1, n2), (N, Na, Nb) = places, tables
    count = len(N)
    normal = np.cross(a1, a2)
    normal /= np.linalg.norm(normal)

    def u(v, slope):  # v . u,i
        return np.concatenate([np.outer(slope, v), np.zeros((count, 2))], axis=1).ravel()

    def d(v, slope):  # v . d,i
        return np.concatenate([np.zeros((count, 3)),
                               np.outer(slope * (t1 @ v), [1, 0]) + np.outer(slope * (t2 @ v), [0, 1])],
                              axis=1).ravel()

    twice_twist = d(a1, Nb) + d(a2, Na) + u(n1, Nb) + u(n2, Na)
    membrane = np.array([[u(a1, Na), (u(a1, Nb) + u(a2, Na)) / 2], [(u(a1, Nb) + u(a2, Na)) / 2, u(a2, Nb)]])
    bending = np.array([[d(a1, Na) + u(n1, Na), twice_twist / 2], [twice_twist / 2, d(a2, Nb) + u(n2, Nb)]])
    shear = np.array([d(a1, N) + u(normal, Na), d(a2, N) + u(normal, Nb)])
    e1 = a1 / np.linalg.norm(a1)
    e2 = np.cross(normal, e1)
    G = np.linalg.inv(np.array([[a1 @ e1, a1 @ e2], [a2 @ e1, a2 @ e2]]))
    rows = []
    for covariant in (membrane, bending):
        S = np.einsum("ia,abk,jb->ijk", G, covariant, G)
        rows += [S[0, 0], S[1, 1], 2 * S[0, 1]]
    return np.array(rows + list(G @ shear))


class Ritz:
    """A shell over the cuts of a and b; x(a, b) gives a point. Nodes are numbered along a, then along b."""

    def __init__(self, surface, cuts_a, cuts_b, degree, thickness, young, poisson, shear=1.0):
        self.p, self.cuts = degree, (cuts_a, cuts_b)
        self.shape = ((len(cuts_a) - 1) * degree + 1, (len(cuts_b) - 1) * degree + 1)
        self.surface, self.points = surface, lobatto_points(degree)
        gauss, self.weight = np.polynomial.legendre.leggauss(degree + 2)
        self.at_gauss, self.at_nodes = lagrange(self.points, gauss), lagrange(self.points, self.points)
        plane = np.array([[1, poisson, 0], [poisson, 1, 0], [0, 0, (1 - poisson) / 2]]) * young / (1 - poisson**2)
        self.D = np.zeros((8, 8))
        self.D[:3, :3], self.D[3:6, 3:6] = thickness * plane, thickness**3 / 12 * plane
        self.D[6:, 6:] = shear * SHEAR_FACTOR * young / (2 * (1 + poisson)) * thickness * np.eye(2)
        size = 5 * self.shape[0] * self.shape[1]
        self.K, self.f, self.free = np.zeros((size, size)), np.zeros(size), np.ones(size, bool)
        for i in range(len(cuts_a) - 1):
            for j in range(len(cuts_b) - 1):
                self._add(i, j)

    def _numbers(self, i, j):
        p = self.p
        rows = np.add.outer(self.shape[1] * np.arange(i * p, i * p + p + 1), np.arange(j * p, j * p + p + 1))
        return rows.ravel()

    def _tables(self, of, i, j):
        """Basis and its two derivatives by the parameters, at the points of a product rule."""
        value, slope = of
        la, lb = (self.cuts[k][m + 1] - self.cuts[k][m] for k, m in ((0, i), (1, j)))

        def product(f, g):
            return np.einsum("pi,qj->pqij", f, g).reshape(len(f) * len(g), -1)

        return product(value, value), product(slope, value) * 2 / la, product(value, slope) * 2 / lb

    def _geometry(self, i, j):
        a, b = (self.cuts[k][m] + (self.points + 1) / 2 * (self.cuts[k][m + 1] - self.cuts[k][m])
                for k, m in ((0, i), (1, j)))
        x = np.array([self.surface(s, t) for s in a for t in b])
        _, da, db = self._tables(self.at_nodes, i, j)
        n = np.cross(da @ x, db @ x)
        n /= np.linalg.norm(n, axis=1)[:, None]
        t1 = da @ x
        t1 /= np.linalg.norm(t1, axis=1)[:, None]
        return x, n, t1, np.cross(n, t1)

    def _size(self, i, j):
        return (self.cuts[0][i + 1] - self.cuts[0][i]) * (self.cuts[1][j + 1] - self.cuts[1][j]) / 4

    def _add(self, i, j):
        x, n, t1, t2 = self._geometry(i, j)
        N, Na, Nb = tables = self._tables(self.at_gauss, i, j)
        places = Na @ x, Nb @ x, Na @ n, Nb @ n
        area = np.linalg.norm(np.cross(places[0], places[1]), axis=1)
        weight = np.outer(self.weight, self.weight).ravel() * area * self._size(i, j)
        K = np.zeros((5 * N.shape[1], 5 * N.shape[1]))
        for q, w in enumerate(weight):
            B = strains([v[q] for v in places], [v[q] for v in tables], t1, t2)
            K += w * B.T @ self.D @ B
        at = (5 * self._numbers(i, j)[:, None] + np.arange(5)).ravel()
        self.K[np.ix_(at, at)] += K

    def edge(self, side):
        """Numbers of the nodes of an edge: "a0", "a1" where a is least or largest, "b0", "b1"."""
        grid = np.arange(self.shape[0] * self.shape[1]).reshape(self.shape)
        return {"a0": grid[0], "a1": grid[-1], "b0": grid[:, 0], "b1": grid[:, -1]}[side]

    def hold(self, nodes, *directions):
        """Directions 0 to 2 are displacements, 3 and 4 turns of the normal towards t_1 (along a) and t_2."""
        for k in directions:
            self.free[5 * np.asarray(nodes) + k] = False

    def load_area(self, direction, per_area):
        for i in range(len(self.cuts[0]) - 1):
            for j in range(len(self.cuts[1]) - 1):
                x = self._geometry(i, j)[0]
                N, Na, Nb = self._tables(self.at_gauss, i, j)
                area = np.linalg.norm(np.cross(Na @ x, Nb @ x), axis=1)
                load = N.T @ (np.outer(self.weight, self.weight).ravel() * area) * self._size(i, j) * per_area
                self.f[5 * self._numbers(i, j) + direction] += load

    def load_last_edge(self, direction, total):
        """A force spread evenly over the parameter b of the edge where a is largest."""
        nodes, p, cuts = self.edge("a1"), self.p, self.cuts[1]
        for j in range(len(cuts) - 1):
            share = self.at_gauss[0].T @ self.weight / 2 * (cuts[j + 1] - cuts[j]) / (cuts[-1] - cuts[0])
            self.f[5 * nodes[j * p: j * p + p + 1] + direction] += total * share

    def solve(self):
        """Displacements by node: columns u_x, u_y, u_z, beta_1, beta_2."""
        answer = np.zeros(len(self.f))
        K = self.K[np.ix_(self.free, self.free)]
        scale = 1 / np.sqrt(np.diag(K))
        answer[self.free] = scale * np.linalg.solve(K * scale[:, None] * scale, scale * self.f[self.free])
        return answer.reshape(-1, 5)
