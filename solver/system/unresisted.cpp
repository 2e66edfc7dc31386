// unresisted.cpp: finds the degrees of freedom without resistance and holds them.
#include "system/unresisted.h"

#include <algorithm>
#include <cmath>

#include "model/model_error.h"
#include "system/full_matrices.h"
#include "system/ranks.h"

namespace solver {

namespace {

// By what resists most: bars resist no rotation, membranes none and nothing across their plane, solids all translations
// and no rotation; the rest is for the user to hold.
enum class joined_by { NOTHING, BARS, MEMBRANES, SOLIDS, ROTATIONS };

joined_by joins(const model& m, const element& e) {
  switch (e.type) {
    case element_type::M3D3:
    case element_type::M3D4: return joined_by::MEMBRANES;
    case element_type::C3D4:
    case element_type::C3D6:
    case element_type::C3D8: return joined_by::SOLIDS;
    case element_type::MASS:
    case element_type::ROTARYI: return joined_by::NOTHING;  // no stiffness
    case element_type::T3D2:
    case element_type::SPRINGA: return joined_by::BARS;
    case element_type::SPRING1:
    case element_type::SPRING2: {
      const std::array<double, 6>& k = frame_section_of(m, e).stiffness;
      return k[3] != 0 || k[4] != 0 || k[5] != 0 ? joined_by::ROTATIONS : joined_by::BARS;
    }
    default: return joined_by::ROTATIONS;
  }
}

numbered<joined_by> classify_nodes(const model& m) {
  numbered<joined_by> nodes(m.nodes.size(), joined_by::NOTHING);
  for (const element& e : m.elements) {
    const joined_by by = joins(m, e);
    for (const int n : e.nodes) nodes[n] = std::max(nodes[n], by);
  }
  return nodes;
}

[[noreturn]] void mechanism(const model& m, const step& s, std::size_t node, const std::string& direction,
                            const std::string& why) {
  throw model_error(m, s, "*STEP",
                    "mechanism: " + node_name(m, number_of(node)) + " is loaded in " + direction + ", " + why);
}

[[noreturn]] void turned_in_vain(const model& m, const step& s, std::size_t node, const std::string& why) {
  throw model_error(m, s, "*BOUNDARY",
                    "a rotation is prescribed at " + node_name(m, number_of(node)) + ", " + why +
                        ": prescribe translations, or turn the reference node of a *RIGID BODY that holds the nodes");
}

// Holds the free directions first..5 of a node; returns how many.
int hold_at_node(const model& m, const step& s, std::size_t node, int first, const std::string& why, load_case& loads) {
  int held = 0;
  for (int d = first; d < DIRECTIONS; ++d) {
    const std::size_t f = freedom(node, d);
    if (loads.has_condition(f)) continue;
    if (loads.prescribed[f]) {
      if (first == 3 && loads.prescribed_value[f] != 0) turned_in_vain(m, s, node, why);
      continue;
    }
    if (loads.nodal_load[f] != 0) mechanism(m, s, node, direction_with_number(d), why);
    loads.prescribed[f] = 1;
    loads.prescribed_value[f] = 0;
    ++held;
  }
  return held;
}

// "1 node", "2 nodes".
std::string counted(int count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// What the loads of dependent degrees of freedom add to those of the independent ones.
std::vector<double> independent_forces(const scatter_map& map, const std::vector<double>& load) {
  const std::vector<double> right = by_equation(map, load);
  std::vector<double> result(load.size(), 0.0);
  for (std::size_t f = 0; f < load.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) result[f] = right[subscript(map.equation[f])];
  }
  return result;
}

double largest(const std::vector<double>& values) {
  double result = 0;
  for (const double value : values) result = std::fmax(result, std::fabs(value));
  return result;
}

// The largest membrane stiffness E h of the elements round each node: what its translations are measured against.
std::vector<double> membrane_scale(const model& m) {
  numbered<double> scale(m.nodes.size(), 0.0);
  for (const element& e : m.elements) {
    if (!is_plate(e.type)) continue;
    const shell_section& section = m.shell_sections[e.section];
    const material& mat = m.materials[section.material];
    for (const int n : e.nodes) scale[n] = std::fmax(scale[n], mat.E1 * section.thickness);
  }
  return scale;
}

// The free degrees of freedom among three directions of a node.
numbered<std::size_t> free_freedoms(const scatter_map& map, std::size_t node, int first) {
  numbered<std::size_t> result;
  for (int d = first; d < first + 3; ++d) {
    const std::size_t f = freedom(node, d);
    if (map.equation[f] != PRESCRIBED) result.push_back(f);
  }
  return result;
}

// The blocks of single nodes on the diagonal of a matrix, of the matrix of all processes if there are several: those of
// the nodes that are asked for are then added up at once.
class diagonal_blocks {
 public:
  diagonal_blocks(const scatter_map& map, const std::vector<std::size_t>& nodes, symmetric_matrix& K)
      : map_(map), K_(K) {
    if (rank_count() > 1) add_up(nodes);
  }

