// module.cpp: the compiled module _finites of the Python package: the plain calls of elements.h over arrays.
//
// Its functions are for the package alone, which checks shapes and turns statuses into exceptions.
#include "run.h"

PYBIND11_MODULE(_finites, module) {
  module.doc() = "The plain calls of finites/elements.h over arrays; use the package finites.";
  module.def("version", finites_version);
  module.def(
      "text", [](int status) { return finites_text(static_cast<finites_status>(status)); }, py::arg("status"));
  module.def("lanes", finites_lanes);
  bind_plates(module);
  bind_beams(module);
  bind_members(module);
  bind_solids(module);
  bind_states(module);
}
