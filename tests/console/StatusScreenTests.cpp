// The status menu and what it leads to: skip switches, read-outs, program follower, information.
#include "ConsoleFixture.h"
#include "console/SetupForm.h"
#include "simulator/ControllerMemory.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;
using Words = std::vector<std::string>;

class StatusScreens : public ConsoleFixture {
 protected:
  StatusScreens() { Start(); }

  void OpenMenu() {
    TypeF(4);
    RunFor(20);
    Lines.clear();
  }
  [[nodiscard]] std::string Panel(const std::string& screen, const std::string& name) {
    return Control<toolkit::Panel>(screen, name)->Caption();
  }
  [[nodiscard]] std::string Figure(const std::string& screen, int index) {
    return LabelText(screen, "PositionText(" + std::to_string(index) + ")");
  }
  [[nodiscard]] std::string Row(int index) {
    return LabelText("ViewProgForm", "ViewProg(" + std::to_string(index) + ")");
  }
  /// The highlighted row of the program follower, 0 none.
  [[nodiscard]] int InverseRow() {
    for (int i = 1; i <= 18; ++i) {
      auto* row = Control<toolkit::Label>("ViewProgForm", "ViewProg(" + std::to_string(i) + ")");
      if (row->Background() == System.Colours[ColourName::Text] &&
          row->Foreground() == System.Colours[ColourName::TextBackground])
        return i;
    }
    return 0;
  }
};

TEST_F(StatusScreens, MenuCaptionsToTheLetter) {
  OpenMenu();
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  EXPECT_EQ(Panel("StatusMenuForm", "StatusPanel(0)"), "STATUS");
  EXPECT_EQ(Control<toolkit::Frame>("StatusMenuForm", "MachineFrame")->Caption(), "MACHINE");
  EXPECT_EQ(Control<toolkit::Frame>("StatusMenuForm", "ProgramFrame")->Caption(), "PROGRAM ");
  EXPECT_EQ(Caption("StatusMenuForm", "MachineButton(1)"), "&POSITION");
  EXPECT_EQ(Caption("StatusMenuForm", "MachineButton(2)"), "&AUXILIARY");
  EXPECT_EQ(Caption("StatusMenuForm", "ProgramButton(1)"), "&VIEW PROGRAM");
  EXPECT_EQ(Caption("StatusMenuForm", "ProgramButton(2)"), "PROGRAM   &INFO");
  EXPECT_EQ(Caption("StatusMenuForm", "ProgramButton(3)"), "&BATCH COUNTER");
  EXPECT_EQ(Caption("StatusMenuForm", "SkipButton(1)"), " BLOCK SKIP &1");
  EXPECT_EQ(Caption("StatusMenuForm", "SkipButton(2)"), " BLOCK SKIP &2");
  EXPECT_EQ(Caption("StatusMenuForm", "ExitButton"), "E&XIT");
  EXPECT_EQ(Focus("StatusMenuForm"), "ExitButton");
}

