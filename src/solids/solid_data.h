// solid_data.h: the fields of MODEL_DATA that solids read, and an element in its own axes.
#ifndef FINITES_SOLID_DATA_H
#define FINITES_SOLID_DATA_H

#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "solids/kinematics.h"

// The number of places in the node list of a record.
constexpr std::int32_t MOST_SOLID_NODES = 9;

// The position of an element's record; 0 when it has none.
std::int32_t solid_position(std::int32_t elem);

// XYZ := the coordinates of the first NN nodes of the record's list, nine at most.
void SOLID_GATHER_XYZ(const SOLID_RECORD& record, const MODEL_DATA_READER& A, std::int32_t NN, SOLID_VECTORS& XYZ);

// turned := R (x, y, z), as TRANS_VEC_G2L1_DBL forms it: the same bits, without a call.
void turn_vector(const MATRIX<3, 3>& R, double x, double y, double z, double* turned);

// local := AX (x - x1), with the first node as the origin; local := AX u, u (3, NN).
void SOLID_XYZ_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const SOLID_VECTORS& XYZ, SOLID_VECTORS& local);
void SOLID_VEC_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const double* u, SOLID_VECTORS& local);

#endif
