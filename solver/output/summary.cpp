// summary.cpp: tables of plain text.
#include "output/summary.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analyses/load_sums.h"
#include "elements/parts.h"

namespace solver {

namespace {

constexpr const char* SUM_NAMES[DIRECTIONS] = {"force x", "force y", "force z", "moment x", "moment y", "moment z"};

template <class... ARGUMENTS>
void line(std::string& text, fmt::format_string<ARGUMENTS...> format, ARGUMENTS&&... arguments) {
  text += fmt::format(format, std::forward<ARGUMENTS>(arguments)...) + '\n';
}

// Beyond what rounding leaves between values that are equal, so that the first of them is named.
bool is_larger(double value, double than) { return value > than * (1 + BEYOND_END); }

std::size_t node_with_largest(const std::vector<double>& by_freedom, std::size_t first, double& size) {
  std::size_t node = 0;
  size = 0;
  for (std::size_t n = 0; DIRECTIONS * n < by_freedom.size(); ++n) {
    const double* const u = by_freedom.data() + DIRECTIONS * n + first;
    const double length = std::hypot(u[0], u[1], u[2]);
    if (!is_larger(length, size)) continue;
    size = length;
    node = n;
  }
  return node;
}

double largest(const std::array<double, DIRECTIONS>& v, std::size_t first) {
  return std::max({std::fabs(v[first]), std::fabs(v[first + 1]), std::fabs(v[first + 2])});
}

std::string place_in(const model& m, const member_field& f, double xi) {
  const element& e = m.elements[f.element];
  const std::size_t end = xi == 0 ? 0 : 1;
  if ((xi == 0 || xi == 1) && is_outer_end(e, end)) return fmt::format("end {} of element {}", end + 1, e.id);
  return fmt::format("in element {} at {} = {:.6g}", e.id, f.hanging ? "s" : "x", f.before + xi * f.length);
}

struct section_value {
  double value = 0;
  std::string place;
};

// Springs and links have their ends alone. Of what the nodes exert there, that of the first end changes its sign.
void take_ends(const model& m, const step_results& results, std::size_t e, std::size_t direction,
               section_value& worst) {
  for (std::size_t end = 0; end < m.elements[e].nodes.size(); ++end) {
    const double value = results.members[e][6 * end + direction] * (end == 0 ? -1 : 1);
    if (is_larger(std::fabs(value), std::fabs(worst.value))) {
      worst = {value, fmt::format("end {} of element {}", end + 1, m.elements[e].id)};
    }
  }
}

// Conditions that hold in a rigid motion exert forces in balance. Others are levers with a support of their own, and
// what it carries is in no reaction.
std::string unbalanced_conditions(const model& m, const static_solution& solution, const equilibrium& sums) {
  if (solution.constraint.empty()) return "";
  const std::array<double, DIRECTIONS> own = resultant_of(m, solution.constraint);
  std::string text;
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    constexpr double ROUNDING = 1e-6;
    const std::size_t first = i < 3 ? 0 : 3;
    const double size = std::max(largest(sums.applied, first), largest(sums.reaction, first));
    if (std::fabs(own[i]) <= ROUNDING * size) continue;
    text += fmt::format("{} {} {:.6e}", text.empty() ? "" : ",", SUM_NAMES[i], own[i]);
  }
  if (text.empty()) return "";
  return "  the conditions have a sum of their own, as a rigid motion does not meet them:" + text + '\n';
}

std::string sag_summary(const model& m, const std::vector<member_field>& fields) {
  extreme most;
  std::string text, place;
  for (const member_field& f : fields) {
    if (!f.hanging) continue;
    const extreme sag = sag_of(*f.hanging);
    if (!is_larger(sag.value, most.value)) continue;
    most = sag;
    place = place_in(m, f, sag.xi);
  }
  if (most.value > 0) line(text, "  largest {:<12} {:>13.6e}   {}, from its chord", "sag", most.value, place);
  return text;
}

}  // namespace

equilibrium sum_forces(const model& m, const static_solution& solution) {
  equilibrium sums;
  sums.applied = resultant_of(m, solution.load);
  sums.reaction = resultant_of(m, solution.reaction);
  return sums;
}

