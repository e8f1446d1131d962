// What the frame gives a screen: a first look at keys, keys let go, boxes that open a pad, stages
// of the poll, the lock for its life, warnings and questions.
#include "ConsoleFixture.h"
#include "TrialScreen.h"
#include "console/EntryMode.h"

namespace torvane::tests {
namespace {

using toolkit::Key;
using toolkit::KeyStroke;

class ScreenKit : public ConsoleFixture {
 protected:
  ScreenKit() { Start(); }

  /// Registers and opens "WorkForm".
  void Work(console::ScreenTraits traits, TrialScreen::Maker make) {
    traits.Name = "WorkForm";
    Screens().Register(TrialRow(std::move(traits), std::move(make)));
    Screens().Open("WorkForm");
  }
  void Note(const std::string& event) { Events.push_back(event); }

  std::vector<std::string> Events;
};

TEST_F(ScreenKit, TheFirstLookComesBeforeGlobalKeysAndAccelerators) {
  bool swallow = false;
  Work({}, [&](TrialScreen& screen) {
    screen.AddButton(screen.Body(), "GoButton", "&GO", console::Role::General, [&] { Note("go"); });
    screen.OnFirstLook = [&](const KeyStroke& stroke) {
      Note("look " + std::to_string(static_cast<int>(stroke.Code)));
      return swallow;
    };
  });
  Type(Key::G);
  TypeF(9);
  EXPECT_EQ(Events, (std::vector<std::string>{"look 71", "go", "look 120"}));
  EXPECT_EQ(Front(), "MessageForm") << "a look that leaves the key alone changes nothing";
  Type(Key::X);
  Events.clear();
  swallow = true;
  Type(Key::G);
  Type(Key::X);
  TypeF(9);
  EXPECT_EQ(Events, (std::vector<std::string>{"look 71", "look 88", "look 120"}));
  EXPECT_EQ(Front(), "WorkForm");
}

TEST_F(ScreenKit, AKeyIsCarriedOutAfterAFirstLookThatWarned) {
  Work({}, [&](TrialScreen& screen) {
    screen.AddButton(screen.Body(), "GoButton", "&GO", console::Role::General, [&] { Note("go"); });
    screen.OnFirstLook = [&screen](const KeyStroke&) {
      screen.Warn("Can Not Jog", "While Machine Is Running Or In Feedhold !");
      return false;
    };
  });
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::G); }),
            "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !");
  EXPECT_EQ(Events, std::vector<std::string>{"go"});
}

TEST_F(ScreenKit, AKeyLetGoIsToldOnceAndNeverForRepeats) {
  Work({}, [&](TrialScreen& screen) {
    screen.AddKey(Key::Right, [&] { Note("right"); });
    screen.OnKeyUp = [&](const KeyStroke& stroke) {
      Note("up " + std::to_string(static_cast<int>(stroke.Code)));
    };
  });
  KeyStroke held(Key::Right);
  Desk->PressKey(held);
  held.Repeat = true;
  Desk->PressKey(held);
  Desk->PressKey(held);
  EXPECT_EQ(Events, (std::vector<std::string>{"right", "right", "right"}));
  Desk->ReleaseKey(KeyStroke(Key::Right));
  EXPECT_EQ(Events.back(), "up 39");
  EXPECT_EQ(Events.size(), 4U);
}

TEST_F(ScreenKit, AHeldKeyIsLetGoWhenItsScreenCloses) {
  Work({}, [&](TrialScreen& screen) { screen.OnKeyUp = [&](const KeyStroke&) { Note("up"); }; });
  Desk->PressKey(KeyStroke(Key::Left));
  Screens().Unload("WorkForm");
  EXPECT_EQ(Events, std::vector<std::string>{"up"});
}

TEST_F(ScreenKit, ANumberBoxOpensThePadAndHandsOnWhatCameBack) {
  Work({}, [&](TrialScreen& screen) {
    auto& box =
        screen.AddNumberBox(screen.Body(), "MoveBox(1)", console::EntryMode::Arithmetic, 2,
                            [&](double value) { Note(std::to_string(static_cast<int>(value))); });
    box.SetText("12.50");
    screen.AddKey(static_cast<Key>('1'), [&box] { box.Press(); });
  });
  auto* box = Control<toolkit::EntryBox>("WorkForm", "MoveBox(1)");
  ThenTypeText("2+3");
  ThenType(Key::Enter);
  Type(static_cast<Key>('1'));
  EXPECT_EQ(box->Text(), "5.00");
  EXPECT_EQ(Events, std::vector<std::string>{"5"});
  EXPECT_EQ(Focus("WorkForm"), "ExitButton");
  Then([this] { Control<toolkit::Button>("NumberForm", "ExitButton")->Press(); });
  Type(static_cast<Key>('1'));
  EXPECT_EQ(box->Text(), "5.00") << "CANCEL writes the value back";
  EXPECT_EQ(Events.size(), 2U);
}

TEST_F(ScreenKit, ABoxWhoseScreenWentUnderItsPadHandsNothingOn) {
  Work({}, [&](TrialScreen& screen) {
    auto& box = screen.AddNumberBox(screen.Body(), "MoveBox(1)", console::EntryMode::Arithmetic, -1,
                                    [&](double) { Note("entered"); });
    screen.AddKey(static_cast<Key>('1'), [&box] { box.Press(); });
  });
  Then([this] { Screens().Unload("WorkForm"); });
  ThenType(Key::Enter);
  Type(static_cast<Key>('1'));
  EXPECT_TRUE(Events.empty());
}

