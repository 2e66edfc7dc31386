// rotation_case.h: one member in a MODEL_DATA of its own, and the call on it.
#ifndef FINITES_TESTS_ROTATION_CASE_H
#define FINITES_TESTS_ROTATION_CASE_H

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "comparison.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "guarded_buffer.h"
#include "random_shapes.h"
#include "vornekal.h"

namespace rotation_case {

using support::point;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

constexpr std::int32_t ENTRY = 4, NODE_1 = 30, NODE_2 = 50, EXTENT = 57;

// Words that the routine has no business with hold NaN.
struct member {
  std::vector<double> storage = std::vector<double>(EXTENT, NOT_A_NUMBER);
  std::int32_t entry = ENTRY;
  std::int32_t extent = EXTENT;

  member(const point& from, const point& to, const point& n1) {
    const MODEL_DATA A(storage.data());
    A(ENTRY + MEMBER_NODE_1) = NODE_1;
    A(ENTRY + MEMBER_NODE_2) = NODE_2;
    for (int i = 0; i < 3; ++i) {
      A(NODE_1 + NODE_X + i) = from[static_cast<std::size_t>(i)];
      A(NODE_2 + NODE_X + i) = to[static_cast<std::size_t>(i)];
      A(ENTRY + MEMBER_DIRECTION + i) = n1[static_cast<std::size_t>(i)];
    }
  }
  double& word(std::int32_t i) { return storage[static_cast<std::size_t>(i - 1)]; }
};

using routine = decltype(&NL_RotationMatrix_Beam);

// The 12 by 12 result by columns; what was not written shows.
inline std::vector<double> rotation_of(const member& m, routine call = &NL_RotationMatrix_Beam) {
  support::guarded_buffer R(144);
  const std::int32_t pos = 3;
  call(&m.entry, m.storage.data(), &m.extent, R.data(), &pos);
  EXPECT_EQ(R.changed(), support::range(1, 144));
  return support::values(R.data(), 144);
}

// Four blocks with these rows on the diagonal.
inline std::vector<double> blocks(const point& x, const point& y, const point& z) {
  std::vector<double> R(144, 0.0);
  const point rows[3] = {x, y, z};
  for (std::size_t block = 0; block < 12; block += 3) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) R[12 * (block + j) + block + i] = rows[i][j];
    }
  }
  return R;
}

inline std::vector<double> identity() { return blocks({1, 0, 0}, {0, 1, 0}, {0, 0, 1}); }

}  // namespace rotation_case

#endif
