// flat_element.cpp: see the header. Bending: Batoz, Bathe and Ho (1980), Batoz and Ben Tahar (1982), Katili (1993),
// each from its conditions; transverse displacement: Bazeley, Cheung, Irons and Zienkiewicz (1965), Melosh (1963).
#include "flat_element.h"

#include <cmath>

namespace shell_reference {

namespace {

constexpr double G = 0.577350269189626;       // fifteen digits
constexpr double CORNER = 0.260416666666667;  // fifteen digits
constexpr real SIGN_XI[4] = {-1.0L, 1.0L, 1.0L, -1.0L};
constexpr real SIGN_ETA[4] = {-1.0L, -1.0L, 1.0L, 1.0L};

}  // namespace

const std::vector<station>& element_rule(int nodes) {
  static const std::vector<station> triangle = {
      {1.0 / 3.0, 1.0 / 3.0, -0.28125}, {0.2, 0.2, CORNER}, {0.6, 0.2, CORNER}, {0.2, 0.6, CORNER}};
  static const std::vector<station> quadrilateral = {{-G, -G, 1.0}, {G, -G, 1.0}, {G, G, 1.0}, {-G, G, 1.0}};
  return nodes == 3 ? triangle : quadrilateral;
}

const std::vector<station>& node_stations(int nodes) {
  static const std::vector<station> triangle = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}};
  static const std::vector<station> quadrilateral = {
      {-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}};
  return nodes == 3 ? triangle : quadrilateral;
}

station centre(int nodes) { return nodes == 3 ? station{1.0 / 3.0, 1.0 / 3.0, 0.5} : station{0.0, 0.0, 4.0}; }

// ---- the straight-sided map

column functions(int nodes, real xi, real eta) {
  column N(nodes);
  if (nodes == 3) {
    N << 1.0L - xi - eta, xi, eta;
  } else {
    for (int i = 0; i < 4; ++i) N(i) = (1.0L + SIGN_XI[i] * xi) * (1.0L + SIGN_ETA[i] * eta) / 4.0L;
  }
  return N;
}

namespace {

// One in the middle of each side, zero on the other sides: quadratic on its own.
column side_functions(int nodes, real xi, real eta) {
  column P(nodes);
  if (nodes == 3) {
    const column L = functions(3, xi, eta);
    P << 4.0L * L(0) * L(1), 4.0L * L(1) * L(2), 4.0L * L(2) * L(0);
  } else {
    P << (1.0L - xi * xi) * (1.0L - eta) / 2.0L, (1.0L - eta * eta) * (1.0L + xi) / 2.0L,
        (1.0L - xi * xi) * (1.0L + eta) / 2.0L, (1.0L - eta * eta) * (1.0L - xi) / 2.0L;
  }
  return P;
}

// d/dxi and d/deta of a field that is at most quadratic in either.
template <class FIELD>
matrix by_xi(const FIELD& field, real xi, real eta) {
  return field(xi + 0.5L, eta) - field(xi - 0.5L, eta);
}

template <class FIELD>
matrix by_eta(const FIELD& field, real xi, real eta) {
  return field(xi, eta + 0.5L) - field(xi, eta - 0.5L);
}

}  // namespace

matrix2 jacobian(const corners& X, real xi, real eta) {
  const auto at = [&X](real a, real b) -> matrix { return X * functions(count_of(X), a, b); };
  matrix2 J;
  J.row(0) = by_xi(at, xi, eta).transpose();
  J.row(1) = by_eta(at, xi, eta).transpose();
  return J;
}

real determinant(const corners& X, real xi, real eta) { return jacobian(X, xi, eta).determinant(); }

matrix gradients(const corners& X, real xi, real eta) {
  const int n = count_of(X);
  const auto N = [n](real a, real b) -> matrix { return functions(n, a, b).transpose(); };
  matrix natural(2, n);
  natural << by_xi(N, xi, eta), by_eta(N, xi, eta);
  return jacobian(X, xi, eta).inverse() * natural;
}

vector2 position(const corners& X, real xi, real eta) { return X * functions(count_of(X), xi, eta); }

vector2 side(const corners& X, int k) { return X.col((k + 1) % count_of(X)) - X.col(k); }

// ---- strains per degree of freedom

matrix membrane_B(const corners& X, real xi, real eta) {
  const int n = count_of(X);
  const matrix D = gradients(X, xi, eta);
  matrix B = matrix::Zero(3, 2 * n);
  for (int i = 0; i < n; ++i) {
    B(0, 2 * i) = B(2, 2 * i + 1) = D(0, i);
    B(1, 2 * i + 1) = B(2, 2 * i) = D(1, i);
  }
  return B;
}

