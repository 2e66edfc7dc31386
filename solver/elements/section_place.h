// section_place.h: beams whose section lies off the line of their nodes, or whose principal axes are turned.
//
// The library's beam has its centroid, its shear centre and its principal axes in the line between its ends. Its end
// displacements follow from those of the nodes (u, v, w, rx, ry, rz along local x and axes 1, 2) without approximation:
// with the centroid at (yc, zc) and the shear centre at (ys, zs)
//
//     u' = u + ry zc - rz yc,    v' = v - rx zs,    w' = w + rx ys,    rotations unchanged,
//
// then (v', w') and (ry, rz) are turned to the principal axes. A rigid motion of the nodes strains nothing. Matrices of
// the beam are P^T A P, forces P^T f. Inertia forces act in the centroid: for them v' and w' are those of the centroid.
#ifndef FINITES_SOLVER_SECTION_PLACE_H
#define FINITES_SOLVER_SECTION_PLACE_H

#include "elements/frame_records.h"
#include "elements/load_case.h"
#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

struct member_field;

enum class across { SHEAR_CENTRE, CENTROID };
MATRIX<12, 12> motion_of_section(const section_placement& place, across point);

// P^T A P, and P^T f.
MATRIX<12, 12> congruent(const MATRIX<12, 12>& A, const MATRIX<12, 12>& P);
end_forces turned_back(const MATRIX<12, 12>& P, const end_forces& f);

// The axial force acts on sections that twist about the shear centre: to the geometric stiffness of the library, in the
// principal axes, comes N / 2 times the integral of
//     theta'^2 (Ip / A + ay^2 + az^2) - 2 az theta' v' + 2 ay theta' w',
// (ay, az) leading from the shear centre to the centroid, theta linear along the beam (Vlasov). `tension`: N / L.
void add_twist(const frame_section& section, double tension, MATRIX<12, 12>& KG);

// What acts at the nodes as forces in the principal axes of the section: the axial force and moments in the centroid,
// torsion and shear forces in the shear centre.
end_forces forces_in_section(const section_placement& place, const end_forces& at_nodes);

// Loads per length along local x and the principal axes, and the torque per length about the shear centre. Forces per
// length act across the beam in the line of nodes, along it in the centroid; weight acts in the centroid.
struct section_load {
  std::array<double, 3> force{};
  double torque = 0;
};
section_load load_on_section(const section_placement& place, const std::array<double, 3>& line,
                             const std::array<double, 3>& body);

// A field in principal axes becomes one along axes 1 and 2, with the displacements of the line of nodes. Bending
// moments and the axial force stay those in the centroid, shear forces and torsion those in the shear centre.
void show_at_nodes(const section_placement& place, member_field& f);

// Ends with releases: displacements of the beam's ends from those of the nodes, u_end = C u + free, so that no force
// acts on the freedoms that are released. `K` and `f` are those of the beam without releases.
struct released_beam {
  MATRIX<12, 12> C{};
  end_forces free{};
};
bool has_releases(const member_ends& ends);
// False when what is released leaves a part of the beam without resistance.
bool release(const member_ends& ends, const MATRIX<12, 12>& K, const end_forces& f, released_beam& r);

}  // namespace solver

#endif
