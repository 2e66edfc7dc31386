// plates_laws_test.cpp: the calls of plates against mechanics: states of constant strain and curvature, free expansion,
// rigid motions, resultants. They settle every sign that elements.h promises.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "comparison.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"

namespace {

using support::point;
using vector = std::vector<double>;

constexpr double K_EPS = 500.0;  // sums of some hundred products

// A plate of every shape and theory in the global x-y plane, so that element axes are global ones; side 1-2 along x.
std::vector<finites_plate> flat_plates() {
  std::vector<finites_plate> all;
  for (const int nodes : {3, 4}) {
    for (const int theory : {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED}) {
      finites_plate plate = subjects::rectangle(nodes, theory, 2.0, 1.0);
      plate.xyz[2][0] -= nodes == 4 ? 0.3 : -0.4;
      plate.xyz[2][1] += 0.2;
      all.push_back(plate);
    }
  }
  return all;
}

std::string name_of(const finites_plate& p) {
  return std::to_string(p.nodes) + " nodes, theory " + std::to_string(p.theory);
}

bool bends(const finites_plate& p) { return p.theory == FINITES_THICK || p.theory == FINITES_THIN; }

int order_of(const finites_plate& p) { return 6 * p.nodes; }

// Node by node: what field(x, y, z) says at the node.
template <class FIELD>
vector at_nodes(const finites_plate& p, FIELD field) {
  vector u;
  for (int m = 0; m < p.nodes; ++m) {
    const std::array<double, 6> v = field(p.xyz[m][0], p.xyz[m][1], p.xyz[m][2]);
    u.insert(u.end(), v.begin(), v.end());
  }
  return u;
}

vector matrix_of(const finites_plate& p, finites_status (*call)(const finites_plate*, double*)) {
  vector K(static_cast<std::size_t>(order_of(p) * order_of(p)));
  EXPECT_EQ(call(&p, K.data()), FINITES_OK);
  return K;
}

vector forces_of(const finites_plate& p, const vector& u) {
  vector F(static_cast<std::size_t>(order_of(p)));
  EXPECT_EQ(finites_plate_forces(&p, u.data(), F.data()), FINITES_OK);
  return F;
}

finites_plate_results results_of(const finites_plate& p, const vector& u, const double* temperature = nullptr) {
  finites_plate_results r;
  EXPECT_EQ(finites_plate_result(&p, u.data(), temperature, &r), FINITES_OK);
  return r;
}

// Every node and point of the results.
std::vector<finites_plate_point> places(const finites_plate_results& r) {
  std::vector<finites_plate_point> all(r.node, r.node + r.nodes);
  all.insert(all.end(), r.point, r.point + r.points);
  return all;
}

// Force and moment about the origin of nodal loads.
struct resultant {
  point force{}, moment{};
};

resultant resultant_of(const finites_plate& p, const vector& F) {
  resultant sum;
  for (int m = 0; m < p.nodes; ++m) {
    const double* f = &F[static_cast<std::size_t>(6 * m)];
    const double* x = p.xyz[m];
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      sum.force[i] += f[i];
      sum.moment[i] += f[3 + i] + x[j] * f[k] - x[k] * f[j];
    }
  }
  return sum;
}

vector as_vector(const double (&three)[3]) { return vector(three, three + 3); }

}  // namespace

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

// w = -(a x^2 + b y^2 + 2 c x y) / 2 with theta x = w,y and theta y = -w,x: at z the strains are z (a, b, 2 c), at the
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

// The whole plate warmer by t, its top warmer than its bottom by d: u = alpha t x, curvature alpha d / h. K u are the
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

// K r = 0 for the three translations and the three rotations of the nodes, with offsets too. Those of a quadrilateral
// are equal here: a warped one is projected and resists rotations about axes in its plane.
TEST(PlateLaws, RigidMotions) {
  support::seeded_random random(11);
  for (const subjects::plate_kind& kind : subjects::all_plate_kinds()) {
    SCOPED_TRACE(subjects::name_of(kind));
    finites_plate p = subjects::as_numbers(subjects::random_plate(random, kind));
    for (int m = 1; m < 4 && p.nodes == 4; ++m) std::copy_n(p.offset[0], 3, p.offset[m]);
    const vector K = matrix_of(p, finites_plate_stiffness);
    const double scale = support::max_norm(K);
    for (int mode = 0; mode < 6; ++mode) {
      const vector r = at_nodes(p, [mode](double x, double y, double z) {
        std::array<double, 6> v{};
        v[static_cast<std::size_t>(mode)] = 1.0;
        const double wx = v[3], wy = v[4], wz = v[5];
        return std::array<double, 6>{
            v[0] + wy * z - wz * y, v[1] + wz * x - wx * z, v[2] + wx * y - wy * x, wx, wy, wz};
      });
      EXPECT_CLOSE(support::product(K, r), vector(r.size(), 0.0), 6.0 * scale, K_EPS);
    }
    EXPECT_EQ(K, support::transposed(K));
  }
}

