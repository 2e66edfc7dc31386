// composed_shapes.cpp: cross-sections composed of rectangles, or of thin walls.
#include <algorithm>
#include <cmath>

#include "deck/beam_shapes.h"

namespace solver::deck {

namespace {

// Sides along axes 1 and 2, from `low` to `high`; a hollow counts with the sign -1.
struct rectangle {
  plane_point low, high;
  double sign = 1;

  double area() const { return sign * (high[0] - low[0]) * (high[1] - low[1]); }
  double middle(std::size_t i) const { return (low[i] + high[i]) / 2; }
};

double squared(double x) { return x * x; }

void add_rectangles(const std::vector<rectangle>& parts, beam_shape& s) {
  s.area = 0;
  s.centroid = {};
  for (const rectangle& r : parts) {
    s.area += r.area();
    for (std::size_t i = 0; i < 2; ++i) s.centroid[i] += r.area() * r.middle(i);
  }
  for (double& part : s.centroid) part /= s.area;
  s.I11 = s.I22 = s.I12 = 0;
  for (const rectangle& r : parts) {
    const double d1 = r.middle(0) - s.centroid[0], d2 = r.middle(1) - s.centroid[1];
    s.I11 += r.area() * (squared(r.high[1] - r.low[1]) / 12 + d2 * d2);
    s.I22 += r.area() * (squared(r.high[0] - r.low[0]) / 12 + d1 * d1);
    s.I12 += r.area() * d1 * d2;
  }
}

// Of walls on one line the mean shear stress across it is that of a rectangle, 5/6 of the area.
double factor_of(double flexibility, double area) { return flexibility > 0 ? 1 / (flexibility * area) : 5.0 / 6; }

void add_walls(const wall_constants& c, beam_shape& s) {
  s.torsion = c.torsion_of_cells + c.torsion_of_strips;
  s.shear_factor_1 = factor_of(c.flexibility[0], s.area);
  s.shear_factor_2 = factor_of(c.flexibility[1], s.area);
  s.shear_coupling = c.flexibility[2] * s.area;
  s.shear_centre = c.shear_centre;
}

// Sections with an axis of symmetry have their centroid and shear centre on it, whatever the rounding.
void make_symmetric(std::size_t across, beam_shape& s) {
  s.centroid[across] = s.shear_centre[across] = 0;
  s.I12 = s.shear_coupling = 0;
}

}  // namespace

// Closed shapes take Bredt's formula alone: what the walls add as strips is below what it leaves out.
beam_shape uneven_box_shape(double a, double b, const std::array<double, 4>& t) {
  beam_shape s;
  add_rectangles({{{-a / 2, -b / 2}, {a / 2, b / 2}}, {{t[2] - a / 2, t[3] - b / 2}, {a / 2 - t[0], b / 2 - t[1]}, -1}},
                 s);
  const double right = (a - t[0]) / 2, top = (b - t[1]) / 2, left = (t[2] - a) / 2, bottom = (t[3] - b) / 2;
  wall_section walls;
  walls.add({right, bottom}, {right, top}, t[0]);
  walls.add({right, top}, {left, top}, t[1]);
  walls.add({left, top}, {left, bottom}, t[2]);
  walls.add({left, bottom}, {right, bottom}, t[3]);
  const wall_constants c = constants_of(walls);
  add_walls(c, s);
  s.torsion = c.torsion_of_cells;
  if (t[0] == t[2]) make_symmetric(0, s);
  if (t[1] == t[3]) make_symmetric(1, s);
  s.size = {a, b};
  s.points = box_points(a, b, t);
  s.outline = box_outline(a, b, t);
  return s;
}

beam_shape uneven_i_shape(const i_data& d) {
  const double bottom = -d.l, top = d.depth - d.l;
  beam_shape s;
  add_rectangles({{{-d.width_below / 2, bottom}, {d.width_below / 2, bottom + d.flange_below}},
                  {{-d.web / 2, bottom + d.flange_below}, {d.web / 2, top - d.flange_above}},
                  {{-d.width_above / 2, top - d.flange_above}, {d.width_above / 2, top}}},
                 s);
  const double low = bottom + d.flange_below / 2, high = top - d.flange_above / 2;
  wall_section walls;
  walls.add({0, low}, {0, high}, d.web);
  for (const double side : {-0.5, 0.5}) {
    walls.add({0, low}, {side * d.width_below, low}, d.flange_below);
    walls.add({0, high}, {side * d.width_above, high}, d.flange_above);
  }
  add_walls(constants_of(walls), s);
  make_symmetric(0, s);
  s.size = {std::max(d.width_below, d.width_above), d.depth};
  s.points = i_points(d);
  s.outline = i_outline(d);
  return s;
}

beam_shape t_shape(double width, double depth, double l, double flange, double web) {
  beam_shape s = uneven_i_shape({l, depth, 0, width, 0, flange, web});
  s.points = t_points(width, depth, l, flange);
  return s;
}

beam_shape l_shape(double a, double b, double t1, double t2) {
  beam_shape s;
  add_rectangles({{{-t2 / 2, -t1 / 2}, {a - t2 / 2, t1 / 2}}, {{-t2 / 2, t1 / 2}, {t2 / 2, b - t1 / 2}}}, s);
  wall_section walls;
  walls.add({0, 0}, {a - t2 / 2, 0}, t1);
  walls.add({0, 0}, {0, b - t1 / 2}, t2);
  add_walls(constants_of(walls), s);
  s.shear_centre = {};  // the flows of both legs run through it
  s.size = {a, b};
  s.points = l_points(a, b, t1, t2);
  s.outline = l_outline(a, b, t1, t2);
  return s;
}

// Of a solid hexagon with the radius R of its corners: area 3 sqrt(3) / 2 R^2, I = 5 sqrt(3) / 16 R^4 about any axis.
beam_shape hexagon_shape(double radius, double wall) {
  const double root = std::sqrt(3.0), inner = radius - 2 * wall / root, middle = radius - wall / root;
  beam_shape s;
  s.area = 1.5 * root * (radius - inner) * (radius + inner);
  s.I11 = s.I22 = 5 * root / 16 * (radius - inner) * (radius + inner) * (radius * radius + inner * inner);
  wall_section walls;
  const auto corner = [&](int i) {
    static constexpr std::array<plane_point, 6> UNIT = {{{1, 0}, {0.5, 1}, {-0.5, 1}, {-1, 0}, {-0.5, -1}, {0.5, -1}}};
    const plane_point& u = UNIT[subscript(i % 6)];
    return plane_point{middle * u[0], middle * root / 2 * u[1]};
  };
  for (int i = 0; i < 6; ++i) walls.add(corner(i), corner(i + 1), wall);
  const wall_constants c = constants_of(walls);
  add_walls(c, s);
  s.torsion = c.torsion_of_cells;
  make_symmetric(0, s);
  make_symmetric(1, s);
  s.size = {2 * radius, root * radius};
  s.points = hexagon_points(radius, wall);
  s.outline = hexagon_outline(radius, wall);
  return s;
}

beam_shape walls_shape(const wall_section& walls) {
  const wall_constants c = constants_of(walls);
  beam_shape s;
  s.area = c.area;
  s.I11 = c.I11;
  s.I22 = c.I22;
  s.I12 = c.I12;
  s.centroid = c.centroid;
  add_walls(c, s);
  plane_point low = walls.corners.front(), high = low;
  for (const plane_point& p : walls.corners) {
    for (std::size_t i = 0; i < 2; ++i) {
      low[i] = std::min(low[i], p[i]);
      high[i] = std::max(high[i], p[i]);
    }
  }
  s.size = {high[0] - low[0], high[1] - low[1]};
  s.points = wall_points(walls);
  s.outline = walls_outline(walls);
  return s;
}

}  // namespace solver::deck
