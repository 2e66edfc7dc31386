// flat_deck_test.cpp: what --write refuses, and that its comparison of two models sees every sort of difference. Whether
// flat decks give the answers of their models is asked of all decks by tests/solver_cards.
#include <gtest/gtest.h>

#include <algorithm>
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
