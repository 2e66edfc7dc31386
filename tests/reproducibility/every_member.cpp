// every_member.cpp: the members and the calls of the frame routines.
#include "every_member.h"

#include <iterator>

#include "finites/fields.h"
#include "finites/finites.h"
#include "vornekal.h"

namespace every_call {

namespace {

using support::member_description;
using support::member_family;
using support::seeded_random;

constexpr double FRAME_KINDS[] = {1.0, 10.0, 14.0};  // A(I): the loads of the last two are global

double random_fixity(seeded_random& random) {
  const int choice = random.integer(0, 3);
  return choice == 0 ? 0.0 : choice == 1 ? 1.0 : random.uniform(0.05, 0.95);
}

void describe_ends(seeded_random& random, member_description& m) {
  const bool rigid = random.integer(0, 2) == 0;
  for (std::size_t end = 0; end < 2; ++end) {
    m.fixity_y[end] = rigid ? 1.0 : random_fixity(random);
    m.fixity_z[end] = rigid ? 1.0 : random_fixity(random);
  }
  if (random.integer(0, 2) > 0) return;
  for (int& code : m.release) code = random.integer(0, 2);
}

void describe_section(seeded_random& random, member_description& m) {
  m.length = random.uniform(1.0, 8.0);
  m.weight = random.uniform(10.0, 500.0);
  m.area = random.uniform(0.005, 0.05);
  m.i1 = random.uniform(5e-5, 5e-4);
  m.i2 = random.uniform(5e-5, 5e-4);
  m.j = random.uniform(5e-5, 5e-4);
  m.e1 = random.uniform(1e5, 3e5);
  m.e2 = random.uniform(1e5, 3e5);
  m.g = random.uniform(4e4, 1e5);
  m.shear_area_y = random.integer(0, 3) == 0 ? 0.0 : m.area * random.uniform(0.3, 0.9);
  m.shear_area_z = random.integer(0, 3) == 0 ? 0.0 : m.area * random.uniform(0.3, 0.9);
  for (double* factor : {&m.factor_area, &m.factor_i1, &m.factor_i2, &m.factor_j, &m.factor_torsion}) {
    *factor = random.uniform(0.3, 1.2);
  }
  m.section_type = random.integer(1, 3);
  m.material_kind = random.integer(1, 2);
}

void describe_state(seeded_random& random, const analysis& a, member_description& m) {
  m.axial_force = random.integer(0, 5) == 0 ? 0.0 : random.uniform(-30.0, 30.0);
  m.tau_b = random.integer(0, 2) == 0 ? random.uniform(0.3, 1.0) : 0.0;
  m.remove_step = random.integer(0, 1) == 0 ? -random.integer(1, 12) : 0;
  m.remove_min = random.log_uniform(1e-6, 1e-2);
  m.reduction_index = a.reduced ? random.integer(0, 3) : 0;
  for (std::size_t i = 0; i < 3; ++i) {
    m.nl_spring[i] = random.integer(0, 4);
    m.remove_step_spring[i] = random.integer(-10, 0);
  }
}

HINGE_RECORD describe_hinge(const analysis& a, int elem) {
  seeded_random random = numbers_of(a, elem, HINGE);
  HINGE_RECORD h{};
  h.HINGE_MODEL = random.integer(0, 9) == 0 ? 0 : 1;
  h.CURVE_KIND = 1 + elem / 8 % 3;
  h.FORCE_SET = random.integer(1, 7);
  h.CAP_P = random.uniform(90.0, 110.0);
  h.CAP_MY = random.uniform(18.0, 22.0);
  h.CAP_MZ = random.uniform(27.0, 33.0);
  h.AXIAL_RELEASE = random.integer(0, 7) == 0 ? 1 : 0;
  h.END1_STATE = random.integer(0, 3) % 3 == 0 ? 1 : random.integer(0, 2);
  h.END2_STATE = random.integer(0, 3) % 3 == 0 ? 1 : random.integer(0, 2);
  // Segments of the force set; two at one end are sometimes parallel.
  constexpr int segments_of_set[] = {1, 2, 2, 8, 8, 4, 16};
  const int segments = segments_of_set[h.FORCE_SET - 1];
  const int most = random.integer(0, 3) == 0 ? 2 : 1;
  for (int i = 1; i <= most; ++i) {
    h.END1_SEG(i) = random.integer(1, segments);
    h.END2_SEG(i) = random.integer(i == 1 ? 1 : 0, segments);
  }
  return h;
}

void describe_property(const analysis& a, int elem, member_description& m) {
  seeded_random random = numbers_of(a, elem, PROPERTY);
  std::array<int, 6> kinds{};
  std::array<float, 6> k{};
  for (std::size_t i = 0; i < 6; ++i) {
    constexpr int all[] = {0, 0, 8, 9, 1};
    kinds[i] = all[random.integer(0, 4)];
    k[i] = static_cast<float>(random.uniform(1.0, 100.0));
  }
  if (m.family == member_family::spring) {
    m.property = support::spring_property(kinds, k);
    m.local_axes = random.integer(0, 1);
  } else {
    const int link_kind = random.integer(0, 1) == 0 ? 9 : 1;
    const int count = random.integer(0, 1), form = random.integer(0, 1);
    m.property = support::link_property(kinds, k, link_kind, count, form);
  }
}

member_family family_of(int elem) {
  constexpr member_family families[] = {member_family::beam,  member_family::truss, member_family::beam,
                                        member_family::cable, member_family::beam,  member_family::link,
                                        member_family::beam,  member_family::spring};
  static_assert(std::size(families) == every_member::PERIOD);
  return families[elem % every_member::PERIOD];
}

member_description describe(const analysis& a, int elem) {
  seeded_random random = numbers_of(a, elem, MEMBER);
  member_description m;
  m.family = family_of(elem);
  describe_section(random, m);
  describe_ends(random, m);
  describe_state(random, a, m);
  m.hinge = describe_hinge(a, elem);
  if (m.family == member_family::truss) {
    constexpr double types[] = {1.0, 10.0, 14.0};
    m.section_type = types[random.integer(0, 2)];
    m.hinge.AXIAL_RELEASE = random.integer(0, 1);
    m.pretension_stress = random.uniform(10.0, 200.0);
  }
  // Nearly everything is loaded: a cable by a case of its own, the ends of a beam by theirs.
  m.loads = random.vector(13 * 2, 5.0);
  for (std::size_t at : {12U, 25U}) m.loads[at] *= 1e-4;
  seeded_random place = numbers_of(a, elem, MEMBER_PLACE);
  m.node1 = {place.uniform(-5.0, 5.0), place.uniform(-5.0, 5.0), place.uniform(-5.0, 5.0)};
  m.node2 = {m.node1[0] + place.uniform(1.0, 4.0), m.node1[1] + place.uniform(-1.0, 1.0),
             m.node1[2] + place.uniform(-1.0, 1.0)};
  m.unstressed_length = place.uniform(1.0, 6.0);
  if (m.family == member_family::link || m.family == member_family::spring) describe_property(a, elem, m);
  return m;
}

std::vector<member_description> describe_all(const analysis& a, int elements) {
  std::vector<member_description> all;
  for (int elem = 1; elem <= elements; ++elem) all.push_back(describe(a, elem));
  return all;
}

std::vector<double> rotation_of(const analysis& a, int elem, int which) {
  seeded_random random = numbers_of(a, elem, which);
  const support::rotation R = support::random_rotation(random);
  std::vector<double> T(144, 0.0);
  for (std::size_t group = 0; group < 4; ++group) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) T[12 * (3 * group + j) + 3 * group + i] = R.at(i).at(j);
    }
  }
  return T;
}

}  // namespace

