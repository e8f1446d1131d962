#include <vector>

#include <gtest/gtest.h>

#include "partprogram/ProgramHeader.h"

using namespace torvane::partprogram;

namespace {

ProgramHeader Read(const std::vector<std::string_view>& lines, std::int16_t clamps = 2) {
  return ReadProgramHeader(lines, clamps);
}

TEST(ProgramHeader, IsEmptyWithoutStatements) {
  const auto header = Read({"! A PLATE", "G71"});
  EXPECT_EQ(header.Material, "");
  EXPECT_EQ(header.SheetX, 0);
}

TEST(ProgramHeader, EndsAtTheFirstLineWithoutAComment) {
  const auto header = Read({"! HEAD", "", "G71", "! MATERIAL : Steel"});
  EXPECT_EQ(header.Material, "");
}

TEST(ProgramHeader, ABlockWithACommentStillBelongsToIt) {
  EXPECT_EQ(Read({"G71 ! MATERIAL : Steel"}).Material, "Steel");
}

TEST(ProgramHeader, MaterialKeepsItsCaseAndTheFirstWins) {
  const auto header = Read({"! Material of the day:  St 37, 2 mm  ", "! MATERIAL : Brass"});
  EXPECT_EQ(header.Material, "St 37, 2 mm");
}

TEST(ProgramHeader, AStatementNeedsAColonToTheRight) {
  EXPECT_EQ(Read({"! : MATERIAL Steel"}).Material, "");
}

struct SheetCase {
  const char* Line;
  double X;
  double Y;
};
class SheetForms : public ::testing::TestWithParam<SheetCase> {};
TEST_P(SheetForms, AreRead) {
  const auto header = Read({GetParam().Line});
  EXPECT_EQ(header.SheetX, GetParam().X);
  EXPECT_EQ(header.SheetY, GetParam().Y);
}
INSTANTIATE_TEST_SUITE_P(
    ProgramHeader, SheetForms,
    ::testing::Values(
        SheetCase{"! SHEET : X1200 Y600", 1200, 600},
        SheetCase{"! sheet : x1200.5 y600", 1200.5, 600},
        SheetCase{"! SHEET : X=1200 Y=600", 1200, 600}, SheetCase{"! SHEET : 500 X 250", 500, 250},
        SheetCase{"! SHEET : 500X250", 500, 250}, SheetCase{"! Sheet Size :  500 X  250", 500, 250},
        SheetCase{"! SHEET : Y600 X1200", 1200, 600}, SheetCase{"! SHEET : X1200", 0, 0},
        SheetCase{"! SHEET : X-5 Y600", 0, 0}, SheetCase{"! SHEET X1200 Y600", 0, 0},
        // taken into the text, not worked out: the leading number counts
        SheetCase{"! SHEET : X600*2 Y600", 600, 600},
        // a blank behind the first character ends a number
        SheetCase{"! SHEET : X1 200 Y600", 1, 600}));

TEST(ProgramHeader, ALaterSheetLineMayTryAgain) {
  const auto header = Read({"! SHEET : X0 Y600", "! SHEET : X800 Y400", "! SHEET : X1 Y1"});
  EXPECT_EQ(header.SheetX, 800);
  EXPECT_EQ(header.SheetY, 400);
}

struct ClampCase {
  std::int16_t Count;
  const char* Line;
  std::array<double, 4> Clamps;
};
class ClampForms : public ::testing::TestWithParam<ClampCase> {};
TEST_P(ClampForms, AreReadByTheClampCount) {
  EXPECT_EQ(Read({GetParam().Line}, GetParam().Count).Clamps, GetParam().Clamps);
}
INSTANTIATE_TEST_SUITE_P(
    ProgramHeader, ClampForms,
    ::testing::Values(ClampCase{2, "! CLAMP : L80 R380", {80, 380}},
                      ClampCase{2, "! CLAMP : L=80 R=380", {80, 380}},
                      ClampCase{2, "! CLAMP : A80 B380", {80, 380}},
                      ClampCase{2, "! CLAMPS : A=80 B=380", {80, 380}},
                      ClampCase{2, "! CLAMP : 1=80 2=380", {80, 380}},
                      ClampCase{0, "! CLAMP : L80 R380", {80, 380}},
                      ClampCase{5, "! CLAMP : L80 R380", {80, 380}},
                      ClampCase{2, "! CLAMP : R380 L80", {}}, ClampCase{2, "! CLAMP : L80 R0", {}},
                      ClampCase{3, "! CLAMP : L80 M200 R380", {80, 200, 380}},
                      ClampCase{3, "! CLAMP : L=80 M=200 R=380", {80, 200, 380}},
                      ClampCase{3, "! CLAMP : A80 B200 C380", {80, 200, 380}},
                      ClampCase{3, "! CLAMP : A=80 B=200 C=380", {80, 200, 380}},
                      ClampCase{3, "! CLAMP : 1=80 2=200 3=380", {80, 200, 380}},
                      ClampCase{4, "! CLAMP : A80 B200 C380 D500", {80, 200, 380, 500}},
                      ClampCase{4, "! CLAMP : A=80 B=200 C=380 D=500", {80, 200, 380, 500}},
                      ClampCase{4, "! CLAMP : 1=80 2=200 3=380 4=500", {80, 200, 380, 500}},
                      ClampCase{4, "! CLAMP : L80 R380", {}},
                      // A clamp that the line does not hold is as the reader of numbers gives it.
                      ClampCase{3, "! CLAMP : A80 B200", {80, 200, -999}},
                      ClampCase{4, "! CLAMP : A80 B200", {80, 200, -999, -999}},
                      ClampCase{4, "! CLAMP : A80 B200 D500", {80, 200, -999, 500}},
                      ClampCase{4, "! CLAMP : A=80 B=200", {80, 200, -999, -999}},
                      ClampCase{4, "! CLAMP : A80 B C D", {}}));

TEST(ProgramHeader, TheFirstGoodClampLineStands) {
  const auto header = Read({"! CLAMP : L0 R380", "! CLAMP : L80 R380", "! CLAMP : L1 R2"});
  EXPECT_EQ(header.Clamps, (std::array<double, 4>{80, 380}));
}

TEST(ProgramHeader, TextsOfTheProgramInformation) {
  ProgramHeader header;
  header.Material = "Steel";
  header.SheetX = 1000;
  header.SheetY = 12.3;
  header.Clamps = {80, 380.5};
  EXPECT_EQ(MaterialText(header), "Material :  Steel");
  EXPECT_EQ(SheetText(header), "Sheet Size :  1000x12.3");
  EXPECT_EQ(ClampText(header), "Clamps :  80 & 380.5");
  header.Clamps = {80, 200, 380};
  EXPECT_EQ(ClampText(header), "Clamps :  80, 200, 380");
  header.Clamps = {80, 200, 380, 500};
  EXPECT_EQ(ClampText(header), "Clamps :  80, 200, 380, 500");
  header.Clamps = {80, 0, 380, 500};
  EXPECT_EQ(ClampText(header), "Clamps :  80 & 0");
  header.Clamps = {};
  EXPECT_EQ(ClampText(header), "Clamps :  0 & 0");
}

TEST(ProgramHeader, NumbersOfNoMachineAreNoNumbers) {
  const std::string line = "! SHEET : X" + std::string(400, '9') + " Y5";
  const std::string_view view = line;
  EXPECT_EQ(ReadProgramHeader(std::span(&view, 1), 2).SheetX, 0);
}

}  // namespace
