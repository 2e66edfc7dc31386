// unused_options.cpp: what each option needs, beside what the deck has.
#include "steps/unused_options.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "elements/constraints.h"
#include "model/yielding.h"

namespace solver {

namespace {

bool any_step(const model& m, bool (*fits)(const model&, const step&)) {
  return std::any_of(m.steps.begin(), m.steps.end(), [&](const step& s) { return fits(m, s); });
}

bool any_element(const model& m, bool (*fits)(element_type)) {
  return std::any_of(m.elements.begin(), m.elements.end(), [&](const element& e) { return fits(e.type); });
}

bool has_hinges(const model& m, const step& s) { return s.kind == step_kind::PUSHOVER || follows_hinges(m, s); }

bool has_path(const model& m, const step& s) {
  return has_hinges(m, s) || s.kind == step_kind::ELASTOPLASTIC || follows_shells(m, s);
}

bool has_masses(const model& /*m*/, const step& s) { return s.kind == step_kind::FREQUENCY; }

bool has_conditions(const model& m) {
  const auto joins = [](const linear_constraint& c) { return !is_support(c); };
  const auto any = [&](const std::vector<linear_constraint>& all) {
    return std::any_of(all.begin(), all.end(), joins);
  };
  return any(m.constraints) ||
         std::any_of(m.steps.begin(), m.steps.end(), [&](const step& s) { return any(s.constraints); });
}

struct need {
  const char* option;
  bool asked, met;
  const char* what;  // that is missing
};

std::vector<need> needs_of(const model& m, const options& wanted) {
  const bool path = any_step(m, has_path), hinges = any_step(m, has_hinges);
  constexpr const char* PATH = "no step follows a path: no *PUSHOVER, no *ELASTOPLASTIC, nothing yields in a *STATIC";
  return {{"--curve", !wanted.curve.empty(), path, PATH},
          {"--increments", wanted.increments > 0, path, PATH},
          {"--events", !wanted.events.empty(), hinges, "no step follows hinges"},
          {"--modes", !wanted.modes.empty(), any_step(m, has_masses), "there is no *FREQUENCY"},
          {"--members", !wanted.members.empty(), any_element(m, is_member), "there are no members"},
          {"--stations", !wanted.stations.empty(), any_element(m, is_member), "there are no members"},
          {"--section-points", !wanted.points.empty(), any_element(m, is_beam), "there are no beams"},
          {"--stresses", !wanted.stresses.empty(), any_element(m, is_plate), "there are no shells and no membranes"},
          {"--conditions", !wanted.conditions.empty(), has_conditions(m), "there are no linear conditions"},
          {"--layers", !wanted.layers.empty(), !m.laminates.empty(), "no *SHELL SECTION is COMPOSITE"},
          {"--solids", !wanted.solids.empty(), any_element(m, is_solid), "there are no solids"}};
}

}  // namespace

std::string unused_options(const model& m, const options& wanted) {
  std::string lines;
  for (const need& each : needs_of(m, wanted)) {
    if (each.asked && !each.met) lines += fmt::format("warning: {}: has nothing to tell: {}\n", each.option, each.what);
  }
  return lines;
}

std::string unused_results(const options& wanted, const std::string& instead) {
  const std::vector<std::pair<const char*, bool>> all = {{"-o", !wanted.output.empty()},
                                                         {"--csv", !wanted.csv.empty()},
                                                         {"--reactions", !wanted.reactions.empty()},
                                                         {"--conditions", !wanted.conditions.empty()},
                                                         {"--json", !wanted.json.empty()},
                                                         {"--report", !wanted.report.empty()},
                                                         {"--members", !wanted.members.empty()},
                                                         {"--stations", !wanted.stations.empty()},
                                                         {"--section-points", !wanted.points.empty()},
                                                         {"--modes", !wanted.modes.empty()},
                                                         {"--curve", !wanted.curve.empty()},
                                                         {"--events", !wanted.events.empty()},
                                                         {"--increments", wanted.increments > 0},
                                                         {"--stresses", !wanted.stresses.empty()},
                                                         {"--layers", !wanted.layers.empty()},
                                                         {"--solids", !wanted.solids.empty()},
                                                         {"--restart", !wanted.restart.empty()},
                                                         {"--node", !wanted.nodes.empty()},
                                                         {"--set", !wanted.sets.empty()},
                                                         {"--reference", !wanted.references.empty()}};
  std::vector<const char*> asked;
  for (const auto& [option, is_asked] : all) {
    if (is_asked) asked.push_back(option);
  }
  if (asked.empty()) return "";
  return fmt::format("warning: {}: nothing is solved, so {} {} no effect\n", instead, fmt::join(asked, ", "),
                     asked.size() == 1 ? "has" : "have");
}

}  // namespace solver
