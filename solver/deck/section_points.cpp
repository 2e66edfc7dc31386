// section_points.cpp: where on a cross-section stresses are given: the integration points of Abaqus for beams in space,
// whose integration rules reach to the ends of walls and sides. Of thin walls they stand on the middle lines.
#include <cmath>

#include "deck/beam_shapes.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

class point_list {
 public:
  void add(double x1, double x2) { points_.push_back({count_of(points_) + 1, x1, x2}); }
  // Equal distances on a line; its first `skipped` points are there already, and its last `left_out` come later.
  void line(const plane_point& from, const plane_point& to, int count, int skipped = 0, int left_out = 0) {
    for (int i = skipped; i < count - left_out; ++i) {
      const double s = static_cast<double>(i) / (count - 1);
      add((1 - s) * from[0] + s * to[0], (1 - s) * from[1] + s * to[1]);
    }
  }
  std::vector<section_point> take() { return std::move(points_); }

 private:
  std::vector<section_point> points_;
};

}  // namespace

// Five rows of five, along axis 1 first.
std::vector<section_point> rectangle_points(double a, double b) {
  point_list all;
  for (int row = 0; row < 5; ++row) {
    const double x2 = (row - 2) * b / 4;
    all.line({-a / 2, x2}, {a / 2, x2}, 5);
  }
  return all.take();
}

// The middle, then on eight radii from axis 1 on, at half and at the whole of each.
std::vector<section_point> ellipse_points(double p, double q) {
  point_list all;
  all.add(0, 0);
  for (int i = 0; i < 8; ++i) {
    const double c = std::cos(i * PI / 4), s = std::sin(i * PI / 4);
    all.add(p * c / 2, q * s / 2);
    all.add(p * c, q * s);
  }
  return all.take();
}

std::vector<section_point> pipe_points(double radius, double wall) {
  point_list all;
  const double middle = radius - wall / 2;
  for (int i = 0; i < 8; ++i) all.add(middle * std::cos(i * PI / 4), middle * std::sin(i * PI / 4));
  return all.take();
}

// Five to a wall, from the corner at the negative ends of both axes along axis 2, round the box.
std::vector<section_point> box_points(double a, double b, const std::array<double, 4>& t) {
  const double right = (a - t[0]) / 2, top = (b - t[1]) / 2, left = (t[2] - a) / 2, bottom = (t[3] - b) / 2;
  point_list all;
  all.line({left, bottom}, {left, top}, 5, 0, 1);
  all.line({left, top}, {right, top}, 5, 0, 1);
  all.line({right, top}, {right, bottom}, 5, 0, 1);
  all.line({right, bottom}, {left, bottom}, 5, 0, 1);
  return all.take();
}

// Five on the lower flange, three on the web between the flanges, five on the upper flange. A missing flange leaves the
// end of the web.
std::vector<section_point> i_points(const i_data& d) {
  const double low = d.flange_below / 2 - d.l, high = d.depth - d.flange_above / 2 - d.l;
  point_list all;
  d.width_below > 0 ? all.line({-d.width_below / 2, low}, {d.width_below / 2, low}, 5) : all.add(0, low);
  all.line({0, low}, {0, high}, 5, 1, 1);
  d.width_above > 0 ? all.line({-d.width_above / 2, high}, {d.width_above / 2, high}, 5) : all.add(0, high);
  return all.take();
}

// Four on the web from its lower end, five on the flange.
std::vector<section_point> t_points(double width, double depth, double l, double flange) {
  const double high = depth - flange / 2 - l;
  point_list all;
  all.line({0, -l}, {0, high}, 5, 0, 1);
  all.line({-width / 2, high}, {width / 2, high}, 5);
  return all.take();
}

// From the end of the leg along axis 1 to the corner and to the end of the other leg.
std::vector<section_point> l_points(double a, double b, double t1, double t2) {
  point_list all;
  all.line({a - t2 / 2, 0}, {0, 0}, 5);
  all.line({0, 0}, {0, b - t1 / 2}, 5, 1);
  return all.take();
}

// The corners and the middles of the walls, from axis 1 on.
std::vector<section_point> hexagon_points(double radius, double wall) {
  point_list all;
  const double middle = radius - wall / std::sqrt(3.0);
  for (int i = 0; i < 12; ++i) {
    const double r = i % 2 == 0 ? middle : middle * std::sqrt(0.75);
    all.add(r * std::cos(i * PI / 6), r * std::sin(i * PI / 6));
  }
  return all.take();
}

// The ends and the middle of each wall, in their order; where a wall begins at the end of the one before, once.
std::vector<section_point> wall_points(const wall_section& walls) {
  point_list all;
  int last = -1;
  for (const wall& w : walls.walls) {
    all.line(walls.corners[w.from], walls.corners[w.to], 3, w.from == last ? 1 : 0);
    last = w.to;
  }
  return all.take();
}

}  // namespace solver::deck
