// pushover_support.h: frames pushed to collapse in one call.
#ifndef FINITES_TESTS_PUSHOVER_SUPPORT_H
#define FINITES_TESTS_PUSHOVER_SUPPORT_H

#include <string>
#include <vector>

#include "frame_decks.h"
#include "pushover/pushover.h"

namespace pushover_test {

using namespace frame_test;

// All steps of a model, which are pushovers.
std::vector<solver::pushover_solution> push(const solver::model& m,
                                            solver::solver_kind kind = solver::default_solver());

// Factors of the events, in order.
std::vector<double> factors(const solver::pushover_solution& solution);

// Cards of hinges on the set MEMBER, and of a step.
std::string hinges(const std::string& curve, double cap_p, double cap_1, double cap_2);
std::string pushed(const std::string& loads, const std::string& options = "", const std::string& limits = "");

// The Orbison surface, written from the paper: p, weak axis, strong axis.
double orbison(double p, double my, double mz);

// The forces that a frame of beams takes at its nodes, by degree of freedom, from the forces at the ends of its members
// alone.
std::vector<double> nodal_forces(const solver::model& m, const std::vector<solver::end_forces>& members);

// What the nodes take less what the loads give, at the degrees of freedom that move, by the largest of the loads.
double imbalance(const solver::model& m, const solver::pushover_solution& s);

}  // namespace pushover_test

#endif
