// frame.h: the axes of a flat element.
#ifndef FINITES_FRAME_H
#define FINITES_FRAME_H

#include "common/lane_pair.h"
#include "finites/views.hpp"

template <class REAL>
inline VECTOR<3, REAL> difference(const VECTOR<3, REAL>& a, const VECTOR<3, REAL>& b) {
  return {{a(1) - b(1), a(2) - b(2), a(3) - b(3)}};
}

template <class REAL>
inline VECTOR<3, REAL> cross(const VECTOR<3, REAL>& a, const VECTOR<3, REAL>& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

// v / |v|; a length that is zero or NaN gives the zero vector, without a message.
template <class REAL>
inline VECTOR<3, REAL> direction(const VECTOR<3, REAL>& v) {
  const REAL length = root(v(1) * v(1) + v(2) * v(2) + v(3) * v(3));
  if constexpr (std::is_same_v<REAL, double>) {
    if (!(length > 0.0)) return {{0.0, 0.0, 0.0}};
    return {{v(1) / length, v(2) / length, v(3) / length}};
  } else {
    const auto holds = length > 0.0;
    return {{where(holds, v(1) / length), where(holds, v(2) / length), where(holds, v(3) / length)}};
  }
}

template <class REAL>
inline VECTOR<3, REAL> node_of(const REAL* xyz, int node) {
  const REAL* x = xyz + 3 * (node - 1);
  return {{x[0], x[1], x[2]}};
}

// Rows of AXES: e1 = first / |first|, e3 = e1 x second / |e1 x second|, e2 = e3 x e1. Right-handed and orthonormal.
template <class REAL>
inline MATRIX<3, 3, REAL> axes_from(const VECTOR<3, REAL>& first, const VECTOR<3, REAL>& second) {
  const VECTOR<3, REAL> e1 = direction(first);
  const VECTOR<3, REAL> e3 = direction(cross(e1, second));
  const VECTOR<3, REAL> e2 = cross(e3, e1);
  MATRIX<3, 3, REAL> AXES;
  for (int i = 1; i <= 3; ++i) {
    AXES(1, i) = e1(i);
    AXES(2, i) = e2(i);
    AXES(3, i) = e3(i);
  }
  return AXES;
}

#endif
