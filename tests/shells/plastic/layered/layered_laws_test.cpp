// layered_laws_test.cpp: the laws that the layered elements keep, from one list over one table of kinds, through
// FINITES, on seeded random elements in space.
#include <cmath>
#include <ostream>

#include "comparison.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "guarded_buffer.h"
#include "layered_element_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::vector3;
using support::plate_description;
using support::seeded_random;

namespace {

matrix full(const std::vector<double>& K) {
  const int n = static_cast<int>(std::lround(std::sqrt(static_cast<double>(K.size()))));
  return dense::widened(K.data(), n, n);
}

// Three shifts and three turns about the origin.
std::vector<double> rigid_mode(const plate_description& d, int mode) {
  const vector3 unit = vector3::Unit(mode % 3);
  column u = column::Zero(6 * static_cast<int>(d.nodes.size()));
  for (int i = 0; i < static_cast<int>(d.nodes.size()); ++i) {
    if (mode < 3) {
      u.segment(6 * i, 3) = unit;
    } else {
      u.segment(6 * i, 3) = unit.cross(shell_reference::wide(d.nodes[static_cast<std::size_t>(i)]));
      u.segment(6 * i + 3, 3) = unit;
    }
  }
  return listed(u);
}

std::vector<double> record(const std::vector<double>& blocks, int n, int first, int count) {
  const auto start = blocks.begin() + 90 * n + first - 1;
  return std::vector<double>(start, start + count);
}

// Displacements whose strains stay far inside the surface.
double small_strain(const plate_description& d) { return 1e-3 * d.yield_stress / d.young * d.thickness; }

void symmetry(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 5);
  for (const double strain : {0.0, 20.0 * d.yield_stress / d.young}) {
    model.internal_forces(1, random_displacements(random, d, strain), 33);
    const std::vector<double> K = model.stiffness(1);
    EXPECT_CLOSE(support::transposed(K), K, support::max_norm(K), 16);
    EXPECT_GT(support::max_norm(K), 0.0);
  }
}

void elastic_stiffness_is_that_of_the_reference(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  for (const int n : STATE_COUNTS) {
    layered_model model(d, n);
    const layered_element_reference r(s, d);
    const matrix K = r.e.to_global_matrix(r.elastic_stiffness());
    EXPECT_CLOSE(model.stiffness(1), listed(K), largest(K), 200) << n;
  }
}

void stiffness_of_any_tangents_is_that_of_the_reference(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  for (const point_layout layout : {point_layout::packed, point_layout::scattered}) {
    for (const int n : STATE_COUNTS) {
      layered_model model(d, n, layout);
      model.fill_random(random);
      const layered_element_reference r(s, d);
      const matrix K = r.e.to_global_matrix(r.stiffness(model));
      const std::vector<std::uint64_t> before = model.bits();
      EXPECT_CLOSE(model.stiffness(1), listed(K), largest(r.elastic_stiffness()), 200) << n;
      EXPECT_EQ(model.bits(), before);
    }
  }
}

void rigid_motions_give_nothing(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 5);
  model.internal_forces(1, random_displacements(random, d, 20.0 * d.yield_stress / d.young), 33);
  const std::vector<double> K = model.stiffness(1), zeros(static_cast<std::size_t>(s.order()), 0.0);
  for (int mode = 0; mode < 6; ++mode) {
    const std::vector<double> u = rigid_mode(d, mode);
    const double size = support::max_norm(u);
    EXPECT_CLOSE(support::product(K, u), zeros, support::max_norm(K) * size, 64) << mode;
    EXPECT_CLOSE(model.internal_forces(1, u), zeros, support::max_norm(K) * size, 64) << mode;
    const support::plate_results results = model.results(1, u);
    for (int n = 0; n < s.nodes; ++n) {
      for (const int strain : {4, 15, 26}) {
        EXPECT_CLOSE(record(results.nodes, n, strain, 3), std::vector<double>(3, 0.0), 10.0 * size, 64) << mode;
      }
    }
  }
}

