// wanted_values.cpp: looks up nodes and sets.
#include "steps/wanted_values.h"

#include <algorithm>
#include <unordered_map>

#include <fmt/format.h>

#include "deck/fields.h"

namespace solver {

wanted_values find_wanted(const model& m, const options& wanted) {
  std::unordered_map<int, int> index;
  for (int n = 0; n < count_of(m.nodes); ++n) {
    if (!is_made(m.nodes[n])) index[m.nodes[n].id] = n;
  }
  const auto node = [&](int id) {
    const auto found = index.find(id);
    if (found == index.end()) throw usage_error(fmt::format("{} has no node {}", m.deck, id));
    return found->second;
  };
  wanted_values result;
  for (const int id : wanted.nodes) result.nodes.push_back(node(id));
  for (const reference_value& reference : wanted.references) result.reference_nodes.push_back(node(reference.node));
  for (const std::string& name : wanted.sets) {
    const auto found = std::find_if(m.nsets.begin(), m.nsets.end(),
                                    [&](const named_set& set) { return set.name == deck::upper(name); });
    if (found == m.nsets.end()) throw usage_error(fmt::format("{} has no *NSET {}", m.deck, name));
    result.nodes.insert(result.nodes.end(), found->members.begin(), found->members.end());
  }
  return result;
}

}  // namespace solver
