// plates.cpp: the calls of plates and shells.
#include "lanes.h"

namespace {

using Plates = Records<finites_plate>;

int64_t order(const Plates& plates) { return freedoms(plates, 6); }
int64_t entries(const Plates& plates) { return order(plates) * order(plates); }

Answer stiffness(const Plates& plates, Reals out, int threads) {
  return in_lanes(plates, out, entries(plates), threads, finites_plates_stiffness, finites_plate_stiffness);
}

Answer mass(const Plates& plates, Reals out, int threads) {
  return in_lanes(plates, out, entries(plates), threads, finites_plates_mass, finites_plate_mass);
}

Answer geometric(const Plates& plates, const Reals& u, Reals out, int threads) {
  return in_lanes(plates, out, entries(plates), threads, finites_plates_geometric, finites_plate_geometric,
                  input(u, length(plates), order(plates), "u"));
}

Answer geometric_of_forces(const Plates& plates, const Reals& forces, Reals out, int threads) {
  const auto call = [](const finites_plate* plate, const double* given, double* matrix) {
    return finites_plate_geometric_of_forces(plate, reinterpret_cast<const double(*)[6]>(given), matrix);
  };
  return one_by_one(plates, out, entries(plates), threads, call, input(forces, length(plates), 24, "forces"));
}

Answer forces(const Plates& plates, const Reals& u, Reals out, int threads) {
  return in_lanes(plates, out, order(plates), threads, finites_plates_forces, finites_plate_forces,
                  input(u, length(plates), order(plates), "u"));
}

Answer surface_load(const Plates& plates, const py::object& global, const py::object& local, Reals out, int threads) {
  return in_lanes(plates, out, order(plates), threads, finites_plates_surface_load, finites_plate_surface_load,
                  optional_input(global, length(plates), 3, "global_load"),
                  optional_input(local, length(plates), 3, "local_load"));
}

Answer body_load(const Plates& plates, const Reals& load, Reals out, int threads) {
  return in_lanes(plates, out, order(plates), threads, finites_plates_body_load, finites_plate_body_load,
                  input(load, length(plates), 3, "load"));
}

Answer temperature_load(const Plates& plates, const Reals& temperature, Reals out, int threads) {
  const auto call = [](const finites_plate* plate, const double* t, double* vector) {
    return finites_plate_temperature_load(plate, t[0], t[1], vector);
  };
  return in_lanes(plates, out, order(plates), threads, finites_plates_temperature_load, call,
                  input(temperature, length(plates), 2, "temperature"));
}

Answer point_load(const Plates& plates, const Reals& point, const py::object& global, const py::object& local,
                  Reals out, int threads) {
  return one_by_one(plates, out, order(plates), threads, finites_plate_point_load,
                    input(point, length(plates), 3, "point"), optional_input(global, length(plates), 3, "global_force"),
                    optional_input(local, length(plates), 3, "local_force"));
}

Answer measure(const Plates& plates, Records<finites_plate_measures> out, int threads) {
  return one_by_one(plates, out, 1, threads, finites_plate_measure);
}

Answer locate(const Plates& plates, const Reals& point, Records<finites_location> out, int threads) {
  return one_by_one(plates, out, 1, threads, finites_plate_locate, input(point, length(plates), 3, "point"));
}

Answer result(const Plates& plates, const Reals& u, const py::object& temperature, Records<finites_plate_results> out,
              int threads) {
  const auto batch = [](const finites_plates* all, int64_t begin, int64_t end, finites_reals at, finites_reals t,
                        finites_plate_results* results, int64_t,
                        int64_t* failed) { return finites_plates_result(all, begin, end, at, t, results, failed); };
  return in_lanes(plates, out, 1, threads, batch, finites_plate_result, input(u, length(plates), order(plates), "u"),
                  optional_input(temperature, length(plates), 2, "temperature"));
}

}  // namespace

void bind_plates(py::module_& module) {
  PYBIND11_NUMPY_DTYPE(finites_plate, nodes, theory, orthotropic, unused, xyz, offset, thickness, E, nu, density,
                       expansion, E2, nu21, G12, G13, G23, expansion2, angle, twist_factor, inplane_shear_factor,
                       membrane_factor, bending_factor, shear_factor, mass_factor);
  PYBIND11_NUMPY_DTYPE(finites_plate_measures, area, volume, mass, center, axes);
  PYBIND11_NUMPY_DTYPE(finites_location, inside, above, distance);
  PYBIND11_NUMPY_DTYPE(finites_surface, strain, stress, angle, s1, s2, max_shear, von_mises, plastic_strain);
  PYBIND11_NUMPY_DTYPE(finites_plate_point, xyz, top, middle, bottom, force, moment, shear_strain, shear_force,
                       shear_stress, plastic_shear_strain);
  PYBIND11_NUMPY_DTYPE(finites_plate_results, nodes, points, node, point);

  module.def("plate_init", fresh<finites_plate, finites_plate_init>);
  module.def("plate_measures_dtype", [] { return py::dtype::of<finites_plate_measures>(); });
  module.def("location_dtype", [] { return py::dtype::of<finites_location>(); });
  module.def("plate_results_dtype", [] { return py::dtype::of<finites_plate_results>(); });
  const auto plates = py::arg("plates").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("plate_stiffness", stiffness, plates, out, threads);
  module.def("plate_mass", mass, plates, out, threads);
  module.def("plate_geometric", geometric, plates, py::arg("u"), out, threads);
  module.def("plate_geometric_of_forces", geometric_of_forces, plates, py::arg("forces"), out, threads);
  module.def("plate_forces", forces, plates, py::arg("u"), out, threads);
  module.def("plate_surface_load", surface_load, plates, py::arg("global_load"), py::arg("local_load"), out, threads);
  module.def("plate_body_load", body_load, plates, py::arg("load"), out, threads);
  module.def("plate_temperature_load", temperature_load, plates, py::arg("temperature"), out, threads);
  module.def("plate_point_load", point_load, plates, py::arg("point"), py::arg("global_force"), py::arg("local_force"),
             out, threads);
  module.def("plate_measure", measure, plates, out, threads);
  module.def("plate_locate", locate, plates, py::arg("point"), out, threads);
  module.def("plate_result", result, plates, py::arg("u"), py::arg("temperature"), out, threads);
}
