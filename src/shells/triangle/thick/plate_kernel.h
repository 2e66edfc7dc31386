// plate_kernel.h: the thick triangle for the plastic models: B.m the membrane, B.p the curvatures and transverse shears
// of the discrete Kirchhoff-Mindlin triangle, at the four points of the element (shells/common/plate_matrices.h).
//
// Mirror: shells/quadrilateral/thick/plate_kernel.h.
#ifndef FINITES_TRI_THICK_PLATE_KERNEL_H
#define FINITES_TRI_THICK_PLATE_KERNEL_H

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_results/extrapolation.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/slopes.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/shear.h"

struct TRI_THICK_PLATE {
  static constexpr int NODES = 3, WIDTH = 8, MEMBRANE = 6, PLATE = 9;
  static constexpr const int (&MEMBRANE_DOF)[MEMBRANE] = TRI_MEMBRANE_DOF;
  static constexpr const int (&PLATE_DOF)[PLATE] = TRI_BENDING_DOF;

  PLATEELEM_RECORD& EL;
  const TRIANGLE_GEOMETRY& TRI;
  const TRI_DISPLACEMENTS& TRI_U;  // displacements of the call

  SURFACE_POINT point(int gp) const { return tri_point_of(EL, RULE_ELEMENT)(gp); }
  SURFACE_POINT node(int n) const { return tri_point_of(EL, RULE_NODES)(n); }
  const VECTOR<MEMBRANE>& u_membrane() const { return TRI_U.MEMBRANE; }
  const VECTOR<PLATE>& u_plate() const { return TRI_U.BENDING; }
  template <int COUNT>
  static void extrapolate(const VECTOR<COUNT> (&at_points)[POINTS_OF_PLATE], VECTOR<COUNT> (&at_nodes)[NODES]) {
    EXTRAP_TRI(at_points, at_nodes);
  }

  void matrices(const SURFACE_POINT& s, PLATE_MATRICES<WIDTH, MEMBRANE, PLATE>& B) const {
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B.m);
    MATRIX<3, 9> bending;
    MATRIX<2, 9> shear;
    B_BEND_TRI(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, bending);
    B_SHEAR_TRI(EL, s.xi, s.eta, shear);
    stack_plate_rows(bending, shear, B.p);
  }

  static SLOPES<3> slopes(const SURFACE_POINT& s) { return linear_slopes(s.g11, s.g12, s.g21, s.g22); }
};

#endif
