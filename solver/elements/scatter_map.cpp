// scatter_map.cpp: the pattern from the nodes' neighbours, and positions in it by arithmetic.
//
// Equations are numbered node by node. A column of node b then holds, below its diagonal, first the rest of b's own
// equations and after them whole blocks, one for each neighbour a > b in ascending order. A row is found by the start
// of its block and its rank there.
#include "elements/scatter_map.h"

#include <algorithm>
#include <array>
#include <limits>

#include "elements/tied_element.h"
#include "model/model_error.h"

namespace solver {

namespace {

constexpr std::size_t MOST_NODES = 8, MOST_FREEDOMS = 24;

// For each node the neighbours with a higher index, ascending, and how far below the column's diagonal block each of
// their blocks begins.
struct higher_neighbours {
  numbered<std::size_t> start;
  numbered<int> node;
  numbered<std::int32_t> block_offset;
};

numbered<int> free_counts(const numbered<std::int32_t>& equation, std::size_t nodes) {
  numbered<int> count(nodes, 0);
  for (std::size_t f = 0; f < equation.size(); ++f) {
    if (equation[f] != PRESCRIBED) ++count[f / DIRECTIONS];
  }
  return count;
}

// The nodes whose equations an element joins.
const std::vector<int>& joined_nodes(const model& m, const scatter_map& map, std::size_t e) {
  const tied_element* const tied = tied_part(map, e);
  return tied != nullptr ? tied->nodes : m.elements[e].nodes;
}

// Of several processes the first one with an element at a node leads it, and the first one of all where none has. True:
// this process has the node's own block, since it leads the node or has an element there. Empty: it has all.
numbered<char> find_own_nodes(const model& m, scatter_map& map) {
  if (m.process_of.empty()) return {};
  numbered<char> own(m.nodes.size(), 0), joined(m.nodes.size(), 0);
  map.leads.assign(m.nodes.size(), 1);
  const auto take = [&](const std::vector<int>& nodes, int process) {
    for (const int n : nodes) {
      joined[n] = 1;
      if (process < m.process) map.leads[n] = 0;
      if (process == m.process) own[n] = 1;
    }
  };
  for (std::size_t e = 0; e < m.elements.size(); ++e) take(joined_nodes(m, map, e), m.process_of[e]);
  for (const turning_body& body : map.bodies) take(body.tied.nodes, 0);
  map.has_bodies = m.process == 0;
  for (std::size_t n = 0; n < own.size(); ++n) {
    if (own[n] == 0) map.leads[n] = joined[n] == 0 && m.process == 0 ? 1 : 0;
    if (map.leads[n] != 0) own[n] = 1;
  }
  return own;
}

higher_neighbours find_neighbours(const model& m, const scatter_map& map, const numbered<int>& free_count) {
  const std::size_t nodes = m.nodes.size();
  numbered<std::vector<int>> found(nodes);
  const auto join = [&](const std::vector<int>& joined) {
    for (const int b : joined) {
      for (const int a : joined) {
        if (a > b) found[b].push_back(a);
      }
    }
  };
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (is_own(m, e)) join(joined_nodes(m, map, e));
  }
  if (map.has_bodies) {
    for (const turning_body& body : map.bodies) join(body.tied.nodes);
  }

  higher_neighbours result;
  result.start.push_back(0);
  for (std::vector<int>& list : found) {
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
    std::int32_t offset = 0;
    for (const int a : list) {
      result.node.push_back(a);
      result.block_offset.push_back(offset);
      offset += free_count[a];
    }
    result.start.push_back(result.node.size());
  }
  return result;
}

// Where the block of node a begins in a column of node b, counted from the end of b's own block.
std::int32_t block_offset(const higher_neighbours& neighbours, int b, int a) {
  const auto begin = neighbours.node.begin() + signed_index(neighbours.start[b]);
  const auto end = neighbours.node.begin() + signed_index(neighbours.start[b + 1]);
  const auto at = std::lower_bound(begin, end, a);
  return neighbours.block_offset[at - neighbours.node.begin()];
}

void number_equations(const load_case& loads, scatter_map& map) {
  map.equation.resize(loads.prescribed.size());
  std::int32_t next = 0;
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    map.equation[f] = loads.prescribed[f] || map.constraints.is_dependent(f) ? PRESCRIBED : next++;
  }
  map.equations = subscript(next);
}

// Appends the free equations of a node from a direction on.
void append_equations(const numbered<std::int32_t>& equation, int node, int from, std::vector<std::int32_t>& rows) {
  for (int d = from; d < DIRECTIONS; ++d) {
    const std::int32_t row = equation[freedom(node, d)];
    if (row != PRESCRIBED) rows.push_back(row);
  }
}

