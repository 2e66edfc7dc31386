// member_field.cpp: section forces by equilibrium, displacements by integration of the strains.
#include "elements/member_field.h"

#include <algorithm>
#include <cmath>

#include "model/vectors.h"

namespace solver {

namespace {

// Bending in one plane. `m` is E I times the curvature, with which a moment is positive from the axis along the member
// to the transverse one: Mz in the x-y plane, -My in the x-z plane; a rotation likewise. V is the shear force along the
// transverse axis, m' = -V.
struct plane {
  double L, EI, shear_stiffness;  // 0: no shear deformation
  double q, rise;                 // load along the transverse axis: mean, and from the first end to the second
  double first, second;           // m at the ends
  double v1, v2;                  // displacements of the ends
};

struct bent {
  quintic moment, deflection, rotation;
};

// m'' = L^2 (q + rise (xi - 1/2)):
// m = first (1 - xi) + second xi + q L^2 (xi^2 - xi) / 2 + rise L^2 (2 xi^3 - 3 xi^2 + xi) / 12
quintic moment_of(const plane& p) {
  const double load = p.q * p.L * p.L / 2, rise = p.rise * p.L * p.L / 12;
  return {p.first, p.second - p.first - load + rise, load - 3 * rise, 2 * rise, 0, 0};
}

// v'' = m / EI + V' / GA twice integrated, 0 at both ends; V' = -q - rise (xi - 1/2).
quintic deflection_from_chord(const plane& p) {
  const quintic m = moment_of(p);
  const double bend = p.L * p.L / p.EI;
  quintic v = {0, 0, bend * m[0] / 2, bend * m[1] / 6, bend * m[2] / 12, bend * m[3] / 20};
  if (p.shear_stiffness > 0) {
    v[2] -= (p.q - p.rise / 2) * p.L * p.L / (2 * p.shear_stiffness);
    v[3] -= p.rise * p.L * p.L / (6 * p.shear_stiffness);
  }
  v[1] = -(v[2] + v[3] + v[4] + v[5]);
  return v;
}

double shear_strain(const plane& p, double xi) {
  return p.shear_stiffness > 0 ? -value(derivative(moment_of(p)), xi) / (p.L * p.shear_stiffness) : 0;
}

bent bend(const plane& p) {
  bent b;
  b.moment = moment_of(p);
  b.deflection = deflection_from_chord(p);
  b.deflection[0] = p.v1;
  b.deflection[1] += p.v2 - p.v1;
  const quintic slope = derivative(b.deflection), fall = derivative(b.moment);
  const double strain = p.shear_stiffness > 0 ? 1 / (p.L * p.shear_stiffness) : 0;
  for (std::size_t i = 0; i < slope.size(); ++i) b.rotation[i] = slope[i] / p.L + strain * fall[i];
  return b;
}

// The end whose force V is released slides: where it is follows from the rotation of the stiffer connection, which is
// the node's less the rotation of the spring 3 E I r / (L (1 - r)). Between two pins it is not known; the node's
// displacement stands for it.
void slide(plane& p, int released, const std::array<double, 2>& fixity, const std::array<double, 2>& node_rotation) {
  if (released == 0 || !(std::fmax(fixity[0], fixity[1]) > 0)) return;
  const std::size_t end = fixity[0] >= fixity[1] ? 0 : 1;
  const double r = fixity[end], xi = end == 0 ? 0 : 1;
  const double turned = (end == 0 ? p.first : -p.second) * p.L * (1 - r) / (3 * p.EI * r);
  const double slope = node_rotation[end] + turned + shear_strain(p, xi);
  const double rise = p.L * slope - value(derivative(deflection_from_chord(p)), xi);
  if (released == 1) {
    p.v1 = p.v2 - rise;
  } else {
    p.v2 = p.v1 + rise;
  }
}

quintic straight(double first, double second) { return {first, second - first, 0, 0, 0, 0}; }

// The value at the first end less the load along the member: q + rise (xi - 1/2).
quintic falling(double first, double q, double rise, double L) {
  return {first, -q * L + rise * L / 2, -rise * L / 2, 0, 0, 0};
}

quintic negative(quintic p) {
  for (double& c : p) c = -c;
  return p;
}

struct source {
  const frame_section& section;
  const material& mat;
  member_ends ends;
  std::array<double, 3> q, rise;  // local axes
  double thermal_strain;
  end_forces u, forces, elastic;  // `elastic`: without the geometric stiffness
  double axial_force;
  double torque = 0;  // per length, about the shear centre
};

// u'' = -(qx + rise (xi - 1/2)) / EA between the ends. An end whose axial force is released lies where the strains put
// it: the mean force is that of the middle less rise L / 24.
void stretch(const source& s, member_field& f) {
  const double L = f.length, EA = s.mat.E1 * s.section.area;
  double u1 = s.u[0], u2 = s.u[6];
  const double growth = L * (((value(f.force[0], 0.5) - s.rise[0] * L / 24) / EA) + s.thermal_strain);
  if (s.ends.released[0] == 1) u1 = u2 - growth;
  if (s.ends.released[0] == 2) u2 = u1 + growth;
  const double curve = -(s.q[0] - s.rise[0] / 2) * L * L / (2 * EA), third = -s.rise[0] * L * L / (6 * EA);
  f.displacement[0] = {u1, u2 - u1 - curve - third, curve, third, 0, 0};
}

double shear_modulus(const material& mat) { return mat.E1 / (2 * (1 + mat.NU12)); }

void twist(const source& s, member_field& f) {
  const int released = s.ends.released[3];
  f.rotation[0] = straight(s.u[released == 1 ? 9 : 3], s.u[released == 2 ? 3 : 9]);
  f.force[3] = straight(-s.forces[3], s.forces[9]);
  if (s.torque == 0) return;  // theta'' = -m / G J
  const double curve = -s.torque * f.length * f.length / (2 * shear_modulus(s.mat) * s.section.torsion);
  f.rotation[0][1] -= curve;
  f.rotation[0][2] += curve;
}

// With an axial force the moment is that of the end forces and loads on the displaced axis.
quintic moment_on(const plane& total, const quintic& deflection, double axial_force) {
  quintic m = moment_of(total);
  if (axial_force == 0) return m;
  m[1] -= axial_force * (deflection[2] + deflection[3] + deflection[4] + deflection[5]);
  for (std::size_t i = 2; i < m.size(); ++i) m[i] += axial_force * deflection[i];
  return m;
}

void bend_in_xy(const source& s, member_field& f) {
  plane p{f.length,
          s.mat.E1 * s.section.inertia_xy,
          s.section.shear_stiffness_y,
          s.q[1],
          s.rise[1],
          -s.elastic[5],
          s.elastic[11],
          s.u[1],
          s.u[7]};
  slide(p, s.ends.released[1], {s.ends.fixity[0][1], s.ends.fixity[1][1]}, {s.u[5], s.u[11]});
  const bent b = bend(p);
  f.displacement[1] = b.deflection;
  f.rotation[2] = b.rotation;
  p.first = -s.forces[5];
  p.second = s.forces[11];
  f.force[5] = moment_on(p, b.deflection, s.axial_force);
}

void bend_in_xz(const source& s, member_field& f) {
  plane p{f.length,
          s.mat.E1 * s.section.inertia_xz,
          s.section.shear_stiffness_z,
          s.q[2],
          s.rise[2],
          s.elastic[4],
          -s.elastic[10],
          s.u[2],
          s.u[8]};
  slide(p, s.ends.released[2], {s.ends.fixity[0][0], s.ends.fixity[1][0]}, {-s.u[4], -s.u[10]});
  const bent b = bend(p);
  f.displacement[2] = b.deflection;
  f.rotation[1] = negative(b.rotation);
  p.first = s.forces[4];
  p.second = -s.forces[10];
  f.force[4] = negative(moment_on(p, b.deflection, s.axial_force));
}

end_forces local(const MATRIX<12, 12>& T, const element_vector& global) {
  end_forces result{};
  add_product(T, global.V, result.data());
  return result;
}

catenary hanging_cable(const model& m, library_model& library, std::size_t e, const element_vector& displacements,
                       const distributed_load& load, member_field& f) {
  const frame_section& section = frame_section_of(m, m.elements[e]);
  const material& mat = m.materials[section.material];
  element_vector held;
  library.cables().forces(e, held);
  catenary c;
  c.length = f.length = cable_length(m, m.elements[e]);
  c.EA = mat.E1 * section.area;
  c.stretch = 1 + mat.alpha1 * load.temperature_change;
  for (std::size_t i = 0; i < 3; ++i) {
    c.first[i] = f.first[i] + displacements.V[i];
    c.second[i] = f.second[i] + displacements.V[6 + i];
    c.tension[i] = -held.V[i];
    c.load[i] = load.line[i] + load.body[i] * section.area;
  }
  return c;
}

std::array<double, 3> turned(const MATRIX<3, 3>& axes, const std::array<quintic, 3>& local_parts, double xi) {
  return transposed_product(axes, {value(local_parts[0], xi), value(local_parts[1], xi), value(local_parts[2], xi)});
}

// In the principal axes of a section that lies off the nodes, between the ends of the beam itself.
source placed_source(library_model& library, std::size_t e, const frame_section& section, const material& mat,
                     const element_vector& displacements, const distributed_load& load, const member_state& state) {
  const section_load q = library.members().load_on_placed(e, load);
  const MATRIX<12, 12> P = motion_of_section(section.place, across::SHEAR_CENTRE);
  end_forces u{};
  add_product(P, library.members().end_displacements(e, displacements, load).data(), u.data());
  const end_forces forces = forces_in_section(section.place, state.forces);
  return {section, mat,    member_ends{}, q.force,           {},      mat.alpha1 * load.temperature_change,
          u,       forces, forces,        state.axial_force, q.torque};
}

member_field start_field(const model& m, std::size_t e) {
  const element& elem = m.elements[e];
  member_field f;
  f.element = e;
  f.length = member_length(m, elem);
  for (int k = 1; k <= elem.part; ++k) f.before += member_length(m, m.elements[number_of(e) - k]);
  f.first = m.nodes[elem.nodes[0]].xyz;
  f.second = m.nodes[elem.nodes[1]].xyz;
  f.axes = member_axes(m, elem);
  return f;
}

}  // namespace

bool has_field(const model& m, const element& e) {
  if (!is_member(e.type) || e.section < 0) return false;
  const frame_section_kind kind = frame_section_of(m, e).kind;
  return kind != frame_section_kind::SPRING && kind != frame_section_kind::LINK;
}

member_field field_of(const model& m, library_model& library, std::size_t e, const element_vector& displacements,
                      const distributed_load& load, const member_state& state) {
  member_field f = start_field(m, e);
  const element& elem = m.elements[e];
  if (is_cable(m, elem)) {
    f.hanging = hanging_cable(m, library, e, displacements, load, f);
    return f;
  }
  const frame_section& section = frame_section_of(m, elem);
  const material& mat = m.materials[section.material];
  const member_ends ends = ends_of(m, elem);
  const bool placed = is_placed(section.place);
  source s = placed ? placed_source(library, e, section, mat, displacements, load, state)
                    : source{section,
                             mat,
                             ends,
                             library.members().local_load(e, load),
                             library.members().local_rise(e, load),
                             mat.alpha1 * load.temperature_change,
                             local(library.members().axes(e), displacements),
                             state.forces,
                             state.forces,
                             state.axial_force};
  for (std::size_t i = 0; i < s.u.size(); ++i) s.u[i] -= state.flow[i];
  f.force[0] = falling(-s.forces[0], s.q[0], s.rise[0], f.length);
  stretch(s, f);
  if (section.kind == frame_section_kind::TRUSS) {
    f.displacement[1] = straight(s.u[1], s.u[7]);
    f.displacement[2] = straight(s.u[2], s.u[8]);
    return f;
  }
  if (s.axial_force != 0) {
    s.elastic =
        placed ? library.members().placed_elastic_forces(e, s.u, load) : library.members().elastic_forces(e, s.u, load);
  }
  f.force[1] = falling(-s.forces[1], s.q[1], s.rise[1], f.length);
  f.force[2] = falling(-s.forces[2], s.q[2], s.rise[2], f.length);
  twist(s, f);
  bend_in_xy(s, f);
  bend_in_xz(s, f);
  if (placed) show_at_nodes(section.place, f);
  return f;
}

station station_at(const member_field& f, double xi) {
  station s;
  s.distance = f.before + xi * f.length;
  for (std::size_t i = 0; i < 3; ++i) s.place[i] = (1 - xi) * f.first[i] + xi * f.second[i];
  if (f.hanging) {
    const std::array<double, 3> position = position_at(*f.hanging, s.distance);
    for (std::size_t i = 0; i < 3; ++i) s.displacement[i] = position[i] - s.place[i];
    s.force[0] = tension_at(*f.hanging, s.distance);
    return s;
  }
  s.displacement = turned(f.axes, f.displacement, xi);
  s.rotation = turned(f.axes, f.rotation, xi);
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) s.force[i] = value(f.force[i], xi);
  return s;
}

