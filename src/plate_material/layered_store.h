// layered_store.h: what a thickness point reads from POINT_STATE and stores there.
#ifndef FINITES_LAYERED_STORE_H
#define FINITES_LAYERED_STORE_H

#include <cstdint>
#include <cstring>

#include "common/array_columns.h"
#include "common/two_lanes.h"
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

inline VECTOR<6> difference(const VECTOR<6>& a, const VECTOR<6>& b) {
  VECTOR<6> d;
  for (int i = 1; i <= 6; ++i) d(i) = a(i) - b(i);
  return d;
}

// The fields of the thickness points of one surface point. Most solvers keep them PACKED: the values of a point next to
// each other. Then a field is a place and a stride, and is read and stored as a whole.
class POINT_FIELDS {
 public:
  // increment_from_current: EP_INC counts from EP_CUR, otherwise from EP_START.
  POINT_FIELDS(const POINT_STATE_RECORD& state, bool increment_from_current)
      : s_(state), from_current_(increment_from_current) {
    const auto whole = [](const ARRAY_REFERENCE<double, 2>& field) { return field.DIMENSION[0].STRIDE == 8; };
    packed_ = s_.TANGENT.DIMENSION[0].STRIDE == 8 && s_.TANGENT.DIMENSION[1].STRIDE == 40 && whole(s_.SIG) &&
              whole(s_.EP_START) && whole(s_.EP_CUR) && whole(s_.EP_INC);
  }

  VECTOR<6> ep_start(std::int32_t k) const { return values(s_.EP_START, k); }
  double ebar_start(std::int32_t k) const { return s_.EPBAR_START(k); }

  // Stress, plastic strain p with its increment, equivalent plastic strain and tangent of point k.
  void store(std::int32_t k, const VECTOR<6>& sigma, const VECTOR<6>& p, double ebar, const MATRIX5& C) const {
    const VECTOR<6> reference = values(from_current_ ? s_.EP_CUR : s_.EP_START, k);
    set_values(s_.SIG, k, sigma);
    set_values(s_.EP_INC, k, difference(p, reference));
    set_values(s_.EP_CUR, k, p);
    s_.EPBAR_CUR(k) = ebar;
    if (packed_) {
      std::memcpy(&s_.TANGENT(1, 1, k), C.data(), sizeof C);
      return;
    }
    for (int c = 1; c <= 5; ++c) {
      const ARRAY_COLUMN<double> column = column_of(s_.TANGENT, c, k);
      for (int r = 1; r <= 5; ++r) column(r) = C(r, c);
    }
  }

 private:
  VECTOR<6> values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) const {
    if (!packed_) return global_values(field, k);
    VECTOR<6> v;
    std::memcpy(v.data(), &field(1, k), sizeof v);
    return v;
  }

  void set_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k, const VECTOR<6>& v) const {
    if (packed_) {
      std::memcpy(&field(1, k), v.data(), sizeof v);
      return;
    }
    const ARRAY_COLUMN<double> column = column_of(field, k);
    for (int i = 1; i <= 6; ++i) column(i) = v(i);
  }

  const POINT_STATE_RECORD& s_;
  bool from_current_;
  bool packed_;
};

#endif
