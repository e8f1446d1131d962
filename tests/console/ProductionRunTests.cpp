// From the first key to the end of a run, by keys alone.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class ProductionRun : public ConsoleFixture {
 protected:
  /// Cycle start at the machine, and the run to its end.
  void RunToEnd() {
    Machine().CycleStart();
    RunFor(200);
    EXPECT_TRUE(System.State.MachineRunning);
    for (int i = 0; i < 3000 && System.State.MachineRunning; ++i) RunFor(100);
    EXPECT_FALSE(System.State.MachineRunning);
    RunFor(200);
    EXPECT_EQ(System.TableSent, System.Active().TableLines);
    EXPECT_EQ(System.State.MachineInError, 0);
    EXPECT_FALSE(Shows("WarningForm"));
  }
};

TEST_F(ProductionRun, AProgramIsNamedOnThePadsSelectedRunAndTheConsoleShutDown) {
  Start();
  EXPECT_EQ(System.Console.CurrentForm, "");
  TypeF(1);
  ASSERT_TRUE(Shows("ProgramForm"));
  EXPECT_EQ(System.Console.CurrentForm, "ProgramForm");

  Then([this] { EXPECT_TRUE(Shows("KeyboardForm")); });
  ThenTypeText("star");
  ThenType(Key::Enter);
  Type(Key::P);
  EXPECT_FALSE(Shows("KeyboardForm"));
  Lines.clear();

  Type(Key::S);
  EXPECT_TRUE(Shows("SetupForm"));
  EXPECT_FALSE(Shows("ProgramForm"));
  EXPECT_EQ(LabelText("SetupForm", "MaterialDescription"), "Brass 1.5 mm");
  const auto commands = TakeCommands();
  ASSERT_GT(commands.size(), 26U);
  EXPECT_EQ(commands.front().substr(0, 10), "TABLE(500,");

  Machine().CycleStart();
  RunFor(200);
  EXPECT_TRUE(System.State.MachineRunning);
  for (int i = 0; i < 600 && System.State.MachineRunning; ++i) RunFor(100);
  EXPECT_FALSE(System.State.MachineRunning);
  RunFor(200);
  EXPECT_EQ(System.Active().BatchCounters.SheetsCompleted, 1);
  EXPECT_EQ(System.TableSent, System.Active().TableLines);

  Type(Key::X);
  EXPECT_FALSE(Shows("SetupForm"));
  Then([this] { EXPECT_TRUE(Shows("ShutdownForm")); });
  ThenType(Key::O);
  TypeF(12);
  EXPECT_EQ(Session.Events, (std::vector<std::string>{"end session", "end process"}));
  EXPECT_FALSE(Port->IsOpen());
}

TEST_F(ProductionRun, ASecondSheetIsCutAfterTheProgramHasBeenSelectedAgain) {
  Start();
  for (int sheet = 1; sheet <= 2; ++sheet) {
    Select("STAR");
    RunToEnd();
    EXPECT_EQ(System.Active().BatchCounters.SheetsCompleted, 1)
        << "a selection begins the count anew";
  }
}

TEST_F(ProductionRun, TwoProgramsRunInTurnFromTheirSlots) {
  Start();
  Select("GASKET");
  TypeF(11);
  RunFor(200);
  ASSERT_EQ(System.ActiveSlot, 2);
  Select("STAR");
  RunToEnd();
  TypeF(10);
  RunFor(500);
  ASSERT_EQ(System.ActiveSlot, 1);
  RunToEnd();
  TypeF(11);
  RunFor(500);
  RunToEnd();
  EXPECT_EQ(System.Active().BatchCounters.SheetsCompleted, 2);
}

}  // namespace
}  // namespace torvane::tests
