// vtu_writer.h: the results as an unstructured grid in VTK's XML form, which ParaView opens.
//
// The numbers of an array are text, or their bytes in base 64, which take two thirds of the place and a third of the
// time. zlib's blocks would take a quarter less place again, and longer than text: digits of results are like noise.
//
// The points are the nodes, in the order of the deck, then the stations of beams, trusses and cables, through which
// their cells run (vtu_stations.h); arrays that belong to nodes are 0 at stations and the other way round.
// Point data (global axes):
//   node_id                                -1 at stations and at nodes made in quadratic elements
//   displacement, rotation                 vectors
//   reaction_force, reaction_moment        vectors; 0 where nothing is prescribed
//   nodal_stress_top, nodal_stress_bottom           averaged tensors: xx, yy, zz, xy, yz, xz
//   nodal_von_mises_top, nodal_von_mises_bottom     of the averaged tensors
//   nodal_parts                            how many parts of the surface meet at the node (nodal_parts.h)
//   nodal_axis_x, nodal_normal             the frame of the part with the largest von Mises stress, and in it
//   part_stress_top, _middle, _bottom      sx, sy, sxy, averaged over its elements
//   part_principal_top and so on           first and second principal stress, angle of the first one to nodal_axis_x
//   part_von_mises_top and so on
//   solid_stress, solid_principal, solid_von_mises     of solids: xx, yy, zz, xy, yz, xz, averaged over the elements of
//                                          one section, principal stresses from the largest; where sections meet
//                                          those of the largest von Mises stress
//   station_element, station_distance      the number of the member (-1 at nodes) and the distance from its first end
//   N, Vy, Vz, T, My, Mz                   section forces, local axes (member_field.h)
//   moment_diagram, shear_diagram          vectors: My z - Mz y, on the side of the tension, and Vy y + Vz z
// Cell data (the axes 1, 2 of the material, elements/material_axes.h; the mean of the integration points):
//   element_id                             parts of a quadratic element are cells of their own with its number
//   element_part                           from 1; 0: the element is whole. Where some element is read in parts
//   axis_x, normal                         axis 1 and the normal: unit vectors, global axes; axis 2 is
//                                          normal cross axis 1
//   membrane_force                         N1, N2, N12 per length
//   moment                                 M1, M2, M12 per length; positive: tension at the top
//   shear_force                            Q1, Q2 per length; in a model with thick shells
//   stress_top, stress_middle, stress_bottom                 s1, s2, s12
//   principal_top, principal_middle, principal_bottom        first and second principal stress, angle of the first one
//                                                            to axis_x in radians
//   von_mises_top, von_mises_middle, von_mises_bottom
// Cell data of a step in which plates yield:
//   plastic_strain_top, _middle, _bottom   11, 22 and the engineering shear strain 12, of all increments; the mean of
//                                          the integration points
//   plastic_shear_strain                   13, 23
//   equivalent_plastic_strain              the largest of the points
// Cell data of members, in a model that has any; zero for plates. axis_x and normal are their axes x and z.
//   axial_force                            tension positive, the mean of both ends
//   end_force_1, end_moment_1, end_force_2, end_moment_2     what the nodes exert on the member, local axes x, y, z
// Cell data of solids, in a model that has any; zero for the rest: solid_stress, solid_principal, solid_von_mises of
// the mean of the integration points, global axes, which axis_x and normal then are.
// What has no meaning for any element of a model is left out: data of plates without plates, moments without shells,
// rotations and moments of members where nothing turns.
#ifndef FINITES_SOLVER_VTU_WRITER_H
#define FINITES_SOLVER_VTU_WRITER_H

#include <ostream>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

enum class vtu_form { ASCII, BINARY };

void write_vtu(std::ostream& out, const model& m, const static_solution& solution, const step_results& results,
               int station_count = USUAL_STATIONS, vtu_form form = vtu_form::ASCII);

// Point data of a step that looks for modes: node_id; mode_1, mode_1_rotation and so on, the largest translation
// being 1.
void write_modes_vtu(std::ostream& out, const model& m, const modal_solution& solution,
                     vtu_form form = vtu_form::ASCII);

}  // namespace solver

#endif
