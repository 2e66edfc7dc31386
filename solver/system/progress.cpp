// progress.cpp: writes the progress line over itself on the error stream, and wipes it at the end.
#include "system/progress.h"

#include <fmt/core.h>

namespace solver {

progress::progress(std::string what, bool watched) : what_(std::move(what)), watched_(watched) {}

progress::~progress() {
  if (shown_) std::fputs("\r\033[K", stderr);
}

void progress::show(std::size_t step, std::size_t steps) const {
  shown_ = true;
  fmt::print(stderr, "\r{} {} %", what_, step * 100 / steps);
}

ticking_clock::ticking_clock(std::string what, bool watched, std::FILE* out, period tick)
    : what_(std::move(what)), out_(out) {
  if (watched) thread_ = std::thread([this, tick] { run(tick); });
}

ticking_clock::~ticking_clock() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(guard_);
    over_ = true;
  }
  ended_.notify_one();
  thread_.join();
}

void ticking_clock::run(period tick) {
  const auto start = std::chrono::steady_clock::now();
  bool shown = false;
  std::unique_lock<std::mutex> lock(guard_);
  while (!ended_.wait_for(lock, tick, [this] { return over_; })) {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    fmt::print(out_, "\r{}, {:.0f} s", what_, passed.count());
    std::fflush(out_);
    shown = true;
  }
  if (shown) std::fputs("\r\033[K", out_);
}

}  // namespace solver
