// program_support.h: runs the program as a user does.
#ifndef FINITES_TESTS_PROGRAM_SUPPORT_H
#define FINITES_TESTS_PROGRAM_SUPPORT_H

#include <string>
#include <vector>

#include "deck_builder.h"

namespace program_test {

struct answer {
  int status = -1;
  std::string out, err;
};

// Runs the program in a shell; `before` may set limits.
answer run_program(const deck_test::scratch_folder& scratch, const std::string& arguments,
                   const std::string& before = "");

std::string file_text(const std::string& path);
std::vector<std::string> lines_of(const std::string& text);

}  // namespace program_test

#endif
