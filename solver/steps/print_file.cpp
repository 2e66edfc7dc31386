// print_file.cpp: the name of the .dat file.
#include "steps/print_file.h"

#include <filesystem>

#include "output/print_tables.h"
#include "steps/places.h"

namespace solver {

std::unique_ptr<output_file> open_print_file(const options& wanted, const model& m) {
  if (!has_prints(m)) return nullptr;
  const std::filesystem::path path = std::filesystem::path(output_path(wanted)).replace_extension(".dat");
  check_new_place(wanted, path.string(), "the printed tables of the deck");
  return std::make_unique<output_file>(path.string());
}

}  // namespace solver
