// modal_analysis.h: the steps that look for modes: natural frequencies and buckling factors.
#ifndef FINITES_SOLVER_MODAL_ANALYSIS_H
#define FINITES_SOLVER_MODAL_ANALYSIS_H

#include <cstddef>
#include <string>
#include <vector>

#include "analyses/modal_masses.h"
#include "analyses/static_analysis.h"

namespace solver {

struct mode {
  double value = 0;                  // frequency in cycles per unit of time, or factor on the loads of the step
  std::vector<double> displacement;  // by degree of freedom, global axes; the largest translation is 1
};

struct modal_solution {
  std::vector<mode> modes;  // ascending
  modal_masses masses;      // of FREQUENCY
  std::size_t equations = 0;
  std::vector<std::string> notes;
};

// K x = omega^2 M x, with the consistent masses of the library; on a loaded base state (K + KG) x = omega^2 M x. A
// structure that can move freely has modes of frequency 0. Above a buckling load of the base state some squares are
// negative: -sqrt(-omega^2) / 2 pi stands for them, with a note.
modal_solution solve_frequencies(const model& m, const step& s, library_model& library, linear_solver& solver,
                                 stopwatch& watch, const base_state& base = {});

// (K + lambda KG) x = 0, KG being the geometric stiffness of the forces that the loads of the step give in a linear
// analysis; positive factors alone. `state` receives that analysis. On a loaded base state both hold its geometric
// stiffness KG0: (K + KG0 + lambda KG) x = 0, the factors count the loads of the step alone.
modal_solution solve_buckling(const model& m, const step& s, library_model& library, linear_solver& solver,
                              stopwatch& watch, static_solution& state, const base_state& base = {});

}  // namespace solver

#endif
