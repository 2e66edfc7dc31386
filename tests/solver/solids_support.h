// solids_support.h: blocks of bricks, wedges and tetrahedra from deck texts.
#ifndef FINITES_TESTS_SOLIDS_SUPPORT_H
#define FINITES_TESTS_SOLIDS_SUPPORT_H

#include <functional>
#include <string>
#include <vector>

#include "analysis_support.h"
#include "shell_decks.h"

namespace solids_test {

using namespace analysis_test;
using shell_test::modes;
using shell_test::read;

// Cells of a unit cube, taken to their place; in wedges each is cut in two, in tetrahedra in six. All nodes are in the
// set ALL, the faces in X0, X1, Y0 and so on, all elements in BODY.
struct block {
  std::array<int, 3> count{2, 2, 2};
  std::string kind = "C3D8";
  double E = 1e6, nu = 0.25, density = 2;
  std::function<point(double, double, double)> place = [](double u, double v, double w) { return point{u, v, w}; };

  int node(int i, int j, int k) const { return (i * (count[1] + 1) + j) * (count[2] + 1) + k; }
  std::vector<int> face(std::size_t axis, bool end) const;
  std::vector<int> inside() const;
  point at(int node) const;

  // `supports`: lines of *BOUNDARY; `step`: the cards of one step without *STEP and *END STEP.
  std::string deck(const std::string& supports, const std::string& step, const std::string& step_flags = "") const;
};

// A unit cube whose inner nodes have left their places.
block distorted(const std::string& kind, int cells);

// Lines of *CLOAD: a uniform traction on a face of equal rectangles.
std::string face_load(const block& b, std::size_t axis, bool end, int dof, double total);

// Lines of *BOUNDARY: degrees of freedom of one node each, with a value.
std::string prescribed(int node, int dof, double value);

}  // namespace solids_test

#endif
