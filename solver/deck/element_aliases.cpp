// element_aliases.cpp: element types of other programs that are read as one of this solver's.
#include "deck/element_aliases.h"

#include <algorithm>
#include <iterator>

namespace solver::deck {

// clang-format off
static constexpr char FULL_SHELL[] = "integrated in full, with transverse shear";
static constexpr char FULL_MEMBRANE[] = "integrated in full";
static constexpr char LINEAR_BRICK[] =
    "a linear brick without incompatible modes, integrated in full: it is too stiff in bending. With elements as long "
    "as it is high a beam deflects 30 per cent too little, with elements half as long 10, however many layers there "
    "are: divide it along its length too";
static constexpr char DISPLACEMENTS[] = "with displacements alone: Poisson's ratio stays well below 0.5";
static constexpr char MEMBER_AXIAL[] = "the axial force follows from the displacements";
static constexpr char PLANE_STRESS[] = "a membrane whose nodes are held in its plane";
static constexpr char PLANE_MEMBER[] = "its nodes are held in their plane";

static constexpr element_alias ALIASES[] = {
    {"S3R",    "S3",   FULL_SHELL},
    {"S3RS",   "S3",   FULL_SHELL},
    {"S4R",    "S4",   FULL_SHELL},
    {"S4R5",   "S4",   "six degrees of freedom at each node, with transverse shear"},
    {"S4RS",   "S4",   FULL_SHELL},
    {"S4RSW",  "S4",   FULL_SHELL},
    {"STRI3",  "S3",   "thin, as FORMULATION=THIN", true},
    {"M3D4R",  "M3D4", FULL_MEMBRANE},
    {"C3D8R",  "C3D8", LINEAR_BRICK},
    {"C3D8I",  "C3D8", LINEAR_BRICK},
    {"C3D8H",  "C3D8", DISPLACEMENTS},
    {"C3D8RH", "C3D8", DISPLACEMENTS},
    {"C3D8IH", "C3D8", DISPLACEMENTS},
    {"C3D6H",  "C3D6", DISPLACEMENTS},
    {"C3D4H",  "C3D4", DISPLACEMENTS},
    {"B31R",   "B31",  "exact between its ends, with shear deformation"},
    {"B31H",   "B31",  MEMBER_AXIAL},
    {"B33H",   "B33",  MEMBER_AXIAL},
    {"T3D2H",  "T3D2", MEMBER_AXIAL},
    {"CPS3",   "M3D3", PLANE_STRESS, false, true},
    {"CPS4",   "M3D4", PLANE_STRESS, false, true},
    {"CPS4R",  "M3D4", PLANE_STRESS, false, true},
    {"CPS4I",  "M3D4", "a membrane without incompatible modes, whose nodes are held in its plane", false, true},
    {"CPS6",   "M3D6", PLANE_STRESS, false, true},
    {"CPS8",   "M3D8", PLANE_STRESS, false, true},
    {"CPS8R",  "M3D8", PLANE_STRESS, false, true},
    {"T2D2",   "T3D2", PLANE_MEMBER, false, true},
    {"T2D2H",  "T3D2", PLANE_MEMBER, false, true},
    {"B21",    "B31",  PLANE_MEMBER, false, true},
    {"B21H",   "B31",  PLANE_MEMBER, false, true},
    {"B22",    "B32",  PLANE_MEMBER, false, true},
    {"B22H",   "B32",  PLANE_MEMBER, false, true},
    {"B23",    "B33",  PLANE_MEMBER, false, true},
    {"B23H",   "B33",  PLANE_MEMBER, false, true},
};
// clang-format on

const element_alias* find_alias(const std::string& type) {
  const element_alias* const found = std::find_if(std::begin(ALIASES), std::end(ALIASES),
                                                  [&](const element_alias& each) { return type == each.name; });
  return found == std::end(ALIASES) ? nullptr : found;
}

}  // namespace solver::deck
