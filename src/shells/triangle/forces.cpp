// forces.cpp: what the internal forces of both theories share on a triangle.
//
//     foundation   f(w_i) += k sum_j (TWO_AREA / 24) (1 + delta_ij) w_j
//     drilling     f(theta z_i) := sum_j Kdrill(i, j) theta z_j
//
// Mirror: shells/quadrilateral/forces.cpp.
#include "shells/triangle/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/drilling.h"
#include "shells/common/general_products.h"
#include "shells/common/groups.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/strains.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"

void TRI_DISP_LOCAL(const TRIANGLE_GEOMETRY& TRI, const double* u, double* ul) {
  groups_to_local(TRI.AXES, TRI_GROUPS, u, ul);
}

TRI_DISPLACEMENTS TRI_DISP_SPLIT(const double* ul) {
  return {picked(ul, TRI_MEMBRANE_DOF), picked(ul, TRI_BENDING_DOF), picked(ul, TRI_DRILL_DOF)};
}

namespace {

// The integral of two linear functions over a triangle of area A is (2 A / 24) (1 + delta_ij), and TWO_AREA = 2 A.
void add_foundation(const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U, double k, double* f) {
  const double d = TRI.TWO_AREA * k / 24.0;
  const double w1 = TRI_U.BENDING(1);
  const double w2 = TRI_U.BENDING(4);
  const double w3 = TRI_U.BENDING(7);
  const VECTOR_VIEW<> F(f);
  F(3) += d * (2.0 * w1 + w2 + w3);
  F(9) += d * (w1 + 2.0 * w2 + w3);
  F(15) += d * (w1 + w2 + 2.0 * w3);
}

void set_drilling(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U, double* f) {
  double Kdrill[SYM(3, 3)];
  TRI_KDRILL(EL, TRI, Kdrill);
  set_drilling_moments(Kdrill, TRI_U.DRILL, TRI_DRILL_DOF, f);
}

}  // namespace

void TRI_FINISH_FORCES(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                       const ELEM_LOADS& LOADS, int op, double* f) {
  add_foundation(TRI, TRI_U, LOADS(LOAD_FOUNDATION), f);
  set_drilling(EL, TRI, TRI_U, f);
  if (op != OP_FORCES_COMMIT) groups_to_global(TRI.AXES, TRI_GROUPS, f);
}
