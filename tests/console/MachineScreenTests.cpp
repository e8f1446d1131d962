// Machine, load position, move: by keys alone, with the lines to the controller.
#include "ConsoleFixture.h"
#include "core/General.h"

namespace torvane::tests {
namespace {

using toolkit::Key;
using Words = std::vector<std::string>;

constexpr int RunningBit = 16384;
constexpr int FeedholdBit = 2048;
constexpr int CycleBit = 8192;
constexpr int ErrorBit = 4096;

class MachineScreens : public ConsoleFixture {
 protected:
  void Open() {
    Start();
    TypeF(3);
    ASSERT_TRUE(Shows("MachineForm"));
    static_cast<void>(TakeCommands());
  }
  /// The status word as the controller's program would hold it, taken over by a tick.
  void SetStatus(int bits) {
    System.State.StatusWord = bits;
    System.State.MachineRunning = (bits & RunningBit) != 0;
    System.State.MachineFeedhold = (bits & FeedholdBit) != 0;
    System.State.MachineCycleBit = (bits & CycleBit) != 0;
    System.State.MachineInError = static_cast<std::int16_t>(bits & ErrorBit);
  }
  void Digit(int number) { Type(static_cast<Key>('0' + number)); }
  std::string BoxText(const std::string& screen, const std::string& name) {
    auto* box = Control<toolkit::EntryBox>(screen, name);
    return box == nullptr ? "(no such box)" : box->Text();
  }
};

TEST_F(MachineScreens, TheTextsAreTheSystemsOwn) {
  Open();
  EXPECT_EQ(LabelText("MachineForm", "FeedBox"), "100");
  EXPECT_EQ(Caption("MachineForm", "ReferenceButton(0)"), "REFERENCE &ALL");
  EXPECT_EQ(Caption("MachineForm", "ReferenceButton(1)"), "REF &X");
  EXPECT_EQ(Caption("MachineForm", "FeedButton(1)"), "- 20 (&1)");
  EXPECT_EQ(Caption("MachineForm", "ExitButton"), "&EXIT");
  auto* frame = Control<toolkit::Frame>("MachineForm", "FeedFrame");
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->Caption(), "FEED OVERIDE");
}

TEST_F(MachineScreens, XReferencesXAndOnlyELeaves) {
  Open();
  Type(Key::X);
  EXPECT_TRUE(Shows("MachineForm"));
  EXPECT_EQ(TakeCommands(), Words{"VR(48)=11"});
  Type(Key::E);
  EXPECT_FALSE(Shows("MachineForm"));
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(MachineScreens, EachReferenceKeySendsItsWordAndTheFocusGoesHome) {
  Open();
  for (const Key key : {Key::A, Key::X, Key::Y, Key::Z}) Type(key);
  EXPECT_EQ(TakeCommands(), (Words{"VR(48)=10", "VR(48)=11", "VR(48)=12", "VR(48)=13"}));
  EXPECT_EQ(Focus("MachineForm"), "ReferenceButton(0)");
}

TEST_F(MachineScreens, AReferenceWhileTheCycleStandsIsRefused) {
  Open();
  SetStatus(CycleBit);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::A); }),
            "\nCan Not Reference\nWhile Machine Is Running Or In Feedhold !");
  EXPECT_EQ(TakeCommands(), Words{});
  EXPECT_TRUE(Shows("MachineForm"));
}

TEST_F(MachineScreens, RollersSendWhenTheOperatorSwitchesAndNotWhenThePollDoes) {
  Open();
  Type(Key::R);
  EXPECT_EQ(TakeCommands(),
            (Words{"VR(19)=VR(19) OR 131072", "VR(17)=VR(17) OR 32", "OP(8,VR(9))"}));
  EXPECT_TRUE(Down("MachineForm", "RollerButton"));
  RunFor(300);
  Type(Key::R);
  EXPECT_EQ(TakeCommands(), Words{"VR(17)=VR(17)-32"});
  // The controller takes the bit back by itself, some time after.
  RunFor(3000);
  EXPECT_FALSE(Down("MachineForm", "RollerButton"));
  EXPECT_EQ(TakeCommands(), Words{});
}

