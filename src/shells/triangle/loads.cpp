// loads.cpp: equivalent nodal loads of a triangle: linear functions in the plane, the cubic functions of its mass
// across it.
//
//     f(u_i) = q(1) TWO_AREA / 6,    f(v_i) = q(2) TWO_AREA / 6                  a third of the load, A / 3
//     f(w, theta x, theta y of i) = sum_p  q(3) w TWO_AREA (functions of i)      TRI_W_SHAPE, TRI_W_LOAD
//
// q is the load per area in element axes.
//
// Mirror: shells/quadrilateral/loads.cpp.
#include "shells/triangle/loads.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/surface_load.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/shape.h"
#include "shells/triangle/thermal_loads.h"

namespace {

// A third of the load on the translations of each node, in the axes of q: q A / 3 = q TWO_AREA / 6.
void lump_load(const VECTOR<3>& q, double two_area, int components, double* f) {
  for (int n = 0; n < 3; ++n) {
    for (int i = 0; i < components; ++i) f[6 * n + i] += q(i + 1) * two_area / 6.0;
  }
}

// The part of both forms that is not thermal: `point(p)` gives natural coordinates and weight of the point p. q_g is
// the load per area in global axes, c the rotation coefficients.
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
