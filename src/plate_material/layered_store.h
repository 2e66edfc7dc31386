// layered_store.h: what a thickness point reads from POINT_STATE and stores there.
#ifndef FINITES_LAYERED_STORE_H
#define FINITES_LAYERED_STORE_H

#include <cstdint>

#include "common/array_columns.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_matrices.h"

// Column k of a field of six by n.
inline VECTOR<6> global_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  return loaded<6>(column_of(field, k));
}

inline VECTOR<6> difference(const VECTOR<6>& a, const VECTOR<6>& b) {
  VECTOR<6> d;
  for (int i = 1; i <= 6; ++i) d(i) = a(i) - b(i);
  return d;
}

// EP_INC, the increment from the plastic strain at the start of the step or from the last stored one, and EP_CUR of the
// point := the plastic strain p.
inline void store_plastic_strain(const VECTOR<6>& p, bool from_current, const POINT_STATE_RECORD& s, std::int32_t k) {
  const VECTOR<6> reference = global_values(from_current ? s.EP_CUR : s.EP_START, k);
  store(difference(p, reference), column_of(s.EP_INC, k));
  store(p, column_of(s.EP_CUR, k));
}

inline void store_tangent(const MATRIX5& C, const POINT_STATE_RECORD& s, std::int32_t k) {
  for (int c = 1; c <= 5; ++c) {
    VECTOR<5> column;
    for (int r = 1; r <= 5; ++r) column(r) = C(r, c);
    store(column, column_of(s.TANGENT, c, k));
  }
}

#endif
