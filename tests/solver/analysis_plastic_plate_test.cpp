// Plates under uniform load to collapse, the cutting of increments, and what the solver makes of the calls of the
// library.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "elastoplastic/plastic_plates.h"
#include "frame_decks.h"
#include "plastic_support.h"

using namespace plastic_test;
using frame_test::number;
using solver::elastoplastic_end;
using solver::elastoplastic_solution;

namespace {

// A quarter of a square plate of side 2 and thickness 0.04 under a load factor of Mp/L^2; edges LEFT and LOWER.
std::string square(sheet s, bool clamped, const std::string& limits, const steel& of = {}) {
  s.n = 6;
  s.E = YOUNG;
  s.nu = POISSON;
  s.thickness = 0.04;
  const std::string edges = clamped ? "LEFT, 3, 5\nLOWER, 3, 5\n" : "LEFT, 3, 4\nLOWER, 3\nLOWER, 5\n";
  const double unit = YIELD * s.thickness * s.thickness / 4 / 4;
  return yielding(s, of, "ALL, 6\nRIGHT, 1\nRIGHT, 5\nUPPER, 2\nUPPER, 4\n" + edges,
                  "*ELASTOPLASTIC\n" + limits + "*DLOAD\nSKIN, P, " + number(unit) + "\n");
}

}  // namespace

TEST(PlasticPlate, SimplySupportedSquare) {
  // 24.86 to 26.54 Mp/L^2 (Hodge and Belytschko, 1968). The elements are not conforming, so that the bounds are no
  // bounds of theirs, and the increments follow the corner of the yield condition with an error of their size.
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    const elastoplastic_solution s = load(square(form, false, ", 150\n")).front();
    EXPECT_EQ(s.end, elastoplastic_end::LIMIT);
    EXPECT_GT(s.largest_factor, 0.97 * 24.86);
    EXPECT_LT(s.largest_factor, 1.03 * 26.54);
    EXPECT_LE(s.out_of_balance, 1e-3);
  }
}

TEST(PlasticPlate, ClampedSquare) {
  // 42.86 to 49.25. The hinge along the edge takes the width of an element, which makes coarse meshes too strong.
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    const elastoplastic_solution s = load(square(form, true, ", 150\n")).front();
    EXPECT_EQ(s.end, elastoplastic_end::LIMIT);
    EXPECT_GT(s.largest_factor, 42.86);
    EXPECT_LT(s.largest_factor, 1.05 * 49.25);
  }
}

TEST(PlasticPlate, Circles) {
  // 6.51 and 12.5 Mp/R^2 (Hopkins and Wang, 1955); the clamped one is too strong by the width of the hinge at its rim.
  const elastoplastic_solution simple = load(frame_test::deck("plastic_circle_simple.inp")).front();
  EXPECT_EQ(simple.end, elastoplastic_end::LIMIT);
  EXPECT_WITHIN(simple.largest_factor, 6.51, 6.51, 0.03);
  const elastoplastic_solution clamped = load(frame_test::deck("plastic_circle_clamped.inp")).front();
  EXPECT_EQ(clamped.end, elastoplastic_end::LIMIT);
  EXPECT_GT(clamped.largest_factor, 0.97 * 12.5);
  EXPECT_LT(clamped.largest_factor, 1.1 * 12.5);
}

TEST(PlasticPlate, ReactionsCarryTheLoad) {
  const elastoplastic_solution s = load(square(sheet{}, true, ", 150\n")).front();
  double load = 0, reaction = 0;
  for (std::size_t f = 2; f < s.plates.load.size(); f += 6) {
    load += s.plates.load[f];
    reaction += s.plates.reaction[f];
  }
  EXPECT_WITHIN(load, s.factor * YIELD * 0.04 * 0.04 / 16, load, 1e-12);
  EXPECT_WITHIN(-reaction, load, load, 2e-3);
}

TEST(PlasticPlate, LargeIncrementsFindTheLimitToo) {
  const elastoplastic_solution s = load(square(sheet{}, true, ", 150, 100.\n")).front();
  EXPECT_EQ(s.end, elastoplastic_end::LIMIT);
  EXPECT_GT(s.largest_factor, 0.95 * 42.86);
  EXPECT_LT(s.largest_factor, 1.05 * 49.25);
}

