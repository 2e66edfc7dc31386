// solid_data.h: the fields of MODEL_DATA that solids read, and an element in its own axes.
#ifndef FINITES_SOLID_DATA_H
#define FINITES_SOLID_DATA_H

#include <cstdint>

#include "model_data.h"
#include "shared_records.h"
#include "solids/kinematics.h"
#include "views.h"

// Header.
constexpr int EQUATION_TABLE = 79;  // base of the equation numbers, seven places a joint
constexpr int LOAD_CASES = 151;     // number of load cases
constexpr int JOINT_RESULTS = 215;  // base of the joint results, eight places a joint and case

// Node entry.
constexpr int NODE_JOINT = 15;

// Material entry.
constexpr int SOLID_YOUNG = 3, SOLID_POISSON = 4, SOLID_WEIGHT = 5;

// Element entry: the code of solids.
constexpr std::int32_t SOLID_CODE = 4600;

// The node list of a record has nine places.
constexpr std::int32_t MOST_SOLID_NODES = 9;

// The position of an element's record; 0 when it has none.
std::int32_t solid_position(std::int32_t elem);

// XYZ := the coordinates of the first NN nodes of the record's list, nine at most.
void SOLID_GATHER_XYZ(const SOLID_RECORD& record, const MODEL_DATA_READER& A, std::int32_t NN, SOLID_GRADIENTS& XYZ);

// local := AXES (x - x1), the first node becoming the origin; local := AXES u without the shift.
void SOLID_XYZ_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const SOLID_GRADIENTS& XYZ, SOLID_GRADIENTS& local);
void SOLID_VEC_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const MATRIX<3, SOLID_ROOM>& u,
                        SOLID_GRADIENTS& local);

#endif
