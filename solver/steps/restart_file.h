// restart_file.h: the file of --restart.
//
// It holds the state of each path of the run, of those that have come to their end too, and what they belong to: the
// text of the deck, what was asked for along the paths, and the version. It is written beside its place and renamed, so
// that a run may be ended at any moment; a run that comes to its end removes it.
#ifndef FINITES_SOLVER_RESTART_FILE_H
#define FINITES_SOLVER_RESTART_FILE_H

#include <chrono>
#include <map>
#include <memory>
#include <string>

#include "analyses/path_restart.h"
#include "model/model.h"

namespace solver {

class restart_file {
 public:
  // Of several processes the first one reads what is there, and all go on from it. Throws std::runtime_error for a file
  // that does not belong to this run.
  restart_file(std::string path, const model& m, std::size_t path_states);

  // Of a step, by its number from 1; it lives as long as the file.
  path_restart* of_step(std::size_t step);
  void remove() const;
  // The last step of which a state is there, from 1; 0: the run starts from the beginning.
  std::size_t last_step() const { return left_.empty() ? 0 : left_.rbegin()->first; }

 private:
  class step_part;
  using clock = std::chrono::steady_clock;
  void read(const std::string& bytes);
  void write();
  void keep(std::size_t step, bool finished, const std::function<std::string()>& state);

  std::string path_, identity_;
  std::map<std::size_t, left_state> left_, kept_;
  std::map<std::size_t, std::unique_ptr<path_restart>> parts_;
  clock::time_point written_{};
  clock::duration took_{};
};

// Null where the run has no such file. Warns where the deck has no path to go on with.
std::unique_ptr<restart_file> open_restart(const std::string& path, const model& m, std::size_t path_states);

}  // namespace solver

#endif
