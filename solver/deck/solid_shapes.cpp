// solid_shapes.cpp: solids that are folded, flat or inside out. The library integrates the magnitude of the Jacobian's
// determinant and would not see them.
#include <algorithm>
#include <array>
#include <cmath>

#include "deck/keywords.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

using vector = vector3;

// The edges that meet in a place of the element, along its three natural coordinates.
struct tripod {
  std::array<vector, 3> edge{};

  // The determinant by the product of the lengths: 1 at a right-angled corner, 0 when flat, negative when inside out.
  double fullness() const {
    double length = 1;
    std::array<vector, 3> unit = edge;
    for (vector& e : unit) {
      const double size = length_of(e);
      length *= size > 0 ? 1 : 0;
      for (double& part : e) part /= size > 0 ? size : 1;
    }
    const auto& [a, b, c] = unit;
    return length * dot(a, cross(b, c));
  }
};

constexpr double GAUSS = 0.57735026918962576;
constexpr double BRICK[8][3] = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                                {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
constexpr double WEDGE[6][3] = {{0, 0, -1}, {1, 0, -1}, {0, 1, -1}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
constexpr double WEDGE_POINTS[6][3] = {{.5, .5, -GAUSS}, {0, .5, -GAUSS}, {.5, 0, -GAUSS},
                                       {.5, .5, GAUSS},  {0, .5, GAUSS},  {.5, 0, GAUSS}};

void add(tripod& t, std::size_t axis, double share, const vector& xyz) {
  for (std::size_t i = 0; i < 3; ++i) t.edge[axis][i] += share * xyz[i];
}

tripod in_brick(const std::array<vector, 8>& xyz, const double* at) {
  tripod t;
  for (std::size_t n = 0; n < 8; ++n) {
    const double x = 1 + at[0] * BRICK[n][0], y = 1 + at[1] * BRICK[n][1], z = 1 + at[2] * BRICK[n][2];
    add(t, 0, BRICK[n][0] * y * z / 8, xyz[n]);
    add(t, 1, BRICK[n][1] * x * z / 8, xyz[n]);
    add(t, 2, BRICK[n][2] * x * y / 8, xyz[n]);
  }
  return t;
}

// Along both sides of the triangle from its first corner, and from triangle to triangle.
tripod in_wedge(const std::array<vector, 8>& xyz, const double* at) {
  const double share[3] = {1 - at[0] - at[1], at[0], at[1]};
  tripod t;
  for (std::size_t n = 0; n < 6; ++n) {
    const double layer = (1 + at[2] * WEDGE[n][2]) / 2;
    const std::size_t corner = n % 3;
    add(t, 0, corner == 0 ? -layer : corner == 1 ? layer : 0, xyz[n]);
    add(t, 1, corner == 0 ? -layer : corner == 2 ? layer : 0, xyz[n]);
    add(t, 2, share[corner] * WEDGE[n][2] / 2, xyz[n]);
  }
  return t;
}

struct places {
  std::vector<double> at_nodes, at_points;  // fullness
};

// Coordinates count from the first node, so that a place far from the origin loses no digits.
places look_into(const model& m, const element& e) {
  std::array<vector, 8> xyz{};
  const vector& origin = m.nodes[e.nodes[0]].xyz;
  for (std::size_t n = 0; n < e.nodes.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) xyz[n][i] = m.nodes[e.nodes[n]].xyz[i] - origin[i];
  }
  places found;
  if (e.type == element_type::C3D4) return {{}, {tripod{{xyz[1], xyz[2], xyz[3]}}.fullness()}};
  for (std::size_t n = 0; n < e.nodes.size(); ++n) {
    if (e.type == element_type::C3D8) {
      const double point[3] = {GAUSS * BRICK[n][0], GAUSS * BRICK[n][1], GAUSS * BRICK[n][2]};
      found.at_nodes.push_back(in_brick(xyz, BRICK[n]).fullness());
      found.at_points.push_back(in_brick(xyz, point).fullness());
    } else {
      found.at_nodes.push_back(in_wedge(xyz, WEDGE[n]).fullness());
      found.at_points.push_back(in_wedge(xyz, WEDGE_POINTS[n]).fullness());
    }
  }
  return found;
}

}  // namespace

// Below this share of a right-angled corner the edges lie in one plane.
static constexpr double FLATTEST = 1e-10;

void check_solid(const build& b, const element& e) {
  const std::vector<double> found = look_into(b.result, e).at_points;
  const auto count = [&](auto holds) { return subscript(std::count_if(found.begin(), found.end(), holds)); };
  const std::size_t sound = count([](double value) { return value > FLATTEST; });
  const std::size_t inverted = count([](double value) { return value < -FLATTEST; });
  const std::string name = element_name(e);
  if (sound == found.size()) return;
  if (inverted == found.size()) {
    b.deck.fail(e.file, e.line, "*ELEMENT",
                name +
                    " is inside out, its volume is negative: the nodes of its first face must turn, by the right "
                    "hand, towards the rest of the element");
  }
  if (sound == 0 && inverted == 0) {
    b.deck.fail(e.file, e.line, "*ELEMENT", name + " has no volume: its nodes lie in one plane");
  }
  b.deck.fail(e.file, e.line, "*ELEMENT",
              name + " is too distorted: its volume is negative or zero at " + std::to_string(found.size() - sound) +
                  " of its " + std::to_string(found.size()) + " integration points");
}

int folded_node(const model& m, const element& e) {
  const std::vector<double> found = look_into(m, e).at_nodes;
  for (std::size_t n = 0; n < found.size(); ++n) {
    if (!(found[n] > FLATTEST)) return e.nodes[n];
  }
  return -1;
}

}  // namespace solver::deck
