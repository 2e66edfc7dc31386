// mass_group.cpp: the mass matrix of a point.
#include "elements/mass_group.h"

#include "model/model_error.h"

namespace solver {

namespace {

void clear_corner(element_matrix& A) {
  for (int j = 1; j <= DIRECTIONS; ++j) {
    for (int i = 1; i <= DIRECTIONS; ++i) A(i, j) = 0;
  }
}

}  // namespace

void mass_group::add(std::size_t e) {
  const element& elem = model_.elements[e];
  if (elem.section >= 0 && elem.section < count_of(model_.point_masses)) return;
  throw model_error(model_, elem, "*ELEMENT", "element " + std::to_string(elem.id) + " has no mass");
}

void mass_group::stiffness(std::size_t, element_matrix& K) { clear_corner(K); }
void mass_group::geometric_stiffness(std::size_t, element_matrix& G) { clear_corner(G); }
void mass_group::loads(std::size_t, const distributed_load&, element_vector&) {}
void mass_group::keep_state(std::size_t, const element_vector&, const distributed_load&) {}

void mass_group::mass(std::size_t e, element_matrix& M) {
  clear_corner(M);
  const point_mass& p = model_.point_masses[model_.elements[e].section];
  for (int i = 1; i <= 3; ++i) M(i, i) = p.mass;
  const std::array<double, 6>& I = p.inertia;
  for (int i = 0; i < 3; ++i) M(4 + i, 4 + i) = I[subscript(i)];
  M(4, 5) = M(5, 4) = I[3];
  M(4, 6) = M(6, 4) = I[4];
  M(5, 6) = M(6, 5) = I[5];
}

}  // namespace solver
