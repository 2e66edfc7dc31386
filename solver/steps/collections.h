// collections.h: files for ParaView (.pvd) that name files of results with a time each, beside those results.
//
//   results.pvd             of several steps: the file of each, at the time of its number
//   results.modes.pvd       of a step that looks for modes: a file each in the folder results.modes, the shape as
//                           displacement and rotation, at the time of its frequency or factor
//   results.increments.pvd  of a path that is followed, where --increments asks for states along it: a file each in the
//                           folder results.increments, at the time of its load factor
//
// The files of step 2 of several are results.2.modes.pvd and so on. Times must grow from file to file: where
// frequencies are equal, or a load factor goes back, the times are the numbers 1, 2, 3 instead. Results that go into a
// device have no collections.
#ifndef FINITES_SOLVER_COLLECTIONS_H
#define FINITES_SOLVER_COLLECTIONS_H

#include <memory>
#include <string>
#include <vector>

#include "options.h"
#include "output/output_file.h"
#include "output/pvd_writer.h"
#include "steps/step_listener.h"

namespace solver {

class collections : public step_listener {
 public:
  // A place that cannot be written is an error, before anything is computed.
  collections(const options& wanted, const model& m);

  void solved(const model& m, const step& s, const static_solution& solution, const step_results& results) override;
  void found_modes(const model& m, const step& s, const modal_solution& solution) override;

  void enveloped(const model& m, const step& s, const envelope& bounds) override;
  void followed_hinges(const model& m, const step& s, const pushover_solution& path) override;
  void followed_plates(const model& m, const step& s, const elastoplastic_solution& path) override;

  // Lines about what was written since the last call.
  std::string take_report();
  std::string path() const { return file_ == nullptr ? "" : file_->path(); }  // of several steps; empty: there is none
  // Puts the collection of the steps so far in its place.
  void commit();

 private:
  void add_step(const model& m, const step& s);
  void write_states(const model& m, const step& s, const std::vector<path_state>& kept,
                    const std::vector<double>& factors, const std::vector<std::vector<int>>& hinges);

  const options& wanted_;
  std::size_t steps_;
  std::unique_ptr<output_file> file_;  // of several steps
  std::vector<pvd_entry> entries_;
  std::vector<int> hinges_;  // open ones at the end of the last pushover, by element
  std::string report_;
};

}  // namespace solver

#endif
