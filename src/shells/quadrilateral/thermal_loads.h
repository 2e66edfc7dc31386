// thermal_loads.h: nodal forces of free thermal strains, for every quadrilateral; each theory provides its curvatures.
//
//     f = sum_p  (B_m^T N + B_b^T M) w DET
//
// N and M are the forces and moments that would prevent the free strains (shells/common/thermal.h).
//
// Mirror: shells/triangle/thermal_loads.h.
#ifndef FINITES_QUAD_THERMAL_LOADS_H
#define FINITES_QUAD_THERMAL_LOADS_H

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_load.h"
#include "shells/common/surface_points.h"
#include "shells/common/thermal.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"

// f(24) += the forces of the strain tm of the mid surface and its difference tb through the thickness, global axes;
// curvatures(J, station, B) gives B (3, 12) at a station of the rule, with the Jacobian there.
template <class CURVATURES>
void add_quad_thermal_iso(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                          double tm, double tb, int count, const SURFACE_STATION* rule, CURVATURES curvatures,
                          double* f) {
  const VECTOR<3> N = thermal_forces(ISO, tm);
  const VECTOR<3> M = thermal_moments(EL, ISO, tb);
  double local[QUAD_DOFS] = {};
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  for (int p = 0; p < count; ++p) {
    const SURFACE_STATION s = rule[p];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    QUAD_B_MEMBRANE_STORED(J, s.xi, s.eta, B_m);
    curvatures(J, s, B_b);
    add_forces(B_m, N, s.weight * J.DET, QUAD_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * J.DET, QUAD_BENDING_DOF, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}

// The same for the general section; curvatures(point, B). Here N and M have a third component, which turned material
// axes give them.
template <class CURVATURES>
void add_quad_thermal_general(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int count,
                              CURVATURES curvatures, double* f) {
  const VECTOR<3> N = general_thermal_forces(EL);
  const VECTOR<3> M = general_thermal_moments(EL);
  double local[QUAD_DOFS] = {};
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  for (int point = 1; point <= count; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, EL.LOCAL_XYZ_QUAD.data());
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_m);
    curvatures(s, B_b);
    add_forces(B_m, N, s.weight * s.detj, QUAD_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * s.detj, QUAD_BENDING_DOF, local);
  }
  add_turned(QUAD.AXES, QUAD_GROUPS, local, f);
}

#endif
