// results.h: strains, stresses and stress resultants of the thick quadrilateral.
#ifndef FINITES_QUAD_THICK_RESULTS_H
#define FINITES_QUAD_THICK_RESULTS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

// Records at the four nodes and the four points, from the split displacements.
//
//   LOADS          in   temperatures, modifiers; the general form takes THERMAL_M1 to THERMAL_B2
//   local (3, 4)   in   local coordinates of the nodes
//   split          in   1: gxy of every record is that of the centre
//   nodes, points  out  360 reals each
void RES_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                        const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int split,
                        double* nodes, double* points);
void RES_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local,
                        int split, double* nodes, double* points);

// One record, at local (x, y) and natural (xi, eta); the isotropic form reads QUAD_SIDES.
//
//   tm, tb  in   free thermal strain of the mid surface, and its difference through the thickness
//   block   out  columns 1 to 62
void RES_PT_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_DISPLACEMENTS& QUAD_U, double tm,
                           double tb, int split, double x, double y, double xi, double eta, double* block);

// The same with the section matrices, and with the point as GAUSS_INT_2D gives it.
void RES_PT_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split, double x, double y,
                           const SURFACE_POINT& s, double* block);

#endif
