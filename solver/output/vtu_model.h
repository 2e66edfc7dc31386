// vtu_model.h: what a VTU file says of the model and of its step beside the results: sections, materials, sets, field
// data (vtu_writer.h names all arrays).
#ifndef FINITES_SOLVER_VTU_MODEL_H
#define FINITES_SOLVER_VTU_MODEL_H

#include <cstddef>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "model/model.h"
#include "output/vtu_arrays.h"
#include "output/vtu_writer.h"

namespace solver {

// A file has an array for each of so many sets of nodes and as many of elements, the first of the deck.
constexpr std::size_t MOST_SETS = 40;

// The names of the sets that have no array.
std::vector<std::string> left_out_sets(const model& m);
std::string left_out_summary(const model& m);  // a line about them; empty for none

// The names of the arrays of sets: "set_" and the name, in which letters, digits, '.', '-' and '_' stay; other
// characters become '_'. Of names that become equal the later ones get "_2" and so on.
std::vector<std::string> set_arrays(const std::vector<named_set>& sets);

void write_field_data(pugi::xml_node fields, const model& m, const vtu_about& about);
// Of elements: numbers, section, material, thickness.
void write_model_cells(const vtu_data& data, const model& m);
void write_element_sets(const vtu_data& data, const model& m);
void write_node_sets(const vtu_data& data, const model& m, std::size_t points);

}  // namespace solver

#endif
