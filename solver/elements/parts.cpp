// parts.cpp: the tables of parts.
#include "elements/parts.h"

#include <algorithm>

#include "elements/solid_faces.h"

namespace solver {

namespace {

// Nodes 5 to 8 are the middles of the edges, 9 is made in the middle.
whole_form quadrilateral() {
  whole_form f;
  f.nodes = 8;
  f.edges = {{1, 2, 5}, {2, 3, 6}, {3, 4, 7}, {4, 1, 8}};
  f.sides = {{1, 2, 5}, {2, 3, 6}, {3, 4, 7}, {4, 1, 8}};
  f.made = {{1, 2, 3, 4, 5, 6, 7, 8}};
  f.parts = {{1, 5, 9, 8}, {5, 2, 6, 9}, {9, 6, 3, 7}, {8, 9, 7, 4}};
  return f;
}

whole_form triangle() {
  whole_form f;
  f.nodes = 6;
  f.edges = {{1, 2, 4}, {2, 3, 5}, {3, 1, 6}};
  f.sides = {{1, 2, 4}, {2, 3, 5}, {3, 1, 6}};
  f.parts = {{1, 4, 6}, {4, 2, 5}, {6, 5, 3}, {5, 6, 4}};
  return f;
}

// From end to end: the middle is the second node.
whole_form line() {
  whole_form f;
  f.nodes = 3;
  f.edges = {{1, 3, 2}};
  f.parts = {{1, 2}, {2, 3}};
  return f;
}

// Made: 11 to 14 in the faces, 15 in the middle. A brick for each corner.
whole_form tetrahedron() {
  whole_form f;
  f.nodes = 10;
  f.edges = {{1, 2, 5}, {2, 3, 6}, {3, 1, 7}, {1, 4, 8}, {2, 4, 9}, {3, 4, 10}};
  f.sides = {{1, 2, 3, 5, 6, 7}, {1, 4, 2, 8, 9, 5}, {2, 4, 3, 9, 10, 6}, {3, 4, 1, 10, 8, 7}};
  f.made = f.sides;
  f.made.push_back({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  f.parts = {{1, 5, 11, 7, 8, 12, 15, 14},
             {2, 6, 11, 5, 9, 13, 15, 12},
             {3, 7, 11, 6, 10, 14, 15, 13},
             {15, 14, 8, 12, 13, 10, 4, 9}};
  return f;
}

std::vector<whole_edge> wedge_edges() {
  return {{1, 2, 7}, {2, 3, 8}, {3, 1, 9}, {4, 5, 10}, {5, 6, 11}, {6, 4, 12}, {1, 4, 13}, {2, 5, 14}, {3, 6, 15}};
}

std::vector<std::vector<int>> wedge_sides() {
  return {{1, 2, 3, 7, 8, 9},
          {4, 6, 5, 12, 11, 10},
          {1, 4, 5, 2, 13, 10, 14, 7},
          {2, 5, 6, 3, 14, 11, 15, 8},
          {3, 6, 4, 1, 15, 12, 13, 9}};
}

// Made: 16 to 18 in the quadrilateral faces. Two layers of four wedges.
whole_form wedge() {
  whole_form f;
  f.nodes = 15;
  f.edges = wedge_edges();
  f.sides = wedge_sides();
  f.made = {f.sides[2], f.sides[3], f.sides[4]};
  f.parts = {{1, 7, 9, 13, 16, 18},   {7, 2, 8, 16, 14, 17},   {9, 8, 3, 18, 17, 15},   {8, 9, 7, 17, 18, 16},
             {13, 16, 18, 4, 10, 12}, {16, 14, 17, 10, 5, 11}, {18, 17, 15, 12, 11, 6}, {17, 18, 16, 11, 12, 10}};
  return f;
}

// Beside tetrahedra, whose triangles are divided into three quadrilaterals. Made: also 19 and 20 in the triangles, 21
// in the middle. Two layers of three bricks.
whole_form wedge_in_bricks() {
  whole_form f = wedge();
  f.made.push_back(f.sides[0]);
  f.made.push_back(f.sides[1]);
  f.made.push_back({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  f.parts = {{1, 7, 19, 9, 13, 16, 21, 18},   {2, 8, 19, 7, 14, 17, 21, 16},   {3, 9, 19, 8, 15, 18, 21, 17},
             {13, 16, 21, 18, 4, 10, 20, 12}, {14, 17, 21, 16, 5, 11, 20, 10}, {15, 18, 21, 17, 6, 12, 20, 11}};
  return f;
}

// Made: 21 to 26 in the faces, 27 in the middle. A brick for each corner.
whole_form brick() {
  whole_form f;
  f.nodes = 20;
  f.edges = {{1, 2, 9},  {2, 3, 10}, {3, 4, 11}, {4, 1, 12}, {5, 6, 13}, {6, 7, 14},
             {7, 8, 15}, {8, 5, 16}, {1, 5, 17}, {2, 6, 18}, {3, 7, 19}, {4, 8, 20}};
  f.sides = {{1, 2, 3, 4, 9, 10, 11, 12},  {5, 8, 7, 6, 16, 15, 14, 13}, {1, 5, 6, 2, 17, 13, 18, 9},
             {2, 6, 7, 3, 18, 14, 19, 10}, {3, 7, 8, 4, 19, 15, 20, 11}, {4, 8, 5, 1, 20, 16, 17, 12}};
  f.made = f.sides;
  f.made.push_back({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20});
  f.parts = {{1, 9, 21, 12, 17, 23, 27, 26},  {9, 2, 10, 21, 23, 18, 24, 27},  {21, 10, 3, 11, 27, 24, 19, 25},
             {12, 21, 11, 4, 26, 27, 25, 20}, {17, 23, 27, 26, 5, 13, 22, 16}, {23, 18, 24, 27, 13, 6, 14, 22},
             {27, 24, 19, 25, 22, 14, 7, 15}, {26, 27, 25, 20, 16, 22, 15, 8}};
  return f;
}

std::vector<double> repeated(const std::vector<std::pair<std::size_t, double>>& groups) {
  std::vector<double> all;
  for (const auto& [count, weight] : groups) all.insert(all.end(), count, weight);
  return all;
}

}  // namespace

const whole_form& form_of(whole_kind kind) {
  static const whole_form NONE, QUADRILATERAL = quadrilateral(), TRIANGLE = triangle(), LINE = line(),
                                TETRAHEDRON = tetrahedron(), WEDGE = wedge(), WEDGE_IN_BRICKS = wedge_in_bricks(),
                                BRICK = brick();
  switch (kind) {
    case whole_kind::QUADRILATERAL: return QUADRILATERAL;
    case whole_kind::TRIANGLE: return TRIANGLE;
    case whole_kind::LINE: return LINE;
    case whole_kind::TETRAHEDRON: return TETRAHEDRON;
    case whole_kind::WEDGE: return WEDGE;
    case whole_kind::WEDGE_IN_BRICKS: return WEDGE_IN_BRICKS;
    case whole_kind::BRICK: return BRICK;
    default: return NONE;
  }
}

// The serendipity and triangular functions (Zienkiewicz and Taylor, The Finite Element Method) in the middle, where
// xi = eta = zeta = 0 and the L are equal:
//
//     triangle        corners L (2 L - 1) = -1/9, middles 4 L L = 4/9               L = 1/3
//     quadrilateral   corners (xi xi_a + eta eta_a - 1) / 4 = -1/4, middles 1/2
//     tetrahedron     corners L (2 L - 1) = -1/8, middles 4 L L = 1/4               L = 1/4
//     wedge           corners L ((2 L - 1) - 1) / 2 = -2/9, middles 2 L L = 2/9 in the triangles, L between them
//     brick           corners -2 / 8, middles 1/4
std::vector<double> weights_of_made(whole_kind kind, std::size_t which) {
  switch (form_of(kind).made[which].size()) {
    case 6: return repeated({{3, -1.0 / 9}, {3, 4.0 / 9}});
    case 8: return repeated({{4, -0.25}, {4, 0.5}});
    case 10: return repeated({{4, -0.125}, {6, 0.25}});
    case 15: return repeated({{6, -2.0 / 9}, {6, 2.0 / 9}, {3, 1.0 / 3}});
    default: return repeated({{8, -0.25}, {12, 0.25}});
  }
}

std::vector<int> plate_edge(element_type type, int edge) {
  const int corners = type == element_type::S3 || type == element_type::M3D3 ? 3 : 4;
  return {edge - 1, edge % corners};
}

// A made node lies in a side where all that it is made from does.
static bool lies_in(const whole_form& f, int node, const std::vector<int>& side) {
  const auto in_side = [&](int n) { return std::find(side.begin(), side.end(), n) != side.end(); };
  if (node <= f.nodes) return in_side(node);
  const std::vector<int>& from = f.made[subscript(node - f.nodes - 1)];
  return std::all_of(from.begin(), from.end(), in_side);
}

int side_of_part(const element& e, int side) {
  if (e.whole == whole_kind::NONE) return side;
  const whole_form& f = form_of(e.whole);
  if (side < 1 || side > count_of(f.sides)) return 0;
  const std::vector<int>& nodes = f.parts[subscript(e.part)];
  const int count = is_plate(e.type) ? count_of(e.nodes) : solid_face_count(e.type);
  for (int own = 1; own <= count; ++own) {
    const std::vector<int> places = is_plate(e.type) ? plate_edge(e.type, own) : solid_face(e.type, own);
    const bool inside = std::all_of(places.begin(), places.end(), [&](int place) {
      return lies_in(f, nodes[subscript(place)], f.sides[subscript(side - 1)]);
    });
    if (inside) return own;
  }
  return 0;
}

int face_count_of(const element& e) {
  if (!is_solid(e.type)) return 0;
  return e.whole == whole_kind::NONE ? solid_face_count(e.type) : count_of(form_of(e.whole).sides);
}

model with_own_numbers(model m) {
  int largest = 0;
  for (const node& n : m.nodes) largest = std::max(largest, n.id);
  for (node& n : m.nodes) n.id = is_made(n) ? ++largest : n.id;
  m.made_nodes.clear();
  largest = 0;
  for (const element& e : m.elements) largest = std::max(largest, e.id);
  for (element& e : m.elements) {
    if (e.part > 0) e.id = ++largest;
    e.whole = whole_kind::NONE;
    e.part = 0;
    e.parts = 1;
  }
  return m;
}

}  // namespace solver
