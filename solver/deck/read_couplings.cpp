// read_couplings.cpp: *COUPLING with *KINEMATIC or *DISTRIBUTING, and the older *KINEMATIC COUPLING and *DISTRIBUTING
// COUPLING.
//
// Kinematic: the nodes follow the reference node as parts of a rigid body. Distributing: the reference node follows the
// mean motion of the nodes; a force and a moment at it become forces on the nodes, F_i = w_i (F + (T^-1 M) cross r_i),
// and no node is held to another.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "deck/conditions.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surfaces.h"

namespace solver::deck {

namespace {

using freedoms = std::array<bool, 6>;

// Lines of "first, last degree of freedom"; all six without a line.
freedoms read_ranges(build& b, const card& c) {
  freedoms wanted{};
  if (c.count == 0) wanted.fill(true);
  b.each_line(c, [&](data_fields& row) {
    row.expect(1, 2, "first and last degree of freedom", 2);
    const int first = freedom_field(row, 0), last = row.has(1) ? freedom_field(row, 1) : first;
    if (last < first) row.fail("the last degree of freedom is smaller than the first");
    for (int dof = first; dof <= last; ++dof) wanted[subscript(dof - 1)] = true;
  });
  return wanted;
}

void follow_kinematically(build& b, const condition_source& from, int reference, int node, const freedoms& wanted) {
  if (node == reference) return;
  for (int dof = 1; dof <= 6; ++dof) {
    if (!wanted[subscript(dof - 1)] || (dof > 3 && !turns(b, node))) continue;
    follow_body(b, from, body_of(reference), node, dof);
  }
}

std::string coupling_name(const card& c) {
  return c.find("CONSTRAINTNAME") == nullptr ? "the coupling" : "the coupling " + in_quotes(c.value("CONSTRAINTNAME"));
}

// A direction as its user may have written it, the first part that is not 0 positive.
std::string line_text(vector3 along) {
  constexpr double ROUNDING = 1e-9;
  const auto* const first = std::find_if(along.begin(), along.end(), [](double x) { return std::fabs(x) > ROUNDING; });
  const double sign = first != along.end() && *first < 0 ? -1 : 1;
  for (double& part : along) part = std::fabs(part) > ROUNDING ? sign * part : 0;
  char text[96];
  std::snprintf(text, sizeof text, "(%.6g, %.6g, %.6g)", along[0], along[1], along[2]);
  return text;
}

void note_line(build& b, const card& c, int reference, const mean_motion& mean) {
  const std::string of = "no moment of " + node_name(b, reference);
  if (mean.rank() == 2) {
    b.note(c, "its nodes lie on a line along " + line_text(mean.axes()[2]) + ": " + of +
                  " about it goes out to them, and nothing of the coupling resists that rotation");
  } else if (mean.rank() < 2) {
    b.note(c, "its nodes lie in one point: " + of + " goes out to them, and nothing of the coupling resists rotations");
  }
}

// Rotations about the axes that the nodes show. Where they lie on a line the rotation about it is nobody's.
void follow_rotations(build& b, const card& c, const condition_source& from, int reference, const mean_motion& mean,
                      const freedoms& wanted) {
  const bool all = wanted[3] && wanted[4] && wanted[5];
  if (mean.rank() < 3 && !all && (wanted[3] || wanted[4] || wanted[5])) {
    b.deck.fail(c,
                "its nodes lie on a line, and rotate about all axes but that one: name the degrees of freedom 4 to "
                "6 together or none of them");
  }
  if (all) note_line(b, c, reference, mean);
  for (int k = 0; k < 3; ++k) {
    linear_constraint condition = start_condition(from);
    if (mean.rank() == 3) {
      if (!wanted[subscript(3 + k)]) continue;
      vector3 axis{};
      axis[subscript(k)] = 1;
      condition.terms.push_back({reference, 4 + k, 1});
      mean.add_rotation(condition, axis, -1);
    } else {
      if (!all || k >= mean.rank()) continue;
      const vector3& axis = mean.axes()[subscript(k)];
      for (int i = 0; i < 3; ++i) condition.terms.push_back({reference, 4 + i, axis[subscript(i)]});
      mean.add_rotation(condition, axis, -1);
    }
    add_condition(b, std::move(condition));
  }
}

void follow_mean(build& b, const card& c, int reference, std::vector<int> nodes, std::vector<double> weights,
                 const freedoms& wanted) {
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    if (nodes[n] != reference) continue;
    b.deck.fail(c, "the reference, " + node_name(b, reference) +
                       ", is one of the nodes whose mean it follows: give it "
                       "a node of its own");
  }
  const condition_source from = source_of(c);
  const vector3& place = b.result.nodes[reference].xyz;
  double reach = length_of(place);
  for (const int n : nodes) reach = std::fmax(reach, length_of(b.result.nodes[n].xyz));
  const mean_motion mean(b.result, std::move(nodes), std::move(weights));
  const vector3 arm = difference(mean.centre(), place);
  constexpr double AN_ARM = 1e-9;  // by the coordinates: shorter ones are rounding
  for (int k = mean.rank(); k < 3; ++k) {
    constexpr double OFF = 1e-6;  // by the arm: on the line, to the digits of a deck
    if (length_of(cross(mean.axes()[subscript(k)], arm)) > OFF * std::fmax(length_of(place), length_of(arm))) {
      b.deck.fail(c, "its nodes lie on a line or in a point and the reference, " + node_name(b, reference) +
                         ", off it: nothing turns it about that line; put it on the line");
    }
  }
  for (std::size_t i = 0; i < 3; ++i) {
    if (!wanted[i]) continue;
    linear_constraint condition = start_condition(from);
    condition.terms.push_back({reference, number_of(i) + 1, 1});
    mean.add_displacement(condition, place, i, -1);
    condition.first_order = length_of(arm) > AN_ARM * reach;
    add_condition(b, std::move(condition));
  }
  follow_rotations(b, c, from, reference, mean, wanted);
}

}  // namespace

