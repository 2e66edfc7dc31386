// side_constants.cpp: sides of the thick quadrilateral, from the general section and in closed form (Katili, 1993).
// Side k runs from node i = k to the next node j:
//
//     x = x_j - x_i,  y = y_j - y_i,    L = sqrt(x^2 + y^2),  C = x / L,  S = y / L
//     PHI = 12 D / (H L^2),  LPHI = L PHI   (shells/common/side_section.cpp)
//     A_DELTA                               (shells/common/side_fields.h)
//
// Mirror: shells/triangle/thick/side_constants.cpp.
#include "shells/quadrilateral/thick/side_constants.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/side_section.h"
#include "shells/quadrilateral/geometry.h"

namespace {

template <class RATIO>
void set_sides(const VECTOR<4>& x, const VECTOR<4>& y, RATIO ratio, QUADRILATERAL_SIDES& sides) {
  for (int k = 1; k <= 4; ++k) {
    set_side_direction(k, x(k), y(k), sides);
    sides.PHI(k) = ratio(k);
    sides.LPHI(k) = sides.L(k) * sides.PHI(k);
  }
  set_side_matrix(x, y, sides);
}

}  // namespace

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
  set_sides(
      x, y, [&](int k) { return side_ratio(EL, sides.C(k), sides.S(k), sides.L(k)); }, sides);
  EL.SIDE_C = sides.C;
  EL.SIDE_S = sides.S;
  EL.SIDE_PHI = sides.PHI;
  EL.SIDE_LPHI = sides.LPHI;
  std::copy_n(sides.A_DELTA.data(), 4 * 12, EL.A_DELTA.data());
}

// QX12 is x1 - x2: the differences of the geometry have the opposite sign.
QUADRILATERAL_SIDES SIDE_CONST_QUAD_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                                        const ELEM_LOADS& LOADS) {
  const double c = isotropic_side_factor(EL, LOADS);
  QUADRILATERAL_SIDES QUAD_SIDES;
  const VECTOR<4> x{{-QUAD.QX12, -QUAD.QX23, -QUAD.QX34, -QUAD.QX41}};
  const VECTOR<4> y{{-QUAD.QY12, -QUAD.QY23, -QUAD.QY34, -QUAD.QY41}};
  set_sides(
      x, y, [&](int k) { return c / (QUAD_SIDES.L(k) * QUAD_SIDES.L(k)); }, QUAD_SIDES);
  return QUAD_SIDES;
}
