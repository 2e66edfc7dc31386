// section_axes.cpp: the plastic strain of a section between global and element axes, as two tensors: values 1 to 6 the
// membrane and transverse shear strains, 7 to 12 the curvatures.
//
//     T_local = AXES T_global AXES^T,    T_global = AXES^T T_local AXES
//
// Shears enter as they are, not halved. The local zz is zero on the way to global axes.
#include "plate_material/section_axes.h"

#include "finites/records.h"
#include "finites/services.h"

namespace {

// The symmetric tensor of six values xx, yy, zz, xy, xz, yz, and back.
MATRIX<3, 3> tensor(const double* t) { return {{t[0], t[3], t[4], t[3], t[1], t[5], t[4], t[5], t[2]}}; }

void set_values(const MATRIX<3, 3>& T, double* t) {
  t[0] = T(1, 1);
  t[1] = T(2, 2);
  t[2] = T(3, 3);
  t[3] = T(1, 2);
  t[4] = T(1, 3);
  t[5] = T(2, 3);
}

}  // namespace

template <int WIDTH>
void SECTION_EP_TO_LOCAL(const PLATEELEM_RECORD& EL, const VECTOR<12>& ep, VECTOR<WIDTH>& local) {
  MATRIX<3, 3> membrane;
  MATRIX<3, 3> bending;
  TENSEUR_G2L_DBL(tensor(&ep(1)).data(), EL.AXES.data(), membrane.data());
  TENSEUR_G2L_DBL(tensor(&ep(7)).data(), EL.AXES.data(), bending.data());
  local(1) = membrane(1, 1);
  local(2) = membrane(2, 2);
  local(3) = membrane(1, 2);
  local(4) = bending(1, 1);
  local(5) = bending(2, 2);
  local(6) = bending(1, 2);
  if constexpr (WIDTH == 8) {
    local(7) = membrane(1, 3);
    local(8) = membrane(2, 3);
  }
}

template <int WIDTH>
void SECTION_EP_TO_GLOBAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& local, VECTOR<12>& ep) {
  double xz = 0.0;
  double yz = 0.0;
  if constexpr (WIDTH == 8) {
    xz = local(7);
    yz = local(8);
  }
  const double membrane[6] = {local(1), local(2), 0.0, local(3), xz, yz};
  const double bending[6] = {local(4), local(5), 0.0, local(6), 0.0, 0.0};
  MATRIX<3, 3> global;
  TENSEUR_L2G_DBL(tensor(membrane).data(), EL.AXES.data(), global.data());
  set_values(global, &ep(1));
  TENSEUR_L2G_DBL(tensor(bending).data(), EL.AXES.data(), global.data());
  set_values(global, &ep(7));
}

template void SECTION_EP_TO_LOCAL<8>(const PLATEELEM_RECORD& EL, const VECTOR<12>&, VECTOR<8>&);
template void SECTION_EP_TO_GLOBAL<8>(const PLATEELEM_RECORD& EL, const VECTOR<8>&, VECTOR<12>&);
template void SECTION_EP_TO_LOCAL<6>(const PLATEELEM_RECORD& EL, const VECTOR<12>&, VECTOR<6>&);
template void SECTION_EP_TO_GLOBAL<6>(const PLATEELEM_RECORD& EL, const VECTOR<6>&, VECTOR<12>&);
