// results.h: strains and stresses out of displacements, through operation 5, in the form that a viewer shows.
//
// By element, in the axes 1, 2 of its material (elements/material_axes.h), whichever node comes first: the mean of the
// four integration points. At nodes, in global axes: the stress tensors of all elements round a node, turned to global
// axes and averaged with equal weights. At a fold, or where thickness or material changes, that average mixes what is
// really different on the two sides: the parts of nodal_parts.h keep the two sides apart.
#ifndef FINITES_SOLVER_RESULTS_H
#define FINITES_SOLVER_RESULTS_H

#include <array>
#include <functional>
#include <vector>

#include "analyses/nodal_parts.h"
#include "analyses/point_results.h"
#include "analyses/solid_results.h"
#include "analyses/static_analysis.h"
#include "elements/library_model.h"
#include "elements/member_field.h"
#include "model/model.h"

namespace solver {

struct element_result {
  std::array<double, 3> force{};        // N1, N2, N12 per length
  std::array<double, 3> moment{};       // M1, M2, M12 per length; positive: tension at the top
  std::array<double, 2> shear_force{};  // Q1, Q2 per length, of thick shells
  std::array<surface_stress, SURFACES> at{};
  // Of plates that yield, top, middle and bottom: what the library shows in columns 51 to 61; shear strains are
  // engineering ones.
  std::array<std::array<double, 3>, SURFACES> plastic{};
  std::array<double, 2> plastic_shear{};
  double equivalent_plastic = 0;  // the largest of the points
};

// A symmetric tensor: xx, yy, zz, xy, yz, xz.
using tensor = std::array<double, 6>;

struct nodal_result {
  tensor top{}, bottom{};  // global axes
  double equivalent_top = 0, equivalent_bottom = 0;
};

// Of several processes every one has members and fields, of which paths depend; the rest is with the first one, which
// writes it, and empty elsewhere; where results go out in pieces it is there for the nodes and elements of the piece.
struct step_results {
  std::vector<element_result> elements;  // zeros for frame elements and solids
  numbered<nodal_result> nodes;          // zeros where no plate joins
  std::vector<nodal_part> parts;         // by node; none where no plate joins
  std::vector<end_forces> members;       // by element; zeros for plates and solids
  std::vector<member_field> fields;      // of beams, trusses and cables, in the order of the elements
  std::vector<solid_part> solids;        // by node and section of solids
  std::vector<solid_stress> in_solids;   // by element, the mean of the points; empty without solids
  std::vector<point_results> points;     // of elements that a step prints, in the order of the elements
  bool yielding = false;                 // plastic strains are shown
};

step_results recover_results(const model& m, library_model& library, const static_solution& solution);

// Likewise from records of another source: those of one plate, at its nodes and points.
using record_source = std::function<element_results(std::size_t element, const element_vector& displacements)>;
step_results recover_results(const model& m, library_model& library, const static_solution& solution,
                             const record_source& records_of);

// The von Mises stress of a spatial state.
double von_mises(const tensor& t);

}  // namespace solver

#endif
