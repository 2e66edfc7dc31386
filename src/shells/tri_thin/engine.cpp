// engine.cpp: SHELL_TRI_THIN: a flat facet of three nodes: constant strain membrane, discrete Kirchhoff bending and a
// small stiffness on the drilling rotations.
#include "shells/tri_thin/engine.h"

#include <algorithm>

#include "operations.h"
#include "plate_results/res_record.h"
#include "shared_records.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometric_stiffness.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/mass.h"
#include "shells/tri_thin/point_operations.h"
#include "shells/tri_thin/results.h"
#include "shells/tri_thin/stiffness.h"

namespace {

bool isotropic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC; }

// Stiffness, forces and results have no kernels for the plastic behaviours in this engine: their stiffness is zero,
// their forces and records stay cleared. The other operations treat them as general.
bool elastic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC || PLATEELEM.MAT_BEHAV == BEHAV_GENERAL; }

// Thermal strains of the general behaviour, in element axes: ORTHO_ANGLE does not turn them.
void set_thermal_strains(const ELEM_LOADS& LOADS) {
  PLATEELEM.THERMAL_M1 = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  PLATEELEM.THERMAL_M2 = PLATEELEM.ALPHA2 * LOADS(LOAD_TEMPERATURE);
  PLATEELEM.THERMAL_B1 = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  PLATEELEM.THERMAL_B2 = PLATEELEM.ALPHA2 * LOADS(LOAD_TEMPERATURE_DIFF);
}

void frame_and_geometry(const double* xyz, MATRIX<3, 3>& local) {
  TRI_LOCAL_FRAME(xyz, local);
  TRI_GEOMETRY(local);
}

// What the kernels that go through GAUSS_INT_2D read beside the section.
void store_frame(const MATRIX<3, 3>& local) {
  PLATEELEM.AXES = TRI.AXES;
  PLATEELEM.LOCAL_XYZ = local;
}

void set_section(const MATRIX<3, 3>& local, const ELEM_LOADS& LOADS, int membrane_only) {
  if (isotropic()) {
    PLATE_D_ISOTROPIC(membrane_only, LOADS);
  } else {
    store_frame(local);
    PLATE_D_GENERAL(0, membrane_only);
  }
}

void split_displacements(const double* U) {
  double ul[TRI_DOFS];
  TRI_DISP_LOCAL(U, ul);
  TRI_DISP_SPLIT(ul);
}

void finish_matrix(double* K, double* matrix) {
  TRI_TO_GLOBAL_PACKED(K);
  UNPACK_SYMMETRIC(TRI_DOFS, TRI_PACKED, K, matrix);
}

void geometric_stiffness(std::int32_t op, const ELEM_LOADS& LOADS, const double* ul, double* points, double factor,
                         double* K) {
  if (isotropic()) {
    TRI_KG_ISO(op, LOADS, ul, points, factor, K);
  } else {
    TRI_KG_GENERAL(op, ul, points, factor, K);
  }
}

void stiffness_matrix(const ELEM_LOADS& LOADS, int geometric, double* points, double* matrix) {
  double K[TRI_PACKED] = {};
  if (elastic()) {
    TRI_STIFFNESS(K);
    if (LOADS(LOAD_FOUNDATION) != 0.0) TRI_FOUNDATION(LOADS(LOAD_FOUNDATION), K);
    if (geometric == 1) {
      double KG[TRI_PACKED];
      geometric_stiffness(OP_STIFFNESS, LOADS, nullptr, points, 1.0, KG);
      TRI_ADD_GEOMETRIC(KG, K);
    }
  }
  finish_matrix(K, matrix);
}

void mass_matrix(double density, double* matrix) {
  double M[TRI_PACKED];
  TRI_MASS(density * PLATEELEM.THICKNESS, M);
  finish_matrix(M, matrix);
}

void geometric_matrix(std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* points, double* matrix) {
  double K[TRI_PACKED] = {};
  double ul[TRI_DOFS] = {};
  if (op == OP_GEOMETRIC) {
    TRI_DISP_LOCAL(U, ul);
    std::fill_n(points, RES_VALUES, 0.0);
  }
  geometric_stiffness(op, LOADS, ul, points, -1.0, K);
  finish_matrix(K, matrix);
}

void internal_forces(std::int32_t op, const ELEM_LOADS& LOADS, double* F) {
  if (isotropic()) {
    TRI_FORCES_ISO(LOADS, F, TRI_RULE_COUNT, TRI_RULE_FOUR, op);
  } else if (elastic()) {
    TRI_FORCES_GENERAL(LOADS, F, TRI_RULE_COUNT, op);
  }
}

void results(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, double* nodes, double* points) {
  if (isotropic()) {
    TRI_RESULTS_ISO(LOADS, local, TRI_RULE_COUNT, TRI_RULE_FOUR, nodes, points);
  } else if (elastic()) {
    TRI_RESULTS_GENERAL(local, TRI_RULE_COUNT, nodes, points);
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
                    double* matrix, double* nodes, double* points, double& area, double& volume, double& weight,
                    int& point_flag1, int& point_flag2, double& distance) {
  MATRIX<3, 3> local;
  TRI.AXES = MATRIX<3, 3>{};
  if (PLATEELEM.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(LOADS);

  switch (op) {
    case OP_STIFFNESS:
      frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      stiffness_matrix(LOADS, geometric, points, matrix);
      break;
    case OP_MASS:
      if (LOADS(LOAD_DENSITY) == 0.0) {
        std::fill_n(matrix, TRI_DOFS * TRI_DOFS, 0.0);
        break;
      }
      frame_and_geometry(xyz, local);
      mass_matrix(LOADS(LOAD_DENSITY), matrix);
      break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      split_displacements(U);
      internal_forces(op, LOADS, F);
      break;
    case OP_LOADS:
      frame_and_geometry(xyz, local);
      nodal_loads(LOADS, local, membrane_only, F);
      break;
    case OP_RESULTS:
      frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      split_displacements(U);
      results(LOADS, local, nodes, points);
      break;
    case OP_FRAME: TRI_LOCAL_FRAME(xyz, local); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      frame_and_geometry(xyz, local);
      set_section(local, LOADS, membrane_only);
      geometric_matrix(op, LOADS, U, points, matrix);
      break;
    case OP_GEOMETRY:
      frame_and_geometry(xyz, local);
      area = TRI.TWO_AREA / 2.0;
      volume = area * PLATEELEM.THICKNESS;
      weight = volume * LOADS(LOAD_DENSITY);
      break;
    case OP_POINT_LOCATION: TRI_POINT_LOCATION(LOADS, xyz, point_flag1, point_flag2, distance); break;
    case OP_POINT_LOAD: TRI_POINT_LOAD(LOADS, xyz, TRI_LOAD_MODE, membrane_only, F); break;
    default: break;
  }
}
