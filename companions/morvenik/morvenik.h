// morvenik.h: Morvenik, the cable library: the exact elastic catenary between two nodes in space. For C99 and C++.
//
// The two routines are declared in services.h, which the element library includes; this header defines the cable that
// they solve and the meaning of their statuses.
//
//   w    dead load per unit of unstressed length, global axes; the whole cable weighs w L0
//   e    stress-free strain (temperature, lack of fit): the cable without tension is (1 + e) L0 long
//   s    unstressed coordinate, 0 at the first node and L0 at the second
//   t(s) tension vector, t(s) = t(0) - w s, of length T
//
//   dx/ds = (1 + e + T/(E A)) t/T,      x(L0) - x(0) = X2 - X1
//
// The forces F that the nodes exert on the cable are F(1..3) = -t(0) and F(4..6) = t(L0), so that their sum is -w L0.
// The tangent is dF/dX, symmetric and positive semi-definite: [K -K; -K K] with K the inverse of d(X2 - X1)/dt(0).
//
// The cable carries no compression and no bending. A cable without load is a bar with the stiffness of a string when it
// is taut and has no shape at all when it is slack (CABLE_SLACK_WITHOUT_LOAD).
//
// A chord along the load and a slack cable: both halves hang on one line, and the stiffness across goes to zero with
// the logarithm of the offset. The terms of KT across are then a secant, not a tangent: the force across over the
// offset, at an offset of the size of rounding, the same in every direction across, so that it stays positive and does
// not depend on the choice of axes.
#ifndef MORVENIK_H
#define MORVENIK_H

#include "finites/fields.h"

// The library exports only these two routines.
#pragma GCC visibility push(default)
#include "finites/services.h"
#pragma GCC visibility pop

FINITES_CODE(CABLE_SOLVED, 0);
FINITES_CODE(CABLE_BAD_DATA, 1);  // L0, E A or 1 + e not above 0, or a value that is not finite
FINITES_CODE(CABLE_SLACK_WITHOUT_LOAD, 2);
FINITES_CODE(CABLE_NOT_CONVERGED, 3);  // also results beyond the range of a double

#endif
