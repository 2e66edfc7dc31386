// checks.cpp: what can be said about a deck only when a stage of its reading is complete.
#include <algorithm>
#include <cmath>

#include "deck/keywords.h"
#include "model/base_step.h"
#include "model/driven.h"
#include "model/vectors.h"

namespace solver::deck {

// Twice the area against the longest side squared: below this share the corners lie on a line, rounding apart.
constexpr double SLIMMEST = 1e-12;

static bool has_area(const model& m, const element& e) {
  const vector3& p = m.nodes[e.nodes[0]].xyz;
  vector3 a = difference(p, m.nodes[e.nodes[1]].xyz), b = difference(p, m.nodes[e.nodes[2]].xyz);
  double largest = 0;
  for (std::size_t i = 0; i < 3; ++i) largest = std::max({largest, std::abs(a[i]), std::abs(b[i])});
  if (!(largest > 0) || !std::isfinite(largest)) return false;
  for (double& part : a) part /= largest;
  for (double& part : b) part /= largest;
  return norm(cross(a, b)) > SLIMMEST;
}

// Every corner of a quadrilateral must turn to the side of the normal: at a corner of 180 degrees or more the map from
// a square to the element folds over.
static bool is_convex(const model& m, const element& e) {
  std::array<vector3, 4> side{};
  double longest = 0;
  for (std::size_t n = 0; n < 4; ++n) {
    side[n] = difference(m.nodes[e.nodes[n]].xyz, m.nodes[e.nodes[(n + 1) % 4]].xyz);
    for (const double part : side[n]) longest = std::max(longest, std::abs(part));
  }
  if (!(longest > 0) || !std::isfinite(longest)) return false;
  for (auto& s : side) {
    for (double& part : s) part /= longest;
  }
  const vector3 normal = cross(side[3], side[0]);
  const double length = length_of(normal);
  for (std::size_t n = 0; n < 4; ++n) {
    const double along = dot(cross(side[(n + 3) % 4], side[n]), normal);
    if (!(along > SLIMMEST * length)) return false;
  }
  return true;
}

static void check_plate(const build& b, const element& e) {
  const std::string name = element_name(e);
  if (!has_area(b.result, e)) {
    b.deck.fail(e.file, e.line, "*ELEMENT", name + " has no area: its nodes coincide or lie on one line");
  }
  if (e.nodes.size() == 4 && !is_convex(b.result, e)) {
    b.deck.fail(e.file, e.line, "*ELEMENT", name + ": its nodes do not go round a convex quadrilateral");
  }
}

// A link and a spring of a direction may stand between two nodes in one place.
static void check_ends(const build& b, const element& e) {
  if (e.nodes.size() != 2 || e.type == element_type::SPRING2 || e.type == element_type::CONN3D2) return;
  const double length = length_of(difference(b.result.nodes[e.nodes[0]].xyz, b.result.nodes[e.nodes[1]].xyz));
  if (length > 0 && std::isfinite(length)) return;
  b.deck.fail(e.file, e.line, "*ELEMENT", element_name(e) + " has no length: its nodes coincide");
}

void check_mesh(build& b) {
  const model& m = b.result;
  if (m.elements.empty() && b.errors.empty()) {
    b.errors.attempt([&] { b.deck.fail(0, b.deck.last_line, "*ELEMENT", "the deck has no elements"); });
    b.elements.lose(ANY_NUMBER);
    b.elements.lose_set(ANY_NAME);
  }
  b.node_in_use.assign(m.nodes.size(), 0);
  bool sound = true;
  for (const element& e : m.elements) {
    for (const int index : e.nodes) b.node_in_use[index] = 1;
    if (e.part > 0 && !sound) continue;  // one error for an element of the deck
    sound = b.errors.attempt([&] {
      if (!is_plate(e.type)) check_ends(b, e);
      if (is_plate(e.type)) check_plate(b, e);
      if (is_solid(e.type)) check_solid(b, e);
    });
  }
  note_quadratic(b);
}

static void check_complete_sections(const build& b) {
  const model& m = b.result;
  for (const material& each : m.materials) {
    b.errors.attempt([&] {
      if (!each.elastic) b.deck.fail(each.file, each.line, "*MATERIAL", "the material has no *ELASTIC");
    });
  }
  b.errors.attempt([&] { check_plastic_materials(b); });
  const auto bare = std::find_if(m.elements.begin(), m.elements.end(), [](const element& e) { return e.section < 0; });
  if (bare == m.elements.end()) return;
  const std::string missing = is_plate(bare->type)
                                  ? "has no section: no *SHELL SECTION or *MEMBRANE SECTION names it"
                                  : std::string("has no section: it is ") + sections_that_fit(bare->type);
  b.errors.attempt(
      [&] { b.deck.fail(bare->file, bare->line, "*ELEMENT", "element " + std::to_string(bare->id) + " " + missing); });
}

// What is missing is reported only for a deck without errors: a card in error may have defined it.
void check_sections(build& b) {
  if (!b.errors.empty()) return;
  check_complete_sections(b);
  if (!b.errors.empty()) return;
  settle_beams(b);
  note_placed_beams(b);
  b.errors.attempt([&] { check_orientations(b); });
  note_shells(b);
  note_solids(b);
}

namespace {

// One value that the deck prescribes: a displacement or a temperature.
struct prescribed {
  int node, part;  // part: the degree of freedom, or 1 and 2 for change and gradient of a temperature
  double value;
  int line, file;
};

}  // namespace

// The same thing may be said twice, but not with two values. The list is in the order of the deck.
static void check_contradictions(const build& b, std::vector<prescribed>& list, const char* keyword, const char* noun) {
  std::stable_sort(list.begin(), list.end(), [](const prescribed& x, const prescribed& y) {
    return x.node != y.node ? x.node < y.node : x.part < y.part;
  });
  for (std::size_t i = 1; i < list.size(); ++i) {
    const prescribed &first = list[i - 1], &second = list[i];
    if (first.node != second.node || first.part != second.part || first.value == second.value) continue;
    const std::string id = std::to_string(b.result.nodes[second.node].id);
    b.deck.fail(
        second.file, second.line, keyword,
        std::string(noun) + " of node " + id + " has another value in " + place_of(b.result, first.file, first.line));
  }
}

static void check_boundaries(const build& b, const std::vector<boundary_condition>& conditions) {
  std::vector<prescribed> list;
  for (const boundary_condition& c : conditions) {
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) list.push_back({c.node, dof, c.value, c.line, c.file});
  }
  check_contradictions(b, list, "*BOUNDARY", "a degree of freedom");
}

