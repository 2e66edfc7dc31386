// report_listener.h: gathers the results of all steps for the report page, and writes it.
#ifndef FINITES_SOLVER_REPORT_LISTENER_H
#define FINITES_SOLVER_REPORT_LISTENER_H

#include <ostream>
#include <vector>

#include <nlohmann/json.hpp>

#include "report_page/page_buffers.h"
#include "report_page/page_mesh.h"
#include "steps/step_listener.h"
#include "system/stopwatch.h"

namespace solver {

// Whether this build has a page.
bool has_report_page();

// What a browser can take.
struct page_limits {
  std::size_t elements = 400000;        // above them edges alone: one static step of shells would take more than 25 MB
  std::size_t characters = 40'000'000;  // steps after so many have no fields of results; envelopes have them always
};

class report_listener : public step_listener {
 public:
  // `m`: as it was read; it lives as long as this.
  report_listener(const model& m, int station_count, const page_limits& limits = {});

  void solved(const model& m, const step& s, const static_solution& solution, const step_results& results) override;
  void found_modes(const model& m, const step& s, const modal_solution& solution) override;
  void enveloped(const model& m, const step& s, const envelope& bounds) override;
  void followed_hinges(const model& m, const step& s, const pushover_solution& path) override;
  void followed_plates(const model& m, const step& s, const elastoplastic_solution& path) override;

  // So many deformed states of a path the page has room for.
  std::size_t path_states() const { return mesh_.states_of_path(); }

  // The page with the data of all steps so far.
  void write(std::ostream& out, const stopwatch& watch) const;

 private:
  page_json begin_data() const;
  page_json time_of(const stopwatch& watch) const;
  page_json* step_of(const model& m, const step& s);

  page_limits limits_;
  page_mesh mesh_;
  page_buffers buffers_;
  page_json model_, steps_;
  std::vector<std::size_t> without_fields_;  // numbers of steps
};

}  // namespace solver

#endif
