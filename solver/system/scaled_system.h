// scaled_system.h: equations on one scale, and whether a structure resists every motion.
#ifndef FINITES_SOLVER_SCALED_SYSTEM_H
#define FINITES_SOLVER_SCALED_SYSTEM_H

#include <vector>

#include "elements/scatter_map.h"
#include "model/model.h"
#include "system/linear_solver.h"

namespace solver {

// The factors s that give S K S a unit diagonal, applied to K. Throws model_error, at the line of the step, for a
// degree of freedom without stiffness.
// `first_order`: where K holds a geometric stiffness, its diagonal without that, by equation. The larger of both
// counts: above a buckling load entries of K vanish or become negative, and are no mechanism.
std::vector<double> scale_to_unit_diagonal(const model& m, const step& s, const scatter_map& map, symmetric_matrix& K,
                                           const std::vector<double>& first_order = {});

// The six motions of the model as a rigid body, three translations and three rotations about its middle, by equation:
// in the unknowns y of S K S, where u = S y. Of dependent degrees of freedom it takes the part of the equations alone.
std::vector<std::vector<double>> rigid_body_motions(const model& m, const scatter_map& map,
                                                    const std::vector<double>& scale);

// A := S A S.
void scale_matrix(const std::vector<double>& scale, symmetric_matrix& A);

// Throws model_error, at the line of the step and with the motions that are free, for a scaled matrix that could not be
// factorised or has no stiffness in some direction; gives the smallest stiffness.
double check_resistance(const model& m, const step& s, const scatter_map& map, const symmetric_matrix& K,
                        const std::vector<double>& scale, linear_solver& solver, bool factorised);

// The same for a smallest stiffness that is known; 0: the matrix could not be factorised.
void require_resistance(const model& m, const step& s, const scatter_map& map, const symmetric_matrix& K,
                        const std::vector<double>& scale, linear_solver& solver, double smallest);

}  // namespace solver

#endif
