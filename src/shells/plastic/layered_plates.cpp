// layered_plates.cpp: the layered model on triangles and quadrilaterals: the kernel of the theory (layered_element.h),
// then the drilling moments Kd theta z and, except in operation 33, the rotation to global axes. The foundation of the
// call block (LOAD_FOUNDATION) is not added.
#include "shells/plastic/layered_plates.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/through_thickness.h"
#include "shells/common/drilling.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/plastic/layered_element.h"
#include "shells/quadrilateral/thick/plate_kernel.h"
#include "shells/quadrilateral/thin/plate_kernel.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thick/plate_kernel.h"
#include "shells/triangle/thin/plate_kernel.h"

namespace {

// Calls work(plate) with the kernel of the theory.
template <class WORK>
void with_kernel(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U, int theory,
                 WORK work) {
  if (theory == THIN_THEORY) {
    work(TRI_THIN_PLATE{EL, TRI, TRI_U});
  } else {
    work(TRI_THICK_PLATE{EL, TRI, TRI_U});
  }
}

template <class WORK>
void with_kernel(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U, int theory,
                 WORK work) {
  if (theory == THIN_THEORY) {
    work(QUAD_THIN_PLATE{EL, QUAD, QUAD_U});
  } else {
    work(QUAD_THICK_PLATE{EL, QUAD, QUAD_U});
  }
}

}  // namespace

void TRI_LAYERED_FORCES(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                        const TRI_DISPLACEMENTS& TRI_U, int /*flag*/, int ngp, const double* u, const double* us,
                        double* F, double* kd, int op, int theory) {
  std::fill_n(F, TRI_DOFS, 0.0);
  with_kernel(EL, TRI, TRI_U, theory, [&](const auto& plate) { layered_forces(plate, state, ngp, u, us, F, op); });
  TRI_KDRILL(EL, TRI, kd);
  set_drilling_moments(kd, TRI_U.DRILL, TRI_DRILL_DOF, F);
  if (op != OP_FORCES_COMMIT) groups_to_global(TRI.AXES, TRI_GROUPS, F);
}

void QUAD_LAYERED_FORCES(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, int /*flag*/, int ngp, const double* u, const double* us,
                         double* F, const double* kd, int op, int theory) {
  std::fill_n(F, QUAD_DOFS, 0.0);
  with_kernel(EL, QUAD, QUAD_U, theory, [&](const auto& plate) { layered_forces(plate, state, ngp, u, us, F, op); });
  set_drilling_moments(kd, picked(u, QUAD_DRILL_DOF), QUAD_DRILL_DOF, F);
  if (op != OP_FORCES_COMMIT) groups_to_global(QUAD.AXES, QUAD_GROUPS, F);
}

void TRI_LAYERED_STIFF(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                       const TRI_DISPLACEMENTS& TRI_U, int /*flag*/, int ngp, int theory, double* K) {
  std::fill_n(K, TRI_DOFS * TRI_DOFS, 0.0);
  with_kernel(EL, TRI, TRI_U, theory, [&](const auto& plate) { layered_stiffness(plate, state, ngp, K); });
}

void QUAD_LAYERED_STIFF(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                        const QUAD_DISPLACEMENTS& QUAD_U, int /*flag*/, int ngp, int theory, double* K) {
  std::fill_n(K, QUAD_DOFS * QUAD_DOFS, 0.0);
  with_kernel(EL, QUAD, QUAD_U, theory, [&](const auto& plate) { layered_stiffness(plate, state, ngp, K); });
}

void TRI_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                         const TRI_DISPLACEMENTS& TRI_U, int /*flag*/, const MATRIX<3, 3>& xy, const double* u, int ngp,
                         double* nodes, double* points, int theory) {
  with_kernel(EL, TRI, TRI_U, theory,
              [&](const auto& plate) { layered_results(plate, state, xy, u, ngp, nodes, points); });
}

void QUAD_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                          const QUAD_DISPLACEMENTS& QUAD_U, int /*flag*/, const MATRIX<3, 4>& xy, const double* u,
                          int ngp, double* nodes, double* points, int theory) {
  with_kernel(EL, QUAD, QUAD_U, theory,
              [&](const auto& plate) { layered_results(plate, state, xy, u, ngp, nodes, points); });
}

void layered_plate_forces(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, const double* us,
                          int op, int theory, double* F) {
  double kd[SYM(3, 3)];
  TRI_LAYERED_FORCES(e.EL, state, e.TRI, e.TRI_U, e.EL.MAT_BEHAV, TRI_RULE_COUNT, u, us, F, kd, op, theory);
}

void layered_plate_forces(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u,
                          const double* us, int op, int theory, double* F) {
  double kd[SYM(4, 4)];
  quad_kdrill(e.EL, e.local, kd);
  QUAD_LAYERED_FORCES(e.EL, state, e.QUAD, e.QUAD_U, e.EL.MAT_BEHAV, QUAD_RULE_COUNT, u, us, F, kd, op, theory);
}

void layered_plate_stiffness(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, int theory, double* K) {
  TRI_LAYERED_STIFF(e.EL, state, e.TRI, e.TRI_U, e.EL.MAT_BEHAV, TRI_RULE_COUNT, theory, K);
  e.place_drilling(K);
}

void layered_plate_stiffness(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, int theory, double* K) {
  QUAD_LAYERED_STIFF(e.EL, state, e.QUAD, e.QUAD_U, e.EL.MAT_BEHAV, QUAD_RULE_COUNT, theory, K);
  e.place_drilling(K);
}

void layered_plate_results(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, int theory,
                           double* nodes, double* points) {
  TRI_LAYERED_RESULTS(e.EL, state, e.TRI, e.TRI_U, e.EL.MAT_BEHAV, e.local, u, TRI_RULE_COUNT, nodes, points, theory);
}

void layered_plate_results(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, int theory,
                           double* nodes, double* points) {
  QUAD_LAYERED_RESULTS(e.EL, state, e.QUAD, e.QUAD_U, e.EL.MAT_BEHAV, e.local, u, QUAD_RULE_COUNT, nodes, points,
                       theory);
}
