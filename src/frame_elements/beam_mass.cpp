// beam_mass.cpp: KSTIFB_MASS, the mass of a beam: consistent with rotary inertia (Archer, 1963), or lumped.
//
// Consistent, per unit mass, with the rotary ratio r = I / (A L^2) of the plane:
//
//     axial       1/3, 1/6                               torsion   (J / A) (1/3, 1/6)
//     bending     translations            13/35 + 6 r/5,  9/70 - 6 r/5
//                 translation, rotation   L (11/210 + r/10),  L (13/420 - r/10) at the other end
//                 rotations               L^2 (1/105 + 2 r/15),  -L^2 (1/140 + r/30)
//
// Lumped, per unit mass: 1/2 on the translations, L^2 / 78 on the bending rotations of each end: the diagonal of the
// consistent matrix without rotary inertia, scaled by 35/26 so that the translations add up to the mass. No torsion.
#include <cmath>
#include <initializer_list>

#include "common/clear.h"
#include "common/constants.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "frame_elements/beam_inertia.h"
#include "frame_elements/member_axes.h"
#include "frame_elements/plane_pattern.h"
#include "frame_elements/release.h"

namespace {

// Largest rotary ratio that enters, 3/28: there the mass between the translations of the two ends, 9/70 - 6 r/5, is 0;
// a stockier section would make it negative.
constexpr double ROTARY_CAP = 0.10714285714285714;
constexpr double C13_35 = 0.37142857142857144;
constexpr double C9_70 = 0.12857142857142856;
constexpr double C11_210 = 0.05238095238095238;
constexpr double C13_420 = 0.030952380952380953;
constexpr double C1_105 = 0.009523809523809525;
constexpr double C1_140 = 0.007142857142857143;

BEAM_SECTION read_section(const MODEL_DATA_READER& A, std::int64_t I) {
  const std::int64_t S = A.INTEGER(I + MEMBER_SECTION);
  return {A(S + SECTION_AREA) * A(I + FACTOR_AREA), A(S + SECTION_I1) * A(I + FACTOR_I1),
          A(S + SECTION_I2) * A(I + FACTOR_I2), A(S + SECTION_J) * A(I + FACTOR_J) * A(I + FACTOR_TORSION)};
}

double rotary_ratio(double inertia, double area, double L) {
  const double r = inertia / (area * L * L);
  return r > ROTARY_CAP ? ROTARY_CAP : r;
}

void set_consistent(const BEAM_SECTION& s, double L, PLANE_MATRIX& M) {
  const double r1 = rotary_ratio(s.inertia1, s.area, L);
  const double r2 = rotary_ratio(s.inertia2, s.area, L);
  // clang-format off
  M(1, 1) = M(7, 7) = 1.0 / 3.0;                        M(7, 1) = 1.0 / 6.0;
  M(4, 4) = M(10, 10) = s.torsion / (3.0 * s.area);     M(10, 4) = s.torsion / (6.0 * s.area);

  M(2, 2) = M(8, 8) = 6.0 * r1 / 5.0 + C13_35;          M(8, 2) = C9_70 - 6.0 * r1 / 5.0;
  M(6, 2) = L * (r1 / 10.0 + C11_210);                  M(12, 8) = -M(6, 2);
  M(12, 2) = L * (r1 / 10.0 - C13_420);                 M(8, 6) = -M(12, 2);
  M(6, 6) = M(12, 12) = L * L * (2.0 * r1 / 15.0 + C1_105);
  M(12, 6) = L * L * (-C1_140 - r1 / 30.0);

  M(3, 3) = M(9, 9) = 6.0 * r2 / 5.0 + C13_35;          M(9, 3) = C9_70 - 6.0 * r2 / 5.0;
  M(5, 3) = L * (-C11_210 - r2 / 10.0);                 M(11, 9) = -M(5, 3);
  M(11, 3) = L * (C13_420 - r2 / 10.0);                 M(9, 5) = -M(11, 3);
  M(5, 5) = M(11, 11) = L * L * (2.0 * r2 / 15.0 + C1_105);
  M(11, 5) = L * L * (-C1_140 - r2 / 30.0);
  // clang-format on
}

void set_lumped(double L, PLANE_MATRIX& M) {
  clear(M.V, PLANE_MATRIX::ENTRIES);
  for (const int d : {1, 2, 3, 7, 8, 9}) M(d, d) = 0.5;
  for (const int d : {5, 6, 11, 12}) M(d, d) = L * L / 78.0;
}

BEAM_ENDS read_ends(const MODEL_DATA_READER& A, std::int64_t I) {
  return {A(I + FIXITY_Y1),
          A(I + FIXITY_Y2),
          A(I + FIXITY_Z1),
          A(I + FIXITY_Z2),
          A.INTEGER(I + RELEASE_AXIAL),
          A.INTEGER(I + RELEASE_Y),
          A.INTEGER(I + RELEASE_Z),
          A.INTEGER(I + RELEASE_TORSION)};
}

bool lumped_mass() {
  SOLPARAM_RECORD parameters;
  ZelkuSolParamGetRec(&parameters);
  return parameters.LUMPED_MASS != 0;
}

}  // namespace

INERTIA_RELEASES inertia_releases(const BEAM_ENDS& e) {
  const bool pins = !(semi_rigid(e.a1) || semi_rigid(e.a2) || semi_rigid(e.b1) || semi_rigid(e.b2));
  return {{pins && e.a1 == 0.0 ? 5 : 0, pins && e.b1 == 0.0 ? 6 : 0, pins && e.a2 == 0.0 ? 11 : 0,
           pins && e.b2 == 0.0 ? 12 : 0, released_freedom(e.release_x, 1), released_freedom(e.release_y, 2),
           released_freedom(e.release_z, 3), released_freedom(e.release_t, 4)}};
}

void inertia_planes(const BEAM_SECTION& section, double L, bool lumped, PLANE_MATRIX& M) {
  if (lumped) {
    set_lumped(L, M);
  } else {
    set_consistent(section, L, M);
  }
}

void scale_inertia(double mass, const INERTIA_RELEASES& released, PLANE_MATRIX& M) {
  for (double& m : M.V) m *= mass;
  for (const std::int32_t d : released.freedom) release_inertia(d, M);
}

// A mass that is not finite reaches the zeros beside the planes too.
void KSTIFB_MASS(const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* /*NDIM*/, const double* T,
                 const int32_t* NT2, const double* T2, double* M) {
  const MODEL_DATA_READER D(A);
  const std::int64_t I = *IOFF;
  const double L = SOLANAELEM.MEMBER_REC(SOLANAELEM.ELEM_POS(*IELEM)).LENGTH;
  const double mass = D(I + MEMBER_WEIGHT) / GRAVITY;
  PLANE_MATRIX planes;
  inertia_planes(read_section(D, I), L, lumped_mass(), planes);
  const INERTIA_RELEASES released = inertia_releases(read_ends(D, I));
  const PLANE_ROTATION rotation(T);
  if (std::isfinite(mass)) {
    scale_inertia(mass, released, planes);
    turn_planes(rotation, planes, T, *NT2, T2, M);
    return;
  }
  write_planes(planes, M);
  for (int i = 0; i < MEMBER_DOFS * MEMBER_DOFS; ++i) M[i] *= mass;
  for (const std::int32_t d : released.freedom) RELEASE_DOF_MAS(&d, M);
  turn_full(rotation, T, *NT2, T2, M);
}
