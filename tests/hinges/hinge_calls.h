// hinge_calls.h: the yield curve routines as calls that hand their results back. An output that a routine does not
// write shows as NaN or as -7777.
#ifndef FINITES_TESTS_HINGE_CALLS_H
#define FINITES_TESTS_HINGE_CALLS_H

#include <array>
#include <cstdint>
#include <vector>

namespace hinge_tests {

struct section_forces {
  double P, MY, MZ;
};

using segments = std::array<std::int32_t, 4>;

struct selection {
  std::int32_t NEQ;
  segments SEG;
};
inline bool operator==(const selection& a, const selection& b) { return a.NEQ == b.NEQ && a.SEG == b.SEG; }

// Capacities C, force set FS, forces F. Gradients are DP, DMY, DMZ.
double phi_orbison(const section_forces& C, int FS, const section_forces& F);
double phi_single(const segments& SEG, const section_forces& C, int FS, const section_forces& F);
std::vector<double> phi_linear(const segments& SEG, const section_forces& C, int FS, const section_forces& F);

selection select_single(const section_forces& C, int FS, const section_forces& F);
selection select_linear(const section_forces& C, int FS, const section_forces& F);

std::vector<double> gradient_orbison(int FS, const section_forces& C, const section_forces& F);
std::vector<double> gradient_single(int S, int FS, const section_forces& C, const section_forces& F);
std::vector<double> gradient_linear(int FS, int S, const section_forces& C, const section_forces& F);

// The three sets of capacities of which one is `bad`.
std::array<section_forces, 3> with_one_capacity(double bad);

}  // namespace hinge_tests

#endif
