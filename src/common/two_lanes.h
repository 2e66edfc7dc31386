// two_lanes.h: two doubles side by side. An operation acts on each lane alone, in the order in which the code writes it:
// the bits are those of two scalars, whatever the compiler.
#ifndef FINITES_TWO_LANES_H
#define FINITES_TWO_LANES_H

#include <cstring>

// g++ and clang++; FINITES_SCALAR_LANES chooses the other form, to compare.
#if defined(__GNUC__) && !defined(FINITES_SCALAR_LANES)

using LANES = double __attribute__((vector_size(16)));
using LANE_MASK = long long __attribute__((vector_size(16)));

inline LANE_MASK equal(LANES a, LANES b) { return a == b; }

#else

struct LANES {
  double V[2];
  double operator[](int lane) const { return V[lane]; }
};

struct LANE_MASK {
  long long V[2];
  long long operator[](int lane) const { return V[lane]; }
};

inline LANES operator+(LANES a, LANES b) { return {a[0] + b[0], a[1] + b[1]}; }
inline LANES operator-(LANES a, LANES b) { return {a[0] - b[0], a[1] - b[1]}; }
inline LANES operator*(LANES a, LANES b) { return {a[0] * b[0], a[1] * b[1]}; }
inline LANES operator/(LANES a, LANES b) { return {a[0] / b[0], a[1] / b[1]}; }
inline LANES operator-(LANES a) { return {-a[0], -a[1]}; }
inline LANES operator+(LANES a, double b) { return {a[0] + b, a[1] + b}; }
inline LANES operator-(LANES a, double b) { return {a[0] - b, a[1] - b}; }
inline LANES operator*(LANES a, double b) { return {a[0] * b, a[1] * b}; }
inline LANES operator/(LANES a, double b) { return {a[0] / b, a[1] / b}; }
inline LANES operator+(double a, LANES b) { return {a + b[0], a + b[1]}; }
inline LANES operator-(double a, LANES b) { return {a - b[0], a - b[1]}; }
inline LANES operator*(double a, LANES b) { return {a * b[0], a * b[1]}; }
inline LANES operator/(double a, LANES b) { return {a / b[0], a / b[1]}; }
inline LANE_MASK operator&(LANE_MASK a, LANE_MASK b) { return {a[0] & b[0], a[1] & b[1]}; }

inline LANE_MASK equal(LANES a, LANES b) { return {a[0] == b[0] ? -1 : 0, a[1] == b[1] ? -1 : 0}; }

#endif

// equal: all bits of a lane set where the two are the same number, none otherwise.
inline bool both_set(LANE_MASK mask) { return (mask[0] & mask[1]) != 0; }

// Values that lie next to each other, wherever they begin.
inline LANES load_lanes(const double* from) {
  LANES v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

inline void store_lanes(double* to, LANES v) { std::memcpy(to, &v, sizeof v); }

#endif
