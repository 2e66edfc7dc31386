// page_steps.cpp: what a solution says about supports, loads and the structure.
#include "report_page/page_steps.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "analyses/extremes.h"
#include "analyses/load_sums.h"
#include "analyses/reaction_sums.h"
#include "elements/constraints.h"
#include "elements/member_field.h"
#include "elements/plate_axes.h"
#include "model/base_step.h"
#include "model/step_kinds.h"
#include "output/summary.h"
#include "report_page/page_fields.h"

namespace solver {

namespace {

// By node, bit d: freedom d is held. A support in axes of its own holds the freedom with its largest factor, more or
// less.
std::vector<std::uint8_t> held_freedoms(const model& m, const load_case& loads) {
  std::vector<std::uint8_t> held(m.nodes.size(), 0);
  const auto hold = [&](int node, int direction) {
    held[subscript(node)] = static_cast<std::uint8_t>(held[subscript(node)] | 1U << static_cast<unsigned>(direction));
  };
  const std::vector<char> supported = supported_freedoms(m, loads);
  for (std::size_t f = 0; f < supported.size(); ++f) {
    if (supported[f] != 0) hold(number_of(f / DIRECTIONS), number_of(f % DIRECTIONS));
  }
  for (const linear_constraint& c : loads.conditions) {
    if (!is_support(c) || c.terms.empty()) continue;
    const auto largest = std::max_element(
        c.terms.begin(), c.terms.end(),
        [](const constraint_term& a, const constraint_term& b) { return std::fabs(a.factor) < std::fabs(b.factor); });
    hold(largest->node, largest->dof - 1);
  }
  return held;
}

page_json supports_of(const page_mesh& mesh, const std::vector<std::uint8_t>& held, page_buffers& buffers) {
  std::vector<std::int32_t> node;
  std::vector<std::uint8_t> dofs;
  for (const int n : mesh.nodes) {
    if (held[subscript(n)] == 0) continue;
    node.push_back(mesh.number_of_node(n));
    dofs.push_back(held[subscript(n)]);
  }
  return {{"node", buffers.integers(node)}, {"dofs", buffers.bytes(dofs)}};
}

// Nodes of which `shown` holds, or that have a value, with the six values of each.
template <class SHOWN>
page_json nodal_values(const page_mesh& mesh, const std::vector<double>& by_freedom, const char* name,
                       const SHOWN& shown, page_buffers& buffers) {
  std::vector<std::int32_t> node;
  std::vector<float> values;
  for (const int n : mesh.nodes) {
    const double* const own = by_freedom.data() + freedom(n, 0);
    if (!shown(n) && std::all_of(own, own + DIRECTIONS, [](double value) { return value == 0; })) continue;
    node.push_back(mesh.number_of_node(n));
    for (int d = 0; d < DIRECTIONS; ++d) values.push_back(as_float(own[d]));
  }
  return {{"node", buffers.integers(node)}, {name, buffers.exact(values, DIRECTIONS)}};
}

// Forces per length of members at their two ends, per area of plates, per volume of solids, along global axes.
class element_loads {
 public:
  element_loads(const model& m, const load_case& loads) : m_(m), loads_(loads) {}
  void put_into(page_json& data, page_buffers& buffers);

 private:
  struct list {
    std::vector<std::int32_t> element;
    std::vector<float> force;
    void add(std::size_t e, const std::array<double, 3>& value) {
      if (element.empty() || element.back() != number_of(e)) element.push_back(number_of(e));
      for (const double each : value) force.push_back(as_float(each));
    }
  };
  static bool any(const std::array<double, 3>& a) { return a[0] != 0 || a[1] != 0 || a[2] != 0; }
  void add_member(std::size_t e, list& to) const;
  void add_plate(std::size_t e, list& to) const;