  Eigen::MatrixXd of(const numbered<std::size_t>& freedoms) const {
    const auto size = signed_index(freedoms.size());
    Eigen::MatrixXd block(size, size);
    for (Eigen::Index i = 0; i < size; ++i) {
      for (Eigen::Index j = 0; j < size; ++j) block(i, j) = entry(freedoms[i], freedoms[j]);
    }
    return block;
  }

  // K += stiffness w w^T on the given degrees of freedom of one node.
  void add_spring(const numbered<std::size_t>& freedoms, const Eigen::VectorXd& w, double stiffness) {
    for (std::size_t i = 0; i < freedoms.size(); ++i) {
      for (std::size_t j = 0; j <= i; ++j) {
        const double more = stiffness * w(signed_index(i)) * w(signed_index(j));
        if (map_.leads_freedom(freedoms[i])) {
          K_.value[map_.position_within_node(K_, freedoms[i], freedoms[j])] += more;
        }
        if (rank_count() == 1) continue;
        sum_[place(freedoms[i], freedoms[j])] += more;
        if (i != j) sum_[place(freedoms[j], freedoms[i])] += more;
      }
    }
  }

 private:
  double entry(std::size_t first, std::size_t second) const {
    if (rank_count() > 1) return sum_[place(first, second)];
    return K_.value[map_.position_within_node(K_, first, second)];
  }

  // Six by six for each node.
  std::size_t place(std::size_t first, std::size_t second) const {
    const std::size_t slot = subscript(slot_[first / DIRECTIONS]);
    return (slot * DIRECTIONS + first % DIRECTIONS) * DIRECTIONS + second % DIRECTIONS;
  }

  void add_up(const std::vector<std::size_t>& nodes) {
    slot_.assign(map_.equation.size() / DIRECTIONS, 0);
    for (std::size_t k = 0; k < nodes.size(); ++k) slot_[nodes[k]] = number_of(k);
    sum_.assign(nodes.size() * DIRECTIONS * DIRECTIONS, 0.0);
    for (const std::size_t n : nodes) {
      for (std::size_t first = freedom(n, 0); first < freedom(n + 1, 0); ++first) {
        for (std::size_t second = freedom(n, 0); second < freedom(n + 1, 0); ++second) {
          const std::int32_t row = map_.equation[first], column = map_.equation[second];
          if (row == PRESCRIBED || column == PRESCRIBED || K_.is_empty(subscript(row))) continue;
          sum_[place(first, second)] = K_.value[map_.position_within_node(K_, first, second)];
        }
      }
    }
    sum_over_ranks(sum_);
  }

