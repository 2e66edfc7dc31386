// shell_decks.cpp: plates and shells of three and four nodes from deck texts.
#include "shell_decks.h"

#include <array>

#include "analyses/modal_analysis.h"
#include "deck/deck_reader.h"
#include "finites/fields.h"
#include "frame_decks.h"
#include "system/stopwatch.h"

namespace shell_test {

using frame_test::number;

namespace {

std::string joined(const std::vector<int>& nodes) {
  std::string text;
  for (std::size_t i = 0; i < nodes.size(); ++i)
    text += std::to_string(nodes[i] + 1) + (i + 1 == nodes.size() ? "\n" : i % 12 == 11 ? "\n" : ", ");
  return text;
}

bool is_quad(const sheet& s, int i, int j) {
  return s.kind == cells::QUADS || (s.kind == cells::MIXED && (i + j) % 2 == 0);
}

// Quadrilaterals and triangles start at corners that change from cell to cell, so that element axes differ.
void add_cell(const sheet& s, int i, int j, std::string& quads, std::string& triangles, int& number_of) {
  std::array<int, 4> corner = {s.node(i, j) + 1, s.node(i + 1, j) + 1, s.node(i + 1, j + 1) + 1, s.node(i, j + 1) + 1};
  const auto at = [&](int k) { return ", " + std::to_string(corner[static_cast<std::size_t>((k + i + 2 * j) % 4)]); };
  if (is_quad(s, i, j)) {
    quads += std::to_string(++number_of) + at(0) + at(1) + at(2) + at(3) + "\n";
    return;
  }
  triangles += std::to_string(++number_of) + at(0) + at(1) + at(2) + "\n";
  triangles += std::to_string(++number_of) + at(2) + at(3) + at(0) + "\n";
}

}  // namespace

std::vector<int> sheet::edge(int which) const {
  std::vector<int> nodes;
  for (int k = 0; k <= n; ++k)
    nodes.push_back(which == 0 ? node(0, k) : which == 1 ? node(n, k) : which == 2 ? node(k, 0) : node(k, n));
  return nodes;
}

std::string sheet::deck(const std::string& supports, const std::string& step) const {
  std::string text = "*NODE, NSET=ALL\n";
  for (int i = 0; i <= n; ++i) {
    for (int j = 0; j <= n; ++j) {
      const point p = place(static_cast<double>(i) / n, static_cast<double>(j) / n);
      text += std::to_string(node(i, j) + 1) + ", " + number(p[0]) + ", " + number(p[1]) + ", " + number(p[2]) + "\n";
    }
  }
  std::string quads, triangles;
  int count = 0;
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j) add_cell(*this, i, j, quads, triangles, count);
  if (!triangles.empty()) text += "*ELEMENT, TYPE=S3, ELSET=SKIN\n" + triangles;
  if (!quads.empty()) text += "*ELEMENT, TYPE=S4, ELSET=SKIN\n" + quads;
  const char* const names[] = {"LEFT", "RIGHT", "LOWER", "UPPER"};
  for (int k = 0; k < 4; ++k) text += "*NSET, NSET=" + std::string(names[k]) + "\n" + joined(edge(k));
  return text + "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(nu) + "\n*DENSITY\n" + number(density) +
         "\n*EXPANSION\n" + number(expansion) + "\n*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=" + formulation +
         "\n" + number(thickness) + "\n*BOUNDARY\n" + supports + "*STEP\n" + step + "*END STEP\n";
}

solver::model read(const std::string& text) { return solver::read_deck_text(text, "shell.inp"); }

std::string line_load(const sheet& s, int edge, int dof, double total) {
  std::string text;
  const std::vector<int> nodes = s.edge(edge);
  for (const int n : nodes) {
    const double share = total / s.n / (n == nodes.front() || n == nodes.back() ? 2 : 1);
    text += std::to_string(n + 1) + ", " + std::to_string(dof) + ", " + number(share) + "\n";
  }
  return text;
}

std::vector<double> modes(const solver::model& m) {
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::static_solution state;
  const solver::step& s = m.steps.front();
  const solver::modal_solution found = s.kind == solver::step_kind::FREQUENCY
                                           ? solve_frequencies(m, s, library, *equations, watch)
                                           : solve_buckling(m, s, library, *equations, watch, state);
  std::vector<double> values;
  for (const solver::mode& one : found.modes) values.push_back(one.value);
  return values;
}

std::vector<sheet> all_forms() {
  std::vector<sheet> all;
  for (const cells kind : {cells::TRIANGLES, cells::QUADS, cells::MIXED}) {
    for (const char* const formulation : {"THIN", "THICK"}) {
      sheet s;
      s.kind = kind;
      s.formulation = formulation;
      all.push_back(s);
    }
  }
  return all;
}

std::string name_of(const sheet& s) {
  const char* const names[] = {"triangles", "quadrilaterals", "mixed"};
  return std::string(names[static_cast<int>(s.kind)]) + " " + s.formulation;
}

}  // namespace shell_test
