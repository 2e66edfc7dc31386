// vtu_writer.h: the results as an unstructured grid in VTK's XML form, which ParaView opens.
//
// The numbers of an array are text, or their bytes in base 64, which take two thirds of the place and a third of the
// time. zlib's blocks would take a quarter less place again, and longer than text: digits of results are like noise.
//
// The points are the nodes, in the order of the deck, then the stations of beams, trusses and cables, through which
// their cells run (vtu_stations.h); arrays that belong to nodes are 0 at stations and the other way round.
// Vectors have the components x, y, z, tensors xx, yy, zz, xy, yz, xz; the names of other components stand below. Each
// array of several components names them (ComponentName0 and so on).
// Point data (global axes):
//   node_id                                -1 at stations and at nodes made in quadratic elements
//   displacement, rotation                 vectors
//   reaction_force, reaction_moment        vectors; 0 where nothing is prescribed
//   nodal_stress_top, nodal_stress_bottom           averaged tensors
//   nodal_von_mises_top, nodal_von_mises_bottom     of the averaged tensors
//   nodal_parts                            how many parts of the surface meet at the node (nodal_parts.h)
//   nodal_axis_x, nodal_normal             vectors: the frame of the part with the largest von Mises stress, and in it
//   part_stress_top, part_stress_middle, part_stress_bottom             sx, sy, sxy, averaged over its elements
//   part_principal_top, part_principal_middle, part_principal_bottom    first and second principal stress, angle of the
//                                          first one to nodal_axis_x in radians
//   part_von_mises_top, part_von_mises_middle, part_von_mises_bottom
//   solid_stress, solid_principal, solid_von_mises     of solids: a tensor, averaged over the elements of one section,
//                                          first, second and third principal stress from the largest; where sections
//                                          meet those of the largest von Mises stress
//   station_element, station_distance      the number of the member (-1 at nodes) and the distance from its first end
//   N, Vy, Vz, T, My, Mz                   section forces, local axes (member_field.h)
//   moment_diagram, shear_diagram          vectors: My z - Mz y, on the side of the tension, and Vy y + Vz z
//   set_NAME                               1 at the nodes of a node set, else 0 (vtu_model.h: how names are changed,
//                                          and how many sets have arrays)
// Point data of a step that looks for modes: node_id, set_NAME, and
//   mode_K, mode_K_rotation                vectors, K from 1: the largest translation is 1
// Cell data (the axes 1, 2 of the material, elements/material_axes.h; the mean of the integration points):
//   element_id                             parts of a quadratic element are cells of their own with its number
//   element_part                           from 1; 0: the element is whole. Where some element is read in parts
//   section, material                      from 0, subscripts of section_names and material_names; -1: none
//   thickness                              of plates; 0 for the rest
//   set_NAME                               1 for the elements of an element set, else 0
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
//   plastic_strain_top, plastic_strain_middle, plastic_strain_bottom    11, 22 and the engineering shear strain 12, of
//                                          all increments; the mean of the integration points
//   plastic_shear_strain                   13, 23
//   equivalent_plastic_strain              the largest of the points
// Cell data of a state along a path (steps/collections.h), which has displacement at its points and
// equivalent_plastic_strain where plates yield:
//   open_hinges                            of a pushover: 1 the first end of the member yields, 2 the second, 3 both
// Cell data of members, in a model that has any; zero for plates. axis_x and normal are their axes x and z.
//   axial_force                            tension positive, the mean of both ends
//   end_force_1, end_moment_1, end_force_2, end_moment_2     vectors: what the nodes exert on the member, local axes
// Cell data of solids, in a model that has any; zero for the rest. axis_x and normal are the global axes.
//   solid_stress, solid_principal, solid_von_mises     as at nodes, of the mean of the integration points
// Field data, which belongs to the whole file:
//   program                                "finites-solve" and its version
//   TimeValue                              what viewers take for the time: the number of the step; in the files of
//                                          collections the time there (steps/collections.h)
//   step_number, step_name, step_kind      the kind as in model/step_kinds.h
//   load_factor                            of a path that is followed: where it stands
//   frequency, buckling_factor             of all modes, or of the one that the file holds
//   mode                                   the number of that mode
//   material_names, section_names          by their numbers; a section is "*SHELL SECTION, ELSET=PLATE"
//   case_numbers, case_names               of an envelope: its steps (vtu_envelope.h)
//   sets_left_out                          of a model with many sets: those without an array
// A piece (vtu_pieces.h) has all arrays of the model, for its points and cells.
//
// What has no meaning for any element of a model is left out: data of plates without plates, moments without shells,
// rotations and moments of members where nothing turns.
#ifndef FINITES_SOLVER_VTU_WRITER_H
#define FINITES_SOLVER_VTU_WRITER_H

#include <optional>
#include <ostream>
#include <vector>

#include <pugixml.hpp>

#include "analyses/modal_analysis.h"
#include "analyses/path_states.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

enum class vtu_form { ASCII, BINARY };

// What a file says of its step.
struct vtu_about {
  const step* of = nullptr;  // null: nothing
  std::optional<double> load_factor{};
  std::vector<double> modes{};   // frequencies or factors
  int mode = 0;                  // of a file with one mode: its number, from 1
  std::optional<double> time{};  // else the number of the step
};

// The whole model, or what this process has of it, as a piece (vtu_pieces.h).
enum class vtu_extent { MODEL, PROCESS };

pugi::xml_document vtu_of(const model& m, const static_solution& solution, const step_results& results,
                          int station_count, vtu_form form, const vtu_about& about, vtu_extent extent);
pugi::xml_document modes_vtu(const model& m, const modal_solution& solution, vtu_form form, const vtu_about& about,
                             vtu_extent extent);

void write_vtu(std::ostream& out, const model& m, const static_solution& solution, const step_results& results,
               int station_count = USUAL_STATIONS, vtu_form form = vtu_form::ASCII, const vtu_about& about = {});

void write_modes_vtu(std::ostream& out, const model& m, const modal_solution& solution, vtu_form form = vtu_form::ASCII,
                     const vtu_about& about = {});

// One mode, as displacement and rotation, so that a viewer plays the modes with the same filters.
void write_mode_vtu(std::ostream& out, const model& m, const mode& one, vtu_form form, const vtu_about& about);

// A state along a path. `hinges`: open ones, by element; empty where the path has none.
void write_state_vtu(std::ostream& out, const model& m, const path_state& at, const std::vector<int>& hinges,
                     vtu_form form, const vtu_about& about);

}  // namespace solver

#endif
