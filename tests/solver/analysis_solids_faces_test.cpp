// Pressures on the faces of solids, numbered as in the decks of CalculiX and Abaqus.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "solids_support.h"

using namespace solids_test;

namespace {

// One element in the unit cube, all its nodes held: the reactions are minus the loads.
struct single {
  std::string type, nodes;
  std::vector<point> at;

  solved under(const std::string& load) const {
    std::string text = "*NODE, NSET=ALL\n";
    for (std::size_t n = 0; n < at.size(); ++n) {
      text += std::to_string(n + 1);
      for (const double x : at[n]) text += ", " + std::to_string(x);
      text += "\n";
    }
    return solve(read(text + "*ELEMENT, TYPE=" + type + ", ELSET=BODY\n" + nodes +
                      "\n*MATERIAL, NAME=M\n*ELASTIC\n1000, 0.25\n*SOLID SECTION, ELSET=BODY, MATERIAL=M\n*BOUNDARY\n"
                      "ALL, 1, 3\n*STEP\n*STATIC\n*DLOAD\nBODY, " +
                      load + "\n*END STEP\n"));
  }
};

const single BRICK = {"C3D8",
                      "1, 1, 2, 3, 4, 5, 6, 7, 8",
                      {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
const single WEDGE = {
    "C3D6", "1, 1, 2, 3, 4, 5, 6", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}}};
const single TETRAHEDRON = {"C3D4", "1, 1, 2, 3, 4", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

struct expected_face {
  std::vector<int> nodes;  // from 1
  point force;             // of a pressure of 12, in all
};

// Every node of the face has the same share, as on rectangles and triangles it must; the others have none.
void expect_faces(const single& e, const std::vector<expected_face>& faces) {
  for (std::size_t f = 0; f < faces.size(); ++f) {
    const solved s = e.under("P" + std::to_string(f + 1) + ", 12");
    const std::vector<int>& nodes = faces[f].nodes;
    for (std::size_t n = 0; n < e.at.size(); ++n)
      for (std::size_t i = 0; i < 3; ++i) {
        const bool on_face = std::find(nodes.begin(), nodes.end(), static_cast<int>(n) + 1) != nodes.end();
        const double share = on_face ? faces[f].force[i] / static_cast<double>(nodes.size()) : 0;
        EXPECT_WITHIN(s.reaction(static_cast<int>(n), "xyz"[i]), -share, 12.0, 1e-14) << e.type << f + 1 << n << i;
      }
  }
}

}  // namespace

// A positive pressure pushes into the element.
TEST(AnalysisSolidsFaces, NumbersAndSigns) {
  expect_faces(BRICK, {{{1, 2, 3, 4}, {0, 0, 12}},
                       {{5, 6, 7, 8}, {0, 0, -12}},
                       {{1, 2, 5, 6}, {0, 12, 0}},
                       {{2, 3, 6, 7}, {-12, 0, 0}},
                       {{3, 4, 7, 8}, {0, -12, 0}},
                       {{1, 4, 5, 8}, {12, 0, 0}}});
  expect_faces(WEDGE, {{{1, 2, 3}, {0, 0, 6}},
                       {{4, 5, 6}, {0, 0, -6}},
                       {{1, 2, 4, 5}, {0, 12, 0}},
                       {{2, 3, 5, 6}, {-12, -12, 0}},
                       {{1, 3, 4, 6}, {12, 0, 0}}});
  expect_faces(TETRAHEDRON,
               {{{1, 2, 3}, {0, 0, 6}}, {{1, 2, 4}, {0, 6, 0}}, {{2, 3, 4}, {-6, -6, -6}}, {{1, 3, 4}, {6, 0, 0}}});
}

// A trapezium, 2 wide below and 1 above: the centre of the pressure is its centroid, at a height of 4/9.
TEST(AnalysisSolidsFaces, ConsistentOnATrapezium) {
  single e = BRICK;
  e.at = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  const solved s = e.under("P3, 12");
  const double upper = -s.reaction(4, 'y') - s.reaction(5, 'y'), all = upper - s.reaction(0, 'y') - s.reaction(1, 'y');
  EXPECT_WITHIN(all, 18.0, 18.0, 1e-14);
  EXPECT_WITHIN(upper, 18.0 * 4 / 9, 18.0, 1e-14);
}

// On all faces of all elements the pressures inside cancel: what is left is a hydrostatic state, in warped faces too.
TEST(AnalysisSolidsFaces, HydrostaticPressure) {
  for (const auto& [kind, faces, limit] :
       {std::tuple{"C3D8", 6, 1e-10}, std::tuple{"C3D6", 5, 1e-6}, std::tuple{"C3D4", 4, 1e-10}}) {
    block b = distorted(kind, 3);
    std::string load = "*STATIC\n*DLOAD\n";
    for (int f = 1; f <= faces; ++f) load += "BODY, P" + std::to_string(f) + ", 300\n";
    const solved s = solve(read(b.deck("X0, 1\nY0, 2\nZ0, 3\n", load)));
    for (const solver::solid_part& part : s.results.solids)
      EXPECT_WITHIN((std::vector<double>(part.at.stress.begin(), part.at.stress.end())),
                    (std::vector<double>{-300, -300, -300, 0, 0, 0}), 300.0, limit)
          << kind << part.node;
  }
}

TEST(AnalysisSolidsFaces, WhatHasNoSuchFace) {
  using deck_test::expect_error;
  const auto with = [](const std::string& load) {
    std::vector<std::string> lines = deck_test::GOOD_SOLIDS;
    lines[23] = "*STATIC\n*DLOAD\n" + load;
    return deck_test::text_of(lines);
  };
  EXPECT_EQ(deck_test::read(with("BODY, P6, 3.")).steps[0].element_loads[0].face, 6);
  expect_error(with("BODY, P7, 3."), 26, "*DLOAD",
               "the load type 'P7' is not supported; P, GRAV, BX, BY, BZ, PX, PY, PZ, P1 to P6, HP, TRVEC, TRSHR and "
               "CENTRIF are, and on edges EDNOR, EDSHR, EDTRA, EDMOM and EDLD with the number of the edge");
  expect_error(with("BODY, P, 3."), 26, "*DLOAD", "'P' on element 1: a pressure on a solid names the face, P1 to P6");
  expect_error(with("BAR, P3, 3."), 26, "*DLOAD",
               "'P3' on element 2: only solids have faces; P1 and P2 on beams are forces per length");
  expect_error(with("BODY, PX, 3."), 26, "*DLOAD",
               "'PX' on element 1: a load per length acts on beams, trusses and cables");
  std::vector<std::string> lines = deck_test::GOOD_SOLIDS;
  lines[9] = "*ELEMENT, TYPE=C3D4, ELSET=BODY";
  lines[10] = "1, 1, 2, 4, 5";
  lines[11] = "**";
  lines[23] = "*STATIC\n*DLOAD\nBODY, P5, 3.";
  expect_error(deck_test::text_of(lines), 26, "*DLOAD", "'P5' on element 1: the element has the faces P1 to P4");
}
