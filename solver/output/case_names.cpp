// case_names.cpp: names of steps.
#include "output/case_names.h"

#include "output/text.h"

namespace solver {

std::string case_name(const model& m, int step) {
  if (step < 0) return "";
  return m.steps[step].name.empty() ? std::to_string(step + 1) : m.steps[step].name;
}

std::string case_field(const model& m, int step) { return table_field(case_name(m, step)); }

}  // namespace solver
