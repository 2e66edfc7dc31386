// constants.h: the constants that the element families share, each with exactly its digits: they are part of the
// results.
#ifndef FINITES_CONSTANTS_H
#define FINITES_CONSTANTS_H

// Transverse shear factor of every plate: fifteen digits, not the double closest to 5/6.
constexpr double SHEAR_FACTOR = 0.833333333333333;

// Formulation code 98 keeps this share of the membrane axial stiffness.
constexpr double REDUCED_AXIAL = 0.01;

// Drilling stiffness as a share of E h times the element's area factor: small enough to leave the membrane alone, large
// enough to keep the assembled matrix regular.
constexpr double DRILL_FACTOR = 0.000001;

// Point location: distance from the plane relative to the longest side, distance from a side in length units.
constexpr double OUT_OF_PLANE_LIMIT = 0.05;
constexpr double INSIDE_LIMIT = 0.001;

#endif
