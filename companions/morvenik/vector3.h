// vector3.h: vectors in space, by value.
#ifndef MORVENIK_VECTOR3_H
#define MORVENIK_VECTOR3_H

#include <algorithm>
#include <cmath>

namespace morvenik {

struct vector3 {
  double x, y, z;
};

inline vector3 operator+(const vector3& a, const vector3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline vector3 operator-(const vector3& a, const vector3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline vector3 operator*(double f, const vector3& a) { return {f * a.x, f * a.y, f * a.z}; }
inline vector3 operator/(const vector3& a, double f) { return {a.x / f, a.y / f, a.z / f}; }
inline double dot(const vector3& a, const vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline vector3 at(const double* x) { return {x[0], x[1], x[2]}; }

inline bool finite(const vector3& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }
inline double largest(const vector3& a) { return std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(a.z)}); }

// The length, also where squares would overflow or underflow.
inline double norm(const vector3& a) {
  const double plain = std::sqrt(dot(a, a));
  if (plain > 1e-140 && plain < 1e140) return plain;
  const double size = largest(a);
  if (!(size > 0.0) || !std::isfinite(size)) return size;
  const vector3 unit = a / size;
  return size * std::sqrt(dot(unit, unit));
}

}  // namespace morvenik

#endif
