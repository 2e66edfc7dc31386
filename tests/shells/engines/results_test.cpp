// results_test.cpp: the records of operation 5, column by column, for every kind and section, at nodes and points.
#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::point_state;
using shell_reference::real;
using shell_reference::reference_element;
using shell_reference::station;
using shell_reference::temperature;
using shell_reference::vector2;
using shell_reference::vector3;
using support::seeded_random;

namespace {

constexpr double KAPPA = 0.833333333333333;

// What the products of section and strains are rounded from.
struct record_scales {
  double strain, curvature, shear, stress, moment, shear_force;
};

record_scales scales_of(const element_call& call) {
  const reference_element& e = call.reference;
  const station& corner = shell_reference::node_stations(e.n).front();
  const double u = support::max_norm(call.U) * 24.0;
  const double thermal = 2e-5 * (std::fabs(call.LOADS(26)) + std::fabs(call.LOADS(27)));
  record_scales s{};
  s.strain = largest(shell_reference::membrane_B(e.X, corner.xi, corner.eta)) * u;
  s.curvature = largest(e.bending_B(corner.xi, corner.eta)) * u;
  if (e.thick) s.shear = largest(e.shear_B(corner.xi, corner.eta)) * u;
  const double h = call.element.thickness;
  s.stress = largest(e.s.whole()) / h * (s.strain + thermal);
  s.moment = largest(e.s.bending) * (s.curvature + thermal / h);
  s.shear_force = largest(e.s.shear) * s.shear;
  return s;
}

std::vector<double> two(const vector2& v) { return listed(v); }
std::vector<double> three(const vector3& v) { return listed(v); }

void expect_record(const std::vector<double>& R, const point_state& p, const record_scales& scale, double h,
                   const std::string& where) {
  const double limit = 100.0;
  const double face = scale.stress + 6.0 * scale.moment / (h * h), face_strain = scale.strain + scale.curvature * h;
  const vector3 bent = p.curvature * (h / 2.0L), flexure = p.moment * 6.0L / (real(h) * h);
  EXPECT_CLOSE(columns(R, 1, 2), two(p.position), 1.0, 16) << where;
  EXPECT_EQ(R[2], 0.0) << where;
  EXPECT_CLOSE(columns(R, 4, 3), three(p.strain + bent), face_strain, limit) << where;
  EXPECT_CLOSE(columns(R, 7, 3), three(p.stress + flexure), face, limit) << where;
  EXPECT_CLOSE(columns(R, 15, 3), three(p.strain), scale.strain, limit) << where;
  EXPECT_CLOSE(columns(R, 18, 3), three(p.stress), scale.stress, limit) << where;
  EXPECT_CLOSE(columns(R, 26, 3), three(p.strain - bent), face_strain, limit) << where;
  EXPECT_CLOSE(columns(R, 29, 3), three(p.stress - flexure), face, limit) << where;
  EXPECT_CLOSE(columns(R, 37, 3), three(p.stress * h), scale.stress * h, limit) << where;
  EXPECT_CLOSE(columns(R, 40, 3), three(p.moment), scale.moment, limit) << where;
  // The strain shown is 1 / kappa times that of the shear force; the stress is the force over kappa h.
  EXPECT_CLOSE(columns(R, 43, 2), two(p.shear_strain / real(KAPPA)), scale.shear, limit) << where;
  EXPECT_CLOSE(columns(R, 45, 2), two(p.shear_force), scale.shear_force, limit) << where;
  EXPECT_CLOSE(columns(R, 47, 2), two(p.shear_force / (real(KAPPA) * h)), scale.shear_force / h, limit) << where;
  EXPECT_EQ(columns(R, 49, 14), std::vector<double>(14, 0.0)) << where;
}

// Principal values of a stress triple of the same record, from the invariants.
void expect_principal(const std::vector<double>& R, std::size_t stress, std::size_t principal, double transverse,
                      const std::string& where) {
  const double sx = R[stress - 1], sy = R[stress], sxy = R[stress + 1];
  const double angle = R[principal - 1], s1 = R[principal], s2 = R[principal + 1], tau = R[principal + 2];
  const double scale = std::fabs(sx) + std::fabs(sy) + std::fabs(sxy);
  EXPECT_CLOSE(s1 + s2, sx + sy, scale, 16) << where;
  EXPECT_CLOSE(s1 * s2, sx * sy - sxy * sxy, scale * scale, 16) << where;
  EXPECT_CLOSE(tau, (s1 - s2) / 2.0, scale, 16) << where;
  EXPECT_GE(s1, s2) << where;
  const double c = std::cos(angle), s = std::sin(angle);
  EXPECT_CLOSE(c * c * sx + s * s * sy + 2.0 * c * s * sxy, s1, scale, 64) << where;
  const double von_mises = std::sqrt(sx * sx - sx * sy + sy * sy + 3.0 * sxy * sxy);
  EXPECT_CLOSE(R[principal + 3], von_mises + transverse, scale + transverse, 64) << where;
}

}  // namespace

