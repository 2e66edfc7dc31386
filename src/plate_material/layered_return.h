// layered_return.h: the plastic multiplier of a thickness point, whose equivalent plastic strain at the start of the
// step gives the yield stress.
#ifndef FINITES_LAYERED_RETURN_H
#define FINITES_LAYERED_RETURN_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"

struct THICKNESS_POINT {
  const POINT_STATE_RECORD& s;  // of its surface point
  std::int32_t k;
  bool increment_from_current;
  FAILURES failures;
  TANGENT stored_tangent;
};

// dlam by Newton's method from 0. ok := 1, or 0 after a failure, which leaves dlam unchanged; pass 501 always fails.
void PLATE_PLAST_MULT(const PLATEELEM_RECORD& EL, double& dlam, const VECTOR<5>& sigma, std::int32_t& ok,
                      const THICKNESS_POINT& at, int theory);

// The consistency function of the multiplier and its derivative; a, b, c are the invariants of the trial stress. A
// divisor of zero: ok 0 and "Plaque plasticite-Division par zero".
void PLATE_PHI(const PLATEELEM_RECORD& EL, double a, double b, double c, double dlam, double& f,
               const THICKNESS_POINT& at, int theory, std::int32_t& ok);
void PLATE_DPHI(const PLATEELEM_RECORD& EL, double a, double b, double c, const VECTOR<5>& sigma, int theory,
                double dlam, const THICKNESS_POINT& at, double& df, std::int32_t& ok);

#endif
