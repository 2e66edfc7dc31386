// loads.cpp: equivalent nodal loads of the thick quadrilateral.
#include "shells/quad_thick/loads.h"

#include "element_calls/gauss_int_2d.h"
#include "shared_records.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_load.h"
#include "shells/common/thermal.h"
#include "shells/quad_thick/bending.h"
#include "shells/quad_thick/side_constants.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/loads.h"
#include "shells/quad_thin/membrane.h"

namespace {

void add_thermal_iso(double tm, double tb, double* f) {
  const VECTOR<3> N = thermal_forces(tm);
  const VECTOR<3> M = thermal_moments(tb);
  double local[QUAD_DOFS] = {};
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    QUAD_JACOBIAN(s.xi, s.eta);
    QUAD_B_MEMBRANE_STORED(s.xi, s.eta, B_m);
    B_BEND_QUAD_ISO(s.xi, s.eta, B_b);
    add_forces(B_m, N, s.weight * QUAD.QDET, QUAD_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * QUAD.QDET, QUAD_BENDING_DOF, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}

void add_thermal_general(double* f) {
  const VECTOR<3> N = general_thermal_forces();
  const VECTOR<3> M = general_thermal_moments();
  double local[QUAD_DOFS] = {};
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  for (int point = 1; point <= QUAD_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, PLATEELEM.LOCAL_XYZ_QUAD.data());
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_m);
    B_BEND_QUAD(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
    add_forces(B_m, N, s.weight * s.detj, QUAD_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * s.detj, QUAD_BENDING_DOF, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}

}  // namespace

void LOAD_QUAD_THICK_ISO(const ELEM_LOADS& LOADS, double* f) {
  QUAD_SURFACE_LOADS_ISO(LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, f);
  const double tm = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  PLATE_D_ISOTROPIC(0, LOADS);
  SIDE_CONST_QUAD_ISO(LOADS);
  add_thermal_iso(tm, tb, f);
}

void LOAD_QUAD_THICK_GEN(const ELEM_LOADS& LOADS, double* f) {
  QUAD_SURFACE_LOADS_GENERAL(LOADS, QUAD_RULE_COUNT, f);
  if (has_thermal_strains()) add_thermal_general(f);
}
