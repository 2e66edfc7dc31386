// combination_support.h: a run of a deck with all of its tables, whose cells may be names.
#ifndef FINITES_TESTS_COMBINATION_SUPPORT_H
#define FINITES_TESTS_COMBINATION_SUPPORT_H

#include <map>
#include <string>
#include <vector>

namespace combination_test {

struct text_table {
  std::vector<std::string> names;
  std::vector<std::vector<std::string>> rows;
  std::size_t column(const std::string& name) const;  // fails where there is none
  bool has(const std::string& name) const;
  double number(std::size_t row, const std::string& name) const;
  const std::string& text(std::size_t row, const std::string& name) const;
};

// By the option that asks for it: "csv", "members", "stations", "points", "stresses", "solids".
using tables = std::map<std::string, text_table>;

struct whole_run {
  std::vector<tables> steps;     // step 1 is steps[0]
  std::vector<std::string> vtu;  // likewise, the files
  std::string printed;           // the .dat file
};

whole_run run_all(const std::string& deck, int steps);

// The same numbers, by the largest of each kind of column: those whose names begin alike.
void expect_same_tables(const tables& found, const tables& expected, double share);

// Plates, beams with a pin and a section off its nodes, a truss, a brick, a spring, an equation and a support that
// moves: everything before the first *STEP.
extern const char* const MIXED;

// Three sets of loads on it, times a factor.
std::string first_loads(double factor), second_loads(double factor), third_loads(double factor);

}  // namespace combination_test

#endif
