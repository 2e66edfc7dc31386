// error_list.cpp: collects the errors of a deck and puts them into the order of its lines.
#include "deck/error_list.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "deck/cards.h"

namespace solver::deck {

static constexpr std::size_t MOST_KEPT = 10000;

void error_list::add(const deck_error& error) {
  errors_.push_back(error);
  if (errors_.size() >= MOST_KEPT) throw too_many{};
}

// Where a line stands: its number in the deck, and below an *INCLUDE the numbers in the files that it leads through.
static std::vector<int> position_of(const card_deck& deck, const deck_error& error) {
  std::vector<int> position{error.line};
  std::size_t file = subscript(error.file_number);
  if (error.file_number < 0) {
    file = subscript(std::find(deck.files.begin(), deck.files.end(), error.file) - deck.files.begin());
  }
  if (file == deck.files.size()) return position;
  while (file > 0) {
    position.insert(position.begin(), deck.included_from[file].line);
    file = subscript(deck.included_from[file].file);
  }
  return position;
}

void error_list::raise(const card_deck& deck) {
  if (errors_.empty()) return;
  std::vector<std::pair<std::vector<int>, std::size_t>> order;
  for (std::size_t i = 0; i < errors_.size(); ++i) order.emplace_back(position_of(deck, errors_[i]), i);
  std::sort(order.begin(), order.end());
  // A card that is read for several load cases is in error once.
  std::set<std::pair<std::vector<int>, std::string>> seen;
  const auto repeated = [&](const auto& at) { return !seen.emplace(at.first, errors_[at.second].what()).second; };
  order.erase(std::remove_if(order.begin(), order.end(), repeated), order.end());
  std::vector<deck_error> reported;
  for (std::size_t i = 0; i < order.size() && i < MOST_REPORTED; ++i) reported.push_back(errors_[order[i].second]);
  if (reported.size() == 1) throw deck_error(reported.front());
  throw deck_errors(reported, order.size() > MOST_REPORTED);
}

}  // namespace solver::deck
