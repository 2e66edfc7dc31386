// deck_file_test.cpp: decks in files: *INCLUDE, names in messages, files that cannot be read, large decks.
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "deck/deck_reader.h"
#include "deck_builder.h"

using namespace deck_test;

static solver::deck_error error_of(const std::function<void()>& read_something) {
  try {
    read_something();
  } catch (const solver::deck_error& error) {
    return error;
  }
  ADD_FAILURE() << "the deck was accepted";
  return solver::deck_error("", 0, "", "");
}

static std::string lines(int first, int last) { return text_of({GOOD.begin() + (first - 1), GOOD.begin() + last}); }

TEST(deck_file, include_from_the_folder_of_the_including_file) {
  const scratch_folder folder;
  folder.write("mesh/elements.inc", lines(8, 10));
  folder.write("mesh/mesh.inc", "** the mesh\n" + lines(3, 7) + "*INCLUDE, INPUT=elements.inc\n");
  const std::string deck = folder.write("deck.inp", "*include, input = \"mesh/mesh.inc\"\n" + lines(11, 35));
  const solver::model m = solver::read_deck(deck);
  ASSERT_EQ(m.files, (std::vector<std::string>{deck, folder.path("mesh/mesh.inc"), folder.path("mesh/elements.inc")}));
  EXPECT_EQ(m.deck, deck);
  EXPECT_EQ(m.nodes[0].file, 1);
  EXPECT_EQ(m.nodes[0].line, 3);
  EXPECT_EQ(m.elements[1].file, 2);
  EXPECT_EQ(m.elements[1].line, 3);
  EXPECT_EQ(m.steps[0].file, 0);
  EXPECT_EQ(solver::place_of(m, m.elements[1].file, m.elements[1].line), folder.path("mesh/elements.inc") + ":3");
}

TEST(deck_file, include_between_the_data_of_a_card) {
  const scratch_folder folder;
  folder.write("nodes.txt", lines(5, 6));
  const std::string deck = folder.write("deck.inp", lines(1, 4) + "*INCLUDE, INPUT=nodes.txt\n" + lines(7, 35));
  const solver::model m = solver::read_deck(deck);
  ASSERT_EQ(m.nodes.size(), 4u);
  EXPECT_EQ(m.nodes[2].file, 1);
  EXPECT_EQ(m.nodes[2].line, 2);
  EXPECT_EQ(m.nodes[3].file, 0);
  EXPECT_EQ(m.nodes[3].line, 6);
}

TEST(deck_file, the_same_file_twice_is_no_circle) {
  const scratch_folder folder;
  folder.write("load.inc", "3, 3, 1.\n");
  const std::string deck =
      folder.write("deck.inp", lines(1, 28) + "*INCLUDE, INPUT=load.inc\n*INCLUDE, INPUT=load.inc\n*END STEP\n");
  EXPECT_EQ(solver::read_deck(deck).steps[0].nodal_loads.size(), 2u);
}

TEST(deck_file, error_in_an_included_file_names_it) {
  const scratch_folder folder;
  folder.write("nodes.txt", "2, 1., 0., 0.\n1, 1., 1., 0.\n");
  const std::string deck = folder.write("deck.inp", lines(1, 4) + "*INCLUDE, INPUT=nodes.txt\n" + lines(7, 35));
  const solver::deck_error error = error_of([&] { solver::read_deck(deck); });
  EXPECT_EQ(error.file, folder.path("nodes.txt"));
  EXPECT_EQ(error.line, 2);
  EXPECT_EQ(error.keyword, "*NODE");
  EXPECT_EQ(error.text, "node 1 is defined already, in line 4");
}

