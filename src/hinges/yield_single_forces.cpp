// yield_single_forces.cpp: a hinge that yields in one force alone, at its capacity in either sign.
//
//     segment 1   PHI = F / C,   gradient 1 / C        the positive side
//     segment 2   PHI = -F / C,  gradient -1 / C       the negative side
#include "finites/fields.h"
#include "finites/finites.h"
#include "hinges/yield_forces.h"

namespace {

constexpr std::int32_t POSITIVE_SIDE = 1;
constexpr std::int32_t NEGATIVE_SIDE = 2;

// F / C for the force of the set; 0 for a set of more than one force, which this curve does not have.
double single_force(std::int32_t FS, double CP, double CMY, double CMZ, double P, double MY, double MZ) {
  switch (FS) {
    case ONLY_P: return P / CP;
    case ONLY_MY: return MY / CMY;
    case ONLY_MZ: return MZ / CMZ;
    default: return 0.0;
  }
}

// The gradient of a side for a capacity C; zero for a number that is no side.
double slope(std::int32_t side, double C) {
  if (side == POSITIVE_SIDE) return 1.0 / C;
  return side == NEGATIVE_SIDE ? -1.0 / C : 0.0;
}

}  // namespace

void SINGLE_FORCES_SEGMENT_EQUATION(const double* CP, const double* CMY, const double* CMZ, const int32_t* FS,
                                    const double* P, const double* MY, const double* MZ, int32_t* NEQ, int32_t* SEG) {
  *NEQ = 0;
  for (int i = 0; i < SEGMENTS; ++i) SEG[i] = 0;
  if (!has_capacity(*CP, *CMY, *CMZ) || *FS < ONLY_P || *FS > ONLY_MZ) return;
  SEG[0] = single_force(*FS, *CP, *CMY, *CMZ, *P, *MY, *MZ) < 0.0 ? NEGATIVE_SIDE : POSITIVE_SIDE;
  *NEQ = 1;
}

// The last side of the list is taken; a number that is no side is ignored.
void PHI_SINGLE_FORCES(const int32_t* SEG, const double* CP, const double* CMY, const double* CMZ, const int32_t* FS,
                       const double* P, const double* MY, const double* MZ, double* PHI) {
  *PHI = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  const double x = single_force(*FS, *CP, *CMY, *CMZ, *P, *MY, *MZ);
  for (int i = 0; i < SEGMENTS; ++i) {
    if (SEG[i] == POSITIVE_SIDE) *PHI = x;
    if (SEG[i] == NEGATIVE_SIDE) *PHI = -x;
  }
}

void SINGLE_FORCES_CURVE_GRADIENT(const int32_t* S, const int32_t* FS, const double* CP, const double* CMY,
                                  const double* CMZ, const double* /*P*/, const double* /*MY*/, const double* /*MZ*/,
                                  double* DP, double* DMY, double* DMZ) {
  *DP = *DMY = *DMZ = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  if (*FS == ONLY_P) *DP = slope(*S, *CP);
  if (*FS == ONLY_MY) *DMY = slope(*S, *CMY);
  if (*FS == ONLY_MZ) *DMZ = slope(*S, *CMZ);
}
