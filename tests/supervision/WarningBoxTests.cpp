#include <array>
#include <string>

#include <gtest/gtest.h>

#include "supervision/OperatorDialogs.h"
#include "supervision/WarningBox.h"

namespace torvane::supervision {
namespace {

constexpr std::array AllModes = {WarningMode::Ok, WarningMode::OkCancel, WarningMode::YesNo};

/// The captions of the buttons, "-" for a hidden one, then default, cancel and focus.
std::string Describe(WarningMode mode) {
  const auto& layout = WarningLayoutOf(mode);
  std::string text;
  for (const char* caption : layout.Captions) {
    text += std::string(caption == nullptr ? "-" : caption) + " ";
  }
  return text + std::to_string(layout.DefaultButton) + std::to_string(layout.CancelButton) +
         std::to_string(layout.FocusButton);
}

/// The answer of a box that a key closes.
bool AnswerTo(char letter, WarningMode mode) {
  WarningBox box;
  return box.ShowWarning("text", mode, WarningStyle::Warning, [&] {
    const auto button = WarningKeyButton(letter, box.Layout());
    if (button) box.Press(*button);
  });
}

TEST(WarningBox, LaysOutItsButtonsByMode) {
  EXPECT_EQ(Describe(WarningMode::Ok), "- &OK - 111");
  EXPECT_EQ(Describe(WarningMode::OkCancel), "&CANCEL - &OK 202");
  EXPECT_EQ(Describe(WarningMode::YesNo), "&NO - &YES 202");
}

TEST(WarningBox, AnswersByTheButton) {
  for (const WarningMode mode : AllModes) {
    for (const int button : {0, 1, 2}) {
      WarningBox box;
      EXPECT_EQ(box.ShowWarning("", mode, WarningStyle::Warning, [&] { box.Press(button); }),
                button != 0);
    }
  }
}

TEST(WarningBox, AnyOtherWayOfClosingAnswersFalse) {
  for (const WarningMode mode : AllModes) {
    WarningBox box;
    EXPECT_FALSE(box.ShowWarning("", mode, WarningStyle::Warning, [] {}));
    EXPECT_FALSE(box.ShowWarning("", mode, WarningStyle::Warning, [&] { box.Press(7); }));
  }
}

TEST(WarningBox, ABoxWithOkAloneClosedWithNoAnswersFalse) {
  EXPECT_FALSE(AnswerTo('N', WarningMode::Ok));
  EXPECT_FALSE(AnswerTo('C', WarningMode::Ok));
}

TEST(WarningBox, OAndYPressTheAffirmativeButtonOfEveryMode) {
  for (const WarningMode mode : AllModes) {
    EXPECT_TRUE(AnswerTo('O', mode));
    EXPECT_TRUE(AnswerTo('Y', mode));
    EXPECT_FALSE(AnswerTo('C', mode));
    EXPECT_FALSE(AnswerTo('N', mode));
  }
  EXPECT_EQ(WarningKeyButton('O', WarningLayoutOf(WarningMode::Ok)), 1);
  EXPECT_EQ(WarningKeyButton('Y', WarningLayoutOf(WarningMode::OkCancel)), 2);
}

TEST(WarningBox, OtherKeysDoNothing) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    const bool used = std::string("OYCN").find(letter) != std::string::npos;
    EXPECT_EQ(WarningKeyButton(letter, WarningLayoutOf(WarningMode::OkCancel)).has_value(), used)
        << letter;
  }
  EXPECT_FALSE(WarningKeyButton('\x1b', WarningLayoutOf(WarningMode::OkCancel)).has_value());
}

TEST(WarningBox, ASecondWarningIsAnsweredFalseAtOnceAndTheFirstGoesOn) {
  WarningBox box;
  bool shown = false;
  const bool answer = box.ShowWarning("first", WarningMode::OkCancel, WarningStyle::Warning, [&] {
    EXPECT_TRUE(box.Up());
    EXPECT_FALSE(
        box.ShowWarning("second", WarningMode::Ok, WarningStyle::Question, [&] { shown = true; }));
    EXPECT_EQ(box.Text(), "first");
    EXPECT_EQ(box.Images(), WarningImages::Warning);
    EXPECT_EQ(&box.Layout(), &WarningLayoutOf(WarningMode::OkCancel));
    box.Press(2);
  });
  EXPECT_TRUE(answer);
  EXPECT_FALSE(shown);
}

TEST(WarningBox, LeavesNoMarkAndNoTextBehind) {
  WarningBox box;
  box.ShowWarning("text", WarningMode::Ok, WarningStyle::Warning, [&] { box.Press(1); });
  EXPECT_FALSE(box.Up());
  EXPECT_EQ(box.Text(), "");
  EXPECT_THROW(box.ShowWarning("text", WarningMode::Ok, WarningStyle::Warning, [] { throw 1; }),
               int);
  EXPECT_FALSE(box.Up());
  EXPECT_FALSE(box.ShowWarning("text", WarningMode::Ok, WarningStyle::Warning, [] {}))
      << "the last answer must not live on";
}

TEST(WarningBox, ShowsTheImagesOfItsStyle) {
  EXPECT_EQ(WarningImagesOf(WarningStyle::Warning), WarningImages::Warning);
  EXPECT_EQ(WarningImagesOf(WarningStyle::Question), WarningImages::Question);
  EXPECT_EQ(WarningImagesOf(WarningStyle::Information), WarningImages::Information);
}

TEST(WarningText, IsLaidOutWithLineFeeds) {
  EXPECT_EQ(OneLineWarning("Invalid Program Name !"), "\n\nInvalid Program Name !");
  EXPECT_EQ(TwoLineWarning("Can Not Jog", "While Machine Is Running Or In Feedhold !"),
            "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !");
}

}  // namespace
}  // namespace torvane::supervision
