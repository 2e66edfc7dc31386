// loads.cpp: equivalent nodal loads of the thin quadrilateral: surface loads and temperature.
//
//     tm = ALPHA1 LOADS(LOAD_TEMPERATURE),    tb = ALPHA1 LOADS(LOAD_TEMPERATURE_DIFF)
//
//     f = surface loads (quadrilateral/loads.cpp) + sum_p  (B_m^T N(tm) + B_b^T M(tb)) w DET  (thermal_loads.h)
//
// A membrane has no moments; its curvatures are those of the bending kernel, with DB = 0. The curvatures need the side
// coefficients, which operation 4 does not compute otherwise.
//
// Mirror: shells/triangle/thin/loads.cpp.
#include "shells/quadrilateral/thin/loads.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/surface_load.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/loads.h"
#include "shells/quadrilateral/thermal_loads.h"
#include "shells/quadrilateral/thin/bending.h"

void QUAD_LOADS_ISO(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                    const MATRIX<3, 4>& local, int count, const SURFACE_STATION* rule, double* f, int membrane_only) {
  QUAD_SURFACE_LOADS_ISO(EL, QUAD, LOADS, count, rule, f);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  if (tm != 0.0 || tb != 0.0) {
    const ISOTROPIC_SECTION ISO = PLATE_D_ISOTROPIC(EL, membrane_only, LOADS);
    QUAD_GEOMETRY(local, WITH_SIDES, QUAD);
    QUAD_THERMAL_ISO(EL, QUAD, ISO, tm, tb, count, rule, f);
  }
  if (membrane_only == 1) clear_rotations(4, f);
}

void QUAD_LOADS_GENERAL(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                        const MATRIX<3, 4>& local, int count, double* f, int membrane_only) {
  QUAD_SURFACE_LOADS_GENERAL(EL, QUAD, LOADS, count, f);
  if (has_thermal_strains(EL)) {
    QUAD_GEOMETRY(local, WITH_SIDES, QUAD);
    QUAD_THERMAL_GENERAL(EL, QUAD, count, f);
  }
  if (membrane_only == 1) clear_rotations(4, f);
}

void QUAD_THERMAL_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                      double tm, double tb, int count, const SURFACE_STATION* rule, double* f) {
  const auto curvatures = [&](const QUAD_POINT& J, const SURFACE_STATION& s, MATRIX<3, 12>& B) {
    DKQ_BMATRIX_STORED(QUAD, J, s.xi, s.eta, B);
  };
  add_quad_thermal_iso(EL, QUAD, ISO, tm, tb, count, rule, curvatures, f);
}

void QUAD_THERMAL_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int count, double* f) {
  const auto curvatures = [&](const SURFACE_POINT& s, MATRIX<3, 12>& B) {
    DKQ_BMATRIX(QUAD, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  };
  add_quad_thermal_general(EL, QUAD, count, curvatures, f);
}