TEST_F(ScreenKit, AStageOfThePollRunsOnlyWhileItsScreenShows) {
  Work({}, [&](TrialScreen& screen) {
    screen.OfferStage(supervision::PollStage::Machine, [&] { Note("machine"); });
  });
  TheConsole->Poll().PollTrio();
  EXPECT_EQ(Events.size(), 1U);
  Screens().Find("WorkForm")->Window().Hide();
  TheConsole->Poll().PollTrio();
  EXPECT_EQ(Events.size(), 1U);
  Screens().Show("WorkForm");
  TheConsole->Poll().PollTrio();
  EXPECT_EQ(Events.size(), 2U);
}

TEST_F(ScreenKit, AScreenMayGoInItsOwnStage) {
  Work({}, [&](TrialScreen& screen) {
    screen.OfferStage(supervision::PollStage::RunTime, [&screen] { screen.Unload(); });
  });
  TheConsole->Poll().PollTrio();
  EXPECT_FALSE(Shows("WorkForm"));
  RunFor(50);
}

TEST_F(ScreenKit, AScreenThatLocksTheOthersDoesSoForItsLifeAndHandsOver) {
  TypeF(1);
  Screens().Register(TrialRow({.Name = "SearchForm", .Parent = "ProgramForm", .LocksOthers = true},
                              [&](TrialScreen& screen) {
                                screen.OnLoad = [&] {
                                  Note(System.Console.FormsLocked ? "locked" : "free");
                                };
                              }));
  Screens().Open("SearchForm");
  EXPECT_EQ(Events, std::vector<std::string>{"locked"}) << "before it is filled";
  EXPECT_FALSE(Screens().Find("ProgramForm")->Window().Enabled());
  EXPECT_TRUE(Screens().Find("SearchForm")->Window().Enabled());
  TypeF(4);
  EXPECT_FALSE(Shows("StatusMenuForm")) << "the keys that open a screen are dead";
  Type(Key::X);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_TRUE(Screens().Find("ProgramForm")->Window().Enabled());
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Focus("ProgramForm"), "ExitButton");
}

TEST_F(ScreenKit, AScreenThatGivesUpWhileItLoadsNeverShowsAndUnlocks) {
  TypeF(1);
  Screens().Register(TrialRow({.Name = "SearchForm", .Parent = "ProgramForm", .LocksOthers = true},
                              [](TrialScreen& screen) {
                                screen.OnLoad = [&screen] {
                                  screen.Warn("No Matching Programs Found !");
                                  screen.Unload();
                                };
                              }));
  EXPECT_EQ(Answered(Key::O, [this] { Screens().Open("SearchForm"); }),
            "\n\nNo Matching Programs Found !");
  EXPECT_EQ(Screens().Find("SearchForm"), nullptr);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
}

TEST_F(ScreenKit, AQuestionIsAnsweredByItsKeys) {
  bool answer = true;
  Work({}, [&](TrialScreen& screen) {
    screen.AddKey(Key::Q, [&] { answer = screen.Confirm("Delete", "BRACKET-40 ?"); });
  });
  EXPECT_EQ(Answered(Key::C, [this] { Type(Key::Q); }), "\nDelete\nBRACKET-40 ?");
  EXPECT_FALSE(answer);
  (void)Answered(Key::O, [this] { Type(Key::Q); });
  EXPECT_TRUE(answer);
}

TEST_F(ScreenKit, OneOfTheOptionsIsDownAndOnlyAChangeIsTold) {
  Work({}, [&](TrialScreen& screen) {
    auto& frame = screen.AddFrame(screen.Body(), "SpeedFrame", "SPEED");
    screen.AddOptions(frame, "SpeedOption", 1, {"1 (&H)", "5 (&I)"},
                      [&](int index) { Note(std::to_string(index)); });
  });
  Type(Key::H);
  Type(Key::H);
  Type(Key::I);
  EXPECT_EQ(Events, (std::vector<std::string>{"1", "2"}));
  EXPECT_FALSE(Down("WorkForm", "SpeedOption(1)"));
  EXPECT_TRUE(Down("WorkForm", "SpeedOption(2)"));
  EXPECT_EQ(Focus("WorkForm"), "ExitButton");
}

TEST_F(ScreenKit, GlobalKeysMayDependOnTheStateOfTheScreen) {
  Work({}, [&](TrialScreen& screen) {
    screen.AddKey(Key::S, [&screen] { screen.SetGlobalKeys(console::GlobalKeys::None); });
  });
  Type(Key::S);
  TypeF(9);
  EXPECT_EQ(Front(), "WorkForm");
}

TEST_F(ScreenKit, WhereTypingIsSwallowedNoCharacterReachesABox) {
  Work({.SwallowsTyping = true},
       [&](TrialScreen& screen) { screen.SetHome(screen.AddEntry(screen.Body(), "TextBox")); });
  TypeText("QW");
  EXPECT_EQ(Control<toolkit::EntryBox>("WorkForm", "TextBox")->Text(), "");
}

}  // namespace
}  // namespace torvane::tests
