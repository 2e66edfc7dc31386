// solids_support.cpp: solids for the tests of the plain calls.
#include "solids_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace plain_solids {

namespace {

// Corners of the straight element, (x, y, z) of 0 or 1.
const std::vector<point>& corners(int nodes) {
  static const std::vector<point> brick = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                           {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  static const std::vector<point> wedge = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
  static const std::vector<point> tetra = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  return nodes == 8 ? brick : nodes == 6 ? wedge : tetra;
}

// The map's functions at (x, y, z), each 0 to 1, and their derivatives, from the corners alone.
using real = long double;

struct function {
  real d[3];
};

function slopes(int nodes, int k, real x, real y, real z) {
  const point& c = corners(nodes)[static_cast<std::size_t>(k)];
  const auto along = [](double corner, real t) { return corner > 0.5 ? t : 1 - t; };
  const auto sign = [](double corner) { return corner > 0.5 ? real(1) : real(-1); };
  if (nodes == 8) {
    return {{sign(c[0]) * along(c[1], y) * along(c[2], z), along(c[0], x) * sign(c[1]) * along(c[2], z),
             along(c[0], x) * along(c[1], y) * sign(c[2])}};
  }
  const real L = nodes == 6 ? 1 - x - y : 1 - x - y - z;
  const int corner = nodes == 6 ? k % 3 : k;
  const real value = corner == 0 ? L : corner == 1 ? x : corner == 2 ? y : z;
  const real dx = corner == 0 ? -1 : corner == 1 ? 1 : 0;
  const real dy = corner == 0 ? -1 : corner == 2 ? 1 : 0;
  if (nodes == 4) return {{dx, dy, real(corner == 0 ? -1 : corner == 3 ? 1 : 0)}};
  return {{dx * along(c[2], z), dy * along(c[2], z), value * sign(c[2])}};
}

real determinant(const finites_solid& solid, real x, real y, real z) {
  real J[3][3] = {};
  for (int k = 0; k < solid.nodes; ++k) {
    const function f = slopes(solid.nodes, k, x, y, z);
    for (int d = 0; d < 3; ++d) {
      for (int i = 0; i < 3; ++i) J[d][i] += f.d[d] * real(solid.xyz[k][i]);
    }
  }
  return J[0][0] * (J[1][1] * J[2][2] - J[1][2] * J[2][1]) - J[0][1] * (J[1][0] * J[2][2] - J[1][2] * J[2][0]) +
         J[0][2] * (J[1][0] * J[2][1] - J[1][1] * J[2][0]);
}

template <class CALL>
std::vector<double> answer(int size, CALL call) {
  std::vector<double> out(static_cast<std::size_t>(size), std::nan(""));
  EXPECT_EQ(call(out.data()), FINITES_OK);
  return out;
}

}  // namespace

finites_solid straight(int nodes) { return block(nodes, 1.0, 1.0, 1.0); }

finites_solid block(int nodes, double a, double b, double c) {
  finites_solid solid;
  finites_solid_init(&solid);
  solid.nodes = nodes;
  for (int k = 0; k < nodes; ++k) {
    const point& corner = corners(nodes)[static_cast<std::size_t>(k)];
    solid.xyz[k][0] = a * corner[0];
    solid.xyz[k][1] = b * corner[1];
    solid.xyz[k][2] = c * corner[2];
  }
  solid.E = 210000.0;
  solid.nu = 0.3;
  solid.density = 7.85e-9;
  solid.expansion = 1.2e-5;
  return solid;
}

finites_solid random_solid(seeded_random& random, int nodes) {
  finites_solid solid = block(nodes, random.uniform(1, 3), random.uniform(1, 3), random.uniform(1, 3));
  const support::rotation R = support::random_rotation(random);
  const point shift{random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2)};
  for (int k = 0; k < nodes; ++k) {
    point x{};
    for (std::size_t i = 0; i < 3; ++i) x[i] = solid.xyz[k][i] + random.uniform(-0.12, 0.12);
    x = support::rotate(R, x);
    for (std::size_t i = 0; i < 3; ++i) solid.xyz[k][i] = x[i] + shift[i];
  }
  solid.E = random.log_uniform(1e3, 1e6);
  solid.nu = random.uniform(-0.3, 0.45);
  solid.density = random.log_uniform(1e-9, 1e4);
  solid.expansion = random.uniform(-1e-5, 2e-5);
  solid.stiffness_factor = static_cast<double>(static_cast<float>(random.uniform(0.3, 1.7)));
  return solid;
}

support::solid_description described(const finites_solid& solid) {
  support::solid_description d;
  for (int k = 0; k < solid.nodes; ++k) d.nodes.push_back({solid.xyz[k][0], solid.xyz[k][1], solid.xyz[k][2]});
  d.young = solid.E;
  d.poisson = solid.nu;
  d.unit_weight = solid.density * GRAVITY;
  d.stiff_factor = static_cast<float>(solid.stiffness_factor);
  return d;
}

