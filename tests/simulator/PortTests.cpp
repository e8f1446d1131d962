// The port: bytes come from the loop, the line takes its time, and the machine keeps up with it.
#include <gtest/gtest.h>

#include "support/SimulatedMachine.h"

namespace torvane::simulator {
namespace {

using torvane::tests::SimulatedMachine;

TEST(SimulatedPort, AnswersComeFromTheLoopAndNotWithinTheWrite) {
  SimulatedMachine machine;
  int told = 0;
  machine.Port.OnReceived([&] { ++told; });
  EXPECT_TRUE(machine.Port.Open({}));
  machine.Port.Write("\r");
  EXPECT_EQ(machine.Port.BytesWaiting(), 0U);
  machine.Loop.RunFor(0);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(machine.Port.ReadAll(), ">>");
  EXPECT_EQ(machine.Port.ReadAll(), "");
}

TEST(SimulatedPort, AClosedPortNeitherSendsNorReceives) {
  SimulatedMachine machine;
  machine.Port.Write("VR(1)=5\r");
  EXPECT_EQ(machine.Variable(1), 0);
  machine.Port.Open({});
  machine.Port.Write("VR(1)=5\r");
  machine.Port.Close();
  machine.Run(1);
  EXPECT_EQ(machine.Port.BytesWaiting(), 0U);
  EXPECT_FALSE(machine.Port.IsOpen());
}

TEST(SimulatedPort, ALineOfARateTakesTenBitsAByteBothWays) {
  SimulatedMachine machine({}, {.Baud = 9600});
  const std::string query = "? VR(19)";
  const std::string answer = machine.Exchange(query);
  const double bytes = static_cast<double>(query.size() + 1 + answer.size());
  EXPECT_NEAR(machine.Port.LineMs(), bytes * 10000 / 9600, 1e-9);
  EXPECT_NEAR(static_cast<double>(machine.Loop.NowMs()), machine.Port.LineMs(), 1);
}

TEST(SimulatedPort, ManyExchangesTakeTheLinesOwnTimeAndNoMore) {
  for (const double baud : {9600.0, 115200.0}) {
    SimulatedMachine machine({}, {.Baud = baud});
    for (int i = 0; i < 500; ++i) machine.Exchange("? VR(19)");
    EXPECT_NEAR(static_cast<double>(machine.Loop.NowMs()), machine.Port.LineMs(), 1) << baud;
  }
}

TEST(SimulatedPort, BytesOnTheirWayAreQueued) {
  SimulatedMachine machine({}, {.Baud = 1000});
  machine.Port.Open({});
  machine.Port.Write("VR(1)=5\r");
  EXPECT_EQ(machine.Port.BytesQueued(), 8U);
  machine.Run(0.079);
  EXPECT_EQ(machine.Variable(1), 0);
  machine.Run(0.001);
  EXPECT_EQ(machine.Variable(1), 5);
  EXPECT_EQ(machine.Port.BytesQueued(), 0U);
}

TEST(SimulatedPort, ThePortMayGoWhileAnswersAreOnTheirWay) {
  platform::VirtualLoop loop;
  SimulatedController controller({});
  {
    SimulatedPort port(loop, controller);
    port.Open({});
    port.Write("\r");
  }
  loop.RunFor(100);
}

TEST(SimulatedPort, TheMachineMovesOnBetweenExchanges) {
  SimulatedMachine machine;
  machine.Exchange("VR(22)=100");
  machine.Exchange("VR(48)=15");
  machine.Loop.RunFor(100);  // 50 mm at 30000 mm per minute
  EXPECT_EQ(machine.Exchange("? MPOS AXIS(0)"), "? MPOS AXIS(0)\r\n50\r\n>>");
}

TEST(SimulatedPort, SpeedMakesTheMachineFasterAndNotTheLine) {
  ControllerOptions options;
  options.Speed = 10;
  SimulatedMachine machine(options);
  machine.Exchange("VR(22)=1000");
  machine.Exchange("VR(48)=15");
  machine.Run(0.1);
  EXPECT_NEAR(machine.Machine().At().X, 500, 1e-6);
}

TEST(SimulatedPort, AHeartbeatMovesTheMachineWhileNobodyTalks) {
  SimulatedMachine machine({}, {.Baud = 0, .HeartbeatMs = 10});
  machine.Exchange("VR(22)=100");
  machine.Exchange("VR(48)=15");
  machine.Loop.RunFor(1000);
  EXPECT_EQ(machine.Count(EventKind::ActionDone), 1);
}

}  // namespace
}  // namespace torvane::simulator
