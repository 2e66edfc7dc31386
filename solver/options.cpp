// options.cpp: the command line by CLI11.
#include "options.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include <CLI/CLI.hpp>

#include "finites/version.h"

namespace solver {

namespace {

constexpr int USAGE = 2;
constexpr int MOST_INCREMENTS = 1000;

// The first three fields end at a comma, the rest is text.
std::vector<std::string> reference_fields(const std::string& text) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  while (fields.size() < 3) {
    const std::size_t comma = text.find(',', start);
    fields.push_back(text.substr(start, comma == std::string::npos ? comma : comma - start));
    if (comma == std::string::npos) break;
    start = comma + 1;
    if (fields.size() == 3) fields.push_back(text.substr(start));
  }
  return fields;
}

int direction_number(const std::string& text) {
  for (int d = 0; d < DIRECTIONS; ++d) {
    if (text == direction_short_name(d) || text == std::to_string(d + 1)) return d;
  }
  return -1;
}

// Empty for a number of megabytes.
std::string megabytes_error(const std::string& text) {
  char* stop = nullptr;
  const double value = std::strtod(text.c_str(), &stop);
  const bool number = !text.empty() && *stop == '\0' && std::isfinite(value);
  return number && value > 0 ? "" : "'" + text + "' is not a number of megabytes above 0";
}

}  // namespace

reference_value parse_reference(const std::string& text) {
  const std::vector<std::string> fields = reference_fields(text);
  const usage_error wrong("--reference " + text + ": expected node,dof,value,source with dof 1 to 6 or ux to rz");
  if (fields.size() < 3) throw wrong;
  reference_value result;
  const char* const end = fields[0].data() + fields[0].size();
  if (std::from_chars(fields[0].data(), end, result.node).ptr != end || fields[0].empty()) throw wrong;
  result.direction = direction_number(fields[1]);
  if (result.direction < 0) throw wrong;
  char* stop = nullptr;
  result.value = std::strtod(fields[2].c_str(), &stop);
  if (fields[2].empty() || *stop != '\0' || !std::isfinite(result.value) || result.value == 0) throw wrong;
  if (fields.size() > 3) result.source = fields[3];
  return result;
}

std::optional<options> parse_command_line(int argc, const char* const* argv, int& exit_code) {
  options result;
  CLI::App app("finites-solve: statics, frequencies, buckling and pushover of shells, membranes, frames and solids",
               "finites-solve");
  std::string kind = default_solver() == solver_kind::MUMPS ? "mumps" : "eigen";
  bool ascii = false;
  std::vector<std::string> references;
  app.add_option("deck", result.deck, "the model, in keyword form")->required();
  app.add_option("-o,--output", result.output, "results for a viewer (default: the deck's name with .vtu, here)");
  app.add_flag("--ascii", ascii, "write the numbers of the results for a viewer as text");
  app.add_option("--csv", result.csv, "displacements and reactions of all nodes, or the modes, as a table");
  app.add_option("--reactions", result.reactions, "reactions of nodes and of node sets, and their sum, as a table");
  app.add_option("--json", result.json, "sums, extremes, frequencies and curves of all steps for other programs");
  app.add_option("--members", result.members, "end forces of all members, and what is largest along them, as a table");
  app.add_option("--stations", result.stations, "section forces and displacements along all members as a table");
  app.add_option("--station-count", result.station_count, "places along a member in tables and results, ends included")
      ->check(CLI::Range(2, MOST_STATIONS))
      ->capture_default_str();
  app.add_option("--section-points", result.points, "stresses at points of the sections along all beams as a table");
  app.add_option("--modes", result.modes, "modal masses, participation factors and effective masses as a table");
  app.add_option("--curve", result.curve, "load factors and displacements of a pushover as a table");
  app.add_option("--events", result.events, "the hinges of a pushover as a table");
  app.add_option("--increments", result.increments, "states along the path of a step, so many at most, for a viewer")
      ->check(CLI::Range(2, MOST_INCREMENTS));
  app.add_option("--stresses", result.stresses, "stresses of shells and membranes at the nodes as a table");
  app.add_option("--solids", result.solids, "stresses of solids at the nodes as a table");
  app.add_option("--report", result.report,
                 "one page (HTML) with model, results and tables of all steps, for a browser");
  app.add_option("--solver", kind, "mumps or eigen")->check(CLI::IsMember({"mumps", "eigen"}))->capture_default_str();
  app.add_option("--node", result.nodes, "print the displacements of these nodes")->delimiter(',');
  app.add_option("--set", result.sets, "print the displacements of the nodes of these sets")
      ->delimiter(',')
      ->allow_extra_args(false);
  app.add_option("--reference", references, "node,dof,value,source: print a displacement beside a published value")
      ->allow_extra_args(false);
  app.add_flag("--quiet", result.quiet, "print only warnings and what --node, --set and --reference ask for");
  app.add_flag("--check", result.check,
               "read the deck and check every element, without solving; no results are written");
  app.add_flag("--refine", result.refine,
               "divide quadratic solids: C3D20 into eight bricks, C3D15 into eight wedges, C3D10 into four bricks");
  app.add_option("--write", result.write, "write the model as one deck, as it is understood, without solving")
      ->excludes("--check");
  app.add_option("--memory", result.memory, "megabytes that the run may take (default: what the machine has free)")
      ->check(CLI::Validator(megabytes_error, "MB", "megabytes"));
  app.set_version_flag("--version", "finites-solve " FINITES_VERSION_TEXT, "print the version and stop");
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("finites-solve: ") + error.what() + "; --help lists the options\n";
  });
  app.footer(
      "Exit status: 0 solved, or checked without an error; 1 an error in the deck or the model, or results that cannot "
      "be written; 2 usage.");
  try {
    app.parse(argc, argv);
    for (const std::string& text : references) result.references.push_back(parse_reference(text));
  } catch (const CLI::ParseError& error) {
    exit_code = app.exit(error) == 0 ? 0 : USAGE;
    return std::nullopt;
  }
  result.form = ascii ? vtu_form::ASCII : vtu_form::BINARY;
  result.kind = kind == "mumps" ? solver_kind::MUMPS : solver_kind::EIGEN;
  return result;
}

}  // namespace solver
