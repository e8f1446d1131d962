// Jogging, by keys and by touch: what each key sends, and that whatever ends the operator's hold
// ends the motion.
#include <algorithm>

#include "ConsoleFixture.h"
#include "JogFixture.h"

namespace torvane::tests {
namespace {

using toolkit::Key;
using Words = std::vector<std::string>;

constexpr const char* JogWarning = "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !";

class JogScreen : public JogFixture {
 protected:
  JogScreen() { Start(); }
};

// ---- what it shows ----

TEST_F(JogScreen, CaptionsToTheLetter) {
  Open();
  EXPECT_EQ(CurrentForm(), "XYJogForm");
  EXPECT_EQ(Control<toolkit::Panel>("XYJogForm", "JogPanel(0)")->Caption(), "X Y  JOG");
  EXPECT_EQ(Control<toolkit::Frame>("XYJogForm", "SpeedFrame")->Caption(), "  SPEED % ");
  EXPECT_EQ(Control<toolkit::Frame>("XYJogForm", "DistanceFrame")->Caption(), "DISTANCE");
  EXPECT_EQ(LabelText("XYJogForm", "PositionLabel"), "POSITION");
  EXPECT_EQ(Caption("XYJogForm", "ExitButton"), "E&XIT");
  const Words distances = {"0.01 (&A)", "0.1 (&B)", "1 (&C)",   "10 (&D)",
                           "50 (&E)",   "100 (&F)", "CONT (&G)"};
  const Words speeds = {"1 (&H)", "5 (&I)", "10 (&J)", "25 (&K)", "50 (&L)", "75 (&M)", "100 (&N)"};
  for (int i = 1; i <= 7; ++i) {
    EXPECT_EQ(Caption("XYJogForm", Named("DistanceOption", i)),
              distances[static_cast<std::size_t>(i - 1)]);
    EXPECT_EQ(Caption("XYJogForm", Named("SpeedOption", i)),
              speeds[static_cast<std::size_t>(i - 1)]);
  }
  EXPECT_EQ(Focus("XYJogForm"), "PositionBox");
}

TEST_F(JogScreen, TheLabelsAndTheWordsOfYFollowTheMachine) {
  struct Row {
    std::int16_t YDirection;
    const char* Up;
    const char* UpWord;
    const char* Down;
    const char* DownWord;
  };
  for (const Row& row : {Row{1, "Y+", "VR(48)=21", "Y-", "VR(48)=22"},
                         Row{-1, "Y-", "VR(48)=22", "Y+", "VR(48)=21"}}) {
    System.Machine.YDirection = row.YDirection;
    Open();
    EXPECT_EQ(LabelText("XYJogForm", "JogLabel(1)"), "X+");
    EXPECT_EQ(LabelText("XYJogForm", "JogLabel(2)"), row.Up);
    EXPECT_EQ(LabelText("XYJogForm", "JogLabel(3)"), "X-");
    EXPECT_EQ(LabelText("XYJogForm", "JogLabel(4)"), row.Down);
    const std::pair<Key, const char*> keys[] = {{Key::Right, "VR(48)=19"},
                                                {Key::Left, "VR(48)=20"},
                                                {Key::Up, row.UpWord},
                                                {Key::Down, row.DownWord}};
    for (const auto& [key, word] : keys) {
      Desk->PressKey(toolkit::KeyStroke(key));
      RunFor(50);
      EXPECT_EQ(TakeCommands(), Words{word});
      Desk->ReleaseKey(toolkit::KeyStroke(key));
      RunFor(50);
      EXPECT_EQ(TakeCommands(), Words{"VR(48)=0"});
    }
    Type(Key::X);
  }
}

TEST_F(JogScreen, ThePositionsAreThePollsWithTwoDecimals) {
  Open();
  Type(Key::G);
  Hold(Key::Right);
  RunFor(2000);
  Let(Key::Right);
  RunFor(300);
  EXPECT_NE(LabelText("XYJogForm", "PositionText(1)"), "0.00");
  EXPECT_EQ(LabelText("XYJogForm", "PositionText(1)"), core::NumberText(System.State.XPosition, 2));
  EXPECT_EQ(LabelText("XYJogForm", "PositionText(2)"), core::NumberText(System.State.YPosition, 2));
}

// ---- what it takes over when it opens ----

TEST_F(JogScreen, AnyOtherDistanceIsResetToContinuousAndTheSpeedIsSentAgain) {
  SetVariable(11, 0);
  SetVariable(12, 50);
  SetVariable(10, 5000);
  TypeF(3);
  Lines.clear();
  Type(Key::J);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(11)=0", "VR(12)=10", "VR(11)=0", "VR(10)=5000.00"}));
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(7)"));
  EXPECT_TRUE(Down("XYJogForm", "SpeedOption(4)"));
}

TEST_F(JogScreen, AStoredDistanceOfOneSelectsTheFirstOptionAndChangesItself) {
  SetVariable(11, 0);
  SetVariable(12, 1);
  TypeF(3);
  Lines.clear();
  Type(Key::J);
  RunFor(50);
  const Words sent = TakeCommands();
  ASSERT_GE(sent.size(), 2U);
  EXPECT_EQ(sent[0], "VR(11)=1");
  EXPECT_EQ(sent[1], "VR(12)=0.01");
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(1)"));
  EXPECT_EQ(Controller->Memory().Variable(12), 0.01);
}

TEST_F(JogScreen, AControllerThatJogsByStepsSelectsContinuous) {
  SetVariable(11, 1);
  SetVariable(12, 10);
  TypeF(3);
  Lines.clear();
  Type(Key::J);
  RunFor(50);
  EXPECT_EQ(TakeCommands().at(0), "VR(11)=0");
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(7)"));
}

TEST_F(JogScreen, AStoredSpeedSnapsToItsBand) {
  struct Row {
    double Percent;
    int Option;
    const char* Sent;
  };
  System.Link.JogMaxSpeed = 20000;
  for (const Row& row : {Row{0, 1, "VR(10)=200.00"}, Row{4, 1, "VR(10)=200.00"},
                         Row{8, 2, "VR(10)=1000.00"}, Row{8.1, 3, "VR(10)=2000.00"},
                         Row{80, 6, "VR(10)=15000.00"}, Row{80.5, 7, "VR(10)=20000.00"}}) {
    SetVariable(10, row.Percent * 200);
    Open(false);
    EXPECT_EQ(TakeCommands().back(), row.Sent) << row.Percent;
    EXPECT_TRUE(Down("XYJogForm", Named("SpeedOption", row.Option))) << row.Percent;
    Type(Key::X);
  }
}

TEST_F(JogScreen, AMissingFullSpeedIsTwentyThousand) {
  System.Link.JogMaxSpeed = 0;
  SetVariable(10, 1600);
  Open(false);
  EXPECT_EQ(TakeCommands().back(), "VR(10)=1000.00") << "exactly 8 % belongs to the lower speed";
}

TEST_F(JogScreen, OnADeadLineItSendsTheValuesOfNothing) {
  System.Link.ReplyTimeoutMs = 100;
  System.Link.ReportCommsErrors = false;
  TypeF(3);
  SetFault(simulator::FaultKind::Silence, 1);
  Press(Key::J);
  RunFor(3000);
  ASSERT_TRUE(Shows("XYJogForm"));
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(7)"));
  EXPECT_TRUE(Down("XYJogForm", "SpeedOption(1)"));
}

TEST_F(JogScreen, WithTheLinkOffItWorksAndSendsNothing) {
  System.Link.TrioLinkEnabled = false;
  TypeF(3);
  Lines.clear();
  Type(Key::J);
  Type(Key::D);
  Type(Key::Right);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{});
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(4)"));
}

// ---- its options ----

TEST_F(JogScreen, EachKeyOfADistanceSendsItsLinesUnlessItIsOn) {
  Open();
  const std::pair<Key, Words> rows[] = {{Key::A, {"VR(11)=1", "VR(12)=0.01"}},
                                        {Key::B, {"VR(11)=1", "VR(12)=0.1"}},
                                        {Key::C, {"VR(11)=1", "VR(12)=1"}},
                                        {Key::D, {"VR(11)=1", "VR(12)=10"}},
                                        {Key::E, {"VR(11)=1", "VR(12)=50"}},
                                        {Key::F, {"VR(11)=1", "VR(12)=100"}},
                                        {Key::G, {"VR(11)=0"}}};
  for (const auto& [key, lines] : rows) {
    Type(key);
    EXPECT_EQ(TakeCommands(), lines);
    Type(key);
    EXPECT_EQ(TakeCommands(), Words{}) << "it is on already";
    EXPECT_EQ(Focus("XYJogForm"), "PositionBox");
  }
}

TEST_F(JogScreen, EachKeyOfASpeedSendsItsShareOfTheFullSpeed) {
  System.Link.JogMaxSpeed = 12345;
  Open();
  const std::pair<Key, const char*> rows[] = {
      {Key::H, "VR(10)=123.45"},  {Key::I, "VR(10)=617.25"},  {Key::J, "VR(10)=1234.50"},
      {Key::K, "VR(10)=3086.25"}, {Key::L, "VR(10)=6172.50"}, {Key::M, "VR(10)=9258.75"},
      {Key::N, "VR(10)=12345.00"}};
  Type(Key::N);
  Lines.clear();
  for (const auto& [key, line] : rows) {
    Type(key);
    EXPECT_EQ(TakeCommands(), Words{line});
    Type(key);
    EXPECT_EQ(TakeCommands(), Words{});
  }
}

TEST_F(JogScreen, KIsASpeedAndF5TheKeypad) {
  Open();
  Type(Key::K);
  EXPECT_TRUE(Down("XYJogForm", "SpeedOption(4)"));
  EXPECT_EQ(CurrentForm(), "XYJogForm");
  TypeF(5);
  EXPECT_EQ(CurrentForm(), "UserForm");
}

TEST_F(JogScreen, OptionsByTouch) {
  Open();
  Click(*Control<toolkit::Button>("XYJogForm", "DistanceOption(3)"));
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(11)=1", "VR(12)=1"}));
  Click(*Control<toolkit::Button>("XYJogForm", "SpeedOption(7)"));
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(10)=20000.00"});
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(3)"));
  EXPECT_FALSE(Down("XYJogForm", "DistanceOption(7)"));
  EXPECT_EQ(Focus("XYJogForm"), "PositionBox");
  Click(*Control<toolkit::Label>("XYJogForm", "PositionText(2)"));
  EXPECT_EQ(Focus("XYJogForm"), "PositionBox");
}

TEST_F(JogScreen, AnOptionPressedWhileItOpensStands) {
  SetVariable(11, 0);
  SetVariable(12, 50);
  SetVariable(10, 20000);
  SetFault(simulator::FaultKind::Late, 1);
  TypeF(3);
  Press(Key::J);
  RunFor(2000);
  ASSERT_TRUE(Shows("XYJogForm"));
  Press(Key::A);
  Press(Key::H);
  Controller->SetFaults({});
  RunFor(20000);
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(1)"));
  EXPECT_TRUE(Down("XYJogForm", "SpeedOption(1)"));
  EXPECT_EQ(Controller->Memory().Variable(11), 1);
  EXPECT_EQ(Controller->Memory().Variable(12), 0.01);
  EXPECT_EQ(Controller->Memory().Variable(10), 200);
}

// ---- the arrows ----

TEST_F(JogScreen, AHeldKeyRepeatsItsWordAndIsLit) {
  Open();
  const auto dark = Control<toolkit::Button>("XYJogForm", "JogButton(1)")->Background();
  Hold(Key::Right);
  RunFor(50);
  EXPECT_NE(Control<toolkit::Button>("XYJogForm", "JogButton(1)")->Background(), dark);
  Repeat(Key::Right);
  RunFor(50);
  Repeat(Key::Right);
  RunFor(50);
  Let(Key::Right);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(48)=19", "VR(48)=19", "VR(48)=19", "VR(48)=0"}));
  EXPECT_EQ(Control<toolkit::Button>("XYJogForm", "JogButton(1)")->Background(), dark);
}

TEST_F(JogScreen, ADistanceChosenUnderAHoldIsSentAfterTheStop) {
  Open();
  Hold(Key::Right);
  RunFor(50);
  Type(Key::A);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(48)=19", "VR(48)=0", "VR(11)=1", "VR(12)=0.01"}));
  Repeat(Key::Right);
  RunFor(50);
  Let(Key::Right);
  RunFor(50);
  for (const std::string& line : TakeCommands()) EXPECT_EQ(line, "VR(48)=0");
}

TEST_F(JogScreen, AnyArrowLetGoStopsEvenWithAnotherHeld) {
  Open();
  Hold(Key::Right);
  RunFor(50);
  Hold(Key::Up);
  RunFor(50);
  Let(Key::Right);
  RunFor(50);
  EXPECT_EQ(TakeCommands().back(), "VR(48)=0");
  Repeat(Key::Up);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{YUpWord()});
  Let(Key::Up);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(48)=0"});
}

