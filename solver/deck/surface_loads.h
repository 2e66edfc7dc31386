// surface_loads.h: what *DLOAD and *DSLOAD share.
#ifndef FINITES_SOLVER_DECK_SURFACE_LOADS_H
#define FINITES_SOLVER_DECK_SURFACE_LOADS_H

#include "deck/build.h"

namespace solver::deck {

// A line of *DLOAD that loads faces, edges or the name of a surface, or CENTRIF; false: of another type.
bool takes_surface_load(build& b, const data_fields& row);

constexpr char DLOAD_TYPES[] =
    "P, GRAV, BX, BY, BZ, PX, PY, PZ, P1 to P6, HP, TRVEC, TRSHR and CENTRIF are, and on edges EDNOR, EDSHR, EDTRA, "
    "EDMOM and EDLD with the number of the edge";

// Loads of *DLOAD and *DSLOAD keep their direction: FOLLOWER=YES is refused.
void check_follower(const build& b, const card& c);

// x, y, z of a direction from field i on, at unit length.
std::array<double, 3> unit_direction(const data_fields& row, int i, const std::string& of);

// read_loads.cpp: an element whose weight or inertia acts needs a density.
void check_density(const build& b, const data_fields& row, const element& e, const std::string& label);

}  // namespace solver::deck

#endif
