// flat_check.cpp: products of element matrices with one irregular vector, which no two different matrices share.
#include "output/flat_check.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "elements/library_model.h"
#include "elements/load_case.h"
#include "system/assembly.h"

namespace solver {

namespace {

using numbers = std::vector<double>;

// What a model answers: a row of numbers for each thing, and its name.
struct answers {
  std::vector<std::string> name;
  std::vector<numbers> value;
  void add(std::string what, numbers row) {
    name.push_back(std::move(what));
    value.push_back(std::move(row));
  }
};

// Fractions of multiples of the golden section: as irregular as can be.
double irregular(int i) { return std::fmod(0.6180339887498949 * (i + 1), 1.0) - 0.45; }

numbers product(const element_matrix& A) {
  numbers result(24, 0.0);
  for (int i = 1; i <= 24; ++i) {
    for (int j = 1; j <= 24; ++j) result[subscript(i - 1)] += A(i, j) * irregular(j);
  }
  return result;
}

// A slack cable has no stiffness at its place in the deck.
numbers of_cable(const model& m, const element& e) {
  const frame_section& s = frame_section_of(m, e);
  const material& x = m.materials[s.material];
  return {s.area, s.unstressed_length, s.length_ratio, x.E1, x.alpha1, x.density};
}

void ask_elements(const model& m, library_model& library, bool masses, answers& all) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const element& each = m.elements[e];
    const std::string name = "element " + std::to_string(each.id);
    numbers nodes;
    for (const int n : each.nodes) nodes.push_back(n);
    all.add("the nodes of " + name, nodes);
    if (is_cable(m, each)) {
      all.add("the section of " + name, of_cable(m, each));
      continue;
    }
    element_matrix matrix{};
    library.stiffness(e, matrix);
    all.add("the stiffness of " + name, product(matrix));
    if (!masses) continue;
    matrix = {};
    library.mass(e, matrix);
    all.add("the mass of " + name, product(matrix));
  }
}

void ask_conditions(const std::vector<linear_constraint>& list, const std::string& where, answers& all) {
  numbers row;
  for (const linear_constraint& c : list) {
    for (const constraint_term& t : c.terms) row.insert(row.end(), {double(t.node), double(t.dof), t.factor});
    row.push_back(c.value);
  }
  all.add("the linear conditions " + where, row);
}

void ask_step(const model& m, const step& s, library_model& library, answers& all) {
  const std::string where = "of step " + std::to_string(&s - m.steps.data() + 1);
  all.add("the kind " + where, {double(static_cast<int>(s.kind)), double(s.modes), double(s.perturbation),
                                double(s.elastic), double(s.p_delta)});
  numbers combined;
  for (const combined_step& term : s.combined) combined.insert(combined.end(), {double(term.step), term.factor});
  all.add("what is combined in step " + std::to_string(&s - m.steps.data() + 1), combined);
  const load_case loads = gather_load_case(m, s);
  library.plates().choose_ties(loads);
  all.add("the loads " + where, assemble_loads(m, s, library, loads));
  all.add("the prescribed values " + where, loads.prescribed_value);
  all.add("the prescribed freedoms " + where, numbers(loads.prescribed.begin(), loads.prescribed.end()));
  ask_conditions(s.constraints, where, all);
}

// The elements are asked in the unloaded state: what temperatures make of their constants stands in the tables.
void ask_tables(const model& m, answers& all) {
  for (int i = 0; i < count_of(m.materials); ++i) {
    if (is_of_layers(m, i)) continue;  // made where the section stands, among or behind those of the deck
    const material& x = m.materials[i];
    numbers row = {x.expansion_zero};
    for (const temperature_table* table : {&x.elastic_table, &x.density_table, &x.expansion_table}) {
      for (const temperature_line& l : *table) row.insert(row.end(), {l.temperature, l.value[0], l.value[1]});
    }
    all.add("the constants by temperature of the material " + x.name, row);
  }
  all.add("the initial temperatures", numbers(m.initial_temperature.begin(), m.initial_temperature.end()));
}

answers ask(const model& m) {
  answers all;
  const bool masses =
      std::any_of(m.steps.begin(), m.steps.end(), [](const step& s) { return s.kind == step_kind::FREQUENCY; });
  library_model library(m);
  numbers places;
  for (const node& n : m.nodes) places.insert(places.end(), n.xyz.begin(), n.xyz.end());
  all.add("the nodes", places);
  ask_tables(m, all);
  ask_elements(m, library, masses, all);
  ask_conditions(m.constraints, "before the first step", all);
  for (const step& s : m.steps) ask_step(m, s, library, all);
  return all;
}

bool agree(const numbers& a, const numbers& b) {
  constexpr double ROUNDING = 1e-10;
  if (a.size() != b.size()) return false;
  double largest = 0, apart = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    largest = std::fmax(largest, std::fabs(a[i]));
    apart = std::fmax(apart, std::fabs(a[i] - b[i]));
  }
  return apart <= ROUNDING * largest;
}

}  // namespace

std::string difference_between(const model& a, const model& b) {
  constexpr char COUNTS[] = "the number or the names of nodes, elements and steps";
  if (a.nodes.size() != b.nodes.size() || a.elements.size() != b.elements.size()) return COUNTS;
  const answers one = ask(a), other = ask(b);
  if (one.name != other.name) return COUNTS;
  for (std::size_t i = 0; i < one.name.size(); ++i) {
    if (!agree(one.value[i], other.value[i])) return one.name[i];
  }
  return "";
}

}  // namespace solver
