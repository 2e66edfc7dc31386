// flat_parts.cpp: the turn of a flat element's matrix to global axes, from its parts straight into the full matrix.
#include "shells/common/flat_parts.h"

#include <algorithm>

#include "common/finiteness.h"
#include "shells/common/flat_formulas.h"
#include "shells/common/packed.h"

namespace {

// The places of the parts among the degrees of freedom.
template <int NODES>
struct PLACES;

template <>
struct PLACES<3> {
  static constexpr const int (&MEMBRANE)[6] = TRI_MEMBRANE_DOF;
  static constexpr const int (&PLATE)[9] = TRI_BENDING_DOF;
  static constexpr const int (&DRILLING)[3] = TRI_DRILL_DOF;
};

template <>
struct PLACES<4> {
  static constexpr const int (&MEMBRANE)[8] = QUAD_MEMBRANE_DOF;
  static constexpr const int (&PLATE)[12] = QUAD_BENDING_DOF;
  static constexpr const int (&DRILLING)[4] = QUAD_DRILL_DOF;
};

template <int N>
void packed_pick(const double* K, const int (&freedoms)[N], double* part) {
  for (int j = 0; j < N; ++j) {
    for (int i = 0; i <= j; ++i) *part++ = K[SYM(freedoms[i], freedoms[j]) - 1];
  }
}

// Infinities and NaN go through the full products, which carry them into all that they touch.
template <int NODES>
void turn_by_full_products(const MATRIX<3, 3>& AXES, double* K, int leading, double* matrix) {
  constexpr int ORDER = 6 * NODES;
  double full[ORDER * ORDER];
  packed_to_global(AXES, 2 * NODES, K);
  UNPACK_SYMMETRIC(ORDER, SYM(ORDER, ORDER), K, full);
  spread_columns(full, ORDER, leading, matrix);
}

// The two distances that columns may have, each known where the entries are placed.
template <int NODES>
void turn_finite_parts(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts, int leading, double* matrix) {
  if (leading == 6 * NODES) {
    turn_parts(AXES, parts, FULL_MATRIX<6 * NODES>{matrix});
  } else {
    turn_parts(AXES, parts, FULL_MATRIX<CALLER_LEADING>{matrix});
  }
}

}  // namespace

template <int NODES>
void assemble_parts(const FLAT_PARTS<NODES>& parts, double* K) {
  std::fill_n(K, SYM(6 * NODES, 6 * NODES), 0.0);
  packed_add(K, parts.membrane, PLACES<NODES>::MEMBRANE);
  packed_add(K, parts.plate, PLACES<NODES>::PLATE);
  packed_add(K, parts.drilling, PLACES<NODES>::DRILLING);
}

template <int NODES>
FLAT_PARTS<NODES> parts_of(const double* K) {
  FLAT_PARTS<NODES> parts;
  packed_pick(K, PLACES<NODES>::MEMBRANE, parts.membrane);
  packed_pick(K, PLACES<NODES>::PLATE, parts.plate);
  packed_pick(K, PLACES<NODES>::DRILLING, parts.drilling);
  return parts;
}

template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts, int leading, double* matrix) {
  if (finite_parts(parts) && all_finite(AXES.data(), 9)) {
    turn_finite_parts(AXES, parts, leading, matrix);
    return;
  }
  double K[SYM(6 * NODES, 6 * NODES)];
  assemble_parts(parts, K);
  turn_by_full_products<NODES>(AXES, K, leading, matrix);
}

template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, double* K, int leading, double* matrix) {
  if (all_finite(K, SYM(6 * NODES, 6 * NODES)) && all_finite(AXES.data(), 9)) {
    turn_finite_parts(AXES, parts_of<NODES>(K), leading, matrix);
    return;
  }
  turn_by_full_products<NODES>(AXES, K, leading, matrix);
}

template void assemble_parts(const FLAT_PARTS<3>& parts, double* K);
template void assemble_parts(const FLAT_PARTS<4>& parts, double* K);
template FLAT_PARTS<3> parts_of<3>(const double* K);
template FLAT_PARTS<4> parts_of<4>(const double* K);
template void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<3>& parts, int leading, double* matrix);
template void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<4>& parts, int leading, double* matrix);
template void flat_to_global<3>(const MATRIX<3, 3>& AXES, double* K, int leading, double* matrix);
template void flat_to_global<4>(const MATRIX<3, 3>& AXES, double* K, int leading, double* matrix);
