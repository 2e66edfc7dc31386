// stresses.h: mid-surface stresses s and moments M of a result record, less the part of the free thermal strains.
//
//     isotropic   s = DM (e - (tm, tm, 0)) / h,    M = DB k - tb (DB11 + DB12) / h (1, 1, 0)
//     general     s = D_MEMBRANE_TOTAL (e - (THERMAL_M1, THERMAL_M2, 0)) / h,
//                 M = D_BENDING k - (first two of D_BENDING (THERMAL_B1, THERMAL_B2, 0)) / h
//
// Tension is positive; a positive moment Mx pulls the top face (z = +h/2) in x.
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

// tb is the difference of the free strain through the thickness: the free curvature is tb / h. The thermal moment is
// the same in both directions, since DB11 = DB22.
inline VECTOR<3> moments_of(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO, const VECTOR<3>& k, double tb) {
  const double c = tb * (ISO.DB11 + ISO.DB12) / EL.THICKNESS;
  VECTOR<3> M = resultants(bending_terms(ISO), k);
  M(1) -= c;
  M(2) -= c;
  return M;
}

// General section, with the thermal strains of PLATEELEM. D_MEMBRANE_TOTAL and not D_MEMBRANE_NORMAL: on a
// quadrilateral the latter lacks the in-plane shear.
inline VECTOR<3> general_stresses_of(const PLATEELEM_RECORD& EL, const VECTOR<3>& e) {
  const VECTOR<3> elastic{{e(1) - EL.THERMAL_M1, e(2) - EL.THERMAL_M2, e(3)}};
  VECTOR<3> s = product(EL.D_MEMBRANE_TOTAL, elastic);
  for (int i = 1; i <= 3; ++i) s(i) /= EL.THICKNESS;
  return s;
}

// The twisting moment has no thermal term, even where the material axes are turned: part of the results
// (docs/decisions.md).
inline VECTOR<3> general_moments_of(const PLATEELEM_RECORD& EL, const VECTOR<3>& k) {
  const VECTOR<3> thermal = product(EL.D_BENDING, VECTOR<3>{{EL.THERMAL_B1, EL.THERMAL_B2, 0.0}});
  VECTOR<3> M = product(EL.D_BENDING, k);
  M(1) -= thermal(1) / EL.THICKNESS;
  M(2) -= thermal(2) / EL.THICKNESS;
  return M;
}

#endif
