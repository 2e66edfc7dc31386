// output_file.h: a file that appears whole or not at all.
//
// It is opened beside its final place before the work begins, so that a place that cannot be written is known at once;
// commit() renames it. Without commit() nothing remains, also where a
// signal ends the run. A link stays and leads to the file; a device or a pipe is
// written as it stands. Of several processes that share a run the first one writes, and what the others put into the
// stream is lost; or each one writes a file of its own.
#ifndef FINITES_SOLVER_OUTPUT_FILE_H
#define FINITES_SOLVER_OUTPUT_FILE_H

#include <cstddef>
#include <fstream>
#include <string>

namespace solver {

// A device or a pipe, which no file can replace.
bool is_device(const std::string& path);

enum class writers { FIRST, EACH };

class output_file {
 public:
  explicit output_file(const std::string& path, writers who = writers::FIRST);
  ~output_file();
  output_file(const output_file&) = delete;
  output_file& operator=(const output_file&) = delete;

  std::ostream& stream() { return stream_; }
  // False: what goes into the stream is lost, and need not be made.
  bool is_written() const { return stream_.is_open(); }
  const std::string& path() const { return path_; }
  void commit();

 private:
  std::string path_, place_;  // as the user names it; behind links
  std::string temporary_;     // empty where the place is a device or a pipe
  std::ofstream stream_;
  std::size_t unfinished_ = 0;  // the number of the temporary file (unfinished_files.h)
  bool committed_ = false;
};

}  // namespace solver

#endif
