#include <gmock/gmock.h>

#include "LinkFixture.h"
#include "link/Downloads.h"
#include "support/Faults.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BulkSends : public LinkTest {
 protected:
  core::BySlot<core::ActiveProgram> programs_;
  Downloads downloads_{Link, Files, Directories, programs_};
  std::int16_t sent_ = 0;

  /// A table of `count` lines "TABLE(500,<slot>,<number>)".
  void MakeTable(int slot, int count) {
    std::string& file = Files.Files["C:\\ROOT\\Actvprg" + std::to_string(slot) + ".tbl"];
    file.clear();
    for (int number = 1; number <= count; ++number) {
      std::string record = Record(slot, number);
      record.resize(TableRecordSize, ' ');
      file += record;
    }
    programs_[static_cast<std::size_t>(slot)].TableLines = static_cast<std::int16_t>(count);
  }
  [[nodiscard]] static std::string Record(int slot, int number) {
    return "TABLE(500," + std::to_string(slot) + "," + std::to_string(number) + ")";
  }
  [[nodiscard]] static Lines Records(int slot, int from, int to) {
    Lines lines;
    for (int number = from; number <= to; ++number) lines.push_back(Record(slot, number));
    return lines;
  }
  void SendParameters(const std::string& text) {
    Files.Files["C:\\ROOT\\Data\\Machine.prm"] = text;
    downloads_.DownParameters("C:\\ROOT\\Data\\", "Machine.prm");
  }
};

// ---- parameters ----

TEST_F(BulkSends, ParametersGoOutUpperCasedWithoutTheirComments) {
  SendParameters(
      "VR(1)=5 ; speed\r\n; only a comment\r\n\r\n  vr(2)=6\r\n!VR(1)=5\r\nVR(3)=7 !x\r\n");
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=5", "VR(2)=6"));
}

TEST_F(BulkSends, AParameterFileWithAByteZeroIsAFaultAndNothingOfItIsSent) {
  EXPECT_EQ(FaultOf([this] { SendParameters(std::string("VR(1)=5\r\nVR(2)=\0\r\n", 18)); }),
            "C:\\ROOT\\Data\\Machine.prm: holds a byte 0 and is no text");
  EXPECT_THAT(Controller.Received, IsEmpty());
  EXPECT_EQ(Screens.Calls.back(), "unlock LockAllForms");
}

TEST_F(BulkSends, ACommentMayHoldAnythingThatWouldKeepALineBack) {
  SendParameters("VR(1)=5 ; not a SYS line!\n");
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=5"));
}

TEST_F(BulkSends, SystemLinesSetTheFrontEndsParametersAndAreNotSent) {
  SendParameters("SYS(1)=1.5\nsys(2) = -2.25 ; stored\nSYS(3)=15000\nSYS(4)=1\nMYSYS=3\n");
  EXPECT_EQ(Settings.Sys1, 1.5F);
  EXPECT_EQ(Settings.Sys2, -2.25F);
  EXPECT_EQ(Settings.JogMaxSpeed, 15000);
  EXPECT_THAT(Controller.Received, IsEmpty());
}

TEST_F(BulkSends, ASystemLineWithoutAValueReadsAsNoValue) {
  Settings.JogMaxSpeed = 100;
  SendParameters("SYS(3)=\n");
  EXPECT_EQ(Settings.JogMaxSpeed, -999);
}

TEST_F(BulkSends, ASystemLineIsStoredEvenWithAnExclamationMark) {
  SendParameters("!SYS(3)=9000\n");
  EXPECT_EQ(Settings.JogMaxSpeed, 9000);
  EXPECT_THAT(Controller.Received, IsEmpty());
}

TEST_F(BulkSends, ScreensAreLockedAndThePollIsStoppedForTheLengthOfTheFile) {
  Link.StartPolling(true);
  Controller.ByteDelayMs = 30;
  int ticks = 0;
  Link.SetPollTick([&ticks] { ++ticks; });
  SendParameters("VR(1)=5\nVR(2)=6\n");
  EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms", "unlock LockAllForms"));
  EXPECT_EQ(ticks, 0);
  Loop.RunFor(50);
  EXPECT_EQ(ticks, 1);
}