void elastic_forces_are_stiffness_times_displacements(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 7);
  const std::vector<double> K = model.stiffness(1), u = random_displacements(random, d, small_strain(d));
  EXPECT_CLOSE(model.internal_forces(1, u), support::product(K, u), support::max_norm(K) * support::max_norm(u), 200);
  for (std::size_t j = 0; j < u.size(); ++j) {
    std::vector<double> ahead = u, behind = u;
    const double step = 0.5 * small_strain(d);
    ahead[j] += step;
    behind[j] -= step;
    const std::vector<double> f = model.internal_forces(1, ahead), g = model.internal_forces(1, behind);
    EXPECT_CLOSE(sum(f, g, -1.0),
                 listed(column_of(support::values(&K[u.size() * j], s.order())) * (ahead[j] - behind[j])),
                 support::max_norm(K) * support::max_norm(u), 400);
  }
}

void element_may_turn_and_move(const layered_subject& s, seeded_random& random) {
  // Forces of operation 33 and tangents stand in element axes and do not change; stresses turn with the element.
  const plate_description d = random_layered(random, s, 0.2);
  const support::rotation Q = support::random_rotation(random);
  plate_description turned = d;
  for (support::point& node : turned.nodes) {
    node = support::rotate(Q, node);
    node[1] += 1.5;
  }
  const double strain = 20.0 * d.yield_stress / d.young;
  const std::vector<double> u = random_displacements(random, d, strain);
  std::vector<double> v = u;
  for (std::size_t g = 0; g < u.size(); g += 3) {
    const support::point p = support::rotate(Q, {u[g], u[g + 1], u[g + 2]});
    std::copy(p.begin(), p.end(), v.begin() + static_cast<std::ptrdiff_t>(g));
  }
  std::vector<double> f, tangents, stresses;
  layered_reference::matrix3 axes[2] = {layered_element_reference(s, d).axes,
                                        layered_element_reference(s, turned).axes};
  const auto local_state = [&](layered_model& model, int which) {
    std::vector<double> all;
    for (int gp = 1; gp <= 4; ++gp) {
      for (int k = 1; k <= 5; ++k) {
        const layered_values values = values_of(model.point(gp), k);
        const auto sig = layered_reference::vector6_of(field_of(values, "SIG"));
        for (const double x : layered_reference::listed(layered_reference::to_local(sig, axes[which])))
          all.push_back(x);
      }
    }
    return all;
  };
  {
    layered_model model(d, 5);
    f = model.internal_forces(1, u, 33);
    tangents = field_of(values_of(model.point(2)), "TANGENT");
    stresses = local_state(model, 0);
  }
  layered_model model(turned, 5);
  // Rounding of the strains, over the thickness.
  const double noise = d.young * support::max_norm(u) / d.thickness;
  EXPECT_CLOSE(model.internal_forces(1, v, 33), f, support::max_norm(model.stiffness(1)) * support::max_norm(u) + noise,
               2000);
  EXPECT_CLOSE(local_state(model, 1), stresses, noise, 200);
  EXPECT_WITHIN(field_of(values_of(model.point(2)), "TANGENT"), tangents, d.young, 1e-9);
}

void element_axes_turn_to_global_ones(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 5);
  const std::vector<double> u = random_displacements(random, d, small_strain(d));
  const column local = column_of(model.internal_forces(1, u, 33));
  EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(layered_element_reference(s, d).e.to_global(local)),
               largest(local), 64);
}

void stiffness_has_its_rank(const layered_subject& s, seeded_random& random) {
  // Six rigid motions and the common drilling rotation.
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 5);
  const std::vector<double> K = model.stiffness(1);
  const std::vector<double> eigenvalues = listed(dense::eigen_system(0.5 * (full(K) + full(K).transpose())).values);
  const double greatest = eigenvalues.back();
  for (int i = 0; i < s.order(); ++i) {
    if (i < 7) {
      EXPECT_CLOSE(eigenvalues[static_cast<std::size_t>(i)], 0.0, greatest, 100) << "mode " << i + 1;
    } else {
      EXPECT_GT(eigenvalues[static_cast<std::size_t>(i)], 1e-10 * greatest) << "mode " << i + 1;
    }
  }
}