std::vector<station> stations_of(const model& m, const member_field& f, int count) {
  const int wanted = frame_section_of(m, m.elements[f.element]).kind == frame_section_kind::TRUSS ? 2 : count;
  std::vector<station> all;
  all.reserve(subscript(wanted));
  for (int i = 0; i < wanted; ++i) all.push_back(station_at(f, double(i) / (wanted - 1)));
  return all;
}

// The tension of a cable is largest at an end, and smallest where it runs across the load, or at the other end.
value_range range_of_force(const member_field& f, std::size_t force) {
  if (!f.hanging) return range_of(widened(f.force[force]));
  if (force > 0) return {};
  const catenary& c = *f.hanging;
  const double w2 = dot(c.load, c.load), along = dot(c.tension, c.load);
  const double first = tension_at(c, 0), last = tension_at(c, c.length);
  value_range range{{last < first ? last : first, last < first ? 1.0 : 0.0},
                    {last > first ? last : first, last > first ? 1.0 : 0.0}};
  if (!(w2 > 0) || !(along > 0) || !(along < w2 * c.length)) return range;
  const double s = along / w2;
  if (tension_at(c, s) < range.least.value) range.least = {tension_at(c, s), s / c.length};
  return range;
}

extreme largest_displacement(const member_field& f) { return largest_length(f.displacement); }
extreme largest_rotation(const member_field& f) { return largest_length(f.rotation); }

}  // namespace solver
