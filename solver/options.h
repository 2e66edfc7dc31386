// options.h: the command line.
#ifndef FINITES_SOLVER_OPTIONS_H
#define FINITES_SOLVER_OPTIONS_H

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "elements/member_field.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "system/linear_solver.h"
#include "system/terminal.h"

namespace solver {

struct options {
  std::string deck;
  std::string output;                  // empty: the deck's name with the ending .vtu, in the working directory
  std::string csv;                     // empty: none
  std::string reactions;               // of nodes and of sets; empty: none
  std::string conditions;              // forces of linear conditions; empty: none
  std::string json;                    // the results of all steps for other programs; empty: none
  std::string members;                 // end forces of members; empty: none
  std::string stations;                // section forces and displacements along members; empty: none
  std::string points;                  // stresses at points of the sections of beams; empty: none
  std::string modes;                   // modal masses; empty: none
  std::string stresses;                // nodal stresses of plates; empty: none
  std::string layers;                  // stresses of the layers of shells; empty: none
  std::string solids;                  // nodal stresses of solids; empty: none
  std::string curve;                   // load factor and displacement of a pushover; empty: none
  std::string events;                  // its hinges; empty: none
  std::string report;                  // one page with all of the run; empty: none
  std::string restart;                 // where paths leave their states, to go on from; empty: nowhere
  int increments = 0;                  // states along a path that are written for a viewer; 0: the end alone
  int station_count = USUAL_STATIONS;  // of each beam and cable, its ends among them
  solver_kind kind = default_solver();
  std::vector<int> nodes;  // the user's numbers
  std::vector<std::string> sets;
  std::vector<reference_value> references;
  vtu_form form = vtu_form::BINARY;
  bool quiet = false;
  bool refine = false;      // quadratic solids are divided into linear ones
  std::string write;        // the model as one deck, without solving; empty: none
  bool check = false;       // the elements are checked, nothing is solved
  bool estimate = false;    // the memory that a run would take is printed, nothing is solved
  double memory_limit = 0;  // megabytes that the run may take on a machine; 0: what it and its limits leave
  int threads = 0;          // of element calls and factorisation; 0: the processors, what OpenBLAS takes of its own
  color_choice color = color_choice::AUTO;
};

// What is wrong with a command line, as against a deck.
struct usage_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// No options when there is nothing to do, as after --help: the program then ends with `exit_code`.
std::optional<options> parse_command_line(int argc, const char* const* argv, int& exit_code);

// "node,dof,value,source": dof 1 to 6 or ux to rz. Throws usage_error.
reference_value parse_reference(const std::string& text);

}  // namespace solver

#endif
