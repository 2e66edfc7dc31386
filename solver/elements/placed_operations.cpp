// placed_operations.cpp: beams whose section lies off the line of their nodes (section_place.h). The library answers in
// the section's own axes, with rigid ends; releases are condensed at the nodes, where the deck has them.
#include "elements/frame_calls.h"
#include "elements/member_group.h"
#include "finites/fields.h"
#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

vector3 local(const MATRIX<12, 12>& T, const vector3& global, double factor) {
  vector3 q{};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) q[subscript(i - 1)] += T(i, j) * global[subscript(j - 1)] * factor;
  }
  return q;
}

}  // namespace

const section_placement* member_group::placement(std::size_t element) const {
  const element_type type = data_.at(element).type;
  if (!is_beam(type)) return nullptr;
  const section_placement& place = frame_section_of(data_.of(), data_.at(element)).place;
  return is_placed(place) ? &place : nullptr;
}

member_group::stiffness_pair member_group::placed_stiffness(std::size_t element, bool with_geometric) {
  const section_placement& place = *placement(element);
  MODEL_DATA A = data_.A();
  const double kind = A(SECOND_ORDER);
  A(SECOND_ORDER) = GEOMETRIC_APART;
  stiffness_pair both = step_stiffness(element, MODE_STEP, identity_of_twelve());
  A(SECOND_ORDER) = kind;
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  add_twist(section, frames_.member(element).AXIAL_FORCE / frames_.length(element), both.KG);
  const MATRIX<12, 12> P = motion_of_section(place, across::SHEAR_CENTRE);
  both.K = congruent(both.K, P);
  both.KG = congruent(both.KG, P);
  if (with_geometric && data_.is_second_order()) {
    for (int i = 0; i < 144; ++i) both.K.V[i] += both.KG.V[i];
  }
  return both;
}

released_beam member_group::released(std::size_t element, const MATRIX<12, 12>& K, const end_forces& f) const {
  released_beam r;
  if (!release(ends_of(data_.of(), data_.at(element)), K, f, r)) {
    throw model_error(
        data_.of(), data_.at(element), "*ELEMENT",
        "the releases of element " + std::to_string(data_.at(element).id) + " leave it a motion that nothing resists");
  }
  return r;
}

void member_group::put_released(std::size_t element, const MATRIX<12, 12>& K, const MATRIX<12, 12>& A,
                                element_matrix& to) {
  const bool free = has_releases(ends_of(data_.of(), data_.at(element)));
  const MATRIX<12, 12> own = free ? congruent(A, released(element, K, {}).C) : A;
  const MATRIX<12, 12> global = congruent(own, axes(element));
  for (int j = 1; j <= 12; ++j) {
    for (int i = 1; i <= 12; ++i) to(i, j) = global(i, j);
  }
}

section_load member_group::load_on_placed(std::size_t element, const distributed_load& load) const {
  const MATRIX<12, 12>& T = axes(element);
  const double area = frame_section_of(data_.of(), data_.at(element)).area;
  return load_on_section(*placement(element), local(T, load.line, 1), local(T, load.body, area));
}

end_forces member_group::placed_fixed_in_section(std::size_t element, const distributed_load& load) {
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  const material& mat = data_.of().materials[section.material];
  const section_load q = load_on_placed(element, load);
  const double push = mat.E1 * section.area * mat.alpha1 * load.temperature_change;
  end_forces f = hold(section, mat, frames_.length(element), member_ends{}, q.force, {}, push);
  f[3] -= q.torque * frames_.length(element) / 2;
  f[9] -= q.torque * frames_.length(element) / 2;
  return f;
}

end_forces member_group::placed_fixed_forces(std::size_t element, const distributed_load& load) {
  const MATRIX<12, 12> P = motion_of_section(*placement(element), across::SHEAR_CENTRE);
  const end_forces f = turned_back(P, placed_fixed_in_section(element, load));
  if (!has_releases(ends_of(data_.of(), data_.at(element)))) return f;
  return turned_back(released(element, placed_stiffness(element, true).K, f).C, f);
}

end_forces member_group::end_displacements(std::size_t element, const element_vector& displacements,
                                           const distributed_load& load) {
  end_forces u{};
  add_product(axes(element), displacements.V, u.data());
  if (!has_releases(ends_of(data_.of(), data_.at(element)))) return u;
  const MATRIX<12, 12> P = motion_of_section(*placement(element), across::SHEAR_CENTRE);
  const end_forces f = turned_back(P, placed_fixed_in_section(element, load));
  const released_beam r = released(element, placed_stiffness(element, true).K, f);
  end_forces ends = r.free;
  add_product(r.C, u.data(), ends.data());
  return ends;
}

end_forces member_group::placed_forces(std::size_t element, const element_vector& displacements,
                                       const distributed_load& load) {
  const MATRIX<12, 12> P = motion_of_section(*placement(element), across::SHEAR_CENTRE);
  const end_forces u = end_displacements(element, displacements, load);
  end_forces f = turned_back(P, placed_fixed_in_section(element, load));
  add_product(placed_stiffness(element, true).K, u.data(), f.data());
  if (!has_releases(ends_of(data_.of(), data_.at(element)))) return f;
  return turned_back(released(element, placed_stiffness(element, true).K, {}).C, f);
}

end_forces member_group::placed_elastic_forces(std::size_t element, const end_forces& displacements,
                                               const distributed_load& load) {
  MODEL_DATA A = data_.A();
  const double kind = A(SECOND_ORDER);
  A(SECOND_ORDER) = 0;
  const MATRIX<12, 12> K = step_stiffness(element, MODE_STEP, identity_of_twelve()).K;
  A(SECOND_ORDER) = kind;
  end_forces f = placed_fixed_in_section(element, load);
  add_product(K, displacements.data(), f.data());
  return f;
}

void member_group::lumped_mass(std::size_t element, element_matrix& M) {
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  const double half = data_.of().materials[section.material].density * section.area * frames_.length(element) / 2;
  MATRIX<12, 12> M12{};
  for (const int d : {1, 2, 3, 7, 8, 9}) M12(d, d) = half;
  M12 = congruent(M12, motion_of_section(*placement(element), across::CENTROID));
  put_released(element, placed_stiffness(element, false).K, M12, M);
}

}  // namespace solver
