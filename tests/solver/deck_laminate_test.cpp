// deck_laminate_test.cpp: *SHELL SECTION, COMPOSITE, and the systems of *ORIENTATION that came with it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "deck_builder.h"

using namespace deck_test;

namespace {

// The good deck with other lines in the place of its section, lines 22 and 23.
std::string with_section(const std::string& text) {
  std::vector<std::string> lines = GOOD;
  lines[21] = text;
  lines.erase(lines.begin() + 22);
  return text_of(lines);
}

std::string layers(const std::string& parameters, const std::string& data) {
  return with_section("*SHELL SECTION, ELSET=SKIN, COMPOSITE" + parameters + "\n" + data);
}

constexpr const char* KEYWORD = "*SHELL SECTION";

}  // namespace

TEST(deck_laminate, layers) {
  const solver::model m = read(layers(", SYMMETRIC, LAYUP=L1, STACK DIRECTION=3", "0.1, 3, STEEL, 30.\n0.2, , STEEL"));
  ASSERT_EQ(m.laminates.size(), 1u);
  const std::vector<solver::layer>& all = m.laminates[0].layers;
  ASSERT_EQ(all.size(), 4u);
  EXPECT_EQ(all[0].thickness, 0.1);
  EXPECT_EQ(all[1].thickness, 0.2);
  EXPECT_EQ(all[2].thickness, 0.2);
  EXPECT_EQ(all[3].angle, 30);
  EXPECT_EQ(m.shell_sections[0].layup, 0);
  EXPECT_NEAR(m.shell_sections[0].thickness, 0.6, 1e-15);
  EXPECT_NEAR(m.materials[m.shell_sections[0].material].density, 7850, 1e-9);
}

TEST(deck_laminate, orientations_of_layers) {
  const std::string text = with_section(
      "*ORIENTATION, NAME=ALONG\n0., 1., 0., -1., 0., 0.\n3, 0.\n"
      "*ORIENTATION, NAME=ACROSS\n0., 1., 0., -1., 0., 0.\n3, 30.\n"
      "*SHELL SECTION, ELSET=SKIN, COMPOSITE, SYMMETRIC, FORMULATION=THIN\n"
      "0.1, , STEEL, ALONG\n0.1, , STEEL, ACROSS");
  const solver::model m = read(text);
  EXPECT_EQ(m.shell_sections[0].orientation, 0);
  EXPECT_EQ(m.laminates[0].layers[0].angle, 0);
  EXPECT_NEAR(m.laminates[0].layers[1].angle, 30, 1e-9);
}

TEST(deck_laminate, in_error) {
  expect_error(replaced(22, GOOD[21] + ", COMPOSITE"), 22, KEYWORD,
               "MATERIAL has no place beside COMPOSITE: each layer names its own");
  expect_error(replaced(22, GOOD[21] + ", SYMMETRIC"), 22, KEYWORD, "SYMMETRIC belongs to COMPOSITE");
  expect_error(layers(", STACK DIRECTION=1", "0.1, , STEEL"), 22, KEYWORD,
               "STACK DIRECTION=1 is not supported: the layers of a shell lie one above the other along its normal, 3");
  expect_error(layers("", "0.1, , GLASS"), 23, KEYWORD, "the material 'GLASS' is not defined");
  expect_error(layers("", "0., , STEEL"), 23, KEYWORD, "thickness: '0.' is not positive");
  expect_error(layers("", "0.1, 3, , 0."), 23, KEYWORD, "a layer names its material in the third field");
  expect_error(layers("", "0.1, , STEEL, TILTED"), 23, KEYWORD, "the orientation 'TILTED' is not defined");
  expect_error(layers("", "0.1"), 23, KEYWORD,
               "too few fields (1): thickness, integration points, material, angle or orientation, name of the layer");
  expect_error(layers(", MODEL=LAYERED", "0.1, , STEEL"), 22, KEYWORD,
               "MODEL has no place beside COMPOSITE: layers are elastic");
}