TEST_F(StatusScreens, MenuKeysOpenTheirScreens) {
  struct MenuCase {
    Key Pressed;
    const char* Opens;
    const char* Title;
    const char* PanelName;
  };
  const MenuCase cases[] = {{Key::P, "XYPositionForm", "POSITION", "PositionPanel(0)"},
                            {Key::A, "AuxPositionForm", "AUXILLARY", "PositionPanel(0)"},
                            {Key::V, "ViewProgForm", "PROGRAM", "ViewProgPanel(0)"},
                            {Key::I, "SetupForm", "PROGRAM INFORMATION", "SetupPanel(0)"},
                            {Key::B, "BatchForm", "BATCH", "BatchPanel(0)"}};
  OpenMenu();
  for (const auto& row : cases) {
    Type(row.Pressed);
    EXPECT_EQ(CurrentForm(), row.Opens);
    EXPECT_EQ(Front(), row.Opens);
    EXPECT_EQ(Panel(row.Opens, row.PanelName), row.Title);
    EXPECT_EQ(Focus("StatusMenuForm"), "ExitButton");
    Type(Key::X);
    EXPECT_FALSE(Shows(row.Opens));
    EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  }
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(StatusScreens, TheKeyOfAHiddenOrDisabledButtonDoesNothing) {
  OpenMenu();
  auto* auxiliary = Control<toolkit::Button>("StatusMenuForm", "MachineButton(2)");
  auxiliary->SetVisible(false);
  Type(Key::A);
  EXPECT_FALSE(Shows("AuxPositionForm"));
  auxiliary->SetVisible(true);
  auxiliary->SetEnabled(false);
  Type(Key::A);
  EXPECT_FALSE(Shows("AuxPositionForm"));
  auxiliary->SetEnabled(true);
  Type(Key::A);
  EXPECT_TRUE(Shows("AuxPositionForm"));
}

TEST_F(StatusScreens, ASkipThatStandsIsShownAndSentAgain) {
  SetVariable(simulator::Vr::BlockSkip1, 1);
  TypeF(4);
  EXPECT_TRUE(Down("StatusMenuForm", "SkipButton(1)"));
  EXPECT_FALSE(Down("StatusMenuForm", "SkipButton(2)"));
  EXPECT_EQ(TakeCommands(), Words{"VR(92)=1"}) << "and nothing for the one that did not change";
}

TEST_F(StatusScreens, TheSkipKeysFlipAndSend) {
  OpenMenu();
  TypeText("1");
  EXPECT_TRUE(Down("StatusMenuForm", "SkipButton(1)"));
  TypeText("2");
  TypeText("1");
  TypeText("2");
  EXPECT_EQ(TakeCommands(), (Words{"VR(92)=1", "VR(93)=1", "VR(92)=0", "VR(93)=0"}));
  EXPECT_EQ(Focus("StatusMenuForm"), "ExitButton");
}

TEST_F(StatusScreens, ComingBackToTheFrontReadsTheSwitchesAfresh) {
  OpenMenu();
  Type(Key::P);
  SetVariable(simulator::Vr::BlockSkip2, 1);
  Lines.clear();
  Type(Key::X);
  EXPECT_TRUE(Down("StatusMenuForm", "SkipButton(2)"));
  EXPECT_EQ(TakeCommands(), Words{"VR(93)=1"});
}

TEST_F(StatusScreens, BlockSkipCanBeSwitchedDuringARun) {
  Select("STAR");
  Machine().CycleStart();
  RunFor(200);
  ASSERT_TRUE(System.State.MachineRunning);
  OpenMenu();
  TypeText("1");
  EXPECT_EQ(Times("VR(92)=1"), 1);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(StatusScreens, TheReadOutQueriesByItsMode) {
  SetVariable(simulator::Vr::BlockSkip1, 0);
  OpenMenu();
  Type(Key::P);
  EXPECT_EQ(LabelText("XYPositionForm", "PositionLabel(0)"), "ACTUAL");
  for (int axis = 1; axis <= 3; ++axis) EXPECT_EQ(Figure("XYPositionForm", axis), "0.00");
  struct ModeCase {
    Key Pressed;
    const char* Label;
    const char* Query;
    int Button;
  };
  EXPECT_EQ(Focus("XYPositionForm"), "ExitButton") << "when it comes to the front";
  const ModeCase cases[] = {{Key::C, "COMMAND", "DPOS", 1},
                            {Key::T, "TARGET", "ENDMOVE", 2},
                            {Key::F, "FOLLOWING ERROR", "FE", 3},
                            {Key::A, "ACTUAL", "MPOS", 0}};
  for (const auto& row : cases) {
    Type(row.Pressed);
    EXPECT_EQ(LabelText("XYPositionForm", "PositionLabel(0)"), row.Label);
    EXPECT_EQ(System.State.PositionDisplayMode, row.Button);
    EXPECT_EQ(Focus("XYPositionForm"), "PositionBox");
    for (int button = 0; button < 4; ++button) {
      auto* key = Control<toolkit::Button>("XYPositionForm",
                                           "PositionButton(" + std::to_string(button) + ")");
      EXPECT_EQ(key->Lit(), button == row.Button) << "the ring stands on the mode in force";
    }
    Lines.clear();
    RunFor(60);
    for (const char* axis : {"0", "1", "4"}) {
      EXPECT_GE(Times("? " + std::string(row.Query) + " AXIS(" + axis + ")"), 1) << row.Query;
    }
  }
}

TEST_F(StatusScreens, TheReadOutShowsTwoDecimalsOverTheScale) {
  Select("STAR");
  System.State.XScale = System.State.YScale = 4;
  Machine().CycleStart();
  RunFor(500);
  OpenMenu();
  Type(Key::P);
  RunFor(60);
  const double x = Controller->Memory().Axis(simulator::AxisQuantity::Measured, 0);
  EXPECT_GT(x, 0);
  EXPECT_NEAR(std::stod(Figure("XYPositionForm", 1)), x / 4, 5);
  const std::string text = Figure("XYPositionForm", 1);
  EXPECT_EQ(text.size() - text.find('.'), 3U) << text;
  System.State.XScale = 0;
  RunFor(60);
  EXPECT_NEAR(std::stod(Figure("XYPositionForm", 1)),
              Controller->Memory().Axis(simulator::AxisQuantity::Measured, 0), 5)
      << "without units no division";
}

TEST_F(StatusScreens, TheModeIsSharedAndKeptAndTheAuxiliaryFiguresNeverMove) {
  OpenMenu();
  Type(Key::P);
  Type(Key::T);
  Type(Key::X);
  Type(Key::A);
  EXPECT_EQ(LabelText("AuxPositionForm", "PositionLabel(0)"), "TARGET");
  EXPECT_EQ(LabelText("AuxPositionForm", "PositionLabel(1)"), "A");
  EXPECT_EQ(LabelText("AuxPositionForm", "PositionLabel(2)"), "B");
  EXPECT_EQ(Control<toolkit::Label>("AuxPositionForm", "PositionLabel(3)"), nullptr);
  Type(Key::F);
  EXPECT_EQ(System.State.PositionDisplayMode, 3);
  Select("STAR");
  Machine().CycleStart();
  RunFor(500);
  EXPECT_EQ(Figure("AuxPositionForm", 1), "0.00");
  EXPECT_EQ(Figure("AuxPositionForm", 2), "0.00");
  EXPECT_EQ(Times("? FE AXIS(0)"), 0);
  Type(Key::X);
  Type(Key::P);
  EXPECT_EQ(LabelText("XYPositionForm", "PositionLabel(0)"), "FOLLOWING ERROR");
}

TEST_F(StatusScreens, AClickOnAFigureOnlyMovesTheFocus) {
  OpenMenu();
  Type(Key::P);
  Control<toolkit::Button>("XYPositionForm", "ExitButton")->SetFocus();
  Click(*Control<toolkit::Label>("XYPositionForm", "PositionText(2)"));
  EXPECT_EQ(Focus("XYPositionForm"), "PositionBox");
  EXPECT_EQ(System.State.PositionDisplayMode, 0);
}

TEST_F(StatusScreens, TheFollowerStartsAtTheTopAndFollowsTheRun) {
  Select("STAR");
  OpenMenu();
  Type(Key::V);
  RunFor(60);
  EXPECT_EQ(Row(1), "! STAR AND STAR-SHAPED HOLE");
  EXPECT_EQ(InverseRow(), 0);
  EXPECT_EQ(Control<toolkit::Label>("ViewProgForm", "ViewProg(19)"), nullptr);
  Machine().CycleStart();
  RunFor(6000);
  ASSERT_GT(System.State.RunningBlock, 3);
  EXPECT_EQ(InverseRow(), 2) << "one line of the past above the running one";
  Lines.clear();
  Click(*Control<toolkit::Label>("ViewProgForm", "ViewProg(4)"));
  EXPECT_EQ(Focus("ViewProgForm"), "ViewProgBox");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
}

TEST_F(StatusScreens, TheFollowerOfAnEmptySlotIsBlankAndBehindTheEndToo) {
  OpenMenu();
  Type(Key::V);
  for (int i = 1; i <= 18; ++i) EXPECT_EQ(Row(i), std::string(80, ' '));
  Type(Key::X);
  Select("STAR");
  Type(Key::V);
  const int lines = System.Active().BodyLines;
  SetVariable(simulator::Vr::RunningLine, 27);
  RunFor(60);
  ASSERT_EQ(InverseRow(), 2);
  ASSERT_LT(lines, 60);
  EXPECT_EQ(Row(18), std::string(80, ' '));
}

TEST_F(StatusScreens, FollowerAndInformationDoNotHandOnF10AndF11) {
  for (const char* name : {"ViewProgForm", "SetupForm"}) {
    Screens().Open(name);
    TypeF(11);
    EXPECT_EQ(System.ActiveSlot, 1);
    TypeF(9);
    EXPECT_EQ(CurrentForm(), "MessageForm") << name;
    Screens().Unload("MessageForm");
    TypeF(4);
    EXPECT_EQ(CurrentForm(), "StatusMenuForm") << name;
    Screens().Unload("StatusMenuForm");
    Screens().Unload(name);
  }
}

TEST_F(StatusScreens, InformationOfAMetricAndOfAnInchProgram) {
  core::ActiveProgram program;
  program.Material = "Brass";
  program.SheetX = 500;
  program.SheetY = 300.126F;
  program.Totals.MoveLength = 254000;
  program.Totals.ProfileLength = 1234.5678F;
  auto texts = console::SetupTextsOf(program);
  EXPECT_EQ(texts.Material, "Brass");
  EXPECT_EQ(texts.SheetX, "500.00");
  EXPECT_EQ(texts.SheetY, "300.13");
  EXPECT_EQ(texts.Rapid, "RAPID : 254 m");
  EXPECT_EQ(texts.Profile, "PROFILE : 1.235 m");
  program.Imperial = true;
  texts = console::SetupTextsOf(program);
  EXPECT_EQ(texts.Rapid, "RAPID : 10000\"");
  EXPECT_EQ(texts.Profile, "PROFILE : 48.6\"");
  program.Totals = {};
  EXPECT_EQ(console::SetupTextsOf(program).Rapid, "RAPID : 0\"");
}

TEST_F(StatusScreens, InformationCaptionsAndValues) {
  Select("STAR");
  OpenMenu();
  Type(Key::I);
  EXPECT_EQ(Control<toolkit::Frame>("SetupForm", "SheetFrame")->Caption(), "SHEET");
  EXPECT_EQ(Control<toolkit::Frame>("SetupForm", "StatsFrame")->Caption(), "JOB STATISTICS");
  EXPECT_EQ(Control<toolkit::Frame>("SetupForm", "TimeFrame")->Caption(), "RUN STATUS");
  EXPECT_EQ(LabelText("SetupForm", "SheetLabel(1)"), "MATERIAL :");
  EXPECT_EQ(LabelText("SetupForm", "SheetLabel(2)"), "SIZE :");
  EXPECT_EQ(LabelText("SetupForm", "SizeLabel(1)"), "X");
  EXPECT_EQ(LabelText("SetupForm", "SizeLabel(2)"), "Y");
  EXPECT_EQ(LabelText("SetupForm", "TimeLabel"), "TIME :");
  EXPECT_EQ(LabelText("SetupForm", "MaterialDescription"), "Brass 1.5 mm");
  EXPECT_EQ(LabelText("SetupForm", "SheetSize(1)"), "500.00");
  EXPECT_EQ(LabelText("SetupForm", "SheetSize(2)"), "300.00");
  EXPECT_EQ(LabelText("SetupForm", "StatsLabel(1)").substr(0, 8), "RAPID : ");
  EXPECT_EQ(LabelText("SetupForm", "StatsLabel(2)").substr(0, 10), "PROFILE : ");
  EXPECT_EQ(Focus("SetupForm"), "ExitButton");
}

TEST_F(StatusScreens, TheRunTimeRoundsBehindTheTestForAMinute) {
  Select("STAR");
  OpenMenu();
  Type(Key::I);
  struct TimeCase {
    float Seconds;
    const char* Text;
  };
  const TimeCase cases[] = {{0, "0:00"}, {7.4F, "0:07"}, {59.7F, "0:60"}, {61, "1:01"}};
  for (const auto& row : cases) {
    System.State.RunSeconds = row.Seconds;
    TheConsole->Screens().RunStage(supervision::PollStage::RunTime);
    EXPECT_EQ(LabelText("SetupForm", "TimeBox"), row.Text);
  }
}

}  // namespace
}  // namespace torvane::tests
