// deck_constraints_test.cpp: *EQUATION, *MPC, *RIGID BODY, *COUPLING, *TIE and *TRANSFORM as decks write them, well and
// badly.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "deck_builder.h"
#include "run_support.h"

using namespace deck_test;
using run_test::ran;
using run_test::run;
using run_test::run_error;

namespace {

// Four columns under a cap of nodes 11 to 14; node 50 above the middle, 51 beside it. The cards stand on line 41.
const std::vector<std::string> COLUMNS = {
    "*NODE",
    "1, 0., 0., 0.",
    "2, 2., 0., 0.",
    "3, 2., 1., 0.",
    "4, 0., 1., 0.",
    "11, 0., 0., 10.",
    "12, 2., 0., 10.",
    "13, 2., 1., 10.",
    "14, 0., 1., 10.",
    "50, 1., 0.5, 12.",
    "51, 1.5, 0.5, 12.",
    "*ELEMENT, TYPE=B33, ELSET=B",
    "1, 1, 11",
    "2, 2, 12",
    "3, 3, 13",
    "4, 4, 14",
    "*NSET, NSET=BASE",
    "1, 2, 3, 4",
    "*NSET, NSET=TOP",
    "11, 12, 13, 14",
    "*NSET, NSET=TWO",
    "11, 12",
    "*MATERIAL, NAME=M",
    "*ELASTIC",
    "1200., 0.",
    "*DENSITY",
    "1.E-3",
    "*BEAM GENERAL SECTION, ELSET=B, MATERIAL=M",
    "1., 1., 0., 1., 1.",
    "1., 0., 0.",
    "*SURFACE, NAME=CAP, TYPE=NODE",
    "TOP",
    "*BOUNDARY",
    "BASE, 1, 6",
};
constexpr int FIRST = 35;  // the line of the first card that is added

std::string with(const std::string& cards, const std::string& step = "*CLOAD\n11, 1, 24.\n",
                 const std::string& kind = "*STATIC\n") {
  return text_of(COLUMNS) + cards + "*STEP\n" + kind + step + "*END STEP\n";
}

void refused(const std::string& cards, int line, const std::string& keyword, const std::string& sentence) {
  expect_error(with(cards), FIRST + line, keyword, sentence);
}

std::string coupling(const std::string& below) {
  return "*COUPLING, CONSTRAINT NAME=C, REF NODE=50, SURFACE=CAP\n" + below;
}

}  // namespace

TEST(deck_constraints, equations_of_sets_and_long_lists) {
  const solver::model m =
      read(with("*EQUATION\n5\n11, 1, 1., 12, 1, -2., 13, 1, 0.5, 14, 1, 4.\n50, 1, -1.\n2\nTWO, 2, 1., 13, 2, -1.\n"
                "2\nTWO, 3, 1., TWO, 4, 2.\n"));
  ASSERT_EQ(m.constraints.size(), 5u);
  EXPECT_EQ(m.constraints[0].terms.size(), 5u);
  EXPECT_EQ(m.constraints[0].terms[3].factor, 4);
  EXPECT_EQ(m.constraints[0].line, FIRST + 1);
  EXPECT_EQ(m.constraints[2].terms[0].node, 5);  // node 12 with node 13
  EXPECT_EQ(m.constraints[2].terms[1].node, 6);
  EXPECT_EQ(m.constraints[4].terms[1].node, 5);
  EXPECT_EQ(m.constraints[4].terms[1].dof, 4);
  EXPECT_EQ(m.constraints[4].line, FIRST + 6);
}

