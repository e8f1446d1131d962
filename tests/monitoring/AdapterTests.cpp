// The adapter and its clients: those that read, those that do not, and those that cost too much.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "ScriptedClients.h"
#include "monitoring/Adapter.h"

namespace torvane::monitoring {
namespace {

using tests::ScriptedPeer;

MonitorSnapshot Snapshot(const std::string& x) {
  MonitorSnapshot snapshot;
  snapshot.Available = true;
  for (std::size_t i = 0; i < MonitorItems.size(); ++i) snapshot.Values[i] = "0";
  snapshot.Values[0] = "AVAILABLE";
  snapshot.Values[5] = x;
  snapshot.Values.back().clear();
  return snapshot;
}

struct AdapterRig {
  explicit AdapterRig(AdapterLimits limits = {})
      : TheAdapter(
            Server, [] { return std::int64_t{0}; }, limits) {}

  std::shared_ptr<ScriptedPeer> Connect() {
    auto peer = Server.Connect();
    Serve();
    return peer;
  }
  void Serve() { TheAdapter.Serve(NowMs += 10); }

  tests::ScriptedServer Server;
  Adapter TheAdapter;
  std::int64_t NowMs = 0;
};

TEST(Adapter, ANewClientHasEveryItem) {
  AdapterRig rig;
  const auto early = rig.Connect();
  for (const auto& item : MonitorItems) {
    EXPECT_EQ(early->State().at(std::string(item.Key)), "UNAVAILABLE");
  }
  rig.TheAdapter.Publish(Snapshot("12.5"));
  const auto late = rig.Connect();
  EXPECT_EQ(late->State().size(), MonitorItems.size());
  EXPECT_EQ(late->State().at("Xact"), "12.5");
  EXPECT_EQ(late->State().at("messages"), "NORMAL||||");
  EXPECT_EQ(early->State(), late->State());
}

TEST(Adapter, OnlyWhatChangesIsTold) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  rig.TheAdapter.Publish(Snapshot("1"));
  peer->Taken.clear();
  rig.TheAdapter.Publish(Snapshot("1"));
  EXPECT_EQ(peer->Taken, "");
  rig.TheAdapter.Publish(Snapshot("2"));
  EXPECT_EQ(peer->Taken, "1970-01-01T00:00:00.000Z|Xact|2\n");
}

TEST(Adapter, NothingIsKnownOnceTheLinkIsLost) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  rig.TheAdapter.Publish(Snapshot("1"));
  rig.TheAdapter.Publish({});
  for (const auto& [key, value] : peer->State()) EXPECT_EQ(value, "UNAVAILABLE") << key;
  rig.TheAdapter.Publish(Snapshot("1"));
  EXPECT_EQ(peer->State().at("Xact"), "1");
  EXPECT_EQ(peer->State().at("messages"), "NORMAL||||");
}

TEST(Adapter, MessagesComeAndGoByTheirCode) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  auto snapshot = Snapshot("1");
  rig.TheAdapter.Publish(snapshot);
  peer->Taken.clear();
  const auto tell = [&](std::vector<ActiveMessage> messages) {
    snapshot.Messages = std::move(messages);
    peer->Taken.clear();
    rig.TheAdapter.Publish(snapshot);
    std::string text = peer->Taken;
    for (auto at = text.find("1970-01-01T00:00:00.000Z|messages|"); at != std::string::npos;
         at = text.find("1970-01-01T00:00:00.000Z|messages|")) {
      text.erase(at, 34);
    }
    return text;
  };
  EXPECT_EQ(tell({{"IO.5", "Gas low"}}), "WARNING|IO.5|||Gas low\n");
  EXPECT_EQ(tell({{"IO.5", "Gas low"}, {"Logic.3", "Door"}}), "WARNING|Logic.3|||Door\n");
  EXPECT_EQ(tell({{"Logic.3", "Door"}}), "NORMAL|IO.5|||\n");
  EXPECT_EQ(tell({}), "NORMAL||||\n");
}

TEST(Adapter, APingIsAnsweredAndNothingElse) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  peer->Taken.clear();
  peer->ToServer = "* PI";
  rig.Serve();
  EXPECT_EQ(peer->Taken, "");
  peer->ToServer = "NG\r\nGET / HTTP/1.1\r\n\r\n* PONG\n";
  rig.Serve();
  EXPECT_EQ(peer->Taken, "* PONG 10000\n");
}

TEST(Adapter, OneThatHasPingedAndThenNotForThreeHeartbeatsIsDropped) {
  AdapterRig rig;
  const auto agent = rig.Connect();
  const auto gone = rig.Connect();
  const auto silent = rig.Connect();
  gone->ToServer = "* PING\n";
  rig.Serve();
  const std::int64_t pinged = rig.NowMs;
  while (rig.NowMs < pinged + 3 * HeartbeatMs) {
    if (rig.NowMs % HeartbeatMs == 0) agent->ToServer = "* PING\n";
    rig.Serve();
  }
  EXPECT_FALSE(gone->Closed);
  rig.Serve();
  EXPECT_TRUE(gone->Closed);
  EXPECT_FALSE(agent->Closed);
  EXPECT_FALSE(silent->Closed) << "who never pings may stay";
}

