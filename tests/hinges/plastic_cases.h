// plastic_cases.h: hinge records with their flow directions from the references, and stiffness matrices to act on.
#ifndef FINITES_TESTS_PLASTIC_CASES_H
#define FINITES_TESTS_PLASTIC_CASES_H

#include <string>
#include <vector>

#include "hinge_model.h"
#include "random_shapes.h"
#include "reference_hinge.h"

namespace hinge_tests {

// Forces of the ends; capacities are 100, 20 and 30.
constexpr section_forces END1{-50, 10, 21}, END2{30, -8, -24};

struct plastic_case {
  std::string name;
  HINGE_RECORD hinge;
  std::vector<std::vector<double>> columns;  // 12 rows each
  reference::matrix flow() const;
};

// Exactly one yielding end, at either end, beside every state that takes no part; every curve; one and two equations.
std::vector<plastic_case> one_end_cases();
// Both ends; two to six equations.
std::vector<plastic_case> two_end_cases();

// The flow of the smooth surface with all forces.
reference::matrix smooth_flow(int end);

// Without symmetry, so that transpositions show; the sound one is positive definite and well conditioned.
std::vector<double> any_stiffness(support::seeded_random& random);
std::vector<double> sound_stiffness(support::seeded_random& random);

std::vector<double> sum(std::vector<double> a, const std::vector<double>& b);
using dense::largest;
// Of N^T K N with columns of N brought to the size 1.
double condition(const reference::matrix& K, const reference::matrix& N);

}  // namespace hinge_tests

#endif
