// results.h: strains and stresses out of displacements, through operation 5, in the form that a viewer shows.
//
// By element, in element axes (x from node 1 to node 2, normal by the right hand round the nodes): the mean of the four
// integration points. At nodes, in global axes: the stress tensors of all elements round a node, turned to global axes
// and averaged with equal weights. At a fold, or where thickness or material changes, the average mixes what is really
// different on the two sides: there the values by element are the ones to trust.
#ifndef FINITES_SOLVER_RESULTS_H
#define FINITES_SOLVER_RESULTS_H

#include <array>
#include <vector>

#include "library_model.h"
#include "model.h"
#include "static_analysis.h"

namespace solver {

// The three surfaces of a shell at which stresses are given.
enum surface { TOP, MIDDLE, BOTTOM };
constexpr std::size_t SURFACES = 3;

struct surface_stress {
  std::array<double, 3> stress{};  // sx, sy, sxy
  double angle = 0;                // of the first principal direction to the element's x axis, radians
  double first = 0, second = 0;    // principal stresses
  double equivalent = 0;           // von Mises
};

struct element_result {
  std::array<double, 3> force{};   // Nx, Ny, Nxy per length
  std::array<double, 3> moment{};  // Mx, My, Mxy per length; positive: tension at the top
  std::array<surface_stress, SURFACES> at{};
};

// A symmetric tensor: xx, yy, zz, xy, yz, xz.
using tensor = std::array<double, 6>;

struct nodal_result {
  tensor top{}, bottom{};  // global axes
  double equivalent_top = 0, equivalent_bottom = 0;
};

struct step_results {
  std::vector<element_result> elements;  // zeros for frame elements
  std::vector<nodal_result> nodes;       // zeros where no plate joins
  std::vector<end_forces> members;       // by element; zeros for plates
};

step_results recover_results(const model& m, library_model& library, const static_solution& solution);

// The von Mises stress of a spatial state.
double von_mises(const tensor& t);

}  // namespace solver

#endif
