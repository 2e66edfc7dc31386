// cable_case.h: a cable as the tests make it, its solution, and what must hold of it by integration of the law of the
// cable itself.
#ifndef TESTS_MORVENIK_CABLE_CASE_H
#define TESTS_MORVENIK_CABLE_CASE_H

#include <array>
#include <cstdint>
#include <random>
#include <string>

#include "morvenik.h"

using triple = std::array<double, 3>;
using matrix6 = std::array<double, 36>;  // by columns

struct cable_case {
  triple X1{0.0, 0.0, 0.0};
  triple X2{0.0, 0.0, 0.0};
  triple w{0.0, 0.0, 0.0};
  double area = 1.0;
  double E = 1e6;
  double L0 = 1.0;
  double e = 0.0;
};

struct cable_forces {
  std::array<double, 6> F{};
  double tension1 = 0.0;
  double tension2 = 0.0;
  std::int32_t status = -7;
};

cable_forces solve(const cable_case& c);
std::int32_t tangent(const cable_case& c, const cable_forces& f, matrix6& K);

inline double entry(const matrix6& K, int i, int j) { return K[static_cast<std::size_t>(6 * (j - 1) + i - 1)]; }

double norm(const triple& a);
double chord(const cable_case& c);
// The load of the whole cable, and the largest force that counts: load or tension.
double load(const cable_case& c);
double force_scale(const cable_case& c, const cable_forces& f);

// The span and its derivative by the tension at the first node (3 by 3, by rows), from the tension at the first node,
// by quadrature in long double on panels that shrink towards the point of least tension.
struct integrated_span {
  std::array<long double, 3> span{};
  std::array<long double, 9> flexibility{};
};
integrated_span integrate(const cable_case& c, const triple& tension_at_first);

// A cable of random length, load, stiffness and directions; the chord is ratio * L0.
cable_case random_cable(std::mt19937_64& source, double ratio);
triple random_direction(std::mt19937_64& source);
double uniform(std::mt19937_64& source, double low, double high);

// All data of a case with every digit.
std::string describe(const cable_case& c);

#endif
