// main.cpp: the program. Exit status 0: solved; 1: an error in the deck or the model, or results that cannot be
// written; 2: usage.
#include <exception>

#include <fmt/core.h>

#include "run.h"

int main(int argc, char** argv) {
  try {
    int exit_code = 0;
    const std::optional<solver::options> wanted = solver::parse_command_line(argc, argv, exit_code);
    if (!wanted) return exit_code;
    solver::run(*wanted);
    return 0;
  } catch (const solver::usage_error& error) {
    fmt::print(stderr, "finites-solve: {}\n", error.what());
    return 2;
  } catch (const std::exception& error) {
    fmt::print(stderr, "finites-solve: {}\n", error.what());
    return 1;
  }
}
