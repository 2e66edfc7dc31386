// print_tables.cpp: headings and columns as CalculiX writes them; what it does not know has headings of the same form.
#include "output/print_tables.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <string>

#include "elements/material_axes.h"
#include "model/base_step.h"
#include "model/temperatures.h"
#include "output/text.h"
#include "tarnix.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

constexpr std::array<const char*, SURFACES> SURFACE_WORDS = {"top", "mid", "bot"};

// "  0.1000000E+01", as Fortran's e14.7 writes it.
std::string time_text(std::size_t time) {
  double mantissa = static_cast<double>(time);
  int exponent = 0;
  for (; mantissa >= 1; ++exponent) mantissa /= 10;
  return fmt::format(" {:.7f}E+{:02d}", mantissa, exponent);
}

// What the headings of one request have in common.
struct request_context {
  const model& m;
  const step& s;
  const print_request& request;

  std::string heading(const std::string& what) const {
    const std::string set = request.set.empty() ? "all" : "set " + request.set;
    return fmt::format("\n {} for {} and time {}\n\n", what, set, printed_time(m, s));
  }

  // The indices of the set, ascending.
  std::vector<int> members() const {
    if (!request.set.empty()) return request.members;
    const bool nodes = request.kind == print_kind::NODES;
    std::vector<int> all(nodes ? m.nodes.size() : m.elements.size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = number_of(i);
    const auto made = [&](int n) { return nodes && is_made(m.nodes[n]); };  // they have no number
    all.erase(std::remove_if(all.begin(), all.end(), made), all.end());
    return all;
  }

  // The nodes that a sum over the set is to count: also those made in quadratic elements all of whose nodes round them
  // belong to it. They have no number and no row, but supports hold them as they hold the others.
  std::vector<int> summed_nodes() const {
    std::vector<int> all = members();
    const std::vector<int> own = all;
    const auto inside = [&](int n) { return std::binary_search(own.begin(), own.end(), n); };
    for (const made_node& made : m.made_nodes) {
      if (std::all_of(made.from.begin(), made.from.end(), inside) && !inside(made.node)) all.push_back(made.node);
    }
    return all;
  }
};

// A zero has no sign.
void append_numbers(buffer& out, const double* first, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) append(out, " {:13.6E}", first[i] + 0.0);
  out.push_back('\n');
}

template <class ARRAY>
void append_numbers(buffer& out, const ARRAY& numbers) {
  append_numbers(out, numbers.data(), numbers.size());
}

// ---- nodes

// `count` directions from `first` on, of a quantity that has six by node.
struct directions {
  std::string heading;  // "displacements (vx,vy,vz)"
  int first = 0;
  std::size_t count = 3;
};

// U1 to UR3, RF1 to RM3: one column.
std::vector<directions> single_direction(const std::string& quantity) {
  const bool rotational = quantity[1] == 'R' || quantity[1] == 'M';
  const int direction = quantity.back() - '1';
  const char* const what =
      quantity[0] == 'U' ? (rotational ? "rotations" : "displacements") : (rotational ? "moments" : "forces");
  const char* const letter = quantity[0] == 'U' ? (rotational ? "r" : "v") : (rotational ? "m" : "f");
  return {{fmt::format("{} ({}{})", what, letter, "xyz"[direction]), direction + (rotational ? 3 : 0), 1}};
}

bool anything_turns(const model& m) {
  return std::any_of(m.elements.begin(), m.elements.end(), [](const element& e) {
    return is_shell(e.type) || is_beam(e.type) || e.type == element_type::CONN3D2 || e.type == element_type::SPRING1 ||
           e.type == element_type::SPRING2;
  });
}

