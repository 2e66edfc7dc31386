// forces.h: what the internal forces of both theories share on a quadrilateral: displacements in element axes, the
// terms of drilling and foundation.
#ifndef FINITES_QUAD_FORCES_H
#define FINITES_QUAD_FORCES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// ul(24) := AXES u(24) for each of eight groups of three: displacements in element axes.
void QUAD_DISP_LOCAL(const QUADRILATERAL_GEOMETRY& QUAD, const double* u, double* ul);

// The parts of ul(24): membrane u, v; bending w, theta x, theta y; drilling theta z.
QUAD_DISPLACEMENTS QUAD_DISP_SPLIT(const double* ul);

// The membrane strains of the split displacements at a point of the isotropic and of the general form; gxy is that of
// the centre when the shear is split.
VECTOR<3> QUAD_MEMBRANE_STRAINS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U, int split,
                                    double xi, double eta);
VECTOR<3> QUAD_MEMBRANE_STRAINS_GENERAL(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split,
                                        const SURFACE_POINT& s);

// f += the forces of the in-plane shear of the centre, when it is split.
void QUAD_CENTRE_FORCES_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                            const QUAD_DISPLACEMENTS& QUAD_U, int split, double* f);
void QUAD_CENTRE_FORCES_GENERAL(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split, double* f);

// The terms that both theories have: drilling moments (set, not added), foundation and, except in operation 33, the
// rotation of f to global axes.
void QUAD_FINISH_FORCES(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                        const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int op,
                        double* f);

#endif
