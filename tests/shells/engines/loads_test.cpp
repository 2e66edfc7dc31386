// loads_test.cpp: equivalent nodal loads of every kind and section: surface, body, temperature.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::reference_element;
using shell_reference::temperature;
using shell_reference::vector3;
using support::seeded_random;

namespace {

void set_temperature(element_call& call, const temperature& T) {
  call.LOADS(LOAD_TEMPERATURE) = T.change;
  call.LOADS(LOAD_TEMPERATURE_DIFF) = T.difference;
}

// To global axes; membrane kinds have no moments.
column finished(const element_call& call, const column& local) {
  column f = call.reference.to_global(local);
  if (call.reference.membrane_only) {
    for (int n = 0; n < call.reference.n; ++n) f.segment(6 * n + 3, 3).setZero();
  }
  return f;
}

// Free expansion of the mid surface and free bending, in element axes.
column free_expansion(const element_call& call, const temperature& T) {
  const reference_element& e = call.reference;
  const real k1 = e.s.alpha1 * T.difference / e.s.thickness, k2 = e.s.alpha2 * T.difference / e.s.thickness;
  const column w = shell_reference::quadratic_deflection(
      e.X, {0.0, 0.0, 0.0, static_cast<double>(-k1), static_cast<double>(-k2), 0.0});
  column u = column::Zero(6 * e.n);
  for (int i = 0; i < 3 * e.n; ++i) u(e.bending(i)) = w(i);
  for (int n = 0; n < e.n; ++n) {
    u(6 * n) = e.s.alpha1 * T.change * e.X(0, n);
    u(6 * n + 1) = e.s.alpha2 * T.change * e.X(1, n);
  }
  return u;
}

constexpr temperature TEMPERATURES[] = {{30.0, 0.0}, {0.0, 45.0}, {20.0, -20.0}, {-30.0, 0.0}, {0.0, -45.0}};

}  // namespace

TEST(Loads, OfSurfacesAndBodiesAreTheReference) {
  // Body force times thickness, surface load in global axes, surface load in element axes: one load per area.
  seeded_random random(341);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 4; ++trial) {
      element_call call(random_element(random, s));
      vector3 q = vector3::Zero();
      for (const int first : {LOAD_BODY, LOAD_SURFACE, LOAD_SURFACE_LOCAL}) {
        const std::vector<double> v = random.vector(3, 1.0);
        if (trial > 0 && trial != first / 5) continue;  // all three, then each alone
        call.set(first, {v[0], v[1], v[2]});
        const vector3 part(v[0], v[1], v[2]);
        if (first == LOAD_BODY) q += call.reference.axes * part * call.element.thickness;
        if (first == LOAD_SURFACE) q += call.reference.axes * part;
        if (first == LOAD_SURFACE_LOCAL) q += part;
      }
      call.run(4);
      const column local = call.reference.surface_loads(q);
      EXPECT_CLOSE(call.force_values(), listed(finished(call, local)), largest(local), 64) << s.name << " " << trial;
      EXPECT_EQ(call.F.changed(), support::range(1, call.order())) << s.name;
    }
  }
}

TEST(Loads, OfTemperatureAreTheIntegral) {
  seeded_random random(342);
  for (const element_subject& s : subjects()) {
    for (const temperature& T : TEMPERATURES) {
      element_call call(random_element(random, s));
      set_temperature(call, T);
      call.run(4);
      const column local = call.reference.thermal_loads(T);
      EXPECT_CLOSE(call.force_values(), listed(finished(call, local)), largest(local), 200)
          << s.name << " " << T.change << " " << T.difference;
    }
  }
}

TEST(Loads, OfTemperatureOfAMaterialThatExpandsOneWay) {
  // Each of the four thermal strains alone is a temperature load.
  seeded_random random(352);
  for (const element_subject& s : subjects()) {
    if (s.isotropic()) continue;
    for (const bool along : {true, false}) {
      for (const temperature& T : {temperature{30.0, 0.0}, temperature{0.0, -45.0}}) {
        if (s.membrane_only() && T.change == 0.0) continue;
        support::plate_description d = random_element(random, s);
        (along ? d.material.ALPHA2 : d.material.ALPHA1) = 0.0F;
        (along ? d.composite.ALPHA2 : d.composite.ALPHA1) = 0.0F;
        element_call call(d);
        set_temperature(call, T);
        call.run(4);
        const column local = call.reference.thermal_loads(T);
        EXPECT_GT(largest(local), 0.0) << s.name;
        EXPECT_CLOSE(call.force_values(), listed(finished(call, local)), largest(local), 200)
            << s.name << " " << T.change << " " << T.difference << (along ? " along" : " across");
      }
    }
  }
}

