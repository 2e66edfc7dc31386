// Threads that share the loops over elements: every number of them gives the bits of one thread, errors included.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <utility>

#include <fmt/format.h>

#include "plastic_support.h"
#include "system/assembly.h"

using namespace plastic_test;

namespace {

template <class VALUE>
bool same_bytes(const std::vector<VALUE>& a, const std::vector<VALUE>& b) {
  if (a.size() != b.size()) return false;
  return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(VALUE)) == 0;
}

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) { return same_bytes(a, b); }

// A wavy sheet with bars and beams along one of its edges, its elements in any order, so that parts of any division
// join the same nodes; more elements than one stretch of the assembly has.
std::string any_order(int n, int seed) {
  sheet s;
  s.n = n;
  s.kind = cells::MIXED;
  s.formulation = "THICK";
  s.place = [](double u, double v) { return point{3 * u, 2 * v + 0.1 * u, 0.2 * std::sin(5 * u) * v}; };
  std::string deck = s.deck("LEFT, 1, 6\nRIGHT, 1, 1, 0.01\nRIGHT, 5, 5, -0.002\n",
                            "*STATIC\n*DLOAD\nSKIN, P, 3\nSKIN, GRAV, 9.81, 0, 0, -1\n");
  std::string members;
  int id = 100000;
  for (int i = 0; i < n; ++i) members += fmt::format("{}, {}, {}\n", ++id, s.node(i, 0) + 1, s.node(i + 1, 0) + 1);
  std::string bars;
  for (int i = 0; i < n; ++i) bars += fmt::format("{}, {}, {}\n", ++id, s.node(i, n) + 1, s.node(i + 1, n) + 1);
  const std::string cards = "*ELEMENT, TYPE=B31, ELSET=EDGE\n" + members + "*ELEMENT, TYPE=T3D2, ELSET=BARS\n" + bars +
                            "*MATERIAL, NAME=OTHER\n*ELASTIC\n7e4, 0.2\n*DENSITY\n3e-3\n"
                            "*BEAM SECTION, ELSET=EDGE, MATERIAL=OTHER, SECTION=RECT\n0.02, 0.03\n"
                            "*SOLID SECTION, ELSET=BARS, MATERIAL=OTHER\n0.001\n";
  deck.insert(deck.find("*BOUNDARY"), cards);
  std::mt19937 engine(static_cast<unsigned>(seed));
  // The lines of *ELEMENT cards in another order.
  std::string shuffled;
  std::vector<std::string> lines;
  bool in_elements = false;
  const auto flush = [&] {
    std::shuffle(lines.begin(), lines.end(), engine);
    for (const std::string& line : lines) shuffled += line + "\n";
    lines.clear();
  };
  for (std::size_t at = 0; at < deck.size();) {
    const std::size_t end = deck.find('\n', at);
    const std::string line = deck.substr(at, end - at);
    at = end + 1;
    if (line.rfind('*', 0) == 0) {
      flush();
      in_elements = line.rfind("*ELEMENT", 0) == 0;
    }
    if (in_elements && line.rfind('*', 0) != 0) {
      lines.push_back(line);
    } else {
      shuffled += line + "\n";
    }
  }
  flush();
  return shuffled;
}

struct sums {
  std::vector<double> stiffness, right, mass, geometric;
  solver::step_results results;
};

std::vector<double> plain(const solver::numbered<double>& values) { return {values.begin(), values.end()}; }

sums sums_of(const solver::model& m, int threads) {
  using namespace solver;
  sums all;
  library_model library(m);
  library.use_threads(threads);
  const load_case loads = gather_load_case(m, m.steps.front());
  symmetric_matrix K;
  const scatter_map map = make_scatter_map(m, loads, K);
  const symmetric_matrix pattern = K;
  all.right.assign(map.equations, 0.0);
  assemble_stiffness(m, library, loads, map, K, all.right, progress("", false));
  all.stiffness = plain(K.value);
  K = pattern;
  assemble_matrix(
      m, library, question::MASS, map, [&](std::size_t e, element_matrix& M) { library.mass(e, M); }, K);
  all.mass = plain(K.value);

  static_solution state;
  state.loads = loads;
  state.displacement.resize(map.equation.size());
  std::mt19937 engine(3);
  for (double& u : state.displacement) u = static_cast<double>(engine() % 2001) * 1e-6 - 1e-3;
  all.results = recover_results(m, library, state);
  keep_state(m, library, state);
  K = pattern;
  assemble_matrix(
      m, library, question::GEOMETRIC_STIFFNESS, map,
      [&](std::size_t e, element_matrix& G) { library.geometric_stiffness(e, G); }, K);
  all.geometric = plain(K.value);
  return all;
}

