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
                   {System, [this] { return Answers; }, [this] { return Failures; },
                    [] { return std::nullopt; }, [this] { return Loop.NowMs(); }}),
        Client(Server.Connect()) {
    Loop.RunFor(20);
  }
  void Tick(float x, int answers = 8, int failures = 0) {
    System.State.XPosition = x;
    Answers += static_cast<std::uint64_t>(answers);
    Failures += static_cast<std::uint64_t>(failures);
    TheMonitor.AfterTick();
    Loop.RunFor(50);
  }
  std::string X() { return Client->State().at("Xact"); }

  platform::VirtualLoop Loop;
  tests::ScriptedServer Server;
  core::System System;
  std::uint64_t Answers = 0;
  std::uint64_t Failures = 0;
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
  Tick(0, 5, 1);
  EXPECT_EQ(X(), "1.000") << "a failed query reads as zero, and the head is not there";
  Tick(2);
  EXPECT_EQ(X(), "2.000");
}

TEST_F(MonitorOnVirtualTime, ATickWithoutAnAnswerIsALostLink) {
  Tick(1);
  Tick(0, 0, 8);
  EXPECT_EQ(X(), "UNAVAILABLE");
  Tick(1);
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
  TheMonitor.End();
  for (const auto& [key, value] : Client->State()) EXPECT_EQ(value, "UNAVAILABLE") << key;
  Tick(2);
  EXPECT_EQ(X(), "UNAVAILABLE");
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
