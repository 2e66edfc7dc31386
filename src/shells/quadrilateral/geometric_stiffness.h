// geometric_stiffness.h: geometric stiffness of the four-node elements.
#ifndef FINITES_QUAD_GEOMETRIC_STIFFNESS_H
#define FINITES_QUAD_GEOMETRIC_STIFFNESS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// K(300): writes the 30 entries of the translations, in element axes; the others are left alone.
//
//   op      in  1, 71: membrane forces of each point of big; otherwise those of the displacements
//   split   in  1: the in-plane shear strain is that of the centre
//   LOADS   in  mean temperature, isotropic form; the general form takes THERMAL_M1, THERMAL_M2
//   disp    in  24 displacements, element axes; read only where the forces come from them
//   big     in  RESULT_POINTS
//   factor  in  +1.0 in operation 1, -1.0 in 7 and 71
void QUAD_KG_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int op,
                 int split, const ELEM_LOADS& LOADS, int count, const SURFACE_STATION* rule, const double* disp,
                 const double* big, double factor, double* K);
void QUAD_KG_GENERAL(const PLATEELEM_RECORD& EL, int op, int split, int count, const double* disp, const double* big,
                     double factor, double* K);

// Nx, Ny, Nxy of the split displacements at a point, isotropic section; s is the free thermal strain.
VECTOR<3> QUAD_MEMBRANE_FORCES(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                               const QUAD_DISPLACEMENTS& QUAD_U, int split, double s, double xi, double eta);

// K(300) += the 30 entries of KG(300) that a geometric stiffness has.
void QUAD_ADD_GEOMETRIC(const double* KG, double* K);

#endif
