// vtu_pieces.cpp: chooses the points and cells of a process.
#include "output/vtu_pieces.h"

#include "model/index.h"

namespace solver {

namespace {

void copy_attributes(pugi::xml_node from, pugi::xml_node to) {
  for (const pugi::xml_attribute attribute : from.attributes()) to.append_copy(attribute);
}

// The arrays of one kind, without their values.
void name_arrays(pugi::xml_node piece, pugi::xml_node whole, const char* kind) {
  const std::string name = std::string("P") + kind;
  pugi::xml_node to = whole.append_child(name.c_str());
  for (const pugi::xml_node array : piece.child(kind).children("DataArray")) {
    copy_attributes(array, to.append_child("PDataArray"));
  }
}

}  // namespace

vtu_piece own_piece(const model& m, const vtu_points& points) {
  vtu_piece piece;
  std::vector<char> own(points.count(), 0), joined(points.count(), 0);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const bool here = is_own(m, e);
    if (here) piece.cells.push_back(e);
    std::vector<int> of_element = points.of_element(e);  // of members their stations, without their nodes
    const std::vector<int>& nodes = m.elements[e].nodes;
    of_element.insert(of_element.end(), nodes.begin(), nodes.end());
    for (const int p : of_element) {
      joined[subscript(p)] = 1;
      if (here) own[subscript(p)] = 1;
    }
  }
  piece.number.assign(points.count(), -1);
  for (std::size_t p = 0; p < points.count(); ++p) {
    if (own[p] == 0 && (joined[p] != 0 || m.process != 0)) continue;
    piece.number[p] = count_of(piece.points);
    piece.points.push_back(p);
  }
  return piece;
}

void write_pvtu(std::ostream& out, const pugi::xml_document& first, const std::vector<std::string>& files) {
  const pugi::xml_node from = first.child("VTKFile");
  const pugi::xml_node piece = from.child("UnstructuredGrid").child("Piece");
  pugi::xml_document document;
  pugi::xml_node file = document.append_child("VTKFile");
  copy_attributes(from, file);
  file.attribute("type") = "PUnstructuredGrid";
  pugi::xml_node whole = file.append_child("PUnstructuredGrid");
  whole.append_attribute("GhostLevel") = 0;
  for (const char* const kind : {"PointData", "CellData", "Points"}) name_arrays(piece, whole, kind);
  for (const std::string& name : files) whole.append_child("Piece").append_attribute("Source") = name.c_str();
  document.save(out, "  ");
}

}  // namespace solver