// The corner lies at the node less its offset: u - turn x offset, P with all nodes. The matrix is P^T K P, the forces
// P^T f of P u.
void offsets_join_the_nodes_rigidly(const layered_subject& s, seeded_random& random) {
  const plate_description bare = random_layered(random, s, 0.2);
  plate_description d = bare;
  d.offset_switch = 1;
  matrix P = matrix::Identity(s.order(), s.order());
  for (int n = 0; n < s.nodes; ++n) {
    const std::vector<double> o = random.vector(3, 0.2);
    const std::size_t node = static_cast<std::size_t>(n);
    d.offsets[node] = {o[0], o[1], o[2]};
    for (std::size_t i = 0; i < 3; ++i) d.nodes[node][i] += o[i];
    P.block(6 * n, 6 * n + 3, 3, 3) << 0, -o[2], o[1], o[2], 0, -o[0], -o[1], o[0], 0;
  }
  const std::vector<double> u = random_displacements(random, d, small_strain(d)), moved = listed(P * column_of(u));
  std::vector<double> K, f;
  {
    layered_model model(bare, 5);
    K = listed(P.transpose() * full(model.stiffness(1)) * P);
    f = listed(P.transpose() * column_of(model.internal_forces(1, moved)));
  }
  layered_model model(d, 5);
  EXPECT_CLOSE(model.stiffness(1), K, support::max_norm(K), 200);
  EXPECT_CLOSE(model.internal_forces(1, u), f, support::max_norm(K) * support::max_norm(u), 400);

  // Of tangents without symmetry neither half follows from the other.
  support::seeded_random tangents = random, same = random;
  {
    layered_model full_tangents(bare, 5);
    full_tangents.fill_random(tangents);
    const matrix here = full(full_tangents.stiffness(1));
    EXPECT_GT(largest(here - here.transpose()), 1e-3 * largest(here));
    K = listed(P.transpose() * here * P);
  }
  layered_model full_tangents(d, 5);
  full_tangents.fill_random(same);
  EXPECT_CLOSE(full_tangents.stiffness(1), K, support::max_norm(K), 200);
}

// Except for temperature: thermal strains are those of the general elastic behaviour, and a layered element has none.
void loads_and_mass_are_those_of_the_elastic_element(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  plate_description elastic = d;
  elastic.plastic_switch = 0;
  std::vector<double> answers[2][5], geometric[2];
  const std::vector<double> u = random_displacements(random, d, small_strain(d)), q = random.vector(9, 1.0);
  for (const int which : {0, 1}) {
    layered_model model(which == 0 ? d : elastic, 5);
    std::vector<double>* a = answers[which];
    a[0] = model.mass(1);
    a[1] = model.loads(4, 1, q);
    a[2] = model.loads(41, 1, q);
    a[3] = model.loads(10, 1, {0.1, 0.1, 0.0, 1.0, 2.0, 3.0, 0.0, 0.0, 0.0});
    a[4] = model.loads(401, 1, {25.0, -40.0});
    model.set_displacements(u);
    geometric[which] = model.matrix(7, 1);
  }
  for (int i = 0; i < 4; ++i) EXPECT_EQ(answers[0][i], answers[1][i]) << i;
  EXPECT_EQ(answers[0][4], std::vector<double>(static_cast<std::size_t>(s.order()), 0.0));
  EXPECT_GT(support::max_norm(answers[1][4]), 0.0);
  EXPECT_CLOSE(geometric[0], geometric[1], d.young * d.thickness * support::max_norm(u) * 10.0, 400);
}

void stored_forces_add_their_stiffness(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  layered_model model(d, 5);
  std::vector<vector3> N;
  for (int p = 1; p <= 4; ++p) {
    const std::vector<double> six = random.vector(6, d.yield_stress * d.thickness);
    for (int i = 1; i <= 6; ++i) model.state(1).STORED_NODAL_FORCES(i, p) = six[static_cast<std::size_t>(i - 1)];
    N.emplace_back(six[0], six[1], six[2]);
  }
  const std::vector<double> K = model.stiffness(1);
  model.set_header(SECOND_ORDER, 1.0);
  const layered_element_reference r(s, d);
  const matrix G = r.e.to_global_matrix(r.e.geometric(N));
  EXPECT_GT(largest(G), 1e-6 * support::max_norm(K));
  EXPECT_CLOSE(model.stiffness(1), sum(K, listed(G)), support::max_norm(K), 200);
}

