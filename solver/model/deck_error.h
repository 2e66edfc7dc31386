// deck_error.h: what is wrong with a deck, with file, line and keyword.
#ifndef FINITES_SOLVER_DECK_ERROR_H
#define FINITES_SOLVER_DECK_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace solver {

// what() reads "cantilever.inp:12: *BOUNDARY: node 17 is not defined". A file that cannot be read has no line and no
// keyword: "cantilever.inp: the file cannot be opened: it is a folder".
class deck_error : public std::runtime_error {
 public:
  deck_error(const std::string& file_name, int line_number, const std::string& keyword_name,
             const std::string& message);

  std::string file;
  int file_number = -1;  // among the files of the deck, which may include one twice; -1: not known
  int line;              // from 1; 0 when the file itself is the trouble
  std::string keyword;   // "*BOUNDARY"; empty outside every keyword
  std::string text;      // the sentence alone
};

// Several errors of one deck, in the order of its lines. The base is the first of them; what() has a line for each and,
// as its last line, how many they are.
class deck_errors : public deck_error {
 public:
  // `list` is not empty; `more`: there are others beyond it.
  deck_errors(std::vector<deck_error> list, bool more);

  const char* what() const noexcept override { return whole_.c_str(); }

  // "3 errors", "20 errors and more".
  const std::string& count() const { return count_; }

  std::vector<deck_error> all;

 private:
  std::string count_, whole_;
};

}  // namespace solver

#endif
