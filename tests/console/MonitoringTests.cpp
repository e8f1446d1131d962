// The monitoring beside a console at work: what a client sees of a run, and that the controller is
// asked nothing for it.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "../monitoring/ScriptedClients.h"
#include "ConsoleFixture.h"
#include "monitoring/Monitor.h"

namespace torvane::tests {
namespace {

class Monitored : public ConsoleFixture {
 protected:
  void Watch() {
    monitor_ = std::make_unique<monitoring::Monitor>(
        Loop, Server,
        monitoring::MonitorSources{System, [this] { return TheConsole->Trio().Answers(); },
                                   [] { return std::nullopt; }, [this] { return Loop.NowMs(); }});
    TheConsole->Poll().Observe(*monitor_);
    Client = Server.Connect();
  }
  std::string Value(const std::string& key) { return Client->State()[key]; }
  bool AllUnavailable() {
    const auto state = Client->State();
    return std::all_of(state.begin(), state.end(),
                       [](const auto& item) { return item.second == "UNAVAILABLE"; });
  }

  ScriptedServer Server;
  std::shared_ptr<ScriptedPeer> Client;

 private:
  std::unique_ptr<monitoring::Monitor> monitor_;
};

TEST_F(Monitored, AClientSeesARunBeginAndEnd) {
  Watch();
  Start();
  Select("STAR");
  RunFor(100);
  EXPECT_EQ(Value("execution"), "READY");
  EXPECT_EQ(Value("program"), "SHOP/STAR");
  Machine().CycleStart();
  RunFor(1000);
  EXPECT_EQ(Value("execution"), "ACTIVE");
  EXPECT_EQ(Value("mode"), "AUTOMATIC");
  for (int i = 0; i < 3000 && System.State.MachineRunning; ++i) RunFor(100);
  RunFor(200);
  EXPECT_EQ(Value("execution"), "PROGRAM_COMPLETED");
  EXPECT_EQ(Value("sheet_count"), "1");
  EXPECT_EQ(Value("line"), std::to_string(System.State.RunningBlock));
}

TEST_F(Monitored, AStoppedRunIsNoCompletedOne) {
  Watch();
  Start();
  Select("STAR");
  Machine().CycleStart();
  RunFor(3000);
  Machine().FeedHold();
  RunFor(200);
  EXPECT_EQ(Value("execution"), "FEED_HOLD");
  Machine().Stop();
  RunFor(200);
  EXPECT_EQ(Value("execution"), "STOPPED");
}

TEST_F(Monitored, OneQueryThatIsRefusedForGoodLeavesNothingKnown) {
  Watch();
  Start();
  Select("STAR");
  Machine().CycleStart();
  RunFor(1000);
  constexpr int MoreThanTheTest = 1000;
  for (int i = 0; i < MoreThanTheTest; ++i) Controller->RefuseNext("? VR(25)");
  RunFor(2500);
  EXPECT_EQ(Value("execution"), "ACTIVE");
  Machine().Stop();
  RunFor(2500);
  EXPECT_TRUE(AllUnavailable()) << Client->Taken;
}

TEST_F(Monitored, OnASlowLineTheEndIsToldOnceAndNoZerosBeforeIt) {
  Watch();
  Start();
  Select("STAR");
  Machine().CycleStart();
  simulator::FaultSettings slow;
  slow.Rate(simulator::FaultKind::Late) = 1;
  slow.LateSeconds = 0.05;
  Controller->SetFaults(slow);
  RunFor(3000);
  ASSERT_EQ(Value("avail"), "AVAILABLE");
  Client->Taken.clear();
  Loop.Start([this] { End->ShutdownSystem(false); });
  for (int i = 0; i < 100 && Session.Events.empty(); ++i) RunFor(10);
  RunFor(200);
  EXPECT_EQ(Session.Events, std::vector<std::string>{"end process"});
  EXPECT_EQ(Client->State().size(), monitoring::MonitorItems.size());
  EXPECT_TRUE(AllUnavailable());
  EXPECT_EQ(std::count(Client->Taken.begin(), Client->Taken.end(), '\n'),
            static_cast<long>(monitoring::MonitorItems.size()))
      << Client->Taken;
}

TEST_F(Monitored, WhileARestartWaitsForItsCycleStartWhatHappensIsTold) {
  Watch();
  Start();
  Select("STAR");
  TypeF(1);
  ThenType(toolkit::Key::Down);
  ThenType(toolkit::Key::S);
  Type(toolkit::Key::B);
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  ASSERT_EQ(Value("messages"), "NORMAL||||");
  Machine().RaiseError(5);
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  EXPECT_EQ(Value("messages"), "WARNING|message|||A message is in force at the console");
  Machine().ClearMessages();
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  EXPECT_EQ(Value("messages"), "NORMAL||||");
}

/// The lines of one session, with and without somebody who looks on.
class Compared : public Monitored {
 public:
  void TestBody() override {}
  std::vector<std::string> LinesOfARun(bool watched) {
    if (watched) Watch();
    Start(false);
    EXPECT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
    Machine().CycleStart();
    RunFor(20'000);
    return Lines;
  }
};

TEST(Monitoring, AsksTheControllerNothing) {
  const auto alone = Compared().LinesOfARun(false);
  const auto watched = Compared().LinesOfARun(true);
  EXPECT_GT(alone.size(), 1000U);
  EXPECT_EQ(alone, watched);
}

}  // namespace
}  // namespace torvane::tests
