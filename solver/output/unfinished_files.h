// unfinished_files.h: files that go with the process when a signal ends it.
#ifndef FINITES_SOLVER_UNFINISHED_FILES_H
#define FINITES_SOLVER_UNFINISHED_FILES_H

#include <cstddef>
#include <string>

namespace solver {

// From now on SIGINT, SIGTERM and SIGHUP remove the file before they end the process. The number by which it is
// forgotten.
std::size_t remember_unfinished(const std::string& path);
// It is in its place, or removed.
void forget_unfinished(std::size_t number);

}  // namespace solver

#endif
