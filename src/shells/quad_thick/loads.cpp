// loads.cpp: equivalent nodal loads of the thick quadrilateral.
#include "shells/quad_thick/loads.h"

#include "element_calls/gauss_int_2d.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/quad_thick/bending.h"
#include "shells/quad_thick/side_constants.h"
#include "shells/quad_thin/loads.h"
#include "shells/quad_thin/thermal_loads.h"

void LOAD_QUAD_THICK_ISO(const ELEM_LOADS& LOADS, double* f) {
  QUAD_SURFACE_LOADS_ISO(LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, f);
  const double tm = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(0, LOADS);
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(LOADS);
  const auto curvatures = [&](const QUAD_POINT& J, const SURFACE_STATION& s, MATRIX<3, 12>& B) {
    B_BEND_QUAD_ISO(J, s.xi, s.eta, B);
  };
  add_quad_thermal_iso(tm, tb, QUAD_RULE_COUNT, QUAD_RULE_FULL, curvatures, f);
}

void LOAD_QUAD_THICK_GEN(const ELEM_LOADS& LOADS, double* f) {
  QUAD_SURFACE_LOADS_GENERAL(LOADS, QUAD_RULE_COUNT, f);
  if (!has_thermal_strains()) return;
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 12>& B) {
    B_BEND_QUAD(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  };
  add_quad_thermal_general(QUAD_RULE_COUNT, curvatures, f);
}
