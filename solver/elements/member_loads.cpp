// member_loads.cpp: nodal forces of loads on members, consistent with the connections at their ends.
//
// A member whose nodes do not move is a beam on rotational springs. With r the fixity factor of an end, the spring is
// k = 3 E I r / (L (1 - r)) (Monforton and Wu, 1963). The moments M at the two ends turn the ends of the simply
// supported member by F M, the load turns them by t, and the springs rotate by M / k:
//
//     r (F M + t) + L (1 - r) / (3 E I) M = 0        at each end,
//
// which holds for a pin (r = 0) as for a rigid end (r = 1). The transverse shear strain enters F alone: a uniform load
// is symmetric and turns no section more for it.
#include <cmath>

#include "elements/member_group.h"
#include "finites/fields.h"
#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

struct loaded_plane {
  double EI, shear_stiffness;  // 0: no shear deformation
  double L;
  double r1, r2;
};

// Shear and moment that the nodes exert on each end, the moment positive from the axis along the member to the load's.
struct held {
  double V1, M1, V2, M2;
};

// All of the equations above are multiplied by E I / L: flexibilities are then pure numbers, whatever the units. The
// load is q + rise (xi - 1/2); the second part turns both ends of the simply supported member by -rise L^2 / 720.
held hold_linear(const loaded_plane& p, double q, double rise) {
  const double shear = p.shear_stiffness > 0 ? p.EI / (p.shear_stiffness * p.L * p.L) : 0;
  const double unit = 1.0 / 3, near = unit + shear, far = -1.0 / 6 + shear;
  const double turn = q * p.L * p.L / 24;  // of the first end; the second turns the other way
  const double a11 = p.r1 * near + (1 - p.r1) * unit, a12 = p.r1 * far;
  const double a22 = p.r2 * near + (1 - p.r2) * unit, a21 = p.r2 * far;
  const double skew = rise * p.L * p.L / 720;
  const double b1 = -p.r1 * (turn - skew), b2 = p.r2 * (turn + skew);
  const double determinant = a11 * a22 - a12 * a21;  // at least 1/12: near is 1/2 above far
  held h{};
  h.M1 = (b1 * a22 - a12 * b2) / determinant;
  h.M2 = (a11 * b2 - a21 * b1) / determinant;
  h.V1 = (h.M1 + h.M2) / p.L - q * p.L / 2 + rise * p.L / 12;
  h.V2 = -(h.M1 + h.M2) / p.L - q * p.L / 2 - rise * p.L / 12;
  return h;
}

}  // namespace

vector3 member_group::local_load(std::size_t element, const distributed_load& load) const {
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  if (section.material < 0) return {};
  const MATRIX<12, 12>& T = axes(element);
  vector3 q{};
  for (int i = 1; i <= 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      q[subscript(i - 1)] += T(i, number_of(j) + 1) * (load.line[j] + load.body[j] * section.area);
    }
  }
  return q;
}

vector3 member_group::local_rise(std::size_t element, const distributed_load& load) const {
  const MATRIX<12, 12>& T = axes(element);
  vector3 rise{};
  for (int i = 1; i <= 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) rise[subscript(i - 1)] += T(i, number_of(j) + 1) * load.line_rise[j];
  }
  return rise;
}

end_forces member_group::hold(const frame_section& section, const material& mat, double length, const member_ends& ends,
                              const vector3& q, const vector3& rise, double push) {
  end_forces f{};
  for (std::size_t i = 0; i < 3; ++i) {
    f[i] = -q[i] * length / 2 + rise[i] * length / 12;
    f[6 + i] = -q[i] * length / 2 - rise[i] * length / 12;
  }
  f[0] += push;
  f[6] -= push;
  if (section.kind != frame_section_kind::BEAM) return f;

  const auto plane_of = [&](double inertia, double shear, std::size_t axis) {
    return loaded_plane{mat.E1 * inertia, shear, length, ends.fixity[0][axis], ends.fixity[1][axis]};
  };
  if (q[1] != 0 || rise[1] != 0) {
    const held h = hold_linear(plane_of(section.inertia_xy, section.shear_stiffness_y, 1), q[1], rise[1]);
    f[1] = h.V1;
    f[5] = h.M1;
    f[7] = h.V2;
    f[11] = h.M2;
  }
  if (q[2] != 0 || rise[2] != 0) {  // a rotation about y leads from z to x: the moments have the other sign
    const held h = hold_linear(plane_of(section.inertia_xz, section.shear_stiffness_z, 0), q[2], rise[2]);
    f[2] = h.V1;
    f[4] = -h.M1;
    f[8] = h.V2;
    f[10] = -h.M2;
  }
  return f;
}

end_forces member_group::fixed_end_forces(std::size_t element, const distributed_load& load) {
  if (placement(element) != nullptr) return placed_fixed_forces(element, load);
  const frame_section& section = frame_section_of(data_.of(), data_.at(element));
  if (section.material < 0) return {};
  const material& mat = data_.of().materials[section.material];
  // A member that is hot and cannot grow pushes against its nodes, a pretensioned one pulls them together.
  const double pull = load.increment ? 0 : section.pretension * section.area;
  const double push = mat.E1 * section.area * mat.alpha1 * load.temperature_change - pull;
  const member_ends ends = ends_of(data_.of(), data_.at(element));
  const vector3 q = local_load(element, load), rise = local_rise(element, load);
  end_forces f = hold(section, mat, frames_.length(element), ends, q, rise, push);
  if (section.kind == frame_section_kind::BEAM) release_end_forces(element, f);
  return f;
}

// A released force is condensed out of the member that has all forces still: f := f - K(:,d) f(d) / K(d,d).
void member_group::release_end_forces(std::size_t element, end_forces& f) {
  const std::array<int, 4> released = ends_of(data_.of(), data_.at(element)).released;
  if (released[0] == 0 && released[1] == 0 && released[2] == 0) return;
  MODEL_DATA A = data_.A();
  for (int code = RELEASE_AXIAL; code <= RELEASE_Z; ++code) A(data_.entry(element) + code) = 0;
  const MATRIX<12, 12> K = step_stiffness(element, MODE_LOCAL, axes(element)).K;
  frames_.fill_ends(element);
  for (int force = 0; force < 3; ++force) {
    if (released[subscript(force)] == 0) continue;
    const int d = force + (released[subscript(force)] == 1 ? 1 : 7);
    double& released_force = f[subscript(d - 1)];
    const double share = released_force / K(d, d);
    if (released_force == 0) continue;
    if (!(K(d, d) > 0) || !std::isfinite(share)) {
      throw model_error(data_.of(), data_.at(element), "*ELEMENT",
                        "element " + std::to_string(data_.at(element).id) +
                            " carries a load in a direction in which its releases leave it no resistance");
    }
    for (int i = 1; i <= 12; ++i) f[subscript(i - 1)] -= K(i, d) * share;
    released_force = 0;
  }
}

// The nodes carry what the ends are held with, the other way: forces := forces - T^T f.
void member_group::loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  end_forces f = fixed_end_forces(element, load);
  for (double& value : f) value = -value;
  add_transposed_product(axes(element), f.data(), forces.V);
}

}  // namespace solver