TEST(Results, EveryColumnAtNodesAndPoints) {
  seeded_random random(331);
  for (const element_subject& s : subjects()) {
    for (const double change : {0.0, 60.0}) {
      element_call call(random_element(random, s));
      call.U = random.vector(24, 1e-2);
      const temperature T{change, -0.7 * change};
      call.LOADS(LOAD_TEMPERATURE) = T.change;
      call.LOADS(LOAD_TEMPERATURE_DIFF) = T.difference;
      call.run(5);
      const column u = call.reference.to_local(call.displacements());
      const record_scales scale = scales_of(call);
      const double h = call.element.thickness;
      for (int n = 1; n <= s.nodes; ++n) {
        const station& at = shell_reference::node_stations(s.nodes)[static_cast<std::size_t>(n - 1)];
        expect_record(call.node_record(n), call.reference.state_at(u, T, at.xi, at.eta), scale, h,
                      s.name + " node " + std::to_string(n));
      }
      for (int p = 1; p <= 4; ++p) {
        const station& at = shell_reference::element_rule(s.nodes)[static_cast<std::size_t>(p - 1)];
        expect_record(call.point_record(p), call.reference.state_at(u, T, at.xi, at.eta), scale, h,
                      s.name + " point " + std::to_string(p));
      }
    }
  }
}

TEST(Results, PrincipalValuesBelongToTheStressesOfTheirSurface) {
  // The mid surface adds the transverse shear to its equivalent stress as a term of its own.
  seeded_random random(332);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1e-2);
    call.run(5);
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      const double transverse = std::sqrt(3.0) * std::hypot(R[46], R[47]);
      EXPECT_EQ(transverse > 0.0, s.thick()) << s.name;
      expect_principal(R, 7, 10, 0.0, s.name + " top");
      expect_principal(R, 18, 21, transverse, s.name + " mid");
      expect_principal(R, 29, 32, 0.0, s.name + " bottom");
    }
  }
}

TEST(Results, FirstDirectionOfAPullAcrossAndAPushAlongIsAcross) {
  // ex = -ey: the two stresses are each other's opposite, and their sum says nothing. A quarter turn to the pull; the
  // other way round none.
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    const element_subject s = isotropic_subject(kind);
    support::plate_description d;
    d.formulation = s.formulation;
    d.nodes = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    if (s.nodes == 3) d.nodes = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}};
    for (const double pull : {1e-3, -1e-3}) {
      element_call call(d);
      for (std::size_t n = 0; n < d.nodes.size(); ++n) {
        call.U[6 * n] = -pull * d.nodes[n][0];
        call.U[6 * n + 1] = pull * d.nodes[n][1];
      }
      call.run(5);
      const double stress = 1e-3 * d.young / (1.0 + d.poisson);
      const double angle = pull > 0.0 ? std::acos(0.0) : 0.0;
      for (int n = 1; n <= s.nodes; ++n) {
        const std::vector<double> R = call.node_record(n);
        for (const int first : {10, 21, 32}) {
          EXPECT_CLOSE(std::fabs(columns(R, first, 1)[0]), angle, 1.0, 16) << kind << " " << first;
          EXPECT_CLOSE(columns(R, first + 1, 3), (std::vector<double>{stress, -stress, stress}), stress, 64) << kind;
        }
      }
    }
  }
}

