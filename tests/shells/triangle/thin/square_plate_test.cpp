// square_plate_test.cpp: a quarter of a simply supported thin square plate under pressure, assembled from FINITES,
// against Navier's series.
#include <cmath>

#include "comparison.h"
#include "dense.h"
#include "plate_model.h"

namespace {

constexpr double SIDE = 2.0, THICKNESS = 0.01, YOUNG = 2.1e5, POISSON = 0.3, PRESSURE = 1e-3;
constexpr double PI = 3.14159265358979323846;
constexpr int CELLS = 8;  // a quarter's side
constexpr int NODES = CELLS + 1;

int node_at(int i, int j) { return j * NODES + i; }

support::point position(int node) {
  const double step = SIDE / 2.0 / CELLS;
  return {step * (node % NODES), step * (node / NODES), 0.0};
}

// The quarter 0 <= x, y <= SIDE / 2 with the middle of the plate in the origin; two triangles a cell.
std::vector<std::array<int, 3>> triangles() {
  std::vector<std::array<int, 3>> list;
  for (int j = 0; j < CELLS; ++j) {
    for (int i = 0; i < CELLS; ++i) {
      list.push_back({node_at(i, j), node_at(i + 1, j), node_at(i + 1, j + 1)});
      list.push_back({node_at(i, j), node_at(i + 1, j + 1), node_at(i, j + 1)});
    }
  }
  return list;
}

// Held by the supports, the symmetry lines and the plane of the plate. theta x = dw/dy, theta y = -dw/dx.
bool is_held(int node, int freedom) {
  const bool on_x_axis = node / NODES == 0, on_y_axis = node % NODES == 0;
  const bool far_x = node % NODES == CELLS, far_y = node / NODES == CELLS;
  switch (freedom) {
    case 2: return far_x || far_y;
    case 3: return on_x_axis || far_x;
    case 4: return on_y_axis || far_y;
    default: return true;
  }
}

// Middle deflection and middle moment of the series, up to the 199th harmonic.
struct middle_values {
  double deflection, moment;
};

middle_values series() {
  const double D = YOUNG * std::pow(THICKNESS, 3) / (12.0 * (1.0 - POISSON * POISSON));
  middle_values sum{0.0, 0.0};
  for (int m = 1; m < 200; m += 2) {
    for (int n = 1; n < 200; n += 2) {
      const double sign = ((m + n) / 2) % 2 == 1 ? 1.0 : -1.0;
      const double a = m * PI / SIDE, b = n * PI / SIDE;
      const double w = sign * 16.0 * PRESSURE / (PI * PI * m * n) / (D * (a * a + b * b) * (a * a + b * b));
      sum.deflection += w;
      sum.moment += D * w * (a * a + POISSON * b * b);
    }
  }
  return sum;
}

}  // namespace

TEST(SquarePlate, SimplySupportedUnderPressure) {
  const std::vector<std::array<int, 3>> elements = triangles();
  std::vector<support::plate_description> descriptions;
  for (const std::array<int, 3>& nodes : elements) {
    support::plate_description d;
    d.nodes = {position(nodes[0]), position(nodes[1]), position(nodes[2])};
    d.thickness = THICKNESS;
    d.young = YOUNG;
    d.poisson = POISSON;
    descriptions.push_back(d);
  }
  support::plate_model model(descriptions);

  constexpr int unknowns = 6 * NODES * NODES;
  dense::matrix K = dense::matrix::Zero(unknowns, unknowns);
  dense::column f = dense::column::Zero(unknowns);
  const auto place = [&elements](std::size_t e, int i) {
    return 6 * elements[e].at(static_cast<std::size_t>(i / 6)) + i % 6;
  };
  for (std::size_t e = 0; e < elements.size(); ++e) {
    const int elem = static_cast<int>(e) + 1;
    const std::vector<double> Ke = model.stiffness(elem), fe = model.loads(4, elem, {0.0, 0.0, PRESSURE});
    for (int j = 0; j < 18; ++j) {
      f(place(e, j)) += fe[static_cast<std::size_t>(j)];
      for (int i = 0; i < 18; ++i) K(place(e, i), place(e, j)) += Ke[static_cast<std::size_t>(18 * j + i)];
    }
  }
  double all = 0.0;
  for (int node = 0; node < NODES * NODES; ++node) all += static_cast<double>(f(6 * node + 2));
  EXPECT_CLOSE(all, PRESSURE * SIDE * SIDE / 4.0, PRESSURE * SIDE * SIDE, 100);
  for (int node = 0; node < NODES * NODES; ++node) {
    for (int freedom = 0; freedom < 6; ++freedom) {
      if (!is_held(node, freedom)) continue;
      const int at = 6 * node + freedom;
      K.row(at).setZero();
      K.col(at).setZero();
      K(at, at) = 1.0;
      f(at) = 0.0;
    }
  }
  const std::vector<double> u = dense::listed(dense::solve_definite(K, f));

  const middle_values exact = series();
  EXPECT_WITHIN(u[2], exact.deflection, exact.deflection, 0.005);
  std::vector<double> first;
  for (int i = 0; i < 18; ++i) first.push_back(u[static_cast<std::size_t>(place(0, i))]);
  const support::plate_results results = model.results(1, first);
  EXPECT_WITHIN(results.nodes[39], exact.moment, exact.moment, 0.02);
}
