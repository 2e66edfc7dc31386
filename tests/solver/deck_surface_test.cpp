// deck_surface_test.cpp: *SURFACE, and the loads that stand on surfaces, faces and edges: what is read, what is
// refused.
#include <gtest/gtest.h>

#include <numeric>

#include "deck_builder.h"
#include "solids_support.h"

using namespace deck_test;
using solver::BOTH_SIDES;
using solver::EDGE;
using solver::NEGATIVE_SIDE;
using solver::POSITIVE_SIDE;

namespace {

// Lines 1 to 28; a surface card begins at line 29.
const std::string HEAD =
    "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 1, 0\n4, 0, 1, 0\n5, 0, 0, 3\n6, 2, 0, 3\n7, 2, 1, 3\n8, 0, 1, 3\n"
    "9, 5, 0, 0\n10, 5, 1, 0\n11, 7, 0.5, 0\n"
    "*ELEMENT, TYPE=C3D8, ELSET=BRICK\n1, 1, 2, 3, 4, 5, 6, 7, 8\n"
    "*ELEMENT, TYPE=S4, ELSET=SHELL\n2, 2, 9, 10, 3\n"
    "*ELEMENT, TYPE=M3D3, ELSET=SKIN\n3, 9, 11, 10\n"
    "*ELEMENT, TYPE=T3D2, ELSET=BAR\n4, 1, 11\n"
    "*MATERIAL, NAME=M\n*ELASTIC\n1000, 0.25\n"
    "*SOLID SECTION, ELSET=BRICK, MATERIAL=M\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n1\n"
    "*SHELL SECTION, ELSET=SHELL, MATERIAL=M\n0.5\n";
const std::string MEMBRANE = "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=M\n0.25\n";

std::string deck(const std::string& surfaces, const std::string& load = "*CLOAD\n7, 1, 1") {
  return HEAD + surfaces + "\n" + MEMBRANE + "*BOUNDARY\n1, 1, 3\n*STEP\n*STATIC\n" + load + "\n*END STEP\n";
}

solver::named_surface surface(const std::string& card) { return read(deck(card)).surfaces.at(0); }

std::vector<std::pair<int, int>> faces_of(const solver::named_surface& s) {
  std::vector<std::pair<int, int>> list;
  for (const solver::surface_face& f : s.faces) list.emplace_back(f.element + 1, f.face);
  return list;
}

using faces = std::vector<std::pair<int, int>>;

double total(const std::vector<double>& weights) { return std::accumulate(weights.begin(), weights.end(), 0.0); }

// A surface TOP, a load on it (line 37 of the deck), and what is said of the load.
std::string on(const std::string& face, const std::string& load) {
  return deck("*SURFACE, NAME=TOP\n" + face, "*DSLOAD\n" + load);
}
void refuse(const std::string& face, const std::string& load, const std::string& sentence) {
  expect_error(on(face, load), 38, "*DSLOAD", sentence);
}

}  // namespace

TEST(DeckSurface, FacesOfSolids) {
  const solver::named_surface s = surface("*SURFACE, NAME=Top, TYPE=ELEMENT, INTERNAL\nBRICK, S2\n1, s4");
  EXPECT_EQ(s.name, "TOP");
  EXPECT_EQ(s.line, 29);
  EXPECT_EQ(faces_of(s), (faces{{1, 2}, {1, 4}}));
  EXPECT_EQ(s.nodes, (std::vector<int>{1, 2, 4, 5, 6, 7}));  // of 5-8-7-6 and of 2-6-7-3
  // The top is 2 by 1, the side 1 by 3: a quarter of each at every corner.
  const std::vector<double> shares = {0.75, 0.75, 0.5, 1.25, 1.25, 0.5};
  for (std::size_t i = 0; i < shares.size(); ++i) EXPECT_NEAR(s.weights.at(i), shares[i], 1e-14) << i;
}

TEST(DeckSurface, AFaceThatIsNamedTwiceCountsOnce) {
  const solver::named_surface s = surface("*SURFACE, NAME=TOP\nBRICK, S2\n1, S2");
  EXPECT_EQ(faces_of(s), (faces{{1, 2}}));
  EXPECT_NEAR(total(s.weights), 2, 1e-14);
}

