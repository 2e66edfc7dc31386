// check_plate.h: a plate as its checks see it.
#ifndef FINITES_CHECK_PLATE_H
#define FINITES_CHECK_PLATE_H

#include <cstdint>

#include "finites/records.h"
#include "plain_calls/checks/findings.h"

struct CHECKED_PLATE {
  BLOCK entry, section, material;
  std::int32_t plate = 0;  // index into PLATE_RECORDS and PLATE_STATE
  const PLATE_RECORD* record = nullptr;
  bool three_nodes = false;
  std::int32_t formulation = 0;
  bool membrane = false, thick = false;
};

// Elastic constants, the modifiers that act on them, yielding.
void check_plate_material(CHECK& check, const CHECKED_PLATE& p);

// What a plate that yields needs besides: yield stress, hardening, state. `m` is its material record, `code` the plate
// model of the analysis.
void check_yielding_plate(CHECK& check, const CHECKED_PLATE& p, const MATERIAL_RECORD& m, std::int32_t code);

// Nodes, sides, area, corners, warp.
void check_plate_shape(CHECK& check, const CHECKED_PLATE& p);

#endif
