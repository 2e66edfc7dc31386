// section_axes.cpp: the plastic strain of a section between global and element axes, as two tensors: values 1 to 6 the
// membrane and transverse shear strains, 7 to 12 the curvatures.
//
//     T_local = AXES T_global AXES^T,    T_global = AXES^T T_local AXES
//
// Shears enter as they are, not halved. The local zz is zero on the way to global axes.
#include "plate_material/section_axes.h"

#include "common/finiteness.h"
#include "finites/records.h"

namespace {

// The symmetric tensor of six values xx, yy, zz, xy, xz, yz.
MATRIX<3, 3> tensor(const double* t) { return {{t[0], t[3], t[4], t[3], t[1], t[5], t[4], t[5], t[2]}}; }

// Entry (i, j) of A B and of A B^T, with the sums of TENSEUR_G2L_DBL and TENSEUR_L2G_DBL.
double entry(const MATRIX<3, 3>& A, const MATRIX<3, 3>& B, int i, int j) {
  return A(i, 1) * B(1, j) + A(i, 2) * B(2, j) + A(i, 3) * B(3, j);
}
double entry_transposed(const MATRIX<3, 3>& A, const MATRIX<3, 3>& B, int i, int j) {
  return A(i, 1) * B(j, 1) + A(i, 2) * B(j, 2) + A(i, 3) * B(j, 3);
}

// (R T) R^T without its zz, which no vector has: the entries below the diagonal are not needed.
struct LOCAL_TENSOR {
  double xx, yy, xy, xz, yz;

  LOCAL_TENSOR(const MATRIX<3, 3>& T, const MATRIX<3, 3>& R) {
    MATRIX<3, 3> RT;
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 2; ++i) RT(i, j) = entry(R, T, i, j);
    }
    xx = entry_transposed(RT, R, 1, 1);
    yy = entry_transposed(RT, R, 2, 2);
    xy = entry_transposed(RT, R, 1, 2);
    xz = entry_transposed(RT, R, 1, 3);
    yz = entry_transposed(RT, R, 2, 3);
  }
};

// values := (R^T T) R.
void set_global_values(const MATRIX<3, 3>& T, const MATRIX<3, 3>& R, double* values) {
  MATRIX<3, 3> RT;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) RT(i, j) = R(1, i) * T(1, j) + R(2, i) * T(2, j) + R(3, i) * T(3, j);
  }
  values[0] = entry(RT, R, 1, 1);
  values[1] = entry(RT, R, 2, 2);
  values[2] = entry(RT, R, 3, 3);
  values[3] = entry(RT, R, 1, 2);
  values[4] = entry(RT, R, 1, 3);
  values[5] = entry(RT, R, 2, 3);
}

// Most points have no plastic strain, and nothing is turned then: zero in any axes that are finite.
template <int N>
bool stays_zero(const PLATEELEM_RECORD& EL, const VECTOR<N>& v) {
  for (const double value : v.V) {
    if (value != 0.0) return false;
  }
  return all_finite(EL.AXES.data(), 9);
}

}  // namespace

template <int WIDTH>
void SECTION_EP_TO_LOCAL(const PLATEELEM_RECORD& EL, const VECTOR<12>& ep, VECTOR<WIDTH>& local) {
  local = VECTOR<WIDTH>{};
  if (stays_zero(EL, ep)) return;
  const LOCAL_TENSOR membrane(tensor(&ep(1)), EL.AXES);
  const LOCAL_TENSOR bending(tensor(&ep(7)), EL.AXES);
  local(1) = membrane.xx;
  local(2) = membrane.yy;
  local(3) = membrane.xy;
  local(4) = bending.xx;
  local(5) = bending.yy;
  local(6) = bending.xy;
  if constexpr (WIDTH == 8) {
    local(7) = membrane.xz;
    local(8) = membrane.yz;
  }
}

template <int WIDTH>
void SECTION_EP_TO_GLOBAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& local, VECTOR<12>& ep) {
  ep = VECTOR<12>{};
  if (stays_zero(EL, local)) return;
  double xz = 0.0;
  double yz = 0.0;
  if constexpr (WIDTH == 8) {
    xz = local(7);
    yz = local(8);
  }
  const double membrane[6] = {local(1), local(2), 0.0, local(3), xz, yz};
  const double bending[6] = {local(4), local(5), 0.0, local(6), 0.0, 0.0};
  set_global_values(tensor(membrane), EL.AXES, &ep(1));
  set_global_values(tensor(bending), EL.AXES, &ep(7));
}

template void SECTION_EP_TO_LOCAL<8>(const PLATEELEM_RECORD& EL, const VECTOR<12>&, VECTOR<8>&);
template void SECTION_EP_TO_GLOBAL<8>(const PLATEELEM_RECORD& EL, const VECTOR<8>&, VECTOR<12>&);
template void SECTION_EP_TO_LOCAL<6>(const PLATEELEM_RECORD& EL, const VECTOR<12>&, VECTOR<6>&);
template void SECTION_EP_TO_GLOBAL<6>(const PLATEELEM_RECORD& EL, const VECTOR<6>&, VECTOR<12>&);