void nothing_else_is_written(const layered_subject& s, seeded_random& random) {
  const plate_description d = random_layered(random, s, 0.2);
  for (const int op : {1, 3, 33, 5, 7, 71}) {
    layered_model model(d, 5, point_layout::scattered);
    const std::vector<std::uint64_t> neighbour = bits_of(model.state(2));
    support::guarded_buffer data(12), forces(24), out(576);
    data.set_input(std::vector<double>(12, 0.0));
    model.set_displacements(random_displacements(random, d, 20.0 * d.yield_stress / d.young));
    const std::vector<double> before(model.raw(), model.raw() + model.extent());
    model.call(op, 1, data.data(), forces.data(), out.data());
    EXPECT_EQ(data.changed(), std::vector<int>()) << op;
    EXPECT_EQ(forces.changed(), std::vector<int>()) << op;
    const bool makes_matrix = op == 1 || op == 7 || op == 71;
    EXPECT_EQ(out.changed(), makes_matrix ? support::leading_block(s.order(), 24) : std::vector<int>()) << op;
    // The exchange area starts with 24 displacements; forces and results follow.
    const std::ptrdiff_t exchange = model.displacements() - model.raw();
    for (std::ptrdiff_t i = 0; i < model.extent(); ++i) {
      const std::ptrdiff_t at = i - exchange;
      const bool written = at >= 24 && at < 24 + 24 + 720;
      const double now = model.raw()[i], then = before[static_cast<std::size_t>(i)];
      if (!written) {
        EXPECT_TRUE(now == then || (std::isnan(now) && std::isnan(then))) << op << " " << at;
      }
    }
    EXPECT_TRUE(model.storage->guards_hold());
    EXPECT_EQ(bits_of(model.state(2)), neighbour) << op;
  }
}

struct property {
  const char* name;
  void (*check)(const layered_subject&, seeded_random&);
};

constexpr property PROPERTIES[] = {
    {"symmetry", symmetry},
    {"elastic_stiffness_is_that_of_the_reference", elastic_stiffness_is_that_of_the_reference},
    {"stiffness_of_any_tangents_is_that_of_the_reference", stiffness_of_any_tangents_is_that_of_the_reference},
    {"rigid_motions_give_nothing", rigid_motions_give_nothing},
    {"elastic_forces_are_stiffness_times_displacements", elastic_forces_are_stiffness_times_displacements},
    {"element_may_turn_and_move", element_may_turn_and_move},
    {"element_axes_turn_to_global_ones", element_axes_turn_to_global_ones},
    {"stiffness_has_its_rank", stiffness_has_its_rank},
    {"offsets_join_the_nodes_rigidly", offsets_join_the_nodes_rigidly},
    {"loads_and_mass_are_those_of_the_elastic_element", loads_and_mass_are_those_of_the_elastic_element},
    {"stored_forces_add_their_stiffness", stored_forces_add_their_stiffness},
    {"nothing_else_is_written", nothing_else_is_written},
};

struct asked {
  layered_subject s;
  property p;
};

void PrintTo(const asked& a, std::ostream* out) { *out << a.s.name << " " << a.p.name; }

std::vector<asked> all_asked() {
  std::vector<asked> list;
  for (const layered_subject& s : SUBJECTS) {
    for (const property& p : PROPERTIES) list.push_back({s, p});
  }
  return list;
}

class LayeredElement : public ::testing::TestWithParam<asked> {};

TEST_P(LayeredElement, Keeps) {
  seeded_random random(761);
  for (int trial = 0; trial < 4 && !HasFailure(); ++trial) GetParam().p.check(GetParam().s, random);
}

INSTANTIATE_TEST_SUITE_P(Properties, LayeredElement, ::testing::ValuesIn(all_asked()),
                         [](const auto& test) { return std::string(test.param.s.name) + "_" + test.param.p.name; });

}  // namespace
