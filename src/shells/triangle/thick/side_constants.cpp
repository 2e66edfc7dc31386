// side_constants.cpp: sides of the thick triangle, from the general section and in closed form (Katili, 1993). Side k
// runs from node i = k to the next node j:
//
//     x = x_j - x_i,  y = y_j - y_i,    L = sqrt(x^2 + y^2),  C = x / L,  S = y / L
//     PHI = 12 D / (H L^2)              (shells/common/side_section.cpp)
//     A_DELTA                           (shells/common/side_fields.h)
//
// Mirror: shells/quadrilateral/thick/side_constants.cpp.
#include "shells/triangle/thick/side_constants.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/side_section.h"
#include "shells/triangle/geometry.h"

namespace {

// D(i): the sine of the angle between the sides that meet at node i, k = i and the one before it, for the corner values
// of the shear (shear.cpp). Zero in a triangle without area.
void set_determinants(TRIANGLE_SIDES& sides) {
  const VECTOR<3>& C = sides.C;
  const VECTOR<3>& S = sides.S;
  sides.D(1) = C(1) * S(3) - C(3) * S(1);
  sides.D(2) = C(2) * S(1) - C(1) * S(2);
  sides.D(3) = C(3) * S(2) - C(2) * S(3);
}

template <class RATIO>
void set_sides(const VECTOR<3>& x, const VECTOR<3>& y, RATIO ratio, TRIANGLE_SIDES& sides) {
  for (int k = 1; k <= 3; ++k) {
    set_side_direction(k, x(k), y(k), sides);
    sides.PHI(k) = ratio(k);
  }
  set_determinants(sides);
  set_side_matrix(x, y, sides);
}

}  // namespace

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
  set_sides(
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
  const double c = isotropic_side_factor(EL, LOADS);
  TRIANGLE_SIDES TRI_SIDES;
  const VECTOR<3> x{{TRI.X21, TRI.X32, TRI.X13}};
  const VECTOR<3> y{{TRI.Y21, TRI.Y32, TRI.Y13}};
  set_sides(
      x, y, [&](int k) { return c / (TRI_SIDES.L(k) * TRI_SIDES.L(k)); }, TRI_SIDES);
  return TRI_SIDES;
}
