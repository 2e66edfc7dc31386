// release.h: end releases of a member whose matrix is kept by its planes. A degree of freedom of 0 releases nothing.
#ifndef FINITES_RELEASE_H
#define FINITES_RELEASE_H

#include <cstdint>

#include "frame_elements/plane_pattern.h"

// RELEASE_DOF for a finite K. A value that is not finite stays in K or becomes NaN; its quotients would reach the zeros
// beside the planes too.
void release_stiffness(std::int32_t d, PLANE_MATRIX& K);

// RELEASE_DOF_MAS.
void release_inertia(std::int32_t d, PLANE_MATRIX& M);

#endif
