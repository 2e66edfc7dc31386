// catalogue.cpp: the user's numbers of nodes or elements, and the named sets of them.
#include "deck/catalogue.h"

#include <algorithm>

namespace solver::deck {

int catalogue::index_of(int id) const {
  const auto found = index_of_.find(id);
  return found == index_of_.end() ? -1 : found->second;
}

int catalogue::open_set(const std::string& name) {
  const auto [place, is_new] = set_of_.emplace(name, count_of(sets_));
  if (is_new) {
    sets_.push_back({name, {}});
    in_order_.push_back(1);
  }
  return place->second;
}

int catalogue::find_set(const std::string& name) const {
  const auto found = set_of_.find(name);
  return found == set_of_.end() ? -1 : found->second;
}

void catalogue::append(int set, int index) {
  std::vector<int>& list = sets_[set].members;
  // Meshes are numbered upwards as a rule: such a set never needs sorting.
  if (!list.empty() && list.back() >= index) in_order_[set] = 0;
  list.push_back(index);
}

void catalogue::append_set(int set, int other) {
  const std::vector<int> addition = members(other);  // a copy: a set may name itself
  for (const int index : addition) append(set, index);
  members(set);  // a set that doubles itself line by line stays as small as the mesh
}

const std::vector<int>& catalogue::members(int set) {
  std::vector<int>& list = sets_[set].members;
  if (!in_order_[set]) {
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
    in_order_[set] = 1;
  }
  return list;
}

std::vector<named_set> catalogue::take_sets() {
  for (int set = 0; set < count_of(sets_); ++set) members(set);
  return std::move(sets_);
}

}  // namespace solver::deck
