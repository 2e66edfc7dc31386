// What the program writes and prints, and what it does when it cannot.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <pugixml.hpp>

#include "analysis_support.h"
#include "deck_builder.h"
#include "finites/fields.h"
#include "model/deck_error.h"
#include "options.h"
#include "output/csv_writer.h"
#include "output/output_file.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "run.h"

using namespace analysis_test;
using deck_test::scratch_folder;

namespace {

grid bent_sheet() {
  grid g(
      3, 2,
      [](double u, double v) {
        return point{3 * u, 2 * v, u * u};
      },
      isotropic(1000, 0.3), 0.1);
  g.fix(g.along_y(0), "xyzXYZ");
  g.load(g.node(3, 1), 'z', 0.5);
  return g;
}

std::vector<double> numbers(const pugi::xml_node& piece, const char* part, const char* name) {
  std::istringstream text(piece.child(part).find_child_by_attribute("DataArray", "Name", name).text().get());
  std::vector<double> result;
  for (double value = 0; text >> value;) result.push_back(value);
  return result;
}

std::string file_text(const std::string& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::size_t files_in(const std::string& folder) {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) ++count;
  return count;
}

std::string folder_of(const scratch_folder& scratch) {
  return std::filesystem::path(scratch.path("x")).parent_path().string();
}

const char* const STRIP = R"(*HEADING
A strip in tension
*NODE
1, 0, 0, 0
2, 2, 0, 0
3, 2, 1, 0
4, 0, 1, 0
*ELEMENT, TYPE=S3, ELSET=ALL
1, 1, 2, 3
2, 3, 4, 1
*NSET, NSET=RIGHT
2, 3
*MATERIAL, NAME=M
*ELASTIC
1000, 0
*SHELL SECTION, ELSET=ALL, MATERIAL=M, FORMULATION=THIN
0.1
*BOUNDARY
1, 1, 6
4, 1, 6
*STEP
*STATIC
*CLOAD
RIGHT, 1, 5
*END STEP
)";

// The strip without its supports.
std::string loose_strip() {
  std::string text = STRIP;
  const std::size_t first = text.find("*BOUNDARY");
  return text.erase(first, text.find("*STEP") - first);
}

solver::options options_for(const scratch_folder& scratch) {
  solver::options wanted;
  wanted.deck = scratch.write("strip.inp", STRIP);
  wanted.output = scratch.path("strip.vtu");
  return wanted;
}

std::string output_of(const solver::options& wanted) {
  testing::internal::CaptureStdout();
  solver::run(wanted);
  return testing::internal::GetCapturedStdout();
}

}  // namespace

TEST(AnalysisOutput, GridReadsBack) {
  const grid g = bent_sheet();
  const solved s = solve(g.m);
  std::ostringstream text;
  solver::write_vtu(text, g.m, s.solution, s.results);
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(text.str().c_str()));
  const pugi::xml_node file = document.child("VTKFile");
  EXPECT_STREQ(file.attribute("type").value(), "UnstructuredGrid");
  const pugi::xml_node piece = file.child("UnstructuredGrid").child("Piece");
  EXPECT_EQ(piece.attribute("NumberOfPoints").as_uint(), 12U);
  EXPECT_EQ(piece.attribute("NumberOfCells").as_uint(), 12U);

  // Every number reads back as the same double.
  const std::vector<double> u = numbers(piece, "PointData", "displacement");
  const std::vector<double> xyz = numbers(piece, "Points", "Points");
  ASSERT_EQ(u.size(), 36U);
  ASSERT_EQ(xyz.size(), 36U);
  for (std::size_t n = 0; n < 12; ++n)
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(u[3 * n + i], s.solution.displacement[6 * n + i]);
      EXPECT_EQ(xyz[3 * n + i], g.m.nodes[n].xyz[i]);
    }
  const std::vector<double> moment = numbers(piece, "CellData", "moment");
  const std::vector<double> equivalent = numbers(piece, "CellData", "von_mises_bottom");
  const std::vector<double> corners = numbers(piece, "Cells", "connectivity");
  ASSERT_EQ(moment.size(), 36U);
  ASSERT_EQ(equivalent.size(), 12U);
  ASSERT_EQ(corners.size(), 36U);
  for (std::size_t e = 0; e < 12; ++e) {
    EXPECT_EQ(equivalent[e], s.results.elements[e].at[solver::BOTTOM].equivalent);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(moment[3 * e + i], s.results.elements[e].moment[i]);
      EXPECT_EQ(corners[3 * e + i], g.m.elements[e].nodes[i]);
    }
  }
  EXPECT_EQ(numbers(piece, "Cells", "offsets").back(), 36.0);
  EXPECT_EQ(numbers(piece, "Cells", "types").front(), 5.0);

  // Every array is as long as its items and components say.
  for (const char* part : {"PointData", "CellData"})
    for (const pugi::xml_node& array : piece.child(part).children("DataArray"))
      EXPECT_EQ(numbers(piece, part, array.attribute("Name").value()).size(),
                12U * array.attribute("NumberOfComponents").as_uint(1))
          << array.attribute("Name").value();
}

