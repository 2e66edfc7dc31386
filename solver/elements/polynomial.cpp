// polynomial.cpp: roots by bisection between the extremes, which are the roots of the derivative.
#include "elements/polynomial.h"

#include <algorithm>
#include <cmath>

namespace solver {

namespace {

double horner(const double* c, std::size_t count, double xi) {
  double sum = 0;
  for (std::size_t i = count; i-- > 0;) sum = sum * xi + c[i];
  return sum;
}

polynomial derivative_of(const polynomial& p) {
  polynomial d;
  for (std::size_t i = 1; i < p.size(); ++i) d.push_back(static_cast<double>(i) * p[i]);
  return d;
}

// To the last bit: the ends close in until no number lies between them.
double bisect(const polynomial& p, double low, double high, bool rising) {
  for (;;) {
    const double middle = low + (high - low) / 2;
    if (!(middle > low && middle < high)) return middle;
    ((horner(p.data(), p.size(), middle) < 0) == rising ? low : high) = middle;
  }
}

}  // namespace

double value(const quintic& p, double xi) { return horner(p.data(), p.size(), xi); }

quintic derivative(const quintic& p) { return {p[1], 2 * p[2], 3 * p[3], 4 * p[4], 5 * p[5], 0}; }

std::vector<double> inner_roots(const polynomial& p) {
  std::vector<double> roots;
  if (std::all_of(p.begin(), p.end(), [](double c) { return c == 0; }) || p.size() < 2) return roots;
  std::vector<double> knots = inner_roots(derivative_of(p));
  knots.push_back(1);
  double low = 0, at_low = horner(p.data(), p.size(), 0);
  for (const double high : knots) {
    const double at_high = horner(p.data(), p.size(), high);
    if ((at_low < 0 && at_high > 0) || (at_low > 0 && at_high < 0)) {
      roots.push_back(bisect(p, low, high, at_low < 0));
    } else if (at_high == 0 && high < 1 && at_low != 0) {
      roots.push_back(high);
    }
    low = high;
    at_low = at_high;
  }
  return roots;
}

value_range range_of(const polynomial& p) {
  const double first = horner(p.data(), p.size(), 0), last = horner(p.data(), p.size(), 1);
  value_range range{{first, 0}, {first, 0}};
  std::vector<extreme> all = {{last, 1}};
  double size = std::fmax(std::fabs(first), std::fabs(last));
  for (const double xi : inner_roots(derivative_of(p))) {
    all.push_back({horner(p.data(), p.size(), xi), xi});
    size = std::fmax(size, std::fabs(all.back().value));
  }
  for (const extreme& e : all) {
    if (e.value < range.least.value - BEYOND_END * size) range.least = e;
    if (e.value > range.largest.value + BEYOND_END * size) range.largest = e;
  }
  return range;
}

extreme largest_length(const std::array<quintic, 3>& components) {
  polynomial square(11, 0.0);
  double size = 0;  // squares of very large or small coefficients would leave the range of numbers
  for (const quintic& p : components) {
    for (const double c : p) size = std::fmax(size, std::fabs(c));
  }
  for (const quintic& p : components) {
    for (std::size_t i = 0; i < p.size() && size > 0; ++i) {
      for (std::size_t j = 0; j < p.size(); ++j) square[i + j] += (p[i] / size) * (p[j] / size);
    }
  }
  extreme largest = range_of(square).largest;
  largest.value = 0;
  for (const quintic& p : components) largest.value = std::hypot(largest.value, value(p, largest.xi));
  return largest;
}

}  // namespace solver
