// temperatures.h: the temperatures of nodes and elements, the strains that they make, and the model with the constants
// of its materials at these temperatures.
//
// A node has its initial temperature until a step gives it another one. The constants of an element are those at the
// mean temperature of its nodes: at the end of a step that ends in a state, and of the state on which it stands in a
// step with small motions about it (*FREQUENCY, *BUCKLE, PERTURBATION). The density belongs to the initial temperature,
// since the mass does not change.
#ifndef FINITES_SOLVER_TEMPERATURES_H
#define FINITES_SOLVER_TEMPERATURES_H

#include <cstddef>

#include "model/model.h"

namespace solver {

// By node, in the state in which a step ends; null: before all steps.
numbered<double> node_temperatures(const model& m, const step* state);

// The mean of the nodes of an element; exactly the value of all nodes where they have the same.
double mean_temperature(const element& e, const numbered<double>& at_node);

// The strain between two temperatures, by the coefficient of expansion of the material (alpha1):
//
//     (alpha(T) (T - Z) - alpha(T0) (T0 - Z)) / alpha1,      Z the temperature from which coefficients count
//
// which is T - T0 for constant coefficients.
double expanding_change(const material& mat, double from, double to);

// One past the last of the steps from `first` on that see the same constants.
std::size_t end_of_same_constants(const model& m, std::size_t first);

bool have_same_constants(const model& m, const step& a, const step& b);

// Does any element that has a material change its constants with its temperature?
bool depends_on_temperature(const model& m);

// The model with copies of materials and sections that hold the constants of the elements in a step.
model with_constants_of(const model& m, const step& s);

}  // namespace solver

#endif
