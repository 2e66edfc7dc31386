// catalogue.h: the user's numbers of nodes or elements, and the named sets of them.
#ifndef FINITES_SOLVER_DECK_CATALOGUE_H
#define FINITES_SOLVER_DECK_CATALOGUE_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/model.h"

namespace solver::deck {

// In the place of a name or number that is missing: any may be meant.
inline const std::string ANY_NAME = "*";
constexpr int ANY_NUMBER = -1;

// One for the nodes, one for the elements: members are indices into model::nodes or model::elements.
class catalogue {
 public:
  explicit catalogue(std::string noun) : noun_(std::move(noun)) {}

  const std::string& noun() const { return noun_; }  // "node", "element"

  // False when the number is there already.
  bool add(int id, int index) { return index_of_.emplace(id, index).second; }
  int index_of(int id) const;  // -1: not defined
  void reserve(std::size_t count) { index_of_.reserve(count); }

  // Sets grow: a name that is there already goes on with what it has. Names are upper case.
  int open_set(const std::string& name);
  int find_set(const std::string& name) const;  // -1: not defined
  void append(int set, int index);
  void append_set(int set, int other);
  const std::vector<int>& members(int set);  // ascending, each once
  bool has_members(int set) const { return !sets_[set].members.empty(); }

  std::vector<named_set> take_sets();

  // Numbers and sets whose definition is in error: that they are missing is not reported again.
  void lose(int id) { lost_ids_.insert(id); }
  void lose_set(const std::string& name) { lost_sets_.insert(name); }
  bool lost(int id) const { return lost_ids_.count(id) + lost_ids_.count(ANY_NUMBER) > 0; }
  bool lost_set(const std::string& name) const { return lost_sets_.count(name) + lost_sets_.count(ANY_NAME) > 0; }

 private:
  std::string noun_;
  std::unordered_map<int, int> index_of_;
  std::unordered_map<std::string, int> set_of_;
  numbered<named_set> sets_;
  std::unordered_set<int> lost_ids_;
  std::unordered_set<std::string> lost_sets_;
  numbered<char> in_order_;  // members are sorted when they are asked for, not at every addition
};

}  // namespace solver::deck

#endif
