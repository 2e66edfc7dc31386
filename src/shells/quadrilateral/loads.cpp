// loads.cpp: equivalent nodal loads of a quadrilateral: bilinear functions in the plane, Hermitian functions across it.
//
//     f(u_i) = sum_p  q(1) N_i w DET,    f(v_i) = sum_p  q(2) N_i w DET
//     f(w, theta x, theta y of i) = sum_p  q(3) w DET (functions of i)           QUAD_W_SHAPE, QUAD_W_LOAD
//
// q is the load per area in element axes.
//
// Mirror: shells/triangle/loads.cpp.
#include "shells/quadrilateral/loads.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/surface_load.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/shape.h"
#include "shells/quadrilateral/thermal_loads.h"

namespace {

// The part of one point: q in element axes, c the rotation coefficients, a = w DET the area of the point, local the
// nodal loads in element axes.
void add_point(const VECTOR<3>& q, double xi, double eta, const VECTOR<4>& c, double a, double* local) {
  const VECTOR<4> N = bilinear(xi, eta);
  VECTOR<12> w;
  QUAD_W_SHAPE(xi, eta, w);
  QUAD_W_LOAD(w, c, a * q(3), local);
  for (int n = 1; n <= 4; ++n) {
    local[6 * n - 6] += q(1) * a * N(n);
    local[6 * n - 5] += q(2) * a * N(n);
  }
}

}  // namespace

void QUAD_SURFACE_LOADS_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                            int count, const SURFACE_STATION* rule, double* f) {
  const VECTOR<3> q = to_local(QUAD.AXES, surface_load(EL, LOADS, QUAD.AXES));
  double local[QUAD_DOFS] = {};
  for (int p = 0; p < count; ++p) {
    const SURFACE_STATION s = rule[p];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const VECTOR<4> c = rotation_coefficients(J.G11, J.G12, J.G21, J.G22, J.DET);
    add_point(q, s.xi, s.eta, c, s.weight * J.DET, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}

void QUAD_SURFACE_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                                int count, double* f) {
  const VECTOR<3> q = to_local(QUAD.AXES, surface_load(EL, LOADS, QUAD.AXES));
  double local[QUAD_DOFS] = {};
  for (int p = 1; p <= count; ++p) {
    const SURFACE_POINT s = surface_point(RULE_FULL, p, 4, EL.LOCAL_XYZ_QUAD.data());
    const VECTOR<4> c = rotation_coefficients(s.g11, s.g12, s.g21, s.g22, s.detj);
    add_point(q, s.xi, s.eta, c, s.weight * s.detj, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}
