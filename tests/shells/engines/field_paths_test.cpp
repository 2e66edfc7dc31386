// field_paths_test.cpp: forces and records of elastic elements come from the polynomials of their fields where all is
// finite, and from the strain matrices elsewhere. Both are compared with the strain matrices, place by place, for NaN
// and infinities in every value that an element takes.
#include <functional>

#include "broken_values.h"
#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"

using support::seeded_random;

namespace {

// What an operation writes, and whether the fields gave it.
struct answer {
  std::vector<double> values;
  bool of_fields;
};

template <class ELEMENT>
ELEMENT prepared(const element_call& call, const double* xyz) {
  ELEMENT e(PLATEELEM, call.LOADS, call.kind == 12 || call.kind == 22 ? 1 : 0);
  if (!isotropic(PLATEELEM)) set_thermal_strains(PLATEELEM, call.LOADS);
  e.set_geometry(xyz, SIDE_COEFFICIENTS::WANTED);
  set_section(e, NO_PLATE_STATE);
  e.split_displacements(call.U.data());
  return e;
}

// With the strain matrices. The columns of records that no element writes stay 0.
template <class ELEMENT>
answer by_matrices(const element_call& call, int op) {
  double xyz[12] = {};
  double* at = xyz;
  for (const support::point& node : call.element.nodes) at = std::copy(node.begin(), node.end(), at);
  ELEMENT e = prepared<ELEMENT>(call, xyz);
  if (op == OP_RESULTS) {
    std::vector<double> records(720);
    if (isotropic(PLATEELEM)) {
      e.results_isotropic(records.data(), records.data() + 360);
    } else {
      e.results_general(records.data(), records.data() + 360);
    }
    std::vector<double> again(720);
    return {records, e.results_of_fields(call.U.data(), again.data(), again.data() + 360)};
  }
  std::vector<double> f(24), again(24);
  if (isotropic(PLATEELEM)) {
    e.forces_isotropic(op, f.data());
  } else {
    e.forces_general(op, f.data());
  }
  return {f, e.forces_of_fields(op, call.U.data(), again.data())};
}

answer by_matrices(const element_call& call, int op) {
  const bool thick = call.kind == 11 || call.kind == 21;
  if (call.element.nodes.size() == 3) return thick ? by_matrices<TRI_THICK>(call, op) : by_matrices<TRI_THIN>(call, op);
  return thick ? by_matrices<QUAD_THICK>(call, op) : by_matrices<QUAD_THIN>(call, op);
}

// By the engine.
std::vector<double> by_engine(element_call& call, int op) {
  call.run(op);
  std::vector<double> out;
  if (op != OP_RESULTS) {
    for (int i = 1; i <= 24; ++i) out.push_back(call.F(i));
    return out;
  }
  for (const support::guarded_buffer* records : {&call.nodes, &call.points}) {
    for (int i = 1; i <= 360; ++i) out.push_back((*records)(i));
  }
  return out;
}

// The columns of a record by their units: places, strains, stresses, angles, forces, moments, transverse shear.
std::size_t unit_of(std::size_t column) {
  const auto within = [column](std::size_t first, std::size_t last) { return column >= first && column <= last; };
  if (column <= 3) return 0;
  if (within(4, 6) || within(15, 17) || within(26, 28)) return 1;
  if (column == 10 || column == 21 || column == 32) return 2;
  if (within(37, 39)) return 3;
  if (within(40, 42)) return 4;
  if (within(43, 44)) return 5;
  if (within(45, 46)) return 6;
  return within(47, 48) ? 7 : 8;
}

std::vector<std::vector<double>> parts_of(const std::vector<double>& values, std::size_t nodes) {
  if (values.size() == 24) return {values};
  std::vector<std::vector<double>> parts(9);
  for (std::size_t block = 0; block < 8; ++block) {
    if (block == 3 && nodes == 3) continue;
    for (std::size_t column = 1; column <= 62; ++column) {
      parts[unit_of(column)].push_back(values[90 * block + column - 1]);
    }
  }
  return parts;
}

void expect_same(const std::vector<double>& actual, const std::vector<double>& expected, std::size_t nodes) {
  const std::vector<std::vector<double>> parts = parts_of(actual, nodes);
  const std::vector<std::vector<double>> wanted = parts_of(expected, nodes);
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    SCOPED_TRACE(::testing::Message() << "part " << i);
    support::expect_same_places(parts[i], wanted[i]);
  }
}