std::vector<double> linear_field(const finites_solid& solid, const point& a, const gradient& H) {
  std::vector<double> u;
  for (int k = 0; k < solid.nodes; ++k) {
    const double* const x = solid.xyz[k];
    for (std::size_t i = 0; i < 3; ++i) u.push_back(a[i] + H[i][0] * x[0] + H[i][1] * x[1] + H[i][2] * x[2]);
  }
  return u;
}

gradient random_gradient(seeded_random& random, double size) {
  gradient H;
  for (point& row : H) {
    for (double& h : row) h = random.uniform(-size, size);
  }
  return H;
}

gradient hooke(const finites_solid& solid, const gradient& H) {
  const double G = solid.stiffness_factor * solid.E / (2 * (1 + solid.nu));
  const double lambda = 2 * G * solid.nu / (1 - 2 * solid.nu);
  const double trace = H[0][0] + H[1][1] + H[2][2];
  gradient S;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) S[i][j] = G * (H[i][j] + H[j][i]) + (i == j ? lambda * trace : 0.0);
  }
  return S;
}

double volume(const finites_solid& solid) {
  // Gauss on 0 to 1; a triangle is the square folded by y := y (1 - x), a tetrahedron folded once more.
  const real inner = std::sqrt(3.0L / 7 - 2.0L / 7 * std::sqrt(1.2L));
  const real outer = std::sqrt(3.0L / 7 + 2.0L / 7 * std::sqrt(1.2L));
  const real t[4] = {(1 - outer) / 2, (1 - inner) / 2, (1 + inner) / 2, (1 + outer) / 2};
  const real heavy = (18 + std::sqrt(30.0L)) / 72, light = (18 - std::sqrt(30.0L)) / 72;
  const real w[4] = {light, heavy, heavy, light};
  real sum = 0;
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      for (int k = 0; k < 4; ++k) {
        real x = t[i], y = t[j], z = t[k], weight = w[i] * w[j] * w[k];
        if (solid.nodes != 8) {
          weight *= 1 - x;
          y *= 1 - x;
        }
        if (solid.nodes == 4) {
          weight *= 1 - x - y;
          z *= 1 - x - y;
        }
        sum += weight * determinant(solid, x, y, z);
      }
    }
  }
  return static_cast<double>(sum);
}

std::vector<double> stiffness(const finites_solid& solid) {
  return answer(9 * solid.nodes * solid.nodes, [&](double* K) { return finites_solid_stiffness(&solid, K); });
}

std::vector<double> mass(const finites_solid& solid) {
  return answer(9 * solid.nodes * solid.nodes, [&](double* M) { return finites_solid_mass(&solid, M); });
}

std::vector<double> geometric(const finites_solid& solid, const std::vector<double>& u) {
  return answer(9 * solid.nodes * solid.nodes,
                [&](double* KG) { return finites_solid_geometric(&solid, u.data(), KG); });
}

std::vector<double> geometric_of_stresses(const finites_solid& solid,
                                          const std::vector<std::array<double, 6>>& stress) {
  double plain[8][6] = {};
  for (std::size_t p = 0; p < stress.size(); ++p) std::copy(stress[p].begin(), stress[p].end(), plain[p]);
  return answer(9 * solid.nodes * solid.nodes,
                [&](double* KG) { return finites_solid_geometric_of_stresses(&solid, plain, KG); });
}

std::vector<double> forces(const finites_solid& solid, const std::vector<double>& u) {
  return answer(3 * solid.nodes, [&](double* F) { return finites_solid_forces(&solid, u.data(), F); });
}

std::vector<double> body_load(const finites_solid& solid, const point& load) {
  return answer(3 * solid.nodes, [&](double* F) { return finites_solid_body_load(&solid, load.data(), F); });
}

std::vector<double> temperature_load(const finites_solid& solid, double change) {
  return answer(3 * solid.nodes, [&](double* F) { return finites_solid_temperature_load(&solid, change, F); });
}

std::vector<double> face_load(const finites_solid& solid, int face, const point& traction, double pressure) {
  return answer(3 * solid.nodes,
                [&](double* F) { return finites_solid_face_load(&solid, face, traction.data(), pressure, F); });
}

finites_solid_measures measures(const finites_solid& solid) {
  finites_solid_measures m{};
  EXPECT_EQ(finites_solid_measure(&solid, &m), FINITES_OK);
  return m;
}

finites_solid_results results(const finites_solid& solid, const std::vector<double>& u, double temperature) {
  finites_solid_results r{};
  EXPECT_EQ(finites_solid_result(&solid, u.data(), temperature, &r), FINITES_OK);
  return r;
}

}  // namespace plain_solids