TEST_F(MachineScreens, FeedKeysSendTheClampedValueAndWorkInARun) {
  Open();
  System.State.FeedOverride = 95;
  Type(Key::E);
  System.State.FeedOverride = 95;
  TypeF(3);
  SetStatus(RunningBit);
  Digit(4);
  Type(Key::PageUp);
  Digit(2);
  Type(Key::Down);
  Type(Key::PageDown);
  Type(Key::Up);
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=100", "VR(68)=100", "VR(68)=95", "VR(68)=90",
                                   "VR(68)=70", "VR(68)=75"}));
  EXPECT_EQ(LabelText("MachineForm", "FeedAsked"), "75");
}

TEST_F(MachineScreens, TheBoxFollowsThePollAndTheWorkingValueDoesNot) {
  Open();
  Digit(1);
  EXPECT_EQ(TakeCommands(), Words{"VR(68)=80"});
  SetVariable(98, 40);
  SetVariable(68, 40);
  RunFor(300);
  EXPECT_EQ(LabelText("MachineForm", "FeedBox"), core::NumberText(System.State.FeedOverride, 0));
  Digit(1);
  EXPECT_EQ(TakeCommands(), Words{"VR(68)=60"});
}

TEST_F(MachineScreens, TheDoorsOpenTheirScreens) {
  Open();
  struct Row {
    Key Opens;
    const char* Screen;
    Key Leaves;
  };
  for (const Row& row : {Row{Key::L, "LoadForm", Key::X}, Row{Key::M, "MoveForm", Key::X},
                         Row{Key::J, "XYJogForm", Key::X}}) {
    Type(row.Opens);
    EXPECT_TRUE(Shows(row.Screen)) << row.Screen;
    EXPECT_EQ(CurrentForm(), row.Screen);
    Type(row.Leaves);
    EXPECT_FALSE(Shows(row.Screen)) << row.Screen;
  }
}

// ---- load position ----

TEST_F(MachineScreens, LoadPositionsComeFromTheControllerAtEveryFronting) {
  Open();
  SetVariable(86, 12.345);
  SetVariable(87, 100);
  SetVariable(88, -3);
  SetVariable(89, 0.5);
  Type(Key::L);
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(1)"), "12.35");
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(2)"), "100.00");
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(3)"), "-3.00");
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(4)"), "0.50");
  EXPECT_EQ(Focus("LoadForm"), "ExitButton");
  EXPECT_EQ(LabelText("LoadForm", "LoadLabel(3)"), "X :  &3");
  Type(Key::X);
  SetVariable(88, 44);
  Type(Key::L);
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(3)"), "44.00");
}

TEST_F(MachineScreens, TheArrayKeepsTheExactValueUntilAPadWritesTheRoundedOneBack) {
  Open();
  SetVariable(86, 12.3456);
  Type(Key::L);
  Type(Key::A);
  EXPECT_EQ(TakeCommands().at(0), "VR(86)=12.3456");
  ThenType(Key::Escape);
  Then([this] { Control<toolkit::Button>("NumberForm", "ExitButton")->Press(); });
  Digit(1);
  RunFor(100);
  EXPECT_FALSE(Shows("NumberForm"));
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(1)"), "12.35");
  Type(Key::A);
  EXPECT_EQ(TakeCommands().at(0), "VR(86)=12.35");
}

TEST_F(MachineScreens, ABoxOpensTheNumberPadAndSendsNothingYet) {
  Open();
  Type(Key::L);
  ThenTypeText("1250/2+13.5");
  ThenType(Key::Enter);
  Digit(3);
  RunFor(100);
  EXPECT_EQ(BoxText("LoadForm", "LoadBox(3)"), "638.5");
  EXPECT_EQ(TakeCommands(), Words{});
  EXPECT_EQ(Focus("LoadForm"), "ExitButton");
  Type(Key::B);
  const Words sent = TakeCommands();
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[0], "VR(88)=638.5");
  EXPECT_EQ(sent[2], "VR(48)=18");
}

TEST_F(MachineScreens, ALoadInARunSendsTheValuesAndWarns) {
  Open();
  SetVariable(86, 1);
  SetVariable(87, 2);
  Type(Key::L);
  SetStatus(RunningBit);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::A); }),
            "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !");
  EXPECT_EQ(TakeCommands(), (Words{"VR(86)=1", "VR(87)=2"}));
  EXPECT_TRUE(Shows("LoadForm"));
}

