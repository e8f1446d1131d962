#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/Block.h"

using namespace torvane::partprogram;

namespace {

TEST(Block, LosesCommentBlanksAndCase) {
  const Block block("  g 01 x 10 ! to the corner ! of it");
  EXPECT_EQ(block.Text(), "G01X10");
  EXPECT_TRUE(block.Has(Word::G01));
  EXPECT_FALSE(block.Has('T'));
}

TEST(Block, AWordIsItsTextAnywhere) {
  EXPECT_TRUE(Block("G010X5").Has(Word::G01));
  EXPECT_TRUE(Block("M100").Has(Word::M10));
  EXPECT_TRUE(Block("XGG02").Has(Word::G02));
  EXPECT_FALSE(Block("G1X5").Has(Word::G01));
  EXPECT_TRUE(Block("GIFT").Has(Word::If));
}

TEST(Block, EndifHoldsIf) { EXPECT_TRUE(Block("ENDIF").Has(Word::If)); }

TEST(Block, SkipLevelsBySlashes) {
  EXPECT_EQ(Block("G01X10").SkipLevel(), 0);
  EXPECT_EQ(Block("/G01X10").SkipLevel(), 1);
  EXPECT_EQ(Block("//G01X10").SkipLevel(), 2);
  EXPECT_EQ(Block("\\G01X10").SkipLevel(), 1);
  EXPECT_EQ(Block("\\\\G01X10").SkipLevel(), 2);
  EXPECT_EQ(Block("/\\G01X10").SkipLevel(), 1);
  EXPECT_EQ(Block("/ /G01X10").SkipLevel(), 2);
}

TEST(Block, ADivisionIsASkipLevel) {
  EXPECT_EQ(Block("G01 X10/2").SkipLevel(), 1);
  EXPECT_EQ(Block("G01 X10//2").SkipLevel(), 2);
}

TEST(Block, ADefinitionNeedsAnSWithAValueAndNoG98) {
  EXPECT_TRUE(OpensDefinition(Block("S5")));
  EXPECT_TRUE(OpensDefinition(Block("N10 S 5 ! hole")));
  EXPECT_FALSE(OpensDefinition(Block("G98 S5 A0")));
  EXPECT_FALSE(OpensDefinition(Block("M00 (SHEET)")));
  EXPECT_FALSE(OpensDefinition(Block("G01 X5 ! S5")));
}

RC_GTEST_PROP(Block, TheScanMeansPlainSearches, ()) {
  const auto pieces =
      *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(std::vector<std::string>{
          "G", "M",  "0",  "1",  "2",   "3",      "9", "G0", "G01", "M30", "M0", "I",
          "F", "GO", "TO", "AB", "ORT", "RETURN", "/", "\\", " ",   "x",   "="}));
  std::string line;
  for (const auto& piece : pieces) line += piece;
  const Block block(line);
  const std::string text(block.Text());
  for (int i = 0; i < static_cast<int>(Word::Count); ++i) {
    const auto word = static_cast<Word>(i);
    RC_ASSERT(block.Has(word) == (text.find(TextOf(word)) != std::string::npos));
  }
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    RC_ASSERT(block.Has(letter) == (text.find(letter) != std::string::npos));
  }
  const bool two = text.find("//") != std::string::npos || text.find("\\\\") != std::string::npos;
  const bool one = text.find_first_of("/\\") != std::string::npos;
  RC_ASSERT(block.SkipLevel() == (two ? 2 : one ? 1 : 0));
}

}  // namespace
