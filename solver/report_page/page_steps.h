// page_steps.h: the data of one step.
#ifndef FINITES_SOLVER_PAGE_STEPS_H
#define FINITES_SOLVER_PAGE_STEPS_H

#include "analyses/envelope.h"
#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "elastoplastic/elastoplastic.h"
#include "pushover/pushover.h"
#include "report_page/page_buffers.h"
#include "report_page/page_mesh.h"

namespace solver {

// In all of them `m` is the model that the step has used, whose sections may be copies at a temperature, and `mesh`
// that of the model that was read.

// What every step has: number, name, kind, warnings.
page_json begin_step(const model& m, const step& s, const std::vector<std::string>& notes,
                     const std::vector<std::string>& remarks);

// What the deck holds in a step; of a step that looks for buckling factors also the loads that they multiply.
void add_supports(page_json& data, const page_mesh& mesh, const model& m, const step& s, page_buffers& buffers);

// What the page shows of a step beside its tables and its deflected shape.
enum class page_fields { ALL, DISPLACEMENTS };

// Supports, loads, sums, reactions, displacements and extremes; with ALL also stations and fields of results.
void add_solution(page_json& data, const page_mesh& mesh, const model& m, const static_solution& solution,
                  const step_results& results, page_fields shown, page_buffers& buffers);

void add_modes(page_json& data, const page_mesh& mesh, const step& s, const modal_solution& solution,
               page_buffers& buffers);

// Fields by pairs, least and largest, and the extremes of all steps that the envelope spans.
void add_envelope(page_json& data, const page_mesh& mesh, const model& m, const step& s, const envelope& bounds,
                  page_buffers& buffers);

// The path that has led to the solution; how a pushover of the step has ended.
void add_path(page_json& data, const page_mesh& mesh, const model& m, const step& s, const pushover_solution& path,
              page_buffers& buffers);
void add_path(page_json& data, const page_mesh& mesh, const elastoplastic_solution& path, page_buffers& buffers);

}  // namespace solver

#endif
