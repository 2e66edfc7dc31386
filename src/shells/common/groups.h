// groups.h: vectors of an element in groups of three, between global and element axes.
//
// AXES(a, i) is the component i of the local axis a: AXES v is the vector v in element axes, AXES^T f the vector f in
// global axes. Translations and rotations turn alike.
#ifndef FINITES_GROUPS_H
#define FINITES_GROUPS_H

#include "finites/views.hpp"

// local := AXES global
template <class REAL>
inline void vector_to_local(const MATRIX<3, 3, REAL>& AXES, const REAL* global, REAL* local) {
  for (int a = 1; a <= 3; ++a) local[a - 1] = AXES(a, 1) * global[0] + AXES(a, 2) * global[1] + AXES(a, 3) * global[2];
}

inline VECTOR<3> to_local(const MATRIX<3, 3>& AXES, const VECTOR<3>& global) {
  VECTOR<3> local;
  vector_to_local(AXES, global.data(), local.data());
  return local;
}

// global := AXES^T local
inline void vector_to_global(const MATRIX<3, 3>& AXES, const double* local, double* global) {
  for (int i = 1; i <= 3; ++i) global[i - 1] = AXES(1, i) * local[0] + AXES(2, i) * local[1] + AXES(3, i) * local[2];
}

inline void groups_to_local(const MATRIX<3, 3>& AXES, int groups, const double* global, double* local) {
  for (int g = 0; g < groups; ++g) vector_to_local(AXES, global + 3 * g, local + 3 * g);
}

// f := AXES^T f, group by group, in place
inline void groups_to_global(const MATRIX<3, 3>& AXES, int groups, double* f) {
  for (int g = 0; g < groups; ++g) {
    const double local[3] = {f[3 * g], f[3 * g + 1], f[3 * g + 2]};
    vector_to_global(AXES, local, f + 3 * g);
  }
}

// The rotations of each node := 0.
inline void clear_rotations(int nodes, double* f) {
  for (int n = 0; n < nodes; ++n) f[6 * n + 3] = f[6 * n + 4] = f[6 * n + 5] = 0.0;
}

#endif
