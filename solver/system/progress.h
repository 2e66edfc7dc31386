// progress.h: a line that says how far long work has come. It appears only on a terminal that can be written over, and
// it is wiped at the end.
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

// Nothing is shown until the program allows it, which it does in a run that is not quiet.
void allow_progress(bool allowed);

// It is allowed, and the error stream is a terminal that can be written over.
bool progress_is_shown();

// For work in steps that are alike, as the calls of the elements: "element stiffnesses 40 %, about 12 s left".
class progress {
 public:
  // Shown when `watched`, once the work takes longer than a moment.
  explicit progress(std::string what, bool watched = progress_is_shown());
  ~progress();
  progress(const progress&) = delete;
  progress& operator=(const progress&) = delete;

  void at(std::size_t step, std::size_t steps) const {
    if (watched_ && step % STRIDE == 0) look(step, steps);
  }
  // For work whose steps are not known before: "path: increment 12, load factor 0.81".
  void at(const std::string& place) const;

 private:
  using clock = std::chrono::steady_clock;
  static constexpr std::size_t STRIDE = 64;
  void look(std::size_t step, std::size_t steps) const;
  bool is_time() const;

  std::string what_;
  bool watched_;
  clock::time_point start_ = clock::now();
  mutable clock::time_point next_;
  mutable bool shown_ = false;
};

// For work that cannot be followed from inside: while it lives, a thread of its own shows the seconds that have passed.
// It touches nothing of the work.
class ticking_clock {
 public:
  using period = std::chrono::milliseconds;

  // "`what`, 12 s" once every `tick` on `out`, when `watched`; with the seconds that the work is expected to take, and
  // has not taken yet, "`what`, 12 s, about 8 s left".
  explicit ticking_clock(std::string what, bool watched = progress_is_shown(), std::FILE* out = stderr,
                         period tick = period(1000), double expected = 0);
  ~ticking_clock();
  ticking_clock(const ticking_clock&) = delete;
  ticking_clock& operator=(const ticking_clock&) = delete;

 private:
  void run(period tick);

  std::string what_;
  std::FILE* out_;
  double expected_;
  std::mutex guard_;
  std::condition_variable ended_;
  bool over_ = false;
  std::thread thread_;  // last: it uses all the others
};

// "42 s", "3 min", "1 h 05 min".
std::string duration_text(double seconds);

// What fits on a line of `width` columns, of which the last one stays free: a terminal goes to the next line there.
std::string fitted(const std::string& text, int width);

}  // namespace solver

#endif
