// analysis_combination_test.cpp: combinations against one step with the summed loads, which is assembled and solved on
// its own, and envelopes against the tables of the steps that they span.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include <fmt/format.h>

#include "combination_support.h"
#include "vtu_reading.h"

using namespace combination_test;

namespace {

constexpr double ROUNDING = 1e-9;

std::string mixed(const std::string& steps) {
  std::string head = MIXED;
  head.insert(head.find("*MATERIAL"),
              "*ELSET, ELSET=ALLE\nSHELL, BEAM, BAR, BLOCK\n*ELSET, ELSET=SPUN\nSHELL, BAR, BLOCK\n");
  return head + steps;
}

std::string a_static_step(const std::string& name, const std::string& cards) {
  return "*STEP, NAME=" + name + "\n*STATIC\n" + cards + "*END STEP\n";
}

const char* const PRINTS = "*NODE PRINT\nU, RF\n*EL PRINT, ELSET=ALLE\nS\n*SECTION PRINT, NAME=C, SURFACE=CUT\nSOF\n";

// A beam under its tension, and loads across it.
const char* const TENSIONED = R"(*NODE
1, 0
2, 1000
3, 2000
*ELEMENT, TYPE=B33, ELSET=BEAM
1, 1, 2
2, 2, 3
*MATERIAL, NAME=M
*ELASTIC
200000, 0.3
*EXPANSION
1e-5
*BEAM SECTION, ELSET=BEAM, MATERIAL=M, SECTION=RECT
10, 20
*BOUNDARY
1, 1, 4
3, 2, 3
)";

std::vector<double> numbers_in(const std::string& text) {
  std::vector<double> all;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    char* end = nullptr;
    const double value = std::strtod(word.c_str(), &end);
    if (*end == '\0') all.push_back(value);
  }
  return all;
}

// From the heading of a step to that of the next.
std::string printed_of(const std::string& all, int step) {
  const auto heading = [&](int s) { return all.find(fmt::format("S T E P {:7d}", s)); };
  const std::size_t begin = heading(step), end = heading(step + 1);
  return begin == std::string::npos ? "" : all.substr(begin, end == std::string::npos ? end : end - begin);
}

}  // namespace

TEST(combination, is_the_answer_to_the_summed_loads) {
  // The factors 1.35, 0.6 and 1.5, and the loads of one step by them.
  const auto summed = [](const std::string& of_boundary) {
    std::string cards = first_loads(1.35) + second_loads(0.6) + third_loads(1.5);
    for (std::size_t at = cards.find("*BOUNDARY"); at != std::string::npos; at = cards.find("*BOUNDARY")) {
      cards.erase(at, cards.find('\n', cards.find('\n', at) + 1) - at + 1);
    }
    return of_boundary + cards;
  };
  const std::string deck =
      mixed(a_static_step("A", first_loads(1) + PRINTS) + a_static_step("B", second_loads(1)) +
            a_static_step("C", third_loads(1)) +
            a_static_step("ALL", summed(fmt::format("*BOUNDARY\n4, 3, 3, {}\n", 0.5 * 1.35 - 0.3))) +
            "*COMBINATION, NAME=SUM\na, 1.35, b, 0.6\nC, 1.5\n");
  const whole_run run = run_all(deck, 5);
  expect_same_tables(run.steps[4], run.steps[3], ROUNDING);
  const std::vector<double> found = numbers_in(printed_of(run.printed, 5)),
                            expected = numbers_in(printed_of(run.printed, 4));
  ASSERT_EQ(found.size(), expected.size());
  ASSERT_GT(found.size(), 100u);
  double size = 0;
  for (const double value : expected) size = std::fmax(size, std::fabs(value));
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (expected[i] == 4) continue;  // the number of the step
    EXPECT_NEAR(found[i], expected[i], 1e-6 * std::fabs(expected[i]) + 1e-12 * size) << i;
  }
}

