#include <gmock/gmock.h>

#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;

using Exchanges = LinkTest;

TEST_F(Exchanges, ADownloadSendsTheTrimmedLineAndOneCarriageReturn) {
  Link.Download("  VR(48)=10  ");
  EXPECT_EQ(Port.Written(), "VR(48)=10\r");
  EXPECT_EQ(Settings.LastComms, "VR(48)=10");
}

TEST_F(Exchanges, AQueryAsksForTheTrimmedExpression) {
  Controller.Values["MPOS AXIS(0)"] = "12.25";
  EXPECT_EQ(Link.GetRspnsSngl(" MPOS AXIS(0) "), 12.25F);
  EXPECT_EQ(Port.Written(), "? MPOS AXIS(0)\r");
  EXPECT_EQ(Settings.LastComms, "? MPOS AXIS(0)");
}

TEST_F(Exchanges, WholeNumbersAreCutTowardZero) {
  Controller.Values = {{"A", "7.9"}, {"B", "-7.9"}};
  EXPECT_EQ(Link.GetRspnsInt("A"), 7);
  EXPECT_EQ(Link.GetRspnsInt("B"), -7);
  EXPECT_EQ(Link.GetRspnsLng("A"), 7);
  EXPECT_EQ(Link.GetRspnsLng("B"), -7);
}

TEST_F(Exchanges, AValueBeyondTheTypeIsAFaultOfTheQueryAndGivesZero) {
  Controller.Values = {{"A", "32767.9"},    {"B", "32768"},      {"C", "-32768"}, {"D", "-32769"},
                       {"E", "2147483647"}, {"F", "2147483648"}, {"G", "1E39"}};
  EXPECT_EQ(Link.GetRspnsInt("A"), 32767);
  EXPECT_EQ(Link.GetRspnsInt("B"), 0);
  EXPECT_EQ(Link.GetRspnsInt("C"), -32768);
  EXPECT_EQ(Link.GetRspnsInt("D"), 0);
  EXPECT_EQ(Link.GetRspnsLng("E"), 2147483647);
  EXPECT_EQ(Link.GetRspnsLng("F"), 0);
  EXPECT_EQ(Link.GetRspnsSngl("G"), 0.0F);
  EXPECT_TRUE(Screens.Calls.empty());
}

TEST_F(Exchanges, AnythingButZeroIsTrue) {
  Controller.Values = {{"A", "0"}, {"B", "0.25"}, {"C", "-1"}};
  EXPECT_FALSE(Link.GetRspnsBln("A"));
  EXPECT_TRUE(Link.GetRspnsBln("B"));
  EXPECT_TRUE(Link.GetRspnsBln("C"));
}

TEST_F(Exchanges, DecimalsRoundHalfToEvenBeforeTheNarrowing) {
  Controller.Values = {{"A", "2.5"}, {"B", "3.5"}, {"C", "0.125"}, {"D", "12.34567"}};
  EXPECT_EQ(Link.GetRspnsSngl("A", 0), 2.0F);
  EXPECT_EQ(Link.GetRspnsSngl("B", 0), 4.0F);
  EXPECT_EQ(Link.GetRspnsSngl("C", 2), 0.12F);
  EXPECT_EQ(Link.GetRspnsSngl("D", 3), 12.346F);
  EXPECT_EQ(Link.GetRspnsSngl("D", -1), 12.34567F);
  EXPECT_EQ(Link.GetRspnsSngl("D"), 12.34567F);
  EXPECT_EQ(Link.GetRspnsSngl("D", 1000), 12.34567F);
}

TEST_F(Exchanges, WithTheLinkOffNothingIsSentTracedOrAnswered) {
  Settings.TrioLinkEnabled = false;
  Settings.PollLogEnabled = true;
  Controller.Values["VR(59)"] = "1000";
  Link.Download("VR(1)=1");
  EXPECT_EQ(Link.GetRspnsSngl("VR(59)", 3), 0.0F);
  EXPECT_EQ(Link.GetRspnsInt("VR(59)"), 0);
  EXPECT_EQ(Link.GetRspnsLng("VR(59)"), 0);
  EXPECT_FALSE(Link.GetRspnsBln("VR(59)"));
  EXPECT_EQ(Port.Written(), "");
  EXPECT_EQ(PollLog(), "(no file)");
}

