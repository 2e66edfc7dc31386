// stopwatch.h: the time that each phase of a run took.
#ifndef FINITES_SOLVER_STOPWATCH_H
#define FINITES_SOLVER_STOPWATCH_H

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace solver {

class stopwatch {
 public:
  // Adds the time since the last call, or since the start, to a phase.
  void lap(const std::string& phase) {
    const auto now = clock::now();
    add(phase, std::chrono::duration<double>(now - last_).count());
    last_ = now;
  }

  // Moves time from one phase to another: work that was measured within it.
  void move(const std::string& from, const std::string& to, double seconds) {
    add(from, -seconds);
    add(to, seconds);
  }

  const std::vector<std::pair<std::string, double>>& phases() const { return phases_; }

 private:
  using clock = std::chrono::steady_clock;

  void add(const std::string& phase, double seconds) {
    for (auto& [name, total] : phases_) {
      if (name != phase) continue;
      total += seconds;
      return;
    }
    phases_.emplace_back(phase, seconds);
  }

  clock::time_point last_ = clock::now();
  std::vector<std::pair<std::string, double>> phases_;  // in the order in which they first came
};

}  // namespace solver

#endif
