// An answer that is not finite is an error, however it arises: each value of a deck is finite, a product of two need
// not be.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "analyses/finite_answers.h"
#include "deck_builder.h"
#include "plastic_support.h"
#include "pushover_support.h"
#include "run.h"
#include "solids_support.h"

using deck_test::scratch_folder;

namespace {

// What the program says when it runs a deck; empty when it is solved.
std::string refusal(const std::string& text) {
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("large.inp", text);
  wanted.output = scratch.path("large.vtu");
  wanted.quiet = true;
  testing::internal::CaptureStderr();
  std::string said;
  try {
    solver::run(wanted);
  } catch (const std::exception& error) {
    said = error.what();
  }
  testing::internal::GetCapturedStderr();
  return said;
}

// `keyword`: of the line that is named, that of the load where the load is too large.
void expect_refusal(const std::string& text, const std::string& what, const std::string& keyword = "*CLOAD") {
  const std::string said = refusal(text);
  EXPECT_NE(said.find("large.inp:"), std::string::npos) << said;
  EXPECT_NE(said.find(keyword + ": " + what), std::string::npos) << said;
  EXPECT_NE(said.find(" is not finite: "), std::string::npos) << said;
}

// Two beams along x, each 1 long, of the same cross-section, clamped at node 1.
std::string beams(const std::string& E, const std::string& step, const std::string& flags = "",
                  const std::string& density = "1") {
  return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 2, 0, 0\n*ELEMENT, TYPE=B31, ELSET=B\n1, 1, 2\n2, 2, 3\n*MATERIAL, NAME=M\n"
         "*ELASTIC\n" +
         E + ", 0.3\n*DENSITY\n" + density +
         "\n*BEAM GENERAL SECTION, ELSET=B, MATERIAL=M\n1., 1., 0., 1., 1.\n*BOUNDARY\n1, ENCASTRE\n*STEP" + flags +
         "\n" + step + "*END STEP\n";
}

// A square sheet of two triangles, clamped on one side.
std::string sheet(const std::string& E, const std::string& thickness, const std::string& step) {
  return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 1, 0\n4, 0, 1, 0\n*ELEMENT, TYPE=S3, ELSET=ALL\n1, 1, 2, 3\n2, 1, 3, 4\n"
         "*MATERIAL, NAME=M\n*ELASTIC\n" +
         E + ", 0.3\n*SHELL SECTION, ELSET=ALL, MATERIAL=M\n" + thickness +
         "\n*BOUNDARY\n1, ENCASTRE\n4, ENCASTRE\n*STEP\n" + step + "*END STEP\n";
}

}  // namespace

TEST(FiniteAnswers, SumOfLoads) {
  expect_refusal(beams("1e9", "*STATIC\n*CLOAD\n3, 1, 1e308\n3, 1, 1e308\n"), "the load of node 3 in translation x");
}

TEST(FiniteAnswers, Displacements) {
  // u = P L / E A = 2e310, and the largest load alone.
  expect_refusal(beams("1e-2", "*STATIC\n*CLOAD\n3, 1, 1e308\n"), "the");
  expect_refusal(beams("1e9", "*STATIC\n*CLOAD\n3, 2, 1e308\n"), "the");
}

// A load of ordinary size on a structure that hardly resists: the step, not its load.
TEST(FiniteAnswers, ASoftStructure) {
  expect_refusal(beams("1e-200", "*STATIC\n*CLOAD\n3, 1, 1e140\n"), "the", "*STEP");
}

// The beams' data end in line 16.
TEST(FiniteAnswers, ALoadThatIsTooLargeIsToldAtItsLine) {
  const std::string large = " is not finite: the value 1e+308 of this line is too large for the sums and products";
  const auto expect_at = [&](const std::string& text, const std::string& place, const std::string& what) {
    const std::string said = refusal(text);
    EXPECT_NE(said.find("large.inp:" + place + ": " + what + large), std::string::npos) << said;
  };
  expect_at(beams("1e9", "*STATIC\n*DLOAD\nB, PY, 1e300\nB, PY, 1e308\nB, PY, 1e308\n"), "21: *DLOAD",
            "the load of element 1");
  expect_at(beams("1e9", "*STATIC\n*DLOAD\nB, GRAV, 1e308, 0, 0, 1\n", "", "10"), "20: *DLOAD",
            "the load of element 1");
  expect_at(beams("1e9", "*STATIC\n*CLOAD\n3, 1, 1\n3, 1, 1e308\n3, 1, 1e308\n"), "21: *CLOAD",
            "the load of node 3 in translation x");
  expect_at(beams("1e12", "*STATIC\n*BOUNDARY\n3, 2, 2, 1e308\n"), "20: *BOUNDARY", "the solution");
  // The axial force is in the geometric stiffness.
  expect_at(beams("1e9", "*BUCKLE\n1\n*CLOAD\n3, 1, 1e308\n"), "21: *CLOAD",
            "the mass or the geometric stiffness of element 1");
  expect_at(beams("1e9", "*STATIC\n*CLOAD\n3, 1, 1e308\n", ", PDELTA"), "20: *CLOAD", "the stiffness of element 1");
  // A stiffness that is too large without its loads is the element's.
  const std::string said = refusal(beams("1e308", "*STATIC\n*CLOAD\n3, 1, 1e308\n"));
  EXPECT_NE(said.find("large.inp:6: *ELEMENT: the stiffness of element 1 is not finite: look at its coordinates, "),
            std::string::npos)
      << said;
}