TEST(DeckSurface, FreeFacesAreThoseThatNoOtherSolidShares) {
  for (const std::string kind : {"C3D8", "C3D6", "C3D4"}) {
    solids_test::block b;
    b.kind = kind;
    b.count = {3, 2, 2};
    std::string text = b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n1, 1, 1\n");
    text.insert(text.find("*MATERIAL"), "*SURFACE, NAME=AROUND\nBODY\n");
    const solver::model m = read(text);
    EXPECT_NEAR(total(m.surfaces.at(0).weights), 6, 1e-12) << kind;    // the unit cube
    EXPECT_EQ(m.surfaces[0].nodes.size(), 4U * 3U * 3U - 2U) << kind;  // all but the two inner nodes
  }
}

TEST(DeckSurface, SidesAndEdgesOfPlates) {
  EXPECT_EQ(faces_of(surface("*SURFACE, NAME=S\nSHELL, SPOS\nSKIN, SNEG")),
            (faces{{2, POSITIVE_SIDE}, {3, NEGATIVE_SIDE}}));
  EXPECT_EQ(faces_of(surface("*SURFACE, NAME=S\nSHELL\nSKIN")), (faces{{2, BOTH_SIDES}, {3, BOTH_SIDES}}));
  const solver::named_surface sides = surface("*SURFACE, NAME=S\nSHELL, SPOS\nSHELL, SNEG\nSKIN, SPOS");
  EXPECT_NEAR(total(sides.weights), 3 + 1, 1e-14);  // of the two sides of a shell one counts
  const solver::named_surface edges = surface("*SURFACE, NAME=S\nSHELL, E4\nSHELL, E1");
  EXPECT_EQ(faces_of(edges), (faces{{2, EDGE + 1}, {2, EDGE + 4}}));
  EXPECT_EQ(edges.nodes, (std::vector<int>{1, 2, 8}));  // 2-9 of length 3, 3-2 of length 1
  const std::vector<double> lengths = {2, 0.5, 1.5};
  for (std::size_t i = 0; i < lengths.size(); ++i) EXPECT_NEAR(edges.weights.at(i), lengths[i], 1e-14) << i;
}

// A trapezoid, 3 wide at its foot, 1 at its top and 2 high: the Jacobian (2 - eta) / 2 gives 1 + 1/6 to each node of
// the foot and 1 - 1/6 to those of the top, where equal shares would give 1.
TEST(DeckSurface, NodesOfATrapezoidShareItsAreaByTheirFunctions) {
  std::string text = deck("*SURFACE, NAME=S\nSHELL, SPOS");
  const std::string corners = "2, 2, 0, 0\n3, 2, 1, 0\n", end = "9, 5, 0, 0\n10, 5, 1, 0\n";
  text.replace(text.find(corners), corners.size(), "2, 2, 0, 0\n3, 3, 2, 0\n");
  text.replace(text.find(end), end.size(), "9, 5, 0, 0\n10, 4, 2, 0\n");
  const solver::named_surface s = read(text).surfaces.at(0);
  EXPECT_EQ(s.nodes, (std::vector<int>{1, 2, 8, 9}));  // 2, 3, 9, 10 of the deck
  const std::vector<double> shares = {7. / 6, 5. / 6, 7. / 6, 5. / 6};
  for (std::size_t i = 0; i < shares.size(); ++i) EXPECT_NEAR(s.weights.at(i), shares[i], 1e-14) << i;
}

// The faces of shells in CalculiX: 1 and 2 the sides against and along the normal, then the edges.
TEST(DeckSurface, NumberedFacesOfPlates) {
  EXPECT_EQ(faces_of(surface("*SURFACE, NAME=S\nSHELL, S1")), (faces{{2, NEGATIVE_SIDE}}));
  EXPECT_EQ(faces_of(surface("*SURFACE, NAME=S\nSHELL, S2")), (faces{{2, POSITIVE_SIDE}}));
  EXPECT_EQ(faces_of(surface("*SURFACE, NAME=S\nSHELL, S6")), (faces{{2, EDGE + 4}}));
}

