// results_test.cpp: the records of operation 5, column by column, against strains and resultants of the reference.
#include "shells/triangle/thin/results.h"

#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"

using reference::column;
using reference::matrix;
using reference::real;
using reference::vector3;
using support::seeded_random;

namespace {

constexpr double NODE_POINTS[3][2] = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};

// What a point's record is made of.
struct point_state {
  vector3 e, k, s, M;
  real x, y;
};

// Thermal strains stand in element axes. The twisting moment has no thermal part.
point_state state_at(const engine_call& call, real xi, real eta) {
  const column ul = reference::eighteen(call.axes) * reference::column_of(call.U).head(18);
  column um(6), ub(9);
  for (int i = 0; i < 6; ++i) um(i) = ul(reference::MEMBRANE[i] - 1);
  for (int i = 0; i < 9; ++i) ub(i) = ul(reference::BENDING[i] - 1);
  const real tm = call.LOADS(26), tb = call.LOADS(27), h = call.section.thickness;
  const vector3 free_m(call.section.alpha1 * tm, call.section.alpha2 * tm, 0.0L);
  const vector3 free_b(call.section.alpha1 * tb, call.section.alpha2 * tb, 0.0L);
  point_state p;
  p.e = reference::membrane_B(call.X) * um;
  p.k = reference::bending_B(call.X, xi, eta) * ub;
  p.s = call.section.membrane * (p.e - free_m) / h;
  vector3 thermal = call.section.bending * free_b / h;
  thermal(2) = 0.0L;
  p.M = call.section.bending * p.k - thermal;
  p.x = (1 - xi - eta) * call.X(0, 0) + xi * call.X(0, 1) + eta * call.X(0, 2);
  p.y = (1 - xi - eta) * call.X(1, 0) + xi * call.X(1, 1) + eta * call.X(1, 2);
  return p;
}

std::vector<double> columns(const std::vector<double>& record, std::size_t first, std::size_t count) {
  const auto start = record.begin() + static_cast<std::ptrdiff_t>(first) - 1;
  return std::vector<double>(start, start + static_cast<std::ptrdiff_t>(count));
}

std::vector<double> three(const vector3& v) { return reference::listed(v); }

// Scales of a record: what the products of section and strains are rounded from.
struct record_scales {
  double strain, bending_strain, stress, moment;
};

record_scales scales_of(const engine_call& call) {
  const real h = call.section.thickness;
  const double u = support::max_norm(call.U);
  record_scales s{};
  s.strain = reference::largest(reference::membrane_B(call.X)) * u * 6.0;
  const double curvature = reference::largest(reference::bending_B(call.X, 0.0L, 0.0L)) * u * 20.0;
  s.bending_strain = s.strain + curvature * static_cast<double>(h);
  const double thermal = 2e-5 * (std::fabs(call.LOADS(26)) + std::fabs(call.LOADS(27)));
  s.stress = reference::largest(call.section.membrane) / static_cast<double>(h) * (s.strain + thermal);
  s.moment = reference::largest(call.section.bending) * (curvature + thermal / static_cast<double>(h));
  return s;
}

void expect_record(const std::vector<double>& R, const point_state& p, const record_scales& scale, double h,
                   const std::string& where) {
  const double limit = 200.0;
  const double face = scale.stress + 6.0 * scale.moment / (h * h);
  const vector3 bent = p.k * (h / 2.0L), flexure = p.M * 6.0L / (real(h) * h);
  EXPECT_CLOSE(columns(R, 1, 3), (std::vector<double>{static_cast<double>(p.x), static_cast<double>(p.y), 0.0}), 1.0,
               16)
      << where;
  EXPECT_EQ(R[2], 0.0) << where;
  EXPECT_CLOSE(columns(R, 4, 3), three(p.e + bent), scale.bending_strain, limit) << where;
  EXPECT_CLOSE(columns(R, 7, 3), three(p.s + flexure), face, limit) << where;
  EXPECT_CLOSE(columns(R, 15, 3), three(p.e), scale.strain, limit) << where;
  EXPECT_CLOSE(columns(R, 18, 3), three(p.s), scale.stress, limit) << where;
  EXPECT_CLOSE(columns(R, 26, 3), three(p.e - bent), scale.bending_strain, limit) << where;
  EXPECT_CLOSE(columns(R, 29, 3), three(p.s - flexure), face, limit) << where;
  EXPECT_CLOSE(columns(R, 37, 3), three(p.s * h), scale.stress * h, limit) << where;
  EXPECT_CLOSE(columns(R, 40, 3), three(p.M), scale.moment, limit) << where;
  EXPECT_EQ(columns(R, 43, 20), std::vector<double>(20, 0.0)) << where;
}