TEST(deck_constraints, bad_equations) {
  refused(
      "*EQUATION\n2\n11, 1, 1., 12, 1\n", 2, "*EQUATION",
      "the equation of line 36 has 2 terms, and the lines below it 5 fields: three for each term, node or set, degree "
      "of freedom, factor");
  refused("*EQUATION\n1\n11, 1, 1., 12, 1, 2.\n", 2, "*EQUATION",
          "the equation of line 36 has 1 terms, and the lines below it have more fields: three for each term, node or "
          "set, degree of freedom, factor");
  refused("*EQUATION\n2\n", 1, "*EQUATION",
          "the equation has no terms: node or set, degree of freedom, factor, line by line");
  refused("*EQUATION\n11, 1, 1., 12, 1, 2.\n", 1, "*EQUATION",
          "too many fields (6): number of terms of the equation, alone on its line");
  refused("*EQUATION\n2\n11, 1, 0., 12, 1, 2.\n", 2, "*EQUATION",
          "the factor of the first term is 0: it says which one depends on the others");
  refused("*EQUATION\n2\n11, 7, 1., 12, 1, 2.\n", 2, "*EQUATION", "the degree of freedom 7 is not one of 1 to 6");
  refused("*EQUATION\n2\nTWO, 1, 1., TOP, 1, 2.\n", 1, "*EQUATION",
          "the equation pairs sets of 2 and of 4 nodes: they must be equally long, or one node");
  refused("*EQUATION\n2\n99, 1, 1., 12, 1, 2.\n", 2, "*EQUATION", "node 99 is not defined");
}

TEST(deck_constraints, bad_mpcs) {
  refused("*MPC\nMEANROT, 11, 12\n", 1, "*MPC",
          "the type 'MEANROT' is not supported; BEAM, TIE, PIN, PLANE and STRAIGHT are; *COUPLING with *DISTRIBUTING "
          "gives a reference node the mean rotation of a surface");
  refused("*MPC\nSS LINEAR, 11, 12\n", 1, "*MPC",
          "the type 'SS LINEAR' is not supported; BEAM, TIE, PIN, PLANE and STRAIGHT are");
  refused("*MPC\nBEAM, 11\n", 1, "*MPC", "BEAM joins two nodes or sets: BEAM, dependent node or set, node or set");
  refused("*MPC\nPIN, 11, 11\n", 1, "*MPC", "PIN joins node 11 to itself");
  refused("*MPC\nTIE, TOP, TWO\n", 1, "*MPC",
          "TIE pairs sets of 4 and of 2 nodes: they must be equally long, or the second one node");
  refused("*MPC\nSTRAIGHT, TOP\n", 1, "*MPC", "STRAIGHT: node 12 does not lie on the line of node 11 and node 13");
  refused("*MPC\nPLANE, TOP, 1\n", 1, "*MPC",
          "PLANE: node 12 does not lie in the plane of node 11, node 1 and node 13");
  refused("*MPC\nPLANE, TWO, 13\n", 1, "*MPC", "PLANE needs 4 nodes or more: 3 are always so");
}

TEST(deck_constraints, lists_of_nodes_go_on) {
  const solver::model one = read(with("*MPC\nPLANE, 11, 12, 13, 14\n"));
  const solver::model two = read(with("*MPC\nPLANE, 11, 12\n0, 13\n, 14\n"));
  ASSERT_EQ(one.constraints.size(), 1u);
  ASSERT_EQ(two.constraints.size(), 1u);
  EXPECT_EQ(one.constraints[0].terms.size(), two.constraints[0].terms.size());
}

TEST(deck_constraints, bad_rigid_bodies) {
  refused("*RIGID BODY, REF NODE=50\n", 0, "*RIGID BODY",
          "the body has no nodes: give it an NSET, ELSET, PIN NSET or TIE NSET");
  refused("*RIGID BODY, REF NODE=99, NSET=TOP\n", 0, "*RIGID BODY", "REF NODE: node 99 is not defined");
  refused("*RIGID BODY, REF NODE=TOP, NSET=TOP\n", 0, "*RIGID BODY",
          "REF NODE: the node set 'TOP' has 4 nodes, and a reference is one");
  refused("*RIGID BODY, REF NODE=50, ROT NODE=11, NSET=TOP\n", 0, "*RIGID BODY",
          "the ROT NODE, node 11, is in the body: its translations stand for rotations");
  refused("*RIGID BODY, REF NODE=50, NSET=NONE\n", 0, "*RIGID BODY", "the node set 'NONE' is not defined");
}

