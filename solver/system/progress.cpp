// progress.cpp: writes the progress line over itself on the error stream, and wipes it at the end.
#include "system/progress.h"

#include <cmath>

#include <fmt/core.h>

namespace solver {

namespace {

constexpr const char* WIPE = "\r\033[K";

bool& allowed_here() {
  static bool allowed = false;
  return allowed;
}

// One write: the thread of a clock may write beside another one.
void show_line(std::FILE* out, const std::string& text) {
  const std::string line = "\r" + fitted(text, error_stream_width()) + "\033[K";
  std::fwrite(line.data(), 1, line.size(), out);
  std::fflush(out);
}

void wipe_line(std::FILE* out) {
  std::fputs(WIPE, out);
  std::fflush(out);
}

}  // namespace

void allow_progress(bool allowed) { allowed_here() = allowed; }

bool progress_is_shown() { return allowed_here() && error_stream_can_be_rewritten(); }

std::string duration_text(double seconds) {
  constexpr long long MINUTE = 60, HOUR = 3600;
  const long long whole = std::llround(seconds);
  if (whole < 2 * MINUTE) return fmt::format("{} s", whole);
  const long long minutes = (whole + MINUTE / 2) / MINUTE;
  if (whole < HOUR) return fmt::format("{} min", minutes);
  return fmt::format("{} h {:02} min", minutes / 60, minutes % 60);
}

std::string fitted(const std::string& text, int width) {
  const auto room = static_cast<std::size_t>(width > 1 ? width - 1 : 1);
  if (text.size() <= room) return text;
  std::size_t end = room;
  // A character of several bytes is not cut: its later ones begin with the bits 10.
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return text.substr(0, end);
}

progress::progress(std::string what, bool watched)
    : what_(std::move(what)), watched_(watched), next_(start_ + std::chrono::milliseconds(500)) {}

progress::~progress() {
  if (shown_) wipe_line(stderr);
}

// Not so often that it takes time of the work.
bool progress::is_time() const {
  const clock::time_point now = clock::now();
  if (now < next_) return false;
  next_ = now + std::chrono::milliseconds(200);
  shown_ = true;
  return true;
}

void progress::look(std::size_t step, std::size_t steps) const {
  if (step == 0 || step > steps || !is_time()) return;
  const double passed = std::chrono::duration<double>(clock::now() - start_).count();
  const double left = passed * static_cast<double>(steps - step) / static_cast<double>(step);
  show_line(stderr, fmt::format("{} {} %, about {} left", what_, step * 100 / steps, duration_text(left)));
}

void progress::at(const std::string& place) const {
  if (!watched_ || !is_time()) return;
  const double passed = std::chrono::duration<double>(clock::now() - start_).count();
  show_line(stderr, fmt::format("{}: {}, {}", what_, place, duration_text(passed)));
}

ticking_clock::ticking_clock(std::string what, bool watched, std::FILE* out, period tick, double expected)
    : what_(std::move(what)), out_(out), expected_(expected) {
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
    std::string line = fmt::format("{}, {}", what_, duration_text(passed.count()));
    const double left = expected_ - passed.count();
    if (left >= 1) line += fmt::format(", about {} left", duration_text(left));
    show_line(out_, line);
    shown = true;
  }
  if (shown) wipe_line(out_);
}

}  // namespace solver
