// side_constants.h: sides of the thick quadrilateral: directions, flexibility ratios and the matrix of their rotations.
#ifndef FINITES_QUAD_SIDE_CONSTANTS_H
#define FINITES_QUAD_SIDE_CONSTANTS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"

// Sides of an isotropic section.
template <class REAL>
struct QUADRILATERAL_SIDES_OF : PLATE_SIDES<4, REAL> {
  VECTOR<4, REAL> LPHI;  // L phi, for the covariant shear
};
using QUADRILATERAL_SIDES = QUADRILATERAL_SIDES_OF<double>;

// Where the values of the sides lie that the stiffness reads: in QUADRILATERAL_SIDES or in PLATEELEM.
template <class REAL>
struct QUAD_SIDE_VALUES_OF {
  const REAL *C, *S, *LPHI, *A_DELTA;

  explicit QUAD_SIDE_VALUES_OF(const QUADRILATERAL_SIDES_OF<REAL>& sides)
      : C(sides.C.data()), S(sides.S.data()), LPHI(sides.LPHI.data()), A_DELTA(sides.A_DELTA.data()) {}
  explicit QUAD_SIDE_VALUES_OF(const PLATEELEM_RECORD& EL)
      : C(EL.SIDE_C.data()), S(EL.SIDE_S.data()), LPHI(EL.SIDE_LPHI.data()), A_DELTA(EL.A_DELTA.data()) {}
};
using QUAD_SIDE_VALUES = QUAD_SIDE_VALUES_OF<double>;

// SIDE_C, SIDE_S, SIDE_PHI, SIDE_LPHI and A_DELTA (4, 12) of PLATEELEM from its local coordinates and section matrices.
// A side of length zero and a section without shear stiffness give infinite values or NaN, which reach the results.
void SIDE_CONST_QUAD(PLATEELEM_RECORD& EL);

// From the geometry and THICKNESS, NU1 and the modifiers of LOADS. PLATEELEM is left alone.
QUADRILATERAL_SIDES SIDE_CONST_QUAD_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                                        const ELEM_LOADS& LOADS);

#endif
