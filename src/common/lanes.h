// lanes.h: two reals side by side, on which each operation acts at the same time.
//
// Every lane has the arithmetic of one real, rounded alike: a routine whose reals are LANES gives the bits that it gives
// with each lane alone. A mixed operation takes the plain real in both lanes.
#ifndef FINITES_LANES_H
#define FINITES_LANES_H

#include <cstring>

#if defined(__GNUC__) && !defined(FINITES_PLAIN_LANES)

using LANES = double __attribute__((vector_size(16)));

#else

struct LANES {
  double v[2];
  double operator[](int lane) const { return v[lane]; }
};
inline LANES operator+(LANES a, LANES b) { return {{a.v[0] + b.v[0], a.v[1] + b.v[1]}}; }
inline LANES operator-(LANES a, LANES b) { return {{a.v[0] - b.v[0], a.v[1] - b.v[1]}}; }
inline LANES operator*(LANES a, LANES b) { return {{a.v[0] * b.v[0], a.v[1] * b.v[1]}}; }
inline LANES operator/(LANES a, LANES b) { return {{a.v[0] / b.v[0], a.v[1] / b.v[1]}}; }
inline LANES operator+(LANES a, double b) { return {{a.v[0] + b, a.v[1] + b}}; }
inline LANES operator-(LANES a, double b) { return {{a.v[0] - b, a.v[1] - b}}; }
inline LANES operator*(LANES a, double b) { return {{a.v[0] * b, a.v[1] * b}}; }
inline LANES operator/(LANES a, double b) { return {{a.v[0] / b, a.v[1] / b}}; }
inline LANES operator+(double a, LANES b) { return {{a + b.v[0], a + b.v[1]}}; }
inline LANES operator-(double a, LANES b) { return {{a - b.v[0], a - b.v[1]}}; }
inline LANES operator*(double a, LANES b) { return {{a * b.v[0], a * b.v[1]}}; }
inline LANES operator/(double a, LANES b) { return {{a / b.v[0], a / b.v[1]}}; }
inline LANES operator-(LANES a) { return {{-a.v[0], -a.v[1]}}; }
inline LANES& operator+=(LANES& a, LANES b) { return a = a + b; }

#endif

inline LANES lanes(double first, double second) {
#if defined(__GNUC__) && !defined(FINITES_PLAIN_LANES)
  return LANES{first, second};
#else
  return LANES{{first, second}};
#endif
}

inline LANES both(double value) { return lanes(value, value); }

// Two reals that follow each other.
inline LANES lanes_at(const double* values) {
  LANES a;
  std::memcpy(&a, values, sizeof a);
  return a;
}

inline void put(LANES a, double* values) { std::memcpy(values, &a, sizeof a); }

inline double sum_of(LANES a) { return a[0] + a[1]; }

// Whether all values are finite, and their sum too: a sum that has once been infinite or NaN stays so. Four sums run
// side by side.
inline bool all_finite(const double* values, int count) {
  LANES first = both(0.0);
  LANES second = both(0.0);
  int i = 0;
  for (; i + 4 <= count; i += 4) {
    first += lanes_at(values + i);
    second += lanes_at(values + i + 2);
  }
  double sum = sum_of(first + second);
  for (; i < count; ++i) sum += values[i];
  return sum - sum == 0.0;
}

#endif