TEST_F(BulkSends, APollThatIsNotWantedIsNotStartedBehindTheFile) {
  int ticks = 0;
  Link.SetPollTick([&ticks] { ++ticks; });
  SendParameters("VR(1)=5\n");
  Loop.RunFor(1000);
  EXPECT_EQ(ticks, 0);
}

TEST_F(BulkSends, TheFileIsNotedAndLeavesARecordOfItsOwnInTheTrace) {
  Settings.PollLogEnabled = true;
  SendParameters("VR(1)=5\n");
  EXPECT_THAT(Files.Text("C:\\ROOT\\Service\\LastFile.txt"),
              ::testing::StartsWith("C:\\ROOT\\Data\\Machine.prm"));
  EXPECT_THAT(PollLog(), ::testing::EndsWith("*** DownParameters ***\r\n"
                                             "Query   :     Machine.prm\r\n"
                                             "Response:     \r\n"
                                             "Status  :     0\r\n\r\n"));
}

TEST_F(BulkSends, AParameterFileThatIsNotThereIsPassedOverWithoutAWord) {
  downloads_.DownParameters("C:\\ROOT\\Data\\", "Other.prm");
  EXPECT_THAT(Screens.Calls, IsEmpty());
  EXPECT_EQ(Files.Text("C:\\ROOT\\Service\\LastFile.txt"), "(no file)");
}

TEST_F(BulkSends, PathAndNameAreTrimmed) {
  Files.Files["C:\\ROOT\\Data\\Machine.prm"] = "VR(1)=5";
  downloads_.DownParameters("  C:\\ROOT\\Data\\ ", " Machine.prm  ");
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=5"));
}

TEST_F(BulkSends, AFailedParameterDoesNotStopTheFile) {
  Controller.Replies["VR(1)=5"] = "%>>";
  Controller.Replies["VR(2)=6"] = "%>>";
  SendParameters("VR(1)=5\nVR(2)=6\nVR(3)=7\n");
  EXPECT_THAT(Controller.Received, ElementsAre("VR(1)=5", "", "VR(2)=6", "", "VR(3)=7"));
  EXPECT_EQ(Screens.Warnings.size(), 2U);
}

TEST_F(BulkSends, WithTheLinkOffNotEvenTheSystemLinesAreRead) {
  Settings.TrioLinkEnabled = false;
  SendParameters("SYS(3)=15000\nVR(1)=5\n");
  EXPECT_EQ(Settings.JogMaxSpeed, 0);
  EXPECT_THAT(Screens.Calls, IsEmpty());
}

// ---- the table and its window ----

TEST_F(BulkSends, ATableGoesOutFromBehindWhatWasSentUpToTheTarget) {
  MakeTable(2, 30);
  sent_ = 4;
  downloads_.DownTable(2, sent_, 9, true);
  EXPECT_EQ(Controller.Received, Records(2, 5, 9));
  EXPECT_EQ(sent_, 9);
  EXPECT_THAT(Screens.Calls, IsEmpty());  // the screens stay free
  EXPECT_THAT(Files.Text("C:\\ROOT\\Service\\LastFile.txt"),
              ::testing::StartsWith("C:\\ROOT\\Actvprg2.tbl"));
}

TEST_F(BulkSends, AProgramOfFiveRecordsIsSentAtOnceAndNeverAgain) {
  MakeTable(1, 5);
  downloads_.DownTable(1, sent_, Settings.TableFillLines, true);
  EXPECT_EQ(sent_, 5);
  for (std::int16_t running = 0; running <= 5; ++running) {
    downloads_.TopUpTable(1, running, sent_);
  }
  EXPECT_EQ(Controller.Received, Records(1, 1, 5));
}

