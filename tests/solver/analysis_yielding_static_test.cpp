// *STATIC of what yields: shells and frames with hinges follow their path to the full load, or the step is an error.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame_decks.h"
#include "plastic_support.h"
#include "pushover_support.h"
#include "run_support.h"

using frame_test::number;
using frame_test::straight_member;
using plastic_test::a_strip;
using plastic_test::POISSON;
using plastic_test::strip;
using plastic_test::YIELD;
using plastic_test::YOUNG;
using run_test::a_step;
using run_test::ran;
using run_test::run;
using run_test::run_error;
using shell_test::sheet;

namespace {

constexpr double H = 4, WIDTH = 20, LENGTH = 100;
constexpr double N_PLASTIC = YIELD * H * WIDTH, M_PLASTIC = YIELD * H * H / 4 * WIDTH;

std::string tension(const strip& s, double share, const std::string& card = "*STATIC\n") {
  return s.deck(1, share * N_PLASTIC, card);
}

std::string bending(const strip& s, double share, const std::string& card = "*STATIC\n") {
  return s.deck(5, share * M_PLASTIC, card);
}

int end_node(const strip& s) { return s.mesh.node(s.mesh.n, s.mesh.n / 2) + 1; }

bool says(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }

// A strip of 15 points through the thickness, whose state stays uniaxial (Poisson's ratio 1/2).
strip uniaxial() {
  strip s = a_strip(sheet{});
  s.mesh.nu = 0.5;
  s.of.model = "MODEL=LAYERED, POINTS=15";
  return s;
}

// A beam built in on the left and propped on the right, a force in the middle; M_p of 1e8.
straight_member propped() {
  straight_member b;
  b.elements = 2;
  return b;
}

std::string propped_deck(double force, const std::string& flags, const std::string& card) {
  const straight_member b = propped();
  return b.deck(pushover_test::hinges("LINEAR", 1e12, 1e12, 1e8), "1, ENCASTRE\n3, 2, 3\nALL, 3, 5\n",
                card + "*CLOAD\n2, 2, " + number(-force) + "\n", flags);
}

}  // namespace

TEST(AnalysisYieldingStatic, HardeningInTension) {
  // fy + Hp ep: strain s / E + (s - fy) / Hp.
  const double Hp = YOUNG / 50;
  for (const sheet& form : shell_test::all_forms()) {
    strip s = a_strip(form);
    s.of = {Hp, "MODEL=LAYERED, POINTS=3"};
    const ran r = run(tension(s, 1.2));
    const double strain = 1.2 * YIELD / YOUNG + 0.2 * YIELD / Hp;
    EXPECT_WITHIN(r.u(1, end_node(s), 'x'), LENGTH * strain, LENGTH * strain, 5e-6) << name_of(form);
    EXPECT_TRUE(says(r.text, "shells yield from 0.833333 of the loads on")) << r.text;
  }
}

TEST(AnalysisYieldingStatic, ElastoPlasticCurvature) {
  // M / Me = 1.5 - 0.5 (ke / k)^2 with Me = 2/3 Mp; the deflection is in proportion to the curvature k.
  const strip s = uniaxial();
  const double elastic = run(bending(s, 0.5)).u(1, end_node(s), 'z') / 0.5 * 2 / 3;
  for (const double times : {1.2, 1.5, 2.0}) {
    const ran r = run(bending(s, (1.5 - 0.5 / (times * times)) * 2 / 3));
    EXPECT_WITHIN(r.u(1, end_node(s), 'z'), times * elastic, std::fabs(times * elastic), 0.02) << times;
  }
}

TEST(AnalysisYieldingStatic, TheSameAsAnElastoplasticStepToFactorOne) {
  for (const bool layered : {false, true}) {
    strip s = a_strip(sheet{});
    s.of = {YOUNG / 40, layered ? "MODEL=LAYERED, POINTS=5" : ""};
    const ran r = run(bending(s, 1.05)), path = run(bending(s, 1.05, "*ELASTOPLASTIC\n1., 400\n"));
    const double there = path.u(1, end_node(s), 'z');
    EXPECT_WITHIN(r.u(1, end_node(s), 'z'), there, std::fabs(there), 1e-12) << layered;
    const ran elastic = run(bending(s, 1.05, "*STATIC, ELASTIC\n"));
    EXPECT_GT(std::fabs(there), 1.2 * std::fabs(elastic.u(1, end_node(s), 'z'))) << layered;
  }
}

TEST(AnalysisYieldingStatic, WhatDoesNotYieldIsElastic) {
  const strip s = uniaxial();
  for (const double share : {0.6, -0.6}) {
    const ran r = run(bending(s, share)), elastic = run(bending(s, share, "*STATIC, ELASTIC\n"));
    for (const char* const name : {"ux", "uz", "ry", "rfx", "rmy"}) {
      if (std::find(r.steps[0].names.begin(), r.steps[0].names.end(), name) == r.steps[0].names.end()) continue;
      EXPECT_EQ(r.steps[0].column(name), elastic.steps[0].column(name)) << name;
    }
    EXPECT_FALSE(says(r.text, "shells yield")) << r.text;
  }
  // A step without loads, and one whose loads stand on its supports alone.
  EXPECT_EQ(run(s.deck(1, 0, "*STATIC\n")).u(1, end_node(s), 'x'), 0);
}

