// results.h: the record of 50 words of a solid point: strains, stresses and the invariants of the stresses.
#ifndef FINITES_SOLID_RESULTS_H
#define FINITES_SOLID_RESULTS_H

#include "common/lanes.h"
#include "finites/views.hpp"

// The von Mises stress of xx, yy, zz, xy, xz, yz.
double VON_MISES_6(const double* stress);

// The principal stresses in closed form, the largest first. A state without a deviator gives 0, not its mean; where
// rounding takes the cosine beyond 1, the arc cosine gives NaN.
void PRINCIPAL_6(const double* stress, double* principal);

// Words 1 to 40 of a record from strain and stress; of two records, either of which may be null.
void fill_solid_record(const VECTOR<6>& strain, const VECTOR<6>& stress, double* record);
void fill_solid_records(const VECTOR<6, LANES>& strain, const VECTOR<6, LANES>& stress, double* first, double* second);

// SN, EN (6, 8) := stresses and strains of the eight points of a brick, extrapolated to its nodes; zero for another
// node count. Without a caller in the library, which computes results at the nodes themselves; tests call it.
void SOLID_EXTRAPOLATE_BRICK(int NN, const double* SP, const double* EP, double* SN, double* EN);

#endif
