// loads.cpp: equivalent nodal loads of the thin triangle: surface loads and temperature.
//
//     tm = ALPHA1 LOADS(LOAD_TEMPERATURE),    tb = ALPHA1 LOADS(LOAD_TEMPERATURE_DIFF)
//
//     f = surface loads (triangle/loads.cpp) + integral of  B_m^T N(tm) + B_b^T M(tb)  (triangle/thermal_loads.h)
//
// A membrane has no moments; its curvatures are those of the bending kernel, with DB = 0.
//
// Mirror: shells/quadrilateral/thin/loads.cpp.
#include "shells/triangle/thin/loads.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/surface_load.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/thermal_loads.h"
#include "shells/triangle/thin/bending.h"

void TRI_LOADS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                   const SURFACE_STATION* rule, double* f, int mode, int membrane_only) {
  TRI_SURFACE_LOADS_ISO(EL, TRI, LOADS, count, rule, f, mode);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm != 0.0 || tb != 0.0) {
    const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(EL, membrane_only, LOADS);
    TRI_THERMAL_ISO(EL, TRI, ISO, tm, tb, count, rule, f);
  }
  if (membrane_only == 1) clear_rotations(3, f);
}

void TRI_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                       double* f, int mode, int membrane_only) {
  TRI_SURFACE_LOADS_GENERAL(EL, TRI, LOADS, count, f, mode);
  if (has_thermal_strains(EL)) TRI_THERMAL_GENERAL(EL, TRI, count, f);
  if (membrane_only == 1) clear_rotations(3, f);
}

void TRI_THERMAL_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double tm,
                     double tb, int count, const SURFACE_STATION* rule, double* f) {
  const auto curvatures = [&](const SURFACE_STATION& s, MATRIX<3, 9>& B) { DKT_BMATRIX_STORED(TRI, s.xi, s.eta, B); };
  add_tri_thermal_iso(EL, TRI, ISO, tm, tb, count, rule, curvatures, f);
}

void TRI_THERMAL_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, int count, double* f) {
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 9>& B) {
    DKT_BMATRIX(TRI, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  };
  add_tri_thermal_general(EL, TRI, count, curvatures, f);
}
