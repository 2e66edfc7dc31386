// page_mesh.cpp: what of a model goes on the page.
#include "report_page/page_mesh.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "elements/constraints.h"
#include "elements/member_axes.h"
#include "elements/member_field.h"

namespace solver {

namespace {

// The middle of the model where it lies so far from the origin that numbers of 32 bits would lose its shape; else 0.
vector3 origin_of(const model& m) {
  constexpr double FAR = 8;  // sizes of the model
  vector3 low{}, high{}, middle{};
  for (std::size_t i = 0; i < 3; ++i) {
    low[i] = std::numeric_limits<double>::infinity();
    high[i] = -low[i];
    for (const node& n : m.nodes) {
      low[i] = std::fmin(low[i], n.xyz[i]);
      high[i] = std::fmax(high[i], n.xyz[i]);
    }
    middle[i] = low[i] / 2 + high[i] / 2;
  }
  if (m.nodes.empty() || length_of(middle) <= FAR * length_of(difference(low, high))) return {};
  return middle;
}

void mark_supports(const std::vector<boundary_condition>& boundaries, const std::vector<linear_constraint>& constraints,
                   std::vector<char>& shown) {
  for (const boundary_condition& c : boundaries) shown[subscript(c.node)] = 1;
  for (const linear_constraint& c : constraints) {
    if (!is_support(c)) continue;
    for (const constraint_term& t : c.terms) shown[subscript(t.node)] = 1;
  }
}

std::vector<char> nodes_of_outline(const model& m, const std::vector<std::array<int, 2>>& edges) {
  std::vector<char> shown(m.nodes.size(), 0);
  for (const auto& edge : edges) shown[subscript(edge[0])] = shown[subscript(edge[1])] = 1;
  mark_supports(m.boundaries, m.constraints, shown);
  for (const step& s : m.steps) mark_supports(s.boundaries, s.constraints, shown);
  return shown;
}

// Like step_results::fields in the order of the elements, with the stations of stations_of().
std::vector<page_member> members_of_page(const model& m, int station_count) {
  std::vector<page_member> members;
  double before = 0;
  for (int e = 0; e < count_of(m.elements); ++e) {
    const element& member = m.elements[e];
    if (!is_member(member.type) || !has_field(m, member)) continue;
    if (member.part == 0) before = 0;
    page_member own;
    own.element = e;
    own.length = is_cable(m, member) ? cable_length(m, member) : member_length(m, member);
    own.axes = member_axes(m, member);
    const int count = frame_section_of(m, member).kind == frame_section_kind::TRUSS ? 2 : station_count;
    const vector3 &first = m.nodes[member.nodes[0]].xyz, &second = m.nodes[member.nodes[1]].xyz;
    for (int k = 0; k < count; ++k) {
      const double xi = double(k) / (count - 1);
      own.distance.push_back(before + xi * own.length);
      vector3 place{};
      for (std::size_t i = 0; i < 3; ++i) place[i] = (1 - xi) * first[i] + xi * second[i];
      own.place.push_back(place);
    }
    before += own.length;
    members.push_back(std::move(own));
  }
  return members;
}

// In the order of solid_average::finish(): by node, its sections in the order in which elements name it.
std::vector<solid_place> solid_places_of(const model& m) {
  numbered<std::vector<int>> at_node(m.nodes.size());
  for (const element& e : m.elements) {
    if (!is_solid(e.type)) continue;
    const int section = section_of_deck(m.solid_sections, e.section);
    for (const int n : e.nodes) {
      std::vector<int>& here = at_node[n];
      if (std::find(here.begin(), here.end(), section) == here.end()) here.push_back(section);
    }
  }
  std::vector<solid_place> places;
  for (int n = 0; n < count_of(m.nodes); ++n) {
    for (const int section : at_node[n]) places.push_back({n, section});
  }
  return places;
}

}  // namespace

section_places::section_places(const model& m)
    : frames(count_of(m.shell_sections)),
      solids(frames + count_of(m.frame_sections)),
      masses(solids + count_of(m.solid_sections)),
      count(masses + count_of(m.point_masses)) {}

int section_places::of(const model& m, const element& e) const {
  if (e.section < 0) return -1;
  if (is_plate(e.type)) return section_of_deck(m.shell_sections, e.section);
  if (is_solid(e.type)) return solids + section_of_deck(m.solid_sections, e.section);
  if (is_point(e.type)) return masses + e.section;
  return frames + section_of_deck(m.frame_sections, e.section);
}

page_mesh::page_mesh(const model& read, bool as_outline, int stations)
    : m(read),
      outline(as_outline),
      station_count(stations),
      sections(read),
      origin(origin_of(read)),
      faces(faces_of_page(read)),
      edges(edges_of_page(read, faces, as_outline)),
      page_node(read.nodes.size(), -1) {
  std::vector<char> shown(m.nodes.size(), 1);
  if (outline) {
    faces = {};
    shown = nodes_of_outline(m, edges);
  } else {
    members = members_of_page(m, station_count);
    parts = nodal_average(m).finish();
    solids = solid_places_of(m);
  }
  for (int n = 0; n < count_of(m.nodes); ++n) {
    if (shown[subscript(n)] == 0) continue;
    page_node[n] = count_of(nodes);
    nodes.push_back(n);
  }
}

}  // namespace solver
