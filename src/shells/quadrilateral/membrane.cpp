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

#include "common/finiteness.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/packed.h"
#include "shells/common/point_pairs.h"
#include "shells/common/slope_integrals.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane_formulas.h"

namespace {

// Of node i: X = (n.X, 0), Y = (0, n.Y), XY = (n.Y, n.X) in the columns of u and v.
template <class REAL>
STRAIN_ROWS<8, REAL> membrane_rows(const SLOPES<4, REAL>& n) {
  STRAIN_ROWS<8, REAL> B;
  for (int i = 1; i <= 4; ++i) {
    const int u = 2 * i - 1;
    const int v = 2 * i;
    B.X(u) = n.X(i);
    B.X(v) = REAL{};
    B.Y(u) = REAL{};
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

namespace {

// K := sum_p  B^T D B area_p, each entry a product with the zeros of B too: NaN and infinities go this way, which
// carries them into all that they touch.
template <class SECTION>
void integrate_full_products(const POINT_PAIRS& p, const SECTION& D, double* K) {
  integrate_packed(p, membrane_rows(quad_slopes_at(p.first)), membrane_rows(quad_slopes_at(p.second)), D, K);
}

}  // namespace

void QUAD_KM_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split, const POINT_PAIRS& points,
                 double* K) {
  if (split != SPLIT_SHEAR) {
    integrate_full_products(points, membrane_terms(ISO), K);
    return;
  }
  const QUAD_CENTRE<double> centre = quad_centre(QUAD);
  quad_split_membrane(centre, ISO, points, K);
  if (all_finite(K, SYM(8, 8))) return;
  integrate_full_products(points, membrane_terms(ISO, split), K);
  add_packed_product(membrane_rows(centre.slopes), {0.0, 0.0, 0.0, ISO.DM33}, centre.area, K);
}

void QUAD_KM_GENERAL(const PLATEELEM_RECORD& EL, int split, const POINT_PAIRS& points, double* K) {
  const SURFACE_POINT s = surface_point(RULE_CENTRE, 1, 4, EL.LOCAL_XYZ_QUAD.data());
  const SLOPES<4> centre = bilinear_slopes(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22);
  const double c = s.weight * s.detj;
  const SLOPE_INTEGRALS<4> S = quad_slope_integrals(points);
  const SLOPE_INTEGRALS<4> S_shear = slope_integrals(centre, split == SPLIT_SHEAR ? c : 0.0);
  const MATRIX<3, 3>& D = EL.D_MEMBRANE_NORMAL;
  const MATRIX<3, 3>& D_shear = EL.D_MEMBRANE_SHEAR;
  const auto block = [&](int i, int j) { return full_block(S, D, i, j) + full_block(S_shear, D_shear, i, j); };
  place_packed_blocks<4>(block, K);
  if (all_finite(K, SYM(8, 8))) return;
  integrate_full_products(points, D, K);
  if (split != SPLIT_SHEAR) return;
  MATRIX<3, 8> B;
  set_rows(membrane_rows(centre), B);
  add_packed_btdb(B, D_shear, c, K);
}

void quad_kdrill(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* Kd) {
  quad_drilling(EL.E1, EL.THICKNESS, local, Kd);
}

void QUAD_KDRILL(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* K, double* Kd) {
  quad_kdrill(EL, local, Kd);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= j; ++i) K[SYM(QUAD_DRILL_DOF[i - 1], QUAD_DRILL_DOF[j - 1]) - 1] = Kd[SYM(i, j) - 1];
  }
}
