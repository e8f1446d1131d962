// The operator panel in words.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/OperatorCommands.h"
#include "support/SimulatedMachine.h"

namespace torvane::simulator {
namespace {

using torvane::testing::SimulatedMachine;

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

TEST(OperatorCommands, TheStateIsOneLine) {
  SimulatedMachine machine;
  const std::string text = Say(machine, "state").Text;
  EXPECT_EQ(text,
            "state: idle; table 1 line 0; X0.000 Y0.000 Z0.000; feed 0; time 0.00; sheets 0; "
            "VR(16) 0 VR(17) 0 VR(19) 0");
}

TEST(OperatorCommands, WrongWordsAndArgumentsAreAnsweredAndChangeNothing) {
  SimulatedMachine machine;
  for (const char* line : {"go", "START", "error", "error x", "error 0", "error 65", "bit",
                           "bit -1", "bit 31", "bit 3x", "beam maybe"}) {
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
