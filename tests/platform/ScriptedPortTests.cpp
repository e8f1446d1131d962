// The scripted port: bytes come when the script says, and handlers run from the loop.
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"

namespace torvane::platform {
namespace {

struct ScriptedPortTest : ::testing::Test {
  VirtualLoop Loop;
  ScriptedPort Port{Loop};
};

TEST_F(ScriptedPortTest, OpensWithItsSetupAndForgetsWhatWaitedBefore) {
  EXPECT_FALSE(Port.IsOpen());
  PortSetup setup;
  setup.Number = 3;
  setup.Settings = "115200,N,8,1";
  EXPECT_TRUE(Port.Open(setup));
  EXPECT_TRUE(Port.IsOpen());
  EXPECT_EQ(Port.Setup().Number, 3);
  Port.Deliver("old");
  Port.Close();
  EXPECT_EQ(Port.BytesWaiting(), 0u);
  Port.Deliver("lost");
  Port.Open(setup);
  EXPECT_EQ(Port.ReadAll(), "");
}

TEST_F(ScriptedPortTest, FailsToOpenAsOftenAsToldAndCounts) {
  Port.FailOpens(2);
  EXPECT_FALSE(Port.Open({}));
  EXPECT_FALSE(Port.Open({}));
  EXPECT_TRUE(Port.Open({}));
  EXPECT_EQ(Port.OpenCalls(), 3);
  Port.Close();
  Port.FailOpens(-1);
  for (int i = 0; i < 5; ++i) EXPECT_FALSE(Port.Open({}));
}

TEST_F(ScriptedPortTest, ThePeerSeesEachWriteAndMayAnswerLater) {
  Port.Open({});
  Port.SetPeer([&](std::string_view line) {
    Loop.After(30, [&, reply = std::string(line) + ">>"] { Port.Deliver(reply); });
  });
  Port.Write("? VR(19)\r");
  EXPECT_EQ(Port.BytesWaiting(), 0u);
  Loop.WaitUntil([&] { return Port.BytesWaiting() > 0; });
  EXPECT_EQ(Loop.NowMs(), 30);
  EXPECT_EQ(Port.ReadAll(), "? VR(19)\r>>");
  EXPECT_EQ(Port.BytesWaiting(), 0u);
  EXPECT_EQ(Port.Written(), "? VR(19)\r");
}

TEST_F(ScriptedPortTest, TheReceivedHandlerRunsFromTheLoopNotFromDeliver) {
  Port.Open({});
  int calls = 0;
  Port.OnReceived([&] { ++calls; });
  Port.Deliver("a");
  EXPECT_EQ(calls, 0);
  Loop.RunFor(0);
  EXPECT_EQ(calls, 1);
  Port.OnReceived({});
  Port.Deliver("b");
  Loop.RunFor(0);
  EXPECT_EQ(calls, 1);
}

TEST_F(ScriptedPortTest, NothingIsWrittenToAClosedPort) {
  int writes = 0;
  Port.SetPeer([&](std::string_view) { ++writes; });
  Port.Write("x");
  EXPECT_EQ(writes, 0);
  EXPECT_EQ(Port.Written(), "");
}

TEST_F(ScriptedPortTest, ModemLinesTellTheirHandlerFromTheLoop) {
  bool cts = false;
  Port.OnLineEvent(
      [&](LineEvent event) { cts = event == LineEvent::CtsChanged && Port.Lines().Cts; });
  Port.SetLines({true, false, false});
  EXPECT_FALSE(cts);
  Loop.RunFor(0);
  EXPECT_TRUE(cts);
}

TEST(ScriptedPort, APortThatIsGoneIsNotCalledAnyMore) {
  VirtualLoop loop;
  auto port = std::make_unique<ScriptedPort>(loop);
  port->Open({});
  bool called = false;
  port->OnReceived([&] { called = true; });
  port->Deliver("x");
  port.reset();
  loop.RunFor(10);
  EXPECT_FALSE(called);
}

}  // namespace
}  // namespace torvane::platform
