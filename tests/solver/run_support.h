// run_support.h: a deck of several steps, run from its text to its tables.
#ifndef FINITES_TESTS_RUN_SUPPORT_H
#define FINITES_TESTS_RUN_SUPPORT_H

#include <string>
#include <vector>

#include "analysis_support.h"

namespace run_test {

using namespace analysis_test;

// A table with a line of names; cells that are no numbers are 0.
struct table {
  std::vector<std::string> names;
  std::vector<std::vector<double>> rows;
  std::vector<double> column(const std::string& name) const;
};

// What the program has printed and written. Steps count from 1, as the deck counts them.
struct ran {
  std::string text;
  std::vector<table> steps;    // displacements and reactions by node, or modes
  std::vector<table> members;  // end forces; empty for steps that look for modes
  std::vector<double> modes(int step) const;
  double u(int step, int node, char direction) const;  // the user's number
  double force(int step, int element, int end, const std::string& name) const;
  std::string summary(int step) const;
};

ran run(const std::string& deck);

// The error of a run; empty for none.
std::string run_error(const std::string& deck);

// "*STEP" with its flags, its cards, "*END STEP".
std::string a_step(const std::string& flags, const std::string& cards);

}  // namespace run_test

#endif