TEST_F(BulkSends, NothingToSendOpensNoFileAndLeavesThePoll) {
  Link.StartPolling(true);
  sent_ = 20;
  programs_[1].TableLines = 30;  // and no file
  EXPECT_NO_THROW(downloads_.DownTable(1, sent_, 20, true));
  EXPECT_NO_THROW(downloads_.DownTable(1, sent_, 0, true));
  EXPECT_NO_THROW(downloads_.DownTable(1, sent_, -1, true));
  EXPECT_EQ(sent_, 20);
  int ticks = 0;
  Link.SetPollTick([&ticks] { ++ticks; });
  Loop.RunFor(50);
  EXPECT_EQ(ticks, 1);
}

TEST_F(BulkSends, TheRefillWaitsUntilTheRunHasUsedTheSurplus) {
  MakeTable(1, 100);
  sent_ = 20;
  downloads_.TopUpTable(1, 0, sent_);
  downloads_.TopUpTable(1, 5, sent_);
  EXPECT_THAT(Controller.Received, IsEmpty());
  downloads_.TopUpTable(1, 6, sent_);
  EXPECT_EQ(Controller.Received, Records(1, 21, 21));
  EXPECT_EQ(sent_, 21);
}

TEST_F(BulkSends, AJumpOfTheRunIsCaughtUpInOneRefill) {
  MakeTable(1, 100);
  sent_ = 20;
  downloads_.TopUpTable(1, 50, sent_);
  EXPECT_EQ(Controller.Received, Records(1, 21, 65));
  EXPECT_EQ(sent_, 65);
}

TEST_F(BulkSends, ALeadOfOneSendsOneRecordPerRecordRun) {
  MakeTable(1, 10);
  Settings.TableLeadLines = 1;
  Settings.TableFillLines = 1;
  Settings.PollResumeMs = 70;
  std::vector<std::int64_t> ticks;
  std::int16_t running = 0;
  downloads_.DownTable(1, sent_, 1, true);
  Link.SetPollTick([&] {
    ticks.push_back(Loop.NowMs());
    downloads_.TopUpTable(1, ++running, sent_);
    EXPECT_EQ(sent_, std::min(running + 1, 10));
  });
  Link.StartPolling(true);
  Loop.RunFor(70 + 11 * 50);
  EXPECT_EQ(Controller.Received, Records(1, 1, 10));
  ASSERT_GT(ticks.size(), 3U);
  EXPECT_EQ(ticks[1] - ticks[0], 50);  // restarted inside the tick, back to the period at its end
}

TEST_F(BulkSends, RunningRecordsAtTheEdgeOfTheirTypeDoNotOverflow) {
  MakeTable(1, 3);
  sent_ = 3;
  downloads_.TopUpTable(1, 32767, sent_);
  downloads_.TopUpTable(1, -32768, sent_);
  EXPECT_EQ(sent_, 3);
  sent_ = 0;
  downloads_.TopUpTable(1, 32767, sent_);
  EXPECT_EQ(sent_, 3);
}

TEST_F(BulkSends, FailedRecordsCountAsSentAndAreNotSentAgain) {
  MakeTable(1, 8);
  Controller.Replies[Record(1, 2)] = "%>>";
  downloads_.DownTable(1, sent_, 4, true);
  EXPECT_EQ(sent_, 4);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  downloads_.DownTable(1, sent_, 6, true);
  EXPECT_EQ(std::count(Controller.Received.begin(), Controller.Received.end(), Record(1, 2)), 1);
}

TEST_F(BulkSends, ATableThatIsMissingOrTooShortIsAFault) {
  programs_[1].TableLines = 10;
  EXPECT_THROW(downloads_.DownTable(1, sent_, 10, false), platform::RuntimeFault);
  MakeTable(1, 3);
  programs_[1].TableLines = 10;
  try {
    downloads_.DownTable(1, sent_, 10, false);
    FAIL() << "no fault";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_STREQ(fault.what(), "C:\\ROOT\\Actvprg1.tbl: record 4 is missing");
  }
}

