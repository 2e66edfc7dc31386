// elastic_fields.h: internal forces and results of an elastic triangle from the fields of plane_fields.h,
// without strain matrices. For finite values alone: see the routines.
//
// Mirror: shells/quadrilateral/elastic_fields.h.
#ifndef FINITES_TRI_ELASTIC_FIELDS_H
#define FINITES_TRI_ELASTIC_FIELDS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"

// f(24), operation 3 or 33, of the displacements U(18) in global axes. Without an elastic
// foundation, as FINITES calls the element.
//
//   theory         in   THIN_THEORY or THICK_THEORY
//   ISO            in   of an isotropic section; a general one is that of PLATEELEM with its sides
//   AXES, local    in   of the element
//   f              out  what the routines of thin/forces.h and thick/forces.h give, up to the order of their sums
//
// Returns false where a value is not finite or a side has no length: the strain matrices decide then what becomes of
// infinite values and NaN, and f holds nothing.
bool TRI_FORCES_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                          const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* f, int op);

// The records of nodes and points, likewise: what the routines of results.h give. Columns 1 to 62 of the
// blocks of three nodes and four points are set.
bool TRI_RESULTS_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                           const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* nodes,
                           double* points);

#endif
