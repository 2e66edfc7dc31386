// modifiers_test.cpp: the stiffness modifiers on their way to the engines, and formulation code 98, which reduces the
// axial membrane stiffness alone.
#include <gtest/gtest.h>

#include <vector>

#include "comparison.h"
#include "element_calls/plate_call.h"
#include "plate_calls.h"

namespace {

using plate_calls::plate_description;
using plate_calls::plate_model;

constexpr std::size_t ORDER = 18;

ELEM_LOADS loads_of(plate_model& model, int op) {
  PLATE_CALL call(PLATEELEM, model.raw(), op, 1, model.block(1));
  prepare_plate(call);
  return call.LOADS;
}

std::vector<double> stiffness_of(const plate_description& d) {
  plate_model model({d});
  return model.stiffness(1);
}

plate_description isotropic(int formulation) {
  return plate_calls::isotropic(plate_calls::flat_triangle(), formulation);
}

// A B^T D B of the constant strain triangle whose axes are the global ones; only the entries of D that are given.
std::vector<double> membrane(const plate_description& d, double d11, double d12, double d22, double d33) {
  const std::vector<support::point>& p = d.nodes;
  const double two_area = (p[1][0] - p[0][0]) * (p[2][1] - p[0][1]) - (p[2][0] - p[0][0]) * (p[1][1] - p[0][1]);
  double B[3][6] = {};
  for (std::size_t n = 0; n < 3; ++n) {
    const support::point &next = p[(n + 1) % 3], &last = p[(n + 2) % 3];
    const double nx = (next[1] - last[1]) / two_area, ny = (last[0] - next[0]) / two_area;
    B[0][2 * n] = B[2][2 * n + 1] = nx;
    B[1][2 * n + 1] = B[2][2 * n] = ny;
  }
  const double D[3][3] = {{d11, d12, 0.0}, {d12, d22, 0.0}, {0.0, 0.0, d33}};
  std::vector<double> K(ORDER * ORDER, 0.0);
  for (std::size_t i = 0; i < 6; ++i) {
    for (std::size_t j = 0; j < 6; ++j) {
      double sum = 0.0;
      for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t s = 0; s < 3; ++s) sum += B[r][i] * D[r][s] * B[s][j];
      }
      K[ORDER * (6 * (j / 2) + j % 2) + 6 * (i / 2) + i % 2] = 0.5 * two_area * sum;
    }
  }
  return K;
}

std::vector<double> minus(std::vector<double> a, const std::vector<double>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] -= b[i];
  return a;
}

}  // namespace

TEST(Modifiers, ReachTheEngineInTheirPlaces) {
  for (const int op : {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10, 6}) {
    plate_model model({isotropic(1)});
    const ELEM_LOADS L = loads_of(model, op);
    EXPECT_EQ(L(35), 0.9) << "operation " << op;
    EXPECT_EQ(L(36), 0.9) << "operation " << op;
    EXPECT_EQ(L(37), 0.7) << "operation " << op;
    EXPECT_EQ(L(38), 0.6) << "operation " << op;
    for (int i = 1; i <= 50; ++i) {
      if (i >= 35 && i <= 38) continue;
      EXPECT_EQ(L(i), 0.0) << "place " << i;
    }
  }
}

TEST(Modifiers, MembraneAndBendingScaleTheirOwnParts) {
  plate_description d = isotropic(1), plain = d;
  plain.modifier_membrane = 1.0;
  plain.modifier_bending = 1.0;
  const double c = d.thickness * d.young / (1.0 - 0.3 * 0.3), g = d.thickness * d.young / (2.0 * 1.3);
  const std::vector<double> difference = minus(stiffness_of(plain), stiffness_of(d));
  // On u and v a tenth of the membrane; on the rest three tenths of the bending; nothing of the drilling.
  const std::vector<double> of_membrane = membrane(d, 0.1 * c, 0.1 * c * 0.3, 0.1 * c, 0.1 * g);
  const std::vector<double> K = stiffness_of(plain);
  for (std::size_t j = 0; j < ORDER; ++j) {
    for (std::size_t i = 0; i < ORDER; ++i) {
      const bool in_plane = i % 6 < 2 || j % 6 < 2, drilling = i % 6 == 5 || j % 6 == 5;
      const double entry = K[ORDER * j + i];
      const double expected = in_plane ? of_membrane[ORDER * j + i] : drilling ? 0.0 : 0.3 * entry;
      EXPECT_CLOSE(difference[ORDER * j + i], expected, support::max_norm(K), 20.0) << i + 1 << ", " << j + 1;
    }
  }
}

// ------------------------------------------------------------------------------------------------ code 98

TEST(ReducedMembrane, LosesNinetyNinePercentOfItsAxialStiffnessAndNothingElse) {
  const plate_description full = isotropic(2), reduced = isotropic(98);
  const double c = 0.9 * full.thickness * full.young / (1.0 - 0.3 * 0.3);
  const std::vector<double> K = stiffness_of(full), K98 = stiffness_of(reduced);
  EXPECT_CLOSE(minus(K, K98), membrane(full, 0.99 * c, 0.99 * c * 0.3, 0.99 * c, 0.0), support::max_norm(K), 20.0);
  for (const int other : {3, 99}) EXPECT_EQ(stiffness_of(isotropic(other)), K) << other;
}

TEST(ReducedMembrane, StressesShowTheSameParts) {
  const std::vector<double> u = {0, 0, 0, 0, 0, 0, 2e-3, 0, 0, 0, 0, 0, 2e-3, 3e-3, 0, 0, 0, 0};
  std::vector<double> full, reduced;
  {
    plate_model model({isotropic(2)});
    full = model.results(1, u).points;
  }
  plate_model model({isotropic(98)});
  reduced = model.results(1, u).points;
  for (const std::size_t column : {17U, 18U, 36U, 37U}) {  // sx, sy, Nx, Ny
    EXPECT_CLOSE(reduced[column], 0.01 * full[column], 0.01 * full[column], 8.0) << column + 1;
  }
  EXPECT_EQ(reduced[19], full[19]);  // sxy
  EXPECT_NE(full[19], 0.0);
}

TEST(ReducedMembrane, CopiesInPlateelemStayUnscaled) {
  for (const plate_description& d : {isotropic(98), plate_calls::orthotropic(plate_calls::flat_triangle(), 98)}) {
    plate_model model({d});
    plate_calls::prepare(model, 1);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(PLATEELEM.MOD_MEMBRANE(i), 0.9);
  }
}

TEST(ReducedMembrane, GeneralSectionsAreNotReduced) {
  for (const bool comp : {false, true}) {
    const auto section = [comp](int formulation) {
      return comp ? plate_calls::composite(plate_calls::space_triangle(), formulation)
                  : plate_calls::orthotropic(plate_calls::space_triangle(), formulation);
    };
    EXPECT_EQ(stiffness_of(section(98)), stiffness_of(section(2)));
  }
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(ModifierEdgeCases, CodeNinetyEightScalesTheAxialModifierAloneByAHundredth) {
  for (const int op : {1, 3, 5, 401, 8}) {
    plate_model model({isotropic(98)});
    const ELEM_LOADS L = loads_of(model, op);
    EXPECT_EQ(L(35), 0.9 * 0.01) << "operation " << op;
    EXPECT_EQ(L(36), 0.9) << "operation " << op;
    EXPECT_EQ(L(37), 0.7) << "operation " << op;
    EXPECT_EQ(L(38), 0.6) << "operation " << op;
  }
}