void check_coupling(build& b) {
  const card* const open = b.coupling.of;
  if (open == nullptr || b.coupling.taken) return;
  b.coupling.taken = true;
  b.errors.attempt(
      [&] { b.deck.fail(*open, coupling_name(*open) + " has neither *KINEMATIC nor *DISTRIBUTING below it"); });
}

void read_coupling(build& b, const card& c) {
  for (const char* const parameter : {"ORIENTATION", "INFLUENCERADIUS"}) {
    if (c.find(parameter) == nullptr || squeezed(c.value(parameter)) == "WHOLEMODEL") continue;
    const bool turned = std::string(parameter) == "ORIENTATION";
    b.deck.fail(c, turned ? "ORIENTATION is not supported: the degrees of freedom are along global axes"
                          : "INFLUENCE RADIUS is not supported: give a *SURFACE of the nodes within it");
  }
  check_coupling(b);
  b.coupling = {};
  b.coupling.surface = surface_of_parameter(b, c, "SURFACE");
  b.coupling.reference = node_of_parameter(b, c, "REF NODE");
  b.coupling.of = &c;
}

static pending_coupling take_coupling(build& b, const card& c) {
  if (b.coupling.taken) b.deck.fail(c, coupling_name(*b.coupling.of) + " has its *KINEMATIC or *DISTRIBUTING already");
  b.coupling.taken = true;
  return b.coupling;
}

void read_kinematic(build& b, const card& c) {
  const pending_coupling coupling = take_coupling(b, c);
  const freedoms wanted = read_ranges(b, c);
  const named_surface& surface = b.result.surfaces[coupling.surface];
  for (const int node : surface.nodes) {
    follow_kinematically(b, source_of(*coupling.of), coupling.reference, node, wanted);
  }
}

