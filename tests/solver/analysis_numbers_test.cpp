// analysis_numbers_test.cpp: each number that the program gives out stands where its name says. Displacements,
// reactions and stresses are made up here, all different, so that a place taken for another shows.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <random>
#include <sstream>

#include <pugixml.hpp>

#include "analysis_support.h"
#include "elements/library_model.h"
#include "output/csv_writer.h"
#include "output/summary.h"
#include "output/vtu_writer.h"

using namespace analysis_test;

namespace {

using numbers = std::vector<double>;
using recovered_results = decltype(solved::results);

grid bent_sheet() {
  grid g(
      2, 2,
      [](double u, double v) {
        return point{3 * u, 2 * v, u * u + 0.3 * v};
      },
      isotropic(1000, 0.3), 0.1);
  for (solver::node& n : g.m.nodes) n.id = 7 * n.id + 100;
  for (solver::element& e : g.m.elements) e.id = 3 * e.id + 1000;
  return g;
}

double random_number(std::mt19937& engine) { return static_cast<double>(engine()) / 4294967296.0 - 0.5; }

numbers random_numbers(std::mt19937& engine, std::size_t count) {
  numbers result(count);
  for (double& value : result) value = random_number(engine);
  return result;
}

solver::static_solution made_up_solution(const grid& g, std::mt19937& engine) {
  solver::static_solution s;
  s.loads = solver::gather_load_case(g.m, g.m.steps.front());
  s.displacement = random_numbers(engine, 6 * g.m.nodes.size());
  s.load = random_numbers(engine, 6 * g.m.nodes.size());
  s.reaction = random_numbers(engine, 6 * g.m.nodes.size());
  return s;
}

template <class VALUES>
void make_up(VALUES& values, std::mt19937& engine) {
  for (double& value : values) value = random_number(engine);
}

recovered_results made_up_results(const grid& g, std::mt19937& engine) {
  recovered_results all;
  all.elements.resize(g.m.elements.size());
  all.nodes.resize(g.m.nodes.size());
  for (solver::element_result& e : all.elements) {
    make_up(e.force, engine);
    make_up(e.moment, engine);
    for (solver::surface_stress& at : e.at) {
      make_up(at.stress, engine);
      at.angle = random_number(engine);
      at.first = random_number(engine);
      at.second = random_number(engine);
      at.equivalent = random_number(engine);
    }
  }
  for (solver::nodal_result& n : all.nodes) {
    make_up(n.top, engine);
    make_up(n.bottom, engine);
    n.equivalent_top = random_number(engine);
    n.equivalent_bottom = random_number(engine);
  }
  return all;
}

template <class VALUES>
void append(numbers& list, const VALUES& values) {
  list.insert(list.end(), values.begin(), values.end());
}

// The expected arrays by their names.
std::map<std::string, numbers> point_arrays(const grid& g, const solver::static_solution& s,
                                            const recovered_results& r) {
  std::map<std::string, numbers> a;
  for (std::size_t n = 0; n < g.m.nodes.size(); ++n) {
    a["node_id"].push_back(g.m.nodes[n].id);
    for (std::size_t i = 0; i < 3; ++i) {
      a["displacement"].push_back(s.displacement[6 * n + i]);
      a["rotation"].push_back(s.displacement[6 * n + 3 + i]);
      a["reaction_force"].push_back(s.reaction[6 * n + i]);
      a["reaction_moment"].push_back(s.reaction[6 * n + 3 + i]);
    }
    append(a["nodal_stress_top"], r.nodes[n].top);
    append(a["nodal_stress_bottom"], r.nodes[n].bottom);
    a["nodal_von_mises_top"].push_back(r.nodes[n].equivalent_top);
    a["nodal_von_mises_bottom"].push_back(r.nodes[n].equivalent_bottom);
  }
  return a;
}

std::map<std::string, numbers> cell_arrays(const grid& g, const recovered_results& r) {
  std::map<std::string, numbers> a;
  const std::array<std::string, 3> surface = {"top", "middle", "bottom"};
  for (std::size_t e = 0; e < g.m.elements.size(); ++e) {
    a["element_id"].push_back(g.m.elements[e].id);
    append(a["membrane_force"], r.elements[e].force);
    append(a["moment"], r.elements[e].moment);
    for (std::size_t i = 0; i < 3; ++i) {
      const solver::surface_stress& at = r.elements[e].at[i];
      append(a["stress_" + surface[i]], at.stress);
      append(a["principal_" + surface[i]], numbers{at.first, at.second, at.angle});
      a["von_mises_" + surface[i]].push_back(at.equivalent);
    }
  }
  return a;
}

numbers read_numbers(const char* text) {
  std::istringstream in(text);
  numbers result;
  for (double value = 0; in >> value;) result.push_back(value);
  return result;
}

void expect_arrays(const pugi::xml_node& part, const std::map<std::string, numbers>& expected) {
  for (const auto& [name, values] : expected) {
    const pugi::xml_node array = part.find_child_by_attribute("DataArray", "Name", name.c_str());
    EXPECT_EQ(read_numbers(array.text().get()), values) << name;
  }
}

point minus(const point& a, const point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

point cross(const point& a, const point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double inner(const point& a, const point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

point unit(const point& a) {
  const double length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
  return {a[0] / length, a[1] / length, a[2] / length};
}

// Rows: along the side from the first node to the second, in the plane, normal.
std::array<point, 3> axes_of(const grid& g, const solver::element& e) {
  const auto at = [&](std::size_t n) { return g.m.nodes[static_cast<std::size_t>(e.nodes[n])].xyz; };
  const point x = unit(minus(at(1), at(0))), z = unit(cross(minus(at(1), at(0)), minus(at(2), at(0))));
  return {x, cross(z, x), z};
}

// Rows: the projection of the global x axis on the element, in the plane, normal.
std::array<point, 3> result_axes_of(const grid& g, const solver::element& e) {
  const point z = axes_of(g, e)[2];
  const point x = unit({1 - z[0] * z[0], -z[0] * z[1], -z[0] * z[2]});
  return {x, cross(z, x), z};
}

solver::element_vector displacements_of(const solver::element& e, const solver::static_solution& s) {
  solver::element_vector u{};
  for (int n = 0; n < 3; ++n)
    for (int d = 0; d < 6; ++d)
      u(6 * n + d + 1) = s.displacement[solver::freedom(e.nodes[static_cast<std::size_t>(n)], d)];
  return u;
}

}  // namespace

TEST(AnalysisNumbers, EveryArrayOfTheGridHoldsWhatItsNameSays) {
  std::mt19937 engine(41);
  const grid g = bent_sheet();
  const solver::static_solution s = made_up_solution(g, engine);
  const recovered_results r = made_up_results(g, engine);
  std::ostringstream text;
  solver::write_vtu(text, g.m, s, r);
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(text.str().c_str()));
  const pugi::xml_node piece = document.child("VTKFile").child("UnstructuredGrid").child("Piece");
  expect_arrays(piece.child("PointData"), point_arrays(g, s, r));
  expect_arrays(piece.child("CellData"), cell_arrays(g, r));

  numbers x, normal;
  for (const solver::element& e : g.m.elements) {
    append(x, result_axes_of(g, e)[0]);
    append(normal, result_axes_of(g, e)[2]);
  }
  const auto axes = [&](const char* name) {
    return read_numbers(piece.child("CellData").find_child_by_attribute("DataArray", "Name", name).text().get());
  };
  EXPECT_WITHIN(axes("axis_x"), x, 1.0, 1e-14);
  EXPECT_WITHIN(axes("normal"), normal, 1.0, 1e-14);
}

TEST(AnalysisNumbers, EveryColumnOfTheTable) {
  std::mt19937 engine(42);
  const grid g = bent_sheet();
  const solver::static_solution s = made_up_solution(g, engine);
  std::ostringstream text;
  solver::write_csv(text, g.m, s);
  std::istringstream in(text.str());
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "node,x,y,z,ux,uy,uz,rx,ry,rz,force_x,force_y,force_z,moment_x,moment_y,moment_z");
  for (std::size_t n = 0; n < g.m.nodes.size(); ++n) {
    ASSERT_TRUE(std::getline(in, line));
    for (char& c : line) c = c == ',' ? ' ' : c;
    numbers expected = {static_cast<double>(g.m.nodes[n].id)};
    append(expected, g.m.nodes[n].xyz);
    for (std::size_t d = 0; d < 6; ++d) expected.push_back(s.displacement[6 * n + d]);
    for (std::size_t d = 0; d < 6; ++d) expected.push_back(s.reaction[6 * n + d]);
    EXPECT_EQ(read_numbers(line.c_str()), expected);
  }
  EXPECT_FALSE(std::getline(in, line));
}

TEST(AnalysisNumbers, SumsOfForcesAndMomentsByHand) {
  grid g = bent_sheet();
  solver::static_solution s;
  s.load.assign(6 * g.m.nodes.size(), 0.0);
  s.reaction = s.load;
  g.m.nodes[4].xyz = {2, 3, 5};
  const numbers at_node = {7, 11, 13, 17, 19, 23};
  for (std::size_t d = 0; d < 6; ++d) {
    s.load[6 * 4 + d] = at_node[d];
    s.reaction[6 * 4 + d] = -2 * at_node[d];
  }
  const solver::equilibrium sums = solver::sum_forces(g.m, s);
  // (2, 3, 5) x (7, 11, 13) = (39 - 55, 35 - 26, 22 - 21)
  const std::array<double, 6> applied = {7, 11, 13, 17 - 16, 19 + 9, 23 + 1};
  EXPECT_EQ(sums.applied, applied);
  for (std::size_t d = 0; d < 6; ++d) EXPECT_EQ(sums.reaction[d], -2 * applied[d]) << d;
}

TEST(AnalysisNumbers, LargestDisplacementAndRotationByLengthAndUsersNumber) {
  const grid g = bent_sheet();
  solver::static_solution s;
  s.displacement.assign(6 * g.m.nodes.size(), 0.0);
  s.displacement[6 * 2 + 0] = 2.5;  // the largest component
  s.displacement[6 * 5 + 1] = -2;   // the longest vector: (0, -2, 2)
  s.displacement[6 * 5 + 2] = 2;
  s.displacement[6 * 7 + 3] = 0.25;  // the longest rotation: (0.25, 0, -0.5)
  s.displacement[6 * 7 + 5] = -0.5;
  const std::string text = solver::displacement_summary(g.m, s);
  EXPECT_NE(text.find("displacement  2.828427e+00   (0.000000e+00, -2.000000e+00, 2.000000e+00) at node 142\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("rotation      5.590170e-01   (2.500000e-01, 0.000000e+00, -5.000000e-01) at node 156\n"),
            std::string::npos)
      << text;
}

TEST(AnalysisNumbers, NamesOfTheSixDirections) {
  const std::array<std::string, 6> names = {"translation x", "translation y", "translation z",
                                            "rotation x",    "rotation y",    "rotation z"};
  const std::array<std::string, 6> shorts = {"ux", "uy", "uz", "rx", "ry", "rz"};
  for (int d = 0; d < 6; ++d) {
    EXPECT_EQ(solver::direction_name(d), names[static_cast<std::size_t>(d)]);
    EXPECT_EQ(solver::direction_short_name(d), shorts[static_cast<std::size_t>(d)]);
  }
}

// The stress at a node: of each element round it the record of that very node, sx e1 e1 + sy e2 e2 + sxy (e1 e2 + e2
// e1) in global axes, averaged.
TEST(AnalysisNumbers, NodalStressIsTheMeanOfTheElementsRoundANode) {
  std::mt19937 engine(43);
  const grid g = bent_sheet();
  const solver::static_solution s = made_up_solution(g, engine);
  solver::library_model library(g.m);
  const recovered_results r = solver::recover_results(g.m, library, s);
  const int row[6] = {0, 1, 2, 0, 1, 0}, column[6] = {0, 1, 2, 1, 2, 2};
  std::vector<std::array<numbers, 2>> sum(g.m.nodes.size(), {numbers(6, 0.0), numbers(6, 0.0)});
  numbers count(g.m.nodes.size(), 0.0);
  for (std::size_t e = 0; e < g.m.elements.size(); ++e) {
    const solver::element& elem = g.m.elements[e];
    const std::array<point, 3> a = axes_of(g, elem);
    const solver::element_vector u = displacements_of(elem, s);
    const solver::element_results records = library.plates().results(e, u, s.loads.element[e]);
    for (std::size_t n = 0; n < 3; ++n) {
      const auto node = static_cast<std::size_t>(elem.nodes[n]);
      count[node] += 1;
      for (std::size_t face = 0; face < 2; ++face) {
        const double* t = records.nodes + 90 * n + (face == 0 ? 6 : 28);
        for (std::size_t c = 0; c < 6; ++c) {
          const auto i = static_cast<std::size_t>(row[c]), j = static_cast<std::size_t>(column[c]);
          sum[node][face][c] +=
              t[0] * a[0][i] * a[0][j] + t[1] * a[1][i] * a[1][j] + t[2] * (a[0][i] * a[1][j] + a[1][i] * a[0][j]);
        }
      }
    }
  }
  for (std::size_t n = 0; n < g.m.nodes.size(); ++n) {
    for (auto& face : sum[n])
      for (double& value : face) value /= count[n];
    const double scale = max_norm(sum[n][0]) + max_norm(sum[n][1]);
    EXPECT_WITHIN(numbers(r.nodes[n].top.begin(), r.nodes[n].top.end()), sum[n][0], scale, 1e-13);
    EXPECT_WITHIN(numbers(r.nodes[n].bottom.begin(), r.nodes[n].bottom.end()), sum[n][1], scale, 1e-13);
    const auto mises = [](const numbers& t) {
      return std::sqrt(t[0] * t[0] + t[1] * t[1] + t[2] * t[2] - t[0] * t[1] - t[1] * t[2] - t[2] * t[0] +
                       3 * (t[3] * t[3] + t[4] * t[4] + t[5] * t[5]));
    };
    EXPECT_WITHIN(r.nodes[n].equivalent_top, mises(sum[n][0]), scale, 1e-13);
    EXPECT_WITHIN(r.nodes[n].equivalent_bottom, mises(sum[n][1]), scale, 1e-13);
  }
}

// Of an element: the mean of its four points, for resultants and for the stresses of each surface, along the projection
// of the global x axis and across it.
TEST(AnalysisNumbers, ElementResultsAreMeansOfTheFourPoints) {
  std::mt19937 engine(44);
  const grid g = bent_sheet();
  const solver::static_solution s = made_up_solution(g, engine);
  solver::library_model library(g.m);
  const recovered_results r = solver::recover_results(g.m, library, s);
  for (std::size_t e = 0; e < g.m.elements.size(); ++e) {
    const solver::element& elem = g.m.elements[e];
    const solver::element_vector u = displacements_of(elem, s);
    const double* points = library.plates().results(e, u, s.loads.element[e]).points;
    const std::array<point, 3> from = axes_of(g, elem), to = result_axes_of(g, elem);
    const auto mean = [&](int first) {
      numbers m(3, 0.0);
      for (int p = 0; p < 4; ++p)
        for (int i = 0; i < 3; ++i) m[static_cast<std::size_t>(i)] += 0.25 * points[90 * p + first - 1 + i];
      const double T[2][2] = {{m[0], m[2]}, {m[2], m[1]}};
      const auto component = [&](std::size_t a, std::size_t b) {
        double sum = 0;
        for (std::size_t i = 0; i < 2; ++i)
          for (std::size_t j = 0; j < 2; ++j) sum += inner(to[a], from[i]) * T[i][j] * inner(to[b], from[j]);
        return sum;
      };
      return numbers{component(0, 0), component(1, 1), component(0, 1)};
    };
    const auto listed = [](const std::array<double, 3>& v) { return numbers(v.begin(), v.end()); };
    EXPECT_WITHIN(listed(r.elements[e].force), mean(37), max_norm(mean(37)), 1e-14);
    EXPECT_WITHIN(listed(r.elements[e].moment), mean(40), max_norm(mean(40)), 1e-14);
    const int first[3] = {7, 18, 29};
    for (std::size_t i = 0; i < 3; ++i) {
      const numbers stress = mean(first[i]);
      EXPECT_WITHIN(listed(r.elements[e].at[i].stress), stress, max_norm(stress), 1e-14) << i;
    }
  }
}
