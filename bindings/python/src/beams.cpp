// beams.cpp: the calls of beams.
#include "lanes.h"

namespace {

using Beams = Records<finites_beam>;
constexpr int64_t order = 12;
constexpr int64_t entries = order * order;

Answer stiffness(const Beams& beams, Reals out, int threads) {
  return in_lanes(beams, out, entries, threads, finites_beams_stiffness, finites_beam_stiffness);
}

Answer mass(const Beams& beams, int lumped, Reals out, int threads) {
  const auto batch = [=](const finites_beams* all, int64_t begin, int64_t end, double* matrices, int64_t stride,
                         int64_t* failed) {
    return finites_beams_mass(all, begin, end, lumped, matrices, stride, failed);
  };
  const auto call = [=](const finites_beam* beam, double* matrix) { return finites_beam_mass(beam, lumped, matrix); };
  return in_lanes(beams, out, entries, threads, batch, call);
}

Answer geometric(const Beams& beams, const Reals& u, Reals out, int threads) {
  return one_by_one(beams, out, entries, threads, finites_beam_geometric, input(u, length(beams), order, "u"));
}

Answer geometric_of_force(const Beams& beams, const Reals& axial, Reals out, int threads) {
  const auto call = [](const finites_beam* beam, const double* force, double* matrix) {
    return finites_beam_geometric_of_force(beam, *force, matrix);
  };
  return in_lanes(beams, out, entries, threads, finites_beams_geometric_of_force, call,
                  input(axial, length(beams), 1, "axial"));
}

Answer forces(const Beams& beams, const Reals& u, Reals out, int threads) {
  return in_lanes(beams, out, order, threads, finites_beams_forces, finites_beam_forces,
                  input(u, length(beams), order, "u"));
}

// A load from nine reals (line, line_local, temperature and its gradients) and the points that all beams share.
finites_beam_load load_of(const double* distributed, const Records<finites_beam_point_load>& points) {
  finites_beam_load load{};
  std::memcpy(load.line, distributed, sizeof load.line);
  std::memcpy(load.line_local, distributed + 3, sizeof load.line_local);
  load.temperature = distributed[6];
  load.gradient_y = distributed[7];
  load.gradient_z = distributed[8];
  load.point_count = static_cast<int32_t>(points.size());
  load.points = points.data();
  return load;
}

Answer loads(const Beams& beams, const Reals& distributed, const Records<finites_beam_point_load>& points, Reals out,
             int threads) {
  const auto call = [&](const finites_beam* beam, const double* values, double* vector) {
    const finites_beam_load load = load_of(values, points);
    return finites_beam_loads(beam, &load, vector);
  };
  return one_by_one(beams, out, order, threads, call, input(distributed, length(beams), 9, "distributed"));
}

Answer sections(const Beams& beams, const Reals& u, const Reals& distributed, const Reals& x,
                const Records<finites_beam_point_load>& points, int64_t places, Records<finites_beam_section> out,
                int threads) {
  require(places > 0 && places <= INT32_MAX, "x");
  const auto call = [&](const finites_beam* beam, const double* at, const double* values, const double* x_of_beam,
                        finites_beam_section* results) {
    const finites_beam_load load = load_of(values, points);
    return finites_beam_sections(beam, at, &load, static_cast<int32_t>(places), x_of_beam, results);
  };
  return one_by_one(beams, out, places, threads, call, input(u, length(beams), order, "u"),
                    input(distributed, length(beams), 9, "distributed"), input(x, length(beams), places, "x"));
}

Answer measure(const Beams& beams, Records<finites_member_measures> out, int threads) {
  return one_by_one(beams, out, 1, threads, finites_beam_measure);
}

}  // namespace

void bind_beams(py::module_& module) {
  PYBIND11_NUMPY_DTYPE(finites_beam, xyz, up, offset, E, G, E2, density, expansion, area, Iz, Iy, J, shear_area_y,
                       shear_area_z, fixity_z, fixity_y, release_axial, release_y, release_z, release_torsion);
  PYBIND11_NUMPY_DTYPE(finites_beam_point_load, x, force, moment);
  PYBIND11_NUMPY_DTYPE(finites_beam_section, x, force, moment, displacement, rotation);
  PYBIND11_NUMPY_DTYPE(finites_member_measures, length, volume, mass, center, axes);

  module.def("beam_init", fresh<finites_beam, finites_beam_init>);
  module.def("beam_point_load_dtype", [] { return py::dtype::of<finites_beam_point_load>(); });
  module.def("beam_section_dtype", [] { return py::dtype::of<finites_beam_section>(); });
  module.def("member_measures_dtype", [] { return py::dtype::of<finites_member_measures>(); });
  const auto beams = py::arg("beams").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("beam_stiffness", stiffness, beams, out, threads);
  module.def("beam_mass", mass, beams, py::arg("lumped"), out, threads);
  module.def("beam_geometric", geometric, beams, py::arg("u"), out, threads);
  module.def("beam_geometric_of_force", geometric_of_force, beams, py::arg("axial"), out, threads);
  module.def("beam_forces", forces, beams, py::arg("u"), out, threads);
  module.def("beam_loads", loads, beams, py::arg("distributed"), py::arg("points"), out, threads);
  module.def("beam_sections", sections, beams, py::arg("u"), py::arg("distributed"), py::arg("x"), py::arg("points"),
             py::arg("places"), out, threads);
  module.def("beam_measure", measure, beams, out, threads);
}