TEST_F(JogScreen, ByTouchAPressJogsAndItsEndStops) {
  Open();
  const std::pair<int, std::string> rows[] = {
      {1, "VR(48)=19"}, {3, "VR(48)=20"}, {2, YUpWord()}, {4, YDownWord()}};
  for (const auto& [number, word] : rows) {
    auto& button = Arrow(number);
    PressAt(button, 20, 20);
    RunFor(50);
    EXPECT_EQ(TakeCommands(), Words{word});
    ReleaseAt(button, 20, 20);
    RunFor(50);
    EXPECT_EQ(TakeCommands(), Words{"VR(48)=0"});
    EXPECT_EQ(Focus("XYJogForm"), "PositionBox");
  }
}

TEST_F(JogScreen, AFingerThatSlidesOffTheKeyStopsAndOtherButtonsOfThePointerDoNothing) {
  Open();
  auto& button = Arrow(2);
  PressAt(button, 20, 20, Qt::RightButton);
  ReleaseAt(button, 20, 20, Qt::RightButton);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{});
  PressAt(button, 20, 20);
  DragTo(button, 30, 25);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{YUpWord()}) << "it is still on the key";
  DragTo(button, -5, 20);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(48)=0"});
  DragTo(button, 20, 20);
  ReleaseAt(button, 20, 20);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{}) << "back on the key it is no new press";
}