TEST(PlasticPlate, StopsAtTheLimitsOfTheDeck) {
  const elastoplastic_solution few = load(square(sheet{}, true, ", 5\n")).front();
  EXPECT_EQ(few.end, elastoplastic_end::INCREMENTS_REACHED);
  EXPECT_EQ(few.curve.size(), 6U);  // with the origin
  const elastoplastic_solution low = load(square(sheet{}, true, "10.\n")).front();
  EXPECT_EQ(low.end, elastoplastic_end::FACTOR_REACHED);
  EXPECT_EQ(low.factor, 10);
  EXPECT_EQ(low.first_yield, 0);
  EXPECT_EQ(low.curve.size(), 2U);
  const elastoplastic_solution high = load(square(sheet{}, true, "40.\n")).front();
  EXPECT_EQ(high.end, elastoplastic_end::FACTOR_REACHED);
  EXPECT_EQ(high.factor, 40);
}

TEST(PlasticPlate, BelowFirstYieldItIsTheLinearStep) {
  std::string text = square(sheet{}, true, "10.\n");
  const elastoplastic_solution s = load(text).front();
  text.replace(text.find("*ELASTOPLASTIC\n10.\n"), 19, "*STATIC\n");
  const solved linear = solve(read(text));
  const double size = max_norm(linear.solution.displacement);
  for (std::size_t f = 0; f < linear.solution.displacement.size(); ++f)
    EXPECT_LT(std::fabs(s.plates.displacement[f] - 10 * linear.solution.displacement[f]), 1e-8 * 10 * size);
  for (std::size_t e = 0; e < s.results.elements.size(); ++e)
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_LT(std::fabs(s.results.elements[e].moment[i] - 10 * linear.results.elements[e].moment[i]),
                1e-7 * YIELD * 0.04 * 0.04);
}

namespace {

// Some displacements of one element, in its plane and across it.
solver::element_vector shake(double size) {
  solver::element_vector u{};
  for (int i = 1; i <= 24; ++i) u(i) = size * std::sin(1.7 * i + 0.3);
  return u;
}

double norm_of(const solver::element_vector& f) {
  double sum = 0;
  for (int i = 1; i <= 24; ++i) sum += f(i) * f(i);
  return std::sqrt(sum);
}

solver::element_vector difference(const solver::element_vector& a, const solver::element_vector& b) {
  solver::element_vector d{};
  for (int i = 1; i <= 24; ++i) d(i) = a(i) - b(i);
  return d;
}

std::vector<sheet> single_elements() {
  std::vector<sheet> forms;
  for (sheet form : all_forms()) {
    form.n = 1;
    form.E = YOUNG;
    form.thickness = 2;
    form.place = [](double u, double v) { return point{30 * u + 4 * v, 25 * v - 3 * u * v, 10 * u}; };
    if (form.kind == cells::QUADS)
      form.place = [](double u, double v) { return point{30 * u + 4 * v, 25 * v - 3 * u * v, 0}; };
    forms.push_back(form);
  }
  return forms;
}

solver::model element_model(const sheet& form, const std::string& model_of) {
  return read(yielding(form, {0, model_of}, "LEFT, 1, 6\n", "*ELASTOPLASTIC\n*CLOAD\n4, 3, 1.\n"));
}

}  // namespace

TEST(PlasticElement, ElasticForcesAreThoseOfOperationThree) {
  for (const sheet& form : single_elements()) {
    for (const char* const which : {"MODEL=SECTION", "MODEL=LAYERED, POINTS=5"}) {
      SCOPED_TRACE(name_of(form) + " " + which);
      const solver::model m = element_model(form, which);
      solver::library_model library(m);
      solver::plastic_plates plates(m, library);
      const solver::element_vector u = shake(1e-6);
      solver::element_vector tried{};
      plates.try_increment(0, u, tried);
      ASSERT_TRUE(plates.update(0, u));
      EXPECT_EQ(plates.flowing_points(0), 0);
      EXPECT_LT(norm_of(difference(plates.forces(0, u), tried)), 1e-11 * norm_of(tried));
    }
  }
}

TEST(PlasticElement, TheTangentIsTheDerivativeOfTheForces) {
  for (const sheet& form : single_elements()) {
    SCOPED_TRACE(name_of(form));
    const solver::model m = element_model(form, "MODEL=SECTION");
    solver::library_model library(m);
    solver::plastic_plates plates(m, library);
    const solver::element_vector u = shake(0.02);
    ASSERT_TRUE(plates.update(0, u));
    ASSERT_GT(plates.flowing_points(0), 0);
    solver::element_matrix K{};
    plates.tangent(0, K);
    const double step = 1e-6;
    solver::element_vector ahead = u, behind = u, direction{}, product{};
    for (int i = 1; i <= 24; ++i) direction(i) = std::cos(2.3 * i);
    for (int i = 1; i <= 24; ++i) {
      ahead(i) += step * direction(i);
      behind(i) -= step * direction(i);
    }
    ASSERT_TRUE(plates.update(0, ahead));
    const solver::element_vector f = plates.forces(0, ahead);
    ASSERT_TRUE(plates.update(0, behind));
    solver::element_vector slope = difference(f, plates.forces(0, behind));
    const int count = 6 * static_cast<int>(m.elements[0].nodes.size());
    for (int j = 1; j <= count; ++j)
      for (int i = 1; i <= count; ++i) product(i) += K(i, j) * direction(j) * 2 * step;
    EXPECT_LT(norm_of(difference(slope, product)), 1e-4 * norm_of(product));
  }
}

