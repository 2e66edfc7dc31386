// polynomial.h: polynomials on the interval from 0 to 1, their roots there, and their smallest and largest values.
#ifndef FINITES_SOLVER_POLYNOMIAL_H
#define FINITES_SOLVER_POLYNOMIAL_H

#include <array>
#include <cstddef>
#include <vector>

namespace solver {

// Coefficients of 1, xi, xi^2 and so on.
using polynomial = std::vector<double>;
using quintic = std::array<double, 6>;

double value(const quintic& p, double xi);
quintic derivative(const quintic& p);
inline polynomial widened(const quintic& p) { return {p.begin(), p.end()}; }

// Roots between 0 and 1 at which the sign changes, ascending.
std::vector<double> inner_roots(const polynomial& p);

struct extreme {
  double value = 0, xi = 0;
};

struct value_range {
  extreme least, largest;
};

// Rounding gives a constant, or a straight line, some inner extremes: an end stands for them unless they lie beyond it
// by more than BEYOND_END of the values.
constexpr double BEYOND_END = 1e-9;
value_range range_of(const polynomial& p);

// The largest length of the vector with these components.
extreme largest_length(const std::array<quintic, 3>& components);

}  // namespace solver

#endif
