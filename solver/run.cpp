// run.cpp: reads the deck, opens the outputs, solves each step, writes and prints.
#include "run.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <unordered_map>

#include <fmt/format.h>

#include "csv_writer.h"
#include "deck/deck_reader.h"
#include "deck/fields.h"
#include "output_file.h"
#include "progress.h"
#include "vtu_writer.h"

namespace solver {

namespace {

using files = std::vector<std::unique_ptr<output_file>>;

// "name.vtu" for the only step, "name.1.vtu" and so on for several.
std::string numbered(const std::string& path, std::size_t step, std::size_t steps) {
  if (steps == 1) return path;
  const std::filesystem::path whole(path);
  const std::string name = whole.stem().string() + "." + std::to_string(step + 1) + whole.extension().string();
  return (whole.parent_path() / name).string();
}

// A place that cannot be written is an error before anything is computed.
files open_outputs(const std::string& path, std::size_t steps) {
  files result;
  for (std::size_t s = 0; s < steps && !path.empty(); ++s)
    result.push_back(std::make_unique<output_file>(numbered(path, s, steps)));
  return result;
}

std::string output_path(const options& wanted) {
  if (!wanted.output.empty()) return wanted.output;
  return std::filesystem::path(wanted.deck).filename().replace_extension(".vtu").string();
}

// Results must not take the place of the deck, nor of each other.
void check_places(const options& wanted) {
  std::error_code ignored;
  for (const std::string& path : {output_path(wanted), wanted.csv})
    if (!path.empty() && std::filesystem::equivalent(path, wanted.deck, ignored))
      throw usage_error(path + ": is the deck itself");
  if (std::filesystem::path(output_path(wanted)).lexically_normal() ==
      std::filesystem::path(wanted.csv).lexically_normal())
    throw usage_error(wanted.csv + ": is wanted for two results");
}

// What the user named by number or set, as indices into the model.
struct wanted_values {
  std::vector<int> nodes;
  std::vector<int> reference_nodes;  // one a reference
};

wanted_values find_wanted(const model& m, const options& wanted) {
  std::unordered_map<int, int> index;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) index[m.nodes[n].id] = static_cast<int>(n);
  const auto node = [&](int id) {
    const auto found = index.find(id);
    if (found == index.end()) throw usage_error(fmt::format("{} has no node {}", m.deck, id));
    return found->second;
  };
  wanted_values result;
  for (const int id : wanted.nodes) result.nodes.push_back(node(id));
  for (const reference_value& reference : wanted.references) result.reference_nodes.push_back(node(reference.node));
  for (const std::string& name : wanted.sets) {
    const auto found = std::find_if(m.nsets.begin(), m.nsets.end(),
                                    [&](const named_set& set) { return set.name == deck::upper(name); });
    if (found == m.nsets.end()) throw usage_error(fmt::format("{} has no *NSET {}", m.deck, name));
    result.nodes.insert(result.nodes.end(), found->members.begin(), found->members.end());
  }
  return result;
}

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void print_step(const model& m, const step& s, const static_solution& solution, const options& wanted,
                const wanted_values& values, const std::string& solver_name) {
  if (!wanted.quiet) {
    print(fmt::format("step {}{}{}\n", &s - m.steps.data() + 1, s.name.empty() ? "" : ", ", s.name));
    print(model_summary(m, solution, solver_name));
    print(displacement_summary(m, solution));
    print(equilibrium_summary(m, solution));
    print(notes_summary(solution.notes));
  }
  if (!values.nodes.empty()) print(node_table(m, solution, values.nodes));
  for (std::size_t r = 0; r < wanted.references.size(); ++r)
    print(reference_line(solution, values.reference_nodes[r], wanted.references[r]));
}

void write_step(const model& m, const static_solution& solution, const shell_results& results, output_file& vtu,
                output_file* csv) {
  write_vtu(vtu.stream(), m, solution, results);
  vtu.commit();
  if (csv == nullptr) return;
  write_csv(csv->stream(), m, solution);
  csv->commit();
}

}  // namespace

void run(const options& wanted) {
  stopwatch watch;
  const model m = read_deck(wanted.deck);
  const wanted_values values = find_wanted(m, wanted);
  check_places(wanted);
  files vtu = open_outputs(output_path(wanted), m.steps.size());
  files csv = open_outputs(wanted.csv, m.steps.size());
  watch.book("read");
  if (!wanted.quiet)
    print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title) + notes_summary(m.notes));

  library_model library(m);
  watch.book("fill");
  const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind);
  for (std::size_t s = 0; s < m.steps.size(); ++s) {
    const static_solution solution = solve_static(m, m.steps[s], library, *solver, watch, somebody_watches());
    const shell_results results = recover_results(m, library, solution);
    watch.book("results");
    write_step(m, solution, results, *vtu[s], csv.empty() ? nullptr : csv[s].get());
    watch.book("write");
    print_step(m, m.steps[s], solution, wanted, values, solver->name());
    if (!wanted.quiet) print(fmt::format("  results in {}\n", vtu[s]->path()));
  }
  if (!wanted.quiet) print("time\n" + time_summary(watch));
}

}  // namespace solver
