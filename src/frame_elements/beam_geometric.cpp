// beam_geometric.cpp: KSTIFB_GEOM, the geometric stiffness of a beam under its axial force P (tension positive): from
// cubic shape functions (Przemieniecki, 1968), or in closed form for semi-rigid ends.
//
//     cubic, per unit force   6/(5 L) on the translations, 1/10 between translation and rotation, 2 L/15 on a rotation,
//                             -L/30 between the rotations
//
//     semi-rigid              with the fixity factors a, b of the first and second end and E I of the plane: (A1, A2)
//                             in x-z, (B1, B2) in x-y
//       D  = 540 (E I)^2 a b + 24 (a - b) L^2 E I + (a + b - a b - 1) L^4
//       g1 = ((a + b - a b - 1) L^3 + 27 (a - b) E I L + 648 a b (E I)^2 / L) / D   translations
//       g2 = (3 a (b - 1) E I L^2 - 54 a b (E I)^2) / D                             translation and first rotation
//       g3 = (3 a (1 - b) E I L^3 + 72 a b L (E I)^2) / D                           first rotation
//       g4 = (3 b (1 - a) E I L^2 - 54 a b (E I)^2) / D                             translation and second rotation
//       g5 = -18 a b L (E I)^2 / D                                                  both rotations
//       g6 = 3 b E I L (L^2 (a - 1) + 24 a E I) / D                                 second rotation
//
// with the signs of set_semi_rigid. For a = b = 1 the second form gives the first. D adds powers of E I and L of
// different units, so that the second form depends on the units: that of rigid ends for a large E I / L^2, g3 below 0
// for a small one. Swapping the ends does not swap its terms. Both are part of the results (docs/decisions.md).
#include "frame_elements/beam_geometric.h"

#include "common/finiteness.h"
#include "common/member_order.h"
#include "finites/finites.h"
#include "frame_elements/member_axes.h"
#include "frame_elements/release.h"

