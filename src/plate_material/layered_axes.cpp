// layered_axes.cpp: stresses and strains of a thickness point between element axes and global axes.
//
//     S_local = R S R^T,    S_global = R^T S_local R,      R = AXES, whose rows are the local axes
//
// S is the symmetric tensor of the vector. Shears enter as they are, engineering shear strains too: not halved, which
// is part of the results (docs/decisions.md).
#include "plate_material/layered_axes.h"

#include "common/small_products.h"
#include "finites/records.h"

namespace {

MATRIX<3, 3> tensor_of(double xx, double yy, double zz, double xy, double xz, double yz) {
  return {{xx, xy, xz, xy, yy, yz, xz, yz, zz}};
}

// R^T S R.
void turn_to_global(const PLATEELEM_RECORD& EL, const MATRIX<3, 3>& S, VECTOR<6>& out) {
  const MATRIX<3, 3> T = product(product(transposed(EL.AXES), S), EL.AXES);
  out = {{T(1, 1), T(2, 2), T(3, 3), T(1, 2), T(1, 3), T(2, 3)}};
}

}  // namespace

void VEC6_TO_LOCAL5(const PLATEELEM_RECORD& EL, const VECTOR<6>& in, VECTOR<5>& out) {
  const MATRIX<3, 3> S = tensor_of(in(1), in(2), in(3), in(4), in(5), in(6));
  const MATRIX<3, 3> T = product(product(EL.AXES, S), transposed(EL.AXES));
  out = {{T(1, 1), T(2, 2), T(1, 2), T(1, 3), T(2, 3)}};
}

void VEC5_TO_GLOBAL6(const PLATEELEM_RECORD& EL, const VECTOR<5>& in, VECTOR<6>& out) {
  turn_to_global(EL, tensor_of(in(1), in(2), 0.0, in(3), in(4), in(5)), out);
}

void EP5_TO_GLOBAL6(const PLATEELEM_RECORD& EL, const VECTOR<5>& in, VECTOR<6>& out) {
  turn_to_global(EL, tensor_of(in(1), in(2), -(in(1) + in(2)), in(3), in(4), in(5)), out);
}