TEST(deck_file, include_that_cannot_be_opened) {
  expect_error(inserted(3, "*INCLUDE, INPUT=missing.inc"), 3, "*INCLUDE",
               "the file 'missing.inc' cannot be opened: No such file or directory");
}
TEST(deck_file, include_without_a_name) {
  expect_error(inserted(3, "*INCLUDE"), 3, "*INCLUDE", "INPUT=file is missing");
}
TEST(deck_file, include_with_another_parameter) {
  expect_error(inserted(3, "*INCLUDE, FILE=a.inc"), 3, "*INCLUDE", "the parameter FILE is not known; INPUT is");
}
TEST(deck_file, include_of_itself) {
  const scratch_folder folder;
  folder.write("sub/a.inc", "*INCLUDE, INPUT=../sub/../deck.inp\n");
  const std::string deck = folder.write("deck.inp", "*HEADING\ncircle\n*INCLUDE, INPUT=sub/a.inc\n");
  const solver::deck_error error = error_of([&] { solver::read_deck(deck); });
  EXPECT_EQ(error.file, folder.path("sub/a.inc"));
  EXPECT_EQ(error.line, 1);
  EXPECT_EQ(error.keyword, "*INCLUDE");
  EXPECT_NE(error.text.find("includes itself"), std::string::npos) << error.text;
}
TEST(deck_file, includes_that_multiply) {
  const scratch_folder folder;
  for (int i = 0; i < 20; ++i) {
    const std::string next = "*INCLUDE, INPUT=" + std::to_string(i + 1) + ".inc\n";
    folder.write(std::to_string(i) + ".inc", next + next);
  }
  folder.write("20.inc", "** the end\n");
  const solver::deck_error error = error_of([&] { solver::read_deck(folder.path("0.inc")); });
  EXPECT_EQ(error.keyword, "*INCLUDE");
  EXPECT_EQ(error.text, "more than 1000 files");
}

TEST(deck_file, deck_that_cannot_be_opened) {
  const solver::deck_error error = error_of([] { solver::read_deck("no/such/deck.inp"); });
  EXPECT_EQ(error.file, "no/such/deck.inp");
  EXPECT_EQ(error.line, 0);
  EXPECT_EQ(error.keyword, "");
  EXPECT_STREQ(error.what(), "no/such/deck.inp: the file cannot be opened: No such file or directory");
}
TEST(deck_file, deck_that_is_a_folder) {
  const scratch_folder folder;
  EXPECT_EQ(error_of([&] { solver::read_deck(folder.path("")); }).text, "the file cannot be opened: it is a folder");
}

// A strip of 200,000 triangles: what is read is what was written.
TEST(deck_file, large_deck) {
  constexpr int COLUMNS = 100000;
  std::string text = "*NODE\n";
  for (int i = 0; i <= COLUMNS; ++i) {
    text += std::to_string(2 * i + 1) + ", " + std::to_string(i) + "., 0., 0.\n";
    text += std::to_string(2 * i + 2) + ", " + std::to_string(i) + "., 1., 0.\n";
  }
  text += "*ELEMENT, TYPE=S3, ELSET=SKIN\n";
  for (int i = 0; i < COLUMNS; ++i) {
    const int a = 2 * i + 1;
    const auto triangle = [&](int id, int p, int q, int r) {
      text +=
          std::to_string(id) + ", " + std::to_string(p) + ", " + std::to_string(q) + ", " + std::to_string(r) + "\n";
    };
    triangle(a, a, a + 2, a + 3);
    triangle(a + 1, a, a + 3, a + 1);
  }
  text += "*NSET, NSET=FIXED\n1, 2\n" + lines(15, 29) + "*END STEP\n";
  const solver::model m = read(text);
  ASSERT_EQ(m.nodes.size(), 2u * COLUMNS + 2);
  ASSERT_EQ(m.elements.size(), 2u * COLUMNS);
  EXPECT_EQ(m.nodes.back().xyz, (std::array<double, 3>{COLUMNS, 1, 0}));
  EXPECT_EQ(m.elements.back().nodes, (std::vector<int>{2 * COLUMNS - 2, 2 * COLUMNS + 1, 2 * COLUMNS - 1}));
  EXPECT_EQ(m.elements.back().line, 1 + 2 * COLUMNS + 2 + 1 + 2 * COLUMNS);
}
