// assertions.cpp: reporting and counting of conditions that do not hold.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "stores.h"
#include "tarnix.h"

namespace {

// Calls of the element library run in several threads.
std::atomic<std::int32_t> failed_count{0};
std::atomic<bool> stops_the_run{false};
std::atomic<bool> is_quiet{false};

struct failure_place {
  std::int32_t elem, operation, point;
};

thread_local failure_place place_of_this_thread{0, 0, 0};

// "finites: element 17, operation 3, point 2: ", as far as it is known.
std::string described(const failure_place& at) {
  std::string place;
  const auto add = [&place](const char* name, std::int32_t number) {
    if (number == 0) return;
    place.append(place.empty() ? "finites: " : ", ").append(name).append(" ").append(std::to_string(number));
  };
  add("element", at.elem);
  add("operation", at.operation);
  add("point", at.point);
  return place.empty() ? place : place + ": ";
}

// The place, the text as it was given, without a terminator that its length may include, and the end of the line: in
// one piece, since threads report side by side.
void report(const char* text, std::int32_t length) {
  if (text == nullptr) length = 0;
  while (length > 0 && text[length - 1] == '\0') --length;
  std::string line = described(place_of_this_thread);
  if (length > 0) line.append(text, static_cast<std::size_t>(length));
  line.push_back('\n');
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

// The count stays at the largest integer.
void count_failure() {
  std::int32_t count = failed_count;
  while (count < std::numeric_limits<std::int32_t>::max() && !failed_count.compare_exchange_weak(count, count + 1)) {
  }
}

}  // namespace

void ASSERTF(const char* text, const std::int32_t* length, const std::int32_t* condition) {
  if (condition == nullptr || *condition != 0) return;
  if (!is_quiet) report(text, length != nullptr ? *length : 0);
  count_failure();
  if (stops_the_run) std::exit(EXIT_FAILURE);
}

void TARNIX_FAILURE_PLACE(const std::int32_t* elem, const std::int32_t* operation, const std::int32_t* point) {
  const auto value = [](const std::int32_t* number) { return number != nullptr ? *number : 0; };
  place_of_this_thread = {value(elem), value(operation), value(point)};
}

void TARNIX_SET_ASSERT_STOPS(const std::int32_t* stops) {
  if (stops != nullptr) stops_the_run = *stops != 0;
}

void TARNIX_SET_ASSERT_QUIET(const std::int32_t* quiet) {
  if (quiet != nullptr) is_quiet = *quiet != 0;
}

void TARNIX_GET_ASSERT_COUNT(std::int32_t* count) {
  if (count != nullptr) *count = failed_count;
}

// Whether assertions stop the run is a setting of the solver, not data of an analysis: it stays.
void tarnix::forget_assertions() {
  failed_count = 0;
  place_of_this_thread = {0, 0, 0};
}
