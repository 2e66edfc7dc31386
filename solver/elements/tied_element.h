// tied_element.h: elements with dependent degrees of freedom: their part of the equations and of the matrix. With the
// equations x that move the element, u = L x + c,
//
//     A += L^T K L,      right -= L^T K c
#ifndef FINITES_SOLVER_TIED_ELEMENT_H
#define FINITES_SOLVER_TIED_ELEMENT_H

#include <vector>

#include "elements/element_group.h"
#include "elements/scatter_map.h"

namespace solver {

// Fills scatter_map::tied, tied_of and bodies; the equations are numbered already.
void find_tied_elements(const model& m, const load_case& loads, scatter_map& map);

// A += L^T K L, from the lower triangle of K.
void add_tied(const tied_element& tied, int freedoms, const element_matrix& K, symmetric_matrix& A);

// right -= L^T K c.
void move_tied(const tied_element& tied, int freedoms, const element_matrix& K, std::vector<double>& right);

// diagonal += the diagonal of L^T K L.
void add_tied_diagonal(const tied_element& tied, const element_matrix& K, std::vector<double>& diagonal);

}  // namespace solver

#endif
