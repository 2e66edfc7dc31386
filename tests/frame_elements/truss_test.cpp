// truss_test.cpp: the two-node axial element: stiffness, pretension, string matrix, yield, mass.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_truss;
using reference::listed;
using reference::matrix;
using reference::real;
using reference::turned;
using support::frame_model;
using support::guarded_buffer;
using support::max_norm;
using support::member_description;
using support::member_matrices;
using support::seeded_random;

double at(const std::vector<double>& K, int i, int j) { return K[static_cast<std::size_t>((j - 1) * 6 + i - 1)]; }

matrix axial(real k) {
  matrix K = matrix::Zero(6, 6);
  K(0, 0) = K(3, 3) = k;
  K(0, 3) = K(3, 0) = -k;
  return K;
}

// A string under tension P: its ends pull across by P times the difference of their displacements over the length.
matrix string(real P, real L) {
  matrix K = matrix::Zero(6, 6);
  for (const int d : {1, 2}) {
    K(d, d) = K(d + 3, d + 3) = P / L;
    K(d, d + 3) = K(d + 3, d) = -P / L;
  }
  return K;
}

double norm(const matrix& K) { return static_cast<double>(K.cwiseAbs().maxCoeff()); }

// The states of a truss of type 10 that soften it.
member_description yielding(int model, int end1, int end2, int release) {
  member_description m;
  m.family = support::member_family::truss;
  m.section_type = 10;
  m.hinge.HINGE_MODEL = model;
  m.hinge.END1_STATE = end1;
  m.hinge.END2_STATE = end2;
  m.hinge.AXIAL_RELEASE = release;
  return m;
}

}  // namespace

TEST(Truss, TableOfModesKindsAndSectionTypes) {
  seeded_random random(4701);
  for (const int mode : {0, 1, 2, -1}) {
    for (const int kind : {0, 1, 2, 3}) {
      for (const int type : {1, 10, 14}) {
        for (const double tau : {0.0, 0.3}) {
          SCOPED_TRACE(::testing::Message() << "mode " << mode << ", kind " << kind << ", type " << type);
          member_description m = random_truss(random);
          m.section_type = type;
          m.tau_b = tau;
          m.remove_step = -2;
          m.pretension_stress = random.uniform(1e2, 1e4);
          m.axial_force = random.uniform(-1e3, -1e2);
          frame_model model({m, m});
          model.set_kind(kind);
          const std::vector<double> T =
              kind % 2 == 0 ? member_cases::full_transformation(random) : member_cases::block_rotation(random);
          model.set_rotation(T);
          const real L = m.length, coefficient = mode == 0 ? 0.25 : 1;
          const real A = real(m.area) * m.factor_area * (tau > 0 ? real(0.8) : 1) * coefficient;
          const real P0 = type == 14 ? A * m.pretension_stress : 0;
          matrix K = axial(A * m.e1 / L), G = matrix::Zero(6, 6);
          const double k11 = static_cast<double>(K(0, 0));
          if (mode == 0 || kind != 1) K += string(P0, L);
          if (mode == 0 && (kind == 1 || kind == 3)) G = string(m.axial_force, L);
          if (kind == 1) K += G;
          if (mode != 1) {
            K = turned(K, T);
            G = turned(G, T);
          }
          const member_matrices actual = model.truss(mode, 2);
          EXPECT_CLOSE(actual.K, listed(K), norm(K), 40);
          EXPECT_CLOSE(actual.KG, listed(G), norm(G), 40);
          EXPECT_CLOSE(model.record(2).K11_COPY, k11, k11, 8);
          EXPECT_CLOSE(model.record(2).PRESTRESS_FORCE, static_cast<double>(P0), static_cast<double>(P0), 8);
          EXPECT_TRUE(std::isnan(model.record(1).K11_COPY));
        }
      }
    }
  }
}

TEST(Truss, ModeOneWithKindOneHasNoPretensionMatrix) {
  member_description m;
  m.family = support::member_family::truss;
  m.section_type = 14;
  m.pretension_stress = 500.0;
  frame_model model({m});
  const double q = m.area * 500.0 / m.length;
  for (const int kind : {0, 1, 2, 3}) {
    model.set_kind(kind);
    EXPECT_EQ(at(model.truss(1).K, 2, 2), kind == 1 ? 0.0 : q) << kind;
    EXPECT_EQ(at(model.truss(0).K, 2, 2), q) << kind;
    // The other modes go by the kind too: only 0 adds it for kind 1.
    EXPECT_EQ(at(model.truss(2).K, 3, 3), kind == 1 ? 0.0 : q) << kind;
    EXPECT_EQ(model.record().PRESTRESS_FORCE, m.area * 500.0) << kind;  // known all the same
  }
}

