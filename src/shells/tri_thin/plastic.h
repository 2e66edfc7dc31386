// plastic.h: the thin triangle with the whole-section model, MAT_BEHAV 2.
#ifndef FINITES_TRI_THIN_PLASTIC_H
#define FINITES_TRI_THIN_PLASTIC_H

#include "element_calls/elem_loads.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/tri_thin/geometry.h"

// K(18, 18), element axes, from the stored tangents; the drilling term is written.
void KSTIF_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                          double* K);

// K += the geometric stiffness of the stored forces of each point.
void KGEOM_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                          const double* points, double* K);

// f(24): internal forces of the split displacements; the material follows them and the stored ones together. Operation
// 33 stores the state and answers in element axes, operation 3 stores nothing and answers in global axes.
void FINT_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const ELEM_LOADS& LOADS, double* f, int op);

// Records at the nodes and points, without any temperature term; only reads the state.
void RES_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const MATRIX<3, 3>& local, double* nodes, double* points);

#endif
