// solid_data.cpp: records, coordinates and vectors of a solid element. Vectors in element axes are AX times those in
// global axes: the rows of AX are the axes.
#include "solids/solid_data.h"

#include <algorithm>

#include "common/lanes.h"
#include "finites/fields.h"

std::int32_t solid_position(std::int32_t elem) {
  if (!HAS_ELEMENT(SOLANAELEM.SOLID_POS, elem)) return 0;
  const std::int32_t pos = SOLANAELEM.SOLID_POS(elem);
  return HAS_ELEMENT(SOLANAELEM.SOLID_REC, pos) ? pos : 0;
}

void SOLID_GATHER_XYZ(const SOLID_RECORD& record, const MODEL_DATA_READER& A, std::int32_t NN, SOLID_VECTORS& XYZ) {
  for (std::int32_t k = 1; k <= std::min(NN, MOST_SOLID_NODES); ++k) {
    const std::int64_t node = record.NODE_OFF(k);
    for (int i = 1; i <= 3; ++i) XYZ(i, k) = A(node + NODE_X + i - 1);
  }
}

void turn_vector(const MATRIX<3, 3>& R, double x, double y, double z, double* turned) {
  store_lanes(turned, lanes_at(&R(1, 1)) * x + lanes_at(&R(1, 2)) * y + lanes_at(&R(1, 3)) * z);
  turned[2] = R(3, 1) * x + R(3, 2) * y + R(3, 3) * z;
}

void SOLID_XYZ_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const SOLID_VECTORS& XYZ, SOLID_VECTORS& local) {
  for (std::int32_t k = 1; k <= NN; ++k) {
    turn_vector(AX, XYZ(1, k) - XYZ(1, 1), XYZ(2, k) - XYZ(2, 1), XYZ(3, k) - XYZ(3, 1), &local(1, k));
  }
}

void SOLID_VEC_TO_LOCAL(const MATRIX<3, 3>& AX, std::int32_t NN, const double* u, SOLID_VECTORS& local) {
  for (std::int32_t k = 1; k <= NN; ++k, u += 3) turn_vector(AX, u[0], u[1], u[2], &local(1, k));
}