void expect_same(const sums& one, const sums& other) {
  EXPECT_TRUE(same_bits(one.stiffness, other.stiffness));
  EXPECT_TRUE(same_bits(one.right, other.right));
  EXPECT_TRUE(same_bits(one.mass, other.mass));
  EXPECT_TRUE(same_bits(one.geometric, other.geometric));
  EXPECT_TRUE(same_bytes(one.results.elements, other.results.elements));
  EXPECT_TRUE(same_bytes(one.results.members, other.results.members));
  ASSERT_EQ(one.results.solids.size(), other.results.solids.size());
  for (std::size_t p = 0; p < one.results.solids.size(); ++p) {
    EXPECT_EQ(one.results.solids[p].at.stress, other.results.solids[p].at.stress);
    EXPECT_EQ(one.results.solids[p].at.principal, other.results.solids[p].at.principal);
  }
  EXPECT_TRUE(same_bytes(one.results.in_solids, other.results.in_solids));
  ASSERT_EQ(one.results.nodes.size(), other.results.nodes.size());
  for (std::size_t n = 0; n < one.results.nodes.size(); ++n) {
    EXPECT_EQ(one.results.nodes[n].top, other.results.nodes[n].top);
    EXPECT_EQ(one.results.nodes[n].bottom, other.results.nodes[n].bottom);
  }
  ASSERT_EQ(one.results.parts.size(), other.results.parts.size());
  for (std::size_t p = 0; p < one.results.parts.size(); ++p) {
    EXPECT_EQ(one.results.parts[p].at[0].stress, other.results.parts[p].at[0].stress);
    EXPECT_EQ(one.results.parts[p].shear, other.results.parts[p].shear);
  }
  ASSERT_EQ(one.results.fields.size(), other.results.fields.size());
}

double largest(const std::vector<double>& values) {
  double most = 0;
  for (const double value : values) most = std::fmax(most, std::fabs(value));
  return most;
}

// A block of bricks, which take the record of the thread that asks them.
std::string bricks(int n) {
  std::string deck = "*NODE, NSET=ALL\n";
  const auto node = [&](int i, int j, int k) { return (i * (n + 1) + j) * (n + 1) + k + 1; };
  for (int i = 0; i <= n; ++i) {
    for (int j = 0; j <= n; ++j) {
      for (int k = 0; k <= n; ++k)
        deck += fmt::format("{}, {}, {}, {}\n", node(i, j, k), i + 0.05 * k * j, j, k + 0.1 * i);
    }
  }
  deck += "*ELEMENT, TYPE=C3D8, ELSET=BLOCK\n";
  int id = 0;
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) {
      for (int k = 0; k < n; ++k) {
        deck += fmt::format("{}, {}, {}, {}, {}, {}, {}, {}, {}\n", ++id, node(i, j, k), node(i + 1, j, k),
                            node(i + 1, j + 1, k), node(i, j + 1, k), node(i, j, k + 1), node(i + 1, j, k + 1),
                            node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1));
      }
    }
  }
  return deck +
         "*MATERIAL, NAME=M\n*ELASTIC\n2e5, 0.3\n*DENSITY\n8e-9\n*SOLID SECTION, ELSET=BLOCK, MATERIAL=M\n"
         "*BOUNDARY\n1, 1, 3\n2, 1, 2, 0.01\n*STEP\n*STATIC\n*CLOAD\n3, 1, 5\n*END STEP\n";
}

}  // namespace

