// constants.h: constants that the element families share. Each has exactly the digits written here: they are part of
// the results (docs/decisions.md).
#ifndef FINITES_CONSTANTS_H
#define FINITES_CONSTANTS_H

// Transverse shear factor of every plate: DS = SHEAR_FACTOR G h. Fifteen digits, not the double closest to 5/6.
constexpr double SHEAR_FACTOR = 0.833333333333333;

// Formulation code 98 multiplies the membrane axial stiffness by this factor; the in-plane shear keeps its modifier.
constexpr double REDUCED_AXIAL = 0.01;

// Drilling stiffness e = DRILL_FACTOR E h times an area (twice the area of a triangle, the area of a quadrilateral):
// small beside the membrane stiffness, but not zero, so that the rotation about the normal of a node between coplanar
// elements has a stiffness.
constexpr double DRILL_FACTOR = 0.000001;

// Point location: OUT_OF_PLANE_LIMIT is relative to the longest side; INSIDE_LIMIT is a distance outside a side in the
// length unit of the model, so that the answer depends on the unit.
constexpr double OUT_OF_PLANE_LIMIT = 0.05;
constexpr double INSIDE_LIMIT = 0.001;

#endif
