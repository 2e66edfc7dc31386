// elements_hpp.h: the elements that the tests of the C++ layer share.
#ifndef TESTS_ELEMENTS_HPP_H
#define TESTS_ELEMENTS_HPP_H

#include <gtest/gtest.h>

#include <array>

#include "finites/elements.hpp"

namespace hpp_test {

constexpr double a = 2, b = 1, h = 0.02, young = 210e9, poisson = 0.3;

// The rectangle a by b.
inline finites::plate rectangle() {
  finites::plate plate({{0, 0, 0}, {a, 0, 0}, {a, b, 0}, {0, b, 0}});
  plate.thickness = h;
  plate.E = young;
  plate.nu = poisson;
  return plate;
}

inline finites::beam cantilever() {
  finites::beam beam({0, 0, 0}, {4, 0, 0});
  beam.E = young;
  beam.G = young / 2.6;
  beam.area = 0.01;
  beam.Iz = 8e-6;
  beam.Iy = 3e-6;
  beam.J = 1e-6;
  return beam;
}

inline finites::solid cube() {
  finites::solid solid({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}});
  solid.E = young;
  solid.nu = poisson;
  solid.density = 7850;
  return solid;
}

// ux = strain x, uy = -nu strain y at the corners of the rectangle.
inline std::array<double, 24> stretched(double strain) {
  std::array<double, 24> u{};
  u[6] = u[12] = strain * a;
  u[13] = u[19] = -poisson * strain * b;
  return u;
}

template <class CALL>
finites::error failure_of(const CALL& call) {
  try {
    call();
  } catch (const finites::error& failed) {
    return failed;
  }
  ADD_FAILURE() << "nothing was thrown";
  return {FINITES_OK, "", ""};
}

}  // namespace hpp_test

#endif
