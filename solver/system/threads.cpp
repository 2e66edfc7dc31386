// threads.cpp: OpenBLAS is asked for by name: it comes with MUMPS, which another BLAS may serve.
#include "system/threads.h"

#include <dlfcn.h>

namespace solver {

bool set_threads(int count) {
  using setter = void (*)(int);
  const auto set = reinterpret_cast<setter>(dlsym(RTLD_DEFAULT, "openblas_set_num_threads"));
  if (set == nullptr) return false;
  set(count);
  return true;
}

}  // namespace solver