// ---- the guard: it warns, and the key acts all the same ----

TEST_F(JogScreen, EveryKeyIsWarnedOfInARunAndThenCarriedOut) {
  Open();
  SetRunning(true);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::D); }), JogWarning);
  EXPECT_EQ(TakeCommands(), (Words{"VR(11)=1", "VR(12)=10"}));
  SetRunning(true);
  EXPECT_EQ(Answered(Key::O, [this] { TypeF(4); }), JogWarning);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  Type(Key::X);
  SetRunning(true);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::X); }), JogWarning);
  EXPECT_FALSE(Shows("XYJogForm"));
}

TEST_F(JogScreen, InAFeedHoldItWarnsInACycleOrAnErrorItDoesNot) {
  Open();
  System.State.MachineCycleBit = true;
  System.State.MachineInError = 4096;
  Type(Key::D);
  EXPECT_FALSE(Shows("WarningForm"));
  System.State.MachineFeedhold = true;
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::E); }), JogWarning);
  EXPECT_TRUE(Down("XYJogForm", "DistanceOption(5)"));
}

TEST_F(JogScreen, AnArrowInARunIsWarnedOfAndItsWordIsStoppedAtOnce) {
  Open();
  SetRunning(true);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::Right); }), JogWarning);
  RunFor(100);
  const Words sent = TakeCommands();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(48)=19"), 1);
  EXPECT_EQ(sent.back(), "VR(48)=0");
}

