// orientation_support.h: sheets of orthotropic material whose elements begin at any node, and their closed forms.
#ifndef FINITES_TESTS_ORIENTATION_SUPPORT_H
#define FINITES_TESTS_ORIENTATION_SUPPORT_H

#include <functional>
#include <string>
#include <vector>

#include "finites/fields.h"
#include "shell_decks.h"

namespace orientation_test {

using namespace analysis_test;

// Nx by Ny cells over the unit square, quadrilaterals or pairs of triangles, nodes numbered (i, j) -> i (ny + 1) + j +
// 1.
struct lamina {
  int nx = 4, ny = 2;
  std::string type = "S4";                   // S3, S4, M3D3, M3D4
  std::string section = "FORMULATION=THIN";  // further parameters of the section
  std::string cards;                         // *ORIENTATION and others before the section
  double E1 = 160000, E2 = 10000, nu12 = 0.3, G12 = 6000, G13 = 5000, G23 = 3000;
  double alpha1 = 1e-6, alpha2 = 3e-5, thickness = 0.05;
  std::function<point(double, double)> place = [](double u, double v) { return point{4 * u, 2 * v, 0}; };
  std::function<int(int)> begin = [](int) { return 0; };          // by element: the corner that it begins with
  std::function<bool(int)> reversed = [](int) { return false; };  // by element: it turns round the other way
  std::function<bool(int)> falling = [](int) { return false; };   // by cell: the other diagonal

  bool membrane() const { return type[0] == 'M'; }
  bool triangles() const { return type.back() == '3'; }
  int node(int i, int j) const { return i * (ny + 1) + j; }  // index into model::nodes
  std::vector<int> column(int i) const;
  std::vector<int> row(int j) const;
  std::string deck(const std::string& supports, const std::string& step) const;

  // Plane stress in material axes: stress = Q strain; and Q12 / Q22 and so on by name.
  double Q11() const { return E1 / (1 - nu12 * nu12 * E2 / E1); }
  double Q22() const { return E2 / (1 - nu12 * nu12 * E2 / E1); }
  double Q12() const { return nu12 * Q22(); }
};

// Lines of *CLOAD on a straight edge of equal sides; lines of *BOUNDARY.
std::string edge_load(const std::vector<int>& nodes, int dof, double total);
std::string held(const std::vector<int>& nodes, int first, int last);

// Every type with every formulation.
std::vector<lamina> all_types();
std::string name_of(const lamina& l);

// A place for the inner nodes of a lamina that no element axis follows: moved by a share of a cell at random.
std::function<point(double, double)> shaken(const lamina& l, unsigned seed, double share);

}  // namespace orientation_test

#endif
