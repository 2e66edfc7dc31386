// Quadratic elements of decks: what they become, which nodes are made, and what is wrong with those that are refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "deck_builder.h"
#include "elements/parts.h"
#include "model/deck_error.h"
#include "quadratic_support.h"

using deck_test::expect_error;
using quadratic_test::mesh;
using quadratic_test::read;
using quadratic_test::straight;
using solver::count_of;

namespace {

const std::string REST = "*MATERIAL, NAME=M\n*ELASTIC\n1000, 0.25\n";
const std::string STEP = "*STEP\n*STATIC\n*END STEP\n";

// An eight-node square of side 2 in lines 1 to 9; the element is in line 11.
const std::string SQUARE =
    "*NODE\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 2, 0\n4, 0, 2, 0\n5, 1, 0, 0\n6, 2, 1, 0\n7, 1, 2, 0\n8, 0, 1, 0\n";
std::string square(const std::string& nodes) {
  return SQUARE + "*ELEMENT, TYPE=S8R, ELSET=SKIN\n" + nodes + "\n" + REST +
         "*SHELL SECTION, ELSET=SKIN, MATERIAL=M\n0.1\n" + STEP;
}
std::string beam(const std::string& nodes, const std::string& more = "") {
  return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 2, 0, 0\n4, 2, 0, 0\n*ELEMENT, TYPE=B32, ELSET=MEMBER\n" + nodes + "\n" +
         REST + "*BEAM SECTION, ELSET=MEMBER, MATERIAL=M, SECTION=CIRC\n0.1\n" + more + STEP;
}
std::string solids(const mesh& m) { return m.text() + REST + "*SOLID SECTION, ELSET=BODY, MATERIAL=M\n" + STEP; }

}  // namespace

TEST(DeckQuadratic, ASquareBecomesFour) {
  const solver::model m = read(square("7, 1, 2, 3, 4, 5, 6, 7, 8"));
  ASSERT_EQ(m.elements.size(), 4U);
  ASSERT_EQ(m.made_nodes.size(), 1U);
  EXPECT_EQ(m.nodes.size(), 9U);
  EXPECT_EQ(m.nodes[8].id, 0);
  EXPECT_EQ(m.nodes[8].xyz, (std::array<double, 3>{1, 1, 0}));
  EXPECT_EQ(solver::node_name(m, 8), "the node in the middle of element 7");
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(m.elements[k].id, 7);
    EXPECT_EQ(m.elements[k].type, solver::element_type::S4);
    EXPECT_EQ(m.elements[k].part, k);
    EXPECT_EQ(m.elements[k].parts, 4);
    EXPECT_EQ(m.elements[k].section, 0);
  }
  ASSERT_EQ(m.elsets.size(), 1U);
  EXPECT_EQ(m.elsets[0].members, (std::vector<int>{0, 1, 2, 3}));
  ASSERT_EQ(m.notes.size(), 2U);
  EXPECT_EQ(
      m.notes[0],
      "quadratic.inp:10: *ELEMENT: 1 S8R is read as 4 S4, with a node in the middle of each where the functions of "
      "the element put it; it moves freely");
}

// Edge k of the square is an edge of the parts at its two corners, of no other part.
TEST(DeckQuadratic, EdgesAndFacesOfParts) {
  const solver::model m = read(square("7, 1, 2, 3, 4, 5, 6, 7, 8"));
  for (int edge = 1; edge <= 4; ++edge) {
    double length = 0;
    for (const solver::element& e : m.elements) {
      const int own = solver::side_of_part(e, edge);
      if (own == 0) continue;
      const std::vector<int> places = solver::plate_edge(e.type, own);
      for (const int place : places) {
        const auto& x = m.nodes[e.nodes[place]].xyz;
        EXPECT_EQ(edge % 2 == 1 ? x[1] : x[0], edge == 1 || edge == 4 ? 0.0 : 2.0) << edge;
      }
      length += 1;
    }
    EXPECT_EQ(length, 2) << edge;
    EXPECT_EQ(solver::side_of_part(m.elements[0], 5), 0);
  }
  for (const auto& [shape, type, faces, in_face] :
       {std::tuple{'B', "C3D20", 6, 4}, std::tuple{'W', "C3D15", 5, 4}, std::tuple{'X', "C3D10", 4, 3}}) {
    const solver::model s = read(solids(mesh(shape, type, {1, 1, 1}, straight)));
    EXPECT_EQ(solver::face_count_of(s.elements[0]), faces);
    for (int face = 1; face <= faces; ++face) {
      int parts = 0;
      for (int k = 0; k < s.elements[0].parts; ++k) parts += solver::side_of_part(s.elements[k], face) > 0 ? 1 : 0;
      EXPECT_EQ(parts, in_face) << type << face;
    }
  }
}