namespace {

// beta (2, 3n) of node i per degree of freedom.
matrix node_rotation(int n, int i) {
  matrix beta = matrix::Zero(2, 3 * n);
  beta(0, 3 * i + 2) = 1.0L;
  beta(1, 3 * i + 1) = -1.0L;
  return beta;
}

// The deflection of node i per degree of freedom.
matrix node_deflection(int n, int i) {
  matrix w = matrix::Zero(1, 3 * n);
  w(0, 3 * i) = 1.0L;
  return w;
}

matrix curvatures(const corners& X, const matrix& by_natural_xi, const matrix& by_natural_eta, real xi, real eta) {
  const matrix2 inverse = jacobian(X, xi, eta).inverse();
  const matrix by_x = inverse(0, 0) * by_natural_xi + inverse(0, 1) * by_natural_eta;
  const matrix by_y = inverse(1, 0) * by_natural_xi + inverse(1, 1) * by_natural_eta;
  matrix B(3, by_x.cols());
  B << by_x.row(0), by_y.row(1), by_x.row(1) + by_y.row(0);
  return B;
}

}  // namespace

matrix kirchhoff_rotations(const corners& X, real xi, real eta) {
  const int n = count_of(X);
  const column N = functions(n, xi, eta), P = side_functions(n, xi, eta);
  matrix beta = matrix::Zero(2, 3 * n);
  for (int i = 0; i < n; ++i) {
    const int j = (i + 1) % n;
    const vector2 d = side(X, i);
    const real length = d.norm();
    const vector2 t = d / length, normal(-t(1), t(0));
    const matrix mean = (node_rotation(n, i) + node_rotation(n, j)) / 2.0L;
    // Slopes dw/ds are -beta: of the cubic 1.5 (wj - wi) / L - (slope_i + slope_j) / 4.
    const matrix along = -1.5L * (node_deflection(n, j) - node_deflection(n, i)) / length - 0.5L * t.transpose() * mean;
    const matrix across = normal.transpose() * mean;
    const matrix middle = t * along + normal * across;
    beta += N(i) * node_rotation(n, i) + P(i) * (middle - mean);
  }
  return beta;
}

// On each side: the integral of w,s + beta_s is L times its shear -(2/3) phi dB, and beta_s has the parabola of height
// dB over the chord of the corners, whose integral is 2/3 L dB.
matrix side_increments(const corners& X, const column& phi) {
  const int n = count_of(X);
  matrix dB(n, 3 * n);
  for (int i = 0; i < n; ++i) {
    const int j = (i + 1) % n;
    const vector2 d = side(X, i);
    const real length = d.norm();
    const matrix chord = d.transpose() * (node_rotation(n, i) + node_rotation(n, j)) / 2.0L;  // of beta_s, integrated
    const matrix without = node_deflection(n, j) - node_deflection(n, i) + chord;
    dB.row(i) = -without / (2.0L / 3.0L * length * (1.0L + phi(i)));
  }
  return dB;
}

matrix mindlin_rotations(const corners& X, const column& phi, real xi, real eta) {
  const int n = count_of(X);
  const column N = functions(n, xi, eta), P = side_functions(n, xi, eta);
  const matrix dB = side_increments(X, phi);
  matrix beta = matrix::Zero(2, 3 * n);
  for (int i = 0; i < n; ++i) {
    beta += N(i) * node_rotation(n, i) + P(i) * side(X, i).normalized() * dB.row(i);
  }
  return beta;
}

matrix kirchhoff_B(const corners& X, real xi, real eta) {
  const auto beta = [&X](real a, real b) -> matrix { return kirchhoff_rotations(X, a, b); };
  return curvatures(X, by_xi(beta, xi, eta), by_eta(beta, xi, eta), xi, eta);
}

matrix mindlin_B(const corners& X, const column& phi, real xi, real eta) {
  const auto beta = [&](real a, real b) -> matrix { return mindlin_rotations(X, phi, a, b); };
  return curvatures(X, by_xi(beta, xi, eta), by_eta(beta, xi, eta), xi, eta);
}

namespace {

// Linear, with the tangential shear of the two sides that meet at a corner.
matrix triangle_shear(const corners& X, const matrix& tangential, const column& L) {
  matrix B = matrix::Zero(2, 9);
  for (int i = 0; i < 3; ++i) {
    const int before = (i + 2) % 3;
    matrix2 directions;
    directions << side(X, i).normalized().transpose(), side(X, before).normalized().transpose();
    matrix two(2, 9);
    two << tangential.row(i), tangential.row(before);
    B += L(i) * directions.inverse() * two;
  }
  return B;
}

// Covariant: along xi linear in eta between sides 1 and 3, along eta linear in xi between sides 2 and 4. Sides 3 and 4
// run against their coordinate; half a side is one natural unit.
matrix quadrilateral_shear(const corners& X, const matrix& tangential, real xi, real eta) {
  const auto covariant = [&](int k) -> matrix {
    return (k < 2 ? 0.5L : -0.5L) * side(X, k).norm() * tangential.row(k);
  };
  matrix natural(2, 12);
  natural.row(0) = (1.0L - eta) / 2.0L * covariant(0) + (1.0L + eta) / 2.0L * covariant(2);
  natural.row(1) = (1.0L + xi) / 2.0L * covariant(1) + (1.0L - xi) / 2.0L * covariant(3);
  return jacobian(X, xi, eta).inverse() * natural;
}

}  // namespace

