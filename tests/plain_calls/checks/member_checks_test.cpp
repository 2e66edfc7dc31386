// member_checks_test.cpp: what is forgotten in frame members and solids, with the effect that the library then shows.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>

#include "found.h"
#include "random_shapes.h"
#include "sanitizer.h"
#include "tarnix.h"

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t BEAM = FINITES_ELEMENT_BEAM, TRUSS = FINITES_ELEMENT_TRUSS, CABLE = FINITES_ELEMENT_CABLE,
                       LINK = FINITES_ELEMENT_LINK, SPRING = FINITES_ELEMENT_SPRING;

support::member_description member(std::int32_t kind) {
  support::member_description d;
  d.family = static_cast<support::member_family>(kind - BEAM);
  if (kind == LINK || kind == SPRING) {
    d.property.assign(45, 0);
    const float k = 5.0F;
    for (const int word : {SPRING_STIFFNESS_X, SPRING_STIFFNESS_Y, SPRING_STIFFNESS_Z, SPRING_STIFFNESS_RX,
                           SPRING_STIFFNESS_RY, SPRING_STIFFNESS_RZ}) {
      std::memcpy(&d.property[static_cast<std::size_t>(word + (kind == LINK ? LINK_SHIFT : 0))], &k, sizeof k);
    }
  }
  return d;
}

support::member_description hinged() {
  support::member_description d = member(BEAM);
  d.axial_force = -1.0;
  d.hinge.HINGE_MODEL = HINGE_MODEL_ON;
  d.hinge.CURVE_KIND = ORBISON;
  d.hinge.FORCE_SET = ALL_FORCES;
  d.hinge.CAP_P = d.hinge.CAP_MY = d.hinge.CAP_MZ = 100.0;
  return d;
}

using change = std::function<void(support::frame_model&)>;

struct mistake {
  const char* name;
  std::int32_t kind;
  support::member_description description;
  change make;
  std::int32_t severity, code;
  std::string said;
};

void expect_found(const mistake& m) {
  SCOPED_TRACE(m.name);
  support::frame_model model({m.description});
  m.make(model);
  const findings found = check(model, m.kind);
  EXPECT_NE(text_of(found, m.severity, m.code).find(m.said), std::string::npos) << all_texts(found);
  EXPECT_EQ(worst(found), m.severity) << all_texts(found);
}

change entry(int name, double value) {
  return [=](support::frame_model& m) { m.A()(m.entry(1) + name) = value; };
}
change section(int name, double value) {
  return [=](support::frame_model& m) { m.A()(m.section(1) + name) = value; };
}
change material(int name, double value) {
  return [=](support::frame_model& m) { m.A()(m.material(1) + name) = value; };
}
change length(double value) {
  return [=](support::frame_model& m) { m.record().LENGTH = value; };
}

// The nodes of the entry, 3.5 apart, of a beam of length 3.
void moved_node(support::frame_model& m) {
  for (const int end : {1, 2}) {
    const std::int32_t ptr = m.node(1, end);
    m.A()(m.entry(1) + (end == 1 ? MEMBER_NODE_1 : MEMBER_NODE_2)) = ptr;
    for (int i = 0; i < 3; ++i) m.A()(ptr + NODE_X + i) = i == 0 && end == 2 ? 3.5 : 0.0;
  }
}

void yields(support::frame_model& m) {
  static std::vector<MEMBER_FORCES_RECORD> forces(10);
  SOLANAELEM.MEMBER_FORCES = REFER_TO(forces.data(), forces.size());
  m.set_kind(GEOMETRIC_ADDED);
  m.set_members_yield(1);
}

change hinge(const std::function<void(HINGE_RECORD&)>& set) {
  return [=](support::frame_model& m) {
    yields(m);
    set(m.hinge());
  };
}

constexpr auto nothing = [](support::frame_model&) {};

}  // namespace

TEST(MemberChecks, AFilledMemberHasNoFinding) {
  for (std::int32_t kind = BEAM; kind <= SPRING; ++kind) {
    support::frame_model model({member(kind), member(kind)});
    EXPECT_EQ(all_texts(check(model, kind, 1)), "") << kind;
    EXPECT_EQ(all_texts(check(model, kind, 2)), "") << kind;
  }
}

