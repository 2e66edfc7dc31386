// plate_calls.h: the plain calls of plates without their checks: plate, vectors and places of the answers are those
// that plate_checks.h lets through. A batch checks all its elements and then computes each by these.
//
// Vectors have 6 nodes values, matrices 6 nodes by 6 nodes. The ranges of the checks keep the answers finite, with two
// exceptions, which return FINITES_OK or, with nothing written, FINITES_RESULT: results, which have squares of
// stresses, and the load at a point far outside.
#ifndef FINITES_PLAIN_PLATE_CALLS_H
#define FINITES_PLAIN_PLATE_CALLS_H

#include "finites/elements.h"

inline int order_of(const finites_plate& plate) { return 6 * plate.nodes; }

void compute_plate_stiffness(const finites_plate& plate, double* K);
void compute_plate_mass(const finites_plate& plate, double* M);
void compute_plate_geometric(const finites_plate& plate, const double* u, double* KG);
void compute_plate_geometric_of_forces(const finites_plate& plate, const double forces[4][6], double* KG);
void compute_plate_forces(const finites_plate& plate, const double* u, double* F);

// A vector that is null counts as zero.
void compute_plate_surface_load(const finites_plate& plate, const double* global, const double* local, double* F);
void compute_plate_body_load(const finites_plate& plate, const double* load, double* F);
void compute_plate_temperature_load(const finites_plate& plate, double change, double difference, double* F);
finites_status compute_plate_point_load(const finites_plate& plate, const double* point, const double* global,
                                        const double* local, double* F);

void compute_plate_measures(const finites_plate& plate, finites_plate_measures& measures);
void compute_plate_location(const finites_plate& plate, const double* point, finites_location& location);

// temperature: change and difference, or null.
finites_status compute_plate_results(const finites_plate& plate, const double* u, const double* temperature,
                                     finites_plate_results& results);

// The records of operation 5 by name.
void name_plate_results(int nodes, const double* node_records, const double* point_records,
                        finites_plate_results& results);

#endif
