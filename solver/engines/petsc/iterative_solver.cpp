// iterative_solver.cpp: conjugate gradients (Hestenes and Stiefel, 1952) with smoothed aggregation (Vanek, Mandel and
// Brezina, 1996) from the rigid motions of the structure, by PETSc's KSP and GAMG. PETSC_OPTIONS changes them.
#include "engines/petsc/iterative_solver.h"

#include <optional>

#include "engines/petsc/distributed.h"
#include "engines/petsc/processes.h"
#include "model/long_vectors.h"
#include "system/progress.h"

namespace solver {

namespace {

constexpr double RESIDUAL = 1e-11;  // of the residual; one correction brings it down to rounding
constexpr PetscInt MOST_STEPS = 5000;

class iterative_solver : public linear_solver {
 public:
  std::string name() const override { return petsc_name() + " with CG and GAMG" + processes_text(); }

  bool asks_for_rigid_motions() const override { return true; }
  void take_rigid_motions(const std::vector<std::vector<double>>& motions) override { motions_ = motions; }

  bool factorise(const symmetric_matrix& K) override {
    if (has_factors_of(K)) return true;
    forget_factors();
    const ticking_clock clock("multigrid");
    ksp_.clear();
    make_full(K, matrix_);
    order_ = K.order();
    vectors_.emplace(order_);
    set_near_null_space();
    require(KSPCreate(PETSC_COMM_WORLD, ksp_.place()), "the iteration");
    require(KSPSetOperators(ksp_.get(), matrix_.get(), matrix_.get()), "the iteration");
    require(KSPSetType(ksp_.get(), KSPCG), "the iteration");
    require(KSPSetTolerances(ksp_.get(), RESIDUAL, PETSC_DEFAULT, PETSC_DEFAULT, MOST_STEPS), "the iteration");
    PC pc = nullptr;
    require(KSPGetPC(ksp_.get(), &pc), "the iteration");
    require(PCSetType(pc, PCGAMG), "the iteration");
    require(KSPSetFromOptions(ksp_.get()), "PETSC_OPTIONS");
    require(KSPSetUp(ksp_.get()), "the multigrid");
    keep_factors_of(K);
    return true;
  }

  [[noreturn]] std::size_t negative_pivots() const override {
    throw std::runtime_error(
        "--solver cg solves linear static steps alone: what this step asks for takes a factorisation, which "
        "--solver mumps makes");
  }

  double megabytes_of_factors(const symmetric_matrix& K) override {
    // Both triangles with their columns, and what the coarser levels add: by their usual complexity.
    constexpr double TRIANGLES = 2, LEVELS = 1.5, MEGABYTE = 1e6;
    const double entries = static_cast<double>(K.value.size());
    return TRIANGLES * LEVELS * entries * (sizeof(double) + sizeof(PetscInt)) / MEGABYTE;
  }

  void solve(std::vector<double>& x) override {
    for (std::size_t at = 0; at < x.size(); at += order_) {
      vectors_->put(x.data() + at, vectors_->right());
      require(KSPSolve(ksp_.get(), vectors_->right(), vectors_->left()), "the iteration");
      KSPConvergedReason reason = KSP_CONVERGED_ITERATING;
      PetscInt steps = 0;
      require(KSPGetConvergedReason(ksp_.get(), &reason), "the iteration");
      require(KSPGetIterationNumber(ksp_.get(), &steps), "the iteration");
      if (reason < 0) throw std::runtime_error(failure(reason, steps));
      vectors_->take(vectors_->left(), x.data() + at);
    }
  }

 private:
  static std::string failure(KSPConvergedReason reason, PetscInt steps) {
    const bool indefinite = reason == KSP_DIVERGED_INDEFINITE_MAT || reason == KSP_DIVERGED_INDEFINITE_PC;
    return "the equations were not solved by conjugate gradients in " + std::to_string(steps) + " steps (" +
           (indefinite ? "the structure may be able to move freely"
                       : "thin shells and slender frames are hard for them") +
           "): --solver mumps solves them, or says what moves";
  }

  void set_near_null_space() {
    if (motions_.empty() || motions_.front().size() != order_) return;
    std::vector<Vec> basis;
    for (const std::vector<double>& motion : motions_) {
      basis.push_back(nullptr);
      require(VecDuplicate(vectors_->right(), &basis.back()), "a vector");
      vectors_->put(motion.data(), basis.back());
    }
    orthonormalise(basis);
    MatNullSpace space = nullptr;
    require(
        MatNullSpaceCreate(PETSC_COMM_WORLD, PETSC_FALSE, static_cast<PetscInt>(basis.size()), basis.data(), &space),
        "the rigid motions");
    require(MatSetNearNullSpace(matrix_.get(), space), "the rigid motions");
    MatNullSpaceDestroy(&space);
    for (Vec& vector : basis) VecDestroy(&vector);
  }

  // Gram and Schmidt; a motion that the others have between them, or that no equation has, goes.
  static void orthonormalise(std::vector<Vec>& basis) {
    constexpr double NOTHING = 1e-10;
    std::vector<Vec> kept;
    for (Vec vector : basis) {
      double before = 0, after = 0;
      require(VecNorm(vector, NORM_2, &before), "a vector");
      for (int twice = 0; twice < 2; ++twice) {
        for (Vec other : kept) {
          double along = 0;
          require(VecDot(vector, other, &along), "a vector");
          require(VecAXPY(vector, -along, other), "a vector");
        }
      }
      require(VecNorm(vector, NORM_2, &after), "a vector");
      if (!(after > NOTHING * before)) {
        VecDestroy(&vector);
        continue;
      }
      require(VecScale(vector, 1 / after), "a vector");
      kept.push_back(vector);
    }
    basis = kept;
  }

  owned_matrix matrix_;
  owned_ksp ksp_;
  std::optional<shared_vectors> vectors_;
  std::vector<std::vector<double>> motions_;
  std::size_t order_ = 0;
};

}  // namespace

std::unique_ptr<linear_solver> make_iterative_solver() { return std::make_unique<iterative_solver>(); }

}  // namespace solver