TEST(MemberChecks, EveryKindNeedsItsRecords) {
  for (std::int32_t kind = BEAM; kind <= SPRING; ++kind) {
    const auto d = member(kind);
    for (const mistake& m :
         std::vector<mistake>{{"positions", kind, d, [](auto&) { SOLANAELEM.ELEM_POS = {}; }, ERROR,
                               FINITES_FOUND_NO_RECORDS, "ELEM_POS is missing"},
                              {"records", kind, d, [](auto&) { SOLANAELEM.MEMBER_REC = {}; }, ERROR,
                               FINITES_FOUND_NO_RECORDS, "MEMBER_REC is missing"},
                              {"extent", kind, d, [](auto&) { SOLANAELEM.MEMBER_REC.DIMENSION[0].EXTENT = 1; }, ERROR,
                               FINITES_FOUND_NO_RECORD, "MEMBER_REC(3) does not exist"}}) {
      expect_found(m);
    }
  }
  support::frame_model model({member(BEAM)});
  EXPECT_EQ(check(model, 9)[0].code, FINITES_FOUND_NO_KIND);
}

TEST(MemberChecks, Beams) {
  const auto d = member(BEAM);
  auto released = d, pretended = d, failing = d, reduced = d;
  released.release = {0, 1, 0, 0};
  failing.remove_step = -1;
  failing.remove_min = 0;
  reduced.tau_b = 2;
  for (const mistake& m : std::vector<mistake>{
           {"pin", BEAM, d, entry(FIXITY_Y2, 0), NOTE, FINITES_FOUND_FIXITY, "pinned"},
           {"fixity", BEAM, d, entry(FIXITY_Z1, 1.5), WARNING, FINITES_FOUND_FIXITY, "between 0 (pin) and 1"},
           {"fixity NaN", BEAM, d, entry(FIXITY_Z1, NaN), ERROR, FINITES_FOUND_NOT_FINITE, "FIXITY_Z1"},
           {"area", BEAM, d, entry(FACTOR_AREA, 0), WARNING, FINITES_FOUND_FACTOR, "no axial stiffness"},
           {"I1", BEAM, d, entry(FACTOR_I1, 0), WARNING, FINITES_FOUND_FACTOR, "x-y plane; set it to 1"},
           {"I2", BEAM, d, entry(FACTOR_I2, 0), WARNING, FINITES_FOUND_FACTOR, "x-z plane"},
           {"J", BEAM, d, entry(FACTOR_J, 0), WARNING, FINITES_FOUND_FACTOR, "torsional"},
           {"torsion", BEAM, d, entry(FACTOR_TORSION, 0), WARNING, FINITES_FOUND_FACTOR, "torsional"},
           {"A", BEAM, d, section(SECTION_AREA, 0), WARNING, FINITES_FOUND_SECTION, "axial"},
           {"I", BEAM, d, section(SECTION_I1, -1), WARNING, FINITES_FOUND_SECTION, "above 0"},
           {"J", BEAM, d, section(SECTION_J, 0), WARNING, FINITES_FOUND_SECTION, "torsional"},
           {"E", BEAM, d, material(MEMBER_E1, 0), WARNING, FINITES_FOUND_MODULUS, "axial"},
           {"E2", BEAM, d, material(MEMBER_E2, 0), WARNING, FINITES_FOUND_MODULUS, "x-z plane"},
           {"G", BEAM, d, material(MEMBER_G, 0), WARNING, FINITES_FOUND_MODULUS, "torsional"},
           {"L", BEAM, d, length(0), ERROR, FINITES_FOUND_LENGTH, "divide by it"},
           {"nodes", BEAM, d, moved_node, WARNING, FINITES_FOUND_LENGTHS_DIFFER, "3.5 apart"},
           {"section", BEAM, d, entry(MEMBER_SECTION, 0), ERROR, FINITES_FOUND_NO_BLOCK, "MEMBER_SECTION"},
           {"material", BEAM, d, entry(MEMBER_MATERIAL, 1e9), ERROR, FINITES_FOUND_BLOCK_OUTSIDE, "MEMBER_MATERIAL"},
           {"shear", BEAM, d, [](support::frame_model& f) { f.set_shear_deformation(1); }, NOTE,
            FINITES_FOUND_SHEAR_AREA, "no shear deformation"},
           {"shear force", BEAM, released, nothing, NOTE, FINITES_FOUND_RELEASE, "shear force"},
           {"release", BEAM, d, entry(RELEASE_TORSION, 3), WARNING, FINITES_FOUND_RELEASE, "no release"},
           {"removal", BEAM, failing, nothing, WARNING, FINITES_FOUND_REMOVAL, "REMOVE_MIN"},
           {"tau", BEAM, reduced, nothing, WARNING, FINITES_FOUND_REDUCTION, "TAU_B"},
           {"no force", BEAM, d, [](support::frame_model& f) { f.set_kind(1); }, NOTE, FINITES_FOUND_NO_AXIAL_FORCE,
            "AXIAL_FORCE"}}) {
    expect_found(m);
  }
}

