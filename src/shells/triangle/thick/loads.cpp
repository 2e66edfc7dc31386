// loads.cpp: equivalent nodal loads of the thick triangle: surface loads and temperature.
//
//     tm = ALPHA1 LOADS(LOAD_TEMPERATURE),    tb = ALPHA1 LOADS(LOAD_TEMPERATURE_DIFF)
//
//     f = surface loads (triangle/loads.cpp) + integral of  B_m^T N(tm) + B_b^T M(tb)  (triangle/thermal_loads.h)
//
// Mirror: shells/quadrilateral/thick/loads.cpp.
#include "shells/triangle/thick/loads.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/thermal_loads.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/side_constants.h"

void LOAD_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_ISO(EL, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, f, TRI_LOAD_MODE);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm == 0.0 && tb == 0.0) return;
  const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(EL, 0, LOADS);
  const TRIANGLE_SIDES TRI_SIDES = SIDE_CONST_TRI_ISO(EL, TRI, LOADS);
  const auto curvatures = [&](const SURFACE_STATION& s, MATRIX<3, 9>& B) {
    B_BEND_TRI_ISO(TRI, TRI_SIDES, s.xi, s.eta, TRI_SIDES.A_DELTA, B);
  };
  add_tri_thermal_iso(EL, TRI, ISO, tm, tb, TRI_RULE_COUNT, TRI_RULE_FOUR, curvatures, f);
}

void LOAD_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, double* f) {
  TRI_SURFACE_LOADS_GENERAL(EL, TRI, LOADS, TRI_RULE_COUNT, f, TRI_LOAD_MODE);
  if (!has_thermal_strains(EL)) return;
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 9>& B) {
    B_BEND_TRI(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B);
  };
  add_tri_thermal_general(EL, TRI, TRI_RULE_COUNT, curvatures, f);
}
