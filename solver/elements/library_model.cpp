// library_model.cpp: puts each element into its group.
#include "elements/library_model.h"

#include <algorithm>
#include <exception>
#include <initializer_list>
#include <system_error>
#include <thread>

namespace solver {

// Each group fills its sections when it is made. Elements follow in the order of the model, so that of several faults
// the one that comes first in the deck is reported.
library_model::library_model(const model& m)
    : data_(m),
      frames_(data_),
      plates_(data_),
      members_(data_, frames_),
      cables_(data_, frames_),
      solids_(data_),
      masses_(m) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    group_.push_back(data_.holds(e) ? &group_of(m.elements[e]) : nullptr);
    if (group_.back() == nullptr) continue;
    data_.A()(data_.entry(e) + ELEM_ID) = m.elements[e].id;
    group_[e]->add(e);
  }
}

element_group& library_model::group_of(const element& e) {
  if (is_plate(e.type)) return plates_;
  if (is_solid(e.type)) return solids_;
  if (is_point(e.type)) return masses_;
  if (is_cable(data_.of(), e)) return cables_;
  return members_;
}

void library_model::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  if (!has_state_) clear_state();
  group_[element]->keep_state(element, displacements, load);
}

void library_model::use_threads(int count) {
  threads_ = std::max(count, 1);
  data_.make_room(threads_);
  solids_.make_room(threads_);
}

int library_model::threads_for(question what) {
  constexpr int WORTH = 16;  // to start a thread takes as long as some ten calls
  const int most = std::min(threads_, count_of(data_.of().elements) / WORTH);
  return most > 1 && is_divisible(what) ? most : 1;
}

// Side by side goes what writes to nothing but the block and the records of its element and the exchange area. The
// header says for all elements at once whether geometric stiffness is wanted, and the common library which plastic
// model is followed: a call that changes them for itself shares them with none. Beams off their nodes, laminates,
// heated solids in second order, the geometric stiffness of members and plates that yield by several models have such
// calls; cables keep rows of loads.
bool library_model::is_divisible(question what) {
  const model& m = data_.of();
  const auto any = [&](const auto& is) { return std::any_of(m.elements.begin(), m.elements.end(), is); };
  if (any([&](const element& e) { return is_cable(m, e); })) return false;
  if (any([&](const element& e) { return is_beam(e.type) && is_placed(frame_section_of(m, e).place); })) return false;
  const bool solids = any([](const element& e) { return is_solid(e.type); });
  if (what == question::LOADS) return !solids || !data_.is_second_order();
  if (!m.laminates.empty() && what != question::MASS) return false;
  if (what == question::GEOMETRIC_STIFFNESS) return !any([](const element& e) { return is_member(e.type); });
  return what != question::PLASTIC || plates_.follow_one_model();
}

namespace {

// Where a part of the elements from `first` to `last` starts.
std::size_t start_of(std::size_t part, std::size_t parts, std::size_t first, std::size_t last) {
  return first + (last - first) * part / parts;
}

}  // namespace

void library_model::each_part(std::size_t first, std::size_t last, int threads, const part_work& work) {
  const auto parts = static_cast<std::size_t>(threads);
  for (std::size_t part = 0; part < parts; ++part) {
    work(part, start_of(part, parts, first, last), start_of(part + 1, parts, first, last));
  }
}

void library_model::divide(std::size_t first, std::size_t last, int threads, const part_work& work) {
  const auto parts = static_cast<std::size_t>(threads);
  std::vector<std::exception_ptr> failed(parts);
  const auto run = [&](std::size_t part) {
    try {
      const library_thread own(data_, part);
      work(part, start_of(part, parts, first, last), start_of(part + 1, parts, first, last));
    } catch (...) {
      failed[part] = std::current_exception();
    }
  };
  std::vector<std::thread> others;
  others.reserve(parts);
  std::size_t started = 1;
  try {
    for (; started < parts; ++started) others.emplace_back(run, started);
  } catch (const std::system_error&) {
    // The system gives no more threads: the calling one takes the parts that are left.
  }
  run(0);
  for (std::size_t part = started; part < parts; ++part) run(part);
  for (std::thread& other : others) other.join();
  for (const std::exception_ptr& failure : failed) {
    if (failure != nullptr) std::rethrow_exception(failure);
  }
}

void library_model::clear_state() {
  for (element_group* const group : std::initializer_list<element_group*>{&plates_, &members_, &cables_, &solids_}) {
    group->clear_state();
  }
  has_state_ = true;
}

}  // namespace solver
