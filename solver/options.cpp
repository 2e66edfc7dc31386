// options.cpp: the command line by CLI11.
#include "options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <system_error>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <CLI/CLI.hpp>

#include "finites/version.h"
#include "help_form.h"
#include "system/linear_solver.h"
#include "system/terminal.h"

namespace solver {

namespace {

constexpr int USAGE = 2;
constexpr int MOST_INCREMENTS = 1000;
constexpr int MOST_THREADS = 128;

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

// Empty for a number of threads that OpenBLAS and MUMPS can take.
std::string threads_error(const std::string& text) {
  int count = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, count);
  const bool whole = fault == std::errc{} && stop == end;
  return whole && count >= 1 && count <= MOST_THREADS
             ? ""
             : fmt::format("'{}' is not a number of threads from 1 to {}", text, MOST_THREADS);
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

namespace {

// What CLI11 fills before it becomes options.
struct raw_values {
  std::string kind = solver_choices().front().name;
  std::string engine = engine_name();
  std::string color = "auto";
  bool ascii = false;
  std::vector<std::string> references;
};

void add_results(CLI::App& app, options& o, raw_values& raw) {
  const auto file = [&](const char* name, std::string& place, const char* what) {
    app.add_option(name, place, what)->option_text("FILE")->group("Results");
  };
  file("-o,--output", o.output,
       "results for a viewer (default: the deck's name with .vtu, here); NAME.pvtu: a piece from each process");
  app.add_flag("--ascii", raw.ascii, "write the numbers of the results for a viewer as text")->group("Results");
  file("--csv", o.csv, "displacements and reactions of all nodes, or the modes, as a table");
  file("--reactions", o.reactions, "reactions of nodes and of node sets, and their sum, as a table");
  file("--conditions", o.conditions,
       "what *EQUATION, *MPC, *TIE, couplings and rigid bodies exert on their nodes, as a table");
  file("--json", o.json, "sums, extremes, frequencies and curves of all steps for other programs");
  file("--report", o.report, "one page (HTML) with model, results and tables of all steps, for a browser");
  file("--members", o.members, "end forces of all members, and what is largest along them, as a table");
  file("--stations", o.stations, "section forces and displacements along all members as a table");
  app.add_option(
         "--station-count", o.station_count,
         fmt::format("places along a member in tables and results, ends included (default: {})", USUAL_STATIONS))
      ->check(CLI::Range(2, MOST_STATIONS))
      ->option_text("N")
      ->group("Results");
  file("--section-points", o.points, "stresses at points of the sections along all beams as a table");
  file("--modes", o.modes, "modal masses, participation factors and effective masses as a table");
  file("--curve", o.curve, "load factors and displacements of a pushover as a table");
  file("--events", o.events, "the hinges of a pushover as a table");
  app.add_option("--increments", o.increments, "states along the path of a step, so many at most, for a viewer")
      ->check(CLI::Range(2, MOST_INCREMENTS))
      ->option_text("N")
      ->group("Results");
  file("--stresses", o.stresses, "stresses of shells and membranes at the nodes as a table");
  file("--layers", o.layers, "stresses at the top and the bottom of each layer of shells as a table");
  file("--solids", o.solids, "stresses of solids at the nodes as a table");
}

void add_printed(CLI::App& app, options& o, raw_values& raw) {
  const char* const group = "What is printed";
  app.add_option("--node", o.nodes, "print the displacements of these nodes")
      ->delimiter(',')
      ->option_text("N,N,...")
      ->group(group);
  app.add_option("--set", o.sets, "print the displacements of the nodes of these sets")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->option_text("NSET,...")
      ->group(group);
  app.add_option("--reference", raw.references, "print a displacement beside a published value; dof 1 to 6 or ux to rz")
      ->allow_extra_args(false)
      ->option_text("NODE,DOF,VALUE,SOURCE")
      ->group(group);
  app.add_flag("--quiet", o.quiet, "print only warnings and what --node, --set and --reference ask for")->group(group);
  app.add_option("--color", raw.color, "colour of errors and warnings; auto: on a terminal that has it")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->option_text("auto|always|never")
      ->group(group);
}

std::vector<std::string> names_of_solvers() {
  std::vector<std::string> names;
  for (const solver_choice& choice : solver_choices()) names.emplace_back(choice.name);
  return names;
}

solver_kind solver_of(const std::string& name) {
  for (const solver_choice& choice : solver_choices()) {
    if (name == choice.name) return choice.kind;
  }
  return default_solver();
}

void add_run(CLI::App& app, options& o, raw_values& raw) {
  const char* const group = "How it is solved";
  app.add_flag("--refine", o.refine,
               "divide quadratic solids: C3D20 into eight bricks, C3D15 into eight wedges, C3D10 into four bricks")
      ->group(group);
  app.add_option("--solver", raw.kind, "what factorises the equations (default: " + raw.kind + ")")
      ->check(CLI::IsMember(names_of_solvers()))
      ->option_text(fmt::format("{}", fmt::join(names_of_solvers(), "|")))
      ->group(group);
  // main() has looked at it already: the other engine is another program.
  app.add_option("--engine", raw.engine, "one process, or as many as mpirun starts (docs/running.md)")
      ->check(CLI::IsMember({"embedded", "petsc"}))
      ->option_text("embedded|petsc")
      ->group(group);
  app.add_option("--threads", o.threads,
                 "threads of the element calls and of the factorisation (default: the processors)")
      ->check(CLI::Validator(threads_error, "N", "threads"))
      ->option_text("N")
      ->group(group);
  app.add_option("--restart", o.restart,
                 "leave the state of a path here as it goes, and go on from what an ended run has left here")
      ->option_text("FILE")
      ->group(group);
  app.add_option("--memory-limit", o.memory_limit,
                 "megabytes that the run may take on a machine (default: what is free)")
      ->check(CLI::Validator(megabytes_error, "MB", "megabytes"))
      ->option_text("MB")
      ->group(group);
}

void add_other_work(CLI::App& app, options& o) {
  const char* const group = "Instead of a solution";
  CLI::Option* const check =
      app.add_flag("--check", o.check, "read the deck, check every element and say what the model holds")->group(group);
  CLI::Option* const memory =
      app.add_flag("--memory", o.estimate, "say what memory a run would take and what is free")->group(group);
  app.add_option("--write", o.write, "write the model as one deck, as it is understood")
      ->option_text("FILE")
      ->excludes(check)
      ->excludes(memory)
      ->group(group);
  check->excludes(memory);
}

// --memory was the bound of a run once: a number behind it would be taken for the deck.
void refuse_memory_with_a_number(int argc, const char* const* argv) {
  for (int a = 1; a < argc; ++a) {
    const std::string word = argv[a];
    const bool joined = word.rfind("--memory=", 0) == 0;
    const bool number = word == "--memory" && a + 1 < argc && megabytes_error(argv[a + 1]).empty();
    if (!joined && !number) continue;
    throw usage_error("--memory takes no number: it says what a run would take; --memory-limit " +
                      (joined ? word.substr(word.find('=') + 1) : std::string(argv[a + 1])) + " bounds a run");
  }
}

// Each engine has solvers of its own, and is a program of its own.
void refuse_solver_of_other_engine(int argc, const char* const* argv) {
  constexpr std::array<std::array<const char*, 2>, 2> ENGINE_OF = {{{"cg", "petsc"}, {"eigen", "embedded"}}};
  for (int a = 1; a < argc; ++a) {
    const std::string word = argv[a];
    for (const auto& [name, engine] : ENGINE_OF) {
      const bool named = word == std::string("--solver=") + name ||
                         (word == "--solver" && a + 1 < argc && argv[a + 1] == std::string(name));
      if (!named || engine == std::string(engine_name())) continue;
      throw usage_error(
          fmt::format("--solver {0} is a solver of the engine {1}: {2}", name, engine,
                      engine == std::string("petsc") ? "add --engine petsc" : "leave out --engine petsc"));
    }
  }
}

color_choice color_of(const std::string& word) {
  if (word == "always") return color_choice::ALWAYS;
  return word == "never" ? color_choice::NEVER : color_choice::AUTO;
}

}  // namespace

std::optional<options> parse_command_line(int argc, const char* const* argv, int& exit_code) {
  options result;
  raw_values raw;
  CLI::App app("finites-solve: statics, frequencies, buckling and pushover of shells, membranes, frames and solids",
               "finites-solve");
  app.formatter(std::make_shared<help_form>());
  app.add_option("deck", result.deck, "the model, in keyword form")->required();
  add_results(app, result, raw);
  add_printed(app, result, raw);
  add_run(app, result, raw);
  add_other_work(app, result);
  app.set_help_flag("-h,--help", "print this help and stop")->group("Help");
  app.set_version_flag("--version", "finites-solve " FINITES_VERSION_TEXT, "print the version and stop")->group("Help");
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return colored(std::string("finites-solve: ") + error.what() + "; --help lists the options\n");
  });
  app.footer(HELP_FOOTER);
  // What an error calls a value that is missing is what --help calls it.
  for (CLI::Option* const option : app.get_options()) {
    if (!option->get_option_text().empty()) option->type_name(option->get_option_text());
  }
  try {
    refuse_memory_with_a_number(argc, argv);
    refuse_solver_of_other_engine(argc, argv);
    app.parse(argc, argv);
    for (const std::string& text : raw.references) result.references.push_back(parse_reference(text));
  } catch (const CLI::ParseError& error) {
    exit_code = app.exit(error) == 0 ? 0 : USAGE;
    return std::nullopt;
  }
  result.form = raw.ascii ? vtu_form::ASCII : vtu_form::BINARY;
  result.kind = solver_of(raw.kind);
  result.color = color_of(raw.color);
  return result;
}

}  // namespace solver
