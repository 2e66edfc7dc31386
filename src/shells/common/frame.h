// frame.h: the axes of a flat element.
#ifndef FINITES_FRAME_H
#define FINITES_FRAME_H

#include <cmath>

#include "finites/views.hpp"

inline VECTOR<3> difference(const VECTOR<3>& a, const VECTOR<3>& b) {
  return {{a(1) - b(1), a(2) - b(2), a(3) - b(3)}};
}

inline VECTOR<3> cross(const VECTOR<3>& a, const VECTOR<3>& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

// v / |v|; a length that is zero or NaN gives the zero vector, without a message.
inline VECTOR<3> direction(const VECTOR<3>& v) {
  const double length = std::sqrt(v(1) * v(1) + v(2) * v(2) + v(3) * v(3));
  if (!(length > 0.0)) return {{0.0, 0.0, 0.0}};
  return {{v(1) / length, v(2) / length, v(3) / length}};
}

inline VECTOR<3> node_of(const double* xyz, int node) {
  const double* x = xyz + 3 * (node - 1);
  return {{x[0], x[1], x[2]}};
}

// Rows of AXES: e1 = first / |first|, e3 = e1 x second / |e1 x second|, e2 = e3 x e1. Right-handed and orthonormal.
inline MATRIX<3, 3> axes_from(const VECTOR<3>& first, const VECTOR<3>& second) {
  const VECTOR<3> e1 = direction(first);
  const VECTOR<3> e3 = direction(cross(e1, second));
  const VECTOR<3> e2 = cross(e3, e1);
  MATRIX<3, 3> AXES;
  for (int i = 1; i <= 3; ++i) {
    AXES(1, i) = e1(i);
    AXES(2, i) = e2(i);
    AXES(3, i) = e3(i);
  }
  return AXES;
}

#endif
