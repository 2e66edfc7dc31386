// engine_steps.cpp: the steps that both triangle engines take in the same way.
#include "shells/tri_thin/engine_steps.h"

#include <algorithm>

#include "operations.h"
#include "plate_results/res_record.h"
#include "shared_records.h"
#include "shells/common/behaviour.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometric_stiffness.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/mass.h"
#include "shells/tri_thin/stiffness.h"

void tri_frame_and_geometry(const double* xyz, MATRIX<3, 3>& local) {
  TRI_LOCAL_FRAME(xyz, local);
  TRI_GEOMETRY(local);
}

void tri_store_frame(const MATRIX<3, 3>& local) {
  PLATEELEM.AXES = TRI.AXES;
  PLATEELEM.LOCAL_XYZ = local;
}

void tri_split_displacements(const double* U) {
  double ul[TRI_DOFS];
  TRI_DISP_LOCAL(U, ul);
  TRI_DISP_SPLIT(ul);
}

void tri_finish_matrix(double* K, double* matrix) {
  TRI_TO_GLOBAL_PACKED(K);
  UNPACK_SYMMETRIC(TRI_DOFS, TRI_PACKED, K, matrix);
}

namespace {

void geometric_stiffness(std::int32_t op, const ELEM_LOADS& LOADS, const double* ul, const double* points,
                         double factor, double* K) {
  if (isotropic()) {
    TRI_KG_ISO(op, LOADS, ul, points, factor, K);
  } else {
    TRI_KG_GENERAL(op, ul, points, factor, K);
  }
}

}  // namespace

void tri_add_stored_geometric(const ELEM_LOADS& LOADS, const double* points, double* K) {
  double KG[TRI_PACKED];
  geometric_stiffness(OP_STIFFNESS, LOADS, nullptr, points, 1.0, KG);
  TRI_ADD_GEOMETRIC(KG, K);
}

void tri_mass_matrix(const double* xyz, const ELEM_LOADS& LOADS, double* matrix) {
  if (LOADS(LOAD_DENSITY) == 0.0) {
    std::fill_n(matrix, TRI_DOFS * TRI_DOFS, 0.0);
    return;
  }
  MATRIX<3, 3> local;
  double M[TRI_PACKED];
  tri_frame_and_geometry(xyz, local);
  TRI_MASS(LOADS(LOAD_DENSITY) * PLATEELEM.THICKNESS, M);
  tri_finish_matrix(M, matrix);
}

void tri_geometric_matrix(std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* points, double* matrix) {
  double K[TRI_PACKED] = {};
  double ul[TRI_DOFS] = {};
  if (op == OP_GEOMETRIC) {
    TRI_DISP_LOCAL(U, ul);
    std::fill_n(points, RES_VALUES, 0.0);
  }
  geometric_stiffness(op, LOADS, ul, points, -1.0, K);
  tri_finish_matrix(K, matrix);
}

void tri_area(const double* xyz, const ELEM_LOADS& LOADS, double& area, double& volume, double& weight) {
  MATRIX<3, 3> local;
  tri_frame_and_geometry(xyz, local);
  area = TRI.TWO_AREA / 2.0;
  volume = area * PLATEELEM.THICKNESS;
  weight = volume * LOADS(LOAD_DENSITY);
}