TEST(Results, OfAUniformFieldByHand) {
  // u = 0.01 x + 0.002 y, v = 0.003 y: ex 0.01, ey 0.003, gxy 0.002. w = x^2/2 - y^2: curvatures -1 and 2. With
  // E / (1 - nu^2) = 1000, nu 0.3 and h 0.2 the membrane is 200 [1 0.3 0.35], bending 2/3 [1 0.3 0.35].
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    const element_subject s = isotropic_subject(kind);
    support::plate_description d;
    d.formulation = s.formulation;
    d.nodes = {{0, 0, 0}, {5, 0, 0}, {2, 3, 0}};
    if (s.nodes == 4)
      d.nodes = {{-2, -1, 0}, {2, -1, 0}, {3, 2, 0}, {-3, 0, 0}};  // the mean of the nodes is the origin
    d.young = 910.0;
    d.poisson = 0.3;
    d.thickness = 0.2;
    element_call call(d);
    for (std::size_t n = 0; n < d.nodes.size(); ++n) {
      const double x = d.nodes[n][0], y = d.nodes[n][1];
      call.U[6 * n] = 0.01 * x + 0.002 * y;
      call.U[6 * n + 1] = 0.003 * y;
      call.U[6 * n + 2] = x * x / 2.0 - y * y;
      call.U[6 * n + 3] = -2.0 * y;
      call.U[6 * n + 4] = -x;
    }
    call.run(5);
    const double mx = s.membrane_only() ? 0.0 : 2.0 / 3.0 * (-1.0 + 0.6);
    const double my = s.membrane_only() ? 0.0 : 2.0 / 3.0 * (-0.3 + 2.0);
    for (int p = 1; p <= 4; ++p) {
      for (const std::vector<double>& R : {call.point_record(p), call.node_record(std::min(p, s.nodes))}) {
        EXPECT_WITHIN(columns(R, 15, 3), (std::vector<double>{0.01, 0.003, 0.002}), 1.0, 1e-14) << kind;
        EXPECT_WITHIN(columns(R, 4, 3), (std::vector<double>{0.01 - 0.1, 0.003 + 0.2, 0.002}), 1.0, 1e-13) << kind;
        EXPECT_WITHIN(columns(R, 26, 3), (std::vector<double>{0.01 + 0.1, 0.003 - 0.2, 0.002}), 1.0, 1e-13) << kind;
        EXPECT_WITHIN(columns(R, 37, 3), (std::vector<double>{2.18, 1.2, 0.14}), 1.0, 1e-12) << kind;
        EXPECT_WITHIN(columns(R, 18, 3), (std::vector<double>{10.9, 6.0, 0.7}), 1.0, 1e-11) << kind;
        EXPECT_WITHIN(columns(R, 40, 3), (std::vector<double>{mx, my, 0.0}), 1.0, 1e-12) << kind;
        EXPECT_WITHIN(columns(R, 7, 3), (std::vector<double>{10.9 + 150.0 * mx, 6.0 + 150.0 * my, 0.7}), 1.0, 1e-10)
            << kind;
        EXPECT_WITHIN(columns(R, 29, 3), (std::vector<double>{10.9 - 150.0 * mx, 6.0 - 150.0 * my, 0.7}), 1.0, 1e-10)
            << kind;
        EXPECT_WITHIN(columns(R, 43, 6), std::vector<double>(6, 0.0), 1.0, 1e-10) << kind;  // no transverse shear
      }
    }
  }
}

TEST(Results, WriteSixtyTwoColumnsOfEachRecord) {
  seeded_random random(333);
  for (const element_subject& s : subjects()) {
    std::vector<int> node_columns, point_columns;
    for (int block = 0; block < 4; ++block) {
      for (int i = 1; i <= 62; ++i) {
        if (block < s.nodes) node_columns.push_back(90 * block + i);
        point_columns.push_back(90 * block + i);
      }
    }
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    call.run(5);
    EXPECT_EQ(call.nodes.changed(), node_columns) << s.name;
    EXPECT_EQ(call.points.changed(), point_columns) << s.name;
  }
}

