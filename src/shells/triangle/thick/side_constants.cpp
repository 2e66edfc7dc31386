// side_constants.cpp: sides of the thick triangle, from the general section and in closed form (side_formulas.h).
//
// Mirror: shells/quadrilateral/thick/side_constants.cpp.
#include "shells/triangle/thick/side_constants.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/side_section.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_formulas.h"

void SIDE_CONST_TRI(PLATEELEM_RECORD& EL) {
  const MATRIX<3, 3>& local = EL.LOCAL_XYZ;
  VECTOR<3> x;
  VECTOR<3> y;
  for (int i = 1; i <= 3; ++i) {
    const int j = i % 3 + 1;
    x(i) = local(1, j) - local(1, i);
    y(i) = local(2, j) - local(2, i);
  }
  TRIANGLE_SIDES sides;
  set_tri_sides(
      x, y, [&](int k) { return side_ratio(EL, sides.C(k), sides.S(k), sides.L(k)); }, sides);
  for (int k = 1; k <= 3; ++k) {
    EL.SIDE_C(k) = sides.C(k);
    EL.SIDE_S(k) = sides.S(k);
    EL.SIDE_DET(k) = sides.D(k);
    EL.SIDE_PHI(k) = sides.PHI(k);
  }
  std::copy_n(sides.A_DELTA.data(), 3 * 9, EL.A_DELTA.data());
}

TRIANGLE_SIDES SIDE_CONST_TRI_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS) {
  return isotropic_tri_sides(isotropic_side_factor(EL, LOADS), TRI);
}
