// The one modal question: what each mode shows, what each key answers.
#include "ConsoleFixture.h"
#include "toolkit/ImageMark.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class WarningScreen : public ConsoleFixture {
 protected:
  WarningScreen() { Start(); }

  bool Ask(int mode, int style = 1, const std::string& text = "\n\nText !") {
    return TheConsole->Screens().ShowWarning(text, static_cast<link::WarningMode>(mode),
                                             static_cast<link::WarningStyle>(style));
  }
  /// The captions of the buttons that show, "-" for a hidden one, and the focus.
  std::string Layout(int mode) {
    std::string seen;
    Then([this, &seen] {
      for (const char* name : {"WarningButton(0)", "WarningButton(1)", "WarningButton(2)"}) {
        auto* button = Control<toolkit::Button>("WarningForm", name);
        seen += button->Visible() ? button->Caption() + " " : "- ";
      }
      seen += Focus("WarningForm");
      Type(Key::C);
    });
    (void)Ask(mode);
    return seen;
  }
  bool AnswerTo(Key key, int mode) {
    ThenType(key);
    const bool answer = Ask(mode);
    EXPECT_FALSE(Shows("WarningForm"));
    return answer;
  }
};

TEST_F(WarningScreen, ButtonsByMode) {
  EXPECT_EQ(Layout(1), "- &OK - WarningButton(1)");
  EXPECT_EQ(Layout(2), "&CANCEL - &OK WarningButton(2)");
  EXPECT_EQ(Layout(3), "&NO - &YES WarningButton(2)");
}

TEST_F(WarningScreen, OAndYAffirmAndCAndNDenyInEveryMode) {
  for (const int mode : {1, 2, 3}) {
    EXPECT_TRUE(AnswerTo(Key::O, mode)) << mode;
    EXPECT_TRUE(AnswerTo(Key::Y, mode)) << mode;
    EXPECT_TRUE(AnswerTo(Key::Enter, mode)) << mode;
    EXPECT_FALSE(AnswerTo(Key::C, mode)) << mode;
    EXPECT_FALSE(AnswerTo(Key::N, mode)) << mode << ": button 0, hidden or not";
  }
}

TEST_F(WarningScreen, OtherKeysDoNothing) {
  Then([this] {
    for (const Key key : {Key::Escape, Key::A, Key::X, Key::K, Key::F1, Key::F9, Key::F12})
      Type(key);
    EXPECT_EQ(Front(), "WarningForm");
    EXPECT_EQ(Screens().VisibleNames(), (std::vector<std::string>{"FrontEnd", "WarningForm"}));
    Type(Key::O);
  });
  EXPECT_TRUE(Ask(2));
}

TEST_F(WarningScreen, AnyOtherWayOfClosingAnswersFalse) {
  Then([this] { Screens().Unload("WarningForm"); });
  EXPECT_FALSE(Ask(1));
}

TEST_F(WarningScreen, ImagesByStyleAndTheTextAsItIs) {
  const std::vector<std::string> images = {"WarningImage", "QuestionImage", "InformationImage"};
  for (int style = 1; style <= 3; ++style) {
    Then([&, style] {
      for (std::size_t i = 0; i < images.size(); ++i) {
        for (const char* side : {"(0)", "(1)"}) {
          EXPECT_EQ(Control<toolkit::ImageMark>("WarningForm", images[i] + side)->Visible(),
                    static_cast<int>(i) == style - 1)
              << images[i];
        }
      }
      EXPECT_EQ(Warning(), "\nCan Not Jog\nWhile & Machine Is Running !");
      EXPECT_EQ(Control<toolkit::Panel>("WarningForm", "WarningPanel(0)")->Caption(), "TORVANE 32");
      Type(Key::O);
    });
    (void)Ask(1, style, "\nCan Not Jog\nWhile & Machine Is Running !");
  }
}

TEST_F(WarningScreen, ItBeepsOnce) {
  const int beeps = Desk->Beeps();
  EXPECT_TRUE(AnswerTo(Key::O, 1));
  EXPECT_EQ(Desk->Beeps(), beeps + 1);
}

TEST_F(WarningScreen, ASecondWarningIsFalseAtOnceAndThePollGoesOnBeneathTheFirst) {
  Then([this] { EXPECT_FALSE(Ask(2, 1, "second")); });
  Then([this] {
    EXPECT_EQ(Warning(), "\n\nText !");
    SetVariable(25, 1234);
  });
  Then([this] { Lines.clear(); });
  for (int i = 0; i < 12; ++i) Then([] {});
  Then([this] {
    EXPECT_GE(Times("? VR(19)"), 1) << "the timer ticks on";
    Type(Key::O);
  });
  EXPECT_TRUE(Ask(2));
}

TEST_F(WarningScreen, TheNextWarningMayComeUpInTheVeryEventThatClosedTheFirst) {
  bool second = true;
  std::string seen;
  Then([&] {
    Type(Key::O);
    // The call of the first has not gone on yet.
    Then([&] {
      seen = Warning();
      Type(Key::C);
    });
    second = Ask(2, 1, "second");
  });
  EXPECT_TRUE(Ask(2)) << "the answer to the first";
  RunFor(100);
  EXPECT_EQ(seen, "second");
  EXPECT_FALSE(second);
}

TEST_F(WarningScreen, TheCallGoesOnThoughAnotherHandlerStillWaits) {
  Then([this] { Loop.WaitUntil([] { return false; }); });
  Then([this] { Type(Key::O); });
  EXPECT_TRUE(Ask(2));
}

TEST_F(WarningScreen, CurrentFormIsLeftAlone) {
  TypeF(4);
  Then([this] {
    EXPECT_EQ(CurrentForm(), "StatusMenuForm");
    Type(Key::O);
  });
  (void)Ask(1);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  EXPECT_EQ(Front(), "StatusMenuForm");
}

}  // namespace
}  // namespace torvane::tests
