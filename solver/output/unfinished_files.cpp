// unfinished_files.cpp: a table that a signal handler may read at any moment.
#include "output/unfinished_files.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <deque>

namespace solver {

namespace {

// Blocks of names, each behind the last; none is ever freed, nor is a name that a handler may be reading.
struct name_block {
  std::array<std::atomic<const char*>, 64> names{};
  std::atomic<name_block*> next{nullptr};
};

name_block& first_block() {
  static name_block block;
  return block;
}

constexpr std::array<int, 3> ENDING = {SIGINT, SIGTERM, SIGHUP};

// Calls nothing that a handler may not call. The signal then does what it does without one.
void remove_files(int number) {
  for (const name_block* block = &first_block(); block != nullptr; block = block->next.load()) {
    for (const std::atomic<const char*>& name : block->names) {
      const char* const path = name.load();
      if (path != nullptr) unlink(path);
    }
  }
  std::signal(number, SIG_DFL);
  std::raise(number);
}

// What the caller has chosen to ignore, as nohup does, stays ignored.
void catch_signals() {
  for (const int number : ENDING) {
    struct sigaction now {};
    if (sigaction(number, nullptr, &now) != 0 || now.sa_handler != SIG_DFL) continue;
    now.sa_handler = remove_files;
    sigaction(number, &now, nullptr);
  }
}

const char* kept_name(const std::string& path) {
  static auto& names = *new std::deque<std::string>;
  return names.emplace_back(path).c_str();
}

name_block& block_after(name_block& block) {
  name_block* const next = block.next.load();
  if (next != nullptr) return *next;
  auto* const added = new name_block;
  block.next.store(added);
  return *added;
}

}  // namespace

std::size_t remember_unfinished(const std::string& path) {
  name_block* block = &first_block();
  const bool first = block->names[0].load() == nullptr;
  const char* const name = kept_name(path);
  std::size_t number = 0;
  for (;; block = &block_after(*block)) {
    for (std::atomic<const char*>& place : block->names) {
      if (place.load() == nullptr) {
        place.store(name);
        if (first) catch_signals();
        return number;
      }
      ++number;
    }
  }
}

void forget_unfinished(std::size_t number) {
  name_block* block = &first_block();
  for (; number >= block->names.size(); number -= block->names.size()) block = block->next.load();
  block->names[number].store(nullptr);
}

}  // namespace solver
