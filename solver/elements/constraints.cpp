// constraints.cpp: sparse elimination of linear conditions, and the multipliers from the forces out of balance.
#include "elements/constraints.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "model/model_error.h"

namespace solver {

namespace {

// Of the sizes of its parts: what is left of a factor that vanishes, with coordinates of some ten digits.
constexpr double NOTHING = 1e-9;
// Of the largest factor: a first term below it would be a bad pivot.
constexpr double SMALL_PIVOT = 1e-6;
constexpr double EQUAL = 1e-9;  // factors that differ by no more count as equally large: the first one serves

// A sum and the size of its parts.
struct sized {
  double value = 0, size = 0;
  void add(double part) {
    value += part;
    size += std::fabs(part);
  }
  bool vanishes() const { return !(std::fabs(value) > NOTHING * size); }
};

// The condition or support that has given the largest part of the right-hand side; for a message.
struct source {
  double size = -1;
  std::string name;
};

class eliminator {
 public:
  eliminator(const model& m, const load_case& loads) : model_(m), loads_(loads) {
    result_.row_of.assign(loads.prescribed.size(), -1);
  }

  resolved_constraints run() {
    for (int i = 0; i < count_of(loads_.conditions); ++i) eliminate(i);
    substitute_back();
    tell_redundant();
    return std::move(result_);
  }

 private:
  void eliminate(int i);
  void add_terms(const linear_constraint& condition);
  void take_out_rows(elimination& how);
  std::size_t choose_pivot(const linear_constraint& condition) const;
  void close(const linear_constraint& condition, const sized& value);
  void take_source(double part, const std::string& name) {
    if (std::fabs(part) > source_.size) source_ = {std::fabs(part), name};
  }
  std::string boundary_of(std::size_t f) const {
    return "the *BOUNDARY of " + place_of(model_, loads_.prescribed_by[f].first, loads_.prescribed_by[f].second);
  }
  void substitute_back();
  void tell_redundant();