TEST(Truss, PretensionShedsWithTheElement) {
  member_description m;
  m.family = support::member_family::truss;
  m.section_type = 14;
  m.pretension_stress = 500.0;
  m.remove_min = 0.01;
  m.remove_step = -90;
  frame_model model({m});
  const std::vector<double> K = model.truss(0).K;
  EXPECT_CLOSE(model.record().PRESTRESS_FORCE, m.area * 0.01 * 500.0, 0.1, 4);
  EXPECT_CLOSE(at(K, 2, 2), m.area * 0.01 * 500.0 / 3.0, 0.03, 4);
  EXPECT_CLOSE(at(K, 1, 1), m.area * 0.01 * m.e1 / 3.0, at(K, 1, 1), 4);
}

TEST(Truss, TauBCountsFourFifthsWhateverItsValueAndSection) {
  for (const double tau : {1e-9, 0.5, 7.0, 0.0, -1.0}) {
    for (const int type : {1, 5}) {
      member_description m;
      m.family = support::member_family::truss;
      m.tau_b = tau;
      m.section_type = type;
      frame_model model({m});
      model.set_cold_formed(5);
      const double expected = m.area * (tau > 0 ? 0.8 : 1.0) * m.e1 / m.length;
      EXPECT_CLOSE(at(model.truss(1).K, 1, 1), expected, expected, 2) << tau << ", " << type;
    }
  }
}

TEST(Truss, StringMatrixIsBuiltOfTheStoredForce) {
  member_description m;
  m.family = support::member_family::truss;
  m.length = 4.0;
  for (const double P : {8.0, -8.0, 0.0}) {
    m.axial_force = P;
    frame_model model({m});
    model.set_kind(3);
    const std::vector<double> G = model.truss(0).KG;
    for (int j = 1; j <= 6; ++j) {
      for (int i = 1; i <= 6; ++i) {
        const bool across = (i - 1) % 3 == (j - 1) % 3 && i % 3 != 1;
        EXPECT_EQ(at(G, i, j), across ? (i == j ? P / 4 : -P / 4) : 0.0) << i << ", " << j;
      }
    }
  }
}

TEST(Truss, YieldTable) {
  // Softened: a hinge model, ends neither both whole nor both apart, and an axial release.
  for (const int model : {0, 1, 2}) {
    for (const int end1 : {0, 1, 2, 3}) {
      for (const int end2 : {0, 1, 2, 3}) {
        for (const int release : {0, 1, 2}) {
          const bool whole = end1 == 0 && end2 == 0, apart = end1 == 2 && end2 == 2;
          const bool softened = model == 1 && !whole && !apart && release == 1;
          frame_model frame({yielding(0, 0, 0, 0), yielding(model, end1, end2, release)});
          std::vector<double> K(36);
          for (std::size_t i = 0; i < 36; ++i) K[i] = 100.0 + static_cast<double>(i);
          std::vector<double> expected = K;
          for (const std::size_t p : {0U, 3U, 18U, 21U}) expected[p] *= softened ? 1e-06 : 1.0;
          guarded_buffer buffer(36);
          buffer.set_input(K);
          const std::int32_t elem = 2;
          KSTIFT_PLAST(&elem, buffer.data());
          EXPECT_EQ(support::values(buffer.data(), 36), expected)
              << model << " " << end1 << " " << end2 << " " << release;
          for (const int position : buffer.changed()) EXPECT_TRUE(softened && position >= 1 && position <= 22);
        }
      }
    }
  }
}

