// section_axes.h: the plastic strain of a section, kept as twelve global values, as a vector in element axes and back.
#ifndef FINITES_SECTION_AXES_H
#define FINITES_SECTION_AXES_H

#include "finites/records.h"
#include "finites/views.hpp"

// Between the twelve global values and the vector in element axes. The narrow width knows no xz and yz: they are zero
// on the way out and ignored on the way in.
template <int WIDTH>
void SECTION_EP_TO_LOCAL(const PLATEELEM_RECORD& EL, const VECTOR<12>& ep, VECTOR<WIDTH>& local);
template <int WIDTH>
void SECTION_EP_TO_GLOBAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& local, VECTOR<12>& ep);

inline constexpr auto SECTION_EP_TO_LOCAL8 = &SECTION_EP_TO_LOCAL<8>;
inline constexpr auto SECTION_EP_TO_LOCAL6 = &SECTION_EP_TO_LOCAL<6>;
inline constexpr auto SECTION_EP_TO_GLOBAL8 = &SECTION_EP_TO_GLOBAL<8>;
inline constexpr auto SECTION_EP_TO_GLOBAL6 = &SECTION_EP_TO_GLOBAL<6>;

#endif