// Frequencies are those of the structure without loads; cables have a stiffness only under theirs.
static void check_modes(const build& b, const step& s) {
  if (s.kind != step_kind::FREQUENCY) return;
  const auto refuse = [&](const auto& cards, const char* keyword) {
    if (!cards.empty()) {
      b.deck.fail(cards.front().file, cards.front().line, keyword, "a load has no effect in a step with *FREQUENCY");
    }
  };
  refuse(s.nodal_loads, "*CLOAD");
  refuse(s.element_loads, s.element_loads.empty() ? "*DLOAD" : s.element_loads.front().keyword);
  refuse(s.temperatures, "*TEMPERATURE");
}

static void check_cables(const build& b, const step& s) {
  const std::vector<frame_section>& sections = b.result.frame_sections;
  const bool cables = std::any_of(sections.begin(), sections.end(), [](const frame_section& section) {
    return section.kind == frame_section_kind::CABLE;
  });
  if (cables && !solves_nothing(s) && (s.kind != step_kind::STATIC || s.p_delta)) {
    b.deck.fail(s.file, s.line, "*STEP", "cables are supported in steps with *STATIC and without PDELTA");
  }
}

// A step of the other procedures without a load is refused by their own checks.
static void check_loads(build& b, const step& s) {
  if (is_driven(b.result, s)) return;
  if (s.kind == step_kind::BUCKLE) {
    b.deck.fail(s.file, s.line, "*STEP", "the step with *BUCKLE has no load other than 0: no buckling factor exists");
  }
  if (s.kind == step_kind::STATIC) {
    b.result.notes.push_back(
        place_of(b.result, s.file, s.line) +
        ": *STEP: the step has no load and no prescribed displacement other than 0: nothing moves");
  }
}

// Cards that contradict one another do so whatever else is wrong.
static void check_all_contradictions(const build& b) {
  b.errors.attempt([&] { check_boundaries(b, b.result.boundaries); });
  for (const step& s : b.result.steps) {
    b.errors.attempt([&] { check_boundaries(b, s.boundaries); });
    std::vector<prescribed> list;
    for (const nodal_temperature& t : s.temperatures) {
      list.push_back({t.node, 1, t.change, t.line, t.file});
      list.push_back({t.node, 2, t.gradient, t.line, t.file});
    }
    b.errors.attempt([&] { check_contradictions(b, list, "*TEMPERATURE", "the temperature"); });
  }
}

// The other checks ask for sections and loads, which are complete in a deck without errors.
void check_steps(build& b) {
  const bool complete = b.errors.empty();
  check_all_contradictions(b);
  if (!complete) return;
  b.errors.attempt([&] { settle_own_conditions(b); });
  b.errors.attempt([&] { hold_plane_nodes(b); });
  b.errors.attempt([&] { append_combinations(b); });
  carry_prints(b);
  b.errors.attempt([&] { check_states(b); });
  b.errors.attempt([&] { check_yielding_statics(b); });
  complete_made_nodes(b);
  for (const step& s : b.result.steps) {
    b.errors.attempt([&] {
      check_modes(b, s);
      check_cables(b, s);
      check_solids(b, s);
      check_loads(b, s);
      note_lost_effects(b, s);
    });
  }
  if (b.errors.empty()) note_pressed_sides(b);
  if (b.errors.empty()) note_pressed_rims(b);
  b.errors.attempt([&] { check_placed_beams(b); });
  if (b.errors.empty()) b.errors.attempt([&] { check_pushovers(b); });
  if (b.errors.empty()) b.errors.attempt([&] { check_elastoplastics(b); });
  if (b.errors.empty()) b.errors.attempt([&] { check_constraints(b); });
  if (b.errors.empty()) note_second_order(b);
  if (b.errors.empty()) check_combinations(b);
}

}  // namespace solver::deck
