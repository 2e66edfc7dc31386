// plain.cpp: plain calls from C++17, by the installed headers and library alone.
#include <cmath>
#include <cstdio>
#include <finites/elements.hpp>

namespace {

int wrong = 0;

void expect(const char* what, double actual, double expected) {
  if (std::fabs(actual - expected) <= 1e-12 * std::fabs(expected)) return;
  std::printf("%s: actual %.17g, expected %.17g\n", what, actual, expected);
  wrong = 1;
}

void failures(finites::plate plate) {
  plate.thickness = 0;
  finites_status status = FINITES_OK;
  expect("rows after a failure", plate.stiffness(status).rows(), 0);
  expect("status", status, FINITES_THICKNESS);
  try {
    (void)plate.stiffness();
    expect("a failure throws", 0, 1);
  } catch (const finites::error& failed) {
    expect("status of the error", failed.status(), FINITES_THICKNESS);
  }
}

}  // namespace

int main() {
  finites::plate plate({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}});
  plate.thickness = 0.02;
  plate.E = 210e9;
  plate.nu = 0.3;
  const auto K = plate.stiffness();
  expect("rows", K.rows(), 24);
  expect("K(0, 0)", K(0, 0), 0.02 * (210e9 / 0.91 / 6 + 210e9 / 2.6 / 2));
  failures(plate);
  return wrong;
}
