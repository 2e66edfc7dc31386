// flat_parts.cpp: joins shells by their nodes and compares their normals.
#include "elements/flat_parts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "elements/plate_axes.h"
#include "model/vectors.h"

namespace solver {

namespace {

// Normals that differ by less than this angle count as parallel: a curvature so slight gives the common rotation about
// the normal no more stiffness than rounding does.
constexpr double PARALLEL = 1e-4;

// Disjoint sets of nodes (Tarjan 1975), with paths halved on the way to the root.
class joined_nodes {
 public:
  explicit joined_nodes(std::size_t nodes) : parent_(nodes) { std::iota(parent_.begin(), parent_.end(), 0); }

  int root(int node) {
    while (parent(node) != node) {
      parent(node) = parent(parent(node));
      node = parent(node);
    }
    return node;
  }

  void join(int a, int b) { parent(root(a)) = root(b); }

 private:
  int& parent(int node) { return parent_[node]; }
  numbered<int> parent_;
};

struct part {
  bool seen = false, flat = true, tied = false;
  std::array<double, 3> normal{};
  std::vector<int> nodes;
};

void add_element(part& p, const model& m, const element& e) {
  p.tied = p.tied || is_tied(m, e);
  const vector3 n = row(plate_axes(m, e), 3);
  if (!p.seen) p.normal = n;
  p.seen = true;
  if (length_of(cross(n, p.normal)) > PARALLEL) p.flat = false;  // the sine of the angle between them
}

bool are_parallel(const flat_part& a, const flat_part& b) {
  return length_of(cross(a.normal, b.normal)) <= PARALLEL;  // the sine of the angle between them
}

}  // namespace

std::vector<flat_part> joined_by_conditions(const std::vector<flat_part>& parts,
                                            const std::vector<linear_constraint>& conditions, std::size_t nodes) {
  if (conditions.empty()) return parts;
  numbered<int> part_of(nodes, -1);
  for (std::size_t p = 0; p < parts.size(); ++p) {
    for (const int n : parts[p].nodes) part_of[n] = number_of(p);
  }
  joined_nodes joined(parts.size());
  for (const linear_constraint& condition : conditions) {
    int first = -1;
    for (const constraint_term& term : condition.terms) {
      const int p = part_of[term.node];
      if (term.dof < 4 || p < 0) continue;
      if (first < 0) first = p;
      if (are_parallel(parts[subscript(first)], parts[subscript(p)])) joined.join(first, p);
    }
  }
  std::vector<flat_part> result;
  numbered<int> place(parts.size(), -1);  // of a root, in the result
  for (int p = 0; p < count_of(parts); ++p) {
    int& at = place[joined.root(p)];
    if (at < 0) {
      at = count_of(result);
      result.push_back(parts[subscript(p)]);
      continue;
    }
    flat_part& whole = result[subscript(at)];
    whole.nodes.insert(whole.nodes.end(), parts[subscript(p)].nodes.begin(), parts[subscript(p)].nodes.end());
    whole.tied = whole.tied || parts[subscript(p)].tied;
  }
  for (flat_part& whole : result) std::sort(whole.nodes.begin(), whole.nodes.end());
  return result;
}

std::vector<flat_part> find_flat_parts(const model& m) {
  joined_nodes joined(m.nodes.size());
  for (const element& e : m.elements) {
    if (is_shell(e.type)) {
      for (const int n : e.nodes) joined.join(e.nodes.front(), n);
    }
  }

  numbered<part> parts(m.nodes.size());  // by root
  for (const element& e : m.elements) {
    if (is_shell(e.type)) add_element(parts[joined.root(e.nodes.front())], m, e);
  }
  for (int n = 0; n < count_of(m.nodes); ++n) parts[joined.root(n)].nodes.push_back(n);

  std::vector<flat_part> result;
  for (part& p : parts) {
    if (p.seen && p.flat) result.push_back({std::move(p.nodes), p.normal, p.tied});
  }
  return result;
}

}  // namespace solver
