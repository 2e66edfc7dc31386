// lanes.h: two doubles side by side.
//
// The vector types of g++ and clang++: an operation acts on each lane alone and rounds it as the operation on one
// double does, in the order in which the code writes it, so that the bits are those of two scalar formulas; a double
// beside a vector stands in both lanes. The lanes are the x and y components of a vector in a plane, or the same value
// of two points, columns or records. Where a machine has no such registers the compiler works the lanes off one after
// the other.
#ifndef FINITES_LANES_H
#define FINITES_LANES_H

#include <cmath>
#include <cstdint>
#include <cstring>

using LANES = double __attribute__((vector_size(16)));
// A comparison of LANES gives all bits of a lane, or none.
using LANE_BITS = long long __attribute__((vector_size(16)));

inline LANES both(double value) { return LANES{value, value}; }
inline LANES swapped(LANES v) { return LANES{v[1], v[0]}; }
inline double sum_of(LANES v) { return v[0] + v[1]; }

// Two values that follow each other in memory, wherever they begin.
inline LANES lanes_at(const double* from) {
  LANES v;
  std::memcpy(&v, from, sizeof v);
  return v;
}
inline void store_lanes(double* to, LANES v) { std::memcpy(to, &v, sizeof v); }

// Of a double and of each lane: formulas that serve both take either.
inline double root(double x) { return std::sqrt(x); }
inline LANES root(LANES v) { return LANES{std::sqrt(v[0]), std::sqrt(v[1])}; }
inline double magnitude(double x) { return std::fabs(x); }
inline LANES magnitude(LANES v) { return LANES{std::fabs(v[0]), std::fabs(v[1])}; }

inline std::uint64_t bits_of(double x) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}
inline LANE_BITS bits_of(LANES v) {
  LANE_BITS bits;
  std::memcpy(&bits, &v, sizeof bits);
  return bits;
}
inline LANES from_bits(LANE_BITS bits) {
  LANES v;
  std::memcpy(&v, &bits, sizeof v);
  return v;
}

// v, which is not negative, with the signs of s.
inline LANES with_signs(LANES v, LANES s) {
  constexpr auto SIGN = static_cast<long long>(1ULL << 63U);
  return from_bits(bits_of(v) | (bits_of(s) & LANE_BITS{SIGN, SIGN}));
}

// v where the comparison holds, 0 elsewhere.
inline LANES where(LANE_BITS holds, LANES v) { return from_bits(bits_of(v) & holds); }

// Of vectors in a plane: a . b, and v turned back by a right angle, (y, -x).
inline double dot(LANES a, LANES b) { return sum_of(a * b); }
inline LANES turned(LANES v) { return LANES{v[1], -v[0]}; }

#endif