TEST(FiniteAnswers, WhatCanBeHeldIsSolved) {
  EXPECT_EQ(refusal(beams("1e9", "*STATIC\n*CLOAD\n3, 1, 1e200\n")), "");
  EXPECT_EQ(refusal(beams("1e9", "*STATIC\n*CLOAD\n3, 2, 1e-200\n")), "");
}

TEST(FiniteAnswers, PDelta) { expect_refusal(beams("1e-2", "*STATIC\n*CLOAD\n3, 1, 1e307\n", ", PDELTA"), "the"); }

TEST(FiniteAnswers, StressesOfAShell) {
  // The membrane stress is 1e160; von Mises' squares it.
  expect_refusal(sheet("1e9", "1.", "*STATIC\n*CLOAD\n2, 1, 1e160\n3, 1, 1e160\n"), "a stress of element 1");
}

TEST(FiniteAnswers, StressesOfASolid) {
  const solids_test::block b;
  expect_refusal(b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n" + solids_test::face_load(b, 0, true, 1, 1e170)), "a stress ");
}

TEST(FiniteAnswers, MomentsOfTheReactions) {
  // The force of 1e300 has an arm of 1e20 about the origin.
  std::string text = beams("1e290", "*STATIC\n*CLOAD\n3, 1, 1e300\n");
  for (const char* const node : {"1, 0, 0, 0", "2, 1, 0, 0", "3, 2, 0, 0"}) {
    std::string far = node;
    far.replace(far.size() - 4, 1, "1e20");
    text.replace(text.find(node), std::string(node).size(), far);
  }
  expect_refusal(text, "the sum of the loads or of their moments");
}

TEST(FiniteAnswers, Cables) {
  const std::string said = refusal(
      "*NODE\n1, 0, 0, 0\n2, 10, 0, 0\n3, 20, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n1, 1, 2\n2, 2, 3\n*MATERIAL, NAME=M\n"
      "*ELASTIC\n1e9, 0.3\n*CABLE SECTION, ELSET=C, MATERIAL=M\n1., 10.1\n*BOUNDARY\n1, 1, 3\n3, 1, 3\n*STEP\n*STATIC\n"
      "*CLOAD\n2, 3, -1e200\n*END STEP\n");
  EXPECT_NE(said.find("large.inp:"), std::string::npos) << said;  // no equilibrium, or none that can be held
}

TEST(FiniteAnswers, Frequencies) {
  expect_refusal(beams("1e-200", "*FREQUENCY\n2\n", "", "1e200"), "a stiffness, mass or geometric stiffness", "*STEP");
}

TEST(FiniteAnswers, Buckling) { expect_refusal(beams("1e-2", "*BUCKLE\n1\n*CLOAD\n3, 1, -1e308\n"), "the"); }

TEST(FiniteAnswers, Pushover) {
  solver::model m = frame_test::deck("pushover_portal.inp");
  for (solver::nodal_load& load : m.steps.front().nodal_loads) load.value *= 1e200;
  try {
    pushover_test::push(m);
    ADD_FAILURE() << "no error";
  } catch (const solver::deck_error& error) {
    EXPECT_EQ(error.text.find("the work of the loads is not finite"), 0U) << error.what();
  }
}

TEST(FiniteAnswers, PlatesThatYield) {
  solver::model m = frame_test::deck("plastic_strip_tension.inp");
  for (solver::nodal_load& load : m.steps.front().nodal_loads) load.value *= 1e200;
  std::string said;
  try {
    plastic_test::load(m);
  } catch (const solver::deck_error& error) {
    testing::internal::GetCapturedStderr();  // taken by load
    said = error.text;
  }
  EXPECT_EQ(said.find("the work of the loads is not finite"), 0U) << said;
}

// The norm of what is too large or too small to be squared.
TEST(FiniteAnswers, NormWithoutOverflow) {
  EXPECT_EQ(solver::norm(std::vector<double>{3, 4}), 5.0);
  EXPECT_DOUBLE_EQ(solver::norm(std::vector<double>{3e200, -4e200}), 5e200);
  EXPECT_DOUBLE_EQ(solver::norm(std::vector<double>{3e-200, 4e-200}), 5e-200);
  EXPECT_EQ(solver::norm(std::vector<double>{0, 0}), 0.0);
  EXPECT_EQ(solver::norm(std::vector<double>{1, -std::numeric_limits<double>::infinity()}),
            std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(solver::norm(std::vector<double>{std::numeric_limits<double>::quiet_NaN(), 1e300})));
}

// Each part of the answers of a step.
TEST(FiniteAnswers, EveryArray) {
  const solver::model m = deck_test::read(deck_test::text_of(deck_test::GOOD));
  const solver::step& s = m.steps.front();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto said = [&](const auto& answer) -> std::string {
    try {
      solver::require_finite(m, s, answer);
    } catch (const solver::deck_error& error) {
      return error.text.substr(0, error.text.find(" is not finite"));
    }
    return "";
  };
  solver::static_solution u;
  u.displacement.assign(24, 1.0);
  EXPECT_EQ(said(u), "");
  u.displacement[15] = nan;
  EXPECT_EQ(said(u), "the displacement of node 3 in rotation x");
  u.displacement.clear();
  u.reaction.assign(24, 0.0);
  u.reaction[1] = -std::numeric_limits<double>::infinity();
  EXPECT_EQ(said(u), "the reaction of node 1 in translation y");

  u.reaction.assign(24, 0.0);
  u.load.assign(24, 0.0);
  u.load[22] = nan;
  EXPECT_EQ(said(u), "the load of node 4 in rotation y");

  const auto invalidate = [&](const std::function<void(solver::step_results&)>& change) {
    solver::step_results r;
    r.elements.resize(2), r.nodes.resize(4), r.parts.resize(1), r.members.resize(2), r.solids.resize(1);
    r.in_solids.resize(2);
    EXPECT_EQ(said(r), "");
    change(r);
    return said(r);
  };
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].moment[2] = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[0].at[2].equivalent = nan; }), "a stress of element 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[0].plastic[1][0] = nan; }), "a stress of element 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.nodes[3].equivalent_bottom = nan; }), "a stress at node 4");
  EXPECT_EQ(invalidate([&](auto& r) { r.parts[0].at[0].first = nan; }), "a stress at node 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.members[1][7] = nan; }), "an end force of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.solids[0].at.principal[1] = nan; }), "a stress at node 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.in_solids[1].stress[5] = nan; }), "a stress of element 2");

  // Each value of a record alone.
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].force[0] = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].shear_force[1] = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].plastic_shear[0] = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].equivalent_plastic = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].at[1].stress[2] = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].at[0].angle = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].at[0].first = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.elements[1].at[0].second = nan; }), "a stress of element 2");
  EXPECT_EQ(invalidate([&](auto& r) { r.nodes[2].top[5] = nan; }), "a stress at node 3");
  EXPECT_EQ(invalidate([&](auto& r) { r.nodes[2].bottom[0] = nan; }), "a stress at node 3");
  EXPECT_EQ(invalidate([&](auto& r) { r.nodes[2].equivalent_top = nan; }), "a stress at node 3");
  EXPECT_EQ(invalidate([&](auto& r) { r.parts[0].shear[1] = nan; }), "a stress at node 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.solids[0].at.stress[3] = nan; }), "a stress at node 1");
  EXPECT_EQ(invalidate([&](auto& r) { r.solids[0].at.equivalent = nan; }), "a stress at node 1");

  solver::modal_solution modes;
  modes.modes.push_back({nan, {}});
  EXPECT_EQ(said(modes), "a frequency or buckling factor");
  modes.modes = {{1, std::vector<double>(24, nan)}};
  EXPECT_EQ(said(modes), "the motion of node 1 in translation x");
}

TEST(FiniteAnswers, LargeAndSmallLoadsOnMembersKeepTheirDeflections) {
  // 5 q L^4 / 384 EI between pins, whatever its size; B33: no shear.
  for (const double q : {1e160, 1e-160}) {
    frame_test::straight_member b;
    b.E = 1;
    b.length = 1;
    b.area = b.inertia_xy = b.inertia_xz = b.torsion = 1;
    const solver::model m = frame_test::read(
        b.deck("", "1, 1, 4\n2, 2, 4\n", "*STATIC\n*DLOAD\nMEMBER, PY, " + frame_test::number(q) + "\n"));
    const analysis_test::solved s = analysis_test::solve(m);
    const solver::extreme largest = solver::largest_displacement(s.results.fields[0]);
    EXPECT_NEAR(largest.value / (5 * q / 384), 1, 1e-9);
  }
}
