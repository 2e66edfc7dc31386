// side_coefficients.h: whether the geometry includes the coefficients of the sides, which only bending and rotary
// inertia read.
#ifndef FINITES_SIDE_COEFFICIENTS_H
#define FINITES_SIDE_COEFFICIENTS_H

enum class SIDE_COEFFICIENTS { WANTED, LEFT_OUT };

#endif
