// release.cpp: end releases of a member: static condensation of a stiffness, lumping of a mass.
#include "frame_elements/release.h"

#include "common/member_order.h"
#include "finites/finites.h"
#include "finites/views.hpp"

//     K(r, s) := K(r, s) - c(r) c(s) / c(d),      c = column d of K before the release
//
// Column d is changed last, since the others read it. Row and column d are condensed numerically, not set: they become
// zero up to rounding.
void RELEASE_DOF(const int32_t* IDOF, double* K, const int32_t* N) {
  const std::int64_t n = *N;
  const std::int64_t d = static_cast<std::int64_t>(*IDOF) - 1;
  if (d < 0 || d >= n) return;
  double* const c = K + d * n;
  const double pivot = c[d];
  if (pivot == 0.0) return;
  for (std::int64_t s = 0; s < n; ++s) {
    if (s == d) continue;
    for (std::int64_t r = 0; r < n; ++r) K[s * n + r] -= c[r] * c[s] / pivot;
  }
  for (std::int64_t r = 0; r < n; ++r) c[r] -= c[r] * pivot / pivot;
}

void release_stiffness(std::int32_t d, PLANE_MATRIX& K) {
  if (d < 1) return;
  const double pivot = K(d, d);
  if (pivot == 0.0) return;
  const PLANE_TRIANGLE k = K.triangle_of(d);
  double c[4];
  for (int r = 1; r <= k.order; ++r) c[r - 1] = k(r, k.number);
  for (int s = 1; s <= k.order; ++s) {
    for (int r = 1; r <= s; ++r) k(r, s) -= c[r - 1] * c[s - 1] / pivot;
  }
}

namespace {

// The inertia of a released bending rotation is dropped; that of any other degree of freedom goes to the other end.
bool is_bending_rotation(int d) { return d == 5 || d == 6 || d == 11 || d == 12; }

int partner_of(int d) { return d <= 6 ? d + 6 : d - 6; }

}  // namespace

void RELEASE_DOF_MAS(const int32_t* IDOF, double* M) {
  const int d = *IDOF;
  if (d < 1 || d > MEMBER_DOFS) return;
  const MATRIX_VIEW<MEMBER_DOFS> MASS(M);
  const double released = MASS(d, d);
  if (released == 0.0) return;
  for (int i = 1; i <= MEMBER_DOFS; ++i) MASS(i, d) = MASS(d, i) = 0.0;
  if (is_bending_rotation(d)) return;
  const int partner = partner_of(d);
  MASS(partner, partner) += released;
}

void release_inertia(std::int32_t d, PLANE_MATRIX& M) {
  if (d < 1) return;
  const double released = M(d, d);
  if (released == 0.0) return;
  const PLANE_TRIANGLE m = M.triangle_of(d);
  for (int i = 1; i <= m.order; ++i) m(i, m.number) = 0.0;
  if (is_bending_rotation(d)) return;
  const int partner = partner_of(d);
  M(partner, partner) += released;
}