TEST_F(JogScreen, AFingerInARunIsWarnedOfAndItsWordIsStoppedAtOnce) {
  Open();
  SetRunning(true);
  PressAt(Arrow(1), 20, 20);
  RunFor(50);
  EXPECT_EQ(Warning(), JogWarning);
  ReleaseAt(Arrow(1), 20, 20);
  Type(Key::O);
  RunFor(100);
  const Words sent = TakeCommands();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(48)=19"), 1);
  EXPECT_EQ(sent.back(), "VR(48)=0");
}

// ---- whatever ends the hold ends the motion ----

/// How a hold ends without a release of the key.
struct EndRow {
  const char* Name;
  std::function<void(JogFixture&)> End;
};

const std::vector<EndRow>& EndRows() {
  static const std::vector<EndRow> rows = {
      {"Exit", [](JogFixture& jog) { jog.Press(Key::X); }},
      {"Messages", [](JogFixture& jog) { jog.Press(Key::F9); }},
      {"AnotherScreen", [](JogFixture& jog) { jog.Press(Key::F4); }},
      {"TheQuestionOfF12", [](JogFixture& jog) { jog.Press(Key::F12); }},
      {"TheWindowLosesTheKeys", [](JogFixture& jog) { jog.LoseTheWindow(); }},
      {"ALock", [](JogFixture& jog) { jog.Lock(true); }},
      {"ADialog", [](JogFixture& jog) { jog.ShowADialog(); }},
      {"AScreenThatComesByItself", [](JogFixture& jog) { jog.ShowAScreen(); }},
      {"AFingerOnAnotherScreen", [](JogFixture& jog) { jog.TouchAnotherScreen(); }},
      {"TheScreenIsUnloaded", [](JogFixture& jog) { jog.UnloadIt(); }},
  };
  return rows;
}