TEST(AnalysisOutput, PrincipalStressesFollowFromTheComponents) {
  const grid g = bent_sheet();
  const solved s = solve(g.m);
  for (const solver::element_result& e : s.results.elements) {
    for (const solver::surface_stress& at : e.at) {
      const double scale = std::abs(at.first) + std::abs(at.second);
      EXPECT_WITHIN(at.first + at.second, at.stress[0] + at.stress[1], scale, 1e-12);
      EXPECT_WITHIN(at.first * at.second, at.stress[0] * at.stress[1] - at.stress[2] * at.stress[2], scale * scale,
                    1e-12);
      const double c = std::cos(at.angle), sn = std::sin(at.angle);
      EXPECT_WITHIN(at.stress[0] * c * c + at.stress[1] * sn * sn + 2 * at.stress[2] * c * sn, at.first, scale, 1e-12);
      EXPECT_WITHIN(at.equivalent * at.equivalent, at.first * at.first + at.second * at.second - at.first * at.second,
                    scale * scale, 1e-12);
    }
  }
}

TEST(AnalysisOutput, VonMisesOfASpatialState) {
  EXPECT_WITHIN(solver::von_mises({3, 3, 3, 0, 0, 0}), 0.0, 3, 1e-15);
  EXPECT_WITHIN(solver::von_mises({0, 0, 7, 0, 0, 0}), 7.0, 7, 1e-15);
  for (std::size_t i = 3; i < 6; ++i) {
    solver::tensor shear{};
    shear[i] = 2;
    EXPECT_WITHIN(solver::von_mises(shear), std::sqrt(12.0), 2, 1e-15);
  }
}

TEST(AnalysisOutput, FileAppearsWholeOrNotAtAll) {
  const scratch_folder scratch;
  const std::string path = scratch.path("result.txt");
  scratch.write("result.txt", "old");
  {
    solver::output_file file(path);
    file.stream() << "new";
  }
  EXPECT_EQ(file_text(path), "old");
  EXPECT_EQ(files_in(folder_of(scratch)), 1U);
  {
    solver::output_file file(path);
    file.stream() << "new";
    file.commit();
  }
  EXPECT_EQ(file_text(path), "new");
  EXPECT_EQ(files_in(folder_of(scratch)), 1U);
}

// A link leads to the file after as before, whether there was one or not; a pipe gets what is written.
TEST(AnalysisOutput, LinksAndPipesStay) {
  const scratch_folder scratch;
  scratch.write("there.txt", "old");
  for (const char* const target : {"there.txt", "new.txt"}) {
    const std::string link = scratch.path(std::string("link_") + target);
    std::filesystem::create_symlink(target, link);
    solver::output_file file(link);
    file.stream() << "text";
    file.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(link)) << target;
    EXPECT_EQ(file_text(scratch.path(target)), "text");
  }
  const std::string pipe = scratch.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::string got;
  std::thread reader([&] { got = file_text(pipe); });
  {
    solver::output_file file(pipe);
    file.stream() << "text";
    file.commit();
  }
  reader.join();
  EXPECT_EQ(got, "text");
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  EXPECT_TRUE(solver::is_device("/dev/null"));
  EXPECT_FALSE(solver::is_device(scratch.path("there.txt")));
}

TEST(AnalysisOutput, UnwritablePlaces) {
  const scratch_folder scratch;
  EXPECT_THROW(solver::output_file(scratch.path("no/such/folder.vtu")), std::runtime_error);
  EXPECT_THROW(solver::output_file{folder_of(scratch)}, std::runtime_error);
  EXPECT_THROW(solver::output_file("/dev/null/x"), std::runtime_error);

  // Known before anything is computed: the deck's mechanism is not even looked at.
  solver::options wanted = options_for(scratch);
  wanted.deck = scratch.write("loose.inp", loose_strip());
  wanted.output = scratch.path("no/such/folder.vtu");
  try {
    solver::run(wanted);
    ADD_FAILURE() << "no error";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("cannot be written: No such file"), std::string::npos) << error.what();
  }
}

