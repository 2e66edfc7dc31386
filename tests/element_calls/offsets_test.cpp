// offsets_test.cpp: rigid offsets. Every operation with offsets against the element that lies where the offsets put it,
// and dense transformations built here.
//
// A node at X with the offset d holds an element node at X - d. With the rotation t of the node that point moves by
// u + t x (-d), so J = [1 W; 0 1] with W t = d x t.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "broken_values.h"
#include "comparison.h"
#include "finites/fields.h"
#include "plate_calls.h"
#include "random_shapes.h"

namespace {

using plate_calls::label;
using plate_calls::plate_description;
using plate_calls::plate_model;
using plate_calls::point;
using support::seeded_random;

constexpr std::size_t ORDER = 18;

using offsets_of_nodes = std::array<point, 3>;

enum class source { by_node, common };

plate_description with_offsets(plate_description d, source from, seeded_random& random) {
  support::add_random_offsets(random, d, 2.0);
  // The source that does not count holds what would make the result wrong.
  if (from == source::common) {
    for (point& offset : d.offsets) offset = {1e3, 1e3, 1e3};
  } else {
    d.common_offset = {1e3, 1e3, 1e3};
  }
  return d;
}

offsets_of_nodes effective(const plate_description& d, source from) {
  if (from == source::common) return {d.common_offset, d.common_offset, d.common_offset};
  return {d.offsets[0], d.offsets[1], d.offsets[2]};
}

// The same element without offsets, where they put it.
plate_description moved(plate_description d, const offsets_of_nodes& offsets) {
  for (std::size_t n = 0; n < 3; ++n) {
    for (std::size_t i = 0; i < 3; ++i) d.nodes[n][i] -= offsets[n][i];
  }
  d.offset_switch = 0;
  return d;
}

// J of every node on the diagonal, 18 by 18, packed by columns.
std::vector<double> dense_transform(const offsets_of_nodes& offsets) {
  std::vector<double> P(ORDER * ORDER, 0.0);
  for (std::size_t i = 0; i < ORDER; ++i) P[ORDER * i + i] = 1.0;
  for (std::size_t n = 0; n < 3; ++n) {
    const point& d = offsets[n];
    const double W[3][3] = {{0.0, -d[2], d[1]}, {d[2], 0.0, -d[0]}, {-d[1], d[0], 0.0}};
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) P[ORDER * (6 * n + 3 + j) + 6 * n + i] = W[i][j];
    }
  }
  return P;
}

std::vector<double> multiply(const std::vector<double>& A, const std::vector<double>& B) {
  std::vector<double> C(ORDER * ORDER, 0.0);
  for (std::size_t j = 0; j < ORDER; ++j) {
    for (std::size_t l = 0; l < ORDER; ++l) {
      for (std::size_t i = 0; i < ORDER; ++i) C[ORDER * j + i] += A[ORDER * l + i] * B[ORDER * j + l];
    }
  }
  return C;
}

// Random offsets of a description, both elements' answers to the same question, and the transformation between them.
class pair {
 public:
  pair(const plate_description& plain, source from, seeded_random& random)
      : from_(from), offset_(with_offsets(plain, from, random)), offsets_(effective(offset_, from)) {}

  template <class QUESTION>
  std::vector<double> of_offset_element(QUESTION ask) const {
    plate_model model({offset_});
    if (from_ == source::common) model.deallocate_plate_of_elem();
    return ask(model);
  }
  template <class QUESTION>
  std::vector<double> of_moved_element(QUESTION ask) const {
    plate_model model({moved(offset_, offsets_)});
    return ask(model);
  }
  std::vector<double> transform() const { return dense_transform(offsets_); }

 private:
  source from_;
  plate_description offset_;
  offsets_of_nodes offsets_;
};

template <class CHECK>
void for_all_pairs(CHECK check) {
  seeded_random random(61);
  for (const source from : {source::by_node, source::common}) {
    for (const plate_description& d : plate_calls::elastic_triangles()) {
      for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(label(d) + (from == source::common ? ", common offset" : ", offsets by node"));
        check(pair(d, from, random), random);
      }
    }
  }
}

}  // namespace

