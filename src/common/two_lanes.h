// two_lanes.h: two doubles side by side. An operation acts on each lane alone, in the order in which the code writes it:
// the bits are those of two scalars, whatever the compiler.
#ifndef FINITES_TWO_LANES_H
#define FINITES_TWO_LANES_H

#include <cstdint>
#include <cstring>

// g++ and clang++; FINITES_SCALAR_LANES chooses the other form, to compare.
#if defined(__GNUC__) && !defined(FINITES_SCALAR_LANES)

using LANES = double __attribute__((vector_size(16)));
using LANE_BITS = std::uint64_t __attribute__((vector_size(16)));

#else

struct LANES {
  double V[2];
  double operator[](int lane) const { return V[lane]; }
};

struct LANE_BITS {
  std::uint64_t V[2];
  std::uint64_t operator[](int lane) const { return V[lane]; }
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
inline LANE_BITS operator|(LANE_BITS a, LANE_BITS b) { return {a[0] | b[0], a[1] | b[1]}; }

#endif

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

// Values that lie next to each other, wherever they begin.
inline LANES load_lanes(const double* from) {
  LANES v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

inline void store_lanes(double* to, LANES v) { std::memcpy(to, &v, sizeof v); }

inline LANES both(double value) { return LANES{value, value}; }
inline LANES swapped(LANES v) { return LANES{v[1], v[0]}; }

#endif
