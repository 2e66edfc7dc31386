// long_vectors.h: operations on vectors with an entry per equation or degree of freedom.
#ifndef FINITES_SOLVER_LONG_VECTORS_H
#define FINITES_SOLVER_LONG_VECTORS_H

#include <cmath>
#include <cstddef>
#include <vector>

namespace solver {

inline double dot(const std::vector<double>& a, const std::vector<double>& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
  return sum;
}

// Where the squares overflow or vanish the values are scaled by the largest.
inline double norm(const std::vector<double>& x) {
  const double squares = dot(x, x);
  if (std::isnormal(squares) || std::isnan(squares)) return std::sqrt(squares);
  double largest = 0, sum = 0;
  for (const double value : x) largest = std::fmax(largest, std::fabs(value));
  if (!(largest > 0) || !std::isfinite(largest)) return largest;
  for (const double value : x) sum += value / largest * (value / largest);
  return largest * std::sqrt(sum);
}

// sum += factor * part
inline void add_scaled(std::vector<double>& sum, double factor, const std::vector<double>& part) {
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += factor * part[i];
}

}  // namespace solver

#endif
