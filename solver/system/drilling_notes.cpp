// drilling_notes.cpp: looks at the supports and loads of flat parts.
#include "system/drilling_notes.h"

#include <cmath>

#include "model/vectors.h"
#include "system/full_matrices.h"

namespace solver {

namespace {

using vector = vector3;

constexpr double ALONG = 1e-6;  // cosines below it count as zero

// What a support or a load of one node does to the sheet that it lies in.
struct hold {
  bool rotation = false;   // the rotation about the normal is prescribed
  double turned = 0;       // its value
  int translations = 0;    // independent directions in the plane that are prescribed
  double moment = 0;       // about the normal
  bool elsewhere = false;  // an element other than a shell joins the node, or a condition
};

vector unit(std::size_t i) {
  vector e{};
  e[i] = 1;
  return e;
}

// Two directions in the plane.
std::array<vector, 2> in_plane(const vector& normal) {
  std::size_t least = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::fabs(normal[i]) < std::fabs(normal[least])) least = i;
  }
  vector a = cross(normal, unit(least));
  const double length = norm(a);
  for (double& value : a) value /= length;
  return {a, cross(normal, a)};
}

// The prescribed translations of a node as rows of G G^T: displacement along each axis of the plane, and, at the arm r
// from the part's first node, under a turn about the normal.
Eigen::Matrix3d restraint(const flat_part& part, const load_case& loads, int node, const vector& r) {
  const std::array<vector, 2> axes = in_plane(part.normal);
  const vector turn = cross(part.normal, r);
  Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
  for (std::size_t i = 0; i < 3; ++i) {
    if (!loads.prescribed[freedom(node, number_of(i))]) continue;
    const Eigen::Vector3d row(axes[0][i], axes[1][i], turn[i]);
    sum += row * row.transpose();
  }
  return sum;
}

int rank(const Eigen::MatrixXd& gram) {
  const eigen_system modes = eigen_system_of(gram);
  // Squares of lever arms by the largest: an eigenvalue below it is the rounding of a sum that vanishes.
  constexpr double NONE = 1e-9;
  const double limit = NONE * std::fmax(1.0, modes.values.maxCoeff());
  return number_of((modes.values.array() > limit).count());
}

hold look_at(const flat_part& part, const load_case& loads, int node, bool elsewhere) {
  hold h;
  h.elsewhere = elsewhere;
  for (int i = 0; i < 3; ++i) {
    const double along = part.normal[subscript(i)];
    const std::size_t f = freedom(node, 3 + i);
    h.moment += along * loads.nodal_load[f];
    if (!loads.prescribed[f] || std::fabs(along) < ALONG) continue;
    h.rotation = true;
    h.turned += along * loads.prescribed_value[f];
  }
  h.translations = rank(restraint(part, loads, node, {}).topLeftCorner<2, 2>());
  return h;
}

// May the part turn in its plane, as far as prescribed translations go?
bool turns_freely(const model& m, const flat_part& part, const load_case& loads) {
  const auto& origin = m.nodes[part.nodes.front()].xyz;
  double size = 0;
  Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
  std::vector<vector> arms;
  for (const int n : part.nodes) {
    arms.push_back(difference(origin, m.nodes[n].xyz));
    size = std::fmax(size, norm(arms.back()));
  }
  for (std::size_t i = 0; i < arms.size(); ++i) {
    for (double& value : arms[i]) value /= size;
    sum += restraint(part, loads, part.nodes[i], arms[i]);
  }
  return rank(sum) == rank(sum.topLeftCorner<2, 2>());
}

// Is the sheet turned with the node, by an element with another node that is held in the plane?
numbered<char> turned_with_their_sheet(const model& m, const numbered<hold>& holds) {
  numbered<char> result(m.nodes.size(), 0);
  for (const element& e : m.elements) {
    if (!is_shell(e.type)) continue;
    int held = 0;
    for (const int n : e.nodes) held += holds[n].translations == 2 ? 1 : 0;
    for (const int n : e.nodes) {
      if (held > 1 && holds[n].translations == 2) result[n] = 1;
    }
  }
  return result;
}

std::string consequence(const flat_part& part) {
  return part.tied ? ": only its drilling stiffness answers, and the answer depends on the mesh"
                   : ": without DRILLING nothing of the plate follows it";
}

// The first node of a part that a note is due on; -1: none.
template <typename CONDITION>
int first_node(const flat_part& part, const numbered<hold>& holds, const CONDITION& due) {
  for (const int n : part.nodes) {
    if (!holds[n].elsewhere && due(holds[n], n)) return n;
  }
  return -1;
}

void note_part(const model& m, const flat_part& part, const load_case& loads, const numbered<hold>& holds,
               const numbered<char>& with_sheet, std::vector<std::string>& notes) {
  const int turned = first_node(part, holds, [&](const hold& h, int n) { return h.turned != 0 && with_sheet[n] == 0; });
  const int loaded = first_node(part, holds, [](const hold& h, int) { return h.moment != 0; });
  const int held = first_node(part, holds, [](const hold& h, int) { return h.rotation; });
  if (turned >= 0) {
    notes.push_back(node_name(m, turned) + " is turned about the normal of a flat part" + consequence(part));
  }
  if (loaded >= 0) {
    notes.push_back("a moment acts on " + node_name(m, loaded) + " about the normal of a flat part" +
                    consequence(part));
  }
  bool lone = held >= 0;
  for (const int n : part.nodes) lone = lone && !holds[n].elsewhere;
  if (lone && turns_freely(m, part, loads)) {
    notes.push_back("nothing but the rotation of " + node_name(m, held) +
                    " about its normal keeps a flat part from turning in its plane" + consequence(part));
  }
}

}  // namespace

std::vector<std::string> note_drilling(const model& m, const std::vector<flat_part>& parts, const load_case& loads) {
  std::vector<std::string> notes;
  if (parts.empty()) return notes;
  numbered<char> elsewhere(m.nodes.size(), 0);
  for (const element& e : m.elements) {
    if (!is_shell(e.type)) {
      for (const int n : e.nodes) elsewhere[n] = 1;
    }
  }
  for (int n = 0; n < count_of(m.nodes); ++n) {
    for (int d = 0; d < DIRECTIONS; ++d) {
      if (loads.has_condition(freedom(n, d))) elsewhere[n] = 1;
    }
  }
  numbered<hold> holds(m.nodes.size());
  for (const flat_part& part : parts) {
    for (const int n : part.nodes) holds[n] = look_at(part, loads, n, elsewhere[n] != 0);
  }
  const numbered<char> with_sheet = turned_with_their_sheet(m, holds);
  for (const flat_part& part : parts) note_part(m, part, loads, holds, with_sheet, notes);
  return notes;
}

}  // namespace solver
