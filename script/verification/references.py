"""Reference values that are computed here, by closed forms and by Ritz methods that share nothing with the elements."""

from functools import lru_cache
import math

import numpy as np

import curved_shells
from shell_ritz import Ritz

SHEAR_FACTOR = 5.0 / 6.0


def flexural(young, poisson, thickness):
    return young * thickness**3 / (12 * (1 - poisson**2))


def shear_rigidity(young, poisson, thickness):
    return SHEAR_FACTOR * young / (2 * (1 + poisson)) * thickness


def simple_square_thin():
    """Deflection and moment in the middle of a simply supported square plate under unit pressure, by q a^4 / D and q
    a^2: the double series of Navier."""
    w = m = 0.0
    for i in range(1, 400, 2):
        for j in range(1, 400, 2):
            sign = (-1) ** ((i + j) // 2 - 1)
            w += sign * 16 / (math.pi**6 * i * j * (i * i + j * j) ** 2)
            m += sign * 16 * (i * i + 0.3 * j * j) / (math.pi**4 * i * j * (i * i + j * j) ** 2)
    return w, m


def simple_square_force():
    """Deflection under a unit force in the middle, by P a^2 / D."""
    return sum(4 / (math.pi**4 * (i * i + j * j) ** 2) for i in range(1, 1200, 2) for j in range(1, 1200, 2))


def simple_square_thick(poisson, ratio):
    """Hard simple supports: the plate of Mindlin bends as Kirchhoff's and shears by M / (kappa G h), the moment sum
    being that of a loaded membrane, 0.073677 q a^2."""
    membrane = 0.0
    for i in range(1, 400, 2):
        for j in range(1, 400, 2):
            membrane += (-1) ** ((i + j) // 2 - 1) * 16 / (math.pi**4 * i * j * (i * i + j * j))
    return simple_square_thin()[0] + membrane * ratio**2 / (6 * (1 - poisson) * SHEAR_FACTOR)


def clamped_square_ritz(poisson, ratio, order=9):
    """Deflection in the middle of a clamped square plate of Mindlin, side 2 and D = 1, by q a^4 / D: energy over
    products of Legendre polynomials times (1 - x^2)(1 - y^2), w even, the rotations odd in their own direction."""
    x, weight = np.polynomial.legendre.leggauss(4 * order + 8)
    bubble, d_bubble = 1 - x**2, -2 * x

    def basis(parity):
        values, slopes = [], []
        for k in range(order):
            p = np.polynomial.legendre.Legendre.basis(2 * k + parity)
            values.append(bubble * p(x))
            slopes.append(d_bubble * p(x) + bubble * p.deriv()(x))
        return np.array(values), np.array(slopes)

    (even, d_even), (odd, d_odd) = basis(0), basis(1)
    area = np.sqrt(np.outer(weight, weight)).ravel()

    def field(fx, fy):
        return np.einsum("ip,jq->ijpq", fx, fy).reshape(order * order, -1) * area

    w, wx, wy = field(even, even), field(d_even, even), field(even, d_even)
    bx, bxx, bxy = field(odd, even), field(d_odd, even), field(odd, d_even)
    by, byx, byy = field(even, odd), field(d_even, odd), field(even, d_odd)
    nothing = np.zeros_like(w)
    curvature_x = np.vstack([nothing, bxx, nothing])
    curvature_y = np.vstack([nothing, nothing, byy])
    twist = np.vstack([nothing, bxy, byx])
    shear_x, shear_y = np.vstack([wx, -bx, nothing]), np.vstack([wy, nothing, -by])
    stiffness = curvature_x @ curvature_x.T + curvature_y @ curvature_y.T + (1 - poisson) / 2 * twist @ twist.T
    stiffness += poisson * (curvature_x @ curvature_y.T + curvature_y @ curvature_x.T)
    shear = SHEAR_FACTOR * 6 * (1 - poisson) / (2 * ratio) ** 2  # kappa G h / D for h = 2 ratio
    stiffness += shear * (shear_x @ shear_x.T + shear_y @ shear_y.T)
    load = np.concatenate([(w * area).sum(axis=1), np.zeros(2 * order * order)])
    answer = np.linalg.solve(stiffness, load)[: order * order]
    middle = np.array([bubble_at_zero(k) for k in range(order)])
    return float(answer @ np.outer(middle, middle).ravel()) / 16


def bubble_at_zero(k):
    return np.polynomial.legendre.Legendre.basis(2 * k)(0.0)


def circular(poisson, ratio, support, thick):
    """Deflection in the middle by q R^4 / D, moments in the middle and at the rim by q R^2 (Timoshenko and
    Woinowsky-Krieger, 1959)."""
    shear = 1 / (4 * SHEAR_FACTOR * 6 * (1 - poisson)) * ratio**2 if thick else 0.0
    if support == "clamped":
        return 1 / 64 + shear, (1 + poisson) / 16, -1 / 8
    return (5 + poisson) / (1 + poisson) / 64 + shear, (3 + poisson) / 16, 0.0


def moment_share(points):
    """What a rule of Lobatto sees of a plastic moment: the sum of its w |xi|, 1 when it is exact."""
    legendre = np.polynomial.legendre.Legendre.basis(points - 1)
    station = np.concatenate([[-1.0], legendre.deriv().roots(), [1.0]])
    weight = 2.0 / (points * (points - 1) * legendre(station) ** 2)
    return float(np.sum(weight * np.abs(station)))


KIRCHHOFF = 1e4  # times the shear stiffness: as good as no transverse shear


def shear_of(form):
    return KIRCHHOFF if form[1] == "THIN" else 1.0


@lru_cache(maxsize=None)
def curved_beam_in_plane():
    """Deflection along the radius of the end of a quarter of a ring under a unit force there: the stress function of
    Golovin (1881), of which Timoshenko and Goodier (1951) give pi D / E. Plane stress, radii 4.12 and 4.32, thickness
    0.1. Winkler's curved bar with axial force and shear gives 0.08856, the Ritz method 0.0885; 0.08734 is published
    (MacNeal and Harder, 1985)."""
    a, b, thickness, young = 4.12, 4.32, 0.1, 1.0e7
    return math.pi * (a * a + b * b) / (young * thickness * abs(a * a - b * b + (a * a + b * b) * math.log(b / a)))


@lru_cache(maxsize=None)
def curved_beam_out_of_plane(form):
    """The same ring under a unit force along its normal: Castigliano with bending, torsion and shear, M = P R sin, T =
    P R (1 - cos). Of the torsion constant b t^3 / 3 a plate of Mindlin loses tanh(k) / k, k = sqrt(12 kappa) b / 2 t,
    at its edges, Kirchhoff's none. Saint-Venant's constant gives 0.5004; the Ritz method, whose clamp holds the
    warping of the end, 0.498; 0.5022 is published (MacNeal and Harder, 1985)."""
    radius, width, thickness, young = 4.22, 0.2, 0.1, 1.0e7
    shear_modulus = young / 2.5
    k = math.sqrt(12 * SHEAR_FACTOR) * width / (2 * thickness)
    torsion = width * thickness**3 / 3 * (1 if form[1] == "THIN" else 1 - math.tanh(k) / k)
    bending = width * thickness**3 / 12
    shear = 0 if form[1] == "THIN" else radius * math.pi / 2 / (SHEAR_FACTOR * shear_modulus * width * thickness)
    return radius**3 * (math.pi / 4 / (young * bending) + (3 * math.pi / 4 - 2) / (shear_modulus * torsion)) + shear


@lru_cache(maxsize=None)
def _raasch_hook(shear):
    """Deflection of the end of the hook by the Ritz method on the exact surface. Castigliano with torsion that warps
    freely at the clamp gives 45.9 with Mindlin's torsion constant and 43.0 with Kirchhoff's, 5 per cent more, in the
    same proportion."""
    (first, opening), (second, rest) = curved_shells.HOOK_ARCS
    bend, end = first * opening, first * opening + second * rest
    along = [0.0, bend, *np.linspace(bend, end, 4)[1:]]
    ritz = Ritz(lambda s, z: (*curved_shells.hook_curve(s), z), along, [0.0, 1.2, 18.8, 20.0], 6, 2.0, 3300.0, 0.35,
                shear)
    ritz.hold(ritz.edge("a0"), 0, 1, 2, 3, 4)
    ritz.load_last_edge(2, 8.7)
    tip = ritz.edge("a1")
    return float(ritz.solve()[tip[len(tip) // 2], 2])


def raasch_hook(form):
    return _raasch_hook(shear_of(form))


@lru_cache(maxsize=None)
def _clamped_hypar(shear):
    """Deflection in the middle by the Ritz method on the exact surface. 0.0246 is published for the shallow theory."""
    cuts = [-50.0, 0.0, 50.0]
    ritz = Ritz(lambda x, y: (x, y, curved_shells.hypar_height(x, y)), cuts, cuts, 8, 0.8, 28500.0, 0.4, shear)
    for side in ("a0", "a1", "b0", "b1"):
        ritz.hold(ritz.edge(side), 0, 1, 2, 3, 4)
    ritz.load_area(2, -0.01)
    answer = ritz.solve()
    return float(answer[len(answer) // 2, 2])


def clamped_hypar(form):
    return _clamped_hypar(shear_of(form))


@lru_cache(maxsize=None)
def cook():
    """Deflection in the middle of the right edge of Cook's membrane: the membrane part of the Ritz method, graded
    towards the held edge, whose stresses are infinite at its upper corner. 23.96 is published."""
    ritz = Ritz(lambda a, b: (48 * a, 44 * a + (44 - 28 * a) * b, 0.0), [0, 0.02, 0.2, 1], [0, 0.05, 0.5, 0.95, 1], 7,
                1.0, 1.0,
                1 / 3)
    ritz.hold(range(ritz.shape[0] * ritz.shape[1]), 2, 3, 4)
    ritz.hold(ritz.edge("a0"), 0, 1)
    ritz.load_last_edge(1, 1.0)
    tip = ritz.edge("a1")
    return float(ritz.solve()[tip[len(tip) // 2], 1])
