// progress.h: a line that says how far long work has come. It appears only where somebody watches.
#ifndef FINITES_SOLVER_PROGRESS_H
#define FINITES_SOLVER_PROGRESS_H

#include <cstddef>
#include <string>

namespace solver {

class progress {
 public:
  // Shown when `watched` and the work is long.
  progress(std::string what, bool watched);
  ~progress();
  progress(const progress&) = delete;
  progress& operator=(const progress&) = delete;

  // Before work that cannot be followed from inside.
  void begin(std::size_t size) const { at(0, size); }

  void at(std::size_t step, std::size_t steps) const {
    if (watched_ && steps >= SHORT_WORK && step % STRIDE == 0) show(step, steps);
  }

 private:
  static constexpr std::size_t SHORT_WORK = 50000, STRIDE = 10000;
  void show(std::size_t step, std::size_t steps) const;

  std::string what_;
  bool watched_;
  mutable bool shown_ = false;
};

// Is the error stream a terminal?
bool somebody_watches();

}  // namespace solver

#endif
