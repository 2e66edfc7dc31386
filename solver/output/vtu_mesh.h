// vtu_mesh.h: what every file for a viewer begins and ends with (vtu_writer.cpp).
#ifndef FINITES_SOLVER_VTU_MESH_H
#define FINITES_SOLVER_VTU_MESH_H

#include <pugixml.hpp>

#include "output/vtu_stations.h"
#include "output/vtu_writer.h"

namespace solver {

pugi::xml_node start_vtu(pugi::xml_document& document, const model& m, const vtu_points& points, const vtu_about& about,
                         vtu_form form);

// Points and cells, after the data.
void write_vtu_mesh(pugi::xml_node piece, const model& m, const vtu_points& points);

// Cell data: numbers of elements and their axes.
void write_vtu_cells(const vtu_data& data, const model& m);

// Whether anything of the model bends or turns.
bool turns_anywhere(const model& m);

}  // namespace solver

#endif