// t^T M t = m for a unit translation t, and m is that of the measures: density, factor, area and thickness.
TEST(PlateLaws, Mass) {
  for (finites_plate p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    p.mass_factor = 1.75;
    for (auto& offset : p.offset) {
      offset[0] = 0.1;
      offset[2] = 0.3;
    }
    finites_plate_measures size;
    ASSERT_EQ(finites_plate_measure(&p, &size), FINITES_OK);
    // The shoelace formula.
    double twice = 0.0;
    for (int m = 0; m < p.nodes; ++m) {
      const double *a = p.xyz[m], *b = p.xyz[(m + 1) % p.nodes];
      twice += a[0] * b[1] - a[1] * b[0];
    }
    EXPECT_CLOSE(size.area, 0.5 * twice, size.area, K_EPS);
    EXPECT_CLOSE(size.volume, 0.5 * twice * p.thickness, size.volume, K_EPS);
    EXPECT_CLOSE(size.mass, 0.5 * twice * p.thickness * p.density * 1.75, size.mass, K_EPS);
    const vector M = matrix_of(p, finites_plate_mass);
    for (std::size_t i = 0; i < 3; ++i) {
      vector t(static_cast<std::size_t>(order_of(p)), 0.0);
      for (std::size_t at = i; at < t.size(); at += 6) t[at] = 1.0;
      EXPECT_CLOSE(support::dot(support::product(M, t), t), size.mass, size.mass, K_EPS);
    }
  }
}

// Measures of a rectangle in the y-z plane, moved by its offsets.
TEST(PlateLaws, Measures) {
  finites_plate p = subjects::rectangle(4, FINITES_THIN, 2.0, 1.0);
  for (int m = 0; m < 4; ++m) {
    const double x = p.xyz[m][0], y = p.xyz[m][1];
    p.xyz[m][0] = 5.0;
    p.xyz[m][1] = x;
    p.xyz[m][2] = y;
    p.offset[m][0] = -1.0;
    p.offset[m][2] = 0.5;
  }
  finites_plate_measures size;
  ASSERT_EQ(finites_plate_measure(&p, &size), FINITES_OK);
  EXPECT_EQ(as_vector(size.center), vector({4.0, 1.0, 1.0}));
  EXPECT_EQ(as_vector(size.axes[0]), vector({0.0, 1.0, 0.0}));
  EXPECT_EQ(as_vector(size.axes[1]), vector({0.0, 0.0, 1.0}));
  EXPECT_EQ(as_vector(size.axes[2]), vector({1.0, 0.0, 0.0}));

  const double inside[3] = {4.3, 0.5, 1.2}, outside[3] = {4.0, 2.1, 1.0}, below[3] = {3.0, 1.0, 1.0};
  const double near_side[3] = {4.0, 2.0009, 1.0};
  finites_location at;
  ASSERT_EQ(finites_plate_locate(&p, inside, &at), FINITES_OK);
  EXPECT_EQ(at.inside, 1);
  EXPECT_EQ(at.above, 1);  // 0.3 is more than 0.05 times 2
  EXPECT_CLOSE(at.distance, 0.3, 4.0, K_EPS);
  ASSERT_EQ(finites_plate_locate(&p, outside, &at), FINITES_OK);
  EXPECT_EQ(at.inside, 0);
  EXPECT_EQ(at.above, 0);
  ASSERT_EQ(finites_plate_locate(&p, below, &at), FINITES_OK);
  EXPECT_EQ(at.above, 0);
  EXPECT_CLOSE(at.distance, -1.0, 4.0, K_EPS);
  ASSERT_EQ(finites_plate_locate(&p, near_side, &at), FINITES_OK);
  EXPECT_EQ(at.inside, 1);
}

// Force and moment of nodal loads are those of the load. The center of a flat element's area: by triangles.
TEST(PlateLaws, ResultantsOfLoads) {
  for (const finites_plate& p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    double area = 0.0;
    point moment_of_area{};
    for (int m = 1; m + 1 < p.nodes; ++m) {
      const double *a = p.xyz[0], *b = p.xyz[m], *c = p.xyz[m + 1];
      const double part = 0.5 * ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]));
      area += part;
      for (std::size_t i = 0; i < 3; ++i) moment_of_area[i] += part * (a[i] + b[i] + c[i]) / 3.0;
    }
    const double q[3] = {0.3, -0.2, 0.7}, local[3] = {0.1, 0.4, -0.3};  // the axes are the global ones
    vector F(static_cast<std::size_t>(order_of(p)));
    const auto expect = [&](const point& load, const char* what) {
      const resultant sum = resultant_of(p, F);
      for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
        EXPECT_CLOSE(sum.force[i], load[i] * area, 1.0, K_EPS) << what;
        if (!bends(p) && i != 2) continue;  // a membrane has the forces across it without their moments
        EXPECT_CLOSE(sum.moment[i], moment_of_area[j] * load[k] - moment_of_area[k] * load[j], 2.0, K_EPS) << what;
      }
    };
    ASSERT_EQ(finites_plate_surface_load(&p, q, local, F.data()), FINITES_OK);
    expect({0.4, 0.2, 0.4}, "surface");
    ASSERT_EQ(finites_plate_surface_load(&p, nullptr, nullptr, F.data()), FINITES_OK);
    expect({0.0, 0.0, 0.0}, "none");
    ASSERT_EQ(finites_plate_body_load(&p, q, F.data()), FINITES_OK);
    expect({0.3 * p.thickness, -0.2 * p.thickness, 0.7 * p.thickness}, "body");
  }
}

