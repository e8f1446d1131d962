#include <gmock/gmock.h>

#include "LinkFixture.h"
#include "link/Downloads.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Pauses : public LinkTest {
 protected:
  core::BySlot<core::ActiveProgram> programs_;
  Downloads downloads_{Link, Files, Directories, programs_};
  int ticks_ = 0;

  Pauses() {
    Link.SetPollTick([this] { ++ticks_; });
  }
};

TEST_F(Pauses, NoPauseLeavesTheScreensAndThePollAlone) {
  Link.StartPolling(true);
  Link.LockAllForms(0);
  Link.LockAllForms(-5);
  EXPECT_THAT(Screens.Calls, IsEmpty());
  EXPECT_EQ(Loop.NowMs(), 0);
}

TEST_F(Pauses, APauseLocksTheScreensStopsThePollAndRunsTheLoop) {
  Link.StartPolling(true);
  int events = 0;
  Loop.After(150, [&] {
    ++events;
    EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms"));
  });
  Link.LockAllForms(200);
  EXPECT_EQ(Loop.NowMs(), 200);
  EXPECT_EQ(events, 1);
  EXPECT_EQ(ticks_, 0);
  EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms", "unlock LockAllForms"));
  Loop.RunFor(50);
  EXPECT_EQ(ticks_, 1);
}

TEST_F(Pauses, APollThatIsNotWantedStaysStoppedBehindThePause) {
  Link.StartPolling(false);
  Link.LockAllForms(200);
  Loop.RunFor(1000);
  EXPECT_EQ(ticks_, 0);
}

TEST_F(Pauses, TheDelayComesBetweenTheLineAndTheWaitForItsPrompt) {
  Settings.CommandDelayMs = 30;
  Settings.ReplyTimeoutMs = 100;
  Controller.OnLine = [this](const std::string& line) {
    Controller.Silent = !line.empty();
    if (line.empty()) Controller.Send("\r\n>>");
  };
  Link.Download("VR(1)=1");
  EXPECT_EQ(Loop.NowMs(), 130);  // the limit counts from the end of the pause
  EXPECT_THAT(Screens.Calls,
              ElementsAre("lock LockAllForms", "unlock LockAllForms", "ShowWarning 2 1"));
}

TEST_F(Pauses, AReplyInsideThePauseIsTakenAtItsEnd) {
  Settings.CommandDelayMs = 30;
  Controller.Values["VR(19)"] = "77";
  EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 77);
  EXPECT_EQ(Loop.NowMs(), 30);
}

TEST_F(Pauses, WithADelayEveryDownloadOfABulkSendEndsTheOuterLock) {
  Settings.CommandDelayMs = 10;
  downloads_.DownBatch({1, 2, 3, 4, 5});
  const std::string lock = "lock LockAllForms";
  const std::string unlock = "unlock LockAllForms";
  EXPECT_THAT(Screens.Calls,
              ElementsAre(lock,  //
                          lock, unlock, lock, unlock, lock, unlock, lock, unlock, unlock));
}

TEST_F(Pauses, WithADelayThePollRunsInsideABulkSendAndLosesNothing) {
  Settings.CommandDelayMs = 10;
  Settings.PollResumeMs = 1;
  Controller.ByteDelayMs = 3;
  Controller.Values["VR(19)"] = "16384";
  Link.SetPollTick([this] {
    ++ticks_;
    EXPECT_EQ(Link.GetRspnsLng("VR(19)"), 16384);
  });
  Link.StartPolling(true);
  downloads_.DownBatch({1, 2, 3, 4, 5});
  EXPECT_GT(ticks_, 0);
  EXPECT_EQ(Controller.Overlaps, 0);
  EXPECT_THAT(Screens.Warnings, IsEmpty());
}

TEST_F(Pauses, QueuedExchangesPauseOneAfterTheOther) {
  Settings.CommandDelayMs = 20;
  Loop.After(5, [this] { Link.Download("B=2"); });
  Loop.After(6, [this] { Link.Download("C=3"); });
  Link.Download("A=1");
  EXPECT_EQ(Loop.NowMs(), 20);
  Loop.RunFor(39);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", "B=2", "C=3"));
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 1U);
  Loop.RunFor(1);
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
  EXPECT_THAT(Screens.Warnings, IsEmpty());
}

TEST_F(Pauses, APauseBesideAnExchangesPauseHoldsItUpNoLonger) {
  Settings.CommandDelayMs = 50;
  bool over = false;
  Loop.After(10, [&] {
    Link.LockAllForms(100);
    over = true;
  });
  Link.Download("A=1");
  EXPECT_EQ(Loop.NowMs(), 50);
  Loop.RunFor(59);
  EXPECT_FALSE(over);
  Loop.RunFor(1);
  EXPECT_TRUE(over);
}

TEST_F(Pauses, TheRequestForAPromptHasNoPause) {
  Settings.CommandDelayMs = 25;
  Controller.Replies["A=1"] = "%>>";
  Link.Download("A=1");
  EXPECT_EQ(Loop.NowMs(), 25);
  EXPECT_THAT(Controller.Received, ElementsAre("A=1", ""));
}

TEST_F(Pauses, ClosingThePortInsideAPauseUnlocksTheScreens) {
  Settings.CommandDelayMs = 500;
  Loop.After(100, [this] { Link.CloseTrioPort(); });
  Link.Download("A=1");
  EXPECT_EQ(Loop.NowMs(), 100);
  EXPECT_THAT(Screens.Calls, ElementsAre("lock LockAllForms", "unlock LockAllForms"));
}

}  // namespace
}  // namespace torvane::link