// The tables of a quantity: U has the rotations too where anything of the model turns.
std::vector<directions> tables_of(const model& m, const std::string& quantity) {
  if (quantity.find_first_of("123") != std::string::npos) return single_direction(quantity);
  std::vector<directions> tables;
  if (quantity == "U" || quantity == "UT") tables.push_back({"displacements (vx,vy,vz)", 0, 3});
  if (quantity == "UR" || (quantity == "U" && anything_turns(m))) tables.push_back({"rotations (rx,ry,rz)", 3, 3});
  if (quantity == "RF") tables.push_back({"forces (fx,fy,fz)", 0, 3});
  if (quantity == "RM" || (quantity == "RF" && anything_turns(m))) tables.push_back({"moments (mx,my,mz)", 3, 3});
  return tables;
}

void append_node_rows(buffer& out, const request_context& c, const std::vector<double>& by_freedom,
                      const directions& table) {
  for (const int n : c.members()) {
    append(out, "{:10d}", c.m.nodes[n].id);
    append_numbers(out, by_freedom.data() + freedom(n, table.first), table.count);
  }
}

void append_total(buffer& out, const request_context& c, const std::vector<double>& by_freedom,
                  const directions& table) {
  std::vector<double> sum(table.count, 0.0);
  for (const int n : c.summed_nodes()) {
    for (std::size_t i = 0; i < table.count; ++i) sum[i] += by_freedom[freedom(n, table.first + number_of(i))];
  }
  out.append(c.heading("total " + std::string(table.first < 3 ? "force" : "moment") +
                       table.heading.substr(table.heading.find(' '))));
  out.append(std::string(10, ' '));
  append_numbers(out, sum);
}

void append_freedoms(buffer& out, const request_context& c, const std::string& quantity,
                     const std::vector<double>& by_freedom) {
  const bool adds_up = quantity[0] == 'R' && c.request.totals != print_totals::NO;
  for (const directions& table : tables_of(c.m, quantity)) {
    if (!adds_up || c.request.totals == print_totals::YES) {
      out.append(c.heading(table.heading));
      append_node_rows(out, c, by_freedom, table);
    }
    if (adds_up) append_total(out, c, by_freedom, table);
  }
}

void append_places(buffer& out, const request_context& c) {
  out.append(c.heading("coordinates (x,y,z)"));
  for (const int n : c.members()) {
    append(out, "{:10d}", c.m.nodes[n].id);
    append_numbers(out, c.m.nodes[n].xyz);
  }
}

// The temperatures themselves where the deck says from which ones changes count. What a step gives on a loaded state is
// added to the temperatures of that state.
void append_temperatures(buffer& out, const request_context& c) {
  const bool absolute = !c.m.initial_temperature.empty();
  numbered<double> value = node_temperatures(c.m, &c.s);
  const step* const base = absolute ? base_step(c.m, c.s) : nullptr;
  if (base != nullptr) {
    for (const nodal_temperature& t : base->temperatures) value[t.node] += t.change;
  }
  out.append(c.heading(absolute ? "temperatures" : "changes of temperature"));
  for (const int n : c.members()) {
    append(out, "{:10d}", c.m.nodes[n].id);
    append_numbers(out, &value[n], 1);
  }
}

void append_nodes(buffer& out, const request_context& c, const static_solution& solution) {
  for (const std::string& quantity : c.request.quantities) {
    if (quantity == "COORD") {
      append_places(out, c);
    } else if (quantity == "NT") {
      append_temperatures(out, c);
    } else {
      append_freedoms(out, c, quantity, quantity[0] == 'U' ? solution.displacement : solution.reaction);
    }
  }
}

// ---- elements

using tensor6 = std::array<double, 6>;

// CalculiX names xz before yz.
tensor6 in_order(const tensor6& t) { return {t[0], t[1], t[2], t[3], t[5], t[4]}; }

// Hooke's law for an isotropic material; the shears are components of the tensor, half the engineering strains.
tensor6 strains_of(const material& x, const tensor6& s) {
  const double volume = x.NU12 * (s[0] + s[1] + s[2]) / x.E1;
  tensor6 e{};
  for (std::size_t i = 0; i < 6; ++i) e[i] = s[i] * (1 + x.NU12) / x.E1 - (i < 3 ? volume : 0);
  return e;
}

