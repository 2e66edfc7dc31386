// solid_cases.cpp: seeded solids and the calls of internal routines on them.
#include "solid_cases.h"

#include <cmath>

#include "reference_solid.h"

namespace solid_cases {

namespace {

// Natural coordinates stretched to the edges of the element.
std::vector<point> straight_nodes(int nodes, const point& scale) {
  const reference::matrix XI = reference::node_coordinates(reference::kind_of(nodes));
  std::vector<point> out;
  for (dense::index k = 0; k < XI.cols(); ++k) {
    point node{};
    for (std::size_t i = 0; i < 3; ++i) node[i] = scale[i] * static_cast<double>(XI(static_cast<dense::index>(i), k));
    out.push_back(node);
  }
  return out;
}

}  // namespace

solid_description random_solid(seeded_random& random, int nodes) {
  solid_description d;
  d.nodes = straight_nodes(nodes, {random.uniform(0.5, 1.5), random.uniform(0.5, 1.5), random.uniform(0.5, 1.5)});
  for (point& node : d.nodes) {
    for (double& x : node) x += random.uniform(-0.12, 0.12);
  }
  d.young = random.log_uniform(1e3, 1e6);
  d.poisson = random.uniform(0.0, 0.4);
  d.unit_weight = random.log_uniform(1e-5, 1e2);
  d.stiff_factor = static_cast<float>(random.uniform(0.3, 1.7));
  const point shift{random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2)};
  return turned(d, support::random_rotation(random), shift);
}

solid_description box(double x, double y, double z) {
  solid_description d;
  d.nodes = {{0, 0, 0}, {x, 0, 0}, {x, y, 0}, {0, y, 0}, {0, 0, z}, {x, 0, z}, {x, y, z}, {0, y, z}};
  return d;
}

solid_description corner_tetrahedron(double edge) {
  solid_description d;
  d.nodes = {{0, 0, 0}, {edge, 0, 0}, {0, edge, 0}, {0, 0, edge}};
  return d;
}

solid_description turned(const solid_description& d, const support::rotation& R, const point& shift) {
  solid_description out = d;
  for (point& node : out.nodes) {
    node = support::rotate(R, node);
    for (std::size_t i = 0; i < 3; ++i) node[i] += shift[i];
  }
  return out;
}

std::vector<double> random_place(seeded_random& random, int kind) {
  const double z = random.uniform(-1, 1);
  if (kind == 10 || kind == 20 || kind == 21) return {random.uniform(-1, 1), random.uniform(-1, 1), z};
  const double xi = random.uniform(0, 1), eta = random.uniform(0, 1 - xi);
  if (kind == 13 || kind == 24) return {xi, eta, random.uniform(0, 1 - xi - eta)};
  return {xi, eta, z};
}

std::vector<double> linear_field(const solid_description& d, const point& a, const std::array<point, 3>& H) {
  std::vector<double> u;
  for (const point& x : d.nodes) {
    const point Hx = support::rotate(H, x);
    for (std::size_t i = 0; i < 3; ++i) u.push_back(a[i] + Hx[i]);
  }
  return u;
}

std::vector<double> shape(int kind, const std::vector<double>& p) {
  const int n = reference::node_count(kind);
  SOLID_FUNCTIONS N{};
  SOLID_SHAPE(kind, p[0], p[1], p[2], n, N);
  return std::vector<double>(N.data(), N.data() + n);
}

std::vector<double> shape_derivatives(int kind, const std::vector<double>& p) {
  const int n = reference::node_count(kind);
  SOLID_DERIVATIVES DN{};
  SOLID_SHAPE_DERIV(p[0], p[1], p[2], kind, n, DN);
  return std::vector<double>(DN.data(), DN.data() + 3 * n);
}

SOLID_VECTORS coordinates(const std::vector<point>& nodes) {
  SOLID_VECTORS XYZ{};
  for (std::size_t k = 0; k < nodes.size(); ++k) {
    for (std::size_t i = 0; i < 3; ++i) XYZ.V[3 * k + i] = nodes[k][i];
  }
  return XYZ;
}

}  // namespace solid_cases
