// layered_store.h: what a thickness point reads from POINT_STATE and stores there.
#ifndef FINITES_LAYERED_STORE_H
#define FINITES_LAYERED_STORE_H

#include <cstdint>
#include <initializer_list>

#include "common/array_columns.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_matrices.h"

// Column k of a field of six by n.
inline VECTOR<6> global_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  const ARRAY_COLUMN<double> column = column_of(field, k);
  VECTOR<6> v;
  for (int i = 1; i <= 6; ++i) v(i) = column(i);
  return v;
}

// Stress, plastic strain p with its increment, equivalent plastic strain and tangent of point k. from_current: EP_INC
// counts from the last stored EP_CUR, otherwise from EP_START.
inline void store_point(const POINT_STATE_RECORD& s, bool from_current, std::int32_t k, const VECTOR<6>& sigma,
                        const VECTOR<6>& p, double ebar, const MATRIX5& C) {
  const VECTOR<6> reference = global_values(from_current ? s.EP_CUR : s.EP_START, k);
  const ARRAY_COLUMN<double> stress = column_of(s.SIG, k);
  const ARRAY_COLUMN<double> increment = column_of(s.EP_INC, k);
  const ARRAY_COLUMN<double> current = column_of(s.EP_CUR, k);
  for (int i = 1; i <= 6; ++i) {
    stress(i) = sigma(i);
    increment(i) = p(i) - reference(i);
    current(i) = p(i);
  }
  s.EPBAR_CUR(k) = ebar;
  for (int c = 1; c <= 5; ++c) {
    const ARRAY_COLUMN<double> column = column_of(s.TANGENT, c, k);
    for (int r = 1; r <= 5; ++r) column(r) = C(r, c);
  }
}

// The fields of one surface point as plain arrays from point 1 on, as most solvers keep them. Null where one of them is
// not: then none is.
struct PACKED_FIELDS {
  double *SIG, *EP_START, *EP_CUR, *EP_INC, *EPBAR_START, *EPBAR_CUR, *TANGENT;

  explicit PACKED_FIELDS(const POINT_STATE_RECORD& s) : SIG(nullptr) {
    const auto six = [](const ARRAY_REFERENCE<double, 2>& field) {
      return field.DIMENSION[0].STRIDE == 8 && field.DIMENSION[1].STRIDE == 48;
    };
    const ARRAY_DIMENSION* const C = s.TANGENT.DIMENSION;
    if (!six(s.SIG) || !six(s.EP_START) || !six(s.EP_CUR) || !six(s.EP_INC) || s.EPBAR_START.DIMENSION[0].STRIDE != 8 ||
        s.EPBAR_CUR.DIMENSION[0].STRIDE != 8 || C[0].STRIDE != 8 || C[1].STRIDE != 40 || C[2].STRIDE != 200) {
      return;
    }
    SIG = &s.SIG(1, 1);
    EP_START = &s.EP_START(1, 1);
    EP_CUR = &s.EP_CUR(1, 1);
    EP_INC = &s.EP_INC(1, 1);
    EPBAR_START = &s.EPBAR_START(1);
    EPBAR_CUR = &s.EPBAR_CUR(1);
    TANGENT = &s.TANGENT(1, 1, 1);
  }

  explicit operator bool() const { return SIG != nullptr; }

  // Asks for the memory of points k and k + 1. Inlined by order: g++ takes a routine that does nothing else for one
  // without effect and drops its calls.
  [[gnu::always_inline]] void expect(std::int32_t k) const {
    constexpr std::int32_t words_of_a_line = 8;
    const std::int32_t six = 6 * (k - 1);
    for (const double* const field : {EP_START, EP_CUR, EP_INC, SIG}) {
      __builtin_prefetch(field + six, 1);
      __builtin_prefetch(field + six + words_of_a_line, 1);
    }
    __builtin_prefetch(EPBAR_START + k - 1, 1);
    __builtin_prefetch(EPBAR_CUR + k - 1, 1);
    const double* const C = TANGENT + 25 * (k - 1);
    for (std::int32_t i = 0; i < 50; i += words_of_a_line) __builtin_prefetch(C + i, 1);
  }
};

#endif
