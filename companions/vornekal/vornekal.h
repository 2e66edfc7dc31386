// vornekal.h: Vornekal, the nonlinear analysis library, which gives the rotation of a member to its hinges. For C99
// and C++.
//
// The element library does not link it. It is loaded by name while the program runs ("Vornekal.DLL"); without it all
// hinge forces are zero.
#ifndef VORNEKAL_H
#define VORNEKAL_H

#include <stdint.h>

#include "finites/fields.h"

// Member entry, A(I + NAME): a direction n1 that gives the member its orientation, three words in global components.
FINITES_CODE(MEMBER_DIRECTION, 19);

// The library exports only this routine.
#pragma GCC visibility push(default)
#ifdef __cplusplus
extern "C" {
#endif

// Rotation R (12, 12) of a member from global to local axes, u_local = R u_global: four equal blocks of 3 by 3 on the
// diagonal, whose rows are the local axes, zeros elsewhere.
//
//     x  from the first node to the second
//     z  along x cross n1
//     y  z cross x
//
//   I        in   start of the member's entry in MODEL_DATA
//   A(NDIM)  in   MODEL_DATA: A(I+14), A(I+15) are the starts N of the two node blocks, A(N+5..7) their coordinates,
//                 A(I+19..21) the direction n1. Integers are truncated
//   NDIM     in   length of A; 0 or below: not known, nothing is checked against it
//   R        out
//   POS      in   position of the member's records; not read
//
// An n1 that is zero, not finite or along the member gives no orientation; global Z takes its place, and global Y where
// the member is nearly upright (its direction cosine with Z above 0.9). An entry or a node block that does not lie in
// A, coordinates that are not finite and nodes that coincide give the identity. There is no status.
void NL_RotationMatrix_Beam(const int32_t* I, const double* A, const int32_t* NDIM, double* R, const int32_t* POS);

#ifdef __cplusplus
}
#endif
#pragma GCC visibility pop

#endif
