// side_constants.h: sides of the thick triangle: directions, flexibility ratios and the matrix of their rotations.
#ifndef FINITES_TRI_SIDE_CONSTANTS_H
#define FINITES_TRI_SIDE_CONSTANTS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/common/side_fields.h"
#include "shells/triangle/geometry.h"

// Sides of an isotropic section.
template <class REAL>
struct TRIANGLE_SIDES_OF : PLATE_SIDES<3, REAL> {
  VECTOR<3, REAL> D;  // determinant of the directions of the two sides that meet at each node
};
using TRIANGLE_SIDES = TRIANGLE_SIDES_OF<double>;

// Where the values of the sides lie that the stiffness reads: in TRIANGLE_SIDES or in PLATEELEM.
template <class REAL>
struct TRI_SIDE_VALUES_OF {
  const REAL *C, *S, *D, *PHI, *A_DELTA;

  explicit TRI_SIDE_VALUES_OF(const TRIANGLE_SIDES_OF<REAL>& sides)
      : C(sides.C.data()), S(sides.S.data()), D(sides.D.data()), PHI(sides.PHI.data()), A_DELTA(sides.A_DELTA.data()) {}
  explicit TRI_SIDE_VALUES_OF(const PLATEELEM_RECORD& EL)
      : C(EL.SIDE_C.data()),
        S(EL.SIDE_S.data()),
        D(EL.SIDE_DET.data()),
        PHI(EL.SIDE_PHI.data()),
        A_DELTA(EL.A_DELTA.data()) {}
};
using TRI_SIDE_VALUES = TRI_SIDE_VALUES_OF<double>;

// SIDE_C, SIDE_S, SIDE_DET, SIDE_PHI and A_DELTA (3, 9) of PLATEELEM from its local coordinates and section matrices. A
// side of length zero and a section without shear stiffness give infinite values or NaN, which reach the results.
void SIDE_CONST_TRI(PLATEELEM_RECORD& EL);

// From the geometry and THICKNESS, NU1 and the modifiers of LOADS. PLATEELEM is left alone.
TRIANGLE_SIDES SIDE_CONST_TRI_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS);

#endif
