// plates_resultants_test.cpp: matrices, loads and measures of plates against mechanics: rigid motions, mass, area,
// resultants, the work of membrane forces.
#include <algorithm>
#include <array>
#include <vector>

#include "plate_laws.h"

using namespace plate_laws;

namespace {

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

}  // namespace

// are equal here: a warped one is projected and resists rotations about axes in its plane.
TEST(PlateResultants, RigidMotions) {
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
TEST(PlateResultants, Mass) {
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
TEST(PlateResultants, Measures) {
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
TEST(PlateResultants, ResultantsOfLoads) {
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
TEST(PlateResultants, ResultantsOfPointLoads) {
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

// Ny sy^2): tension resists. The forces are given, or those of the displacements of a constant strain.
TEST(PlateResultants, GeometricStiffness) {
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
TEST(PlateResultants, GeometricStiffnessOfATriangleHasOnePoint) {
  const finites_plate p = subjects::rectangle(3, FINITES_THICK, 2.0, 1.0);
  double forces[4][6] = {{3.0, 2.0, -0.5, 0.0, 0.0, 0.0}};
  vector once(18 * 18), again(18 * 18);
  ASSERT_EQ(finites_plate_geometric_of_forces(&p, forces, once.data()), FINITES_OK);
  for (int i = 0; i < 6; ++i) forces[1][i] = forces[2][i] = forces[3][i] = 9.0;
  ASSERT_EQ(finites_plate_geometric_of_forces(&p, forces, again.data()), FINITES_OK);
  EXPECT_EQ(once, again);
}
