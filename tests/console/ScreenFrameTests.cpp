// The pattern of every screen: keys, CurrentForm, lock, order, hand-over, drag, and a screen that
// goes while its own handler runs.
#include "ConsoleFixture.h"
#include "TrialScreen.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class ScreenFrame : public ConsoleFixture {
 protected:
  ScreenFrame() { Start(); }

  void AddPlain(
      const std::string& name, const std::string& parent = {}, std::function<void()> go = [] {},
      bool* gone = nullptr) {
    Screens().Register(
        TrialRow({.Name = name, .Title = name, .Parent = parent}, [=](TrialScreen& screen) {
          screen.AddButton(screen.Body(), "GoButton", "&GO", console::Role::General, go);
          screen.OnGone = [gone] {
            if (gone != nullptr) *gone = true;
          };
        }));
  }
  [[nodiscard]] toolkit::Form& Window(const std::string& name) {
    return Screens().Find(name)->Window();
  }

  const std::vector<std::string> Modeless = {"ProgramForm",     "StatusMenuForm", "XYPositionForm",
                                             "AuxPositionForm", "ViewProgForm",   "SetupForm",
                                             "MessageForm"};
};

TEST_F(ScreenFrame, F8AndEscapeDoNothingOnAnyScreen) {
  for (const auto& name : Modeless) {
    Screens().Open(name);
    RunFor(100);
    (void)TakeCommands();
    TypeF(8);
    Type(Key::Escape);
    EXPECT_EQ(Front(), name);
    EXPECT_EQ(CurrentForm(), name);
    EXPECT_EQ(Screens().VisibleNames(), (std::vector<std::string>{"FrontEnd", name}));
    EXPECT_TRUE(TakeCommands().empty()) << name;
    Screens().Unload(name);
  }
}

TEST_F(ScreenFrame, XLeavesEachScreenAndEmptiesCurrentForm) {
  for (const auto& name : Modeless) {
    Screens().Open(name);
    EXPECT_EQ(CurrentForm(), name);
    Type(Key::X);
    EXPECT_FALSE(Shows(name));
    EXPECT_EQ(CurrentForm(), "") << name;
    EXPECT_EQ(Front(), "FrontEnd");
  }
}