TEST(MemberChecks, ForgottenFixitiesAreNoPins) {
  auto d = member(BEAM);
  d.fixity_y = d.fixity_z = {0, 0};
  expect_found({"four", BEAM, d, nothing, WARNING, FINITES_FOUND_FIXITY, "all four fixities"});
  support::frame_model model({d});
  EXPECT_EQ(zeros_on_diagonal(model.beam(MODE_LOCAL).K, 12), 8);
}

TEST(MemberChecks, SemiRigidEndsUnderAnAxialForce) {
  auto d = member(BEAM);
  d.axial_force = -10.0;
  d.fixity_y = {0.5, 1.0};
  expect_found({"semi-rigid", BEAM, d, [](support::frame_model& f) { f.set_kind(3); }, WARNING,
                FINITES_FOUND_SEMI_RIGID, "units"});
}

TEST(MemberChecks, Trusses) {
  auto d = member(TRUSS), type = d;
  type.section_type = PRETENSIONED_SECTION;
  for (const mistake& m : std::vector<mistake>{
           {"area", TRUSS, d, entry(FACTOR_AREA, 0), WARNING, FINITES_FOUND_FACTOR, "no axial stiffness"},
           {"E", TRUSS, d, material(MEMBER_E1, 0), WARNING, FINITES_FOUND_MODULUS, "axial"},
           {"L", TRUSS, d, length(-1), ERROR, FINITES_FOUND_LENGTH, "above 0"},
           {"stress", TRUSS, d, entry(PRETENSION_STRESS, 5), WARNING, FINITES_FOUND_PRETENSION, "type 14"},
           {"type", TRUSS, type, nothing, NOTE, FINITES_FOUND_PRETENSION, "without pretension"}}) {
    expect_found(m);
  }
}

// A force along x at node 1 that accelerates against it, or NaN.
TEST(MemberChecks, WeightsWithoutAMass) {
  for (const std::int32_t kind : {BEAM, TRUSS}) {
    const auto d = member(kind);
    for (const mistake& m : std::vector<mistake>{
             {"negative", kind, d, entry(MEMBER_WEIGHT, -5), WARNING, FINITES_FOUND_WEIGHT, "negative mass"},
             {"NaN", kind, d, entry(MEMBER_WEIGHT, NaN), ERROR, FINITES_FOUND_NOT_FINITE, "MEMBER_WEIGHT"}}) {
      expect_found(m);
      support::frame_model model({d});
      m.make(model);
      EXPECT_FALSE((kind == BEAM ? model.beam_mass() : model.truss_mass())[0] >= 0.0) << m.name << " " << kind;
    }
    support::frame_model model({d});
    entry(MEMBER_WEIGHT, 0)(model);
    EXPECT_EQ(all_texts(check(model, kind)), "") << kind;
  }
}

