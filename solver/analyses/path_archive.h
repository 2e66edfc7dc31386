// path_archive.h: states of paths as text, by cereal; what several paths keep alike.
#ifndef FINITES_SOLVER_PATH_ARCHIVE_H
#define FINITES_SOLVER_PATH_ARCHIVE_H

#include <cereal/archives/portable_binary.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <sstream>
#include <string>

#include "analyses/path_states.h"

namespace solver {

template <class ARCHIVE>
void serialize(ARCHIVE& archive, path_state& s) {
  archive(s.point, s.displacement, s.equivalent_plastic);
}

// `visit(archive)` names all that is kept; the same one writes and reads.
template <class VISIT>
std::string archived(const VISIT& visit) {
  std::ostringstream text;
  {
    cereal::PortableBinaryOutputArchive archive(text);
    visit(archive);
  }
  return text.str();
}

template <class VISIT>
void take_archived(const std::string& state, const VISIT& visit) {
  std::istringstream text(state);
  cereal::PortableBinaryInputArchive archive(text);
  visit(archive);
}

}  // namespace solver

#endif
