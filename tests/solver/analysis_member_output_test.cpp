// Fields of members in what the program writes and prints.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include <pugixml.hpp>

#include "deck_builder.h"
#include "frame_decks.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "pushover_support.h"
#include "run.h"

using namespace frame_test;
using deck_test::scratch_folder;

namespace {

const std::string SIMPLE = "1, 1, 4\n2, 2, 3\n";

// Length 4000, q = -3 along local y: a moment of 6e6 in the middle.
std::string loaded_beam() { return straight_member().deck("", SIMPLE, "*STATIC\n*DLOAD\nMEMBER, P1, -3\n"); }

// The lines of a table as numbers by column; an empty field is left out.
std::vector<std::map<std::string, double>> table(const std::string& path) {
  std::ifstream in(path);
  std::string line, field;
  std::vector<std::string> names;
  std::vector<std::map<std::string, double>> rows;
  std::getline(in, line);
  for (std::istringstream fields(line); std::getline(fields, field, ',');) names.push_back(field);
  while (std::getline(in, line)) {
    rows.emplace_back();
    std::istringstream fields(line);
    std::size_t i = 0;
    for (; std::getline(fields, field, ','); ++i)
      if (!field.empty()) rows.back()[names.at(i)] = std::stod(field);
  }
  return rows;
}

struct grid_file {
  pugi::xml_document document;
  pugi::xml_node piece;

  explicit grid_file(const solver::model& m, int stations = solver::USUAL_STATIONS) {
    const solved s = solve(m);
    std::ostringstream out;
    solver::write_vtu(out, m, s.solution, s.results, stations);
    EXPECT_TRUE(document.load_string(out.str().c_str()));
    piece = document.child("VTKFile").child("UnstructuredGrid").child("Piece");
  }
  bool has(const char* part, const char* name) const {
    return !piece.child(part).find_child_by_attribute("DataArray", "Name", name).empty();
  }
  std::vector<double> numbers(const char* part, const char* name) const {
    std::istringstream text(piece.child(part).find_child_by_attribute("DataArray", "Name", name).text().get());
    std::vector<double> result;
    for (double value = 0; text >> value;) result.push_back(value);
    return result;
  }
};

solver::options options_for(const scratch_folder& scratch, const std::string& text) {
  solver::options wanted;
  wanted.deck = scratch.write("frame.inp", text);
  wanted.output = scratch.path("r.vtu");
  wanted.members = scratch.path("m.csv");
  wanted.stations = scratch.path("s.csv");
  wanted.quiet = true;
  return wanted;
}

}  // namespace

TEST(AnalysisMemberOutput, SummaryNamesPlacesWithinMembers) {
  const solver::model m = read(loaded_beam());
  const solved s = solve(m);
  const std::string forces = member_summary(m, s.results);
  EXPECT_NE(forces.find("largest moment z      6.000000e+06   in element 1 at x = 2000\n"), std::string::npos)
      << forces;
  EXPECT_NE(forces.find("largest shear y      -6.000000e+03   end 1 of element 1\n"), std::string::npos) << forces;
  EXPECT_EQ(forces.find("moment y"), std::string::npos) << forces;
  // 5 q L^4 / 384 E I = 0.595238...; both ends turn by q L^3 / 24 E I.
  const std::string moved = displacement_summary(m, s.solution, s.results.fields);
  EXPECT_NE(moved.find("largest displacement  5.952381e-01   ("), std::string::npos) << moved;
  EXPECT_NE(moved.find(") in element 1 at x = 2000\n"), std::string::npos) << moved;
  EXPECT_NE(moved.find("largest rotation      4.761905e-04   ("), std::string::npos) << moved;
  EXPECT_NE(moved.find(") at node 1\n"), std::string::npos) << moved;
}

