// reference_triangle.cpp: see the header. Bending: Batoz, Bathe and Ho (1980), from the definition; transverse
// displacement: Bazeley, Cheung, Irons and Zienkiewicz (1965).
#include "reference_triangle.h"

#include <cmath>

namespace reference {

real twice_area(const flat_triangle& X) {
  return (X(0, 1) - X(0, 0)) * (X(1, 2) - X(1, 0)) - (X(0, 2) - X(0, 0)) * (X(1, 1) - X(1, 0));
}

// L_i falls from 1 at node i to 0 on the opposite side: its gradient is that side turned by a quarter, over twice the
// area.
matrix gradients(const flat_triangle& X) {
  matrix G(2, 3);
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3, k = (i + 2) % 3;
    G(0, i) = (X(1, j) - X(1, k)) / twice_area(X);
    G(1, i) = (X(0, k) - X(0, j)) / twice_area(X);
  }
  return G;
}

matrix membrane_B(const flat_triangle& X) {
  const matrix G = gradients(X);
  matrix B = matrix::Zero(3, 6);
  for (int n = 0; n < 3; ++n) {
    B(0, 2 * n) = B(2, 2 * n + 1) = G(0, n);
    B(1, 2 * n + 1) = B(2, 2 * n) = G(1, n);
  }
  return B;
}

namespace {

using dense::vector2;

// What one unit degree of freedom gives the corners.
struct corner_values {
  real w[3] = {0.0L, 0.0L, 0.0L};
  vector2 slope[3] = {vector2::Zero(), vector2::Zero(), vector2::Zero()};  // dw/dx, dw/dy
};

corner_values unit_freedom(int freedom) {
  corner_values at;
  const int node = freedom / 3;
  if (freedom % 3 == 0) at.w[node] = 1.0L;
  if (freedom % 3 == 1) at.slope[node](1) = 1.0L;
  if (freedom % 3 == 2) at.slope[node](0) = -1.0L;
  return at;
}

// The slope in the middle of the side from i to j: along it that of the cubic w, across it the mean of the corners.
vector2 middle_slope(const flat_triangle& X, const corner_values& at, int i, int j) {
  const vector2 side = X.col(j) - X.col(i);
  const real length = side.norm();
  const vector2 s = side / length;
  const vector2 n(-s(1), s(0));
  const real along = 1.5L * (at.w[j] - at.w[i]) / length - 0.25L * (at.slope[i] + at.slope[j]).dot(s);
  const real across = 0.5L * (at.slope[i] + at.slope[j]).dot(n);
  return along * s + across * n;
}

}  // namespace

// Rotations beta = -(dw/dx, dw/dy) at the corners and in the middle of the sides, quadratic between; curvatures are
// their derivatives.
matrix bending_B(const flat_triangle& X, real xi, real eta) {
  const matrix G = gradients(X);
  const real L[3] = {1.0L - xi - eta, xi, eta};
  matrix B = matrix::Zero(3, 9);
  for (int freedom = 0; freedom < 9; ++freedom) {
    const corner_values at = unit_freedom(freedom);
    for (int i = 0; i < 3; ++i) {
      const int j = (i + 1) % 3;
      const vector2 corner = -at.slope[i], middle = -middle_slope(X, at, i, j);
      const vector2 d_corner = (4.0L * L[i] - 1.0L) * G.col(i);
      const vector2 d_middle = 4.0L * (L[i] * G.col(j) + L[j] * G.col(i));
      B(0, freedom) += d_corner(0) * corner(0) + d_middle(0) * middle(0);
      B(1, freedom) += d_corner(1) * corner(1) + d_middle(1) * middle(1);
      B(2, freedom) += d_corner(1) * corner(0) + d_corner(0) * corner(1);
      B(2, freedom) += d_middle(1) * middle(0) + d_middle(0) * middle(1);
    }
  }
  return B;
}

// N of w_i: L_i + L_i^2 (L_j + L_k) - L_i (L_j^2 + L_k^2); a slope at node i: the sum over the two sides m that leave
// it of its component along the side times L_i^2 L_m + L_1 L_2 L_3 / 2.
column w_functions(const flat_triangle& X, real xi, real eta) {
  const real L[3] = {1.0L - xi - eta, xi, eta};
  const real bubble = L[0] * L[1] * L[2];
  column N = column::Zero(9);
  for (int i = 0; i < 3; ++i) {
    const int others[2] = {(i + 1) % 3, (i + 2) % 3};
    N(3 * i) = L[i];
    for (const int m : others) {
      const real along = L[i] * L[i] * L[m] + bubble / 2.0L;
      N(3 * i) += L[i] * L[i] * L[m] - L[i] * L[m] * L[m];
      N(3 * i + 1) += (X(1, m) - X(1, i)) * along;
      N(3 * i + 2) -= (X(0, m) - X(0, i)) * along;
    }
  }
  return N;
}

