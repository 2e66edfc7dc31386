// state_fields.cpp: the fields of a state in its memory.
#include "plain_calls/state_fields.h"

#include <algorithm>

#include "finites/views.hpp"

std::size_t count_of_state_reals(const finites_plastic& plastic) {
  if (plastic.model == FINITES_WHOLE_SECTION) return SECTION_REALS;
  return STATE_POINTS * static_cast<std::size_t>(plastic.layers) * LAYER_REALS;
}

STATE_FIELDS::STATE_FIELDS(const finites_plastic& plastic, double* reals)
    : next_(reals), layers_(plastic.model == FINITES_LAYERED ? plastic.layers : 0) {
  if (layers_ == 0) {
    refer_section();
  } else {
    refer_layers();
  }
}

double* STATE_FIELDS::take(std::size_t count) {
  double* const first = next_;
  next_ += count;
  return first;
}

void STATE_FIELDS::refer_section() {
  constexpr std::size_t P = STATE_POINTS;
  PLATE_STATE_RECORD& r = record_;
  for (auto* const field : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) *field = REFER_TO(take(12 * P), 12, P);
  r.SEC_TANGENT = REFER_TO(take(64 * P), 8, 8, P);
  for (auto* const field :
       {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
    *field = REFER_TO(take(P), P);
  }
}

void STATE_FIELDS::refer_layers() {
  const auto n = static_cast<std::size_t>(layers_);
  for (POINT_STATE_RECORD& point : points_) {
    for (auto* const field : {&point.SIG, &point.EP_START, &point.EP_CUR, &point.EP_INC}) {
      *field = REFER_TO(take(6 * n), 6, n);
    }
    for (auto* const field : {&point.EPBAR_START, &point.EPBAR_CUR}) *field = REFER_TO(take(n), n);
    point.TANGENT = REFER_TO(take(25 * n), 5, 5, n);
  }
  record_.POINT_STATE = REFER_TO(points_, STATE_POINTS);
}

void STATE_FIELDS::accept() {
  if (layers_ == 0) {
    std::copy_n(record_.SEC_EP_CUR.BASE, 12 * STATE_POINTS, record_.SEC_EP_START.BASE);
    std::copy_n(record_.SEC_EPBAR_CUR.BASE, STATE_POINTS, record_.SEC_EPBAR_START.BASE);
    std::copy_n(record_.SEC_SIGN_CUR.BASE, STATE_POINTS, record_.SEC_SIGN_START.BASE);
    return;
  }
  for (const POINT_STATE_RECORD& point : points_) {
    std::copy_n(point.EP_CUR.BASE, 6 * layers_, point.EP_START.BASE);
    std::copy_n(point.EPBAR_CUR.BASE, layers_, point.EPBAR_START.BASE);
  }
}
