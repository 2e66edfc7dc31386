// path_restart.h: what a path leaves behind as it goes, so that a run that was ended can go on from there.
#ifndef FINITES_SOLVER_PATH_RESTART_H
#define FINITES_SOLVER_PATH_RESTART_H

#include <functional>
#include <string>

namespace solver {

struct left_state {
  std::string state;      // as the path has written it
  bool finished = false;  // the path of the step has come to its end
};

// Of one step.
class path_restart {
 public:
  virtual ~path_restart() = default;

  // What an earlier run has left of the step; null: nothing.
  virtual const left_state* left() const = 0;

  // After an increment and at the end of a path. `state` is called where it is kept: an increment is passed over while
  // keeping would take more than a small share of the time.
  virtual void keep(bool finished, const std::function<std::string()>& state) = 0;
};

}  // namespace solver

#endif
