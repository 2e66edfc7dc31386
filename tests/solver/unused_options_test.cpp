// Options of the command line that have no effect on a deck, and places where no results can go.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "program_support.h"

using deck_test::scratch_folder;
using namespace program_test;

namespace {

const std::string DECKS = FINITES_DECKS;

std::vector<std::string> warnings(const std::string& arguments) {
  const scratch_folder scratch;
  const answer said = run_program(scratch, arguments + " -o " + scratch.path("r.vtu"));
  EXPECT_EQ(said.status, 0) << said.err;
  std::vector<std::string> found;
  for (const std::string& line : lines_of(said.err)) {
    if (line.rfind("warning: --", 0) == 0) found.push_back(line.substr(9));
  }
  return found;
}

}  // namespace

TEST(UnusedOptions, EachSaysWhatItMisses) {
  const std::string path =
      ": has nothing to tell: no step follows a path: no *PUSHOVER, no *ELASTOPLASTIC, nothing yields in "
      "a *STATIC";
  EXPECT_EQ(warnings(DECKS +
                     "/cantilever_strip.inp --curve c.csv --increments 3 --events e.csv --modes m.csv --members b.csv "
                     "--stations s.csv --section-points p.csv --conditions c2.csv --layers l.csv --solids o.csv"),
            (std::vector<std::string>{"--curve" + path, "--increments" + path,
                                      "--events: has nothing to tell: no step follows hinges",
                                      "--modes: has nothing to tell: there is no *FREQUENCY",
                                      "--members: has nothing to tell: there are no members",
                                      "--stations: has nothing to tell: there are no members",
                                      "--section-points: has nothing to tell: there are no beams",
                                      "--conditions: has nothing to tell: there are no linear conditions",
                                      "--layers: has nothing to tell: no *SHELL SECTION is COMPOSITE",
                                      "--solids: has nothing to tell: there are no solids"}));
  EXPECT_EQ(warnings(DECKS + "/solid_patch.inp --stresses s.csv"),
            std::vector<std::string>{"--stresses: has nothing to tell: there are no shells and no membranes"});
}

TEST(UnusedOptions, NothingIsSaidWhereThereIsSomethingToTell) {
  EXPECT_EQ(warnings(DECKS + "/pushover_portal.inp --curve c.csv --increments 3 --events e.csv --members b.csv "
                             "--stations s.csv --section-points p.csv"),
            std::vector<std::string>{});
  EXPECT_EQ(warnings(DECKS + "/plastic_strip_bending.inp --curve c.csv --increments 3 --stresses s.csv"),
            std::vector<std::string>{});
  EXPECT_EQ(warnings(DECKS + "/cards/condition_forces.inp --conditions c.csv --reactions r.csv"),
            std::vector<std::string>{});
  EXPECT_EQ(warnings(DECKS + "/cards/composite_layers.inp --layers l.csv"), std::vector<std::string>{});
  EXPECT_EQ(warnings(DECKS + "/solid_vibration.inp --modes m.csv --solids s.csv"), std::vector<std::string>{});
}

TEST(UnusedOptions, WithoutASolutionThereAreNoResults) {
  const scratch_folder scratch;
  const std::string deck = DECKS + "/cantilever_strip.inp";
  EXPECT_EQ(run_program(scratch, deck + " --check --csv a.csv --report p.html --node 1").err,
            "warning: --check: nothing is solved, so --csv, --report, --node have no effect\n");
  EXPECT_EQ(run_program(scratch, deck + " --memory --json a.json").err,
            "warning: --memory: nothing is solved, so --json has no effect\n");
  EXPECT_EQ(run_program(scratch, deck + " --write " + scratch.path("flat.inp") + " -o r.vtu").err,
            "warning: --write: nothing is solved, so -o has no effect\n");
  EXPECT_EQ(run_program(scratch, deck + " --check").err, "");
}

TEST(UnusedOptions, AHyphenIsNoPlace) {
  const scratch_folder scratch;
  for (const char* const option : {"-o -", "--csv -", "--json -"}) {
    const answer said = run_program(scratch, DECKS + "/cantilever_strip.inp " + option);
    EXPECT_EQ(said.status, 2) << option;
    EXPECT_EQ(said.err, "finites-solve: -: results go into files: name one, or /dev/stdout for the standard output\n");
  }
}

TEST(UnusedOptions, AMissingValueIsCalledAsInTheHelp) {
  const scratch_folder scratch;
  EXPECT_EQ(run_program(scratch, DECKS + "/cantilever_strip.inp --report").err,
            "finites-solve: --report: 1 required FILE missing; --help lists the options\n");
}

TEST(UnusedOptions, ColourOfAnErrorOfUsageIsTheUsersChoice) {
  const scratch_folder scratch;
  EXPECT_EQ(run_program(scratch, "--color=always --no-such").err.rfind("\033[", 0), 0U);
  EXPECT_EQ(run_program(scratch, "--color always --no-such").err.rfind("\033[", 0), 0U);
  EXPECT_EQ(run_program(scratch, "--color=never --no-such").err.rfind("finites-solve", 0), 0U);
}

TEST(UnusedOptions, ABoundBelowWhatTheProgramHoldsIsTooLittleForAnyModel) {
  const scratch_folder scratch;
  const std::string deck = DECKS + "/cantilever_strip.inp";
  const answer run = run_program(scratch, deck + " --memory-limit 1 -o " + scratch.path("r.vtu"));
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("left of the 1 MB of --memory-limit"), std::string::npos) << run.err;
  const answer estimate = run_program(scratch, deck + " --memory --memory-limit 1");
  EXPECT_EQ(estimate.status, 1);
  EXPECT_NE(estimate.out.find("it does not fit"), std::string::npos) << estimate.out;
}
