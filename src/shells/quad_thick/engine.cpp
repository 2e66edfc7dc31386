// engine.cpp: SHELL_QUAD_THICK: the thin quadrilateral with discrete Kirchhoff-Mindlin bending and transverse shear.
// Frame, membrane, drilling, mass, geometric stiffness, surface and point loads are the thin quadrilateral's.
#include "shells/quad_thick/engine.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/quad_thick/forces.h"
#include "shells/quad_thick/loads.h"
#include "shells/quad_thick/plastic.h"
#include "shells/quad_thick/results.h"
#include "shells/quad_thick/side_constants.h"
#include "shells/quad_thick/stiffness.h"
#include "shells/quad_thin/engine_steps.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/point_operations.h"

namespace {

void set_section(const MATRIX<3, 4>& local, const ELEM_LOADS& LOADS) {
  if (isotropic()) {
    ISO = PLATE_D_ISOTROPIC(0, LOADS);
  } else {
    quad_store_frame(local);
    PLATE_D_GENERAL(quad_split(), 0);
    SIDE_CONST_QUAD();
    if (section_plastic()) SECTION_SPECTRAL();
  }
}

void stiffness_matrix(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int geometric, const double* points,
                      double* matrix) {
  double K[QUAD_PACKED];
  if (isotropic()) {
    KSTIF_QUAD_THICK_ISO(LOADS, quad_split(), K);
  } else {
    KSTIF_QUAD_THICK_GEN(quad_split(), K);
  }
  quad_finish_stiffness(LOADS, local, geometric, points, K);
  quad_finish_matrix(K, matrix);
}

void plastic_stiffness_matrix(const MATRIX<3, 4>& local, int geometric, const double* points, double* matrix) {
  double K[QUAD_DOFS * QUAD_DOFS];
  if (section_plastic()) {
    KSTIF_QUAD_THICK_PLAST(local, K);
  } else {
    quad_layered_stiffness(local, THICK_THEORY, K);
  }
  if (geometric == 1) KGEOM_QUAD_THICK_PLAST(points, K);
  quad_finish_full_matrix(K, matrix);
}

void internal_forces(std::int32_t op, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, const double* U, double* F) {
  if (isotropic()) {
    FINT_QUAD_THICK_ISO(LOADS, local, quad_split(), F, op);
  } else if (elastic()) {
    FINT_QUAD_THICK_GEN(LOADS, local, quad_split(), F, op);
  } else if (section_plastic()) {
    FINT_QUAD_THICK_PLAST(LOADS, local, F, op);
  } else {
    quad_layered_forces(local, U, op, THICK_THEORY, F);
  }
}

void results(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, const double* U, double* nodes, double* points) {
  if (isotropic()) {
    RES_QUAD_THICK_ISO(LOADS, local, quad_split(), nodes, points);
  } else if (elastic()) {
    RES_QUAD_THICK_GEN(local, quad_split(), nodes, points);
  } else if (section_plastic()) {
    RES_QUAD_THICK_PLAST(local, nodes, points);
  } else {
    quad_layered_results(local, U, THICK_THEORY, nodes, points);
  }
}

void nodal_loads(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, double* F) {
  std::fill_n(F, QUAD_DOFS, 0.0);
  if (isotropic()) {
    LOAD_QUAD_THICK_ISO(LOADS, F);
  } else {
    set_section(local, LOADS);
    LOAD_QUAD_THICK_GEN(LOADS, F);
  }
}

}  // namespace

void SHELL_QUAD_THICK(std::int32_t /*ident*/, std::int32_t op, const double* xyz, const ELEM_LOADS& LOADS,
                      const double* U, double* F, int geometric, const double* /*U_TOTAL*/, double* matrix,
                      double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume, double& weight, int& point_flag1,
                      int& point_flag2, double& distance) {
  MATRIX<3, 4> local;
  QUADRILATERAL QUAD{};
  ISOTROPIC_SECTION ISO{};
  QUAD_DISPLACEMENTS QUAD_U;
  if (PLATEELEM.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(LOADS);

  switch (op) {
    case OP_STIFFNESS:
      quad_frame_and_geometry(xyz, WITH_SIDES, local);
      set_section(local, LOADS);
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
      set_section(local, LOADS);
      QUAD_U = quad_split_displacements(U);
      internal_forces(op, LOADS, local, U, F);
      break;
    case OP_LOADS:
      quad_frame_and_geometry(xyz, WITHOUT_SIDES, local);
      nodal_loads(LOADS, local, F);
      break;
    case OP_RESULTS:
      quad_frame_and_geometry(xyz, WITH_SIDES, local);
      set_section(local, LOADS);
      QUAD_U = quad_split_displacements(U);
      results(LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: quad_frame(xyz, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      quad_frame_and_geometry(xyz, WITHOUT_SIDES, local);
      set_section(local, LOADS);
      quad_geometric_matrix(op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: quad_area(xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: QUAD_POINT_LOCATION(LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: QUAD_POINT_LOAD(LOADS, xyz, 0, F); break;
    default: break;
  }
  AXES = QUAD.AXES;
}
