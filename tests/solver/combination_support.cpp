// combination_support.cpp: the model and its loads, and tables read from files.
#include "combination_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <fmt/format.h>

#include "deck_builder.h"
#include "options.h"
#include "run.h"

namespace combination_test {

bool text_table::has(const std::string& name) const {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::size_t text_table::column(const std::string& name) const {
  const auto found = std::find(names.begin(), names.end(), name);
  EXPECT_NE(found, names.end()) << name;
  return static_cast<std::size_t>(found - names.begin());
}

const std::string& text_table::text(std::size_t row, const std::string& name) const {
  return rows.at(row).at(column(name));
}

double text_table::number(std::size_t row, const std::string& name) const {
  return std::strtod(text(row, name).c_str(), nullptr);
}

namespace {

std::vector<std::string> cells_of(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream stream(line);
  for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
  if (!line.empty() && line.back() == ',') cells.emplace_back();
  return cells;
}

text_table read_table(const std::string& path) {
  text_table result;
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) {
    if (result.names.empty()) {
      result.names = cells_of(line);
    } else {
      result.rows.push_back(cells_of(line));
    }
  }
  return result;
}

// Directions of one vector, and forces of one kind, share a size: "force" of force_x, "s" of stresses.
std::string kind_of(const std::string& name) {
  static const std::pair<const char*, const char*> KINDS[] = {
      {"ux", "u"},        {"uy", "u"},          {"uz", "u"},       {"rx", "r"},     {"ry", "r"},
      {"rz", "r"},        {"N", "force"},       {"V", "force"},    {"T", "moment"}, {"M", "moment"},
      {"force", "force"}, {"moment", "moment"}, {"angle", "angle"}};
  for (const auto& [start, kind] : KINDS) {
    if (name.rfind(start, 0) == 0) return kind;
  }
  const bool stress = name[0] == 's' || name.rfind("first", 0) == 0 || name.rfind("second", 0) == 0 ||
                      name.rfind("third", 0) == 0 || name.rfind("von_mises", 0) == 0;
  return stress ? "stress" : name;
}

}  // namespace

whole_run run_all(const std::string& deck, int steps) {
  const deck_test::scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("all.inp", deck);
  wanted.output = scratch.path("all.vtu");
  wanted.quiet = true;
  wanted.station_count = 5;
  const std::pair<const char*, std::string solver::options::*> files[] = {
      {"csv", &solver::options::csv},           {"members", &solver::options::members},
      {"stations", &solver::options::stations}, {"points", &solver::options::points},
      {"stresses", &solver::options::stresses}, {"solids", &solver::options::solids}};
  for (const auto& [name, option] : files) wanted.*option = scratch.path(std::string(name) + ".table");
  solver::run(wanted);
  whole_run result;
  for (int s = 1; s <= steps; ++s) {
    result.steps.emplace_back();
    for (const auto& [name, option] : files) {
      result.steps.back()[name] = read_table(scratch.path(fmt::format("{}.{}.table", name, s)));
    }
  }
  const auto text_of = [&](const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(scratch.path(name), std::ios::binary).rdbuf();
    return text.str();
  };
  for (int s = 1; s <= steps; ++s) result.vtu.push_back(text_of(fmt::format("all.{}.vtu", s)));
  result.printed = text_of("all.dat");
  return result;
}

void expect_same_tables(const tables& found, const tables& expected, double share) {
  for (const auto& [name, table] : expected) {
    const text_table& other = found.at(name);
    ASSERT_EQ(other.names, table.names) << name;
    ASSERT_EQ(other.rows.size(), table.rows.size()) << name;
    EXPECT_FALSE(table.rows.empty()) << name;
    std::map<std::string, double> size;
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
      for (const std::string& column : table.names) {
        double& most = size[kind_of(column)];
        most = std::fmax(most, std::fabs(table.number(r, column)));
      }
    }
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
      for (const std::string& column : table.names) {
        const bool place = column.find("_at") != std::string::npos || kind_of(column) == "angle";
        if (place) continue;  // where a function is flat its extreme may lie anywhere; directions of equal stresses
        EXPECT_NEAR(other.number(r, column), table.number(r, column), share * size[kind_of(column)])
            << name << ' ' << column << " in row " << r + 1;
      }
    }
  }
}

const char* const MIXED = R"(*NODE, NSET=ALL
1, 0, 0, 0
2, 100, 0, 0
3, 200, 0, 10
4, 0, 100, 0
5, 110, 95, 5
6, 200, 100, 20
7, 200, 0, 310
8, 200, 100, 320
9, 0, 300, 0
10, 100, 300, 0
11, 100, 400, 0
12, 0, 400, 0
13, 0, 300, 80
14, 100, 310, 80
15, 100, 400, 90
16, 0, 400, 80
*ELEMENT, TYPE=S4, ELSET=SHELL
1, 1, 2, 5, 4
*ELEMENT, TYPE=S3, ELSET=SHELL
2, 2, 3, 6
3, 2, 6, 5
*ELEMENT, TYPE=B31, ELSET=BEAM
4, 3, 7
5, 7, 8
*ELEMENT, TYPE=B33, ELSET=BEAM
6, 8, 6
*ELEMENT, TYPE=T3D2, ELSET=BAR
7, 6, 7
*ELEMENT, TYPE=C3D8, ELSET=BLOCK
8, 9, 10, 11, 12, 13, 14, 15, 16
*ELEMENT, TYPE=SPRING2, ELSET=SPRING
9, 5, 14
*MATERIAL, NAME=STEEL
*ELASTIC
210000, 0.3
*DENSITY
7.85e-9
*EXPANSION
1.2e-5
*SHELL SECTION, ELSET=SHELL, MATERIAL=STEEL
4
*BEAM SECTION, ELSET=BEAM, MATERIAL=STEEL, SECTION=T
40, 60, 30, 5, 4
0, 1, 0
*SOLID SECTION, ELSET=BAR, MATERIAL=STEEL
30
*SOLID SECTION, ELSET=BLOCK, MATERIAL=STEEL
*SPRING, ELSET=SPRING
3, 3
500
*SURFACE, NAME=TOP
8, S2
*SURFACE, NAME=CUT
8, S1
*RELEASE
6, S2, M1-M2
*EQUATION
2
8, 2, 1, 14, 2, -0.5
*BOUNDARY
1, 1, 6
4, 1, 3
9, 1, 3
10, 2, 3
11, 3
12, 3
15, 1
)";

std::string first_loads(double f) {
  return fmt::format("*BOUNDARY\n4, 3, 3, {}\n*DLOAD\nALLE, GRAV, {}, 0, 0, -1\nSHELL, P, {}\nBEAM, PX, {}\n", 0.5 * f,
                     9810 * f, 0.02 * f, 0.3 * f);
}

std::string second_loads(double f) {
  return fmt::format(
      "*BOUNDARY\n4, 3, 3, 0\n*TEMPERATURE\nALL, {}, {}\n*DLOAD\nSPUN, CENTRIF, {}, 0, 0, 0, 0.6, 0, 0.8\n"
      "BEAM, P1, {}\n",
      30 * f, 2.5 * f, 4000 * f, -0.7 * f);
}

std::string third_loads(double f) {
  return fmt::format(
      "*BOUNDARY\n4, 3, 3, {}\n*CLOAD\n8, 1, {}\n5, 6, {}\n14, 2, {}\n*DSLOAD\nTOP, HP, {}, 100, 0\nTOP, P, {}\n",
      -0.2 * f, 800 * f, 5000 * f, -300 * f, 0.5 * f, 2 * f);
}

}  // namespace combination_test
