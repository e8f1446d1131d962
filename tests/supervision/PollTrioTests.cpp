#include <gtest/gtest.h>

#include "Bench.h"

namespace torvane::supervision {
namespace {

const Lines EightQueries = {"? VR(19)",       "? VR(52)", "? MPOS AXIS(0)", "? MPOS AXIS(1)",
                            "? MPOS AXIS(4)", "? VR(98)", "? VR(25)",       "? VR(81)"};

class PollTrioTest : public ::testing::Test, public Bench {
 protected:
  PollTrioTest() { Select(1, "PART", 5); }

  Lines Tick() {
    Sent();
    Happened();
    Poll.PollTrio();
    return Sent();
  }
};

TEST_F(PollTrioTest, ATickWithAProgramMakesEightExchangesInTheirOrder) {
  System.TableSent = 5;
  EXPECT_EQ(Tick(), EightQueries);
}

TEST_F(PollTrioTest, WithoutAProgramTheRunTimeIsNotAsked) {
  System.Programs[1].Selected = false;
  System.TableSent = 5;
  Lines wanted = EightQueries;
  wanted.erase(wanted.begin() + 1);
  EXPECT_EQ(Tick(), wanted);
}

TEST_F(PollTrioTest, TheStagesFollowEachOther) {
  System.TableSent = 5;
  Screens.Shown = {PolledForm::MachineForm, PolledForm::SetupForm};
  Controller.Values = {{"VR(19)", "131072"}, {"VR(52)", "61.5"},         {"VR(98)", "80"},
                       {"VR(25)", "2400"},   {"MPOS AXIS(0)", "12.345"}, {"MPOS AXIS(1)", "-3"},
                       {"MPOS AXIS(4)", "1"}};
  Tick();
  const Events wanted = {
      "> ? VR(19)",       "trace",         "> ? VR(52)",  "> ? MPOS AXIS(0)", "> ? MPOS AXIS(1)",
      "> ? MPOS AXIS(4)", "Main 1=12.3",   "Main 2=-3.0", "Main 3=1.0",       "> ? VR(98)",
      "> ? VR(25)",       "Main 5=80",     "Main 6=2400", "> ? VR(81)",       "MachineFeed 1=80",
      "roller down",      "RunTime 1=1:02"};
  EXPECT_EQ(Happened(), wanted);
}

TEST_F(PollTrioTest, TheTraceRunsBeforeThePositionsAreRead) {
  Controller.Values["MPOS AXIS(0)"] = "10";
  Tick();
  EXPECT_EQ(System.State.XPosition, 10);
  EXPECT_EQ(System.State.LastXPosition, 0);
  Controller.Values["MPOS AXIS(0)"] = "11";
  Tick();
  EXPECT_EQ(System.State.LastXPosition, 10);
  EXPECT_EQ(System.State.XPosition, 11);
}

TEST_F(PollTrioTest, PositionsAreDividedByTheScaleAndMovedByTheOffset) {
  System.State.XScale = 4;
  System.State.XOffset = 0.5F;
  System.State.YScale = 0;
  Controller.Values = {{"MPOS AXIS(0)", "10"}, {"MPOS AXIS(1)", "7.25"}};
  Tick();
  EXPECT_EQ(System.State.XPosition, 3);
  EXPECT_EQ(System.State.YPosition, 7.25F) << "a scale of 0 divides nothing";
}

TEST_F(PollTrioTest, WithoutScaleAndOffsetThePositionIsTheReplyAsItStands) {
  System.State.XScale = 0;
  Controller.Values["MPOS AXIS(0)"] = "123.45678";
  Tick();
  EXPECT_EQ(System.State.XPosition, 123.45678F);
}

TEST_F(PollTrioTest, TheJogScreenTakesTwoFiguresWithTwoPlaces) {
  Screens.Shown = {PolledForm::XYJogForm};
  Controller.Values = {{"MPOS AXIS(0)", "1.239"}, {"MPOS AXIS(1)", "2"}};
  EXPECT_EQ(Tick().size(), 13U) << "and costs no exchange; five more are the table's";
  const auto happened = Happened();
  EXPECT_NE(std::find(happened.begin(), happened.end(), "Jog 1=1.24"), happened.end());
  EXPECT_NE(std::find(happened.begin(), happened.end(), "Jog 2=2.00"), happened.end());
}

TEST_F(PollTrioTest, TheReadOutAsksForItsMode) {
  System.TableSent = 5;
  Screens.Shown = {PolledForm::XYPositionForm};
  System.State.XScale = 2;
  System.State.XOffset = 1;
  const std::vector<std::pair<std::string, std::string>> modes = {{"MPOS", "XY 1=11.00"},
                                                                  {"DPOS", "XY 1=16.00"},
                                                                  {"ENDMOVE", "XY 1=21.00"},
                                                                  {"FE", "XY 1=2.00"}};
  Controller.Values = {{"MPOS AXIS(0)", "20"},
                       {"DPOS AXIS(0)", "30"},
                       {"ENDMOVE AXIS(0)", "40"},
                       {"FE AXIS(0)", "4"}};
  for (std::size_t mode = 0; mode < modes.size(); ++mode) {
    System.State.PositionDisplayMode = static_cast<std::int16_t>(mode);
    Lines wanted = EightQueries;
    if (mode > 0) {
      const auto& name = modes[mode].first;
      const Lines more = {"? " + name + " AXIS(0)", "? " + name + " AXIS(1)",
                          "? " + name + " AXIS(4)"};
      wanted.insert(wanted.begin() + 5, more.begin(), more.end());
    }
    EXPECT_EQ(Tick(), wanted);
    const auto happened = Happened();
    EXPECT_NE(std::find(happened.begin(), happened.end(), modes[mode].second), happened.end())
        << modes[mode].second;
  }
}

TEST_F(PollTrioTest, AModeThatDoesNotExistShowsTheMeasuredValues) {
  System.TableSent = 5;
  Screens.Shown = {PolledForm::XYPositionForm};
  System.State.PositionDisplayMode = 9;
  EXPECT_EQ(Tick(), EightQueries);
}

TEST_F(PollTrioTest, OfflineEveryValueReadsZeroAndNothingGoesOut) {
  System.Link.TrioLinkEnabled = false;
  System.State.XPosition = 5;
  System.State.LastXPosition = 4;
  System.State.MachineRunning = true;
  Screens.ButtonBackground = 1;
  EXPECT_EQ(Tick(), Lines{});
  EXPECT_EQ(Happened(), (Events{"trace", "Main 5=0", "Main 6=0"}));
  EXPECT_EQ(System.State.XPosition, 5) << "positions are not touched";
  EXPECT_EQ(System.State.LastXPosition, 4);
  EXPECT_FALSE(System.State.MachineRunning);
  EXPECT_EQ(Screens.ButtonBackground, System.Colours[core::ColourName::OkMessageButton]);
}

TEST_F(PollTrioTest, TheMessageButtonIsPaintedOnlyWhenItsColourDiffers) {
  Screens.ButtonBackground = System.Colours[core::ColourName::OkMessageButton];
  Tick();
  EXPECT_EQ(Screens.Paints, 0);
  Controller.Values["VR(19)"] = "6144";
  Tick();
  Tick();
  EXPECT_EQ(Screens.Paints, 1);
  EXPECT_EQ(Screens.ButtonBackground, System.Colours[core::ColourName::CriticalMessageButton]);
  EXPECT_EQ(Screens.ButtonText, System.Colours[core::ColourName::CriticalMessageButtonText]);
}

TEST_F(PollTrioTest, TheMessageListIsReadOnlyWhileItsScreenIsVisible) {
  System.TableSent = 5;
  System.Messages.IoMessages[3] = "Door open";
  Controller.Values["VR(16)"] = "3";
  Tick();
  EXPECT_EQ(Messages.Count(), 0);
  Screens.Shown = {PolledForm::MessageForm};
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(), {"? VR(16)", "? VR(17)"});
  EXPECT_EQ(Tick(), wanted);
  EXPECT_EQ(Messages.Row(1).Text, " Door open");
  EXPECT_EQ(Happened().back(), "messages 1");
  EXPECT_EQ(Tick(), wanted) << "read each time,";
  EXPECT_NE(Happened().back(), "messages 1") << "shown only on a change";
}

TEST_F(PollTrioTest, TheRollerButtonFollowsTheControllerUnderItsGuard) {
  std::vector<bool> guards;
  Screens.OnRoller = [&](bool) { guards.push_back(Poll.RollerGuard()); };
  Screens.Shown = {PolledForm::MachineForm};
  Tick();
  EXPECT_TRUE(guards.empty()) << "no change, no press";
  Controller.Values["VR(19)"] = "131072";
  Tick();
  Tick();
  EXPECT_EQ(guards, std::vector<bool>{true});
  EXPECT_FALSE(Poll.RollerGuard());
  Happened();
  Poll.RefreshMachineForm(true);
  EXPECT_EQ(Happened(), (Events{"MachineFeed 1=0", "roller down"})) << "forced";
}

TEST_F(PollTrioTest, TheLaserScreenReadsItsBoxesInOrderWithTheirPlaces) {
  System.TableSent = 5;
  Screens.Shown = {PolledForm::LaserStatusForm};
  Controller.Values = {{"VR(25)", "2400.4"}, {"VR(98)", "90"}, {"VR(75)", "1.234"},
                       {"VR(31)", "0.129"},  {"VR(69)", "55"}, {"VR(71)", "2.6"}};
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(), {"? VR(25)", "? VR(70)", "? VR(65)", "? VR(69)", "? VR(71)",
                               "? VR(72)", "? VR(73)", "? VR(78)", "? VR(74)", "? VR(75)",
                               "? VR(76)", "? VR(77)", "? VR(30)", "? VR(31)"});
  EXPECT_EQ(Tick(), wanted);
  Events shown;
  for (const auto& event : Happened()) {
    if (event.rfind("Laser", 0) == 0) shown.push_back(event);
  }
  EXPECT_EQ(shown, (Events{"LaserFeed 1=2400", "LaserFeed 2=2400", "LaserFeed 3=90",
                           "LaserPower 1=0", "LaserPower 2=0", "LaserPower 3=55", "LaserStatus 1=3",
                           "LaserStatus 2=0", "LaserStatus 3=0", "LaserStatus 4=0",
                           "LaserStatus 5=0", "LaserStatus 6=1.23", "LaserStatus 7=0.00",
                           "LaserStatus 8=0", "LaserStatus 9=0", "LaserStatus 10=0.13"}));
}

