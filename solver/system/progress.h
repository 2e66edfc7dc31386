// progress.h: a line that says how far long work has come. It appears only on a terminal.
#ifndef FINITES_SOLVER_PROGRESS_H
#define FINITES_SOLVER_PROGRESS_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

#include "system/terminal.h"

namespace solver {

class progress {
 public:
  // Shown when `watched` and the work is long.
  progress(std::string what, bool watched);
  ~progress();
  progress(const progress&) = delete;
  progress& operator=(const progress&) = delete;

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

// For work that cannot be followed from inside: while it lives, a thread of its own shows the seconds that have passed.
// It touches nothing of the work.
class ticking_clock {
 public:
  using period = std::chrono::milliseconds;

  // "`what`, 12 s" once every `tick` on `out`, when `watched`.
  ticking_clock(std::string what, bool watched, std::FILE* out = stderr, period tick = period(1000));
  ~ticking_clock();
  ticking_clock(const ticking_clock&) = delete;
  ticking_clock& operator=(const ticking_clock&) = delete;

 private:
  void run(period tick);

  std::string what_;
  std::FILE* out_;
  std::mutex guard_;
  std::condition_variable ended_;
  bool over_ = false;
  std::thread thread_;  // last: it uses all the others
};

}  // namespace solver

#endif
