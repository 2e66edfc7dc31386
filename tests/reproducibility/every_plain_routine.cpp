// every_plain_routine.cpp: integration points, principal stresses, releases, yield curves and the products of hinges.
#include "every_plain_routine.h"

#include <cmath>
#include <string>
#include <vector>

#include "finites/finites.h"

namespace every_call {

namespace {

using support::seeded_random;

void call_point(seeded_random random, int elem, listener& to) {
  const std::vector<double> xyz = random.vector(12, 10.0);
  const std::int32_t rule = 1 + elem % 3, point = 1 + elem % 4, nodes = 3 + elem % 2;
  std::vector<double> out = unwritten(12);
  double* o = out.data();
  observed written;
  written.watch(out);
  tell_repeated(to, "GAUSS_INT_2D", tag("nodes", nodes) + " " + tag("rule", rule), written, [&] {
    GAUSS_INT_2D(&rule, &point, &nodes, xyz.data(), o, o + 1, o + 2, o + 3, o + 4, o + 5, o + 6, o + 7, o + 8, o + 9,
                 o + 10, o + 11);
  });
}

void call_principal_values(seeded_random random, listener& to) {
  std::vector<double> record = random.vector(100, 1000.0);
  std::vector<float> narrow(record.begin(), record.end());
  std::vector<double> solid = random.vector(50, 1000.0);
  std::vector<float> narrow_solid(solid.begin(), solid.end());
  observed a, b, c, d;
  a.watch(record);
  b.watch(narrow.data(), 100);
  c.watch(solid);
  d.watch(narrow_solid.data(), 50);
  tell(to, "UPDATE_PRINCIPAUX_RES100_PLA_DBL", "", a, [&] { UPDATE_PRINCIPAUX_RES100_PLA_DBL(record.data()); });
  tell(to, "UPDATE_PRINCIPAUX_RES100_PLA", "", b, [&] { UPDATE_PRINCIPAUX_RES100_PLA(narrow.data()); });
  tell(to, "UPDATE_PRINCIPAUX_RES50_SOLID_DBL", "", c, [&] { UPDATE_PRINCIPAUX_RES50_SOLID_DBL(solid.data()); });
  tell(to, "UPDATE_PRINCIPAUX_RES50_SOLID", "", d, [&] { UPDATE_PRINCIPAUX_RES50_SOLID(narrow_solid.data()); });
}

// A stiffness: symmetric, with a strong diagonal.
std::vector<double> stiffness(seeded_random& random, int order) {
  const auto n = static_cast<std::size_t>(order);
  std::vector<double> K(n * n);
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t i = 0; i <= j; ++i) K[j * n + i] = K[i * n + j] = random.uniform(-1.0, 1.0);
    K[j * n + j] += static_cast<double>(order);
  }
  return K;
}

void call_releases(seeded_random random, int elem, listener& to) {
  const std::int32_t freedom = 1 + elem % 12, order = 12;
  std::vector<double> K = stiffness(random, order), M = stiffness(random, order);
  const bool bending = freedom % 6 == 5 || freedom % 6 == 0;  // a rotation of bending is dropped
  observed k, m;
  k.watch(K);
  m.watch(M);
  tell(to, "RELEASE_DOF", "", k, [&] { RELEASE_DOF(&freedom, K.data(), &order); });
  tell(to, "RELEASE_DOF_MAS", bending ? ZERO_BY_RULE : tag("freedom", freedom), m,
       [&] { RELEASE_DOF_MAS(&freedom, M.data()); });
}

void call_geometric(seeded_random random, int elem, listener& to) {
  const double P = random.uniform(-30.0, 30.0), L = random.uniform(1.0, 5.0), E1 = random.uniform(1.0, 3.0),
               E2 = random.uniform(1.0, 3.0), I1 = random.uniform(1.0, 5.0), I2 = random.uniform(1.0, 5.0);
  const std::int32_t semi_y = elem % 2, semi_z = elem / 2 % 2, release_y = elem / 4 % 3, release_z = elem / 12 % 3;
  const double fixity[] = {0.0, random.uniform(0.1, 0.9), 1.0};
  const double a1 = fixity[random.integer(0, 2)], b1 = fixity[random.integer(0, 2)];
  const double a2 = fixity[random.integer(0, 2)], b2 = fixity[random.integer(0, 2)];
  std::vector<double> KG = unwritten(144);
  observed written;
  written.watch(KG);
  tell_repeated(to, "KSTIFB_GEOM", tag("semi", semi_y + 2 * semi_z), written, [&] {
    KSTIFB_GEOM(&P, &L, &E1, &E2, &I1, &I2, &semi_y, &semi_z, &release_y, &release_z, &a1, &b1, &a2, &b2, KG.data());
  });
}

