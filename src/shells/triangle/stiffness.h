// stiffness.h: assembly of the packed stiffness of a triangle, whatever its theory.
#ifndef FINITES_TRI_STIFFNESS_H
#define FINITES_TRI_STIFFNESS_H

#include "finites/views.hpp"
#include "shells/triangle/geometry.h"

// K(171) := the packed parts at their places.
//
//   Kdrill(6), Kmem(21)   in  drilling and membrane
//   Kb1, Kb2, Kb3 (45)    in  bending: their sum
//   Kcouple               in  (9, 6) bending rows by membrane columns, for coupled sections
//
// The engines put their parts together block by block (shells/common/flat_parts.h); tests call this one. No elastic
// section of the library couples membrane and bending: Kcouple is for sections that do.
void TRI_ASSEMBLE_PACKED(const double* Kdrill, const double* Kmem, const double* Kb1, const double* Kb2,
                         const double* Kb3, const MATRIX<9, 6>& Kcouple, double* K);

// K += the stiffness of an elastic foundation of coefficient k under w.
void TRI_FOUNDATION(const TRIANGLE_GEOMETRY& TRI, double k, double* K);

// K := K in global axes: K(171) packed, or K(18, 18) full, as the plastic tangents are. The engines call
// packed_to_global and full_to_global directly; these two, named by shape, serve tests only.
void TRI_TO_GLOBAL_PACKED(const TRIANGLE_GEOMETRY& TRI, double* K);
void TRI_TO_GLOBAL_FULL(const TRIANGLE_GEOMETRY& TRI, double* K);

#endif
