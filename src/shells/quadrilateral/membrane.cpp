// membrane.cpp: bilinear membrane with selective integration of the in-plane shear (Doherty, Wilson and Taylor, 1969),
// and the small fictitious stiffness of the in-plane rotations.
//
//     (ex, ey, gxy) = B (u1, v1, ..., u4, v4),    K = sum_p  B^T DM B w DET
//
// With a split shear, DM33 is left out of the sum over the 2 by 2 points and added with the one point at the centre:
// the element then bends in its plane without locking in shear. The shear at the centre is that of the element axes, so
// that K of an element that is no rectangle depends on which node is the first (docs/decisions.md). Membrane forces are
// positive in tension. The drilling stiffness of the rotations about the normal is
//
//     e [1 -1/3 -1/3 -1/3; ...],    e = DRILL_FACTOR E h A
//
// Equal rotations, as in a rigid rotation, have no moment.
//
// Mirror: shells/triangle/membrane.cpp.
#include "shells/quadrilateral/membrane.h"

#include <algorithm>
#include <cmath>

#include "common/constants.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/packed.h"
#include "shells/quadrilateral/geometry.h"

namespace {

// Of node i: X = (n.X, 0), Y = (0, n.Y), XY = (n.Y, n.X) in the columns of u and v.
STRAIN_ROWS<8> membrane_rows(const SLOPES<4>& n) {
  STRAIN_ROWS<8> B;
  for (int i = 1; i <= 4; ++i) {
    const int u = 2 * i - 1;
    const int v = 2 * i;
    B.X(u) = n.X(i);
    B.X(v) = 0.0;
    B.Y(u) = 0.0;
    B.Y(v) = n.Y(i);
    B.XY(u) = n.Y(i);
    B.XY(v) = n.X(i);
  }
  return B;
}

}  // namespace

STRAIN_ROWS<8> quad_membrane_rows(const QUAD_POINT& J, double xi, double eta) {
  return membrane_rows(bilinear_slopes(xi, eta, J.G11, J.G12, J.G21, J.G22));
}

void QUAD_B_MEMBRANE(double xi, double eta, double g11, double g12, double g21, double g22, MATRIX<3, 8>& B) {
  set_rows(membrane_rows(bilinear_slopes(xi, eta, g11, g12, g21, g22)), B);
}

void QUAD_B_MEMBRANE_STORED(const QUAD_POINT& J, double xi, double eta, MATRIX<3, 8>& B) {
  set_rows(quad_membrane_rows(J, xi, eta), B);
}

void QUAD_KM_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split, int count,
                 const SURFACE_STATION* rule, double* K) {
  std::fill_n(K, SYM(8, 8), 0.0);
  const SECTION_TERMS D = membrane_terms(ISO, split);
  for (int point = 0; point < count; ++point) {
    const SURFACE_STATION s = rule[point];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    add_packed_product(quad_membrane_rows(J, s.xi, s.eta), D, s.weight * J.DET, K);
  }
  if (split != SPLIT_SHEAR) return;
  const SURFACE_STATION centre = QUAD_RULE_CENTRE[0];
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, centre.xi, centre.eta);
  add_packed_product(quad_membrane_rows(J, centre.xi, centre.eta), {0.0, 0.0, 0.0, ISO.DM33}, centre.weight * J.DET, K);
}

void QUAD_KM_GENERAL(const PLATEELEM_RECORD& EL, int split, int count, double* K) {
  std::fill_n(K, SYM(8, 8), 0.0);
  MATRIX<3, 8> B;
  for (int point = 1; point <= count; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, EL.LOCAL_XYZ_QUAD.data());
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
    add_packed_btdb(B, EL.D_MEMBRANE_NORMAL, s.weight * s.detj, K);
  }
  if (split != SPLIT_SHEAR) return;
  const SURFACE_POINT s = surface_point(RULE_CENTRE, 1, 4, EL.LOCAL_XYZ_QUAD.data());
  QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  add_packed_btdb(B, EL.D_MEMBRANE_SHEAR, s.weight * s.detj, K);
}

namespace {

// The triangles 1-2-4 and 3-4-2 together, without the sign.
double plan_area(const MATRIX<3, 4>& local) {
  const auto x = [&](int n) { return local(1, n); };
  const auto y = [&](int n) { return local(2, n); };
  return std::fabs(((x(2) - x(1)) * (y(4) - y(1)) - (y(2) - y(1)) * (x(4) - x(1)) + (x(4) - x(3)) * (y(2) - y(3)) -
                    (x(2) - x(3)) * (y(4) - y(3))) /
                   2.0);
}

}  // namespace

void quad_kdrill(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* Kd) {
  const double e = DRILL_FACTOR * EL.E1 * EL.THICKNESS * plan_area(local);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= j; ++i) Kd[SYM(i, j) - 1] = i == j ? e : -e / 3.0;
  }
}

void QUAD_KDRILL(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* K, double* Kd) {
  quad_kdrill(EL, local, Kd);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= j; ++i) K[SYM(QUAD_DRILL_DOF[i - 1], QUAD_DRILL_DOF[j - 1]) - 1] = Kd[SYM(i, j) - 1];
  }
}