TEST_F(Exchanges, AReplyInSmallPiecesIsJoined) {
  Controller.ByteDelayMs = 3;
  Controller.Values["VR(19)"] = "16384";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 16384);
}

TEST_F(Exchanges, APromptSplitOverTwoReadsIsFound) {
  Controller.Silent = true;
  Controller.OnLine = [this](const std::string&) {
    Loop.After(10, [this] { Port.Deliver("? VR(19)\r\n5\r\n>"); });
    Loop.After(20, [this] { Port.Deliver(">"); });
  };
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 5);
  EXPECT_EQ(Loop.NowMs(), 20);
}

TEST_F(Exchanges, APromptInsideTheEchoCannotBeToldFromThePrompt) {
  Controller.Replies["PRINT >>"] = "PRINT >>";
  Link.Download("PRINT >>");
  EXPECT_EQ(Loop.NowMs(), 0);
  EXPECT_TRUE(Screens.Calls.empty());
}

TEST_F(Exchanges, AQueryFlushesWhatStoodInTheBuffer) {
  Port.Deliver("late reply\r\n>>");
  Controller.Values["VR(81)"] = "12";
  EXPECT_EQ(Link.GetRspnsInt("VR(81)"), 12);
}

TEST_F(Exchanges, ADownloadDoesNotFlushAndTakesAPromptThatStoodInTheBuffer) {
  Settings.PollLogEnabled = true;
  Port.Deliver("late\r\n>>");
  Controller.Silent = true;
  Link.Download("VR(1)=1");
  EXPECT_EQ(Loop.NowMs(), 0);
  EXPECT_THAT(PollLog(), ::testing::HasSubstr("Response:     late\r\n>>\r\n"));
}

TEST_F(Exchanges, AReplyTooShortGivesZeroWithoutAReport) {
  Controller.Replies["? VR(19)"] = "5>>";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  EXPECT_TRUE(Screens.Calls.empty());
  EXPECT_EQ(ErrorLog(), "(no file)");
}

TEST_F(Exchanges, WithoutATimeoutTheWaitLastsAndTheLoopRunsOn) {
  Settings.ReplyTimeoutMs = 0;
  Controller.Silent = true;
  int ticks = 0;
  const auto timer = Loop.MakeTimer([&ticks] { ++ticks; });
  timer->Start(1000);
  Loop.After(3'600'000, [this] { Port.Deliver("? VR(19)\r\n9\r\n>>"); });
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 9);
  EXPECT_GE(ticks, 3599);
  EXPECT_TRUE(Screens.Calls.empty());
}

TEST_F(Exchanges, AWaitSleepsUntilSomethingHappens) {
  Controller.ByteDelayMs = 20;
  const auto before = Loop.EventsHandled();
  Link.Download("VR(1)=1");  // eleven bytes come back
  EXPECT_LE(Loop.EventsHandled() - before, 2U * 11U);
}

TEST_F(Exchanges, EightQueriesTakeTheLinesOwnTimeAndNoMore) {
  Controller.ByteDelayMs = 1;
  std::int64_t bytes = 0;
  for (const char* expression : {"VR(19)", "VR(52)", "MPOS AXIS(0)", "MPOS AXIS(1)", "MPOS AXIS(4)",
                                 "VR(98)", "VR(25)", "VR(81)"}) {
    Controller.Values[expression] = "1234.5";
    bytes += static_cast<std::int64_t>(Controller.Reply("? " + std::string(expression)).size());
    EXPECT_EQ(Link.GetRspnsSngl(expression), 1234.5F);
  }
  EXPECT_EQ(Loop.NowMs(), bytes);
}

TEST_F(Exchanges, AFaultOfAnotherHandlerInsideTheWaitLeavesTheLineFree) {
  Controller.ByteDelayMs = 10;
  Loop.After(15, [] { throw platform::RuntimeFault("X.dat", "is damaged"); });
  EXPECT_THROW(Link.Download("VR(1)=1"), platform::RuntimeFault);
  Loop.RunFor(1000);
  Controller.Values["VR(19)"] = "3";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 3);
}

TEST_F(Exchanges, TheOrderWithinOneCallerStays) {
  Controller.ByteDelayMs = 1;
  for (const char* line : {"A=1", "B=2", "C=3"}) Link.Download(line);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", "B=2", "C=3"));
}

}  // namespace
}  // namespace torvane::link
