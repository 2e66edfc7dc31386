// contents.cpp: lines of a name and what there is of it.
#include "output/contents.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "analyses/load_sums.h"
#include "analyses/modal_masses.h"
#include "elements/constraints.h"
#include "model/element_names.h"
#include "model/step_kinds.h"
#include "output/case_names.h"

namespace solver {

namespace {

constexpr std::size_t MOST_NAMES = 12;  // of sets, materials and the like on a line

std::string line(const std::string& what, const std::string& text) { return fmt::format("  {:<13} {}\n", what, text); }

// "3: A, B, C", with the first names alone where there are many; empty for none.
template <class RECORDS, class NAMER>
std::string names_line(const char* what, const RECORDS& records, const NAMER& name) {
  if (records.empty()) return "";
  std::string text = std::to_string(records.size()) + ":";
  std::size_t count = 0;
  for (const auto& each : records) {
    if (++count > MOST_NAMES) break;
    text += (count > 1 ? ", " : " ") + name(each);
  }
  if (records.size() > MOST_NAMES) text += fmt::format(" and {} more", records.size() - MOST_NAMES);
  return line(what, text);
}

// "80 S4, 20 B31", the most frequent ones first.
std::string counts_text(const std::map<std::string, std::size_t>& counts) {
  std::vector<std::pair<std::string, std::size_t>> sorted(counts.begin(), counts.end());
  std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
  std::string text;
  for (const auto& [name, count] : sorted) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, name);
  return text;
}

std::string nodes_line(const model& m) {
  if (m.nodes.empty()) return line("nodes", "none");
  std::array<double, 3> low = m.nodes.begin()->xyz, high = low;
  std::size_t made = 0;
  for (const node& n : m.nodes) {
    if (is_made(n)) ++made;
    for (std::size_t i = 0; i < 3; ++i) {
      low[i] = std::fmin(low[i], n.xyz[i]);
      high[i] = std::fmax(high[i], n.xyz[i]);
    }
  }
  return line("nodes",
              fmt::format("{}{}; x {:.6g} to {:.6g}, y {:.6g} to {:.6g}, z {:.6g} to {:.6g}", m.nodes.size() - made,
                          made > 0 ? fmt::format(" and {} inside quadratic elements", made) : "", low[0], high[0],
                          low[1], high[1], low[2], high[2]));
}

std::string cable_or(const model& m, const element& e) { return is_cable(m, e) ? " (cable)" : ""; }

std::string elements_lines(const model& m) {
  std::map<std::string, std::size_t> counts;
  std::size_t parts = 0, divided = 0;
  for (const element& e : m.elements) {
    ++counts[type_name(e.type) + cable_or(m, e)];
    if (e.parts > 1) ++parts;
    if (e.parts > 1 && e.part == 0) ++divided;
  }
  std::string text = line("elements", fmt::format("{}: {}", m.elements.size(), counts_text(counts)));
  if (divided > 0) text += line("", fmt::format("{} of them are the parts of {} quadratic ones", parts, divided));
  return text;
}

std::string sections_lines(const model& m) {
  std::map<std::string, std::size_t> counts;
  if (!m.shell_sections.empty()) counts["*SHELL or *MEMBRANE SECTION"] = m.shell_sections.size();
  if (!m.solid_sections.empty()) counts["*SOLID SECTION of solids"] = m.solid_sections.size();
  for (const frame_section& each : m.frame_sections) ++counts[each.keyword];
  return counts.empty() ? "" : line("sections", counts_text(counts));
}

std::string conditions_line(const model& m) {
  std::map<std::string, std::size_t> counts;
  for (const linear_constraint& each : m.constraints) ++counts[each.keyword];
  if (counts.empty()) return "";
  return line("conditions", fmt::format("{}: {}", m.constraints.size(), counts_text(counts)));
}

std::string mass_line(const model& m, library_model& library) {
  const step& first = *m.steps.begin();
  const modal_masses found = find_modal_masses(m, step{}, library, gather_load_case(m, first), {});
  const double mass = found.total[0];
  if (!(mass > 0)) return line("mass", "none: no material has a *DENSITY, and there is no *MASS");
  return line("mass", fmt::format("{:.6g}, centre at {:.6g}, {:.6g}, {:.6g}", mass, found.centre[0], found.centre[1],
                                  found.centre[2]));
}

// Parts below the rounding of the terms of their sum are 0.
std::string resultant_text(const model& m, std::array<double, DIRECTIONS> sum) {
  constexpr double ROUNDING = 1e-12;
  double reach = 0;
  for (const node& n : m.nodes) reach = std::fmax(reach, std::hypot(n.xyz[0], n.xyz[1], n.xyz[2]));
  const double force = std::hypot(sum[0], sum[1], sum[2]);
  const double moment = std::fmax(std::hypot(sum[3], sum[4], sum[5]), force * reach);
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    if (std::fabs(sum[i]) <= ROUNDING * (i < 3 ? force : moment)) sum[i] = 0;
  }
  return fmt::format("force {:.6g}, {:.6g}, {:.6g}; moment about the origin {:.6g}, {:.6g}, {:.6g}", sum[0], sum[1],
                     sum[2], sum[3], sum[4], sum[5]);
}