// Principal values of a stress triple of the same record, from the invariants.
void expect_principal(const std::vector<double>& R, std::size_t stress, std::size_t principal,
                      const std::string& where) {
  const double sx = R[stress - 1], sy = R[stress], sxy = R[stress + 1];
  const double angle = R[principal - 1], s1 = R[principal], s2 = R[principal + 1], tau = R[principal + 2];
  const double scale = std::fabs(sx) + std::fabs(sy) + std::fabs(sxy);
  EXPECT_CLOSE(s1 + s2, sx + sy, scale, 16) << where;
  EXPECT_CLOSE(s1 * s2, sx * sy - sxy * sxy, scale * scale, 16) << where;
  EXPECT_CLOSE(tau, (s1 - s2) / 2.0, scale, 16) << where;
  EXPECT_GE(s1, s2) << where;
  // Seen along the first principal direction there is no shear, and the normal stress is s1.
  const double c = std::cos(angle), s = std::sin(angle);
  EXPECT_CLOSE(c * c * sx + s * s * sy + 2.0 * c * s * sxy, s1, scale, 64) << where;
  EXPECT_CLOSE(R[principal + 3], std::sqrt(sx * sx - sx * sy + sy * sy + 3.0 * sxy * sxy), scale, 64) << where;
}

}  // namespace

TEST(TriangleResults, EveryColumnAtNodesAndPoints) {
  seeded_random random(131);
  for (const element_case& c : element_cases()) {
    for (const double temperature : {0.0, 60.0}) {
      engine_call call(random_element(random, c));
      call.U = random.vector(24, 1e-2);
      call.LOADS(26) = temperature;
      call.LOADS(27) = -0.7 * temperature;
      call.run(5);
      const double h = call.element.thickness;
      const record_scales scale = scales_of(call);
      for (int n = 1; n <= 3; ++n) {
        const std::string where = c.name + " node " + std::to_string(n);
        expect_record(call.node_record(n), state_at(call, NODE_POINTS[n - 1][0], NODE_POINTS[n - 1][1]), scale, h,
                      where);
      }
      for (int p = 1; p <= 4; ++p) {
        const std::string where = c.name + " point " + std::to_string(p);
        const reference::station& at = reference::FOUR_POINTS[p - 1];
        expect_record(call.point_record(p), state_at(call, at.xi, at.eta), scale, h, where);
      }
    }
  }
}

TEST(TriangleResults, PrincipalValuesBelongToTheStressesOfTheirSurface) {
  seeded_random random(132);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1e-2);
    call.run(5);
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      expect_principal(R, 7, 10, c.name + " top");
      expect_principal(R, 18, 21, c.name + " mid");
      expect_principal(R, 29, 32, c.name + " bottom");
    }
  }
}

TEST(TriangleResults, WriteSixtyTwoColumnsOfSevenRecords) {
  seeded_random random(133);
  std::vector<int> node_columns, point_columns;
  for (int block = 0; block < 4; ++block) {
    for (int i = 1; i <= 62; ++i) {
      if (block < 3) node_columns.push_back(90 * block + i);
      point_columns.push_back(90 * block + i);
    }
  }
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1.0);
    call.run(5);
    EXPECT_EQ(call.nodes.changed(), node_columns) << c.name;
    EXPECT_EQ(call.points.changed(), point_columns) << c.name;
  }
}

TEST(TriangleResults, PointsLieBetweenTheCoordinatesOfTheNodes) {
  // Local coordinates that do not start in the origin: the fourth point is 0.2, 0.2, 0.6 of the nodes.
  prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  PLATEELEM.THICKNESS = 1.0;
  for (int n = 1; n <= 3; ++n) {
    t.local(1, n) += 10.0;
    t.local(2, n) += 20.0;
  }
  std::vector<double> nodes(360), points(360);
  for (const bool general : {false, true}) {
    if (general) {
      TRI_RESULTS_GENERAL(PLATEELEM, TRI, TRI_U, t.local, TRI_RULE_COUNT, nodes.data(), points.data());
    } else {
      TRI_RESULTS_ISO(PLATEELEM, TRI, ISO, TRI_U, ELEM_LOADS{}, t.local, TRI_RULE_COUNT, TRI_RULE_FOUR, nodes.data(),
                      points.data());
    }
    EXPECT_EQ((std::vector<double>{nodes[180], nodes[181]}), (std::vector<double>{12.0, 23.0}));
    EXPECT_CLOSE((std::vector<double>{points[270], points[271]}), (std::vector<double>{12.2, 21.8}), 20.0, 4);
  }
}