tensor6 global_stress(const MATRIX<3, 3>& axes, const std::array<double, 3>& plane,
                      const std::array<double, 2>& shear) {
  MATRIX<3, 3> local{}, global;
  local(1, 1) = plane[0];
  local(2, 2) = plane[1];
  local(1, 2) = local(2, 1) = plane[2];
  local(1, 3) = local(3, 1) = shear[0];
  local(2, 3) = local(3, 2) = shear[1];
  TENSEUR_L2G_DBL(local.V, axes.V, global.V);
  return {global(1, 1), global(2, 2), global(3, 3), global(1, 2), global(2, 3), global(1, 3)};
}

double plane_equivalent(const std::array<double, 3>& s, const std::array<double, 2>& shear) {
  return std::sqrt(s[0] * s[0] - s[0] * s[1] + s[1] * s[1] +
                   3 * (s[2] * s[2] + shear[0] * shear[0] + shear[1] * shear[1]));
}

// A table of rows, left out where none is to be shown.
void append_table(buffer& out, const request_context& c, const std::string& heading, const buffer& rows) {
  if (rows.size() == 0) return;
  out.append(c.heading(heading));
  out.append(rows);
}

using point_action = std::function<void(buffer&, const element&, const printed_values&)>;

// A row for each point of the elements that `fits` chooses: element, point, and what `row` appends.
buffer rows_of_points(const request_context& c, const step_results& results, bool (*fits)(element_type),
                      const point_action& row) {
  buffer rows;
  const std::vector<int> members = c.members();
  for (const point_results& all : results.points) {
    const element& e = c.m.elements[all.element];
    if (!fits(e.type) || !std::binary_search(members.begin(), members.end(), number_of(all.element))) continue;
    const std::size_t count = c.request.centroids ? 1 : all.points.size();
    const std::size_t before = count * subscript(e.part);  // points of an element in several parts count on
    for (std::size_t p = 0; p < count; ++p) {
      append(rows, "{:10d}{:4d}", e.id, before + p + 1);
      row(rows, e, c.request.centroids ? mean_of(all) : all.points[p]);
    }
  }
  return rows;
}

// Top, middle and bottom of a shell, the middle of a membrane, each in a row of its own.
using surface_action = std::function<void(buffer&, const element&, const printed_values&, std::size_t)>;
buffer rows_of_surfaces(const request_context& c, const step_results& results, const surface_action& row) {
  return rows_of_points(c, results, is_plate, [&](buffer& rows, const element& e, const printed_values& v) {
    const std::string head(rows.end() - 14, rows.end());
    rows.resize(rows.size() - 14);
    for (std::size_t s = 0; s < SURFACES; ++s) {
      if (is_membrane(e.type) && s != MIDDLE) continue;
      append(rows, "{} {}", head, SURFACE_WORDS[s]);
      row(rows, e, v, s);
    }
  });
}

constexpr std::array<double, 2> NO_SHEAR{};
const std::array<double, 2>& shear_at(const printed_values& v, std::size_t surface) {
  return surface == MIDDLE ? v.shear_stress : NO_SHEAR;
}

std::string point_word(const request_context& c) { return c.request.centroids ? "mean" : "integ.pnt."; }

void append_truss_stresses(buffer& out, const request_context& c, const step_results& results) {
  buffer rows;
  const std::vector<int> members = c.members();
  for (const member_field& f : results.fields) {
    const element& e = c.m.elements[f.element];
    if (e.type != element_type::T3D2) continue;
    if (!std::binary_search(members.begin(), members.end(), number_of(f.element))) continue;
    append(rows, "{:10d}{:4d}", e.id, 1);
    const double stress = station_at(f, 0.5).force[0] / frame_section_of(c.m, e).area;
    append_numbers(rows, &stress, 1);
  }
  append_table(out, c, "stresses along bars, in the middle (elem, integ.pnt.,s11)", rows);
}

