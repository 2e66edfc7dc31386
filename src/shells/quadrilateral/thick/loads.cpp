// loads.cpp: equivalent nodal loads of the thick quadrilateral: surface loads and temperature.
//
//     tm = ALPHA1 LOADS(LOAD_TEMPERATURE),    tb = ALPHA1 LOADS(LOAD_TEMPERATURE_DIFF)
//
//     f = surface loads (quadrilateral/loads.cpp) + sum_p  (B_m^T N(tm) + B_b^T M(tb)) w DET  (thermal_loads.h)
//
// Mirror: shells/triangle/thick/loads.cpp.
#include "shells/quadrilateral/thick/loads.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/loads.h"
#include "shells/quadrilateral/thermal_loads.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/side_constants.h"

void LOAD_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                         double* f) {
  QUAD_SURFACE_LOADS_ISO(EL, QUAD, LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, f);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(EL, 0, LOADS);
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(EL, QUAD, LOADS);
  const auto curvatures = [&](const QUAD_POINT& J, const SURFACE_STATION& s, MATRIX<3, 12>& B) {
    B_BEND_QUAD_ISO(QUAD_SIDES, J, s.xi, s.eta, B);
  };
  add_quad_thermal_iso(EL, QUAD, ISO, tm, tb, QUAD_RULE_COUNT, QUAD_RULE_FULL, curvatures, f);
}

void LOAD_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                         double* f) {
  QUAD_SURFACE_LOADS_GENERAL(EL, QUAD, LOADS, QUAD_RULE_COUNT, f);
  if (!has_thermal_strains(EL)) return;
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 12>& B) {
    B_BEND_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  };
  add_quad_thermal_general(EL, QUAD, QUAD_RULE_COUNT, curvatures, f);
}