TEST(deck_laminate, what_the_library_cannot_hold) {
  const std::string ply = "*MATERIAL, NAME=PLY\n*ELASTIC, TYPE=LAMINA\n140., 10., 0.3, 5., 4., 3.\n*DENSITY\n1.\n";
  const auto deck = [&](const std::string& parameters, const std::string& data) {
    return with_section(ply + "*SHELL SECTION, ELSET=SKIN, COMPOSITE" + parameters + "\n" + data + "");
  };
  const char* const b_matrix =
      "the layers do not lie symmetrically about the mid surface: stretching them bends them (the matrix B is not 0), "
      "which the sections of the library do not know; SYMMETRIC repeats the lines of one half in reverse; "
      "layers that do not lie so are sections of their own, on elements that share the nodes, each with its OFFSET";
  expect_error(deck("", "0.1, , PLY, 0.\n0.1, , PLY, 90."), 27, KEYWORD, b_matrix);
  expect_error(deck("", "0.1, , PLY, 45.\n0.1, , PLY, -45."), 27, KEYWORD, b_matrix);
  expect_error(deck(", SYMMETRIC", "0.1, , PLY, 30.\n0.1, , PLY, -30."), 27, KEYWORD,
               "bending of the layers twists them (D16 and D26 are not 0), which thick shells do not know; "
               "FORMULATION=THIN holds the laminate, without transverse shear strains");
  EXPECT_EQ(read(deck(", SYMMETRIC, FORMULATION=THIN", "0.1, , PLY, 30.\n0.1, , PLY, -30.")).laminates.size(), 1u);
  // A cross-ply in axes at 45 degrees.
  EXPECT_EQ(read(deck(", SYMMETRIC", "0.1, , PLY, 45.\n0.1, , PLY, -45.")).laminates.size(), 1u);
}

TEST(deck_laminate, layers_are_elastic_and_of_one_temperature) {
  expect_error(with_section("*PLASTIC\n235.\n*SHELL SECTION, ELSET=SKIN, COMPOSITE\n0.1, , STEEL"), 25, KEYWORD,
               "the material 'STEEL' has *PLASTIC: layers of a section do not yield");
  std::string text = layers("", "0.1, , STEEL");
  text.replace(text.find("2.1E11, 0.3"), 11, "2.1E11, 0.3, 0.\n2.E11, 0.3, 100.");
  expect_error(text, 24, KEYWORD,
               "the constants of the material 'STEEL' depend on temperature: layers take constants of one temperature");
}

TEST(deck_laminate, orientations_by_nodes_and_systems) {
  const auto orientation = [](const std::string& parameters, const std::string& data) {
    return inserted(22, "*ORIENTATION, NAME=O" + parameters + "\n" + data + "\n3, 0.");
  };
  // Nodes 2 at x = 1, 4 at y = 1, 3 at both.
  const solver::orientation by_nodes = read(orientation(", DEFINITION=NODES", "4, 2")).orientations[0];
  EXPECT_EQ(by_nodes.direction[0], (std::array<double, 3>{0, 1, 0}));
  EXPECT_EQ(by_nodes.direction[2], (std::array<double, 3>{0, 0, -1}));
  EXPECT_EQ(read(orientation(", DEFINITION=NODES", "3, 4, 2")).orientations[0].origin,
            (std::array<double, 3>{1, 0, 0}));
  const solver::orientation z = read(orientation(", SYSTEM=Z RECTANGULAR", "0., 1., 0., 1., 0., 0.")).orientations[0];
  EXPECT_EQ(z.direction[2], (std::array<double, 3>{0, 1, 0}));
  EXPECT_EQ(z.direction[0], (std::array<double, 3>{1, 0, 0}));
  EXPECT_EQ(z.direction[1], (std::array<double, 3>{0, 0, -1}));
  expect_error(orientation(", DEFINITION=NODES", "4, 12"), 23, "*ORIENTATION", "node 12 is not defined");
  expect_error(orientation(", DEFINITION=NODES", "4"), 23, "*ORIENTATION",
               "too few fields (1): node a, node b, node at the origin");
  expect_error(orientation(", SYSTEM=CYLINDRICAL, DEFINITION=NODES", "4, 4"), 23, "*ORIENTATION",
               "the points a and b are the same: they are to be two points of the axis");
  expect_error(orientation(", SYSTEM=TOROIDAL", "0., 0., 0., 0., 0., 1."), 22, "*ORIENTATION",
               "SYSTEM=TOROIDAL is not supported; RECTANGULAR, Z RECTANGULAR, CYLINDRICAL and SPHERICAL are");
}