void append_stresses(buffer& out, const request_context& c, const step_results& results) {
  append_table(out, c, fmt::format("stresses (elem, {},sxx,syy,szz,sxy,sxz,syz)", point_word(c)),
               rows_of_points(c, results, is_solid, [](buffer& rows, const element&, const printed_values& v) {
                 append_numbers(rows, in_order(v.stress));
               }));
  const bool global = c.request.global_axes;
  append_table(
      out, c,
      fmt::format("stresses of shells{} (elem, {},surface,{})", global ? "" : " in axes 1, 2", point_word(c),
                  global ? "sxx,syy,szz,sxy,sxz,syz" : "s11,s22,s12"),
      rows_of_surfaces(c, results, [&](buffer& rows, const element& e, const printed_values& v, std::size_t s) {
        if (!global) return append_numbers(rows, v.surface_stress[s]);
        append_numbers(rows, in_order(global_stress(material_axes(c.m, e), v.surface_stress[s], shear_at(v, s))));
      }));
  append_truss_stresses(out, c, results);
}

void append_equivalents(buffer& out, const request_context& c, const step_results& results) {
  const auto number = [](buffer& rows, double value) { append_numbers(rows, &value, 1); };
  append_table(out, c, fmt::format("von Mises stresses (elem, {},mises)", point_word(c)),
               rows_of_points(c, results, is_solid, [&](buffer& rows, const element&, const printed_values& v) {
                 number(rows, von_mises(v.stress));
               }));
  append_table(out, c, fmt::format("von Mises stresses of shells (elem, {},surface,mises)", point_word(c)),
               rows_of_surfaces(c, results, [&](buffer& rows, const element&, const printed_values& v, std::size_t s) {
                 number(rows, plane_equivalent(v.surface_stress[s], shear_at(v, s)));
               }));
}

void append_strains(buffer& out, const request_context& c, const step_results& results, const char* what) {
  append_table(out, c, fmt::format("{} (elem, {},exx,eyy,ezz,exy,exz,eyz)", what, point_word(c)),
               rows_of_points(c, results, is_solid, [&](buffer& rows, const element& e, const printed_values& v) {
                 append_numbers(rows, in_order(strains_of(c.m.materials[material_of(c.m, e)], v.stress)));
               }));
  append_table(out, c, fmt::format("{} of shells in axes 1, 2 (elem, {},surface,e11,e22,e12)", what, point_word(c)),
               rows_of_surfaces(c, results, [](buffer& rows, const element&, const printed_values& v, std::size_t s) {
                 const std::array<double, 3>& e = v.surface_strain[s];
                 append_numbers(rows, std::array<double, 3>{e[0], e[1], e[2] / 2});
               }));
}

// The ends and the middle of a member.
void append_section_forces(buffer& out, const request_context& c, const step_results& results) {
  append_table(
      out, c,
      fmt::format("section forces of shells in axes 1, 2 (elem, {},n11,n22,n12,m11,m22,m12,q13,q23)", point_word(c)),
      rows_of_points(c, results, is_plate, [](buffer& rows, const element&, const printed_values& v) {
        append_numbers(rows, v.resultants);
      }));
  buffer rows;
  const std::vector<int> members = c.members();
  for (const member_field& f : results.fields) {
    if (!std::binary_search(members.begin(), members.end(), number_of(f.element))) continue;
    for (const double xi : {0.0, 0.5, 1.0}) {
      const station here = station_at(f, xi);
      append(rows, "{:10d} {:13.6E}", c.m.elements[f.element].id, here.distance);
      append_numbers(rows, here.force);
    }
  }
  append_table(out, c, "section forces of members in local axes (elem, distance,n,vy,vz,t,my,mz)", rows);
}

