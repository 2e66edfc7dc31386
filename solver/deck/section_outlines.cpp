// section_outlines.cpp: the outlines of cross-sections, to be drawn.
#include <algorithm>
#include <cmath>
#include <utility>

#include "deck/beam_shapes.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

using polygon = std::vector<plane_point>;

constexpr int ROUND = 32;  // corners of a circle

polygon rectangle(double left, double right, double below, double above) {
  return {{left, below}, {right, below}, {right, above}, {left, above}};
}

polygon ellipse(double p, double q) {
  polygon corners;
  for (int i = 0; i < ROUND; ++i) {
    const double angle = 2 * PI * i / ROUND;
    corners.push_back({p * std::cos(angle), q * std::sin(angle)});
  }
  return corners;
}

polygon hexagon(double radius) {
  const double h = std::sqrt(3.0) / 2 * radius;
  return {{radius, 0}, {radius / 2, h}, {-radius / 2, h}, {-radius, 0}, {-radius / 2, -h}, {radius / 2, -h}};
}

double area_of(const polygon& corners) {
  double twice = 0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const plane_point &a = corners[i], &b = corners[(i + 1) % corners.size()];
    twice += a[0] * b[1] - a[1] * b[0];
  }
  return twice / 2;
}

// One side of a wall, run through from a corner to another with the wall on the left.
struct wall_side {
  int from = 0, to = 0;
  double half = 0;  // of the thickness
  bool done = false;
};

// The sides of all walls, joined to closed polygons: round the outside, and round every cell. A side ends in a corner
// where the next wall begins, counter-clockwise from it. Walls that go on are mitred, ends are square.
class side_walk {
 public:
  explicit side_walk(const wall_section& s) : section_(s) {
    for (const wall& w : s.walls) {
      if (!(w.thickness > 0)) continue;
      sides_.push_back({w.from, w.to, w.thickness / 2, false});
      sides_.push_back({w.to, w.from, w.thickness / 2, false});
    }
  }

  section_outline polygons() {
    section_outline all;
    for (std::size_t start = 0; start < sides_.size(); ++start) {
      if (!sides_[start].done) all.push_back(walk(start));
    }
    // The outside is run through in the positive sense, cells in the other; of walls that hang together there is one
    // outside.
    std::stable_sort(all.begin(), all.end(),
                     [](const polygon& a, const polygon& b) { return area_of(a) > area_of(b); });
    return all;
  }

 private:
  plane_point along(const wall_side& s) const {
    const plane_point &a = section_.corners[s.from], &b = section_.corners[s.to];
    const double length = std::hypot(b[0] - a[0], b[1] - a[1]);
    return {(b[0] - a[0]) / length, (b[1] - a[1]) / length};
  }

  // The side that leaves the corner where this one ends, first counter-clockwise from the way back.
  std::size_t next_of(std::size_t now) const {
    const plane_point d = along(sides_[now]);
    std::size_t best = now;
    double least = 10;
    for (std::size_t k = 0; k < sides_.size(); ++k) {
      if (sides_[k].from != sides_[now].to) continue;
      const plane_point e = along(sides_[k]);
      // From -d to e, above 0: the way back itself comes last.
      double angle = std::atan2(d[1] * e[0] - d[0] * e[1], -(d[0] * e[0] + d[1] * e[1]));
      if ((k ^ 1U) == now) angle = 2 * PI;
      if (angle <= 0) angle += 2 * PI;
      if (angle >= least) continue;
      least = angle;
      best = k;
    }
    return best;
  }

  // The outer side lies to the right of the way.
  static plane_point beside(const plane_point& corner, const plane_point& d, double half) {
    return {corner[0] + half * d[1], corner[1] - half * d[0]};
  }

  void turn(const wall_side& now, const wall_side& next, polygon& corners) const {
    constexpr double STRAIGHT = 1e-6, SHARPEST = 8;  // a mitre is no longer than this many half thicknesses
    const plane_point d = along(now), e = along(next), &at = section_.corners[now.to];
    const plane_point a = beside(at, d, now.half), b = beside(at, e, next.half);
    const double sine = d[0] * e[1] - d[1] * e[0];
    if (std::fabs(sine) > STRAIGHT) {
      const double t = ((b[0] - a[0]) * e[1] - (b[1] - a[1]) * e[0]) / sine;
      const plane_point mitre = {a[0] + t * d[0], a[1] + t * d[1]};
      if (std::hypot(mitre[0] - at[0], mitre[1] - at[1]) <= SHARPEST * std::max(now.half, next.half)) {
        corners.push_back(mitre);
        return;
      }
    }
    corners.push_back(a);
    if (std::hypot(b[0] - a[0], b[1] - a[1]) > STRAIGHT * now.half) corners.push_back(b);
  }

  polygon walk(std::size_t start) {
    polygon corners;
    for (std::size_t now = start; !sides_[now].done;) {
      sides_[now].done = true;
      const std::size_t next = next_of(now);
      turn(sides_[now], sides_[next], corners);
      now = next;
    }
    return corners;
  }

  const wall_section& section_;
  std::vector<wall_side> sides_;
};

}  // namespace

section_outline rectangle_outline(double a, double b) { return {rectangle(-a / 2, a / 2, -b / 2, b / 2)}; }

section_outline ellipse_outline(double p, double q) { return {ellipse(p, q)}; }

section_outline pipe_outline(double radius, double wall) {
  return {ellipse(radius, radius), ellipse(radius - wall, radius - wall)};
}

section_outline box_outline(double a, double b, const std::array<double, 4>& t) {
  return {rectangle(-a / 2, a / 2, -b / 2, b / 2), rectangle(t[2] - a / 2, a / 2 - t[0], t[3] - b / 2, b / 2 - t[1])};
}

section_outline i_outline(const i_data& d) {
  const double low = -d.l, high = d.depth - d.l, web = d.web / 2;
  const double inner_low = low + d.flange_below, inner_high = high - d.flange_above;
  const double below = d.width_below / 2, above = d.width_above / 2;
  polygon right;
  if (below > 0) right.insert(right.end(), {{below, low}, {below, inner_low}});
  right.insert(right.end(), {{web, inner_low}, {web, inner_high}});
  if (above > 0) right.insert(right.end(), {{above, inner_high}, {above, high}});
  polygon all = right;
  for (auto p = right.rbegin(); p != right.rend(); ++p) all.push_back({-(*p)[0], (*p)[1]});
  return {all};
}

section_outline l_outline(double a, double b, double t1, double t2) {
  const double left = -t2 / 2, below = -t1 / 2;
  return {
      {{left, below}, {left + a, below}, {left + a, t1 / 2}, {t2 / 2, t1 / 2}, {t2 / 2, below + b}, {left, below + b}}};
}

section_outline hexagon_outline(double radius, double wall) {
  return {hexagon(radius), hexagon(radius - 2 * wall / std::sqrt(3.0))};
}

section_outline walls_outline(const wall_section& walls) { return side_walk(walls).polygons(); }

}  // namespace solver::deck
