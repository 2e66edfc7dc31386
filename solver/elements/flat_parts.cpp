// flat_parts.cpp: joins shells by their nodes and compares their normals.
#include "elements/flat_parts.h"

#include <cmath>
#include <cstddef>
#include <numeric>

#include "elements/library_model.h"

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
  int& parent(int node) { return parent_[static_cast<std::size_t>(node)]; }
  std::vector<int> parent_;
};

struct part {
  bool seen = false, flat = true, tied = false;
  std::array<double, 3> normal{};
  std::vector<int> nodes;
};

void add_element(part& p, const model& m, const element& e) {
  const MATRIX<3, 3> axes = plate_axes(m, e);
  p.tied = p.tied || is_tied(m, e);
  const std::array<double, 3> n{axes(3, 1), axes(3, 2), axes(3, 3)};
  if (!p.seen) p.normal = n;
  p.seen = true;
  const double sine = std::hypot(n[1] * p.normal[2] - n[2] * p.normal[1], n[2] * p.normal[0] - n[0] * p.normal[2],
                                 n[0] * p.normal[1] - n[1] * p.normal[0]);
  if (sine > PARALLEL) p.flat = false;
}

}  // namespace

std::vector<flat_part> find_flat_parts(const model& m) {
  joined_nodes joined(m.nodes.size());
  for (const element& e : m.elements)
    if (is_shell(e.type))
      for (const int n : e.nodes) joined.join(e.nodes.front(), n);

  std::vector<part> parts(m.nodes.size());  // by root
  for (const element& e : m.elements)
    if (is_shell(e.type)) add_element(parts[static_cast<std::size_t>(joined.root(e.nodes.front()))], m, e);
  for (std::size_t n = 0; n < m.nodes.size(); ++n)
    parts[static_cast<std::size_t>(joined.root(static_cast<int>(n)))].nodes.push_back(static_cast<int>(n));

  std::vector<flat_part> result;
  for (part& p : parts)
    if (p.seen && p.flat) result.push_back({std::move(p.nodes), p.normal, p.tied});
  return result;
}

}  // namespace solver
