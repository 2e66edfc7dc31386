// member_cases.cpp: the cases.
#include "member_cases.h"

namespace member_cases {

double random_fixity(seeded_random& random) {
  switch (random.integer(0, 3)) {
    case 0: return 0.0;
    case 1: return 1.0;
    default: return random.uniform(0.02, 0.98);
  }
}

member_description random_beam(seeded_random& random) {
  member_description m;
  m.length = random.uniform(1.0, 6.0);
  m.weight = random.uniform(50.0, 500.0);
  m.area = random.uniform(0.01, 0.05);
  m.shear_area_y = random.uniform(0.004, 0.02);
  m.shear_area_z = random.uniform(0.004, 0.02);
  m.i1 = random.uniform(1e-4, 9e-4);
  m.i2 = random.uniform(1e-4, 9e-4);
  m.j = random.uniform(1e-4, 9e-4);
  m.e1 = random.uniform(1e5, 3e5);
  m.e2 = random.uniform(1e5, 3e5);
  m.g = random.uniform(4e4, 9e4);
  for (double* factor : {&m.factor_area, &m.factor_i1, &m.factor_i2, &m.factor_j, &m.factor_torsion}) {
    *factor = random.uniform(0.3, 1.7);
  }
  return m;
}

member_description random_truss(seeded_random& random) {
  member_description m = random_beam(random);
  m.family = member_family::truss;
  return m;
}

namespace {

void put_block(std::vector<double>& T, const support::rotation& R, std::size_t first) {
  for (std::size_t j = 0; j < 3; ++j) {
    for (std::size_t i = 0; i < 3; ++i) T[12 * (first + j) + first + i] = R[i][j];
  }
}

}  // namespace

std::vector<double> node_rotation(const support::rotation& R) {
  std::vector<double> T(144, 0.0);
  for (std::size_t b = 0; b < 12; b += 3) put_block(T, R, b);
  return T;
}

std::vector<double> block_rotation(seeded_random& random) {
  std::vector<double> T(144, 0.0);
  for (std::size_t b = 0; b < 12; b += 3) put_block(T, support::random_rotation(random), b);
  return T;
}

std::vector<double> full_transformation(seeded_random& random) { return random.vector(144, 1.0); }

}  // namespace member_cases