// ------------------------------------------------------------------------------------------------ the model

// Nodes and kind of the element, which the rotation of member loads reads.
void every_member::set_up_element(int elem) {
  const MODEL_DATA A = model_.A();
  const member_description& m = model_.at(elem);
  const std::int32_t I = model_.entry(elem);
  A(I) = FRAME_KINDS[elem % 3];
  A(I + MEMBER_NODE_1) = model_.node(elem, 1);
  A(I + MEMBER_NODE_2) = model_.node(elem, 2);
  seeded_random random = numbers_of(analysis_, elem, MEMBER_FORCES);
  for (std::int32_t i = 0; i < 3; ++i) {
    A(model_.node(elem, 1) + NODE_X + i) = m.node1[static_cast<std::size_t>(i)];
    A(model_.node(elem, 2) + NODE_X + i) = m.node2[static_cast<std::size_t>(i)];
    A(I + MEMBER_DIRECTION + i) = random.uniform(-1.0, 1.0);
  }
  const std::size_t place = static_cast<std::size_t>(model_.position(elem) - 1);
  for (VECTOR<12>* v : {&forces_[place].F_END, &forces_[place].F_END_STEP, &forces_[place].F_END_ITER,
                        &alt_forces_[place].F_END, &alt_forces_[place].F_END_STEP}) {
    for (double& force : v->V) force = random.uniform(-15.0, 15.0);
  }
}