// ---- move ----

TEST_F(MachineScreens, AMoveBeginsAtThePresentPosition) {
  Open();
  System.State.XPosition = 10.126F;
  System.State.YPosition = -2;
  System.State.ZPosition = 3;
  Type(Key::M);
  EXPECT_EQ(LabelText("MoveForm", "MoveLabel(1)"), "X  POSITION :  &1");
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(1)"), "10.13");
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(2)"), "-2.00");
  EXPECT_EQ(Focus("MoveForm"), "MoveButton");
  Type(Key::M);
  EXPECT_EQ(TakeCommands(), (Words{"VR(22)=10.13", "VR(23)=-2", "VR(95)=3", "VR(48)=15"}));
}

TEST_F(MachineScreens, AMoveWithAnErrorSendsNothing) {
  Open();
  Type(Key::M);
  SetStatus(ErrorBit);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::M); }),
            "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !");
  EXPECT_EQ(TakeCommands(), Words{});
}

TEST_F(MachineScreens, TypingIsSwallowedByTheMoveScreenAndEnterMovesNothing) {
  Open();
  Type(Key::M);
  const std::string text = BoxText("MoveForm", "MoveBox(1)");
  for (const char typed : {'7', '.', ' ', 'q'}) Desk->TypeKey(toolkit::KeyStroke(typed));
  Type(Key::Enter);
  RunFor(50);
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(1)"), text);
  EXPECT_EQ(TakeCommands(), Words{});
  EXPECT_EQ(Focus("MoveForm"), "MoveButton");
}

TEST_F(MachineScreens, EachBoxOfTheMoveTakesItsTargetWithDefaultPrecision) {
  Open();
  Type(Key::M);
  const std::pair<int, const char*> entries[] = {{1, "12.3456"}, {2, "0-7.5"}, {3, "0.125"}};
  for (const auto& [box, number] : entries) {
    ThenTypeText(number);
    ThenType(Key::Enter);
    Digit(box);
    RunFor(50);
    EXPECT_EQ(Focus("MoveForm"), "MoveButton");
  }
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(1)"), "12.3456");
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(2)"), "-7.5");
  EXPECT_EQ(TakeCommands(), Words{}) << "nothing goes out before the move";
  Type(Key::M);
  EXPECT_EQ(TakeCommands(), (Words{"VR(22)=12.3456", "VR(23)=-7.5", "VR(95)=0.125", "VR(48)=15"}));
}

TEST_F(MachineScreens, AKeyOfAHiddenOrDisabledControlDoesNothing) {
  Open();
  Control<toolkit::Button>("MachineForm", "ReferenceButton(2)")->SetVisible(false);
  Control<toolkit::Button>("MachineForm", "ReferenceButton(3)")->SetEnabled(false);
  Control<toolkit::Button>("MachineForm", "RollerButton")->SetVisible(false);
  for (const Key key : {Key::Y, Key::Z, Key::R}) Type(key);
  EXPECT_EQ(TakeCommands(), Words{});
  Type(Key::M);
  Control<toolkit::EntryBox>("MoveForm", "MoveBox(3)")->SetVisible(false);
  Digit(3);
  RunFor(50);
  EXPECT_FALSE(Shows("NumberForm"));
}

TEST_F(MachineScreens, ARefusedReferenceGivesTheFocusBack) {
  Open();
  SetStatus(FeedholdBit);
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::X); }),
            "\nCan Not Reference\nWhile Machine Is Running Or In Feedhold !");
  EXPECT_EQ(Focus("MachineForm"), "ReferenceButton(0)");
}

TEST_F(MachineScreens, EveryFrontingTakesTheFeedAndTheRollersAnew) {
  Open();
  Digit(1);
  EXPECT_EQ(LabelText("MachineForm", "FeedAsked"), "80");
  TypeF(9);
  SetVariable(98, 35);
  SetVariable(68, 35);
  RunFor(300);
  ASSERT_EQ(System.State.FeedOverride, 35);
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "MachineForm");
  EXPECT_EQ(LabelText("MachineForm", "FeedAsked"), "35");
  static_cast<void>(TakeCommands());
  Digit(3);
  EXPECT_EQ(TakeCommands(), Words{"VR(68)=40"});
}

