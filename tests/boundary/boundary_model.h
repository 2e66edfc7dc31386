/* boundary_model.h: a model for callers in plain C and Fortran. A solver fills the records in its own language; here a
 * few lines of C++ do it, and everything beyond them is what such a caller sees: exported routines, pointers,
 * MODEL_DATA.
 *
 * The model has two elements. 1: the right triangle (0,0,0), (3,0,0), (0,2,0), thin shell, isotropic, thickness 0.5,
 * E 1000, nu 0.25, unit weight 4. 2: the same nodes and section, membrane. */
#ifndef FINITES_TESTS_BOUNDARY_MODEL_H
#define FINITES_TESTS_BOUNDARY_MODEL_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* MODEL_DATA and its extent; good until boundary_model_close. */
void boundary_model_open(double** A, int32_t* n);
void boundary_model_close(void);

/* AREA, WEIGHT and FACTORED_WEIGHT of the plate record of an element, as operation 8 left them. */
void boundary_model_geometry(const int32_t* elem, double* area, double* weight, double* factored_weight);

/* A model of one solid in the place of the plates: a box of edges 2, 3, 5 along the axes, eight nodes, E 1000, nu 0.25,
 * number 17. IOFF is its entry. */
void boundary_model_open_solid(double** A, int32_t* n, int32_t* IOFF);

#ifdef __cplusplus
}
#endif

#endif
