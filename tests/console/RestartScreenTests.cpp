// The restart by its screens: from the key of ProgramForm to the run that goes on.
#include <gmock/gmock.h>

#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using ::testing::Contains;
using ::testing::Not;
using toolkit::Key;

class RestartScreens : public ConsoleFixture {
 protected:
  void Begin(const std::string& program = "STAR") {
    Start();
    Select(program);
  }
  [[nodiscard]] int Mode() const { return System.Console.PlotKeyMode; }
  [[nodiscard]] std::string File(const std::string& name) { return Directory.Get(name); }
  /// The operator presses cycle start while RestartForm waits, and the form goes.
  void PressCycleStart() {
    Machine().CycleStart();
    for (int i = 0; i < 100 && Shows("RestartForm"); ++i) RunFor(100);
  }
  void OpenVisual() {
    TypeF(1);
    Type(Key::V);
    RunFor(50);
    ASSERT_FALSE(Shows("ProgramForm"));
    ASSERT_EQ(Mode(), 5);
  }
};

TEST_F(RestartScreens, ASlotWithoutAProgramOnlyBeeps) {
  Start();
  Files->DeleteFile("Actvprg1.cnv");
  TypeF(1);
  Type(Key::B);
  EXPECT_TRUE(Shows("ProgramForm"));
  EXPECT_FALSE(Shows("BlockStartForm"));
  Type(Key::V);
  EXPECT_TRUE(Shows("ProgramForm"));
  EXPECT_EQ(Mode(), 0);
}

TEST_F(RestartScreens, ABlockIsTakenFromTheListAndTheRunGoesOn) {
  Begin();
  TypeF(1);
  Then([this] {
    EXPECT_TRUE(Shows("BlockStartForm"));
    auto* list = Control<toolkit::ListBox>("BlockStartForm", "BlockList");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->Count(), System.Active().BodyLines);
    EXPECT_EQ(list->Current(), 0);
  });
  for (int i = 0; i < 9; ++i) ThenType(Key::Down);
  ThenType(Key::S);
  Type(Key::B);
  RunFor(300);
  EXPECT_FALSE(Shows("ProgramForm"));
  EXPECT_FALSE(Shows("BlockStartForm"));
  ASSERT_TRUE(Shows("RestartForm"));
  EXPECT_EQ(CurrentForm(), "RestartForm");
  auto commands = TakeCommands();
  EXPECT_THAT(commands, Contains("VR(91)=3"));
  EXPECT_NE(File("Restart.tbx").find("M100\r\nG00 X"), std::string::npos);
  EXPECT_NE(LabelText("RestartForm", "OutlookLabel(1)").find("With the beam off"),
            std::string::npos);
  PressCycleStart();
  EXPECT_FALSE(Shows("RestartForm"));
  commands = TakeCommands();
  EXPECT_THAT(commands, Contains("VR(91)=1"));
  EXPECT_TRUE(System.State.MachineRunning);
  for (int i = 0; i < 600 && System.State.MachineRunning; ++i) RunFor(100);
  EXPECT_FALSE(System.State.MachineRunning);
}

TEST_F(RestartScreens, ExitOfTheListLeadsToNoRestart) {
  Begin();
  TypeF(1);
  ThenType(Key::D);
  ThenType(Key::U);
  ThenType(Key::X);
  Type(Key::B);
  RunFor(200);
  EXPECT_FALSE(Shows("RestartForm"));
  EXPECT_FALSE(Shows("ProgramForm"));
  EXPECT_THAT(TakeCommands(), Not(Contains("VR(91)=3")));
}

TEST_F(RestartScreens, CancelPutsTheSlotsTableInForceAgain) {
  Begin();
  TypeF(1);
  ThenType(Key::S);
  Type(Key::B);
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  static_cast<void>(TakeCommands());
  Type(Key::C);
  RunFor(300);
  EXPECT_FALSE(Shows("RestartForm"));
  EXPECT_THAT(TakeCommands(), ::testing::ElementsAre("VR(91)=1"));
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_FALSE(Files->FileExists("Gather.rep"));
  TypeF(4);
  EXPECT_TRUE(Shows("StatusMenuForm")) << "the console is free again";
}

TEST_F(RestartScreens, WhileItWaitsF2IsDeadAndF9Works) {
  Begin();
  TypeF(1);
  ThenType(Key::S);
  Type(Key::B);
  RunFor(300);
  TypeF(2);
  EXPECT_FALSE(Shows("LaserStatusForm"));
  TypeF(9);
  EXPECT_TRUE(Shows("MessageForm"));
  TypeF(10);
  EXPECT_EQ(System.ActiveSlot, 1);
}

TEST_F(RestartScreens, TheVisualRestartByKeysAlone) {
  Begin();
  OpenVisual();
  EXPECT_EQ(Caption("FrontEnd", "PathButton(5)"), "SPLI&T");
  for (int i = 0; i < 6; ++i) Type(Key::N);
  Type(Key::S);
  EXPECT_EQ(Mode(), 5) << "SELECT does nothing before the split";
  for (int i = 0; i < 40 && Mode() == 5; ++i) {
    Type(Key::N);
    Type(Key::T);
  }
  ASSERT_TRUE(Mode() == 7 || Mode() == 8);
  Type(Key::N);
  Type(Key::S);
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  EXPECT_EQ(Mode(), 0);
  EXPECT_FALSE(System.Console.PlotKeysActive);
  const std::string text = File("Restart.tbx");
  EXPECT_TRUE(text.find("\r\nG01 X") != std::string::npos ||
              text.find("\r\nG02 X") != std::string::npos ||
              text.find("\r\nG03 X") != std::string::npos)
      << text;
  PressCycleStart();
  EXPECT_TRUE(System.State.MachineRunning);
}

TEST_F(RestartScreens, AViewOfNothingWarnsAndLeaves) {
  Begin();
  System.Views[1].Corner1X = 90000;
  System.Views[1].Corner2X = 90010;
  TypeF(1);
  const std::string text = Answered(Key::O, [this] { Type(Key::V); });
  EXPECT_EQ(text, "\nCan Not Visually Restart\nIf No Punches Are On View !");
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_EQ(Mode(), 0);
}

TEST_F(RestartScreens, CLeavesTheVisualRestartAltogether) {
  Begin();
  OpenVisual();
  Type(Key::C);
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_EQ(Mode(), 0);
  EXPECT_FALSE(System.Console.FormsLocked);
  OpenVisual();
}

TEST_F(RestartScreens, ABusyMachineKeepsTheListOpen) {
  Begin();
  TypeF(1);
  std::string warning;
  Then([this] {
    System.State.MachineInError = 4096;
    TheConsole->Trio().StopPolling(false);
  });
  ThenType(Key::S);
  Then([this, &warning] {
    warning = Warning();
    Type(Key::O);
    System.State.MachineInError = 0;
  });
  Then([this] { EXPECT_TRUE(Shows("BlockStartForm")); });
  ThenType(Key::X);
  Type(Key::B);
  EXPECT_EQ(warning, "\nCan Not Restart\nWhile Machine Is Running or In Error !");
}

}  // namespace
}  // namespace torvane::tests