TEST_F(PollTrioTest, TheTableIsToppedUpBehindTheScreensAndBeforeTheBatch) {
  Select(1, "PART", 40);
  System.TableSent = 20;
  Controller.Values = {{"VR(81)", "6"}, {"VR(19)", "16384"}};
  EXPECT_EQ(Tick().back(), "TABLE(1,21)");
  EXPECT_EQ(System.TableSent, 21);
  Screens.Shown = {PolledForm::BatchForm};
  Controller.Values["VR(81)"] = "8";
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(),
                {"TABLE(1,22)", "TABLE(1,23)", "? VR(82)", "? VR(83)", "? VR(84)", "? VR(85)"});
  EXPECT_EQ(Tick(), wanted);
}

TEST_F(PollTrioTest, TheStartWindowIsNotToppedUpBeforeItHasBeenUsed) {
  Select(1, "PART", 40);
  System.TableSent = 20;
  EXPECT_EQ(Tick(), EightQueries);
  Controller.Values["VR(81)"] = "5";
  EXPECT_EQ(Tick(), EightQueries);
}

TEST_F(PollTrioTest, TheEndOfARunReadsTheBatchOnce) {
  System.TableSent = 5;
  Controller.Values["VR(19)"] = "16384";
  EXPECT_EQ(Tick(), EightQueries);
  Controller.Values = {{"VR(82)", "2"}, {"VR(83)", "20"}, {"VR(84)", "10"}, {"VR(85)", "4"}};
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(), {"? VR(82)", "? VR(83)", "? VR(84)", "? VR(85)"});
  EXPECT_EQ(Tick(), wanted);
  EXPECT_EQ(System.Programs[1].BatchCounters.SheetsToGo, 6);
  EXPECT_EQ(Screens.LastBatch.SheetsCompleted, 4);
  EXPECT_EQ(Tick(), EightQueries);
}

