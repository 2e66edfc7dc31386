// constitutive.h: section matrices of every plate engine: forces per strain, moments per curvature, shear forces.
//
// Both routines take the section from PLATEELEM. The isotropic one returns the entries that are not zero, four per
// matrix, for the closed forms; the general one fills the matrices of PLATEELEM.
#ifndef FINITES_CONSTITUTIVE_H
#define FINITES_CONSTITUTIVE_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"

// Constants of an isotropic section.
template <class REAL>
struct ISOTROPIC_SECTION_OF {
  REAL DM11, DM12, DM22, DM33;  // membrane
  REAL DB11, DB12, DB22, DB33;  // bending
  REAL DS1, DS2;                // transverse shear, thick kinds
};
using ISOTROPIC_SECTION = ISOTROPIC_SECTION_OF<double>;

// The constants of THICKNESS, E1 and NU1 with the modifiers LOADS(35..38).
//
//   membrane_only  in  1: bending and transverse shear are zero
//   LOADS          in  modifiers
ISOTROPIC_SECTION PLATE_D_ISOTROPIC(const PLATEELEM_RECORD& EL, int membrane_only, const ELEM_LOADS& LOADS);

// The five section matrices of PLATEELEM from its moduli, modifiers and ORTHO_ANGLE, in element axes.
//
//   split_shear    in  1: the in-plane shear entry goes to D_MEMBRANE_SHEAR instead of D_MEMBRANE_NORMAL
//   membrane_only  in  1: bending and transverse shear are zero
//
// Unequal moduli: the coupling terms of bending are in the transposed places of those of the membrane, while both
// matrices take their modifiers by column. Where E1 NU2 differs from E2 NU1, or the modifiers differ, the matrices are
// not symmetric; the packed stiffness keeps their upper triangle.
void PLATE_D_GENERAL(PLATEELEM_RECORD& EL, int split_shear, int membrane_only);

// Thermal strains of the general behaviour, in element axes (ORTHO_ANGLE does not turn them):
//
//     THERMAL_Mi = ALPHAi t,    THERMAL_Bi = ALPHAi dt,    i = 1, 2
//
// t being the temperature change of the mid surface and dt its difference through the thickness.
void set_thermal_strains(PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS);

// Whether any thermal strain of the general behaviour differs from zero.
bool has_thermal_strains(const PLATEELEM_RECORD& EL);

// T, so that T^T D T turns a matrix of plane stress from material axes, at angle t from the element's, to element axes:
//
//     T = [ c^2    s^2     c s     ]
//         [ s^2    c^2    -c s     ]    engineering shear strains
//         [ -2 c s 2 c s  c^2 - s^2 ]
//
// Cosine and sine are rounded to single precision before they are used: their digits are part of the results
// (docs/decisions.md). PLATE_D_GENERAL forms both from one cosine and sine; tests call these two names.
MATRIX<3, 3> ROT_TENSOR_3(double t);

// S = [c s; -s c], likewise for the two transverse shears.
MATRIX<2, 2> ROT_SHEAR_2(double t);

#endif
