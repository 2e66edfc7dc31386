// laws_test.cpp: what holds for every member: symmetry, rigid motions, rotations of the whole member; and what a call
// writes and takes from the heap.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "allocation_counter.h"
#include "cable_recorder.h"
#include "comparison.h"
#include "dense.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "hinge_recorder.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_beam;
using member_cases::random_truss;
using reference::column;
using reference::listed;
using reference::matrix;
using reference::real;
using reference::square;
using support::frame_model;
using support::guarded_buffer;
using support::max_norm;
using support::member_description;
using support::member_family;
using support::seeded_random;

std::vector<double> stiffness(const frame_model& model, int mode) {
  switch (model.at(1).family) {
    case member_family::beam: return model.beam(mode).K;
    case member_family::truss: return model.truss(mode).K;
    case member_family::link: return model.link(mode).K;
    default: return model.spring(mode).K;
  }
}

member_description random_link(seeded_random& random, int form) {
  member_description m;
  m.family = member_family::link;
  m.length = random.uniform(0.5, 4.0);
  std::array<float, 6> k{};
  for (float& value : k) value = static_cast<float>(random.uniform(1.0, 50.0));
  m.property = support::link_property({}, k, 0, 0, form);
  return m;
}

// One of each kind of member that resists all that it is for.
std::vector<member_description> all_members(seeded_random& random) {
  member_description fixed = random_beam(random), pinned = random_beam(random), hung = random_truss(random);
  pinned.fixity_y = {0.0, 0.6};
  pinned.fixity_z = {0.3, 1.0};
  pinned.release = {2, 1, 0, 1};
  hung.section_type = 14;
  hung.pretension_stress = 100.0;
  return {fixed, pinned, hung, random_link(random, 0), random_link(random, 1)};
}

// Rigid motions of a truss: the translations, for its other degrees of freedom are not there.
matrix rigid_motions_of(const member_description& m, bool string) {
  const matrix all = reference::rigid_motions(m.length);
  if (m.family != member_family::truss) return all;
  matrix R(6, 6);
  R.topRows(3) = all.topRows(3);
  R.bottomRows(3) = all.middleRows(6, 3);
  return string ? matrix(R.leftCols(3)) : R;
}

double norm(const matrix& K) { return static_cast<double>(K.cwiseAbs().maxCoeff()); }

}  // namespace

TEST(FrameLaws, MatricesAreSymmetric) {
  seeded_random random(5001);
  for (int trial = 0; trial < 20; ++trial) {
    for (member_description m : all_members(random)) {
      m.axial_force = random.uniform(-1e3, 1e3);
      frame_model model({m});
      model.set_kind(1);
      model.set_shear_deformation(1.0);
      const std::vector<double> K = stiffness(model, 1);
      model.set_rotation(member_cases::full_transformation(random));
      for (const int mode : {0, 2}) {
        const std::vector<double> turned = stiffness(model, mode);
        EXPECT_CLOSE(turned, support::transposed(turned), max_norm(turned), 30);
      }
      EXPECT_CLOSE(K, support::transposed(K), max_norm(K), 4);
    }
  }
}

TEST(FrameLaws, RigidMotionsMeetNoForce) {
  // In the solver's axes, over fifty rotations; without geometric stiffness, and without pretension of a truss its
  // rotations too. A link whose form is given by blocks knows no length: its rotations are left out.
  seeded_random random(5002);
  for (int trial = 0; trial < 50; ++trial) {
    for (member_description m : all_members(random)) {
      frame_model model({m});
      model.set_shear_deformation(1.0);
      const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
      model.set_rotation(T);
      const std::vector<double> K = stiffness(model, 2);
      const bool blocks = m.family == member_family::link && m.property[5] != 0;
      matrix motions = rigid_motions_of(m, m.section_type == 14.0);
      if (blocks) motions = motions.leftCols(4);
      // To the solver's axes: u = T^T u_local.
      const matrix R = square(T).topLeftCorner(motions.rows(), motions.rows());
      const matrix forces = square(K) * (R.transpose() * motions);
      EXPECT_CLOSE(listed(forces), std::vector<double>(static_cast<std::size_t>(forces.size()), 0.0),
                   max_norm(K) * (1 + m.length), 20);
    }
  }
}

