// filled_plate.h: a plate with all that its engine reads, whoever filled it: FINITES from the caller's arrays, a plain
// call from a description.
#ifndef FINITES_FILLED_PLATE_H
#define FINITES_FILLED_PLATE_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"
#include "shells/common/elem_loads.h"

constexpr int PLATE_NODE_DOFS = 6;
constexpr int PLATE_MAX_DOFS = 24;

// One plate during one operation: all that its engine reads, beside displacements and stored forces.
struct FILLED_PLATE {
  PLATEELEM_RECORD& EL;  // kind, section and material; scratch of the engine
  std::int32_t op;
  std::int32_t ident = 0;
  VECTOR<4, std::int32_t> node_list{};
  int nodes;  // 3 or 4

  bool offsets_on;
  VECTOR<3> offset[4];  // by node: from the corner of the element to the node, global axes
  MATRIX<6, 6> J[4];    // rigid links, set when the offsets are on
  double xyz[12];       // corners by node; those of a missing fourth node are 0
  ELEM_LOADS LOADS;
  PLATE_STATE_IN_USE state = NO_PLATE_STATE;  // of a plate that may yield

  FILLED_PLATE(PLATEELEM_RECORD& scratch, std::int32_t operation) : EL(scratch), op(operation) {}
};

// Element kind of a formulation code: thin for 1, membrane for 2, 3, 98, 99, thick for every other.
std::int32_t element_kind(bool three_nodes, std::int32_t formulation);

// ACTIVE_PARTS of a kind and a behaviour.
std::int32_t active_parts(std::int32_t kind, std::int32_t behav);

struct PLATE_MODIFIERS {
  double membrane, bending, shear;
};

// ELEM_KIND and ACTIVE_PARTS of EL, and the modifiers of LOADS. The reduced membrane (code 98) keeps REDUCED_AXIAL of
// its axial stiffness.
void set_kind(FILLED_PLATE& plate, std::int32_t formulation, const PLATE_MODIFIERS& modifiers);

// Isotropic, without correction factors, with these modifiers for every component.
void set_default_section(PLATEELEM_RECORD& EL, const PLATE_MODIFIERS& modifiers);

#endif
