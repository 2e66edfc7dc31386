// plastic_static.cpp: the path of an *ELASTOPLASTIC step, up to load factor 1 and no further.
#include "elastoplastic/plastic_static.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "model/model_error.h"
#include "model/yielding.h"

namespace solver {

namespace {

double work_of_loads(const static_solution& solution) {
  double work = 0;
  for (std::size_t f = 0; f < solution.load.size(); ++f) work += solution.load[f] * solution.displacement[f];
  return work;
}

bool has_yielded(const elastoplastic_solution& solution) {
  return std::any_of(solution.curve.begin(), solution.curve.end(),
                     [](const yielding_point& point) { return point.flowing > 0; });
}

std::string why_it_ended(const elastoplastic_solution& solution) {
  switch (solution.end) {
    case elastoplastic_end::LIMIT: return "there the displacements grow and the load no longer does";
    case elastoplastic_end::INCREMENTS_REACHED:
      return fmt::format("{} increments have led no further", solution.curve.size() - 1);
    default: return "no equilibrium was found beyond it";
  }
}

}  // namespace

std::optional<elastoplastic_solution> follow_shells(const model& m, const step& s, const static_solution& elastic,
                                                    library_model& library, linear_solver& solver, stopwatch& watch,
                                                    std::size_t states, path_restart* restart) {
  if (!(work_of_loads(elastic) > 0)) return std::nullopt;
  step path = s;
  path.elastoplastic = elastoplastic_request{};
  path.elastoplastic.largest_factor = 1;
  library.second_order(false);
  elastoplastic_solution found = elastoplastic(m, library, solver).solve(path, watch, states, restart);
  if (found.end != elastoplastic_end::FACTOR_REACHED) {
    throw model_error(m, s, "*STATIC",
                      fmt::format("yielding shells carry no more than {:.6g} of the loads of the step: {}. A step "
                                  "with *ELASTOPLASTIC shows the path up to there",
                                  found.largest_factor, why_it_ended(found)));
  }
  if (found.factor < 1) {
    found.plates.notes.push_back(
        "*STATIC: the path of the yielding shells ends at the full load, to the sixth digit: they are shown as they "
        "stand "
        "there, and a larger load may find no resistance");
  }
  if (found.factor >= 1 && !has_yielded(found)) return std::nullopt;
  return found;
}

std::string note_elastic_faces(const model& m, const step_results& results) {
  constexpr double BEYOND = 1 + 1e-6;  // rounding apart
  double worst = 0;
  int first = 0, count = 0;
  for (std::size_t e = 0; e < results.elements.size(); ++e) {
    if (!is_shell(m.elements[e].type) || !has_yield_stress(m, m.elements[e])) continue;
    if (m.shell_sections[m.elements[e].section].yielding != plate_model::SECTION) continue;
    const element_result& r = results.elements[e];
    const double yield_stress = m.materials[material_of(m, m.elements[e])].yield_stress;
    const double share = std::max(r.at.front().equivalent, r.at.back().equivalent) / yield_stress;
    if (r.equivalent_plastic > 0 || !(share > BEYOND)) continue;
    if (count++ == 0) first = m.elements[e].id;
    worst = std::max(worst, share);
  }
  if (count == 0) return "";
  return fmt::format(
      "a face is stressed beyond the yield stress, up to {:.3g} times, in {} whose section is still elastic, element "
      "{} "
      "the first: MODEL=SECTION yields at the plastic moment, MODEL=LAYERED from its faces on",
      worst, count == 1 ? "1 shell" : fmt::format("{} shells", count), first);
}

std::string plastic_static_summary(const elastoplastic_solution& solution) {
  return fmt::format(
      "  shells yield from {:.6g} of the loads on; full load in {} increments, {} halved; largest force out of balance "
      "{:.1e} of the loads\n",
      solution.first_yield, solution.curve.size() - 1, solution.cuts, solution.out_of_balance);
}

}  // namespace solver
