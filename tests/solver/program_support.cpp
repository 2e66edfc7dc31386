// program_support.cpp: the program in a shell, its two streams in files.
#include "program_support.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace program_test {

std::string file_text(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

answer run_program(const deck_test::scratch_folder& scratch, const std::string& arguments, const std::string& before) {
  const std::string out = scratch.path("out.txt"), err = scratch.path("err.txt");
  const std::string command = before + FINITES_SOLVE + " " + arguments + " > " + out + " 2> " + err;
  const int result = std::system(command.c_str());
  return {WIFEXITED(result) ? WEXITSTATUS(result) : -1, file_text(out), file_text(err)};
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace program_test
