// read_equations.cpp: *EQUATION and *MPC.
#include <algorithm>
#include <cmath>

#include "deck/conditions.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/transforms.h"

namespace solver::deck {

namespace {

struct equation_field {
  std::vector<int> nodes;
  int dof = 1;
  double factor = 0;
};

constexpr char TERM_FORM[] = "node or set, degree of freedom, factor";

// The terms of one equation, on as many lines as they take.
std::vector<equation_field> read_terms(build& b, const card& c, int count, const data_line*& l) {
  const data_line* const end = b.deck.end_of(c);
  const data_line& counted = *l;
  if (l + 1 == end) b.deck.fail(c, counted, "the equation has no terms: " + std::string(TERM_FORM) + ", line by line");
  data_fields row(b, c, *++l);
  while (row.count() < 3 * count && l + 1 != end) row.append(*++l);
  if (row.count() < 3 * count) {
    row.fail("the equation of line " + std::to_string(counted.line) + " has " + std::to_string(count) +
             " terms, and the lines below it " + std::to_string(row.count()) + " fields: three for each term, " +
             TERM_FORM);
  }
  if (row.count() > 3 * count) {
    row.fail("the equation of line " + std::to_string(counted.line) + " has " + std::to_string(count) +
             " terms, and the lines below it have more fields: three for each term, " + TERM_FORM);
  }
  std::vector<equation_field> terms;
  for (int i = 0; i < 3 * count; i += 3) {
    terms.push_back({nodes_of_field(b, row, i), freedom_field(row, i + 1), row.real(i + 2, "factor")});
  }
  if (terms.front().factor == 0) row.fail("the factor of the first term is 0: it says which one depends on the others");
  return terms;
}

// A set in the first term makes as many equations as it has members; other sets go along with it.
void add_equations(build& b, const card& c, const data_line& at, const std::vector<equation_field>& terms) {
  const std::size_t members = terms.front().nodes.size();
  for (const equation_field& term : terms) {
    if (term.nodes.size() != 1 && term.nodes.size() != members) {
      b.deck.fail(c, at,
                  "the equation pairs sets of " + std::to_string(members) + " and of " +
                      std::to_string(term.nodes.size()) + " nodes: they must be equally long, or one node");
    }
  }
  for (std::size_t k = 0; k < members; ++k) {
    linear_constraint condition = start_condition(source_of(c, at));
    for (const equation_field& term : terms) {
      const int node = term.nodes[term.nodes.size() == 1 ? 0 : k];
      add_turned_term(b, condition, {node, term.dof, term.factor});
    }
    add_condition(b, std::move(condition));
  }
}

}  // namespace

void read_equation(build& b, const card& c) {
  for (const data_line* l = b.deck.begin_of(c); l != b.deck.end_of(c); ++l) {
    const data_line& at = *l;
    const data_fields row(b, c, at);
    row.expect(1, 1, "number of terms of the equation, alone on its line", 1);
    const int count = row.number(0, "number of terms");
    constexpr int MOST = 1000000;  // a mean over a large mesh
    if (count > MOST) row.fail("the equation has more than " + std::to_string(MOST) + " terms");
    add_equations(b, c, at, read_terms(b, c, count, l));
  }
}

namespace {

struct unsupported_mpc {
  const char* type;
  const char* instead;
};

constexpr unsupported_mpc ELSEWHERE[] = {
    {"MEANROT", "*COUPLING with *DISTRIBUTING gives a reference node the mean rotation of a surface"},
    {"DIST", "a stiff T3D2 keeps the distance of two nodes, for small displacements"},
    {"LINK", "a stiff T3D2 keeps the distance of two nodes, for small displacements"},
    {"LINEAR", "*EQUATION writes the mean of two nodes, *TIE joins meshes that do not match"},
    {"SLIDER", "STRAIGHT keeps nodes on a line"},
};

[[noreturn]] void refuse(const data_fields& row, const std::string& type) {
  std::string hint;
  for (const unsupported_mpc& one : ELSEWHERE) {
    if (type == one.type) hint = std::string("; ") + one.instead;
  }
  row.fail("the type " + in_quotes(row.text(0)) + " is not supported; BEAM, TIE, PIN, PLANE and STRAIGHT are" + hint);
}

// BEAM: a rigid arm. TIE: all degrees of freedom are equal, PIN: the translations, wherever the nodes lie.
void join_pair(build& b, const condition_source& from, const std::string& type, int dependent, int other) {
  if (type == "BEAM") {
    join_to_body(b, from, body_of(other), dependent, turns(b, dependent));
    return;
  }
  const bool rotations = type == "TIE" && (turns(b, dependent) || turns(b, other));
  for (int dof = 1; dof <= (rotations ? 6 : 3); ++dof) {
    linear_constraint condition = start_condition(from);
    condition.terms = {{dependent, dof, 1}, {other, dof, -1}};
    add_condition(b, std::move(condition));
  }
}

void read_pairs(build& b, const data_fields& row, const condition_source& from, const std::string& type) {
  if (row.count() != 3) row.fail(type + " joins two nodes or sets: " + type + ", dependent node or set, node or set");
  const std::vector<int> dependent = nodes_of_field(b, row, 1), other = nodes_of_field(b, row, 2);
  if (other.size() != 1 && other.size() != dependent.size()) {
    row.fail(type + " pairs sets of " + std::to_string(dependent.size()) + " and of " + std::to_string(other.size()) +
             " nodes: they must be equally long, or the second one node");
  }
  for (std::size_t k = 0; k < dependent.size(); ++k) {
    const int to = other[other.size() == 1 ? 0 : k];
    if (to == dependent[k]) row.fail(type + " joins " + node_name(b, to) + " to itself");
    join_pair(b, from, type, dependent[k], to);
  }
}

// Of the nodes from `from` on, that with the largest measure.
template <class MEASURE>
std::size_t farthest(const std::vector<int>& nodes, const MEASURE& measure) {
  std::size_t best = 0;
  double largest = -1;
  constexpr double EQUAL = 1e-9;  // the first of several
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    const double value = measure(nodes[n]);
    if (!(value > largest * (1 + EQUAL))) continue;
    largest = value;
    best = n;
  }
  return best;
}

constexpr double OFF = 1e-3;  // by the size of the set: a node so far off a line or plane is not meant to lie on it

vector3 unit_vector(vector3 v) {
  const double length = length_of(v);
  for (double& part : v) part /= length;
  return v;
}

// Two directions square to a third.
std::array<vector3, 2> square_to(const vector3& axis) {
  std::size_t least = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::fabs(axis[i]) < std::fabs(axis[least])) least = i;
  }
  vector3 unit{};
  unit[least] = 1;
  const vector3 a = unit_vector(cross(axis, unit));
  return {a, cross(axis, a)};
}