TEST(ElementThreads, EveryNumberGivesTheBitsOfOne) {
  for (const std::string& deck : {any_order(52, 1), any_order(9, 2), bricks(17)}) {
    const solver::model m = read(deck);
    const sums one = sums_of(m, 1);
    EXPECT_GT(largest(one.stiffness), 0);
    EXPECT_GT(largest(one.right), 0);
    EXPECT_GT(largest(one.mass), 0);
    EXPECT_GT(largest(one.geometric), 0);
    for (const int threads : {2, 3, 8}) {
      SCOPED_TRACE(threads);
      expect_same(one, sums_of(m, threads));
    }
  }
}

TEST(ElementThreads, PartsCoverAllElementsOnceAndInOrder) {
  const solver::model m = read(any_order(3, 1));
  solver::library_model library(m);
  library.use_threads(8);
  for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{7}, std::size_t{8}, std::size_t{1000}}) {
    std::vector<int> seen(count + 5, 0);
    library.divide(5, 5 + count, 8, [&](std::size_t, std::size_t first, std::size_t last) {
      for (std::size_t e = first; e < last; ++e) ++seen[e];
    });
    EXPECT_EQ(std::count(seen.begin(), seen.begin() + 5, 0), 5);
    EXPECT_EQ(std::count(seen.begin() + 5, seen.end(), 1), static_cast<std::ptrdiff_t>(count));
  }
}

namespace {

// Forty elements of one kind in a row, all in the set E.
std::string row_of(const std::string& type, const std::string& section) {
  std::string deck = "*NODE\n";
  for (int i = 0; i <= 40; ++i) {
    for (int k = 0; k < 4; ++k) deck += fmt::format("{}, {}, {}, {}\n", 100 * k + i + 1, i, k % 2, k / 2);
  }
  deck += "*ELEMENT, TYPE=" + type + ", ELSET=E\n";
  for (int i = 1; i <= 40; ++i) {
    const int j = i + 1;
    if (type == "S4") deck += fmt::format("{0}, {0}, {1}, {2}, {3}\n", i, j, 100 + j, 100 + i);
    if (type == "B31" || type == "T3D2") deck += fmt::format("{0}, {0}, {1}\n", i, j);
    if (type == "C3D8") {
      deck += fmt::format("{0}, {0}, {1}, {2}, {3}, {4}, {5}, {6}, {7}\n", i, j, 100 + j, 100 + i, 200 + i, 200 + j,
                          300 + j, 300 + i);
    }
  }
  return deck + "*MATERIAL, NAME=M\n*ELASTIC\n1e5, 0.3\n*DENSITY\n1\n" + section +
         "*BOUNDARY\n1, 1, 3\n*STEP\n*STATIC\n*END STEP\n";
}

const std::string BEAM = "*BEAM SECTION, ELSET=E, MATERIAL=M, SECTION=RECT";

// The questions that four threads may share, in the order of the enumeration: L S M G R P.
std::string shared(const std::string& deck, bool second_order = false) {
  using solver::question;
  const solver::model m = read(deck);
  solver::library_model library(m);
  library.use_threads(4);
  if (second_order) library.second_order(true);
  std::string letters;
  const std::pair<question, char> all[] = {{question::LOADS, 'L'},   {question::STIFFNESS, 'S'},
                                           {question::MASS, 'M'},    {question::GEOMETRIC_STIFFNESS, 'G'},
                                           {question::RESULTS, 'R'}, {question::PLASTIC, 'P'}};
  for (const auto& [what, letter] : all) {
    const int threads = library.threads_for(what);
    EXPECT_TRUE(threads == 1 || threads == 2) << threads;  // one for sixteen elements and more
    if (threads > 1) letters += letter;
  }
  return letters;
}

}  // namespace

