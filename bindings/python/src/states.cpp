// states.cpp: plates and beams that yield: a row of state objects, one per element.
#include <memory>
#include <mutex>

#include "run.h"

namespace {

// What differs between the states of plates and of beams.
struct PlateTraits {
  using State = finites_plate_state;
  static constexpr auto copy = finites_plate_state_copy;
  static constexpr auto free = finites_plate_state_free;
  static constexpr auto attempt = finites_plate_state_try;
  static constexpr auto commit = finites_plate_state_commit;
  static constexpr auto accept = finites_plate_state_accept;
  static constexpr auto forces = finites_plate_state_forces;
};

struct BeamTraits {
  using State = finites_beam_state;
  static constexpr auto copy = finites_beam_state_copy;
  static constexpr auto free = finites_beam_state_free;
  static constexpr auto attempt = finites_beam_state_try;
  static constexpr auto commit = finites_beam_state_commit;
  static constexpr auto accept = finites_beam_state_accept;
  static constexpr auto forces = finites_beam_state_forces;
};

void transpose(double* matrix, int64_t order) {
  for (int64_t i = 0; i < order; ++i) {
    for (int64_t j = 0; j < i; ++j) std::swap(matrix[i * order + j], matrix[j * order + i]);
  }
}

// A row of states. A call on the whole row does all of it or nothing. A state belongs to one thread at a time: calls
// from several threads of Python wait for each other.
template <class Traits>
struct States {
  using State = typename Traits::State;
  struct Free {
    void operator()(State* state) const { Traits::free(state); }
  };
  using Row = std::vector<std::unique_ptr<State, Free>>;

  int64_t order = 0;
  Row row;
  std::unique_ptr<std::mutex> lock = std::make_unique<std::mutex>();

  int64_t count() const { return static_cast<int64_t>(row.size()); }
  State* at(int64_t e) const { return row[static_cast<size_t>(e)].get(); }

