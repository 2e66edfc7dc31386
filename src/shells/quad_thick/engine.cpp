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

void set_section(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, ISOTROPIC_SECTION& ISO,
                 const MATRIX<3, 4>& local, const ELEM_LOADS& LOADS) {
  if (isotropic(EL)) {
    ISO = PLATE_D_ISOTROPIC(EL, 0, LOADS);
  } else {
    quad_store_frame(EL, QUAD, local);
    PLATE_D_GENERAL(EL, quad_split(EL), 0);
    SIDE_CONST_QUAD(EL);
    if (section_plastic(EL)) SECTION_SPECTRAL(EL);
  }
}

void stiffness_matrix(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                      const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int geometric, const double* points,
                      double* matrix) {
  double K[QUAD_PACKED];
  if (isotropic(EL)) {
    KSTIF_QUAD_THICK_ISO(EL, QUAD, ISO, LOADS, quad_split(EL), K);
  } else {
    KSTIF_QUAD_THICK_GEN(EL, quad_split(EL), K);
  }
  quad_finish_stiffness(EL, QUAD, ISO, LOADS, local, geometric, points, K);
  quad_finish_matrix(QUAD, K, matrix);
}

void plastic_stiffness_matrix(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                              const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local, int geometric,
                              const double* points, double* matrix) {
  double K[QUAD_DOFS * QUAD_DOFS];
  if (section_plastic(EL)) {
    KSTIF_QUAD_THICK_PLAST(EL, QUAD, QUAD_U, local, K);
  } else {
    quad_layered_stiffness(EL, QUAD, QUAD_U, local, THICK_THEORY, K);
  }
  if (geometric == 1) KGEOM_QUAD_THICK_PLAST(EL, QUAD, QUAD_U, points, K);
  quad_finish_full_matrix(QUAD, K, matrix);
}

void internal_forces(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                     const QUAD_DISPLACEMENTS& QUAD_U, std::int32_t op, const ELEM_LOADS& LOADS,
                     const MATRIX<3, 4>& local, const double* U, double* F) {
  if (isotropic(EL)) {
    FINT_QUAD_THICK_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, quad_split(EL), F, op);
  } else if (elastic(EL)) {
    FINT_QUAD_THICK_GEN(EL, QUAD, QUAD_U, LOADS, local, quad_split(EL), F, op);
  } else if (section_plastic(EL)) {
    FINT_QUAD_THICK_PLAST(EL, QUAD, QUAD_U, LOADS, local, F, op);
  } else {
    quad_layered_forces(EL, QUAD, QUAD_U, local, U, op, THICK_THEORY, F);
  }
}

void results(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
             const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, const double* U,
             double* nodes, double* points) {
  if (isotropic(EL)) {
    RES_QUAD_THICK_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, quad_split(EL), nodes, points);
  } else if (elastic(EL)) {
    RES_QUAD_THICK_GEN(EL, QUAD_U, local, quad_split(EL), nodes, points);
  } else if (section_plastic(EL)) {
    RES_QUAD_THICK_PLAST(EL, QUAD, QUAD_U, local, nodes, points);
  } else {
    quad_layered_results(EL, QUAD, QUAD_U, local, U, THICK_THEORY, nodes, points);
  }
}

void nodal_loads(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, ISOTROPIC_SECTION& ISO,
                 const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, double* F) {
  std::fill_n(F, QUAD_DOFS, 0.0);
  if (isotropic(EL)) {
    LOAD_QUAD_THICK_ISO(EL, QUAD, LOADS, F);
  } else {
    set_section(EL, QUAD, ISO, local, LOADS);
    LOAD_QUAD_THICK_GEN(EL, QUAD, LOADS, F);
  }
}

}  // namespace

void SHELL_QUAD_THICK(PLATEELEM_RECORD& EL, std::int32_t /*ident*/, std::int32_t op, const double* xyz,
                      const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, const double* /*U_TOTAL*/,
                      double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume,
                      double& weight, int& point_flag1, int& point_flag2, double& distance) {
  MATRIX<3, 4> local;
  QUADRILATERAL_GEOMETRY QUAD{};
  ISOTROPIC_SECTION ISO{};
  QUAD_DISPLACEMENTS QUAD_U;
  if (EL.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(EL, LOADS);

  switch (op) {
    case OP_STIFFNESS:
      quad_frame_and_geometry(QUAD, xyz, WITH_SIDES, local);
      set_section(EL, QUAD, ISO, local, LOADS);
      if (!elastic(EL)) {
        plastic_stiffness_matrix(EL, QUAD, QUAD_U, local, geometric, points, matrix);
      } else {
        stiffness_matrix(EL, QUAD, ISO, LOADS, local, geometric, points, matrix);
      }
      break;
    case OP_MASS: quad_mass_matrix(EL, QUAD, xyz, LOADS, matrix); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      quad_frame_and_geometry(QUAD, xyz, WITH_SIDES, local);
      set_section(EL, QUAD, ISO, local, LOADS);
      QUAD_U = quad_split_displacements(QUAD, U);
      internal_forces(EL, QUAD, ISO, QUAD_U, op, LOADS, local, U, F);
      break;
    case OP_LOADS:
      quad_frame_and_geometry(QUAD, xyz, WITHOUT_SIDES, local);
      nodal_loads(EL, QUAD, ISO, LOADS, local, F);
      break;
    case OP_RESULTS:
      quad_frame_and_geometry(QUAD, xyz, WITH_SIDES, local);
      set_section(EL, QUAD, ISO, local, LOADS);
      QUAD_U = quad_split_displacements(QUAD, U);
      results(EL, QUAD, ISO, QUAD_U, LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: quad_frame(QUAD, xyz, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      quad_frame_and_geometry(QUAD, xyz, WITHOUT_SIDES, local);
      set_section(EL, QUAD, ISO, local, LOADS);
      quad_geometric_matrix(EL, QUAD, ISO, op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: quad_area(EL, QUAD, xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: QUAD_POINT_LOCATION(QUAD, LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: QUAD_POINT_LOAD(QUAD, LOADS, xyz, 0, F); break;
    default: break;
  }
  AXES = QUAD.AXES;
}
