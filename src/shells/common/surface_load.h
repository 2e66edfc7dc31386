// surface_load.h: the load per area of a call, and the change of nodal loads to global axes.
#ifndef FINITES_SURFACE_LOAD_H
#define FINITES_SURFACE_LOAD_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/common/groups.h"

// Force per area in global axes: q = h LOADS(LOAD_BODY) + LOADS(LOAD_SURFACE) + AXES^T LOADS(LOAD_SURFACE_LOCAL).
inline VECTOR<3> surface_load(const PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS, const MATRIX<3, 3>& AXES) {
  VECTOR<3> turned;
  vector_to_global(AXES, &LOADS(LOAD_SURFACE_LOCAL), turned.data());
  VECTOR<3> q;
  for (int i = 1; i <= 3; ++i) {
    const int at = i - 1;
    q(i) = LOADS(LOAD_BODY + at) * EL.THICKNESS + LOADS(LOAD_SURFACE + at) + turned(i);
  }
  return q;
}

// f := f + AXES^T local, by groups of three; local is overwritten.
inline void add_turned(const MATRIX<3, 3>& AXES, int groups, double* local, double* f) {
  groups_to_global(AXES, groups, local);
  for (int i = 0; i < 3 * groups; ++i) f[i] += local[i];
}

#endif
