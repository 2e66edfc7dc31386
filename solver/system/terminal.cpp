// terminal.cpp: asks the system and the environment about the error stream.
#include "system/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace solver {

namespace {

constexpr int USUAL_WIDTH = 80;

struct tinted {
  std::string_view word, tint;
};

// Words with which a line begins, in the tints of compilers.
constexpr std::array<tinted, 3> TINTS = {
    {{"warning:", "\033[1;35m"}, {"error:", "\033[1;31m"}, {"finites-solve:", "\033[1;31m"}}};
constexpr std::string_view PLAIN = "\033[0m";

// Set once, before anything is written.
bool& color_chosen() {
  static bool chosen = false;
  return chosen;
}

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string colored_line(std::string_view line) {
  for (const auto& [word, tint] : TINTS) {
    if (line.substr(0, word.size()) != word) continue;
    return std::string(tint).append(word).append(PLAIN).append(line.substr(word.size()));
  }
  return std::string(line);
}

}  // namespace

bool error_stream_is_terminal() { return isatty(STDERR_FILENO) != 0; }

bool error_stream_can_be_rewritten() {
  const std::string kind = environment("TERM");
  return error_stream_is_terminal() && !kind.empty() && kind != "dumb";
}

int error_stream_width() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return USUAL_WIDTH;
}

void choose_color(color_choice choice) {
  color_chosen() = choice == color_choice::ALWAYS ||
                   (choice == color_choice::AUTO && error_stream_can_be_rewritten() && environment("NO_COLOR").empty());
}

std::string colored(const std::string& lines) {
  if (!color_chosen()) return lines;
  std::string result;
  for (std::size_t start = 0; start < lines.size();) {
    const std::size_t stop = lines.find('\n', start);
    const std::size_t end = stop == std::string::npos ? lines.size() : stop + 1;
    result += colored_line(std::string_view(lines).substr(start, end - start));
    start = end;
  }
  return result;
}

}  // namespace solver
