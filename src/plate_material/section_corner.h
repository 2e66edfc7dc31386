// section_corner.h: where a section of the whole-section model yields, and its return to the corner of the yield
// condition.
//
// With n = N / N0, m = M / M0, q = Q / N0 (N0 = sy h, M0 = sy h^2 / 4) and the metric A of von Mises the condition is
//
//     F = n'A n + m'A m + 3 q'q + |n'A m| / sqrt(3) - k^2 = max(F+, F-),      k = 1 + H ebar / sy
//
// two smooth convex surfaces, one for each sign of the mixed product n'A m, that meet in a corner where it vanishes: in
// pure bending and in pure tension. The update of a point (section_update.h) returns it along the branch that its state
// names. Where neither branch leads back to its own side, the section stands in the corner and flows along both normals
// (Koiter, 1953):
//
//     s = trial - D (X v0 + y v1),   F0(s) = 0,  n'A m = 0,   |y| <= X
//
// with v0, v1 the gradients of F0 and of the mixed term. That makes the forces of an increment a continuous function of
// its strains.
//
// Forces and strains: N1, N2, N12, M1, M2, M12, Q1, Q2 of the element axes and what they work on. D is that of an
// isotropic section of constant thickness, without coupling of membrane and bending; thin plates have no shears and
// zeros there.
#ifndef FINITES_SECTION_CORNER_H
#define FINITES_SECTION_CORNER_H

#include "finites/views.hpp"

struct SECTION_STRENGTH {
  double thickness, yield_stress;
  double plastic_modulus;  // H: stress per equivalent plastic strain
};

// Where an increment ends: on which of the two surfaces, by the sign of the mixed product, or where they meet.
enum class YIELD_SIDE { ELASTIC, POSITIVE, NEGATIVE, CORNER, NONE };  // NONE: the return did not converge

// A section in the corner.
struct CORNER_STATE {
  VECTOR<8> flow;        // plastic strains of the increment
  double equivalent;     // equivalent plastic strain at its end
  double mixed;          // mixed product of the forces, zero to rounding
  MATRIX<8, 8> tangent;  // consistent with the return
};

// F, and the mixed product by N0 M0.
double yield_excess(const SECTION_STRENGTH& of, const VECTOR<8>& force, double equivalent);
double mixed_share(const SECTION_STRENGTH& of, const VECTOR<8>& force);

// The side on which the return from the trial forces ends. `corner` is set where it is the corner.
YIELD_SIDE return_side(const SECTION_STRENGTH& of, const MATRIX<8, 8>& D, const VECTOR<8>& trial, double equivalent,
                       CORNER_STATE& corner);

#endif
