#include <gmock/gmock.h>

#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;
using Times = std::vector<std::int64_t>;

class Polling : public LinkTest {
 protected:
  Times times_;
  std::function<void()> inside_;

  Polling() {
    Settings.PollPeriodMs = 50;
    Settings.PollResumeMs = 200;
    Link.SetPollTick([this] {
      times_.push_back(Loop.NowMs());
      if (inside_) inside_();
    });
  }
};

TEST_F(Polling, TheFirstTickComesAfterTheResumeTimeThoseAfterItEveryPeriod) {
  Link.StartPolling(true);
  Loop.RunFor(400);
  EXPECT_THAT(times_, ElementsAre(200, 250, 300, 350, 400));
  EXPECT_TRUE(Settings.PollingWanted);
}

TEST_F(Polling, StartingAgainStartsTheResumeTimeAfresh) {
  Link.StartPolling(true);
  Loop.RunFor(199);
  Link.StartPolling(false);
  Loop.RunFor(201);
  EXPECT_THAT(times_, ElementsAre(399));
}

TEST_F(Polling, AStartAloneDoesNotMakeThePollWanted) {
  Link.StartPolling(false);
  Loop.RunFor(200);
  EXPECT_EQ(times_.size(), 1U);
  EXPECT_FALSE(Settings.PollingWanted);
}

TEST_F(Polling, StoppingKeepsTheWishUnlessItIsCleared) {
  Link.StartPolling(true);
  Link.StopPolling(false);
  EXPECT_TRUE(Settings.PollingWanted);
  Link.StopPolling(true);
  EXPECT_FALSE(Settings.PollingWanted);
  Loop.RunFor(1000);
  EXPECT_TRUE(times_.empty());
}

TEST_F(Polling, ARestartInsideATickFallsBackToThePeriodAtItsEnd) {
  inside_ = [this] {
    Link.StopPolling(false);
    Link.StartPolling(false);
  };
  Link.StartPolling(true);
  Loop.RunFor(300);
  EXPECT_THAT(times_, ElementsAre(200, 250, 300));
}

TEST_F(Polling, AWantedPollStoppedInsideItsTickGoesOnAtItsEnd) {
  inside_ = [this] { Link.StopPolling(false); };
  Link.StartPolling(true);
  Loop.RunFor(300);
  EXPECT_THAT(times_, ElementsAre(200, 250, 300));
}

TEST_F(Polling, APollEndedForGoodInsideItsTickStaysEnded) {
  inside_ = [this] { Link.StopPolling(true); };
  Link.StartPolling(true);
  Loop.RunFor(1000);
  EXPECT_THAT(times_, ElementsAre(200));
}

TEST_F(Polling, ATickIsNeverEnteredASecondTime) {
  Controller.ByteDelayMs = 20;
  int depth = 0;
  inside_ = [&] {
    EXPECT_EQ(++depth, 1);
    static_cast<void>(Link.GetRspnsLng("VR(19)"));
    --depth;
  };
  Link.StartPolling(true);
  Loop.RunFor(5000);
  EXPECT_GT(times_.size(), 5U);
}

TEST_F(Polling, TheTickRunsOnWhileTheFailureDialogStands) {
  std::size_t during = 0;
  Screens.DuringDialog = [&] {
    const std::size_t before = times_.size();
    Loop.RunFor(500);
    during = times_.size() - before;
  };
  Link.StartPolling(true);
  Controller.Replies["A=1"] = "%>>";
  Link.Download("A=1");
  EXPECT_GE(during, 6U);
}

}  // namespace
}  // namespace torvane::link