// ---- by touch ----

TEST_F(MachineScreens, ByTouchTheKeysSendTheSame) {
  Open();
  const auto press = [this](const std::string& name) {
    Click(*Control<toolkit::Control>("MachineForm", name));
    RunFor(50);
    EXPECT_EQ(Focus("MachineForm"), "ReferenceButton(0)") << name;
  };
  for (int axes = 0; axes < 4; ++axes) {
    press(console::Numbered("ReferenceButton", axes));
    EXPECT_EQ(TakeCommands(), Words{"VR(48)=" + std::to_string(10 + axes)});
    for (int i = 0; i < 3000 && Machine().Mode() == simulator::MachineMode::Manual; ++i)
      RunFor(100);
  }
  press("RollerButton");
  EXPECT_EQ(TakeCommands(),
            (Words{"VR(19)=VR(19) OR 131072", "VR(17)=VR(17) OR 32", "OP(8,VR(9))"}));
  RunFor(300);
  press("RollerButton");
  EXPECT_EQ(TakeCommands(), Words{"VR(17)=VR(17)-32"});
  for (int key = 1; key <= 4; ++key) press(console::Numbered("FeedButton", key));
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=80", "VR(68)=75", "VR(68)=80", "VR(68)=100"}));
  press("FeedBox");
  EXPECT_EQ(TakeCommands(), Words{}) << "a figure is only looked at";
}

TEST_F(MachineScreens, ByTouchTheDoorsOpen) {
  Open();
  for (const auto& [door, screen] :
       {std::pair{1, "LoadForm"}, std::pair{2, "MoveForm"}, std::pair{3, "XYJogForm"}}) {
    Click(*Control<toolkit::Button>("MachineForm", console::Numbered("MachineButton", door)));
    RunFor(50);
    EXPECT_EQ(CurrentForm(), screen);
    EXPECT_EQ(Focus("MachineForm"), "ReferenceButton(0)");
    Click(*Control<toolkit::Button>(screen, "ExitButton"));
    RunFor(50);
    EXPECT_EQ(CurrentForm(), "MachineForm");
  }
}

TEST_F(MachineScreens, ByTouchALoadPositionIsEnteredAndGoneTo) {
  Open();
  Type(Key::L);
  RunFor(50);
  const std::pair<int, const char*> entries[] = {{1, "100"}, {2, "200.5"}};
  for (const auto& [box, number] : entries) {
    ThenTypeText(number);
    ThenType(Key::Enter);
    Click(*Control<toolkit::EntryBox>("LoadForm", console::Numbered("LoadBox", box)));
    RunFor(100);
    EXPECT_EQ(Focus("LoadForm"), "ExitButton");
  }
  EXPECT_EQ(TakeCommands(), Words{});
  Click(*Control<toolkit::Button>("LoadForm", "LoadButton(1)"));
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(86)=100", "VR(87)=200.5", "VR(48)=17"}));
}

TEST_F(MachineScreens, ByTouchAMoveIsEnteredAndMade) {
  Open();
  Type(Key::M);
  ThenTypeText("640");
  ThenType(Key::Enter);
  Click(*Control<toolkit::EntryBox>("MoveForm", "MoveBox(2)"));
  RunFor(100);
  EXPECT_EQ(BoxText("MoveForm", "MoveBox(2)"), "640");
  SetStatus(RunningBit);
  EXPECT_EQ(Answered(Key::O,
                     [this] {
                       Click(*Control<toolkit::Button>("MoveForm", "MoveButton"));
                       RunFor(30);
                     }),
            "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !");
  RunFor(100);
  EXPECT_EQ(TakeCommands(), Words{});
  Click(*Control<toolkit::Button>("MoveForm", "MoveButton"));
  RunFor(50);
  const Words sent = TakeCommands();
  ASSERT_EQ(sent.size(), 4U);
  EXPECT_EQ(sent[1], "VR(23)=640");
  EXPECT_EQ(sent[3], "VR(48)=15");
}

}  // namespace
}  // namespace torvane::tests
