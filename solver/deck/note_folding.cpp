// note_folding.cpp: notes of one kind become one, with their count.
#include "deck/note_folding.h"

#include <unordered_map>

namespace solver::deck {

void fold_notes(std::vector<std::string>& notes) {
  std::unordered_map<std::string, std::size_t> first;  // keyword and sentence, place in `kept`
  std::vector<std::string> kept;
  std::vector<std::size_t> count;
  for (const std::string& note : notes) {
    const std::size_t keyword = note.find(": *");
    const auto [place, is_new] = first.emplace(keyword == std::string::npos ? note : note.substr(keyword), kept.size());
    if (is_new) {
      kept.push_back(note);
      count.push_back(0);
    }
    ++count[place->second];
  }
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (count[i] > 1) kept[i] += " (" + std::to_string(count[i]) + " times; this is the first)";
  }
  notes.swap(kept);
}

}  // namespace solver::deck
