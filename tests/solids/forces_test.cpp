// forces_test.cpp: internal forces of displacements, operations 3 and 33.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "comparison.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::body_of;
using reference::listed;
using reference::norm;
using reference::rounded;
using solid_cases::random_solid;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// The size of the terms that forces are sums of.
double force_scale(const std::vector<double>& K, const std::vector<double>& u) {
  return support::max_norm(K) * support::max_norm(u);
}

}  // namespace

TEST(SolidForces, AreStiffnessTimesDisplacements) {
  seeded_random random(6221);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({random_solid(random, 6), d});
      const std::vector<double> u = random.vector(3 * nodes, 1e-3);
      const std::vector<double> K = model.matrix(1, 2);
      const std::vector<double> F = model.forces(3, 2, u);
      EXPECT_CLOSE(F, support::product(K, u), force_scale(K, u), 200) << nodes << " nodes";
      EXPECT_CLOSE(F, rounded(reference::stiffness(body_of(d)) * listed(u)), force_scale(K, u), 200);
    }
  }
}

TEST(SolidForces, Of33StayInElementAxes) {
  seeded_random random(6222);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({d});
      const std::vector<double> u = random.vector(3 * nodes, 1e-3);
      const reference::matrix R = reference::blocks(reference::axes(body_of(d)), nodes);
      const reference::matrix expected = R * reference::stiffness(body_of(d)) * listed(u);
      EXPECT_CLOSE(model.forces(33, 1, u), rounded(expected), force_scale(model.matrix(1), u), 200);
      EXPECT_CLOSE(rounded(R * listed(model.forces(3, 1, u))), model.forces(33, 1, u), force_scale(model.matrix(1), u),
                   100);
    }
  }
}

TEST(SolidForces, OfRigidMotionsAreZero) {
  seeded_random random(6223);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({d});
    const double scale = support::max_norm(model.matrix(1));
    for (std::size_t motion = 0; motion < 6; ++motion) {
      support::point shift{};
      std::array<support::point, 3> spin{};
      if (motion < 3) {
        shift[motion] = 1.0;
      } else {
        const std::size_t i = (motion - 2) % 3, j = (motion - 1) % 3;
        spin[i][j] = -1.0;
        spin[j][i] = 1.0;
      }
      const std::vector<double> u = solid_cases::linear_field(d, shift, spin);
      for (const int op : {3, 33}) {
        EXPECT_CLOSE(model.forces(op, 1, u), std::vector<double>(u.size(), 0.0), scale * support::max_norm(u), 200)
            << nodes << " nodes, motion " << motion;
      }
    }
  }
}

TEST(SolidForces, AreInEquilibrium) {
  seeded_random random(6224);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({d});
    const std::vector<double> F = model.forces(3, 1, random.vector(3 * nodes, 1e-3));
    dense::vector3 force(0, 0, 0), moment(0, 0, 0);
    for (dense::index k = 0; k < nodes; ++k) {
      const dense::vector3 f = listed(F).segment(3 * k, 3), x = body_of(d).XYZ.col(k);
      force += f;
      moment += x.cross(f);
    }
    const double scale = support::max_norm(F);
    EXPECT_CLOSE(norm(force), 0.0, scale, 300) << nodes << " nodes";
    EXPECT_CLOSE(norm(moment), 0.0, 4.0 * scale, 300) << nodes << " nodes";
  }
}

TEST(SolidForces, GoToTheRecordAlone) {
  seeded_random random(6225);
  for (const int nodes : NODE_COUNTS) {
    for (const int op : {3, 33}) {
      solid_model model({random_solid(random, nodes)});
      model.set_displacements(1, random.vector(3 * nodes, 1e-3));
      const SOLID_RECORD before = model.record();
      support::guarded_buffer F(81), K(576);
      F.set_input(std::vector<double>(model.record().F_ELEM.V, model.record().F_ELEM.V + 81));
      const double G[3] = {1, 2, 3};
      EXPECT_EQ(model.call(op, 1, nodes, G, F.data(), K.data()).ierr, 0);
      EXPECT_EQ(F.changed(), std::vector<int>{});
      EXPECT_EQ(K.changed(), std::vector<int>{});
      SOLID_RECORD after = model.record();
      for (int at = 0; at < 81; ++at) {
        EXPECT_EQ(std::isnan(after.F_ELEM.V[at]), at >= 3 * nodes) << at;
        after.F_ELEM.V[at] = before.F_ELEM.V[at];
      }
      EXPECT_EQ(std::memcmp(&after, &before, sizeof after), 0);
    }
  }
}
