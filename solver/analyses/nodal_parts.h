// nodal_parts.h: stresses at nodes, averaged over the elements that go on smoothly.
//
// The elements round a node fall into parts: those of one section whose normals agree. Across a fold, a change of
// thickness or material, or a turned normal, stresses really differ, and an average would mean nothing. A part has a
// frame of its own in which the stresses of its elements are added up: the normal is the mean of theirs, x the
// projection of the global x axis on the surface, or of the global z axis where x is the normal.
#ifndef FINITES_SOLVER_NODAL_PARTS_H
#define FINITES_SOLVER_NODAL_PARTS_H

#include <array>
#include <vector>

#include "elements/library_model.h"
#include "model/model.h"

namespace solver {

// The three surfaces of a shell at which stresses are given.
enum surface { TOP, MIDDLE, BOTTOM };
constexpr std::size_t SURFACES = 3;

struct surface_stress {
  std::array<double, 3> stress{};  // sx, sy, sxy
  double angle = 0;                // of the first principal direction to the x axis, radians
  double first = 0, second = 0;    // principal stresses
  double equivalent = 0;           // von Mises
};

// Principal and equivalent values of three plane stresses, which the library computes: those of an average are no
// averages. `shear`: mean transverse shear stresses xz, yz, which count on the mid surface.
void complete(std::array<surface_stress, SURFACES>& at, const std::array<double, 2>& shear);

struct nodal_part {
  int node = 0;     // index into model::nodes
  int section = 0;  // index into model::shell_sections
  int elements = 0;
  MATRIX<3, 3> axes{};  // rows: x, y, normal of the part's frame
  std::array<surface_stress, SURFACES> at{};
  std::array<double, 2> shear{};  // mean transverse shear stresses
};

class nodal_average {
 public:
  explicit nodal_average(const model& m);

  // The records of one element at its nodes.
  void add(std::size_t element, const MATRIX<3, 3>& axes, const double* nodes);

  // By node; the parts of a node in the order in which elements name it.
  std::vector<nodal_part> finish();

 private:
  std::size_t part_of(const model& m, int node, int section, const MATRIX<3, 3>& axes);

  std::vector<nodal_part> parts_;
  numbered<std::vector<std::size_t>> of_node_;
  std::vector<std::size_t> of_corner_, first_corner_;  // by element and its nodes
};

}  // namespace solver

#endif
