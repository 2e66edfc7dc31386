// plate_on_stack.h: a filled plate (shells/engines/filled_plate.h) from a description.
#ifndef FINITES_PLATE_ON_STACK_H
#define FINITES_PLATE_ON_STACK_H

#include <cstdint>

#include "finites/elements.h"
#include "finites/records.h"
#include "shells/engines/filled_plate.h"

// Mass, loads without a temperature, measures and points need no material: the engines then take the isotropic forms.
enum class SECTION { WITH_MATERIAL, THICKNESS_ALONE };

// With its scratch record. The description has passed check_plate.
struct PLATE_ON_STACK {
  PLATEELEM_RECORD EL{};
  FILLED_PLATE plate;

  PLATE_ON_STACK(const finites_plate& p, std::int32_t op, SECTION section);
  PLATE_ON_STACK(const PLATE_ON_STACK&) = delete;
  PLATE_ON_STACK& operator=(const PLATE_ON_STACK&) = delete;

 private:
  void set_place(const finites_plate& p);
};

#endif
