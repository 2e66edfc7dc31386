// plates_laws_test.cpp: results and forces of plates against mechanics: constant strain and curvature, free and
// hindered expansion, turned material axes, offsets. They settle every sign that elements.h promises.
#include <array>
#include <cmath>
#include <vector>

#include "plate_laws.h"

using namespace plate_laws;

// u = (0.001 x + 0.0004 y, -0.0002 x + 0.0005 y): the strains, their plane stress, and the resultants over the area.
TEST(PlateLaws, ConstantMembraneStrain) {
  for (const finites_plate& p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    // The rotation about z that goes with the field: (v,x - u,y) / 2, which the drilling stiffness takes as its own.
    const vector u = at_nodes(p, [](double x, double y, double) {
      return std::array<double, 6>{1e-3 * x + 4e-4 * y, -2e-4 * x + 5e-4 * y, 0.0, 0.0, 0.0, -3e-4};
    });
    const double ex = 1e-3, ey = 5e-4, gxy = 2e-4;
    const double axial = p.theory == FINITES_MEMBRANE_REDUCED ? 0.01 : 1.0;
    const double c = axial * p.E / (1.0 - p.nu * p.nu);
    const vector stress = {c * (ex + p.nu * ey), c * (ey + p.nu * ex), p.E / (2.0 * (1.0 + p.nu)) * gxy};
    for (const finites_plate_point& at : places(results_of(p, u))) {
      EXPECT_CLOSE(as_vector(at.middle.strain), vector({ex, ey, gxy}), ex, K_EPS);
      EXPECT_CLOSE(as_vector(at.top.stress), stress, stress[0], K_EPS);
      EXPECT_CLOSE(as_vector(at.bottom.stress), stress, stress[0], K_EPS);
      EXPECT_CLOSE(at.force[0], stress[0] * p.thickness, stress[0] * p.thickness, K_EPS);
      const double mean = 0.5 * (stress[0] + stress[1]);
      const double radius = std::hypot(0.5 * (stress[0] - stress[1]), stress[2]);
      EXPECT_CLOSE(at.middle.s1, mean + radius, stress[0], K_EPS);
      EXPECT_CLOSE(at.middle.max_shear, radius, stress[0], K_EPS);
      EXPECT_CLOSE(at.middle.angle, 0.5 * std::atan2(2.0 * stress[2], stress[0] - stress[1]), 1.0, K_EPS);
      EXPECT_CLOSE(at.middle.von_mises * at.middle.von_mises,
                   stress[0] * stress[0] - stress[0] * stress[1] + stress[1] * stress[1] + 3.0 * stress[2] * stress[2],
                   stress[0] * stress[0], K_EPS);
    }
    // The work on itself is volume times stress times strain.
    finites_plate_measures size;
    ASSERT_EQ(finites_plate_measure(&p, &size), FINITES_OK);
    const double work = size.volume * (stress[0] * ex + stress[1] * ey + stress[2] * gxy);
    EXPECT_CLOSE(support::dot(forces_of(p, u), u), work, work, K_EPS);
  }
}

