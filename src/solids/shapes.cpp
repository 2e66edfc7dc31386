// shapes.cpp: shape functions of the eight solid elements and their derivatives (Zienkiewicz, 1977).
//
// With c the natural coordinates of node i, x = 1 + c1 xi, y = 1 + c2 eta, z = 1 + c3 zeta:
//
//     BRICK_8    x y z / 8
//     BRICK_20   corner  x y z (c1 xi + c2 eta + c3 zeta - 2) / 8,    mid-side with c1 = 0  (1 - xi^2) y z / 4
//     BRICK_27   q(c1, xi) q(c2, eta) q(c3, zeta),  q the quadratic of the nodes -1, 0, 1
//     WEDGE_6    (L, xi, eta) (1 -+ zeta) / 2,  L = 1 - xi - eta
//     WEDGE_18   q(c3, zeta) times the six quadratics of a triangle,  L = 1 - xi - eta - zeta
//     WEDGE_15   corner  a L (2 L -+ zeta - 2),  mid-side of a triangle  4 a L xi,  of a height  (1 - zeta^2) L,
//                L = 1 - xi - eta - zeta
//     TETRA_4    1 - xi - eta - zeta, xi, eta, zeta
//     TETRA_10   L (2 L - 1) at corners, 4 L_i L_j at mid-sides, of xi, eta, zeta and 1 - xi - eta - zeta
//
// In WEDGE_15, a = (1 - zeta) / 2 on the lower triangle; on the upper one b = (1 + zeta) / 2 with +zeta. Where a
// derivative is not that of its function, shapes.h says so: both are part of the results (docs/decisions.md).
#include "solids/shapes.h"

#include "solids/linear_shapes.h"

