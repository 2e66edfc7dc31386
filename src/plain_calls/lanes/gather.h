// gather.h: numbers of W elements into vectors, one element per lane, and symmetric matrices of W elements back.
#ifndef FINITES_LANES_GATHER_H
#define FINITES_LANES_GATHER_H

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <cstddef>
#include <cstring>
#include <utility>

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
  if (in.stride == 0) return of_all<V>(in.first[0]);
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

// The place of an entry of a full symmetric matrix, counted along its columns, in its packed upper triangle.
template <int ORDER>
constexpr int packed_place(int entry) {
  const int i = entry % ORDER + 1;
  const int j = entry / ORDER + 1;
  return (i < j ? SYM(i, j) : SYM(j, i)) - 1;
}

// Stores that leave the caches alone, for more matrices than these hold: a matrix that is written and not read soon
// costs a third of the time then. The place is a multiple of 16 bytes.
inline void stream_lanes(double* to, LANES v) {
#if defined(__SSE2__)
  _mm_stream_pd(to, reinterpret_cast<__m128d>(v));
#else
  store_lanes(to, v);
#endif
}

// Two values of two neighbouring elements.
template <bool STREAMED>
inline void scatter_two(const double* value1, const double* value2, double* first, double* second) {
  const LANES a = lanes_at(value1);
  const LANES b = lanes_at(value2);
  if constexpr (STREAMED) {
    stream_lanes(first, LANES{a[0], b[0]});
    stream_lanes(second, LANES{a[1], b[1]});
  } else {
    store_lanes(first, LANES{a[0], b[0]});
    store_lanes(second, LANES{a[1], b[1]});
  }
}

// Four values of two neighbouring elements: 1 and 3 beside 2 and 4, then the lanes of each element interleaved.
template <bool STREAMED>
inline void scatter_four(const double* value1, const double* value2, const double* value3, const double* value4,
                         double* first, double* second) {
#if defined(__AVX__)
  if constexpr (!STREAMED) {
    const __m256d odd = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(value1)), _mm_loadu_pd(value3), 1);
    const __m256d even = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(value2)), _mm_loadu_pd(value4), 1);
    _mm256_storeu_pd(first, _mm256_unpacklo_pd(odd, even));
    _mm256_storeu_pd(second, _mm256_unpackhi_pd(odd, even));
    return;
  }
#endif
  scatter_two<STREAMED>(value1, value2, first, second);
  scatter_two<STREAMED>(value3, value4, first + 2, second + 2);
}

// The matrices of two neighbouring elements, four values at a time: every place is known when this is compiled.
template <class V, int ORDER, bool STREAMED, std::size_t... FOUR>
inline void scatter_pair(const double* from, double* first, double* second, std::index_sequence<FOUR...> /*fours*/) {
  constexpr int W = LANE_COUNT<V>;
  (scatter_four<STREAMED>(from + W * packed_place<ORDER>(4 * FOUR), from + W * packed_place<ORDER>(4 * FOUR + 1),
                          from + W * packed_place<ORDER>(4 * FOUR + 2), from + W * packed_place<ORDER>(4 * FOUR + 3),
                          first + 4 * FOUR, second + 4 * FOUR),
   ...);
}

// Element e: matrix (ORDER, ORDER) at K[e * stride] := its lane of the packed triangle.
template <int ORDER, class V>
inline void scatter_symmetric(const V* packed, const LANE_OUTPUT& out) {
  static_assert(ORDER * ORDER % 4 == 0, "four values at a time");
  constexpr std::make_index_sequence<ORDER * ORDER / 4> fours;
  const double* const from = reinterpret_cast<const double*>(packed);
  for (int e = 0; e < LANE_COUNT<V>; e += 2) {
    double* const first = out.K + e * out.stride;
    if (out.streamed) {
      scatter_pair<V, ORDER, true>(from + e, first, first + out.stride, fours);
    } else {
      scatter_pair<V, ORDER, false>(from + e, first, first + out.stride, fours);
    }
  }
}

#endif