  // row := what make(e, &state) makes of each element; on an error the row stays as it was.
  template <class Make>
  Answer fill(int64_t elements, int threads, const Make& make) {
    Row made(static_cast<size_t>(elements));
    const Answer answer = run(elements, threads, each([&](int64_t e) {
                                State* state = nullptr;
                                const finites_status status = make(e, &state);
                                made[static_cast<size_t>(e)].reset(state);
                                return status;
                              }));
    if (answer.first == FINITES_OK) row = std::move(made);
    return answer;
  }
};

// Runs a call on a row that no other thread uses meanwhile.
template <class Row, class Call>
Answer alone(Row& states, const Call& call) {
  std::unique_lock<std::mutex> locked(*states.lock, std::defer_lock);
  {
    const py::gil_scoped_release unlocked;
    locked.lock();
  }
  return call();
}

template <class Traits>
Answer attempt(States<Traits>& states, const Reals& u, Reals forces, const py::object& tangents, int threads) {
  const int64_t count = states.count(), order = states.order;
  const Input at = input(u, count, order, "u");
  double* F = output(forces, count, order, "forces");
  Reals matrices = tangents.is_none() ? Reals() : tangents.cast<Reals>();
  double* K = tangents.is_none() ? nullptr : output(matrices, count, order * order, "tangents");
  return alone(states, [&] {
    return run(count, threads, each([&](int64_t e) {
                 double* tangent = K == nullptr ? nullptr : K + e * order * order;
                 const finites_status status = Traits::attempt(states.at(e), at(e), F + e * order, tangent);
                 if (status == FINITES_OK && tangent != nullptr) transpose(tangent, order);
                 return status;
               }));
  });
}

template <class Traits>
Answer forces(States<Traits>& states, Reals vectors, Reals matrices, int threads) {
  const int64_t count = states.count(), order = states.order;
  double* F = output(vectors, count, order, "forces");
  double* K = output(matrices, count, order * order, "tangents");
  return alone(states, [&] {
    return run(count, threads, each([&](int64_t e) {
                 const finites_status status = Traits::forces(states.at(e), F + e * order, K + e * order * order);
                 if (status == FINITES_OK) transpose(K + e * order * order, order);
                 return status;
               }));
  });
}

// Copies are committed and take the place of the row when all have been.
template <class Traits>
Answer commit(States<Traits>& states, const Reals& u, int threads) {
  const Input at = input(u, states.count(), states.order, "u");
  return alone(states, [&] {
    return states.fill(states.count(), threads, [&](int64_t e, typename Traits::State** state) {
      const finites_status copied = Traits::copy(states.at(e), state);
      return copied == FINITES_OK ? Traits::commit(*state, at(e)) : copied;
    });
  });
}

template <class Traits>
Answer accept(States<Traits>& states) {
  return alone(states,
               [&] { return run(states.count(), 1, each([&](int64_t e) { return Traits::accept(states.at(e)); })); });
}

// Copies of all states of the row, or of those from begin to end - 1.
template <class Traits>
py::tuple copy(States<Traits>& states, int64_t begin, int64_t end) {
  require(0 <= begin && begin < end && end <= states.count(), "states");
  auto copies = std::make_unique<States<Traits>>();
  copies->order = states.order;
  const Answer answer = alone(states, [&] {
    return copies->fill(end - begin, 1, [&](int64_t e, typename Traits::State** state) {
      return Traits::copy(states.at(begin + e), state);
    });
  });
  return py::make_tuple(std::move(copies), answer);
}

py::tuple create_plates(const Records<finites_plate>& plates, const Records<finites_plastic>& plastic) {
  const finites_plate* first = plates.data();
  const int64_t count = length(plates);
  require(plastic.size() == count, "plastic");
  const finites_plastic* model = plastic.data();
  auto states = std::make_unique<States<PlateTraits>>();
  states->order = freedoms(plates, 6);
  const Answer answer = states->fill(count, 1, [=](int64_t e, finites_plate_state** state) {
    return finites_plate_state_create(first + e, model + e, state);
  });
  return py::make_tuple(std::move(states), answer);
}

py::tuple create_beams(const Records<finites_beam>& beams, const Records<finites_yield>& yield,
                       const Records<int32_t>& ends) {
  const finites_beam* first = beams.data();
  const int64_t count = length(beams);
  require(yield.size() == count, "yield");
  require(ends.size() == count, "ends");
  const finites_yield* surface = yield.data();
  const int32_t* which = ends.data();
  auto states = std::make_unique<States<BeamTraits>>();
  states->order = 12;
  const Answer answer = states->fill(count, 1, [=](int64_t e, finites_beam_state** state) {
    return finites_beam_state_create(first + e, surface + e, which[e], state);
  });
  return py::make_tuple(std::move(states), answer);
}

Answer results(States<PlateTraits>& states, Records<finites_plate_results> values, int threads) {
  finites_plate_results* out = output(values, states.count(), 1, "results");
  return alone(states, [&] {
    return run(states.count(), threads,
               each([&](int64_t e) { return finites_plate_state_result(states.at(e), out + e); }));
  });
}

Answer hinges(States<BeamTraits>& states, Records<finites_hinge> values) {
  finites_hinge* out = output(values, states.count(), 2, "hinges");
  return alone(states, [&] {
    return run(states.count(), 1,
               each([&](int64_t e) { return finites_beam_state_hinges(states.at(e), out + 2 * e); }));
  });
}

template <class Traits>
py::class_<States<Traits>> bind(py::module_& module, const char* name) {
  const auto threads = py::arg("threads");
  return py::class_<States<Traits>>(module, name)
      .def("__len__", [](const States<Traits>& states) { return states.count(); })
      .def("try_", attempt<Traits>, py::arg("u"), py::arg("forces").noconvert(), py::arg("tangents"), threads)
      .def("forces", forces<Traits>, py::arg("forces").noconvert(), py::arg("tangents").noconvert(), threads)
      .def("commit", commit<Traits>, py::arg("u"), threads)
      .def("accept", accept<Traits>)
      .def("copy", copy<Traits>, py::arg("begin"), py::arg("end"));
}

}  // namespace

void bind_states(py::module_& module) {
  PYBIND11_NUMPY_DTYPE(finites_plastic, model, layers, yield_stress, hardening);
  PYBIND11_NUMPY_DTYPE(finites_hinge, yields, unused, force, value, plastic);
  module.def("plastic_dtype", [] { return py::dtype::of<finites_plastic>(); });
  module.def("hinge_dtype", [] { return py::dtype::of<finites_hinge>(); });
  module.def("plate_states", create_plates, py::arg("plates").noconvert(), py::arg("plastic").noconvert());
  module.def("beam_states", create_beams, py::arg("beams").noconvert(), py::arg("surfaces").noconvert(),
             py::arg("ends"));
  bind<PlateTraits>(module, "PlateStates").def("results", results, py::arg("out").noconvert(), py::arg("threads"));
  bind<BeamTraits>(module, "BeamStates").def("hinges", hinges, py::arg("out").noconvert());
}
