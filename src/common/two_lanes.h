// two_lanes.h: two values of double precision in one register, for kernels that treat them alike.
//
// The vector extension of g++ and clang++: each operation acts on the lanes separately and rounds them as the scalar
// operation does. A machine without such registers works on one lane after the other, with the same bits.
#ifndef FINITES_TWO_LANES_H
#define FINITES_TWO_LANES_H

#include <cstring>

using two_lanes __attribute__((vector_size(16))) = double;

inline two_lanes both(double value) { return two_lanes{value, value}; }
inline two_lanes swapped(two_lanes v) { return two_lanes{v[1], v[0]}; }

// Two neighbours in memory.
inline two_lanes lanes_at(const double* at) {
  two_lanes v;
  std::memcpy(&v, at, sizeof v);
  return v;
}
inline void set_lanes(two_lanes v, double* at) { std::memcpy(at, &v, sizeof v); }

#endif
