// elements_batches.hpp: the same call over many elements. Part of elements.hpp.
//
//     finites::plates batch(plate, coordinates);       // 12 reals per element; all else comes from plate
//     batch.thickness = finites::per_element(h, 1).reals;
//     std::vector<double> K(576 * batch.count);
//     batch.stiffness(K);                              // element e: from K[576 e]
//     batch.stiffness(K, {begin, end});                // a part of them, for one thread
//
// Answers lie one after the other without gaps, each at the place of its element, whatever part of the batch a call
// does. The arrays belong to the caller and outlive the batch, which only refers to them.
#ifndef FINITES_ELEMENTS_BATCHES_HPP
#define FINITES_ELEMENTS_BATCHES_HPP

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "finites/elements.h"
#include "finites/elements_values.hpp"

namespace finites {

// The values of all elements for one argument: element e has those from values[e * stride]. Left out, the stride is the
// number of values of one element; 0 gives all elements the first ones. An array of the batch itself (batch.thickness
// above) needs it.
struct per_element {
  per_element(view<const double> values, std::int64_t stride = -1)
      : reals{values.data(), stride}, size(static_cast<std::int64_t>(values.size())) {}
  template <class VALUES, class = std::enable_if_t<std::is_constructible_v<view<const double>, VALUES>>>
  per_element(VALUES&& values, std::int64_t stride = -1)
      : per_element(view<const double>(std::forward<VALUES>(values)), stride) {}
  per_element() : reals{nullptr, 0}, size(0) {}

  finites_reals reals;
  std::int64_t size;
};

// Elements begin to end - 1; left out, all.
struct part {
  std::int64_t begin = 0, end = -1;
};

namespace detail {

// One call over a part of a batch: its range, its arguments, its answer.
struct batch_call {
  batch_call(const char* call, std::int64_t count, const part& elements, const outcome& report)
      : name(call), begin(elements.begin), end(elements.end < 0 ? count : elements.end), how(report) {}

  // Whether an array reaches to the last element of the part.
  bool reaches(const char* argument, std::int64_t size, std::int64_t stride, std::int64_t needed) {
    const std::int64_t last = end > begin ? (end - 1) * stride + needed : 0;
    good =
        good && how.fits(size >= last, name, argument, static_cast<std::size_t>(size), static_cast<std::size_t>(last));
    return good;
  }
  finites_reals of(const char* argument, const per_element& values, std::int64_t needed, bool may_be_none = false) {
    finites_reals reals = values.reals;
    if (may_be_none && values.size == 0) return {nullptr, 0};
    if (reals.stride < 0) reals.stride = needed;
    reaches(argument, values.size, reals.stride, needed);
    return reals;
  }
  template <class T>
  T* into(view<T> answer, std::int64_t stride) {
    reaches("the answer", static_cast<std::int64_t>(answer.size()), stride, stride);
    return answer.data();
  }
  template <class CALL>
  bool run(const CALL& call) {
    if (!good) return false;
    std::int64_t failed = -1;
    const finites_status status = call(&failed);
    return how.of(status, name, failed);
  }

  const char* name;
  std::int64_t begin, end;
  const outcome& how;
  bool good = true;
};

// The coordinates of a batch, the number of its elements by their number: those of whole elements, else FINITES_RANGE
// and a batch of none.
template <class BATCH>
void place_batch(BATCH& batch, view<const double> coordinates, std::int64_t of_one, const outcome& how = {},
                 const char* name = "a batch of elements") {
  const auto size = static_cast<std::int64_t>(coordinates.size());
  const std::int64_t whole = of_one > 0 ? size / of_one : 0;
  const std::int64_t needed = (whole > 0 ? whole : 1) * of_one;
  const bool fitting = of_one <= 0 || whole * of_one == size;
  const bool good = how.fits(fitting, name, "coordinates", coordinates.size(), static_cast<std::size_t>(needed));
  batch.count = good ? whole : 0;
  batch.xyz = {coordinates.data(), of_one};
}

}  // namespace detail

// All calls answer false after a failure. In a finites::error, element() is the first one at fault.
class plates : public finites_plates {
 public:
  plates() : finites_plates() { finites_plate_init(&common); }
  // As many elements as there are coordinates: 3 nodes reals each.
  plates(const finites_plate& alike, view<const double> coordinates, outcome how = {}) : finites_plates() {
    common = alike;
    detail::place_batch(*this, coordinates, std::int64_t{3} * common.nodes, how, "finites::plates");
  }

  int order() const { return common.nodes == 3 ? 18 : 24; }