void add_along(linear_constraint& condition, int node, const vector3& direction, double factor) {
  for (int i = 0; i < 3; ++i) condition.terms.push_back({node, i + 1, factor * direction[subscript(i)]});
}

// The largest part of the direction leads: the first term is the one that depends on the others.
void lead_with_largest(linear_constraint& condition) {
  std::vector<constraint_term>& terms = condition.terms;
  std::swap(terms[0], terms[largest_part({terms[0].factor, terms[1].factor, terms[2].factor})]);
}

// On a line between two of the nodes, the first and the one farthest from it: u across it is (1 - t) u0 + t u1.
void keep_straight(build& b, const data_fields& row, const condition_source& from, const std::vector<int>& nodes) {
  const auto place = [&](int n) -> const vector3& { return b.result.nodes[n].xyz; };
  const int first = nodes.front();
  const int last = nodes[farthest(nodes, [&](int n) { return length_of(difference(place(first), place(n))); })];
  const double length = length_of(difference(place(first), place(last)));
  if (!(length > 0)) row.fail("STRAIGHT: the nodes lie in one place");
  const vector3 axis = unit_vector(difference(place(first), place(last)));
  for (const int n : nodes) {
    if (n == first || n == last) continue;
    const vector3 arm = difference(place(first), place(n));
    if (length_of(cross(axis, arm)) > OFF * length) {
      row.fail("STRAIGHT: " + node_name(b, n) + " does not lie on the line of " + node_name(b, first) + " and " +
               node_name(b, last));
    }
    const double t = dot(axis, arm) / length;
    for (const vector3& across : square_to(axis)) {
      linear_constraint condition = start_condition(from);
      add_along(condition, n, across, 1);
      lead_with_largest(condition);
      add_along(condition, first, across, t - 1);
      add_along(condition, last, across, -t);
      add_condition(b, std::move(condition));
    }
  }
}