TEST(FrameLaws, AReleasedOrPinnedMemberPassesRigidMotionsToo) {
  seeded_random random(5003);
  for (int codes = 0; codes < 81; ++codes) {
    member_description m = random_beam(random);
    m.release = {codes % 3, codes / 3 % 3, codes / 9 % 3, codes / 27};
    m.fixity_y = {member_cases::random_fixity(random), member_cases::random_fixity(random)};
    m.fixity_z = {member_cases::random_fixity(random), member_cases::random_fixity(random)};
    frame_model model({m});
    model.set_shear_deformation(1.0);
    const std::vector<double> K = model.beam(1).K;
    const matrix forces = square(K) * reference::rigid_motions(m.length);
    // What releases leave is the rounding of the whole member.
    const matrix whole = reference::beam_stiffness(reference::properties_of(m, true), m);
    EXPECT_CLOSE(listed(forces), std::vector<double>(72, 0.0), norm(whole) * (1 + m.length), 30) << codes;
  }
}

TEST(FrameLaws, RotationOfTheWholeMemberTurnsItsForces) {
  // The energy of a motion of the member is that of the turned motion of the turned member.
  seeded_random random(5004);
  for (int trial = 0; trial < 50; ++trial) {
    for (const member_description& m : all_members(random)) {
      frame_model model({m});
      const std::vector<double> first = member_cases::node_rotation(support::random_rotation(random));
      const std::vector<double> second = member_cases::node_rotation(support::random_rotation(random));
      model.set_rotation(first);
      const matrix K1 = square(stiffness(model, 2));
      model.set_rotation(second);
      const matrix K2 = square(stiffness(model, 2));
      const dense::index n = K1.rows();
      const matrix turn = square(second).topLeftCorner(n, n).transpose() * square(first).topLeftCorner(n, n);
      const matrix expected = turn.transpose() * K2 * turn;
      EXPECT_CLOSE(listed(K1), listed(expected), norm(expected), 40);
    }
  }
}

TEST(FrameLaws, AWholeBeamResistsSixMotionsAndNoOther) {
  seeded_random random(5005);
  for (int trial = 0; trial < 20; ++trial) {
    const member_description m = random_beam(random);
    frame_model model({m});
    model.set_shear_deformation(1.0);
    matrix K = square(model.beam(1).K);
    // Scaled to a unit diagonal, so that small stiffnesses count as large ones do.
    const column d = K.diagonal().cwiseSqrt().cwiseInverse();
    K = (d.asDiagonal() * K * d.asDiagonal());
    const dense::eigen_system solver(K);
    for (dense::index i = 0; i < 6; ++i) EXPECT_LT(std::fabs(static_cast<double>(solver.eigenvalues()(i))), 1e-13);
    EXPECT_GT(static_cast<double>(solver.eigenvalues()(6)), 1e-3);
  }
}

TEST(FrameLaws, MassIsNotNegative) {
  seeded_random random(5006);
  for (int trial = 0; trial < 20; ++trial) {
    const member_description m = random_beam(random);
    frame_model model({m});
    model.set_rotation(member_cases::node_rotation(support::random_rotation(random)));
    for (const int form : {0, 1}) {
      model.set_lumped_mass(form);
      const matrix M = square(model.beam_mass());
      const dense::eigen_system solver(M);
      EXPECT_GT(static_cast<double>(solver.eigenvalues()(0)), form == 0 ? 0.0 : -1e-15 * norm(M));
    }
  }
}

namespace {

// Every call that has matrices as results, with the place of each.
struct call_case {
  std::string name;
  int entries;
  std::function<void(const frame_model&, double*, double*)> call;
};

std::vector<call_case> calls_of(const frame_model& model) {
  switch (model.at(1).family) {
    case member_family::beam:
      return {{"KSTIFB mode 0", 144, [](const frame_model& f, double* K, double* G) { f.beam_call(0, 1, K, G); }},
              {"KSTIFB mode 1", 144, [](const frame_model& f, double* K, double* G) { f.beam_call(1, 1, K, G); }},
              {"KSTIFB mode 2", 144, [](const frame_model& f, double* K, double* G) { f.beam_call(2, 1, K, G); }},
              {"KSTIFB_MASS", 144, [](const frame_model& f, double* M, double* second) {
                 f.beam_mass_call(1, M);
                 f.beam_mass_call(1, second);
               }}};
    case member_family::truss:
      return {{"KSTIFT mode 0", 36, [](const frame_model& f, double* K, double* G) { f.truss_call(0, 1, K, G); }},
              {"KSTIFT mode 1", 36, [](const frame_model& f, double* K, double* G) { f.truss_call(1, 1, K, G); }},
              {"KSTIFT_MASS", 36, [](const frame_model& f, double* M, double* second) {
                 f.truss_mass_call(1, M);
                 f.truss_mass_call(1, second);
               }}};
    case member_family::link:
      return {{"KSTIF_LINK", 144, [](const frame_model& f, double* K, double* G) { f.link_call(0, 1, K, G); }}};
    case member_family::spring:
      return {{"KSTIF_SPR", 144, [](const frame_model& f, double* K, double* G) { f.spring_call(0, 1, K, G); }}};
    default:
      return {{"KSTIFT_CATENARY", 36, [](const frame_model& f, double* K, double* G) {
                 std::int32_t ierr = 0;
                 static char msg[500];
                 f.cable_call(1, 1, 0, K, G, &ierr, msg);
               }}};
  }
}

// An output between bands of ordinary numbers: NaN stays what it is when something multiplies it or adds to
// it, an ordinary number does not.
class numbered_buffer {
 public:
  explicit numbered_buffer(int entries) : storage_(static_cast<std::size_t>(entries) + 2 * BAND, 5.0) {}
  double* data() { return storage_.data() + BAND; }
  bool bands_hold() const {
    for (std::size_t i = 0; i < BAND; ++i) {
      if (storage_[i] != 5.0 || storage_[storage_.size() - 1 - i] != 5.0) return false;
    }
    return true;
  }