TEST(AnalysisYieldingStatic, ALoadAboveTheLimitIsAnError) {
  const strip s = a_strip(sheet{});
  const std::string text = run_error(tension(s, 1.25));
  const std::string words = "*STATIC: yielding shells carry no more than ";
  ASSERT_TRUE(says(text, words)) << text;
  EXPECT_WITHIN(std::stod(text.substr(text.find(words) + words.size())), 0.8, 1.0, 1e-5);
  EXPECT_TRUE(says(text, "A step with *ELASTOPLASTIC shows the path up to there")) << text;
  EXPECT_EQ(run_error(tension(s, 1.25, "*STATIC, ELASTIC\n")), "");
}

TEST(AnalysisYieldingStatic, ElasticOnRequest) {
  const strip s = a_strip(sheet{});
  const ran r = run(tension(s, 3, "*STATIC, ELASTIC\n"));
  const double strain = 3 * YIELD / YOUNG;
  EXPECT_WITHIN(r.u(1, end_node(s), 'x'), LENGTH * strain, LENGTH * strain, 1e-9);
  EXPECT_TRUE(says(r.text, "*STATIC: ELASTIC: nothing yields in this step, whatever its stresses")) << r.text;
}

TEST(AnalysisYieldingStatic, ModesAndPerturbationsOfPlasticMaterials) {
  const strip s = a_strip(sheet{});
  const std::string small = ", PERTURBATION";
  // Elastic up to here: small motions stand on it, and a large increment is answered elastically.
  const ran r = run(tension(s, 0.5) + a_step(small, "*FREQUENCY\n1\n") +
                    a_step(small, "*STATIC\n*CLOAD\n" + line_load(s.mesh, 1, 1, 5 * N_PLASTIC)));
  EXPECT_GT(r.modes(2)[0], 0);
  EXPECT_WITHIN(r.u(3, end_node(s), 'x'), 10 * r.u(1, end_node(s), 'x'), r.u(3, end_node(s), 'x'), 0.01);
  // Yielded: its tangent is not the elastic stiffness.
  strip hard = s;
  hard.of.plastic_modulus = YOUNG / 50;
  for (const char* const cards : {"*FREQUENCY\n1\n", "*BUCKLE\n1\n*CLOAD\n1, 1, 1.\n", "*STATIC\n"})
    EXPECT_TRUE(says(run_error(tension(hard, 1.1) + a_step(small, cards)),
                     "PERTURBATION: the material has yielded in step 1, and small motions about a yielded state are "
                     "not supported"))
        << cards;
  EXPECT_EQ(run_error(tension(hard, 1.1, "*STATIC, ELASTIC\n") + a_step(small, "*FREQUENCY\n1\n")), "");
  EXPECT_EQ(run_error(tension(hard, 1.1) + a_step("", "*FREQUENCY\n1\n")), "");
}

TEST(AnalysisYieldingStatic, HingesOfAProppedBeam) {
  // First hinge in the clamped end at 16/3 Mp/L, the second under the force at 6 Mp/L; between them the middle sinks by
  // 7 P L^3 / 768 EI up to the first, then by P L^3 / 48 EI as that of a beam between pins.
  const straight_member b = propped();
  const double L = b.length, unit = 1e8 / L, EI = b.E * b.inertia_xy, first = 16.0 / 3, force = 5.8;
  const ran r = run(propped_deck(force * unit, "", "*STATIC\n"));
  const double cubed = unit * L * L * L / EI;
  const double expected = -(7.0 / 768 * first + (force - first) / 48) * cubed;
  EXPECT_WITHIN(r.u(1, 2, 'y'), expected, std::fabs(expected), 1e-6);
  EXPECT_WITHIN(std::fabs(r.force(1, 1, 1, "moment_z")), 1e8, 1e8, 1e-6);
  EXPECT_WITHIN(std::fabs(r.force(1, 1, 2, "moment_z")), (force / 4 - 0.5) * 1e8, 1e8, 1e-6);
  EXPECT_TRUE(says(r.text, "hinges form from 0.91954 of the loads on")) << r.text;
  // Below the first hinge, above the last, and elastic on request.
  const double below = run(propped_deck(5 * unit, "", "*STATIC\n")).u(1, 2, 'y');
  EXPECT_WITHIN(below, -7.0 / 768 * 5 * cubed, cubed / 48, 1e-9);
  const std::string text = run_error(propped_deck(7.5 * unit, "", "*STATIC\n"));
  EXPECT_TRUE(says(text, "*STATIC: the hinges of the frame leave it no more than 0.8 of the loads of the step"))
      << text;
  EXPECT_WITHIN(run(propped_deck(7.5 * unit, "", "*STATIC, ELASTIC\n")).u(1, 2, 'y'), -7.0 / 768 * 7.5 * cubed, cubed,
                1e-9);
  EXPECT_TRUE(says(run_error(propped_deck(force * unit, "", "*STATIC\n") + a_step(", PERTURBATION", "*FREQUENCY\n1\n")),
                   "small motions about a yielded state are not supported"));
}