void every_member::set_up_hinges() {
  const MODEL_DATA A = model_.A();
  A(ENTRY_START) = model_.entry(1);
  A(ENTRY_STRIDE) = model_.count() > 1 ? model_.entry(2) - model_.entry(1) : 0;
  SOLANAELEM.MEMBER_FORCES = REFER_TO(forces_.data(), forces_.size());
  SOLANAELEM.LOAD_STEP = 0.75;
  alt_states_[0].LOAD_STEP = 0.5;
  alt_states_[0].MEMBER_FORCES = REFER_TO(alt_forces_.data(), alt_forces_.size());
  SOLANAELEM.ALT_STATE = REFER_TO(alt_states_.data(), alt_states_.size());
}

every_member::every_member(const analysis& a, int elements)
    : analysis_(a),
      model_(describe_all(a, elements), support::company::joins),
      forces_(static_cast<std::size_t>(2 * elements + 1)),
      alt_forces_(forces_.size()),
      alt_states_(1) {
  model_.set_kind(a.second_order);
  model_.set_shear_deformation(a.number % 4 == 0 ? 0.0 : 1.0);
  model_.set_members_yield(1);
  model_.set_cold_formed(2);
  model_.set_nonlinear_springs({{40.0, 55.0}, {20.0, 30.0}, {7.0, 3.0}});
  if (a.reduced) model_.set_stiff_reduction(1, {0.9F, 0.7F, 0.45F});
  SOLANA.LOAD_FACTOR = 0.6;
  SOLANA.RIGID_K_TRANS = 1e9;
  SOLANA.RIGID_K_ROT = 1e8;
  SOLANA.MIN_K_ROT = 30.0;
  for (int elem = 1; elem <= elements; ++elem) set_up_element(elem);
  set_up_hinges();
}

// ------------------------------------------------------------------------------------------------ calls

void every_member::watch_record(int elem, observed& written) {
  written.watch(&model_.record(elem).K11_COPY, 1);
  written.watch(&model_.record(elem).PRESTRESS_FORCE, 1);
}

void every_member::call_beam(int elem, listener& to) {
  const std::vector<double> T = rotation_of(analysis_, elem, MEMBER_ROTATION),
                            T2 = rotation_of(analysis_, elem, SECOND_ROTATION);
  const std::int32_t I = model_.entry(elem), n = model_.extent();
  for (const std::int32_t mode : {0, 1, 2, 3}) {
    const std::int32_t second = mode == 3 ? 1 : 0;
    std::vector<double> K = unwritten(144), KG = unwritten(144);
    observed written;
    written.watch(K);
    written.watch(KG);
    watch_record(elem, written);
    written.watch(model_.hinge(elem).K_ELASTIC);
    tell_repeated(to, "KSTIFB", tag("mode", mode), written, [&] {
      KSTIFB(&mode, &elem, &I, model_.storage().data(), &n, T.data(), &second, T2.data(), K.data(), KG.data());
    });
    if (mode == 1) call_plastic(elem, K, to);
  }
}

