// elem_loads.h: the 50 values that FINITES passes to an engine beside coordinates and displacements.
#ifndef FINITES_ELEM_LOADS_H
#define FINITES_ELEM_LOADS_H

#include "finites/views.hpp"

using ELEM_LOADS = VECTOR<50>;

// Places in ELEM_LOADS. Of a vector the first component is named; the other two follow.
constexpr int LOAD_DENSITY = 4;            // mass per volume in operation 2, unit weight in operation 8
constexpr int LOAD_BODY = 5;               // force per volume, global axes
constexpr int LOAD_FOUNDATION = 8;         // elastic foundation under w, force per volume; FINITES leaves it 0
constexpr int LOAD_SURFACE = 10;           // force per area, global axes
constexpr int LOAD_SURFACE_LOCAL = 13;     // force per area, element axes
constexpr int LOAD_POINT = 16;             // a point, global axes
constexpr int LOAD_FORCE = 19;             // a force, global axes
constexpr int LOAD_FORCE_LOCAL = 22;       // a force, element axes
constexpr int LOAD_TEMPERATURE = 26;       // temperature change of the mid surface
constexpr int LOAD_TEMPERATURE_DIFF = 27;  // temperature difference through the thickness
constexpr int LOAD_MOD_AXIAL = 35;         // stiffness modifiers: membrane axial,
constexpr int LOAD_MOD_INPLANE = 36;       // membrane shear,
constexpr int LOAD_MOD_BENDING = 37;       // bending,
constexpr int LOAD_MOD_SHEAR = 38;         // transverse shear

#endif
