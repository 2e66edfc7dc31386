// orientation_support.cpp: sheets of orthotropic material whose elements begin at any node.
#include "orientation_support.h"

#include <algorithm>
#include <random>

#include "finites/fields.h"
#include "frame_decks.h"

namespace orientation_test {

using frame_test::number;

std::vector<int> lamina::column(int i) const {
  std::vector<int> nodes;
  for (int j = 0; j <= ny; ++j) nodes.push_back(node(i, j));
  return nodes;
}

std::vector<int> lamina::row(int j) const {
  std::vector<int> nodes;
  for (int i = 0; i <= nx; ++i) nodes.push_back(node(i, j));
  return nodes;
}

namespace {

std::string element_line(const lamina& l, int number_of, std::vector<int> corners) {
  if (l.reversed(number_of)) std::reverse(corners.begin() + 1, corners.end());
  const int count = static_cast<int>(corners.size());
  std::string line = std::to_string(number_of);
  for (int k = 0; k < count; ++k)
    line += ", " + std::to_string(corners[static_cast<std::size_t>((k + l.begin(number_of)) % count)] + 1);
  return line + "\n";
}

std::string elements(const lamina& l) {
  std::string text = "*ELEMENT, TYPE=" + l.type + ", ELSET=SKIN\n";
  int count = 0, cell = 0;
  for (int i = 0; i < l.nx; ++i) {
    for (int j = 0; j < l.ny; ++j, ++cell) {
      const int a = l.node(i, j), b = l.node(i + 1, j), c = l.node(i + 1, j + 1), d = l.node(i, j + 1);
      if (!l.triangles()) {
        text += element_line(l, ++count, {a, b, c, d});
      } else if (l.falling(cell)) {
        text += element_line(l, ++count, {a, b, d});
        text += element_line(l, ++count, {b, c, d});
      } else {
        text += element_line(l, ++count, {a, b, c});
        text += element_line(l, ++count, {a, c, d});
      }
    }
  }
  return text;
}

}  // namespace

std::string lamina::deck(const std::string& supports, const std::string& step) const {
  std::string text = "*NODE, NSET=ALL\n";
  for (int i = 0; i <= nx; ++i) {
    for (int j = 0; j <= ny; ++j) {
      const point p = place(static_cast<double>(i) / nx, static_cast<double>(j) / ny);
      text += std::to_string(node(i, j) + 1) + ", " + number(p[0]) + ", " + number(p[1]) + ", " + number(p[2]) + "\n";
    }
  }
  text += elements(*this) + "*MATERIAL, NAME=PLY\n*ELASTIC, TYPE=LAMINA\n";
  for (const double constant : {E1, E2, nu12, G12, G13}) text += number(constant) + ", ";
  text += number(G23) + "\n*EXPANSION, TYPE=ORTHO\n" + number(alpha1) + ", " + number(alpha2) + ", 0.\n" + cards;
  text += membrane() ? "*MEMBRANE SECTION" : "*SHELL SECTION";
  text += ", ELSET=SKIN, MATERIAL=PLY" + (section.empty() ? "" : ", " + section) + "\n" + number(thickness) + "\n";
  return text + "*BOUNDARY\n" + supports + "*STEP\n*STATIC\n" + step + "*END STEP\n";
}

std::string edge_load(const std::vector<int>& nodes, int dof, double total) {
  std::string text;
  const double share = total / static_cast<double>(nodes.size() - 1);
  for (const int n : nodes)
    text += std::to_string(n + 1) + ", " + std::to_string(dof) + ", " +
            number(n == nodes.front() || n == nodes.back() ? share / 2 : share) + "\n";
  return text;
}

std::string held(const std::vector<int>& nodes, int first, int last) {
  std::string text;
  for (const int n : nodes)
    text += std::to_string(n + 1) + ", " + std::to_string(first) + ", " + std::to_string(last) + "\n";
  return text;
}

std::vector<lamina> all_types() {
  std::vector<lamina> all;
  for (const char* const type : {"S3", "S4", "M3D3", "M3D4"}) {
    for (const char* const formulation : {"FORMULATION=THIN", "FORMULATION=THICK"}) {
      lamina l;
      l.type = type;
      l.section = l.membrane() ? "" : formulation;
      if (all.empty() || !l.membrane() || all.back().type != l.type) all.push_back(l);
    }
  }
  return all;
}

std::string name_of(const lamina& l) { return l.type + " " + l.section; }

std::function<point(double, double)> shaken(const lamina& l, unsigned seed, double share) {
  std::mt19937 engine(seed);
  const auto random = [&] { return static_cast<double>(engine()) / 4294967296.0 - 0.5; };
  std::vector<std::array<double, 2>> shift(static_cast<std::size_t>((l.nx + 1) * (l.ny + 1)));
  for (int i = 1; i < l.nx; ++i)
    for (int j = 1; j < l.ny; ++j)
      shift[static_cast<std::size_t>(l.node(i, j))] = {2 * share * random() / l.nx, 2 * share * random() / l.ny};
  const auto place = l.place;
  const int nx = l.nx, ny = l.ny;
  return [=](double u, double v) {
    const int i = static_cast<int>(u * nx + 0.5), j = static_cast<int>(v * ny + 0.5);
    const std::array<double, 2>& s = shift[static_cast<std::size_t>(i * (ny + 1) + j)];
    return place(u + s[0], v + s[1]);
  };
}

}  // namespace orientation_test
