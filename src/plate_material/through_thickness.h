// through_thickness.h: the layered plate: points through the thickness, the state kept there, and the section matrices
// that its tangents integrate to.
//
// Thickness point k lies at z(k) from the bottom face (1) to the top face (n); n is NPT_THICK by the protocol. Tangents
// are in element axes, in the order xx, yy, xy, xz, yz, with engineering shears.
#ifndef FINITES_THROUGH_THICKNESS_H
#define FINITES_THROUGH_THICKNESS_H

#include <cstdint>

#include "common/lanes.h"
#include "finites/records.h"
#include "finites/thickness_rule.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"

// The selector that every caller passes.
constexpr std::int32_t LOBATTO_POINTS = 1;

// Theories of a layered element.
constexpr int THIN_THEORY = 1, THICK_THEORY = 2;

// Stations xi(n) and weights w(n) on the interval from -1 to 1, for counts 3, 5, 7, 9, 11, 13 and 15. Another count,
// and selector 2, write nothing.
void THICK_INT_POINTS(std::int32_t selector, std::int32_t n, double* xi, double* w);

// Section matrices of surface point gp of a plate; a count without a rule gives zeros. The library calls
// integrate_section; these six, one integral each, are the reference that tests compare it with bit by bit.
void DSEC_MEMBRANE(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 3>& D);
void DSEC_COUPLING(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 3>& D);
void DSEC_BENDING(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                  std::int32_t gp, MATRIX<3, 3>& D);
void DSEC_SHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate, std::int32_t gp,
                MATRIX<2, 2>& D);
void DSEC_MEMSHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 2>& D);
void DSEC_BENDSHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                    std::int32_t gp, MATRIX<3, 2>& D);

// All six in one pass over the tangents, with the same bits; those of shear are zero in THIN_THEORY.
struct SECTION_INTEGRALS {
  MATRIX<3, 3> membrane, coupling, bending;
  MATRIX<2, 2> shear;
  MATRIX<3, 2> memshear, bendshear;
};

// Heights and weights of the thickness points of a plate, for all surface points of a call.
struct THICKNESS_SECTION {
  std::int32_t points;                      // 0 for a count without a rule
  double height[MOST_THICKNESS_POINTS];     // of point k at [k - 1]
  LANES weights[MOST_THICKNESS_POINTS];     // w t / 2 and w z t / 2
  double z2_weight[MOST_THICKNESS_POINTS];  // w z^2 t / 2

  THICKNESS_SECTION(std::int32_t n, double thickness);
  double z(std::int32_t k) const { return k <= points ? height[k - 1] : 0.0; }
};

// From the tangents of a surface point; of points that all have the tangent C.
void integrate_section(const THICKNESS_SECTION& rule, int theory, const POINT_STATE_RECORD& state,
                       SECTION_INTEGRALS& D);
void integrate_section(const THICKNESS_SECTION& rule, int theory, const MATRIX<5, 5>& C, SECTION_INTEGRALS& D);

// The point states of a plate whose arrays are all allocated for its thickness points; null otherwise.
const ARRAY_REFERENCE<POINT_STATE_RECORD, 1>* layered_state_of(const PLATE_STATE_IN_USE& state);

// z of the thickness points of a plate of the given thickness; zero for a count without a rule.
class THICKNESS_STATIONS {
 public:
  THICKNESS_STATIONS(std::int32_t n, double thickness);
  double operator()(std::int32_t k) const { return k <= known_ ? z_[k - 1] : 0.0; }

 private:
  double z_[15];
  std::int32_t known_;
};

// The thickness point of the mid surface.
std::int32_t middle_point(std::int32_t n);

// The first state: no stress, no plastic strain, the elastic tangent. Nothing is done where an array is not allocated.
void LAYERED_STATE_INIT(const PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state);

// By the protocol: that of the element ELEM_INDEX.
inline void LAYERED_STATE_INIT(const PLATEELEM_RECORD& EL) { LAYERED_STATE_INIT(EL, state_of_element(EL.ELEM_INDEX)); }

#endif
