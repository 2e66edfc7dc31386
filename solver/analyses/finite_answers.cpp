// finite_answers.cpp: looks through the answers of a step.
#include "analyses/finite_answers.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "model/large_loads.h"
#include "model/model_error.h"

namespace solver {

namespace {

[[noreturn]] void refuse(const model& m, const step& s, const std::string& what) {
  report_large_load(m, s, what);
  throw model_error(m, s, s.kind == step_kind::COMBINATION ? "*COMBINATION" : "*STEP",
                    what +
                        " is not finite: loads, coordinates or constants are so large, or so small, that their sums "
                        "and products cannot be held; look at their units");
}

template <std::size_t COUNT>
bool finite(const std::array<double, COUNT>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

bool finite(const surface_stress& at) {
  return finite(at.stress) && finite(std::array<double, 4>{at.angle, at.first, at.second, at.equivalent});
}

template <std::size_t COUNT>
bool finite(const std::array<surface_stress, COUNT>& all) {
  return std::all_of(all.begin(), all.end(), [](const surface_stress& at) { return finite(at); });
}

bool finite(const element_result& r) {
  const auto plastic = std::all_of(r.plastic.begin(), r.plastic.end(), [](const auto& part) { return finite(part); });
  return finite(r.force) && finite(r.moment) && finite(r.shear_force) && finite(r.at) && plastic &&
         finite(r.plastic_shear) && std::isfinite(r.equivalent_plastic);
}

bool finite(const nodal_result& r) {
  return finite(r.top) && finite(r.bottom) && std::isfinite(r.equivalent_top) && std::isfinite(r.equivalent_bottom);
}

bool finite(const solid_stress& r) { return finite(r.stress) && finite(r.principal) && std::isfinite(r.equivalent); }

void check_freedoms(const model& m, const step& s, const std::vector<double>& by_freedom, const char* what) {
  const auto bad =
      std::find_if(by_freedom.begin(), by_freedom.end(), [](double value) { return !std::isfinite(value); });
  if (bad == by_freedom.end()) return;
  const auto f = subscript(bad - by_freedom.begin());
  refuse(m, s,
         std::string(what) + " of " + node_name(m, number_of(f / DIRECTIONS)) + " in " +
             direction_name(number_of(f % DIRECTIONS)));
}

// `name` gives the bearer of a record: "element 12".
template <class RECORDS, class NAME>
void check_records(const model& m, const step& s, const RECORDS& records, const char* what, const NAME& name) {
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!finite(records[i])) refuse(m, s, std::string(what) + " " + name(i));
  }
}

}  // namespace

bool all_finite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

void require_finite(const model& m, const step& s, const static_solution& solution) {
  check_freedoms(m, s, solution.load, "the load");
  check_freedoms(m, s, solution.displacement, "the displacement");
  check_freedoms(m, s, solution.reaction, "the reaction");
}

void require_finite(const model& m, const step& s, const step_results& results) {
  const auto element = [&](std::size_t e) { return "of element " + std::to_string(m.elements[e].id); };
  const auto node = [&](std::size_t n) { return "at " + node_name(m, number_of(n)); };
  check_records(m, s, results.elements, "a stress", element);
  check_records(m, s, results.in_solids, "a stress", element);
  check_records(m, s, results.members, "an end force", element);
  check_records(m, s, results.nodes, "a stress", node);
  const auto of_part = [&](const auto& part) { return node(subscript(part.node)); };
  for (const nodal_part& part : results.parts) {
    if (!finite(part.at) || !finite(part.shear)) refuse(m, s, "a stress " + of_part(part));
  }
  for (const solid_part& part : results.solids) {
    if (!finite(part.at)) refuse(m, s, "a stress " + of_part(part));
  }
}

void require_finite(const model& m, const step& s, const modal_solution& solution) {
  for (const mode& each : solution.modes) {
    require_finite(m, s, each.value, "a frequency or buckling factor");
    check_freedoms(m, s, each.displacement, "the motion");
  }
}

void require_finite(const model& m, const step& s, double value, const char* what) {
  if (!std::isfinite(value)) refuse(m, s, what);
}

}  // namespace solver
