// section_corner.h: where a section of the whole-section model yields, and its return to the corner of the yield
// condition.
//
// With n = N / N0, m = M / M0, q = Q / N0 (N0 = sy h, M0 = sy h^2 / 4) and the metric A of von Mises the condition is
//
//     F = n'A n + m'A m + 3 q'q + |n'A m| / sqrt(3) - k^2 = max(F+, F-),      k = 1 + H ebar / sy
//
// two smooth convex surfaces, one for each sign of the mixed product n'A m, that meet in a corner where it vanishes: in
// pure bending and in pure tension. The element library returns a section along the branch that its record names. Where
// neither branch leads back to its own side, the section stands in the corner and flows along both normals (Koiter,
// 1953):
//
//     s = trial - D (X v0 + y v1),   F0(s) = 0,  n'A m = 0,   |y| <= X
//
// with v0, v1 the gradients of F0 and of the mixed term.
//
// That makes the forces of an increment a continuous function of its strains.
#ifndef FINITES_SOLVER_SECTION_CORNER_H
#define FINITES_SOLVER_SECTION_CORNER_H

#include "finites/views.hpp"

namespace solver {

// N1, N2, N12, M1, M2, M12, Q1, Q2, or the strains that they work on; element axes.
using section_vector = VECTOR<8>;
using section_matrix = MATRIX<8, 8>;

// What an isotropic section of constant thickness yields by.
struct section_strength {
  double thickness = 0, yield_stress = 0;
  double plastic_modulus = 0;  // H: stress per equivalent plastic strain
};

// Where an increment ends: on which of the two surfaces, by the sign of the mixed product, or where they meet.
enum class yield_side { ELASTIC, POSITIVE, NEGATIVE, CORNER, NONE };  // NONE: the return did not converge

// A section in the corner.
struct corner_state {
  section_vector flow{};     // plastic strains of the increment
  double equivalent = 0;     // equivalent plastic strain at its end
  double mixed = 0;          // mixed product of the forces, zero to rounding
  section_matrix tangent{};  // consistent with the return
};

// F, and the mixed product by N0 M0.
double yield_excess(const section_strength& of, const section_vector& force, double equivalent);
double mixed_product(const section_strength& of, const section_vector& force);

// The side on which the return from the trial forces ends. `corner` is set where it is the corner.
yield_side return_side(const section_strength& of, const section_matrix& D, const section_vector& trial,
                       double equivalent, corner_state& corner);

template <int M, int N>
VECTOR<M> times(const MATRIX<M, N>& A, const VECTOR<N>& v) {
  VECTOR<M> out{};
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= M; ++i) out(i) += A(i, j) * v(j);
  }
  return out;
}

}  // namespace solver

#endif