TEST(TriangleResults, ByHandOfAUniformField) {
  // u = 0.01 x + 0.002 y, v = 0.003 y: ex 0.01, ey 0.003, gxy 0.002. w = x^2/2 - y^2: curvatures -1 and 2. With
  // E / (1 - nu^2) = 1000, nu 0.3 and h 0.2 the membrane is 200 [1 0.3 0.35], bending 2/3 [1 0.3 0.35].
  support::plate_description d;
  d.nodes = plane_triangle(5.0, 2.0, 3.0);
  d.young = 910.0;
  d.poisson = 0.3;
  d.thickness = 0.2;
  engine_call call(d);
  const double x[3] = {0.0, 5.0, 2.0}, y[3] = {0.0, 0.0, 3.0};
  for (std::size_t n = 0; n < 3; ++n) {
    call.U[6 * n] = 0.01 * x[n] + 0.002 * y[n];
    call.U[6 * n + 1] = 0.003 * y[n];
    call.U[6 * n + 2] = x[n] * x[n] / 2.0 - y[n] * y[n];
    call.U[6 * n + 3] = -2.0 * y[n];
    call.U[6 * n + 4] = -x[n];
  }
  call.run(5);
  for (int p = 1; p <= 4; ++p) {
    const std::vector<double> R = call.point_record(p);
    EXPECT_WITHIN(columns(R, 15, 3), (std::vector<double>{0.01, 0.003, 0.002}), 1.0, 1e-14);
    EXPECT_WITHIN(columns(R, 4, 3), (std::vector<double>{0.01 - 0.1, 0.003 + 0.2, 0.002}), 1.0, 1e-13);
    EXPECT_WITHIN(columns(R, 26, 3), (std::vector<double>{0.01 + 0.1, 0.003 - 0.2, 0.002}), 1.0, 1e-13);
    EXPECT_WITHIN(columns(R, 37, 3), (std::vector<double>{2.18, 1.2, 0.14}), 1.0, 1e-13);
    EXPECT_WITHIN(columns(R, 18, 3), (std::vector<double>{10.9, 6.0, 0.7}), 1.0, 1e-12);
    const double mx = 2.0 / 3.0 * (-1.0 + 0.6), my = 2.0 / 3.0 * (-0.3 + 2.0);
    EXPECT_WITHIN(columns(R, 40, 3), (std::vector<double>{mx, my, 0.0}), 1.0, 1e-13);
    EXPECT_WITHIN(columns(R, 7, 3), (std::vector<double>{10.9 + 150.0 * mx, 6.0 + 150.0 * my, 0.7}), 1.0, 1e-11);
    EXPECT_WITHIN(columns(R, 29, 3), (std::vector<double>{10.9 - 150.0 * mx, 6.0 - 150.0 * my, 0.7}), 1.0, 1e-11);
  }
}

TEST(TriangleResults, ConstantCurvatureGivesConstantMoments) {
  seeded_random random(134);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    const std::vector<double> w = random.vector(6, 1.0);
    const column q = quadratic_deflection(call.X, w);
    for (int i = 0; i < 9; ++i) call.U[static_cast<std::size_t>(reference::BENDING[i] - 1)] = static_cast<double>(q(i));
    call.run(5);
    const vector3 k(-w[3], -w[4], -2.0 * w[5]);
    const vector3 M = call.section.bending * k;
    const double scale = reference::largest(call.section.bending) * 20.0;
    for (int p = 1; p <= 4; ++p) EXPECT_CLOSE(columns(call.point_record(p), 40, 3), three(M), scale, 64) << c.name;
    for (int n = 1; n <= 3; ++n) EXPECT_CLOSE(columns(call.node_record(n), 40, 3), three(M), scale, 64) << c.name;
  }
}

TEST(TriangleResults, MembraneKindHasNoMomentsAndEqualFaces) {
  seeded_random random(135);
  for (const element_case& c : element_cases()) {
    if (c.formulation != 2) continue;
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    for (const int i : reference::MEMBRANE) call.U[static_cast<std::size_t>(i - 1)] = random.uniform(-1.0, 1.0);
    call.LOADS(27) = 40.0;
    call.run(5);
    for (int n = 1; n <= 3; ++n) {
      const std::vector<double> R = call.node_record(n);
      EXPECT_EQ(columns(R, 40, 3), std::vector<double>(3, 0.0)) << c.name;
      EXPECT_EQ(columns(R, 7, 3), columns(R, 18, 3)) << c.name;
      EXPECT_EQ(columns(R, 29, 3), columns(R, 18, 3)) << c.name;
    }
  }
}

