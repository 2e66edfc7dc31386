// section_return.h: the return mapping of the whole-section model for the closed spectral form, whose zeros it leaves
// out.
#ifndef FINITES_SECTION_RETURN_H
#define FINITES_SECTION_RETURN_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/section_update.h"

// The answer of a plastic point, whose trial forces lie beyond the yield surface: sig, ebar and C of `to`, and the
// plastic strain p, in element axes. They have the bits of the general routines of section_update.h.
//
// False, with nothing written, where those routines would report something, where Newton's method needs more passes
// than usual and where a value is infinite or NaN: the caller then goes the general way.
//
//   EL      in  P8, Q8, QINV8, LAM8 of SECTION_SPECTRAL_SIGN; D8 may be any section
//   a       in  scale of the plastic moment
//   h, sy   in  thickness, yield stress
//   trial   in  trial forces
//   p0      in  plastic strain at the start of the step, element axes
//   ebar0   in  equivalent plastic strain at the start of the step
template <int WIDTH>
bool closed_form_return(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial,
                        const VECTOR<WIDTH>& p0, double ebar0, SECTION_ANSWER<WIDTH>& to, VECTOR<WIDTH>& p);

#endif
