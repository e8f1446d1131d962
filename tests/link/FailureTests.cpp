#include <gmock/gmock.h>

#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Failures : public LinkTest {
 protected:
  [[nodiscard]] static std::string Dialog(const std::string& last, const std::string& text) {
    return "An error occurred while talking to TRIO !\n\nLast Comms :  " + last + "\n\n" + text +
           "\n\nShutdown Torvane ?";
  }
  [[nodiscard]] static std::string Record(const std::string& last, const std::string& text) {
    return "*** ERROR ***\r\nLast Comms :  " + last + "\r\nError Text :  " + text + "\r\n\r\n";
  }
};

TEST_F(Failures, NoPromptInTimeGivesZeroOneDialogAndARequestForAPrompt) {
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = !line.empty(); };
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  EXPECT_EQ(Loop.NowMs(), 10000);
  EXPECT_THAT(Screens.Warnings, ElementsAre(Dialog("? VR(19)", "GetTrio Timeout : ")));
  EXPECT_THAT(Screens.Calls, ElementsAre("ShowWarning 2 1"));
  EXPECT_EQ(ErrorLog(), Record("? VR(19)", "GetTrio Timeout : "));
  EXPECT_THAT(Controller.Received, ElementsAre("? VR(19)", ""));
  EXPECT_EQ(Settings.LastComms, "");
  EXPECT_FALSE(Settings.ReplyTimedOut);
}

TEST_F(Failures, TheReportHoldsWhatCame) {
  Controller.Replies["VR(1)=1"] = "VR(1)=1\r\n>";
  Link.Download("VR(1)=1");
  EXPECT_EQ(ErrorLog(), Record("VR(1)=1", "GetTrio Timeout : VR(1)=1\r\n>"));
}

TEST_F(Failures, AnErrorMarkWithAPromptGivesOneDialog) {
  Controller.Replies["VR(1)=X"] = "VR(1)=X\r\n%\r\n>>";
  Link.Download("VR(1)=X");
  EXPECT_EQ(Loop.NowMs(), 0);
  EXPECT_THAT(Screens.Warnings,
              ElementsAre(Dialog("VR(1)=X", "GetTrio Error : VR(1)=X\r\n%\r\n>>")));
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=X", ""));
}

TEST_F(Failures, AnErrorMarkWithoutAPromptGivesTwoTheSecondWithoutTheLastLine) {
  Controller.Replies["VR(1)=X"] = "VR(1)=X\r\n%";
  Link.Download("VR(1)=X");
  EXPECT_THAT(Screens.Warnings, ElementsAre(Dialog("VR(1)=X", "GetTrio Timeout : VR(1)=X\r\n%"),
                                            Dialog("", "GetTrio Error : VR(1)=X\r\n%")));
  EXPECT_EQ(ErrorLog(), Record("VR(1)=X", "GetTrio Timeout : VR(1)=X\r\n%") +
                            Record("", "GetTrio Error : VR(1)=X\r\n%"));
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=X", ""));  // one request for a prompt
}

TEST_F(Failures, AnErrorMarkSpoilsAReplyThatHoldsAValue) {
  Controller.Replies["? VR(19)"] = "? VR(19)\r\n16384%\r\n>>";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(Failures, TheTimeoutOfTheRequestForAPromptGoesUnreported) {
  Controller.Silent = true;
  Link.Download("VR(1)=1");
  EXPECT_EQ(Loop.NowMs(), 20000);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  EXPECT_FALSE(Settings.ReplyTimedOut);
}

TEST_F(Failures, TheNextExchangeGoesOutAsIfNothingHadHappened) {
  Controller.Silent = true;
  Link.Download("VR(1)=1");
  Controller.Silent = false;
  Controller.Values["VR(19)"] = "4096";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 4096);
  EXPECT_TRUE(Settings.TrioLinkEnabled);
}

TEST_F(Failures, BytesThatComeAfterTheTimeoutAreFlushedByTheRequestForAPrompt) {
  Settings.ReplyTimeoutMs = 100;
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = !line.empty(); };
  Screens.DuringDialog = [this] {
    Loop.RunFor(50);
    Port.Deliver("? VR(19)\r\n7\r\n>>");
    Loop.RunFor(50);
  };
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  EXPECT_EQ(Port.BytesWaiting(), 0U);
  Controller.OnLine = nullptr;
  Controller.Silent = false;
  Controller.Values["VR(81)"] = "3";
  EXPECT_EQ(Link.GetRspnsInt("VR(81)"), 3);
}

TEST_F(Failures, WhatComesBehindThePromptOfTheRequestIsDroppedWithIt) {
  Controller.Replies["VR(1)=X"] = "%>>";
  Controller.Replies[""] = "\r\n>>and more";
  Link.Download("VR(1)=X");
  EXPECT_EQ(Port.BytesWaiting(), 0U);
}

