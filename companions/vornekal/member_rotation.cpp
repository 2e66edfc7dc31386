// member_rotation.cpp: NL_RotationMatrix_Beam, the local axes of a member from its nodes and its orientation.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "finites/fields.h"
#include "finites/views.hpp"
#include "vornekal.h"

namespace {

constexpr int DOFS = 12;
// The sine of the angle between the member and n1, below which n1 gives no direction.
constexpr double LEAST_SINE = 1e-6;
// The direction cosine with global Z, above which a member counts as upright.
constexpr double UPRIGHT = 0.9;

using vector = std::array<double, 3>;
using axes = std::array<vector, 3>;

constexpr axes GLOBAL{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};

bool finite(const vector& a) { return std::isfinite(a[0]) && std::isfinite(a[1]) && std::isfinite(a[2]); }

vector cross(const vector& a, const vector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double length_of(const vector& a) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }

// The direction of a; false when it has none. The largest component becomes 1 first, so that squares stay in range.
bool normalise(vector& a) {
  if (!finite(a)) return false;
  const double largest = std::max({std::fabs(a[0]), std::fabs(a[1]), std::fabs(a[2])});
  if (!(largest > 0.0)) return false;
  for (double& component : a) component /= largest;
  const double length = length_of(a);
  for (double& component : a) component /= length;
  return true;
}

// Whether A has the words 1 to `last` of a block at `start`. Without a known extent only the start is checked.
bool holds(std::int32_t extent, std::int64_t start, int last) {
  return start >= 1 && (extent <= 0 || start + last <= extent);
}

vector at(const MODEL_DATA_READER& A, std::int64_t first) { return {A(first), A(first + 1), A(first + 2)}; }

// A direction well away from x, for a member whose n1 gives none.
vector any_other(const vector& x) { return std::fabs(x[2]) > UPRIGHT ? GLOBAL[1] : GLOBAL[2]; }

axes axes_along(const vector& x, vector n1) {
  vector z{};
  if (normalise(n1)) z = cross(x, n1);
  if (!(length_of(z) > LEAST_SINE)) z = cross(x, any_other(x));
  normalise(z);
  return {x, cross(z, x), z};
}

axes member_axes(std::int64_t I, const double* a, std::int32_t extent) {
  if (!holds(extent, I, MEMBER_DIRECTION + 2)) return GLOBAL;
  const MODEL_DATA_READER A(a);
  const std::int64_t first = A.INTEGER(I + MEMBER_NODE_1), second = A.INTEGER(I + MEMBER_NODE_2);
  if (!holds(extent, first, NODE_X + 2) || !holds(extent, second, NODE_X + 2)) return GLOBAL;
  const vector from = at(A, first + NODE_X), to = at(A, second + NODE_X);
  // Halves first: the difference of two finite coordinates stays finite.
  vector x{};
  for (std::size_t i = 0; i < 3; ++i) x[i] = 0.5 * to[i] - 0.5 * from[i];
  if (!normalise(x)) return GLOBAL;
  return axes_along(x, at(A, I + MEMBER_DIRECTION));
}

}  // namespace

void NL_RotationMatrix_Beam(const std::int32_t* I, const double* A, const std::int32_t* NDIM, double* R,
                            const std::int32_t* /*POS*/) {
  const axes rows = member_axes(*I, A, *NDIM);
  std::fill_n(R, DOFS * DOFS, 0.0);
  const MATRIX_VIEW<DOFS> RV(R);
  for (int block = 0; block < DOFS; block += 3) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) {
        RV(block + static_cast<int>(i) + 1, block + static_cast<int>(j) + 1) = rows[i][j];
      }
    }
  }
}
