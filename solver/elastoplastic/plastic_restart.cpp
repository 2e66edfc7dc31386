// plastic_restart.cpp: the state of a path of yielding plates, to go on from in another run.
#include "analyses/path_archive.h"
#include "elastoplastic/plastic_path.h"
#include "model/model_error.h"
#include "system/ranks.h"

namespace solver {

template <class ARCHIVE>
void serialize(ARCHIVE& archive, yielding_point& p) {
  archive(p.factor, p.displacement, p.work, p.flowing, p.iterations);
}

std::vector<std::vector<double>> plastic_plates::accepted() const {
  std::vector<std::vector<double>> all;
  if (rank_count() == 1) {
    for (const plastic_state& state : states_) all.push_back(state.accepted());
    return all;
  }
  const auto put = [&](std::size_t e, packed_values& to) {
    to.put(states_[e].accepted().size());
    to.put(states_[e].accepted().data(), states_[e].accepted().size());
  };
  const auto take = [&](std::size_t, packed_values& from) {
    all.emplace_back(from.take<std::size_t>());
    from.take(all.back().data(), all.back().size());
  };
  share_by_element(model_, takers::ALL, put, take);
  return all;
}

bool plastic_plates::take_accepted(const std::vector<std::vector<double>>& states) {
  bool fits = states.size() == states_.size();
  for (std::size_t e = 0; fits && e < states.size(); ++e) {
    if (is_own(model_, e)) fits = states_[e].take_accepted(states[e]);
  }
  return true_for_all(fits);
}

// All that an increment starts from and that the results of the step hold so far. What begin() makes of the step is
// made again.
template <class ARCHIVE>
void plastic_path::archive_all(ARCHIVE& archive, elastoplastic_solution& result,
                               std::vector<std::vector<double>>& plates) {
  archive(plates, u_, base_, factor_, work_, scale_, step_, first_step_, largest_step_, own_step_, share_, fresh_,
          cuts_, loss_cuts_, works_, factors_, increments_, states_);
  archive(result.curve, result.node, result.direction, result.first_yield, result.largest_factor, result.out_of_balance,
          result.end);
}

void plastic_path::keep(bool finished, elastoplastic_solution& result, path_restart* restart) {
  if (restart == nullptr) return;
  restart->keep(finished, [&] {
    std::vector<std::vector<double>> plates = system_.plates().accepted();
    return archived([&](auto& archive) { archive_all(archive, result, plates); });
  });
}

void plastic_path::take_left(const step& s, const left_state& left, elastoplastic_solution& result) {
  std::vector<std::vector<double>> plates;
  take_archived(left.state, [&](auto& archive) { archive_all(archive, result, plates); });
  if (!system_.plates().take_accepted(plates)) {
    throw model_error(model_, s, "*STEP", "the state of the restart file is that of another model");
  }
  system_.accept(u_);
}

}  // namespace solver