// A force at a point: force and moment are its own, wherever it stands.
TEST(PlateLaws, ResultantsOfPointLoads) {
  const double q[3] = {0.3, -0.2, 0.7};
  for (const finites_plate& p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    const double at[3] = {0.6, 0.3, 0.0};
    vector F(static_cast<std::size_t>(order_of(p)));
    ASSERT_EQ(finites_plate_point_load(&p, at, q, nullptr, F.data()), FINITES_OK);
    const resultant sum = resultant_of(p, F);
    EXPECT_WITHIN(vector(sum.force.begin(), sum.force.end()), as_vector(q), 1.0, 1e-9);
    EXPECT_WITHIN(sum.moment[2], at[0] * q[1] - at[1] * q[0], 1.0, 1e-9);
    vector local(F.size());
    ASSERT_EQ(finites_plate_point_load(&p, at, nullptr, q, local.data()), FINITES_OK);
    EXPECT_CLOSE(local, F, 1.0, K_EPS);  // the axes are the global ones
    if (!bends(p)) continue;
    EXPECT_WITHIN(sum.moment[0], at[1] * q[2], 1.0, 1e-9);
    EXPECT_WITHIN(sum.moment[1], -at[0] * q[2], 1.0, 1e-9);
  }
}

// Under the membrane forces N a plate that turns by the slopes (sx, sy) does the work area (Nx sx^2 + 2 Nxy sx sy +
// Ny sy^2): tension resists. The forces are given, or those of the displacements of a constant strain.
TEST(PlateLaws, GeometricStiffness) {
  const double sx = 0.02, sy = -0.01;
  for (const finites_plate& p : flat_plates()) {
    SCOPED_TRACE(name_of(p));
    finites_plate_measures size;
    ASSERT_EQ(finites_plate_measure(&p, &size), FINITES_OK);
    const vector turned = at_nodes(
        p, [=](double x, double y, double) { return std::array<double, 6>{0.0, 0.0, sx * x + sy * y, 0.0, 0.0, 0.0}; });
    const auto expect = [&](const vector& KG, double Nx, double Ny, double Nxy) {
      const double work = size.area * (Nx * sx * sx + Ny * sy * sy + 2.0 * Nxy * sx * sy);
      EXPECT_GT(work, 0.0);
      EXPECT_CLOSE(support::dot(support::product(KG, turned), turned), work, work, K_EPS);
      EXPECT_EQ(KG, support::transposed(KG));
    };
    vector KG(turned.size() * turned.size());
    const double N[6] = {3.0, 2.0, -0.5, 7.0, 7.0, 7.0};
    double forces[4][6];
    for (auto& f : forces) std::copy_n(N, 6, f);
    ASSERT_EQ(finites_plate_geometric_of_forces(&p, forces, KG.data()), FINITES_OK);
    expect(KG, 3.0, 2.0, -0.5);

    const double e = 1e-3;
    const vector u =
        at_nodes(p, [=](double x, double, double) { return std::array<double, 6>{e * x, 0.0, 0.0, 0.0, 0.0, 0.0}; });
    const double axial = p.theory == FINITES_MEMBRANE_REDUCED ? 0.01 : 1.0;
    const double Nx = axial * p.E * p.thickness / (1.0 - p.nu * p.nu) * e;
    ASSERT_EQ(finites_plate_geometric(&p, u.data(), KG.data()), FINITES_OK);
    expect(KG, Nx, p.nu * Nx, 0.0);
  }
}

// Of a triangle the forces of the first point alone count.
TEST(PlateLaws, GeometricStiffnessOfATriangleHasOnePoint) {
  const finites_plate p = subjects::rectangle(3, FINITES_THICK, 2.0, 1.0);
  double forces[4][6] = {{3.0, 2.0, -0.5, 0.0, 0.0, 0.0}};
  vector once(18 * 18), again(18 * 18);
  ASSERT_EQ(finites_plate_geometric_of_forces(&p, forces, once.data()), FINITES_OK);
  for (int i = 0; i < 6; ++i) forces[1][i] = forces[2][i] = forces[3][i] = 9.0;
  ASSERT_EQ(finites_plate_geometric_of_forces(&p, forces, again.data()), FINITES_OK);
  EXPECT_EQ(once, again);
}

// Direction 1 at 90 degrees from x: E2 acts along x. At 45 degrees a strain along x has the shear stress of the
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

// Offsets: a plate whose nodes lie under its corners bends when it is pulled. With d = (0, 0, e) u of the corner is
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
