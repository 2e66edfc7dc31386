// Points of whole elements that yield: they return to the nearest state.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elastoplastic/plastic_plates.h"
#include "plastic_support.h"

using namespace plastic_test;
using namespace solver;

namespace {

constexpr double H = 4;  // thickness
constexpr double N0 = YIELD * H, M0 = YIELD * H * H / 4;

// The condition, written from its definition.
double condition(const section_vector& s) {
  const double n1 = s(1) / N0, n2 = s(2) / N0, n12 = s(3) / N0, m1 = s(4) / M0, m2 = s(5) / M0, m12 = s(6) / M0;
  const double Qt = n1 * n1 + n2 * n2 - n1 * n2 + 3 * n12 * n12, Qm = m1 * m1 + m2 * m2 - m1 * m2 + 3 * m12 * m12;
  const double Qtm = n1 * m1 + n2 * m2 - n1 * m2 / 2 - n2 * m1 / 2 + 3 * n12 * m12;
  return Qt + Qm + std::fabs(Qtm) / std::sqrt(3.0) + 3 * (s(7) * s(7) + s(8) * s(8)) / (N0 * N0);
}

section_vector sum(section_vector a, double factor, const section_vector& b) {
  for (int i = 1; i <= 8; ++i) a(i) += factor * b(i);
  return a;
}

double dot(const section_vector& a, const section_vector& b) {
  double result = 0;
  for (int i = 1; i <= 8; ++i) result += a(i) * b(i);
  return result;
}

class random_forces {
 public:
  explicit random_forces(unsigned seed) : random_(seed) {}
  // Membrane forces, moments and shears of the given sizes, by the plastic ones.
  section_vector of(double n, double m, double q) {
    section_vector s;
    for (int i = 1; i <= 8; ++i) s(i) = one_(random_) * (i <= 3 ? n * N0 : i <= 6 ? m * M0 : q * N0);
    return s;
  }
  // On the yield surface, in any direction.
  section_vector admissible() {
    const section_vector s = of(1, 1, 0.5);
    return sum(section_vector{}, 1 / std::sqrt(condition(s)), s);
  }

 private:
  std::mt19937 random_;
  std::normal_distribution<double> one_{0, 1};
};

}  // namespace

// Of two trial states the returned ones are no farther apart, in the norm of D^-1: the return is a projection on a
// convex set. Whole elements: points off the corner go through the library.
TEST(PlasticPoints, ElementsReturnToTheNearestState) {
  for (const sheet& one : all_forms()) {
    sheet form = one;
    form.n = 1;
    form.E = YOUNG;
    form.thickness = H;
    form.place = [](double u, double v) { return point{30 * u + 4 * v, 25 * v - 3 * u * v, 0}; };
    SCOPED_TRACE(name_of(form));
    const model m = read(yielding(form, {0, "MODEL=SECTION"}, "LEFT, 1, 6\n", "*ELASTOPLASTIC\n*CLOAD\n4, 3, 1.\n"));
    library_model library(m);
    plastic_plates plates(m, library);
    std::mt19937 random(3);
    std::normal_distribution<double> one_value(0, 1);
    random_forces draw(5);
    int flowing = 0;
    for (int k = 0; k < 300; ++k) {
      element_vector u{};
      for (int i = 1; i <= 6 * static_cast<int>(m.elements[0].nodes.size()); ++i)
        u(i) = one_value(random) * ((i - 1) % 6 < 2 ? 0.02 : (i - 1) % 6 == 2 ? 0.3 : 0.03);
      ASSERT_TRUE(plates.update(0, u));
      flowing += plates.flowing_points(0);
      for (int q = 1; q <= SURFACE_POINTS; ++q) {
        const point_values v = plates.values(0, q, u);
        EXPECT_LT(condition(v.force), 1 + 1e-4);
        section_vector flow{};  // from the plastic strains at the faces and the shears
        for (int i = 1; i <= 3; ++i) {
          flow(i) = v.plastic[1](i);
          flow(i + 3) = (v.plastic[2](i) - v.plastic[0](i)) / H;
        }
        for (int i = 0; i < 2; ++i) flow(7 + i) = v.plastic_shear[static_cast<std::size_t>(i)];
        for (int other = 0; other < 20; ++other) {
          const section_vector away = sum(v.force, -1, draw.admissible());
          EXPECT_GE(dot(flow, away), -1e-4 * std::fabs(dot(flow, v.force)));
        }
      }
    }
    EXPECT_GT(flowing, 600);
  }
}
