// solids_support.cpp: blocks of solids from deck texts.
#include "solids_support.h"

#include <algorithm>
#include <cmath>

#include "frame_decks.h"

namespace solids_test {

using frame_test::number;

namespace {

std::string line(const std::vector<int>& indices) {
  std::string text;
  for (const int n : indices) text += ", " + std::to_string(n + 1);
  return text + "\n";
}

std::string set(const std::string& name, const std::vector<int>& nodes) {
  std::string text = "*NSET, NSET=" + name + "\n";
  for (const int n : nodes) text += std::to_string(n + 1) + "\n";
  return text;
}

// The corners of a cell: round the lower face, then round the upper.
std::vector<int> corners(const block& b, int i, int j, int k) {
  return {b.node(i, j, k),     b.node(i + 1, j, k),     b.node(i + 1, j + 1, k),     b.node(i, j + 1, k),
          b.node(i, j, k + 1), b.node(i + 1, j, k + 1), b.node(i + 1, j + 1, k + 1), b.node(i, j + 1, k + 1)};
}

// Six tetrahedra round the diagonal from corner 0 to corner 6, along the paths of edges between them.
constexpr int PATHS[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6}, {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};

std::vector<std::vector<int>> cut(const block& b, int i, int j, int k) {
  const std::vector<int> c = corners(b, i, j, k);
  const auto pick = [&](std::vector<std::size_t> list) {
    std::vector<int> nodes;
    for (const std::size_t at : list) nodes.push_back(c[at]);
    return nodes;
  };
  if (b.kind == "C3D8") return {c};
  if (b.kind == "C3D6") return {pick({0, 1, 2, 4, 5, 6}), pick({0, 2, 3, 4, 6, 7})};
  std::vector<std::vector<int>> all;
  for (const auto& path : PATHS) {
    std::vector<int> nodes;
    for (const int at : path) nodes.push_back(c[static_cast<std::size_t>(at)]);
    all.push_back(nodes);
  }
  return all;
}

}  // namespace

std::vector<int> block::face(std::size_t axis, bool end) const {
  std::vector<int> nodes;
  for (int i = 0; i <= count[0]; ++i)
    for (int j = 0; j <= count[1]; ++j)
      for (int k = 0; k <= count[2]; ++k)
        if (std::array<int, 3>{i, j, k}[axis] == (end ? count[axis] : 0)) nodes.push_back(node(i, j, k));
  return nodes;
}

std::vector<int> block::inside() const {
  std::vector<int> nodes;
  for (int i = 1; i < count[0]; ++i)
    for (int j = 1; j < count[1]; ++j)
      for (int k = 1; k < count[2]; ++k) nodes.push_back(node(i, j, k));
  return nodes;
}

point block::at(int n) const {
  const int layer = count[2] + 1, row = count[1] + 1;
  return place(static_cast<double>(n / (layer * row)) / count[0], static_cast<double>(n / layer % row) / count[1],
               static_cast<double>(n % layer) / count[2]);
}

std::string block::deck(const std::string& supports, const std::string& step, const std::string& step_flags) const {
  std::string text = "*NODE, NSET=ALL\n";
  for (int n = 0; n < (count[0] + 1) * (count[1] + 1) * (count[2] + 1); ++n) {
    const point p = at(n);
    text += std::to_string(n + 1) + ", " + number(p[0]) + ", " + number(p[1]) + ", " + number(p[2]) + "\n";
  }
  text += "*ELEMENT, TYPE=" + kind + ", ELSET=BODY\n";
  int elements = 0;
  for (int i = 0; i < count[0]; ++i)
    for (int j = 0; j < count[1]; ++j)
      for (int k = 0; k < count[2]; ++k)
        for (const std::vector<int>& nodes : cut(*this, i, j, k)) text += std::to_string(++elements) + line(nodes);
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (const bool end : {false, true}) text += set(std::string(1, "XYZ"[axis]) + (end ? "1" : "0"), face(axis, end));
  return text + "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(nu) + "\n*DENSITY\n" + number(density) +
         "\n*SOLID SECTION, ELSET=BODY, MATERIAL=M\n" + (supports.empty() ? "" : "*BOUNDARY\n" + supports) + "*STEP" +
         step_flags + "\n" + step + "*END STEP\n";
}

// The bumps vanish on the faces.
block distorted(const std::string& kind, int cells) {
  block b;
  b.kind = kind;
  b.count = {cells, cells, cells};
  b.place = [](double u, double v, double w) {
    const double bump = 2.5 * u * (1 - u) * v * (1 - v) * w * (1 - w);
    return point{u + bump * std::sin(5 * v + w), v + bump * std::cos(4 * w + u), w + bump * std::sin(6 * u + 2 * v)};
  };
  return b;
}

std::string face_load(const block& b, std::size_t axis, bool end, int dof, double total) {
  std::string text;
  for (const int n : b.face(axis, end)) {
    const int layer = b.count[2] + 1, row = b.count[1] + 1;
    const std::array<int, 3> index{n / (layer * row), n / layer % row, n % layer};
    double share = total;
    for (std::size_t other = 0; other < 3; ++other) {
      if (other == axis) continue;
      const bool edge = index[other] == 0 || index[other] == b.count[other];
      share /= b.count[other] * (edge ? 2 : 1);
    }
    text += std::to_string(n + 1) + ", " + std::to_string(dof) + ", " + number(share) + "\n";
  }
  return text;
}

std::string prescribed(int node, int dof, double value) {
  const std::string d = std::to_string(dof);
  return std::to_string(node + 1) + ", " + d + ", " + d + ", " + number(value) + "\n";
}

}  // namespace solids_test
