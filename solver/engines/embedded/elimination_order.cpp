// elimination_order.cpp: METIS on a graph of groups of equations.
//
// The equations of a node join the same others. Such groups are the vertices of the graph: for shells it has a sixth of
// the vertices and a thirty-sixth of the edges that the equations have, and a group stays together.
#include "engines/embedded/elimination_order.h"

#include <algorithm>

#include <metis.h>

namespace solver {

namespace {

constexpr std::size_t FEWEST_GROUPS = 500;  // below, what MUMPS chooses is as good

struct graph {
  std::vector<std::size_t> first;   // equation of each group, and behind the last one the number of equations
  std::vector<idx_t> start, other;  // the groups that group g touches: other[start[g]] to other[start[g + 1] - 1]
  std::vector<idx_t> size;          // equations of each group

  std::size_t groups() const { return size.size(); }
};

// Whether column j + 1 holds the rows of column j except the diagonal of j.
bool goes_on(const symmetric_matrix& K, std::size_t j) {
  const std::size_t begin = K.begin_of(j) + 1, middle = K.begin_of(j + 1), end = K.begin_of(j + 2);
  if (middle - begin != end - middle) return false;
  for (std::size_t p = begin, q = middle; p < middle; ++p, ++q) {
    if (K.row[p] != K.row[q]) return false;
  }
  return true;
}

std::vector<std::size_t> group_of_equations(const symmetric_matrix& K, graph& g) {
  std::vector<std::size_t> group(K.order());
  for (std::size_t j = 0; j < K.order(); ++j) {
    if (j == 0 || !goes_on(K, j - 1)) {
      g.first.push_back(j);
      g.size.push_back(0);
    }
    group[j] = g.groups() - 1;
    ++g.size.back();
  }
  g.first.push_back(K.order());
  return group;
}

// Calls visit(lower, higher) once for each pair of groups that touch. Rows ascend, and so do their groups.
template <class VISIT>
void for_each_pair(const symmetric_matrix& K, const graph& g, const std::vector<std::size_t>& group,
                   const VISIT& visit) {
  for (std::size_t a = 0; a < g.groups(); ++a) {
    std::size_t last = a;
    for (std::size_t p = K.begin_of(g.first[a]); p < K.begin_of(g.first[a] + 1); ++p) {
      const std::size_t b = group[subscript(K.row[p])];
      if (b != last) visit(a, b);
      last = b;
    }
  }
}

graph graph_of(const symmetric_matrix& K) {
  graph g;
  const std::vector<std::size_t> group = group_of_equations(K, g);
  g.start.assign(g.groups() + 1, 0);
  for_each_pair(K, g, group, [&](std::size_t a, std::size_t b) {
    ++g.start[a + 1];
    ++g.start[b + 1];
  });
  for (std::size_t a = 0; a < g.groups(); ++a) g.start[a + 1] += g.start[a];
  std::vector<idx_t> next(g.start.begin(), g.start.end() - 1);
  g.other.resize(subscript(g.start.back()));
  for_each_pair(K, g, group, [&](std::size_t a, std::size_t b) {
    g.other[subscript(next[a]++)] = number_of(b);
    g.other[subscript(next[b]++)] = number_of(a);
  });
  return g;
}

}  // namespace

std::vector<std::int32_t> elimination_order(const symmetric_matrix& K) {
  graph g = graph_of(K);
  if (g.groups() < FEWEST_GROUPS || g.other.empty()) return {};
  idx_t count = number_of(g.groups());
  std::vector<idx_t> group_at(g.groups()), place(g.groups());
  if (METIS_NodeND(&count, g.start.data(), g.other.data(), g.size.data(), nullptr, group_at.data(), place.data()) !=
      METIS_OK) {
    return {};
  }
  std::vector<std::int32_t> result(K.order());
  std::int32_t next = 0;
  for (const idx_t at : group_at) {
    const auto a = subscript(at);
    for (std::size_t j = g.first[a]; j < g.first[a + 1]; ++j) result[j] = next++;
  }
  return result;
}

}  // namespace solver
