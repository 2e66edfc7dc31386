// shared_deck.cpp: text by way of the first process, sums by zlib.
#include "steps/shared_deck.h"

#include <zlib.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "deck/deck_reader.h"
#include "system/ranks.h"

namespace solver {

namespace {

// What the first process makes, in all of them.
template <class MAKE>
std::string text_of_first(const MAKE& make) {
  std::vector<char> bytes;
  fail_together([&] {
    if (!is_first_rank()) return;
    const std::string text = make();
    bytes.assign(text.begin(), text.end());
  });
  bytes = of_first_rank(bytes);
  return {bytes.begin(), bytes.end()};
}

file_text shared_text(const std::string& name) {
  file_text found;
  found.text = text_of_first([&] {
    file_text own = text_of_file(name);
    found.fault = std::move(own.fault);
    found.place = std::move(own.place);
    return std::move(own.text);
  });
  found.fault = text_of_first([&] { return found.fault; });
  found.place = text_of_first([&] { return found.place; });
  return found;
}

// Nothing of a pipe, which was read to its end and may not be opened again.
std::string content(const std::string& path) {
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(path, unknown)) return "";
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

model read_shared_deck(const options& wanted) {
  if (rank_count() == 1) return read_deck(wanted.deck, {wanted.refine});
  return read_deck(wanted.deck, {wanted.refine, shared_text});
}

std::string deck_sums(const model& m) {
  return text_of_first([&] {
    std::string text;
    for (const std::string& name : m.files) {
      const std::string deck = content(name);
      const uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(deck.data()), deck.size());
      text += fmt::format("; {} bytes {:08x}", deck.size(), sum);
    }
    return text;
  });
}

}  // namespace solver
