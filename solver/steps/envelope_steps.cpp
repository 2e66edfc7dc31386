// envelope_steps.cpp: the files and the summary of an envelope, whose values have been gathered step by step.
#include <fmt/format.h>

#include "model/base_step.h"
#include "output/envelope_csv.h"
#include "output/envelope_summary.h"
#include "output/vtu_envelope.h"
#include "steps/analysis.h"
#include "steps/grid_files.h"
#include "steps/report.h"
#include "system/ranks.h"

namespace solver {

namespace {

class envelope_steps : public analysis {
 public:
  explicit envelope_steps(run_context& context) : context_(context) {}
  void run(const step& /*s*/) override {}
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
};

void envelope_steps::write(const step& s, const places& to) {
  if (!is_first_rank()) return;  // who has gathered the values
  const model& m = context_.m;
  const std::size_t index = number_of(m, s) - 1;
  const envelope& e = context_.kept->envelope_of(index);
  write_whole_grid(to, [&] { return envelope_vtu(m, s, e, context_.wanted.station_count, context_.wanted.form); });
  write_file(to.csv, [&](std::ostream& out) { write_envelope_csv(out, m, e); });
  write_file(to.reactions, [&](std::ostream& out) { write_envelope_reactions_csv(out, m, e); });
  write_file(to.members, [&](std::ostream& out) { write_envelope_members_csv(out, m, e); });
  write_file(to.stations, [&](std::ostream& out) { write_envelope_stations_csv(out, m, e); });
  write_file(to.points, [&](std::ostream& out) { write_envelope_points_csv(out, m, e); });
  write_file(to.stresses, [&](std::ostream& out) { write_envelope_stresses_csv(out, m, e); });
  write_file(to.solids, [&](std::ostream& out) { write_envelope_solids_csv(out, m, e); });
  for (step_listener* each : context_.listeners) each->enveloped(m, s, e);
  context_.watch.lap("write");
  if (!context_.values.nodes.empty() || !context_.values.reference_nodes.empty()) {
    print(fmt::format("step {}: an envelope has no displacements to print, --csv has its bounds\n", index + 1));
  }
  if (!context_.wanted.quiet) {
    print_heading(m, s);
    print(envelope_summary(m, e));
  }
  context_.kept->release_envelope(index);
}

}  // namespace

std::unique_ptr<analysis> make_envelope_steps(run_context& context) {
  return std::make_unique<envelope_steps>(context);
}

}  // namespace solver