  const model& m_;
  const load_case& loads_;
};

void element_loads::add_member(std::size_t e, list& to) const {
  const distributed_load& own = loads_.element[e];
  const double area = frame_section_of(m_, m_.elements[e]).area;
  std::array<double, 3> first{}, last{};
  for (std::size_t i = 0; i < 3; ++i) {
    const double mean = own.line[i] + own.body[i] * area;
    first[i] = mean - own.line_rise[i] / 2;
    last[i] = mean + own.line_rise[i] / 2;
  }
  if (!any(first) && !any(last)) return;
  to.add(e, first);
  to.add(e, last);
}

void element_loads::add_plate(std::size_t e, list& to) const {
  const distributed_load& own = loads_.element[e];
  const vector3 normal = solver::row(plate_axes(m_, m_.elements[e]), 3);
  const double thickness = m_.shell_sections[m_.elements[e].section].thickness;
  std::array<double, 3> force{};
  for (std::size_t i = 0; i < 3; ++i) force[i] = own.pressure * normal[i] + own.body[i] * thickness;
  if (any(force)) to.add(e, force);
}

void element_loads::put_into(page_json& data, page_buffers& buffers) {
  list lines, areas, bodies;
  for (std::size_t e = 0; e < m_.elements.size(); ++e) {
    const element_type type = m_.elements[e].type;
    if (is_member(type) && has_field(m_, m_.elements[e])) add_member(e, lines);
    if (is_plate(type)) add_plate(e, areas);
    if (is_solid(type) && any(loads_.element[e].body)) bodies.add(e, loads_.element[e].body);
  }
  const auto put = [&](const char* name, const list& from, int width) {
    data[name] = {{"element", buffers.integers(from.element)}, {"force", buffers.exact(from.force, width)}};
  };
  put("line_loads", lines, 6);
  put("area_loads", areas, 3);
  put("body_loads", bodies, 3);
}

// Loads as the deck has them.
void add_loads(page_json& data, const page_mesh& mesh, const model& m, const load_case& loads, page_buffers& buffers) {
  data["point_loads"] = nodal_values(
      mesh, loads.nodal_load, "force", [](int) { return false; }, buffers);
  element_loads(m, loads).put_into(data, buffers);
}

page_json sums_of(const model& m, const static_solution& solution) {
  const equilibrium sums = sum_forces(m, solution);
  return {{"applied", sums.applied}, {"reaction", sums.reaction}};
}

page_json set_sums(const model& m, const static_solution& solution) {
  page_json all = page_json::array();
  for (const set_reaction& each : reactions_by_set(m, solution)) {
    all.push_back({{"set", each.set}, {"nodes", each.nodes}, {"sum", each.sum}});
  }
  return all;
}

page_json stations_of_step(const page_mesh& mesh, const model& m, const step_results& results, page_buffers& buffers) {
  std::vector<float> displacement, force;
  for (const member_field& f : results.fields) {
    for (const station& at : stations_of(m, f, mesh.station_count)) {
      for (const double value : at.displacement) displacement.push_back(as_float(value));
      for (const double value : at.force) force.push_back(as_float(value));
    }
  }
  return {{"displacement", buffers.results(std::move(displacement), 3)},
          {"force", buffers.results(std::move(force), SECTION_FORCES)}};
}

page_json extremes_of(const model& m, const static_solution& solution, const step_results& results) {
  page_json all = page_json::array();
  for (const quantity_range& range : ranges_of(m, solution, results)) {
    all.push_back({{"name", range.name},
                   {"min", range.least.value},
                   {"min_at", place_name(m, range.least.at)},
                   {"max", range.largest.value},
                   {"max_at", place_name(m, range.largest.at)}});
  }
  return all;
}

page_json combined_steps(const model& m, const step& s) {
  page_json all = page_json::array();
  for (const combined_step& c : s.combined) {
    all.push_back({{"step", c.step + 1}, {"name", m.steps[c.step].name}, {"factor", c.factor}});
  }
  return all;
}

page_json row(const char* name, const std::string& value) { return page_json::array({name, value}); }

}  // namespace

page_json begin_step(const model& m, const step& s, const std::vector<std::string>& notes,
                     const std::vector<std::string>& remarks) {
  page_json warnings = page_json::array();
  for (const std::string& note : notes) warnings.push_back(place_of(m, s.file, s.line) + ": *STEP: " + note);
  return {{"number", number_of(m, s)},
          {"name", s.name},
          {"title", s.title},
          {"kind", kind_name(s)},
          {"combined", combined_steps(m, s)},
          {"warnings", warnings},
          {"remarks", remarks},
          {"summary", page_json::array()}};
}

void add_supports(page_json& data, const page_mesh& mesh, const model& m, const step& s, page_buffers& buffers) {
  const load_case loads = gather_load_case(m, s);
  data["supports"] = supports_of(mesh, held_freedoms(m, loads), buffers);
  if (s.kind == step_kind::BUCKLE && !mesh.outline) add_loads(data, mesh, m, loads, buffers);
}

void add_solution(page_json& data, const page_mesh& mesh, const model& m, const static_solution& solution,
                  const step_results& results, page_fields shown, page_buffers& buffers) {
  page_json& summary = data["summary"];
  summary.push_back(row("equations", std::to_string(solution.equations)));
  summary.push_back(row("entries", std::to_string(solution.entries)));
  summary.push_back(row("residual", fmt::format("{:.1e}", solution.residual)));
  if (solution.smallest_stiffness > 0) {
    summary.push_back(row("smallest relative stiffness", fmt::format("{:.1e}", solution.smallest_stiffness)));
  }
  const std::vector<std::uint8_t> held = held_freedoms(m, solution.loads);
  data["supports"] = supports_of(mesh, held, buffers);
  data["loads"] = nodal_values(
      mesh, solution.load, "force", [](int) { return false; }, buffers);
  data["sums"] = sums_of(m, solution);
  data["reactions"] = nodal_values(
      mesh, solution.reaction, "value", [&](int n) { return held[subscript(n)] != 0; }, buffers);
  data["reaction_sets"] = set_sums(m, solution);
  data["displacement"] = buffers.results(by_node(mesh, solution.displacement, 0, 3), 3);
  data["fields"] = page_json::array();
  data["extremes"] = extremes_of(m, solution, results);
  if (mesh.outline) return;
  add_loads(data, mesh, m, solution.loads, buffers);
  page_json displacement = {
      {"name", "displacement"},           {"label", "Displacement"},       {"group", "Displacements"}, {"on", "node"},
      {"components", {"ux", "uy", "uz"}}, {"array", data["displacement"]}, {"form", "vector"}};
  data["fields"].push_back(std::move(displacement));
  if (shown == page_fields::DISPLACEMENTS) return;
  data["stations"] = stations_of_step(mesh, m, results, buffers);
  for (page_json& field : fields_of_step(mesh, m, solution.displacement, results, buffers)) {
    data["fields"].push_back(std::move(field));
  }
}

}  // namespace solver
