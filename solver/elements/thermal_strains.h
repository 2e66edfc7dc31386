// thermal_strains.h: the displacements of a plate that expands freely.
//
// The library takes the two expansions along the element's x and y axes, whatever the angle of the material, and leaves
// a thermal twist out of the moments. The solver therefore never hands temperatures to a general section. A heated
// element that nothing holds takes constant strains e and curvatures k,
//
//     e = T (a1 c^2 + a2 s^2,  a1 s^2 + a2 c^2,  2 (a1 - a2) c s),     k likewise from the difference by the thickness,
//
// and its displacements u are those that the elements reproduce exactly. The loads of the temperature are then K u, and
// the stresses those of the displacements less u: both by the library's own operations, for every angle.
#ifndef FINITES_SOLVER_THERMAL_STRAINS_H
#define FINITES_SOLVER_THERMAL_STRAINS_H

#include "elements/element_group.h"
#include "finites/records.h"
#include "model/model.h"

namespace solver {

// Isotropic constants travel in MODEL_DATA in double precision. A material whose two expansions differ goes the general
// way, which alone knows two of them.
inline bool is_general(const material& mat) { return mat.orthotropic || mat.alpha1 != mat.alpha2; }

// Global axes, at the nodes, from which `arms` lead back to the corners of the element.
element_vector free_expansion(const model& m, const element& e, const PLATE_RECORD& arms, const distributed_load& load);

}  // namespace solver

#endif
