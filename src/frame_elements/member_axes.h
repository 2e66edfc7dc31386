// member_axes.h: matrices of frame members from local axes to the solver's, and small helpers that members share.
#ifndef FINITES_MEMBER_AXES_H
#define FINITES_MEMBER_AXES_H

#include <cstdint>

#include "finites/services.h"
#include "finites/views.hpp"

// The rotation T of every frame routine is 12 by 12.
constexpr std::int32_t ROTATION_ORDER = 12;

// K := T^T K T, K of order n = ROWS. The rows of T are the local axes: u_local = T u_solver.
template <int ROWS>
inline void to_solver_axes(const double* T, double* K) {
  constexpr std::int32_t n = ROWS;
  MATMUL_RT_M_R_DBL(T, K, &n, &ROTATION_ORDER, &n);
}

// The degree of freedom that a release code names: that of the first end for 1, of the second end for 2, 0 (none) for
// any other code.
inline std::int32_t released_freedom(std::int32_t code, std::int32_t first_end) {
  if (code == 1) return first_end;
  if (code == 2) return first_end + 6;
  return 0;
}

// A semi-rigid connection: strictly between a pin and a rigid one.
inline bool semi_rigid(double fixity) { return 0.0 < fixity && fixity < 1.0; }

#endif
