// pushover_restart.cpp: the state of a frame on its path, to go on from in another run.
#include <cereal/types/optional.hpp>

#include "analyses/path_archive.h"
#include "model/base_step.h"
#include "model/model_error.h"
#include "pushover/pushover_path.h"

namespace solver {

template <class ARCHIVE>
void serialize(ARCHIVE& archive, hinge_event& e) {
  archive(e.factor, e.element, e.end, e.kind, e.forces.P, e.forces.My, e.forces.Mz);
}

template <class ARCHIVE>
void serialize(ARCHIVE& archive, curve_point& p) {
  archive(p.factor, p.displacement, p.open_hinges);
}

template <class ARCHIVE>
void serialize(ARCHIVE& archive, beam_state& b) {
  archive(b.forces, b.flow, b.active, b.axial_force);
}

template <class ARCHIVE>
void serialize(ARCHIVE& archive, span_forces& f) {
  archive(f.P, f.My, f.Mz);
}

template <class ARCHIVE>
void serialize(ARCHIVE& archive, use_of_capacity& u) {
  archive(u.element, u.distance, u.ratio);
}

template <class ARCHIVE>
void serialize(ARCHIVE& archive, span_at_capacity& s) {
  archive(s.first, s.factor, s.last);
}

// All that a step between events starts from and that the results hold so far. Which equations were skipped belongs to
// a step alone.
template <class ARCHIVE>
void pushover_path::archive_all(ARCHIVE& archive, frame_state& now) {
  pushover_solution& result = *result_;
  archive(now.factor, now.displacement, now.beams, count_, last_length_, last_factor_, spans_, states_);
  archive(result.events, result.curve, result.node, result.direction, result.end, result.vertex, result.span,
          result.motion);
}

void pushover_path::keep(bool finished, path_restart* restart) {
  if (restart == nullptr) return;
  restart->keep(finished, [&] { return archived([&](auto& archive) { archive_all(archive, frame_.now()); }); });
}

void pushover_path::take_left(const left_state& left) {
  frame_state now;
  take_archived(left.state, [&](auto& archive) { archive_all(archive, now); });
  const frame_state& here = frame_.now();
  if (now.beams.size() != here.beams.size() || now.displacement.size() != here.displacement.size()) {
    throw model_error(model_, step_, "*STEP", "the state of the restart file is that of another model");
  }
  frame_.take(now);
}

}  // namespace solver
