// static_analysis.h: one static step, from the model to displacements and reactions: linear, or with the geometric
// stiffness of its own forces (P-delta).
//
//     linear      K u = q
//     P-delta     (K + KG(u_n)) u_(n+1) = q,      KG(u_n): of the axial forces, membrane forces and stresses of u_n
//
// from the linear u_0 on, until no translation changes by more than 1e-10 of the largest.
#ifndef FINITES_SOLVER_STATIC_ANALYSIS_H
#define FINITES_SOLVER_STATIC_ANALYSIS_H

#include <cstddef>
#include <string>
#include <vector>

#include "analyses/base_state.h"
#include "elements/arm_stiffness.h"
#include "elements/library_model.h"
#include "elements/load_case.h"
#include "elements/scatter_map.h"
#include "model/model.h"
#include "system/linear_solver.h"
#include "system/stopwatch.h"

namespace solver {

struct static_solution {
  load_case loads;                   // with the degrees of freedom that were held
  std::vector<double> displacement;  // by degree of freedom, global axes
  std::vector<double> load;          // by degree of freedom: all that was applied
  std::vector<double> reaction;      // by degree of freedom: K u - load where it is prescribed, 0 elsewhere
  std::vector<double> constraint;    // by degree of freedom: what linear conditions exert; empty without conditions
  std::vector<double> multiplier;    // by condition of loads.conditions: what it exerts where its factor is 1
  std::vector<arm_stiffness> arms;   // geometric stiffness of the forces in rigid arms
  std::vector<arm_stiffness> turned_arms;  // that of the arms whose moments are in this balance; in second order

  std::size_t equations = 0, entries = 0;  // of the system that was solved
  double residual = 0;                     // backward error of the scaled system
  double smallest_stiffness = 0;           // of the scaled system; 0: not looked for
  std::vector<std::string> notes;          // what the analysis did unasked: warnings
  std::vector<std::string> remarks;        // how it went: lines of the summary
};

// After a P-delta step the library keeps its state, so that results and member forces hold it too. On a loaded base
// state the answer is the linear response to the loads of the step, from that state on: (K + KG) u = q; the library
// keeps the base state.
// Throws model_error for a mechanism, a load that nothing resists, an element that gives no number.
static_solution solve_static(const model& m, const step& s, library_model& library, linear_solver& solver,
                             stopwatch& watch, bool watched = false, const base_state& base = {});

// Reactions and forces of conditions from K u less the loads, by degree of freedom.
void take_forces(const resolved_constraints& constraints, const std::vector<double>& out_of_balance,
                 static_solution& result);

// The note of conditions that follow from others.
void note_constraints(const scatter_map& map, std::vector<std::string>& notes);

// Stores the axial and membrane forces of a solution as the state on which geometric stiffness rests.
void keep_state(const model& m, library_model& library, const static_solution& solution);

}  // namespace solver

#endif
