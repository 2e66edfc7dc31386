// deck_builder.cpp: one good deck, ways to spoil a line of it, and the comparison of the error that comes out.
#include "deck_builder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "deck/deck_reader.h"

namespace deck_test {

const std::vector<std::string> GOOD = {
    "*HEADING",                                    // 1
    "Square plate of two triangles",               // 2
    "*NODE, NSET=ALL",                             // 3
    "1, 0., 0., 0.",                               // 4
    "2, 1., 0., 0.",                               // 5
    "3, 1., 1., 0.",                               // 6
    "4, 0., 1., 0.",                               // 7
    "*ELEMENT, TYPE=S3, ELSET=SKIN",               // 8
    "1, 1, 2, 3",                                  // 9
    "2, 1, 3, 4",                                  // 10
    "*NSET, NSET=FIXED",                           // 11
    "1, 4",                                        // 12
    "*ELSET, ELSET=LOWER",                         // 13
    "1",                                           // 14
    "*MATERIAL, NAME=STEEL",                       // 15
    "*ELASTIC",                                    // 16
    "2.1E11, 0.3",                                 // 17
    "*DENSITY",                                    // 18
    "7850.",                                       // 19
    "*EXPANSION",                                  // 20
    "1.2E-5",                                      // 21
    "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL",  // 22
    "0.01",                                        // 23
    "*BOUNDARY",                                   // 24
    "FIXED, 1, 6",                                 // 25
    "*STEP, NAME=Push",                            // 26
    "*STATIC",                                     // 27
    "*CLOAD",                                      // 28
    "3, 3, -100.",                                 // 29
    "*DLOAD",                                      // 30
    "SKIN, P, 1000.",                              // 31
    "SKIN, GRAV, 9.81, 0., 0., -2.",               // 32
    "*TEMPERATURE",                                // 33
    "ALL, 20., 5.",                                // 34
    "*END STEP",                                   // 35
};

std::string text_of(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

std::string replaced(int n, const std::string& line) {
  std::vector<std::string> lines = GOOD;
  lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

std::string inserted(int n, const std::string& line) {
  std::vector<std::string> lines = GOOD;
  lines.insert(lines.begin() + (n - 1), line);
  return text_of(lines);
}

std::string without(int first, int last) {
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + (first - 1), lines.begin() + last);
  return text_of(lines);
}

solver::model read(const std::string& text) { return solver::read_deck_text(text, "plate.inp"); }

void expect_error(const std::string& text, int line, const std::string& keyword, const std::string& sentence) {
  try {
    read(text);
    ADD_FAILURE() << "the deck was accepted; expected line " << line << ": " << keyword << ": " << sentence;
  } catch (const solver::deck_error& error) {
    EXPECT_EQ(error.file, "plate.inp");
    EXPECT_EQ(error.line, line);
    EXPECT_EQ(error.keyword, keyword);
    EXPECT_EQ(error.text, sentence);
    const std::string named = keyword.empty() ? "" : keyword + ": ";
    EXPECT_EQ(error.what(), "plate.inp:" + std::to_string(line) + ": " + named + sentence);
  }
}

void expect_notes(const std::string& text, const std::vector<std::string>& notes) {
  try {
    EXPECT_EQ(read(text).notes, notes);
  } catch (const solver::deck_error& error) {
    ADD_FAILURE() << error.what();
  }
}

scratch_folder::scratch_folder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "deck_XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder can be made at " + pattern);
  folder_ = pattern;
}

scratch_folder::~scratch_folder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string scratch_folder::write(const std::string& name, const std::string& text) const {
  std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
  std::ofstream(path(name), std::ios::binary) << text;
  return path(name);
}

}  // namespace deck_test
