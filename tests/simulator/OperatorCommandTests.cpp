// The operator panel in words.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/OperatorCommands.h"
#include "support/SimulatedMachine.h"

namespace torvane::simulator {
namespace {

using torvane::tests::SimulatedMachine;

OperatorAnswer Say(SimulatedMachine& machine, std::string_view line) {
  return CarryOutOperatorCommand(line, machine.Controller);
}

TEST(OperatorCommands, WorkTheMachine) {
  SimulatedMachine machine;
  machine.Exchange("TABLE(500,1,100,0,0,0,600,0)");
  machine.Exchange("TABLE(507,-999)");
  Say(machine, "start");
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Running);
  Say(machine, "hold");
  EXPECT_TRUE(machine.Machine().Held());
  Say(machine, " release\r");
  EXPECT_FALSE(machine.Machine().Held());
  Say(machine, "stop");
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Idle);
  Say(machine, "error 12");
  EXPECT_EQ(machine.Variable(Vr::IoMessage), 12);
  Say(machine, "bit 3");
  EXPECT_EQ(machine.Variable(Vr::LogicMessages), 8);
  Say(machine, "clear");
  EXPECT_EQ(machine.Variable(Vr::LogicMessages), 0);
  EXPECT_EQ(machine.Variable(Vr::IoMessage), 0);
  Say(machine, "beam");
  EXPECT_FALSE(machine.Machine().BeamAllowed());
  Say(machine, "beam on");
  EXPECT_TRUE(machine.Machine().BeamAllowed());
  Say(machine, "beam off");
  EXPECT_FALSE(machine.Machine().BeamAllowed());
  EXPECT_TRUE(Say(machine, "quit").Quit);
}

TEST(OperatorCommands, StopAtStandsUntilTheCycleEnds) {
  SimulatedMachine machine;
  machine.Exchange("TABLE(500,1,100,0,0,0,600,0)");
  machine.Exchange("TABLE(507,-999)");
  EXPECT_EQ(Say(machine, "stop-at 2 12.5").Text, "");
  Say(machine, "start");
  machine.Run(60);
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Idle);
  EXPECT_EQ(machine.Count(EventKind::StopPointMissed), 1) << "the rows alone have no records";
}

TEST(OperatorCommands, APowerCycleForgetsEverythingButThePosition) {
  SimulatedMachine machine;
  machine.Exchange("TABLE(500,0,300,40,0,0,0,0)");
  machine.Exchange("TABLE(507,1,1000,0,0,0,600,0)");
  machine.Exchange("VR(91)=2");
  machine.Exchange("VR(91)=1");
  machine.Exchange("VR(59)=1000");
  machine.Exchange("M848=3");
  Say(machine, "start");
  machine.Run(1);
  Say(machine, "error 3");
  const auto at = machine.Machine().At();
  ASSERT_GT(at.X, 300);
  Say(machine, "power-cycle");
  EXPECT_EQ(machine.Machine().At().X, at.X);
  EXPECT_EQ(machine.Machine().At().Y, at.Y);
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Idle);
  EXPECT_FALSE(machine.Machine().Held());
  EXPECT_EQ(machine.Status(), 0);
  EXPECT_EQ(machine.Variable(Vr::Scale), 1);
  EXPECT_EQ(machine.Variable(Vr::IoMessage), 0);
  EXPECT_EQ(machine.Variable(Vr::RunningLine), 0);
  EXPECT_EQ(machine.Memory().NamedValue(848), 0);
  EXPECT_EQ(machine.Memory().TableValue(501), 0);
  Say(machine, "start");
  EXPECT_EQ(machine.Count(EventKind::TableGone), 1) << "the table is empty";
}

TEST(OperatorCommands, PresetsAreThereAgainAfterAPowerCycle) {
  ControllerOptions options;
  options.Presets = {{59, 1000}, {200, 7.5}};
  SimulatedMachine machine(options);
  machine.Exchange("VR(59)=1");
  Say(machine, "power-cycle");
  EXPECT_EQ(machine.Variable(59), 1000);
  EXPECT_EQ(machine.Variable(200), 7.5);
}

TEST(OperatorCommands, TheStateIsOneLine) {
  SimulatedMachine machine;
  const std::string text = Say(machine, "state").Text;
  EXPECT_EQ(text,
            "state: idle; table 1 line 0; X0.000 Y0.000 Z0.000; feed 0; time 0.00; sheets 0; "
            "VR(16) 0 VR(17) 0 VR(19) 0");
}

TEST(OperatorCommands, WrongWordsAndArgumentsAreAnsweredAndChangeNothing) {
  SimulatedMachine machine;
  for (const char* line :
       {"go", "START", "error", "error x", "error 0", "error 65", "bit", "bit -1", "bit 31",
        "bit 3x", "beam maybe", "stop-at", "stop-at 2", "stop-at 1 5", "stop-at x 5",
        "stop-at 2 -1", "stop-at 2 nan", "stop-at 2 3 4"}) {
    const auto answer = Say(machine, line);
    EXPECT_FALSE(answer.Quit) << line;
    EXPECT_FALSE(answer.Text.empty()) << line;
  }
  EXPECT_TRUE(machine.Events.empty());
  EXPECT_TRUE(Say(machine, "   ").Text.empty());
}

TEST(OperatorCommands, EveryEventHasItsOwnText) {
  std::vector<std::string> texts;
  for (int kind = 0; kind <= static_cast<int>(EventKind::SheetCountReached); ++kind) {
    texts.push_back(EventText({static_cast<EventKind>(kind), 5}));
    EXPECT_FALSE(texts.back().starts_with("event ")) << kind;
  }
  std::sort(texts.begin(), texts.end());
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end());
  EXPECT_EQ(EventText({EventKind::CycleStopped, 7}), "cycle stopped: line 7");
}

RC_GTEST_PROP(OperatorCommands, AnyTextIsTaken, (const std::string& text)) {
  SimulatedMachine machine;
  RC_ASSERT(!Say(machine, text).Quit || text.find("quit") != std::string::npos);
}

}  // namespace
}  // namespace torvane::simulator
