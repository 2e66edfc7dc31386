// engine_steps.cpp: the steps that both quadrilateral engines take in the same way.
#include "shells/quad_thin/engine_steps.h"

#include <algorithm>

#include "element_calls/gauss_int_2d.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_elements.h"
#include "plate_material/section_state.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/quad_thin/forces.h"
#include "shells/quad_thin/geometric_stiffness.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/mass.h"
#include "shells/quad_thin/membrane.h"
#include "shells/quad_thin/stiffness.h"

int quad_split(const PLATEELEM_RECORD& EL) { return EL.MAT_BEHAV == BEHAV_SECTION_PLASTIC ? 0 : SPLIT_SHEAR; }

void quad_frame(QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, MATRIX<3, 4>& local) {
  VECTOR<3> centroid;
  QUAD_LOCAL_FRAME(xyz, QUAD, local, centroid(1), centroid(2), centroid(3));
}

void quad_frame_and_geometry(QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, int mode, MATRIX<3, 4>& local) {
  quad_frame(QUAD, xyz, local);
  QUAD_GEOMETRY(local, mode, QUAD);
}

void quad_store_frame(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const MATRIX<3, 4>& local) {
  EL.AXES = QUAD.AXES;
  EL.LOCAL_XYZ_QUAD = local;
}

QUAD_DISPLACEMENTS quad_split_displacements(const QUADRILATERAL_GEOMETRY& QUAD, const double* U) {
  double ul[QUAD_DOFS];
  QUAD_DISP_LOCAL(QUAD, U, ul);
  return QUAD_DISP_SPLIT(ul);
}

void quad_finish_matrix(const QUADRILATERAL_GEOMETRY& QUAD, double* K, double* matrix) {
  QUAD_TO_GLOBAL_PACKED(QUAD, K);
  UNPACK_SYMMETRIC(QUAD_DOFS, QUAD_PACKED, K, matrix);
}

namespace {

void geometric_stiffness(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                         std::int32_t op, const ELEM_LOADS& LOADS, const double* ul, const double* points,
                         double factor, double* K) {
  if (isotropic(EL)) {
    QUAD_KG_ISO(EL, QUAD, ISO, op, quad_split(EL), LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, ul, points, factor, K);
  } else {
    QUAD_KG_GENERAL(EL, op, quad_split(EL), QUAD_RULE_COUNT, ul, points, factor, K);
  }
}

}  // namespace

void quad_finish_stiffness(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int geometric, const double* points,
                           double* K) {
  if (LOADS(LOAD_FOUNDATION) != 0.0) QUAD_FOUNDATION(QUAD, LOADS(LOAD_FOUNDATION), QUAD_RULE_COUNT, QUAD_RULE_FULL, K);
  double Kdrill[SYM(4, 4)];
  QUAD_KDRILL(EL, local, K, Kdrill);
  if (geometric != 1) return;
  double KG[QUAD_PACKED];
  geometric_stiffness(EL, QUAD, ISO, OP_STIFFNESS, LOADS, nullptr, points, 1.0, KG);
  QUAD_ADD_GEOMETRIC(KG, K);
}

void quad_add_drilling(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* K) {
  double Kdrill[SYM(4, 4)];
  quad_kdrill(EL, local, Kdrill);
  const MATRIX_VIEW<QUAD_DOFS> KV(K);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= 4; ++i) {
      KV(QUAD_DRILL_DOF[i - 1], QUAD_DRILL_DOF[j - 1]) += Kdrill[SYM(std::min(i, j), std::max(i, j)) - 1];
    }
  }
}

void quad_stored_displacements(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, VECTOR<8>& us_membrane,
                               VECTOR<12>& us_plate) {
  double ul[QUAD_DOFS] = {};
  const double* const stored = stored_displacements_of(EL.ELEM_INDEX);
  if (stored != nullptr) QUAD_DISP_LOCAL(QUAD, stored, ul);
  for (int i = 1; i <= 8; ++i) us_membrane(i) = ul[QUAD_MEMBRANE_DOF[i - 1] - 1];
  for (int i = 1; i <= 12; ++i) us_plate(i) = ul[QUAD_BENDING_DOF[i - 1] - 1];
}

void quad_layered_stiffness(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                            const MATRIX<3, 4>& local, int theory, double* K) {
  QUAD_LAYERED_STIFF(EL, QUAD, QUAD_U, EL.MAT_BEHAV, QUAD_RULE_COUNT, theory, K);
  quad_add_drilling(EL, local, K);
}

void quad_layered_forces(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                         const MATRIX<3, 4>& local, const double* U, int op, int theory, double* f) {
  double ul[QUAD_DOFS];
  double us[QUAD_DOFS] = {};
  double kd[SYM(4, 4)];
  QUAD_DISP_LOCAL(QUAD, U, ul);
  const double* const stored = stored_displacements_of(EL.ELEM_INDEX);
  if (stored != nullptr) QUAD_DISP_LOCAL(QUAD, stored, us);
  quad_kdrill(EL, local, kd);
  QUAD_LAYERED_FORCES(EL, QUAD, QUAD_U, EL.MAT_BEHAV, QUAD_RULE_COUNT, ul, us, f, kd, op, theory);
}

void quad_layered_results(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                          const MATRIX<3, 4>& local, const double* U, int theory, double* nodes, double* points) {
  double ul[QUAD_DOFS];
  QUAD_DISP_LOCAL(QUAD, U, ul);
  QUAD_LAYERED_RESULTS(EL, QUAD, QUAD_U, EL.MAT_BEHAV, local, ul, QUAD_RULE_COUNT, nodes, points, theory);
}

void quad_finish_full_matrix(const QUADRILATERAL_GEOMETRY& QUAD, double* K, double* matrix) {
  QUAD_TO_GLOBAL_FULL(QUAD, K);
  std::copy_n(K, QUAD_DOFS * QUAD_DOFS, matrix);
}

void quad_mass_matrix(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const double* xyz,
                      const ELEM_LOADS& LOADS, double* matrix) {
  if (LOADS(LOAD_DENSITY) == 0.0) {
    std::fill_n(matrix, QUAD_DOFS * QUAD_DOFS, 0.0);
    return;
  }
  MATRIX<3, 4> local;
  double M[QUAD_PACKED];
  quad_frame_and_geometry(QUAD, xyz, WITH_SIDES, local);
  QUAD_MASS(EL, QUAD, LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, M);
  quad_finish_matrix(QUAD, M, matrix);
}

void quad_geometric_matrix(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           std::int32_t op, const ELEM_LOADS& LOADS, const double* U, const double* points,
                           double* matrix) {
  double K[QUAD_PACKED] = {};
  double ul[QUAD_DOFS] = {};
  if (op == OP_GEOMETRIC) QUAD_DISP_LOCAL(QUAD, U, ul);
  geometric_stiffness(EL, QUAD, ISO, op, LOADS, ul, points, -1.0, K);
  quad_finish_matrix(QUAD, K, matrix);
}

void quad_area(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, const ELEM_LOADS& LOADS,
               double& area, double& volume, double& weight) {
  MATRIX<3, 4> local;
  quad_frame_and_geometry(QUAD, xyz, WITHOUT_SIDES, local);
  area = 0.0;
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    area += s.weight * J.DET;
  }
  volume = area * EL.THICKNESS;
  weight = volume * LOADS(LOAD_DENSITY);
}
