// loads.cpp: equivalent nodal loads of the thick triangle.
#include "shells/tri_thick/loads.h"

#include "element_calls/gauss_int_2d.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/tri_thick/bending.h"
#include "shells/tri_thick/side_constants.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/thermal_loads.h"

void LOAD_TRI_THICK_ISO(const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_ISO(LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, f, TRI_LOAD_MODE);
  const double tm = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(0, LOADS);
  const TRIANGLE_SIDES TRI_SIDES = SIDE_CONST_TRI_ISO(LOADS);
  const auto curvatures = [&](const SURFACE_STATION& s, MATRIX<3, 9>& B) {
    B_BEND_TRI_ISO(s.xi, s.eta, TRI_SIDES.A_DELTA, B);
  };
  add_tri_thermal_iso(tm, tb, TRI_RULE_COUNT, TRI_RULE_FOUR, curvatures, f);
}

void LOAD_TRI_THICK_GEN(const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_GENERAL(LOADS, TRI_RULE_COUNT, f, TRI_LOAD_MODE);
  if (!has_thermal_strains()) return;
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 9>& B) {
    B_BEND_TRI(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B);
  };
  add_tri_thermal_general(TRI_RULE_COUNT, curvatures, f);
}
