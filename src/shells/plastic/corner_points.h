// corner_points.h: the update of the points of the whole-section model from whatever side of the surface.
//
// The update of a point (section_update.h) returns it along the branch that SEC_SIGN_START names. Here the side on
// which its return ends is found before, and named; a point whose return ends in the corner (section_corner.h) starts
// the update where it ends, so that nothing is left to do there, and its plastic strains and its tangent are put in
// afterwards. The stored forces are then a continuous function of the strains.
#ifndef FINITES_CORNER_POINTS_H
#define FINITES_CORNER_POINTS_H

#include <cmath>

#include "common/array_columns.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/plastic_material.h"
#include "plate_material/section_axes.h"
#include "plate_material/section_corner.h"
#include "plate_material/section_state.h"
#include "plate_material/section_update.h"
#include "shells/common/records.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/element_points.h"
#include "shells/plastic/stored_state.h"

struct CORNER_POINTS {
  YIELD_SIDE side[POINTS_OF_PLATE];
  VECTOR<12> start[POINTS_OF_PLATE];  // SEC_EP_START of the points
  CORNER_STATE corner[POINTS_OF_PLATE];
};

inline SECTION_STRENGTH section_strength_of(const PLATEELEM_RECORD& EL) {
  return {EL.THICKNESS, EL.YIELD_STRESS, plastic_modulus(EL)};
}

// The elastic section; a thin plate has no shears.
template <int WIDTH>
MATRIX<8, 8> elastic_section(const PLATEELEM_RECORD& EL) {
  MATRIX<8, 8> D{};
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) D(i, j) = EL.D8(i, j);
  }
  return D;
}

// local: plastic strains at the start of the increment, element axes; += the flow in the corner.
template <int WIDTH>
VECTOR<12> after_flow(const PLATEELEM_RECORD& EL, VECTOR<WIDTH> local, const VECTOR<8>& flow) {
  VECTOR<12> ep;
  for (int i = 1; i <= WIDTH; ++i) local(i) += flow(i);
  SECTION_EP_TO_GLOBAL(EL, local, ep);
  return ep;
}

// SEC_SIGN_START, and SEC_EP_START of points that end in the corner, for an update with the displacements of the
// element. False where a return does not converge.
template <class ELEMENT>
bool choose_sides(const ELEMENT& element, PLATE_STATE_RECORD& record, CORNER_POINTS& at) {
  constexpr int WIDTH = ELEMENT::WIDTH;
  const PLATEELEM_RECORD& EL = element.EL;
  const MATRIX<8, 8> D = elastic_section<WIDTH>(EL);
  const SECTION_STRENGTH strength = section_strength_of(EL);
  const ELEMENT_POINTS<ELEMENT> points = points_of(element);
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    at.start[gp - 1] = plastic_strains(record.SEC_EP_START, gp);
    VECTOR<WIDTH> p0;
    VECTOR<WIDTH> n;
    SECTION_EP_TO_LOCAL(EL, at.start[gp - 1], p0);
    SECTION_TRIAL(EL, points.strains[gp - 1].total, p0, n);
    VECTOR<8> trial{};
    for (int i = 1; i <= WIDTH; ++i) trial(i) = n(i);
    CORNER_STATE& corner = at.corner[gp - 1];
    const YIELD_SIDE side = return_side(strength, D, trial, record.SEC_EPBAR_START(gp), corner);
    at.side[gp - 1] = side;
    if (side == YIELD_SIDE::NONE) return false;
    record.SEC_SIGN_START(gp) = side == YIELD_SIDE::NEGATIVE ? -1.0 : 1.0;
    if (side == YIELD_SIDE::CORNER) {
      store(after_flow(EL, p0, corner.flow), column_of(record.SEC_EP_START, gp));
    }
  }
  return true;
}

// After the update: what the points in the corner hold.
template <int WIDTH>
void settle_corners(const PLATEELEM_RECORD& EL, const CORNER_POINTS& at, PLATE_STATE_RECORD& record) {
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    if (at.side[gp - 1] != YIELD_SIDE::CORNER) continue;
    const CORNER_STATE& corner = at.corner[gp - 1];
    const VECTOR<12>& start = at.start[gp - 1];
    VECTOR<WIDTH> p0;
    SECTION_EP_TO_LOCAL(EL, start, p0);
    const VECTOR<12> ep = after_flow(EL, p0, corner.flow);
    VECTOR<12> change;
    for (int i = 1; i <= 12; ++i) change(i) = ep(i) - start(i);
    store(start, column_of(record.SEC_EP_START, gp));
    store(ep, column_of(record.SEC_EP_CUR, gp));
    store(change, column_of(record.SEC_EP_INC, gp));
    record.SEC_EPBAR_CUR(gp) = corner.equivalent;
    record.SEC_SIGN_CUR(gp) = corner.mixed;
    const VECTOR<8>& f = corner.flow;
    record.SEC_CURV_INC(gp) = std::sqrt(f(4) * f(4) + f(5) * f(5) + f(4) * f(5) + 0.25 * (f(6) * f(6)));
    MATRIX<WIDTH, WIDTH> C;
    for (int j = 1; j <= WIDTH; ++j) {
      for (int i = 1; i <= WIDTH; ++i) C(i, j) = corner.tangent(i, j);
    }
    store_section_tangent(record, gp, C);
  }
}

#endif
