// section_state.h: the state that the whole-section model keeps for each surface point of a plate.
#ifndef FINITES_SECTION_STATE_H
#define FINITES_SECTION_STATE_H

#include <cstdint>
#include <cstring>

#include "common/array_columns.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"

struct SECTION_STATE {
  PLATE_STATE_RECORD* record;
  bool complete;  // all its fields are allocated; otherwise the record must not be used
};

SECTION_STATE section_state_of(const PLATE_STATE_IN_USE& state);

// The stored displacements, six per node, global axes; null without a state.
inline const double* stored_displacements_of(const PLATE_STATE_IN_USE& state) {
  return state.record != nullptr ? state.record->STORED_DISPLACEMENTS.data() : nullptr;
}

// Point gp := no plastic strain, the positive branch of the mixed term. The tangent stays unchanged.
void clear_section_state(PLATE_STATE_RECORD& record, int gp);

// SEC_TANGENT of point gp := C in its leading WIDTH by WIDTH part, 0 elsewhere.
template <int WIDTH>
void store_section_tangent(PLATE_STATE_RECORD& record, int gp, const MATRIX<WIDTH, WIDTH>& C) {
  MATRIX<8, 8> whole{};
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) whole(i, j) = C(i, j);
  }
  const ARRAY_DIMENSION* const d = record.SEC_TANGENT.DIMENSION;
  if (d[0].STRIDE == 8 && d[1].STRIDE == 64) {
    std::memcpy(&record.SEC_TANGENT(1, 1, gp), whole.data(), sizeof whole);
    return;
  }
  for (int j = 1; j <= 8; ++j) {
    const ARRAY_COLUMN<double> column = column_of(record.SEC_TANGENT, j, gp);
    for (int i = 1; i <= 8; ++i) column(i) = whole(i, j);
  }
}

// The leading part of SEC_TANGENT of point gp.
template <int WIDTH>
MATRIX<WIDTH, WIDTH> section_tangent(const PLATE_STATE_RECORD& record, int gp) {
  MATRIX<WIDTH, WIDTH> C;
  for (int j = 1; j <= WIDTH; ++j) {
    const ARRAY_COLUMN<double> column = column_of(record.SEC_TANGENT, j, gp);
    for (int i = 1; i <= WIDTH; ++i) C(i, j) = column(i);
  }
  return C;
}

// The twelve plastic strains of point gp in a field of twelve by four.
VECTOR<12> plastic_strains(const ARRAY_REFERENCE<double, 2>& field, int gp);

#endif