TEST(combination, of_combinations_takes_their_steps) {
  const std::string deck = mixed(a_static_step("A", first_loads(1)) + a_static_step("B", second_loads(1)) +
                                 "*COMBINATION, NAME=AB\nA, 2, B, 3\n*COMBINATION, NAME=ABA\nAB, 0.5, A, -0.25\n"
                                 "*COMBINATION, NAME=DIRECT\n1, 0.75, 2, 1.5\n");
  const whole_run run = run_all(deck, 5);
  expect_same_tables(run.steps[3], run.steps[4], ROUNDING);
}

TEST(combination, of_a_structure_under_tension_stands_where_its_steps_stand) {
  const auto perturbed = [](const std::string& name, const std::string& loads) {
    return "*STEP, PERTURBATION, NAME=" + name + "\n*STATIC\n" + loads + "*END STEP\n";
  };
  const std::string deck = std::string(TENSIONED) + a_static_step("T", "*CLOAD\n3, 1, 50000\n") +
                           perturbed("A", "*DLOAD\nBEAM, PY, -2\n") + perturbed("B", "*CLOAD\n2, 2, 300\n2, 3, 100\n") +
                           perturbed("AB", "*DLOAD\nBEAM, PY, -3\n*CLOAD\n2, 2, 120\n2, 3, 40\n") +
                           a_static_step("OTHER", "*CLOAD\n3, 1, -10\n2, 2, 5\n") +
                           "*COMBINATION, NAME=S\nA, 1.5, B, 0.4\n";
  const whole_run run = run_all(deck, 6);
  const tables &sum = run.steps[5], &alone = run.steps[3];
  for (const std::size_t row : {0u, 1u, 2u}) {
    for (const char* const name : {"uy", "uz", "rz", "force_y"}) {
      const double expected = alone.at("csv").number(row, name);
      EXPECT_NEAR(sum.at("csv").number(row, name), expected, 1e-9 * std::fabs(expected) + 1e-12) << name;
    }
  }
  // Without the tension the middle would move by 5 w L^4 / 384 E I + P L^3 / 48 E I; with it clearly less.
  const double EI = 200000.0 * 20 * 10 * 10 * 10 / 12, L = 2000;
  const double bare = -5 * 3 * std::pow(L, 4) / (384 * EI) + 120 * std::pow(L, 3) / (48 * EI);
  EXPECT_LT(std::fabs(sum.at("csv").number(1, "uy")), 0.7 * std::fabs(bare));
  for (std::size_t row = 0; row < alone.at("stations").rows.size(); ++row) {
    for (const char* const name : {"uy", "My", "Mz"}) {
      EXPECT_NEAR(sum.at("stations").number(row, name), alone.at("stations").number(row, name), 1e-4) << name << row;
    }
  }
}

TEST(combination, at_a_temperature_has_the_constants_of_its_steps) {
  std::string head = TENSIONED;
  head.replace(head.find("200000, 0.3\n"), 12, "200000, 0.3, 20\n100000, 0.3, 120\n");
  const std::string warm = "*TEMPERATURE\n1, 120\n2, 120\n3, 120\n";
  const std::string deck = head + a_static_step("A", "*DLOAD\nBEAM, PY, -2\n" + warm) +
                           a_static_step("B", "*CLOAD\n2, 2, 300\n" + warm) +
                           a_static_step("AB", "*DLOAD\nBEAM, PY, -1\n*CLOAD\n2, 2, 150\n" + warm) +
                           a_static_step("COLD", "*DLOAD\nBEAM, PY, -2\n") +
                           "*COMBINATION, NAME=S\nA, 0.5, B, 0.5\n*ENVELOPE, NAME=E\nCOLD, S\n";
  const whole_run run = run_all(deck, 6);
  for (const char* const name : {"csv", "stations"}) {
    const text_table &sum = run.steps[4].at(name), &alone = run.steps[2].at(name);
    ASSERT_EQ(sum.rows.size(), alone.rows.size());
    for (std::size_t row = 0; row < sum.rows.size(); ++row) {
      for (const char* const value : {"ux", "uy", "rz"}) {
        EXPECT_NEAR(sum.number(row, value), alone.number(row, value), 1e-9) << name << ' ' << value << row;
      }
    }
  }
  // A beam of half the modulus under the whole load moves twice as far.
  EXPECT_NEAR(run.steps[0].at("csv").number(1, "uy"), 2 * run.steps[3].at("csv").number(1, "uy"), 1e-6);
}

