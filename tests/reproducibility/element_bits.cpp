// element_bits.cpp: a seeded list of element calls and the bits of what they write.
//
//   element_bits                   one line a call: what was called, and a hash of all that it wrote
//   element_bits --values          the values behind the hashes too, as bits and as decimal numbers
//   element_bits --compare-orders  silent: makes the calls forwards and backwards and fails when the order shows
//
// All values that are not numbers count as one: their sign and payload are not part of the arithmetic.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "finites/fields.h"
#include "finites/finites.h"
#include "plate_model.h"
#include "random_shapes.h"

namespace {

constexpr int ELEMENTS = 120;
constexpr int OPERATIONS[] = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10};

std::uint64_t bits_of(double value) {
  if (std::isnan(value)) return 0x7FF8000000000000ULL;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// FNV-1a over the bytes of the values (Fowler, Noll and Vo).
std::uint64_t hash_of(const std::vector<double>& values) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const double value : values) {
    const std::uint64_t bits = bits_of(value);
    for (unsigned shift = 0; shift < 64; shift += 8) hash = (hash ^ ((bits >> shift) & 0xFFU)) * 1099511628211ULL;
  }
  return hash;
}

// Elements of both kinds; isotropic, orthotropic and composite sections; offsets, angles, code 98.
std::vector<support::plate_description> describe_elements() {
  support::seeded_random random(1971);
  std::vector<support::plate_description> descriptions;
  for (int i = 0; i < ELEMENTS; ++i) {
    const std::vector<support::point> nodes = support::random_triangle(random, random.log_uniform(0.1, 100.0));
    const support::orthotropy kind =
        random.integer(0, 1) == 0 ? support::orthotropy::reciprocal : support::orthotropy::arbitrary;
    const int section = i % 3;
    support::plate_description description = section == 0   ? support::random_isotropic(random, nodes)
                                             : section == 1 ? support::random_orthotropic(random, nodes, kind)
                                                            : support::random_composite(random, nodes, kind);
    constexpr int formulations[] = {1, 1, 2, 3, 98};
    description.formulation = formulations[i % 5];
    if (i % 4 == 1) support::add_random_offsets(random, description);
    descriptions.push_back(description);
  }
  return descriptions;
}

// What is passed to the calls of one element; by a generator of its own, so that it does not hang on the order of
// calls.
struct call_input {
  std::vector<double> displacements;
  std::vector<double> data;  // 12
};

call_input make_input(const support::plate_description& description, int elem, int op) {
  support::seeded_random random(static_cast<unsigned>(1000 * elem + op));
  call_input input{random.vector(18, 1e-3), random.vector(12, 1.0)};
  if (op == 9 || op == 10) {
    for (std::size_t i = 0; i < 3; ++i) {
      input.data[i] = 0.5 * description.nodes[0][i] + 0.25 * (description.nodes[1][i] + description.nodes[2][i]);
    }
  }
  return input;
}

void append(std::vector<double>& all, const double* first, int count) { all.insert(all.end(), first, first + count); }

// All that one call of FINITES can write.
std::vector<double> call_element(support::plate_model& model, int op, int elem) {
  call_input input = make_input(model.at(elem), elem, op);
  std::vector<double> forces(24), matrix(24 * 24);
  std::fill_n(model.exchange_forces(), 24 + 720, 0.0);
  model.set_displacements(input.displacements);
  const int code = model.call(op, elem, input.data.data(), forces.data(), matrix.data());
  std::vector<double> written = {static_cast<double>(code)};
  append(written, input.data.data(), 12);
  append(written, forces.data(), 24);
  append(written, matrix.data(), 24 * 24);
  append(written, model.exchange_forces(), 24 + 720);
  const PLATE_RECORD& plate = model.plate(elem);
  for (const float value : {plate.AREA, plate.WEIGHT, plate.FACTORED_WEIGHT})
    written.push_back(static_cast<double>(value));
  return written;
}

std::vector<double> call_info(support::plate_model& model, int elem) {
  const std::int32_t element = elem, n = model.extent();
  std::int32_t kind = 0, behav = 0, parts = 0;
  INFO_FINITES(&element, model.raw(), &n, &kind, &behav, &parts);
  return {static_cast<double>(kind), static_cast<double>(behav), static_cast<double>(parts)};
}