TEST(MemberChecks, Cables) {
  const auto d = member(CABLE);
  auto slack = d;
  slack.weight = 0;
  for (const mistake& m : std::vector<mistake>{
           {"L0", CABLE, d, entry(UNSTRESSED_LENGTH, 0), ERROR, FINITES_FOUND_UNSTRESSED_LENGTH, "1264"},
           {"area", CABLE, d, section(SECTION_AREA, 0), ERROR, FINITES_FOUND_SECTION, "1264"},
           {"factor", CABLE, d, entry(FACTOR_AREA, 0), ERROR, FINITES_FOUND_FACTOR, "1264"},
           {"E", CABLE, d, material(MEMBER_E1, 0), ERROR, FINITES_FOUND_MODULUS, "1264"},
           {"node", CABLE, d, entry(MEMBER_NODE_2, 0), ERROR, FINITES_FOUND_NO_BLOCK, "MEMBER_NODE_2"},
           {"L", CABLE, d, length(0), ERROR, FINITES_FOUND_LENGTH, "per length"},
           {"slack", CABLE, slack, nothing, NOTE, FINITES_FOUND_SLACK, "no shape"}}) {
    expect_found(m);
    support::frame_model model({m.description});
    m.make(model);
    if (m.code == FINITES_FOUND_NO_BLOCK) continue;
    EXPECT_EQ(model.cable(0, 0).ierr, 1264) << m.name;
  }
  SOLANA.LOAD_FACTOR = 0;
  expect_found({"factor", CABLE, d, [](support::frame_model& f) { f.set_kind(1); }, WARNING, FINITES_FOUND_LOAD_FACTOR,
                "LOAD_FACTOR"});
}

TEST(MemberChecks, LinksAndSprings) {
  for (const std::int32_t kind : {LINK, SPRING}) {
    const int shift = kind == LINK ? LINK_SHIFT : 0;
    const auto word = [shift](support::member_description& d, int at) -> std::int32_t& {
      return d.property[static_cast<std::size_t>(at + shift)];
    };
    auto none = member(kind), empty = none, rigid = none, nonlinear = none;
    none.property.clear();
    std::fill(empty.property.begin(), empty.property.end(), 0);
    word(rigid, SPRING_KIND_RX) = COMPONENT_RIGID;
    word(nonlinear, SPRING_KIND_Y) = COMPONENT_NONLINEAR;
    auto indexed = nonlinear;
    indexed.nl_spring = {0, 1, 0};
    const auto springs = [](double K) { return [K](support::frame_model& f) { f.set_nonlinear_springs({{1.0, K}}); }; };
    for (const mistake& m : std::vector<mistake>{
             {"none", kind, none, nothing, WARNING, FINITES_FOUND_PROPERTY_ADDRESS, "no address"},
             {"number", kind, member(kind), entry(PROPERTY_ADDRESS, 140231231.0), ERROR, FINITES_FOUND_PROPERTY_ADDRESS,
              "memcpy"},
             {"empty", kind, empty, nothing, WARNING, FINITES_FOUND_NO_STIFFNESS, "all six"},
             {"rigid", kind, rigid, [](auto&) { SOLANA.RIGID_K_ROT = 0; }, WARNING, FINITES_FOUND_RIGID_STIFFNESS,
              "RIGID_K_ROT"},
             {"kind 8", kind, nonlinear, nothing, WARNING, FINITES_FOUND_NONLINEAR_SPRING, "NL_SPRING_IDX(2)"},
             {"no record", kind, indexed, [](auto&) { SOLANAELEM.SPRING_NL_REC = {}; }, WARNING,
              FINITES_FOUND_NONLINEAR_SPRING, "no such record"},
             {"K_INITIAL", kind, indexed, springs(0.0), ERROR, FINITES_FOUND_NONLINEAR_SPRING, "NaN"}}) {
      expect_found(m);
    }
  }
  expect_found(
      {"node", SPRING, member(SPRING), entry(MEMBER_NODE_1, 0), ERROR, FINITES_FOUND_NO_BLOCK, "MEMBER_NODE_1"});
}

