// program.cpp: from the command line to the exit status.
#include "program.h"

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>

#include "check.h"
#include "estimate.h"
#include "model/deck_error.h"
#include "run.h"
#include "steps/report.h"
#include "steps/unused_options.h"
#include "system/linear_solver.h"
#include "system/terminal.h"

namespace solver {

namespace {

constexpr const char* PROGRAM = "finites-solve: ";
constexpr std::string_view EMBEDDED = "embedded", PETSC = "petsc";

std::string line(const std::string& text) { return PROGRAM + text + "\n"; }

// For what is wrong with the command line itself.
color_choice color_in(int argc, const char* const* argv) {
  color_choice choice = color_choice::AUTO;
  for (int a = 1; a < argc; ++a) {
    std::string word = argv[a];
    if (word == "--color" && a + 1 < argc) word += std::string("=") + argv[a + 1];
    if (word == "--color=always") choice = color_choice::ALWAYS;
    if (word == "--color=never") choice = color_choice::NEVER;
  }
  return choice;
}

outcome carry_out(int argc, const char* const* argv) {
  int exit_code = 0;
  const std::optional<options> wanted = parse_command_line(argc, argv, exit_code);
  if (!wanted) return {exit_code, ""};
  choose_color(wanted->color);
  if (wanted->check || wanted->estimate || !wanted->write.empty()) {
    warn(unused_results(*wanted, wanted->check ? "--check" : wanted->estimate ? "--memory" : "--write"));
  }
  if (wanted->check) return {check(*wanted) ? 0 : 1, ""};
  if (wanted->estimate) return {estimate_memory(*wanted) ? 0 : 1, ""};
  if (!wanted->write.empty()) {
    write_deck(*wanted);
  } else {
    run(*wanted);
  }
  return {};
}

// The last engine that the command line names; empty: none. CLI11 reads it again and says what is wrong with it.
std::string_view named_engine(int argc, char** argv) {
  constexpr std::string_view OPTION = "--engine";
  std::string_view engine;
  for (int a = 1; a < argc; ++a) {
    const std::string_view word = argv[a];
    if (word == OPTION && a + 1 < argc) engine = argv[a + 1];
    if (word.substr(0, OPTION.size()) == OPTION && word.substr(OPTION.size(), 1) == "=") {
      engine = word.substr(OPTION.size() + 1);
    }
  }
  return engine;
}

}  // namespace

outcome run_program(int argc, const char* const* argv) {
  choose_color(color_in(argc, argv));
  try {
    return carry_out(argc, argv);
  } catch (const usage_error& error) {
    return {2, line(error.what())};
  } catch (const deck_errors& errors) {
    std::string text;
    for (const deck_error& each : errors.all) text += line(each.what());
    return {1, text + line(errors.count())};
  } catch (const std::bad_alloc&) {
    return {1, line("not enough memory; make the model smaller or the memory larger")};
  } catch (const std::exception& error) {
    return {1, line(error.what())};
  }
}

void complain(const std::string& complaint) { std::fputs(colored(complaint).c_str(), stderr); }

void leave_to_engine(int argc, char** argv) {
  const std::string_view engine = named_engine(argc, argv);
  if (engine == engine_name() || (engine != EMBEDDED && engine != PETSC)) return;
  std::error_code unknown;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", unknown);
  const std::string name = engine == EMBEDDED ? "finites-solve" : "finites-solve-" + std::string(engine);
  const std::string program = (own.parent_path() / name).string();
  execv(program.c_str(), argv);
  throw usage_error("--engine " + std::string(engine) + ": " + program + " is not there or does not start; " +
                    (engine == PETSC
                         ? "script/setup distributed installs PETSc, with which the solver is built once more"
                         : "it comes with the solver"));
}

}  // namespace solver
