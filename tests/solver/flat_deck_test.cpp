// flat_deck_test.cpp: what --write refuses, and that its comparison of two models sees every sort of difference.
// Whether flat decks give the answers of their models is asked of all decks by tests/solver_cards.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "deck_builder.h"
#include "model/deck_error.h"
#include "output/flat_check.h"
#include "output/flat_deck.h"

using namespace deck_test;

namespace {

std::string refusal(const solver::model& m) {
  try {
    solver::flat_deck(m);
  } catch (const solver::deck_error& error) {
    return error.what();
  }
  return "";
}

// What the comparison says after one change.
std::string seen(const std::vector<std::string>& lines, const std::function<void(solver::model&)>& change) {
  const solver::model m = read(text_of(lines));
  solver::model other = m;
  change(other);
  return solver::difference_between(m, other);
}

}  // namespace

TEST(flat_deck, is_read_as_the_same_model) {
  for (const auto* const lines : {&GOOD, &GOOD_FRAME, &GOOD_SOLIDS}) {
    const solver::model m = read(text_of(*lines)), again = read(solver::flat_deck(m));
    EXPECT_EQ(solver::difference_between(m, again), "");
    EXPECT_EQ(again.title, m.title);
    ASSERT_EQ(again.nsets.size(), m.nsets.size());
    for (std::size_t i = 0; i < m.nsets.size(); ++i) EXPECT_EQ(again.nsets[i].members, m.nsets[i].members);
    for (const solver::named_set& set : m.elsets) {
      EXPECT_EQ(
          std::count_if(again.elsets.begin(), again.elsets.end(),
                        [&](const solver::named_set& s) { return s.name == set.name && s.members == set.members; }),
          1)
          << set.name;
    }
  }
}

TEST(flat_deck, differences_are_seen) {
  using solver::model;
  EXPECT_EQ(seen(GOOD, [](model&) {}), "");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.nodes[2].xyz[0] += 1e-6; }), "the nodes");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.shell_sections[0].thickness *= 1.0001; }), "the stiffness of element 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.materials[0].NU12 += 1e-6; }), "the stiffness of element 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.steps[0].nodal_loads[0].value *= 1.0001; }), "the loads of step 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.steps[0].element_loads.pop_back(); }), "the loads of step 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.steps[0].temperatures[1].change += 1; }), "the loads of step 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.boundaries[0].last_dof = 5; }), "the prescribed freedoms of step 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.boundaries[0].value = 1e-9; }), "the prescribed values of step 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.steps[0].p_delta = true; }), "the kind of step 1");
  EXPECT_EQ(seen(GOOD,
                 [](model& m) {
                   m.constraints.push_back({{{0, 1, 1.0}, {1, 1, -1.0}}, 0, "*EQUATION", 1, 0});
                 }),
            "the linear conditions before the first step");
  EXPECT_EQ(seen(GOOD_FRAME, [](model& m) { m.frame_sections[0].area *= 1.0001; }), "the stiffness of element 1");
  EXPECT_EQ(seen(GOOD, [](model& m) { m.elements.pop_back(); }),
            "the number or the names of nodes, elements and steps");
}

TEST(flat_deck, the_density_counts_where_there_are_frequencies) {
  std::vector<std::string> lines = GOOD;
  lines.resize(25);
  lines.insert(lines.end(), {"*STEP", "*FREQUENCY", "1", "*END STEP"});
  EXPECT_EQ(seen(lines, [](solver::model& m) { m.materials[0].density *= 1.0001; }), "the mass of element 1");
}

TEST(flat_deck, what_no_card_can_say_is_refused_by_its_place) {
  solver::model m = read(text_of(GOOD));
  m.constraints.push_back({{{1, 1, 1.0}, {2, 1, -1.0}}, 0.5, "*EQUATION", 12, 0});
  EXPECT_EQ(refusal(m), "plate.inp:12: *EQUATION: an *EQUATION of a flat deck has no value on its right side");
  m = read(text_of(GOOD));
  solver::element_load load = m.steps[0].element_loads[0];
  load.kind = solver::element_load_kind::BODY;
  load.direction = {0.6, 0.8, 0};
  m.steps[0].element_loads.push_back(load);
  EXPECT_EQ(refusal(m), "plate.inp:31: *DLOAD: no card of a flat deck has a load of this direction");
}

