// vtu_pieces.h: a grid in pieces, one of each process, and the file that names them (.pvtu).
//
// A piece has the elements of its process with their nodes and stations; a node where pieces meet is in each of them,
// with the same values. Nodes that no element joins are in the first piece.
#ifndef FINITES_SOLVER_VTU_PIECES_H
#define FINITES_SOLVER_VTU_PIECES_H

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "output/vtu_stations.h"

namespace solver {

// Points and cells of the model, rising.
struct vtu_piece {
  std::vector<std::size_t> points, cells;
  std::vector<int> number;  // of a point of the model in the piece; -1: it is not there
};

vtu_piece own_piece(const model& m, const vtu_points& points);

// The file of the pieces in `files`, of which `first` is one: all have the same arrays.
void write_pvtu(std::ostream& out, const pugi::xml_document& first, const std::vector<std::string>& files);

}  // namespace solver

#endif