TEST(DeckSurface, Nodes) {
  const solver::named_surface s = surface("*SURFACE, TYPE=NODE, NAME=S\n9\n11, 2.5\n9");
  EXPECT_TRUE(s.faces.empty());
  EXPECT_EQ(s.nodes, (std::vector<int>{8, 10}));
  EXPECT_EQ(s.weights, (std::vector<double>{1, 2.5}));
  EXPECT_EQ(surface("*SURFACE, TYPE=NODE, NAME=S\nALL").nodes.size(), 11U);
}

TEST(DeckSurface, MayNameASetThatComesLater) {
  EXPECT_EQ(surface("*SURFACE, NAME=S\nLATER, S1\n*ELSET, ELSET=LATER\nBRICK").nodes.size(), 4U);
}

TEST(DeckSurface, WrongCards) {
  const auto expect = [](const std::string& card, int line, const std::string& sentence) {
    expect_error(deck(card), line, "*SURFACE", sentence);
  };
  expect("*SURFACE, NAME=S", 29, "no data line follows");
  expect("*SURFACE\n1, S1", 29, "the parameter NAME is missing");
  expect("*SURFACE, NAME=S, TYPE=CYLINDER\n1, S1", 29, "TYPE=CYLINDER is not supported; ELEMENT and NODE are");
  expect("*SURFACE, NAME=S\n1, S1\n*SURFACE, NAME=s\n1, S2", 31, "the surface 'S' is defined already, in line 29");
  expect("*SURFACE, NAME=S\n17, S1", 30, "element 17 is not defined");
  expect("*SURFACE, NAME=S\nNONE, S1", 30, "the element set 'NONE' is not defined");
  expect("*SURFACE, NAME=S\n1, S1, S2", 30, "too many fields (3): element or set, face");
  expect("*SURFACE, NAME=S\n1, S7", 30, "the face 'S7' is none of S1 to S6, SPOS, SNEG and E1 to E4");
  expect("*SURFACE, NAME=S\n1, E1", 30, "element 1 has no face 'E1': it has the faces S1 to S6");
  expect("*SURFACE, NAME=S\n1, SPOS", 30, "element 1 has no face 'SPOS': it has the faces S1 to S6");
  expect("*SURFACE, NAME=S\n3, E4", 30,
         "element 3 has no face 'E4': it has the sides SPOS and SNEG and the edges E1 to E3");
  expect("*SURFACE, NAME=S\nBAR", 30,
         "element 4: members, springs and links have no faces; a surface of their nodes has TYPE=NODE");
  expect("*SURFACE, NAME=S\n1, S1\n2, E1", 29, "the surface has faces and edges; make a surface of each");
  expect("*SURFACE, TYPE=NODE, NAME=S\n99", 30, "node 99 is not defined");
  expect("*SURFACE, TYPE=NODE, NAME=S\n1, 0", 30, "weight: '0' is not positive");
  expect("*SURFACE, TYPE=NODE, NAME=S\n1, 2\nALL, 1", 31, "node 1 has another weight already");
}

TEST(DeckSurface, NothingFree) {
  solids_test::block b;
  b.count = {3, 3, 3};
  std::string text = b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n1, 1, 1\n");
  const std::size_t at = text.find("*MATERIAL");
  text.insert(at, "*SURFACE, NAME=S\n14\n");  // the middle one of 27
  const int line = static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n')) + 2;
  expect_error(text, line, "*SURFACE", "none of these elements has a free face: each is shared with another solid");
}

// A load on a surface that is in error says no more.
TEST(DeckSurface, WhatFollowsFromAnErrorIsNotReported) {
  expect_error(on("1, S9", "TOP, P, 1"), 30, "*SURFACE", "the face 'S9' is none of S1 to S6, SPOS, SNEG and E1 to E4");
}

