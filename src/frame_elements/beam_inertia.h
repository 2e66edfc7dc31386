// beam_inertia.h: the mass of a beam in local axes, by its planes, from its properties alone.
#ifndef FINITES_BEAM_INERTIA_H
#define FINITES_BEAM_INERTIA_H

#include <cstdint>

#include "common/plane_matrix.h"

// 1: bending in the x-y plane, 2: bending in the x-z plane.
struct BEAM_SECTION {
  double area, inertia1, inertia2, torsion;
};

// Fixity factors of the first and second end, a bending in x-z, b bending in x-y; codes of the released forces.
struct BEAM_ENDS {
  double a1, a2, b1, b2;
  std::int32_t release_x, release_y, release_z, release_t;
};

// Released degrees of freedom in their order: pins, whose rotations lose their inertia, then forces. 0 is none. A
// member with any semi-rigid end keeps the inertia of all four rotations.
struct INERTIA_RELEASES {
  std::int32_t freedom[8];
};

INERTIA_RELEASES inertia_releases(const BEAM_ENDS& ends);

// M := consistent or lumped, per unit mass.
void inertia_planes(const BEAM_SECTION& section, double L, bool lumped, PLANE_MATRIX& M);

// M := mass M with its releases, for a finite mass.
void scale_inertia(double mass, const INERTIA_RELEASES& released, PLANE_MATRIX& M);

#endif
