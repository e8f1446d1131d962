// The underline rule and the name over its key.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "toolkit/Caption.h"

namespace torvane::toolkit {
namespace {

std::vector<std::string> Texts(const CaptionText& caption) {
  std::vector<std::string> texts;
  for (const auto& line : caption.Lines) texts.push_back(line.Text);
  return texts;
}

using Lines = std::vector<std::string>;

TEST(Caption, TheLetterBehindTheAmpersandIsUnderlined) {
  const CaptionLine line = ParseLine("REFERENCE &ALL");
  EXPECT_EQ(line.Text, "REFERENCE ALL");
  EXPECT_EQ(line.Underlined, 10);
  EXPECT_EQ(AcceleratorOf("REFERENCE &ALL"), 'A');
  EXPECT_EQ(AcceleratorOf("E&XIT"), 'X');
  EXPECT_EQ(AcceleratorOf("- 20 (&1)"), '1');
}

TEST(Caption, TwoAmpersandsAreOneAndNoAccelerator) {
  const CaptionLine line = ParseLine("&&");
  EXPECT_EQ(line.Text, "&");
  EXPECT_EQ(line.Underlined, -1);
  EXPECT_EQ(AcceleratorOf("&&"), 0);
  EXPECT_EQ(ParseLine("A && &B").Text, "A & B");
  EXPECT_EQ(ParseLine("A && &B").Underlined, 4);
}

TEST(Caption, OnlyTheFirstMarkCountsAndATrailingOneIsDropped) {
  EXPECT_EQ(ParseLine("&A&B").Text, "AB");
  EXPECT_EQ(ParseLine("&A&B").Underlined, 0);
  EXPECT_EQ(ParseLine("A&").Text, "A");
  EXPECT_EQ(ParseLine("A&").Underlined, -1);
}

TEST(Caption, ALowerLetterIsItsCapitalsAccelerator) { EXPECT_EQ(AcceleratorOf("&next"), 'N'); }

struct KeyCaption {
  const char* Text;
  Lines Shown;
};

class MainKeys : public ::testing::TestWithParam<KeyCaption> {};

TEST_P(MainKeys, StandAsNameOverKey) {
  const CaptionText caption = ParseCaption(GetParam().Text);
  EXPECT_EQ(Texts(caption), GetParam().Shown);
  EXPECT_TRUE(caption.NameOverKey);
}

INSTANTIATE_TEST_SUITE_P(Captions, MainKeys,
                         ::testing::Values(KeyCaption{"    PROGRAM     F1", {"PROGRAM", "F1"}},
                                           KeyCaption{"       LASER         F2", {"LASER", "F2"}},
                                           KeyCaption{"    MACHINE       F3", {"MACHINE", "F3"}},
                                           KeyCaption{"     STATUS        F4", {"STATUS", "F4"}},
                                           KeyCaption{"    KEYPAD     F5", {"KEYPAD", "F5"}},
                                           KeyCaption{"         FILE           F6", {"FILE", "F6"}},
                                           KeyCaption{"    GRAPHICS     F7", {"GRAPHICS", "F7"}},
                                           KeyCaption{"PROGRAM 1   F10", {"PROGRAM 1", "F10"}},
                                           KeyCaption{"PROGRAM 2   F11", {"PROGRAM 2", "F11"}},
                                           KeyCaption{"MESSAGES  F9", {"MESSAGES", "F9"}},
                                           KeyCaption{" SHUTDOWN   F12", {"SHUTDOWN", "F12"}}));

TEST(Caption, ARunOfBlanksBreaksTheLineWithoutAKeyToo) {
  EXPECT_EQ(Texts(ParseCaption("  &EDIT    LINE")), (Lines{"EDIT", "LINE"}));
  EXPECT_EQ(ParseCaption("  &EDIT    LINE").Lines[0].Underlined, 0);
  EXPECT_EQ(Texts(ParseCaption("  PAGE   &UP")), (Lines{"PAGE", "UP"}));
  EXPECT_EQ(ParseCaption("  PAGE   &UP").Lines[1].Underlined, 0);
  EXPECT_FALSE(ParseCaption("  PAGE   &UP").NameOverKey);
}

TEST(Caption, OneBlankKeepsTheLineTogether) {
  EXPECT_EQ(Texts(ParseCaption("&INSERT LINE")), (Lines{"INSERT LINE"}));
  EXPECT_EQ(Texts(ParseCaption("&CLEAR ALT+C")), (Lines{"CLEAR ALT+C"}));
}

TEST(Caption, ALineFeedBreaksTheLine) {
  EXPECT_EQ(Texts(ParseCaption("ONE\nTWO")), (Lines{"ONE", "TWO"}));
}

TEST(Caption, OnlyF1ToF12AreKeys) {
  EXPECT_FALSE(ParseCaption("NAME   F13").NameOverKey);
  EXPECT_FALSE(ParseCaption("NAME   F0").NameOverKey);
  EXPECT_FALSE(ParseCaption("NAME   F").NameOverKey);
  EXPECT_FALSE(ParseCaption("F1").NameOverKey);
}

TEST(Caption, AnEmptyOneHasNoLines) {
  EXPECT_TRUE(ParseCaption("").Lines.empty());
  EXPECT_TRUE(ParseCaption("     ").Lines.empty());
}

RC_GTEST_PROP(Caption, AnyTextIsTakenApartWithOneUnderlineWithinItsLine,
              (const std::string& text)) {
  int marks = 0;
  for (const auto& line : ParseCaption(text).Lines) {
    RC_ASSERT(line.Underlined >= -1);
    RC_ASSERT(line.Underlined < static_cast<int>(line.Text.size()));
    marks += line.Underlined >= 0;
  }
  RC_ASSERT(marks <= 1);
}

}  // namespace
}  // namespace torvane::toolkit
