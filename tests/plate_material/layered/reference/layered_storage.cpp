// layered_storage.cpp: see the header.
#include "layered_storage.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

constexpr std::size_t GUARD = 16;
constexpr std::size_t FIELDS = 7;

}  // namespace

layered_storage::array layered_storage::make(const std::vector<int>& extents, point_layout layout) {
  const bool scattered = layout == point_layout::scattered;
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

template <int RANK>
void layered_storage::refer(array& from, ARRAY_REFERENCE<double, RANK>& to) {
  to.BASE = &from.values[from.first];
  to.ELEMENT_LENGTH = sizeof(double);
  to.ALLOCATED_FLAG = 1;
  for (std::size_t d = 0; d < from.dimensions.size(); ++d) to.DIMENSION[d] = from.dimensions[d];
}

layered_storage::layered_storage(int n, point_layout layout, int spare)
    : extent_(n + spare), layout_(layout), records_(8) {
  for (int gp = 1; gp <= 4; ++gp) {
    for (int six = 0; six < 4; ++six) arrays_.push_back(make({6, extent_}, layout));
    for (int single = 0; single < 2; ++single) arrays_.push_back(make({extent_}, layout));
    arrays_.push_back(make({5, 5, extent_}, layout));
  }
  for (int gp = 1; gp <= 4; ++gp) {
    array* const a = &arrays_[FIELDS * static_cast<std::size_t>(gp - 1)];
    POINT_STATE_RECORD& r = point(gp);
    refer(a[0], r.SIG);
    refer(a[1], r.EP_START);
    refer(a[2], r.EP_CUR);
    refer(a[3], r.EP_INC);
    refer(a[4], r.EPBAR_START);
    refer(a[5], r.EPBAR_CUR);
    refer(a[6], r.TANGENT);
  }
  fill(0.0);
}

void layered_storage::give_to(PLATE_STATE_RECORD& record) {
  if (layout_ == point_layout::packed) {
    side_by_side_.clear();
    for (int gp = 1; gp <= 4; ++gp) side_by_side_.push_back(point(gp));
    record.POINT_STATE = REFER_TO(side_by_side_.data(), 4);
  } else {
    record.POINT_STATE =
        REFER_TO_SECTION(records_.data(), 4, 2 * static_cast<std::int64_t>(sizeof(POINT_STATE_RECORD)));
  }
}

void layered_storage::fill(double value) {
  for (array& a : arrays_) {
    for (const std::size_t at : a.elements) a.values[at] = value;
  }
}

void layered_storage::fill_random(support::seeded_random& random, double stress, double strain, double modulus) {
  const double size[FIELDS] = {stress, strain, strain, strain, strain, strain, modulus};
  for (std::size_t i = 0; i < arrays_.size(); ++i) {
    const bool equivalent = i % FIELDS == 4 || i % FIELDS == 5;
    for (const std::size_t at : arrays_[i].elements) {
      arrays_[i].values[at] = size[i % FIELDS] * random.uniform(equivalent ? 0.0 : -1.0, 1.0);
    }
  }
}

bool layered_storage::guards_hold() const {
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

std::vector<double> listed(const ARRAY_REFERENCE<double, 1>& field, int first, int last) {
  std::vector<double> values;
  for (int k = first; k <= last; ++k) values.push_back(field(k));
  return values;
}

std::vector<double> listed(const ARRAY_REFERENCE<double, 2>& field, int first, int last) {
  std::vector<double> values;
  for (int k = first; k <= last; ++k) {
    for (int i = 1; i <= 6; ++i) values.push_back(field(i, k));
  }
  return values;
}

std::vector<double> listed(const ARRAY_REFERENCE<double, 3>& field, int first, int last) {
  std::vector<double> values;
  for (int k = first; k <= last; ++k) {
    for (int j = 1; j <= 5; ++j) {
      for (int i = 1; i <= 5; ++i) values.push_back(field(i, j, k));
    }
  }
  return values;
}

layered_values values_between(const POINT_STATE_RECORD& r, int first, int last) {
  return {{"SIG", listed(r.SIG, first, last)},
          {"EP_START", listed(r.EP_START, first, last)},
          {"EP_CUR", listed(r.EP_CUR, first, last)},
          {"EP_INC", listed(r.EP_INC, first, last)},
          {"EPBAR_START", listed(r.EPBAR_START, first, last)},
          {"EPBAR_CUR", listed(r.EPBAR_CUR, first, last)},
          {"TANGENT", listed(r.TANGENT, first, last)}};
}

int points_of(const POINT_STATE_RECORD& r) { return static_cast<int>(r.EPBAR_START.DIMENSION[0].EXTENT); }

}  // namespace

layered_values values_of(const POINT_STATE_RECORD& r) { return values_between(r, 1, points_of(r)); }
layered_values values_of(const POINT_STATE_RECORD& r, int k) { return values_between(r, k, k); }

const std::vector<double>& field_of(const layered_values& values, const std::string& name) {
  for (const auto& field : values) {
    if (field.first == name) return field.second;
  }
  throw std::invalid_argument(name);
}

std::vector<std::uint64_t> bits_of(const PLATE_STATE_RECORD& record) {
  std::vector<std::uint64_t> bits;
  for (int gp = 1; gp <= 4; ++gp) {
    for (const auto& field : values_of(record.POINT_STATE(gp))) {
      for (const double value : field.second) {
        std::uint64_t word;
        std::memcpy(&word, &value, sizeof word);
        bits.push_back(word);
      }
    }
  }
  return bits;
}

void promote(POINT_STATE_RECORD& r) {
  for (int k = 1; k <= points_of(r); ++k) {
    for (int i = 1; i <= 6; ++i) r.EP_START(i, k) = r.EP_CUR(i, k);
    r.EPBAR_START(k) = r.EPBAR_CUR(k);
  }
}