matrix shear_B(const corners& X, const column& phi, real xi, real eta) {
  const matrix tangential = -2.0L / 3.0L * phi.asDiagonal() * side_increments(X, phi);
  if (count_of(X) == 3) return triangle_shear(X, tangential, functions(3, xi, eta));
  return quadrilateral_shear(X, tangential, xi, eta);
}

namespace {

// N of w_i: L_i + L_i^2 (L_j + L_k) - L_i (L_j^2 + L_k^2); a slope at node i: the sum over the two sides m that leave
// it of its component along the side times L_i^2 L_m + L_1 L_2 L_3 / 2.
column triangle_w(const corners& X, real xi, real eta) {
  const column L = functions(3, xi, eta);
  const real bubble = L(0) * L(1) * L(2);
  column N = column::Zero(9);
  for (int i = 0; i < 3; ++i) {
    N(3 * i) = L(i);
    for (const int m : {(i + 1) % 3, (i + 2) % 3}) {
      const real along = L(i) * L(i) * L(m) + bubble / 2.0L;
      N(3 * i) += L(i) * L(i) * L(m) - L(i) * L(m) * L(m);
      N(3 * i + 1) += (X(1, m) - X(1, i)) * along;
      N(3 * i + 2) -= (X(0, m) - X(0, i)) * along;
    }
  }
  return N;
}

// The rectangle's cubic functions in the natural coordinates; natural slopes are those that the Jacobian of the point
// itself makes of the slopes at the nodes.
column quadrilateral_w(const corners& X, real xi, real eta) {
  const matrix2 J = jacobian(X, xi, eta);
  column N(12);
  for (int i = 0; i < 4; ++i) {
    const real a = SIGN_XI[i] * xi, b = SIGN_ETA[i] * eta;
    const real value = (1.0L + a) * (1.0L + b) * (2.0L + a + b - a * a - b * b) / 8.0L;
    const real slope_xi = SIGN_XI[i] * (1.0L + a) * (1.0L + a) * (a - 1.0L) * (1.0L + b) / 8.0L;
    const real slope_eta = SIGN_ETA[i] * (1.0L + b) * (1.0L + b) * (b - 1.0L) * (1.0L + a) / 8.0L;
    N(3 * i) = value;
    N(3 * i + 1) = slope_xi * J(0, 1) + slope_eta * J(1, 1);   // theta x = dw/dy
    N(3 * i + 2) = -slope_xi * J(0, 0) - slope_eta * J(1, 0);  // theta y = -dw/dx
  }
  return N;
}

}  // namespace

column w_functions(const corners& X, real xi, real eta) {
  return count_of(X) == 3 ? triangle_w(X, xi, eta) : quadrilateral_w(X, xi, eta);
}

// ---- in space

vector3 wide(const support::point& p) { return {p[0], p[1], p[2]}; }

matrix3 axes_of(const std::vector<support::point>& nodes) {
  const vector3 first = wide(nodes[1]) - wide(nodes[0]), second = wide(nodes.back()) - wide(nodes[0]);
  matrix3 axes;
  axes.row(0) = first.normalized().transpose();
  axes.row(2) = first.cross(second).normalized().transpose();
  axes.row(1) = axes.row(2).cross(axes.row(0));
  return axes;
}

vector3 origin_of(const std::vector<support::point>& nodes) {
  if (nodes.size() == 3) return wide(nodes[0]);
  return (wide(nodes[0]) + wide(nodes[1]) + wide(nodes[2]) + wide(nodes[3])) / 4.0L;
}

corners seen_from(const matrix3& axes, const std::vector<support::point>& nodes) {
  corners X(2, static_cast<int>(nodes.size()));
  for (int n = 0; n < count_of(X); ++n) {
    X.col(n) = (axes * (wide(nodes[static_cast<std::size_t>(n)]) - origin_of(nodes))).head(2);
  }
  return X;
}

matrix groups(const matrix3& axes, int nodes) {
  matrix R = matrix::Zero(6 * nodes, 6 * nodes);
  for (int g = 0; g < 2 * nodes; ++g) R.block(3 * g, 3 * g, 3, 3) = axes;
  return R;
}

column quadratic_deflection(const corners& X, const std::vector<double>& c) {
  const int n = count_of(X);
  column q(3 * n);
  for (int i = 0; i < n; ++i) {
    const real x = X(0, i), y = X(1, i);
    q(3 * i) = c.at(0) + c.at(1) * x + c.at(2) * y + c.at(3) * x * x / 2 + c.at(4) * y * y / 2 + c.at(5) * x * y;
    q(3 * i + 1) = c.at(2) + c.at(4) * y + c.at(5) * x;     // dw/dy
    q(3 * i + 2) = -(c.at(1) + c.at(3) * x + c.at(5) * y);  // -dw/dx
  }
  return q;
}

}  // namespace shell_reference
