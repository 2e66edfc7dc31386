// res_record.h: views of the record of 90 reals that holds the results of a plate or shell element at one point.
//
// Blocks follow each other at a distance of RES_LENGTH; four of them make the 360 values of the results at the nodes,
// four those at the integration points.
#ifndef FINITES_RES_RECORD_H
#define FINITES_RES_RECORD_H

#include "finites/fields.h"
#include "finites/views.hpp"

// The columns of one record, and the record of a point among the 360 values of four.
using RES_BLOCK = VECTOR_VIEW<double>;
using RES_READER = VECTOR_VIEW<const double>;
inline RES_BLOCK BLOCK_OF(double* results, int point) { return RES_BLOCK(results + (point - 1) * RES_LENGTH); }
inline RES_READER BLOCK_OF(const double* results, int point) { return RES_READER(results + (point - 1) * RES_LENGTH); }

#endif
