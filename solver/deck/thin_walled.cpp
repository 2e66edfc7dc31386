// thin_walled.cpp: shear flow and torsion of thin walls, open, closed or both.
//
// In a beam that does not twist the shear strain of a wall is the slope of the warping displacement w along its middle
// line, one value for every corner: the flow is q = G t dw/ds. Bending stresses that grow along the beam,
//     d sigma / dx = a x1 + b x2    with    I22 a + I12 b = V1,    I12 a + I11 b = V2,
// feed it: dq/ds = -t d sigma / dx. Flows balance in corners, and round a cell the slopes add up to 0 by themselves.
// This is a chain of bars with an axial load, whose nodal equations are exact; q follows within each wall. A twist of
// rate 1 adds the distance r of the wall from the pole to the slope: q = G t (dw/ds + r), without any load.
//
// Textbook formulas are special cases: the first moment divided by I t, Bredt's J of a cell, e = 3 b^2 / (h + 6 b) ...
// of a channel. The flexibility is the energy, the integral of q^2 / t for a force 1 (V. Z. Vlasov 1961, S. Timoshenko
// and J. Goodier 1951).
#include "deck/thin_walled.h"

#include <algorithm>
#include <cmath>

#include <Eigen/Dense>

namespace solver::deck {

namespace {

// A wall with what the integrals along it need; places from the centroid.
struct strip {
  int from, to;
  double t, length;
  plane_point first, second;

  // Distance of the middle line from the pole, the right hand about the axis of the beam.
  double distance() const { return (first[0] * second[1] - first[1] * second[0]) / length; }
};

double cubed(double x) { return x * x * x; }

std::vector<strip> strips_of(const wall_section& s, const plane_point& pole) {
  std::vector<strip> all;
  for (const wall& w : s.walls) {
    strip each{w.from, w.to, w.thickness, 0, s.corners[w.from], s.corners[w.to]};
    for (std::size_t i = 0; i < 2; ++i) {
      each.first[i] -= pole[i];
      each.second[i] -= pole[i];
    }
    each.length = std::hypot(each.second[0] - each.first[0], each.second[1] - each.first[1]);
    all.push_back(each);
  }
  return all;
}

// The integral of t x_i x_j along the middle line.
double product_of(const strip& w, std::size_t i, std::size_t j) {
  const double a = w.first[i], b = w.second[i], c = w.first[j], d = w.second[j];
  return w.t * w.length * (2 * a * c + 2 * b * d + a * d + b * c) / 6;
}

struct inertia {
  double I11 = 0, I22 = 0, I12 = 0;
};

inertia of_lines(const std::vector<strip>& walls) {
  inertia sum;
  for (const strip& w : walls) {
    sum.I11 += product_of(w, 1, 1);
    sum.I22 += product_of(w, 0, 0);
    sum.I12 += product_of(w, 0, 1);
  }
  return sum;
}

// What the thickness of the strips adds: t^3 L / 12 across the line.
inertia of_thickness(const std::vector<strip>& walls) {
  inertia sum;
  for (const strip& w : walls) {
    const double n1 = -(w.second[1] - w.first[1]) / w.length, n2 = (w.second[0] - w.first[0]) / w.length;
    const double own = w.length * cubed(w.t) / 12;
    sum.I11 += own * n2 * n2;
    sum.I22 += own * n1 * n1;
    sum.I12 += own * n1 * n2;
  }
  return sum;
}

// Flow over G in a wall, s from 0 to 1 along it:  q = q0 - t L (g0 s + (g1 - g0) s^2 / 2), the load being g by ends.
struct flow {
  double q0 = 0, g0 = 0, g1 = 0;
  double at(const strip& w, double s) const { return q0 - w.t * w.length * (g0 * s + (g1 - g0) * s * s / 2); }
};

// Integrals over a wall of polynomials up to the fourth degree: Gauss, three points.
template <class F>
double along(const strip& w, const F& f) {
  const double g = std::sqrt(0.15);
  return w.length * (5 * f(0.5 - g) + 8 * f(0.5) + 5 * f(0.5 + g)) / 18;
}

class warping {
 public:
  warping(const std::vector<strip>& walls, int corners) : walls_(walls), corners_(corners) {
    Eigen::MatrixXd K = Eigen::MatrixXd::Zero(corners, corners);
    for (const strip& w : walls_) {
      const double k = w.t / w.length;
      K(w.from, w.from) += k;
      K(w.to, w.to) += k;
      K(w.from, w.to) -= k;
      K(w.to, w.from) -= k;
    }
    K(0, 0) *= 2;  // warping counts from one corner
    solver_.compute(K);
  }

  // Under d sigma / dx = a x1 + b x2.
  std::vector<flow> under_shear(double a, double b) const {
    std::vector<flow> flows;
    Eigen::VectorXd load = Eigen::VectorXd::Zero(corners_);
    for (const strip& w : walls_) {
      flow f;
      f.g0 = a * w.first[0] + b * w.first[1];
      f.g1 = a * w.second[0] + b * w.second[1];
      load(w.from) += w.t * w.length * (2 * f.g0 + f.g1) / 6;
      load(w.to) += w.t * w.length * (f.g0 + 2 * f.g1) / 6;
      flows.push_back(f);
    }
    const Eigen::VectorXd x = solver_.solve(load);
    for (std::size_t i = 0; i < flows.size(); ++i) {
      const strip& w = walls_[i];
      flow& f = flows[i];
      // The mean flow is t (w1 - w0) / L; the load takes L t (2 g0 + g1) / 6 of it to the start.
      f.q0 = w.t * (x(w.to) - x(w.from)) / w.length + w.t * w.length * (2 * f.g0 + f.g1) / 6;
    }
    return flows;
  }

