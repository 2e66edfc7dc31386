// isotropic_section.h: section constants of isotropic plates, of one element or of one in every lane.
//
// With the modifiers m, ms, mb, mv:
//
//     DM11 = DM22 = m E h / (1 - nu^2),         DM12 = nu DM11,    DM33 = ms E h / (2 (1 + nu))
//     DB11 = DB22 = mb E h^3 / 12 / (1 - nu^2), DB12 = nu DB11,    DB33 = DB11 (1 - nu) / 2
//     DS1  = DS2  = mv SHEAR_FACTOR h E / (2 (1 + nu))
#ifndef FINITES_ISOTROPIC_SECTION_H
#define FINITES_ISOTROPIC_SECTION_H

#include "common/constants.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"

template <class REAL>
struct PLATE_CONSTANTS {
  REAL E, nu, h;
};

// Modifiers of the stiffness.
struct STIFFNESS_MODIFIERS {
  double axial, inplane, bending, shear;
};

inline STIFFNESS_MODIFIERS stiffness_modifiers(const ELEM_LOADS& LOADS) {
  return {LOADS(LOAD_MOD_AXIAL), LOADS(LOAD_MOD_INPLANE), LOADS(LOAD_MOD_BENDING), LOADS(LOAD_MOD_SHEAR)};
}

template <class REAL>
inline ISOTROPIC_SECTION_OF<REAL> isotropic_section(const PLATE_CONSTANTS<REAL>& P, int membrane_only,
                                                    const STIFFNESS_MODIFIERS& modifier) {
  ISOTROPIC_SECTION_OF<REAL> ISO;
  const REAL E = P.E;
  const REAL nu = P.nu;
  const REAL h = P.h;

  const REAL c = h * E / (1.0 - nu * nu);
  ISO.DM11 = modifier.axial * c;
  ISO.DM12 = modifier.axial * c * nu;
  ISO.DM22 = modifier.axial * c;
  ISO.DM33 = modifier.inplane * c * (1.0 - nu) / 2.0;
  if (membrane_only == 1) {
    ISO.DB11 = ISO.DB12 = ISO.DB22 = ISO.DB33 = ISO.DS1 = ISO.DS2 = REAL{};
    return ISO;
  }
  const REAL d = modifier.bending * (h * h * h / 12.0) * E / (1.0 - nu * nu);
  ISO.DB22 = d;
  ISO.DB12 = d * nu;
  ISO.DB33 = d * (1.0 - nu) / 2.0;
  ISO.DB11 = d;
  ISO.DS1 = ISO.DS2 = modifier.shear * SHEAR_FACTOR * h * E / (2.0 * (1.0 + nu));
  return ISO;
}

// phi L^2 of the sides of a thick plate (side_section.h); where the shear modifier is 0, negative or NaN, the ratio of
// the two modifiers is taken as 1.
template <class REAL>
inline REAL isotropic_side_factor(const REAL& nu, const REAL& h, const STIFFNESS_MODIFIERS& modifier) {
  const double r = modifier.shear > 0.0 ? modifier.bending / modifier.shear : 1.0;
  return 2.0 * r * (h * h) / (SHEAR_FACTOR * (1.0 - nu));
}

#endif
