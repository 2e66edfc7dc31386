// gather.h: numbers of W elements into vectors, one element a lane, and symmetric matrices of W elements back.
#ifndef FINITES_LANES_GATHER_H
#define FINITES_LANES_GATHER_H

#include <cstdint>
#include <cstring>

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "plain_calls/lanes/lane_kernels.h"

template <class V>
constexpr int LANE_COUNT = static_cast<int>(sizeof(V) / sizeof(double));

// v(i) := value i of each element.
template <class V, int N>
inline void gather(const LANE_INPUT& in, V (&v)[N]) {
  constexpr int W = LANE_COUNT<V>;
  double values[N][W];
  for (int e = 0; e < W; ++e) {
    const double* const from = in.first + e * in.stride;
    for (int i = 0; i < N; ++i) values[i][e] = from[i];
  }
  std::memcpy(v, values, sizeof values);
}

template <class V>
inline V gathered(const LANE_INPUT& in) {
  V v[1];
  gather(in, v);
  return v[0];
}

// Where the entries of a symmetric matrix go: the upper triangle, packed.
template <class V>
struct PACKED_MATRIX {
  V* K;

  void place(const V& value, int i, int j) const { K[SYM(i + 1, j + 1) - 1] = value; }
};

// Places of the entries of a full symmetric matrix in its packed upper triangle, in doubles of W to a vector.
template <int ORDER, int W>
struct PACKED_PLACES {
  std::uint16_t at[ORDER * ORDER];

  constexpr PACKED_PLACES() : at() {
    for (int j = 1; j <= ORDER; ++j) {
      for (int i = 1; i <= ORDER; ++i) {
        at[(j - 1) * ORDER + i - 1] = static_cast<std::uint16_t>(W * ((i < j ? SYM(i, j) : SYM(j, i)) - 1));
      }
    }
  }
};
template <int ORDER, int W>
inline constexpr PACKED_PLACES<ORDER, W> PLACES_OF_PACKED{};

// Two rows of two neighbouring elements.
inline void scatter_two(const double* row1, const double* row2, double* first, double* second) {
  const LANES a = lanes_at(row1);
  const LANES b = lanes_at(row2);
  store_lanes(first, LANES{a[0], b[0]});
  store_lanes(second, LANES{a[1], b[1]});
}

// Four rows of two neighbouring elements: {1, 3} beside {2, 4}, then the lanes of each element interleaved.
inline void scatter_four(const double* row1, const double* row2, const double* row3, const double* row4, double* first,
                         double* second) {
#if defined(__AVX__)
  const __m256d odd = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(row1)), _mm_loadu_pd(row3), 1);
  const __m256d even = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(row2)), _mm_loadu_pd(row4), 1);
  _mm256_storeu_pd(first, _mm256_unpacklo_pd(odd, even));
  _mm256_storeu_pd(second, _mm256_unpackhi_pd(odd, even));
#else
  scatter_two(row1, row2, first, second);
  scatter_two(row3, row4, first + 2, second + 2);
#endif
}

// Element e: matrix (ORDER, ORDER) at K[e * stride] := its lane of the packed triangle.
template <int ORDER, class V>
inline void scatter_symmetric(const V* packed, double* K, std::int64_t stride) {
  constexpr int W = LANE_COUNT<V>;
  const auto& place = PLACES_OF_PACKED<ORDER, W>.at;
  const double* const from = reinterpret_cast<const double*>(packed);
  for (int j = 0; j < ORDER; ++j) {
    int i = 0;
    for (; i + 4 <= ORDER; i += 4) {
      const std::uint16_t* const at = place + j * ORDER + i;
      double* to = K + j * ORDER + i;
      for (int e = 0; e < W; e += 2) {
        scatter_four(from + at[0] + e, from + at[1] + e, from + at[2] + e, from + at[3] + e, to, to + stride);
        to += 2 * stride;
      }
    }
    for (; i < ORDER; i += 2) {
      const std::uint16_t* const at = place + j * ORDER + i;
      double* to = K + j * ORDER + i;
      for (int e = 0; e < W; e += 2) {
        scatter_two(from + at[0] + e, from + at[1] + e, to, to + stride);
        to += 2 * stride;
      }
    }
  }
}

#endif
