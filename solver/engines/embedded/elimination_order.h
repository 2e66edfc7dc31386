// elimination_order.h: the order in which the equations are eliminated, by nested dissection (George, 1973) of METIS
// (Karypis and Kumar, 1998).
#ifndef FINITES_SOLVER_ELIMINATION_ORDER_H
#define FINITES_SOLVER_ELIMINATION_ORDER_H

#include <cstdint>
#include <vector>

#include "elements/scatter_map.h"

namespace solver {

// The place of each equation, from 0; empty where the matrix is too small to gain by it or METIS fails.
std::vector<std::int32_t> elimination_order(const symmetric_matrix& K);

}  // namespace solver

#endif
