// mass.h: consistent mass of the three-node elements.
#ifndef FINITES_TRI_MASS_H
#define FINITES_TRI_MASS_H

#include "shells/common/flat_parts.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

// M(21): packed mass of the linear in-plane field, m being the mass per area.
void TRI_MASS_MEMBRANE(const TRIANGLE_GEOMETRY& TRI, double m, double* M);

// M(45): packed mass of the transverse motion, without rotary inertia.
void TRI_MASS_BENDING(const TRIANGLE_GEOMETRY& TRI, double m, const SURFACE_STATION (&rule)[4], double* M);

// parts := the element's mass in element axes, m being the mass per area; the drilling rotations have none.
void TRI_MASS(const TRIANGLE_GEOMETRY& TRI, double m, FLAT_PARTS<3>& parts);

#endif
