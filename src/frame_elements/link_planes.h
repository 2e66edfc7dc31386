// link_planes.h: matrices of links and springs from their six stiffnesses.
#ifndef FINITES_LINK_PLANES_H
#define FINITES_LINK_PLANES_H

#include "common/plane_matrix.h"
#include "finites/views.hpp"

// K := the stiffness of a link without length, or of a spring, in local axes.
void set_link_blocks(const VECTOR<6>& k, PLANE_MATRIX& K);

// K := that of a link of length L which deforms at mid-length.
void set_link_mid_length(const VECTOR<6>& k, double L, PLANE_MATRIX& K);

// K (12, 12) := the planes in local axes, or T^T planes T.
void write_or_turn_link(const PLANE_MATRIX& planes, bool turn, const double* T, double* K);

#endif
