// engine.cpp: SHELL_QUAD_THIN: a flat facet of four nodes: bilinear membrane with its shear at the centre, discrete
// Kirchhoff bending and a small stiffness on the drilling rotations.
#include "shells/quad_thin/engine.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/quad_thin/engine_steps.h"
#include "shells/quad_thin/forces.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/loads.h"
#include "shells/quad_thin/plastic.h"
#include "shells/quad_thin/point_operations.h"
#include "shells/quad_thin/results.h"
#include "shells/quad_thin/stiffness.h"

namespace {

void set_section(const MATRIX<3, 4>& local, const ELEM_LOADS& LOADS, int membrane_only) {
  if (isotropic()) {
    ISO = PLATE_D_ISOTROPIC(membrane_only, LOADS);
  } else {
    quad_store_frame(local);
    PLATE_D_GENERAL(quad_split(), membrane_only);
    if (section_plastic()) SECTION_SPECTRAL();
  }
}

void stiffness_matrix(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int geometric, const double* points,
                      double* matrix) {
  double K[QUAD_PACKED];
  if (isotropic()) {
    QUAD_STIFFNESS_ISO(quad_split(), QUAD_RULE_COUNT, QUAD_RULE_FULL, K);
  } else {
    QUAD_STIFFNESS_GENERAL(quad_split(), QUAD_RULE_COUNT, K);
  }
  quad_finish_stiffness(LOADS, local, geometric, points, K);
  quad_finish_matrix(K, matrix);
}

void plastic_stiffness_matrix(const MATRIX<3, 4>& local, int geometric, const double* points, double* matrix) {
  double K[QUAD_DOFS * QUAD_DOFS];
  if (section_plastic()) {
    KSTIF_QUAD_THIN_PLAST(local, K);
  } else {
    quad_layered_stiffness(local, THIN_THEORY, K);
  }
  if (geometric == 1) KGEOM_QUAD_THIN_PLAST(points, K);
  quad_finish_full_matrix(K, matrix);
}

void internal_forces(std::int32_t op, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, const double* U, double* F) {
  if (isotropic()) {
    QUAD_FORCES_ISO(LOADS, local, quad_split(), F, QUAD_RULE_COUNT, QUAD_RULE_FULL, op);
  } else if (elastic()) {
    QUAD_FORCES_GENERAL(LOADS, local, quad_split(), F, QUAD_RULE_COUNT, op);
  } else if (section_plastic()) {
    FINT_QUAD_THIN_PLAST(LOADS, local, F, op);
  } else {
    quad_layered_forces(local, U, op, THIN_THEORY, F);
  }
}

void results(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, const double* U, double* nodes, double* points) {
  if (isotropic()) {
    QUAD_RESULTS_ISO(LOADS, local, quad_split(), QUAD_RULE_COUNT, QUAD_RULE_FULL, nodes, points);
  } else if (elastic()) {
    QUAD_RESULTS_GENERAL(local, quad_split(), QUAD_RULE_COUNT, nodes, points);
  } else if (section_plastic()) {
    RES_QUAD_THIN_PLAST(local, nodes, points);
  } else {
    quad_layered_results(local, U, THIN_THEORY, nodes, points);
  }
}

void nodal_loads(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int membrane_only, double* F) {
  std::fill_n(F, QUAD_DOFS, 0.0);
  if (isotropic()) {
    QUAD_LOADS_ISO(LOADS, local, QUAD_RULE_COUNT, QUAD_RULE_FULL, F, membrane_only);
  } else {
    set_section(local, LOADS, membrane_only);
    QUAD_LOADS_GENERAL(LOADS, local, QUAD_RULE_COUNT, F, membrane_only);
  }
}

}  // namespace

void SHELL_QUAD_THIN(std::int32_t /*ident*/, std::int32_t op, const double* xyz, const ELEM_LOADS& LOADS,
                     const double* U, double* F, int geometric, int membrane_only, const double* /*U_TOTAL*/,
                     double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume, double& weight,
                     int& point_flag1, int& point_flag2, double& distance) {
  MATRIX<3, 4> local;
  QUADRILATERAL QUAD{};
  ISOTROPIC_SECTION ISO{};
  QUAD_DISPLACEMENTS QUAD_U;
  if (PLATEELEM.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(LOADS);

  switch (op) {
    case OP_STIFFNESS:
      quad_frame_and_geometry(xyz, WITH_SIDES, local);
      set_section(local, LOADS, membrane_only);
      if (!elastic()) {
        plastic_stiffness_matrix(local, geometric, points, matrix);
      } else {
        stiffness_matrix(LOADS, local, geometric, points, matrix);
      }
      break;
    case OP_MASS: quad_mass_matrix(xyz, LOADS, matrix); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      quad_frame_and_geometry(xyz, WITH_SIDES, local);
      set_section(local, LOADS, membrane_only);
      QUAD_U = quad_split_displacements(U);
      internal_forces(op, LOADS, local, U, F);
      break;
    case OP_LOADS:
      quad_frame_and_geometry(xyz, WITHOUT_SIDES, local);
      nodal_loads(LOADS, local, membrane_only, F);
      break;
    case OP_RESULTS:
      quad_frame_and_geometry(xyz, WITH_SIDES, local);
      set_section(local, LOADS, membrane_only);
      QUAD_U = quad_split_displacements(U);
      results(LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: quad_frame(xyz, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      quad_frame_and_geometry(xyz, WITHOUT_SIDES, local);
      set_section(local, LOADS, membrane_only);
      quad_geometric_matrix(op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: quad_area(xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: QUAD_POINT_LOCATION(LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: QUAD_POINT_LOAD(LOADS, xyz, membrane_only, F); break;
    default: break;
  }
  AXES = QUAD.AXES;
}
