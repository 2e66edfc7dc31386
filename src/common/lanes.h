// lanes.h: two doubles side by side, for sums of the same form in pairs.
//
// A vector type of g++ and clang++: a + b, a - b, a * b, a / b take each lane by itself and round it as the plain
// operator does, so that a lane has the bits of the scalar formula on every machine; a double beside a vector stands in
// both lanes. Where a machine has no such registers the compiler works the lanes off one after the other.
#ifndef FINITES_LANES_H
#define FINITES_LANES_H

#include <cmath>
#include <cstring>

using LANES = double __attribute__((vector_size(16)));

// from[0] and from[1], at any address; the same places to := v.
inline LANES loaded(const double* from) {
  LANES v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

inline void store(LANES v, double* to) { std::memcpy(to, &v, sizeof v); }

// Of a double and of each lane: formulas that serve both take REAL for either.
inline double root(double x) { return std::sqrt(x); }
inline LANES root(LANES v) { return LANES{std::sqrt(v[0]), std::sqrt(v[1])}; }
inline double magnitude(double x) { return std::fabs(x); }
inline LANES magnitude(LANES v) { return LANES{std::fabs(v[0]), std::fabs(v[1])}; }

#endif
