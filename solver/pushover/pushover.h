// pushover.h: a frame is loaded event by event until its hinges make it a mechanism.
//
// All loads of a step grow with one factor. Between two events, which are hinges that form or close, the stiffness is
// that of the library with the hinges of the moment; where a yield surface is curved, small steps follow it.
#ifndef FINITES_SOLVER_PUSHOVER_H
#define FINITES_SOLVER_PUSHOVER_H

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "analyses/path_restart.h"
#include "analyses/path_states.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "elements/library_model.h"
#include "elements/member_field.h"
#include "model/model.h"
#include "pushover/span_use.h"
#include "pushover/yield_surface.h"
#include "system/linear_solver.h"
#include "system/stopwatch.h"

namespace solver {

// TURNED: an end that yields on flat faces goes to other faces.
enum class event_kind { FORMED, CLOSED, TURNED };

struct hinge_event {
  double factor = 0;
  std::size_t element = 0;
  std::size_t end = 0;
  event_kind kind = event_kind::FORMED;
  hinge_forces forces{};
};

struct curve_point {
  double factor = 0;
  double displacement = 0;
  int open_hinges = 0;
};

enum class pushover_end {
  MECHANISM,       // the hinges leave a motion without resistance
  LIMIT,           // no equilibrium was found above
  FACTOR_REACHED,  // the largest factor of the deck
  EVENTS_REACHED,  // the largest number of events of the deck
  NO_EVENT,        // no further hinge forms at any factor
  VERTEX,          // an end yields on three faces at once, which the stiffness of hinges does not know
  UNDECIDED        // the hinges that open and close at one factor could not be told apart
};

// The first place between the ends of a member, where no hinge can form, whose forces reach their capacity.
struct span_at_capacity {
  use_of_capacity first;  // of the member that comes first
  double factor = 0;      // on a path without a further event it may lie beyond the end
  use_of_capacity last;   // the most used member at the end of the path
};

struct pushover_solution {
  static_solution frame;             // at the factor reached; a reaction is that of all loads so far
  std::vector<end_forces> members;   // by element; beams only
  std::vector<member_state> states;  // likewise
  std::vector<hinge_event> events;
  std::vector<curve_point> curve;
  std::vector<path_state> kept;  // along the curve, as many as were asked for
  int node = 0, direction = 0;   // of the curve
  double factor = 0;
  pushover_end end = pushover_end::NO_EVENT;
  std::size_t vertex = 0;  // the element whose end it is
  std::optional<span_at_capacity> span;
  // The motion of a mechanism, largest translation 1; empty when there is none.
  std::vector<double> motion;
};

class pushover_frame;

// The pushovers of one model, in the order of its steps: a step with CONTINUE starts from the state that the step
// before has reached. The library holds the hinges while this lives.
class pushover {
 public:
  pushover(const model& m, library_model& library, linear_solver& solver);
  ~pushover();
  pushover(const pushover&) = delete;
  pushover& operator=(const pushover&) = delete;

  // Throws model_error for a structure that does not stand without hinges, and where the hinges would see no forces.
  // `states`: how many deformed states along the path are kept, at most. `restart`: see pushover_path.
  pushover_solution solve(const step& s, stopwatch& watch, std::size_t states = 0, path_restart* restart = nullptr);

 private:
  const model& model_;
  library_model& library_;
  linear_solver& solver_;
  std::unique_ptr<pushover_frame> frame_;
};

// The results of a static step, with the beams in the state that they have reached.
step_results recover_pushover_results(const model& m, library_model& library, const pushover_solution& solution);

std::string how_it_ended(const model& m, const step& s, const pushover_solution& solution);
// That, and the table of events.
std::string pushover_summary(const model& m, const step& s, const pushover_solution& solution);

// The factors of a path on which the span of a member has reached its capacity are too high from there on.
std::string span_note(const model& m, const pushover_solution& solution);

// A line of names, then one line per event or point.
void write_events_csv(std::ostream& out, const model& m, const pushover_solution& solution);
void write_curve_csv(std::ostream& out, const model& m, const pushover_solution& solution);

}  // namespace solver

#endif
