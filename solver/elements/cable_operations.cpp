// cable_operations.cpp: cables, whose forces depend on the position of their nodes.
//
// The displaced nodes have blocks of their own in MODEL_DATA, to which the entries of cables refer: everything else
// stays where the deck puts it.
#include <algorithm>
#include <string>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"

namespace solver {

namespace {

// Rows of a load case of a cable, from 0: load per unstressed length x, y, z; stress-free strain.
constexpr std::size_t LOAD_ROW = 6, STRAIN_ROW = 12;
constexpr std::int32_t ONLY_CASE = 1;

std::string trimmed(const char* text, std::size_t length) {
  while (length > 0 && (text[length - 1] == ' ' || text[length - 1] == '\0')) --length;
  return {text, length};
}

}  // namespace

void library_model::move_nodes(const std::vector<double>& displacements) {
  if (layout_.end == layout_.displaced_nodes) return;  // no cables
  MODEL_DATA A(model_data_.data());
  for (std::size_t n = 0; n < model_.nodes.size(); ++n)
    for (std::size_t i = 0; i < 3; ++i)
      A(static_cast<std::int64_t>(layout_.displaced_node(n) + NODE_X + i)) =
          model_.nodes[n].xyz[i] + displacements[DIRECTIONS * n + i];
}

void library_model::load_cable(std::size_t element, const distributed_load& load) {
  const frame_section& section = frame_section_of(model_, at(element));
  const material& mat = model_.materials[static_cast<std::size_t>(section.material)];
  std::array<double, 13>& rows = member_of(element).cable_load;
  rows.fill(0);
  for (std::size_t i = 0; i < 3; ++i) rows[LOAD_ROW + i] = load.line[i] + load.body[i] * section.area;
  rows[STRAIN_ROW] = mat.alpha1 * load.temperature_change;
  member_records_[position(element)].MEMBER_LOADS = REFER_TO(rows.data(), rows.size(), std::size_t{1});
}

void library_model::cable_tangent(std::size_t element, element_matrix& K) {
  const std::int32_t mode = MODE_STEP, elem = static_cast<std::int32_t>(element) + 1;
  const auto I = static_cast<std::int32_t>(layout_.element(element));
  const auto n = static_cast<std::int32_t>(model_data_.size());
  MATRIX<6, 6> tangent, geometric;
  std::int32_t failure = 0;
  char message[500];
  KSTIFT_CATENARY(&mode, &elem, &I, &ONLY_CASE, model_data_.data(), &n, member_of(element).T.V, tangent.V, geometric.V,
                  &failure, message);
  if (failure != 0)
    throw model_error(model_, at(element), "*ELEMENT",
                      "cable " + std::to_string(at(element).id) + ": " + trimmed(message, sizeof message));
  K = element_matrix{};
  const auto place = [](int i) { return i <= 3 ? i : i + 3; };
  for (int j = 1; j <= 6; ++j)
    for (int i = 1; i <= 6; ++i) K(place(i), place(j)) = tangent(i, j);
}

void library_model::cable_forces(std::size_t element, element_vector& forces) {
  MODEL_DATA A(model_data_.data());
  const auto I = static_cast<std::int64_t>(layout_.element(element));
  const auto S = A.INTEGER(I + MEMBER_SECTION), M = A.INTEGER(I + MEMBER_MATERIAL);
  const std::int32_t id = at(element).id;
  const std::array<double, 13>& rows = member_of(element).cable_load;
  double F[6] = {}, tension1 = 0, tension2 = 0;
  std::int32_t status = 0;
  CASE_1_L_0_3D2(&id, &A(A.INTEGER(I + MEMBER_NODE_1) + NODE_X), &A(A.INTEGER(I + MEMBER_NODE_2) + NODE_X),
                 &A(S + SECTION_AREA), &A(M + MEMBER_E1), &A(I + UNSTRESSED_LENGTH), &rows[STRAIN_ROW], &rows[LOAD_ROW],
                 F, &tension1, &tension2, &status);
  if (status != 0)
    throw model_error(model_, at(element), "*ELEMENT",
                      "cable " + std::to_string(id) + " finds no equilibrium, status " + std::to_string(status));
  forces = element_vector{};
  for (int i = 1; i <= 3; ++i) {
    forces(i) = F[i - 1];
    forces(i + 6) = F[i + 2];
  }
}

end_forces library_model::local_cable_forces(std::size_t element) {
  element_vector global;
  cable_forces(element, global);
  const MATRIX<12, 12>& T = member_of(element).T;
  end_forces f{};
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j) f[static_cast<std::size_t>(i - 1)] += T(i, j) * global(j);
  return f;
}

}  // namespace solver
