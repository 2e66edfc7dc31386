// stored_plate.h: forces and results of the stresses that the state of a filled plate holds
// (shells/plastic/stored_state.h).
#ifndef FINITES_STORED_PLATE_H
#define FINITES_STORED_PLATE_H

#include "shells/engines/filled_plate.h"

// u(6 nodes): the displacements in which the state was stored, global axes.

// Stores the state in the displacements u, counted from no displacements, as operation 33 does; of the whole-section
// model with each point on the side of the yield surface where its return ends (shells/plastic/corner_points.h). False
// where one does not converge; failures of the update are reported by the state of the plate.
bool store_state_of_plate(FILLED_PLATE& plate, const double* u);

// F(24): the forces of the nodes, global axes, with the drilling moments.
void stored_forces_of_plate(const FILLED_PLATE& plate, const double* u, double* F);

// How far the points that flow are from the yield surface of the whole-section model, and others beyond it: the largest
// value of the yield function. The layered model has a return that ends on the surface or fails: 0.
double distance_of_plate(const FILLED_PLATE& plate, const double* u);

// nodes, points: 360 reals each, as operation 5 has them.
void stored_results_of_plate(const FILLED_PLATE& plate, const double* u, double* nodes, double* points);

#endif
