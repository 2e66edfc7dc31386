// solid_operations.cpp: the calls of FINITES_SOLID_3D and of GET_ELEM3D. Solids have three degrees of freedom per node.
#include <array>
#include <string_view>

#include "elements/solid_group.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "model/model_error.h"

namespace solver {

namespace {

using message = std::array<char, MESSAGE_LENGTH>;

// The library's own words, with the line of the deck in front. They name the element.
void check(const model& m, const element& e, std::int32_t error, const message& text) {
  if (error == 0) return;
  std::string_view words(text.data(), text.size());
  words = words.substr(0, words.find_last_not_of(' ') + 1);
  throw model_error(m, e, "*ELEMENT", std::string(words));
}

// The one point of a tetrahedron of four nodes has the weight 1 in the library, where its volume has 1/6: what is
// integrated over the element, matrices and nodal forces, is six times too large. Stresses are not integrated.
constexpr double TETRAHEDRON_WEIGHT = 6;
constexpr std::size_t TETRAHEDRON_FREEDOMS = 12, ELEMENT_ORDER = 24;

void divide_by_weight(double* values, std::size_t count) {
  for (std::size_t i = 0; values != nullptr && i < count; ++i) values[i] /= TETRAHEDRON_WEIGHT;
}

int point_count(element_type type) { return type == element_type::C3D8 ? 8 : type == element_type::C3D6 ? 6 : 1; }

}  // namespace

// `load` and `forces` belong to the body load, `matrix` to the operations that give one: the others may be null.
void solid_group::operation(std::int32_t code, std::size_t element, const double* load, double* forces,
                            double* matrix) {
  const std::int32_t elem = data_.number(element), I = data_.entry(element), n = data_.length();
  const std::int32_t nodes = count_of(data_.at(element).nodes);
  std::int32_t error = 0;
  message text{};
  take(element);
  FINITES_SOLID_3D(&code, &elem, &I, data_.values(), &n, load, forces, &nodes, matrix, &error, text.data());
  check(data_.of(), data_.at(element), error, text);
  if (data_.at(element).type != element_type::C3D4) return;
  divide_by_weight(forces, TETRAHEDRON_FREEDOMS);
  for (std::size_t column = 0; matrix != nullptr && column < TETRAHEDRON_FREEDOMS; ++column) {
    divide_by_weight(matrix + column * ELEMENT_ORDER, TETRAHEDRON_FREEDOMS);
  }
}

void solid_group::stiffness(std::size_t element, element_matrix& K) {
  operation(OP_STIFFNESS, element, nullptr, nullptr, K.V);
}

void solid_group::mass(std::size_t element, element_matrix& M) { operation(OP_MASS, element, nullptr, nullptr, M.V); }

void solid_group::geometric_stiffness(std::size_t element, element_matrix& G) {
  operation(OP_GEOMETRIC_STORED, element, nullptr, nullptr, G.V);
}

void solid_group::loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  const int freedoms = 3 * count_of(data_.at(element).nodes);
  if (load.is_body()) {
    element_vector part;
    operation(OP_BODY_LOAD, element, load.body.data(), part.V, nullptr);
    for (int i = 1; i <= freedoms; ++i) forces(i) += part(i);
  }
  if (load.temperature_change == 0) return;
  const element_vector free = free_expansion(element, load);
  element_matrix K;
  elastic_stiffness(element, K);
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) forces(i) += K(i, j) * free(j);
  }
}

// Without the geometric stiffness of a state.
void solid_group::elastic_stiffness(std::size_t element, element_matrix& K) {
  const bool second_order = data_.is_second_order();
  if (second_order) data_.second_order(false);
  stiffness(element, K);
  if (second_order) data_.second_order(true);
}

// A heated solid that nothing holds grows alike in all directions, here about its first node: a uniform strain, which
// the elements reproduce exactly. The loads of the temperature are then K u, the stresses those of the displacements
// less u. An element knows its mean temperature: where it varies from node to node, the answer converges with the mesh.
element_vector solid_group::free_expansion(std::size_t element, const distributed_load& load) const {
  const model& m = data_.of();
  const auto& e = data_.at(element);
  const double strain = m.materials[material_of(m, e)].alpha1 * load.temperature_change;
  const std::array<double, 3>& centre = m.nodes[e.nodes.front()].xyz;
  element_vector u{};
  for (int n = 0; n < count_of(e.nodes); ++n) {
    for (int i = 0; i < 3; ++i) {
      u(3 * n + i + 1) = strain * (m.nodes[e.nodes[n]].xyz[subscript(i)] - centre[subscript(i)]);
    }
  }
  return u;
}

solid_records solid_group::results(std::size_t element, element_vector displacements, const distributed_load& load) {
  const std::int32_t elem = data_.number(element), I = data_.entry(element), n = data_.length(), not_read = 0;
  const std::int32_t nodes = count_of(data_.at(element).nodes);
  if (load.temperature_change != 0) {
    const element_vector free = free_expansion(element, load);
    for (int i = 1; i <= 3 * nodes; ++i) displacements(i) -= free(i);
  }
  solid_records answer{};
  answer.point_count = point_count(data_.at(element).type);
  element_vector forces;
  std::int32_t error = 0;
  message text{};
  take(element);
  GET_ELEM3D(&elem, &I, &not_read, data_.values(), &n, &nodes, answer.nodes.V, answer.points.V, displacements.V,
             forces.V, &error, text.data());
  check(data_.of(), data_.at(element), error, text);
  return answer;
}

MATRIX<3, 3> solid_group::axes(std::size_t element) {
  const std::int32_t elem = data_.number(element), n = data_.length();
  std::int32_t nodes = 0;
  MATRIX<3, 3> axes;
  take(element);
  TRFA_3DSOLID(&elem, &nodes, data_.values(), &n, axes.V);
  return axes;
}

// The geometric stiffness rests on the stresses of the integration points, in element axes as results come.
void solid_group::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  const solid_records records = results(element, displacements, load);
  MATRIX<6, 8>& stresses = stresses_[rank_[data_.place(element)]];
  for (int p = 1; p <= records.point_count; ++p) {
    for (int i = 1; i <= 6; ++i) stresses(i, p) = records.points(i, p);
  }
}

}  // namespace solver
