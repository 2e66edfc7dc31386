// yield_orbison.cpp: the single continuous yield surface of a compact wide-flange section, after Orbison, McGuire and
// Abel (1982). With p, my and mz normalised,
//
//   PHI = 1.15 p^2 + mz^2 + my^4 + 3.67 p^2 mz^2 + 3 p^6 my^2 + 4.65 mz^4 my^2
//
// and the section yields at PHI = 1. The moments are not interchangeable: mz bends about the strong axis, my about the
// weak one. A force that is not in the set is left out. The gradient, with respect to P, My and Mz:
//
//     dPHI/dP  = (2.3 p + 7.34 p mz^2 + 18 p^5 my^2) / CP
//     dPHI/dMy = (4 my^3 + 6 p^6 my + 9.3 mz^4 my) / CMY
//     dPHI/dMz = (2 mz + 7.34 p^2 mz + 18.6 mz^3 my^2) / CMZ
#include <cmath>

#include "finites/fields.h"
#include "finites/finites.h"
#include "hinges/yield_forces.h"

namespace {

double power2(double x) { return x * x; }
double power3(double x) { return x * x * x; }
double power4(double x) { return power2(power2(x)); }
double power5(double x) { return power4(x) * x; }
double power6(double x) { return power2(power3(x)); }

struct CAPACITIES {
  double CP, CMY, CMZ;
};

// The derivatives of the terms in one force, then of the terms that couple two.
SECTION_FORCES of_p(const CAPACITIES& C, const SECTION_FORCES& f) { return {2.3 * f.P / power2(C.CP), 0.0, 0.0}; }

SECTION_FORCES of_my(const CAPACITIES& C, const SECTION_FORCES& f) {
  return {0.0, 4.0 * power3(f.MY) / power4(C.CMY), 0.0};
}

SECTION_FORCES of_mz(const CAPACITIES& C, const SECTION_FORCES& f) { return {0.0, 0.0, 2.0 * f.MZ / power2(C.CMZ)}; }

SECTION_FORCES of_p_and_mz(const CAPACITIES& C, const SECTION_FORCES& f) {
  const double c = power2(C.CP) * power2(C.CMZ);
  return {7.34 * f.P * power2(f.MZ) / c, 0.0, 7.34 * power2(f.P) * f.MZ / c};
}

SECTION_FORCES of_p_and_my(const CAPACITIES& C, const SECTION_FORCES& f) {
  const double c = power6(C.CP) * power2(C.CMY);
  return {18.0 * power5(f.P) * power2(f.MY) / c, 6.0 * power6(f.P) * f.MY / c, 0.0};
}

SECTION_FORCES of_my_and_mz(const CAPACITIES& C, const SECTION_FORCES& f) {
  const double c = power4(C.CMZ) * power2(C.CMY);
  return {0.0, 9.3 * power4(f.MZ) * f.MY / c, 18.6 * power3(f.MZ) * power2(f.MY) / c};
}

SECTION_FORCES operator+(const SECTION_FORCES& a, const SECTION_FORCES& b) {
  return {a.P + b.P, a.MY + b.MY, a.MZ + b.MZ};
}

// A set of the axial force alone has no gradient on this surface.
SECTION_FORCES gradient(std::int32_t FS, const CAPACITIES& C, const SECTION_FORCES& f) {
  switch (FS) {
    case ONLY_MZ: return of_mz(C, f);
    case ONLY_MY: return of_my(C, f);
    case P_AND_MZ: return of_p(C, f) + of_mz(C, f) + of_p_and_mz(C, f);
    case P_AND_MY: return of_p(C, f) + of_my(C, f) + of_p_and_my(C, f);
    case MY_AND_MZ: return of_my(C, f) + of_mz(C, f) + of_my_and_mz(C, f);
    case ALL_FORCES:
      return of_p(C, f) + of_my(C, f) + of_mz(C, f) + of_p_and_my(C, f) + of_p_and_mz(C, f) + of_my_and_mz(C, f);
    default: return {0.0, 0.0, 0.0};
  }
}

}  // namespace

// The value takes all three forces for an unknown set, and for the set of the axial force alone.
void PHI_ORBISON(const double* CP, const double* CMY, const double* CMZ, const int32_t* FS, const double* P,
                 const double* MY, const double* MZ, double* PHI) {
  *PHI = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  double p = std::fabs(*P) / *CP;
  double my = std::fabs(*MY) / *CMY;
  double mz = std::fabs(*MZ) / *CMZ;
  if (*FS == ONLY_MY || *FS == ONLY_MZ || *FS == MY_AND_MZ) p = 0.0;
  if (*FS == ONLY_MZ || *FS == P_AND_MZ) my = 0.0;
  if (*FS == ONLY_MY || *FS == P_AND_MY) mz = 0.0;
  *PHI = 1.15 * power2(p) + power2(mz) + power4(my) + 3.67 * power2(p) * power2(mz) + 3.0 * power6(p) * power2(my) +
         4.65 * power4(mz) * power2(my);
}

void ORBISON_CURVE_GRADIENT(const int32_t* FS, const double* CP, const double* CMY, const double* CMZ, const double* P,
                            const double* MY, const double* MZ, double* DP, double* DMY, double* DMZ) {
  *DP = *DMY = *DMZ = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  const SECTION_FORCES g = gradient(*FS, {*CP, *CMY, *CMZ}, {*P, *MY, *MZ});
  *DP = g.P;
  *DMY = g.MY;
  *DMZ = g.MZ;
}
