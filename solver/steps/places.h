// places.h: where the results of a run go.
#ifndef FINITES_SOLVER_PLACES_H
#define FINITES_SOLVER_PLACES_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "options.h"
#include "output/output_file.h"
#include "system/progress.h"

namespace solver {

// The files of one step; null where none is wanted.
struct places {
  std::unique_ptr<output_file> vtu;
  std::unique_ptr<output_file> piece;  // of this process, where `vtu` is a .pvtu that names pieces
  std::unique_ptr<output_file> csv, reactions, conditions, members, stations, points, stresses, layers, solids;
  std::unique_ptr<output_file> curve, events, modes;
};

// The files of all steps: "name.vtu" for the only step, "name.1.vtu" and so on for several. A place that cannot be
// written is an error before anything is computed, and so is one that would take the place of the deck or of another.
std::vector<places> open_places(const options& wanted, std::size_t steps);

// The page of all steps; null where none is wanted.
std::unique_ptr<output_file> open_report(const options& wanted);

// The file of a step from 0: with its number where there are several.
std::string file_of_step(const std::string& path, std::size_t step, std::size_t steps);

// Whether each process writes its part of the results for a viewer.
bool in_pieces(const options& wanted);

// Where the results for a viewer go.
std::string output_path(const options& wanted);
// A further result, `what`, must not take the place of the deck or of another: a usage_error.
void check_new_place(const options& wanted, const std::string& path, const std::string& what);

// The piece of a process beside the file that names them: "name_0.vtu" of "name.pvtu".
std::string piece_of(const std::string& path, int process);

// Writes with `write(std::ostream&)` and puts the file in its place. Nothing is done where none is wanted.
template <class WRITER>
void write_file(const std::unique_ptr<output_file>& to, const WRITER& write) {
  if (to == nullptr || !to->is_written()) return;
  const ticking_clock clock("writing " + to->path());
  write(to->stream());
  to->commit();
}

}  // namespace solver

#endif
