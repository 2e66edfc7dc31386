// loads.cpp: equivalent nodal loads of the thick triangle.
#include "shells/tri_thick/loads.h"

#include "element_calls/gauss_int_2d.h"
#include "shared_records.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_load.h"
#include "shells/common/thermal.h"
#include "shells/tri_thick/bending.h"
#include "shells/tri_thick/side_constants.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/membrane.h"

namespace {

void add_thermal_iso(double tm, double tb, double* f) {
  const VECTOR<3> M = thermal_moments(tb);
  double local[TRI_DOFS] = {};
  TRI_THERMAL_MEMBRANE_ISO(tm, local);
  MATRIX<3, 9> B_b;
  for (const SURFACE_STATION& s : TRI_RULE_FOUR) {
    B_BEND_TRI_ISO(s.xi, s.eta, TRI_SIDES.A_DELTA, B_b);
    add_forces(B_b, M, s.weight * TRI.TWO_AREA, TRI_BENDING_DOF, local);
  }
  add_turned(TRI.AXES, TRI_GROUPS, local, f);
}

void add_thermal_general(double* f) {
  const VECTOR<3> N = general_thermal_forces();
  const VECTOR<3> M = general_thermal_moments();
  double local[TRI_DOFS] = {};
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  for (int point = 1; point <= TRI_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, point, 3, PLATEELEM.LOCAL_XYZ.data());
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
    B_BEND_TRI(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B_b);
    add_forces(B_m, N, s.weight * s.detj, TRI_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * s.detj, TRI_BENDING_DOF, local);
  }
  add_turned(TRI.AXES, TRI_GROUPS, local, f);
}

}  // namespace

void LOAD_TRI_THICK_ISO(const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_ISO(LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, f, TRI_LOAD_MODE);
  const double tm = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  PLATE_D_ISOTROPIC(0, LOADS);
  SIDE_CONST_TRI_ISO(LOADS);
  add_thermal_iso(tm, tb, f);
}

void LOAD_TRI_THICK_GEN(const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_GENERAL(LOADS, TRI_RULE_COUNT, f, TRI_LOAD_MODE);
  if (has_thermal_strains()) add_thermal_general(f);
}