std::string loads_lines(const model& m, const step& s, library_model& library) {
  std::string text;
  for (const load_sum& each : sum_loads(m, s, library)) text += line("  " + each.name, resultant_text(m, each.total));
  const bool any = !s.nodal_loads.empty() || !s.element_loads.empty();
  if (text.empty() && any) text = line("  loads", "along cables, whose shape decides where they act");
  if (!s.temperatures.empty()) text += line("  temperatures", fmt::format("at {} nodes", s.temperatures.size()));
  return text.empty() ? line("  loads", "none") : text;
}

// "44 degrees of freedom of 11 nodes: 11 ux, ...; 2 of them are moved".
std::string supports_line(const model& m, const load_case& loads) {
  std::array<std::size_t, DIRECTIONS> held{};
  std::size_t nodes = 0, moved = 0;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    bool any = false;
    for (std::size_t d = 0; d < DIRECTIONS; ++d) {
      const std::size_t f = freedom(n, d);
      if (!loads.prescribed[f]) continue;
      any = true;
      ++held[d];
      if (loads.prescribed_value[f] != 0) ++moved;
    }
    if (any) ++nodes;
  }
  std::size_t all = 0;
  std::string text;
  for (std::size_t d = 0; d < DIRECTIONS; ++d) {
    all += held[d];
    if (held[d] > 0) {
      text += fmt::format("{}{} {}", text.empty() ? "" : ", ", held[d], direction_short_name(static_cast<int>(d)));
    }
  }
  if (all == 0) return line("  supports", "none");
  text = fmt::format("{} degrees of freedom of {} node{}: {}", all, nodes, nodes == 1 ? "" : "s", text);
  return line("  supports", moved == 0 ? text : text + fmt::format("; {} of them with a value other than 0", moved));
}

std::string conditions_of(const step& s) {
  return s.constraints.empty() ? "" : line("  conditions", fmt::format("{} of this step", s.constraints.size()));
}

// "1.35 Dead + 1.5 Live" of a combination, "ULS1, ULS2" of an envelope.
std::string combined_names(const model& m, const step& s) {
  std::string text;
  for (const combined_step& c : s.combined) {
    const bool sum = s.kind == step_kind::COMBINATION;
    if (!text.empty()) text += sum ? " + " : ", ";
    text += sum ? fmt::format("{:g} {}", c.factor, case_name(m, c.step)) : case_name(m, c.step);
  }
  return text;
}

}  // namespace

std::string model_contents(const model& m) {
  const auto name = [](const auto& each) { return each.name; };
  const auto counted = [](const auto& each) { return fmt::format("{} ({})", each.name, each.members.size()); };
  const auto faces = [](const auto& each) {
    return fmt::format("{} ({})", each.name, each.faces.empty() ? each.nodes.size() : each.faces.size());
  };
  return nodes_line(m) + elements_lines(m) + names_line("materials", m.materials, name) + sections_lines(m) +
         names_line("node sets", m.nsets, counted) + names_line("element sets", m.elsets, counted) +
         names_line("surfaces", m.surfaces, faces) + names_line("orientations", m.orientations, name) +
         conditions_line(m);
}

std::string step_contents(const model& m, library_model& library) {
  if (m.steps.empty()) return "";
  std::string text = mass_line(m, library);
  for (const step& s : m.steps) {
    text +=
        fmt::format("  step {}{}: {}\n", &s - m.steps.data() + 1, s.name.empty() ? "" : ", " + s.name, kind_name(s));
    if (!s.combined.empty()) {
      text += line("  of", combined_names(m, s));
      continue;
    }
    text += loads_lines(m, s, library) + supports_line(m, gather_load_case(m, s)) + conditions_of(s);
  }
  return text;
}

}  // namespace solver