std::vector<double> call_gauss(int elem) {
  support::seeded_random random(static_cast<unsigned>(elem));
  const std::vector<double> xyz = random.vector(12, 10.0);
  const std::int32_t rule = 1 + elem % 3, point = 1 + elem % 4, nodes = 3 + elem % 2;
  std::vector<double> out(12);
  double* o = out.data();
  GAUSS_INT_2D(&rule, &point, &nodes, xyz.data(), o, o + 1, o + 2, o + 3, o + 4, o + 5, o + 6, o + 7, o + 8, o + 9,
               o + 10, o + 11);
  return out;
}

std::vector<double> call_principal(int elem) {
  support::seeded_random random(static_cast<unsigned>(elem));
  std::vector<double> record = random.vector(100, 1000.0);
  std::vector<float> narrow(record.begin(), record.end());
  UPDATE_PRINCIPAUX_RES100_PLA_DBL(record.data());
  UPDATE_PRINCIPAUX_RES100_PLA(narrow.data());
  record.insert(record.end(), narrow.begin(), narrow.end());
  return record;
}

void store_forces(support::plate_model& model) {
  support::seeded_random random(7);
  model.allocate_state();
  for (int elem = 1; elem <= model.count(); ++elem) {
    PLATE_STATE_RECORD& state = model.state(elem);
    for (double& value : state.STORED_NODAL_FORCES.V) value = random.uniform(-10.0, 10.0);
    for (double& value : state.STORED_DISPLACEMENTS.V) value = random.uniform(-1e-3, 1e-3);
  }
}

using call_results = std::map<std::string, std::vector<double>>;

void call_all_of(support::plate_model& model, int elem, const char* pass, call_results& results) {
  char name[64];
  for (const int op : OPERATIONS) {
    std::snprintf(name, sizeof name, "%s element %03d operation %03d", pass, elem, op);
    results[name] = call_element(model, op, elem);
  }
  std::snprintf(name, sizeof name, "%s element %03d info", pass, elem);
  results[name] = call_info(model, elem);
}

// Three passes: plain, second order with stored forces, stiffness factors on every third element.
call_results call_everything(bool forwards) {
  call_results results;
  for (const char* pass : {"plain", "second_order", "factors"}) {
    support::plate_model model(describe_elements());
    if (std::string(pass) == "second_order") {
      model.set_header(SECOND_ORDER, 1.0);
      store_forces(model);
    } else if (std::string(pass) == "factors") {
      std::vector<std::int32_t> ids;
      std::vector<float> factors;
      for (int elem = 3; elem <= ELEMENTS; elem += 3) {
        ids.push_back(10 * elem);
        factors.insert(factors.end(), {0.5F, 0.75F});
      }
      model.set_stiffness_factors(ids, factors, 2);
    }
    for (int i = 1; i <= ELEMENTS; ++i) call_all_of(model, forwards ? i : ELEMENTS + 1 - i, pass, results);
  }
  for (int i = 1; i <= ELEMENTS; ++i) {
    results["gauss_int_2d " + std::to_string(i)] = call_gauss(i);
    results["update_principaux " + std::to_string(i)] = call_principal(i);
  }
  return results;
}

void print(const call_results& results, bool with_values) {
  for (const auto& [name, values] : results) {
    std::printf("%s %016llx\n", name.c_str(), static_cast<unsigned long long>(hash_of(values)));
    if (!with_values) continue;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (bits_of(values[i]) == 0) continue;
      std::printf("  %zu %016llx %.17g\n", i + 1, static_cast<unsigned long long>(bits_of(values[i])), values[i]);
    }
  }
}

int compare_orders() {
  const call_results forwards = call_everything(true);
  const call_results backwards = call_everything(false);
  int differences = 0;
  for (const auto& [name, values] : forwards) {
    if (hash_of(values) == hash_of(backwards.at(name))) continue;
    std::printf("%s depends on the calls before it\n", name.c_str());
    ++differences;
  }
  return differences == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string option = argc > 1 ? argv[1] : "";
  if (option == "--compare-orders") return compare_orders();
  print(call_everything(true), option == "--values");
  return 0;
}