TEST(Adapter, AHeartbeatThatCameWhileNobodyLookedCounts) {
  AdapterRig rig;
  const auto agent = rig.Connect();
  agent->ToServer = "* PING\n";
  rig.Serve();
  rig.NowMs += 10 * HeartbeatMs;
  agent->ToServer = "* PING\n";
  rig.Serve();
  EXPECT_FALSE(agent->Closed);
}

TEST(Adapter, OneThatNeverReadsIsDroppedAndTheOthersAreNot) {
  AdapterRig rig;
  const auto good = rig.Connect();
  const auto bad = rig.Connect();
  bad->Reads = false;
  for (int i = 0; i < 20'000 && !bad->Closed; ++i) {
    rig.TheAdapter.Publish(Snapshot(std::to_string(i)));
  }
  EXPECT_TRUE(bad->Closed);
  EXPECT_LE(bad->MostQueued, AdapterLimits{}.Backlog);
  EXPECT_FALSE(good->Closed);
  EXPECT_EQ(rig.TheAdapter.Clients(), 1U);
}

TEST(Adapter, OneThatSendsMegabytesIsDropped) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  peer->ToServer = std::string(4U << 20U, 'x');
  for (int i = 0; i < 10; ++i) rig.Serve();
  EXPECT_TRUE(peer->Closed);
  EXPECT_GT(peer->ToServer.size(), 4'000'000U) << "it has not all been read";
}

TEST(Adapter, ASlowSenderWithoutALineEndStaysAndIsBounded) {
  AdapterRig rig;
  const auto peer = rig.Connect();
  for (int i = 0; i < 1000; ++i) {
    peer->ToServer = std::string(20, 'x');
    rig.Serve();
  }
  EXPECT_FALSE(peer->Closed);
  peer->Taken.clear();
  peer->ToServer = "\n* PING\n";
  rig.Serve();
  EXPECT_EQ(peer->Taken, "* PONG 10000\n");
}

TEST(Adapter, AThousandConnectionsAreTakenAFewAtATimeAndClosedBeyondTheMost) {
  AdapterRig rig;
  std::vector<std::shared_ptr<ScriptedPeer>> peers;
  peers.reserve(1000);
  for (int i = 0; i < 1000; ++i) peers.push_back(rig.Server.Connect());
  rig.Serve();
  EXPECT_EQ(rig.Server.Waiting(), 996U);
  while (rig.Server.Waiting() > 0) rig.Serve();
  EXPECT_EQ(rig.TheAdapter.Clients(), 64U);
  EXPECT_TRUE(peers.back()->Closed);
  EXPECT_FALSE(peers.front()->Closed);
  peers.front()->Connected = false;
  rig.Serve();
  EXPECT_EQ(rig.TheAdapter.Clients(), 63U);
}

TEST(Adapter, WhateverClientsDoThoseThatReadKnowTheLastState) {
  EXPECT_TRUE(rc::check("any order of reads, writes and connections", [] {
    AdapterRig rig({.Clients = 5, .NewClients = 2, .Backlog = 3000, .Input = 500});
    std::vector<std::shared_ptr<ScriptedPeer>> peers;
    const int steps = *rc::gen::inRange(1, 60);
    int shown = 0;
    for (int step = 0; step < steps; ++step) {
      const auto pick = [&] {
        return peers[static_cast<std::size_t>(
            *rc::gen::inRange(0, static_cast<int>(peers.size())))];
      };
      switch (*rc::gen::inRange(0, 7)) {
        case 0:
          peers.push_back(rig.Server.Connect());
          break;
        case 1:
          if (!peers.empty()) pick()->Reads = false;
          break;
        case 2:
          if (!peers.empty()) pick()->Reads = true;
          break;
        case 3:
          if (!peers.empty()) pick()->ToServer += *rc::gen::arbitrary<std::string>();
          break;
        case 4:
          if (!peers.empty()) pick()->Connected = false;
          break;
        case 5:
          rig.TheAdapter.Publish({});
          shown = 0;
          break;
        default:
          rig.TheAdapter.Publish(Snapshot(std::to_string(shown = step + 1)));
      }
      rig.Serve();
    }
    while (rig.Server.Waiting() > 0) rig.Serve();
    rig.Serve();
    RC_ASSERT(rig.TheAdapter.Clients() <= 5U);
    for (const auto& peer : peers) {
      RC_ASSERT(peer->MostQueued <= 3000U);
      if (peer->Closed || !peer->Reads) continue;
      RC_ASSERT(peer->State().at("Xact") == (shown > 0 ? std::to_string(shown) : "UNAVAILABLE"));
    }
  }));
}

}  // namespace
}  // namespace torvane::monitoring
