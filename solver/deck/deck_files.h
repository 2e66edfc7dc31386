// deck_files.h: where the text of a deck and of what it includes comes from.
#ifndef FINITES_SOLVER_DECK_FILES_H
#define FINITES_SOLVER_DECK_FILES_H

#include <functional>
#include <string>

namespace solver {

struct file_text {
  std::string text;
  std::string fault{};  // the reason why it cannot be read: "No such file or directory"; empty: it was
  std::string place{};  // by which it is known again, whatever name leads to it
};

// Gives the file of a name.
using file_source = std::function<file_text(const std::string& name)>;

// That of this machine; its text is all or nothing.
file_text text_of_file(const std::string& name);

// A name without links and detours; as it stands where it cannot be resolved.
std::string true_path(const std::string& name);

}  // namespace solver

#endif
