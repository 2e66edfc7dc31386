// Paths to a limit do not hang on rounding: coordinates and loads of every deck with yielding plates or hinges are
// multiplied by 1 + 1e-13 r, and each run must end for the same reason and at the same load.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "plastic_support.h"
#include "pushover_support.h"

using namespace solver;

namespace {

// How many runs of each deck; the environment may ask for fewer where they are slow.
unsigned seeds() {
  const char* const text = std::getenv("FINITES_PATH_SEEDS");
  return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : 20;
}

constexpr double SAME_LOAD = 3e-3;

model perturbed(const model& m, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> r(-1, 1);
  const auto change = [&](double& value) { value *= 1 + 1e-13 * r(random); };
  model other = m;
  for (node& n : other.nodes)
    for (double& x : n.xyz) change(x);
  for (step& s : other.steps) {
    for (nodal_load& load : s.nodal_loads) change(load.value);
    for (element_load& load : s.element_loads) change(load.magnitude);
  }
  return other;
}

struct outcome {
  int end;
  double largest;
};

std::vector<outcome> outcomes(const model& m) {
  std::vector<outcome> all;
  if (m.steps.front().kind == step_kind::PUSHOVER) {
    for (const pushover_solution& s : pushover_test::push(m)) all.push_back({static_cast<int>(s.end), s.factor});
  } else {
    for (const elastoplastic_solution& s : plastic_test::load(m))
      all.push_back({static_cast<int>(s.end), s.largest_factor});
  }
  return all;
}

// The decks that lie beside the solver and follow a path, by name.
std::vector<std::string> paths() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(frame_test::deck_folder())) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() == ".inp" && (name.rfind("plastic_", 0) == 0 || name.rfind("pushover_", 0) == 0))
      names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class PerturbedPath : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(PerturbedPath, EndsAtTheSameLoadForTheSameReason) {
  const model m = frame_test::deck(GetParam() + ".inp");
  const std::vector<outcome> expected = outcomes(m);
  for (unsigned seed = 1; seed <= seeds(); ++seed) {
    const std::vector<outcome> found = outcomes(perturbed(m, seed));
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t s = 0; s < found.size(); ++s) {
      EXPECT_EQ(found[s].end, expected[s].end) << "step " << s + 1 << ", seed " << seed;
      EXPECT_LT(std::fabs(found[s].largest / expected[s].largest - 1), SAME_LOAD)
          << "step " << s + 1 << ", seed " << seed;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Decks, PerturbedPath, testing::ValuesIn(paths()),
                         [](const testing::TestParamInfo<std::string>& deck) { return deck.param; });
