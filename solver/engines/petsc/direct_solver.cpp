// direct_solver.cpp: MUMPS over all ranks by PETSc, in its form for symmetric positive definite matrices, and the
// Krylov-Schur iteration of SLEPc (Stewart, 2001; Hernandez, Roman and Vidal, 2005) with its factors.
#include "engines/petsc/direct_solver.h"

#include <slepceps.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "engines/petsc/distributed.h"
#include "engines/petsc/processes.h"
#include "model/long_vectors.h"
#include "system/eigen_pairs.h"
#include "system/mechanism.h"
#include "system/memory.h"
#include "system/progress.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr PetscInt SCALING = 8, NO_SCALAPACK = 13, WORKSPACE = 14;           // ICNTL
constexpr PetscInt ERROR = 1, NEGATIVE_PIVOTS = 12, MEGABYTES_LARGEST = 16;  // INFOG
constexpr PetscInt SINGULAR = -10, WORKSPACE_SHORT = -9, WORKSPACE_SHORT_TOO = -8;
constexpr PetscInt ROOM = 30;  // above the estimate of the workspace, per cent; MEGABYTES_LARGEST holds it
constexpr double TOLERANCE = 1e-11;
constexpr PetscInt ITERATIONS = 1000;

using owned_eps = owned<EPS, EPSDestroy>;

class direct_solver : public linear_solver {
 public:
  explicit direct_solver(double megabytes) : allowed_(megabytes) {}

  std::string name() const override { return petsc_name() + " with MUMPS" + processes_text(); }

  bool factorise(const symmetric_matrix& K) override {
    if (has_factors_of(K)) return true;
    forget_factors();
    if (same_pattern(K)) {
      fill_symmetric(*rows_, K, matrix_.get());
    } else {
      analyse(K, ROOM);
      require_room();
    }
    const ticking_clock clock("factorisation");
    PetscInt fault = numeric();
    for (PetscInt room = 2 * ROOM; is_short(fault) && room <= 64 * ROOM; room *= 2) {
      analyse(K, room);
      require_room();
      fault = numeric();
    }
    negative_pivots_ = subscript(told(NEGATIVE_PIVOTS));
    if (fault == SINGULAR) return false;
    check(fault, "factorisation");
    keep_factors_of(K);
    return true;
  }

  std::size_t negative_pivots() const override { return negative_pivots_; }

  double megabytes_of_factors(const symmetric_matrix& K) override {
    if (!same_pattern(K)) analyse(K, ROOM);
    return megabytes();
  }

  void solve(std::vector<double>& x) override {
    const std::size_t order = analysed_.order();
    for (std::size_t at = 0; at < x.size(); at += order) {
      vectors_->put(x.data() + at, vectors_->right());
      require(MatSolve(factors_.get(), vectors_->right(), vectors_->left()), "the solution");
      vectors_->take(vectors_->left(), x.data() + at);
    }
  }

  bool find_pairs(const symmetric_matrix& A, const symmetric_matrix& B, std::size_t count,
                  eigen_pairs& found) override {
    const ticking_clock clock("modes");
    owned_matrix a, b;
    const upper_rows rows(A);
    make_symmetric(rows, A, a);
    make_symmetric(rows, B, b);
    owned_eps eps;
    prepare(a.get(), b.get(), count, eps);
    require(EPSSolve(eps.get()), "the iteration for the eigenvalues");
    PetscInt converged = 0;
    require(EPSGetConverged(eps.get(), &converged), "the iteration for the eigenvalues");
    const auto wanted = std::min(signed_index(count), signed_index(A.order()) - 1);
    if (converged < wanted) throw std::runtime_error("the iteration for the eigenvalues did not converge");
    found = {};
    for (PetscInt i = 0; i < converged && found.value.size() < count; ++i) {
      double value = 0;
      require(EPSGetEigenpair(eps.get(), i, &value, nullptr, vectors_->left(), nullptr), "an eigenvalue");
      found.value.push_back(value);
      found.vector.emplace_back(A.order());
      vectors_->take(vectors_->left(), found.vector.back().data());
    }
    return true;
  }

 private:
  static bool is_short(PetscInt fault) { return fault == WORKSPACE_SHORT || fault == WORKSPACE_SHORT_TOO; }

  // PETSc does not factorise again with what a fault has left behind.
  bool same_pattern(const symmetric_matrix& K) const {
    return !factors_.empty() && told(ERROR) >= 0 &&
           true_for_all(analysed_.column_start == K.column_start && analysed_.row == K.row);
  }