TEST(AnalysisMemberOutput, SummaryTellsTheRotationWithinAMember) {
  // Clamped at both ends: E I theta = -q x (L - x) (L - 2 x) / 12, largest at x = L (1 - 1 / sqrt(3)) / 2, where it is
  // sqrt(3) q L^3 / 216.
  std::string text = loaded_beam();
  const std::size_t at = text.find("*BOUNDARY\n") + 10;
  text.replace(at, text.find('*', at) - at, "1, ENCASTRE\n2, ENCASTRE\n");
  const solver::model m = read(text);
  const solved s = solve(m);
  const std::string moved = displacement_summary(m, s.solution, s.results.fields);
  const std::size_t line = moved.find("largest rotation");
  double size = 0, x = 0, y = 0, z = 0, place = 0;
  int element = 0;
  ASSERT_EQ(std::sscanf(moved.c_str() + line, "largest rotation %lf (%lf, %lf, %lf) in element %d at x = %lf", &size,
                        &x, &y, &z, &element, &place),
            6)
      << moved;
  const double theta = std::sqrt(3.0) * 3 * 64e9 / 216 / (210000 * 8e7);
  EXPECT_WITHIN(size, theta, theta, 1e-6);
  EXPECT_WITHIN(std::fabs(z), theta, theta, 1e-6);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  EXPECT_WITHIN(std::fmin(place, 4000 - place), 2000 * (1 - 1 / std::sqrt(3.0)), 4000, 1e-6);
  EXPECT_LT(z * (2000 - place), 0) << "the first half turns down";
}

TEST(AnalysisMemberOutput, TablesOfMembersAndStations) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch, loaded_beam());
  wanted.station_count = 5;
  solver::run(wanted);
  const auto members = table(scratch.path("m.csv"));
  ASSERT_EQ(members.size(), 2U);
  for (auto row : members) {
    EXPECT_WITHIN(row.at("Mz_max"), 6e6, 6e6, 1e-12);
    EXPECT_WITHIN(row.at("Mz_max_at"), 2000, 2000, 1e-12);
    EXPECT_WITHIN(row.at("Mz_min"), 0, 6e6, 1e-12);
    EXPECT_WITHIN(row.at("Vy_min"), -6000, 6000, 1e-12);
    EXPECT_EQ(row.at("Vy_min_at"), 0);
    EXPECT_WITHIN(row.at("displacement_max"), 5.0 / 384 * 3 * 256e12 / (210000 * 8e7), 1, 1e-12);
    EXPECT_EQ(row.count("sag"), 0U);  // of cables
  }
  const auto stations = table(scratch.path("s.csv"));
  ASSERT_EQ(stations.size(), 5U);
  for (int i = 0; i < 5; ++i) {
    const auto& row = stations[static_cast<std::size_t>(i)];
    const double x = 1000.0 * i;
    EXPECT_EQ(row.at("element"), 1);
    EXPECT_WITHIN(row.at("distance"), x, 4000, 1e-15);
    EXPECT_WITHIN(row.at("x"), x, 4000, 1e-15);
    EXPECT_WITHIN(row.at("Mz"), 3 * x * (4000 - x) / 2, 6e6, 1e-12);
    EXPECT_WITHIN(row.at("Vy"), 3 * (x - 2000), 6000, 1e-12);
    EXPECT_WITHIN(row.at("uy"), -3 * x * (64e9 - 8000 * x * x + x * x * x) / (24 * 210000 * 8e7), 1, 1e-12);
  }
}

TEST(AnalysisMemberOutput, LinksAndSpringsLeaveTheColumnsEmpty) {
  const scratch_folder scratch;
  solver::run(options_for(
      scratch,
      "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n*ELEMENT, TYPE=SPRINGA, ELSET=S\n1, 1, 2\n*SPRING, ELSET=S\n\n5\n*BOUNDARY\n1, "
      "PINNED\n2, 2, 3\n*STEP\n*STATIC\n*CLOAD\n2, 1, 10\n*END STEP\n"));
  const auto members = table(scratch.path("m.csv"));
  ASSERT_EQ(members.size(), 2U);
  EXPECT_WITHIN(members[1].at("force_x"), 10, 10, 1e-6);
  EXPECT_EQ(members[0].count("N_max"), 0U);
  EXPECT_TRUE(table(scratch.path("s.csv")).empty());
}