std::string model_summary(const model& m, const static_solution& solution, const std::string& solver_name) {
  static const std::pair<element_type, const char*> types[] = {
      {element_type::S3, "S3"},           {element_type::S4, "S4"},           {element_type::M3D3, "M3D3"},
      {element_type::M3D4, "M3D4"},       {element_type::B31, "B31"},         {element_type::B33, "B33"},
      {element_type::T3D2, "T3D2"},       {element_type::SPRING1, "SPRING1"}, {element_type::SPRING2, "SPRING2"},
      {element_type::SPRINGA, "SPRINGA"}, {element_type::CONN3D2, "CONN3D2"}, {element_type::C3D4, "C3D4"},
      {element_type::C3D6, "C3D6"},       {element_type::C3D8, "C3D8"},       {element_type::MASS, "MASS"},
      {element_type::ROTARYI, "ROTARYI"}};
  std::string counts;
  for (const auto& [type, name] : types) {
    const auto count = std::count_if(m.elements.begin(), m.elements.end(),
                                     [wanted = type](const element& e) { return e.type == wanted; });
    if (count > 0) counts += fmt::format("{}{} {}", counts.empty() ? "" : ", ", name, count);
  }
  std::string text;
  const std::string made =
      m.made_nodes.empty() ? "" : fmt::format("   {} of them made in quadratic elements", m.made_nodes.size());
  line(text, "  nodes       {:>10}{}", m.nodes.size(), made);
  line(text, "  elements    {:>10}   {}", m.elements.size(), counts);
  line(text, "  equations   {:>10}   {} entries, solved by {}", solution.equations, solution.entries, solver_name);
  const std::string stiffness = solution.smallest_stiffness > 0
                                    ? fmt::format("   smallest relative stiffness {:.1e}", solution.smallest_stiffness)
                                    : std::string();
  line(text, "  residual    {:>10.1e}{}", solution.residual, stiffness);
  return text;
}

std::string displacement_summary(const model& m, const static_solution& solution,
                                 const std::vector<member_field>& fields) {
  std::string text;
  for (const std::size_t first : {std::size_t{0}, std::size_t{3}}) {
    double size = 0;
    const std::size_t node = node_with_largest(solution.displacement, first, size);
    const double* const at_node = solution.displacement.data() + DIRECTIONS * node + first;
    std::array<double, 3> u = {at_node[0], at_node[1], at_node[2]};
    std::string place = "at " + node_name(m, number_of(node));
    for (const member_field& f : fields) {
      const extreme most = first == 0 ? largest_displacement(f) : largest_rotation(f);
      if (!is_larger(most.value, size)) continue;
      size = most.value;
      const station s = station_at(f, most.xi);
      u = first == 0 ? s.displacement : s.rotation;
      place = place_in(m, f, most.xi);
    }
    line(text, "  largest {:<12} {:>13.6e}   ({:.6e}, {:.6e}, {:.6e}) {}", first == 0 ? "displacement" : "rotation",
         size, u[0], u[1], u[2], place);
  }
  return text + sag_summary(m, fields);
}

// The sizes of what a sum of forces and moments adds up.
static std::array<double, DIRECTIONS> sizes_of_terms(const model& m, const std::vector<double>& by_freedom) {
  std::array<double, DIRECTIONS> sizes{};
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    const double* const f = by_freedom.data() + DIRECTIONS * n;
    const std::array<double, 3>& x = m.nodes[n].xyz;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      sizes[i] += std::fabs(f[i]);
      sizes[3 + i] += std::fabs(f[3 + i]) + std::fabs(x[j] * f[k]) + std::fabs(x[k] * f[j]);
    }
  }
  return sizes;
}

