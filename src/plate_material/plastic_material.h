// plastic_material.h: what both plastic models of plates take from the material, and the root that they share: a
// single-precision value, widened, which is part of the results.
#ifndef FINITES_PLASTIC_MATERIAL_H
#define FINITES_PLASTIC_MATERIAL_H

#include "finites/records.h"

constexpr double ROOT_2_3_SINGLE = 0.8164966106414795;  // sqrt(2/3)

// The plastic modulus. A tangent modulus equal to Young's divides by zero.
inline double plastic_modulus(const PLATEELEM_RECORD& EL) { return EL.TANGENT_MOD / (1.0 - EL.TANGENT_MOD / EL.E1); }

#endif