namespace {

// One-dimensional quadratics at t of the nodes -1, 0 and 1, and their derivatives. The node is identified by its
// coordinate, which is one of the three exactly: the tolerance only has to be smaller than 1.
constexpr double COORDINATE_TOLERANCE = 1e-06;

double quadratic(double node, double t) {
  if (node + 1.0 <= COORDINATE_TOLERANCE) return -t * (1.0 - t) / 2.0;
  if (node <= COORDINATE_TOLERANCE) return 1.0 - t * t;
  if (node - 1.0 <= COORDINATE_TOLERANCE) return t * (1.0 + t) / 2.0;
  return 0.0;
}

double quadratic_slope(double node, double t) {
  if (node + 1.0 <= COORDINATE_TOLERANCE) return t - 0.5;
  if (node <= COORDINATE_TOLERANCE) return -2.0 * t;
  if (node - 1.0 <= COORDINATE_TOLERANCE) return t + 0.5;
  return 0.0;
}

void set_row(SOLID_DERIVATIVES& DN, int node, double xi, double eta, double zeta) {
  DN(1, node) = xi;
  DN(2, node) = eta;
  DN(3, node) = zeta;
}

// The linear kinds: functions and derivatives of linear_shapes.h, node by node.
void set_functions(double (*function)(int, const NATURAL&), int count, const NATURAL& at, SOLID_FUNCTIONS& N) {
  for (int k = 0; k < count; ++k) N(k + 1) = function(k, at);
}

void set_rows(NATURAL (*slope)(int, const NATURAL&), int count, const NATURAL& at, SOLID_DERIVATIVES& DN) {
  for (int k = 0; k < count; ++k) {
    const NATURAL row = slope(k, at);
    set_row(DN, k + 1, row.xi, row.eta, row.zeta);
  }
}

void brick_27(double xi, double eta, double zeta, SOLID_FUNCTIONS& N) {
  SOLID_STATIONS c;
  SOLID_NODE_COORDS(BRICK_27, 27, c);
  for (int i = 1; i <= 27; ++i) N(i) = quadratic(c(1, i), xi) * quadratic(c(2, i), eta) * quadratic(c(3, i), zeta);
}

void brick_27_derivatives(double xi, double eta, double zeta, SOLID_DERIVATIVES& DN) {
  SOLID_STATIONS c;
  SOLID_NODE_COORDS(BRICK_27, 27, c);
  for (int i = 1; i <= 27; ++i) {
    const double x = quadratic(c(1, i), xi);
    const double y = quadratic(c(2, i), eta);
    const double z = quadratic(c(3, i), zeta);
    set_row(DN, i, quadratic_slope(c(1, i), xi) * y * z, x * quadratic_slope(c(2, i), eta) * z,
            x * y * quadratic_slope(c(3, i), zeta));
  }
}

// A corner has no coordinate 0; a mid-side node has its 0 in the direction of its edge.
void brick_20(double xi, double eta, double zeta, SOLID_FUNCTIONS& N) {
  SOLID_STATIONS c;
  SOLID_NODE_COORDS(BRICK_20, 20, c);
  for (int i = 1; i <= 20; ++i) {
    const double x = 1.0 + xi * c(1, i);
    const double y = 1.0 + eta * c(2, i);
    const double z = 1.0 + zeta * c(3, i);
    if (c(1, i) == 0.0) {
      N(i) = (1.0 - xi * xi) * y * z / 4.0;
    } else if (c(2, i) == 0.0) {
      N(i) = x * (1.0 - eta * eta) * z / 4.0;
    } else if (c(3, i) == 0.0) {
      N(i) = x * y * (1.0 - zeta * zeta) / 4.0;
    } else {
      N(i) = x * y * z * (xi * c(1, i) + eta * c(2, i) + zeta * c(3, i) - 2.0) / 8.0;
    }
  }
}

void brick_20_derivatives(double xi, double eta, double zeta, SOLID_DERIVATIVES& DN) {
  SOLID_STATIONS c;
  SOLID_NODE_COORDS(BRICK_20, 20, c);
  for (int i = 1; i <= 20; ++i) {
    const double a = c(1, i);
    const double b = c(2, i);
    const double d = c(3, i);
    const double x = 1.0 + xi * a;
    const double y = 1.0 + eta * b;
    const double z = 1.0 + zeta * d;
    if (a == 0.0) {
      const double q = 1.0 - xi * xi;
      set_row(DN, i, -2.0 * xi * y * z / 4.0, q * b * z / 4.0, q * y * d / 4.0);
    } else if (b == 0.0) {
      const double q = 1.0 - eta * eta;
      set_row(DN, i, a * q * z / 4.0, -2.0 * eta * x * z / 4.0, x * q * d / 4.0);
    } else if (d == 0.0) {
      const double q = 1.0 - zeta * zeta;
      set_row(DN, i, a * y * q / 4.0, x * b * q / 4.0, -2.0 * zeta * x * y / 4.0);
    } else {
      const double s = xi * a + eta * b + zeta * d;
      set_row(DN, i, a * y * z * (s + xi * a - 1.0) / 8.0, b * x * z * (s + eta * b - 1.0) / 8.0,
              d * x * y * (s + zeta * d - 1.0) / 8.0);
    }
  }
}

// The six quadratics of a triangle with the third area coordinate L, and their derivatives by xi and eta, in which
// dL/dxi = dL/deta = -1.
VECTOR<6> triangle(double xi, double eta, double L) {
  return {{L * (2.0 * L - 1.0), 4.0 * xi * L, xi * (2.0 * xi - 1.0), 4.0 * xi * eta, eta * (2.0 * eta - 1.0),
           4.0 * eta * L}};
}

VECTOR<6> triangle_xi(double xi, double eta, double L) {
  return {{1.0 - 4.0 * L, 4.0 * (L - xi), 4.0 * xi - 1.0, 4.0 * eta, 0.0, -4.0 * eta}};
}

VECTOR<6> triangle_eta(double xi, double eta, double L) {
  return {{1.0 - 4.0 * L, -4.0 * xi, 0.0, 4.0 * xi, 4.0 * eta - 1.0, 4.0 * (L - eta)}};
}

void wedge_18(double xi, double eta, double zeta, SOLID_FUNCTIONS& N) {
  const VECTOR<6> T = triangle(xi, eta, 1.0 - xi - eta - zeta);
  for (int layer = 0; layer < 3; ++layer) {
    const double z = quadratic(layer - 1.0, zeta);
    for (int i = 1; i <= 6; ++i) N(6 * layer + i) = z * T(i);
  }
}

void wedge_18_derivatives(double xi, double eta, double zeta, SOLID_DERIVATIVES& DN) {
  const double L = 1.0 - xi - eta;
  const VECTOR<6> T = triangle(xi, eta, L);
  const VECTOR<6> T_xi = triangle_xi(xi, eta, L);
  const VECTOR<6> T_eta = triangle_eta(xi, eta, L);
  for (int layer = 0; layer < 3; ++layer) {
    const double z = quadratic(layer - 1.0, zeta);
    const double slope = quadratic_slope(layer - 1.0, zeta);
    for (int i = 1; i <= 6; ++i) set_row(DN, 6 * layer + i, z * T_xi(i), z * T_eta(i), slope * T(i));
  }
}

void wedge_15(double xi, double eta, double zeta, SOLID_FUNCTIONS& N) {
  const double L = 1.0 - xi - eta - zeta;
  const double a = (1.0 - zeta) / 2.0;
  const double b = (1.0 + zeta) / 2.0;
  const double middle = 1.0 - zeta * zeta;
  N(1) = a * L * (2.0 * L - zeta - 2.0);
  N(2) = 4.0 * a * L * xi;
  N(3) = a * xi * (2.0 * xi - zeta - 2.0);
  N(4) = 4.0 * a * xi * eta;
  N(5) = a * eta * (2.0 * eta - zeta - 2.0);
  N(6) = 4.0 * a * eta * L;
  N(7) = middle * L;
  N(8) = middle * xi;
  N(9) = middle * eta;
  N(10) = b * L * (2.0 * L + zeta - 2.0);
  N(11) = 4.0 * b * L * xi;
  N(12) = b * xi * (2.0 * xi + zeta - 2.0);
  N(13) = 4.0 * b * xi * eta;
  N(14) = b * eta * (2.0 * eta + zeta - 2.0);
  N(15) = 4.0 * b * eta * L;
}

void wedge_15_derivatives(double xi, double eta, double zeta, SOLID_DERIVATIVES& DN) {
  const double L = 1.0 - xi - eta;
  const double a = (1.0 - zeta) / 2.0;
  const double b = (1.0 + zeta) / 2.0;
  const double middle = 1.0 - zeta * zeta;
  const double below = -a * (4.0 * L - zeta - 2.0);
  const double above = -b * (4.0 * L + zeta - 2.0);
  set_row(DN, 1, below, below, -L * (2.0 * L - 2.0 * zeta - 2.0) / 2.0);  // its last entry is not the function's
  set_row(DN, 2, 4.0 * a * (L - xi), -4.0 * a * xi, -2.0 * L * xi);
  set_row(DN, 3, a * (4.0 * xi - zeta - 2.0), 0.0, -xi * (2.0 * xi - 2.0 * zeta - 1.0) / 2.0);
  set_row(DN, 4, 4.0 * a * eta, 4.0 * a * xi, -2.0 * xi * eta);
  set_row(DN, 5, 0.0, a * (4.0 * eta - zeta - 2.0), -eta * (2.0 * eta - 2.0 * zeta - 1.0) / 2.0);
  set_row(DN, 6, -4.0 * a * eta, 4.0 * a * (L - eta), -2.0 * eta * L);
  set_row(DN, 7, -middle, -middle, -2.0 * zeta * L);
  set_row(DN, 8, middle, 0.0, -2.0 * zeta * xi);
  set_row(DN, 9, 0.0, middle, -2.0 * zeta * eta);
  set_row(DN, 10, above, above, L * (2.0 * L + 2.0 * zeta - 1.0) / 2.0);
  set_row(DN, 11, 4.0 * b * (L - xi), -4.0 * b * xi, 2.0 * L * xi);
  set_row(DN, 12, b * (4.0 * xi + zeta - 2.0), 0.0, xi * (2.0 * xi + 2.0 * zeta - 1.0) / 2.0);
  set_row(DN, 13, 4.0 * b * eta, 4.0 * b * xi, 2.0 * xi * eta);
  set_row(DN, 14, 0.0, b * (4.0 * eta + zeta - 2.0), eta * (2.0 * eta + 2.0 * zeta - 1.0) / 2.0);
  set_row(DN, 15, -4.0 * b * eta, 4.0 * b * (L - eta), 2.0 * eta * L);
}

void tetra_10(double xi, double eta, double zeta, SOLID_FUNCTIONS& N) {
  const double L = 1.0 - xi - eta - zeta;
  const VECTOR<6> T = triangle(xi, eta, L);
  for (int i = 1; i <= 6; ++i) N(i) = T(i);
  N(7) = 4.0 * zeta * L;
  N(8) = 4.0 * xi * zeta;
  N(9) = 4.0 * eta * zeta;
  N(10) = zeta * (2.0 * zeta - 1.0);
}

// M stands for the fourth coordinate, with xi in place of zeta: part of the results (docs/decisions.md).
void tetra_10_derivatives(double xi, double eta, double zeta, SOLID_DERIVATIVES& DN) {
  const double M = 1.0 - xi - eta - xi;
  set_row(DN, 1, 1.0 - 4.0 * M, 1.0 - 4.0 * M, 1.0 - 4.0 * M);
  set_row(DN, 2, 4.0 * M - 4.0 * xi, -4.0 * xi, -4.0 * xi);
  set_row(DN, 3, 4.0 * xi - 1.0, 0.0, 0.0);
  set_row(DN, 4, 4.0 * eta, 4.0 * xi, 0.0);
  set_row(DN, 5, 0.0, 4.0 * eta - 1.0, 0.0);
  set_row(DN, 6, -4.0 * eta, 4.0 * M - 4.0 * eta, -4.0 * eta);
  set_row(DN, 7, -4.0 * zeta, -4.0 * zeta, 4.0 * M - 4.0 * zeta);
  set_row(DN, 8, 4.0 * zeta, 0.0, 4.0 * xi);
  set_row(DN, 9, 0.0, 4.0 * zeta, 4.0 * eta);
  set_row(DN, 10, 0.0, 0.0, 4.0 * zeta - 1.0);
}

}  // namespace

