// side_coefficients.h: whether the geometry comes with the coefficients of the sides, which bending alone reads.
#ifndef FINITES_SIDE_COEFFICIENTS_H
#define FINITES_SIDE_COEFFICIENTS_H

enum class SIDE_COEFFICIENTS { WANTED, LEFT_OUT };

#endif
