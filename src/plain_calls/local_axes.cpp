// local_axes.cpp: local axes from the direction of a member and a vector beside it.
#include "plain_calls/local_axes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double LEAST_SINE = 1e-6;

void cross(const double a[3], const double b[3], double product[3]) {
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3;
    const int k = (i + 2) % 3;
    product[i] = a[j] * b[k] - a[k] * b[j];
  }
}

double size_of(const double a[3]) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }

// z := the direction of x cross up. False where up runs along x.
bool side_of(const double x[3], const double up[3], double z[3]) {
  const double largest = std::max({std::fabs(up[0]), std::fabs(up[1]), std::fabs(up[2])});
  const double scaled[3] = {up[0] / largest, up[1] / largest, up[2] / largest};
  double side[3];
  cross(x, scaled, side);
  const double size = size_of(side);
  if (!(size > LEAST_SINE * size_of(scaled))) return false;
  for (int i = 0; i < 3; ++i) z[i] = side[i] / size;
  return true;
}

}  // namespace

bool member_axes(const double xyz[2][3], const double up[3], double length, double axes[3][3]) {
  constexpr double GLOBAL_Z[3] = {0.0, 0.0, 1.0};
  constexpr double GLOBAL_X[3] = {1.0, 0.0, 0.0};
  for (int i = 0; i < 3; ++i) axes[0][i] = (xyz[1][i] - xyz[0][i]) / length;
  if (up[0] != 0.0 || up[1] != 0.0 || up[2] != 0.0) {
    if (!side_of(axes[0], up, axes[2])) return false;
  } else if (!side_of(axes[0], GLOBAL_Z, axes[2])) {
    side_of(axes[0], GLOBAL_X, axes[2]);
  }
  cross(axes[2], axes[0], axes[1]);
  return true;
}

void set_member_rotation(const double axes[3][3], double* T) {
  constexpr int ORDER = 12;
  std::fill_n(T, ORDER * ORDER, 0.0);
  for (int block = 0; block < ORDER; block += 3) {
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i < 3; ++i) T[ORDER * (block + j) + block + i] = axes[i][j];
    }
  }
}
