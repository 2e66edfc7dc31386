// plastic_static.h: a static step whose shells yield.
#ifndef FINITES_SOLVER_PLASTIC_STATIC_H
#define FINITES_SOLVER_PLASTIC_STATIC_H

#include <optional>
#include <string>

#include "elastoplastic/elastoplastic.h"

namespace solver {

// The path of the step from the unloaded state to its full load. Nothing where no point yields on it, or where the
// loads of the step do no work on `elastic`, its elastic answer: that one holds then. Throws model_error when the full
// load finds no equilibrium, with the largest part of it that does.
std::optional<elastoplastic_solution> follow_shells(const model& m, const step& s, const static_solution& elastic,
                                                    library_model& library, linear_solver& solver, stopwatch& watch,
                                                    std::size_t states = 0, path_restart* restart = nullptr);

// Where the whole-section model is still elastic while a face is beyond the yield stress: up to the plastic moment, 1.5
// times the moment of first yield. Empty when no face is.
std::string note_elastic_faces(const model& m, const step_results& results);

std::string plastic_static_summary(const elastoplastic_solution& solution);

}  // namespace solver

#endif
