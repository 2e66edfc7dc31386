// offsets.cpp: rigid links between the nodes of the model and the points where an element is attached.
#include <algorithm>
#include <cstdint>

#include "finites/services.h"
#include "finites/views.hpp"

namespace {

// The block that turns rotations into translations, written at rows 1 to 3 and columns 4 to 6 of a node's block:
//
//     [   0  -dz   dy ]
//     [  dz    0  -dx ]
//     [ -dy   dx    0 ]
//
// `block` is the first entry of the node's 6 by 6 block, `ld` the leading dimension. The zeros are there already.
void write_rigid_link(double* block, std::int64_t ld, double dx, double dy, double dz) {
  for (int i = 0; i < 6; ++i) block[i * ld + i] = 1.0;
  double* const column_4 = block + 3 * ld;
  double* const column_5 = block + 4 * ld;
  double* const column_6 = block + 5 * ld;
  column_4[1] = dz;
  column_4[2] = -dy;
  column_5[0] = -dz;
  column_5[2] = dx;
  column_6[0] = dy;
  column_6[1] = -dx;
}

}  // namespace

void GET_JOINT_OFFSET_J6D(const double* dx, const double* dy, const double* dz, double* J) {
  std::fill(J, J + 36, 0.0);
  write_rigid_link(J, 6, *dx, *dy, *dz);
}

// Only the offsets of nodes 1 to n are read. A plate has one to four nodes: another n does nothing.
void GET_PLATE_OFFSET_P_DBL(const std::int32_t* n, const double* dx1, const double* dy1, const double* dz1,
                            const double* dx2, const double* dy2, const double* dz2, const double* dx3,
                            const double* dy3, const double* dz3, const double* dx4, const double* dy4,
                            const double* dz4, double* P) {
  if (*n < 1 || *n > 4) return;
  const double* const offset[4][3] = {{dx1, dy1, dz1}, {dx2, dy2, dz2}, {dx3, dy3, dz3}, {dx4, dy4, dz4}};
  const std::int64_t order = 6 * static_cast<std::int64_t>(*n);
  std::fill(P, P + order * order, 0.0);
  for (std::int64_t node = 0; node < *n; ++node) {
    double* const block = P + 6 * node * (order + 1);
    write_rigid_link(block, order, *offset[node][0], *offset[node][1], *offset[node][2]);
  }
}
