// scene_analysis.h: the analyses in which all routines are called.
#ifndef FINITES_TESTS_SCENE_ANALYSIS_H
#define FINITES_TESTS_SCENE_ANALYSIS_H

#include <vector>

#include "random_shapes.h"

namespace every_call {

struct analysis {
  const char* name;
  unsigned number;
  int second_order;      // A(SECOND_ORDER): 0, 1 added, 3 apart
  int plate_code;        // 0 elastic plates, 1 whole-section, 2 layered plasticity
  bool state;            // stored forces, displacements and stresses
  int thickness_points;  // of the layered model
  bool reduced;          // stiffness factors, reductions of members, lumped masses, other removal
  bool plain_numbers;    // plates and elements have the same numbers, offsets come from the element block
  int force_mode;        // HINGE_FORCE_MODE
};

const std::vector<analysis>& analyses();

// What random numbers are for. The calls of FINITES on a plate have a number each, from FIRST_OPERATION on.
enum purpose {
  PLATE,
  PLATE_STATE,
  PLATE_STEPS,
  MEMBER,
  MEMBER_FORCES,
  MEMBER_PLACE,
  MEMBER_ROTATION,
  SECOND_ROTATION,
  HINGE,
  PROPERTY,
  SOLID,
  SOLID_STATE,
  SOLID_CALL_NUMBERS,
  SOLID_DISPLACEMENTS,
  SOLID_JOINTS,
  POINT_NUMBERS,
  RECORD_NUMBERS,
  MATRIX_NUMBERS,
  CURVE_NUMBERS,
  FIRST_OPERATION,
  PURPOSES = 64
};

// The random numbers of one purpose of an element in an analysis.
support::seeded_random numbers_of(const analysis& a, int elem, int purpose);

}  // namespace every_call

#endif
