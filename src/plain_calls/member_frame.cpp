// member_frame.cpp: checks, local axes and answers that the plain calls of members share.
#include "plain_calls/member_frame.h"

#include <algorithm>
#include <cmath>

#include "common/finiteness.h"
#include "plain_calls/lanes/beam_limits.h"

namespace {

constexpr double LARGEST = 1e30, SHORTEST = 1e-30;
// Ends closer than this share of their largest coordinate differ by rounding alone.
constexpr double COINCIDENCE = 1e-14;
using POINT = VECTOR<3>;

POINT cross(const POINT& a, const POINT& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

double size_of(const POINT& a) { return std::sqrt(a(1) * a(1) + a(2) * a(2) + a(3) * a(3)); }

double largest_of(const POINT& a) { return std::fmax(std::fabs(a(1)), std::fmax(std::fabs(a(2)), std::fabs(a(3)))); }

POINT divided(const POINT& a, double by) { return {{a(1) / by, a(2) / by, a(3) / by}}; }

POINT end_of(const double xyz[3], const double* offset) {
  if (offset == nullptr) return {{xyz[0], xyz[1], xyz[2]}};
  return {{xyz[0] + offset[0], xyz[1] + offset[1], xyz[2] + offset[2]}};
}

// The direction of x cross up, a unit vector. False where up runs along the member.
bool side_of(const POINT& x, POINT up, POINT& z) {
  up = divided(up, largest_of(up));
  const POINT side = cross(x, up);
  const double size = size_of(side);
  if (!(size > LEAST_SINE * size_of(up))) return false;
  z = divided(side, size);
  return true;
}

}  // namespace

finites_status check_member_numbers(const double* values, int count) {
  finites_status status = FINITES_OK;
  for (int i = 0; i < count; ++i) {
    if (!std::isfinite(values[i])) return FINITES_NAN;
    if (std::fabs(values[i]) > LARGEST) status = FINITES_RANGE;
  }
  return status;
}

finites_status frame_of_member(const double xyz[2][3], const double (*offset)[3], const double* up,
                               MEMBER_FRAME& frame) {
  const POINT first = end_of(xyz[0], offset == nullptr ? nullptr : offset[0]);
  const POINT second = end_of(xyz[1], offset == nullptr ? nullptr : offset[1]);
  const POINT along = {{second(1) - first(1), second(2) - first(2), second(3) - first(3)}};
  const double L = size_of(along);
  if (!(L > COINCIDENCE * std::fmax(largest_of(first), largest_of(second)))) return FINITES_COINCIDENT;
  if (L < SHORTEST) return FINITES_RANGE;
  const POINT x = divided(along, L);
  POINT z;
  const bool usual = up == nullptr || (up[0] == 0.0 && up[1] == 0.0 && up[2] == 0.0);
  if (usual) {
    if (!side_of(x, {{0.0, 0.0, 1.0}}, z)) side_of(x, {{1.0, 0.0, 0.0}}, z);
  } else if (!side_of(x, {{up[0], up[1], up[2]}}, z)) {
    return FINITES_ORIENTATION;
  }
  const POINT y = cross(z, x);
  frame.length = L;
  for (int i = 1; i <= 3; ++i) {
    frame.center[i - 1] = 0.5 * (first(i) + second(i));
    frame.axes(1, i) = x(i);
    frame.axes(2, i) = y(i);
    frame.axes(3, i) = z(i);
  }
  return FINITES_OK;
}

void rotation_of_member(const MEMBER_FRAME& frame, double* T) {
  const MATRIX_VIEW<12> TV(T);
  std::fill_n(T, 144, 0.0);
  for (int block = 0; block < 12; block += 3) {
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) TV(block + i, block + j) = frame.axes(i, j);
    }
  }
}

void measure_member(const MEMBER_FRAME& frame, double area, double density, finites_member_measures& measures) {
  measures.length = frame.length;
  measures.volume = area * frame.length;
  measures.mass = density * measures.volume;
  for (int a = 0; a < 3; ++a) {
    measures.center[a] = frame.center[a];
    for (int i = 0; i < 3; ++i) measures.axes[a][i] = frame.axes(a + 1, i + 1);
  }
}

finites_status hand_over(const double* values, int count, double* to) {
  if (!all_finite(values, count)) return FINITES_RESULT;
  std::copy_n(values, count, to);
  return FINITES_OK;
}