  const scatter_map& map_;
  symmetric_matrix& K_;
  numbered<int> slot_;  // by node: which of those that were asked for
  std::vector<double> sum_;
};

// Against the membrane stiffness E h: what rounding leaves of a direction that no element resists, with a margin of
// some thousand units in the last place.
constexpr double NO_STIFFNESS = 1e-12;

// A stiffness matrix is positive semi-definite: a direction in which a node's own block has no stiffness has none
// towards any other node either. `first`: of the three directions. `nothing`: what counts as no stiffness.
int hold_directions(const model& m, const step& s, std::size_t node, int first, double nothing, double scale,
                    const std::string& why, const std::vector<double>& load, double tolerance, const scatter_map& map,
                    diagonal_blocks& blocks) {
  const numbered<std::size_t> freedoms = free_freedoms(map, node, first);
  if (freedoms.empty()) return 0;
  const eigen_system modes = eigen_system_of(blocks.of(freedoms));
  int held = 0;
  for (Eigen::Index i = 0; i < modes.values.size(); ++i) {
    if (std::fabs(modes.values(i)) > nothing) {
      continue;  // negative: compressed beyond what it carries
    }
    const Eigen::VectorXd direction = modes.vectors.col(i);
    double along = 0;
    Eigen::Index chief = 0;
    for (Eigen::Index j = 0; j < direction.size(); ++j) along += load[freedoms[j]] * direction(j);
    direction.cwiseAbs().maxCoeff(&chief);
    if (std::fabs(along) > tolerance) {
      mechanism(m, s, node, direction_with_number(number_of(freedoms[chief] % DIRECTIONS)), why);
    }
    blocks.add_spring(freedoms, direction, scale);
    ++held;
  }
  return held;
}

// Three directions of a node in conditions. Arms of a rigid body whose nodes lie on a line, to the digits of a deck,
// give the rotation about it no stiffness; nor do conditions give any to what they tie to nothing.
int hold_tied_directions(const model& m, const step& s, std::size_t node, int first, const load_case& loads,
                         const std::vector<double>& load, double tolerance, const scatter_map& map,
                         diagonal_blocks& blocks) {
  bool tied = false;
  for (int d = first; d < first + 3; ++d) tied = tied || loads.has_condition(freedom(node, d));
  const numbered<std::size_t> freedoms = free_freedoms(map, node, first);
  if (!tied || freedoms.empty()) return 0;
  constexpr double ON_A_LINE = 1e-10;  // squares of arms, by the largest
  const double stiffest = blocks.of(freedoms).diagonal().maxCoeff();
  return hold_directions(m, s, node, first, ON_A_LINE * stiffest, stiffest > 0 ? stiffest : 1,
                         "but neither an element nor a condition resists it", load, tolerance, map, blocks);
}

int hold_tied_node(const model& m, const step& s, std::size_t node, joined_by by, const load_case& loads,
                   const std::vector<double>& load, double tolerance, const scatter_map& map, diagonal_blocks& blocks) {
  int held = 0;
  if (by == joined_by::NOTHING) held += hold_tied_directions(m, s, node, 0, loads, load, tolerance, map, blocks);
  if (by != joined_by::ROTATIONS) held += hold_tied_directions(m, s, node, 3, loads, load, tolerance, map, blocks);
  return held;
}

// A direction with so small a cosine has no part in the rotation about the normal: it is the rounding of coordinates
// that a deck gives with some six digits.
constexpr double NO_PART = 1e-6;

// Do the conditions let the part turn alone about its normal, with no other node following?
bool turns_alone(const flat_part& part, const load_case& loads) {
  if (loads.conditions.empty()) return true;
  std::vector<double> u(loads.prescribed.size(), 0.0);
  for (const int n : part.nodes) {
    for (std::size_t i = 0; i < 3; ++i) u[freedom(n, 3 + i)] = part.normal[i];
  }
  for (const linear_constraint& condition : loads.conditions) {
    double sum = 0, size = 0;
    for (const constraint_term& term : condition.terms) {
      const double turn = term.factor * u[freedom(term.node, term.dof - 1)];
      sum += turn;
      size += std::fabs(turn);
    }
    if (std::fabs(sum) > NO_PART * size) return false;
  }
  return true;
}

// Does a prescribed rotation, a member or a condition keep the part from turning about its normal?
bool is_controlled(const flat_part& part, const load_case& loads, const numbered<char>& on_a_member) {
  if (!turns_alone(part, loads)) return true;
  for (const int n : part.nodes) {
    if (on_a_member[n]) return true;
  }
  for (const int n : part.nodes) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (loads.prescribed[freedom(n, 3 + i)] && std::fabs(part.normal[i]) > NO_PART) return true;
    }
  }
  return false;
}

// A node that turns by itself: the first without a condition.
std::size_t node_to_hold(const flat_part& part, const load_case& loads) {
  for (const int n : part.nodes) {
    bool tied = false;
    for (int d = 3; d < DIRECTIONS; ++d) tied = tied || loads.has_condition(freedom(n, d));
    if (!tied) return subscript(n);
  }
  return subscript(part.nodes.front());
}

void hold_drilling(const model& m, const step& s, const flat_part& part, const load_case& loads,
                   const std::vector<double>& load, double tolerance, const scatter_map& map, diagonal_blocks& blocks) {
  double moment = 0;
  std::size_t chief = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::fabs(part.normal[i]) > std::fabs(part.normal[chief])) chief = i;
    for (const int n : part.nodes) moment += load[freedom(n, 3 + i)] * part.normal[i];
  }
  const std::size_t node = node_to_hold(part, loads);
  if (std::fabs(moment) > tolerance) {
    mechanism(m, s, node, direction_with_number(number_of(3 + chief)),
              "about the normal of a flat part, whose drilling stiffness resists no common rotation");
  }
  const numbered<std::size_t> freedoms = free_freedoms(map, node, 3);
  Eigen::VectorXd normal(signed_index(freedoms.size()));
  for (std::size_t i = 0; i < freedoms.size(); ++i) normal(signed_index(i)) = part.normal[freedoms[i] % DIRECTIONS - 3];
  const double stiffness = normal.dot(blocks.of(freedoms) * normal);
  blocks.add_spring(freedoms, normal, stiffness);
}

