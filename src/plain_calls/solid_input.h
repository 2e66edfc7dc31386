// solid_input.h: the solid of a plain call, checked and prepared for the routines of the protocol.
#ifndef FINITES_PLAIN_SOLID_INPUT_H
#define FINITES_PLAIN_SOLID_INPUT_H

#include "finites/elements.h"
#include "solids/solid_call.h"

// S := the solid, without displacements, stored stresses and record. S is of use only when the status is FINITES_OK.
finites_status prepare_solid_input(const finites_solid& solid, SOLID_CALL& S);

// The same for displacements u (3 nodes) beside it.
finites_status prepare_solid_input(const finites_solid& solid, const double* u, SOLID_CALL& S);

// The rule of the tetrahedron has the weight 1 where its volume in natural coordinates is 1/6: matrices, forces and
// loads of the protocol are six times too large (stresses are right), and are divided here.
inline double true_share(const SOLID_CALL& S, double value) { return S.NN == 4 ? value / 6.0 : value; }

// to := the vector f (3, nodes) of the protocol in its true size; FINITES_RESULT where a number of it is not finite.
finites_status hand_over(const SOLID_CALL& S, const SOLID_VECTORS& f, double* to);

#endif