  void analyse(const symmetric_matrix& K, PetscInt room) {
    const ticking_clock clock("order of elimination");
    factors_.clear();
    rows_.emplace(K);
    make_symmetric(*rows_, K, matrix_);
    require(MatSetOption(matrix_.get(), MAT_SPD, PETSC_TRUE), "a matrix");
    require(MatSetErrorIfFailure(matrix_.get(), PETSC_FALSE), "a matrix");
    require(MatGetFactor(matrix_.get(), MATSOLVERMUMPS, MAT_FACTOR_CHOLESKY, factors_.place()), "MUMPS");
    require(MatSetErrorIfFailure(factors_.get(), PETSC_FALSE), "MUMPS");
    control(SCALING, 0);       // the matrix comes with a unit diagonal
    control(NO_SCALAPACK, 1);  // its last block would have to be positive definite; pivots are counted to its end
    control(WORKSPACE, room);
    MatFactorInfo info;
    require(MatFactorInfoInitialize(&info), "MUMPS");
    require(MatCholeskyFactorSymbolic(factors_.get(), matrix_.get(), nullptr, &info), "the analysis of the equations");
    check(told(ERROR), "analysis");
    vectors_.emplace(K.order());
    analysed_.column_start = K.column_start;
    analysed_.row = K.row;
  }

  // What MUMPS says of it; 0 or above: all is well.
  PetscInt numeric() {
    MatFactorInfo info;
    require(MatFactorInfoInitialize(&info), "MUMPS");
    require(MatFactorClearError(factors_.get()), "MUMPS");
    require(MatCholeskyFactorNumeric(factors_.get(), matrix_.get(), &info), "the factorisation");
    return told(ERROR);
  }

  void control(PetscInt number, PetscInt value) { require(MatMumpsSetIcntl(factors_.get(), number, value), "MUMPS"); }

  PetscInt told(PetscInt number) const {
    PetscInt value = 0;
    require(MatMumpsGetInfog(factors_.get(), number, &value), "MUMPS");
    return value;
  }

  // Of all ranks on this machine together.
  double megabytes() const { return static_cast<double>(told(MEGABYTES_LARGEST)) * ranks_on_this_machine(); }

  // All refuse what one has no room for.
  void require_room() const {
    const auto own = static_cast<double>(told(MEGABYTES_LARGEST));
    const int here = ranks_on_this_machine();
    fail_together([&] { require_memory(own, allowed_, here); });
  }

  static void check(PetscInt fault, const char* phase) {
    if (fault >= 0) return;
    if (fault == -5 || fault == -7 || fault == -13 || fault == -19) {
      throw std::runtime_error(std::string("not enough memory for the ") + phase +
                               " of the equations; make the model smaller or the memory larger");
    }
    throw std::runtime_error(std::string("MUMPS: the ") + phase + " failed with error " + std::to_string(fault));
  }

  // A x = mu B x for the largest mu, B^-1 by the factors at hand.
  void prepare(Mat a, Mat b, std::size_t count, owned_eps& eps) {
    const char* const what = "the iteration for the eigenvalues";
    const auto order = static_cast<PetscInt>(analysed_.order());
    // A few more than wanted: so the last ones of a group of equal values are found together.
    const PetscInt wanted = std::min(static_cast<PetscInt>(count) + 4, order - 1);
    const PetscInt space = std::min(order, std::max<PetscInt>(3 * wanted, 24));
    require(EPSCreate(PETSC_COMM_WORLD, eps.place()), what);
    require(EPSSetOperators(eps.get(), a, b), what);
    require(EPSSetProblemType(eps.get(), EPS_GHEP), what);
    require(EPSSetType(eps.get(), EPSKRYLOVSCHUR), what);
    require(EPSSetWhichEigenpairs(eps.get(), EPS_LARGEST_REAL), what);
    require(EPSSetDimensions(eps.get(), wanted, space, PETSC_DEFAULT), what);
    require(EPSSetTolerances(eps.get(), TOLERANCE, ITERATIONS), what);
    ST transform = nullptr;
    KSP ksp = nullptr;
    PC pc = nullptr;
    require(EPSGetST(eps.get(), &transform), what);
    require(STGetKSP(transform, &ksp), what);
    require(KSPSetType(ksp, KSPPREONLY), what);
    require(KSPGetPC(ksp, &pc), what);
    require(PCSetType(pc, PCSHELL), what);
    require(PCShellSetContext(pc, factors_.get()), what);
    require(PCShellSetApply(pc, apply_factors), what);
    // The same start whatever the number of ranks.
    vectors_->put(start_of_iteration(analysed_.order()).data(), vectors_->right());
    Vec start = vectors_->right();
    require(EPSSetInitialSpace(eps.get(), 1, &start), what);
  }

  static PetscErrorCode apply_factors(PC pc, Vec x, Vec y) {
    void* factors = nullptr;
    const PetscErrorCode code = PCShellGetContext(pc, &factors);
    return code != 0 ? code : MatSolve(static_cast<Mat>(factors), x, y);
  }

  double allowed_;
  owned_matrix matrix_, factors_;
  std::optional<upper_rows> rows_;
  std::optional<shared_vectors> vectors_;
  symmetric_matrix analysed_;  // its pattern alone
  std::size_t negative_pivots_ = 0;
};

}  // namespace

std::unique_ptr<linear_solver> make_direct_solver(double megabytes) {
  return std::make_unique<direct_solver>(megabytes);
}

}  // namespace solver