void append_plastic_strains(buffer& out, const request_context& c, const step_results& results) {
  buffer rows;
  for (const int e : c.members()) {
    if (!is_plate(c.m.elements[e].type)) continue;
    append(rows, "{:10d}", c.m.elements[e].id);
    append_numbers(rows, &results.elements[subscript(e)].equivalent_plastic, 1);
  }
  append_table(out, c, "equivalent plastic strain, the largest of the points (elem,pe)", rows);
}

void append_elements(buffer& out, const request_context& c, const step_results& results) {
  for (const std::string& quantity : c.request.quantities) {
    if (quantity == "S") append_stresses(out, c, results);
    if (quantity == "MISES") append_equivalents(out, c, results);
    if (quantity == "E") append_strains(out, c, results, "strains");
    if (quantity == "ME") append_strains(out, c, results, "mechanical strains");
    if (quantity == "SF") append_section_forces(out, c, results);
    if (quantity == "PEEQ") append_plastic_strains(out, c, results);
  }
}

// ---- steps

void append_heading_of_step(buffer& out, const model& m, const step& s) {
  append(out, "\n                        S T E P {:7d}\n\n", &s - m.steps.data() + 1);
}

void append_modes(buffer& out, const step& s, const modal_solution& solution) {
  const bool frequencies = s.kind == step_kind::FREQUENCY;
  constexpr double TWO_PI = 6.283185307179586;
  out.append(std::string_view(frequencies
                                  ? "\n     E I G E N V A L U E   O U T P U T\n\n MODE NO    EIGENVALUE    "
                                    "      FREQUENCY\n                      (RAD/TIME)   (CYCLES/TIME)\n\n"
                                  : "\n     B U C K L I N G   F A C T O R   O U T P U T\n\n MODE NO       BUCKLING\n"
                                    "                FACTOR\n\n"));
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    const double value = solution.modes[k].value, turns = TWO_PI * value;
    append(out, "{:7d}", k + 1);
    if (frequencies) {
      append_numbers(out, std::array<double, 3>{turns * std::fabs(turns), turns, value});
    } else {
      append_numbers(out, &value, 1);
    }
  }
}

void put(std::ostream& out, const buffer& all) { out.write(all.data(), signed_index(all.size())); }

}  // namespace

std::string printed_time(const model& m, const step& s) {
  return time_text(static_cast<std::size_t>(&s - m.steps.data()) + 1);
}

bool has_prints(const step& s) {
  return std::any_of(s.prints.begin(), s.prints.end(), [](const print_request& p) { return !p.quantities.empty(); });
}

bool has_prints(const model& m) {
  return std::any_of(m.steps.begin(), m.steps.end(), [](const step& s) { return has_prints(s); });
}

void write_prints(std::ostream& out, const model& m, const step& s, const static_solution& solution,
                  const step_results& results) {
  if (!has_prints(s)) return;
  buffer all;
  append_heading_of_step(all, m, s);
  for (const print_request& request : s.prints) {
    const request_context c{m, s, request};
    if (request.kind == print_kind::NODES) {
      append_nodes(all, c, solution);
    } else if (request.kind == print_kind::ELEMENTS) {
      append_elements(all, c, results);
    }
  }
  put(out, all);
}

void write_prints(std::ostream& out, const model& m, const step& s, const modal_solution& solution) {
  if (!has_prints(s)) return;
  buffer all;
  append_heading_of_step(all, m, s);
  append_modes(all, s, solution);
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    buffer tables;
    for (const print_request& request : s.prints) {
      if (request.kind != print_kind::NODES) continue;
      const request_context c{m, s, request};
      for (const std::string& quantity : request.quantities) {
        if (quantity == "COORD" && k == 0) append_places(tables, c);
        if (quantity[0] == 'U') append_freedoms(tables, c, quantity, solution.modes[k].displacement);
      }
    }
    if (tables.size() == 0) continue;
    append(all, "\n                        M O D E {:7d}\n", k + 1);
    all.append(tables);
  }
  put(out, all);
}

}  // namespace solver
