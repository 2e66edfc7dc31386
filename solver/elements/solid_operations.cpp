// solid_operations.cpp: the calls of FINITES_SOLID_3D and of GET_ELEM3D. Solids have three freedoms a node.
#include <array>
#include <string_view>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/views.hpp"
#include "model/result_columns.h"

namespace solver {

namespace {

constexpr std::int32_t BODY_LOAD = 41;
constexpr std::size_t MESSAGE_LENGTH = 500;
using message = std::array<char, MESSAGE_LENGTH>;

// The library's own words, with the line of the deck in front. They name the element.
void check(const model& m, const element& e, std::int32_t error, const message& text) {
  if (error == 0) return;
  std::string_view words(text.data(), text.size());
  words = words.substr(0, words.find_last_not_of(' ') + 1);
  throw model_error(m, e, "*ELEMENT", std::string(words));
}

// The one point of a tetrahedron of four nodes weighs 1 in the library, where its volume has 1/6: what is integrated over
// the element, matrices and nodal forces, comes out six times too large. Stresses are not integrated.
constexpr double TETRAHEDRON_WEIGHT = 6;
constexpr std::size_t TETRAHEDRON_FREEDOMS = 12, ELEMENT_ORDER = 24;

void divide_by_weight(double* values, std::size_t count) {
  for (std::size_t i = 0; values != nullptr && i < count; ++i) values[i] /= TETRAHEDRON_WEIGHT;
}

int point_count(element_type type) { return type == element_type::C3D8 ? 8 : type == element_type::C3D6 ? 6 : 1; }

}  // namespace

// `load` and `forces` belong to the body load, `matrix` to the operations that give one: the others may be null.
void library_model::solid_operation(std::int32_t code, std::size_t element, const double* load, double* forces,
                                    double* matrix) {
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const auto entry = static_cast<std::int32_t>(layout_.element(element));
  const auto n = static_cast<std::int32_t>(model_data_.size());
  const auto nodes = static_cast<std::int32_t>(at(element).nodes.size());
  std::int32_t error = 0;
  message text{};
  FINITES_SOLID_3D(&code, &elem, &entry, model_data_.data(), &n, load, forces, &nodes, matrix, &error, text.data());
  check(model_, at(element), error, text);
  if (at(element).type != element_type::C3D4) return;
  divide_by_weight(forces, TETRAHEDRON_FREEDOMS);
  for (std::size_t column = 0; matrix != nullptr && column < TETRAHEDRON_FREEDOMS; ++column)
    divide_by_weight(matrix + column * ELEMENT_ORDER, TETRAHEDRON_FREEDOMS);
}

void library_model::solid_loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  if (!load.is_body()) return;
  element_vector part;
  solid_operation(BODY_LOAD, element, load.body.data(), part.V, nullptr);
  for (int i = 1; i <= 3 * static_cast<int>(at(element).nodes.size()); ++i) forces(i) += part(i);
}

solid_records library_model::solid_results(std::size_t element, const element_vector& displacements) {
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1, not_read = 0;
  const auto entry = static_cast<std::int32_t>(layout_.element(element));
  const auto n = static_cast<std::int32_t>(model_data_.size());
  const auto nodes = static_cast<std::int32_t>(at(element).nodes.size());
  solid_records answer{};
  answer.point_count = point_count(at(element).type);
  element_vector forces;
  std::int32_t error = 0;
  message text{};
  GET_ELEM3D(&elem, &entry, &not_read, model_data_.data(), &n, &nodes, answer.nodes.V, answer.points.V, displacements.V,
             forces.V, &error, text.data());
  check(model_, at(element), error, text);
  return answer;
}

MATRIX<3, 3> library_model::solid_axes(std::size_t element) {
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const auto n = static_cast<std::int32_t>(model_data_.size());
  std::int32_t nodes = 0;
  MATRIX<3, 3> axes;
  TRFA_3DSOLID(&elem, &nodes, model_data_.data(), &n, axes.V);
  return axes;
}

// The geometric stiffness rests on the stresses of the integration points, in element axes as results come.
void library_model::keep_solid_stresses(std::size_t element, const element_vector& displacements) {
  const solid_records records = solid_results(element, displacements);
  SOLID_NL_RECORD& state = solid_states_[static_cast<std::size_t>(solid_pos_[element] - 1)];
  for (int p = 1; p <= records.point_count; ++p)
    for (int i = 1; i <= 6; ++i) state.GAUSS_STRESS(i, p) = records.points(i, p);
}

}  // namespace solver