TEST_F(Failures, CancelCarriesOn) {
  Controller.Replies["VR(1)=X"] = "%>>";
  Screens.Answer = false;
  Link.Download("VR(1)=X");
  EXPECT_THAT(Screens.Calls, ElementsAre("ShowWarning 2 1"));
}

TEST_F(Failures, OkShutsDownToServiceAndStillLeavesTheRecord) {
  Controller.Replies["VR(1)=X"] = "%>>";
  Screens.Answer = true;
  std::string recordAtShutdown;
  Screens.OnShutdown = [&] { recordAtShutdown = ErrorLog(); };
  Link.Download("VR(1)=X");
  EXPECT_THAT(Screens.Calls, ElementsAre("ShowWarning 2 1", "ShutdownToService"));
  EXPECT_EQ(recordAtShutdown, Record("VR(1)=X", "GetTrio Error : %>>"));
}

TEST_F(Failures, AShutdownThatClosesThePortEndsTheExchangeWithoutARequestForAPrompt) {
  Controller.Silent = true;
  Screens.Answer = true;
  Screens.OnShutdown = [this] { Link.CloseTrioPort(); };
  Link.Download("VR(1)=X");
  EXPECT_EQ(Loop.NowMs(), 10000);
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=X"));
}

TEST_F(Failures, WithReportsOffNeitherDialogNorFileButTheLastLineIsEmptied) {
  Settings.ReportCommsErrors = false;
  Controller.Replies["? VR(81)"] = "%>>";
  EXPECT_EQ(Link.GetRspnsInt("VR(81)"), 0);
  EXPECT_THAT(Screens.Calls, IsEmpty());
  EXPECT_EQ(ErrorLog(), "(no file)");
  EXPECT_EQ(Settings.LastComms, "");
  EXPECT_FALSE(Settings.ReportCommsErrors);
  EXPECT_THAT(Controller.Received, ElementsAre("? VR(81)", ""));
}

TEST_F(Failures, TheSilentQueryHasNeitherDialogNorRecordAndSilencesNobodyElse) {
  Controller.ByteDelayMs = 5;
  Controller.Replies["VR(48)=10"] = "%>>";
  Controller.Replies["? VR(81)"] = "%>>";
  Loop.After(5, [this] { Link.Download("VR(48)=10"); });
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Silent), 0);
  EXPECT_THAT(Screens.Warnings, IsEmpty());
  Loop.RunFor(100);
  EXPECT_TRUE(Settings.ReportCommsErrors);
  EXPECT_THAT(Screens.Warnings, ElementsAre(Dialog("VR(48)=10", "GetTrio Error : %>>")));
  EXPECT_THAT(Controller.Received, ElementsAre("? VR(81)", "", "VR(48)=10", ""));
}

TEST_F(Failures, ThePollHasItsZeroAtOnceAndTheLineAgainWhileItsDialogStands) {
  Controller.Replies["? VR(19)"] = "%>>";
  Controller.Values["VR(25)"] = "3000";
  bool open = true;
  Screens.DuringDialog = [&] { Loop.WaitUntil([&] { return !open; }); };
  std::vector<float> feeds;
  Loop.Start([&] {
    EXPECT_EQ(Link.GetRspnsLng("VR(19)", Asker::Poll), 0);
    feeds.push_back(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll));
  });
  Loop.RunFor(1);
  EXPECT_THAT(feeds, ElementsAre(3000.0F));
  EXPECT_THAT(Controller.Received, ElementsAre("? VR(19)", "", "? VR(25)"));
  EXPECT_EQ(ErrorLog(), "(no file)") << "the record comes with the answer";
  open = false;
  Loop.RunFor(1);
  EXPECT_EQ(ErrorLog(), Record("? VR(19)", "GetTrio Error : %>>"));
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
}

TEST_F(Failures, AFurtherFailureOfThePollWhileItsDialogStandsReachesTheFileAlone) {
  Controller.Replies["? VR(19)"] = "%>>";
  bool open = true;
  Screens.DuringDialog = [&] { Loop.WaitUntil([&] { return !open; }); };
  for (int tick = 0; tick < 3; ++tick) {
    EXPECT_EQ(Link.GetRspnsLng("VR(19)", Asker::Poll), 0);
  }
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  EXPECT_EQ(Screens.Busy, 2);
  const std::string two = Record("? VR(19)", "GetTrio Error : %>>");
  EXPECT_EQ(ErrorLog(), two + two);
  open = false;
  Loop.RunFor(1);
  EXPECT_EQ(ErrorLog(), two + two + two);
}

