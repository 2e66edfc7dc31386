// results.h: the record of 50 words of a solid point: stresses to invariants.
#ifndef FINITES_SOLID_RESULTS_H
#define FINITES_SOLID_RESULTS_H

#include "finites/views.hpp"

// The von Mises stress of xx, yy, zz, xy, xz, yz.
double VON_MISES_6(const double* stress);

// The principal stresses in closed form, the largest first, as the angle gives them. A state without a deviator answers
// 0, not its mean; an argument of the arc cosine that rounds beyond 1 gives NaN.
void PRINCIPAL_6(const double* stress, double* principal);

// Words 1 to 40 of a record from strain and stress.
void fill_solid_record(const VECTOR<6>& strain, const VECTOR<6>& stress, double* record);

// SN, EN (6, 8) := stresses and strains of the eight points of a brick carried to its nodes. With another node count
// they are zero. Without a caller in the library: results at nodes are computed there.
void SOLID_EXTRAPOLATE_BRICK(int NN, const double* SP, const double* EP, double* SN, double* EN);

#endif
