// element_record_test.cpp: the columns of the records that operation 5 answers with, for isotropic and general
// sections, from the strains by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "comparison.h"
#include "plate_model.h"
#include "random_shapes.h"

namespace {

using support::plate_description;
using support::plate_model;
using support::plate_results;
using support::seeded_random;

constexpr int RECORD = 90;

// Column of a record, from 1; `point` counts from 1.
double column(const std::vector<double>& records, int point, int number) {
  return records[static_cast<std::size_t>((point - 1) * RECORD + number - 1)];
}

std::vector<double> columns(const std::vector<double>& records, int point, int first, int last) {
  std::vector<double> out;
  for (int c = first; c <= last; ++c) out.push_back(column(records, point, c));
  return out;
}

// A triangle whose local axes are the global ones.
std::vector<support::point> flat_triangle() { return {{0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {0.5, 1.5, 0.0}}; }

// u = ex x + gxy y, v = ey y, and no transverse motion.
std::vector<double> membrane_field(const std::vector<support::point>& nodes, double ex, double ey, double gxy) {
  std::vector<double> u;
  for (const support::point& p : nodes) {
    u.insert(u.end(), {ex * p[0] + gxy * p[1], ey * p[1], 0.0, 0.0, 0.0, 0.0});
  }
  return u;
}

// A section of plain stress: rows of D per thickness, from E1, E2, nu1, nu2, G.
struct section {
  double d11, d12, d22, d33;
};

section isotropic_section(const plate_description& d) {
  const double c = d.young / (1.0 - d.poisson * d.poisson);
  return {c, c * d.poisson, c, d.young / (2.0 * (1.0 + d.poisson))};
}

plate_description isotropic() {
  plate_description d;
  d.nodes = flat_triangle();
  d.thickness = 0.25;
  d.young = 2000.0;
  d.poisson = 0.25;
  d.expansion = 1e-3;
  return d;
}

// Numbers that single precision holds exactly; E1 nu2 = E2 nu1.
plate_description orthotropic() {
  plate_description d = isotropic();
  d.material.ortho = 1;
  d.material.E1 = 2048.0F;
  d.material.E2 = 1024.0F;
  d.material.NU1 = 0.25F;
  d.material.NU2 = 0.125F;
  d.material.G12 = 512.0F;
  d.material.ALPHA1 = 0x1p-10F;
  d.material.ALPHA2 = 0x1p-9F;
  return d;
}

section orthotropic_section() {
  const double q = 1.0 - 0.25 * 0.125;
  return {2048.0 / q, 256.0 / q, 1024.0 / q, 512.0};
}

// What the faces, forces and moments must be when the strains and curvatures are known.
void expect_block(const std::vector<double>& records, int point, const section& s, double h, double tm1, double tm2,
                  double tb1, double tb2) {
  const std::vector<double> top = columns(records, point, 4, 6), bottom = columns(records, point, 26, 28);
  const std::vector<double> e = columns(records, point, 15, 17);
  double k[3];
  for (std::size_t i = 0; i < 3; ++i) {
    k[i] = (top[i] - bottom[i]) / h;
    EXPECT_CLOSE(0.5 * (top[i] + bottom[i]), e[i], std::fabs(top[i]) + std::fabs(bottom[i]), 4.0);
  }
  const double i3 = h * h * h / 12.0;
  const std::vector<double> mid = {s.d11 * (e[0] - tm1) + s.d12 * (e[1] - tm2),
                                   s.d12 * (e[0] - tm1) + s.d22 * (e[1] - tm2), s.d33 * e[2]};
  const std::vector<double> M = {i3 * (s.d11 * (k[0] - tb1 / h) + s.d12 * (k[1] - tb2 / h)),
                                 i3 * (s.d12 * (k[0] - tb1 / h) + s.d22 * (k[1] - tb2 / h)), i3 * s.d33 * k[2]};
  const double scale = s.d11 * (support::max_norm(top) + support::max_norm(bottom) + std::fabs(tm2) + std::fabs(tb2));
  EXPECT_CLOSE(columns(records, point, 18, 20), mid, scale, 20.0);
  EXPECT_CLOSE(columns(records, point, 40, 42), M, scale * h * h, 20.0);
  std::vector<double> above, below, N;
  for (std::size_t i = 0; i < 3; ++i) {
    above.push_back(mid[i] + 6.0 * M[i] / (h * h));
    below.push_back(mid[i] - 6.0 * M[i] / (h * h));
    N.push_back(mid[i] * h);
  }
  EXPECT_CLOSE(columns(records, point, 7, 9), above, scale, 40.0);
  EXPECT_CLOSE(columns(records, point, 29, 31), below, scale, 40.0);
  EXPECT_CLOSE(columns(records, point, 37, 39), N, scale * h, 20.0);
}

plate_results answer(const plate_description& d, const std::vector<double>& u, double change, double difference) {
  plate_model model({d});
  return model.results(1, u, change, difference);
}

}  // namespace

TEST(ElementRecord, StrainsOfALinearFieldAreTheFieldsOwn) {
  for (const plate_description& d : {isotropic(), orthotropic()}) {
    const plate_results r = answer(d, membrane_field(d.nodes, 1e-3, -2e-3, 3e-3), 0.0, 0.0);
    for (int p = 1; p <= 4; ++p) {
      EXPECT_CLOSE(columns(r.points, p, 15, 17), (std::vector<double>{1e-3, -2e-3, 3e-3}), 3e-3, 10.0);
    }
    for (int p = 1; p <= 3; ++p) {
      EXPECT_CLOSE(columns(r.nodes, p, 15, 17), (std::vector<double>{1e-3, -2e-3, 3e-3}), 3e-3, 10.0);
    }
  }
}

TEST(ElementRecord, FacesForcesAndMomentsFollowFromTheStrainsIsotropic) {
  seeded_random random(41);
  const plate_description d = isotropic();
  const double tm = d.expansion * 7.0, tb = d.expansion * -11.0;
  for (int i = 0; i < 50; ++i) {
    const plate_results r = answer(d, random.vector(18, 1e-2), 7.0, -11.0);
    for (int p = 1; p <= 3; ++p) expect_block(r.nodes, p, isotropic_section(d), d.thickness, tm, tm, tb, tb);
    for (int p = 1; p <= 4; ++p) expect_block(r.points, p, isotropic_section(d), d.thickness, tm, tm, tb, tb);
  }
}

TEST(ElementRecord, FacesForcesAndMomentsFollowFromTheStrainsGeneral) {
  seeded_random random(42);
  const plate_description d = orthotropic();
  const double a1 = 0x1p-10, a2 = 0x1p-9;
  for (int i = 0; i < 50; ++i) {
    const plate_results r = answer(d, random.vector(18, 1e-2), 7.0, -11.0);
    for (int p = 1; p <= 3; ++p) {
      expect_block(r.nodes, p, orthotropic_section(), d.thickness, 7.0 * a1, 7.0 * a2, -11.0 * a1, -11.0 * a2);
    }
    for (int p = 1; p <= 4; ++p) {
      expect_block(r.points, p, orthotropic_section(), d.thickness, 7.0 * a1, 7.0 * a2, -11.0 * a1, -11.0 * a2);
    }
  }
}

// Material axes at an angle couple the thermal strains with the twist; the record shows no thermal twisting moment.
TEST(ElementRecord, TwistingMomentOfAGeneralSectionHasNoThermalTerm) {
  plate_description d = orthotropic();
  d.ortho_angle = 0.5;
  const std::vector<double> none(18, 0.0);
  const plate_results r = answer(d, none, 0.0, 100.0);
  for (int p = 1; p <= 4; ++p) {
    EXPECT_EQ(column(r.points, p, 42), 0.0);
    EXPECT_NE(column(r.points, p, 40), 0.0);
    EXPECT_NE(column(r.points, p, 41), 0.0);
  }
  const plate_results warm = answer(d, none, 100.0, 0.0);
  EXPECT_NE(column(warm.points, 1, 39), 0.0) << "the membrane uses all three rows";
}

TEST(ElementRecord, PlacesOfPointsAndNodes) {
  const plate_description d = isotropic();
  const plate_results r = answer(d, std::vector<double>(18, 0.0), 0.0, 0.0);
  const double nodes[3][2] = {{0.0, 0.0}, {2.0, 0.0}, {0.5, 1.5}};
  for (int p = 1; p <= 3; ++p) {
    EXPECT_CLOSE(columns(r.nodes, p, 1, 2), (std::vector<double>{nodes[p - 1][0], nodes[p - 1][1]}), 2.0, 4.0);
  }
  const double xi[4] = {1.0 / 3.0, 0.2, 0.6, 0.2}, eta[4] = {1.0 / 3.0, 0.2, 0.2, 0.6};
  for (int p = 1; p <= 4; ++p) {
    const double x = 2.0 * xi[p - 1] + 0.5 * eta[p - 1], y = 1.5 * eta[p - 1];
    EXPECT_CLOSE(columns(r.points, p, 1, 2), (std::vector<double>{x, y}), 2.0, 4.0);
    EXPECT_EQ(column(r.points, p, 3), 0.0);
  }
}

TEST(ElementRecord, ColumnsBeyondTheMomentsOfAThinElementAreZero) {
  seeded_random random(43);
  for (const plate_description& d : {isotropic(), orthotropic()}) {
    const plate_results r = answer(d, random.vector(18, 1e-2), 3.0, 4.0);
    for (int p = 1; p <= 4; ++p) {
      for (int c = 43; c <= 90; ++c) EXPECT_EQ(column(r.points, p, c), 0.0) << "column " << c;
    }
  }
}

TEST(ElementRecord, FourthNodeBlockOfATriangleStaysCleared) {
  seeded_random random(44);
  for (const plate_description& d : {isotropic(), orthotropic()}) {
    const plate_results r = answer(d, random.vector(18, 1e-2), 3.0, 4.0);
    EXPECT_EQ(columns(r.nodes, 4, 1, RECORD), std::vector<double>(RECORD, 0.0));
    EXPECT_GT(support::max_norm(columns(r.points, 4, 1, RECORD)), 0.0);
  }
}

// The record is completed: the principal values belong to the stresses beside them.
TEST(ElementRecord, PrincipalValuesBelongToTheStressesBesideThem) {
  seeded_random random(45);
  const plate_results r = answer(isotropic(), random.vector(18, 1e-2), 3.0, 4.0);
  const int in[3] = {7, 18, 29}, out[3] = {10, 21, 32};
  for (int p = 1; p <= 4; ++p) {
    for (int s = 0; s < 3; ++s) {
      const double x = column(r.points, p, in[s]), y = column(r.points, p, in[s] + 1),
                   xy = column(r.points, p, in[s] + 2);
      const double size = std::fabs(x) + std::fabs(y) + std::fabs(xy);
      EXPECT_CLOSE(column(r.points, p, out[s] + 1) + column(r.points, p, out[s] + 2), x + y, size, 10.0);
      EXPECT_CLOSE(column(r.points, p, out[s] + 3), std::hypot(0.5 * (x - y), xy), size, 10.0);
      EXPECT_CLOSE(column(r.points, p, out[s] + 4), std::sqrt(x * x + y * y - x * y + 3.0 * xy * xy), size, 20.0);
    }
  }
}
