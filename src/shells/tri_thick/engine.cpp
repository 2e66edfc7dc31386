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

void set_section(const MATRIX<3, 3>& local, const ELEM_LOADS& LOADS) {
  if (isotropic()) {
    ISO = PLATE_D_ISOTROPIC(0, LOADS);
  } else {
    tri_store_frame(local);
    PLATE_D_GENERAL(0, 0);
    SIDE_CONST_TRI();
    if (section_plastic()) SECTION_SPECTRAL();
  }
}

void stiffness_matrix(const ELEM_LOADS& LOADS, int geometric, const double* points, double* matrix) {
  double K[TRI_PACKED];
  KSTIF_TRI_THICK_ELAS(LOADS, K);
  tri_finish_stiffness(LOADS, geometric, points, K);
  tri_finish_matrix(K, matrix);
}

void plastic_stiffness_matrix(int geometric, const double* points, double* matrix) {
  double K[TRI_DOFS * TRI_DOFS];
  if (section_plastic()) {
    KSTIF_TRI_THICK_PLAST(K);
  } else {
    tri_layered_stiffness(THICK_THEORY, K);
  }
  if (geometric == 1) KGEOM_TRI_THICK_PLAST(points, K);
  tri_finish_full_matrix(K, matrix);
}

void internal_forces(std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* F) {
  if (isotropic()) {
    FINT_TRI_THICK_ISO(LOADS, F, op);
  } else if (elastic()) {
    FINT_TRI_THICK_GEN(LOADS, F, op);
  } else if (section_plastic()) {
    FINT_TRI_THICK_PLAST(LOADS, F, op);
  } else {
    tri_layered_forces(U, op, THICK_THEORY, F);
  }
}

void results(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, const double* U, double* nodes, double* points) {
  if (isotropic()) {
    RES_TRI_THICK_ISO(LOADS, local, nodes, points);
  } else if (elastic()) {
    RES_TRI_THICK_GEN(local, nodes, points);
  } else if (section_plastic()) {
    RES_TRI_THICK_PLAST(local, nodes, points);
  } else {
    tri_layered_results(local, U, THICK_THEORY, nodes, points);
  }
}

void nodal_loads(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, double* F) {
  std::fill_n(F, TRI_DOFS, 0.0);
  if (isotropic()) {
    LOAD_TRI_THICK_ISO(LOADS, F);
  } else {
    set_section(local, LOADS);
    LOAD_TRI_THICK_GEN(LOADS, F);
  }
}

}  // namespace

void SHELL_TRI_THICK(std::int32_t /*ident*/, std::int32_t op, const double* xyz, const ELEM_LOADS& LOADS,
                     const double* U, double* F, int geometric, const double* /*U_TOTAL*/, double* matrix,
                     double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume, double& weight, int& point_flag1,
                     int& point_flag2, double& distance) {
  MATRIX<3, 3> local;
  TRIANGLE TRI{};
  ISOTROPIC_SECTION ISO{};
  TRI_DISPLACEMENTS TRI_U;
  if (PLATEELEM.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(LOADS);

  switch (op) {
    case OP_STIFFNESS:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS);
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
      set_section(local, LOADS);
      TRI_U = tri_split_displacements(U);
      internal_forces(op, LOADS, U, F);
      break;
    case OP_LOADS:
      tri_frame_and_geometry(xyz, local);
      nodal_loads(LOADS, local, F);
      break;
    case OP_RESULTS:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS);
      TRI_U = tri_split_displacements(U);
      results(LOADS, local, U, nodes, points);
      break;
    case OP_FRAME: TRI_LOCAL_FRAME(xyz, TRI, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      tri_frame_and_geometry(xyz, local);
      set_section(local, LOADS);
      tri_geometric_matrix(op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY: tri_area(xyz, LOADS, area, volume, weight); break;
    case OP_POINT_LOCATION: TRI_POINT_LOCATION(LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: TRI_POINT_LOAD(LOADS, xyz, TRI_LOAD_MODE, 0, F); break;
    default: break;
  }
  AXES = TRI.AXES;
}
