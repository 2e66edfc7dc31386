// thin_walled.h: constants of cross-sections made of thin plane walls, by their middle lines.
#ifndef FINITES_SOLVER_DECK_THIN_WALLED_H
#define FINITES_SOLVER_DECK_THIN_WALLED_H

#include <array>
#include <vector>

#include "model/index.h"

namespace solver::deck {

using plane_point = std::array<double, 2>;  // along axes 1 and 2

// A wall runs from one corner to another; walls that meet name the same corner. Walls may branch and close any number
// of cells.
struct wall {
  int from = 0, to = 0;  // indices of corners
  double thickness = 0;
};

struct wall_section {
  numbered<plane_point> corners;
  std::vector<wall> walls;

  // The corner at a place, which is added where there is none within `near`.
  int corner(const plane_point& at, double near = 0);
  void add(const plane_point& from, const plane_point& to, double thickness, double near = 0);
};

// Moments of inertia about the centroid; every wall is a strip of its length and thickness. A force through the shear
// centre does not twist. `flexibility`: shear strain by shear force times G, for forces along axis 1, along axis 2, and
// between the two; 0 where the walls have no extent that resists. The torsion constant has two parts: that of closed
// cells (Bredt), and the sum of b t^3 / 3 of all walls as strips.
struct wall_constants {
  double area = 0;
  plane_point centroid{}, shear_centre{};
  double I11 = 0, I22 = 0, I12 = 0;
  double torsion_of_cells = 0, torsion_of_strips = 0;
  std::array<double, 3> flexibility{};
};

bool hangs_together(const wall_section& s);
wall_constants constants_of(const wall_section& s);  // of walls that hang together

}  // namespace solver::deck

#endif
