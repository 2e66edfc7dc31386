// embedded_page.h: the page with its program, as it was made when the solver was built.
#ifndef FINITES_SOLVER_EMBEDDED_PAGE_H
#define FINITES_SOLVER_EMBEDDED_PAGE_H

#include <string_view>

namespace solver {

// Empty in a build without it (FINITES_REPORT=OFF). The data come where it has DATA_PLACE.
std::string_view embedded_page();

constexpr std::string_view DATA_PLACE = "<!-- data -->";

}  // namespace solver

#endif