namespace {

// E I at or below it is replaced by it: without bending stiffness a member with rigid ends would have D = 0 and the
// entries 0/0. Its square is still a normal number.
constexpr double LEAST_STIFFNESS = 1e-37;

void set_no_axial_or_torsion(PLANE_MATRIX& KG) {
  KG(1, 1) = KG(7, 1) = KG(7, 7) = 0.0;
  KG(4, 4) = KG(10, 4) = KG(10, 10) = 0.0;
}

// 2 L / 15 is formed in two ways, which round differently: part of the results (docs/decisions.md).
void set_plain(double L, PLANE_MATRIX& KG) {
  // clang-format off
  KG(2, 2) = KG(3, 3) = KG(8, 8) = KG(9, 9) = 6.0 / (5.0 * L);
  KG(8, 2) = KG(9, 3) = -6.0 / (5.0 * L);
  KG(6, 2) = KG(12, 2) = 0.1;    KG(8, 6) = KG(12, 8) = -0.1;
  KG(5, 3) = KG(11, 3) = -0.1;   KG(9, 5) = KG(11, 9) = 0.1;
  KG(5, 5) = KG(6, 6) = 2.0 * L / 15.0;
  KG(11, 11) = KG(12, 12) = L * 0.13333333333333333;
  KG(11, 5) = KG(12, 6) = -L / 30.0;
  // clang-format on
}

// The six coefficients of both planes: in the first lane x-y, in the second x-z.
struct SEMI_RIGID {
  LANES g1, g2, g3, g4, g5, g6;
};

// With the fixity factors a and b of the ends.
SEMI_RIGID semi_rigid_planes(LANES EI, double L, LANES a, LANES b) {
  const double L2 = L * L;
  const double L3 = L2 * L;
  const double L4 = L2 * L2;
  // a + b - a b - 1 and a + b - 1 - a b: the same number in exact arithmetic, rounded differently. Both are part of the
  // results (docs/decisions.md).
  const LANES D = 540.0 * EI * EI * a * b + (24.0 * a - 24.0 * b) * L2 * EI + (a + b - a * b - 1.0) * L4;
  SEMI_RIGID g;
  g.g1 = ((a + b - 1.0 - a * b) * L3 + (27.0 * a - 27.0 * b) * EI * L + (648.0 * a * b / L) * EI * EI) / D;
  g.g2 = ((3.0 * a * b - 3.0 * a) * EI * L2 - 54.0 * EI * EI * a * b) / D;
  g.g3 = ((3.0 * a - 3.0 * a * b) * EI * L3 + 72.0 * a * L * EI * EI * b) / D;
  g.g4 = ((3.0 * b - 3.0 * a * b) * EI * L2 - 54.0 * EI * EI * a * b) / D;
  g.g5 = -18.0 * a * L * EI * EI * b / D;
  g.g6 = 3.0 * EI * L * b * (L2 * a - L2 + 24.0 * a * EI) / D;
  return g;
}

double least_stiffness(double EI) { return EI <= LEAST_STIFFNESS ? LEAST_STIFFNESS : EI; }

void set_semi_rigid(const SEMI_RIGID& g, PLANE_MATRIX& KG) {
  constexpr int z = 0, y = 1;  // lanes
  // clang-format off
  KG(2, 2) = KG(8, 8) = g.g1[z];   KG(8, 2) = -g.g1[z];
  KG(6, 2) = -g.g2[z];             KG(8, 6) = g.g2[z];
  KG(12, 2) = -g.g4[z];            KG(12, 8) = g.g4[z];
  KG(6, 6) = g.g3[z];              KG(12, 12) = g.g6[z];   KG(12, 6) = g.g5[z];

  KG(3, 3) = KG(9, 9) = g.g1[y];   KG(9, 3) = -g.g1[y];
  KG(5, 3) = g.g2[y];              KG(9, 5) = -g.g2[y];
  KG(11, 3) = g.g4[y];             KG(11, 9) = -g.g4[y];
  KG(5, 5) = g.g3[y];              KG(11, 11) = g.g6[y];   KG(11, 5) = g.g5[y];
  // clang-format on
}

// Per unit force, before any release.
PLANE_MATRIX unit_matrix(const GEOMETRIC_DATA& d) {
  PLANE_MATRIX KG;
  set_no_axial_or_torsion(KG);
  if (d.semi_y == 1 || d.semi_z == 1) {
    const LANES EI{least_stiffness(d.stiffness_z), least_stiffness(d.stiffness_y)};
    set_semi_rigid(semi_rigid_planes(EI, d.L, LANES{d.b1, d.a1}, LANES{d.b2, d.a2}), KG);
  } else {
    set_plain(d.L, KG);
  }
  return KG;
}

// Released degrees of freedom in their order: pins, which the formulas of the semi-rigid form include already, then
// forces. 0 is none.
struct RELEASED {
  std::int32_t freedom[6];
};

RELEASED released_by(const GEOMETRIC_DATA& d) {
  const bool pins = d.semi_y == 0 && d.semi_z == 0;
  return {{pins && d.a1 == 0.0 ? 5 : 0, pins && d.b1 == 0.0 ? 6 : 0, pins && d.a2 == 0.0 ? 11 : 0,
           pins && d.b2 == 0.0 ? 12 : 0, released_freedom(d.release_y, 2), released_freedom(d.release_z, 3)}};
}

}  // namespace

bool geometric_planes(const GEOMETRIC_DATA& data, PLANE_MATRIX& G) {
  G = unit_matrix(data);
  for (const std::int32_t d : released_by(data).freedom) release_stiffness(d, G);
  for (double& g : G.V) g *= data.P;
  return all_finite(G);
}

void KSTIFB_GEOM(const double* P, const double* L, const double* E1, const double* E2, const double* I1,
                 const double* I2, const int32_t* SEMIY, const int32_t* SEMIZ, const int32_t* RELY, const int32_t* RELZ,
                 const double* A1, const double* B1, const double* A2, const double* B2, double* KG) {
  const GEOMETRIC_DATA data{*P, *L, *E1 * *I1, *E2 * *I2, *SEMIY, *SEMIZ, *RELY, *RELZ, *A1, *B1, *A2, *B2};
  write_planes(*P == 0.0 ? PLANE_MATRIX{} : unit_matrix(data), KG);
  if (*P == 0.0) return;
  constexpr std::int32_t n = MEMBER_DOFS;
  for (const std::int32_t d : released_by(data).freedom) {
    if (d > 0) RELEASE_DOF(&d, KG, &n);
  }
  for (int i = 0; i < MEMBER_DOFS * MEMBER_DOFS; ++i) KG[i] *= *P;
}
