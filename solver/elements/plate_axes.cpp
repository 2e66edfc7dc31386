// plate_axes.cpp: local axes of plates, as the library takes them, and how far four nodes lie off one plane.
#include <algorithm>
#include <cmath>

#include "elements/library_model.h"
#include "model/model_error.h"

namespace solver {

namespace {

VECTOR<3> difference(const node& a, const node& b) {
  return {{b.xyz[0] - a.xyz[0], b.xyz[1] - a.xyz[1], b.xyz[2] - a.xyz[2]}};
}

VECTOR<3> cross(const VECTOR<3>& a, const VECTOR<3>& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

double dot(const VECTOR<3>& a, const VECTOR<3>& b) { return a(1) * b(1) + a(2) * b(2) + a(3) * b(3); }
double length(const VECTOR<3>& a) { return std::sqrt(dot(a, a)); }

const node& node_of(const model& m, const element& e, std::size_t i) {
  return m.nodes[static_cast<std::size_t>(e.nodes[i])];
}

}  // namespace

// The normal of a triangle stands on its plane; that of a quadrilateral on the sides that meet in node 1.
MATRIX<3, 3> plate_axes(const model& m, const element& e) {
  const VECTOR<3> first = difference(node_of(m, e, 0), node_of(m, e, 1));
  const VECTOR<3> last = difference(node_of(m, e, 0), node_of(m, e, e.nodes.size() - 1));
  const VECTOR<3> between = difference(node_of(m, e, 1), node_of(m, e, e.nodes.size() - 1));
  const VECTOR<3> normal = cross(first, last);
  const double longest = std::max({length(first), length(last), length(between)});
  const double twice_area = length(normal);
  // Below this height in relation to the longest side the nodes stand on a line, as far as doubles can tell.
  if (!(twice_area > 1e-10 * longest * longest))
    throw model_error(m, e, "*ELEMENT", "element " + std::to_string(e.id) + " has no area");
  MATRIX<3, 3> axes;
  for (int i = 1; i <= 3; ++i) {
    axes(1, i) = first(i) / length(first);
    axes(3, i) = normal(i) / twice_area;
  }
  const VECTOR<3> second = cross({{axes(3, 1), axes(3, 2), axes(3, 3)}}, {{axes(1, 1), axes(1, 2), axes(1, 3)}});
  for (int i = 1; i <= 3; ++i) axes(2, i) = second(i);
  return axes;
}

std::array<double, 4> warp_heights(const model& m, const element& e) {
  std::array<double, 4> height{};
  if (e.nodes.size() != 4) return height;
  const MATRIX<3, 3> axes = plate_axes(m, e);
  const VECTOR<3> normal{{axes(3, 1), axes(3, 2), axes(3, 3)}};
  double mean = 0;
  for (std::size_t n = 1; n < 4; ++n) {
    height[n] = dot(normal, difference(node_of(m, e, 0), node_of(m, e, n)));
    mean += height[n] / 4;
  }
  for (double& value : height) value -= mean;
  return height;
}

double plate_warp(const model& m, const element& e) {
  if (e.nodes.size() != 4) return 0;
  double farthest = 0;
  for (const double height : warp_heights(m, e)) farthest = std::fmax(farthest, std::fabs(height));
  const double diagonal = std::fmax(length(difference(node_of(m, e, 0), node_of(m, e, 2))),
                                    length(difference(node_of(m, e, 1), node_of(m, e, 3))));
  return farthest / diagonal;
}

}  // namespace solver