namespace {

// A beam from node 1 along x with a section of constants.
std::string beam_deck(const std::string& below, const std::string& head, const std::string& loads) {
  return "*NODE\n1, 0, 0, 0\n2, 4, 0, 0\n*ELEMENT, TYPE=B31, ELSET=BEAM\n1, 1, 2\n*MATERIAL, NAME=STEEL\n*ELASTIC\n"
         "210., 0.3\n*DENSITY\n2.\n*BEAM GENERAL SECTION, ELSET=BEAM, MATERIAL=STEEL\n3., 5., 1., 7., 2.\n0., 1., "
         "0.\n" +
         below + head + "*BOUNDARY\n1, 1, 6\n*STEP\n*STATIC\n" + loads + "*END STEP\n";
}

}  // namespace

TEST(flat_deck, sections_keep_their_place_and_their_points) {
  const std::string deck = solver::flat_deck(
      read(beam_deck("*CENTROID\n0.25, -0.5\n*SHEAR CENTER\n0.125, 0.75\n*SECTION POINTS\n1., 2., -1., -2.\n"
                     "*TRANSVERSE SHEAR STIFFNESS, PRINCIPAL\n11., 13.\n",
                     "", "*CLOAD\n2, 2, 1.\n")));
  for (const char* const line :
       {"*CENTROID\n0.25, -0.5\n", "*SHEAR CENTER\n0.125, 0.75\n", "*TRANSVERSE SHEAR STIFFNESS, PRINCIPAL\n11, 13\n",
        "*SECTION POINTS\n1, 2\n-1, -2\n"}) {
    EXPECT_NE(deck.find(line), std::string::npos) << line << deck;
  }
  const solver::frame_section s = read(deck).frame_sections[0];
  EXPECT_NEAR(std::tan(2 * s.place.angle), 1, 1e-12);  // 2 I12 / (I22 - I11)
  EXPECT_NEAR(s.inertia_xy, 6 + std::sqrt(2.0), 1e-12);
}

TEST(flat_deck, masses_keep_their_inertia) {
  const std::string deck = solver::flat_deck(
      read(beam_deck("",
                     "*ELEMENT, TYPE=MASS, ELSET=LUMP\n2, 2\n*MASS, ELSET=LUMP\n2.5\n*ELEMENT, TYPE=ROTARYI, "
                     "ELSET=WHEEL\n3, 2\n*ROTARY INERTIA, ELSET=WHEEL\n5., 6., 7., 0.25, 0.5, 0.75\n",
                     "*DLOAD\nLUMP, GRAV, 10., 0., 0., -1.\n")));
  for (const char* const line :
       {"*MASS, ELSET=LUMP\n2.5\n", "*ROTARY INERTIA, ELSET=WHEEL\n5, 6, 7, 0.25, 0.5, 0.75\n"}) {
    EXPECT_NE(deck.find(line), std::string::npos) << line << deck;
  }
}

// A pressure that grows from 0 at z = 1 to 12 at z = 0 on a square of side 1: 6 in all, half of it at each half of the
// width, 1/3 of it above.
TEST(flat_deck, loads_on_faces_stay_on_their_elements) {
  const solver::model m = read(solver::flat_deck(read(
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 0, 1\n4, 0, 0, 1\n*ELEMENT, TYPE=S4, ELSET=WALL\n1, 1, 2, 3, "
      "4\n*MATERIAL, NAME=STEEL\n*ELASTIC\n210., 0.3\n*SHELL SECTION, ELSET=WALL, MATERIAL=STEEL\n0.1\n*BOUNDARY\n"
      "1, 1, 6\n2, 1, 6\n*STEP\n*STATIC\n*DLOAD\nWALL, HP, 12., 1., 0.\n*END STEP\n")));
  EXPECT_TRUE(m.steps[0].nodal_loads.empty());
  ASSERT_EQ(m.steps[0].element_loads.size(), 1u);
  EXPECT_EQ(m.steps[0].element_loads[0].element, 0);
  const auto loads = solver::gather_load_case(m, m.steps[0]).nodal_load;
  for (int n = 0; n < 4; ++n) {
    EXPECT_NEAR(std::abs(loads[solver::freedom(n, 1)]), m.nodes[n].xyz[2] > 0 ? 1 : 2, 1e-12);
    EXPECT_EQ(loads[solver::freedom(n, 0)], 0);
    EXPECT_EQ(loads[solver::freedom(n, 2)], 0);
  }
}

