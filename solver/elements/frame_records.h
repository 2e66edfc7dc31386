// frame_records.h: the blocks and records that every frame element has, member or cable.
//
// The library finds the records by the position of an element among the frame elements, in the order of the model.
#ifndef FINITES_SOLVER_FRAME_RECORDS_H
#define FINITES_SOLVER_FRAME_RECORDS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/library_data.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "model/index.h"

namespace solver {

// The forces that the nodes exert on a member, local axes: three forces and three moments at the first end, then at the
// second.
using end_forces = std::array<double, 12>;

// Where the nodes of an element are: where the deck puts them, or where the displacements have moved them.
enum class node_blocks { AT_REST, DISPLACED };

class frame_records {
 public:
  explicit frame_records(library_data& data);

  // `length`: of which the element has its weight.
  void add(std::size_t element, double length, node_blocks nodes);
  // Fixity factors and releases of its ends.
  void fill_ends(std::size_t element);

  const MATRIX<12, 12>& axes(std::size_t element) const { return axes_[position(element)]; }  // rows: the local axes
  double length(std::size_t element) const { return members_[position(element)].LENGTH; }
  MEMBER_RECORD& member(std::size_t element) { return members_[position(element)]; }
  HINGE_RECORD& hinge(std::size_t element) { return hinges_[position(element)]; }
  MEMBER_FORCES_RECORD& forces(std::size_t element) { return forces_[position(element)]; }
  std::vector<MEMBER_RECORD>& members() { return members_; }
  std::vector<HINGE_RECORD>& hinges() { return hinges_; }

  std::size_t position(std::size_t element) const { return subscript(position_[data_.place(element)] - 1); }

 private:
  void fill_sections();
  HINGE_RECORD hinge_record(const element& e) const;

  library_data& data_;
  std::vector<std::int32_t> position_;  // by place of the element, from 1; 0: no frame element
  std::vector<MATRIX<12, 12>> axes_;    // by position, as all that follows
  std::vector<MEMBER_RECORD> members_;
  std::vector<HINGE_RECORD> hinges_;
  std::vector<MEMBER_FORCES_RECORD> forces_;
  std::int32_t count_ = 0;
};

}  // namespace solver

#endif