namespace {

bool ends_with(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Every column <name>_min and <name>_max of an envelope against the same column of the steps.
int compare_bounds(const text_table& bounds, const std::vector<std::pair<std::string, const text_table*>>& steps) {
  int compared = 0;
  for (const std::string& column : bounds.names) {
    const bool least = ends_with(column, "_min"), largest = ends_with(column, "_max");
    const std::string name = column.substr(0, column.size() - 4);
    if (!(least || largest) || !steps.front().second->has(name)) continue;
    double size = 0;
    for (const auto& [step, table] : steps) {
      for (std::size_t r = 0; r < table->rows.size(); ++r) size = std::fmax(size, std::fabs(table->number(r, name)));
    }
    for (std::size_t r = 0; r < bounds.rows.size(); ++r) {
      double value = steps.front().second->number(r, name);
      for (const auto& [step, table] : steps) {
        value = least ? std::fmin(value, table->number(r, name)) : std::fmax(value, table->number(r, name));
      }
      EXPECT_EQ(bounds.number(r, column), value) << column << r;
      const std::string governs = bounds.text(r, column + "_case");
      const auto by = std::find_if(steps.begin(), steps.end(), [&](const auto& each) { return each.first == governs; });
      if (by == steps.end()) {
        ADD_FAILURE() << column << " is governed by '" << governs << "'";
        continue;
      }
      EXPECT_NEAR(by->second->number(r, name), value, 1e-9 * std::fabs(value) + 1e-8 * size) << column << r;
      ++compared;
    }
  }
  return compared;
}

}  // namespace

TEST(envelope, holds_the_least_and_largest_of_its_steps) {
  const std::string deck = mixed(
      a_static_step("A", first_loads(1)) + a_static_step("B", second_loads(1)) + a_static_step("C", third_loads(1)) +
      "*COMBINATION, NAME=One\nA, 1.35, C, 1.5\n*COMBINATION, NAME=Two\nA, 1, B, -1\n*COMBINATION, NAME=Three\nB, 1\n"
      "C, -1.2\n*ENVELOPE, NAME=Of All\n*ENVELOPE, NAME=Of Some\nTwo, C\n");
  const whole_run run = run_all(deck, 8);
  for (const char* const name : {"csv", "stations", "stresses", "solids", "members", "points"}) {
    const auto of = [&](std::size_t step) { return &run.steps[step - 1].at(name); };
    EXPECT_GT(compare_bounds(*of(7), {{"One", of(4)}, {"Two", of(5)}, {"Three", of(6)}}), 20) << name;
    EXPECT_GT(compare_bounds(*of(8), {{"Two", of(5)}, {"C", of(3)}}), 20) << name;
  }
  // Along members: the extremes of a step have columns of their own.
  const text_table& along = run.steps[6].at("members");
  for (std::size_t r = 0; r < along.rows.size(); ++r) {
    for (const char* const force : {"N", "Vy", "Vz", "T", "My", "Mz"}) {
      if (along.text(r, "N_min_case").empty()) continue;  // a spring
      double least = 1e300, largest = -1e300;
      for (const std::size_t step : {4u, 5u, 6u}) {
        const text_table& own = run.steps[step - 1].at("members");
        least = std::fmin(least, own.number(r, std::string(force) + "_min"));
        largest = std::fmax(largest, own.number(r, std::string(force) + "_max"));
      }
      EXPECT_EQ(along.number(r, std::string(force) + "_min"), least) << force << r;
      EXPECT_EQ(along.number(r, std::string(force) + "_max"), largest) << force << r;
    }
  }
}

namespace {

std::vector<double> array_of(const pugi::xml_document& file, const char* data, const std::string& name) {
  const pugi::xml_node piece = file.child("VTKFile").child("UnstructuredGrid").child("Piece");
  for (const pugi::xml_node array : piece.child(data).children("DataArray")) {
    if (name == array.attribute("Name").value()) return vtu_test::numbers(array);
  }
  ADD_FAILURE() << "no array " << name;
  return {};
}

}  // namespace

TEST(envelope, for_a_viewer) {
  const std::string deck = mixed(a_static_step("A", first_loads(1)) + a_static_step("B", second_loads(1)) +
                                 "*COMBINATION, NAME=One\nA, 1.35\n*COMBINATION, NAME=Two\nA, 1, B, -1\n"
                                 "*ENVELOPE, NAME=E\nOne, B, Two\n");
  const whole_run run = run_all(deck, 5);
  const std::vector<std::size_t> spanned = {3, 2, 4};
  std::vector<pugi::xml_document> files(5);
  for (std::size_t s = 0; s < 5; ++s) ASSERT_TRUE(files[s].load_string(run.vtu[s].c_str()));
  const auto compare = [&](const char* data, const std::string& name) {
    const std::vector<double> least = array_of(files[4], data, name + "_min"),
                              largest = array_of(files[4], data, name + "_max"),
                              governs = array_of(files[4], data, name + "_max_case");
    std::vector<std::vector<double>> values(6);
    for (const std::size_t s : spanned) {
      values[s] = array_of(files[s - 1], data, name);
      ASSERT_EQ(values[s].size(), largest.size()) << name;
    }
    double size = 0;
    for (const double value : largest) size = std::fmax(size, std::fabs(value));
    EXPECT_GT(size, 0) << name;
    for (std::size_t i = 0; i < largest.size(); ++i) {
      double low = 1e300, high = -1e300;
      for (const std::size_t s : spanned) {
        low = std::fmin(low, values[s][i]);
        high = std::fmax(high, values[s][i]);
      }
      EXPECT_EQ(least[i], low) << name << i;
      EXPECT_EQ(largest[i], high) << name << i;
      const auto by = static_cast<std::size_t>(governs[i]);
      EXPECT_NEAR(by == 0 ? 0 : values.at(by).at(i), high, 1e-8 * size) << name << i;
    }
  };
  for (const char* const name :
       {"displacement", "rotation", "reaction_force", "reaction_moment", "N", "Vy", "Vz", "T", "My", "Mz"}) {
    compare("PointData", name);
  }
  for (const char* const name : {"membrane_force", "moment", "shear_force", "von_mises_top", "von_mises_middle",
                                 "von_mises_bottom", "solid_stress", "solid_principal", "solid_von_mises"}) {
    compare("CellData", name);
  }
  std::vector<std::string> names;
  for (const pugi::xml_node array :
       files[4].child("VTKFile").child("UnstructuredGrid").child("FieldData").children("DataArray")) {
    const std::string name = array.attribute("Name").value();
    if (name == "case_numbers") {
      EXPECT_EQ(vtu_test::numbers(array), (std::vector<double>{2, 3, 4}));
    }
    if (name != "case_names") continue;
    std::istringstream letters(array.text().get());
    names.emplace_back();
    for (int letter = 0; letters >> letter;) {
      if (letter == 0) {
        names.emplace_back();
      } else {
        names.back().push_back(static_cast<char>(letter));
      }
    }
  }
  EXPECT_EQ(names, (std::vector<std::string>{"B", "One", "Two", ""}));
}

// Two steps that differ by rounding alone: the first governs everywhere.
TEST(envelope, of_equal_steps_names_the_first) {
  const std::string deck = mixed(a_static_step("A", first_loads(1)) + a_static_step("B", second_loads(1)) +
                                 "*COMBINATION, NAME=One\nA, 0.3, B, 0.1\n*COMBINATION, NAME=Same\nB, 0.1, A, 0.3\n"
                                 "*ENVELOPE, NAME=E\n");
  const whole_run run = run_all(deck, 5);
  for (const auto& [name, table] : run.steps[4]) {
    for (const std::string& column : table.names) {
      if (!ends_with(column, "_case")) continue;
      for (std::size_t r = 0; r < table.rows.size(); ++r) {
        EXPECT_TRUE(table.text(r, column) == "One" || table.text(r, column).empty()) << name << column << r;
      }
    }
  }
}
