// deck_error.h: what a reader of a deck throws: the first thing that is wrong, with file, line and keyword.
#ifndef FINITES_SOLVER_DECK_ERROR_H
#define FINITES_SOLVER_DECK_ERROR_H

#include <stdexcept>
#include <string>

namespace solver {

// what() reads "cantilever.inp:12: *BOUNDARY: node 17 is not defined". A file that cannot be read has no line and no
// keyword: "cantilever.inp: the file cannot be opened".
class deck_error : public std::runtime_error {
 public:
  deck_error(const std::string& file_name, int line_number, const std::string& keyword_name,
             const std::string& message);

  std::string file;
  int line;             // from 1; 0 when the file itself is the trouble
  std::string keyword;  // "*BOUNDARY"; empty outside every keyword
  std::string text;     // the sentence alone
};

}  // namespace solver

#endif