TEST(MemberChecks, Hinges) {
  const auto d = hinged();
  {
    support::frame_model model({d});
    yields(model);
    EXPECT_EQ(worst(check(model, BEAM)), 0) << all_texts(check(model, BEAM));
  }
  for (const mistake& m : std::vector<mistake>{
           {"off", BEAM, d, nothing, NOTE, FINITES_FOUND_NO_HINGE, "the member is elastic"},
           {"curve", BEAM, d, hinge([](auto& h) { h.CURVE_KIND = 0; }), WARNING, FINITES_FOUND_HINGE_CURVE,
            "CURVE_KIND"},
           {"set", BEAM, d, hinge([](auto& h) { h.FORCE_SET = 8; }), WARNING, FINITES_FOUND_HINGE_CURVE, "FORCE_SET"},
           {"axial", BEAM, d, hinge([](auto& h) { h.FORCE_SET = ONLY_P; }), WARNING, FINITES_FOUND_HINGE_CURVE,
            "CURVE_KIND 1"},
           {"single", BEAM, d, hinge([](auto& h) { h.CURVE_KIND = SINGLE_FORCES; }), WARNING, FINITES_FOUND_HINGE_CURVE,
            "never yields"},
           {"capacity", BEAM, d, hinge([](auto& h) { h.CAP_MY = 0; }), WARNING, FINITES_FOUND_HINGE_CAPACITY, "CAP_MY"},
           {"state", BEAM, d, hinge([](auto& h) { h.END2_STATE = 7; }), WARNING, FINITES_FOUND_HINGE_STATE,
            "END2_STATE"},
           {"segments", BEAM, d, hinge([](auto& h) {
              h.CURVE_KIND = LINEAR_SEGMENTS;
              h.END1_STATE = YIELDING;
            }),
            WARNING, FINITES_FOUND_HINGE_STATE, "LINEAR_SEGMENT_EQUATION"},
           {"forces", BEAM, d,
            [](support::frame_model& f) {
              yields(f);
              SOLANAELEM.MEMBER_FORCES = {};
            },
            WARNING, FINITES_FOUND_HINGE_FORCES, "MEMBER_FORCES"},
           {"truss", TRUSS,
            [] {
              auto t = member(TRUSS);
              t.axial_force = 1.0;
              t.hinge.HINGE_MODEL = HINGE_MODEL_ON;
              return t;
            }(),
            yields, NOTE, FINITES_FOUND_NO_HINGE, "section type 10"}}) {
    expect_found(m);
  }
}

// Run by the test below in a process whose common library has no other library beside it.
TEST(LonelyProcess, DISABLED_Hinges) {
  expect_found({"library", BEAM, hinged(), yields, WARNING, FINITES_FOUND_NO_NONLINEAR_LIBRARY, "libVornekal.so"});
}

TEST(MemberChecks, HingesWithoutTheNonlinearLibrary) {
  if (support::address_sanitizer) {
    GTEST_SKIP() << "the sanitizer opens libraries in the place of Tarnix, and finds them beside the program";
  }
  namespace fs = std::filesystem;
  Dl_info common{};
  ASSERT_NE(dladdr(reinterpret_cast<const void*>(&TARNIX_CLEAR), &common), 0);
  const fs::path tarnix = common.dli_fname;  // by the name that the loader looks for
  const fs::path folder = fs::temp_directory_path() / ("lonely_tarnix_" + std::to_string(getpid()));
  const fs::path alone = folder / "common";  // the loader looks into folder/lib too
  fs::create_directories(alone);
  fs::copy_file(tarnix, alone / tarnix.filename(), fs::copy_options::overwrite_existing);
  const std::string self = fs::read_symlink("/proc/self/exe").string();
  const std::string command = "LD_LIBRARY_PATH='" + alone.string() + "' '" + self +
                              "' --gtest_also_run_disabled_tests --gtest_filter=LonelyProcess.* > /dev/null";
  EXPECT_EQ(std::system(command.c_str()), 0);
  fs::remove_all(folder);
}

// Over beams in which random numbers are forgotten, NaN comes with an error, a freedom without stiffness with a
// warning.
TEST(MemberChecks, TheLibraryAnswersAsForetold) {
  support::seeded_random random(11);
  int nan = 0, zero = 0, fine = 0;
  for (int run = 0; run < 3000; ++run) {
    auto d = member(BEAM);
    const auto forgets = [&random] { return random.integer(0, 9) == 0; };
    for (double* const value :
         {&d.length, &d.fixity_y[0], &d.fixity_y[1], &d.fixity_z[0], &d.fixity_z[1], &d.factor_area, &d.factor_i1,
          &d.factor_i2, &d.factor_j, &d.factor_torsion, &d.area, &d.i1, &d.i2, &d.j, &d.e1, &d.e2, &d.g}) {
      if (forgets()) *value = 0;
    }
    d.node2 = {d.length, 0, 0};
    support::frame_model model({d});
    const findings found = check(model, BEAM);
    const std::vector<double> K = model.beam(MODE_LOCAL).K;
    if (!all_finite(K)) {
      ++nan;
      EXPECT_EQ(worst(found), ERROR) << run << "\n" << all_texts(found);
    } else if (zeros_on_diagonal(K, 12) > 0) {
      ++zero;
      EXPECT_GE(worst(found), NOTE) << run << "\n" << all_texts(found);  // a pin has none of its own rotation
    } else if (found.empty()) {
      ++fine;
    }
  }
  EXPECT_GT(nan, 100);
  EXPECT_GT(zero, 100);
  EXPECT_GT(fine, 100);
}