constexpr int OPERATIONS[] = {OP_FORCES, OP_FORCES_COMMIT, OP_RESULTS};

using change = std::function<void(support::plate_description&, std::vector<double>&, ELEM_LOADS&)>;

// The element with one thing changed, by engine and by matrices.
void expect_same_path(const element_subject& s, const change& change_one, bool fields_give_it, seeded_random& random) {
  for (const int op : OPERATIONS) {
    SCOPED_TRACE(::testing::Message() << s.name << ", operation " << op);
    support::plate_description d = random_element(random, s);
    std::vector<double> U = random.vector(24, 1.0);
    ELEM_LOADS loads{};
    change_one(d, U, loads);
    element_call call(d);
    call.U = U;
    for (const int at : {LOAD_FOUNDATION, LOAD_TEMPERATURE, LOAD_TEMPERATURE_DIFF}) call.LOADS(at) = loads(at);
    const std::vector<double> actual = by_engine(call, op);
    const answer wanted = by_matrices(call, op);
    expect_same(actual, wanted.values, d.nodes.size());
    EXPECT_EQ(wanted.of_fields, fields_give_it);
  }
}

}  // namespace

TEST(FieldPaths, OfAnOrdinaryElementAreTheStrainMatrices) {
  seeded_random random(611);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 20; ++trial) {
      expect_same_path(
          s,
          [](support::plate_description&, std::vector<double>&, ELEM_LOADS& loads) {
            loads(LOAD_TEMPERATURE) = 15.0;
            loads(LOAD_TEMPERATURE_DIFF) = -7.0;
          },
          true, random);
    }
  }
}

TEST(FieldPaths, CarryBrokenDisplacementsAsTheStrainMatricesDo) {
  seeded_random random(612);
  for (const element_subject& s : subjects()) {
    const std::size_t order = s.nodes == 3 ? 18 : 24;
    for (const double broken : support::BROKEN) {
      for (std::size_t i = 0; i < order; ++i) {
        SCOPED_TRACE(::testing::Message() << "displacement " << i << " is " << broken);
        expect_same_path(
            s, [=](support::plate_description&, std::vector<double>& U, ELEM_LOADS&) { U[i] = broken; }, false, random);
      }
    }
  }
}

TEST(FieldPaths, CarryBrokenSectionsAndNodesAsTheStrainMatricesDo) {
  seeded_random random(613);
  for (const element_subject& s : subjects()) {
    for (const double broken : support::BROKEN) {
      // Moduli of other sections stand in their records.
      for (int field = 0; field < (s.isotropic() ? 5 : 3); ++field) {
        SCOPED_TRACE(::testing::Message() << "field " << field << " is " << broken);
        expect_same_path(
            s,
            [=](support::plate_description& d, std::vector<double>&, ELEM_LOADS&) {
              double* const fields[] = {&d.thickness, &d.modifier_membrane, &d.nodes[2][1], &d.young, &d.poisson};
              *fields[field] = broken;
            },
            false, random);
      }
    }
  }
}