// top z = +h / 2. Mx = D (a + nu b) and so on; no transverse shear.
TEST(PlateLaws, ConstantCurvature) {
  const double a = 1e-3, b = -4e-4, c = 3e-4;
  for (const finites_plate& p : flat_plates()) {
    if (!bends(p)) continue;
    SCOPED_TRACE(name_of(p));
    const vector u = at_nodes(p, [=](double x, double y, double) {
      return std::array<double, 6>{0.0,           0.0, -0.5 * (a * x * x + b * y * y) - c * x * y, -b * y - c * x,
                                   a * x + c * y, 0.0};
    });
    const double h = p.thickness;
    const double D = p.E * h * h * h / (12.0 * (1.0 - p.nu * p.nu));
    const vector M = {D * (a + p.nu * b), D * (b + p.nu * a), D * (1.0 - p.nu) * c};
    for (const finites_plate_point& at : places(results_of(p, u))) {
      EXPECT_CLOSE(as_vector(at.top.strain), vector({0.5 * h * a, 0.5 * h * b, h * c}), h * a, K_EPS);
      EXPECT_CLOSE(as_vector(at.bottom.strain), vector({-0.5 * h * a, -0.5 * h * b, -h * c}), h * a, K_EPS);
      EXPECT_CLOSE(as_vector(at.moment), M, M[0], K_EPS);
      for (int i = 0; i < 3; ++i) {
        const double face = 6.0 * M[static_cast<std::size_t>(i)] / (h * h);
        EXPECT_CLOSE(at.top.stress[i], face, 6.0 * M[0] / (h * h), K_EPS);
        EXPECT_CLOSE(at.bottom.stress[i], -face, 6.0 * M[0] / (h * h), K_EPS);
        EXPECT_EQ(at.middle.stress[i], 0.0);
      }
      EXPECT_GT(at.top.stress[0], 0.0);
      EXPECT_CLOSE(at.shear_force[0], 0.0, D * a, K_EPS);
      EXPECT_CLOSE(at.shear_force[1], 0.0, D * a, K_EPS);
    }
  }
}

// Of a thick plate: strain / (5/6), Q = 5/6 G h strain, Q / (5/6 h).
TEST(PlateLaws, TransverseShearColumns) {
  for (const int nodes : {3, 4}) {
    const finites_plate p = subjects::rectangle(nodes, FINITES_THICK, 2.0, 1.0);
    const vector u =
        at_nodes(p, [](double x, double, double) { return std::array<double, 6>{0.0, 0.0, 1e-3 * x, 0.0, 0.0, 0.0}; });
    const double G = p.E / (2.0 * (1.0 + p.nu));
    for (const finites_plate_point& at : places(results_of(p, u))) {
      EXPECT_GT(std::fabs(at.shear_force[0]), 0.0);
      EXPECT_WITHIN(at.shear_force[0], 25.0 / 36.0 * G * p.thickness * at.shear_strain[0], at.shear_force[0], 1e-13);
      EXPECT_WITHIN(at.shear_stress[0], 1.2 * at.shear_force[0] / p.thickness, at.shear_stress[0], 1e-13);
      // At the middle sqrt(3) tau is added to the equivalent stress, which is 0 here.
      EXPECT_WITHIN(at.middle.von_mises, std::sqrt(3.0) * std::hypot(at.shear_stress[0], at.shear_stress[1]),
                    at.middle.von_mises, 1e-13);
    }
  }
}

// loads, and with the temperature given no stress remains; the strains are those of the motion.
TEST(PlateLaws, FreeThermalExpansion) {
  const double t = 40.0, d = 25.0;
  for (const finites_plate& p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    const double e = p.expansion * t;
    const double k = bends(p) ? p.expansion * d / p.thickness : 0.0;
    const vector u = at_nodes(p, [=](double x, double y, double) {
      return std::array<double, 6>{e * x, e * y, -0.5 * k * (x * x + y * y), -k * y, k * x, 0.0};
    });
    vector F(u.size());
    ASSERT_EQ(finites_plate_temperature_load(&p, t, d, F.data()), FINITES_OK);
    const double scale = support::max_norm(F);
    EXPECT_CLOSE(forces_of(p, u), F, scale, K_EPS);
    const double temperature[2] = {t, d};
    for (const finites_plate_point& at : places(results_of(p, u, temperature))) {
      EXPECT_CLOSE(as_vector(at.top.stress), vector(3, 0.0), p.E * e, K_EPS);
      EXPECT_CLOSE(as_vector(at.bottom.stress), vector(3, 0.0), p.E * e, K_EPS);
      const double top = e + 0.5 * p.thickness * k;
      EXPECT_CLOSE(as_vector(at.top.strain), vector({top, top, 0.0}), top, K_EPS);
    }
  }
}