namespace {

const std::vector<support::point> BRICK = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                           {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
const std::vector<support::point> WEDGE = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
const std::vector<support::point> TETRAHEDRON = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

std::vector<support::point> exchanged(std::vector<support::point> nodes, std::size_t a, std::size_t b) {
  std::swap(nodes[a], nodes[b]);
  return nodes;
}

std::vector<support::point> flat(std::vector<support::point> nodes) {
  for (support::point& p : nodes) p[2] = 0;
  return nodes;
}

void expect_solid(const std::vector<support::point>& nodes, const std::function<void(support::solid_model&)>& make,
                  std::int32_t severity, std::int32_t code, const char* said) {
  support::solid_model model({{nodes}});
  make(model);
  const findings found = check(model);
  EXPECT_NE(text_of(found, severity, code).find(said), std::string::npos) << said << "\n" << all_texts(found);
  EXPECT_EQ(worst(found), severity) << all_texts(found);
}

}  // namespace

TEST(SolidChecks, WhatIsForgottenIsFound) {
  using model = support::solid_model;
  const auto nothing_wrong = [](model&) {};
  for (const auto& nodes : {BRICK, WEDGE, TETRAHEDRON}) {
    support::solid_model filled({{nodes}, {nodes}});
    EXPECT_EQ(all_texts(check(filled, 1)), "");
    EXPECT_EQ(all_texts(check(filled, 2)), "");
    const auto material = [](int name, double value) { return [=](model& m) { m.A()(m.material(1) + name) = value; }; };
    expect_solid(
        nodes, [](model&) { SOLANAELEM.SOLID_POS = {}; }, ERROR, FINITES_FOUND_SOLID_POSITION, "SOLID_POS(1)");
    expect_solid(
        nodes, [](model&) { SOLANAELEM.SOLID_REC = {}; }, ERROR, FINITES_FOUND_SOLID_POSITION, "1228");
    expect_solid(
        nodes, [](model& m) { m.record().STIFF_FACTOR = 0; }, WARNING, FINITES_FOUND_STIFF_FACTOR, "zero");
    expect_solid(
        nodes, [](model& m) { m.record().MAT_OFF = 0; }, ERROR, FINITES_FOUND_NO_BLOCK, "MAT_OFF");
    expect_solid(
        nodes, [](model& m) { m.record().NNODE = 5; }, ERROR, FINITES_FOUND_NODE_COUNT, "4, 6 or 8");
    expect_solid(
        nodes, [](model& m) { m.record().NODE_OFF(3) = 0; }, ERROR, FINITES_FOUND_NO_BLOCK, "NODE_OFF(3)");
    expect_solid(nodes, material(MATERIAL_YOUNG, 0), WARNING, FINITES_FOUND_YOUNG, "all stiffness");
    expect_solid(nodes, material(MATERIAL_POISSON, 0.5), ERROR, FINITES_FOUND_POISSON, "NaN");
    expect_solid(nodes, material(MATERIAL_POISSON, -2), WARNING, FINITES_FOUND_POISSON, "between");
    expect_solid(
        nodes,
        [](model& m) {
          m.set_header(SECOND_ORDER, 1);
          SOLANAELEM.SOLID_NL_REC = {};
        },
        WARNING, FINITES_FOUND_NO_STORED_FORCES, "geometric");
    expect_solid(flat(nodes), nothing_wrong, ERROR, FINITES_FOUND_NO_AREA, "1228");
  }
  expect_solid(exchanged(TETRAHEDRON, 1, 2), nothing_wrong, WARNING, FINITES_FOUND_FOLDED, "inside out");
  expect_solid(exchanged(BRICK, 4, 5), nothing_wrong, WARNING, FINITES_FOUND_FOLDED, "folded");
  expect_solid(exchanged(WEDGE, 0, 1), nothing_wrong, WARNING, FINITES_FOUND_FOLDED, "folded");
}
