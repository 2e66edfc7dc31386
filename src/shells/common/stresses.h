// stresses.h: mid-surface stresses and moments of a result record, less what thermal strains would need.
#ifndef FINITES_STRESSES_H
#define FINITES_STRESSES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"

// Isotropic section: e less the free strain tm of the mid surface.
inline VECTOR<3> stresses_of(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO, const VECTOR<3>& e, double tm) {
  VECTOR<3> s = resultants(membrane_terms(ISO), VECTOR<3>{{e(1) - tm, e(2) - tm, e(3)}});
  for (int i = 1; i <= 3; ++i) s(i) /= EL.THICKNESS;
  return s;
}

// tb is the difference of the free strain through the thickness. The same thermal moment in both directions; of this
// section DB11 and DB22 are equal.
inline VECTOR<3> moments_of(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO, const VECTOR<3>& k, double tb) {
  const double c = tb * (ISO.DB11 + ISO.DB12) / EL.THICKNESS;
  VECTOR<3> M = resultants(bending_terms(ISO), k);
  M(1) -= c;
  M(2) -= c;
  return M;
}

// General section, with the thermal strains of PLATEELEM and the whole membrane matrix: on a quadrilateral its shear
// part stands apart from D_MEMBRANE_NORMAL.
inline VECTOR<3> general_stresses_of(const PLATEELEM_RECORD& EL, const VECTOR<3>& e) {
  const VECTOR<3> elastic{{e(1) - EL.THERMAL_M1, e(2) - EL.THERMAL_M2, e(3)}};
  VECTOR<3> s = product(EL.D_MEMBRANE_TOTAL, elastic);
  for (int i = 1; i <= 3; ++i) s(i) /= EL.THICKNESS;
  return s;
}

// The twisting moment has no thermal term, whatever the material axes.
inline VECTOR<3> general_moments_of(const PLATEELEM_RECORD& EL, const VECTOR<3>& k) {
  const VECTOR<3> thermal = product(EL.D_BENDING, VECTOR<3>{{EL.THERMAL_B1, EL.THERMAL_B2, 0.0}});
  VECTOR<3> M = product(EL.D_BENDING, k);
  M(1) -= thermal(1) / EL.THICKNESS;
  M(2) -= thermal(2) / EL.THICKNESS;
  return M;
}

#endif
