// beam_planes.h: the matrices of a beam in local axes, by its planes, from its properties alone.
#ifndef FINITES_BEAM_PLANES_H
#define FINITES_BEAM_PLANES_H

#include <cstdint>

#include "common/plane_matrix.h"
#include "frame_elements/beam_geometric.h"

// 1: bending in the x-y plane, 2: bending in the x-z plane.
struct BEAM_PROPERTIES {
  double E1, E2, G, L;
  double AREA, I1, I2, AS1, AS2, GJ;
  double a1, a2, b1, b2;  // fixity of the first and second end: a bending in x-z, b bending in x-y
  std::int32_t release_x, release_y, release_z, release_t;
  bool shear;          // with shear deformation
  double axial_force;  // of the geometric stiffness; tension positive
};

// The degrees of freedom that are released, in their order; 0 is none.
struct BEAM_RELEASES {
  std::int32_t freedom[4];
};

BEAM_RELEASES released_by(const BEAM_PROPERTIES& B);

// K := the elastic stiffness without releases.
void elastic_planes(const BEAM_PROPERTIES& B, PLANE_MATRIX& K);

// K with its releases. False where a value that is not finite would have reached entries beside the planes: a release
// leaves such a value standing, or makes it NaN.
bool release_ends(const BEAM_PROPERTIES& B, PLANE_MATRIX& K);

// What the geometric stiffness asks of a beam.
GEOMETRIC_DATA geometric_data(const BEAM_PROPERTIES& B);

#endif