TEST(Results, TemperatureAloneGivesTheStressOfAHeldPlate) {
  // -E alpha T / (1 - nu) in both directions and no shear; strains are total strains.
  seeded_random random(334);
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    element_call call(random_element(random, isotropic_subject(kind)));
    const support::plate_description& d = call.element;
    call.LOADS(LOAD_TEMPERATURE) = 35.0;
    call.run(5);
    const double s = -d.modifier_membrane * d.young * d.expansion * 35.0 / (1.0 - d.poisson);
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      EXPECT_CLOSE(columns(R, 18, 3), (std::vector<double>{s, s, 0.0}), std::fabs(s), 8) << kind;
      EXPECT_EQ(columns(R, 15, 3), std::vector<double>(3, 0.0)) << kind;
      EXPECT_EQ(columns(R, 4, 3), std::vector<double>(3, 0.0)) << kind;
    }
  }
}

TEST(Results, TemperatureDifferenceGivesTheMomentOfAHeldPlate) {
  // -E h^2 alpha dT / (12 (1 - nu)): positive differences compress the top.
  seeded_random random(335);
  for (const int kind : {10, 11, 20, 21}) {
    element_call call(random_element(random, isotropic_subject(kind)));
    const support::plate_description& d = call.element;
    call.LOADS(LOAD_TEMPERATURE_DIFF) = 35.0;
    call.run(5);
    const double h = d.thickness;
    const double M = -d.modifier_bending * d.young * h * h * d.expansion * 35.0 / (12.0 * (1.0 - d.poisson));
    for (int n = 1; n <= call.reference.n; ++n) {
      const std::vector<double> R = call.node_record(n);
      EXPECT_CLOSE(columns(R, 40, 3), (std::vector<double>{M, M, 0.0}), std::fabs(M), 8) << kind;
      EXPECT_LT(R[6], 0.0) << kind;
      EXPECT_GT(R[28], 0.0) << kind;
    }
  }
}

TEST(Results, MembraneKindsHaveNoMomentsAndEqualFaces) {
  seeded_random random(336);
  for (const element_subject& s : subjects()) {
    if (!s.membrane_only()) continue;
    element_call call(random_element(random, s));
    column u = column::Zero(call.order());
    for (int i = 0; i < 2 * s.nodes; ++i) u(call.reference.membrane(i)) = random.uniform(-1.0, 1.0);
    const std::vector<double> global = listed(call.reference.to_global(u));
    std::copy(global.begin(), global.end(), call.U.begin());
    call.LOADS(LOAD_TEMPERATURE_DIFF) = 40.0;
    call.run(5);
    for (int n = 1; n <= s.nodes; ++n) {
      const std::vector<double> R = call.node_record(n);
      EXPECT_EQ(columns(R, 40, 3), std::vector<double>(3, 0.0)) << s.name;
      EXPECT_EQ(columns(R, 7, 3), columns(R, 18, 3)) << s.name;
      EXPECT_EQ(columns(R, 29, 3), columns(R, 18, 3)) << s.name;
    }
  }
}

TEST(Results, ShearForcesAreFiveSixthsOfTheModulusTimesTheStrainShown) {
  // Columns 43, 44 times G h kappa^2 are columns 45, 46: the strain is divided by the factor, the force is not.
  seeded_random random(337);
  for (const int kind : {11, 21}) {
    element_call call(random_element(random, isotropic_subject(kind)));
    call.U = random.vector(24, 1e-2);
    call.run(5);
    const support::plate_description& d = call.element;
    const double G = d.modifier_shear * d.young / (2.0 * (1.0 + d.poisson));
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      const double scale = std::fabs(R[44]) + std::fabs(R[45]);
      for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_CLOSE(R[44 + i], R[42 + i] * G * d.thickness * KAPPA * KAPPA, scale, 16) << kind;
        EXPECT_CLOSE(R[46 + i] * d.thickness * KAPPA, R[44 + i], scale, 16) << kind;
      }
    }
  }
}
