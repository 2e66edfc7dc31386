// results.h: strains, stresses and stress resultants of the thin triangle.
#ifndef FINITES_TRI_RESULTS_H
#define FINITES_TRI_RESULTS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

// Records at the three nodes and the four points, from the split displacements.
//
//   LOADS          in   temperatures; the general form takes THERMAL_M1 to THERMAL_B2
//   local (3, 3)   in   local coordinates of the nodes
//   nodes, points  out  360 reals each; of the fourth node's block nothing is written
void TRI_RESULTS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                     const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, int count,
                     const SURFACE_STATION* rule, double* nodes, double* points);
void TRI_RESULTS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const MATRIX<3, 3>& local, int count, double* nodes, double* points);

// One record, at local (x, y) and natural (xi, eta).
//
//   tm, tb  in   free thermal strain of the mid surface, and its difference through the thickness
//   block   out  columns 1 to 62
void TRI_RESULT_POINT_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const TRI_DISPLACEMENTS& TRI_U, double tm, double tb, double x, double y, double xi,
                          double eta, double* block);

// The same with the section matrices, and with the point as GAUSS_INT_2D gives it.
void TRI_RESULT_POINT_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                              double x, double y, const SURFACE_POINT& s, double* block);

#endif
