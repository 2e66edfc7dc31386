// solids.cpp: the calls of tetrahedra, wedges and bricks.
#include "lanes.h"

namespace {

using Solids = Records<finites_solid>;

int64_t order(const Solids& solids) { return freedoms(solids, 3); }
int64_t entries(const Solids& solids) { return order(solids) * order(solids); }

// Integration points of a kind: 8 of a brick, 6 of a wedge, 1 of a tetrahedron.
int64_t points(const Solids& solids) { return solids.data()->nodes == 4 ? 1 : solids.data()->nodes; }

Answer stiffness(const Solids& solids, Reals out, int threads) {
  return in_lanes(solids, out, entries(solids), threads, finites_solids_stiffness, finites_solid_stiffness);
}

Answer mass(const Solids& solids, Reals out, int threads) {
  return in_lanes(solids, out, entries(solids), threads, finites_solids_mass, finites_solid_mass);
}

Answer geometric(const Solids& solids, const Reals& u, Reals out, int threads) {
  return in_lanes(solids, out, entries(solids), threads, finites_solids_geometric, finites_solid_geometric,
                  input(u, length(solids), order(solids), "u"));
}

Answer geometric_of_stresses(const Solids& solids, const Reals& stresses, Reals out, int threads) {
  const auto call = [](const finites_solid* solid, const double* given, double* matrix) {
    return finites_solid_geometric_of_stresses(solid, reinterpret_cast<const double(*)[6]>(given), matrix);
  };
  return one_by_one(solids, out, entries(solids), threads, call,
                    input(stresses, length(solids), 6 * points(solids), "stresses"));
}

Answer forces(const Solids& solids, const Reals& u, Reals out, int threads) {
  return in_lanes(solids, out, order(solids), threads, finites_solids_forces, finites_solid_forces,
                  input(u, length(solids), order(solids), "u"));
}

Answer body_load(const Solids& solids, const Reals& load, Reals out, int threads) {
  return one_by_one(solids, out, order(solids), threads, finites_solid_body_load,
                    input(load, length(solids), 3, "load"));
}

Answer temperature_load(const Solids& solids, const Reals& change, Reals out, int threads) {
  const auto call = [](const finites_solid* solid, const double* t, double* vector) {
    return finites_solid_temperature_load(solid, *t, vector);
  };
  return one_by_one(solids, out, order(solids), threads, call, input(change, length(solids), 1, "change"));
}

Answer face_load(const Solids& solids, const Reals& traction, const Reals& pressure, int face, Reals out, int threads) {
  const auto call = [=](const finites_solid* solid, const double* t, const double* p, double* vector) {
    return finites_solid_face_load(solid, face, t, *p, vector);
  };
  return one_by_one(solids, out, order(solids), threads, call, input(traction, length(solids), 3, "traction"),
                    input(pressure, length(solids), 1, "pressure"));
}

Answer measure(const Solids& solids, Records<finites_solid_measures> out, int threads) {
  return one_by_one(solids, out, 1, threads, finites_solid_measure);
}

// A batch takes one temperature for all.
Answer result(const Solids& solids, const Reals& u, const Reals& temperature, Records<finites_solid_results> out,
              int threads) {
  const Input at = input(u, length(solids), order(solids), "u");
  const Input t = input(temperature, length(solids), 1, "temperature");
  const auto call = [](const finites_solid* solid, const double* displacements, const double* change,
                       finites_solid_results* results) {
    return finites_solid_result(solid, displacements, *change, results);
  };
  if (t.stride != 0) return one_by_one(solids, out, 1, threads, call, at, t);
  const auto batch = [](const finites_solids* all, int64_t begin, int64_t end, finites_reals displacements,
                        finites_reals change, finites_solid_results* results, int64_t, int64_t* failed) {
    return finites_solids_result(all, begin, end, displacements, *change.first, results, failed);
  };
  return in_lanes(solids, out, 1, threads, batch, call, at, t);
}

}  // namespace

void bind_solids(py::module_& module) {
  PYBIND11_NUMPY_DTYPE(finites_solid, nodes, unused, xyz, E, nu, density, expansion, stiffness_factor);
  PYBIND11_NUMPY_DTYPE(finites_solid_measures, volume, mass, center, axes);
  PYBIND11_NUMPY_DTYPE(finites_solid_point, xyz, strain, stress, principal, von_mises);
  PYBIND11_NUMPY_DTYPE(finites_solid_results, nodes, points, node, point);

  module.def("solid_init", fresh<finites_solid, finites_solid_init>);
  module.def("solid_measures_dtype", [] { return py::dtype::of<finites_solid_measures>(); });
  module.def("solid_results_dtype", [] { return py::dtype::of<finites_solid_results>(); });
  const auto solids = py::arg("solids").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("solid_stiffness", stiffness, solids, out, threads);
  module.def("solid_mass", mass, solids, out, threads);
  module.def("solid_geometric", geometric, solids, py::arg("u"), out, threads);
  module.def("solid_geometric_of_stresses", geometric_of_stresses, solids, py::arg("stresses"), out, threads);
  module.def("solid_forces", forces, solids, py::arg("u"), out, threads);
  module.def("solid_body_load", body_load, solids, py::arg("load"), out, threads);
  module.def("solid_temperature_load", temperature_load, solids, py::arg("change"), out, threads);
  module.def("solid_face_load", face_load, solids, py::arg("traction"), py::arg("pressure"), py::arg("face"), out,
             threads);
  module.def("solid_measure", measure, solids, out, threads);
  module.def("solid_result", result, solids, py::arg("u"), py::arg("temperature"), out, threads);
}