void SOLID_SHAPE(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t /*NN*/, SOLID_FUNCTIONS& N) {
  switch (KIND) {
    case BRICK_8: set_functions(brick_8_function, 8, {XI, ETA, ZETA}, N); break;
    case WEDGE_6: set_functions(wedge_6_function, 6, {XI, ETA, ZETA}, N); break;
    case TETRA_4: set_functions(tetra_4_function, 4, {XI, ETA, ZETA}, N); break;
    case BRICK_27: brick_27(XI, ETA, ZETA, N); break;
    case BRICK_20: brick_20(XI, ETA, ZETA, N); break;
    case WEDGE_18: wedge_18(XI, ETA, ZETA, N); break;
    case WEDGE_15: wedge_15(XI, ETA, ZETA, N); break;
    case TETRA_10: tetra_10(XI, ETA, ZETA, N); break;
    default: break;
  }
}

void SOLID_SHAPE_DERIV(double XI, double ETA, double ZETA, std::int32_t KIND, std::int32_t /*NN*/,
                       SOLID_DERIVATIVES& DN) {
  switch (KIND) {
    case BRICK_8: set_rows(brick_8_slope, 8, {XI, ETA, ZETA}, DN); break;
    case WEDGE_6: set_rows(wedge_6_slope, 6, {XI, ETA, ZETA}, DN); break;
    case TETRA_4: set_rows(tetra_4_slope, 4, {XI, ETA, ZETA}, DN); break;
    case BRICK_27: brick_27_derivatives(XI, ETA, ZETA, DN); break;
    case BRICK_20: brick_20_derivatives(XI, ETA, ZETA, DN); break;
    case WEDGE_18: wedge_18_derivatives(XI, ETA, ZETA, DN); break;
    case WEDGE_15: wedge_15_derivatives(XI, ETA, ZETA, DN); break;
    case TETRA_10: tetra_10_derivatives(XI, ETA, ZETA, DN); break;
    default: break;
  }
}

void SOLID_INTERP_NODAL(std::int32_t KIND, std::int32_t NN, std::int32_t points, const double* XI3, const double* V,
                        double* OUT) {
  const MATRIX_VIEW<3, const double> station(XI3);
  const MATRIX_VIEW<3, const double> value(V);
  const MATRIX_VIEW<3> out(OUT);
  SOLID_FUNCTIONS N{};
  for (std::int32_t p = 1; p <= points; ++p) {
    SOLID_SHAPE(KIND, station(1, p), station(2, p), station(3, p), NN, N);
    for (int i = 1; i <= 3; ++i) {
      out(i, p) = 0.0;
      for (std::int32_t k = 1; k <= NN && k <= SOLID_ROOM; ++k) out(i, p) += N(k) * value(i, k);
    }
  }
}