std::string equilibrium_summary(const model& m, const static_solution& solution) {
  equilibrium sums = sum_forces(m, solution);
  const std::string conditions = unbalanced_conditions(m, solution, sums);
  // What is below the rounding of its terms is 0: of loads that are added up, of reactions that are solved for too.
  constexpr double ROUNDING = 1e-13, OF_SOLUTION = 1e-12;
  const std::array<double, DIRECTIONS> applied = sizes_of_terms(m, solution.load);
  const std::array<double, DIRECTIONS> reaction = sizes_of_terms(m, solution.reaction);
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    if (std::fabs(sums.applied[i]) <= ROUNDING * applied[i]) sums.applied[i] = 0;
    if (std::fabs(sums.reaction[i]) <= OF_SOLUTION * (applied[i] + reaction[i])) sums.reaction[i] = 0;
  }
  std::string text;
  line(text, "  {:<10} {:>15} {:>15} {:>12}", "", "applied", "reaction", "ratio");
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    // A sum that is so small beside the others is rounding, and its ratio has no digit that counts.
    constexpr double NEGLIGIBLE = 1e-9;
    const bool counts = std::fabs(sums.applied[i]) > NEGLIGIBLE * largest(sums.applied, i < 3 ? 0 : 3);
    line(text, "  {:<10} {:>15.6e} {:>15.6e} {:>12}", SUM_NAMES[i], sums.applied[i], sums.reaction[i],
         counts ? fmt::format("{:.9f}", -sums.reaction[i] / sums.applied[i]) : "-");
  }
  line(text, "  (moments about the origin)");
  return text + conditions;
}

std::string member_summary(const model& m, const step_results& results) {
  static const char* const names[DIRECTIONS] = {"axial force", "shear y", "shear z", "torsion", "moment y", "moment z"};
  std::string text;
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    section_value worst;
    for (const member_field& f : results.fields) {
      const value_range range = range_of_force(f, i);
      for (const extreme& e : {range.least, range.largest}) {
        if (is_larger(std::fabs(e.value), std::fabs(worst.value))) worst = {e.value, place_in(m, f, e.xi)};
      }
    }
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (is_member(m.elements[e].type) && !has_field(m, m.elements[e])) take_ends(m, results, e, i, worst);
    }
    if (worst.value != 0) line(text, "  largest {:<12} {:>13.6e}   {}", names[i], worst.value, worst.place);
  }
  return text;
}

std::string modes_summary(const step& s, const modal_solution& solution) {
  std::string text;
  line(text, "  {:>6} {:>18}", "mode", s.kind == step_kind::FREQUENCY ? "frequency" : "load factor");
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    line(text, "  {:>6} {:>18.9e}", k + 1, solution.modes[k].value);
  }
  return text;
}

std::string remarks_summary(const std::vector<std::string>& remarks) {
  std::string text;
  for (const std::string& remark : remarks) line(text, "  {}", remark);
  return text;
}

std::string deck_warnings(const std::vector<std::string>& notes) {
  std::string text;
  for (const std::string& note : notes) line(text, "warning: {}", note);
  return text;
}

std::string step_warnings(const model& m, const step& s, const std::vector<std::string>& notes) {
  std::string text;
  for (const std::string& note : notes) line(text, "warning: {}: *STEP: {}", place_of(m, s.file, s.line), note);
  return text;
}

std::string time_summary(const stopwatch& watch) {
  std::string text;
  double total = 0;
  for (const auto& [phase, seconds] : watch.phases()) {
    line(text, "  {:<14} {:>9.4f} s", phase, seconds);
    total += seconds;
  }
  line(text, "  {:<14} {:>9.4f} s", "total", total);
  return text;
}

std::string node_table(const model& m, const static_solution& solution, const std::vector<int>& nodes) {
  std::string text;
  line(text, "  {:>8} {:>14} {:>14} {:>14} {:>14} {:>14} {:>14}", "node", "ux", "uy", "uz", "rx", "ry", "rz");
  for (const int n : nodes) {
    const double* const u = solution.displacement.data() + freedom(n, 0);
    line(text, "  {:>8} {:>14.6e} {:>14.6e} {:>14.6e} {:>14.6e} {:>14.6e} {:>14.6e}", m.nodes[n].id, u[0], u[1], u[2],
         u[3], u[4], u[5]);
  }
  return text;
}

std::string reference_line(const static_solution& solution, int node, const reference_value& reference) {
  const double computed = solution.displacement[freedom(node, reference.direction)];
  std::string text;
  line(text, "  node {} {}: computed {:.6g}, published {:.6g}, ratio {:.5f}{}", reference.node,
       direction_short_name(reference.direction), computed, reference.value, computed / reference.value,
       reference.source.empty() ? "" : "   (" + reference.source + ")");
  return text;
}

}  // namespace solver
