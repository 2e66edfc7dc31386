// element_stores.h: what tests of the plate kernels hand down from one to the next, where the engines keep it on the
// stack of a call: the geometry of the element in hand, its isotropic section, its sides, its displacements.
#ifndef FINITES_TESTS_ELEMENT_STORES_H
#define FINITES_TESTS_ELEMENT_STORES_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/rotations.h"
#include "shells/quadrilateral/thick/side_constants.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

inline TRIANGLE_GEOMETRY TRI;
inline QUADRILATERAL_GEOMETRY QUAD;
inline ISOTROPIC_SECTION ISO;
inline TRIANGLE_SIDES TRI_SIDES;
inline QUADRILATERAL_SIDES QUAD_SIDES;
inline TRI_DISPLACEMENTS TRI_U;
inline QUAD_DISPLACEMENTS QUAD_U;

// The geometry of the element that PLATEELEM holds after a call with a general or plastic section.
inline void take_element_of_last_call(int nodes) {
  if (nodes == 3) {
    TRI.AXES = PLATEELEM.AXES;
    TRI_GEOMETRY(PLATEELEM.LOCAL_XYZ, TRI);
  } else {
    QUAD.AXES = PLATEELEM.AXES;
    QUAD_GEOMETRY(PLATEELEM.LOCAL_XYZ_QUAD, WITH_SIDES, QUAD);
  }
}

#endif