 private:
  static constexpr std::size_t BAND = 32;
  std::vector<double> storage_;
};

std::vector<member_description> every_family(seeded_random& random) {
  std::vector<member_description> all = all_members(random);
  member_description spring = all[3], cable = random_truss(random);
  spring.family = member_family::spring;
  spring.local_axes = 1.0;
  cable.family = member_family::cable;
  all.push_back(spring);
  all.push_back(cable);
  for (member_description& m : all) m.axial_force = 123.0;
  return all;
}

}  // namespace

TEST(FrameCalls, EveryEntryIsWrittenAndNothingBesides) {
  seeded_random random(5007);
  cable_recorder::reset();
  for (const member_description& m : every_family(random)) {
    for (const double kind : {0.0, 1.0, 3.0}) {
      frame_model model({m});
      model.set_kind(kind);
      model.set_rotation(member_cases::block_rotation(random));
      for (const call_case& c : calls_of(model)) {
        guarded_buffer K(c.entries), KG(c.entries);
        c.call(model, K.data(), KG.data());
        EXPECT_EQ(K.changed(), support::range(1, c.entries)) << c.name;
        EXPECT_EQ(KG.changed(), support::range(1, c.entries)) << c.name;
        numbered_buffer first(c.entries), second(c.entries);
        c.call(model, first.data(), second.data());
        EXPECT_TRUE(first.bands_hold() && second.bands_hold()) << c.name;
      }
    }
  }
}

TEST(FrameCalls, GeometricMatrixWritesItsEntriesAlone) {
  const double P = 2.0, L = 3.0, one = 1.0, half = 0.5;
  for (const double force : {P, 0.0}) {
    for (const std::int32_t semi : {0, 1}) {
      guarded_buffer KG(144);
      const std::int32_t none = 0;
      KSTIFB_GEOM(&force, &L, &one, &one, &one, &one, &semi, &none, &none, &none, &half, &half, &half, &half,
                  KG.data());
      EXPECT_EQ(KG.changed(), support::range(1, 144));
      numbered_buffer again(144);
      KSTIFB_GEOM(&force, &L, &one, &one, &one, &one, &semi, &none, &none, &none, &half, &half, &half, &half,
                  again.data());
      EXPECT_TRUE(again.bands_hold());
    }
  }
}

TEST(FrameCalls, NothingIsTakenFromTheHeap) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  seeded_random random(5008);
  hinge_recorder::reset();
  for (const member_description& m : every_family(random)) {
    for (const double kind : {0.0, 1.0, 3.0}) {
      for (const bool full : {false, true}) {
        frame_model model({m});
        model.set_kind(kind);
        model.set_rotation(full ? member_cases::full_transformation(random) : member_cases::block_rotation(random));
        model.set_second_transformation(1, member_cases::full_transformation(random));
        for (const call_case& c : calls_of(model)) {
          std::vector<double> K(144), KG(144);
          const support::allocation_counter counter;
          c.call(model, K.data(), KG.data());
          EXPECT_EQ(counter.count(), 0) << c.name;
        }
      }
    }
  }
}

TEST(FrameCalls, SmallRoutinesTakeNothingFromTheHeap) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  frame_model model({member_description{}});
  std::vector<double> K(900, 1.0);
  const std::int32_t n = 30, d = 4, elem = 1, step = -3, index = 0, kind = 0;
  const double least = 1e-3;
  double value = 0.0;
  std::int32_t count = 0;
  const support::allocation_counter counter;
  RELEASE_DOF(&d, K.data(), &n);
  RELEASE_DOF_MAS(&d, K.data());
  KSTIFT_PLAST(&elem, K.data());
  GET_N_CONVERG_TOM(&least, &value, &count);
  GET_COEF_REMOVE(&step, &least, &value);
  GET_COEF_REMOVE_SPRING(&step, &least, &index, &kind, &value);
  EXPECT_EQ(counter.count(), 0);
}
