// thermal.h: the membrane forces and moments that hold free thermal strains back.
#ifndef FINITES_THERMAL_H
#define FINITES_THERMAL_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"

// Isotropic section: tm is the free strain of the mid surface, tb its difference through the thickness.
inline VECTOR<3> thermal_forces(double tm) { return {{tm * (ISO.DM11 + ISO.DM12), tm * (ISO.DM12 + ISO.DM22), 0.0}}; }

inline VECTOR<3> thermal_moments(double tb) {
  const double h = PLATEELEM.THICKNESS;
  return {{tb * (ISO.DB11 + ISO.DB12) / h, tb * (ISO.DB12 + ISO.DB22) / h, 0.0}};
}

// General section, with the thermal strains of PLATEELEM: the whole membrane matrix, so that a free expansion leaves no
// force; D_BENDING.
inline VECTOR<3> general_thermal_forces() {
  return product(PLATEELEM.D_MEMBRANE_TOTAL, VECTOR<3>{{PLATEELEM.THERMAL_M1, PLATEELEM.THERMAL_M2, 0.0}});
}

inline VECTOR<3> general_thermal_moments() {
  VECTOR<3> M = product(PLATEELEM.D_BENDING, VECTOR<3>{{PLATEELEM.THERMAL_B1, PLATEELEM.THERMAL_B2, 0.0}});
  for (int i = 1; i <= 3; ++i) M(i) /= PLATEELEM.THICKNESS;
  return M;
}

#endif