matrix membrane_stiffness(const flat_triangle& X, const matrix3& D) {
  const matrix B = membrane_B(X);
  return B.transpose() * D * B * (twice_area(X) / 2.0L);
}

matrix bending_stiffness(const flat_triangle& X, const matrix3& D) {
  matrix K = matrix::Zero(9, 9);
  for (const station& p : FOUR_POINTS) {
    const matrix B = bending_B(X, p.xi, p.eta);
    K += B.transpose() * D * B * (p.weight * twice_area(X));
  }
  return K;
}

matrix drill_stiffness(const flat_triangle& X, real drill) {
  matrix K = matrix::Constant(3, 3, -0.5L);
  K.diagonal().setConstant(1.0L);
  return K * drill * twice_area(X);
}

matrix placed(const matrix& membrane, const matrix& bending, const matrix& drill) {
  matrix K = matrix::Zero(18, 18);
  for (int j = 0; j < 6; ++j) {
    for (int i = 0; i < 6; ++i) K(MEMBRANE[i] - 1, MEMBRANE[j] - 1) = membrane(i, j);
  }
  for (int j = 0; j < 9; ++j) {
    for (int i = 0; i < 9; ++i) K(BENDING[i] - 1, BENDING[j] - 1) = bending(i, j);
  }
  for (int j = 0; j < 3; ++j) {
    for (int i = 0; i < 3; ++i) K(DRILL[i] - 1, DRILL[j] - 1) = drill(i, j);
  }
  return K;
}

matrix stiffness(const flat_triangle& X, const section& s) {
  return placed(membrane_stiffness(X, s.membrane), bending_stiffness(X, s.bending), drill_stiffness(X, s.drill));
}

// In the plane the linear functions: their products integrate to a twelfth of the area, a sixth for equal ones.
matrix mass(const flat_triangle& X, real mass_per_area) {
  const real unit = mass_per_area * twice_area(X) / 24.0L;
  matrix membrane = matrix::Zero(6, 6);
  for (int b = 0; b < 3; ++b) {
    for (int a = 0; a < 3; ++a) {
      membrane(2 * a, 2 * b) = membrane(2 * a + 1, 2 * b + 1) = a == b ? 2.0L * unit : unit;
    }
  }
  matrix bending = matrix::Zero(9, 9);
  for (const station& p : FOUR_POINTS) {
    const column N = w_functions(X, p.xi, p.eta);
    bending += N * N.transpose() * (p.weight * twice_area(X) * mass_per_area);
  }
  return placed(membrane, bending, matrix::Zero(3, 3));
}

matrix geometric(const flat_triangle& X, const vector3& N) {
  dense::matrix2 S;
  S << N(0), N(2), N(2), N(1);
  const matrix G = gradients(X);
  const matrix k = G.transpose() * S * G * (twice_area(X) / 2.0L);
  matrix K = matrix::Zero(18, 18);
  for (int b = 0; b < 3; ++b) {
    for (int a = 0; a < 3; ++a) {
      for (int t = 0; t < 3; ++t) K(6 * a + t, 6 * b + t) = k(a, b);
    }
  }
  return K;
}

matrix3 axes_of(const std::vector<support::point>& nodes) {
  vector3 X[3];
  for (int n = 0; n < 3; ++n) {
    const support::point& p = nodes.at(static_cast<std::size_t>(n));
    X[n] = vector3(p[0], p[1], p[2]);
  }
  matrix3 axes;
  axes.row(0) = (X[1] - X[0]).normalized().transpose();
  axes.row(2) = (X[1] - X[0]).cross(X[2] - X[0]).normalized().transpose();
  axes.row(1) = axes.row(2).cross(axes.row(0));
  return axes;
}

matrix3 turned_axes(const matrix3& axes, real angle) {
  matrix3 R;
  R << std::cos(angle), std::sin(angle), 0.0L, -std::sin(angle), std::cos(angle), 0.0L, 0.0L, 0.0L, 1.0L;
  return R * axes;
}

flat_triangle seen_from(const matrix3& axes, const std::vector<support::point>& nodes) {
  flat_triangle X;
  for (int n = 0; n < 3; ++n) {
    const support::point& p = nodes.at(static_cast<std::size_t>(n));
    const support::point& origin = nodes.front();
    X.col(n) = (axes * vector3(real(p[0]) - origin[0], real(p[1]) - origin[1], real(p[2]) - origin[2])).head(2);
  }
  return X;
}

matrix eighteen(const matrix3& axes) {
  matrix R = matrix::Zero(18, 18);
  for (int g = 0; g < 6; ++g) R.block(3 * g, 3 * g, 3, 3) = axes;
  return R;
}

}  // namespace reference
