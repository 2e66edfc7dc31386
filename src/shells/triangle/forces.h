// forces.h: what the internal forces of both theories share on a triangle: displacements in element axes, the terms of
// drilling and foundation.
#ifndef FINITES_TRI_FORCES_H
#define FINITES_TRI_FORCES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// ul(18) := AXES u(18) for each of six groups of three: displacements in element axes.
void TRI_DISP_LOCAL(const TRIANGLE_GEOMETRY& TRI, const double* u, double* ul);

// The parts of ul(18): membrane u, v; bending w, theta x, theta y; drilling theta z.
TRI_DISPLACEMENTS TRI_DISP_SPLIT(const double* ul);

// The terms that both theories have: foundation, drilling moments (set, not added) and, except in operation 33, the
// rotation of f to global axes.
void TRI_FINISH_FORCES(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                       const ELEM_LOADS& LOADS, int op, double* f);

#endif
