// cable_operations.cpp: the calls of the cable library.
#include <string>

#include "elements/cable_group.h"
#include "elements/frame_calls.h"
#include "elements/member_axes.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

// Rows of a load case of a cable, from 0: load per unstressed length x, y, z; stress-free strain.
constexpr std::int32_t ONLY_CASE = 1;

std::string trimmed(const char* text, std::size_t length) {
  while (length > 0 && (text[length - 1] == ' ' || text[length - 1] == '\0')) --length;
  return {text, length};
}

}  // namespace

cable_group::cable_group(library_data& data, frame_records& frames)
    : data_(data), frames_(frames), rows_(frames.members().size()) {}

void cable_group::add(std::size_t element) {
  const double unstressed = cable_length(data_.of(), data_.at(element));
  frames_.add(element, unstressed, node_blocks::DISPLACED);
  data_.A()(data_.entry(element) + UNSTRESSED_LENGTH) = unstressed;
}

void cable_group::move_nodes(const std::vector<double>& displacements) {
  const library_layout& layout = data_.layout();
  if (layout.end == layout.displaced_nodes) return;  // no cables
  const model& m = data_.of();
  MODEL_DATA A = data_.A();
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    if (!data_.holds_node(n)) continue;
    const double* const moved = displacements.data() + DIRECTIONS * n;
    const std::int32_t block = data_.displaced_node(number_of(n)) + NODE_X;
    for (int i = 0; i < 3; ++i) A(block + i) = m.nodes[n].xyz[subscript(i)] + moved[i];
  }
}

void cable_group::load(std::size_t element, const distributed_load& load) {
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  const material& mat = data_.of().materials[section.material];
  std::array<double, LOAD_ROW_STRAIN>& rows = rows_[frames_.position(element)];
  rows.fill(0);
  for (std::size_t i = 0; i < 3; ++i) rows[LOAD_ROW_X - 1 + i] = load.line[i] + load.body[i] * section.area;
  rows[LOAD_ROW_STRAIN - 1] = mat.alpha1 * load.temperature_change;
  frames_.member(element).MEMBER_LOADS = REFER_TO(rows.data(), rows.size(), std::size_t{1});
}

void cable_group::stiffness(std::size_t element, element_matrix& K) {
  const std::int32_t mode = MODE_STEP, elem = data_.number(element), I = data_.entry(element);
  const std::int32_t n = data_.length();
  MATRIX<6, 6> tangent, geometric;
  std::int32_t failure = 0;
  char message[MESSAGE_LENGTH];
  KSTIFT_CATENARY(&mode, &elem, &I, &ONLY_CASE, data_.values(), &n, frames_.axes(element).V, tangent.V, geometric.V,
                  &failure, message);
  const auto& cable = data_.at(element);
  if (failure != 0) {
    throw model_error(data_.of(), cable, "*ELEMENT",
                      "cable " + std::to_string(cable.id) + ": " + trimmed(message, sizeof message));
  }
  spread(tangent, K);
}

void cable_group::mass(std::size_t element, element_matrix& M) {
  const std::int32_t I = data_.entry(element), n = data_.length();
  MATRIX<6, 6> M6;
  KSTIFT_MASS(&I, data_.values(), &n, frames_.axes(element).V, M6.V);
  spread(M6, M);
}

void cable_group::geometric_stiffness(std::size_t /*element*/, element_matrix& G) { G = element_matrix{}; }
void cable_group::loads(std::size_t /*element*/, const distributed_load& /*load*/, element_vector& /*forces*/) {}
void cable_group::keep_state(std::size_t /*element*/, const element_vector& /*displacements*/,
                             const distributed_load& /*load*/) {}
void cable_group::clear_state() {}

void cable_group::forces(std::size_t element, element_vector& forces) {
  MODEL_DATA A = data_.A();
  const std::int32_t I = data_.entry(element), id = data_.at(element).id;
  const std::int32_t S = A.INTEGER(I + MEMBER_SECTION), M = A.INTEGER(I + MEMBER_MATERIAL);
  const std::array<double, LOAD_ROW_STRAIN>& rows = rows_[frames_.position(element)];
  double F[6] = {}, tension1 = 0, tension2 = 0;
  std::int32_t status = 0;
  CASE_1_L_0_3D2(&id, &A(A.INTEGER(I + MEMBER_NODE_1) + NODE_X), &A(A.INTEGER(I + MEMBER_NODE_2) + NODE_X),
                 &A(S + SECTION_AREA), &A(M + MEMBER_E1), &A(I + UNSTRESSED_LENGTH), &rows[LOAD_ROW_STRAIN - 1],
                 &rows[LOAD_ROW_X - 1], F, &tension1, &tension2, &status);
  if (status != 0) {
    throw model_error(data_.of(), data_.at(element), "*ELEMENT",
                      "cable " + std::to_string(id) + " finds no equilibrium, status " + std::to_string(status));
  }
  forces = element_vector{};
  for (int i = 1; i <= 6; ++i) forces(place_of_translation(i)) = F[i - 1];
}

end_forces cable_group::local_forces(std::size_t element) {
  element_vector global;
  forces(element, global);
  end_forces f{};
  add_product(frames_.axes(element), global.V, f.data());
  return f;
}

}  // namespace solver
