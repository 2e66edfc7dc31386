// hinge_stiffness.h: products of the plastic stiffness of a member of which one end yields. Blocks are 6 by 6.
#ifndef FINITES_HINGE_STIFFNESS_H
#define FINITES_HINGE_STIFFNESS_H

#include <cstdint>

// KP (12, 12) := the matrix of these four blocks: the reverse of DECOMPOSE_KSTIF.
void KP_ASSEMBLE(double* KP, const double* P11, const double* P12, const double* P21, const double* P22);

// G (6, 6) := N BETA N^T of the first two equations; a third one adds nothing. N (6, NEQ), BETA (NEQ, NEQ).
void MAT_N_BETA_NT(const double* BETA, const double* N, const std::int32_t* NEQ, double* G);

// OUT := L G R.
void MAT_TRIPLE_PRODUCT(const double* G, const double* L, const double* R, double* OUT);

#endif
