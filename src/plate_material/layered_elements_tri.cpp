// layered_elements_tri.cpp: the layered model on triangles.
#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_element.h"
#include "plate_material/layered_elements.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/tri_thick/plate_kernel.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"
#include "shells/tri_thin/plate_kernel.h"

void TRI_LAYERED_FORCES(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        int /*flag*/, int ngp, const double* u, const double* us, double* F, double* kd, int op,
                        int theory) {
  std::fill_n(F, TRI_DOFS, 0.0);
  if (theory == THIN_THEORY) {
    layered_forces(TRI_THIN_PLATE{EL, TRI, TRI_U}, ngp, u, us, F, op);
  } else {
    layered_forces(TRI_THICK_PLATE{EL, TRI, TRI_U}, ngp, u, us, F, op);
  }
  TRI_KDRILL(EL, TRI, kd);
  for (int n = 1; n <= 3; ++n) {
    double moment = 0.0;
    for (int m = 1; m <= 3; ++m) moment += kd[SYM(std::min(n, m), std::max(n, m)) - 1] * TRI_U.DRILL(m);
    F[TRI_DRILL_DOF[n - 1] - 1] = moment;
  }
  if (op != OP_FORCES_COMMIT) groups_to_global(TRI.AXES, TRI_GROUPS, F);
}

void TRI_LAYERED_STIFF(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U, int /*flag*/,
                       int ngp, int theory, double* K) {
  std::fill_n(K, TRI_DOFS * TRI_DOFS, 0.0);
  if (theory == THIN_THEORY) {
    layered_stiffness(TRI_THIN_PLATE{EL, TRI, TRI_U}, ngp, K);
  } else {
    layered_stiffness(TRI_THICK_PLATE{EL, TRI, TRI_U}, ngp, K);
  }
}

void TRI_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         int /*flag*/, const MATRIX<3, 3>& xy, const double* u, int ngp, double* nodes, double* points,
                         int theory) {
  if (theory == THIN_THEORY) {
    layered_results(TRI_THIN_PLATE{EL, TRI, TRI_U}, xy, u, ngp, nodes, points);
  } else {
    layered_results(TRI_THICK_PLATE{EL, TRI, TRI_U}, xy, u, ngp, nodes, points);
  }
}
