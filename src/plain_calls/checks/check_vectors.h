// check_vectors.h: vectors in space for the checks of geometry.
#ifndef FINITES_CHECK_VECTORS_H
#define FINITES_CHECK_VECTORS_H

#include <cmath>

#include "finites/fields.h"
#include "plain_calls/checks/findings.h"

// What counts as no length beside the longest side, and as no area beside its square.
constexpr double TINY = 1e-12;

struct VECTOR3 {
  double x, y, z;
};

inline VECTOR3 operator-(const VECTOR3& a, const VECTOR3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline double dot(const VECTOR3& a, const VECTOR3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline double size(const VECTOR3& a) { return std::sqrt(dot(a, a)); }
inline bool finite(const VECTOR3& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

inline VECTOR3 cross(const VECTOR3& a, const VECTOR3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// The place of the node whose block starts at ptr.
inline VECTOR3 node_at(const GUARDED_DATA& A, std::int64_t ptr) {
  return {A(ptr + NODE_X), A(ptr + NODE_X + 1), A(ptr + NODE_X + 2)};
}

#endif
