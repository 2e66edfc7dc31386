// res_record.h: the record of 90 reals in which every plate and shell element answers at one point.
//
// Axes are those of the element. Blocks follow each other at a distance of RES_LENGTH; four make the 360 values of the
// results at the nodes, four those at the integration points.
#ifndef FINITES_RES_RECORD_H
#define FINITES_RES_RECORD_H

#include "views.h"

constexpr int RES_LENGTH = 90;
constexpr int RES_POINTS = 4;
constexpr int RES_VALUES = RES_LENGTH * RES_POINTS;

// Columns, from 1. Of a group the first is named; the others follow.
constexpr int COL_X = 1, COL_Y = 2, COL_Z = 3;
constexpr int COL_STRAIN_TOP = 4, COL_STRESS_TOP = 7, COL_PRINCIPAL_TOP = 10;             // x, y, xy
constexpr int COL_STRAIN_MID = 15, COL_STRESS_MID = 18, COL_PRINCIPAL_MID = 21;           // principal values: angle,
constexpr int COL_STRAIN_BOTTOM = 26, COL_STRESS_BOTTOM = 29, COL_PRINCIPAL_BOTTOM = 32;  // s1, s2, tau, equivalent
constexpr int COL_FORCES = 37;                                                            // Nx, Ny, Nxy
constexpr int COL_MOMENTS = 40;                                                           // Mx, My, Mxy
constexpr int COL_SHEAR_STRAIN = 43;                                                      // gxz, gyz
constexpr int COL_SHEAR_FORCE = 45;                                                       // Qx, Qy
constexpr int COL_SHEAR_STRESS = 47;                                                // mean transverse shear stresses
constexpr int COL_SPARE = 49;                                                       // 49, 50 are zero
constexpr int COL_PLASTIC_TOP = 51, COL_PLASTIC_MID = 54, COL_PLASTIC_BOTTOM = 57;  // plastic strains x, y, xy
constexpr int COL_PLASTIC_SHEAR = 60;                                               // xz, yz
constexpr int COL_LAST = 62;                                                        // an element writes no further

// The columns of one record, and the record of a point among the 360 values of four.
using RES_BLOCK = VECTOR_VIEW<double>;
using RES_READER = VECTOR_VIEW<const double>;
inline RES_BLOCK BLOCK_OF(double* results, int point) { return RES_BLOCK(results + (point - 1) * RES_LENGTH); }
inline RES_READER BLOCK_OF(const double* results, int point) { return RES_READER(results + (point - 1) * RES_LENGTH); }

#endif