TEST(deck_constraints, bad_couplings) {
  refused(coupling(""), 0, "*COUPLING", "the coupling 'C' has neither *KINEMATIC nor *DISTRIBUTING below it");
  refused(coupling("*KINEMATIC\n1, 3\n*DISTRIBUTING\n1, 3\n"), 3, "*DISTRIBUTING",
          "the coupling 'C' has its *KINEMATIC or *DISTRIBUTING already");
  refused("*KINEMATIC\n1, 3\n", 0, "*KINEMATIC", "belongs below a *COUPLING");
  refused(coupling("*KINEMATIC\n3, 1\n"), 2, "*KINEMATIC", "the last degree of freedom is smaller than the first");
  refused("*COUPLING, CONSTRAINT NAME=C, REF NODE=50, SURFACE=NONE\n*KINEMATIC\n", 0, "*COUPLING",
          "the surface 'NONE' is not defined");
  refused("*COUPLING, CONSTRAINT NAME=C, REF NODE=50, SURFACE=CAP, ORIENTATION=X\n*KINEMATIC\n", 0, "*COUPLING",
          "ORIENTATION is not supported: the degrees of freedom are along global axes");
  refused("*COUPLING, CONSTRAINT NAME=C, REF NODE=11, SURFACE=CAP\n*DISTRIBUTING\n", 0, "*COUPLING",
          "the reference, node 11, is one of the nodes whose mean it follows: give it a node of its own");
  refused("*DISTRIBUTING COUPLING, ELSET=B\nTOP, 1.\n", 0, "*DISTRIBUTING COUPLING",
          "the element set 'B' has no element of type DCOUP3D");
}

TEST(deck_constraints, a_line_of_nodes_shows_no_rotation_about_itself) {
  const std::string line = "*NSET, NSET=SIDE\n11, 12\n*SURFACE, NAME=EDGE, TYPE=NODE\nSIDE\n";
  refused(line + "*COUPLING, CONSTRAINT NAME=C, REF NODE=50, SURFACE=EDGE\n*DISTRIBUTING\n", 4, "*COUPLING",
          "its nodes lie on a line or in a point and the reference, node 50, off it: nothing turns it about that line; "
          "put it on the line");
  const std::string middle =
      "*NODE\n60, 1., 0., 10.\n" + line + "*COUPLING, CONSTRAINT NAME=C, REF NODE=60, SURFACE=EDGE\n*DISTRIBUTING\n";
  EXPECT_EQ(run_error(with(middle, "*CLOAD\n60, 3, -1.\n")), "");
  EXPECT_NE(run_error(with(middle, "*CLOAD\n60, 4, -1.\n")).find("mechanism: node 60 is loaded in rotation x"),
            std::string::npos);
}

TEST(deck_constraints, bad_transforms) {
  refused("*TRANSFORM, NSET=TOP, TYPE=X\n1., 0., 0., 0., 1., 0.\n", 0, "*TRANSFORM", "TYPE=X is none of R, C and S");
  refused("*TRANSFORM, NSET=TOP\n1., 0., 0., 2., 0., 0.\n", 1, "*TRANSFORM",
          "a and b lie on one line with the origin: they give no axes");
  refused("*TRANSFORM, NSET=TOP, TYPE=C\n1., 0., 0., 1., 0., 0.\n", 1, "*TRANSFORM",
          "a and b are one point: they give no axis");
  refused("*TRANSFORM, NSET=TOP, TYPE=C\n0., 0., 0., 0., 0., 1.\n", 0, "*TRANSFORM",
          "node 11 lies on the axis, where directions round it have no meaning");
  refused("*TRANSFORM, NSET=TOP\n1., 1., 0., 0., 1., 0.\n*TRANSFORM, NSET=TWO\n1., 0., 0., 0., 1., 0.\n", 2,
          "*TRANSFORM", "node 11 has axes of its own already, of line 35");
}