TEST(DeckQuadratic, NumbersOfALinearDeck) {
  const solver::model m = solver::with_own_numbers(read(solids(mesh('B', "C3D20R", {2, 1, 1}, straight))));
  ASSERT_EQ(m.nodes.size(), 32U + 13U);
  ASSERT_EQ(m.elements.size(), 16U);
  std::set<int> nodes, elements;
  for (const solver::node& n : m.nodes) nodes.insert(n.id);
  for (const solver::element& e : m.elements) elements.insert(e.id);
  EXPECT_EQ(nodes.size(), m.nodes.size());
  EXPECT_EQ(elements.size(), m.elements.size());
  EXPECT_EQ(*nodes.begin(), 1);
  EXPECT_EQ(*nodes.rbegin(), 45);
  EXPECT_EQ(*elements.rbegin(), 16);
  EXPECT_EQ(m.elements[0].id, 1);
  EXPECT_EQ(m.elements[8].id, 2);
}

// Neighbours share the nodes of their faces: of n cells in a row 5 n + 1 faces and n middles.
TEST(DeckQuadratic, NeighboursShareWhatIsMade) {
  EXPECT_EQ(read(solids(mesh('B', "C3D20R", {3, 1, 1}, straight))).made_nodes.size(), 16U + 3U);
  // Two wedges: 5 quadrilateral faces, one of which they share. Six tetrahedra of a cube: 12 triangles outside, 6
  // between.
  EXPECT_EQ(read(solids(mesh('W', "C3D15", {1, 1, 1}, straight))).made_nodes.size(), 5U);
  EXPECT_EQ(read(solids(mesh('X', "C3D10", {1, 1, 1}, straight))).made_nodes.size(), 18U + 6U);
  EXPECT_EQ(read(solids(mesh('B', "C3D20", {1, 1, 1}, straight))).elements.size(), 8U);
  EXPECT_EQ(read(solids(mesh('W', "C3D15", {1, 1, 1}, straight))).elements.size(), 16U);
  EXPECT_EQ(read(solids(mesh('X', "C3D10", {1, 1, 1}, straight))).elements.size(), 24U);
  // Beside tetrahedra a wedge becomes six bricks, so that its triangles fit.
  const solver::model mixed = read(solids(mesh('M', "", {1, 1, 2}, straight)));
  EXPECT_EQ(mixed.elements.size(), 2U * 6U + 6U * 4U);
  for (const solver::element& e : mixed.elements) EXPECT_EQ(e.type, solver::element_type::C3D8);
  // Five and two triangular faces outside, of which two are shared, of the wedges; 18 of the tetrahedra.
  EXPECT_EQ(mixed.made_nodes.size(), 5U + 4U + 2U + 18U - 2U + 6U);
}

// Fifteen nodes and sixteen numbers end a line that others write without a comma.
TEST(DeckQuadratic, ABrickOnTwoLines) {
  std::string text = solids(mesh('B', "C3D20", {1, 1, 1}, straight));
  const std::size_t comma = text.find(",\n", text.find("*ELEMENT"));
  ASSERT_NE(comma, std::string::npos);
  EXPECT_EQ(read(text.erase(comma, 1)).elements.size(), 8U);
}

TEST(DeckQuadratic, WrongSquares) {
  expect_error(square("7, 1, 2, 3, 4, 5, 6, 7"), 11, "*ELEMENT", "too few fields (8): number, node 1 to node 8");
  expect_error(
      square("7, 1, 5, 2, 6, 3, 7, 4, 8"), 11, "*ELEMENT",
      "element 7: node 3 does not lie between the nodes 1 and 5: the corners come first, then the middles of the "
      "edges");
  expect_error(
      square("7, 1, 2, 3, 4, 6, 5, 7, 8"), 11, "*ELEMENT",
      "element 7: node 6 does not lie between the nodes 1 and 2: the corners come first, then the middles of the "
      "edges");
  expect_error(square("7, 1, 2, 3, 4, 5, 6, 7, 7"), 11, "*ELEMENT", "element 7: node 7 is named twice");
  expect_error(square("7, 1, 2, 3, 4, 5, 6, 7, 9"), 11, "*ELEMENT", "element 7: node 9 is not defined");
}

