// deck_sums.cpp: sums by zlib.
#include "steps/deck_sums.h"

#include <zlib.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "system/ranks.h"

namespace solver {

namespace {

// Nothing of a pipe, which was read to its end and may not be opened again.
std::string content(const std::string& path) {
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(path, unknown)) return "";
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::string deck_sums(const model& m) {
  std::string text;
  for (const std::string& name : m.files) {
    const std::string deck = content(name);
    const uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(deck.data()), deck.size());
    text += fmt::format("; {} bytes {:08x}", deck.size(), sum);
  }
  return text;
}

void require_same_deck(const model& m) {
  if (rank_count() == 1) return;
  const std::string own = deck_sums(m);
  const std::vector<std::vector<char>> all = from_all_ranks({own.begin(), own.end()});
  for (std::size_t process = 1; process < all.size(); ++process) {
    if (all[process] == all[0]) continue;
    throw std::runtime_error(
        fmt::format("{}: process {} of {} has read another text than the first one: give all "
                    "machines the same files",
                    m.deck, process + 1, all.size()));
  }
}

}  // namespace solver
