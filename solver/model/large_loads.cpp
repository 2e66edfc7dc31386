// large_loads.cpp: the largest value that drives a step, and its line.
#include "model/large_loads.h"

#include <cmath>

#include <fmt/format.h>

#include "model/model_error.h"

namespace solver {

namespace {

constexpr double LARGEST_LOAD = 1e150;  // squares reach to 1e308, coordinates to 1e50

struct driver {
  double value = 0;
  const char* keyword = "";
  int line = 0, file = 0;
};

template <class RECORDS, class VALUE>
void take_largest(const RECORDS& records, const char* keyword, const VALUE& value, driver& largest) {
  for (const auto& each : records) {
    if (std::fabs(value(each)) > std::fabs(largest.value)) largest = {value(each), keyword, each.line, each.file};
  }
}

}  // namespace

void report_large_load(const model& m, const step& s, const std::string& what) {
  driver largest;
  const auto prescribed = [](const boundary_condition& c) { return c.value; };
  take_largest(
      s.nodal_loads, "*CLOAD", [](const nodal_load& l) { return l.value; }, largest);
  for (const element_load& l : s.element_loads) {
    if (std::fabs(l.magnitude) > std::fabs(largest.value)) largest = {l.magnitude, l.keyword, l.line, l.file};
  }
  take_largest(
      s.temperatures, "*TEMPERATURE", [](const nodal_temperature& t) { return t.change; }, largest);
  take_largest(
      s.temperatures, "*TEMPERATURE", [](const nodal_temperature& t) { return t.gradient; }, largest);
  take_largest(s.boundaries, "*BOUNDARY", prescribed, largest);
  take_largest(m.boundaries, "*BOUNDARY", prescribed, largest);
  if (!(std::fabs(largest.value) > LARGEST_LOAD)) return;
  throw model_error(m, largest, largest.keyword,
                    fmt::format("{} is not finite: the value {:g} of this line is too large for the sums and products "
                                "that it enters; look at its unit",
                                what, largest.value));
}

}  // namespace solver
