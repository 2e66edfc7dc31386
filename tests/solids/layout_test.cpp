// layout_test.cpp: where solids find what they read: a model laid out by its subscripts alone, none of the library's
// names between, and the order of the fields in the records of the solver.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "comparison.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "guarded_buffer.h"
#include "tarnix.h"

namespace {

// A cube of edge 2 whose axes are the global ones: E 1000, v 0.25, unit weight 9810. All else in A is NaN.
class hand_laid_model {
 public:
  hand_laid_model() : A_(900, std::numeric_limits<double>::quiet_NaN()), positions_{0, 2}, records_(2), states_(2) {
    TARNIX_CLEAR();
    constexpr double corner[8][3] = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0},
                                     {0, 0, 2}, {2, 0, 2}, {2, 2, 2}, {0, 2, 2}};
    at(14) = at(15) = at(41) = 0.0;
    at(IOFF) = 4600.0;
    at(MATERIAL + 3) = 1000.0;
    at(MATERIAL + 4) = 0.25;
    at(MATERIAL + 5) = 9810.0;
    record().ELEM_NO = 77;
    record().MAT_OFF = MATERIAL;
    record().NNODE = 8;
    record().STIFF_FACTOR = 1.0F;
    for (int k = 1; k <= 8; ++k) {
      record().NODE_OFF(k) = node(k);
      for (int i = 0; i < 3; ++i) at(node(k) + 5 + i) = corner[k - 1][i];
    }
    SOLANAELEM.SOLID_POS = REFER_TO(positions_.data(), positions_.size());
    SOLANAELEM.SOLID_REC = REFER_TO(records_.data(), records_.size());
    SOLANAELEM.SOLID_NL_REC = REFER_TO(states_.data(), states_.size());
  }
  hand_laid_model(const hand_laid_model&) = delete;
  hand_laid_model& operator=(const hand_laid_model&) = delete;
  ~hand_laid_model() { TARNIX_CLEAR(); }

  static constexpr std::int32_t IELEM = 2, IOFF = 230, MATERIAL = 250;
  static std::int32_t node(int k) { return 300 + 20 * (9 - k); }
  double& at(int subscript) { return A_[static_cast<std::size_t>(subscript - 1)]; }
  double* A() { return A_.data(); }
  std::int32_t extent() const { return static_cast<std::int32_t>(A_.size()); }
  SOLID_RECORD& record() { return records_[1]; }
  SOLID_NL_RECORD& state() { return states_[1]; }

  std::vector<double> matrix(std::int32_t op) {
    const std::int32_t elem = IELEM, entry = IOFF, n = extent(), nodes = 8;
    const double G[3] = {0, 0, 0};
    std::vector<double> K(576, std::numeric_limits<double>::quiet_NaN());
    std::string msg(500, '~');
    std::int32_t ierr = -1;
    FINITES_SOLID_3D(&op, &elem, &entry, A(), &n, G, nullptr, &nodes, K.data(), &ierr, msg.data());
    EXPECT_EQ(ierr, 0);
    return K;
  }

 private:
  std::vector<double> A_;
  std::vector<std::int32_t> positions_;
  std::vector<SOLID_RECORD> records_;
  std::vector<SOLID_NL_RECORD> states_;
};

// x^T K x for the stretch u = x along x.
double energy_of_stretch(const std::vector<double>& K) {
  std::vector<double> u(24, 0.0);
  for (const std::size_t k : {1U, 2U, 5U, 6U}) u[3 * k] = 2.0;
  return support::dot(u, support::product(K, u));
}

}  // namespace

// E (1 - v) / ((1 + v)(1 - 2 v)) = 1200 over a volume of 8.
TEST(SolidLayout, MaterialAndCoordinates) {
  hand_laid_model model;
  EXPECT_CLOSE(energy_of_stretch(model.matrix(1)), 9600.0, 9600.0, 30);
  EXPECT_CLOSE(model.matrix(2)[0], 8.0 / 27.0, 1.0, 20);  // a density of 1, N1^2 over the cube
  model.at(hand_laid_model::MATERIAL + 4) = 0.0;
  EXPECT_CLOSE(energy_of_stretch(model.matrix(1)), 8000.0, 8000.0, 30);
}

