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
#include <algorithm>

#include "finites/finites.h"
#include "frame_elements/member_axes.h"

namespace {

constexpr int DOFS = 12;
// E I at or below it is replaced by it: without bending stiffness a member with rigid ends would have D = 0 and the
// entries 0/0. Its square is still a normal number.
constexpr double LEAST_STIFFNESS = 1e-37;

// 2 L / 15 is formed in two ways, which round differently: part of the results (docs/decisions.md).
void set_plain(double L, MATRIX_VIEW<DOFS> KG) {
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

// The six coefficients of a plane with the fixity factors a and b of its ends.
struct SEMI_RIGID {
  double g1, g2, g3, g4, g5, g6;
};

SEMI_RIGID semi_rigid_plane(double stiffness, double L, double a, double b) {
  const double EI = stiffness <= LEAST_STIFFNESS ? LEAST_STIFFNESS : stiffness;
  const double L2 = L * L;
  const double L3 = L2 * L;
  const double L4 = L2 * L2;
  // a + b - a b - 1 and a + b - 1 - a b: the same number in exact arithmetic, rounded differently. Both are part of the
  // results (docs/decisions.md).
  const double D = 540.0 * EI * EI * a * b + (24.0 * a - 24.0 * b) * L2 * EI + (a + b - a * b - 1.0) * L4;
  SEMI_RIGID g;
  g.g1 = ((a + b - 1.0 - a * b) * L3 + (27.0 * a - 27.0 * b) * EI * L + (648.0 * a * b / L) * EI * EI) / D;
  g.g2 = ((3.0 * a * b - 3.0 * a) * EI * L2 - 54.0 * EI * EI * a * b) / D;
  g.g3 = ((3.0 * a - 3.0 * a * b) * EI * L3 + 72.0 * a * L * EI * EI * b) / D;
  g.g4 = ((3.0 * b - 3.0 * a * b) * EI * L2 - 54.0 * EI * EI * a * b) / D;
  g.g5 = -18.0 * a * L * EI * EI * b / D;
  g.g6 = 3.0 * EI * L * b * (L2 * a - L2 + 24.0 * a * EI) / D;
  return g;
}

void set_semi_rigid(const SEMI_RIGID& g, const SEMI_RIGID& h, MATRIX_VIEW<DOFS> KG) {
  // clang-format off
  KG(2, 2) = KG(8, 8) = g.g1;   KG(8, 2) = -g.g1;
  KG(6, 2) = -g.g2;             KG(8, 6) = g.g2;
  KG(12, 2) = -g.g4;            KG(12, 8) = g.g4;
  KG(6, 6) = g.g3;              KG(12, 12) = g.g6;   KG(12, 6) = g.g5;

  KG(3, 3) = KG(9, 9) = h.g1;   KG(9, 3) = -h.g1;
  KG(5, 3) = h.g2;              KG(9, 5) = -h.g2;
  KG(11, 3) = h.g4;             KG(11, 9) = -h.g4;
  KG(5, 5) = h.g3;              KG(11, 11) = h.g6;   KG(11, 5) = h.g5;
  // clang-format on
}

void release(std::int32_t d, double* KG) {
  constexpr std::int32_t n = DOFS;
  if (d > 0) RELEASE_DOF(&d, KG, &n);
}

}  // namespace

void KSTIFB_GEOM(const double* P, const double* L, const double* E1, const double* E2, const double* I1,
                 const double* I2, const int32_t* SEMIY, const int32_t* SEMIZ, const int32_t* RELY, const int32_t* RELZ,
                 const double* A1, const double* B1, const double* A2, const double* B2, double* KG) {
  std::fill_n(KG, DOFS * DOFS, 0.0);
  if (*P == 0.0) return;
  const MATRIX_VIEW<DOFS> KV(KG);
  if (*SEMIY == 1 || *SEMIZ == 1) {
    set_semi_rigid(semi_rigid_plane(*E1 * *I1, *L, *B1, *B2), semi_rigid_plane(*E2 * *I2, *L, *A1, *A2), KV);
  } else {
    set_plain(*L, KV);
  }
  mirror_lower(KV);

  // The formulas of the semi-rigid form include pins.
  if (*SEMIY == 0 && *SEMIZ == 0) {
    if (*A1 == 0.0) release(5, KG);
    if (*B1 == 0.0) release(6, KG);
    if (*A2 == 0.0) release(11, KG);
    if (*B2 == 0.0) release(12, KG);
  }
  release(released_freedom(*RELY, 2), KG);
  release(released_freedom(*RELZ, 3), KG);
  for (int i = 0; i < DOFS * DOFS; ++i) KG[i] *= *P;
}
