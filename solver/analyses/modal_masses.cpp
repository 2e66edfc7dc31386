// modal_masses.cpp: one pass over the elements; no matrix of the whole model is needed.
#include "analyses/modal_masses.h"

#include "elements/scatter_map.h"
#include "system/assembly.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr int MOST_NODES = 8, MAX_FREEDOMS = 24;

void lump(const element& e, element_matrix& M) {
  const int nodes = count_of(e.nodes), at_node = freedoms_per_node(e), freedoms = element_freedoms(e);
  std::array<double, MOST_NODES> share{};
  double shares = 0, mass = 0;
  for (int n = 0; n < nodes; ++n) {
    for (int i = 1; i <= 3; ++i) share[subscript(n)] += M(n * at_node + i, n * at_node + i);
    shares += share[subscript(n)];
    for (int other = 0; other < nodes; ++other) mass += M(n * at_node + 1, other * at_node + 1);
  }
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) M(i, j) = 0;
  }
  if (!(shares > 0)) return;
  for (int n = 0; n < nodes; ++n) {
    for (int i = 1; i <= 3; ++i) M(n * at_node + i, n * at_node + i) = mass * share[subscript(n)] / shares;
  }
}

// Displacement of a node in a rigid motion 1: a translation, or a rotation about an axis through the origin.
std::array<double, DIRECTIONS> rigid(const std::array<double, 3>& x, int motion) {
  std::array<double, DIRECTIONS> u{};
  u[subscript(motion)] = 1;
  switch (motion) {
    case 3:
      u[1] = -x[2];
      u[2] = x[1];
      break;
    case 4:
      u[0] = x[2];
      u[2] = -x[0];
      break;
    case 5:
      u[0] = -x[1];
      u[1] = x[0];
      break;
    default: break;
  }
  return u;
}

element_vector product(const element_matrix& M, const element_vector& u, int freedoms) {
  element_vector f{};
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) f(i) += M(i, j) * u(j);
  }
  return f;
}

double product(const element_vector& a, const element_vector& b) {
  double sum = 0;
  for (int i = 1; i <= MAX_FREEDOMS; ++i) sum += a(i) * b(i);
  return sum;
}

struct rigid_motions {
  std::array<element_vector, DIRECTIONS> whole{}, free{};
};

rigid_motions motions_of(const model& m, const element& e, const load_case& loads) {
  rigid_motions r;
  const int at_node = freedoms_per_node(e);
  for (int motion = 0; motion < DIRECTIONS; ++motion) {
    for (int i = 0; i < element_freedoms(e); ++i) {
      const double u = rigid(m.nodes[e.nodes[i / at_node]].xyz, motion)[subscript(i % at_node)];
      r.whole[subscript(motion)](i + 1) = u;
      if (!loads.prescribed[element_freedom(e, i)]) r.free[subscript(motion)](i + 1) = u;
    }
  }
  return r;
}

// The sums of all processes, each of which has those of its own elements.
void add_up_processes(modal_masses& masses, std::array<double, 3>& moment) {
  std::vector<double> all;
  const auto for_each_sum = [&](const auto& act) {
    for (double& sum : masses.total) act(sum);
    for (double& sum : masses.free) act(sum);
    for (double& sum : moment) act(sum);
    for (modal_mass& one : masses.modes) {
      act(one.generalised);
      for (double& sum : one.factor) act(sum);
    }
  };
  for_each_sum([&](double& sum) { all.push_back(sum); });
  sum_over_ranks(all);
  std::size_t at = 0;
  for_each_sum([&](double& sum) { sum = all[at++]; });
}

}  // namespace

void element_mass(const model& m, const step& s, library_model& library, std::size_t element, element_matrix& M) {
  const solver::element& e = m.elements[element];
  const bool placed = is_beam(e.type) && is_placed(frame_section_of(m, e).place);
  if (s.lumped_mass && placed) return library.members().lumped_mass(element, M);
  library.mass(element, M);
  if (s.lumped_mass && !is_point(e.type)) lump(e, M);
}

modal_masses find_modal_masses(const model& m, const step& s, library_model& library, const load_case& loads,
                               const std::vector<const std::vector<double>*>& shapes) {
  modal_masses result;
  result.modes.resize(shapes.size());
  std::array<double, 3> moment{};  // mass times place
  element_matrix M;
  const auto add = [&](std::size_t e) {
    const element& elem = m.elements[e];
    const int freedoms = element_freedoms(elem);
    element_mass(m, s, library, e, M);
    const rigid_motions r = motions_of(m, elem, loads);
    std::array<element_vector, DIRECTIONS> inertia;
    for (std::size_t i = 0; i < DIRECTIONS; ++i) {
      const element_vector whole = product(M, r.whole[i], freedoms);
      result.total[i] += product(whole, r.whole[i]);
      // A translation x meets the rotation about y by z, y that about z by x, z that about x by y.
      if (i < 3) moment[(i + 2) % 3] += product(whole, r.whole[3 + (i + 1) % 3]);
      inertia[i] = product(M, r.free[i], freedoms);
      result.free[i] += product(inertia[i], r.free[i]);
    }
    for (std::size_t k = 0; k < shapes.size(); ++k) {
      const element_vector u = gather(elem, *shapes[k]);
      result.modes[k].generalised += product(product(M, u, freedoms), u);
      for (std::size_t i = 0; i < DIRECTIONS; ++i) result.modes[k].factor[i] += product(inertia[i], u);
    }
  };
  fail_together([&] {
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (is_own(m, e)) add(e);
    }
  });
  add_up_processes(result, moment);
  for (modal_mass& one : result.modes) {
    for (std::size_t i = 0; i < DIRECTIONS && one.generalised > 0; ++i) {
      one.factor[i] /= one.generalised;
      one.effective[i] = one.factor[i] * one.factor[i] * one.generalised;
    }
  }
  for (std::size_t i = 0; i < 3 && result.total[i] > 0; ++i) result.centre[i] = moment[i] / result.total[i];
  return result;
}

}  // namespace solver