void every_member::call_beam_mass(int elem, listener& to) {
  const std::vector<double> T = rotation_of(analysis_, elem, MEMBER_ROTATION),
                            T2 = rotation_of(analysis_, elem, SECOND_ROTATION);
  const std::int32_t I = model_.entry(elem), n = model_.extent(), second = elem % 3 == 0 ? 1 : 0;
  std::vector<double> M = unwritten(144);
  observed written;
  written.watch(M);
  tell_repeated(to, "KSTIFB_MASS", "", written,
                [&] { KSTIFB_MASS(&elem, &I, model_.storage().data(), &n, T.data(), &second, T2.data(), M.data()); });
}

void every_member::call_truss(int elem, listener& to) {
  const std::vector<double> T = rotation_of(analysis_, elem, MEMBER_ROTATION);
  const std::int32_t I = model_.entry(elem), n = model_.extent();
  std::vector<double> K(36), KG(36), M = unwritten(36);
  for (const std::int32_t mode : {0, 2, 1}) {
    K = unwritten(36);
    KG = unwritten(36);
    observed written;
    written.watch(K);
    written.watch(KG);
    watch_record(elem, written);
    tell_repeated(to, "KSTIFT", tag("mode", mode), written,
                  [&] { KSTIFT(&mode, &elem, &I, model_.storage().data(), &n, T.data(), K.data(), KG.data()); });
  }
  observed plastic, mass;
  plastic.watch(K);
  tell(to, "KSTIFT_PLAST", "", plastic, [&] { KSTIFT_PLAST(&elem, K.data()); });
  mass.watch(M);
  tell_repeated(to, "KSTIFT_MASS", "", mass, [&] { KSTIFT_MASS(&I, model_.storage().data(), &n, T.data(), M.data()); });
}

// Load case 3 is not there: a cable without load fails when it is slack.
void every_member::call_cable(int elem, listener& to) {
  const std::vector<double> T = rotation_of(analysis_, elem, MEMBER_ROTATION);
  const std::int32_t I = model_.entry(elem), n = model_.extent();
  for (const std::int32_t load : {0, 1, 2, 3}) {
    const std::int32_t mode = load == 1 ? 1 : 0;
    std::vector<double> K = unwritten(36), KG = unwritten(36);
    std::string msg(500, '#');
    std::int32_t ierr = -1;
    observed written;
    written.watch(K);
    written.watch(KG);
    written.watch(&ierr, 1);
    written.watch(msg.data(), 500);
    tell_repeated(to, "KSTIFT_CATENARY", tag("load", load), written, [&] {
      KSTIFT_CATENARY(&mode, &elem, &I, &load, model_.storage().data(), &n, T.data(), K.data(), KG.data(), &ierr,
                      msg.data());
    });
  }
}

void every_member::call_link_or_spring(int elem, bool link, listener& to) {
  const std::vector<double> T = rotation_of(analysis_, elem, MEMBER_ROTATION);
  const std::int32_t I = model_.entry(elem), n = model_.extent();
  for (const std::int32_t mode : {0, 1, 2}) {
    std::vector<double> K = unwritten(144), KG = unwritten(144);
    observed written;
    written.watch(K);
    written.watch(KG);
    tell_repeated(to, link ? "KSTIF_LINK" : "KSTIF_SPR", tag("mode", mode), written, [&] {
      (link ? KSTIF_LINK : KSTIF_SPR)(&mode, &elem, &I, model_.storage().data(), &n, T.data(), K.data(), KG.data());
    });
  }
}

void every_member::call_removal(int elem, listener& to) {
  const member_description& m = model_.at(elem);
  double ratio = -1.0, coefficient = -1.0;
  std::int32_t steps = -1;
  observed count, plain;
  count.watch(&ratio, 1);
  count.watch(&steps, 1);
  tell_repeated(to, "GET_N_CONVERG_TOM", "", count, [&] { GET_N_CONVERG_TOM(&m.remove_min, &ratio, &steps); });
  const std::int32_t step = -(elem % 9);
  plain.watch(&coefficient, 1);
  tell_repeated(to, "GET_COEF_REMOVE", "", plain, [&] { GET_COEF_REMOVE(&step, &m.remove_min, &coefficient); });
  for (const std::int32_t kind : {1, 8}) {
    const std::int32_t spring = 1 + elem % 4;  // the fourth is not there
    coefficient = -1.0;
    observed of_spring;
    of_spring.watch(&coefficient, 1);
    tell_repeated(to, "GET_COEF_REMOVE_SPRING", tag("kind", kind), of_spring,
                  [&] { GET_COEF_REMOVE_SPRING(&step, &m.remove_min, &spring, &kind, &coefficient); });
  }
}

