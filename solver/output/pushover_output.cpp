// pushover_output.cpp: the table of hinge events and the curve of a pushover.
#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "elements/largest_translation.h"
#include "output/text.h"
#include "pushover/pushover.h"

namespace solver {

namespace {

const char* kind_name(event_kind kind) {
  switch (kind) {
    case event_kind::FORMED: return "formed";
    case event_kind::CLOSED: return "closed";
    default: return "turned";
  }
}

constexpr double EQUAL = 1e-6;  // a motion is that of a nearly singular matrix

}  // namespace

std::string how_it_ended(const model& m, const step& s, const pushover_solution& solution) {
  const std::string factor = fmt::format("{:.9g}", solution.factor);
  switch (solution.end) {
    case pushover_end::MECHANISM: {
      const std::size_t f = largest_translation(m, solution.motion, EQUAL);
      return fmt::format("mechanism at load factor {}: {} moves most, in {}", factor,
                         node_name(m, number_of(f / DIRECTIONS)), direction_name(number_of(f % DIRECTIONS)));
    }
    case pushover_end::LIMIT: return "limit at load factor " + factor + ": no equilibrium was found above it";
    case pushover_end::FACTOR_REACHED: return "the frame stands at the largest load factor of the deck, " + factor;
    case pushover_end::EVENTS_REACHED:
      return fmt::format("stopped at load factor {} after {} events, the most that the deck allows", factor,
                         s.pushover.largest_events);
    case pushover_end::NO_EVENT:
      if (solution.span) return "beyond load factor " + factor + " no further hinge forms at an end of a member";
      return "the frame stands: beyond load factor " + factor + " no further hinge forms at any load";
    case pushover_end::VERTEX:
      return fmt::format(
          "stopped at load factor {}: element {} yields on three faces of its surface at once, and the "
          "stiffness of hinges knows two",
          factor, m.elements[solution.vertex].id);
    default: return "stopped at load factor " + factor + ": the hinges that act there could not be told apart";
  }
}

std::string span_note(const model& m, const pushover_solution& solution) {
  const span_at_capacity& span = *solution.span;
  std::string text = fmt::format(
      "*PUSHOVER: {} reaches the capacity of its hinges at load factor {:.6g}, and hinges form at ends alone: what the "
      "path shows above that factor is too strong",
      name_of(m, span.first), span.factor);
  if (span.last.ratio > SPAN_ABOVE) {
    text += fmt::format("; where it ends {} has {:.6g} times its capacity", name_of(m, span.last), span.last.ratio);
  }
  return text + ". Put a node there";
}

std::string pushover_summary(const model& m, const step& s, const pushover_solution& solution) {
  fmt::memory_buffer text;
  append(text, "  {}\n", how_it_ended(m, s, solution));
  if (solution.span) {
    append(text, "  valid up to load factor {:.9g}: {} reaches its capacity there, where no hinge can form\n",
           solution.span->factor, name_of(m, solution.span->first));
  }
  const auto count = [&](event_kind kind) {
    return std::count_if(solution.events.begin(), solution.events.end(),
                         [kind](const hinge_event& e) { return e.kind == kind; });
  };
  append(text, "  hinges: {} formed, {} closed; curve of node {} {}: {} points\n", count(event_kind::FORMED),
         count(event_kind::CLOSED), m.nodes[solution.node].id, direction_short_name(solution.direction),
         solution.curve.size());
  append(text, "  {:>6} {:>14} {:>9} {:>4}  {:<7} {:>14} {:>14} {:>14}\n", "event", "load factor", "element", "end",
         "hinge", "P", "My", "Mz");
  for (std::size_t k = 0; k < solution.events.size(); ++k) {
    const hinge_event& e = solution.events[k];
    append(text, "  {:>6} {:>14.9f} {:>9} {:>4}  {:<7} {:>14.6e} {:>14.6e} {:>14.6e}\n", k + 1, e.factor,
           m.elements[e.element].id, e.end + 1, kind_name(e.kind), e.forces.P, e.forces.My, e.forces.Mz);
  }
  return fmt::to_string(text);
}

void write_events_csv(std::ostream& out, const model& m, const pushover_solution& solution) {
  out << "event,load_factor,element,end,hinge,P,My,Mz\n";
  for (std::size_t k = 0; k < solution.events.size(); ++k) {
    const hinge_event& e = solution.events[k];
    out << fmt::format("{},{},{},{},{},{},{},{}\n", k + 1, e.factor, m.elements[e.element].id, e.end + 1,
                       kind_name(e.kind), e.forces.P, e.forces.My, e.forces.Mz);
  }
}

void write_curve_csv(std::ostream& out, const model& m, const pushover_solution& solution) {
  out << "point,load_factor,node,direction,displacement,open_hinges\n";
  for (std::size_t k = 0; k < solution.curve.size(); ++k) {
    const curve_point& p = solution.curve[k];
    out << fmt::format("{},{},{},{},{},{}\n", k + 1, p.factor, m.nodes[solution.node].id,
                       direction_short_name(solution.direction), p.displacement, p.open_hinges);
  }
}

}  // namespace solver