TEST(Offsets, MatricesAreThoseOfTheMovedElementTransformed) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform();
    const std::vector<double> u = random.vector(ORDER, 1e-3), u_moved = support::product(P, u);
    for (const int op : {1, 2, 7}) {
      const std::vector<double> K = elements.of_offset_element([&](plate_model& model) {
        model.set_displacements(u);
        return model.matrix(op, 1);
      });
      const std::vector<double> K_moved = elements.of_moved_element([&](plate_model& model) {
        model.set_displacements(u_moved);
        return model.matrix(op, 1);
      });
      const std::vector<double> expected = multiply(support::transposed(P), multiply(K_moved, P));
      EXPECT_GT(support::max_norm(K), 0.0);
      EXPECT_CLOSE(K, expected, support::max_norm(expected), 500.0) << "operation " << op;
    }
  });
}

TEST(Offsets, CarryInfinitiesAndNaNAsTheFullProductDoes) {
  seeded_random random(67);
  int broken_matrices = 0;
  for (const std::vector<point>& nodes :
       {plate_calls::flat_triangle(), plate_calls::space_triangle(), plate_calls::space_quadrilateral()}) {
    const auto n = static_cast<std::int32_t>(nodes.size());
    for (const double broken : support::BROKEN) {
      for (int field = 0; field < 6; ++field) {
        plate_description d = plate_calls::isotropic(nodes);
        double* const fields[] = {&d.thickness,        &d.young,       &d.modifier_membrane,
                                  &d.modifier_bending, &d.nodes[0][0], &d.nodes[2][1]};
        *fields[field] = broken;
        support::add_random_offsets(random, d, 2.0);
        plate_description at_offsets = d;
        for (std::size_t m = 0; m < nodes.size(); ++m) {
          for (std::size_t i = 0; i < 3; ++i) at_offsets.nodes[m][i] -= d.offsets[m][i];
        }
        at_offsets.offset_switch = 0;
        std::vector<double> P(static_cast<std::size_t>(36 * n * n));
        const std::array<point, 4>& o = d.offsets;
        GET_PLATE_OFFSET_P_DBL(&n, &o[0][0], &o[0][1], &o[0][2], &o[1][0], &o[1][1], &o[1][2], &o[2][0], &o[2][1],
                               &o[2][2], &o[3][0], &o[3][1], &o[3][2], P.data());
        SCOPED_TRACE(label(d) + ", field " + std::to_string(field) + " is " + std::to_string(broken));
        plate_model moved_model({at_offsets});
        const std::vector<double> K_moved = moved_model.stiffness(1);
        plate_model model({d});
        support::expect_same_places(model.stiffness(1), support::full_product(P.data(), K_moved, 6 * n));
        for (const double value : K_moved) {
          if (std::isfinite(value)) continue;
          ++broken_matrices;
          break;
        }
      }
    }
  }
  EXPECT_GT(broken_matrices, 40);  // of 54
}

TEST(Offsets, MatricesAreSymmetricToTheLastBit) {
  // Both triangles of an elastic matrix hold the same numbers, also those of one node.
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> u = random.vector(ORDER, 1e-3);
    for (const int op : {1, 2, 7}) {
      const std::vector<double> K = elements.of_offset_element([&](plate_model& model) {
        model.set_displacements(u);
        return model.matrix(op, 1);
      });
      EXPECT_EQ(K, support::transposed(K)) << "operation " << op;
    }
  });
}

TEST(Offsets, GeometricStiffnessOfStoredForcesIsTransformedToo) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform();
    const std::vector<double> stored = random.vector(24, 10.0);
    for (const int op : {71, 1}) {
      const auto ask = [&](plate_model& model) {
        model.set_header(SECOND_ORDER, 1);
        model.allocate_state();
        std::copy(stored.begin(), stored.end(), model.state(1).STORED_NODAL_FORCES.data());
        return model.matrix(op, 1);
      };
      const std::vector<double> K = elements.of_offset_element(ask);
      const std::vector<double> expected =
          multiply(support::transposed(P), multiply(elements.of_moved_element(ask), P));
      EXPECT_CLOSE(K, expected, support::max_norm(expected), 500.0) << "operation " << op;
    }
  });
}