  // Constant flows of a twist 1 about the pole.
  std::vector<flow> under_twist() const {
    Eigen::VectorXd load = Eigen::VectorXd::Zero(corners_);
    for (const strip& w : walls_) {
      load(w.from) += w.t * w.distance();
      load(w.to) -= w.t * w.distance();
    }
    const Eigen::VectorXd x = solver_.solve(load);
    std::vector<flow> flows;
    for (const strip& w : walls_) flows.push_back({w.t * ((x(w.to) - x(w.from)) / w.length + w.distance()), 0, 0});
    return flows;
  }

  double moment(const std::vector<flow>& flows) const {
    double sum = 0;
    for (std::size_t i = 0; i < flows.size(); ++i) {
      const strip& w = walls_[i];
      sum += w.distance() * along(w, [&](double s) { return flows[i].at(w, s); });
    }
    return sum;
  }

  double energy(const std::vector<flow>& one, const std::vector<flow>& other) const {
    double sum = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
      const strip& w = walls_[i];
      sum += along(w, [&](double s) { return one[i].at(w, s) * other[i].at(w, s); }) / w.t;
    }
    return sum;
  }

 private:
  const std::vector<strip>& walls_;
  int corners_;
  Eigen::LDLT<Eigen::MatrixXd> solver_;
};

// Walls on one line resist no force across it.
bool spans_a_plane(const inertia& lines) {
  constexpr double ON_A_LINE = 1e-9;
  const double determinant = lines.I11 * lines.I22 - lines.I12 * lines.I12, sum = lines.I11 + lines.I22;
  return determinant > ON_A_LINE * sum * sum;
}

void add_shear(const warping& w, const inertia& lines, wall_constants& c) {
  if (!spans_a_plane(lines)) return;
  const double determinant = lines.I11 * lines.I22 - lines.I12 * lines.I12;
  const std::vector<flow> first = w.under_shear(lines.I11 / determinant, -lines.I12 / determinant);
  const std::vector<flow> second = w.under_shear(-lines.I12 / determinant, lines.I22 / determinant);
  c.flexibility = {w.energy(first, first), w.energy(second, second), w.energy(first, second)};
  // The moment of a force (V1, V2) at (s1, s2) is s1 V2 - s2 V1.
  c.shear_centre[0] += w.moment(second);
  c.shear_centre[1] -= w.moment(first);
}

}  // namespace

int wall_section::corner(const plane_point& at, double near) {
  const auto found = std::find_if(corners.begin(), corners.end(),
                                  [&](const plane_point& p) { return std::hypot(p[0] - at[0], p[1] - at[1]) <= near; });
  if (found != corners.end()) return number_of(static_cast<std::size_t>(found - corners.begin()));
  corners.push_back(at);
  return count_of(corners) - 1;
}

void wall_section::add(const plane_point& from, const plane_point& to, double thickness, double near) {
  const int first = corner(from, near), second = corner(to, near);
  if (first != second && thickness > 0) walls.push_back({first, second, thickness});
}

bool hangs_together(const wall_section& s) {
  numbered<char> reached(s.corners.size(), 0);
  if (s.walls.empty()) return false;
  reached[s.walls.front().from] = 1;
  for (bool more = true; more;) {
    more = false;
    for (const wall& w : s.walls) {
      if (reached[w.from] == reached[w.to]) continue;
      reached[w.from] = reached[w.to] = 1;
      more = true;
    }
  }
  return std::all_of(s.walls.begin(), s.walls.end(), [&](const wall& w) { return reached[w.from] != 0; });
}

wall_constants constants_of(const wall_section& s) {
  wall_section used;  // without corners that no wall has
  for (const wall& w : s.walls) used.add(s.corners[w.from], s.corners[w.to], w.thickness);
  wall_constants c;
  for (const strip& w : strips_of(used, {})) {
    c.area += w.t * w.length;
    for (std::size_t i = 0; i < 2; ++i) c.centroid[i] += w.t * w.length * (w.first[i] + w.second[i]) / 2;
  }
  for (double& part : c.centroid) part /= c.area;
  const std::vector<strip> walls = strips_of(used, c.centroid);
  const inertia lines = of_lines(walls), thickness = of_thickness(walls);
  c.I11 = lines.I11 + thickness.I11;
  c.I22 = lines.I22 + thickness.I22;
  c.I12 = lines.I12 + thickness.I12;
  const warping w(walls, count_of(used.corners));
  c.torsion_of_cells = w.moment(w.under_twist());
  for (const strip& each : walls) c.torsion_of_strips += each.length * cubed(each.t) / 3;
  c.shear_centre = c.centroid;
  add_shear(w, lines, c);
  return c;
}

}  // namespace solver::deck