TEST(DeckQuadratic, AMiddleInTheWrongPlace) {
  const auto moved = [](const std::string& to) {
    std::string text = square("7, 1, 2, 3, 4, 5, 6, 7, 8");
    return text.replace(text.find("5, 1, 0, 0"), 10, to);
  };
  expect_error(
      moved("5, 0, 0, 0"), 11, "*ELEMENT",
      "element 7: node 5 does not lie between the nodes 1 and 2: the corners come first, then the middles of the "
      "edges");
  expect_error(moved("5, 1, 5, 0"), 11, "*ELEMENT",
               "element 7 folds over: the nodes in the middle of its edges, or its corners, are out of place");
}

// The middles of two sides of a triangle beyond one another.
TEST(DeckQuadratic, ATriangleThatFolds) {
  const auto triangle = [](const std::string& five) {
    return "*NODE\n1, 0, 0, 0\n2, 4, 0, 0\n3, 0, 4, 0\n4, 2, 0, 0\n5, " + five +
           "\n6, 0, 2, 0\n*ELEMENT, TYPE=S6, ELSET=SKIN\n1, 1, 2, 3, 4, 5, 6\n" + REST +
           "*SHELL SECTION, ELSET=SKIN, MATERIAL=M\n0.1\n" + STEP;
  };
  EXPECT_EQ(read(triangle("1.2, 1.2, 0")).elements.size(), 4U);
  expect_error(triangle("0.8, 0.8, 0"), 9, "*ELEMENT",
               "element 1 folds over: the nodes in the middle of its edges, or its corners, are out of place");
}

TEST(DeckQuadratic, WrongBeams) {
  EXPECT_EQ(read(beam("1, 1, 2, 3")).elements.size(), 2U);
  expect_error(
      beam("1, 1, 3, 2"), 7, "*ELEMENT",
      "element 1: node 3 does not lie between the nodes 1 and 2: the nodes go from end to end, the middle is the "
      "second");
  expect_error(beam("1, 1, 2"), 7, "*ELEMENT",
               "too few fields (3): number, node at one end, in the middle, at the other end");
  expect_error(
      beam("1, 3, 2, 4"), 7, "*ELEMENT",
      "element 1: node 2 does not lie between the nodes 3 and 4: the nodes go from end to end, the middle is the "
      "second");
  expect_error(beam("1, 1, 2, 3", "*RELEASE\n1, S1, N\n1, S2, N\n"), 15, "*RELEASE",
               "the force is released at the other end already");
  expect_error(beam("1, 1, 2, 3", "*PLASTIC HINGE, ELSET=MEMBER, CURVE=ORBISON\n1, 1, 1\n"), 13, "*PLASTIC HINGE",
               "element 1 is read as two beams: give it as two B31, so that every hinge has an element and an end");
}

// S1 is the first end of the first half, S2 the second of the last; a torsion is released once.
TEST(DeckQuadratic, ReleasesOfTheWhole) {
  const solver::model m = read(beam("1, 1, 2, 3", "*RELEASE\n1, S1, ALLM\n1, S2, ALLM\n"));
  const auto first = solver::ends_of(m, m.elements[0]), last = solver::ends_of(m, m.elements[1]);
  EXPECT_EQ(first.fixity[0], (std::array<double, 2>{0, 0}));
  EXPECT_EQ(first.fixity[1], (std::array<double, 2>{1, 1}));
  EXPECT_EQ(last.fixity[0], (std::array<double, 2>{1, 1}));
  EXPECT_EQ(last.fixity[1], (std::array<double, 2>{0, 0}));
  EXPECT_EQ(first.released[3], 1);
  EXPECT_EQ(last.released[3], 0);
}

TEST(DeckQuadratic, SolidsNeedTheOption) {
  const std::string text = solids(mesh('X', "C3D10", {1, 1, 1}, straight));
  const auto line =
      static_cast<int>(std::count(text.begin(), text.begin() + static_cast<long>(text.find("*ELEMENT")), '\n'));
  expect_error(text, line + 1, "*ELEMENT",
               "the element type 'C3D10' is quadratic, and the solids of the library are linear: its record of a solid "
               "has places for nine nodes. The option --refine divides each C3D10 into four C3D8");
}

// One error for one element, which says what the linear element would say.
TEST(DeckQuadratic, ABrickInsideOut) {
  const mesh turned('B', "C3D20", {1, 1, 1}, [](double u, double v, double w) {
    return analysis_test::point{u, v, -w};
  });
  try {
    read(solids(turned));
    ADD_FAILURE();
  } catch (const solver::deck_error& error) {
    EXPECT_EQ(error.text.find("element 1 (part 1 of 8) is inside out, its volume is negative"), 0U) << error.text;
  }
}