TEST(flat_deck, tables_of_a_material_are_compared) {
  const std::string deck =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=BAR\n1, 1, 2\n*MATERIAL, NAME=M\n"
      "*ELASTIC\n200., 0.3, 0.\n100., 0.2, 50.\n*EXPANSION, ZERO=5.\n1e-5, 0.\n2e-5, 50.\n*SOLID SECTION, ELSET=BAR, "
      "MATERIAL=M\n1.\n*INITIAL CONDITIONS, TYPE=TEMPERATURE\nALL, 20.\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n*STEP\n*STATIC\n"
      "*TEMPERATURE\nALL, 30.\n*END STEP\n";
  const solver::model m = read(deck), again = read(solver::flat_deck(m));
  EXPECT_EQ(difference_between(m, again), "");
  EXPECT_EQ(again.initial_temperature.at(1), 20);
  EXPECT_DOUBLE_EQ(again.steps[0].temperatures.at(1).change, 10);
  solver::model other = m;
  other.materials[0].elastic_table[1].value[1] = 0.25;
  EXPECT_EQ(difference_between(m, other), "the constants by temperature of the material M");
  other = m;
  other.initial_temperature.at(0) = 21;
  EXPECT_NE(difference_between(m, other), "");
}

TEST(flat_deck, rigid_arms_are_refused_where_they_turn) {
  const std::string deck =
      "*NODE\n1, 0, 0, 0\n2, 2, 0, 0\n3, 3, 0, 0\n*ELEMENT, TYPE=B33, ELSET=BEAM\n1, 1, 2\n*MATERIAL, "
      "NAME=M\n*ELASTIC\n"
      "200., 0.3\n*BEAM SECTION, ELSET=BEAM, MATERIAL=M, SECTION=RECT\n1., 1.\n*MPC\nBEAM, 3, 2\n*BOUNDARY\n1, 1, 6\n";
  const std::string load = "*CLOAD\n3, 1, -1.\n*END STEP\n";
  EXPECT_NO_THROW(solver::flat_deck(read(deck + "*STEP\n*STATIC\n" + load)));
  EXPECT_EQ(
      refusal(read(deck + "*STEP\n*STATIC\n" + load + "*STEP\n*BUCKLE\n1\n" + load)),
      "plate.inp:13: *MPC: --write writes conditions as *EQUATION: the arm of this one would no longer turn in step 2, "
      "which is one of second order");
}

// Held along (1, 1, 0), loaded by 2 along it, by 3 across it and by 5 along z; node 2 holds global z beside.
TEST(flat_deck, supports_in_axes_of_their_own) {
  const std::string axes = "*NSET, NSET=END\n2\n*TRANSFORM, NSET=END, TYPE=R\n1., 1., 0., -1., 1., 0.\n";
  const std::string deck =
      beam_deck("", axes + "*BOUNDARY\n2, 1, 1, 0.25\n2, 3\n", "*CLOAD\n2, 1, 2.\n2, 2, 3.\n2, 6, 5.\n");
  const std::string flat = solver::flat_deck(read(deck));
  const double part = 1 / std::sqrt(2.0);
  const solver::model again = read(flat);
  ASSERT_EQ(again.constraints.size(), 1u);
  EXPECT_EQ(again.constraints[0].keyword, "*BOUNDARY");
  EXPECT_NEAR(again.constraints[0].value, 0.25, 1e-15);
  ASSERT_EQ(again.constraints[0].terms.size(), 2u);
  for (const solver::constraint_term& t : again.constraints[0].terms) EXPECT_NEAR(t.factor, part, 1e-15);
  std::array<double, 6> load{};
  for (const solver::nodal_load& l : again.steps[0].nodal_loads) load[static_cast<std::size_t>(l.dof - 1)] += l.value;
  const std::array<double, 6> expected{(2 - 3) * part, (2 + 3) * part, 0, 0, 0, 5};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(load[i], expected[i], 1e-14) << i;
  EXPECT_NE(flat.find("*TRANSFORM, NSET=AXES_1, TYPE=R\n"), std::string::npos);
  EXPECT_NE(flat.find("2, 3, 3, 0\n"), std::string::npos);
}

// An equation of the deck at such a node stands in its axes again: one term, not two, and means the same.
TEST(flat_deck, equations_in_axes_of_their_own) {
  const std::string axes = "*NSET, NSET=END\n2\n*TRANSFORM, NSET=END, TYPE=R\n1., 1., 0., -1., 1., 0.\n";
  const std::string flat = solver::flat_deck(
      read(beam_deck("", axes + "*EQUATION\n2\n1, 1, 1., 2, 1, -2.\n*BOUNDARY\n2, 2\n", "*CLOAD\n2, 3, 1.\n")));
  EXPECT_NE(flat.find("*EQUATION\n2\n1, 1, 1\n2, 1, -"), std::string::npos) << flat;
  const solver::linear_constraint equation = read(flat).constraints.at(0);
  ASSERT_EQ(equation.terms.size(), 3u);
  for (std::size_t i = 1; i < 3; ++i) EXPECT_NEAR(equation.terms[i].factor, -2 / std::sqrt(2.0), 1e-14);
}
