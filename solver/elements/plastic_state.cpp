// plastic_state.cpp: allocation, promotion and return of the plastic state.
#include "elements/plastic_state.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "finites/views.hpp"
#include "model/index.h"

namespace solver {

namespace {

constexpr std::size_t SURFACE_POINTS = 4;
constexpr std::size_t SECTION_REALS = SURFACE_POINTS * (3 * 12 + 64 + 6);  // the ten SEC_ fields
constexpr std::size_t LAYER_REALS = 4 * 6 + 2 + 25;                        // of one thickness point

template <class T, int RANK>
std::size_t extent(const ARRAY_REFERENCE<T, RANK>& array, int d) {
  return subscript(array.DIMENSION[d].EXTENT);
}

template <int RANK>
void copy(const ARRAY_REFERENCE<double, RANK>& from, const ARRAY_REFERENCE<double, RANK>& to) {
  std::size_t count = 1;
  for (int d = 0; d < RANK; ++d) count *= extent(from, d);
  for (std::size_t i = 0; i < count; ++i) to.BASE[i] = from.BASE[i];
}

}  // namespace

plastic_state::plastic_state(plate_model which, int points) : model_(which), thickness_points_(subscript(points)) {
  if (which == plate_model::SECTION) values_.assign(SECTION_REALS, 0.0);
  if (which == plate_model::LAYERED) {
    values_.assign(SURFACE_POINTS * thickness_points_ * LAYER_REALS, 0.0);
    points_.assign(SURFACE_POINTS, POINT_STATE_RECORD{});
  }
}

double* plastic_state::take(std::size_t count) {
  double* const place = values_.data() + taken_;
  taken_ += count;
  return place;
}

void plastic_state::refer(PLATE_STATE_RECORD& record) {
  taken_ = 0;
  constexpr std::size_t P = SURFACE_POINTS;
  if (model_ == plate_model::SECTION) {
    record.SEC_EP_START = REFER_TO(take(12 * P), 12, P);
    record.SEC_EP_CUR = REFER_TO(take(12 * P), 12, P);
    record.SEC_EP_INC = REFER_TO(take(12 * P), 12, P);
    record.SEC_TANGENT = REFER_TO(take(64 * P), 8, 8, P);
    for (auto* const field : {&record.SEC_EPBAR_START, &record.SEC_EPBAR_CUR, &record.SEC_CURV_INC, &record.SEC_AUX,
                              &record.SEC_SIGN_CUR, &record.SEC_SIGN_START}) {
      *field = REFER_TO(take(P), P);
    }
  }
  if (model_ != plate_model::LAYERED) return;
  const std::size_t n = thickness_points_;
  for (POINT_STATE_RECORD& point : points_) {
    for (auto* const field : {&point.SIG, &point.EP_START, &point.EP_CUR, &point.EP_INC}) {
      *field = REFER_TO(take(6 * n), 6, n);
    }
    for (auto* const field : {&point.EPBAR_START, &point.EPBAR_CUR}) *field = REFER_TO(take(n), n);
    point.TANGENT = REFER_TO(take(25 * n), 5, 5, n);
  }
  record.POINT_STATE = REFER_TO(points_.data(), points_.size());
}

void plastic_state::restore() { std::copy(accepted_.begin(), accepted_.end(), values_.begin()); }

bool plastic_state::take_accepted(const std::vector<double>& state) {
  if (state.size() != values_.size()) return false;
  accepted_ = state;
  restore();
  return true;
}

void plastic_state::promote(PLATE_STATE_RECORD& record) {
  if (ALLOCATED(record.SEC_EP_START)) {
    copy(record.SEC_EP_CUR, record.SEC_EP_START);
    copy(record.SEC_EPBAR_CUR, record.SEC_EPBAR_START);
    copy(record.SEC_SIGN_CUR, record.SEC_SIGN_START);
  }
  for (const POINT_STATE_RECORD& point : points_) {
    copy(point.EP_CUR, point.EP_START);
    copy(point.EPBAR_CUR, point.EPBAR_START);
  }
  accepted_ = values_;
}

namespace {

// EPBAR_CUR of every thickness point, which no update reads.
template <class ACTION>
void each_mark(const PLATE_STATE_RECORD& record, const ACTION& action) {
  if (!ALLOCATED(record.POINT_STATE)) return;
  for (std::size_t gp = 1; gp <= extent(record.POINT_STATE, 0); ++gp) {
    const ARRAY_REFERENCE<double, 1>& mark = record.POINT_STATE(gp).EPBAR_CUR;
    for (std::size_t k = 0; k < extent(mark, 0); ++k) action(mark.BASE[k]);
  }
}

}  // namespace

void plastic_state::rewind(PLATE_STATE_RECORD& record) {
  if (ALLOCATED(record.SEC_EP_START)) copy(record.SEC_EP_START, record.SEC_EP_CUR);
  each_mark(record, [](double& mark) { mark = std::numeric_limits<double>::quiet_NaN(); });
}

bool plastic_state::all_updated(const PLATE_STATE_RECORD& record) {
  bool updated = true;
  each_mark(record, [&](double mark) { updated = updated && !std::isnan(mark); });
  return updated;
}

}  // namespace solver