TEST(Loads, OfTemperatureJoinTheOthers) {
  seeded_random random(343);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    const temperature T{25.0, 10.0};
    const double size = largest(call.reference.thermal_loads(T));
    set_temperature(call, T);
    call.set(LOAD_SURFACE_LOCAL, {size, -size, 2.0 * size});
    call.run(4);
    const column local =
        call.reference.thermal_loads(T) + call.reference.surface_loads(vector3(size, -size, 2.0L * size));
    EXPECT_CLOSE(call.force_values(), listed(finished(call, local)), largest(local), 200) << s.name;
  }
}

TEST(Loads, FreeThermalExpansionLeavesNoForce) {
  // The forces of the free expansion are the thermal loads, whatever the material axes: thermal strains are those of
  // the element axes, and in-plane shear has its part in both.
  seeded_random random(344);
  for (const element_subject& s : subjects()) {
    for (const temperature& T : TEMPERATURES) {
      if (s.membrane_only() && T.change == 0.0) continue;
      support::plate_description d = random_element(random, s);
      if (T.change == 0.0) d.modifier_membrane = 0.0;  // it would hide the bending
      element_call call(d);
      const std::vector<double> u = listed(call.reference.to_global(free_expansion(call, T)));
      std::copy(u.begin(), u.end(), call.U.begin());
      call.run(3);
      const std::vector<double> forces = call.force_values();
      set_temperature(call, T);
      call.run(4);
      const double scale = largest(call.reference.stiffness()) * support::max_norm(u);
      EXPECT_GT(support::max_norm(forces), 1e-9 * scale) << s.name;
      EXPECT_CLOSE(call.force_values(),
                   listed(finished(call, call.reference.to_local(shell_reference::column_of(forces)))), scale, 100)
          << s.name;
    }
  }
}

TEST(Loads, FreeThermalExpansionLeavesNoMembraneForceInTheRecords) {
  seeded_random random(345);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    const temperature T{40.0, 25.0};
    const std::vector<double> u = listed(call.reference.to_global(free_expansion(call, T)));
    std::copy(u.begin(), u.end(), call.U.begin());
    set_temperature(call, T);
    call.run(5);
    const double N = largest(call.reference.s.whole()) * 40.0 * 2e-5;
    const double M = largest(call.reference.s.bending) * 25.0 * 2e-5 / call.element.thickness;
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      EXPECT_CLOSE(columns(R, 37, 3), std::vector<double>(3, 0.0), N, 1000) << s.name;
      EXPECT_CLOSE(columns(R, 40, 2), std::vector<double>(2, 0.0), M, 1000) << s.name;
      EXPECT_CLOSE(columns(R, 45, 2), std::vector<double>(2, 0.0), M / call.element.thickness, 1000) << s.name;
    }
  }
}

TEST(Loads, OfTemperatureLeaveNoResultant) {
  seeded_random random(346);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    set_temperature(call, {50.0, s.membrane_only() ? 0.0 : 20.0});
    call.run(4);
    const column f = shell_reference::column_of(call.force_values());
    vector3 force = vector3::Zero(), moment = vector3::Zero();
    for (int n = 0; n < s.nodes; ++n) {
      const vector3 F = f.segment(6 * n, 3);
      force += F;
      moment +=
          shell_reference::wide(call.element.nodes[static_cast<std::size_t>(n)]).cross(F) + f.segment(6 * n + 3, 3);
    }
    EXPECT_CLOSE(listed(force), std::vector<double>(3, 0.0), largest(f), 64) << s.name;
    EXPECT_CLOSE(listed(moment), std::vector<double>(3, 0.0), 4.0 * largest(f), 64) << s.name;
  }
}

TEST(Loads, AreClearedFirstAndZeroWithoutLoad) {
  seeded_random random(347);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(4);
    EXPECT_EQ(call.force_values(), std::vector<double>(static_cast<std::size_t>(call.order()), 0.0)) << s.name;
  }
}

