// deck_error.cpp: the sentence of a deck error.
#include "model/deck_error.h"

#include <utility>

namespace solver {

static std::string sentence(const std::string& file, int line, const std::string& keyword, const std::string& text) {
  std::string s = file;
  if (line > 0) s += ":" + std::to_string(line);
  if (!keyword.empty()) s += ": " + keyword;
  return s + ": " + text;
}

deck_error::deck_error(const std::string& file_name, int line_number, const std::string& keyword_name,
                       const std::string& message)
    : std::runtime_error(sentence(file_name, line_number, keyword_name, message)),
      file(file_name),
      line(line_number),
      keyword(keyword_name),
      text(message) {}

deck_errors::deck_errors(std::vector<deck_error> list, bool more) : deck_error(list.front()), all(std::move(list)) {
  count_ = std::to_string(all.size()) + " errors" + (more ? " and more" : "");
  for (const deck_error& each : all) whole_ += std::string(each.what()) + "\n";
  whole_ += count_;
}

}  // namespace solver