TEST(Offsets, InternalForcesGoBackByTheTranspose) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform(), u = random.vector(ORDER, 1e-3);
    const std::vector<double> f =
        elements.of_offset_element([&](plate_model& model) { return model.internal_forces(1, u); });
    const std::vector<double> f_moved =
        elements.of_moved_element([&](plate_model& model) { return model.internal_forces(1, support::product(P, u)); });
    EXPECT_CLOSE(f, support::product(support::transposed(P), f_moved), support::max_norm(f_moved), 2000.0);
  });
}

TEST(Offsets, CommittingForcesStayInElementAxesWithoutATranspose) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform(), u = random.vector(ORDER, 1e-3);
    const std::vector<double> f =
        elements.of_offset_element([&](plate_model& model) { return model.internal_forces(1, u, 33); });
    const std::vector<double> f_moved = elements.of_moved_element(
        [&](plate_model& model) { return model.internal_forces(1, support::product(P, u), 33); });
    EXPECT_CLOSE(f, f_moved, support::max_norm(f_moved), 2000.0);
  });
}

TEST(Offsets, ResultsAreThoseOfTheMovedElement) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform(), u = random.vector(ORDER, 1e-3);
    // Stresses of the mid surface and moments, at the first node and the last point.
    const auto numbers = [](const support::plate_results& r) {
      std::vector<double> out = support::values(&r.nodes[36], 6);
      const std::vector<double> last = support::values(&r.points[3 * 90 + 36], 6);
      out.insert(out.end(), last.begin(), last.end());
      return out;
    };
    const std::vector<double> actual =
        elements.of_offset_element([&](plate_model& model) { return numbers(model.results(1, u, 5.0, 3.0)); });
    const std::vector<double> expected = elements.of_moved_element(
        [&](plate_model& model) { return numbers(model.results(1, support::product(P, u), 5.0, 3.0)); });
    EXPECT_CLOSE(actual, expected, support::max_norm(expected), 2000.0);
  });
}

TEST(Offsets, LoadsGoBackByTheTranspose) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const std::vector<double> P = elements.transform(), data = random.vector(9, 1.0);
    for (const int op : {4, 41, 401, 10}) {
      const auto ask = [&](plate_model& model) { return model.loads(op, 1, data); };
      const std::vector<double> f = elements.of_offset_element(ask), f_moved = elements.of_moved_element(ask);
      EXPECT_GT(support::max_norm(f_moved), 0.0);
      EXPECT_CLOSE(f, support::product(support::transposed(P), f_moved), support::max_norm(f_moved), 500.0)
          << "operation " << op;
    }
  });
}

TEST(Offsets, GeometryAndPointLocationSeeTheMovedElement) {
  for_all_pairs([](const pair& elements, seeded_random& random) {
    const auto geometry = [](plate_model& model) {
      plate_calls::call(model, 8, 1);
      return std::vector<double>{static_cast<double>(model.plate(1).AREA), static_cast<double>(model.plate(1).WEIGHT)};
    };
    EXPECT_EQ(elements.of_offset_element(geometry), elements.of_moved_element(geometry));
    const std::vector<double> place = random.vector(3, 2.0);
    const auto location = [&](plate_model& model) {
      plate_calls::outputs out = plate_calls::call(model, 9, 1, place);
      return std::vector<double>{out.data(10), out.data(11), out.data(12)};
    };
    EXPECT_EQ(elements.of_offset_element(location), elements.of_moved_element(location));
  });
}

namespace {

// u = shift + turn x X at every node.
std::vector<double> rigid_motion(const std::vector<point>& nodes, const std::vector<double>& shift,
                                 const std::vector<double>& turn) {
  std::vector<double> u;
  for (const point& p : nodes) {
    u.insert(u.end(), {shift[0] + turn[1] * p[2] - turn[2] * p[1], shift[1] + turn[2] * p[0] - turn[0] * p[2],
                       shift[2] + turn[0] * p[1] - turn[1] * p[0], turn[0], turn[1], turn[2]});
  }
  return u;
}

// Is E1 nu2 = E2 nu1? The packed stiffness of another material keeps half of a matrix that is not symmetric, and knows
// rigid rotations no more; the forces do.
bool reciprocal(const plate_description& d) {
  if (d.section_type == COMPOSITE_SECTION) return false;
  return d.material.ortho == 0 || d.material.E1 * d.material.NU2 == d.material.E2 * d.material.NU1;
}

plate_description make_reciprocal(plate_description d) {
  d.material.E2 = d.material.E1 * 0.5F;
  d.material.NU2 = d.material.NU1 * 0.5F;
  return d;
}

}  // namespace

