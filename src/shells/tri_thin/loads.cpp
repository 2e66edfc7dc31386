// loads.cpp: equivalent nodal loads of the thin triangle: linear in the plane, the cubic functions of its mass across
// it.
#include "shells/tri_thin/loads.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/surface_load.h"
#include "shells/tri_thin/bending.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/shape.h"
#include "shells/tri_thin/thermal_loads.h"

namespace {

// A third of the load to the translations of each node, in the axes of q.
void lump_load(const VECTOR<3>& q, double two_area, int components, double* f) {
  for (int n = 0; n < 3; ++n) {
    for (int i = 0; i < components; ++i) f[6 * n + i] += q(i + 1) * two_area / 6.0;
  }
}

// The part of both forms that is not thermal: `point(p)` gives natural coordinates and weight of the point p.
template <class POINTS>
void add_surface_load(const TRIANGLE_GEOMETRY& TRI, const VECTOR<3>& q_g, double two_area, const VECTOR<4>& c,
                      int count, POINTS point, int mode, double* f) {
  if (mode == LUMPED_LOADS) {
    lump_load(q_g, two_area, 3, f);
    return;
  }
  const VECTOR<3> q = to_local(TRI.AXES, q_g);
  double local[TRI_DOFS] = {};
  lump_load(q, two_area, 2, local);
  VECTOR<9> a;
  for (int p = 1; p <= count; ++p) {
    const SURFACE_STATION s = point(p);
    TRI_W_SHAPE(s.xi, s.eta, a);
    TRI_W_LOAD(a, c, s.weight * two_area * q(3), local);
  }
  add_turned(TRI.AXES, TRI_GROUPS, local, f);
}

}  // namespace

void TRI_SURFACE_LOADS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                           const SURFACE_STATION* rule, double* f, int mode) {
  const VECTOR<4> c = rotation_coefficients(TRI.G11, TRI.G12, TRI.G21, TRI.G22, TRI.TWO_AREA);
  const auto point = [rule](int p) { return rule[p - 1]; };
  add_surface_load(TRI, surface_load(EL, LOADS, TRI.AXES), TRI.TWO_AREA, c, count, point, mode, f);
}

void TRI_SURFACE_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS,
                               int count, double* f, int mode) {
  const SURFACE_POINT s = surface_point(RULE_FULL, 1, 3, EL.LOCAL_XYZ.data());
  const VECTOR<4> c = rotation_coefficients(s.g11, s.g12, s.g21, s.g22, s.detj);
  const auto point = [&](int p) {
    const SURFACE_POINT at = surface_point(RULE_ELEMENT, p, 3, EL.LOCAL_XYZ.data());
    return SURFACE_STATION{at.xi, at.eta, at.weight};
  };
  add_surface_load(TRI, surface_load(EL, LOADS, TRI.AXES), s.detj, c, count, point, mode, f);
}

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
