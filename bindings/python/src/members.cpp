// members.cpp: the calls of trusses, cables, links and springs, and of yield surfaces.
#include "run.h"

namespace {

using Trusses = Records<finites_truss>;
using Cables = Records<finites_cable>;
using Links = Records<finites_link>;
using Springs = Records<finites_spring>;
using Surfaces = Records<finites_yield>;

Answer truss_stiffness(const Trusses& trusses, Reals out, int threads) {
  return one_by_one(trusses, out, 36, threads, finites_truss_stiffness);
}

Answer truss_mass(const Trusses& trusses, int lumped, Reals out, int threads) {
  const auto call = [=](const finites_truss* truss, double* matrix) {
    return finites_truss_mass(truss, lumped, matrix);
  };
  return one_by_one(trusses, out, 36, threads, call);
}

Answer truss_geometric(const Trusses& trusses, const Reals& u, Reals out, int threads) {
  return one_by_one(trusses, out, 36, threads, finites_truss_geometric, input(u, length(trusses), 6, "u"));
}

Answer truss_geometric_of_force(const Trusses& trusses, const Reals& axial, Reals out, int threads) {
  const auto call = [](const finites_truss* truss, const double* force, double* matrix) {
    return finites_truss_geometric_of_force(truss, *force, matrix);
  };
  return one_by_one(trusses, out, 36, threads, call, input(axial, length(trusses), 1, "axial"));
}

Answer truss_forces(const Trusses& trusses, const Reals& u, Reals out, int threads) {
  return one_by_one(trusses, out, 6, threads, finites_truss_forces, input(u, length(trusses), 6, "u"));
}

Answer truss_loads(const Trusses& trusses, const Reals& line, const Reals& temperature, Reals out, int threads) {
  const auto call = [](const finites_truss* truss, const double* q, const double* t, double* vector) {
    return finites_truss_loads(truss, q, *t, vector);
  };
  return one_by_one(trusses, out, 6, threads, call, input(line, length(trusses), 3, "line"),
                    input(temperature, length(trusses), 1, "temperature"));
}

Answer truss_axial_force(const Trusses& trusses, const Reals& u, const Reals& temperature, Reals out, int threads) {
  const auto call = [](const finites_truss* truss, const double* at, const double* t, double* axial) {
    return finites_truss_axial_force(truss, at, *t, axial);
  };
  return one_by_one(trusses, out, 1, threads, call, input(u, length(trusses), 6, "u"),
                    input(temperature, length(trusses), 1, "temperature"));
}

Answer truss_measure(const Trusses& trusses, Records<finites_member_measures> out, int threads) {
  return one_by_one(trusses, out, 1, threads, finites_truss_measure);
}

// Eight reals a cable: the six nodal forces and both tensions.
Answer cable_forces(const Cables& cables, Reals out, int threads) {
  const auto call = [](const finites_cable* cable, double* forces) {
    return finites_cable_forces(cable, forces, forces + 6);
  };
  return one_by_one(cables, out, 8, threads, call);
}

Answer cable_stiffness(const Cables& cables, Reals out, int threads) {
  return one_by_one(cables, out, 36, threads, finites_cable_stiffness);
}

// 4 reals a place: all coordinates of a cable first, then its tensions.
Answer cable_shape(const Cables& cables, const Reals& s, int64_t places, Reals out, int threads) {
  require(places > 0 && places <= INT32_MAX, "s");
  const auto call = [=](const finites_cable* cable, const double* at, double* shape) {
    return finites_cable_shape(cable, static_cast<int32_t>(places), at, reinterpret_cast<double(*)[3]>(shape),
                               shape + 3 * places);
  };
  return one_by_one(cables, out, 4 * places, threads, call, input(s, length(cables), places, "s"));
}

Answer link_stiffness(const Links& links, Reals out, int threads) {
  return one_by_one(links, out, 144, threads, finites_link_stiffness);
}

Answer link_forces(const Links& links, const Reals& u, Reals out, int threads) {
  return one_by_one(links, out, 12, threads, finites_link_forces, input(u, length(links), 12, "u"));
}

Answer spring_stiffness(const Springs& springs, Reals out, int threads) {
  return one_by_one(springs, out, 144, threads, finites_spring_stiffness);
}

Answer spring_forces(const Springs& springs, const Reals& u, Reals out, int threads) {
  return one_by_one(springs, out, 12, threads, finites_spring_forces, input(u, length(springs), 12, "u"));
}

// A surface beside each force: one surface repeated has a record for each.
Answer yield_value(const Surfaces& surfaces, const Reals& force, Reals out, int threads) {
  return one_by_one(surfaces, out, 1, threads, finites_yield_value, input(force, length(surfaces), 3, "force"));
}

struct Equations {
  int32_t count, unused;
  int32_t segment[4];
  double value[4];
  double gradient[4][3];
};

Answer yield_equations(const Surfaces& surfaces, const Reals& force, Records<Equations> out, int threads) {
  const auto call = [](const finites_yield* surface, const double* at, Equations* equations) {
    return finites_yield_equations(surface, at, &equations->count, equations->segment, equations->value,
                                   equations->gradient);
  };
  return one_by_one(surfaces, out, 1, threads, call, input(force, length(surfaces), 3, "force"));
}

void bind_trusses(py::module_& module) {
  const auto trusses = py::arg("trusses").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("truss_init", fresh<finites_truss, finites_truss_init>);
  module.def("truss_stiffness", truss_stiffness, trusses, out, threads);
  module.def("truss_mass", truss_mass, trusses, py::arg("lumped"), out, threads);
  module.def("truss_geometric", truss_geometric, trusses, py::arg("u"), out, threads);
  module.def("truss_geometric_of_force", truss_geometric_of_force, trusses, py::arg("axial"), out, threads);
  module.def("truss_forces", truss_forces, trusses, py::arg("u"), out, threads);
  module.def("truss_loads", truss_loads, trusses, py::arg("line"), py::arg("temperature"), out, threads);
  module.def("truss_axial_force", truss_axial_force, trusses, py::arg("u"), py::arg("temperature"), out, threads);
  module.def("truss_measure", truss_measure, trusses, out, threads);
}

void bind_cables(py::module_& module) {
  const auto cables = py::arg("cables").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("cable_init", fresh<finites_cable, finites_cable_init>);
  module.def("cable_forces", cable_forces, cables, out, threads);
  module.def("cable_stiffness", cable_stiffness, cables, out, threads);
  module.def("cable_shape", cable_shape, cables, py::arg("s"), py::arg("places"), out, threads);
}

void bind_connectors(py::module_& module) {
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  const auto links = py::arg("links").noconvert();
  module.def("link_init", fresh<finites_link, finites_link_init>);
  module.def("link_stiffness", link_stiffness, links, out, threads);
  module.def("link_forces", link_forces, links, py::arg("u"), out, threads);
  const auto springs = py::arg("springs").noconvert();
  module.def("spring_init", fresh<finites_spring, finites_spring_init>);
  module.def("spring_stiffness", spring_stiffness, springs, out, threads);
  module.def("spring_forces", spring_forces, springs, py::arg("u"), out, threads);
}

void no_yield(finites_yield* surface) { *surface = {}; }

}  // namespace

void bind_members(py::module_& module) {
  PYBIND11_NUMPY_DTYPE(finites_truss, xyz, E, area, density, expansion, pretension);
  PYBIND11_NUMPY_DTYPE(finites_cable, xyz, E, area, length, strain, load);
  PYBIND11_NUMPY_DTYPE(finites_link, xyz, up, k, at_ends, unused);
  PYBIND11_NUMPY_DTYPE(finites_spring, k, axes);
  PYBIND11_NUMPY_DTYPE(finites_yield, curve, forces, capacity);
  PYBIND11_NUMPY_DTYPE(Equations, count, unused, segment, value, gradient);
  bind_trusses(module);
  bind_cables(module);
  bind_connectors(module);
  const auto surfaces = py::arg("surfaces").noconvert();
  const auto out = py::arg("out").noconvert();
  const auto threads = py::arg("threads");
  module.def("yield_init", fresh<finites_yield, no_yield>);
  module.def("yield_equations_dtype", [] { return py::dtype::of<Equations>(); });
  module.def("yield_value", yield_value, surfaces, py::arg("force"), out, threads);
  module.def("yield_equations", yield_equations, surfaces, py::arg("force"), out, threads);
}