TEST_F(PollTrioTest, AFailedStatusQueryCountsAsAStoppedRun) {
  System.TableSent = 5;
  Controller.Values["VR(19)"] = "16384";
  Tick();
  Controller.Replies["? VR(19)"] = "? VR(19)\r\n%\r\n>>";
  const auto sent = Tick();
  EXPECT_FALSE(System.State.MachineRunning);
  EXPECT_EQ(sent.back(), "? VR(85)") << "the falling edge reads the batch";
  EXPECT_EQ(LinkScreens.Warnings.size(), 1U);
}

TEST_F(PollTrioTest, TheRunningRecordFailsWithoutAWord) {
  System.TableSent = 5;
  Controller.Replies["? VR(81)"] = "? VR(81)\r\n%\r\n>>";
  Tick();
  EXPECT_TRUE(LinkScreens.Warnings.empty());
  EXPECT_EQ(System.State.RunningBlock, 0);
  EXPECT_TRUE(System.Link.ReportCommsErrors) << "and the next failure is reported again";
}

TEST_F(PollTrioTest, TheProgramViewIsShownOnlyWhenTheRecordOrTheSlotChanges) {
  System.TableSent = 5;
  Screens.Shown = {PolledForm::ViewProgForm};
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(Screens.Listings, 1);
  EXPECT_EQ(Screens.Listing[0].Text, "G00 X1");
  Tick();
  EXPECT_EQ(Screens.Listings, 1);
  Controller.Values["VR(81)"] = "1";
  Tick();
  EXPECT_EQ(Screens.Listings, 2);
  EXPECT_TRUE(Screens.Listing[0].Inverse);
  System.ActiveSlot = 2;
  Tick();
  EXPECT_EQ(Screens.Listings, 3);
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(Screens.Listings, 4);
}