TEST(Truss, WithoutAHingeRecordNothingYields) {
  for (const bool allocated : {false, true}) {
    frame_model frame({yielding(1, 1, 2, 1), yielding(1, 1, 2, 1)});
    frame.set_kind(1);
    frame.set_members_yield(1);
    SOLANAELEM.HINGE_REC.BASE = nullptr;  // whoever looks, falls
    SOLANAELEM.HINGE_REC.ALLOCATED_FLAG = allocated ? 1 : 0;
    if (allocated) SOLANAELEM.HINGE_REC.DIMENSION[0].EXTENT = frame.position(2) - 1;
    guarded_buffer buffer(36);
    const std::vector<double> K(36, 7.0);
    buffer.set_input(K);
    const std::int32_t elem = 2;
    KSTIFT_PLAST(&elem, buffer.data());
    EXPECT_EQ(support::values(buffer.data(), 36), K);
    EXPECT_TRUE(buffer.changed().empty());
    const member_description& m = frame.at(2);
    const double k = m.area * m.e1 / m.length;
    EXPECT_CLOSE(frame.truss(1, 2).K, listed(axial(k)), k, 4);
  }
}

TEST(Truss, YieldNeedsTypeTenKindOneAndYieldingMembers) {
  for (const int type : {1, 10, 14}) {
    for (const int kind : {0, 1, 3}) {
      for (const int yield : {0, 1, 2}) {
        for (const int mode : {0, 1, 2}) {
          member_description m = yielding(1, 1, 2, 1);
          m.section_type = type;
          frame_model model({m});
          model.set_kind(kind);
          model.set_members_yield(yield);
          const bool softened = type == 10 && kind == 1 && yield == 1;
          const double k = m.area * m.e1 / m.length;
          const std::vector<double> K = model.truss(mode).K;
          const double share = softened ? 1e-06 : 1.0;
          EXPECT_CLOSE(K, listed(axial(k * share)), k * share, 4) << type << kind << yield << mode;
          EXPECT_EQ(model.record().K11_COPY, k);  // before the yield
        }
      }
    }
  }
}

TEST(Truss, YieldLeavesTheStringMatrixOfTheForce) {
  member_description m = yielding(1, 0, 1, 1);
  m.axial_force = 90.0;
  frame_model model({m});
  model.set_kind(1);
  model.set_members_yield(1);
  const std::vector<double> K = model.truss(0).K;
  EXPECT_EQ(at(K, 2, 2), 30.0);
  EXPECT_EQ(at(K, 6, 3), -30.0);
  EXPECT_CLOSE(at(K, 4, 1), -1e-6 * m.area * m.e1 / 3.0, 1e-3, 4);
}

TEST(Truss, MassForms) {
  member_description m;
  m.family = support::member_family::truss;
  m.weight = 981.0;
  m.length = std::nan("");
  for (const int form : {0, 1, 2}) {
    frame_model model({m});
    model.set_lumped_mass(form);
    const std::vector<double> M = model.truss_mass();
    const double mass = 981.0 / 9810.0;
    for (int j = 1; j <= 6; ++j) {
      for (int i = 1; i <= 6; ++i) {
        const double entry = i == j ? (form == 0 ? 1.0 / 3.0 : 0.5) : i % 3 == j % 3 && form == 0 ? 1.0 / 6.0 : 0.0;
        EXPECT_CLOSE(at(M, i, j), entry * mass, mass, 2) << form << ": " << i << ", " << j;
      }
    }
  }
}

TEST(Truss, MassNeedsNoElementAndIsAlwaysTurned) {
  // Its records may be anything: the routine has no element index.
  seeded_random random(4702);
  for (const int form : {0, 1}) {
    const member_description m = random_truss(random);
    frame_model model({m});
    model.set_lumped_mass(form);
    const matrix local = reference::square(model.truss_mass());
    SOLANAELEM.ELEM_POS.ALLOCATED_FLAG = 0;
    SOLANAELEM.ELEM_POS.BASE = nullptr;
    SOLANAELEM.MEMBER_REC.BASE = nullptr;
    const std::vector<double> T = member_cases::full_transformation(random);
    model.set_rotation(T);
    const matrix expected = turned(local, T);
    EXPECT_CLOSE(model.truss_mass(), listed(expected), norm(expected), 60);
  }
}

TEST(Truss, MassTotals) {
  seeded_random random(4703);
  const member_description m = random_truss(random);
  frame_model model({m});
  for (const int form : {0, 1}) {
    model.set_lumped_mass(form);
    model.set_rotation(member_cases::node_rotation(support::random_rotation(random)));
    const std::vector<double> M = model.truss_mass();
    for (int d = 1; d <= 3; ++d) {
      const double total = at(M, d, d) + at(M, d + 3, d) + at(M, d, d + 3) + at(M, d + 3, d + 3);
      EXPECT_CLOSE(total, m.weight / 9810.0, m.weight / 9810.0, 16);
    }
  }
}
