// solid_results.h: stresses of solids: the mean of each element, and at nodes the mean over the elements of one
// section.
//
// Across a change of section the stresses really differ, and an average would mean nothing: each section that meets at
// a node has a part of its own there. Tensors are turned to global axes before they are added.
#ifndef FINITES_SOLVER_SOLID_RESULTS_H
#define FINITES_SOLVER_SOLID_RESULTS_H

#include <array>
#include <utility>
#include <vector>

#include "elements/library_model.h"
#include "model/model.h"

namespace solver {

struct solid_stress {
  std::array<double, 6> stress{};     // global axes: xx, yy, zz, xy, yz, xz
  std::array<double, 3> principal{};  // from the largest
  double equivalent = 0;              // von Mises
};

struct solid_part {
  int node = 0;     // index into model::nodes
  int section = 0;  // index into model::solid_sections
  int elements = 0;
  solid_stress at;
};

class solid_average {
 public:
  explicit solid_average(const model& m) : model_(m), of_node_(m.nodes.size()) {}

  // The records of one solid, and its axes.
  void add(std::size_t element, const MATRIX<3, 3>& axes, const solid_records& records);

  // By node; the sections of a node in the order in which elements name it.
  std::vector<solid_part> finish();

  // By element, zeros for what is no solid; empty in a model without solids.
  std::vector<solid_stress> elements() { return std::move(elements_); }

 private:
  solid_part& part_of(int node, int section);

  const model& model_;
  numbered<std::vector<solid_part>> of_node_;
  std::vector<solid_stress> elements_;
};

// The part of each node with the largest von Mises stress; zeros where no solid joins.
std::vector<solid_stress> governing_solids(const std::vector<solid_part>& parts, std::size_t nodes);

// Adds a stress in element axes, in the library's order xx, yy, zz, xy, xz, yz, to one in global axes.
void add_turned_stress(const double* stress, const MATRIX<3, 3>& axes, std::array<double, 6>& sum);

// Principal and equivalent values of a stress, which the library computes: those of an average are no averages.
void complete(solid_stress& s);

}  // namespace solver

#endif