TEST_F(PollTrioTest, AnInvisibleProgramViewCostsNothing) {
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(Screens.Listings, 0);
  EXPECT_EQ(System.State.RunningBlockShown, -1);
}

TEST_F(PollTrioTest, ATickDoesNotOverlapItself) {
  System.TableSent = 5;
  int nested = 0;
  Controller.OnLine = [&](const std::string&) {
    ++nested;
    Poll.PollTrio();
  };
  EXPECT_EQ(Tick(), EightQueries);
  EXPECT_EQ(nested, 8);
}

TEST_F(PollTrioTest, TheHeartbeatKeepsItsPeriodBehindARefill) {
  Select(1, "PART", 60);
  System.TableSent = 20;
  System.Link.PollResumeMs = 200;
  int ticks = 0;
  Trio.SetPollTick([&] {
    ++ticks;
    Poll.PollTrio();
  });
  Trio.StartPolling(true);
  Loop.RunFor(199);
  EXPECT_EQ(ticks, 0);
  Loop.RunFor(1);
  EXPECT_EQ(ticks, 1);
  Loop.RunFor(100);
  EXPECT_EQ(ticks, 3);
  Controller.Values["VR(81)"] = "30";
  Loop.RunFor(50);
  EXPECT_EQ(System.TableSent, 45);
  Loop.RunFor(100);
  EXPECT_EQ(ticks, 6)
      << "the refill stopped the timer that it ran under, and the tick put it right";
}

TEST_F(PollTrioTest, BatchCountersAreNotReadOverAnEditOrOffline) {
  Sent();
  Screens.Editing = true;
  Poll.RefreshBatch();
  EXPECT_EQ(Sent(), Lines{});
  Screens.Editing = false;
  System.ActiveSlot = 0;
  Poll.RefreshBatch();
  EXPECT_EQ(Sent(), Lines{});
  System.ActiveSlot = 1;
  System.Link.TrioLinkEnabled = false;
  Poll.RefreshBatch();
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(PollTrioTest, TypingThatBeginsWhileTheRepliesComeIsNotOverwritten) {
  Controller.OnLine = [&](const std::string&) { Screens.Editing = true; };
  Happened();
  Poll.RefreshBatch();
  EXPECT_EQ(Happened(), Events{});
}

TEST_F(PollTrioTest, SheetsToGoNeedsBothWishesAndMayFallBelowZero) {
  Controller.Values = {{"VR(83)", "0"}, {"VR(84)", "10"}, {"VR(85)", "4"}};
  Poll.RefreshBatch();
  EXPECT_EQ(System.Programs[1].BatchCounters.SheetsToGo, 0);
  Controller.Values["VR(83)"] = "20";
  Controller.Values["VR(84)"] = "3";
  Controller.Values["VR(85)"] = "5";
  Poll.RefreshBatch();
  EXPECT_EQ(System.Programs[1].BatchCounters.SheetsToGo, -2);
  Controller.Values["VR(84)"] = "-2147483648";
  Controller.Values["VR(85)"] = "2147483647";
  Poll.RefreshBatch();
  EXPECT_EQ(System.Programs[1].BatchCounters.SheetsToGo, std::numeric_limits<std::int32_t>::min());
}

TEST_F(PollTrioTest, TheStartOfARunDrawsThePlotAfresh) {
  Controller.Values["VR(19)"] = "16384";
  Tick();
  const auto first = Happened();
  EXPECT_EQ(first[2], "plot 1");
  EXPECT_EQ(first[3], "> ? VR(52)");
  Tick();
  EXPECT_EQ(Happened()[2], "> ? VR(52)") << "only at its rising edge";
}

}  // namespace
}  // namespace torvane::supervision
