// plastic_support.cpp: plates of steel that yield.
#include "plastic_support.h"

#include <gtest/gtest.h>

#include "finites/fields.h"
#include "frame_decks.h"
#include "system/stopwatch.h"

namespace plastic_test {

using namespace solver;
using frame_test::number;

namespace {

constexpr double LENGTH = 100, WIDTH = 20, THICKNESS = 4;

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  return text.replace(text.find(what), what.size(), by);
}

}  // namespace

std::string yielding(const sheet& s, const steel& of, const std::string& supports, const std::string& step) {
  std::string plastic = "*PLASTIC\n" + number(YIELD) + ", 0.\n";
  if (of.plastic_modulus > 0) plastic += number(YIELD + of.plastic_modulus) + ", 1.\n";
  std::string text = replaced(s.deck(supports, step), "*DENSITY\n", plastic + "*DENSITY\n");
  const std::string formulation = "FORMULATION=" + s.formulation;
  return of.model.empty() ? text : replaced(text, formulation, formulation + ", " + of.model);
}

strip a_strip(const sheet& form, int n) {
  strip result;
  result.mesh = form;
  result.mesh.n = n;
  result.mesh.E = YOUNG;
  result.mesh.nu = POISSON;
  result.mesh.thickness = THICKNESS;
  result.mesh.place = [](double u, double v) { return point{LENGTH * u, WIDTH * (v - 0.5), 0}; };
  return result;
}

std::string strip::deck(int dof, double total, const std::string& card) const {
  std::string axis;
  for (int i = 0; i <= mesh.n; ++i)
    for (const char* const held : {", 2", ", 4", ", 6"})
      axis += std::to_string(mesh.node(i, mesh.n / 2) + 1) + held + "\n";
  const std::string middle = std::to_string(mesh.node(0, mesh.n / 2) + 1) + ", 3\n";
  return yielding(mesh, of, "LEFT, 1\nLEFT, 5\n" + axis + middle, card + "*CLOAD\n" + line_load(mesh, 1, dof, total));
}

std::string strip::tension(const std::string& limits) const {
  return deck(1, YIELD * THICKNESS * WIDTH, "*ELASTOPLASTIC\n" + limits);
}

std::string strip::bending(const std::string& limits) const {
  return deck(5, YIELD * THICKNESS * THICKNESS / 4 * WIDTH, "*ELASTOPLASTIC\n" + limits);
}

std::vector<elastoplastic_solution> load(const model& m, solver_kind kind, int threads) {
  library_model library(m);
  library.use_threads(threads);
  const std::unique_ptr<linear_solver> equations = make_linear_solver(kind);
  stopwatch watch;
  elastoplastic plates(m, library, *equations);
  std::vector<elastoplastic_solution> all;
  testing::internal::CaptureStderr();
  for (const step& s : m.steps) all.push_back(plates.solve(s, watch));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "the library's texts about trials are not for the user";
  return all;
}

std::vector<elastoplastic_solution> load(const std::string& text) { return load(read(text)); }

}  // namespace plastic_test