// Of several processes: the nodes whose blocks hold_free_directions() may ask for.
std::vector<std::size_t> nodes_to_look_at(const numbered<joined_by>& nodes, const std::vector<flat_part>& parts,
                                          const load_case& loads) {
  if (rank_count() == 1) return {};
  numbered<char> wanted(nodes.size(), 0);
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    if (nodes[n] == joined_by::MEMBRANES) wanted[n] = 1;
    for (int d = 0; d < DIRECTIONS; ++d) {
      if (loads.has_condition(freedom(n, d))) wanted[n] = 1;
    }
  }
  for (const flat_part& part : parts) wanted[node_to_hold(part, loads)] = 1;
  std::vector<std::size_t> found;
  for (std::size_t n = 0; n < wanted.size(); ++n) {
    if (wanted[n] != 0) found.push_back(n);
  }
  return found;
}

}  // namespace

static bool is_in_condition(const load_case& loads, std::size_t node) {
  bool any = false;
  for (int d = 0; d < DIRECTIONS; ++d) any = any || loads.has_condition(freedom(node, d));
  return any;
}

std::vector<std::string> hold_meaningless_freedoms(const model& m, const step& s, load_case& loads) {
  const numbered<joined_by> nodes = classify_nodes(m);
  int lone = 0, in_conditions = 0, membranes = 0, bars = 0, solids = 0;
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    if (nodes[n] == joined_by::NOTHING) {
      const int count = hold_at_node(m, s, n, 0, "but no element with stiffness joins it", loads);
      is_in_condition(loads, n) ? in_conditions += count : lone += count > 0 ? 1 : 0;
    }
    if (nodes[n] == joined_by::MEMBRANES) {
      membranes += hold_at_node(m, s, n, 3, "but only membranes join it, which resist no rotation", loads);
    }
    if (nodes[n] == joined_by::BARS) {
      bars += hold_at_node(m, s, n, 3, "but only bars join it, which resist no rotation", loads);
    }
    if (nodes[n] == joined_by::SOLIDS) {
      solids += hold_at_node(m, s, n, 3, "but only solids join it, which resist no rotation", loads);
    }
  }
  std::vector<std::string> notes;
  if (lone > 0) notes.push_back("held " + counted(lone, "node") + " that no element with stiffness joins");
  if (in_conditions > 0) {
    notes.push_back("held " + std::to_string(in_conditions) + (in_conditions == 1 ? " degree" : " degrees") +
                    " of freedom that no condition names, of nodes that conditions alone join");
  }
  if (membranes > 0) notes.push_back("held " + counted(membranes, "rotation") + " of nodes that only membranes join");
  if (bars > 0) notes.push_back("held " + counted(bars, "rotation") + " of nodes that only bars join");
  if (solids > 0) notes.push_back("held " + counted(solids, "rotation") + " of nodes that only solids join");
  return notes;
}

std::vector<std::string> hold_free_directions(const model& m, const step& s, const std::vector<flat_part>& parts,
                                              const load_case& loads, const std::vector<double>& load,
                                              const scatter_map& map, symmetric_matrix& K) {
  const numbered<joined_by> nodes = classify_nodes(m);
  const std::vector<double> scale = membrane_scale(m);
  constexpr double UNLOADED = 1e-9;  // of the largest load: what its components leave in a direction by rounding
  const double tolerance = UNLOADED * largest(load);
  numbered<char> on_a_member(m.nodes.size(), 0);
  for (const element& e : m.elements) {
    if (!is_plate(e.type) && joins(m, e) == joined_by::ROTATIONS) {
      for (const int n : e.nodes) on_a_member[n] = 1;
    }
  }
  const std::vector<double> carried = loads.conditions.empty() ? load : independent_forces(map, load);
  const std::vector<flat_part> flat = joined_by_conditions(parts, loads.conditions, m.nodes.size());
  diagonal_blocks blocks(map, nodes_to_look_at(nodes, flat, loads), K);
  int translations = 0, drilling = 0, tied = 0;
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    if (nodes[n] == joined_by::MEMBRANES) {
      translations +=
          hold_directions(m, s, n, 0, NO_STIFFNESS * scale[n], scale[n],
                          "across flat membranes, which resist nothing there", carried, tolerance, map, blocks);
    }
    if (!loads.conditions.empty()) tied += hold_tied_node(m, s, n, nodes[n], loads, carried, tolerance, map, blocks);
  }
  for (const flat_part& part : flat) {
    if (part.tied || is_controlled(part, loads, on_a_member)) continue;
    hold_drilling(m, s, part, loads, load, tolerance, map, blocks);
    ++drilling;
  }
  std::vector<std::string> notes;
  if (translations > 0) notes.push_back("held " + counted(translations, "translation") + " across flat membranes");
  if (tied > 0) {
    notes.push_back("held " + counted(tied, "direction") + " of nodes in conditions, which nothing resists");
  }
  if (drilling > 0) notes.push_back("held the rotation about the normal of " + counted(drilling, "flat part"));
  return notes;
}

}  // namespace solver
