// pushover_path.h: the path of a frame from event to event.
#ifndef FINITES_SOLVER_PUSHOVER_PATH_H
#define FINITES_SOLVER_PUSHOVER_PATH_H

#include <cstddef>
#include <functional>
#include <limits>
#include <vector>

#include "analyses/path_restart.h"
#include "pushover/pushover.h"
#include "pushover/pushover_frame.h"

namespace solver {

constexpr double ON_SURFACE = 1e-10;  // an end whose value is so near to 1 is on its surface
constexpr double NOT_AT_ALL = 1e-9;   // of a rate, by the largest of its kind: rounding

class pushover_path {
 public:
  pushover_path(const model& m, pushover_frame& frame, const step& s, std::size_t states)
      : model_(m), frame_(frame), step_(s), states_(states) {}

  // `restart`: where the path leaves its states, and goes on from one that an earlier run has left; null: nowhere.
  void follow(pushover_solution& result, path_restart* restart = nullptr);

 private:
  // One equation of one end.
  struct place {
    std::size_t beam, end;
    int equation;
  };

  enum class verdict { GOES_ON, MECHANISM, VERTEX, UNDECIDED };

  // Chooses the active equations so that none of them flows back and no other one is left outside, and with them the
  // direction of the next step.
  verdict choose_equations(frame_direction& direction);
  bool close_one(const frame_direction& direction);
  verdict open_one(const frame_direction& direction, bool& opened);
  double fastest_rate(const frame_direction& direction) const;  // of the forces of all ends, by their capacities
  void book_events(const std::vector<beam_state>& before);

  // The next step: to an event, to the largest factor, or as far as a curved surface allows.
  double step_length(const frame_direction& direction) const;
  double distance_to_event(const frame_direction& direction) const;
  double drift(const frame_direction& direction, double length) const;
  bool advance(const frame_direction& direction, double length);
  bool try_advance(const frame_direction& direction, double length, frame_state& reached);
  void meet_event(const frame_direction& direction, double length, frame_state& reached);
  double outside(const frame_state& state) const;

  void go_on(pushover_solution& result, path_restart* restart);
  template <class ARCHIVE>
  void archive_all(ARCHIVE& archive, frame_state& now);
  void keep(bool finished, path_restart* restart);
  void take_left(const left_state& left);

  void choose_curve(const frame_direction& direction);
  void record();
  path_state state_now() const;

  // Forces between the ends of members, where no hinge can form: the factor at which the first ones leave their
  // surface.
  std::vector<span_forces> spans(const frame_state& state) const;
  void watch_spans();
  void look_beyond(const frame_direction& direction);
  bool find_span(const std::vector<span_forces>& before, const std::vector<span_forces>& after, double& share);

  // Every equation of every end that may still become active.
  void for_inactive(const frame_state& state,
                    const std::function<void(const place& at, const hinge_model& h)>& action) const;

  const model& model_;
  pushover_frame& frame_;
  const step& step_;
  path_states states_;
  pushover_solution* result_ = nullptr;
  double last_length_ = std::numeric_limits<double>::infinity();  // of a step that followed a failure; else infinite
  std::vector<span_forces> spans_;                                // of the state that was recorded last, at this factor
  double last_factor_ = 0;
  int count_ = 0;               // of steps between events
  std::vector<place> skipped_;  // on their surface and about to stay there or to go inside
};

}  // namespace solver

#endif