TEST(Loads, WithoutTemperatureAskForNoSection) {
  // The test is on zero itself: a plate without thickness would divide by it in the thermal step.
  seeded_random random(351);
  for (const element_subject& s : subjects()) {
    support::plate_description d = random_element(random, s);
    d.thickness = 0.0;
    element_call call(d);
    call.set(LOAD_SURFACE, {1.0, 2.0, 3.0});
    call.run(4);
    for (const double f : call.force_values()) EXPECT_TRUE(std::isfinite(f)) << s.name;
    set_temperature(call, {0.0, 1e-300});
    call.run(4);
    EXPECT_FALSE(std::isfinite(support::max_norm(call.force_values())) && !s.membrane_only()) << s.name;
  }
}

TEST(Loads, NormalToTheElementAddUpToTheAreaTimesTheLoad) {
  seeded_random random(348);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.set(LOAD_SURFACE_LOCAL, {0.3, -0.4, 2.5});
    call.run(4);
    const column f = call.reference.to_local(shell_reference::column_of(call.force_values()));
    vector3 sum = vector3::Zero();
    for (int n = 0; n < s.nodes; ++n) sum += f.segment(6 * n, 3);
    call.run(8);
    EXPECT_CLOSE(listed(sum), (std::vector<double>{0.3 * call.area, -0.4 * call.area, 2.5 * call.area}), call.area, 64)
        << s.name;
  }
}

TEST(Loads, HaveTheMomentOfTheirResultantAtTheCentroid) {
  // The functions across the element reproduce every linear deflection: on a triangle whatever its shape, where the
  // linear functions of the plane do too; on a quadrilateral by its rule. Membrane kinds drop the moments.
  seeded_random random(353);
  for (const element_subject& s : subjects()) {
    if (s.membrane_only()) continue;
    element_call call(random_element(random, s));
    const std::vector<double> load = random.vector(3, 1.0);
    call.set(LOAD_SURFACE, {load[0], load[1], load[2]});
    call.run(4);
    const column f = shell_reference::column_of(call.force_values());
    vector3 force = vector3::Zero(), moment = vector3::Zero(), total = vector3::Zero(), about = vector3::Zero();
    for (int n = 0; n < s.nodes; ++n) {
      const vector3 F = f.segment(6 * n, 3);
      force += F;
      moment +=
          shell_reference::wide(call.element.nodes[static_cast<std::size_t>(n)]).cross(F) + f.segment(6 * n + 3, 3);
    }
    const vector3 q(load[0], load[1], load[2]);
    for (const shell_reference::station& at : shell_reference::element_rule(s.nodes)) {
      const real c = at.weight * shell_reference::determinant(call.reference.X, at.xi, at.eta);
      const shell_reference::vector2 p = shell_reference::position(call.reference.X, at.xi, at.eta);
      const vector3 x = call.reference.axes.transpose() * vector3(p(0), p(1), 0.0L) + call.reference.origin;
      total += q * c;
      about += x.cross(q) * c;
    }
    EXPECT_CLOSE(listed(force), listed(total), 1.0, 64) << s.name;
    EXPECT_CLOSE(listed(moment), listed(about), 5.0, 64) << s.name;
  }
}

TEST(Loads, OfTheTwoThickKindsAreThoseOfTheThinOnes) {
  // Surface loads do not feel the transverse shear.
  seeded_random random(349);
  for (const int kind : {11, 21}) {
    support::plate_description d = random_element(random, isotropic_subject(kind));
    std::vector<double> f[2];
    for (const int formulation : {0, 1}) {
      d.formulation = formulation;
      element_call call(d);
      call.set(LOAD_SURFACE, {0.3, -0.4, 2.5});
      call.run(4);
      f[formulation] = call.force_values();
    }
    EXPECT_EQ(f[0], f[1]) << kind;
  }
}

TEST(Loads, OfTemperatureNeverUseTheSidesOfAnotherElement) {
  // The same call after a call on an element of another shape and after itself: the same bits.
  seeded_random random(350);
  for (const element_subject& s : subjects()) {
    const support::plate_description d = random_element(random, s), other = random_element(random, s);
    std::vector<double> f[2];
    for (const int first : {0, 1}) {
      element_call before(first == 0 ? d : other);
      for (const int op : {1, 3, 4}) before.run(op);
      PLATEELEM.SIDE_PHI = {};
      for (double& entry : PLATEELEM.A_DELTA.V) entry = std::nan("");
      element_call call(d);
      set_temperature(call, {12.0, 34.0});
      call.run(4);
      f[first] = call.force_values();
    }
    EXPECT_EQ(f[0], f[1]) << s.name;
    EXPECT_GT(support::max_norm(f[0]), 0.0) << s.name;
  }
}