TEST_F(ScreenFrame, CurrentFormFollowsTheScreenInFront) {
  TypeF(1);
  TypeF(4);
  TypeF(9);
  EXPECT_EQ(CurrentForm(), "MessageForm");
  Screens().Unload("StatusMenuForm");
  EXPECT_EQ(CurrentForm(), "MessageForm") << "another screen's end leaves it alone";
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(ScreenFrame, EachScreenIsOneInstanceAndForgetsItselfWhenItGoes) {
  TypeF(4);
  console::Screen* first = Screens().Find("StatusMenuForm");
  TypeF(1);
  TypeF(4);
  EXPECT_EQ(Screens().Find("StatusMenuForm"), first);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  Type(Key::X);
  EXPECT_EQ(Screens().Find("StatusMenuForm"), nullptr);
}

TEST_F(ScreenFrame, ATitlePanelDragsItsScreenAndABodyPanelDoesNot) {
  TypeF(4);
  auto& form = Window("StatusMenuForm");
  auto* title = Control<toolkit::Panel>("StatusMenuForm", "StatusPanel(0)");
  auto* body = Control<toolkit::Panel>("StatusMenuForm", "StatusPanel(1)");
  const int left = form.Left();
  const int top = form.Top();
  PressAt(*title, 20, 10);
  DragTo(*title, 50, 5);
  EXPECT_EQ(form.Left(), left + 30);
  EXPECT_EQ(form.Top(), top - 5);
  ReleaseAt(*title, 20, 10);
  DragTo(*title, 90, 90);
  EXPECT_EQ(form.Left(), left + 30) << "let go";
  PressAt(*title, 0, 10);
  DragTo(*title, 50, 30);
  ReleaseAt(*title, 50, 30);
  PressAt(*title, 10, 0);
  DragTo(*title, 50, 30);
  ReleaseAt(*title, 50, 30);
  EXPECT_EQ(form.Left(), left + 30) << "a press at 0 does not drag";
  PressAt(*body, 20, 10);
  DragTo(*body, 50, 5);
  ReleaseAt(*body, 50, 5);
  EXPECT_EQ(form.Left(), left + 30);
  PressAt(*title, 40, 12);
  DragTo(*title, 30, 12);
  ReleaseAt(*title, 40, 12);
  EXPECT_EQ(form.Left(), left + 20) << "a second press starts from the new place";
}

TEST_F(ScreenFrame, LockingLeavesTheMessagesTheMainScreenAndTheExemptOneLive) {
  AddPlain("WorkForm");
  for (const char* name : {"StatusMenuForm", "MessageForm", "WorkForm"}) Screens().Open(name);
  Screens().LockForms(true, "WorkForm");
  EXPECT_TRUE(System.Console.FormsLocked);
  EXPECT_TRUE(Window("FrontEnd").Enabled());
  EXPECT_TRUE(Window("MessageForm").Enabled());
  EXPECT_TRUE(Window("WorkForm").Enabled());
  EXPECT_FALSE(Window("StatusMenuForm").Enabled());
  Screens().Open("SetupForm");
  EXPECT_TRUE(Window("SetupForm").Enabled()) << "a screen that came after the lock";
  Screens().LockForms(true, "");
  EXPECT_FALSE(Window("WorkForm").Enabled());
  Screens().LockForms(false, "");
  for (const char* name : {"StatusMenuForm", "WorkForm", "SetupForm"})
    EXPECT_TRUE(Window(name).Enabled()) << name;
  EXPECT_FALSE(System.Console.FormsLocked) << "one release ends any number of locks";
}

TEST_F(ScreenFrame, ALockedScreenTakesNoKeysButF9AndF12AnswerAnyway) {
  TypeF(4);
  RunFor(50);
  Screens().LockForms(true, "");
  (void)TakeCommands();
  for (const Key key : {Key::X, Key::P, Key::K}) Type(key);
  TypeText("1");
  for (const int key : {1, 2, 3, 4, 5, 6, 7, 10, 11}) TypeF(key);
  EXPECT_EQ(Screens().VisibleNames(), (std::vector<std::string>{"FrontEnd", "StatusMenuForm"}));
  EXPECT_TRUE(TakeCommands().empty());
  ThenType(Key::C);
  TypeF(12);
  TypeF(9);
  EXPECT_TRUE(Shows("MessageForm"));
}

TEST_F(ScreenFrame, WithACommandDelayEachSendLocksTheScreensForItsLength) {
  TypeF(4);
  RunFor(100);
  TheConsole->Trio().StopPolling(true);
  RunFor(100);
  (void)TakeCommands();
  System.Link.CommandDelayMs = 100;
  bool locked = false;
  Loop.After(50, [&] {
    locked = System.Console.FormsLocked;
    EXPECT_FALSE(Window("StatusMenuForm").Enabled());
    TypeText("2");
    TypeF(1);
    TypeF(11);
  });
  TypeText("1");
  EXPECT_TRUE(locked);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_TRUE(Window("StatusMenuForm").Enabled());
  EXPECT_FALSE(Shows("ProgramForm"));
  EXPECT_EQ(TakeCommands(), std::vector<std::string>{"VR(92)=1"});
}

TEST_F(ScreenFrame, APauseOfNoLengthLeavesTheLockAlone) {
  for (const bool locked : {true, false}) {
    System.Console.FormsLocked = locked;
    TheConsole->Trio().LockAllForms(0);
    EXPECT_EQ(System.Console.FormsLocked, locked);
  }
}

TEST_F(ScreenFrame, NothingHidesBehindTheMainScreen) {
  AddPlain("One");
  AddPlain("Two");
  AddPlain("Three");
  for (const char* name : {"One", "Two", "Three"}) Screens().Open(name);
  System.Console.CurrentForm = "Two";
  Screens().RestoreFormOrder();
  EXPECT_EQ(Screens().VisibleNames(),
            (std::vector<std::string>{"FrontEnd", "One", "Three", "Two"}));
  EXPECT_EQ(Front(), "Two");
  System.Console.CurrentForm = "Nobody";
  Screens().RestoreFormOrder();
  EXPECT_EQ(Front(), "Two") << "the highest, where none is current";
}

TEST_F(ScreenFrame, AScreenGoesWhileTheOrderIsBeingRestored) {
  // A screen's activation may wait, and meanwhile the operator closes others.
  TypeF(4);
  Type(Key::P);
  Click(Main().PlotBox(1));
  System.Console.CurrentForm = "StatusMenuForm";
  Then([this] { Screens().Unload("XYPositionForm"); });
  Screens().RestoreFormOrder();
  RunFor(50);
  EXPECT_EQ(Front(), "StatusMenuForm");
}

TEST_F(ScreenFrame, AClosedChildHandsOverToItsParentWhateverStandsBetween) {
  AddPlain("FileHandleForm");
  AddPlain("FileForm", "FileHandleForm");
  Screens().Open("FileHandleForm");
  Screens().Open("StatusMenuForm");
  Screens().Open("FileForm");
  Control<toolkit::Button>("FileHandleForm", "GoButton")->SetFocus();
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
  EXPECT_EQ(Front(), "FileHandleForm");
  EXPECT_EQ(Focus("FileHandleForm"), "ExitButton");
  EXPECT_TRUE(Shows("StatusMenuForm"));
}

TEST_F(ScreenFrame, AChildWhoseParentHasGoneLeavesCurrentFormEmpty) {
  AddPlain("FileHandleForm");
  AddPlain("FileForm", "FileHandleForm");
  Screens().Open("FileHandleForm");
  Screens().Open("FileForm");
  Screens().Unload("FileHandleForm");
  EXPECT_EQ(CurrentForm(), "FileForm");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
  EXPECT_EQ(Front(), "FrontEnd");
}

TEST_F(ScreenFrame, AScreenUnloadedByItsOwnHandlerLivesUntilTheHandlerHasReturned) {
  bool gone = false;
  bool goneInside = true;
  AddPlain(
      "WorkForm", {},
      [&] {
        Screens().Unload("WorkForm");
        EXPECT_FALSE(Shows("WorkForm"));
        TheConsole->Trio().Download("VR(68)=50");  // waits, and the loop runs meanwhile
        RunFor(200);
        goneInside = gone;
      },
      &gone);
  Screens().Open("WorkForm");
  Type(Key::G);
  EXPECT_FALSE(goneInside) << "destroyed under its own handler";
  RunFor(10);
  EXPECT_TRUE(gone) << "destroyed from the loop, afterwards";
  EXPECT_EQ(Screens().Find("WorkForm"), nullptr);
}

TEST_F(ScreenFrame, AScreenOpenedAgainWhileItsOldSelfStillRunsIsANewOne) {
  bool reopened = false;
  AddPlain("WorkForm", {}, [&] {
    if (reopened) return;
    console::Screen* old = Screens().Find("WorkForm");
    Screens().Unload("WorkForm");
    reopened = true;
    Screens().Open("WorkForm");
    RunFor(100);
    EXPECT_NE(Screens().Find("WorkForm"), old);
    EXPECT_EQ(Front(), "WorkForm");
  });
  Screens().Open("WorkForm");
  Type(Key::G);
  EXPECT_EQ(CurrentForm(), "WorkForm");
  Type(Key::G);
  EXPECT_EQ(Front(), "WorkForm");
}

TEST_F(ScreenFrame, AFaultInAHandlerLeavesTheScreenFreeToGo) {
  AddPlain("WorkForm", {}, [] { throw platform::RuntimeFault("Keypad.cfg", "is missing"); });
  Screens().Open("WorkForm");
  EXPECT_THROW(Type(Key::G), platform::RuntimeFault);
  EXPECT_FALSE(Screens().Find("WorkForm")->Running());
  Type(Key::X);
  RunFor(10);
  EXPECT_EQ(Screens().Find("WorkForm"), nullptr);
}

TEST_F(ScreenFrame, ALaterRegistrationTakesThePlaceOfTheFirst) {
  EXPECT_FALSE(Screens().Known("LaterForm"));
  Screens().Open("LaterForm");
  EXPECT_EQ(CurrentForm(), "");
  bool first = false;
  AddPlain("LaterForm", {}, [&] { first = true; });
  bool second = false;
  AddPlain("LaterForm", {}, [&] { second = true; });
  EXPECT_TRUE(Screens().Known("LaterForm"));
  Screens().Open("LaterForm");
  Type(Key::G);
  EXPECT_FALSE(first);
  EXPECT_TRUE(second);
}

TEST_F(ScreenFrame, TheShutdownQuestionByItsKeys) {
  Then([this] {
    EXPECT_EQ(Front(), "ShutdownForm");
    EXPECT_EQ(LabelText("ShutdownForm", "ShutdownLabel"), "SHUT DOWN ?");
    EXPECT_EQ(Caption("ShutdownForm", "CancelButton"), "&CANCEL");
    EXPECT_EQ(Caption("ShutdownForm", "ShutdownButton"), "&OK");
    EXPECT_EQ(Caption("ShutdownForm", "ServiceButton"), "&SERVICE");
    EXPECT_EQ(Control<toolkit::Panel>("ShutdownForm", "ShutdownPanel(0)")->Caption(), "TORVANE 32");
    EXPECT_EQ(Focus("ShutdownForm"), "ShutdownButton");
    for (const Key key : {Key::Escape, Key::X, Key::K, Key::N, Key::F1, Key::F9, Key::F12})
      Type(key);
    EXPECT_EQ(Front(), "ShutdownForm");
    Lines.clear();
  });
  for (int i = 0; i < 10; ++i) Then([] {});
  Then([this] { EXPECT_GE(Times("? VR(19)"), 1) << "the poll was never stopped"; });
  ThenType(Key::C);
  TypeF(12);
  EXPECT_TRUE(Session.Events.empty());
  EXPECT_EQ(Front(), "FrontEnd");
}

TEST_F(ScreenFrame, ServiceEndsWithoutEndingTheSession) {
  ThenType(Key::S);
  TypeF(12);
  EXPECT_EQ(Session.Events, std::vector<std::string>{"end process"});
  EXPECT_FALSE(Shows("FrontEnd"));
}

TEST_F(ScreenFrame, ShutdownInTheMiddleOfARunDrawsOnNothingThatHasGone) {
  Select("STAR");
  Machine().CycleStart();
  RunFor(500);
  ThenType(Key::O);
  TypeF(12);
  EXPECT_EQ(Session.Events.back(), "end process");
  RunFor(500);
  TypeF(4);
  TheConsole->HandleFunctionKey(Key::F12);
  EXPECT_TRUE(Screens().VisibleNames().empty()) << "nothing comes up again";
}

}  // namespace
}  // namespace torvane::tests
