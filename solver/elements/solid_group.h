// solid_group.h: bricks, wedges and tetrahedra, of three degrees of freedom per node.
//
// The record of a solid has 22,952 bytes, of which its calls read 52 that follow from the model; the rest is what they
// write. The group has one record for each thread, which the position of a solid names while that thread calls, and
// makes it that of the solid before each call. What outlives a call are the stresses of the points, 384 bytes per
// solid, once a state is kept.
#ifndef FINITES_SOLVER_SOLID_GROUP_H
#define FINITES_SOLVER_SOLID_GROUP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/element_group.h"
#include "elements/library_data.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "model/result_columns.h"

namespace solver {

// Results of a solid in element axes: records at its nodes (result_columns.h), and the stresses xx, yy, zz, xy, xz, yz
// of its integration points.
struct solid_records {
  MATRIX<RES50_LENGTH, 8> nodes;
  MATRIX<6, 8> points;
  int point_count;
};

class solid_group : public element_group {
 public:
  explicit solid_group(library_data& data);

  void add(std::size_t element) override;
  void stiffness(std::size_t element, element_matrix& K) override;
  void mass(std::size_t element, element_matrix& M) override;
  void geometric_stiffness(std::size_t element, element_matrix& G) override;
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) override;
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) override;
  void clear_state() override;

  // The temperature of the load, too, belongs to the state: what expands freely has no stress.
  solid_records results(std::size_t element, element_vector displacements, const distributed_load& load = {});
  MATRIX<3, 3> axes(std::size_t element);

  // The record of the calling thread, and its state, become those of the element.
  void take(std::size_t element);
  void make_room(int threads);

 private:
  void fill_sections();
  void refer();
  void elastic_stiffness(std::size_t element, element_matrix& K);
  element_vector free_expansion(std::size_t element, const distributed_load& load) const;
  void operation(std::int32_t code, std::size_t element, const double* load, double* forces, double* matrix);

  library_data& data_;
  std::vector<std::int32_t> position_;  // by place: its thread's record, from 1; 0: no solid
  std::vector<std::size_t> rank_;       // by place: how many solids come before it
  std::size_t count_ = 0;
  // By thread.
  std::vector<SOLID_RECORD> records_;
  std::vector<SOLID_NL_RECORD> states_;
  std::vector<MATRIX<6, 8>> stresses_;  // of the points, by rank; empty without a state
};

}  // namespace solver

#endif
