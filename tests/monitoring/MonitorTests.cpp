// The monitoring on virtual time: after ticks that read, that failed, and none at all.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ScriptedClients.h"
#include "monitoring/Monitor.h"
#include "platform/VirtualLoop.h"

namespace torvane::monitoring {
namespace {

struct MonitorOnVirtualTime : ::testing::Test {
  MonitorOnVirtualTime()
      : TheMonitor(Loop, Server,
                   {System, [this] { return Answers; }, [] { return std::nullopt; },
                    [this] { return Loop.NowMs(); }}),
        Client(Server.Connect()) {
    Loop.RunFor(20);
  }
  void Tick(float x, int answers = 8, bool blind = false) {
    System.State.XPosition = x;
    Answers += static_cast<std::uint64_t>(answers);
    TheMonitor.TickRead({.Blind = blind, .RunSeconds = 0, .Messages = {}});
    Loop.RunFor(50);
  }
  void BlindTicksFor(int ms) {
    const std::int64_t until = Loop.NowMs() + ms;
    while (Loop.NowMs() < until) Tick(0, 5, true);
  }
  std::string X() { return Client->State().at("Xact"); }
  /// Lines of the item that came, those of the connection among them.
  long LinesOf(const std::string& key) {
    std::size_t at = 0;
    long lines = 0;
    for (; (at = Client->Taken.find("|" + key + "|", at)) != std::string::npos; ++at) ++lines;
    return lines;
  }

  platform::VirtualLoop Loop;
  tests::ScriptedServer Server;
  core::System System;
  std::uint64_t Answers = 0;
  Monitor TheMonitor;
  std::shared_ptr<tests::ScriptedPeer> Client;
};

TEST_F(MonitorOnVirtualTime, NothingIsKnownBeforeTheFirstTick) {
  EXPECT_EQ(X(), "UNAVAILABLE");
  EXPECT_EQ(Client->State().at("avail"), "UNAVAILABLE");
  Tick(1);
  EXPECT_EQ(X(), "1.000");
  EXPECT_EQ(Client->State().at("avail"), "AVAILABLE");
}

TEST_F(MonitorOnVirtualTime, ATickWithAFailedExchangeIsPassedOver) {
  Tick(1);
  Tick(0, 5, true);
  EXPECT_EQ(X(), "1.000") << "a failed query reads as zero, and the head is not there";
  Tick(2);
  EXPECT_EQ(X(), "2.000");
}

TEST_F(MonitorOnVirtualTime, ATickWithoutAnAnswerIsALostLink) {
  Tick(1);
  Tick(0, 0, true);
  EXPECT_EQ(X(), "UNAVAILABLE");
  Tick(1);
  EXPECT_EQ(X(), "1.000");
}

TEST_F(MonitorOnVirtualTime, ATickWithTheLinkOffFailsInNothingAndKnowsNothing) {
  Tick(0, 0);
  EXPECT_EQ(X(), "UNAVAILABLE");
}

TEST_F(MonitorOnVirtualTime, NothingIsKnownOnceNoTickIsWholeForThreeSeconds) {
  Tick(1);
  BlindTicksFor(3000);
  EXPECT_EQ(X(), "1.000");
  BlindTicksFor(200);
  for (const auto& [key, value] : Client->State()) EXPECT_EQ(value, "UNAVAILABLE") << key;
  const auto late = Server.Connect();
  Loop.RunFor(20);
  EXPECT_EQ(late->State(), Client->State());
  BlindTicksFor(5000);
  EXPECT_EQ(LinesOf("avail"), 3) << "UNAVAILABLE, AVAILABLE, UNAVAILABLE";
  Tick(2);
  EXPECT_EQ(X(), "2.000");
}

TEST_F(MonitorOnVirtualTime, AWholeTickNowAndThenIsEnough) {
  for (int i = 0; i < 10; ++i) {
    Tick(1);
    BlindTicksFor(2000);
    EXPECT_EQ(X(), "1.000");
  }
}

/// Nothing fails while nothing is asked.
TEST_F(MonitorOnVirtualTime, ATickThatFailsBehindALongPauseIsPassedOver) {
  Tick(1);
  for (int i = 0; i < 10; ++i) {
    Answers += 20;
    Loop.RunFor(1000);
  }
  Tick(0, 5, true);
  EXPECT_EQ(X(), "1.000");
}

/// On a dead line a tick takes minutes: nobody waits for its end.
TEST_F(MonitorOnVirtualTime, SilenceIsALostLinkWhileTheTickStillWaits) {
  Tick(1);
  Loop.RunFor(2900);
  EXPECT_EQ(X(), "1.000");
  Loop.RunFor(200);
  EXPECT_EQ(X(), "UNAVAILABLE");
}

TEST_F(MonitorOnVirtualTime, APollThatPausesWhileALongTableGoesOutIsNoLostLink) {
  Tick(1);
  for (int i = 0; i < 10; ++i) {
    Answers += 20;
    Loop.RunFor(1000);
  }
  EXPECT_EQ(X(), "1.000");
}

TEST_F(MonitorOnVirtualTime, WhenTheConsoleEndsNothingIsKnown) {
  Tick(1);
  TheMonitor.ConsoleEnds(false);
  for (const auto& [key, value] : Client->State()) EXPECT_EQ(value, "UNAVAILABLE") << key;
  const std::string told = Client->Taken;
  Tick(2);
  Loop.RunFor(5000);
  EXPECT_EQ(Client->Taken, told) << "once, and nothing after it";
}

TEST_F(MonitorOnVirtualTime, ClientsAreServedWithoutTicks) {
  Tick(1);
  const auto late = Server.Connect();
  late->ToServer = "* PING\n";
  Loop.RunFor(30);
  EXPECT_EQ(late->State().at("Xact"), "1.000");
  EXPECT_NE(late->Taken.find("* PONG 10000\n"), std::string::npos);
}

}  // namespace
}  // namespace torvane::monitoring
