// engine_steps.cpp: the steps that both triangle engines take in the same way.
#include "shells/tri_thin/engine_steps.h"

#include <algorithm>

#include "element_calls/gauss_int_2d.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_elements.h"
#include "plate_material/section_state.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometric_stiffness.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/mass.h"
#include "shells/tri_thin/membrane.h"
#include "shells/tri_thin/stiffness.h"

void tri_frame_and_geometry(TRIANGLE_GEOMETRY& TRI, const double* xyz, MATRIX<3, 3>& local) {
  TRI_LOCAL_FRAME(xyz, TRI, local);
  TRI_GEOMETRY(local, TRI);
}

void tri_store_frame(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const MATRIX<3, 3>& local) {
  EL.AXES = TRI.AXES;
  EL.LOCAL_XYZ = local;
}

TRI_DISPLACEMENTS tri_split_displacements(const TRIANGLE_GEOMETRY& TRI, const double* U) {
  double ul[TRI_DOFS];
  TRI_DISP_LOCAL(TRI, U, ul);
  return TRI_DISP_SPLIT(ul);
}

void tri_finish_matrix(const TRIANGLE_GEOMETRY& TRI, double* K, double* matrix) {
  TRI_TO_GLOBAL_PACKED(TRI, K);
  UNPACK_SYMMETRIC(TRI_DOFS, TRI_PACKED, K, matrix);
}

namespace {

void geometric_stiffness(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                         std::int32_t op, const ELEM_LOADS& LOADS, const double* ul, const double* points,
                         double factor, double* K) {
  if (isotropic(EL)) {
    TRI_KG_ISO(EL, TRI, ISO, op, LOADS, ul, points, factor, K);
  } else {
    TRI_KG_GENERAL(EL, op, ul, points, factor, K);
  }
}

}  // namespace

void tri_finish_stiffness(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int geometric, const double* points, double* K) {
  if (LOADS(LOAD_FOUNDATION) != 0.0) TRI_FOUNDATION(TRI, LOADS(LOAD_FOUNDATION), K);
  if (geometric != 1) return;
  double KG[TRI_PACKED];
  geometric_stiffness(EL, TRI, ISO, OP_STIFFNESS, LOADS, nullptr, points, 1.0, KG);
  TRI_ADD_GEOMETRIC(KG, K);
}

void tri_set_drilling(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, double* K) {
  double Kdrill[SYM(3, 3)];
  TRI_KDRILL(EL, TRI, Kdrill);
  const MATRIX_VIEW<TRI_DOFS> KV(K);
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      KV(TRI_DRILL_DOF[i - 1], TRI_DRILL_DOF[j - 1]) = Kdrill[SYM(std::min(i, j), std::max(i, j)) - 1];
    }
  }
}

void tri_stored_displacements(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, VECTOR<6>& us_membrane,
                              VECTOR<9>& us_plate) {
  double ul[TRI_DOFS] = {};
  const double* const stored = stored_displacements_of(EL.ELEM_INDEX);
  if (stored != nullptr) TRI_DISP_LOCAL(TRI, stored, ul);
  for (int i = 1; i <= 6; ++i) us_membrane(i) = ul[TRI_MEMBRANE_DOF[i - 1] - 1];
  for (int i = 1; i <= 9; ++i) us_plate(i) = ul[TRI_BENDING_DOF[i - 1] - 1];
}

void tri_layered_stiffness(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                           int theory, double* K) {
  TRI_LAYERED_STIFF(EL, TRI, TRI_U, EL.MAT_BEHAV, TRI_RULE_COUNT, theory, K);
  tri_set_drilling(EL, TRI, K);
}

void tri_layered_forces(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const double* U, int op, int theory, double* f) {
  double ul[TRI_DOFS];
  double us[TRI_DOFS] = {};
  double kd[SYM(3, 3)];
  TRI_DISP_LOCAL(TRI, U, ul);
  const double* const stored = stored_displacements_of(EL.ELEM_INDEX);
  if (stored != nullptr) TRI_DISP_LOCAL(TRI, stored, us);
  TRI_LAYERED_FORCES(EL, TRI, TRI_U, EL.MAT_BEHAV, TRI_RULE_COUNT, ul, us, f, kd, op, theory);
}

void tri_layered_results(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const MATRIX<3, 3>& local, const double* U, int theory, double* nodes, double* points) {
  double ul[TRI_DOFS];
  TRI_DISP_LOCAL(TRI, U, ul);
  TRI_LAYERED_RESULTS(EL, TRI, TRI_U, EL.MAT_BEHAV, local, ul, TRI_RULE_COUNT, nodes, points, theory);
}

void tri_finish_full_matrix(const TRIANGLE_GEOMETRY& TRI, double* K, double* matrix) {
  TRI_TO_GLOBAL_FULL(TRI, K);
  std::copy_n(K, TRI_DOFS * TRI_DOFS, matrix);
}

void tri_mass_matrix(const PLATEELEM_RECORD& EL, TRIANGLE_GEOMETRY& TRI, const double* xyz, const ELEM_LOADS& LOADS,
                     double* matrix) {
  if (LOADS(LOAD_DENSITY) == 0.0) {
    std::fill_n(matrix, TRI_DOFS * TRI_DOFS, 0.0);
    return;
  }
  MATRIX<3, 3> local;
  double M[TRI_PACKED];
  tri_frame_and_geometry(TRI, xyz, local);
  TRI_MASS(TRI, LOADS(LOAD_DENSITY) * EL.THICKNESS, M);
  tri_finish_matrix(TRI, M, matrix);
}

void tri_geometric_matrix(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* points, double* matrix) {
  double K[TRI_PACKED] = {};
  double ul[TRI_DOFS] = {};
  if (op == OP_GEOMETRIC) {
    TRI_DISP_LOCAL(TRI, U, ul);
    std::fill_n(points, RES_VALUES, 0.0);
  }
  geometric_stiffness(EL, TRI, ISO, op, LOADS, ul, points, -1.0, K);
  tri_finish_matrix(TRI, K, matrix);
}

void tri_area(const PLATEELEM_RECORD& EL, TRIANGLE_GEOMETRY& TRI, const double* xyz, const ELEM_LOADS& LOADS,
              double& area, double& volume, double& weight) {
  MATRIX<3, 3> local;
  tri_frame_and_geometry(TRI, xyz, local);
  area = TRI.TWO_AREA / 2.0;
  volume = area * EL.THICKNESS;
  weight = volume * LOADS(LOAD_DENSITY);
}