// A cylinder's axes: 1 away from the axis, 2 round it, 3 along it. All three held are three plain supports.
TEST(deck_constraints, cylindrical_axes) {
  const std::string axes = "*TRANSFORM, NSET=TOP, TYPE=C\n1., 0.5, 0., 1., 0.5, 1.\n";
  const solver::model m = read(with(axes + "*BOUNDARY\n13, 1\n11, 1, 3\n12, 3, 3, 0.5\n"));
  ASSERT_EQ(m.constraints.size(), 1u);  // node 13 stands at (1, 0.5) from the axis
  const double length = std::sqrt(1.25);
  EXPECT_NEAR(m.constraints[0].terms[0].factor, 1 / length, 1e-15);
  EXPECT_NEAR(m.constraints[0].terms[1].factor, 0.5 / length, 1e-15);
  EXPECT_EQ(m.constraints[0].keyword, "*BOUNDARY");
  EXPECT_EQ(m.boundaries.back().first_dof, 3);
  EXPECT_EQ(m.boundaries.back().value, 0.5);
  const solver::model loaded = read(with(axes, "*CLOAD\n13, 2, 5.\n"));
  ASSERT_EQ(loaded.steps[0].nodal_loads.size(), 2u);
  EXPECT_NEAR(loaded.steps[0].nodal_loads[0].value, -2.5 / length, 1e-14);
  EXPECT_NEAR(loaded.steps[0].nodal_loads[1].value, 5 / length, 1e-14);
}

// A step prescribes a turned direction again: its value replaces that of the head, as along global axes.
TEST(deck_constraints, a_step_moves_a_turned_support) {
  const std::string axes = "*TRANSFORM, NSET=TWO\n1., 1., 0., -1., 1., 0.\n*BOUNDARY\n11, 1\n";
  const ran moved = run(with(axes, "*BOUNDARY\n11, 1, 1, 0.1\n"));
  const double along = (moved.u(1, 11, 'x') + moved.u(1, 11, 'y')) / std::sqrt(2.0);
  EXPECT_WITHIN(along, 0.1, 0.1, 1e-12);
}

TEST(deck_constraints, bad_ties) {
  refused("*TIE, NAME=T\nCAP, CAP\n", 1, "*TIE",
          "the master surface 'CAP' has nodes and no faces: the slave may be one of nodes");
  refused("*TIE, NAME=T\nCAP\n", 1, "*TIE", "too few fields (1): slave surface, master surface");
}

// Nodes of a finer master stand between those of the slave. Four squares below the line y = 1, nodes 11 to 15 on it,
// and one element above them, which ends at x = `end`.
TEST(deck_constraints, ties_of_a_coarse_slave) {
  const auto sheets = [](const std::string& surfaces, const std::string& end) {
    std::string text = "*NODE\n";
    for (int i = 1; i <= 5; ++i) {
      const std::string x = std::to_string(i);
      text += x + ", " + x + ", 0., 0.\n1" + x + ", " + x + ", 1., 0.\n";
    }
    text += "21, 1., 1., 0.\n22, " + end + ", 1., 0.\n23, " + end + ", 2., 0.\n24, 1., 2., 0.\n";
    text += "*ELEMENT, TYPE=S4, ELSET=FINE\n1, 1, 2, 12, 11\n2, 2, 3, 13, 12\n3, 3, 4, 14, 13\n4, 4, 5, 15, 14\n";
    text += "*ELEMENT, TYPE=S4, ELSET=COARSE\n9, 21, 22, 23, 24\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n";
    text += "*SHELL SECTION, ELSET=FINE, MATERIAL=M\n0.1\n*SHELL SECTION, ELSET=COARSE, MATERIAL=M\n0.1\n";
    text += "*SURFACE, NAME=LOWER\nFINE, E3\n*SURFACE, NAME=UPPER\nCOARSE, E1\n*TIE, NAME=T\n" + surfaces;
    return text + "\n*BOUNDARY\n1, 1, 6\n2, 1, 6\n*STEP\n*STATIC\n*CLOAD\n23, 2, 1.\n*END STEP\n";
  };
  const auto note = [](const std::string& nodes, const std::string& lie) {
    return "plate.inp:34: *TIE: " + nodes + " of the master surface, node 12 the first, " + lie;
  };
  const std::string end =
      "tied to none of its nodes: they move freely through the slave, and the joint is too soft; make "
      "the surface with the smaller elements the slave";
  expect_notes(sheets("UPPER, LOWER", "5."), {note("3 nodes", "lie on faces of the slave and are " + end)});
  // Beyond the end of the slave, at x = 3, nobody looks for the nodes of the master.
  expect_notes(sheets("UPPER, LOWER", "3."), {note("1 node",
                                                   "lies on a face of the slave and is tied to none of its "
                                                   "nodes: it moves freely through the slave, and the joint "
                                                   "is too soft; make the surface with the smaller elements "
                                                   "the slave")});
  expect_notes(sheets("LOWER, UPPER", "5."), {});
}

