// pair.h: two reals side by side, with the arithmetic of each of them.
//
// The vector types of the compilers: every operation acts on the two values alike and rounds each as the operation on
// one real does. A PAIR holds the x and y components of a vector in the plane of an element, or one value of two
// records.
#ifndef FINITES_PAIR_H
#define FINITES_PAIR_H

#include <cmath>
#include <cstring>

using PAIR = double __attribute__((vector_size(16)));

// The same value twice.
inline PAIR twin(double value) { return PAIR{value, value}; }
inline PAIR exchanged(PAIR v) { return PAIR{v[1], v[0]}; }
inline double total(PAIR v) { return v[0] + v[1]; }
inline double dot(PAIR a, PAIR b) { return total(a * b); }

// The vector turned back by a right angle: (y, -x).
inline PAIR turned(PAIR v) { return PAIR{v[1], -v[0]}; }

// Bits of the two values: a comparison gives all or none of each.
using PAIR_BITS = long long __attribute__((vector_size(16)));

constexpr long long SIGN_BIT = static_cast<long long>(1ULL << 63U);
inline PAIR_BITS pair_bits(PAIR v) {
  PAIR_BITS bits;
  std::memcpy(&bits, &v, sizeof bits);
  return bits;
}
inline PAIR from_bits(PAIR_BITS bits) {
  PAIR v;
  std::memcpy(&v, &bits, sizeof v);
  return v;
}
inline PAIR magnitudes(PAIR v) { return from_bits(pair_bits(v) & ~PAIR_BITS{SIGN_BIT, SIGN_BIT}); }

// v, which is not negative, with the signs of s.
inline PAIR with_signs(PAIR v, PAIR s) {
  return from_bits(pair_bits(v) | (pair_bits(s) & PAIR_BITS{SIGN_BIT, SIGN_BIT}));
}

// v where the comparison holds, 0 elsewhere.
inline PAIR where(PAIR_BITS holds, PAIR v) { return from_bits(pair_bits(v) & holds); }

inline PAIR roots(PAIR v) { return PAIR{std::sqrt(v[0]), std::sqrt(v[1])}; }

// Two values that follow each other in memory.
inline PAIR pair_at(const double* values) {
  PAIR v;
  std::memcpy(&v, values, sizeof v);
  return v;
}
inline void set_pair(double* values, PAIR v) { std::memcpy(values, &v, sizeof v); }

#endif
