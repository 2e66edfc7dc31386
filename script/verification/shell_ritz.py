"""Deflections of shells by a Ritz method that shares nothing with the elements: Naghdi's theory on the exact surface, in
polynomials of high degree.

A surface x(a, b) is cut into a few rectangles of its parameters. On each the displacement u of the mid surface and the
change d of its normal, d = beta_1 t_1 + beta_2 t_2, are products of Lagrange polynomials at the points of Gauss and
Lobatto; x and the normal n are interpolated likewise. With a_i = x,i the strains are

    membrane  (a_i . u,j + a_j . u,i) / 2
    bending   (a_i . d,j + a_j . d,i + n,i . u,j + n,j . u,i) / 2
    shear      a_i . d + n . u,i

turned to orthonormal axes, with plane stress and the shear factor 5/6. `shear` multiplies the shear stiffness: 1 is Mindlin's
plate, 1e4 is as good as Kirchhoff's. There is no rotation about the normal.
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
    return np.polynomial.legendre.legvander(at, degree) @ coefficients, np.polynomial.legendre.legvander(at, degree - 1) @ slopes.T


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
        product = lambda f, g: np.einsum("pi,qj->pqij", f, g).reshape(len(f) * len(g), -1)
        return product(value, value), product(slope, value) * 2 / la, product(value, slope) * 2 / lb

    def _geometry(self, i, j):
        a, b = (self.cuts[k][m] + (self.points + 1) / 2 * (self.cuts[k][m + 1] - self.cuts[k][m]) for k, m in ((0, i), (1, j)))
        x = np.array([self.surface(s, t) for s in a for t in b])
        _, da, db = self._tables(self.at_nodes, i, j)
        n = np.cross(da @ x, db @ x)
        n /= np.linalg.norm(n, axis=1)[:, None]
        t1 = da @ x
        t1 /= np.linalg.norm(t1, axis=1)[:, None]
        return x, n, t1, np.cross(n, t1)

    def _add(self, i, j):
        x, n, t1, t2 = self._geometry(i, j)
        N, Na, Nb = self._tables(self.at_gauss, i, j)
        a1, a2, n1, n2, nn = Na @ x, Nb @ x, Na @ n, Nb @ n, np.cross(Na @ x, Nb @ x)
        area = np.linalg.norm(nn, axis=1)
        nn /= area[:, None]
        size = (self.cuts[0][i + 1] - self.cuts[0][i]) * (self.cuts[1][j + 1] - self.cuts[1][j]) / 4
        w = np.outer(self.weight, self.weight).ravel() * area * size
        count = N.shape[1]
        K = np.zeros((5 * count, 5 * count))
        for q in range(len(w)):
            u = lambda v, s: np.concatenate([np.outer(s, v), np.zeros((count, 2))], axis=1)
            d = lambda v, s: np.concatenate([np.zeros((count, 3)), (s * (t1 @ v))[:, None], (s * (t2 @ v))[:, None]], axis=1)
            dot = lambda v, s: u(v, s).ravel()
            turn = lambda v, s: d(v, s).ravel()
            A1, A2 = a1[q], a2[q]
            membrane = [[dot(A1, Na[q]), (dot(A1, Nb[q]) + dot(A2, Na[q])) / 2], None]
            membrane[1] = [membrane[0][1], dot(A2, Nb[q])]
            bend = [[turn(A1, Na[q]) + dot(n1[q], Na[q]),
                     (turn(A1, Nb[q]) + turn(A2, Na[q]) + dot(n1[q], Nb[q]) + dot(n2[q], Na[q])) / 2], None]
            bend[1] = [bend[0][1], turn(A2, Nb[q]) + dot(n2[q], Nb[q])]
            shear = np.array([turn(A1, N[q]) + dot(nn[q], Na[q]), turn(A2, N[q]) + dot(nn[q], Nb[q])])
            e1 = A1 / np.linalg.norm(A1)
            e2 = np.cross(nn[q], e1)
            G = np.linalg.inv(np.array([[A1 @ e1, A1 @ e2], [A2 @ e1, A2 @ e2]]))
            rows = []
            for strain in (membrane, bend):
                S = np.einsum("ia,abk,jb->ijk", G, np.array(strain), G)
                rows += [S[0, 0], S[1, 1], 2 * S[0, 1]]
            B = np.array(rows + list(G @ shear))
            K += w[q] * B.T @ self.D @ B
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
                size = (self.cuts[0][i + 1] - self.cuts[0][i]) * (self.cuts[1][j + 1] - self.cuts[1][j]) / 4
                load = N.T @ (np.outer(self.weight, self.weight).ravel() * area) * size * per_area
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
