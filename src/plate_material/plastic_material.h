// plastic_material.h: the plastic modulus of both plastic models of plates, and a root that they share: a
// single-precision value, widened to double, whose digits are part of the results (docs/decisions.md).
#ifndef FINITES_PLASTIC_MATERIAL_H
#define FINITES_PLASTIC_MATERIAL_H

#include "finites/records.h"

constexpr double ROOT_2_3_SINGLE = 0.8164966106414795;  // sqrt(2/3)

// H = Et / (1 - Et / E), the slope of stress over plastic strain for the tangent modulus Et. Et = E divides by zero.
inline double plastic_modulus(const PLATEELEM_RECORD& EL) { return EL.TANGENT_MOD / (1.0 - EL.TANGENT_MOD / EL.E1); }

#endif