class HoldEnds : public JogScreen, public ::testing::WithParamInterface<std::size_t> {
 protected:
  /// The hold ends in the way of the row; no word goes out after its stop.
  void EndIt() {
    RunFor(200);
    Lines.clear();
    EndRows()[GetParam()].End(*this);
    RunFor(100);
    const Words sent = TakeCommands();
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.back(), "VR(48)=0");
    EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(48)=19"), 0);
  }
};

TEST_P(HoldEnds, ByKey) {
  Open();
  Hold(Key::Right);
  EndIt();
  // The key repeats on, and is let go later.
  Repeat(Key::Right);
  RunFor(100);
  Lock(false);
  Repeat(Key::Right);
  RunFor(100);
  const Words after = TakeCommands();
  EXPECT_EQ(std::count(after.begin(), after.end(), "VR(48)=19"), 0);
  Let(Key::Right);
  RunFor(100);
  RunFor(300);
  EXPECT_FALSE(Jogging());
}

TEST_P(HoldEnds, ByTouch) {
  Open();
  PressAt(Arrow(1), 20, 20);
  EndIt();
  RunFor(300);
  EXPECT_FALSE(Jogging());
}

/// Whatever stands on the line goes after the stop.
TEST_P(HoldEnds, OnALineThatIsBusy) {
  Open();
  Hold(Key::Right);
  RunFor(200);
  SetFault(simulator::FaultKind::Late, 1);
  for (int i = 0; i < 3; ++i) Loop.Start([this] { TheConsole->Trio().Download("VR(999)=1"); });
  RunFor(10);
  Lines.clear();
  EndRows()[GetParam()].End(*this);
  RunFor(4100);  // two answers at most before it
  const Words sent = TakeCommands();
  const auto stop = std::find(sent.begin(), sent.end(), "VR(48)=0");
  ASSERT_NE(stop, sent.end());
  EXPECT_EQ(std::count(sent.begin(), stop, "VR(999)=1"), 0) << "one is under way, none overtakes";
  Controller->SetFaults({});
  RunFor(10000);
  RunFor(300);
  EXPECT_FALSE(Jogging());
}

INSTANTIATE_TEST_SUITE_P(Each, HoldEnds, ::testing::Range<std::size_t>(0, EndRows().size()),
                         [](const auto& row) { return std::string(EndRows()[row.param].Name); });

TEST_F(JogScreen, AKeyThatWasHeldBeforeTheScreenOpenedMovesNothing) {
  TypeF(3);
  Hold(Key::Down);  // the feed of the machine screen
  Press(Key::J);
  RunFor(100);
  ASSERT_EQ(CurrentForm(), "XYJogForm");
  Lines.clear();
  Repeat(Key::Down);
  RunFor(100);
  Let(Key::Down);
  RunFor(100);
  EXPECT_EQ(TakeCommands(), Words{});
}

class PausingJogScreen : public JogScreen {
 protected:
  PausingJogScreen() {
    Open();
    System.Link.CommandDelayMs = 20;
    RunFor(500);
  }
  /// In the pause of a line the keys are dead: until one is taken.
  void HoldUntilTaken() {
    Lines.clear();
    for (int tries = 0; tries < 100 && Times("VR(48)=19") == 0; ++tries) {
      Let(Key::Right);
      RunFor(7);
      Hold(Key::Right);
      RunFor(7);
    }
    ASSERT_EQ(Times("VR(48)=19"), 1);
    Lines.clear();
  }
};

TEST_F(PausingJogScreen, ThePausesOfThePollsLinesEndNoHold) {
  HoldUntilTaken();
  RunFor(1000);
  EXPECT_EQ(TakeCommands(), Words{});
  EXPECT_TRUE(Jogging());
}

TEST_F(PausingJogScreen, AReleaseInAPauseStopsAfterThatOneAndNotAfterTheWholeTick) {
  for (int moment = 0; moment < 60; moment += 3) {
    SCOPED_TRACE(moment);
    HoldUntilTaken();
    RunFor(moment);
    Let(Key::Right);
    RunFor(21);
    EXPECT_GE(Times("VR(48)=0"), 1);
    RunFor(300);
    EXPECT_FALSE(Jogging());
  }
}

