// member_operations.cpp: the calls of the frame routines. Trusses have three degrees of freedom per end; their matrices
// are spread over the six of a node.
#include "elements/frame_calls.h"
#include "elements/member_group.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "model/vectors.h"

namespace solver {

namespace {

// The whole of a frame element's 12 by 12 matrix into the corner of the larger one.
void put(const MATRIX<12, 12>& from, element_matrix& to) {
  for (int j = 1; j <= 12; ++j) {
    for (int i = 1; i <= 12; ++i) to(i, j) = from(i, j);
  }
}

}  // namespace

// `T` other than the member's own: the identity gives the stiffness of the step in local axes.
member_group::stiffness_pair member_group::step_stiffness(std::size_t element, std::int32_t mode,
                                                          const MATRIX<12, 12>& T) {
  const std::int32_t elem = data_.number(element), I = data_.entry(element), n = data_.length();
  const double* const A = data_.values();
  const std::int32_t no_second_rotation = 0;
  stiffness_pair both;
  double *const K = both.K.V, *const KG = both.KG.V;
  MATRIX<6, 6> K6, KG6;
  switch (data_.at(element).type) {
    case element_type::B31:
    case element_type::B33: KSTIFB(&mode, &elem, &I, A, &n, T.V, &no_second_rotation, T.V, K, KG); break;
    case element_type::T3D2:
      KSTIFT(&mode, &elem, &I, A, &n, T.V, K6.V, KG6.V);
      spread(K6, both.K);
      spread(KG6, both.KG);
      break;
    case element_type::SPRINGA:
    case element_type::CONN3D2: KSTIF_LINK(&mode, &elem, &I, A, &n, T.V, K, KG); break;
    default: KSTIF_SPR(&mode, &elem, &I, A, &n, T.V, K, KG);
  }
  return both;
}

void member_group::stiffness(std::size_t element, element_matrix& K) {
  if (placement(element) != nullptr) {
    const MATRIX<12, 12> own = placed_stiffness(element, true).K;
    return put_released(element, own, own, K);
  }
  put(step_stiffness(element, MODE_STEP, axes(element)).K, K);
}

void member_group::geometric_stiffness(std::size_t element, element_matrix& G) {
  if (placement(element) != nullptr) {
    const stiffness_pair own = placed_stiffness(element, false);
    return put_released(element, own.K, own.KG, G);
  }
  MODEL_DATA A = data_.A();
  const double kind = A(SECOND_ORDER);
  A(SECOND_ORDER) = GEOMETRIC_APART;
  put(step_stiffness(element, MODE_STEP, axes(element)).KG, G);
  A(SECOND_ORDER) = kind;
}

void member_group::mass(std::size_t element, element_matrix& M) {
  const std::int32_t elem = data_.number(element), I = data_.entry(element), n = data_.length();
  const std::int32_t no_second_rotation = 0;
  const section_placement* const place = placement(element);
  static const MATRIX<12, 12> OWN_AXES = identity_of_twelve();
  const MATRIX<12, 12>& T = place != nullptr ? OWN_AXES : axes(element);
  MATRIX<12, 12> M12{};
  MATRIX<6, 6> M6;
  switch (data_.at(element).type) {
    case element_type::B31:
    case element_type::B33: KSTIFB_MASS(&elem, &I, data_.values(), &n, T.V, &no_second_rotation, T.V, M12.V); break;
    case element_type::T3D2:
      KSTIFT_MASS(&I, data_.values(), &n, T.V, M6.V);
      spread(M6, M12);
      break;
    default:  // springs and links have no mass
      break;
  }
  if (place != nullptr) {
    M12 = congruent(M12, motion_of_section(*place, across::CENTROID));
    return put_released(element, placed_stiffness(element, false).K, M12, M);
  }
  put(M12, M);
}

// In local axes: stiffness times displacements, and the forces that hold the loaded member at rest.
end_forces member_group::forces(std::size_t element, const element_vector& displacements,
                                const distributed_load& load) {
  if (placement(element) != nullptr) return placed_forces(element, displacements, load);
  const MATRIX<12, 12> K = step_stiffness(element, MODE_STEP, identity_of_twelve()).K;
  end_forces u{};
  add_product(axes(element), displacements.V, u.data());
  end_forces f = fixed_end_forces(element, load);
  add_product(K, u.data(), f.data());
  return f;
}

end_forces member_group::elastic_forces(std::size_t element, const end_forces& displacements,
                                        const distributed_load& load) {
  MODEL_DATA A = data_.A();
  const double kind = A(SECOND_ORDER);
  A(SECOND_ORDER) = 0;
  const MATRIX<12, 12> K = step_stiffness(element, MODE_STEP, identity_of_twelve()).K;
  A(SECOND_ORDER) = kind;
  end_forces f = fixed_end_forces(element, load);
  add_product(K, displacements.data(), f.data());
  return f;
}

double member_group::geometric_force(std::size_t element) {
  return data_.is_second_order() ? frames_.member(element).AXIAL_FORCE : 0;
}

// The pretension of a truss is in its stiffness from the start, as a string: the stored axial force, a mean of the two
// ends, is what has come to it.
void member_group::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  const end_forces f = forces(element, displacements, load);
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  const double before = load.increment ? 0 : section.pretension * section.area;
  // The mean along the member: of a load that rises along it, it lies above the mean of the ends.
  const double above = local_rise(element, load)[0] * frames_.length(element) / 12;
  frames_.member(element).AXIAL_FORCE = (f[6] - f[0]) / 2 + above - before;
}

void member_group::clear_state() {
  for (MEMBER_RECORD& record : frames_.members()) record.AXIAL_FORCE = 0;
}

}  // namespace solver
