// grid_files.h: the results of a step for a viewer, in one file or in pieces.
#ifndef FINITES_SOLVER_GRID_FILES_H
#define FINITES_SOLVER_GRID_FILES_H

#include <functional>

#include <pugixml.hpp>

#include "output/vtu_writer.h"
#include "steps/places.h"

namespace solver {

// Of all processes together: each writes its piece, then the first one the file that names them.
void write_grid(const places& to, const std::function<pugi::xml_document(vtu_extent)>& grid);

// Of the first process alone, which has all: one piece.
void write_whole_grid(const places& to, const std::function<pugi::xml_document()>& grid);

}  // namespace solver

#endif