TEST_F(PausingJogScreen, AFingerLiftedInAPauseStopsAfterThatOne) {
  for (int moment = 0; moment < 60; moment += 7) {
    SCOPED_TRACE(moment);
    Lines.clear();
    for (int tries = 0; tries < 100 && Times("VR(48)=19") == 0; ++tries) {
      ReleaseAt(Arrow(1), 20, 20);
      RunFor(7);
      PressAt(Arrow(1), 20, 20);
      RunFor(7);
    }
    ASSERT_EQ(Times("VR(48)=19"), 1);
    RunFor(moment);
    ReleaseAt(Arrow(1), 20, 20);
    RunFor(21);
    EXPECT_GE(Times("VR(48)=0"), 1);
    RunFor(300);
    EXPECT_FALSE(Jogging());
  }
}

TEST_F(JogScreen, ALineThatDiesUnderAHoldGetsTheStopOnceItIsBackAndNeverAWord) {
  System.Link.ReplyTimeoutMs = 500;
  Open();
  Hold(Key::Right);
  RunFor(200);
  SetFault(simulator::FaultKind::Silence, 1);
  RunFor(2000);
  Let(Key::Right);
  RunFor(2000);
  Controller->SetFaults({});
  Lines.clear();
  if (Shows("WarningForm")) Press(Key::C);
  RunFor(3000);
  if (Shows("WarningForm")) Press(Key::C);
  RunFor(3000);
  const Words sent = TakeCommands();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(48)=19"), 0);
  EXPECT_GE(std::count(sent.begin(), sent.end(), "VR(48)=0"), 1);
  RunFor(300);
  EXPECT_FALSE(Jogging());
}

TEST_F(JogScreen, ASecondOpeningJogsAsTheFirst) {
  for (int round = 0; round < 2; ++round) {
    Open();
    Type(Key::Right);
    RunFor(50);
    EXPECT_EQ(TakeCommands(), (Words{"VR(48)=19", "VR(48)=0"}));
    Type(Key::X);
  }
  // Opened again while it stands below another screen.
  Open();
  TypeF(3);
  Type(Key::J);
  RunFor(100);
  Lines.clear();
  Type(Key::Left);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(48)=20", "VR(48)=0"}));
}

// ---- the end of the program under a held key ----

/// What the handler of a signal does.
class SignalUnderAHold : public JogScreen {
 protected:
  void Signal() {
    Loop.Start([this] {
      Desk->HandsOff();
      End->ShutdownSystem(false);
    });
  }
};

TEST_F(SignalUnderAHold, SendsTheStopBeforeTheCountersAreRead) {
  Open();
  Hold(Key::Right);
  RunFor(203);
  Lines.clear();
  Signal();
  RunFor(2000);
  ASSERT_FALSE(Lines.empty());
  EXPECT_EQ(Lines.front(), "VR(48)=0");
  EXPECT_EQ(Controller->Memory().Variable(48), 0);
  EXPECT_FALSE(Port->IsOpen());
  EXPECT_EQ(Session.Events.back(), "end process");
}

TEST_F(SignalUnderAHold, WritesTheStopAtOnceThoughAnExchangeWaitsForItsAnswer) {
  Open();
  Hold(Key::Right);
  RunFor(200);
  SetFault(simulator::FaultKind::Late, 1);
  RunFor(60);  // a query of the poll is on the line
  Lines.clear();
  Signal();
  RunFor(0);
  EXPECT_EQ(Lines, Words{"VR(48)=0"});
  End->EndAtOnce();
  EXPECT_FALSE(Port->IsOpen());
}

TEST_F(SignalUnderAHold, AStopThatWaitsForItsAnswerGoesOnceMore) {
  Open();
  Hold(Key::Right);
  RunFor(200);
  SetFault(simulator::FaultKind::Silence, 1);
  Let(Key::Right);
  RunFor(60);
  Controller->SetFaults({});
  Lines.clear();
  Signal();
  RunFor(2000);
  ASSERT_FALSE(Lines.empty());
  EXPECT_EQ(Lines.front(), "VR(48)=0");
  EXPECT_EQ(Controller->Memory().Variable(48), 0);
}

TEST_F(JogScreen, AFaultThatEndsTheProgramUnderAHeldKeyWritesTheStopLast) {
  Open();
  Hold(Key::Right);
  RunFor(200);
  ASSERT_TRUE(Jogging());
  SetFault(simulator::FaultKind::Late, 1);
  RunFor(60);
  Lines.clear();
  End.reset();
  TheConsole.reset();
  RunFor(100);
  EXPECT_EQ(Lines, Words{"VR(48)=0"});
}

}  // namespace
}  // namespace torvane::tests
