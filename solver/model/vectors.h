// vectors.h: vectors in space.
#ifndef FINITES_SOLVER_VECTORS_H
#define FINITES_SOLVER_VECTORS_H

#include <array>

namespace solver {

constexpr double PI = 3.14159265358979323846;

inline double dot(const std::array<double, 3>& a, const std::array<double, 3>& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline std::array<double, 3> cross(const std::array<double, 3>& a, const std::array<double, 3>& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace solver

#endif
