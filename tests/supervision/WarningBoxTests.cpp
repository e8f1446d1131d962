#include <string>

#include <gtest/gtest.h>

#include "supervision/WarningBox.h"
#include "supervision/WarningText.h"

namespace torvane::supervision {
namespace {

/// The captions of the buttons, "-" for a hidden one, then default, cancel and focus.
std::string Describe(int mode) {
  const auto& layout = WarningLayoutOf(mode);
  std::string text;
  for (const char* caption : layout.Captions) {
    text += std::string(caption == nullptr ? "-" : caption) + " ";
  }
  return text + std::to_string(layout.DefaultButton) + std::to_string(layout.CancelButton) +
         std::to_string(layout.FocusButton);
}

/// The answer of a box that a key closes.
bool AnswerTo(char letter, int mode) {
  WarningBox box;
  return box.ShowWarning("text", mode, WarningStyle::Warning, [&] {
    const auto button = WarningKeyButton(letter, box.Layout());
    if (button) box.Press(*button);
  });
}

TEST(WarningBox, LaysOutItsButtonsByMode) {
  EXPECT_EQ(Describe(1), "- &OK - 111");
  EXPECT_EQ(Describe(2), "&CANCEL - &OK 202");
  EXPECT_EQ(Describe(3), "&NO - &YES 202");
  EXPECT_EQ(Describe(0), Describe(1));
  EXPECT_EQ(Describe(99), Describe(1));
}

TEST(WarningBox, AnswersByTheButton) {
  for (const int mode : {1, 2, 3}) {
    for (const int button : {0, 1, 2}) {
      WarningBox box;
      EXPECT_EQ(box.ShowWarning("", mode, 1, [&] { box.Press(button); }), button != 0);
    }
  }
}

TEST(WarningBox, AnyOtherWayOfClosingAnswersFalse) {
  for (const int mode : {1, 2, 3}) {
    WarningBox box;
    EXPECT_FALSE(box.ShowWarning("", mode, 1, [] {}));
    EXPECT_FALSE(box.ShowWarning("", mode, 1, [&] { box.Press(7); }));
  }
}

TEST(WarningBox, ABoxWithOkAloneClosedWithNoAnswersFalse) {
  EXPECT_FALSE(AnswerTo('N', WarningMode::Ok));
  EXPECT_FALSE(AnswerTo('C', WarningMode::Ok));
}

TEST(WarningBox, OAndYPressTheAffirmativeButtonOfEveryMode) {
  for (const int mode : {1, 2, 3}) {
    EXPECT_TRUE(AnswerTo('O', mode));
    EXPECT_TRUE(AnswerTo('Y', mode));
    EXPECT_FALSE(AnswerTo('C', mode));
    EXPECT_FALSE(AnswerTo('N', mode));
  }
  EXPECT_EQ(WarningKeyButton('O', WarningLayoutOf(1)), 1);
  EXPECT_EQ(WarningKeyButton('Y', WarningLayoutOf(2)), 2);
}

TEST(WarningBox, OtherKeysDoNothing) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    const bool used = std::string("OYCN").find(letter) != std::string::npos;
    EXPECT_EQ(WarningKeyButton(letter, WarningLayoutOf(2)).has_value(), used) << letter;
  }
  EXPECT_FALSE(WarningKeyButton('\x1b', WarningLayoutOf(2)).has_value());
}

TEST(WarningBox, ASecondWarningIsAnsweredFalseAtOnceAndTheFirstGoesOn) {
  WarningBox box;
  bool shown = false;
  const bool answer = box.ShowWarning("first", WarningMode::OkCancel, 1, [&] {
    EXPECT_TRUE(box.Up());
    EXPECT_FALSE(box.ShowWarning("second", WarningMode::Ok, 2, [&] { shown = true; }));
    EXPECT_EQ(box.Text(), "first");
    EXPECT_EQ(box.Images(), WarningImages::Warning);
    EXPECT_EQ(&box.Layout(), &WarningLayoutOf(2));
    box.Press(2);
  });
  EXPECT_TRUE(answer);
  EXPECT_FALSE(shown);
}

TEST(WarningBox, LeavesNoMarkAndNoTextBehind) {
  WarningBox box;
  box.ShowWarning("text", 1, 1, [&] { box.Press(1); });
  EXPECT_FALSE(box.Up());
  EXPECT_EQ(box.Text(), "");
  EXPECT_THROW(box.ShowWarning("text", 1, 1, [] { throw 1; }), int);
  EXPECT_FALSE(box.Up());
  EXPECT_FALSE(box.ShowWarning("text", 1, 1, [] {})) << "the last answer must not live on";
}

TEST(WarningBox, ShowsTheImagesOfItsStyle) {
  EXPECT_EQ(WarningImagesOf(1), WarningImages::Warning);
  EXPECT_EQ(WarningImagesOf(2), WarningImages::Question);
  EXPECT_EQ(WarningImagesOf(3), WarningImages::Information);
  EXPECT_EQ(WarningImagesOf(0), WarningImages::None);
  EXPECT_EQ(WarningImagesOf(4), WarningImages::None);
}

TEST(WarningText, IsLaidOutWithLineFeeds) {
  EXPECT_EQ(OneLineWarning("Invalid Program Name !"), "\n\nInvalid Program Name !");
  EXPECT_EQ(TwoLineWarning("Can Not Jog", "While Machine Is Running Or In Feedhold !"),
            "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !");
}

}  // namespace
}  // namespace torvane::supervision
