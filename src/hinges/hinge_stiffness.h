// hinge_stiffness.h: the plastic stiffness of a member, and products of one of which one end yields. Blocks are 6 by 6.
#ifndef FINITES_HINGE_STIFFNESS_H
#define FINITES_HINGE_STIFFNESS_H

#include <cstdint>

#include "hinges/yield_curves.h"

// KP (12, 12), cleared by the caller, := the change of K by the yielding ends of a hinge under these forces. False
// where their flow has no unique size.
bool plastic_matrix(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, const double* K, double* KP);

// KP (12, 12) := the matrix of these four blocks: the reverse of DECOMPOSE_KSTIF.
void KP_ASSEMBLE(double* KP, const double* P11, const double* P12, const double* P21, const double* P22);

// G (6, 6) := N BETA N^T of the first two equations; a third one adds nothing. N (6, NEQ), BETA (NEQ, NEQ).
void MAT_N_BETA_NT(const double* BETA, const double* N, const std::int32_t* NEQ, double* G);

// OUT := L G R.
void MAT_TRIPLE_PRODUCT(const double* G, const double* L, const double* R, double* OUT);

#endif