TEST_F(BulkSends, ALineThatIsNoTableLineNeverGoesOut) {
  MakeTable(1, 5);
  Files.Files["C:\\ROOT\\Actvprg1.tbl"].replace(3 * TableRecordSize, 9, "VR(48)=10");
  try {
    downloads_.DownTable(1, sent_, 5, false);
    FAIL() << "no fault";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_STREQ(fault.what(), "C:\\ROOT\\Actvprg1.tbl: record 4 is no table line");
  }
  EXPECT_EQ(Controller.Received, Records(1, 1, 3));
}

TEST_F(BulkSends, AnEmptySlotNumberSendsNothing) {
  downloads_.DownTable(0, sent_, 10, true);
  downloads_.DownTable(3, sent_, 10, true);
  downloads_.DownTable(-1, sent_, 10, true);
  EXPECT_THAT(Controller.Received, IsEmpty());
}

TEST_F(BulkSends, ThePollStopsForATableFromOutsideOnly) {
  MakeTable(1, 10);
  Controller.ByteDelayMs = 10;
  int ticks = 0;
  Link.SetPollTick([&ticks] { ++ticks; });
  Link.StartPolling(true);
  downloads_.DownTable(1, sent_, 5, true);
  EXPECT_EQ(ticks, 0);
  Loop.RunFor(50);
  EXPECT_EQ(ticks, 1);
  downloads_.DownTable(1, sent_, 10, false);
  EXPECT_GT(ticks, 1);
}

TEST_F(BulkSends, ATableIsLeftWhereAnotherOneBeganMeanwhile) {
  MakeTable(1, 100);
  MakeTable(2, 100);
  sent_ = 50;
  Controller.ByteDelayMs = 1;
  Loop.After(5, [this] {
    sent_ = 0;
    downloads_.DownTable(2, sent_, 20, true);
  });
  downloads_.DownTable(1, sent_, 60, true);
  Loop.RunFor(1000);
  EXPECT_EQ(sent_, 20);
  Lines expected = Records(1, 51, 51);
  for (const auto& line : Records(2, 1, 20)) expected.push_back(line);
  EXPECT_EQ(Controller.Received, expected);
}

TEST_F(BulkSends, WithTheLinkOffNoTableMovesTheCount) {
  MakeTable(1, 30);
  Settings.TrioLinkEnabled = false;
  downloads_.DownTable(1, sent_, 20, true);
  downloads_.TopUpTable(1, 10, sent_);
  EXPECT_EQ(sent_, 0);
}

// ---- counters and offsets ----

TEST_F(BulkSends, TheFirstFourCountersGoOutInOrder) {
  downloads_.DownBatch({4, 100, 25, -1, 26});
  EXPECT_THAT(Controller.Received, ElementsAre("VR(82)=4", "VR(83)=100", "VR(84)=25", "VR(85)=-1"));
  EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms", "unlock LockAllForms"));
}

TEST_F(BulkSends, OffsetsGoOutInTheShortestTextOfTheSingleWithoutAVariable) {
  core::Station station;
  station.OffsetX = 12.3F;
  station.OffsetY = 0.0F;
  station.OffsetZ = 100.05F;
  downloads_.DownToolOffsets(station);
  EXPECT_THAT(Controller.Received, ElementsAre("M848=12.3", "M849=0", "M850=100.05"));
  EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms", "unlock LockAllForms"));
}

TEST_F(BulkSends, CountersAndOffsetsRestartOnlyAPollThatIsWanted) {
  int ticks = 0;
  Link.SetPollTick([&ticks] { ++ticks; });
  downloads_.DownBatch({});
  downloads_.DownToolOffsets({});
  Loop.RunFor(500);
  EXPECT_EQ(ticks, 0);
  Link.StartPolling(true);
  downloads_.DownBatch({});
  downloads_.DownToolOffsets({});
  Loop.RunFor(50);
  EXPECT_EQ(ticks, 1);
}

TEST_F(BulkSends, WithTheLinkOffCountersAndOffsetsLeaveTheScreensAlone) {
  Settings.TrioLinkEnabled = false;
  downloads_.DownBatch({1, 2, 3, 4, 5});
  downloads_.DownToolOffsets({});
  EXPECT_THAT(Screens.Calls, IsEmpty());
}

}  // namespace
}  // namespace torvane::link
