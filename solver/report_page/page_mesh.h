// page_mesh.h: the nodes, faces, members and parts of nodes that the page shows, and the numbers it gives them.
#ifndef FINITES_SOLVER_PAGE_MESH_H
#define FINITES_SOLVER_PAGE_MESH_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "analyses/nodal_parts.h"
#include "model/model.h"
#include "model/vectors.h"
#include "report_page/page_skin.h"

namespace solver {

// A node and a section of solids that meets it, in the order of step_results::solids.
struct solid_place {
  int node = 0, section = 0;
};

// A beam, truss or cable, and its stations along the chord, as stations_of() has them.
struct page_member {
  int element = 0;
  double length = 0;
  MATRIX<3, 3> axes{};  // rows: local x, y, z
  std::vector<double> distance;
  std::vector<vector3> place;
};

// Sections of the page: shells and membranes, frames, solids, point masses, one after the other.
struct section_places {
  explicit section_places(const model& m);
  int of(const model& m, const element& e) const;  // -1: none

  int frames = 0, solids = 0, masses = 0, count = 0;  // where each kind begins; shells begin at 0
};

struct page_mesh {
  // An outline has edges and their nodes alone, with the nodes of supports.
  page_mesh(const model& read, bool as_outline, int stations);

  std::int32_t number_of_node(int node) const { return page_node[node]; }  // -1: not on the page

  // So many deformed states of a path the page has room for.
  std::size_t states_of_path() const;

  const model& m;
  const bool outline;
  const int station_count;
  section_places sections;
  vector3 origin{};
  std::vector<page_face> faces;  // none of an outline
  std::vector<std::array<int, 2>> edges;
  std::vector<int> nodes;   // on the page, by their number there
  numbered<int> page_node;  // the other way round
  std::vector<page_member> members;
  std::vector<nodal_part> parts;  // in the order of step_results::parts, without stresses
  std::vector<solid_place> solids;
};

}  // namespace solver

#endif