// A stress of 100 along x adds 100 times the volume.
TEST(SolidLayout, SwitchesOfTheGeometricPart) {
  hand_laid_model model;
  for (int p = 1; p <= 8; ++p) model.state().GAUSS_STRESS(1, p) = 100.0;
  const auto expect = [&](double kind, double state, double step, double energy) {
    model.at(41) = kind;
    model.at(15) = state;
    model.at(14) = step;
    EXPECT_CLOSE(energy_of_stretch(model.matrix(1)), energy, 10400.0, 30) << kind << " " << state << " " << step;
  };
  expect(0, 0, 0, 9600.0);
  expect(1, 0, 0, 10400.0);
  expect(1, 0, 1, 10400.0);
  expect(1, 1, 0, 9600.0);  // the very first pass
  expect(1, 1, 1, 10400.0);
  expect(3, 1, 1, 9600.0);
}

TEST(SolidLayout, JointResultsOfALoadCase) {
  hand_laid_model model;
  model.at(151) = 4.0;
  model.at(215) = 500.0;
  std::fill_n(&model.at(501), 300, 0.0);
  const std::int32_t load = 3, n = model.extent(), NN = 1, ID[1] = {5};
  const double F[3] = {1, 2, 3};
  RAMSR_SOLID(&load, &n, model.A(), &NN, ID, F);
  constexpr int b = ((5 - 1) * 4 + 3 - 1) * 8 + 500;
  for (int subscript = 501; subscript <= 800; ++subscript) {
    const bool written = subscript >= b + 2 && subscript <= b + 4;
    EXPECT_EQ(model.at(subscript), written ? subscript - b - 1.0 : 0.0) << subscript;
  }
}

TEST(SolidLayout, EquationsOfAJoint) {
  hand_laid_model model;
  model.at(79) = 600.0;
  std::fill_n(&model.at(601), 100, 0.0);
  for (int k = 1; k <= 8; ++k) model.at(hand_laid_model::node(k) + 15) = k == 6 ? 3.0 : 1.0;
  for (int j = 1; j <= 3; ++j) model.at(600 + (3 - 1) * 7 + j) = 10.0 * j;
  std::vector<double> UG;
  for (int i = 1; i <= 40; ++i) UG.push_back(1000.0 + i);
  const std::int32_t elem = hand_laid_model::IELEM, entry = hand_laid_model::IOFF, n = model.extent(), NUG = 40;
  std::int32_t NN = 0;
  GET_NONLIN_UGLO_SOLIDELEM_RAM(&elem, &NN, &entry, model.A(), &n, UG.data(), &NUG);
  EXPECT_EQ(NN, 8);
  for (int k = 1; k <= 27; ++k) {
    for (int i = 1; i <= 3; ++i) {
      EXPECT_EQ(model.record().U_ELEM(i, k), k == 6 ? 1003.0 + 10.0 * i : 0.0) << i << " " << k;
    }
  }
}

// The solver keeps these records: their fields lie in this order, 4 bytes for integers and the stiffness factor.
TEST(SolidLayout, FieldsOfTheRecords) {
  constexpr std::size_t reals = 27 * sizeof(double);
  EXPECT_EQ(offsetof(SOLID_RECORD, ELEM_NO), 0U);
  EXPECT_EQ(offsetof(SOLID_RECORD, MAT_OFF), 4U);
  EXPECT_EQ(offsetof(SOLID_RECORD, NNODE), 8U);
  EXPECT_EQ(offsetof(SOLID_RECORD, NODE_OFF), 12U);
  EXPECT_EQ(offsetof(SOLID_RECORD, STIFF_FACTOR), 12U + 9 * 4);
  EXPECT_EQ(sizeof(SOLID_RECORD::STIFF_FACTOR), 4U);
  constexpr std::size_t first = offsetof(SOLID_RECORD, U_ELEM);
  EXPECT_EQ(offsetof(SOLID_RECORD, F_ELEM), first + 3 * reals);
  EXPECT_EQ(offsetof(SOLID_RECORD, RES50_NODE), first + 6 * reals);
  EXPECT_EQ(offsetof(SOLID_RECORD, RES50_GAUSS), first + 56 * reals);
  EXPECT_EQ(sizeof(SOLID_RECORD), first + 106 * reals);
  EXPECT_EQ(offsetof(SOLID_NL_RECORD, GAUSS_STRESS), 0U);
  EXPECT_EQ(offsetof(SOLID_NL_RECORD, U_NL), 6 * reals);
  EXPECT_EQ(sizeof(SOLID_NL_RECORD), 9 * reals);
}