// Held at every node, a warmer plate is pressed: N = -E h alpha t / (1 - nu), and at a warmer top sigma < 0.
TEST(PlateLaws, HeldThermalExpansion) {
  for (const finites_plate& p : flat_plates()) {
    if (!bends(p)) continue;
    const double temperature[2] = {40.0, 25.0};
    const double c = p.E * p.expansion / (1.0 - p.nu);
    for (const finites_plate_point& at : places(results_of(p, vector(24, 0.0), temperature))) {
      EXPECT_CLOSE(at.force[0], -c * p.thickness * 40.0, c * p.thickness * 40.0, K_EPS);
      EXPECT_CLOSE(at.top.stress[0], -c * (40.0 + 12.5), c * 40.0, K_EPS);
      EXPECT_CLOSE(at.bottom.stress[0], -c * (40.0 - 12.5), c * 40.0, K_EPS);
    }
  }
}

// transformed compliance; the factors act on twist and in-plane shear alone. cos and sin are in single precision.
TEST(PlateLaws, Orthotropic) {
  for (const int nodes : {3, 4}) {
    finites_plate p = subjects::rectangle(nodes, FINITES_THICK, 2.0, 1.0);
    p.orthotropic = 1;
    p.E2 = p.E / 4.0;
    p.G12 = 3e4;
    p.G13 = p.G23 = 2e4;
    p.inplane_shear_factor = 0.5;
    p.twist_factor = 0.25;
    const double nu21 = p.nu / 4.0;
    const double q = 1.0 - p.nu * nu21;
    const vector along =
        at_nodes(p, [](double x, double, double) { return std::array<double, 6>{1e-3 * x, 0.0, 0.0, 0.0, 0.0, 0.0}; });
    const vector twisted = at_nodes(p, [](double x, double y, double) {
      return std::array<double, 6>{1e-3 * y, 0.0, -1e-3 * x * y, -1e-3 * x, 1e-3 * y, 0.0};
    });
    const double h = p.thickness;
    finites_plate_point at = results_of(p, along).point[0];
    EXPECT_CLOSE(as_vector(at.force), vector({1e-3 * h * p.E / q, 1e-3 * h * nu21 * p.E / q, 0.0}), 20.0, K_EPS);
    at = results_of(p, twisted).point[0];
    EXPECT_CLOSE(at.force[2], 0.5 * 1e-3 * h * p.G12, 20.0, K_EPS);
    EXPECT_CLOSE(at.moment[2], 0.25 * 2e-3 * h * h * h / 12.0 * p.G12, 1.0, K_EPS);

    p.angle = std::acos(0.0);
    at = results_of(p, along).point[0];
    EXPECT_WITHIN(as_vector(at.force), vector({1e-3 * h * p.E2 / q, 1e-3 * h * nu21 * p.E / q, 0.0}), 20.0, 1e-6);

    // C16 at the angle of 45 degrees: (C11 - C22) / 4.
    p.angle /= 2.0;
    at = results_of(p, along).point[0];
    EXPECT_WITHIN(at.force[2], 1e-3 * h * (p.E - p.E2) / q / 4.0, 20.0, 1e-6);
  }
}

// u + theta y e.
TEST(PlateLaws, Offsets) {
  finites_plate p = subjects::rectangle(4, FINITES_THIN, 2.0, 1.0);
  const double e = 0.25;
  for (auto& d : p.offset) d[2] = e;
  const vector u = at_nodes(
      p, [](double x, double, double) { return std::array<double, 6>{0.0, 0.0, -5e-4 * x * x, 0.0, 1e-3 * x, 0.0}; });
  const finites_plate_point at = results_of(p, u).point[0];
  EXPECT_CLOSE(at.middle.strain[0], 1e-3 * e, 1e-3, K_EPS);
  EXPECT_CLOSE(at.top.strain[0], 1e-3 * (e + 0.5 * p.thickness), 1e-3, K_EPS);
}
