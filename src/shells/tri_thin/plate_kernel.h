// plate_kernel.h: the thin triangle as the plastic models see it.
#ifndef FINITES_TRI_THIN_PLATE_KERNEL_H
#define FINITES_TRI_THIN_PLATE_KERNEL_H

#include "element_calls/gauss_int_2d.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "plate_results/extrapolation.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/slopes.h"
#include "shells/tri_thin/bending.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"

struct TRI_THIN_PLATE {
  static constexpr int NODES = 3, WIDTH = 6, MEMBRANE = 6, PLATE = 9;
  static constexpr const int (&MEMBRANE_DOF)[MEMBRANE] = TRI_MEMBRANE_DOF;
  static constexpr const int (&PLATE_DOF)[PLATE] = TRI_BENDING_DOF;

  static SURFACE_POINT point(int gp) { return tri_point_of(RULE_ELEMENT)(gp); }
  static SURFACE_POINT node(int n) { return tri_point_of(RULE_NODES)(n); }
  static const VECTOR<MEMBRANE>& u_membrane() { return TRI.U_MEMBRANE; }
  static const VECTOR<PLATE>& u_plate() { return TRI.U_BENDING; }
  template <int COUNT>
  static void extrapolate(const VECTOR<COUNT> (&at_points)[POINTS_OF_PLATE], VECTOR<COUNT> (&at_nodes)[NODES]) {
    EXTRAP_TRI(at_points, at_nodes);
  }

  static void matrices(const SURFACE_POINT& s, PLATE_MATRICES<WIDTH, MEMBRANE, PLATE>& B) {
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B.m);
    DKT_BMATRIX(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B.p);
  }

  static SLOPES<3> slopes(const SURFACE_POINT& s) { return linear_slopes(s.g11, s.g12, s.g21, s.g22); }
};

#endif
