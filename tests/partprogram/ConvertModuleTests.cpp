#include <string>

#include <gtest/gtest.h>

#include "partprogram/Conversion.h"
#include "partprogram/FixedLines.h"

using namespace torvane;
using namespace torvane::partprogram;
using torvane::tests::Join;
using torvane::tests::LargeMachine;

namespace {

std::string Converted(const std::string& line, bool swap = false, bool negate = false) {
  core::MachineData machine = LargeMachine();
  machine.SwapArcWords = swap;
  machine.NegateArcCentre = negate;
  std::string text = MakeIntermediateFiles(line + "\r\n", machine).Converted;
  EXPECT_TRUE(text.ends_with("\r\n"));
  text.resize(text.size() - 2);
  return text;
}

TEST(Converted, BlocksAreUpperCasedWithABlankBehind) {
  EXPECT_EQ(Converted("  g01 x10 y20  "), "G01 X10 Y20 ");
}

TEST(Converted, ACommentFollowsTheBlockAndKeepsItsCase) {
  EXPECT_EQ(Converted("g01 x10!  to the Corner  "), "G01 X10 ! to the Corner");
}

TEST(Converted, ALineOfCommentOnly) {
  EXPECT_EQ(Converted("!a hole"), "! a hole");
  EXPECT_EQ(Converted("!"), "");
}

TEST(Converted, TheFirstM01BecomesM00) {
  EXPECT_EQ(Converted("m01"), "M00 ");
  EXPECT_EQ(Converted("N5 M01 (M01)"), "N5 M00 (M01) ");
}

TEST(Converted, AWordIsAWordWithBlanksInIt) {
  EXPECT_EQ(Converted("m 01"), "M 00 ");
  EXPECT_EQ(Converted("M 0  1 M01"), "M 0 0 M01 ");
  EXPECT_EQ(Converted("M 0 X1 M01"), "M 0 X1 M00 ");
  EXPECT_EQ(Converted("G 02 X1 I1", true), "G 03 X1 I1 ");
  EXPECT_EQ(Converted("G 0 3 X1 I1", true, true), "G 0 2 X1 I-1  ");
  EXPECT_EQ(Converted("G02 G 01 X1 I1", true, true), "G02 G 01 X1 I1 ");
}

TEST(Converted, ManyBlanksBecomeOneInTheBlockOnly) {
  EXPECT_EQ(Converted("G01    X10     Y5 ! two  blanks"), "G01 X10 Y5 ! two  blanks");
}

TEST(Converted, ArcWordsTradePlacesOnAMachineThatWantsIt) {
  EXPECT_EQ(Converted("G02 X10 I5", true), "G03 X10 I5 ");
  EXPECT_EQ(Converted("G03 Y10 I5", true), "G02 Y10 I5 ");
  EXPECT_EQ(Converted("G02 X10 I5", false), "G02 X10 I5 ");
}

TEST(Converted, ArcWordsStayWithoutAPositionWordOrBesideAnotherWord) {
  for (const char* line : {"G02 I5 J5", "G02 G03 X5", "G02 G00 X5", "G03 G01 X5", "G02 G04 X5",
                           "G02 G92 X5", "G02 G56 X5", "G02 G53 X5", "G02 M50 X5"}) {
    EXPECT_EQ(Converted(line, true, true), std::string(line) + " ") << line;
  }
}

TEST(Converted, HAndVCountAsPositionWords) {
  EXPECT_EQ(Converted("G02 H5", true), "G03 H5 ");
  EXPECT_EQ(Converted("G02 V5", true), "G03 V5 ");
}

TEST(Converted, ArcCentresAreNegatedOnAMachineThatWantsIt) {
  EXPECT_EQ(Converted("G02 X10 Y5 I5 J-2.50", false, true), "G02 X10 Y5 I-5 J2.5  ");
  EXPECT_EQ(Converted("G03 X10 I+ 5 . 5 F100", false, true), "G03 X10 I-5.5 F100 ");
  EXPECT_EQ(Converted("G03 X10 I5 . 5F100", false, true), "G03 X10 I-5.5 F100 ");
  EXPECT_EQ(Converted("G02 X10 Y5 R5", false, true), "G02 X10 Y5 R5 ");
}

TEST(Converted, AModalArcIsNotRewritten) {
  EXPECT_EQ(Converted("X10 Y5 I5 J5", true, true), "X10 Y5 I5 J5 ");
}

TEST(Converted, LinesKeepTheirNumber) {
  const auto text =
      MakeIntermediateFiles(Join({"! A", "S1", "G01 X1", "M02", "!", "M30"}), LargeMachine());
  EXPECT_EQ(text.Converted, "! A\r\nS1 \r\nG01 X1 \r\nM02 \r\n\r\nM30 \r\n");
}

TEST(Body, LeavesOutTheDefinitionsWithTheirOpeningAndClosingLines) {
  const auto text = MakeIntermediateFiles(Join({"! HEAD", "G98 S1 A0", "M30", "S1 ! hole", "g01 x1",
                                                "M02", "! between", "s2", "G01 X2", "M02"}),
                                          LargeMachine());
  EXPECT_EQ(text.Body, "! HEAD\r\nG98 S1 A0\r\nM30\r\n! between\r\n");
}

TEST(Body, KeepsLinesAsWrittenButTrimmed) {
  const auto text = MakeIntermediateFiles("  g01  x10   ! Corner \r\n", LargeMachine());
  EXPECT_EQ(text.Body, "g01  x10   ! Corner\r\n");
}

TEST(Body, AnSWithoutAValueOpensNothing) {
  const auto text = MakeIntermediateFiles(Join({"M00 (NEXT SHEET)", "G01 X1"}), LargeMachine());
  EXPECT_EQ(text.Body, "M00 (NEXT SHEET)\r\nG01 X1\r\n");
}

TEST(Squeeze, TrimsAndDropsEmptyLines) {
  EXPECT_EQ(SqueezeProgram("  G01 X1  \n\n \t \r\nM30"), "G01 X1\r\nM30\r\n");
  EXPECT_EQ(SqueezeProgram(""), "");
}

TEST(FixedLines, ArePaddedCutAndCounted) {
  const auto fixed = MakeFixedLines("A\r\n\r\n" + std::string(90, 'B') + "\r\n", true);
  EXPECT_EQ(fixed.Count, 2);
  EXPECT_EQ(fixed.Bytes, "A" + std::string(79, ' ') + std::string(80, 'B'));
  EXPECT_EQ(MakeFixedLines("A\r\n\r\nB\r\n", false).Count, 3);
  EXPECT_EQ(MakeFixedLines("", true).Count, 0);
}

}  // namespace
