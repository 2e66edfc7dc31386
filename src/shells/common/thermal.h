// thermal.h: the membrane forces N and moments M that would prevent free thermal strains. B^T N and B^T M, integrated,
// are the nodal loads of a temperature (triangle/thermal_loads.h, quadrilateral/thermal_loads.h).
//
//     N = DM (e1, e2, 0),      M = DB (b1, b2, 0) / h
//
// e1, e2 are the free strains of the mid surface, b1, b2 their differences through the thickness h, so that b / h is a
// free curvature. Isotropic: e1 = e2 = tm and b1 = b2 = tb.
#ifndef FINITES_THERMAL_H
#define FINITES_THERMAL_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"

// Isotropic section: tm is the free strain of the mid surface, tb its difference through the thickness, so that tb / h
// is the free curvature.
inline VECTOR<3> thermal_forces(const ISOTROPIC_SECTION& ISO, double tm) {
  return {{tm * (ISO.DM11 + ISO.DM12), tm * (ISO.DM12 + ISO.DM22), 0.0}};
}

inline VECTOR<3> thermal_moments(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO, double tb) {
  const double h = EL.THICKNESS;
  return {{tb * (ISO.DB11 + ISO.DB12) / h, tb * (ISO.DB12 + ISO.DB22) / h, 0.0}};
}

// General section, with the thermal strains of PLATEELEM. D_MEMBRANE_TOTAL has the in-plane shear of a quadrilateral
// too, so that a free expansion leaves no force.
inline VECTOR<3> general_thermal_forces(const PLATEELEM_RECORD& EL) {
  return product(EL.D_MEMBRANE_TOTAL, VECTOR<3>{{EL.THERMAL_M1, EL.THERMAL_M2, 0.0}});
}

inline VECTOR<3> general_thermal_moments(const PLATEELEM_RECORD& EL) {
  VECTOR<3> M = product(EL.D_BENDING, VECTOR<3>{{EL.THERMAL_B1, EL.THERMAL_B2, 0.0}});
  for (int i = 1; i <= 3; ++i) M(i) /= EL.THICKNESS;
  return M;
}

#endif
