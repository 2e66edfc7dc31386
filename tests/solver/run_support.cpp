// run_support.cpp: a deck of several steps, run from its text to its tables.
#include "run_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "deck/deck_reader.h"
#include "deck_builder.h"
#include "run.h"

namespace run_test {

namespace {

table read_table(const std::string& path) {
  table result;
  std::ifstream in(path);
  std::string line, cell;
  while (std::getline(in, line)) {
    std::istringstream cells(line);
    if (result.names.empty()) {
      while (std::getline(cells, cell, ',')) result.names.push_back(cell);
      continue;
    }
    result.rows.emplace_back();
    while (std::getline(cells, cell, ',')) result.rows.back().push_back(std::strtod(cell.c_str(), nullptr));
  }
  return result;
}

solver::options options_for(const deck_test::scratch_folder& scratch, const std::string& deck) {
  solver::options wanted;
  wanted.deck = scratch.write("run.inp", deck);
  wanted.output = scratch.path("run.vtu");
  wanted.csv = scratch.path("run.csv");
  wanted.members = scratch.path("members.csv");
  return wanted;
}

const std::vector<double>& row_of(const table& t, double first) {
  const auto found =
      std::find_if(t.rows.begin(), t.rows.end(), [&](const std::vector<double>& row) { return row.at(0) == first; });
  return found == t.rows.end() ? t.rows.at(t.rows.size()) : *found;
}

std::size_t column_of(const table& t, const std::string& name) {
  return static_cast<std::size_t>(std::find(t.names.begin(), t.names.end(), name) - t.names.begin());
}

}  // namespace

std::vector<double> table::column(const std::string& name) const {
  std::vector<double> values;
  for (const auto& row : rows) values.push_back(row.at(column_of(*this, name)));
  return values;
}

std::vector<double> ran::modes(int step) const {
  const table& t = steps.at(static_cast<std::size_t>(step - 1));
  return t.column(t.names.at(1));
}

double ran::u(int step, int node, char direction) const {
  const table& t = steps.at(static_cast<std::size_t>(step - 1));
  const char* const names[] = {"ux", "uy", "uz", "rx", "ry", "rz"};
  return row_of(t, node).at(column_of(t, names[direction_of(direction)]));
}

double ran::force(int step, int element, int end, const std::string& name) const {
  const table& t = members.at(static_cast<std::size_t>(step - 1));
  for (const auto& row : t.rows)
    if (row.at(0) == element && row.at(1) == end) return row.at(column_of(t, name));
  ADD_FAILURE() << "no element " << element;
  return 0;
}

std::string ran::summary(int step) const {
  const std::size_t first = text.find("step " + std::to_string(step));
  return text.substr(first, text.find("step " + std::to_string(step + 1) + "\n", first) - first);
}

ran run(const std::string& deck) {
  const deck_test::scratch_folder scratch;
  const std::size_t count = solver::read_deck_text(deck, "run.inp").steps.size();
  ran result;
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  solver::run(options_for(scratch, deck));
  result.text = testing::internal::GetCapturedStdout();
  result.text += testing::internal::GetCapturedStderr();
  for (std::size_t s = 1; s <= count; ++s) {
    const std::string number = count == 1 ? "" : "." + std::to_string(s);
    result.steps.push_back(read_table(scratch.path("run" + number + ".csv")));
    result.members.push_back(read_table(scratch.path("members" + number + ".csv")));
  }
  return result;
}

std::string run_error(const std::string& deck) {
  const deck_test::scratch_folder scratch;
  std::string text;
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  try {
    solver::run(options_for(scratch, deck));
  } catch (const std::exception& error) {
    text = error.what();
  }
  testing::internal::GetCapturedStdout();
  testing::internal::GetCapturedStderr();
  return text;
}

std::string a_step(const std::string& flags, const std::string& cards) {
  return "*STEP" + flags + "\n" + cards + "*END STEP\n";
}

}  // namespace run_test