void every_member::call(int elem, listener& to) {
  switch (model_.at(elem).family) {
    case member_family::beam:
      call_beam(elem, to);
      call_beam_mass(elem, to);
      break;
    case member_family::truss: call_truss(elem, to); break;
    case member_family::cable: call_cable(elem, to); break;
    case member_family::link: call_link_or_spring(elem, true, to); break;
    case member_family::spring: call_link_or_spring(elem, false, to); break;
  }
  call_removal(elem, to);
  call_hinge_forces(elem, to);
  call_equations(elem, to);
}

// ------------------------------------------------------------------------------------------------ hinges

std::string every_member::hinge_label(int elem, bool release_comes_first) {
  const HINGE_RECORD& h = model_.hinge(elem);
  constexpr std::int32_t single_forces = 1;
  const bool no_gradient = h.CURVE_KIND == single_forces ? h.FORCE_SET > 3 : h.FORCE_SET == 1;
  if (no_gradient && !(release_comes_first && h.AXIAL_RELEASE == 1))
    return std::string(ZERO_BY_RULE) + " " + tag("curve", h.CURVE_KIND);
  return tag("curve", h.CURVE_KIND) + " " + tag("set", h.FORCE_SET);
}

void every_member::call_hinge_forces(int elem, listener& to) {
  const std::int32_t n = model_.extent(), position = model_.position(elem);
  for (const std::int32_t end : {1, 2}) {
    for (const std::int32_t set : {1, 2}) {
      const std::int32_t stored = (elem + set) % 2;
      std::vector<double> f = unwritten(6);
      observed written;
      written.watch(f);
      tell_repeated(to, "GET_HINGE_FORCES", tag("end", end) + " " + tag("set", set), written, [&] {
        GET_HINGE_FORCES(&elem, model_.storage().data(), &n, &position, &stored, &end, &set, &f[0], &f[1], &f[2], &f[3],
                         &f[4], &f[5]);
      });
    }
  }
}

void every_member::call_equations(int elem, listener& to) {
  const std::int32_t n = model_.extent(), mode = analysis_.force_mode;
  std::int32_t counts[3] = {-1, -1, -1}, segments[8] = {};
  observed count, gradients;
  count.watch(counts, 3);
  count.watch(segments, 8);
  tell_repeated(to, "GET_YIELD_CURVE_EQ_COUNT", tag("curve", model_.hinge(elem).CURVE_KIND), count, [&] {
    GET_YIELD_CURVE_EQ_COUNT(&elem, model_.storage().data(), &n, &mode, &counts[0], &counts[1], &counts[2], segments,
                             segments + 4);
  });
  std::vector<double> N(12 * 10, 0.0);
  gradients.watch(N);
  tell_repeated(to, "GET_YIELD_CURVE_DERIVATIVES", hinge_label(elem, false), gradients, [&] {
    GET_YIELD_CURVE_DERIVATIVES(&elem, model_.storage().data(), &n, &mode, N.data(), &counts[0], &counts[1], &counts[2],
                                segments, segments + 4);
  });
}

// On the local stiffness that the beam has returned.
void every_member::call_plastic(int elem, const std::vector<double>& K, listener& to) {
  const std::int32_t n = model_.extent(), number = model_.number(elem);
  std::vector<double> stiffness = K, KP = unwritten(144);
  observed written;
  written.watch(stiffness);
  written.watch(KP);
  tell(to, "KSTIFB_PLAST", hinge_label(elem, true), written,
       [&] { KSTIFB_PLAST(&number, model_.storage().data(), &n, &elem, stiffness.data(), KP.data()); });
}

}  // namespace every_call
