// quadratic_support.h: meshes of quadratic elements over the unit square and the unit cube, as deck texts.
#ifndef FINITES_TESTS_QUADRATIC_SUPPORT_H
#define FINITES_TESTS_QUADRATIC_SUPPORT_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "analysis_support.h"

namespace quadratic_test {

using namespace analysis_test;
using half_steps = std::array<int, 3>;  // a place on the grid of half cells

// Cells taken to their place. Shapes: Q quadrilaterals, T triangles, B bricks, W wedges (two a cell), X tetrahedra (six
// a cell), M wedges in the lowest layer and tetrahedra above. Nodes in the middle of an edge lie where `place` puts
// them. All nodes are in ALL, those of the ends in X0, X1, Y0, Y1, Z0, Z1, all elements in BODY.
class mesh {
 public:
  mesh(char shape, const std::string& type, std::array<int, 3> count,
       std::function<point(double, double, double)> place);

  int id(half_steps at) const;  // the number of the node in the deck; 0: none
  const std::map<half_steps, int>& nodes() const { return ids_; }
  bool inside(half_steps at) const;  // on none of the ends
  point at(half_steps h) const;
  half_steps last() const { return {2 * count_[0], 2 * count_[1], 2 * count_[2]}; }

  // Nodes, elements and sets.
  std::string text() const;

 private:
  void add(const std::string& type, const std::vector<half_steps>& corners);
  void add_cell(char shape, half_steps origin);
  int make(half_steps at);

  std::string type_;
  std::array<int, 3> count_;
  std::function<point(double, double, double)> place_;
  std::map<half_steps, int> ids_;
  std::map<std::string, std::string> elements_;  // by type
  int element_count_ = 0;
};

point straight(double u, double v, double w);
// The bumps vanish on the ends: edges are curved.
point bumped(double u, double v, double w);
point bumped_plane(double u, double v, double w);

// `step`: the cards of one step without *STEP and *END STEP.
std::string deck(const mesh& m, const std::string& section, const std::string& supports, const std::string& step);

solver::model read(const std::string& text);  // with the division of solids, under the name quadratic.inp
int index_of(const solver::model& m, int id);

}  // namespace quadratic_test

#endif
