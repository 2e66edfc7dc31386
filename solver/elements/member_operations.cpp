// member_operations.cpp: the calls of the frame routines. Trusses have three freedoms an end; their matrices are spread
// over the six of a node.
#include <cstring>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/views.hpp"

namespace solver {

namespace {

void spread(const MATRIX<6, 6>& from, MATRIX<12, 12>& to) {
  to = MATRIX<12, 12>{};
  const auto place = [](int i) { return i <= 3 ? i : i + 3; };
  for (int j = 1; j <= 6; ++j)
    for (int i = 1; i <= 6; ++i) to(place(i), place(j)) = from(i, j);
}

MATRIX<12, 12> identity() {
  MATRIX<12, 12> one{};
  for (int i = 1; i <= 12; ++i) one(i, i) = 1;
  return one;
}

}  // namespace

// `T` other than the member's own: the identity gives the stiffness of the step in local axes.
void library_model::member_stiffness(std::size_t element, std::int32_t mode, const MATRIX<12, 12>& T, MATRIX<12, 12>& K,
                                     MATRIX<12, 12>& KG) {
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const auto I = static_cast<std::int32_t>(layout_.element(element));
  const auto n = static_cast<std::int32_t>(model_data_.size());
  const double* const A = model_data_.data();
  const std::int32_t no_second_rotation = 0;
  MATRIX<6, 6> K6, KG6;
  switch (at(element).type) {
    case element_type::B31:
    case element_type::B33: KSTIFB(&mode, &elem, &I, A, &n, T.V, &no_second_rotation, T.V, K.V, KG.V); break;
    case element_type::T3D2:
      KSTIFT(&mode, &elem, &I, A, &n, T.V, K6.V, KG6.V);
      spread(K6, K);
      spread(KG6, KG);
      break;
    case element_type::SPRINGA:
    case element_type::CONN3D2: KSTIF_LINK(&mode, &elem, &I, A, &n, T.V, K.V, KG.V); break;
    default: KSTIF_SPR(&mode, &elem, &I, A, &n, T.V, K.V, KG.V);
  }
}

void library_model::member_mass(std::size_t element, MATRIX<12, 12>& M) {
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const auto I = static_cast<std::int32_t>(layout_.element(element));
  const auto n = static_cast<std::int32_t>(model_data_.size());
  const std::int32_t no_second_rotation = 0;
  const MATRIX<12, 12>& T = member_of(element).T;
  MATRIX<6, 6> M6;
  M = MATRIX<12, 12>{};
  switch (at(element).type) {
    case element_type::B31:
    case element_type::B33: KSTIFB_MASS(&elem, &I, model_data_.data(), &n, T.V, &no_second_rotation, T.V, M.V); break;
    case element_type::T3D2:
      KSTIFT_MASS(&I, model_data_.data(), &n, T.V, M6.V);
      spread(M6, M);
      break;
    default:  // springs and links have no mass
      break;
  }
}

// In local axes: stiffness times displacements, and the forces that hold the loaded member at rest.
end_forces library_model::member_forces(std::size_t element, const element_vector& displacements,
                                        const distributed_load& load) {
  const MATRIX<12, 12>& T = member_of(element).T;
  if (is_cable(model_, at(element))) return local_cable_forces(element);
  MATRIX<12, 12> K, KG;
  member_stiffness(element, MODE_STEP, identity(), K, KG);
  VECTOR<12> u{};
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j) u(i) += T(i, j) * displacements(j);
  end_forces f = fixed_end_forces(element, load);
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j) f[static_cast<std::size_t>(i - 1)] += K(i, j) * u(j);
  return f;
}

end_forces library_model::elastic_forces(std::size_t element, const end_forces& displacements,
                                         const distributed_load& load) {
  MODEL_DATA A(model_data_.data());
  const double kind = A(SECOND_ORDER);
  A(SECOND_ORDER) = 0;
  MATRIX<12, 12> K, KG;
  member_stiffness(element, MODE_STEP, identity(), K, KG);
  A(SECOND_ORDER) = kind;
  end_forces f = fixed_end_forces(element, load);
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j)
      f[static_cast<std::size_t>(i - 1)] += K(i, j) * displacements[static_cast<std::size_t>(j - 1)];
  return f;
}

double library_model::geometric_force(std::size_t element) {
  MODEL_DATA A(model_data_.data());
  return A(SECOND_ORDER) == GEOMETRIC_ADDED ? axial_force(element) : 0;
}

double library_model::axial_force(std::size_t element) const { return member_records_[position(element)].AXIAL_FORCE; }

}  // namespace solver
