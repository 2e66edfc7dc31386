// lane_pair.h: the two lanes of lanes.h when every value is a vector of W reals, one of each of W elements.
//
// A kernel for one element works with double and with LANES, two doubles. The same kernel for W elements works with a
// vector of W doubles in the place of double, and with a LANE_PAIR of them in the place of LANES: every element goes
// through the operations of the kernel for one element, in their order, and gets the same bits.
//
//     REAL     L = LANES_OF<REAL>
//     double   LANES
//     vector   LANE_PAIR<vector>
#ifndef FINITES_LANE_PAIR_H
#define FINITES_LANE_PAIR_H

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#if defined(__AVX__)
#include <immintrin.h>
#endif

#include "common/lanes.h"

// Four and eight doubles; LANES are two.
using LANES_4 = double __attribute__((vector_size(32)));
using LANES_8 = double __attribute__((vector_size(64)));

// Copied vector by vector: compilers copy plain records in pieces of 16 bytes, and a load of 32 or 64 then waits for
// the pieces.
template <class V>
struct LANE_PAIR {
  V first, second;

  LANE_PAIR() = default;
  LANE_PAIR(const V& a, const V& b) : first(a), second(b) {}
  LANE_PAIR(const LANE_PAIR& other) : first(other.first), second(other.second) {}
  LANE_PAIR& operator=(const LANE_PAIR& other) {
    first = other.first;
    second = other.second;
    return *this;
  }

  V operator[](int lane) const { return lane == 0 ? first : second; }
  LANE_PAIR operator-() const { return {-first, -second}; }
};

template <class V>
inline LANE_PAIR<V> operator+(const LANE_PAIR<V>& a, const LANE_PAIR<V>& b) {
  return {a.first + b.first, a.second + b.second};
}
template <class V>
inline LANE_PAIR<V> operator-(const LANE_PAIR<V>& a, const LANE_PAIR<V>& b) {
  return {a.first - b.first, a.second - b.second};
}
template <class V>
inline LANE_PAIR<V> operator*(const LANE_PAIR<V>& a, const LANE_PAIR<V>& b) {
  return {a.first * b.first, a.second * b.second};
}
template <class V>
inline LANE_PAIR<V> operator/(const LANE_PAIR<V>& a, const LANE_PAIR<V>& b) {
  return {a.first / b.first, a.second / b.second};
}

// A vector, or a double, beside a pair stands in both lanes.
template <class V, class S>
inline LANE_PAIR<V> operator+(const LANE_PAIR<V>& a, const S& s) {
  return {a.first + s, a.second + s};
}
template <class V, class S>
inline LANE_PAIR<V> operator+(const S& s, const LANE_PAIR<V>& a) {
  return {s + a.first, s + a.second};
}
template <class V, class S>
inline LANE_PAIR<V> operator-(const LANE_PAIR<V>& a, const S& s) {
  return {a.first - s, a.second - s};
}
template <class V, class S>
inline LANE_PAIR<V> operator-(const S& s, const LANE_PAIR<V>& a) {
  return {s - a.first, s - a.second};
}
template <class V, class S>
inline LANE_PAIR<V> operator*(const LANE_PAIR<V>& a, const S& s) {
  return {a.first * s, a.second * s};
}
template <class V, class S>
inline LANE_PAIR<V> operator*(const S& s, const LANE_PAIR<V>& a) {
  return {s * a.first, s * a.second};
}
template <class V, class S>
inline LANE_PAIR<V> operator/(const LANE_PAIR<V>& a, const S& s) {
  return {a.first / s, a.second / s};
}
template <class V, class S>
inline LANE_PAIR<V> operator/(const S& s, const LANE_PAIR<V>& a) {
  return {s / a.first, s / a.second};
}

template <class V, class S>
inline LANE_PAIR<V>& operator+=(LANE_PAIR<V>& a, const S& s) {
  a = a + s;
  return a;
}
template <class V, class S>
inline LANE_PAIR<V>& operator*=(LANE_PAIR<V>& a, const S& s) {
  a = a * s;
  return a;
}

template <class V>
inline V sum_of(const LANE_PAIR<V>& v) {
  return v.first + v.second;
}

// What LANES{a, b} and both(a) are for doubles.
inline LANES pair_of(double a, double b) { return LANES{a, b}; }
template <class V>
inline LANE_PAIR<V> pair_of(const V& a, const V& b) {
  return {a, b};
}
template <class V>
inline LANE_PAIR<V> both(const V& v) {
  return {v, v};
}

template <class REAL>
using LANES_OF = decltype(pair_of(std::declval<REAL>(), std::declval<REAL>()));

// The real in a lane of L.
template <class L>
using REAL_OF = std::decay_t<decltype(std::declval<const L&>()[0])>;

// x, for every element. x - 0 is x, zeros of either sign too.
template <class REAL>
inline REAL of_all(double x) {
  if constexpr (std::is_same_v<REAL, double>) {
    return x;
  } else {
    return x - REAL{};
  }
}
template <class L>
inline L pair_of_all(double a, double b) {
  return pair_of(of_all<REAL_OF<L>>(a), of_all<REAL_OF<L>>(b));
}

// Of each lane; lanes.h has that of LANES.
#if defined(__AVX__)
inline LANES_4 root(LANES_4 v) { return reinterpret_cast<LANES_4>(_mm256_sqrt_pd(reinterpret_cast<__m256d>(v))); }
#endif
#if defined(__AVX512F__)
inline LANES_8 root(LANES_8 v) {
  return reinterpret_cast<LANES_8>(_mm512_maskz_sqrt_pd(0xff, reinterpret_cast<__m512d>(v)));
}
#endif

template <class V>
inline V magnitude(const V& v) {
  using BITS = decltype(v < V{});
  const BITS sign = static_cast<long long>(1ULL << 63U) - BITS{};
  return reinterpret_cast<V>(reinterpret_cast<BITS>(v) & ~sign);
}

// v where the comparison holds, 0 elsewhere.
template <class BITS, class V>
inline V where(const BITS& holds, const V& v) {
  return reinterpret_cast<V>(reinterpret_cast<BITS>(v) & holds);
}

// Whether every value of every element is finite (finiteness.h).
template <class V>
inline bool all_finite(const V* values, int count) {
  V part[4] = {};
  int i = 0;
  for (; i + 4 <= count; i += 4) {
    for (int p = 0; p < 4; ++p) part[p] += values[i + p];
  }
  for (; i < count; ++i) part[0] += values[i];
  const V sum = (part[0] + part[1]) + (part[2] + part[3]);
  const auto bad = !(sum - sum == 0.0);  // NaN where an element has an infinite value or NaN
  double lanes[sizeof(V) / sizeof(double)];
  const V marks = where(bad, 1.0 - V{});
  std::memcpy(lanes, &marks, sizeof lanes);
  double any = 0.0;
  for (const double lane : lanes) any += lane;
  return any == 0.0;
}

#endif