  bool stiffness(view<double> K, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_stiffness", count, elements, how);
    double* out = call.into(K, square());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_stiffness(this, call.begin, call.end, out, square(), failed);
    });
  }
  bool mass(view<double> M, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_mass", count, elements, how);
    double* out = call.into(M, square());
    return call.run(
        [&](std::int64_t* failed) { return finites_plates_mass(this, call.begin, call.end, out, square(), failed); });
  }
  bool geometric(const per_element& u, view<double> KG, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_geometric", count, elements, how);
    const finites_reals from = call.of("u", u, order());
    double* out = call.into(KG, square());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_geometric(this, call.begin, call.end, from, out, square(), failed);
    });
  }
  bool forces(const per_element& u, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_forces", count, elements, how);
    const finites_reals from = call.of("u", u, order());
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_forces(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  // Either of global and local may be empty.
  bool surface_load(const per_element& global, const per_element& local, view<double> F, part elements = {},
                    outcome how = {}) const {
    detail::batch_call call("finites_plates_surface_load", count, elements, how);
    const finites_reals in_global = call.of("global", global, 3, true), in_local = call.of("local", local, 3, true);
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_surface_load(this, call.begin, call.end, in_global, in_local, out, order(), failed);
    });
  }
  bool body_load(const per_element& load, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_body_load", count, elements, how);
    const finites_reals from = call.of("load", load, 3);
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_body_load(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  bool temperature_load(const per_element& temperature, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_temperature_load", count, elements, how);
    const finites_reals from = call.of("temperature", temperature, 2);
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_plates_temperature_load(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  bool measure(view<finites_plate_measures> measures, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_measure", count, elements, how);
    finites_plate_measures* out = call.into(measures, 1);
    return call.run(
        [&](std::int64_t* failed) { return finites_plates_measure(this, call.begin, call.end, out, failed); });
  }
  // temperature may be empty.
  bool result(const per_element& u, const per_element& temperature, view<finites_plate_results> results,
              part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_plates_result", count, elements, how);
    const finites_reals from = call.of("u", u, order()), heat = call.of("temperature", temperature, 2, true);
    finites_plate_results* out = call.into(results, 1);
    return call.run([&](std::int64_t* failed) {
      return finites_plates_result(this, call.begin, call.end, from, heat, out, failed);
    });
  }

 private:
  int square() const { return order() * order(); }
};

class beams : public finites_beams {
 public:
  beams() : finites_beams() { finites_beam_init(&common); }
  // Six coordinates each.
  beams(const finites_beam& alike, view<const double> coordinates, outcome how = {}) : finites_beams() {
    common = alike;
    detail::place_batch(*this, coordinates, 6, how, "finites::beams");
  }

  bool stiffness(view<double> K, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_beams_stiffness", count, elements, how);
    double* out = call.into(K, 144);
    return call.run(
        [&](std::int64_t* failed) { return finites_beams_stiffness(this, call.begin, call.end, out, 144, failed); });
  }
  bool mass(view<double> M, part elements = {}, outcome how = {}) const { return mass_of(0, M, elements, how); }
  bool lumped_mass(view<double> M, part elements = {}, outcome how = {}) const { return mass_of(1, M, elements, how); }
  // One axial force each.
  bool geometric_of_force(const per_element& axial, view<double> KG, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_beams_geometric_of_force", count, elements, how);
    const finites_reals from = call.of("axial", axial, 1);
    double* out = call.into(KG, 144);
    return call.run([&](std::int64_t* failed) {
      return finites_beams_geometric_of_force(this, call.begin, call.end, from, out, 144, failed);
    });
  }
  bool geometric(const per_element& u, view<double> KG, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_beams_geometric", count, elements, how);
    const finites_reals from = call.of("u", u, 12);
    double* out = call.into(KG, 144);
    return call.run([&](std::int64_t* failed) {
      return finites_beams_geometric(this, call.begin, call.end, from, out, 144, failed);
    });
  }
  bool forces(const per_element& u, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_beams_forces", count, elements, how);
    const finites_reals from = call.of("u", u, 12);
    double* out = call.into(F, 12);
    return call.run(
        [&](std::int64_t* failed) { return finites_beams_forces(this, call.begin, call.end, from, out, 12, failed); });
  }

 private:
  bool mass_of(std::int32_t lumped, view<double> M, const part& elements, const outcome& how) const {
    detail::batch_call call("finites_beams_mass", count, elements, how);
    double* out = call.into(M, 144);
    return call.run(
        [&](std::int64_t* failed) { return finites_beams_mass(this, call.begin, call.end, lumped, out, 144, failed); });
  }
};

class trusses : public finites_trusses {
 public:
  trusses() : finites_trusses() { finites_truss_init(&common); }
  // Six coordinates each.
  trusses(const finites_truss& alike, view<const double> coordinates) : finites_trusses() {
    common = alike;
    detail::place_batch(*this, coordinates, 6);
  }

  bool stiffness(view<double> K, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_trusses_stiffness", count, elements, how);
    double* out = call.into(K, 36);
    return call.run(
        [&](std::int64_t* failed) { return finites_trusses_stiffness(this, call.begin, call.end, out, 36, failed); });
  }
  bool mass(view<double> M, part elements = {}, outcome how = {}) const { return mass_of(0, M, elements, how); }
  bool lumped_mass(view<double> M, part elements = {}, outcome how = {}) const { return mass_of(1, M, elements, how); }
  // One axial force each.
  bool geometric_of_force(const per_element& axial, view<double> KG, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_trusses_geometric_of_force", count, elements, how);
    const finites_reals from = call.of("axial", axial, 1);
    double* out = call.into(KG, 36);
    return call.run([&](std::int64_t* failed) {
      return finites_trusses_geometric_of_force(this, call.begin, call.end, from, out, 36, failed);
    });
  }
  bool forces(const per_element& u, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_trusses_forces", count, elements, how);
    const finites_reals from = call.of("u", u, 6);
    double* out = call.into(F, 6);
    return call.run(
        [&](std::int64_t* failed) { return finites_trusses_forces(this, call.begin, call.end, from, out, 6, failed); });
  }

 private:
  bool mass_of(std::int32_t lumped, view<double> M, const part& elements, const outcome& how) const {
    detail::batch_call call("finites_trusses_mass", count, elements, how);
    double* out = call.into(M, 36);
    return call.run([&](std::int64_t* failed) {
      return finites_trusses_mass(this, call.begin, call.end, lumped, out, 36, failed);
    });
  }
};

class solids : public finites_solids {
 public:
  solids() : finites_solids() { finites_solid_init(&common); }
  // 3 nodes coordinates each.
  solids(const finites_solid& alike, view<const double> coordinates, outcome how = {}) : finites_solids() {
    common = alike;
    detail::place_batch(*this, coordinates, std::int64_t{3} * common.nodes, how, "finites::solids");
  }

  int order() const { return common.nodes == 4 || common.nodes == 6 ? 3 * common.nodes : 24; }

  bool stiffness(view<double> K, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_stiffness", count, elements, how);
    double* out = call.into(K, square());
    return call.run([&](std::int64_t* failed) {
      return finites_solids_stiffness(this, call.begin, call.end, out, square(), failed);
    });
  }
  bool mass(view<double> M, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_mass", count, elements, how);
    double* out = call.into(M, square());
    return call.run(
        [&](std::int64_t* failed) { return finites_solids_mass(this, call.begin, call.end, out, square(), failed); });
  }
  bool geometric(const per_element& u, view<double> KG, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_geometric", count, elements, how);
    const finites_reals from = call.of("u", u, order());
    double* out = call.into(KG, square());
    return call.run([&](std::int64_t* failed) {
      return finites_solids_geometric(this, call.begin, call.end, from, out, square(), failed);
    });
  }
  bool forces(const per_element& u, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_forces", count, elements, how);
    const finites_reals from = call.of("u", u, order());
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_solids_forces(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  bool body_load(const per_element& load, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_body_load", count, elements, how);
    const finites_reals from = call.of("load", load, 3);
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_solids_body_load(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  // One change of temperature each.
  bool temperature_load(const per_element& change, view<double> F, part elements = {}, outcome how = {}) const {
    detail::batch_call call("finites_solids_temperature_load", count, elements, how);
    const finites_reals from = call.of("change", change, 1);
    double* out = call.into(F, order());
    return call.run([&](std::int64_t* failed) {
      return finites_solids_temperature_load(this, call.begin, call.end, from, out, order(), failed);
    });
  }
  bool result(const per_element& u, double temperature, view<finites_solid_results> results, part elements = {},
              outcome how = {}) const {
    detail::batch_call call("finites_solids_result", count, elements, how);
    const finites_reals from = call.of("u", u, order());
    finites_solid_results* out = call.into(results, 1);
    return call.run([&](std::int64_t* failed) {
      return finites_solids_result(this, call.begin, call.end, from, temperature, out, failed);
    });
  }

 private:
  int square() const { return order() * order(); }
};

}  // namespace finites

#endif
