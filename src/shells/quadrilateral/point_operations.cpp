// point_operations.cpp: point location and point load of the four-node elements.
//
// The natural coordinates of the point P = (x, y) in element axes solve, by Newton's method,
//
//     r1 = X(xi, eta) - 4 x = 0,    r2 = Y(xi, eta) - 4 y = 0,    X = sum + a xi + b eta + c xi eta,  Y likewise
//
//     (xi, eta) -= [p q; r s]^-1 (r1, r2),    p = dX/dxi,  q = dX/deta,  r = dY/dxi,  s = dY/deta
//
// and the nodal loads of the force F in element axes are
//
//     f(u_i) = N_i F1,    f(v_i) = N_i F2,    f(w, theta x, theta y of i) = F3 (functions of i at the point)
//
// Mirror: shells/triangle/point_operations.cpp.
#include "shells/quadrilateral/point_operations.h"

#include <algorithm>
#include <cmath>

#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/point_location.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/shape.h"

namespace {

// Newton's method stops when half of each residual, twice the distance in x and in y, is below INVERSION_TOLERANCE in
// the length unit of the model: not relative, so that the last digits of the answer depend on the unit.
constexpr int INVERSION_ITERATIONS = 50;
constexpr double INVERSION_TOLERANCE = 1e-10;

// The point of LOADS in element axes, and the frame for it.
VECTOR<3> set_frame(QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, const double* xyz, MATRIX<3, 4>& local) {
  VECTOR<3> C;
  QUAD_LOCAL_FRAME(xyz, QUAD, local, C(1), C(2), C(3));
  return local_point(LOADS, QUAD.AXES, C);
}

// Four times one coordinate of the bilinear map: sum + a xi + b eta + c xi eta.
struct BILINEAR_MAP {
  double sum, a, b, c;
  double at(double xi, double eta) const { return sum + a * xi + b * eta + c * xi * eta; }
};

BILINEAR_MAP map_of(const MATRIX<3, 4>& local, int component) {
  const double x1 = local(component, 1);
  const double x2 = local(component, 2);
  const double x3 = local(component, 3);
  const double x4 = local(component, 4);
  return {x1 + x2 + x3 + x4, (x2 - x1) + (x3 - x4), (x4 - x1) + (x3 - x2), (x1 - x2) + (x3 - x4)};
}

}  // namespace

void QUAD_POINT_LOCATION(QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, const double* xyz, int& point_flag1,
                         int& point_flag2, double& distance) {
  distance = distance_from_plane(point_of(LOADS), xyz);
  MATRIX<3, 4> local;
  const VECTOR<3> P = set_frame(QUAD, LOADS, xyz, local);
  locate_point(P, local, distance, point_flag1, point_flag2);
}

void QUAD_NATURAL_POINT(double x, double y, const MATRIX<3, 4>& local, double& xi, double& eta) {
  const BILINEAR_MAP X = map_of(local, 1);
  const BILINEAR_MAP Y = map_of(local, 2);
  for (int iteration = 0; iteration < INVERSION_ITERATIONS; ++iteration) {
    const double r1 = X.at(xi, eta) - 4.0 * x;
    const double r2 = Y.at(xi, eta) - 4.0 * y;
    if (std::fabs(r1) / 2.0 < INVERSION_TOLERANCE && std::fabs(r2) / 2.0 < INVERSION_TOLERANCE) return;
    const double p = X.a + eta * X.c;
    const double q = X.b + xi * X.c;
    const double r = Y.a + eta * Y.c;
    const double s = Y.b + xi * Y.c;
    const double det = p * s - r * q;
    xi += -(s / det * r1 - q / det * r2);
    eta += -(-r / det * r1 + p / det * r2);
  }
}

// A membrane keeps f(w) but no moments.
void QUAD_POINT_LOAD(QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, const double* xyz, int membrane_only,
                     double* f) {
  MATRIX<3, 4> local;
  const VECTOR<3> P = set_frame(QUAD, LOADS, xyz, local);
  double xi = 0.0;
  double eta = 0.0;
  QUAD_NATURAL_POINT(P(1), P(2), local, xi, eta);

  const VECTOR<3> F_l = to_local(QUAD.AXES, global_force(LOADS, QUAD.AXES));
  const VECTOR<4> N = bilinear(xi, eta);
  std::fill_n(f, QUAD_DOFS, 0.0);
  for (int n = 1; n <= 4; ++n) {
    f[6 * n - 6] = N(n) * F_l(1);
    f[6 * n - 5] = N(n) * F_l(2);
  }
  QUAD_GEOMETRY(local, WITHOUT_SIDES, QUAD);
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  const VECTOR<4> c = rotation_coefficients(J.G11, J.G12, J.G21, J.G22, J.DET);
  VECTOR<12> w;
  QUAD_W_SHAPE(xi, eta, w);
  QUAD_W_LOAD(w, c, F_l(3), f);
  groups_to_global(QUAD.AXES, QUAD_GROUPS, f);
  if (membrane_only == 1) clear_rotations(4, f);
}
