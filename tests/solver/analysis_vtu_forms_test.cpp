// Both forms of a file for viewers hold the same numbers; the bytes are read here by the definition of base 64.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "frame_decks.h"
#include "output/vtu_arrays.h"
#include "vtu_reading.h"

using namespace frame_test;

namespace {

pugi::xml_document written(const solver::model& m, const solved& s, solver::vtu_form form) {
  std::ostringstream out;
  solver::write_vtu(out, m, s.solution, s.results, solver::USUAL_STATIONS, form);
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(out.str().c_str()));
  return document;
}

// RFC 4648, section 10.
TEST(AnalysisVtuForms, DecodingOfThisTest) {
  EXPECT_EQ(vtu_test::decoded("Zg=="), "f");
  EXPECT_EQ(vtu_test::decoded("Zm8="), "fo");
  EXPECT_EQ(vtu_test::decoded("Zm9vYmFy"), "foobar");
}

// The count and the bytes of one, two and three small numbers by hand: every way in which three bytes can end.
TEST(AnalysisVtuForms, EndsOfArrays) {
  const auto text = [](int count) {
    pugi::xml_document document;
    pugi::xml_node file = document.append_child("VTKFile");
    solver::set_form(file, solver::vtu_form::BINARY);
    solver::data_array(file, "types", "UInt8", static_cast<std::size_t>(count), solver::SCALAR,
                       [](std::size_t i, int) { return static_cast<int>(i) + 9; });
    return std::string(file.child("DataArray").text().get());
  };
  EXPECT_EQ(text(1), "AQAAAAk=");      // 01 00 00 00 09
  EXPECT_EQ(text(2), "AgAAAAkK");      // 02 00 00 00 09 0a
  EXPECT_EQ(text(3), "AwAAAAkKCw==");  // 03 00 00 00 09 0a 0b
}

TEST(AnalysisVtuForms, BytesOfNumbers) {
  pugi::xml_document document;
  pugi::xml_node file = document.append_child("VTKFile");
  solver::set_form(file, solver::vtu_form::BINARY);
  const std::vector<double> values = {0.1, -0.0, 1e-308, 5e-324, std::numeric_limits<double>::max(), -1.0 / 3};
  solver::reals(file, "r", values.size(), solver::SCALAR, [&](std::size_t i, int) { return values[i]; });
  solver::data_array(file, "i", "Int32", 3, solver::SCALAR, [](std::size_t i, int) {
    return i == 0 ? -1 : i == 1 ? 0x12345678 : -2147483647;
  });
  const std::vector<double> read = vtu_test::numbers(file.first_child());
  ASSERT_EQ(read.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(read[i], values[i]);
    EXPECT_EQ(std::signbit(read[i]), std::signbit(values[i]));
  }
  EXPECT_EQ(vtu_test::numbers(file.last_child()), (std::vector<double>{-1, 0x12345678, -2147483647}));
  const std::vector<double> small = {-1, 0, 127};
  for (const char* const type : {"Int8", "Int16"}) {
    solver::data_array(file, "s", type, 3, solver::SCALAR, [&](std::size_t i, int) { return small[i]; });
    EXPECT_EQ(vtu_test::numbers(file.last_child()), small) << type;
  }
}

TEST(AnalysisVtuForms, BothHoldTheSameNumbers) {
  straight_member b;
  b.elements = 3;
  const solver::model m = read(b.deck("", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n4, 1, -64.\n4, 2, 3.\n"));
  const solved s = solve(m);
  const pugi::xml_document text = written(m, s, solver::vtu_form::ASCII);
  const pugi::xml_document bytes = written(m, s, solver::vtu_form::BINARY);
  const auto piece = [](const pugi::xml_document& of) {
    return of.child("VTKFile").child("UnstructuredGrid").child("Piece");
  };
  int arrays = 0;
  for (const pugi::xml_node part : piece(text)) {
    for (const pugi::xml_node array : part) {
      const char* const name = array.attribute("Name").value();
      const pugi::xml_node other = piece(bytes).child(part.name()).find_child_by_attribute("DataArray", "Name", name);
      EXPECT_STREQ(array.attribute("format").value(), "ascii");
      EXPECT_STREQ(other.attribute("format").value(), "binary");
      EXPECT_STREQ(other.attribute("type").value(), array.attribute("type").value());
      EXPECT_EQ(vtu_test::numbers(other), vtu_test::numbers(array)) << name;
      ++arrays;
    }
  }
  EXPECT_GT(arrays, 15);
}

}  // namespace
