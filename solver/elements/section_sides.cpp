// section_sides.cpp: from element to element round each node of a surface.
#include "elements/section_sides.h"

#include <algorithm>
#include <array>
#include <map>

#include "elements/element_faces.h"
#include "elements/solid_faces.h"

namespace solver {

namespace {

using face_nodes = std::array<int, 4>;

face_nodes corners_of(const element& e, int face) {
  face_nodes key = {-1, -1, -1, -1};
  const std::vector<int> nodes = nodes_of_face(e, face);
  std::copy(nodes.begin(), nodes.end(), key.begin());
  std::sort(key.begin(), key.end());
  return key;
}

bool has_node(const face_nodes& face, int node) { return std::find(face.begin(), face.end(), node) != face.end(); }

// Faces of a solid, edges of a plate. Those of a part of a quadratic element are its own.
std::vector<face_nodes> all_faces(const element& e) {
  std::vector<face_nodes> all;
  if (is_solid(e.type)) {
    for (int face = 1; face <= solid_face_count(e.type); ++face) all.push_back(corners_of(e, face));
  } else {
    for (int edge = 1; edge <= count_of(e.nodes); ++edge) all.push_back(corners_of(e, EDGE + edge));
  }
  return all;
}

struct cut {
  const model& m;
  const named_surface& s;
  std::map<face_nodes, int> in_surface;        // its faces, and the element that it names for each
  std::map<int, std::vector<int>> around;      // by node of the surface: the elements that have it
  std::map<int, std::vector<face_nodes>> own;  // by element
};

void gather_elements(cut& c) {
  const bool edges = is_edge(c.s.faces.front().face);
  for (std::size_t i = 0; i < c.m.elements.size(); ++i) {
    const element& e = c.m.elements[i];
    if (edges ? !is_plate(e.type) : !is_solid(e.type)) continue;
    for (const int n : e.nodes) {
      if (!std::binary_search(c.s.nodes.begin(), c.s.nodes.end(), n)) continue;
      c.around[n].push_back(number_of(i));
      if (c.own.count(number_of(i)) == 0) c.own[number_of(i)] = all_faces(e);
    }
  }
}

// The element is named for at least one face of the surface that has the node.
bool is_named(const cut& c, int element, int node) {
  return std::any_of(c.own.at(element).begin(), c.own.at(element).end(), [&](const face_nodes& face) {
    const auto found = c.in_surface.find(face);
    return has_node(face, node) && found != c.in_surface.end() && found->second == element;
  });
}

// The element lies behind a face of the surface that has the node.
bool is_behind(const cut& c, int element, int node) {
  return std::any_of(c.own.at(element).begin(), c.own.at(element).end(), [&](const face_nodes& face) {
    const auto found = c.in_surface.find(face);
    return has_node(face, node) && found != c.in_surface.end() && found->second != element;
  });
}

bool are_joined(const cut& c, int first, int second, int node) {
  const std::vector<face_nodes>& other = c.own.at(second);
  return std::any_of(c.own.at(first).begin(), c.own.at(first).end(), [&](const face_nodes& face) {
    return has_node(face, node) && c.in_surface.count(face) == 0 &&
           std::find(other.begin(), other.end(), face) != other.end();
  });
}

std::vector<int> named_at(const cut& c, int node) {
  std::vector<int> named;
  for (const int e : c.around.at(node)) {
    if (is_named(c, e, node)) named.push_back(e);
  }
  return named;
}

std::vector<int> side_at(const cut& c, int node, std::vector<int> side) {
  for (std::size_t next = 0; next < side.size(); ++next) {
    for (const int e : c.around.at(node)) {
      if (std::find(side.begin(), side.end(), e) == side.end() && are_joined(c, side[next], e, node)) side.push_back(e);
    }
  }
  std::sort(side.begin(), side.end());
  return side;
}

}  // namespace

section_sides sides_of(const model& m, const named_surface& s) {
  section_sides result;
  cut c{m, s, {}, {}, {}};
  for (const surface_face& f : s.faces) {
    const bool is_new = c.in_surface.emplace(corners_of(m.elements[f.element], f.face), f.element).second;
    if (!is_new) result.doubled = f.element;
  }
  if (result.doubled >= 0) return result;
  gather_elements(c);
  for (const int node : s.nodes) {
    const std::vector<int> named = named_at(c, node);
    std::vector<int> side = side_at(c, node, named);
    if (std::any_of(side.begin(), side.end(), [&](int e) { return is_behind(c, e, node); })) {
      if (result.rim < 0) result.rim = node;
      side = named;
    }
    result.elements.push_back(std::move(side));
  }
  return result;
}

}  // namespace solver