// In the plane of three of the nodes: the first, the one farthest from it, and the one farthest from their line. The
// displacement along the normal is linear in the plane.
void keep_plane(build& b, const data_fields& row, const condition_source& from, const std::vector<int>& nodes) {
  const auto place = [&](int n) -> const vector3& { return b.result.nodes[n].xyz; };
  const int p0 = nodes.front();
  const auto arm = [&](int n) { return difference(place(p0), place(n)); };
  const int p1 = nodes[farthest(nodes, [&](int n) { return length_of(arm(n)); })];
  const double size = length_of(arm(p1));
  if (!(size > 0)) row.fail("PLANE: the nodes lie in one place");
  const vector3 axis = unit_vector(arm(p1));
  const int p2 = nodes[farthest(nodes, [&](int n) { return length_of(cross(axis, arm(n))); })];
  const vector3 area = cross(arm(p1), arm(p2));
  if (!(length_of(area) > OFF * size * size)) row.fail("PLANE: the nodes lie on a line, which has no plane");
  const vector3 normal = unit_vector(area);
  for (const int n : nodes) {
    if (n == p0 || n == p1 || n == p2) continue;
    if (std::fabs(dot(normal, arm(n))) > OFF * size) {
      row.fail("PLANE: " + node_name(b, n) + " does not lie in the plane of " + node_name(b, p0) + ", " +
               node_name(b, p1) + " and " + node_name(b, p2));
    }
    const double L1 = dot(cross(arm(n), arm(p2)), normal) / length_of(area);
    const double L2 = dot(cross(arm(p1), arm(n)), normal) / length_of(area);
    linear_constraint condition = start_condition(from);
    add_along(condition, n, normal, 1);
    lead_with_largest(condition);
    add_along(condition, p0, normal, L1 + L2 - 1);
    add_along(condition, p1, normal, -L1);
    add_along(condition, p2, normal, -L2);
    add_condition(b, std::move(condition));
  }
}

// PLANE and STRAIGHT: nodes and sets, as many as there are.
void read_shape(build& b, const data_fields& row, const condition_source& from, const std::string& type) {
  std::vector<int> nodes;
  for (int i = 1; i < row.count(); ++i) {
    if (row.text(i).empty() || row.text(i) == "0") continue;
    for (const int n : nodes_of_field(b, row, i)) {
      if (std::find(nodes.begin(), nodes.end(), n) == nodes.end()) nodes.push_back(n);
    }
  }
  const std::size_t least = type == "PLANE" ? 4 : 3;
  if (nodes.size() < least) {
    row.fail(type + " needs " + std::to_string(least) + " nodes or more: " + std::to_string(nodes.size()) +
             " are always so");
  }
  type == "PLANE" ? keep_plane(b, row, from, nodes) : keep_straight(b, row, from, nodes);
}

void read_mpc_line(build& b, const card& c, const data_line& at, const data_fields& row) {
  const std::string type = squeezed(row.text(0));
  const condition_source from = source_of(c, at);
  if (type == "BEAM" || type == "TIE" || type == "PIN") return read_pairs(b, row, from, type);
  if (type == "PLANE" || type == "STRAIGHT") return read_shape(b, row, from, type);
  refuse(row, type);
}

// A line that begins with an empty field or 0 goes on with the nodes of the line before.
bool continues(const data_line& l) {
  const std::string_view first = trimmed(l.text.substr(0, l.text.find(',')));
  return first.empty() || first == "0";
}

}  // namespace

void read_mpc(build& b, const card& c) {
  const data_line* const end = b.deck.end_of(c);
  for (const data_line* l = b.deck.begin_of(c); l != end; ++l) {
    const data_line& at = *l;
    b.errors.attempt([&] {
      data_fields row(b, c, at);
      while (l + 1 != end && continues(l[1])) row.append(*++l);
      read_mpc_line(b, c, at, row);
    });
  }
}

}  // namespace solver::deck
