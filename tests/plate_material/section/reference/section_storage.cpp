// section_storage.cpp: see the header.
#include "section_storage.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

constexpr std::size_t GUARD = 16;
const std::vector<std::vector<int>> EXTENTS = {{12, 4}, {12, 4}, {4}, {4}, {12, 4}, {8, 8, 4}, {4}, {4}, {4}, {4}};

}  // namespace

section_storage::array section_storage::make(const std::vector<int>& extents, array_layout layout) {
  const bool scattered = layout == array_layout::scattered;
  array a;
  a.first = GUARD;
  a.dimensions.resize(extents.size());
  std::int64_t stride = scattered ? 3 : 1;
  for (std::size_t i = 0; i < extents.size(); ++i) {
    const std::size_t d = scattered ? extents.size() - 1 - i : i;
    a.dimensions[d] = {extents[d], stride * static_cast<std::int64_t>(sizeof(double)), 1};
    stride *= extents[d] + (scattered ? 1 : 0);
  }
  a.values.assign(2 * GUARD + static_cast<std::size_t>(stride), std::numeric_limits<double>::quiet_NaN());
  a.elements = {a.first};
  for (const ARRAY_DIMENSION& d : a.dimensions) {
    std::vector<std::size_t> more;
    for (std::int64_t i = 0; i < d.EXTENT; ++i) {
      for (const std::size_t at : a.elements) {
        more.push_back(at + static_cast<std::size_t>(i * d.STRIDE) / sizeof(double));
      }
    }
    a.elements = more;
  }
  return a;
}

section_storage::section_storage(array_layout layout) {
  for (const std::vector<int>& extents : EXTENTS) arrays_.push_back(make(extents, layout));
  fill(0.0);
}

template <int RANK>
void section_storage::refer(array& from, ARRAY_REFERENCE<double, RANK>& to) {
  to.BASE = &from.values[from.first];
  to.ELEMENT_LENGTH = sizeof(double);
  to.ALLOCATED_FLAG = 1;
  for (std::size_t d = 0; d < from.dimensions.size(); ++d) to.DIMENSION[d] = from.dimensions[d];
}

void section_storage::give_to(PLATE_STATE_RECORD& r) {
  refer(arrays_[0], r.SEC_EP_START);
  refer(arrays_[1], r.SEC_EP_CUR);
  refer(arrays_[2], r.SEC_EPBAR_START);
  refer(arrays_[3], r.SEC_EPBAR_CUR);
  refer(arrays_[4], r.SEC_EP_INC);
  refer(arrays_[5], r.SEC_TANGENT);
  refer(arrays_[6], r.SEC_CURV_INC);
  refer(arrays_[7], r.SEC_AUX);
  refer(arrays_[8], r.SEC_SIGN_CUR);
  refer(arrays_[9], r.SEC_SIGN_START);
}

void section_storage::fill(double value) {
  for (array& a : arrays_) {
    for (const std::size_t at : a.elements) a.values[at] = value;
  }
}

bool section_storage::guards_hold() const {
  for (const array& a : arrays_) {
    std::vector<double> rest = a.values;
    for (const std::size_t at : a.elements) rest[at] = std::numeric_limits<double>::quiet_NaN();
    for (const double value : rest) {
      if (!std::isnan(value)) return false;
    }
  }
  return true;
}

namespace {

std::vector<double> listed(const ARRAY_REFERENCE<double, 1>& field) {
  std::vector<double> values;
  for (int gp = 1; gp <= 4; ++gp) values.push_back(field(gp));
  return values;
}

std::vector<double> listed(const ARRAY_REFERENCE<double, 2>& field) {
  std::vector<double> values;
  for (int gp = 1; gp <= 4; ++gp) {
    for (int i = 1; i <= 12; ++i) values.push_back(field(i, gp));
  }
  return values;
}

std::vector<double> listed(const ARRAY_REFERENCE<double, 3>& field) {
  std::vector<double> values;
  for (int gp = 1; gp <= 4; ++gp) {
    for (int j = 1; j <= 8; ++j) {
      for (int i = 1; i <= 8; ++i) values.push_back(field(i, j, gp));
    }
  }
  return values;
}

}  // namespace

section_values values_of(const PLATE_STATE_RECORD& r) {
  return {{"SEC_EP_START", listed(r.SEC_EP_START)},       {"SEC_EP_CUR", listed(r.SEC_EP_CUR)},
          {"SEC_EPBAR_START", listed(r.SEC_EPBAR_START)}, {"SEC_EPBAR_CUR", listed(r.SEC_EPBAR_CUR)},
          {"SEC_EP_INC", listed(r.SEC_EP_INC)},           {"SEC_TANGENT", listed(r.SEC_TANGENT)},
          {"SEC_CURV_INC", listed(r.SEC_CURV_INC)},       {"SEC_AUX", listed(r.SEC_AUX)},
          {"SEC_SIGN_CUR", listed(r.SEC_SIGN_CUR)},       {"SEC_SIGN_START", listed(r.SEC_SIGN_START)}};
}

std::vector<double> field_of(const section_values& values, const std::string& name) {
  for (const auto& field : values) {
    if (field.first == name) return field.second;
  }
  throw std::invalid_argument(name);
}

void promote(PLATE_STATE_RECORD& r) {
  for (int gp = 1; gp <= 4; ++gp) {
    for (int i = 1; i <= 12; ++i) r.SEC_EP_START(i, gp) = r.SEC_EP_CUR(i, gp);
    r.SEC_EPBAR_START(gp) = r.SEC_EPBAR_CUR(gp);
    r.SEC_SIGN_START(gp) = r.SEC_SIGN_CUR(gp);
  }
}
