// plate_on_stack.cpp: section, material and place of a description.
#include "plain_calls/plate_on_stack.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/views.hpp"
#include "plain_calls/plate_checks.h"
#include "shells/engines/rigid_links.h"

namespace {

void set_material(const finites_plate& p, PLATEELEM_RECORD& EL) {
  EL.E1 = p.E;
  EL.NU1 = p.nu;
  EL.ALPHA1 = p.expansion;
  if (p.orthotropic == 0) return;
  EL.MAT_BEHAV = BEHAV_GENERAL;
  EL.E2 = p.E2;
  EL.NU2 = p.nu21 != 0.0 ? p.nu21 : p.nu * p.E2 / p.E;
  EL.G12 = p.G12;
  EL.G13 = p.G13;
  EL.G23 = p.G23;
  EL.ALPHA2 = p.expansion2;
  EL.ORTHO_ANGLE = static_cast<float>(p.angle);
  EL.CLT_FACTOR_1 = p.twist_factor;
  EL.CLT_FACTOR_2 = p.inplane_shear_factor;
}

}  // namespace

static_assert(FINITES_THICK == FORMULATION_THICK && FINITES_THIN == FORMULATION_THIN &&
              FINITES_MEMBRANE == FORMULATION_MEMBRANE && FINITES_MEMBRANE_REDUCED == FORMULATION_MEMBRANE_REDUCED);

PLATE_ON_STACK::PLATE_ON_STACK(const finites_plate& p, std::int32_t op, SECTION section) : plate(EL, op) {
  plate.nodes = p.nodes;
  plate.LOADS = ELEM_LOADS{};
  EL.THICKNESS = p.thickness;
  const PLATE_MODIFIERS modifiers{p.membrane_factor, p.bending_factor, p.shear_factor};
  set_default_section(EL, modifiers);
  if (section == SECTION::WITH_MATERIAL) set_material(p, EL);
  set_place(p);
  set_kind(plate, p.theory == FINITES_THICK ? FORMULATION_THICK : p.theory, modifiers);
}

// The engines take the offset from the corner to the node.
void PLATE_ON_STACK::set_place(const finites_plate& p) {
  const PLATE_CORNERS corners(p);
  std::copy_n(&corners.x[0][0], 12, plate.xyz);
  const double* const offset = &p.offset[0][0];
  plate.offsets_on = std::any_of(offset, offset + 3 * p.nodes, [](double d) { return d != 0.0; });
  if (!plate.offsets_on) return;
  for (int m = 0; m < 4; ++m) {
    for (int i = 0; i < 3; ++i) plate.offset[m](i + 1) = m < p.nodes ? -p.offset[m][i] : 0.0;
  }
  set_rigid_links(plate);
}
