#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

class OpenPort : public LinkTest {
 protected:
  OpenPort() {
    Port.Close();
    Settings.CommPort = 3;
    Settings.PortSettings = "19200,E,7,2";
  }
};

TEST_F(OpenPort, OpensWithTheSettingsAndAsksForAPrompt) {
  Settings.Handshaking = 3;
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.Setup().Number, 3);
  EXPECT_EQ(Port.Setup().Settings, "19200,E,7,2");
  EXPECT_EQ(Port.Setup().Handshaking, platform::Handshake::Both);
  EXPECT_TRUE(Port.Setup().DiscardNulls);
  EXPECT_EQ(Port.Written(), "\r");
  EXPECT_EQ(Port.BytesWaiting(), 0U);
  EXPECT_FALSE(Settings.ReplyTimedOut);
}

TEST_F(OpenPort, DtrAndRtsStayOffWhateverThePortFileSays) {
  Settings.DtrKeyword = true;
  Settings.Handshaking = 2;
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_FALSE(Port.Setup().Dtr);
  EXPECT_FALSE(Port.Setup().Rts);
}

TEST_F(OpenPort, DoesNothingWithTheLinkOff) {
  Settings.TrioLinkEnabled = false;
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.OpenCalls(), 1);  // the fixture's own
  EXPECT_EQ(Port.Written(), "");
}

TEST_F(OpenPort, TheThirdAttemptStillCounts) {
  Port.FailOpens(2);
  const int before = Port.OpenCalls();
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.OpenCalls() - before, 3);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
}

TEST_F(OpenPort, ThereIsNoFourthAttempt) {
  Port.FailOpens(-1);
  const int before = Port.OpenCalls();
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.OpenCalls() - before, 3);
  EXPECT_FALSE(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.Written(), "");
}

TEST_F(OpenPort, APortThatIsOpenIsNotOpenedAgain) {
  static_cast<void>(Port.Open({}));
  const int before = Port.OpenCalls();
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.OpenCalls(), before);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
}

TEST_F(OpenPort, ASilentControllerTurnsTheLinkOffAfterTheTimeoutWithoutADialog) {
  Controller.Silent = true;
  Settings.ReplyTimeoutMs = 4000;
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_FALSE(Settings.TrioLinkEnabled);
  EXPECT_FALSE(Settings.ReplyTimedOut);
  EXPECT_EQ(Loop.NowMs(), 4000);
  EXPECT_TRUE(Screens.Calls.empty());
  EXPECT_FALSE(Files.FileExists("C:\\ROOT\\Service\\Errors.txt"));
}

TEST_F(OpenPort, AnErrorMarkBeforeThePromptIsNoFault) {
  Controller.Replies[""] = "%\r\n>>";
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
  EXPECT_TRUE(Screens.Calls.empty());
}

TEST_F(OpenPort, WhatStoodInTheBufferIsDroppedBeforeAndAfter) {
  static_cast<void>(Port.Open({}));
  Port.Deliver("old>>");
  Controller.Replies[""] = "\r\n>>left over";
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
  EXPECT_EQ(Port.BytesWaiting(), 0U);
}

TEST_F(OpenPort, AfterClosingEveryOperationReturnsAtOnce) {
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Link.CloseTrioPort();
  EXPECT_FALSE(Port.IsOpen());
  Settings.PollLogEnabled = true;
  Link.Download("VR(1)=1");
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  EXPECT_EQ(Loop.NowMs(), 0);
  EXPECT_TRUE(Screens.Calls.empty());
  EXPECT_EQ(PollLog(), "(no file)");
}

TEST_F(OpenPort, ClosingInsideAWaitEndsTheWaitWithoutAReport) {
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Controller.Silent = true;
  Settings.ReplyTimeoutMs = 0;
  Loop.After(30, [this] { Link.CloseTrioPort(); });
  Loop.After(20, [this] { Link.Download("VR(2)=2"); });
  Link.Download("VR(1)=1");
  EXPECT_EQ(Loop.NowMs(), 30);
  EXPECT_TRUE(Screens.Calls.empty());
}

TEST_F(OpenPort, ClosingBehindAnErrorMarkLeavesItUnreportedAndUntraced) {
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Settings.PollLogEnabled = true;
  Controller.Replies["VR(1)=X"] = "VR(1)=X\r\n%";
  Loop.After(30, [this] { Link.CloseTrioPort(); });
  Link.Download("VR(1)=X");
  EXPECT_EQ(Loop.NowMs(), 30);
  EXPECT_TRUE(Screens.Calls.empty());
  EXPECT_EQ(PollLog(), "(no file)");
}

TEST_F(OpenPort, WithoutATimeoutTheStartWaitsForTheController) {
  Settings.ReplyTimeoutMs = 0;
  Controller.Silent = true;
  Loop.After(3'600'000, [this] { Port.Deliver(">>"); });
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
  EXPECT_EQ(Loop.NowMs(), 3'600'000);
}

TEST_F(OpenPort, APortThatWasClosedCanBeOpenedAgain) {
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Link.CloseTrioPort();
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Controller.Values["VR(19)"] = "8";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 8);
}

}  // namespace
}  // namespace torvane::link
