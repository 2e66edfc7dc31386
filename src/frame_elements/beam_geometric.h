// beam_geometric.h: the geometric stiffness of a beam by its planes.
#ifndef FINITES_BEAM_GEOMETRIC_H
#define FINITES_BEAM_GEOMETRIC_H

#include <cstdint>

#include "frame_elements/plane_pattern.h"

// What KSTIFB_GEOM is given: axial force, length, the bending stiffness E I of the x-y and of the x-z plane, flags of
// semi-rigid ends, release codes, and the fixity factors of both ends (a bending in x-z, b bending in x-y).
struct GEOMETRIC_DATA {
  double P, L;
  double stiffness_z, stiffness_y;
  std::int32_t semi_y, semi_z, release_y, release_z;
  double a1, b1, a2, b2;
};

// G := the geometric stiffness. False, with G undefined, where a value is not finite: its products with the zeros of
// the pattern are formed by KSTIFB_GEOM alone.
bool geometric_planes(const GEOMETRIC_DATA& data, PLANE_MATRIX& G);

#endif
