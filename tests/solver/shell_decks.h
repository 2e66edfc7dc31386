// shell_decks.h: plates and shells of three and four nodes from deck texts.
#ifndef FINITES_TESTS_SHELL_DECKS_H
#define FINITES_TESTS_SHELL_DECKS_H

#include <functional>
#include <string>
#include <vector>

#include "analysis_support.h"

namespace shell_test {

using namespace analysis_test;

enum class cells { TRIANGLES, QUADS, MIXED };

// A grid of cells over the unit square, node numbers i (n + 1) + j + 1, all nodes in the set ALL and the edges in LEFT,
// RIGHT, LOWER, UPPER, all elements in SKIN.
struct sheet {
  int n = 4;
  cells kind = cells::QUADS;
  std::string formulation = "THIN";
  double E = 2e5, nu = 0.3, thickness = 0.01, density = 8e-3, expansion = 1.2e-5;
  std::function<point(double, double)> place = [](double u, double v) { return point{u, v, 0}; };

  int node(int i, int j) const { return i * (n + 1) + j; }  // index into model::nodes
  std::vector<int> edge(int i) const;                       // 0 to 3: LEFT, RIGHT, LOWER, UPPER
  double D() const { return E * thickness * thickness * thickness / (12 * (1 - nu * nu)); }

  // `supports`: lines of *BOUNDARY; `step`: the cards of one step without *STEP and *END STEP.
  std::string deck(const std::string& supports, const std::string& step) const;
};

solver::model read(const std::string& text);

// Lines of *CLOAD: a uniform load on an edge.
std::string line_load(const sheet& s, int edge, int dof, double total);

// Frequencies or buckling factors of the first step.
std::vector<double> modes(const solver::model& m);

// Every kind of cells with both formulations.
std::vector<sheet> all_forms();
std::string name_of(const sheet& s);

}  // namespace shell_test

#endif
