// drilling.h: the moments that hold the drilling rotations of an element.
#ifndef FINITES_DRILLING_H
#define FINITES_DRILLING_H

#include <algorithm>

#include "finites/views.hpp"
#include "shells/common/packed.h"

//     f(freedoms(n)) := sum_m  Kd(n, m) rotations(m),      1 <= n, m <= N
//
// The moments are set, not added: no other term acts on a drilling rotation. Kd is packed.
template <int N>
void set_drilling_moments(const double* Kd, const VECTOR<N>& rotations, const int (&freedoms)[N], double* f) {
  for (int n = 1; n <= N; ++n) {
    double moment = 0.0;
    for (int m = 1; m <= N; ++m) moment += Kd[SYM(std::min(n, m), std::max(n, m)) - 1] * rotations(m);
    f[freedoms[n - 1] - 1] = moment;
  }
}

#endif