TEST(AnalysisOutput, ResultsTakeNobodysPlace) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.output = wanted.deck;
  EXPECT_THROW(solver::run(wanted), solver::usage_error);
  EXPECT_EQ(file_text(wanted.deck), STRIP);
  wanted.output = scratch.path("a.vtu");
  wanted.csv = scratch.path("./a.vtu");
  EXPECT_THROW(solver::run(wanted), solver::usage_error);
}

// What a shell sees of the program.
TEST(AnalysisOutput, ExitStatus) {
  const scratch_folder scratch;
  const solver::options wanted = options_for(scratch);
  const std::string loose = scratch.write("loose.inp", loose_strip());
  const auto status = [&](const std::string& arguments) {
    const int result = std::system((std::string(FINITES_SOLVE) + " " + arguments + " > /dev/null 2>&1").c_str());
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
  };
  EXPECT_EQ(status(wanted.deck + " -o " + wanted.output), 0);
  EXPECT_EQ(status("--help"), 0);
  EXPECT_EQ(status(loose + " -o " + wanted.output), 1);
  EXPECT_EQ(status(scratch.path("none.inp") + " -o " + wanted.output), 1);
  EXPECT_EQ(status(wanted.deck + " -o " + scratch.path("no/folder.vtu")), 1);
  EXPECT_EQ(status(wanted.deck + " -o " + wanted.output + " --node 77"), 2);
  EXPECT_EQ(status("--wrong"), 2);
}

TEST(AnalysisOutput, NothingRemainsOfARunThatFails) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.deck = scratch.write("loose.inp", loose_strip());
  wanted.csv = scratch.path("strip.csv");
  wanted.quiet = true;
  try {
    solver::run(wanted);
    ADD_FAILURE() << "no error";
  } catch (const solver::deck_error& error) {
    const std::string text = loose_strip();
    const auto step =
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("*STEP")), '\n') + 1;
    EXPECT_NE(std::string(error.what()).find("loose.inp:" + std::to_string(step) + ": *STEP: mechanism: 6 motions"),
              std::string::npos)
        << error.what();
  }
  EXPECT_EQ(files_in(folder_of(scratch)), 2U);  // the two decks
}

TEST(AnalysisOutput, RunPrintsAndWrites) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.csv = scratch.path("strip.csv");
  wanted.sets = {"right"};
  wanted.references = {solver::parse_reference("2,ux,0.2,bar of length 2, force 10, EA 100")};
  const std::string text = output_of(wanted);
  EXPECT_NE(text.find("A strip in tension"), std::string::npos) << text;
  EXPECT_NE(text.find("ratio 1.00000   (bar of length 2, force 10, EA 100)"), std::string::npos) << text;
  EXPECT_NE(text.find("force x       1.000000e+01   -1.000000e+01  1.000000000"), std::string::npos) << text;
  for (const char* phase : {"read", "fill", "element calls", "assembly", "factorise", "solve", "results", "write"})
    EXPECT_NE(text.find(std::string("\n  ") + phase), std::string::npos) << phase;
  EXPECT_NE(file_text(wanted.output).find("</VTKFile>"), std::string::npos);

  std::istringstream table(file_text(wanted.csv));
  std::string line;
  std::vector<std::string> lines;
  while (std::getline(table, line)) lines.push_back(line);
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0].substr(0, 17), "node,x,y,z,ux,uy,");
  EXPECT_EQ(std::count(lines[2].begin(), lines[2].end(), ','), 15);
  std::istringstream second(lines[2].substr(lines[2].find(",2,0,0,") + 7));
  double ux = 0;
  second >> ux;
  EXPECT_WITHIN(ux, 0.2, 0.2, 1e-12);
}

TEST(AnalysisOutput, QuietPrintsOnlyWhatIsAsked) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.quiet = true;
  EXPECT_EQ(output_of(wanted), "");
  wanted.references = {solver::parse_reference("3,1,0.2")};
  EXPECT_EQ(output_of(wanted), "  node 3 ux: computed 0.2, published 0.2, ratio 1.00000\n");
}

TEST(AnalysisOutput, StepsHaveFilesOfTheirOwn) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.deck = scratch.write("two.inp", std::string(STRIP) + "*STEP\n*STATIC\n*CLOAD\nRIGHT, 1, 10\n*END STEP\n");
  wanted.quiet = true;
  wanted.nodes = {2};
  const std::string text = output_of(wanted);
  EXPECT_TRUE(std::filesystem::exists(scratch.path("strip.1.vtu")));
  EXPECT_TRUE(std::filesystem::exists(scratch.path("strip.2.vtu")));
  EXPECT_NE(text.find("2.000000e-01"), std::string::npos) << text;
  EXPECT_NE(text.find("4.000000e-01"), std::string::npos) << text;
}

