// geometric_stiffness.h: geometric stiffness of the three-node elements.
#ifndef FINITES_TRI_GEOMETRIC_STIFFNESS_H
#define FINITES_TRI_GEOMETRIC_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// K(171): writes the 18 entries of the translations, in element axes; the others are left alone.
//
//   op      in  1, 71: membrane forces of the first point of big; otherwise those of the displacements
//   LOADS   in  mean temperature, isotropic form; the general form takes THERMAL_M1, THERMAL_M2
//   disp    in  18 displacements, element axes; read only where the forces come from them
//   big     in  RESULT_POINTS
//   factor  in  +1.0 in operation 1, -1.0 in 7 and 71
void TRI_KG_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, int op,
                const ELEM_LOADS& LOADS, const double* disp, const double* big, double factor, double* K);
void TRI_KG_GENERAL(const PLATEELEM_RECORD& EL, int op, const double* disp, const double* big, double factor,
                    double* K);

// K(171) += the 18 entries of KG(171) that a geometric stiffness has.
void TRI_ADD_GEOMETRIC(const double* KG, double* K);

#endif
