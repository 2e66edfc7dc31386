// mumps_solver.cpp: the sequential build of MUMPS in its form for symmetric positive definite matrices.
#include "engines/embedded/mumps_solver.h"

#include <dmumps_c.h>

#include <chrono>
#include <cmath>
#include <stdexcept>

#ifdef FINITES_SOLVER_HAS_METIS
#include "engines/embedded/elimination_order.h"
#endif
#include "system/memory.h"
#include "system/progress.h"

namespace solver {

namespace {

enum job : int { START = -1, END = -2, ANALYSE = 1, FACTORISE = 2, SOLVE = 3 };

constexpr int POSITIVE_DEFINITE = 1;
constexpr int COMM_WORLD = -987654;  // the value by which MUMPS knows its default communicator
constexpr int SINGULAR = -10;        // INFOG(1): a pivot vanished
constexpr int NEGATIVE_PIVOTS = 12;  // INFOG(12): their number, in a symmetric matrix
constexpr int WORKSPACE_SHORT = -9;  // INFOG(1): the estimate of the workspace was too small
constexpr int MEGABYTES = 16;        // INFOG(16): of a million bytes, what the factorisation will need
constexpr int ORDER_GIVEN = 1;       // ICNTL(7): the caller gives the order of elimination
constexpr int ROOM = 5;              // ICNTL(14): above the estimate of the workspace, per cent; MEGABYTES holds it
constexpr int OPERATIONS = 1;        // RINFOG(1): what the elimination will need

// INFOG(1): an allocation failed, of integers or of reals, during the analysis or later.
bool is_memory_fault(int error) { return error == -5 || error == -7 || error == -13 || error == -19; }

class mumps_solver : public linear_solver {
 public:
  explicit mumps_solver(double megabytes) : allowed_(megabytes) {}
  ~mumps_solver() override { end(); }
  mumps_solver(const mumps_solver&) = delete;
  mumps_solver& operator=(const mumps_solver&) = delete;

  std::string name() const override { return std::string("MUMPS ") + MUMPS_VERSION; }

