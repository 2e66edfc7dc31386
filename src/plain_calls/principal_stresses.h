// principal_stresses.h: the principal stresses of a stress in space.
#ifndef FINITES_PLAIN_PRINCIPAL_STRESSES_H
#define FINITES_PLAIN_PRINCIPAL_STRESSES_H

// principal := those of xx, yy, zz, xy, xz, yz, the largest first. To rounding of the largest stress for every state,
// equal ones and states without a deviator too. The records of the protocol have a root of 2 of single precision in
// theirs, and 0 or NaN for such states.
void principal_stresses(const double stress[6], double principal[3]);

#endif