// The moments of an infinite bending modifier, and a shear modifier that makes the ratio of a side NaN.
TEST(FieldPaths, CarryBrokenModifiersOfThickPlatesAsTheStrainMatricesDo) {
  seeded_random random(614);
  for (const element_subject& s : subjects()) {
    if (!s.thick()) continue;
    for (const double broken : support::BROKEN) {
      for (const bool of_shear : {false, true}) {
        SCOPED_TRACE(::testing::Message() << (of_shear ? "shear " : "bending ") << broken);
        expect_same_path(
            s,
            [=](support::plate_description& d, std::vector<double>&, ELEM_LOADS&) {
              (of_shear ? d.modifier_shear : d.modifier_bending) = broken;
            },
            false, random);
      }
    }
  }
}

TEST(FieldPaths, OfADegenerateElementAreTheStrainMatrices) {
  seeded_random random(615);
  for (const element_subject& s : subjects()) {
    for (std::size_t node = 1; node < static_cast<std::size_t>(s.nodes); ++node) {
      SCOPED_TRACE(::testing::Message() << "node " << node + 1 << " on the one before it");
      expect_same_path(
          s,
          [=](support::plate_description& d, std::vector<double>&, ELEM_LOADS&) { d.nodes[node] = d.nodes[node - 1]; },
          false, random);
    }
  }
}

// Forces of a plate without thickness are zero on both ways; its stresses divide by it, as the ratio of a side does by
// the shear section of a general one.
TEST(FieldPaths, OfNoThicknessAreTheStrainMatrices) {
  seeded_random random(619);
  for (const element_subject& s : subjects()) {
    for (const int op : OPERATIONS) {
      support::plate_description d = random_element(random, s);
      d.thickness = 0.0;
      element_call call(d);
      call.U = random.vector(24, 1.0);
      const std::vector<double> actual = by_engine(call, op);
      const answer wanted = by_matrices(call, op);
      expect_same(actual, wanted.values, d.nodes.size());
      EXPECT_EQ(wanted.of_fields, op != OP_RESULTS && (s.isotropic() || !s.thick()));
    }
  }
}

// Products that overflow on one way and not on the other leave nothing finite that is wrong.
TEST(FieldPaths, OfHugeDisplacementsAreTheStrainMatrices) {
  seeded_random random(616);
  for (const element_subject& s : subjects()) {
    for (const double huge : {1e200, 1e300, 1e307}) {
      for (const int op : OPERATIONS) {
        SCOPED_TRACE(::testing::Message() << s.name << ", operation " << op << ", " << huge);
        element_call call(random_element(random, s));
        call.U = random.vector(24, huge);
        const std::vector<double> actual = by_engine(call, op);
        const answer wanted = by_matrices(call, op);
        if (!wanted.of_fields) expect_same(actual, wanted.values, call.element.nodes.size());
      }
    }
  }
}

TEST(FieldPaths, LeaveAFoundationToTheStrainMatrices) {
  seeded_random random(617);
  for (const element_subject& s : subjects()) {
    for (const int op : {OP_FORCES, OP_FORCES_COMMIT}) {
      element_call call(random_element(random, s));
      call.U = random.vector(24, 1.0);
      call.LOADS(LOAD_FOUNDATION) = 3.0;
      const std::vector<double> actual = by_engine(call, op);
      const answer wanted = by_matrices(call, op);
      expect_same(actual, wanted.values, call.element.nodes.size());
      EXPECT_FALSE(wanted.of_fields);
    }
  }
}

TEST(FieldPaths, CarryBrokenTemperaturesAsTheStrainMatricesDo) {
  seeded_random random(618);
  for (const element_subject& s : subjects()) {
    for (const double broken : support::BROKEN) {
      for (const int at : {LOAD_TEMPERATURE, LOAD_TEMPERATURE_DIFF}) {
        element_call call(random_element(random, s));
        call.U = random.vector(24, 1.0);
        call.LOADS(at) = broken;
        const std::vector<double> actual = by_engine(call, OP_RESULTS);
        const answer wanted = by_matrices(call, OP_RESULTS);
        expect_same(actual, wanted.values, call.element.nodes.size());
        EXPECT_FALSE(wanted.of_fields);
      }
    }
  }
}
