// elements_hpp_test.cpp: the C++ layer over the plain calls: what it takes, what it returns, how it fails. The numbers
// are formulas of mechanics; that an answer is the C call's own is compared bit by bit.
#include "elements_hpp.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

using namespace hpp_test;

namespace {

TEST(ElementsHpp, PlateIsItsStruct) {
  const finites::plate plate = rectangle();
  EXPECT_EQ(plate.nodes, 4);
  EXPECT_EQ(plate.theory, FINITES_THICK);
  EXPECT_EQ(plate.xyz[2][0], a);
  EXPECT_EQ(plate.membrane_factor, 1);
  const finites::matrix<24> K = plate.stiffness();
  double by_c[576];
  ASSERT_EQ(finites_plate_stiffness(&plate, by_c), FINITES_OK);
  ASSERT_EQ(K.rows(), 24);
  EXPECT_EQ(std::memcmp(K.data(), by_c, sizeof by_c), 0);
  EXPECT_EQ(&K(3, 7), K.data() + 7 * 24 + 3);
}

TEST(ElementsHpp, MatrixOfATriangleHasItsOrder) {
  finites::plate plate({{0, 0, 0}, {a, 0, 0}, {0, b, 0}});
  plate.thickness = h;
  plate.E = young;
  plate.nu = poisson;
  plate.theory = FINITES_MEMBRANE;
  const auto K = plate.stiffness();
  ASSERT_EQ(K.rows(), 18);
  ASSERT_EQ(K.columns(), 18);
  // Constant strain triangle: u1 strains x by -1/a and shears by -1/b.
  const double direct = young / (1 - poisson * poisson), shear = young / (2 * (1 + poisson)), area = a * b / 2;
  const double expected = h * area * (direct / (a * a) + shear / (b * b));
  EXPECT_NEAR(K(0, 0), expected, 1e-12 * expected);
  const finites::matrix<24> copy = K;
  EXPECT_EQ(copy(17, 16), K(17, 16));
}

TEST(ElementsHpp, PlateUnderTension) {
  const finites::plate plate = rectangle();
  const double strain = 1e-3, pull = young * strain * h * b / 2;
  const auto u = stretched(strain);
  const auto F = plate.forces(u);
  ASSERT_EQ(F.size(), 24);
  EXPECT_NEAR(F[6], pull, 1e-9 * pull);
  EXPECT_NEAR(F[0], -pull, 1e-9 * pull);
  EXPECT_NEAR(std::accumulate(F.begin(), F.end(), 0.0), 0, 1e-9 * pull);
  const auto results = plate.result(u);
  EXPECT_EQ(results.points, 4);
  EXPECT_NEAR(results.point[2].top.von_mises, young * strain, 1e-9 * young * strain);
  // Free expansion has no stress.
  finites::plate warm = plate;
  warm.expansion = 1e-5;
  auto free = stretched(1e-3);
  free[13] = free[19] = 1e-3 * b;
  EXPECT_NEAR(warm.result(free, {100, 0}).point[0].middle.s1, 0, 1e-9 * young * strain);
}

TEST(ElementsHpp, LoadsOfPlates) {
  const finites::plate plate = rectangle();
  const auto sum = [](const finites::vector<24>& F, int component) {
    double total = 0;
    for (int i = component; i < F.size(); i += 6) total += F[i];
    return total;
  };
  EXPECT_NEAR(sum(plate.surface_load({0, 0, -5}), 2), -5 * a * b, 1e-12);
  EXPECT_NEAR(sum(plate.surface_load({}, {0, 0, 3}), 2), 3 * a * b, 1e-12);
  EXPECT_NEAR(sum(plate.body_load(std::vector<double>{7, 0, 0}), 0), 7 * a * b * h, 1e-12);
  EXPECT_NEAR(sum(plate.point_load({1, 0.5, 0}, {0, 0, -2}), 2), -2, 1e-12);
  EXPECT_NEAR(plate.measure().area, a * b, 1e-12);
  EXPECT_EQ(plate.locate({1, 0.5, 0}).inside, 1);
  EXPECT_EQ(plate.locate({3, 0.5, 0}).inside, 0);
}

TEST(ElementsHpp, FailureThrows) {
  finites::plate plate = rectangle();
  plate.thickness = 0;
  const finites::error failed = failure_of([&] { (void)plate.stiffness(); });
  EXPECT_EQ(failed.status(), FINITES_THICKNESS);
  EXPECT_STREQ(failed.call(), "finites_plate_stiffness");
  EXPECT_EQ(failed.element(), -1);
  EXPECT_EQ(std::string(failed.what()), std::string("finites_plate_stiffness: ") + finites_text(FINITES_THICKNESS));
}

TEST(ElementsHpp, FailureAsStatus) {
  finites::plate plate = rectangle();
  finites_status status = FINITES_MEMORY;
  EXPECT_FALSE(plate.stiffness(status).empty());
  EXPECT_EQ(status, FINITES_OK);
  plate.xyz[1][0] = 0;
  EXPECT_TRUE(plate.stiffness(status).empty());
  EXPECT_EQ(status, FINITES_COINCIDENT);
  EXPECT_EQ(plate.measure(status).area, 0);
}

TEST(ElementsHpp, TooManyNodesAreTheCallsToRefuse) {
  const finites::plate plate({{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {1, 2, 0}, {0, 1, 0}});
  finites_status status = FINITES_OK;
  EXPECT_TRUE(plate.stiffness(status).empty());
  EXPECT_EQ(status, FINITES_NODES);
}

TEST(ElementsHpp, ArgumentsOfAnotherLength) {
  const finites::plate plate = rectangle();
  const std::array<double, 12> u{};
  const finites::error failed = failure_of([&] { (void)plate.forces(u); });
  EXPECT_EQ(failed.status(), FINITES_RANGE);
  EXPECT_STREQ(failed.what(), "finites_plate_forces: u has 12 values in place of 24");
  finites_status status = FINITES_OK;
  EXPECT_TRUE(plate.surface_load({1, 2}, {}, status).empty());
  EXPECT_EQ(status, FINITES_RANGE);
}

TEST(ElementsHpp, Members) {
  const finites::beam beam = cantilever();
  EXPECT_NEAR(beam.stiffness()(2, 2), 12 * young * beam.Iz / 64, 1e-6);  // y is up: global Z
  EXPECT_NEAR(beam.geometric_of_force(1000)(1, 1), 1.2 * 1000 / 4, 1e-9);
  finites_beam_load load{};
  load.line[2] = -1000;
  EXPECT_NEAR(beam.loads(load)[2], -2000, 1e-9);
  std::array<double, 12> u{};
  u[6] = 1e-3;
  const double places[] = {0, 2, 4};
  finites_beam_section sections[3];
  ASSERT_TRUE(beam.sections(u, nullptr, places, sections));
  EXPECT_NEAR(sections[1].force[0], young * beam.area * 1e-3 / 4, 1e-3);
  EXPECT_NEAR(sections[1].displacement[0], 5e-4, 1e-15);
  finites_status status = FINITES_OK;
  EXPECT_FALSE(beam.sections(u, nullptr, {0, 1}, sections, status));
  EXPECT_EQ(status, FINITES_RANGE);

  finites::truss truss({0, 0, 0}, {0, 0, 5});
  truss.E = young;
  truss.area = 1e-3;
  truss.density = 7850;
  EXPECT_NEAR(truss.stiffness()(2, 2), young * 1e-3 / 5, 1e-3);
  EXPECT_NEAR(truss.axial_force({0, 0, 0, 0, 0, 1e-3}), young * 1e-3 * 1e-3 / 5, 1e-6);
  EXPECT_NEAR(truss.lumped_mass()(0, 0), 7850 * 1e-3 * 5 / 2, 1e-9);
  EXPECT_NEAR(truss.loads({0, 0, -10})[5], -25, 1e-12);
}

TEST(ElementsHpp, CableLinkSpring) {
  finites::cable cable({0, 0, 0}, {10, 0, 0});
  cable.E = young;
  cable.area = 1e-4;
  cable.length = 10.5;
  cable.load[2] = -8;
  const auto ends = cable.forces();
  EXPECT_NEAR(ends.F[2] + ends.F[5], 8 * 10.5, 1e-6);  // the nodes carry the weight
  EXPECT_NEAR(ends.tension[0], ends.tension[1], 1e-6);
  const double s[] = {0, 5.25, 10.5};
  std::vector<finites::point> places(3);
  ASSERT_TRUE(cable.shape(s, places));
  EXPECT_NEAR(places[1][0], 5, 1e-9);
  EXPECT_LT(places[1][2], -1);

  finites::spring spring;
  spring.k[0] = 3;
  spring.k[5] = 7;
  EXPECT_EQ(spring.stiffness()(0, 0), 3);
  EXPECT_EQ(spring.forces({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})[6], -3);
  finites::link link({0, 0, 0}, {2, 0, 0});
  link.k[0] = 5;
  EXPECT_EQ(link.stiffness()(6, 6), 5);
}

TEST(ElementsHpp, Solid) {
  const finites::solid solid = cube();
  EXPECT_NEAR(solid.measure().mass, 7850, 1e-8);
  std::array<double, 24> u{};
  for (int n = 0; n < 8; ++n) u[static_cast<std::size_t>(3 * n)] = 1e-3 * solid.xyz[n][0];
  // Uniaxial strain.
  const double modulus = young * (1 - poisson) / ((1 + poisson) * (1 - 2 * poisson));
  EXPECT_NEAR(solid.result(u).point[0].stress[0], modulus * 1e-3, 1e-6 * modulus * 1e-3);
  EXPECT_NEAR(solid.forces(u)[3], modulus * 1e-3 / 4, 1e-6 * modulus * 1e-3);
  const auto F = solid.face_load(2, {}, 8);
  EXPECT_NEAR(F[14], -2, 1e-12);  // a pressure on the upper face pushes down
  const std::vector<double> stress(48, 0.0);
  EXPECT_EQ(solid.geometric_of_stresses(stress)(0, 0), 0);
}

TEST(ElementsHpp, YieldSurface) {
  const finites::yield yield(FINITES_SEGMENTS, 7, {1000, 50, 80});
  // 8/9 is a number of single precision there.
  EXPECT_NEAR(yield.value({500, 0, 40}), 0.5 + 8.0 / 9.0 * 0.5, 1e-8);
  const auto active = yield.equations({500, 10, 40});
  ASSERT_EQ(active.count, 1);
  EXPECT_NEAR(active.gradient[0][0], 1 / 1000.0, 1e-15);
}

}  // namespace
