// The text helpers.
#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"

namespace torvane::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Text, PartsOfALine) {
  EXPECT_EQ(BlockPart(" X10 ! first ! second"), "X10");
  EXPECT_EQ(CommentPart(" X10 ! first ! second"), "first ! second");
  EXPECT_EQ(BlockPart("X10"), "X10");
  EXPECT_EQ(CommentPart("X10"), "");
  EXPECT_EQ(SemicolonPart(" a ; b ; c"), "a");
  EXPECT_EQ(AfterColon("Port : COM1: "), "COM1:");
  EXPECT_EQ(AfterColon(" COM1 "), "COM1");
}

TEST(Text, PartsOfAName) {
  EXPECT_EQ(StripExtension("PART.ONE.prg"), "PART.ONE");
  EXPECT_EQ(StripExtension("PART"), "PART");
  EXPECT_EQ(NamePart("C:\\Progs\\Dir/PART.prg"), "PART.prg");
  EXPECT_EQ(NamePart("A:PART"), "PART");
  EXPECT_EQ(NamePart("PART"), "PART");
  EXPECT_EQ(NamePart("DIR\\"), "");
}

TEST(Text, BlanksAndCase) {
  EXPECT_EQ(Trim(" \t a b \r\n"), "a b");
  EXPECT_EQ(Trim("  "), "");
  EXPECT_EQ(RemoveBlanks(" X 10  Y"), "X10Y");
  EXPECT_EQ(UpperCase("g01 x\xE9"), "G01 X\xE9");  // other bytes stay as they are
  EXPECT_TRUE(EqualNoCase("Part.PRG", "pART.prg"));
  EXPECT_FALSE(EqualNoCase("Part", "Parts"));
}

TEST(Text, LinesEndInAnyOfTheThreeWays) {
  EXPECT_THAT(SplitLines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(SplitLines("a\r\n\r\n"), ElementsAre("a", ""));
  EXPECT_THAT(SplitLines("\n\r"), ElementsAre("", ""));
  EXPECT_THAT(SplitLines(""), IsEmpty());
}

RC_GTEST_PROP(Text, LinesJoinedAgainAreTheLines, (std::vector<std::string> lines)) {
  std::string text;
  for (std::string& line : lines) {
    std::erase_if(line, [](char c) { return c == '\r' || c == '\n'; });
    text += line + "\r\n";
  }
  const auto split = SplitLines(text);
  RC_ASSERT(std::vector<std::string>(split.begin(), split.end()) == lines);
}

}  // namespace
}  // namespace torvane::core