// Sums of loads and reactions agree whatever a rigid body joins, in any order of cards.
TEST(deck_constraints, reactions_balance) {
  const std::string load = "*CLOAD\n51, 1, 24.\n51, 3, -5.\n51, 5, 7.\n";
  for (const std::string& cards : {std::string("*RIGID BODY, REF NODE=50, NSET=TOP\n*MPC\nBEAM, 51, 50\n"),
                                   std::string("*MPC\nBEAM, 51, 50\n*RIGID BODY, REF NODE=50, NSET=TOP\n"),
                                   coupling("*DISTRIBUTING\n") + "*MPC\nBEAM, 51, 50\n",
                                   "*MPC\nBEAM, 51, 50\n" + coupling("*KINEMATIC\n1, 6\n")}) {
    const ran r = run(with(cards, load));
    const solver::model m = read(with(cards, load));
    std::array<double, 6> sum{24, 0, -5, 0, 7, 0};  // the load at (1.5, 0.5, 12)
    sum[3] += 0.5 * -5;
    sum[4] += 12 * 24 - 1.5 * -5;
    sum[5] += -0.5 * 24;
    const char* const names[] = {"force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"};
    for (const solver::node& n : m.nodes) {
      std::array<double, 6> f{};
      const auto& table = r.steps.at(0);
      for (std::size_t i = 0; i < 6; ++i) {
        f[i] = table.column(names[i]).at(static_cast<std::size_t>(&n - m.nodes.data()));
        sum[i] += f[i];
      }
      sum[3] += n.xyz[1] * f[2] - n.xyz[2] * f[1];
      sum[4] += n.xyz[2] * f[0] - n.xyz[0] * f[2];
      sum[5] += n.xyz[0] * f[1] - n.xyz[1] * f[0];
    }
    for (const double value : sum) EXPECT_NEAR(value, 0, 1e-8) << cards;
  }
}

// A rigid cap on clamped columns that may only sway along x: m u'' + k u = 0 with k = 4 12 E I / L^3 and, of a cubic
// beam whose ends stay parallel, m = 4 (13/35 rho A L + 6/5 rho I / L), the second part by the rotary inertia.
TEST(deck_constraints, frequency_of_a_rigid_cap) {
  const std::string cap = "*RIGID BODY, REF NODE=50, NSET=TOP\n*BOUNDARY\n50, 2, 6\n";
  const double k = 4 * 12 * 1200 / 1000.0, mass = 4 * 1e-3 * (13.0 / 35 * 10 + 1.2 / 10);
  const ran r = run(with(cap, "", "*FREQUENCY\n1\n"));
  EXPECT_WITHIN(r.modes(1).at(0), std::sqrt(k / mass) / (2 * std::acos(-1.0)), r.modes(1).at(0), 1e-9);
}

TEST(deck_constraints, steps_that_follow_a_path_take_no_values) {
  std::vector<std::string> lines = COLUMNS;
  const std::string hinges = "*PLASTIC HINGE, ELSET=B, CURVE=ORBISON\n100., 10., 10.\n";
  const std::string turned = "*TRANSFORM, NSET=TWO\n1., 1., 0., -1., 1., 0.\n*BOUNDARY\n11, 1, 1, 0.1\n";
  expect_error(with(hinges + turned, "*CLOAD\n13, 1, 1.\n", "*PUSHOVER\n"), FIRST + 5, "*BOUNDARY",
               "a prescribed displacement other than 0 has no place in a step in which hinges form or shells yield");
}
