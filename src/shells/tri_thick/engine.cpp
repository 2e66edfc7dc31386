// engine.cpp: SHELL_TRI_THICK: the thin triangle with discrete Kirchhoff-Mindlin bending and transverse shear. Frame,
// membrane, drilling, mass, geometric stiffness, surface and point loads are the thin triangle's.
#include "shells/tri_thick/engine.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/tri_thick/forces.h"
#include "shells/tri_thick/loads.h"
#include "shells/tri_thick/plastic.h"
#include "shells/tri_thick/results.h"
#include "shells/tri_thick/side_constants.h"
#include "shells/tri_thick/stiffness.h"
#include "shells/tri_thin/engine_steps.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/point_operations.h"
#include "shells/tri_thin/stiffness.h"

namespace {

void set_section(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, ISOTROPIC_SECTION& ISO, const MATRIX<3, 3>& local,
                 const ELEM_LOADS& LOADS) {
  if (isotropic(EL)) {
    ISO = PLATE_D_ISOTROPIC(EL, 0, LOADS);
  } else {
    tri_store_frame(EL, TRI, local);
    PLATE_D_GENERAL(EL, 0, 0);
    SIDE_CONST_TRI(EL);
    if (section_plastic(EL)) SECTION_SPECTRAL(EL);
  }
}

void stiffness_matrix(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                      const ELEM_LOADS& LOADS, int geometric, const double* points, double* matrix) {
  double K[TRI_PACKED];
  KSTIF_TRI_THICK_ELAS(EL, TRI, ISO, LOADS, K);
  tri_finish_stiffness(EL, TRI, ISO, LOADS, geometric, points, K);
  tri_finish_matrix(TRI, K, matrix);
}

void plastic_stiffness_matrix(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                              int geometric, const double* points, double* matrix) {
  double K[TRI_DOFS * TRI_DOFS];
  if (section_plastic(EL)) {
    KSTIF_TRI_THICK_PLAST(EL, TRI, TRI_U, K);
  } else {
    tri_layered_stiffness(EL, TRI, TRI_U, THICK_THEORY, K);
  }
  if (geometric == 1) KGEOM_TRI_THICK_PLAST(EL, TRI, TRI_U, points, K);
  tri_finish_full_matrix(TRI, K, matrix);
}

void internal_forces(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                     const TRI_DISPLACEMENTS& TRI_U, std::int32_t op, const ELEM_LOADS& LOADS, const double* U,
                     double* F) {
  if (isotropic(EL)) {
    FINT_TRI_THICK_ISO(EL, TRI, ISO, TRI_U, LOADS, F, op);
  } else if (elastic(EL)) {
    FINT_TRI_THICK_GEN(EL, TRI, TRI_U, LOADS, F, op);
  } else if (section_plastic(EL)) {
    FINT_TRI_THICK_PLAST(EL, TRI, TRI_U, LOADS, F, op);
  } else {
    tri_layered_forces(EL, TRI, TRI_U, U, op, THICK_THEORY, F);
  }
}

void results(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
             const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, const double* U,
             double* nodes, double* points) {
  if (isotropic(EL)) {
    RES_TRI_THICK_ISO(EL, TRI, ISO, TRI_U, LOADS, local, nodes, points);
  } else if (elastic(EL)) {
    RES_TRI_THICK_GEN(EL, TRI_U, local, nodes, points);
  } else if (section_plastic(EL)) {
    RES_TRI_THICK_PLAST(EL, TRI, TRI_U, local, nodes, points);
  } else {
    tri_layered_results(EL, TRI, TRI_U, local, U, THICK_THEORY, nodes, points);
  }
}

void nodal_loads(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS,
                 const MATRIX<3, 3>& local, double* F) {
  std::fill_n(F, TRI_DOFS, 0.0);
  if (isotropic(EL)) {
    LOAD_TRI_THICK_ISO(EL, TRI, LOADS, F);
  } else {
    set_section(EL, TRI, ISO, local, LOADS);
    LOAD_TRI_THICK_GEN(EL, TRI, LOADS, F);
  }
}

}  // namespace

void SHELL_TRI_THICK(PLATEELEM_RECORD& EL, std::int32_t /*ident*/, std::int32_t op, const double* xyz,
                     const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, const double* /*U_TOTAL*/,
                     double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume,
                     double& weight, int& point_flag1, int& point_flag2, double& distance) {
  MATRIX<3, 3> local;
  TRIANGLE_GEOMETRY TRI{};
  ISOTROPIC_SECTION ISO{};
  TRI_DISPLACEMENTS TRI_U;
  if (EL.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(EL, LOADS);

  switch (op) {
    case OP_STIFFNESS:
      tri_frame_and_geometry(TRI, xyz, local);
      set_section(EL, TRI, ISO, local, LOADS);
      if (!elastic(EL)) {
        plastic_stiffness_matrix(EL, TRI, TRI_U, geometric, points, matrix);
      } else {
        stiffness_matrix(EL, TRI, ISO, LOADS, geometric, points, matrix);
      }
      break;
    case OP_MASS: tri_mass_matrix(EL, TRI, xyz, LOADS, matrix); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      tri_frame_and_geometry(TRI, xyz, local);
      set_section(EL, TRI, ISO, local, LOADS);
      TRI_U = tri_split_displacements(TRI, U);
      internal_forces(EL, TRI, ISO, TRI_U, op, LOADS, U, F);
      break;
    case OP_LOADS:
      tri_frame_and_geometry(TRI, xyz, local);
      nodal_loads(EL, TRI, ISO, LOADS, local, F);
      break;
    case OP_RESULTS:
      tri_frame_and_geometry(TRI, xyz, local);
      set_section(EL, TRI, ISO, local, LOADS);
      TRI_U = tri_split_displacements(TRI, U);
      results(EL, TRI, ISO, TRI_U, LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: TRI_LOCAL_FRAME(xyz, TRI, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      tri_frame_and_geometry(TRI, xyz, local);
      set_section(EL, TRI, ISO, local, LOADS);
      tri_geometric_matrix(EL, TRI, ISO, op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: tri_area(EL, TRI, xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: TRI_POINT_LOCATION(TRI, LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: TRI_POINT_LOAD(TRI, LOADS, xyz, TRI_LOAD_MODE, 0, F); break;
    default: break;
  }
  AXES = TRI.AXES;
}
