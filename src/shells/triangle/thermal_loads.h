// thermal_loads.h: nodal forces of free thermal strains, for every triangle; each theory provides its curvatures.
//
//     f = integral of  B_m^T N + B_b^T M
//
// N and M are the forces and moments that would prevent the free strains (shells/common/thermal.h).
//
// Mirror: shells/quadrilateral/thermal_loads.h.
#ifndef FINITES_TRI_THERMAL_LOADS_H
#define FINITES_TRI_THERMAL_LOADS_H

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_load.h"
#include "shells/common/surface_points.h"
#include "shells/common/thermal.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"

// f(18) += (TWO_AREA / 2) B_m^T N, element axes, of the strain tm. With N = (a, b, 0) and y2 = 0: half of a side
// difference times a or b.
inline void TRI_THERMAL_MEMBRANE_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double tm, double* f) {
  const double a = tm * (ISO.DM11 + ISO.DM12);
  const double b = tm * (ISO.DM12 + ISO.DM22);
  const VECTOR_VIEW<> F(f);
  F(1) += -TRI.Y32 * a / 2.0;
  F(2) += TRI.X32 * b / 2.0;
  F(7) += -TRI.Y13 * a / 2.0;
  F(8) += TRI.X13 * b / 2.0;
  F(14) += TRI.X21 * b / 2.0;
}

// f(18) += the forces of the strain tm of the mid surface and its difference tb through the thickness, global axes;
// curvatures(station, B) gives B (3, 9) at a station of the rule.
template <class CURVATURES>
void add_tri_thermal_iso(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                         double tm, double tb, int count, const SURFACE_STATION* rule, CURVATURES curvatures,
                         double* f) {
  const VECTOR<3> M = thermal_moments(EL, ISO, tb);
  double local[TRI_DOFS] = {};
  TRI_THERMAL_MEMBRANE_ISO(TRI, ISO, tm, local);
  MATRIX<3, 9> B_b;
  for (int p = 0; p < count; ++p) {
    curvatures(rule[p], B_b);
    add_forces(B_b, M, rule[p].weight * TRI.TWO_AREA, TRI_BENDING_DOF, local);
  }
  add_turned(TRI.AXES, TRI_GROUPS, local, f);
}

// The same for the general section; curvatures(point, B). Here N and M have a third component, which turned material
// axes give them.
template <class CURVATURES>
void add_tri_thermal_general(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, int count, CURVATURES curvatures,
                             double* f) {
  const VECTOR<3> N = general_thermal_forces(EL);
  const VECTOR<3> M = general_thermal_moments(EL);
  double local[TRI_DOFS] = {};
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  for (int point = 1; point <= count; ++point) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, point, 3, EL.LOCAL_XYZ.data());
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
    curvatures(s, B_b);
    add_forces(B_m, N, s.weight * s.detj, TRI_MEMBRANE_DOF, local);
    add_forces(B_b, M, s.weight * s.detj, TRI_BENDING_DOF, local);
  }
  add_turned(TRI.AXES, TRI_GROUPS, local, f);
}

#endif
