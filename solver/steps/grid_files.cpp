// grid_files.cpp: pieces are in their places before the file that names them.
#include "steps/grid_files.h"

#include <filesystem>
#include <string>
#include <vector>

#include "model/index.h"
#include "output/vtu_pieces.h"
#include "system/ranks.h"

namespace solver {

namespace {

void write_names(const places& to, const pugi::xml_document& first, int pieces) {
  std::vector<std::string> names;
  names.reserve(subscript(pieces));
  for (int p = 0; p < pieces; ++p) {
    names.push_back(std::filesystem::path(piece_of(to.vtu->path(), p)).filename().string());
  }
  write_file(to.vtu, [&](std::ostream& out) { write_pvtu(out, first, names); });
}

}  // namespace

void write_grid(const places& to, const std::function<pugi::xml_document(vtu_extent)>& grid) {
  if (to.piece == nullptr) {
    write_file(to.vtu, [&](std::ostream& out) { grid(vtu_extent::MODEL).save(out, "  "); });
    return;
  }
  pugi::xml_document own;
  fail_together([&] {
    own = grid(vtu_extent::PROCESS);
    write_file(to.piece, [&](std::ostream& out) { own.save(out, "  "); });
  });
  write_names(to, own, rank_count());
}

void write_whole_grid(const places& to, const std::function<pugi::xml_document()>& grid) {
  const pugi::xml_document whole = grid();
  write_file(to.piece == nullptr ? to.vtu : to.piece, [&](std::ostream& out) { whole.save(out, "  "); });
  if (to.piece != nullptr) write_names(to, whole, 1);
}

}  // namespace solver
