// vtu_components.h: the names of the components of result arrays in a VTU file (vtu_writer.h).
#ifndef FINITES_SOLVER_VTU_COMPONENTS_H
#define FINITES_SOLVER_VTU_COMPONENTS_H

#include "output/vtu_arrays.h"

namespace solver {

inline constexpr const char* PLANE_NAMES[] = {"sx", "sy", "sxy"};
inline constexpr components SURFACE_STRESS(PLANE_NAMES);
inline constexpr const char* PRINCIPAL_NAMES[] = {"first", "second", "angle"};
inline constexpr components SURFACE_PRINCIPAL(PRINCIPAL_NAMES);
inline constexpr const char* SOLID_PRINCIPAL_NAMES[] = {"first", "second", "third"};
inline constexpr components SPACE_PRINCIPAL(SOLID_PRINCIPAL_NAMES);
inline constexpr const char* STRESS_NAMES[] = {"s1", "s2", "s12"};
inline constexpr components ELEMENT_STRESS(STRESS_NAMES);
inline constexpr const char* STRAIN_NAMES[] = {"11", "22", "12"};
inline constexpr components PLATE_STRAIN(STRAIN_NAMES);
inline constexpr const char* SHEAR_STRAIN_NAMES[] = {"13", "23"};
inline constexpr components PLATE_SHEAR_STRAIN(SHEAR_STRAIN_NAMES);
inline constexpr const char* FORCE_NAMES[] = {"N1", "N2", "N12"};
inline constexpr components MEMBRANE_FORCE(FORCE_NAMES);
inline constexpr const char* MOMENT_NAMES[] = {"M1", "M2", "M12"};
inline constexpr components PLATE_MOMENT(MOMENT_NAMES);
inline constexpr const char* SHEAR_NAMES[] = {"Q1", "Q2"};
inline constexpr components PLATE_SHEAR(SHEAR_NAMES);
inline constexpr const char* PLANE_PRINCIPAL_NAMES[] = {"first", "second"};
inline constexpr components PLANE_PRINCIPAL(PLANE_PRINCIPAL_NAMES);

}  // namespace solver

#endif
