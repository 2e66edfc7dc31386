// progress.cpp: writes the progress line over itself on the error stream, and wipes it at the end.
#include "system/progress.h"

#include <unistd.h>
#include <cstdio>

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

bool somebody_watches() { return isatty(STDERR_FILENO) != 0; }

}  // namespace solver
