// Faults strike as often as told, the same way for the same seed, and never by themselves.
#include <gtest/gtest.h>

#include "simulator/Faults.h"
#include "support/SimulatedMachine.h"

namespace torvane::simulator {
namespace {

using torvane::tests::SimulatedMachine;

ControllerOptions With(const char* fault, std::uint32_t seed = 1) {
  ControllerOptions options;
  EXPECT_TRUE(ParseFault(fault, options.Faults));
  options.Faults.Seed = seed;
  return options;
}

TEST(Faults, TheirNamesAndRates) {
  FaultSettings settings;
  for (const char* good :
       {"lose=0.5", "noise=0", "pieces=1", "percent=0.25", "silence=1e-3", "late=0.125"}) {
    EXPECT_TRUE(ParseFault(good, settings)) << good;
  }
  EXPECT_EQ(settings.Rate(FaultKind::Lose), 0.5);
  EXPECT_EQ(settings.Rate(FaultKind::Late), 0.125);
  for (const char* bad : {"", "lose", "lose=", "=0.5", "lose=1.5", "lose=-0.1", "lose=0.5x",
                          "lose=nan", "drop=0.5", "LOSE=0.5", "lose= 0.5"}) {
    FaultSettings unchanged;
    EXPECT_FALSE(ParseFault(bad, unchanged)) << bad;
    for (const double rate : unchanged.Rates) EXPECT_EQ(rate, 0);
  }
}

TEST(Faults, NoneWithoutBeingAskedFor) {
  SimulatedMachine machine;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(machine.Exchange("? VR(59)"), "? VR(59)\r\n1\r\n>>");
  }
}

TEST(Faults, PercentRefusesALineAndDoesNotCarryItOut) {
  SimulatedMachine machine(With("percent=1"));
  EXPECT_EQ(machine.Exchange("VR(1)=5"), "VR(1)=5\r\n%\r\n>>");
  EXPECT_EQ(machine.Variable(1), 0);
}

TEST(Faults, SilenceAnswersNothingEver) {
  SimulatedMachine machine(With("silence=1"));
  machine.Port.Open({});
  machine.Port.Write("VR(1)=5\r");
  machine.Run(60);
  EXPECT_EQ(machine.Port.BytesWaiting(), 0U);
  EXPECT_EQ(machine.Variable(1), 0);
}

TEST(Faults, ALateAnswerIsWholeAndComesLater) {
  SimulatedMachine machine(With("late=1"));
  const auto before = machine.Loop.NowMs();
  EXPECT_EQ(machine.Exchange("? VR(59)"), "? VR(59)\r\n1\r\n>>");
  EXPECT_NEAR(static_cast<double>(machine.Loop.NowMs() - before), 2000, 1);
}

TEST(Faults, NothingOvertakesALateAnswer) {
  SimulatedMachine machine(With("late=1"));
  machine.Port.Open({});
  machine.Port.Write("? VR(59)\r");
  machine.Run(1);
  machine.Controller.SetFaults({});
  machine.Port.Write("? VR(1)\r");
  machine.Run(0.5);
  EXPECT_EQ(machine.Port.BytesWaiting(), 0U);
  machine.Run(1);
  EXPECT_EQ(machine.Port.ReadAll(), "? VR(59)\r\n1\r\n>>? VR(1)\r\n0\r\n>>");
}

TEST(Faults, PiecesComeOneByOneAndAreAllThere) {
  SimulatedMachine machine(With("pieces=1"));
  int reads = 0;
  machine.Port.OnReceived([&] { ++reads; });
  EXPECT_EQ(machine.Exchange("? VR(59)"), "? VR(59)\r\n1\r\n>>");
  EXPECT_GE(reads, 3);
}

TEST(Faults, LostBytesGoMissingAtTheirRate) {
  FaultSettings settings;
  settings.Rate(FaultKind::Lose) = 0.25;
  FaultSource source(settings);
  const std::size_t left = source.Spoil(std::string(100000, 'x'), true).size();
  EXPECT_NEAR(static_cast<double>(left), 75000, 1000);
}

TEST(Faults, NoiseComesBetweenTheBytesOfAnAnswer) {
  FaultSettings settings;
  settings.Rate(FaultKind::Noise) = 0.1;
  FaultSource source(settings);
  const std::string spoilt = source.Spoil(std::string(100000, 'x'), true);
  EXPECT_NEAR(static_cast<double>(spoilt.size()), 110000, 1000);
  EXPECT_EQ(source.Spoil("abc", false), "abc") << "only answers are noisy";
}

TEST(Faults, TheSameSeedSpoilsTheSameWay) {
  const auto run = [](std::uint32_t seed) {
    SimulatedMachine machine(With("lose=0.1", seed));
    machine.Port.Open({});
    std::string all;
    for (int i = 0; i < 200; ++i) {
      machine.Port.Write("? VR(59)\r");
      machine.Run(0.01);
      all += machine.Port.ReadAll();
    }
    return all;
  };
  EXPECT_EQ(run(7), run(7));
  EXPECT_NE(run(7), run(8));
}

}  // namespace
}  // namespace torvane::simulator
