// layered_law.h: what all thickness points of an element share during one call.
#ifndef FINITES_LAYERED_LAW_H
#define FINITES_LAYERED_LAW_H

#include "common/lanes.h"
#include "finites/records.h"
#include "plate_material/layered_matrices.h"
#include "plate_material/state_in_use.h"

// The constants of the return mapping (layered_kernel.h), each rounded as where the general routines form it.
struct LAYERED_RETURN_CONSTANTS {
  double E, mean_divisor;     // p = 1 + E dlam / (3 (1 - nu))
  double shear, across;       // q = 1 + 2 G dlam,  r = 1 + (5/3) G dlam
  double mean_slope_divisor;  // 9 (1 - nu)
  VECTOR<5> Lp, Lc;           // eigenvalues of metric and elastic matrix
  MATRIX5 flow_stress;        // Ce P
  bool growing;               // p, q and r are 1 or more for a multiplier that is not negative

  LAYERED_RETURN_CONSTANTS(const PLATEELEM_RECORD& EL, int theory);
};

struct LAYERED_LAW {
  const PLATEELEM_RECORD& EL;
  int theory, op;
  bool increment_from_current;  // EP_INC_FROM_CUR
  FAILURES failures;
  TANGENT stored_tangent;  // of plastic points
  MATRIX5 D;               // elastic, with its shears in both theories: of the trial stress
  MATRIX5 tangent;         // elastic, of the theory: what an elastic point stores
  MATRIX5 P;               // yield metric
  double yield_stress, hardening;
  LAYERED_RETURN_CONSTANTS constants;
  MATRIX<3, 3, LANES> axes;  // AXES in both lanes
  double two_tangents[50];   // `tangent` twice

  LAYERED_LAW(const PLATEELEM_RECORD& record, int plate_theory, int operation, const PLATE_STATE_IN_USE& state);
};

#endif
