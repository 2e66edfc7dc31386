// element_record.h: the part of a result record that all elements of a theory fill in the same way.
#ifndef FINITES_ELEMENT_RECORD_H
#define FINITES_ELEMENT_RECORD_H

#include "finites/views.hpp"

// Columns 1 to 62 of a block and its principal values.
//
//   x, y  in   local coordinates of the point
//   e, k  in   strains of the mid surface, curvatures: total strains, thermal part included
//   s, M  in   stresses of the mid surface, moments
//   h     in   thickness; 0 divides by zero in the stresses
void fill_thin_record(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s,
                      const VECTOR<3>& M, double h, double* block);

// The same with transverse shear.
//
//   g  in   shear strains of the element; the record shows them divided by SHEAR_FACTOR
//   Q  in   shear forces, which belong to the undivided strains
void fill_thick_record(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s,
                       const VECTOR<3>& M, const VECTOR<2>& g, const VECTOR<2>& Q, double h, double* block);

// The results of the layered model: stresses and plastic increments at bottom, middle and top are those of the
// thickness points, not computed from forces and moments.
struct LAYERED_RECORD {
  VECTOR<3> e, k;                   // strains of the mid surface, curvatures
  VECTOR<2> g;                      // transverse shear strains, shown divided by SHEAR_FACTOR
  VECTOR<3> stress[3], plastic[3];  // bottom, middle, top
  VECTOR<2> shear_stress;           // of the middle
  VECTOR<2> plastic_shear;          // of the middle
  VECTOR<3> N, M;
  VECTOR<2> Q;
};

// Columns 1 to 62 of a block and its principal values.
void fill_layered_record(double x, double y, const LAYERED_RECORD& r, double h, double* block);

// Columns 51 to 61 of a filled block: plastic strains at the top, mid surface and bottom, and of transverse shear.
//
//   ep, kp  in   generalised plastic strains: membrane, curvature
//   gp      in   transverse shear
void fill_plastic_columns(const VECTOR<3>& ep, const VECTOR<3>& kp, const VECTOR<2>& gp, double h, double* block);

#endif
