// json_results.cpp: objects by names that say what they hold.
#include "output/json_results.h"

#include <ctime>
#include <map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "analyses/extremes.h"
#include "analyses/load_sums.h"
#include "analyses/reaction_sums.h"
#include "finites/version.h"
#include "model/base_step.h"
#include "model/element_names.h"
#include "model/step_kinds.h"

namespace solver {

namespace {

using by_direction = std::array<double, DIRECTIONS>;

json force_and_moment(const by_direction& v) { return {{"force", {v[0], v[1], v[2]}}, {"moment", {v[3], v[4], v[5]}}}; }

// Universal time, as ISO 8601 writes it.
std::string time_of_day() {
  const std::time_t now = std::time(nullptr);
  char text[32] = "";
  std::tm parts{};
  if (gmtime_r(&now, &parts) != nullptr) std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

json model_counts(const model& m) {
  std::map<std::string, std::size_t> by_type;
  for (const element& e : m.elements) ++by_type[type_name(e.type)];
  json types = json::object();
  for (const auto& [name, count] : by_type) types[name] = count;
  return {{"nodes", m.nodes.size() - m.made_nodes.size()},
          {"made_nodes", m.made_nodes.size()},
          {"elements", m.elements.size()},
          {"types", types}};
}

json start_step(const model& m, const step& s, const std::vector<std::string>& notes) {
  json one = {{"number", number_of(m, s)}, {"name", s.name}, {"title", s.title}, {"kind", kind_name(s)}};
  if (const step* const base = base_step(m, s); base != nullptr) one["base_step"] = number_of(m, *base);
  one["warnings"] = notes;
  return one;
}

json placed(const model& m, const placed_value& v) {
  json one = {{"value", v.value}, {"at", place_name(m, v.at)}};
  if (v.at.node >= 0 && !is_made(m.nodes[v.at.node])) one["node"] = m.nodes[v.at.node].id;
  if (v.at.element >= 0) one["element"] = m.elements[v.at.element].id;
  if (v.at.distance >= 0) one["distance"] = v.at.distance;
  return one;
}

json extremes(const model& m, const static_solution& solution, const step_results& results) {
  json all = json::array();
  for (const quantity_range& r : ranges_of(m, solution, results)) {
    all.push_back({{"quantity", r.name}, {"least", placed(m, r.least)}, {"largest", placed(m, r.largest)}});
  }
  return all;
}

json reaction_sets(const model& m, const static_solution& solution) {
  json all = json::array();
  for (const set_reaction& each : reactions_by_set(m, solution)) {
    json one = {{"set", each.set}, {"nodes", each.nodes}};
    one.update(force_and_moment(each.sum));
    all.push_back(one);
  }
  return all;
}

json curve_of(const model& m, int node, int direction) {
  return {{"node", m.nodes[node].id}, {"direction", direction_short_name(direction)}};
}

const char* event_name(event_kind kind) {
  switch (kind) {
    case event_kind::FORMED: return "formed";
    case event_kind::CLOSED: return "closed";
    default: return "turned";
  }
}

const char* end_name(pushover_end end) {
  switch (end) {
    case pushover_end::MECHANISM: return "mechanism";
    case pushover_end::LIMIT: return "limit";
    case pushover_end::FACTOR_REACHED: return "largest factor";
    case pushover_end::EVENTS_REACHED: return "largest number of events";
    case pushover_end::NO_EVENT: return "no further hinge";
    case pushover_end::VERTEX: return "vertex";
    default: return "undecided";
  }
}

const char* end_name(elastoplastic_end end) {
  switch (end) {
    case elastoplastic_end::LIMIT: return "limit";
    case elastoplastic_end::NO_EQUILIBRIUM: return "no equilibrium";
    case elastoplastic_end::FACTOR_REACHED: return "largest factor";
    default: return "largest number of increments";
  }
}

json mode_object(const step& s, const modal_solution& solution, std::size_t k) {
  const bool vibrates = s.kind == step_kind::FREQUENCY;
  json one = {{"mode", k + 1}, {vibrates ? "frequency" : "factor", solution.modes[k].value}};
  if (k >= solution.masses.modes.size()) return one;
  const modal_mass& mass = solution.masses.modes[k];
  one["generalised_mass"] = mass.generalised;
  one["participation_factor"] = mass.factor;
  one["effective_mass"] = mass.effective;
  return one;
}

}  // namespace

json json_of_run(const model& m, const std::string& solver_name) {
  return {{"format", 1},
          {"program", "finites-solve " FINITES_VERSION_TEXT},
          {"version", FINITES_VERSION_TEXT},
          {"written", time_of_day()},
          {"deck", m.deck},
          {"title", m.title},
          {"finished", true},
          {"solver", solver_name},
          {"model", model_counts(m)},
          {"warnings", m.notes},
          {"steps", json::array()}};
}

json json_of_step(const model& m, const step& s, const static_solution& solution, const step_results& results) {
  json one = start_step(m, s, solution.notes);
  one["remarks"] = solution.remarks;
  one["equations"] = solution.equations;
  one["entries"] = solution.entries;
  one["residual"] = solution.residual;
  if (solution.smallest_stiffness > 0) one["smallest_relative_stiffness"] = solution.smallest_stiffness;
  one["loads"] = force_and_moment(resultant_of(m, solution.load));
  one["reactions"] = force_and_moment(resultant_of(m, solution.reaction));
  if (!solution.constraint.empty()) one["conditions"] = force_and_moment(resultant_of(m, solution.constraint));
  one["reaction_sets"] = reaction_sets(m, solution);
  one["extremes"] = extremes(m, solution, results);
  return one;
}

json json_of_step(const model& m, const step& s, const modal_solution& solution) {
  json one = start_step(m, s, solution.notes);
  one["equations"] = solution.equations;
  one["modes"] = json::array();
  for (std::size_t k = 0; k < solution.modes.size(); ++k) one["modes"].push_back(mode_object(s, solution, k));
  if (s.kind != step_kind::FREQUENCY) return one;
  const modal_masses& masses = solution.masses;
  one["masses"] = {{"total", masses.total}, {"free", masses.free}, {"centre", masses.centre}};
  return one;
}

json json_of_path(const model& m, const pushover_solution& path) {
  json one = curve_of(m, path.node, path.direction);
  one["load_factor"] = path.factor;
  one["end"] = end_name(path.end);
  if (path.span) one["valid_up_to"] = path.span->factor;
  one["curve"] = json::array();
  for (const curve_point& p : path.curve) {
    one["curve"].push_back(
        {{"load_factor", p.factor}, {"displacement", p.displacement}, {"open_hinges", p.open_hinges}});
  }
  one["events"] = json::array();
  for (const hinge_event& e : path.events) {
    one["events"].push_back({{"load_factor", e.factor},
                             {"element", m.elements[e.element].id},
                             {"end", e.end + 1},
                             {"hinge", event_name(e.kind)},
                             {"P", e.forces.P},
                             {"My", e.forces.My},
                             {"Mz", e.forces.Mz}});
  }
  return one;
}

json json_of_path(const model& m, const elastoplastic_solution& path) {
  json one = curve_of(m, path.node, path.direction);
  one["load_factor"] = path.factor;
  one["largest_load_factor"] = path.largest_factor;
  if (path.first_yield > 0) one["first_yield"] = path.first_yield;
  one["end"] = end_name(path.end);
  one["out_of_balance"] = path.out_of_balance;
  one["curve"] = json::array();
  for (const yielding_point& p : path.curve) {
    one["curve"].push_back({{"load_factor", p.factor},
                            {"displacement", p.displacement},
                            {"flowing", p.flowing},
                            {"iterations", p.iterations}});
  }
  return one;
}

json json_of_time(const stopwatch& watch) {
  json phases = json::object();
  double total = 0;
  for (const auto& [phase, seconds] : watch.phases()) {
    phases[phase] = seconds;
    total += seconds;
  }
  return {{"phases", phases}, {"total", total}};
}

void write_json(std::ostream& out, const json& all) {
  out << all.dump(1, ' ', false, json::error_handler_t::replace) << '\n';
}

}  // namespace solver
