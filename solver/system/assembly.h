// assembly.h: asks every element for its stiffness and its loads and adds them up. With the rows and columns of each
// element's K_e at its degrees of freedom, f free and p prescribed,
//
//     K = sum_e K_e,      right = load_f - K_fp u_p,      reaction = K u - load at p
//
// Elements with dependent degrees of freedom, u_e = L x + c, add L^T K_e L and -L^T K_e c (elements/tied_element.h).
#ifndef FINITES_SOLVER_ASSEMBLY_H
#define FINITES_SOLVER_ASSEMBLY_H

#include <functional>
#include <vector>

#include "elements/library_model.h"
#include "elements/load_case.h"
#include "elements/scatter_map.h"
#include "system/progress.h"

namespace solver {

// Adds the element stiffnesses to K, and to the right-hand side, by equation, what prescribed values that are not zero
// push over to it: right -= K(free, prescribed) u(prescribed). `state`: the step whose forces are in the
// stiffness; null: none. Returns the seconds spent in the element library.
double assemble_stiffness(const model& m, library_model& library, const load_case& loads, const scatter_map& map,
                          symmetric_matrix& K, std::vector<double>& right, const progress& report,
                          const step* state = nullptr);

// The diagonal of the stiffness without the geometric stiffness that it holds at present, by equation; empty where it
// holds none.
std::vector<double> first_order_diagonal(const model& m, library_model& library, const scatter_map& map);

// Adds a matrix of every element, global axes, to A, which has the pattern of the map; `ask` gives it, in any thread if
// the model allows it for `what`. `state`: likewise.
void assemble_matrix(const model& m, library_model& library, question what, const scatter_map& map,
                     const std::function<void(std::size_t element, element_matrix& matrix)>& ask, symmetric_matrix& A,
                     const step* state = nullptr);

// All loads by degree of freedom: nodal loads and the elements' share. `s`: the step that they are gathered from.
std::vector<double> assemble_loads(const model& m, const step& s, library_model& library, const load_case& loads);

// K u by degree of freedom, but only on those that are prescribed or have a part in a condition, 0 elsewhere: the
// elements there are asked for their stiffness again.
std::vector<double> prescribed_forces(const model& m, library_model& library, const load_case& loads,
                                      const std::vector<double>& displacements);

// The values of an element out of a vector by degree of freedom; what is left of the 24 is 0.
element_vector gather(const element& e, const std::vector<double>& by_freedom);

}  // namespace solver

#endif
