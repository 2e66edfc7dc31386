// side_constants.cpp: sides of the thick quadrilateral, from the general section and in closed form (side_formulas.h).
//
// Mirror: shells/triangle/thick/side_constants.cpp.
#include "shells/quadrilateral/thick/side_constants.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/side_section.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_formulas.h"

void SIDE_CONST_QUAD(PLATEELEM_RECORD& EL) {
  const MATRIX<3, 4>& local = EL.LOCAL_XYZ_QUAD;
  VECTOR<4> x;
  VECTOR<4> y;
  for (int i = 1; i <= 4; ++i) {
    const int j = i % 4 + 1;
    x(i) = local(1, j) - local(1, i);
    y(i) = local(2, j) - local(2, i);
  }
  QUADRILATERAL_SIDES sides;
  set_quad_sides(
      x, y, [&](int k) { return side_ratio(EL, sides.C(k), sides.S(k), sides.L(k)); }, sides);
  EL.SIDE_C = sides.C;
  EL.SIDE_S = sides.S;
  EL.SIDE_PHI = sides.PHI;
  EL.SIDE_LPHI = sides.LPHI;
  std::copy_n(sides.A_DELTA.data(), 4 * 12, EL.A_DELTA.data());
}

QUADRILATERAL_SIDES SIDE_CONST_QUAD_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                                        const ELEM_LOADS& LOADS) {
  return isotropic_quad_sides(isotropic_side_factor(EL, LOADS), QUAD);
}
