// plate_kernel.h: the thick quadrilateral for the plastic models: B.m the membrane, with its shear at every point, B.p
// the curvatures and transverse shears of the discrete Kirchhoff-Mindlin quadrilateral, at the 2 by 2 points
// (shells/common/plate_matrices.h).
//
// Mirror: shells/triangle/thick/plate_kernel.h.
#ifndef FINITES_QUAD_THICK_PLATE_KERNEL_H
#define FINITES_QUAD_THICK_PLATE_KERNEL_H

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_results/extrapolation.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/slopes.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/shear.h"

struct QUAD_THICK_PLATE {
  static constexpr int NODES = 4, WIDTH = 8, MEMBRANE = 8, PLATE = 12;
  static constexpr const int (&MEMBRANE_DOF)[MEMBRANE] = QUAD_MEMBRANE_DOF;
  static constexpr const int (&PLATE_DOF)[PLATE] = QUAD_BENDING_DOF;

  PLATEELEM_RECORD& EL;
  const QUADRILATERAL_GEOMETRY& QUAD;
  const QUAD_DISPLACEMENTS& QUAD_U;  // displacements of the call

  SURFACE_POINT point(int gp) const { return quad_point_of(EL, RULE_FULL)(gp); }
  SURFACE_POINT node(int n) const { return quad_point_of(EL, RULE_NODES)(n); }
  const VECTOR<MEMBRANE>& u_membrane() const { return QUAD_U.MEMBRANE; }
  const VECTOR<PLATE>& u_plate() const { return QUAD_U.BENDING; }
  template <int COUNT>
  static void extrapolate(const VECTOR<COUNT> (&at_points)[POINTS_OF_PLATE], VECTOR<COUNT> (&at_nodes)[NODES]) {
    EXTRAP_QUAD(at_points, at_nodes);
  }

  void matrices(const SURFACE_POINT& s, PLATE_MATRICES<WIDTH, MEMBRANE, PLATE>& B) const {
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B.m);
    MATRIX<3, 12> bending;
    MATRIX<2, 12> shear;
    B_BEND_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, bending);
    B_SHEAR_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, shear);
    stack_plate_rows(bending, shear, B.p);
  }

  static SLOPES<4> slopes(const SURFACE_POINT& s) { return bilinear_slopes(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22); }
};

#endif
