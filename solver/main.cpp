// main.cpp: the program. Exit status 0: solved, or checked without an error; 1: an error in the deck or the model, or
// results that cannot be written; 2: usage.
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "check.h"
#include "estimate.h"
#include "model/deck_error.h"
#include "run.h"
#include "system/terminal.h"

namespace {

void complain(const std::string& text) { std::fputs(solver::colored("finites-solve: " + text + "\n").c_str(), stderr); }

}  // namespace

int main(int argc, char** argv) {
  solver::choose_color(solver::color_choice::AUTO);  // for errors of the command line
  try {
    int exit_code = 0;
    const std::optional<solver::options> wanted = solver::parse_command_line(argc, argv, exit_code);
    if (!wanted) return exit_code;
    solver::choose_color(wanted->color);
    if (wanted->check) return solver::check(*wanted) ? 0 : 1;
    if (wanted->estimate) return solver::estimate_memory(*wanted) ? 0 : 1;
    if (!wanted->write.empty()) {
      solver::write_deck(*wanted);
      return 0;
    }
    solver::run(*wanted);
    return 0;
  } catch (const solver::usage_error& error) {
    complain(error.what());
    return 2;
  } catch (const solver::deck_errors& errors) {
    for (const solver::deck_error& each : errors.all) complain(each.what());
    complain(errors.count());
    return 1;
  } catch (const std::bad_alloc&) {
    complain("not enough memory; make the model smaller or the memory larger");
    return 1;
  } catch (const std::exception& error) {
    complain(error.what());
    return 1;
  }
}
