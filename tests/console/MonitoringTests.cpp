// The monitoring beside a console at work: what a client sees of a run, and that the controller is
// asked nothing for it.
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
                                   [] { return std::uint64_t{0}; }, [] { return std::nullopt; },
                                   [this] { return Loop.NowMs(); }});
    TheConsole->Trio().SetPollTick([this] {
      TheConsole->Poll().PollTrio();
      monitor_->AfterTick();
    });
    Client = Server.Connect();
  }
  std::string Value(const std::string& key) { return Client->State()[key]; }

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