// ------------------------------------------------------------------------------------------------ yield curves

struct section_state {
  double CP, CMY, CMZ, P, MY, MZ;
  std::int32_t FS;
};

// Forces near the curve; one of them is sometimes exactly 0, where segments meet.
section_state random_state(seeded_random& random, std::int32_t force_set) {
  section_state s{
      random.uniform(90.0, 110.0), random.uniform(18.0, 22.0), random.uniform(27.0, 33.0), 0.0, 0.0, 0.0, force_set};
  if (random.integer(0, 15) == 0) s.CMY = 0.0;  // no hinge ever forms
  if (random.integer(0, 7) > 0) s.P = s.CP * random.uniform(-0.9, 0.9);
  if (random.integer(0, 7) > 0) s.MY = s.CMY * random.uniform(-0.9, 0.9);
  if (random.integer(0, 7) > 0) s.MZ = s.CMZ * random.uniform(-0.9, 0.9);
  return s;
}

void call_orbison(const section_state& s, listener& to) {
  double phi = -1.0;
  std::vector<double> g = unwritten(3);
  observed value, gradient;
  value.watch(&phi, 1);
  gradient.watch(g);
  tell_repeated(to, "PHI_ORBISON", tag("set", s.FS), value,
                [&] { PHI_ORBISON(&s.CP, &s.CMY, &s.CMZ, &s.FS, &s.P, &s.MY, &s.MZ, &phi); });
  tell_repeated(to, "ORBISON_CURVE_GRADIENT", s.FS == 1 ? ZERO_BY_RULE : tag("set", s.FS), gradient,
                [&] { ORBISON_CURVE_GRADIENT(&s.FS, &s.CP, &s.CMY, &s.CMZ, &s.P, &s.MY, &s.MZ, &g[0], &g[1], &g[2]); });
}

void call_single_forces(section_state s, listener& to) {
  s.FS = 1 + s.FS % 3;
  std::int32_t count = -1, segments[4] = {};
  double phi = -1.0;
  std::vector<double> g = unwritten(3);
  observed chosen, value, gradient;
  chosen.watch(&count, 1);
  chosen.watch(segments, 4);
  tell_repeated(to, "SINGLE_FORCES_SEGMENT_EQUATION", tag("set", s.FS), chosen, [&] {
    SINGLE_FORCES_SEGMENT_EQUATION(&s.CP, &s.CMY, &s.CMZ, &s.FS, &s.P, &s.MY, &s.MZ, &count, segments);
  });
  value.watch(&phi, 1);
  tell_repeated(to, "PHI_SINGLE_FORCES", tag("set", s.FS), value,
                [&] { PHI_SINGLE_FORCES(segments, &s.CP, &s.CMY, &s.CMZ, &s.FS, &s.P, &s.MY, &s.MZ, &phi); });
  gradient.watch(g);
  tell_repeated(to, "SINGLE_FORCES_CURVE_GRADIENT", tag("set", s.FS), gradient, [&] {
    SINGLE_FORCES_CURVE_GRADIENT(&segments[0], &s.FS, &s.CP, &s.CMY, &s.CMZ, &s.P, &s.MY, &s.MZ, &g[0], &g[1], &g[2]);
  });
}

