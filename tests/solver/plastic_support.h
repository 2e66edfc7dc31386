// plastic_support.h: plates of steel that yield, from deck texts, and their analysis in one call.
#ifndef FINITES_TESTS_PLASTIC_SUPPORT_H
#define FINITES_TESTS_PLASTIC_SUPPORT_H

#include <string>
#include <vector>

#include "elastoplastic/elastoplastic.h"
#include "shell_decks.h"

namespace plastic_test {

using namespace shell_test;

constexpr double YOUNG = 210000, POISSON = 0.3, YIELD = 235;

// What stands below *PLASTIC, and the parameters of the section.
struct steel {
  double plastic_modulus = 0;
  std::string model;  // "MODEL=LAYERED, POINTS=5"
};

// The deck of a sheet with a yield stress.
std::string yielding(const sheet& s, const steel& of, const std::string& supports, const std::string& step);

// A strip of 100 by 20, 4 thick, along x: half of it, held at its middle by symmetry, free to narrow and to curve
// across. A load factor of 1 is the plastic force, or the plastic moment, of its end.
struct strip {
  sheet mesh;
  steel of;
  std::string tension(const std::string& limits = "1.5, 40\n") const;
  std::string bending(const std::string& limits = "1.5, 40\n") const;
  std::string deck(int dof, double total, const std::string& card) const;
};
strip a_strip(const sheet& form, int n = 2);

// All steps of a model.
std::vector<solver::elastoplastic_solution> load(const solver::model& m,
                                                 solver::solver_kind kind = solver::default_solver(), int threads = 1);
std::vector<solver::elastoplastic_solution> load(const std::string& text);

}  // namespace plastic_test

#endif
