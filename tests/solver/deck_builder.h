// deck_builder.h: one good deck, ways to damage a line of it, and the comparison of the error that comes out.
#ifndef FINITES_TESTS_DECK_BUILDER_H
#define FINITES_TESTS_DECK_BUILDER_H

#include <string>
#include <vector>

#include "model/model.h"

namespace deck_test {

// The lines of a good deck; line n is GOOD[n - 1].
extern const std::vector<std::string> GOOD;
extern const std::vector<std::string> GOOD_FRAME;   // the same for frame elements
extern const std::vector<std::string> GOOD_SOLIDS;  // a brick and a truss

std::string text_of(const std::vector<std::string>& lines);

// The good deck with one line replaced (`line` may hold several lines), a line put before line n, or lines left out.
std::string replaced(int n, const std::string& line);
std::string inserted(int n, const std::string& line);
std::string without(int first, int last);

solver::model read(const std::string& text);  // under the name plate.inp

// The reader must refuse the text at plate.inp, this line and keyword, with exactly this sentence.
// `alone`: and have no further error.
void expect_error(const std::string& text, int line, const std::string& keyword, const std::string& sentence,
                  bool alone = true);

// The notes of a deck that must be readable.
void expect_notes(const std::string& text, const std::vector<std::string>& notes);

// A folder of its own for files of a test; removed with what is in it at the end.
class scratch_folder {
 public:
  scratch_folder();
  ~scratch_folder();
  scratch_folder(const scratch_folder&) = delete;
  scratch_folder& operator=(const scratch_folder&) = delete;

  // Writes a file and returns its path.
  std::string write(const std::string& name, const std::string& text) const;
  std::string path(const std::string& name) const { return folder_ + "/" + name; }

 private:
  std::string folder_;
};

}  // namespace deck_test

#endif
