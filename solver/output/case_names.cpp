// case_names.cpp: names of steps.
#include "output/case_names.h"

namespace solver {

std::string case_name(const model& m, int step) {
  if (step < 0) return "";
  return m.steps[step].name.empty() ? std::to_string(step + 1) : m.steps[step].name;
}

std::string case_field(const model& m, int step) {
  std::string name = case_name(m, step);
  if (name.find_first_of(",\"") == std::string::npos) return name;
  std::string quoted = "\"";
  for (const char letter : name) quoted += letter == '"' ? "\"\"" : std::string(1, letter);
  return quoted + '"';
}

}  // namespace solver
