// handles.h: objects of PETSc and SLEPc that are given back, and calls of theirs whose faults become exceptions.
#ifndef FINITES_SOLVER_PETSC_HANDLES_H
#define FINITES_SOLVER_PETSC_HANDLES_H

#include <petscksp.h>

#include <stdexcept>
#include <string>

namespace solver {

// Throws std::runtime_error with what PETSc says to a code that is not 0.
inline void require(PetscErrorCode code, const char* what) {
  if (code == 0) return;
  const char* text = nullptr;
  PetscErrorMessage(code, &text, nullptr);
  throw std::runtime_error(std::string("PETSc: ") + what + " failed: " + (text == nullptr ? "unknown fault" : text) +
                           " (" + std::to_string(code) + ")");
}

// HANDLE is a pointer of PETSc's own, which DESTROY takes by address.
template <class HANDLE, PetscErrorCode (*DESTROY)(HANDLE*)>
class owned {
 public:
  owned() = default;
  owned(const owned&) = delete;
  owned& operator=(const owned&) = delete;
  ~owned() { clear(); }

  HANDLE get() const { return handle_; }
  bool empty() const { return handle_ == nullptr; }
  void clear() {
    if (handle_ != nullptr) DESTROY(&handle_);
    handle_ = nullptr;
  }
  // For a routine that makes the object: the place where it goes.
  HANDLE* place() {
    clear();
    return &handle_;
  }

 private:
  HANDLE handle_ = nullptr;
};

using owned_matrix = owned<Mat, MatDestroy>;
using owned_vector = owned<Vec, VecDestroy>;
using owned_scatter = owned<VecScatter, VecScatterDestroy>;
using owned_ksp = owned<KSP, KSPDestroy>;

}  // namespace solver

#endif
