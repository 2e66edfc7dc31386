// cable_report_test.cpp: the fields in which a failure of the cable library goes to the message service.
#include <dlfcn.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "cable_recorder.h"
#include "finites/services.h"
#include "frame_model.h"

namespace {

struct report_fields {
  int calls = 0;
  std::int32_t code = 0, types = 0, msg_length = 0;
  std::array<std::int32_t, 9> integer{};
  std::array<std::int32_t, 3> length{};
  std::array<std::string, 3> text;
};

report_fields& last_report() {
  static report_fields report;
  return report;
}

}  // namespace

// Visible, so that it goes before that of the common library, which still formats the message.
extern "C" __attribute__((visibility("default"))) void WERRTU(
    const std::int32_t* code, const std::int32_t* types, const std::int32_t* i1, const std::int32_t* i2,
    const std::int32_t* i3, const std::int32_t* i4, const std::int32_t* i5, const std::int32_t* i6,
    const std::int32_t* i7, const std::int32_t* i8, const std::int32_t* i9, const char* text1,
    const std::int32_t* length1, const char* text2, const std::int32_t* length2, const char* text3,
    const std::int32_t* length3, std::int32_t* ierr, char* msg, const std::int32_t* msg_length) {
  report_fields& report = last_report();
  ++report.calls;
  report.code = *code;
  report.types = *types;
  report.msg_length = *msg_length;
  report.integer = {*i1, *i2, *i3, *i4, *i5, *i6, *i7, *i8, *i9};
  report.length = {*length1, *length2, *length3};
  report.text = {std::string(text1, static_cast<std::size_t>(*length1)),
                 std::string(text2, static_cast<std::size_t>(*length2)),
                 std::string(text3, static_cast<std::size_t>(*length3))};
  static const auto service = reinterpret_cast<decltype(&WERRTU)>(dlsym(RTLD_NEXT, "WERRTU"));
  ASSERT_NE(service, nullptr);
  service(code, types, i1, i2, i3, i4, i5, i6, i7, i8, i9, text1, length1, text2, length2, text3, length3, ierr, msg,
          msg_length);
}

TEST(CableReport, FieldsOfTheMessage) {
  const auto field = [](std::string text) {
    text.resize(70, ' ');
    return text;
  };
  support::member_description m;
  m.family = support::member_family::cable;
  m.id = 4711;
  m.length = 8.0;
  m.unstressed_length = 9.5;
  for (const bool first : {true, false}) {
    cable_recorder::reset();
    (first ? cable_recorder::answers().equilibrium_status : cable_recorder::answers().tangent_status) = 29;
    last_report() = {};
    support::frame_model model({m});
    EXPECT_EQ(model.cable(0, 0).ierr, 1264);
    const report_fields& report = last_report();
    EXPECT_EQ(report.calls, 1);
    EXPECT_EQ(report.code, 1264);
    EXPECT_EQ(report.types, 22);  // two integers, two texts
    EXPECT_EQ(report.integer, (std::array<std::int32_t, 9>{4711, 29, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(report.length, (std::array<std::int32_t, 3>{70, 70, 70}));
    EXPECT_EQ(report.text[0], field("kStifT"));
    EXPECT_EQ(report.text[1], field(first ? "Case_1_L_0_3D2" : "Calc_Kt_Tangent"));
    EXPECT_EQ(report.text[2], field(""));
    EXPECT_EQ(report.msg_length, 500);
  }
  cable_recorder::reset();
}
