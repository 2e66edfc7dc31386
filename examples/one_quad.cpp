// one_quad.cpp: the stiffness of a thick quadrilateral by a plain call from C++.
#include <cstdio>
#include <finites/elements.hpp>

int main() {
  finites::plate plate({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}});  // a thick quadrilateral
  plate.thickness = 0.02;
  plate.E = 210e9;
  plate.nu = 0.3;
  const auto K = plate.stiffness();  // throws finites::error, which says what is wrong
  std::printf("force along x of a unit displacement of node 1 along x: %.7e\n", K(0, 0));
}