// The element moves along with its nodes and feels nothing.
TEST(Offsets, RigidMotionGivesNoForce) {
  seeded_random random(64);
  std::vector<plate_description> all = plate_calls::elastic_triangles();
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    if (d.material.ortho == 1) all.push_back(make_reciprocal(d));
  }
  for (const source from : {source::by_node, source::common}) {
    for (const plate_description& d : all) {
      SCOPED_TRACE(label(d) + (from == source::common ? ", common offset" : ", offsets by node"));
      const pair elements(d, from, random);
      const std::vector<double> u = rigid_motion(d.nodes, random.vector(3, 1.0), random.vector(3, 1.0));
      const std::vector<double> K = elements.of_offset_element([](plate_model& model) { return model.stiffness(1); });
      const std::vector<double> f =
          elements.of_offset_element([&](plate_model& model) { return model.internal_forces(1, u); });
      const double scale = support::max_norm(K) * support::max_norm(u) * ORDER;
      EXPECT_CLOSE(f, std::vector<double>(ORDER, 0.0), scale, 20.0);
      if (!reciprocal(d)) continue;
      EXPECT_CLOSE(support::product(K, u), std::vector<double>(ORDER, 0.0), scale, 20.0);
    }
  }
}

// ------------------------------------------------------------------------------------------------ the switch

TEST(OffsetSwitch, AboveZeroOnly) {
  for (const double value : {1.0, 2.0, 7.5}) {
    plate_description d = plate_calls::isotropic(plate_calls::space_triangle());
    seeded_random random(62);
    support::add_random_offsets(random, d, 1.0);
    std::vector<double> without, with;
    {
      plate_description off = d;
      off.offset_switch = 0;
      plate_model model({off});
      without = model.stiffness(1);
    }
    {
      plate_model model({d});
      model.A()(model.block(1) + OFFSET_SWITCH) = value;
      with = model.stiffness(1);
    }
    EXPECT_NE(with, without) << value;
    plate_model model({d});
    for (const double off : {0.0, -1.0, -2.5}) {
      model.A()(model.block(1) + OFFSET_SWITCH) = off;
      EXPECT_EQ(model.stiffness(1), without) << off;
    }
  }
}

TEST(OffsetEdgeCases, SwitchZeroLeavesCoordinatesAsReadAlsoWhenOffsetsAreStored) {
  for (const bool by_node : {true, false}) {
    plate_description plain = plate_calls::isotropic(plate_calls::space_triangle()), stored = plain;
    seeded_random random(63);
    support::add_random_offsets(random, stored, 1.0);
    stored.offset_switch = 0;
    for (const int op : {1, 2, 7}) {
      std::vector<double> expected;
      {
        plate_model model({plain});
        expected = model.matrix(op, 1);
      }
      plate_model model({stored});
      if (!by_node) model.deallocate_plate_of_elem();
      EXPECT_EQ(model.matrix(op, 1), expected) << "operation " << op;
    }
  }
}

// Without the numbering of plates an element's plate has its own number, and all nodes share the block's offset.
TEST(OffsetEdgeCases, WithoutPlateNumbersAllNodesShareTheOffsetOfTheBlock) {
  plate_description first = plate_calls::isotropic(plate_calls::space_triangle()),
                    second = plate_calls::orthotropic(plate_calls::flat_triangle());
  second.offset_switch = 1;
  second.common_offset = {0.25, -0.5, 0.75};
  second.offsets = {point{9, 9, 9}, point{8, 8, 8}, point{7, 7, 7}, point{6, 6, 6}};
  const offsets_of_nodes common = {second.common_offset, second.common_offset, second.common_offset};
  std::vector<double> K_moved;
  {
    plate_model model({first, moved(second, common)});
    K_moved = model.stiffness(2);
  }
  plate_model model({first, second});
  model.deallocate_plate_of_elem();
  const std::vector<double> P = dense_transform(common);
  const std::vector<double> expected = multiply(support::transposed(P), multiply(K_moved, P));
  EXPECT_CLOSE(model.stiffness(2), expected, support::max_norm(expected), 500.0);
}