void call_segments(section_state s, listener& to) {
  if (s.FS == 1) s.FS = 7;
  std::int32_t count = -1, segments[4] = {};
  std::vector<double> phi = unwritten(4), g = unwritten(12);
  observed chosen, value, gradient;
  chosen.watch(&count, 1);
  chosen.watch(segments, 4);
  tell_repeated(to, "LINEAR_SEGMENT_EQUATION", tag("set", s.FS), chosen,
                [&] { LINEAR_SEGMENT_EQUATION(&s.CP, &s.CMY, &s.CMZ, &s.FS, &s.P, &s.MY, &s.MZ, &count, segments); });
  value.watch(phi);
  tell_repeated(to, "PHI_LINEAR_SEGMENT", tag("set", s.FS), value,
                [&] { PHI_LINEAR_SEGMENT(segments, &s.CP, &s.CMY, &s.CMZ, &s.FS, &s.P, &s.MY, &s.MZ, phi.data()); });
  gradient.watch(g);
  tell_repeated(to, "LINEAR_SEGMENT_GRADIENT", tag("set", s.FS), gradient, [&] {
    for (std::size_t i = 0; i < 4; ++i) {
      LINEAR_SEGMENT_GRADIENT(&s.FS, &segments[i], &s.CP, &s.CMY, &s.CMZ, &s.P, &s.MY, &s.MZ, &g[3 * i], &g[3 * i + 1],
                              &g[3 * i + 2]);
    }
  });
}

// ------------------------------------------------------------------------------------------------ products of hinges

void call_blocks(const std::vector<double>& K, listener& to) {
  std::vector<double> blocks = unwritten(4 * 36);
  observed written;
  written.watch(blocks);
  double* b = blocks.data();
  tell_repeated(to, "DECOMPOSE_KSTIF", "", written, [&] { DECOMPOSE_KSTIF(K.data(), b, b + 36, b + 72, b + 108); });
}

void call_one_end(seeded_random& random, std::int32_t equations, listener& to) {
  const std::vector<double> K1 = stiffness(random, 6), K2 = stiffness(random, 6), N = random.vector(6 * equations, 1.0),
                            D1 = random.vector(6, 1e-2), D2 = random.vector(6, 1e-2);
  std::vector<double> beta(static_cast<std::size_t>(equations * equations), 0.0), out = unwritten(equations);
  std::int32_t ierr = -1;
  observed inverse, multipliers;
  inverse.watch(beta);
  inverse.watch(&ierr, 1);
  tell(to, "CALCULATE_MAT_BETA_INVERSE", tag("equations", equations), inverse,
       [&] { CALCULATE_MAT_BETA_INVERSE(K1.data(), N.data(), &equations, beta.data(), &ierr); });
  multipliers.watch(out);
  const std::vector<double> of_three = random.vector(equations * equations, 1.0);
  const double* B = equations > 2 ? of_three.data() : beta.data();  // two equations at most have an inverse
  tell_repeated(to, "MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE", tag("equations", equations), multipliers, [&] {
    MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(K1.data(), K2.data(), N.data(), &equations, B, D1.data(), D2.data(), out.data());
  });
}

void call_both_ends(seeded_random& random, const std::vector<double>& K, std::int32_t equations, listener& to) {
  const std::vector<double> N = random.vector(12 * equations, 1.0);
  std::vector<double> G = unwritten(12 * equations);
  std::int32_t ierr = -1;
  observed written;
  written.watch(G);
  written.watch(&ierr, 1);
  tell_repeated(to, "MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES", tag("equations", equations), written,
                [&] { MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K.data(), N.data(), &equations, G.data(), &ierr); });
}

void call_products(seeded_random random, int elem, listener& to) {
  const std::vector<double> K = stiffness(random, 12);
  call_blocks(K, to);
  call_one_end(random, 1 + elem % 3, to);
  call_both_ends(random, K, 1 + elem % 6, to);
}

}  // namespace

void call_plain_routines(const analysis& a, int elem, listener& to) {
  call_point(numbers_of(a, elem, POINT_NUMBERS), elem, to);
  call_principal_values(numbers_of(a, elem, RECORD_NUMBERS), to);
  call_releases(numbers_of(a, elem, MATRIX_NUMBERS), elem, to);
  call_geometric(numbers_of(a, elem, MATRIX_NUMBERS), elem, to);
  seeded_random random = numbers_of(a, elem, CURVE_NUMBERS);
  const section_state s = random_state(random, 1 + elem % 7);
  call_orbison(s, to);
  call_single_forces(s, to);
  call_segments(s, to);
  call_products(numbers_of(a, elem, MATRIX_NUMBERS), elem, to);
}

}  // namespace every_call