void lay_out_pattern(const model& m, const higher_neighbours& neighbours, const numbered<char>& own_nodes,
                     const scatter_map& map, symmetric_matrix& K) {
  K = symmetric_matrix{};
  K.column_start.push_back(0);
  for (int b = 0; b < count_of(m.nodes); ++b) {
    for (int d = 0; d < DIRECTIONS; ++d) {
      if (map.equation[freedom(b, d)] == PRESCRIBED) continue;
      if (own_nodes.empty() || own_nodes[b] != 0) append_equations(map.equation, b, d, K.row);
      for (std::size_t i = neighbours.start[b]; i < neighbours.start[b + 1]; ++i) {
        append_equations(map.equation, neighbours.node[i], 0, K.row);
      }
      if (K.row.size() > subscript(std::numeric_limits<std::int32_t>::max())) {
        throw model_error(m, "the stiffness matrix has more entries than a 32-bit subscript reaches");
      }
      K.column_start.push_back(count_of(K.row));
    }
  }
  K.value.assign(K.row.size(), 0.0);
}

// Number of free equations of a node, and how many of them stand before a direction.
std::int32_t rank_in_node(const scatter_map& map, int node, int direction) {
  std::int32_t rank = 0;
  for (int d = 0; d < direction; ++d) {
    if (map.equation[freedom(node, d)] != PRESCRIBED) ++rank;
  }
  return rank;
}

void map_element(const element& e, const higher_neighbours& neighbours, const numbered<int>& free_count,
                 const symmetric_matrix& K, scatter_map& map) {
  std::array<std::int32_t, MOST_FREEDOMS> equation{}, rank{};
  const int at_node = freedoms_per_node(e);
  for (int i = 0; i < element_freedoms(e); ++i) {
    const auto at = subscript(i);
    equation[at] = map.equation[element_freedom(e, i)];
    rank[at] = rank_in_node(map, e.nodes[i / at_node], i % at_node);
  }
  std::array<std::array<std::int32_t, MOST_NODES>, MOST_NODES> offset{};  // [column node][row node]
  for (std::size_t b = 0; b < e.nodes.size(); ++b) {
    for (std::size_t a = 0; a < e.nodes.size(); ++a) {
      if (e.nodes[a] > e.nodes[b]) offset[b][a] = block_offset(neighbours, e.nodes[b], e.nodes[a]);
    }
  }

  const std::size_t freedoms = subscript(element_freedoms(e)), per_node = subscript(at_node);
  for (std::size_t j = 0; j < freedoms; ++j) {
    for (std::size_t i = j; i < freedoms; ++i) {
      map.position.push_back(PRESCRIBED);
      if (equation[i] == PRESCRIBED || equation[j] == PRESCRIBED) continue;
      const std::size_t column = equation[i] < equation[j] ? i : j, row = equation[i] < equation[j] ? j : i;
      const std::size_t b = column / per_node, a = row / per_node;
      std::int32_t below = rank[row] - rank[column];  // rows below the diagonal
      if (a != b) {
        const std::int32_t own = free_count[e.nodes[b]] - rank[column];
        below = own + offset[b][a] + rank[row];
      }
      map.position.back() = K.column_start[equation[column]] + below;
    }
  }
}

}  // namespace

std::int32_t scatter_map::position_within_node(const symmetric_matrix& K, std::size_t first, std::size_t second) const {
  const std::int32_t column = std::min(equation[first], equation[second]);
  const std::int32_t row = std::max(equation[first], equation[second]);
  return K.column_start[column] + (row - column);  // a node's equations follow each other
}

void add_to_diagonal(const scatter_map& map, double value, symmetric_matrix& K) {
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] != PRESCRIBED && map.leads_freedom(f)) K.value[K.column_start[map.equation[f]]] += value;
  }
}

scatter_map make_scatter_map(const model& m, const load_case& loads, symmetric_matrix& K) {
  scatter_map map;
  map.constraints = resolve_constraints(m, loads);
  number_equations(loads, map);
  find_tied_elements(m, loads, map);
  const numbered<int> free_count = free_counts(map.equation, m.nodes.size());
  const numbered<char> own_nodes = find_own_nodes(m, map);
  const higher_neighbours neighbours = find_neighbours(m, map, free_count);
  lay_out_pattern(m, neighbours, own_nodes, map, K);
  map.start.reserve(m.elements.size());
  std::size_t entries = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const auto freedoms = subscript(element_freedoms(m.elements[e]));
    if (is_own(m, e)) entries += freedoms * (freedoms + 1) / 2;
  }
  map.position.reserve(entries);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    map.start.push_back(map.position.size());
    if (is_own(m, e) && tied_part(map, e) == nullptr) map_element(m.elements[e], neighbours, free_count, K, map);
  }
  return map;
}

}  // namespace solver