void read_distributing(build& b, const card& c) {
  const pending_coupling coupling = take_coupling(b, c);
  const std::string method = c.find("WEIGHTINGMETHOD") == nullptr ? "UNIFORM" : squeezed(c.value("WEIGHTINGMETHOD"));
  if (method != "UNIFORM") b.deck.fail(c, "WEIGHTING METHOD=" + method + " is not supported: UNIFORM is");
  const std::string kind = c.find("COUPLING") == nullptr ? "CONTINUUM" : squeezed(c.value("COUPLING"));
  if (kind != "CONTINUUM") {
    b.deck.fail(c, "COUPLING=" + kind + " is not supported: CONTINUUM takes no moments of the nodes");
  }
  const freedoms wanted = read_ranges(b, c);
  const named_surface& surface = b.result.surfaces[coupling.surface];
  follow_mean(b, *coupling.of, coupling.reference, surface.nodes, surface.weights, wanted);
}

void read_kinematic_coupling(build& b, const card& c) {
  const int reference = node_of_parameter(b, c, "REF NODE");
  b.each_line(c, [&](data_fields& row) {
    row.expect(1, 3, "node or set, first and last degree of freedom", 3);
    freedoms wanted{};
    if (!row.has(1)) wanted.fill(true);
    if (row.has(1)) {
      const int first = freedom_field(row, 1), last = row.has(2) ? freedom_field(row, 2) : first;
      if (last < first) row.fail("the last degree of freedom is smaller than the first");
      for (int dof = first; dof <= last; ++dof) wanted[subscript(dof - 1)] = true;
    }
    for (const int node : nodes_of_field(b, row, 0)) {
      follow_kinematically(b, source_of(c, row.line()), reference, node, wanted);
    }
  });
}

// The element of type DCOUP3D is no more than its node, the reference.
void read_distributing_coupling(build& b, const card& c) {
  const auto found = b.coupling_nodes.find(upper(c.value("ELSET")));
  if (found == b.coupling_nodes.end()) {
    b.deck.fail(c, "the element set " + in_quotes(c.value("ELSET")) + " has no element of type DCOUP3D");
  }
  if (found->second.size() != 1) {
    b.deck.fail(c, "the element set " + in_quotes(c.value("ELSET")) + " has " + std::to_string(found->second.size()) +
                       " elements of type DCOUP3D: a coupling has one");
  }
  std::vector<int> nodes;
  std::vector<double> weights;
  b.each_line(c, [&](data_fields& row) {
    row.expect(2, 2, "node or set, weight", 1);
    const double weight = row.positive(1, "weight");
    for (const int node : nodes_of_field(b, row, 0)) {
      if (std::find(nodes.begin(), nodes.end(), node) != nodes.end()) {
        row.fail(node_name(b, node) + " has a weight already");
      }
      nodes.push_back(node);
      weights.push_back(weight);
    }
  });
  if (nodes.empty()) throw consequence{};
  freedoms all{};
  all.fill(true);
  follow_mean(b, c, found->second.front(), std::move(nodes), std::move(weights), all);
}

// *ELEMENT, TYPE=DCOUP3D: number, node.
void read_coupling_elements(build& b, const card& c) {
  const std::string name = c.find("ELSET") == nullptr ? "" : checked_name(b, c, c.value("ELSET"));
  if (name.empty()) b.deck.fail(c, "elements of type DCOUP3D need an ELSET, which their *DISTRIBUTING COUPLING names");
  b.each_line(c, [&](data_fields& row) {
    row.expect(2, 2, "number, node", 2);
    row.number(0, "element number");
    const int id = row.number(1, "node");
    const int node = b.nodes.index_of(id);
    if (node < 0) fail_undefined(b.nodes, id, row, "node " + std::to_string(id) + " is not defined");
    b.coupling_nodes[name].push_back(node);
  });
}

}  // namespace solver::deck