  const model& model_;
  const load_case& loads_;
  resolved_constraints result_;
  std::map<std::size_t, sized> free_;  // of the condition at hand
  std::map<int, sized> rows_;          // rows whose dependent degrees of freedom it has
  sized value_;
  source source_;
  int redundant_ = 0;
  std::string first_redundant_;
};

void eliminator::add_terms(const linear_constraint& condition) {
  free_.clear();
  rows_.clear();
  value_ = {};
  source_ = {};
  value_.add(condition.value);
  for (const constraint_term& term : condition.terms) {
    const std::size_t f = freedom(term.node, term.dof - 1);
    if (loads_.prescribed[f]) {
      value_.add(-term.factor * loads_.prescribed_value[f]);
      take_source(term.factor * loads_.prescribed_value[f], boundary_of(f));
    } else if (result_.row_of[f] >= 0) {
      rows_[result_.row_of[f]].add(term.factor);
    } else {
      free_[f].add(term.factor);
    }
  }
}

// The terms of a row depend on later rows alone: in ascending order each row is taken out once.
void eliminator::take_out_rows(elimination& how) {
  while (!rows_.empty()) {
    const auto [row, factor] = *rows_.begin();
    rows_.erase(rows_.begin());
    if (factor.vanishes()) continue;
    how.earlier.emplace_back(row, factor.value);
    const double constant = result_.dependents[subscript(row)].constant;
    value_.add(-factor.value * constant);
    const linear_constraint& from = loads_.conditions[subscript(result_.rows[subscript(row)].condition)];
    take_source(factor.value * constant, "the " + from.keyword + " of " + place_of(model_, from.file, from.line));
    for (const freedom_term& term : result_.rows[subscript(row)].others) {
      const int later = result_.row_of[term.freedom];
      (later >= 0 ? rows_[later] : free_[term.freedom]).add(-factor.value * term.factor);
    }
  }
}

std::size_t eliminator::choose_pivot(const linear_constraint& condition) const {
  std::size_t best = free_.begin()->first;
  double largest = 0;
  for (const auto& [f, factor] : free_) {
    if (!(std::fabs(factor.value) > largest * (1 + EQUAL))) continue;
    largest = std::fabs(factor.value);
    best = f;
  }
  const constraint_term& first = condition.terms.front();
  const auto preferred = free_.find(freedom(first.node, first.dof - 1));
  const bool serves = preferred != free_.end() && std::fabs(preferred->second.value) > SMALL_PIVOT * largest;
  return serves ? preferred->first : best;
}

// Nothing is left that could move.
void eliminator::close(const linear_constraint& condition, const sized& value) {
  if (value.vanishes()) {
    if (redundant_++ == 0) {
      first_redundant_ = condition.keyword + " of " + place_of(model_, condition.file, condition.line);
    }
    return;
  }
  const std::string other = source_.name.empty() ? "the other conditions" : source_.name;
  throw model_error(model_, condition, condition.keyword,
                    "the condition contradicts " + other +
                        ": together they hold all its degrees of freedom at other values; take one of them away");
}

void eliminator::eliminate(int i) {
  const linear_constraint& condition = loads_.conditions[subscript(i)];
  elimination how;
  how.condition = i;
  add_terms(condition);
  take_out_rows(how);
  for (auto at = free_.begin(); at != free_.end();) at = at->second.vanishes() ? free_.erase(at) : std::next(at);
  if (free_.empty()) return close(condition, value_);

  const std::size_t pivot = choose_pivot(condition);
  how.pivot = free_[pivot].value;
  for (const auto& [f, factor] : free_) {
    if (f != pivot) how.others.push_back({f, factor.value / how.pivot});
  }
  dependent_freedom d;
  d.freedom = pivot;
  d.constant = value_.vanishes() ? 0 : value_.value / how.pivot;
  result_.row_of[pivot] = count_of(result_.rows);
  result_.rows.push_back(std::move(how));
  result_.dependents.push_back(std::move(d));
}

// From the last row, which has independent degrees of freedom alone, to the first. Constants of rows stay in
// `dependents` while conditions are eliminated; here those of later rows join them.
void eliminator::substitute_back() {
  for (std::size_t r = result_.rows.size(); r-- > 0;) {
    dependent_freedom& d = result_.dependents[r];
    std::map<std::size_t, sized> terms;
    for (const freedom_term& term : result_.rows[r].others) {
      const int row = result_.row_of[term.freedom];
      if (row < 0) {
        terms[term.freedom].add(-term.factor);
        continue;
      }
      const dependent_freedom& later = result_.dependents[subscript(row)];
      d.constant -= term.factor * later.constant;
      for (const freedom_term& t : later.terms) terms[t.freedom].add(-term.factor * t.factor);
    }
    for (const auto& [f, factor] : terms) {
      if (!factor.vanishes()) d.terms.push_back({f, factor.value});
    }
  }
}

void eliminator::tell_redundant() {
  if (redundant_ == 0) return;
  result_.note = redundant_ == 1 ? "1 condition follows from the supports and the other conditions, the "
                                 : std::to_string(redundant_) +
                                       " conditions follow from the supports and the other conditions, the first the ";
  result_.note += first_redundant_;
}

// The multipliers of the rows: no row has a term at the dependent degree of freedom of an earlier one, so that they
// follow one after the other.
std::vector<double> row_multipliers(const resolved_constraints& constraints, const std::vector<double>& force) {
  std::vector<double> left(constraints.dependents.size());
  for (std::size_t r = 0; r < left.size(); ++r) left[r] = force[constraints.dependents[r].freedom];
  for (std::size_t r = 0; r < left.size(); ++r) {
    for (const freedom_term& term : constraints.rows[r].others) {
      const int row = constraints.row_of[term.freedom];
      if (row >= 0) left[subscript(row)] -= left[r] * term.factor;
    }
  }
  return left;
}

}  // namespace

resolved_constraints resolve_constraints(const model& m, const load_case& loads) {
  if (loads.conditions.empty()) return {};
  return eliminator(m, loads).run();
}

std::vector<double> condition_multipliers(const resolved_constraints& constraints, const load_case& loads,
                                          const std::vector<double>& out_of_balance) {
  std::vector<double> result(loads.conditions.size(), 0.0);
  if (constraints.empty()) return result;
  std::vector<double> multiplier = row_multipliers(constraints, out_of_balance);
  for (std::size_t r = multiplier.size(); r-- > 0;) {
    const elimination& how = constraints.rows[r];
    const double lambda = multiplier[r] / how.pivot;
    for (const auto& [row, factor] : how.earlier) multiplier[subscript(row)] -= lambda * factor;
    result[subscript(how.condition)] = lambda;
  }
  return result;
}

support_forces split_forces(const resolved_constraints& constraints, const load_case& loads,
                            const std::vector<double>& out_of_balance) {
  support_forces split;
  split.reaction.assign(out_of_balance.size(), 0.0);
  for (std::size_t f = 0; f < out_of_balance.size(); ++f) {
    if (loads.prescribed[f]) split.reaction[f] = out_of_balance[f];
  }
  if (constraints.empty()) return split;
  split.constraint.assign(out_of_balance.size(), 0.0);
  const std::vector<double> multiplier = condition_multipliers(constraints, loads, out_of_balance);
  for (std::size_t r = constraints.rows.size(); r-- > 0;) {
    const std::size_t index = subscript(constraints.rows[r].condition);
    const double lambda = multiplier[index];
    const linear_constraint& condition = loads.conditions[index];
    for (const constraint_term& term : condition.terms) {
      const std::size_t f = freedom(term.node, term.dof - 1);
      const double force = lambda * term.factor;
      (is_support(condition) ? split.reaction : split.constraint)[f] += force;
      if (loads.prescribed[f]) split.reaction[f] -= force;  // the support carries what the condition brings
    }
  }
  return split;
}

}  // namespace solver
