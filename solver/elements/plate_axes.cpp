// plate_axes.cpp: local axes of plates, as the library takes them, and how far four nodes lie off one plane.
#include "elements/plate_axes.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

// From one node of an element to another, counted from 0.
vector3 between(const model& m, const element& e, std::size_t from, std::size_t to) {
  return difference(m.nodes[e.nodes[from]].xyz, m.nodes[e.nodes[to]].xyz);
}

// Below this height in relation to the longest side the nodes stand on a line, as far as doubles can tell: coordinates
// far from the origin have lost some six of their sixteen digits.
constexpr double LEAST_HEIGHT = 1e-10;

}  // namespace

// The normal of a triangle stands on its plane; that of a quadrilateral on the sides that meet in node 1.
MATRIX<3, 3> plate_axes(const model& m, const element& e) {
  const std::size_t end = e.nodes.size() - 1;
  const vector3 first = between(m, e, 0, 1), last = between(m, e, 0, end), across = between(m, e, 1, end);
  vector3 normal = cross(first, last);
  const double longest = std::max({norm(first), norm(last), norm(across)});
  const double twice_area = norm(normal);
  if (!(twice_area > LEAST_HEIGHT * longest * longest)) {
    throw model_error(m, e, "*ELEMENT", "element " + std::to_string(e.id) + " has no area");
  }
  vector3 x = first;
  for (double& part : x) part /= norm(first);
  for (double& part : normal) part /= twice_area;
  return matrix_of_rows(x, cross(normal, x), normal);
}

std::array<double, 4> warp_heights(const model& m, const element& e) {
  std::array<double, 4> height{};
  if (e.nodes.size() != 4) return height;
  const vector3 normal = row(plate_axes(m, e), 3);
  double mean = 0;
  for (std::size_t n = 1; n < 4; ++n) {
    height[n] = dot(normal, between(m, e, 0, n));
    mean += height[n] / 4;
  }
  for (double& value : height) value -= mean;
  return height;
}

double plate_warp(const model& m, const element& e) {
  if (e.nodes.size() != 4) return 0;
  double farthest = 0;
  for (const double height : warp_heights(m, e)) farthest = std::fmax(farthest, std::fabs(height));
  return farthest / std::fmax(norm(between(m, e, 0, 2)), norm(between(m, e, 1, 3)));
}

bool has_arms(const model& m, const element& e) { return is_shell(e.type) && plate_warp(m, e) > FLAT; }

}  // namespace solver