TEST(AnalysisOutput, UnknownNodesAndSetsAreUsageErrors) {
  const scratch_folder scratch;
  solver::options wanted = options_for(scratch);
  wanted.nodes = {17};
  EXPECT_THROW(solver::run(wanted), solver::usage_error);
  wanted.nodes.clear();
  wanted.sets = {"LEFT"};
  EXPECT_THROW(solver::run(wanted), solver::usage_error);
}

TEST(AnalysisOutput, References) {
  const solver::reference_value r = solver::parse_reference("33,uz,-0.3024,Scordelis and Lo, 1964");
  EXPECT_EQ(r.node, 33);
  EXPECT_EQ(r.direction, 2);
  EXPECT_EQ(r.value, -0.3024);
  EXPECT_EQ(r.source, "Scordelis and Lo, 1964");
  EXPECT_EQ(solver::parse_reference("1,6,2").direction, 5);
  for (const char* wrong :
       {"", "1", "1,2", "x,1,2", "1,7,2", "1,0,2", "1,ux,", "1,ux,2x", "1,ux,nan", "1,ux,0", ",ux,1"})
    EXPECT_THROW(solver::parse_reference(wrong), solver::usage_error) << wrong;
}

TEST(AnalysisOutput, CommandLine) {
  int code = -1;
  const char* good[] = {"finites-solve", "a.inp", "-o", "b.vtu", "--solver", "eigen", "--node", "3", "5", "--quiet"};
  const auto wanted = solver::parse_command_line(10, good, code);
  ASSERT_TRUE(wanted);
  EXPECT_EQ(wanted->deck, "a.inp");
  EXPECT_EQ(wanted->output, "b.vtu");
  EXPECT_EQ(wanted->kind, solver::solver_kind::EIGEN);
  EXPECT_EQ(wanted->nodes, (std::vector<int>{3, 5}));
  EXPECT_TRUE(wanted->quiet);

  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  const char* wrong[] = {"finites-solve", "a.inp", "--solver", "abacus"};
  EXPECT_FALSE(solver::parse_command_line(4, wrong, code));
  EXPECT_EQ(code, 2);
  const std::string refused = testing::internal::GetCapturedStderr();
  EXPECT_EQ(refused.find("finites-solve: --solver: "), 0U) << refused;
  EXPECT_NE(refused.find("abacus"), std::string::npos) << refused;
  testing::internal::CaptureStderr();
  const char* nothing[] = {"finites-solve"};
  EXPECT_FALSE(solver::parse_command_line(1, nothing, code));
  EXPECT_EQ(code, 2);
  const char* help[] = {"finites-solve", "--help"};
  EXPECT_FALSE(solver::parse_command_line(2, help, code));
  EXPECT_EQ(code, 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "finites-solve: deck is required; --help lists the options\n");
  EXPECT_NE(testing::internal::GetCapturedStdout().find("--reference"), std::string::npos);
}

TEST(AnalysisOutput, SumsOfForcesAndMoments) {
  // r x F + M by hand: r = (1, 2, 3), F = (10, 20, 30), M = (4, 5, 6): (2 30 - 3 20, 3 10 - 1 30, 1 20 - 2 10) = 0, and
  // for F = (7, 0, -1): (-2, 21 + 1, -14).
  solver::model m;
  m.nodes.resize(1);
  m.nodes[0].id = 1;
  m.nodes[0].xyz = {1, 2, 3};
  solver::static_solution s;
  s.load = {10, 20, 30, 4, 5, 6};
  s.reaction = {7, 0, -1, 0, 0, 0};
  const solver::equilibrium sums = solver::sum_forces(m, s);
  EXPECT_EQ(sums.applied, (std::array<double, 6>{10, 20, 30, 4, 5, 6}));
  EXPECT_EQ(sums.reaction, (std::array<double, 6>{7, 0, -1, -2, 22, -14}));

  // Ratios of reaction and load; moments are compared with moments, however large the forces.
  s.load = {0, 0, 1e12, 0, 0, 0};
  m.nodes[0].xyz = {0, 1e-12, 0};
  s.reaction = {0, 0, -0.5e12, -0.25, 0, 0};
  const std::string text = solver::equilibrium_summary(m, s);
  const auto line_of = [&](const std::string& name) {
    const std::size_t at = text.find("  " + name);
    return text.substr(at, text.find('\n', at) - at);
  };
  EXPECT_EQ(line_of("force z").substr(line_of("force z").size() - 12), " 0.500000000") << text;
  EXPECT_EQ(line_of("moment x").substr(line_of("moment x").size() - 12), " 0.750000000") << text;
  EXPECT_EQ(line_of("moment y").back(), '-') << text;
}