TEST(DeckSurface, WrongSurfaceLoads) {
  refuse("1, S1", "BOTTOM, P, 1", "the surface 'BOTTOM' is not defined");
  refuse("1, S1", "BRICK, P, 1",
         "the surface 'BRICK' is not defined; the element set of this name becomes one by a *SURFACE");
  refuse("1, S1", ", P, 1", "a field is empty: it takes the name of a surface");
  refuse("1, S1", "TOP, P", "too few fields (2): surface, type of the load, magnitude, ...");
  refuse("1, S1", "TOP, P, 1, 2", "too many fields (4): surface, P, magnitude");
  refuse("1, S1", "TOP, P, high", "magnitude: 'high' is not a number");
  refuse("1, S1", "TOP, GRAV, 1, 0, 0, 1",
         "the load type 'GRAV' is not supported on a surface; P, HP, TRVEC and TRSHR are, and on edges EDNOR, EDSHR, "
         "EDTRA, EDMOM and EDLD");
  refuse("1, S1", "TOP, HP, 1, 2",
         "too few fields (4): surface, HP, pressure, z where it is zero, z where it is given");
  refuse("1, S1", "TOP, HP, 1, 2, 2", "the pressure is zero and given at the same z");
  refuse("1, S1", "TOP, TRVEC, 1, 0, 0, 0", "the direction of TRVEC is zero");
  refuse("1, S2", "TOP, TRSHR, 1, 0, 0, 2", "'TRSHR' on element 1: the direction is normal to the face");
  refuse("1, S1", "TOP, EDNOR, 1", "'EDNOR' on element 1: it is a load on edges, and this is a face");
  refuse("2, E1", "TOP, HP, 1, 2, 3", "'HP' on element 2: it is a load on faces, and this is an edge");
  refuse("2, E1", "TOP, P, 1", "'P' on element 2: edges of shells take EDNOR, a force per length");
  refuse("2", "TOP, P, 1", "'P' on element 2: the surface names no side: SPOS or SNEG");
  refuse("3, E1", "TOP, EDMOM, 1", "'EDMOM' on element 3: membranes have no rotations");
  expect_error(deck("*SURFACE, NAME=TOP, TYPE=NODE\n7", "*DSLOAD\nTOP, P, 1"), 38, "*DSLOAD",
               "the surface 'TOP' has nodes and no faces: it takes a *CLOAD");
  expect_error(deck("*SURFACE, NAME=TOP\n1, S1", "*DSLOAD, FOLLOWER=YES\nTOP, P, 1"), 37, "*DSLOAD",
               "FOLLOWER=YES is not supported: loads keep their direction and size; leave it out, or write NO");
  EXPECT_EQ(read(deck("*SURFACE, NAME=TOP\n1, S1", "*DSLOAD, FOLLOWER=NO\nTOP, P, 1")).steps[0].element_loads.size(),
            1U);
}

TEST(DeckSurface, WrongTypesOfDload) {
  const auto expect = [](const std::string& load, const std::string& sentence) {
    expect_error(deck("*ELSET, ELSET=EMPTY\n1", "*DLOAD\n" + load), 38, "*DLOAD", sentence);
  };
  expect("1, HP, 1, 2, 3", "'HP' on element 1: the type needs the number of the face, as in HP1");
  expect("2, HP2, 1, 2, 3", "'HP2' on element 2: a plate has one such load, HP");
  expect("2, EDNOR, 1", "'EDNOR' on element 2: the type needs the number of the edge, as in EDNOR1");
  expect("2, EDNOR5, 1", "'EDNOR5' on element 2: the element has the edges 1 to 4");
  expect("3, P4, 1", "'P4' on element 3: the element has the edges 1 to 3");
  expect("1, EDNOR1, 1", "'EDNOR1' on element 1: edges belong to shells and membranes");
  expect("4, EDNOR1, 1", "'EDNOR1' on element 4: members have neither faces nor edges");
  expect("1, CENTRIF, 1, 0, 0, 0, 0, 0, 1", "CENTRIF needs a *DENSITY: the material 'M' of element 1 has none");
  expect("1, CENTRIF, 1, 0, 0, 0, 0, 0, 0", "the direction of CENTRIF is zero");
  expect("1, CENTRIF, -1, 0, 0, 0, 0, 0, 1", "CENTRIF takes the square of the angular velocity, which is not negative");
  expect(
      "1, CENTRIF, 1, 0, 0, 1",
      "too few fields (6): element or set, CENTRIF, squared angular velocity, x, y, z of a point of the axis, x, y, z "
      "along it");
}

TEST(DeckSurface, NoLoadsOnSurfacesBesideFrequencies) {
  std::string text = on("1, S1", "TOP, P, 1");
  text.replace(text.find("*STATIC"), 7, "*FREQUENCY\n2");
  expect_error(text, 39, "*DSLOAD", "a load has no effect in a step with *FREQUENCY");
}