// What a call changes for itself in what threads share must not be asked side by side. A race shows in few runs alone:
// so this asks what is divided.
TEST(ElementThreads, DivideWhatChangesNothingThatTheyShare) {
  const std::string shell = "*SHELL SECTION, ELSET=E, MATERIAL=M\n0.1\n";
  EXPECT_EQ(shared(row_of("S4", shell)), "LSMGRP");
  EXPECT_EQ(shared(row_of("B31", BEAM + "\n0.1, 0.1\n")), "LSMRP");
  EXPECT_EQ(shared(row_of("B31", BEAM + ", OFFSET1=0.5\n0.1, 0.1\n")), "");
  EXPECT_EQ(shared(row_of("T3D2", "*CABLE SECTION, ELSET=E, MATERIAL=M\n1, 1.1\n")), "");
  const std::string brick = row_of("C3D8", "*SOLID SECTION, ELSET=E, MATERIAL=M\n");
  EXPECT_EQ(shared(brick), "LSMGRP");
  EXPECT_EQ(shared(brick, true), "SMGRP");
  EXPECT_EQ(shared(row_of("S4",
                          "*MATERIAL, NAME=PLY\n*ELASTIC, TYPE=LAMINA\n140., 10., 0.3, 5., 4., 3.\n*DENSITY\n2.\n"
                          "*SHELL SECTION, ELSET=E, COMPOSITE\n0.1, , PLY, 0.\n0.1, , PLY, 90.\n0.1, , PLY, 0.\n")),
            "LM");
  const auto yielding = [&](const char* first, const char* second) {
    return row_of("S4", std::string("*PLASTIC\n1000., 0.\n*ELSET, ELSET=A, GENERATE\n1, 20\n*ELSET, ELSET=B, GENERATE\n"
                                    "21, 40\n*SHELL SECTION, ELSET=A, MATERIAL=M, MODEL=") +
                            first + "\n0.1\n*SHELL SECTION, ELSET=B, MATERIAL=M, MODEL=" + second + "\n0.1\n");
  };
  EXPECT_EQ(shared(yielding("SECTION", "SECTION")), "LSMGRP");
  EXPECT_EQ(shared(yielding("LAYERED", "LAYERED")), "LSMGRP");
  EXPECT_EQ(shared(yielding("SECTION", "LAYERED")), "LSMGR");
}

// Some elements, in several parts, that cannot be answered: the error names the one that comes first.
TEST(ElementThreads, TheFirstErrorIsTold) {
  solver::model m = read(any_order(20, 4));
  m.materials.push_back(m.materials[m.shell_sections[0].material]);
  m.materials[solver::count_of(m.materials) - 1].E1 = HUGE_VAL;
  m.shell_sections.push_back(m.shell_sections[0]);
  m.shell_sections[1].material = solver::count_of(m.materials) - 1;
  std::vector<int> bad;
  for (std::size_t e = 50; e < m.elements.size(); e += 97) {
    if (!solver::is_shell(m.elements[e].type)) continue;
    m.elements[e].section = 1;
    bad.push_back(m.elements[e].id);
  }
  ASSERT_GT(bad.size(), 3);
  for (const int threads : {1, 2, 7}) {
    solver::library_model library(m);
    library.use_threads(threads);
    const solver::load_case loads = gather_load_case(m, m.steps.front());
    solver::symmetric_matrix K;
    const solver::scatter_map map = make_scatter_map(m, loads, K);
    std::vector<double> right(map.equations);
    std::string said;
    try {
      assemble_stiffness(m, library, loads, map, K, right, solver::progress("", false));
    } catch (const std::exception& error) {
      said = error.what();
    }
    EXPECT_NE(said.find(fmt::format("of element {} is not finite", bad.front())), std::string::npos) << said;
  }
}

// The whole path of plates that yield, both models: increments, stored state and what it shows.
TEST(ElementThreads, PathsOfPlatesThatYield) {
  for (const char* const model : {"MODEL=SECTION", "MODEL=LAYERED, POINTS=5"}) {
    sheet form;
    form.n = 6;
    strip s = a_strip(form, 10);
    s.of = {1000, model};
    const solver::model m = read(s.bending("1.2, 8\n"));
    ASSERT_GT(m.elements.size(), 80);
    std::vector<std::vector<double>> shown;
    for (const int threads : {1, 2, 5}) {
      const auto solution = load(m, solver::default_solver(), threads);
      ASSERT_FALSE(solution.empty());
      shown.push_back(solution.back().plates.displacement);
      EXPECT_GT(largest(shown.back()), 0);
      EXPECT_TRUE(same_bits(shown.back(), shown.front())) << model << ", " << threads;
    }
  }
}
