// pvd_writer.h: ParaView's collection of files.
#ifndef FINITES_SOLVER_PVD_WRITER_H
#define FINITES_SOLVER_PVD_WRITER_H

#include <ostream>
#include <string>
#include <vector>

namespace solver {

struct pvd_entry {
  double time = 0;
  std::string file;  // from the folder of the collection
  std::string name;  // for the reader
};

void write_pvd(std::ostream& out, const std::vector<pvd_entry>& entries);

// The values where they grow strictly, as a viewer needs of times; else 1, 2, 3 and so on.
std::vector<double> growing_times(const std::vector<double>& values);

}  // namespace solver

#endif
