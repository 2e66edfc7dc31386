// reference_hinge.cpp: the references.
#include "reference_hinge.h"

#include <cmath>

namespace reference {

namespace {

// factor p^i my^j mz^k.
struct monomial {
  long double factor;
  int power[3];
};

constexpr monomial SURFACE[] = {{1.15L, {2, 0, 0}}, {1.0L, {0, 0, 2}}, {1.0L, {0, 4, 0}},
                                {3.67L, {2, 0, 2}}, {3.0L, {6, 2, 0}}, {4.65L, {0, 2, 4}}};

// The forces of each set.
constexpr bool TAKES[8][3] = {{false, false, false}, {false, false, false}, {false, true, false}, {false, false, true},
                              {true, true, false},   {true, false, true},   {false, true, true},  {true, true, true}};

long double derivative(const monomial& m, const long double* x, int by) {
  long double product = m.factor * m.power[by];
  for (int i = 0; i < 3; ++i) {
    const int power = m.power[i] - (i == by ? 1 : 0);
    for (int n = 0; n < power; ++n) product *= x[i];
  }
  return product;
}

}  // namespace

std::vector<double> orbison_gradient(int FS, const section_forces& C, const section_forces& F) {
  const long double capacity[3] = {C.P, C.MY, C.MZ};
  const long double force[3] = {F.P, F.MY, F.MZ};
  long double x[3];
  for (int i = 0; i < 3; ++i) x[i] = TAKES[FS][i] ? force[i] / capacity[i] : 0.0L;
  std::vector<double> gradient;
  for (int by = 0; by < 3; ++by) {
    long double sum = 0.0L;
    for (const monomial& m : SURFACE) sum += m.power[by] > 0 ? derivative(m, x, by) : 0.0L;
    gradient.push_back(static_cast<double>(sum / capacity[by]));
  }
  return gradient;
}

std::vector<double> flow_column(int end, const std::vector<double>& gradient) {
  std::vector<double> n(12, 0.0);
  const std::size_t first = end == 1 ? 0 : 6;
  n[first] = gradient[0];
  n[first + 4] = gradient[1];
  n[first + 5] = gradient[2];
  return n;
}

matrix of_columns(const std::vector<double>& packed, int rows) {
  const auto columns = static_cast<dense::index>(packed.size()) / rows;
  return dense::widened(packed.data(), rows, columns);
}

std::vector<double> packed(const matrix& M) { return dense::listed(M); }

matrix plastic_change(const matrix& K, const matrix& N) {
  return -K * N * (N.transpose() * K * N).inverse() * N.transpose() * K;
}

}  // namespace reference
