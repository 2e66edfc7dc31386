// envelope_summary.h: what is printed of combinations and envelopes.
#ifndef FINITES_SOLVER_ENVELOPE_SUMMARY_H
#define FINITES_SOLVER_ENVELOPE_SUMMARY_H

#include <string>

#include "analyses/envelope.h"
#include "model/model.h"

namespace solver {

// The steps of a combination with their factors.
std::string combination_summary(const model& m, const step& s);

// The steps of an envelope; then of each value the least and the largest of the model, where they lie and which step
// governs.
std::string envelope_summary(const model& m, const envelope& e);

}  // namespace solver

#endif
