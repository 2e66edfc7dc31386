// member_cases.cpp: the cases.
#include "member_cases.h"

#include <gtest/gtest.h>

namespace plain_members {

namespace {

double random_fixity(seeded_random& random) {
  const int choice = random.integer(0, 3);
  return choice == 0 ? 0.0 : choice == 1 ? 1.0 : random.uniform(0.05, 0.95);
}

void place(seeded_random& random, double (&xyz)[2][3]) {
  for (int i = 0; i < 3; ++i) {
    xyz[0][i] = random.uniform(-5.0, 5.0);
    xyz[1][i] = xyz[0][i] + random.uniform(1.0, 4.0) * (random.integer(0, 1) == 0 ? -1.0 : 1.0);
  }
}

}  // namespace

finites_beam random_beam(seeded_random& random) {
  finites_beam b;
  finites_beam_init(&b);
  place(random, b.xyz);
  if (random.integer(0, 1) == 0) {
    for (double& u : b.up) u = random.uniform(-1.0, 1.0);
  }
  if (random.integer(0, 1) == 0) {
    for (auto& end : b.offset) {
      for (double& o : end) o = random.uniform(-0.3, 0.3);
    }
  }
  b.E = random.uniform(1e5, 3e5);
  b.E2 = random.integer(0, 1) == 0 ? 0.0 : random.uniform(1e5, 3e5);
  b.G = random.uniform(4e4, 1e5);
  b.area = random.uniform(0.005, 0.05);
  b.Iz = random.uniform(5e-5, 5e-4);
  b.Iy = random.uniform(5e-5, 5e-4);
  b.J = random.uniform(5e-5, 5e-4);
  b.shear_area_y = random.integer(0, 2) == 0 ? 0.0 : b.area * random.uniform(0.3, 0.9);
  b.shear_area_z = random.integer(0, 2) == 0 ? 0.0 : b.area * random.uniform(0.3, 0.9);
  b.expansion = 1.2e-5;
  if (random.integer(0, 2) > 0) {
    for (int end = 0; end < 2; ++end) {
      b.fixity_z[end] = random_fixity(random);
      b.fixity_y[end] = random_fixity(random);
    }
  }
  if (random.integer(0, 2) == 0) {
    for (std::int32_t* code : {&b.release_axial, &b.release_y, &b.release_z, &b.release_torsion}) {
      *code = random.integer(0, 2);
    }
  }
  return b;
}

finites_truss random_truss(seeded_random& random) {
  finites_truss t;
  finites_truss_init(&t);
  place(random, t.xyz);
  t.E = random.uniform(1e5, 3e5);
  t.area = random.uniform(0.005, 0.05);
  t.expansion = 1.2e-5;
  return t;
}

finites_beam plain_beam(double L) {
  finites_beam b;
  finites_beam_init(&b);
  b.xyz[1][0] = L;
  b.E = 2.0e5;
  b.G = 8.0e4;
  b.area = 0.02;
  b.Iz = 3.0e-4;
  b.Iy = 1.0e-4;
  b.J = 2.0e-4;
  b.density = 7.8;
  b.expansion = 1.0e-5;
  return b;
}

member_description protocol_beam(const finites_beam& b) {
  member_description m;
  m.length = measures_of(b).length;
  m.fixity_y = {b.fixity_y[0], b.fixity_y[1]};
  m.fixity_z = {b.fixity_z[0], b.fixity_z[1]};
  m.release = {b.release_axial, b.release_y, b.release_z, b.release_torsion};
  m.area = b.area;
  m.shear_area_y = b.shear_area_y;
  m.shear_area_z = b.shear_area_z;
  m.i1 = b.Iz;
  m.i2 = b.Iy;
  m.j = b.J;
  m.e1 = b.E;
  m.e2 = b.E2 > 0.0 ? b.E2 : b.E;
  m.g = b.G;
  return m;
}

member_description protocol_truss(const finites_truss& t) {
  member_description m;
  m.family = support::member_family::truss;
  m.length = measures_of(t).length;
  m.area = t.area;
  m.e1 = t.E;
  return m;
}

std::vector<double> rotation_of(const finites_member_measures& measures) {
  std::vector<double> T(144, 0.0);
  for (std::size_t block = 0; block < 12; block += 3) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) T[12 * (block + j) + block + i] = measures.axes[i][j];
    }
  }
  return T;
}

// The end moves with u + theta x o.
std::vector<double> links_of(const finites_beam& beam) {
  std::vector<double> T2 = support::unit_rotation();
  for (std::size_t end = 0; end < 2; ++end) {
    const auto entry = [&](std::size_t i, std::size_t j) -> double& { return T2[12 * (6 * end + j) + 6 * end + i]; };
    const double* o = beam.offset[end];
    entry(0, 4) = o[2];
    entry(0, 5) = -o[1];
    entry(1, 3) = -o[2];
    entry(1, 5) = o[0];
    entry(2, 3) = o[1];
    entry(2, 4) = -o[0];
  }
  return T2;
}

finites_member_measures measures_of(const finites_beam& beam) {
  finites_member_measures m{};
  EXPECT_EQ(finites_beam_measure(&beam, &m), FINITES_OK);
  return m;
}

finites_member_measures measures_of(const finites_truss& truss) {
  finites_member_measures m{};
  EXPECT_EQ(finites_truss_measure(&truss, &m), FINITES_OK);
  return m;
}

// Not every number is such a product and such a quotient too, but the next will be.
same_mass find_mass(seeded_random& random, double volume, double gravity) {
  for (int trial = 0; trial < 1000; ++trial) {
    const double weight = random.uniform(10.0, 500.0);
    const double density = weight / gravity / volume;
    if (density * volume == weight / gravity) return {weight, density};
  }
  ADD_FAILURE() << "no mass of both";
  return {0.0, 0.0};
}

}  // namespace plain_members