TEST(TriangleResults, MembraneKindShowsTheStrainsOfItsRotations) {
  seeded_random random(136);
  engine_call call(random_element(random, {"", 2, section_form::isotropic}, plane_triangle(5.0, 2.0, 3.0)));
  const column q = quadratic_deflection(call.X, {0, 0, 0, 1, 0, 0});
  for (int i = 0; i < 9; ++i) call.U[static_cast<std::size_t>(reference::BENDING[i] - 1)] = static_cast<double>(q(i));
  call.run(5);
  const double h = call.element.thickness;
  EXPECT_CLOSE(columns(call.point_record(2), 4, 3), (std::vector<double>{-h / 2.0, 0.0, 0.0}), 10.0 * h, 32);
}

TEST(TriangleResults, TemperatureAloneGivesTheStressOfAHeldPlate) {
  // -E alpha T / (1 - nu) in both directions and no shear.
  seeded_random random(137);
  for (const int formulation : {1, 2}) {
    engine_call call(random_element(random, {"", formulation, section_form::isotropic}));
    const support::plate_description& d = call.element;
    call.LOADS(26) = 35.0;
    call.run(5);
    const double s = -d.modifier_membrane * d.young * d.expansion * 35.0 / (1.0 - d.poisson);
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      EXPECT_CLOSE(columns(R, 18, 3), (std::vector<double>{s, s, 0.0}), std::fabs(s), 8);
      EXPECT_EQ(columns(R, 15, 3), std::vector<double>(3, 0.0));  // total strains
      EXPECT_EQ(columns(R, 4, 3), std::vector<double>(3, 0.0));
    }
  }
}

TEST(TriangleResults, TemperatureDifferenceGivesTheMomentOfAHeldPlate) {
  // -E h^2 alpha dT / (12 (1 - nu)): positive differences compress the top.
  seeded_random random(138);
  engine_call call(random_element(random, element_cases().front()));
  const support::plate_description& d = call.element;
  call.LOADS(27) = 35.0;
  call.run(5);
  const double h = d.thickness;
  const double M = -d.modifier_bending * d.young * h * h * d.expansion * 35.0 / (12.0 * (1.0 - d.poisson));
  for (int n = 1; n <= 3; ++n) {
    const std::vector<double> R = call.node_record(n);
    EXPECT_CLOSE(columns(R, 40, 3), (std::vector<double>{M, M, 0.0}), std::fabs(M), 8);
    EXPECT_LT(R[6], 0.0);
    EXPECT_GT(R[28], 0.0);
  }
}

TEST(TriangleResults, TwistingMomentHasNoThermalPartInTurnedMaterialAxes) {
  seeded_random random(139);
  for (const section_form form : {section_form::orthotropic, section_form::composite}) {
    engine_call call(random_element(random, {"", 1, form}));
    call.LOADS(27) = 35.0;
    call.LOADS(26) = 20.0;
    call.run(5);
    const vector3 thermal =
        call.section.bending * vector3(call.section.alpha1, call.section.alpha2, 0.0L) * 35.0L / call.section.thickness;
    const vector3 in_plane = call.section.membrane * vector3(call.section.alpha1, call.section.alpha2, 0.0L) * 20.0L;
    const double scale = reference::largest(thermal);
    ASSERT_GT(std::fabs(static_cast<double>(thermal(2))), 1e-4 * scale);
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      EXPECT_EQ(R[41], 0.0);
      EXPECT_CLOSE(columns(R, 40, 2),
                   (std::vector<double>{static_cast<double>(-thermal(0)), static_cast<double>(-thermal(1))}), scale,
                   32);
      // The membrane forces keep all three rows.
      EXPECT_CLOSE(columns(R, 37, 3), three(-in_plane), reference::largest(in_plane), 32);
    }
  }
}

TEST(TriangleResults, GeneralFormReadsTheWholeMembraneMatrix) {
  seeded_random random(140);
  const prepared_triangle t(support::random_triangle(random));
  PLATEELEM.THICKNESS = 0.1;
  for (double& entry : PLATEELEM.D_MEMBRANE_NORMAL.V) entry = std::nan("");
  PLATEELEM.D_MEMBRANE_SHEAR = PLATEELEM.D_MEMBRANE_NORMAL;
  for (double& u : TRI_U.MEMBRANE.V) u = random.uniform(-1.0, 1.0);
  std::vector<double> nodes(360), points(360);
  TRI_RESULTS_GENERAL(PLATEELEM, TRI, TRI_U, t.local, TRI_RULE_COUNT, nodes.data(), points.data());
  for (std::size_t p = 0; p < 4; ++p) {
    const std::vector<double> R(&points[90 * p], &points[90 * p] + 90);
    EXPECT_EQ(columns(R, 37, 3), std::vector<double>(3, 0.0));  // the whole matrix is zero
    EXPECT_GT(support::max_norm(columns(R, 15, 3)), 0.0);
  }
}
