// deck_builder.cpp: one good deck, ways to damage a line of it, and the comparison of the error that comes out.
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

const std::vector<std::string> GOOD_FRAME = {
    "*NODE, NSET=ALL",                                     // 1
    "1, 0., 0., 0.",                                       // 2
    "2, 2., 0., 0.",                                       // 3
    "3, 2., 3., 0.",                                       // 4
    "*ELEMENT, TYPE=B31, ELSET=BEAMS",                     // 5
    "1, 1, 2",                                             // 6
    "2, 2, 3",                                             // 7
    "*ELEMENT, TYPE=T3D2, ELSET=BARS",                     // 8
    "3, 1, 3",                                             // 9
    "*ELEMENT, TYPE=SPRING1, ELSET=GROUND",                // 10
    "4, 3",                                                // 11
    "*ELEMENT, TYPE=CONN3D2, ELSET=LINKS",                 // 12
    "5, 1, 3",                                             // 13
    "*MATERIAL, NAME=STEEL",                               // 14
    "*ELASTIC",                                            // 15
    "2.1E11, 0.3",                                         // 16
    "*DENSITY",                                            // 17
    "7850.",                                               // 18
    "*BEAM GENERAL SECTION, ELSET=BEAMS, MATERIAL=STEEL",  // 19
    "0.01, 2.E-5, 0., 1.E-5, 3.E-6",                       // 20
    "0., 0., 4.",                                          // 21
    "*TRANSVERSE SHEAR STIFFNESS",                         // 22
    "5.E8, 6.E8",                                          // 23
    "*SOLID SECTION, ELSET=BARS, MATERIAL=STEEL",          // 24
    "0.002",                                               // 25
    "*SPRING, ELSET=GROUND",                               // 26
    "2",                                                   // 27
    "1.E6",                                                // 28
    "*LINK SECTION, ELSET=LINKS",                          // 29
    "1., 2., 3., 4., 5., 6.",                              // 30
    "*RELEASE",                                            // 31
    "1, S2, M1-T",                                         // 32
    "*FIXITY",                                             // 33
    "2, S1, 0.25, 0.5",                                    // 34
    "*BOUNDARY",                                           // 35
    "1, ENCASTRE",                                         // 36
    "*STEP",                                               // 37
    "*STATIC",                                             // 38
    "*DLOAD",                                              // 39
    "BEAMS, P2, 4.",                                       // 40
    "*END STEP",                                           // 41
};

const std::vector<std::string> GOOD_SOLIDS = {
    "*NODE, NSET=ALL",                         // 1
    "1, 0, 0, 0",                              // 2
    "2, 1, 0, 0",                              // 3
    "3, 1, 1, 0",                              // 4
    "4, 0, 1, 0",                              // 5
    "5, 0, 0, 1",                              // 6
    "6, 1, 0, 1",                              // 7
    "7, 1, 1, 1",                              // 8
    "8, 0, 1, 1",                              // 9
    "*ELEMENT, TYPE=C3D8, ELSET=BODY",         // 10
    "1, 1, 2, 3, 4,",                          // 11
    "5, 6, 7, 8",                              // 12
    "*ELEMENT, TYPE=T3D2, ELSET=BAR",          // 13
    "2, 1, 7",                                 // 14
    "*MATERIAL, NAME=M",                       // 15
    "*ELASTIC",                                // 16
    "1000, 0.25",                              // 17
    "*SOLID SECTION, ELSET=BODY, MATERIAL=M",  // 18
    "*SOLID SECTION, ELSET=BAR, MATERIAL=M",   // 19
    "0.5",                                     // 20
    "*BOUNDARY",                               // 21
    "1, 1, 3, 0.1",                            // 22
    "*STEP",                                   // 23
    "*STATIC",                                 // 24
    "*END STEP",                               // 25
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

void expect_error(const std::string& text, int line, const std::string& keyword, const std::string& sentence,
                  bool alone) {
  try {
    read(text);
    ADD_FAILURE() << "the deck was accepted; expected line " << line << ": " << keyword << ": " << sentence;
  } catch (const solver::deck_error& error) {
    EXPECT_EQ(error.file, "plate.inp");
    EXPECT_EQ(error.line, line);
    EXPECT_EQ(error.keyword, keyword);
    EXPECT_EQ(error.text, sentence);
    const std::string named = keyword.empty() ? "" : keyword + ": ";
    if (!alone) return;
    EXPECT_EQ(dynamic_cast<const solver::deck_errors*>(&error), nullptr) << error.what();
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
