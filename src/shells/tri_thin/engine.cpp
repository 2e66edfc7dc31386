// engine.cpp: SHELL_TRI_THIN: a flat facet of three nodes: constant strain membrane, discrete Kirchhoff bending and a
// small stiffness on the drilling rotations.
#include "shells/tri_thin/engine.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/engine_steps.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/plastic.h"
#include "shells/tri_thin/point_operations.h"
#include "shells/tri_thin/results.h"
#include "shells/tri_thin/stiffness.h"

namespace {

void set_section(const MATRIX<3, 3>& local, const ELEM_LOADS& LOADS, int membrane_only) {
  if (isotropic()) {
    ISO = PLATE_D_ISOTROPIC(membrane_only, LOADS);
  } else {
    tri_store_frame(local);
    PLATE_D_GENERAL(0, membrane_only);
    if (section_plastic()) SECTION_SPECTRAL();
  }
}

void stiffness_matrix(const ELEM_LOADS& LOADS, int geometric, const double* points, double* matrix) {
  double K[TRI_PACKED];
  TRI_STIFFNESS(K);
  tri_finish_stiffness(LOADS, geometric, points, K);
  tri_finish_matrix(K, matrix);
}

void plastic_stiffness_matrix(int geometric, const double* points, double* matrix) {
  double K[TRI_DOFS * TRI_DOFS];
  if (section_plastic()) {
    KSTIF_TRI_THIN_PLAST(K);
  } else {
    tri_layered_stiffness(THIN_THEORY, K);
  }
  if (geometric == 1) KGEOM_TRI_THIN_PLAST(points, K);
  tri_finish_full_matrix(K, matrix);
}

void internal_forces(std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* F) {
  if (isotropic()) {
    TRI_FORCES_ISO(LOADS, F, TRI_RULE_COUNT, TRI_RULE_FOUR, op);
  } else if (elastic()) {
    TRI_FORCES_GENERAL(LOADS, F, TRI_RULE_COUNT, op);
  } else if (section_plastic()) {
    FINT_TRI_THIN_PLAST(LOADS, F, op);
  } else {
    tri_layered_forces(U, op, THIN_THEORY, F);
  }
}

void results(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, const double* U, double* nodes, double* points) {
  if (isotropic()) {
    TRI_RESULTS_ISO(LOADS, local, TRI_RULE_COUNT, TRI_RULE_FOUR, nodes, points);
  } else if (elastic()) {
    TRI_RESULTS_GENERAL(local, TRI_RULE_COUNT, nodes, points);
  } else if (section_plastic()) {
    RES_TRI_THIN_PLAST(local, nodes, points);
  } else {
    tri_layered_results(local, U, THIN_THEORY, nodes, points);
  }
}

void nodal_loads(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, int membrane_only, double* F) {
  std::fill_n(F, TRI_DOFS, 0.0);
  if (isotropic()) {
    TRI_LOADS_ISO(LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, F, TRI_LOAD_MODE, membrane_only);
  } else {
    set_section(local, LOADS, membrane_only);
    TRI_LOADS_GENERAL(LOADS, TRI_RULE_COUNT, F, TRI_LOAD_MODE, membrane_only);
  }
}

}  // namespace

void SHELL_TRI_THIN(std::int32_t /*ident*/, std::int32_t op, const double* xyz, const ELEM_LOADS& LOADS,
                    const double* U, double* F, int geometric, int membrane_only, const double* /*U_TOTAL*/,
                    double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume, double& weight,
                    int& point_flag1, int& point_flag2, double& distance) {
  MATRIX<3, 3> local;
  TRIANGLE TRI{};
  ISOTROPIC_SECTION ISO{};
  TRI_DISPLACEMENTS TRI_U;
  if (PLATEELEM.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(LOADS);

  switch (op) {
    case OP_STIFFNESS:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      if (!elastic()) {
        plastic_stiffness_matrix(geometric, points, matrix);
      } else {
        stiffness_matrix(LOADS, geometric, points, matrix);
      }
      break;
    case OP_MASS: tri_mass_matrix(xyz, LOADS, matrix); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      TRI_U = tri_split_displacements(U);
      internal_forces(op, LOADS, U, F);
      break;
    case OP_LOADS:
      tri_frame_and_geometry(xyz, local);
      nodal_loads(LOADS, local, membrane_only, F);
      break;
    case OP_RESULTS:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      TRI_U = tri_split_displacements(U);
      results(LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: TRI_LOCAL_FRAME(xyz, TRI, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      tri_geometric_matrix(op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: tri_area(xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: TRI_POINT_LOCATION(LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: TRI_POINT_LOAD(LOADS, xyz, TRI_LOAD_MODE, membrane_only, F); break;
    default: break;
  }
  AXES = TRI.AXES;
}