TEST_F(Failures, TheEndHasTheLineToItselfAndTheFirstFailureIsItsLast) {
  Settings.ReplyTimeoutMs = 400;
  Controller.Silent = true;
  Loop.Start([this] { Link.Download("VR(1)=1"); });
  Loop.Start([this] { Link.Download("VR(2)=2"); });
  Loop.RunFor(100);
  Link.BeginEnd();
  EXPECT_EQ(Link.GetRspnsLng("VR(82)", Asker::End), 0);
  EXPECT_EQ(Link.GetRspnsLng("VR(83)", Asker::End), 0);
  Link.Download("VR(3)=3");
  EXPECT_EQ(Loop.NowMs(), 500) << "one time-out, whatever waited and whatever is asked";
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=1", "? VR(82)"));
  EXPECT_THAT(Screens.Warnings, IsEmpty());
  EXPECT_EQ(ErrorLog(), Record("? VR(82)", "GetTrio Timeout : "));
}

TEST_F(Failures, TheEndReadsAsEverOnALineThatAnswers) {
  Controller.Values = {{"VR(82)", "5"}, {"VR(83)", "6"}};
  Link.BeginEnd();
  EXPECT_EQ(Link.GetRspnsLng("VR(82)", Asker::End), 5);
  EXPECT_EQ(Link.GetRspnsLng("VR(83)", Asker::End), 6);
  EXPECT_EQ(Link.GetRspnsLng("VR(19)", Asker::Poll), 0) << "nobody else";
}

TEST_F(Failures, WhileTheDialogStandsOthersGoOnAndTheirFailuresReachTheFileAlone) {
  Controller.Replies["VR(1)=X"] = "%>>";
  Controller.Replies["VR(2)=X"] = "%%>>";
  Controller.Values["VR(19)"] = "16384";
  std::int32_t status = 0;
  Screens.DuringDialog = [&] {
    status = Link.GetRspnsLng("VR(19)");
    Link.Download("VR(2)=X");
  };
  Screens.Answer = true;
  Link.Download("VR(1)=X");
  EXPECT_EQ(status, 16384);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  EXPECT_EQ(Screens.Busy, 1);
  EXPECT_EQ(ErrorLog(),
            Record("VR(2)=X", "GetTrio Error : %%>>") + Record("VR(1)=X", "GetTrio Error : %>>"));
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=X", "? VR(19)", "VR(2)=X", "", ""));
  EXPECT_EQ(std::count(Screens.Calls.begin(), Screens.Calls.end(), "ShutdownToService"), 1);
}

TEST_F(Failures, TheReportNamesItsOwnLineEvenIfAnotherWasSentMeanwhile) {
  Settings.ReplyTimeoutMs = 50;
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = line == "VR(1)=1"; };
  Loop.After(10, [this] { Link.Download("VR(2)=2"); });
  Link.Download("VR(1)=1");
  EXPECT_EQ(ErrorLog(), Record("VR(1)=1", "GetTrio Timeout : "));
}

TEST_F(Failures, WhereOthersWaitTheRequestForAPromptGoesOutAheadOfThem) {
  Settings.ReplyTimeoutMs = 50;
  Controller.OnLine = [this](const std::string& line) { Controller.Silent = line == "VR(1)=1"; };
  Loop.After(10, [this] { Link.Download("VR(2)=2"); });
  Link.Download("VR(1)=1");
  Loop.RunFor(1);
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=1", "", "VR(2)=2"));
}

TEST_F(Failures, AnExchangeStartedInsideTheRequestForAPromptWaitsForItsEnd) {
  Controller.ByteDelayMs = 10;
  Controller.Replies["VR(1)=X"] = "%>>";
  Controller.Values["VR(19)"] = "5";
  std::int32_t status = 0;
  Controller.OnLine = [&](const std::string& line) {
    if (line.empty()) Loop.After(15, [&] { status = Link.GetRspnsLng("VR(19)"); });
  };
  Link.Download("VR(1)=X");
  Loop.RunFor(1000);
  EXPECT_EQ(status, 5);
  EXPECT_EQ(Controller.Overlaps, 0);
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=X", "", "? VR(19)"));
}

TEST_F(Failures, AReportFromOutsideUsesTheLastLineThatWasSent) {
  Settings.LastComms = "VR(3)=3";
  Link.ReportTrioError("something");
  EXPECT_EQ(ErrorLog(), Record("VR(3)=3", "something"));
  EXPECT_EQ(Settings.LastComms, "");
  Settings.ReportCommsErrors = false;
  Settings.LastComms = "VR(4)=4";
  Link.ReportTrioError("something");
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  EXPECT_EQ(Settings.LastComms, "");
}

TEST_F(Failures, ARecordThatCannotBeWrittenChangesNoExchange) {
  Files.ReadOnlyPath = "C:\\ROOT\\Service\\Errors.txt";
  Controller.Replies["? VR(19)"] = "%>>";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 0);
  Controller.Replies["VR(1)=1"] = "%>>";
  EXPECT_NO_THROW(Link.Download("VR(1)=1"));
  EXPECT_EQ(Screens.Warnings.size(), 2U);
  Controller.Replies.clear();
  Controller.Values["VR(19)"] = "6";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 6);
}

}  // namespace
}  // namespace torvane::link
