// forces.h: what the internal forces of both theories share on a triangle: displacements in element axes, the terms of
// drilling and foundation.
#ifndef FINITES_TRI_FORCES_H
#define FINITES_TRI_FORCES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// ul(18) := u(18) in element axes, six groups of three.
void TRI_DISP_LOCAL(const TRIANGLE_GEOMETRY& TRI, const double* u, double* ul);

// The parts of ul(18).
TRI_DISPLACEMENTS TRI_DISP_SPLIT(const double* ul);

// The terms that every theory has: foundation, drilling moments, which are set and not added, and the turn to global
// axes.
void TRI_FINISH_FORCES(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                       const ELEM_LOADS& LOADS, int op, double* f);

#endif