TEST(AnalysisMemberOutput, BeamsAreLinesThroughTheirStations) {
  const solver::model m = read(loaded_beam());
  const grid_file file(m, 5);
  EXPECT_EQ(file.numbers("Cells", "types"), std::vector<double>{4});  // a polyline of VTK
  EXPECT_EQ(file.numbers("Cells", "connectivity"), (std::vector<double>{2, 3, 4, 5, 6}));
  EXPECT_EQ(file.numbers("PointData", "node_id"), (std::vector<double>{1, 2, -1, -1, -1, -1, -1}));
  EXPECT_EQ(file.numbers("PointData", "station_element"), (std::vector<double>{-1, -1, 1, 1, 1, 1, 1}));
  const std::vector<double> x = file.numbers("Points", "Points"), u = file.numbers("PointData", "displacement");
  const std::vector<double> M = file.numbers("PointData", "Mz"), V = file.numbers("PointData", "Vy");
  const std::vector<double> diagram = file.numbers("PointData", "moment_diagram");
  const std::vector<double> shears = file.numbers("PointData", "shear_diagram");
  ASSERT_EQ(shears.size(), 21U);
  for (std::size_t p = 2; p < 7; ++p) {
    EXPECT_WITHIN(shears[3 * p + 1], V[p], 6000, 1e-12) << p;  // Vy along y
    EXPECT_EQ(shears[3 * p], 0) << p;
    EXPECT_EQ(shears[3 * p + 2], 0) << p;
  }
  ASSERT_EQ(u.size(), 21U);
  ASSERT_EQ(M.size(), 7U);
  EXPECT_EQ(x[3 * 4], 2000);
  EXPECT_WITHIN(M[4], 6e6, 6e6, 1e-12);
  EXPECT_WITHIN(diagram[3 * 4 + 1], -6e6, 6e6, 1e-12);  // below, where the tension is
  EXPECT_WITHIN(V[2], -6000, 6000, 1e-12);
  EXPECT_WITHIN(u[3 * 4 + 1], -5.0 / 384 * 3 * 256e12 / (210000 * 8e7), 1, 1e-12);
  EXPECT_EQ(u[3 * 1 + 1], 0);  // node 2
}

TEST(AnalysisMemberOutput, ArraysWithoutMeaningAreLeftOut) {
  const grid_file beam(read(loaded_beam()));
  for (const char* const name : {"von_mises_top", "stress_middle", "principal_bottom", "membrane_force", "moment"})
    EXPECT_FALSE(beam.has("CellData", name)) << name;
  for (const char* const name : {"nodal_stress_top", "nodal_von_mises_bottom", "nodal_parts"})
    EXPECT_FALSE(beam.has("PointData", name)) << name;
  for (const char* const name : {"rotation", "reaction_moment", "T", "My", "Vz"})
    EXPECT_TRUE(beam.has("PointData", name)) << name;
  EXPECT_TRUE(beam.has("CellData", "end_moment_1"));

  const grid_file truss(
      read("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=S\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0\n"
           "*SOLID SECTION, ELSET=S, MATERIAL=M\n2\n*BOUNDARY\n1, PINNED\n2, 2, 3\n*STEP\n*STATIC\n*CLOAD\n2, 1, 10\n"
           "*END STEP\n"));
  for (const char* const name : {"rotation", "reaction_moment", "T", "My", "Vz", "moment_diagram"})
    EXPECT_FALSE(truss.has("PointData", name)) << name;
  EXPECT_FALSE(truss.has("CellData", "end_moment_1"));
  EXPECT_FALSE(truss.has("CellData", "von_mises_top"));
  EXPECT_TRUE(truss.has("CellData", "end_force_1"));
  EXPECT_WITHIN(truss.numbers("PointData", "N"), (std::vector<double>{0, 0, 10, 10}), 10, 1e-12);

  const grid_file membrane(
      read("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n*ELEMENT, TYPE=M3D3, ELSET=S\n1, 1, 2, 3\n*MATERIAL, NAME=M\n"
           "*ELASTIC\n1E6, 0\n*MEMBRANE SECTION, ELSET=S, MATERIAL=M\n2\n*BOUNDARY\n1, PINNED\n2, 2, 3\n3, "
           "3\n*STEP\n*STATIC\n"
           "*CLOAD\n2, 1, 10\n*END STEP\n"));
  EXPECT_FALSE(membrane.has("CellData", "moment"));
  EXPECT_FALSE(membrane.has("PointData", "rotation"));
  EXPECT_TRUE(membrane.has("CellData", "von_mises_top"));
}

// A shell and a beam that stands on it: arrays of both, of one length.
TEST(AnalysisMemberOutput, MixedModels) {
  const grid_file file(
      read("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n4, 0, 0, 2\n*ELEMENT, TYPE=S3, ELSET=S\n1, 1, 2, 3\n*ELEMENT, "
           "TYPE=B31, ELSET=B\n2, 1, 4\n*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0\n*SHELL SECTION, ELSET=S, MATERIAL=M\n0.1\n"
           "*BEAM GENERAL SECTION, ELSET=B, MATERIAL=M\n0.1, 0.01, 0, 0.01, 0.01\n1, 0, 0\n*BOUNDARY\n1, ENCASTRE\n2, "
           "PINNED\n3, PINNED\n*STEP\n*STATIC\n*CLOAD\n4, 1, 10\n*END STEP\n"),
      3);
  const std::vector<double> offsets = file.numbers("Cells", "offsets");
  EXPECT_EQ(offsets, (std::vector<double>{3, 6}));
  EXPECT_EQ(file.numbers("Cells", "connectivity"), (std::vector<double>{0, 1, 2, 4, 5, 6}));
  for (const pugi::xml_node array : file.piece.child("PointData").children()) {
    const int components = array.attribute("NumberOfComponents").as_int(1);
    EXPECT_EQ(file.numbers("PointData", array.attribute("Name").value()).size(),
              7U * static_cast<std::size_t>(components))
        << array.attribute("Name").value();
  }
  EXPECT_WITHIN(file.numbers("PointData", "Mz")[5], 10.0, 10.0, 1e-9);  // half way up: local y is x, the force 10
}