  bool factorise(const symmetric_matrix& K) override {
    if (has_factors_of(K)) return true;
    forget_factors();
    if (!same_pattern(K)) {
      analyse(K);
      require_memory(id_.infog[MEGABYTES - 1], allowed_);
    }
    id_.a = const_cast<double*>(K.value.data());  // read only, though the interface does not say so
    const double operations = id_.rinfog[OPERATIONS - 1];
    const ticking_clock clock("factorisation, " + std::to_string(std::llround(operations / 1e9)) + "e9 operations",
                              progress_is_shown(), stderr, ticking_clock::period(1000), expected_seconds(operations));
    const auto start = std::chrono::steady_clock::now();
    call(FACTORISE);
    keep_rate(operations, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    for (int attempt = 0; id_.infog[0] == WORKSPACE_SHORT && attempt < 6; ++attempt) {
      require_memory(id_.infog[MEGABYTES - 1] * (1 + 2 * control(14) / 100.0) / (1 + ROOM / 100.0), allowed_);
      control(14) *= 2;
      call(FACTORISE);
    }
    negative_pivots_ = subscript(id_.infog[NEGATIVE_PIVOTS - 1]);
    if (id_.infog[0] == SINGULAR) return false;
    check("factorisation");
    keep_factors_of(K);
    return true;
  }

  std::size_t negative_pivots() const override { return negative_pivots_; }

  double megabytes_of_factors(const symmetric_matrix& K) override {
    if (!same_pattern(K)) analyse(K);
    return id_.infog[MEGABYTES - 1];
  }

  void solve(std::vector<double>& x) override {
    id_.rhs = x.data();
    id_.nrhs = static_cast<MUMPS_INT>(x.size() / subscript(id_.n));
    id_.lrhs = id_.n;
    call(SOLVE);
    check("solution");
  }

 private:
  // The analysis sees the pattern alone: iterations that change the values keep it.
  bool same_pattern(const symmetric_matrix& K) const {
    if (!analysed_ || subscript(id_.n) != K.order() || row_.size() != K.row.size()) return false;
    for (std::size_t j = 0; j < K.order(); ++j) {
      for (std::size_t p = K.begin_of(j); p < K.begin_of(j + 1); ++p) {
        if (row_[p] != K.row[p] + 1 || column_[p] != static_cast<MUMPS_INT>(j) + 1) return false;
      }
    }
    return true;
  }

  void analyse(const symmetric_matrix& K) {
    end();
    start();
    row_.assign(K.row.size(), 0);
    column_.assign(K.row.size(), 0);
    for (std::size_t j = 0; j < K.order(); ++j) {
      for (std::size_t p = K.begin_of(j); p < K.begin_of(j + 1); ++p) {
        row_[p] = K.row[p] + 1;
        column_[p] = static_cast<MUMPS_INT>(j) + 1;
      }
    }
    id_.n = static_cast<MUMPS_INT>(K.order());
    id_.nnz = static_cast<MUMPS_INT8>(K.row.size());
    id_.irn = row_.data();
    id_.jcn = column_.data();
    const ticking_clock clock("order of elimination");
    choose_order(K);
    call(ANALYSE);
    check("analysis");
    analysed_ = true;
  }

  // METIS where the build found it and the matrix is large; else what MUMPS chooses of its own.
  void choose_order([[maybe_unused]] const symmetric_matrix& K) {
#ifdef FINITES_SOLVER_HAS_METIS
    order_ = elimination_order(K);
    if (order_.empty()) return;
    for (MUMPS_INT& place : order_) ++place;  // from 1
    control(7) = ORDER_GIVEN;
    id_.perm_in = order_.data();
#endif
  }

  // By the rate of an earlier factorisation in this run; 0: there was none that took long enough to tell.
  double expected_seconds(double operations) const { return rate_ > 0 ? operations / rate_ : 0; }

  void keep_rate(double operations, double seconds) {
    constexpr double LONG_ENOUGH = 0.5;
    if (seconds > LONG_ENOUGH) rate_ = operations / seconds;
  }

  MUMPS_INT& control(int number) { return id_.icntl[number - 1]; }

  void call(job what) {
    id_.job = what;
    dmumps_c(&id_);
  }

  void check(const char* phase) const {
    if (id_.infog[0] >= 0) return;
    if (is_memory_fault(id_.infog[0])) {
      throw std::runtime_error(std::string("not enough memory for the ") + phase +
                               " of the equations; make the model smaller or the memory larger");
    }
    throw std::runtime_error(std::string("MUMPS: the ") + phase + " failed with error " + std::to_string(id_.infog[0]) +
                             ", " + std::to_string(id_.infog[1]));
  }

  void start() {
    id_ = DMUMPS_STRUC_C{};
    id_.par = 1;
    id_.sym = POSITIVE_DEFINITE;
    id_.comm_fortran = COMM_WORLD;
    call(START);
    check("start");
    started_ = true;
    for (int stream = 1; stream <= 3; ++stream) control(stream) = -1;  // no messages of its own
    control(4) = 0;
    control(8) = 0;  // no scaling: the matrix comes with a unit diagonal
    control(14) = ROOM;
  }

  void end() {
    if (started_) call(END);
    started_ = analysed_ = false;
  }

  DMUMPS_STRUC_C id_{};
  std::vector<MUMPS_INT> row_, column_, order_;  // of the pattern that was analysed, from 1
  std::size_t negative_pivots_ = 0;
  bool started_ = false, analysed_ = false;
  double allowed_;
  double rate_ = 0;  // operations per second
};

}  // namespace

std::unique_ptr<linear_solver> make_mumps_solver(double megabytes) { return std::make_unique<mumps_solver>(megabytes); }

}  // namespace solver
