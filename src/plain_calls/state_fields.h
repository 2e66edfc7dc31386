// state_fields.h: the numbers that a plate which yields must remember, as a record of the protocol over plain memory.
//
// Whole section, by surface point: plastic strains of twelve values at the start of the step, current and their change
// (3 x 12), the tangent (64), and six scalars. Layered, by thickness point: stress and plastic strains of six values
// (4 x 6), two equivalent strains, the tangent (25). All of one field of a surface point follow each other.
#ifndef FINITES_PLAIN_STATE_FIELDS_H
#define FINITES_PLAIN_STATE_FIELDS_H

#include <cstddef>
#include <cstdint>

#include "finites/elements.h"
#include "finites/records.h"
#include "plate_material/state_in_use.h"

constexpr std::size_t STATE_POINTS = 4;
constexpr std::size_t SECTION_REALS = STATE_POINTS * (3 * 12 + 64 + 6);
constexpr std::size_t LAYER_REALS = 4 * 6 + 2 + 25;
constexpr std::size_t MOST_STATE_REALS = STATE_POINTS * 15 * LAYER_REALS;
static_assert(SECTION_REALS < MOST_STATE_REALS);

// How many reals a state has.
std::size_t count_of_state_reals(const finites_plastic& plastic);

// Refers to the reals of a state as the engines see it. The reals belong to somebody else.
class STATE_FIELDS {
 public:
  STATE_FIELDS(const finites_plastic& plastic, double* reals);
  STATE_FIELDS(const STATE_FIELDS&) = delete;
  STATE_FIELDS& operator=(const STATE_FIELDS&) = delete;

  // failed: set to true by a return that fails.
  PLATE_STATE_IN_USE in_use(TANGENT tangent, bool* failed) { return {&record_, layers_, false, {failed}, tangent}; }

  // The start of the next step: what is current.
  void accept();

 private:
  double* take(std::size_t count);
  void refer_section();
  void refer_layers();

  double* next_;
  std::int32_t layers_;
  PLATE_STATE_RECORD record_{};
  POINT_STATE_RECORD points_[STATE_POINTS] = {};
};

#endif
