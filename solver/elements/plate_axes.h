// plate_axes.h: local axes of plates and the warp of four nodes.
#ifndef FINITES_SOLVER_PLATE_AXES_H
#define FINITES_SOLVER_PLATE_AXES_H

#include <array>

#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

// Row 1 along the side from node 1 to node 2, row 3 the normal, right-handed round the nodes.
MATRIX<3, 3> plate_axes(const model& m, const element& e);

// How far four nodes lie above the plane of the element, and the largest distance by the longer diagonal; 0 for a
// triangle. Below FLAT the distance is rounding of the coordinates: decks give them with some six digits.
constexpr double FLAT = 1e-6;
std::array<double, 4> warp_heights(const model& m, const element& e);
double plate_warp(const model& m, const element& e);

// A warped shell hangs on rigid arms; a membrane, whose nodes resist no moment, cannot.
bool has_arms(const model& m, const element& e);

}  // namespace solver

#endif