namespace {

struct pushed {
  solver::pushover_solution solution;
  solver::step_results results;
};

pushed push_first_step(const solver::model& m) {
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::pushover frame(m, library, *equations);
  pushed p;
  p.solution = frame.solve(m.steps[0], watch);
  p.results = recover_pushover_results(m, library, p.solution);
  return p;
}

}  // namespace

TEST(AnalysisMemberOutput, PushoverShowsTheStateAtCollapse) {
  // The clamped beam under a uniform load: Mp = 1e8 at both ends and in the middle, where Vy is 0.
  const solver::model m = deck("pushover_fixed_beam.inp");
  const auto [solution, results] = push_first_step(m);
  double largest = 0, largest_hinge = 0;
  for (const solver::member_field& f : results.fields) {
    for (const std::size_t which : {std::size_t{4}, std::size_t{5}}) {
      const solver::value_range range = range_of_force(f, which);
      largest = std::fmax(largest, std::fmax(range.largest.value, -range.least.value));
    }
    // The load of the collapse, 16 Mp / L^2, along the member; nodes and member move together except for their turns.
    const double fall =
        station_at(f, 1).force[1] - station_at(f, 0).force[1] + station_at(f, 1).force[2] - station_at(f, 0).force[2];
    EXPECT_WITHIN(std::fabs(fall), 100 * 500, 100 * 500, 1e-9);
    for (int end = 0; end < 2; ++end) {
      const int node = m.elements[f.element].nodes[static_cast<std::size_t>(end)];
      EXPECT_WITHIN(station_at(f, end).displacement[1], solution.frame.displacement[solver::freedom(node, 1)], 1, 1e-9);
      // A hinge turns the end against its node; local y is the global z.
      const double hinge = solution.states[f.element].flow[end == 0 ? 4 : 10];
      EXPECT_WITHIN(station_at(f, end).rotation[2] + hinge, solution.frame.displacement[solver::freedom(node, 5)], 0.01,
                    1e-9);
      largest_hinge = std::fmax(largest_hinge, std::fabs(hinge));
    }
  }
  EXPECT_WITHIN(largest, 1e8, 1e8, 1e-9);
  EXPECT_GT(largest_hinge, 1e-3);  // 12 to 16 Mp / L^2 on a simple span turn its ends by 4 Mp L / 24 EI
}

// Hinges under an axial force lengthen the member too: what is between them grows by N L / EA alone. In second order
// the moments at the ends are still those of the hinges.
TEST(AnalysisMemberOutput, HingesUnderAxialForceInSecondOrder) {
  const solver::model m = deck("pushover_leaning_portal.inp");
  const auto [solution, results] = push_first_step(m);
  double largest_flow = 0;
  for (const solver::member_field& f : results.fields) {
    const solver::frame_section& section = frame_section_of(m, m.elements[f.element]);
    const double EA = m.materials[static_cast<std::size_t>(section.material)].E1 * section.area;
    const double growth = solver::value(f.displacement[0], 1) - solver::value(f.displacement[0], 0);
    EXPECT_WITHIN(growth, station_at(f, 0.5).force[0] * f.length / EA, 1e-3 * f.length, 1e-8);
    const solver::end_forces& forces = solution.members[f.element];
    EXPECT_WITHIN(station_at(f, 0).force[5], -forces[5], 1e8, 1e-9);
    EXPECT_WITHIN(station_at(f, 1).force[5], forces[11], 1e8, 1e-9);
    for (const std::size_t i : {std::size_t{0}, std::size_t{6}})
      largest_flow = std::fmax(largest_flow, std::fabs(solution.states[f.element].flow[i]) / f.length);
  }
  EXPECT_GT(largest_flow, 1e-5);
}
