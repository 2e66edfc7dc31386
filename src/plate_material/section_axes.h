// section_axes.h: the plastic strain of a section: twelve values in global axes, or a vector in element axes.
#ifndef FINITES_SECTION_AXES_H
#define FINITES_SECTION_AXES_H

#include "finites/records.h"
#include "finites/views.hpp"

// WIDTH 6 has no xz and yz: SECTION_EP_TO_GLOBAL takes them as zero, SECTION_EP_TO_LOCAL ignores them.
template <int WIDTH>
void SECTION_EP_TO_LOCAL(const PLATEELEM_RECORD& EL, const VECTOR<12>& ep, VECTOR<WIDTH>& local);
template <int WIDTH>
void SECTION_EP_TO_GLOBAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& local, VECTOR<12>& ep);

// The routines of each width by their own names. The library calls the templates; tests call these.
inline constexpr auto SECTION_EP_TO_LOCAL8 = &SECTION_EP_TO_LOCAL<8>;
inline constexpr auto SECTION_EP_TO_LOCAL6 = &SECTION_EP_TO_LOCAL<6>;
inline constexpr auto SECTION_EP_TO_GLOBAL8 = &SECTION_EP_TO_GLOBAL<8>;
inline constexpr auto SECTION_EP_TO_GLOBAL6 = &SECTION_EP_TO_GLOBAL<6>;

#endif
