// results.h: the record of 50 words of a solid point: stresses to invariants.
#ifndef FINITES_SOLID_RESULTS_H
#define FINITES_SOLID_RESULTS_H

#include "views.h"

// Words of the record, from 1. Of a group the first is named; the others follow.
constexpr int WORD_STRAIN = 4;   // xx, yy, zz, xy, xz, yz, shears engineering
constexpr int WORD_STRESS = 10;  // likewise
constexpr int WORD_MISES = 22;
constexpr int WORD_PRINCIPAL = 23;
constexpr int WORD_FORCE = 36;     // nodal forces in element axes, in the solver's record alone
constexpr int WORDS_WRITTEN = 40;  // a record is cleared up to here
constexpr int WORDS_OF_POINT = 35;

// The von Mises stress of xx, yy, zz, xy, xz, yz.
double VON_MISES_6(const double* stress);

// The principal stresses in closed form, the largest first, as the angle gives them. A state without a deviator answers
// 0, not its mean; an argument of the arc cosine that rounds beyond 1 gives not-a-number.
void PRINCIPAL_6(const double* stress, double* principal);

// Words 1 to 40 of a record from strain and stress.
void fill_solid_record(const VECTOR<6>& strain, const VECTOR<6>& stress, double* record);

// SN, EN (6, 8) := stresses and strains of the eight points of a brick carried to its nodes. With another node count
// they are zero. Without a caller in the library: results at nodes are computed there.
void SOLID_EXTRAPOLATE_BRICK(int NN, const double* SP, const double* EP, double* SN, double* EN);

#endif
