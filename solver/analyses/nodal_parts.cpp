// nodal_parts.cpp: which elements go on smoothly at a node, and the average over them.
#include "analyses/nodal_parts.h"

#include <cmath>

#include "elements/material_axes.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "model/result_columns.h"
#include "model/vectors.h"

namespace solver {

namespace {

// Normals agree within 30 degrees: a coarse mesh of a curved surface stays one part, a folded plate does not.
constexpr double AGREE = 0.8660254037844386;

using vector = vector3;

vector unit(const vector& v) {
  const double size = norm(v);
  return {v[0] / size, v[1] / size, v[2] / size};
}

// The projection of a global axis on the surface.
vector projected(std::size_t axis, const vector& normal) {
  vector v{};
  v[axis] = 1;
  for (std::size_t i = 0; i < 3; ++i) v[i] -= normal[axis] * normal[i];
  return v;
}

// Completes a frame whose third row holds the sum of the normals.
void complete_frame(MATRIX<3, 3>& axes) {
  const vector n = unit(row(axes, 3)), x = projected(0, n);
  const vector first = unit(norm(x) > ALONG_NORMAL ? x : projected(2, n));
  axes = matrix_of_rows(first, unit(cross(n, first)), n);
}

template <std::size_t COUNT>
void add_to(std::array<double, COUNT>& sum, const std::array<double, COUNT>& values) {
  for (std::size_t i = 0; i < COUNT; ++i) sum[i] += values[i];
}

}  // namespace

void complete(std::array<surface_stress, SURFACES>& at, const std::array<double, 2>& shear) {
  std::array<double, RES100_LENGTH + 1> record{};  // numbered from 1
  for (std::size_t s = 0; s < SURFACES; ++s) {
    for (std::size_t i = 0; i < 3; ++i) record[subscript(RECOMPUTED_STRESS[s]) + i] = at[s].stress[i];
  }
  for (std::size_t i = 0; i < 2; ++i) record[subscript(RES100_SHEAR_STRESS) + i] = shear[i];
  UPDATE_PRINCIPAUX_RES100_PLA_DBL(record.data() + 1);
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const auto principal = subscript(RECOMPUTED_PRINCIPAL[s]);
    at[s].angle = record[principal];
    at[s].first = record[principal + 1];
    at[s].second = record[principal + 2];
    at[s].equivalent = record[subscript(RECOMPUTED_EQUIVALENT[s])];
  }
}

nodal_average::nodal_average(const model& m) : of_node_(m.nodes.size()) {
  for (const element& e : m.elements) {
    first_corner_.push_back(of_corner_.size());
    if (!is_plate(e.type)) continue;
    const MATRIX<3, 3> axes = plate_axes(m, e);
    const int section = section_of_deck(m.shell_sections, e.section);
    for (const int n : e.nodes) of_corner_.push_back(part_of(m, n, section, axes));
  }
  for (nodal_part& part : parts_) complete_frame(part.axes);
}

// While parts are gathered, row 1 of a part's axes keeps the normal of its first element, row 3 the sum of all.
std::size_t nodal_average::part_of(const model& m, int node, int section, const MATRIX<3, 3>& axes) {
  std::vector<std::size_t>& here = of_node_[node];
  const vector normal = row(axes, 3);
  for (const std::size_t p : here) {
    nodal_part& part = parts_[p];
    if (part.section != section || dot(row(part.axes, 1), normal) < AGREE) continue;
    for (int i = 1; i <= 3; ++i) part.axes(3, i) += axes(3, i);
    ++part.elements;
    return p;
  }
  nodal_part part;
  part.node = node;
  part.section = section;
  part.elements = 1;
  for (int i = 1; i <= 3; ++i) part.axes(1, i) = part.axes(3, i) = axes(3, i);
  if (parts_.empty()) parts_.reserve(m.nodes.size());
  parts_.push_back(part);
  here.push_back(parts_.size() - 1);
  return parts_.size() - 1;
}

void nodal_average::add(std::size_t element, const MATRIX<3, 3>& axes, const double* nodes) {
  const std::size_t last = element + 1 < first_corner_.size() ? first_corner_[element + 1] : of_corner_.size();
  for (std::size_t corner = first_corner_[element]; corner < last; ++corner, nodes += RES_LENGTH) {
    nodal_part& part = parts_[of_corner_[corner]];
    const plane_rotation to_part(axes, part.axes);
    for (std::size_t s = 0; s < SURFACES; ++s) add_to(part.at[s].stress, to_part.tensor(nodes + STRESS_COLUMN[s] - 1));
    add_to(part.shear, to_part.vector(nodes + COL_SHEAR_STRESS - 1));
  }
}

std::vector<nodal_part> nodal_average::finish() {
  std::vector<nodal_part> result;
  result.reserve(parts_.size());
  for (const std::vector<std::size_t>& here : of_node_) {
    for (const std::size_t p : here) {
      nodal_part part = parts_[p];
      for (surface_stress& at : part.at) {
        for (double& value : at.stress) value /= part.elements;
      }
      for (double& value : part.shear) value /= part.elements;
      complete(part.at, part.shear);
      result.push_back(part);
    }
  }
  return result;
}

}  // namespace solver
