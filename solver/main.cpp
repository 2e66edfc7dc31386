// main.cpp: the program. Exit status 0: solved, or checked without an error; 1: an error in the deck or the model, or
// results that cannot be written; 2: usage.
#include <exception>
#include <new>

#include <fmt/core.h>

#include "check.h"
#include "model/deck_error.h"
#include "run.h"

int main(int argc, char** argv) {
  try {
    int exit_code = 0;
    const std::optional<solver::options> wanted = solver::parse_command_line(argc, argv, exit_code);
    if (!wanted) return exit_code;
    if (wanted->check) return solver::check(*wanted) ? 0 : 1;
    if (!wanted->write.empty()) {
      solver::write_deck(*wanted);
      return 0;
    }
    solver::run(*wanted);
    return 0;
  } catch (const solver::usage_error& error) {
    fmt::print(stderr, "finites-solve: {}\n", error.what());
    return 2;
  } catch (const solver::deck_errors& errors) {
    for (const solver::deck_error& each : errors.all) fmt::print(stderr, "finites-solve: {}\n", each.what());
    fmt::print(stderr, "finites-solve: {}\n", errors.count());
    return 1;
  } catch (const std::bad_alloc&) {
    fmt::print(stderr, "finites-solve: not enough memory; make the model smaller or the memory larger\n");
    return 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "finites-solve: {}\n", error.what());
    return 1;
  }
}