TEST(PlasticElement, ForcesOfOperationThreeAreRightToFirstOrder) {
  // Tangent at the end times the increment: against the forces of the state the error falls with the square.
  const solver::model m = element_model(single_elements()[1], "MODEL=SECTION");
  solver::library_model library(m);
  solver::plastic_plates plates(m, library);
  const solver::element_vector start = shake(0.02);
  ASSERT_TRUE(plates.update(0, start));
  ASSERT_GT(plates.flowing_points(0), 0);
  const solver::element_vector before = plates.forces(0, start);
  plates.accept(0, start);
  double error[2];
  for (int k = 0; k < 2; ++k) {
    const double size = k == 0 ? 0.04 : 0.02;
    solver::element_vector increment{}, tried{}, end = start;
    for (int i = 1; i <= 24; ++i) {
      increment(i) = size * start(i);
      end(i) += increment(i);
    }
    const solver::element_vector untouched = plates.forces(0, start);
    plates.try_increment(0, increment, tried);
    EXPECT_EQ(norm_of(difference(plates.forces(0, start), untouched)), 0) << "operation 3 has stored something";
    ASSERT_TRUE(plates.update(0, increment));
    error[k] = norm_of(difference(difference(plates.forces(0, end), before), tried));
  }
  EXPECT_LT(error[1], 0.35 * error[0]);
}

TEST(PlasticElement, AnIncrementThatIsRepeatedGivesTheSameState) {
  const solver::model m = element_model(single_elements()[1], "MODEL=SECTION");
  solver::library_model library(m);
  solver::plastic_plates plates(m, library);
  const solver::element_vector u = shake(0.02);
  ASSERT_TRUE(plates.update(0, shake(0.05)));
  ASSERT_TRUE(plates.update(0, u));
  const solver::element_vector once = plates.forces(0, u);
  const auto shown = library.plates().state(0).SEC_EP_INC(1, 1);
  ASSERT_TRUE(plates.update(0, u));
  EXPECT_EQ(norm_of(difference(plates.forces(0, u), once)), 0);
  EXPECT_EQ(library.plates().state(0).SEC_EP_INC(1, 1), shown);
  EXPECT_EQ(library.plates().state(0).SEC_EP_INC(1, 1), library.plates().state(0).SEC_EP_CUR(1, 1));
}

TEST(PlasticElement, WhatWasTriedIsForgotten) {
  for (const char* const which : {"MODEL=SECTION", "MODEL=LAYERED, POINTS=5"}) {
    SCOPED_TRACE(which);
    const solver::model m = element_model(single_elements()[1], which);
    solver::library_model library(m);
    solver::plastic_plates plates(m, library);
    const solver::element_vector u = shake(0.02);
    ASSERT_TRUE(plates.update(0, u));
    ASSERT_GT(plates.flowing_points(0), 0);
    plates.accept(0, u);
    const solver::element_vector accepted = plates.forces(0, u);
    const double strain = plates.values(0, 1, u).equivalent;
    solver::element_matrix K{}, again{};
    plates.tangent(0, K);
    ASSERT_TRUE(plates.update(0, shake(0.03)));
    ASSERT_GT(plates.values(0, 1, u).equivalent, strain);
    plates.restore(0);
    plates.tangent(0, again);
    EXPECT_EQ(norm_of(difference(plates.forces(0, u), accepted)), 0);
    EXPECT_EQ(plates.values(0, 1, u).equivalent, strain);
    EXPECT_TRUE(std::equal(std::begin(K.V), std::end(K.V), std::begin(again.V)));
  }
}

// The library stores nothing at a point whose return fails: an increment that is not a number cannot be returned.
TEST(PlasticElement, AReturnThatFailsFailsTheUpdate) {
  const solver::model m = element_model(single_elements()[1], "MODEL=LAYERED, POINTS=5");
  solver::library_model library(m);
  solver::plastic_plates plates(m, library);
  solver::element_vector u = shake(0.02);
  u(1) = std::nan("");
  const solver::quiet_assertions trial;
  EXPECT_FALSE(plates.update(0, u));
  plates.restore(0);
  EXPECT_TRUE(plates.update(0, shake(0.02)));
}
