// reference_hinge.h: what the hinge routines are measured by: the surface as a list of monomials, and the plastic
// stiffness from one formula in extended precision.
#ifndef FINITES_TESTS_REFERENCE_HINGE_H
#define FINITES_TESTS_REFERENCE_HINGE_H

#include <vector>

#include "dense.h"
#include "hinge_calls.h"

namespace reference {

using dense::matrix;
using hinge_tests::section_forces;

// Gradient (DP, DMY, DMZ) of the surface with respect to the forces: each monomial differentiated by the power rule.
std::vector<double> orbison_gradient(int FS, const section_forces& C, const section_forces& F);

// A 12-row column from a gradient: rows 1, 5, 6 for end 1 and 7, 11, 12 for end 2.
std::vector<double> flow_column(int end, const std::vector<double>& gradient);

matrix of_columns(const std::vector<double>& packed, int rows);
std::vector<double> packed(const matrix& M);

// -K N (N^T K N)^-1 N^T K.
matrix plastic_change(const matrix& K, const matrix& N);

}  // namespace reference

#endif
