// layered_elements_quad.cpp: the layered model on quadrilaterals.
#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_element.h"
#include "plate_material/layered_elements.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/quad_thick/plate_kernel.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/plate_kernel.h"

void QUAD_LAYERED_FORCES(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                         int /*flag*/, int ngp, const double* u, const double* us, double* F, const double* kd, int op,
                         int theory) {
  std::fill_n(F, QUAD_DOFS, 0.0);
  if (theory == THIN_THEORY) {
    layered_forces(QUAD_THIN_PLATE{EL, QUAD, QUAD_U}, ngp, u, us, F, op);
  } else {
    layered_forces(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, ngp, u, us, F, op);
  }
  for (int n = 1; n <= 4; ++n) {
    double moment = 0.0;
    for (int m = 1; m <= 4; ++m) moment += kd[SYM(std::min(n, m), std::max(n, m)) - 1] * u[QUAD_DRILL_DOF[m - 1] - 1];
    F[QUAD_DRILL_DOF[n - 1] - 1] = moment;
  }
  if (op != OP_FORCES_COMMIT) groups_to_global(QUAD.AXES, QUAD_GROUPS, F);
}

void QUAD_LAYERED_STIFF(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                        int /*flag*/, int ngp, int theory, double* K) {
  std::fill_n(K, QUAD_DOFS * QUAD_DOFS, 0.0);
  if (theory == THIN_THEORY) {
    layered_stiffness(QUAD_THIN_PLATE{EL, QUAD, QUAD_U}, ngp, K);
  } else {
    layered_stiffness(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, ngp, K);
  }
}

void QUAD_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                          int /*flag*/, const MATRIX<3, 4>& xy, const double* u, int ngp, double* nodes, double* points,
                          int theory) {
  if (theory == THIN_THEORY) {
    layered_results(QUAD_THIN_PLATE{EL, QUAD, QUAD_U}, xy, u, ngp, nodes, points);
  } else {
    layered_results(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, xy, u, ngp, nodes, points);
  }
}
