#include <algorithm>
#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

#include "Bench.h"

namespace torvane::supervision {

using namespace tests;
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
  /// A screen that shows and writes down that its stage ran.
  void Offer(PollStage stage, const std::string& name) {
    Screens.Stages[stage] = [this, name] { Log.push_back(name); };
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
  Offer(PollStage::JogPosition, "jog");
  Offer(PollStage::Position, "position");
  Offer(PollStage::RunningBlock, "running block");
  Offer(PollStage::Messages, "messages");
  Offer(PollStage::Machine, "machine");
  Offer(PollStage::Laser, "laser");
  Offer(PollStage::RunTime, "run time");
  Offer(PollStage::Batch, "batch");
  Controller.Values = {{"VR(19)", "131072"}, {"VR(52)", "61.5"},         {"VR(98)", "80"},
                       {"VR(25)", "2400"},   {"MPOS AXIS(0)", "12.345"}, {"MPOS AXIS(1)", "-3"},
                       {"MPOS AXIS(4)", "1"}};
  Tick();
  const Events wanted = {"> ? VR(19)",       "trace",
                         "> ? VR(52)",       "> ? MPOS AXIS(0)",
                         "> ? MPOS AXIS(1)", "> ? MPOS AXIS(4)",
                         "Main 1=12.3",      "Main 2=-3.0",
                         "Main 3=1.0",       "jog",
                         "position",         "> ? VR(98)",
                         "> ? VR(25)",       "Main 5=80",
                         "Main 6=2400",      "> ? VR(81)",
                         "running block",    "messages",
                         "machine",          "laser",
                         "run time",         "> ? VR(82)",
                         "> ? VR(83)",       "> ? VR(84)",
                         "> ? VR(85)",       "batch"};
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

TEST_F(PollTrioTest, TheReadOutAsksForItsMode) {
  System.TableSent = 5;
  std::array<float, 3> shown{};
  Screens.Stages[PollStage::Position] = [&] { shown = Poll.ReadDisplayedPositions(); };
  System.State.XScale = 2;
  System.State.XOffset = 1;
  const std::vector<std::pair<std::string, float>> modes = {
      {"MPOS", 11.0F}, {"DPOS", 16.0F}, {"ENDMOVE", 21.0F}, {"FE", 2.0F}};
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
    EXPECT_EQ(shown[0], modes[mode].second);
  }
}

TEST_F(PollTrioTest, AModeThatDoesNotExistShowsTheMeasuredValues) {
  System.TableSent = 5;
  System.State.PositionDisplayMode = 9;
  System.State.YPosition = 7;
  Sent();
  EXPECT_EQ(Poll.ReadDisplayedPositions()[1], 7);
  EXPECT_EQ(Sent(), Lines{});
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
  bool changed = false;
  Screens.Stages[PollStage::Messages] = [&] { changed = Poll.RefreshMessages(); };
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(), {"? VR(16)", "? VR(17)"});
  EXPECT_EQ(Tick(), wanted);
  EXPECT_EQ(Messages.Row(1).Text, " Door open");
  EXPECT_TRUE(changed);
  EXPECT_EQ(Tick(), wanted) << "read each time,";
  EXPECT_FALSE(changed) << "to be shown only on a change";
}

TEST_F(PollTrioTest, TheRollersAreTakenOnAChangeOrWhenTheScreenInsists) {
  Tick();
  EXPECT_EQ(Poll.TakeRollers(false), std::nullopt);
  Controller.Values["VR(19)"] = "131072";
  Tick();
  EXPECT_EQ(Poll.TakeRollers(false), std::optional(true));
  EXPECT_EQ(Poll.TakeRollers(false), std::nullopt) << "taken once";
  EXPECT_EQ(Poll.TakeRollers(true), std::optional(true)) << "the screen came to the front";
}

TEST_F(PollTrioTest, TheLaserScreenReadsItsBoxesInOrderWithTheirPlaces) {
  System.TableSent = 5;
  LaserFigures shown;
  Screens.Stages[PollStage::Laser] = [&] { shown = Poll.ReadLaserFigures(); };
  Controller.Values = {{"VR(25)", "2400.4"}, {"VR(98)", "90"}, {"VR(75)", "1.234"},
                       {"VR(31)", "0.129"},  {"VR(69)", "55"}, {"VR(71)", "2.6"}};
  Lines wanted = EightQueries;
  wanted.insert(wanted.end(), {"? VR(25)", "? VR(70)", "? VR(65)", "? VR(69)", "? VR(71)",
                               "? VR(72)", "? VR(73)", "? VR(78)", "? VR(74)", "? VR(75)",
                               "? VR(76)", "? VR(77)", "? VR(30)", "? VR(31)"});
  EXPECT_EQ(Tick(), wanted);
  EXPECT_EQ(shown.Feed, (std::array<std::string, 3>{"2400", "2400", "90"}));
  EXPECT_EQ(shown.Power, (std::array<std::string, 3>{"0", "0", "55"}));
  EXPECT_EQ(shown.Status, (std::array<std::string, 10>{"3", "0", "0", "0", "0", "1.23", "0.00", "0",
                                                       "0", "0.13"}));
}

TEST_F(PollTrioTest, TheTableIsToppedUpBehindTheScreensAndBeforeTheBatch) {
  Select(1, "PART", 40);
  System.TableSent = 20;
  Controller.Values = {{"VR(81)", "6"}, {"VR(19)", "16384"}};
  EXPECT_EQ(Tick().back(), "TABLE(1,21)");
  EXPECT_EQ(System.TableSent, 21);
  Offer(PollStage::Batch, "batch");
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
  EXPECT_EQ(System.Programs[1].BatchCounters.SheetsCompleted, 4);
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

TEST_F(PollTrioTest, TheListingIsTakenOnlyWhenTheRecordOrTheSlotChanges) {
  System.TableSent = 5;
  int listings = 0;
  ListingView listing;
  Screens.Stages[PollStage::RunningBlock] = [&] {
    const auto changed = Poll.TakeChangedListing();
    if (!changed) return;
    listing = *changed;
    ++listings;
  };
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(listings, 1);
  EXPECT_EQ(listing[0].Text, "G00 X1");
  Tick();
  EXPECT_EQ(listings, 1);
  Controller.Values["VR(81)"] = "1";
  Tick();
  EXPECT_EQ(listings, 2);
  EXPECT_TRUE(listing[0].Inverse);
  System.ActiveSlot = 2;
  Tick();
  EXPECT_EQ(listings, 3);
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(listings, 4);
}

TEST_F(PollTrioTest, AListingThatNobodyTakesStaysDue) {
  Poll.ForgetShownBlock();
  Tick();
  EXPECT_EQ(System.State.RunningBlockShown, -1);
}

TEST_F(PollTrioTest, ASecondTickWaitsForTheFirstAndReadsAfresh) {
  System.TableSent = 5;
  bool asked = false;
  bool over = false;
  Controller.OnLine = [&](const std::string&) {
    if (std::exchange(asked, true)) return;
    Loop.Start([&] {
      Poll.PollTrio();
      over = true;
    });
  };
  EXPECT_EQ(Tick(), EightQueries);
  EXPECT_FALSE(over);
  Loop.RunFor(1);
  EXPECT_TRUE(over);
  EXPECT_EQ(Sent(), EightQueries);
}

TEST_F(PollTrioTest, AFailedBatchQueryGivesZeroAndTheOthersTheirValues) {
  Controller.Values = {{"VR(82)", "4"}, {"VR(83)", "40"}, {"VR(84)", "10"}, {"VR(85)", "3"}};
  Controller.Replies["? VR(83)"] = "? VR(83)\r\n%\r\n>>";
  Sent();
  Poll.RefreshBatch();
  const core::Batch& read = System.Programs[1].BatchCounters;
  EXPECT_EQ(read.PartsPerSheet, 4);
  EXPECT_EQ(read.PartsRequired, 0);
  EXPECT_EQ(read.SheetsRequired, 10);
  EXPECT_EQ(read.SheetsCompleted, 3);
  EXPECT_EQ(read.SheetsToGo, 0) << "one of the wishes reads as none";
  EXPECT_EQ(Sent(), (Lines{"? VR(82)", "? VR(83)", "", "? VR(84)", "? VR(85)"}));
  EXPECT_EQ(LinkScreens.Warnings.size(), 1U);
}

TEST_F(PollTrioTest, TheTraceIsRotatedAtTheEndOfTheTickAndNowhereElse) {
  System.Link.PollLogEnabled = true;
  Temp.Put("Service/Polling.txt", "the trace so far");
  std::filesystem::resize_file(std::filesystem::path(Temp.Path()) / "Service/Polling.txt",
                               50'000'001);
  Trio.Download("VR(1)=1");
  EXPECT_FALSE(Temp.Has("Service/Polling.bak")) << "what is outside the poll waits for a tick";
  bool early = false;
  Controller.OnLine = [&](const std::string&) { early |= Temp.Has("Service/Polling.bak"); };
  Poll.PollTrio();
  EXPECT_FALSE(early);
  EXPECT_FALSE(Temp.Has("Service/Polling.txt"));
  EXPECT_EQ(Temp.Get("Service/Polling.bak").substr(0, 16), "the trace so far");
}

TEST_F(PollTrioTest, ATableThatIsShortInMidRunIsAWarningThatNamesItOnceAndTheTickGoesOn) {
  Select(1, "SHORT", 30);
  System.Programs[1].TableLines = 60;
  System.TableSent = 20;
  Controller.Values["VR(81)"] = "20";
  LinkScreens.Warnings.clear();
  for (int tick = 0; tick < 3; ++tick) EXPECT_NO_THROW(Poll.PollTrio());
  ASSERT_EQ(LinkScreens.Warnings.size(), 1U);
  EXPECT_NE(LinkScreens.Warnings[0].find("Actvprg1.tbl\nrecord 31 is missing"), std::string::npos)
      << LinkScreens.Warnings[0];
  EXPECT_EQ(System.TableSent, 30) << "what is there has gone out, once";
  const Lines sent = Sent();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), TableLine(1, 30)), 1);
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
  System.Console.BatchEditing = true;
  Poll.RefreshBatch();
  EXPECT_EQ(Sent(), Lines{});
  System.Console.BatchEditing = false;
  System.Link.TrioLinkEnabled = false;
  Poll.RefreshBatch();
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(PollTrioTest, TypingThatBeginsWhileTheRepliesComeIsNotOverwritten) {
  Offer(PollStage::Batch, "batch");
  Controller.OnLine = [&](const std::string&) { System.Console.BatchEditing = true; };
  Poll.RefreshBatch();
  const Events happened = Happened();
  EXPECT_EQ(std::count(happened.begin(), happened.end(), "batch"), 0);
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

/// Notes what the end of the program tells.
class EndObserver final : public PollObserver {
 public:
  void TickRead(const TickReading& /*tick*/) override { ++Ticks; }
  void ConsoleEnds(bool unheard) override { Ends.push_back(unheard); }

  int Ticks = 0;
  std::vector<bool> Ends;
};

class PollEnd : public PollTrioTest {
 protected:
  PollEnd() {
    Poll.Observe(Observer);
    System.TableSent = 5;
    System.Link.ReplyTimeoutMs = 10000;
    Tick();
  }
  /// The end comes so long after the begin of a tick.
  bool Unheard(int ms) {
    Loop.After(ms, [this] {
      Trio.BeginEnd();
      Poll.RefreshBatch(link::Asker::End);
      Poll.TellEnd();
    });
    Loop.Post([this] { Poll.PollTrio(); });
    Loop.RunFor(ms + 20000);
    EXPECT_EQ(Observer.Ends.size(), 1U);
    return !Observer.Ends.empty() && Observer.Ends.back();
  }
  EndObserver Observer;
};

TEST_F(PollEnd, InTheMiddleOfAnAnsweredTickTheControllerWasHeard) {
  Controller.Silent = true;  // but for the replies that come a while after their lines
  Controller.OnLine = [this](const std::string& line) {
    Loop.After(20, [this, line] { Controller.Send(Controller.Reply(line)); });
  };
  EXPECT_FALSE(Unheard(10));
  EXPECT_EQ(Observer.Ticks, 1) << "the tick under way is given up";
}

TEST_F(PollEnd, AnIdleHourIsNoSilence) { EXPECT_FALSE(Unheard(3'600'000)); }

TEST_F(PollEnd, InTheMiddleOfATickOverADeadLineItWasNot) {
  Controller.Silent = true;
  EXPECT_TRUE(Unheard(15000)) << "the first query has failed";
  EXPECT_EQ(Observer.Ticks, 1);
}

TEST_F(PollEnd, LastReadingsWithoutAReplyAreADeadLineToo) {
  Loop.After(1000, [this] { Controller.Silent = true; });
  EXPECT_TRUE(Unheard(2000));
}

TEST_F(PollEnd, ALineThatIsSilentForASecondIsTakenForDeadWhenTheLastReadingsAreCutShort) {
  for (const int ms : {900, 1100}) {
    Observer.Ends.clear();
    Controller.Silent = true;
    System.Console.BatchEditing = true;
    Loop.Post([this] { Poll.PollTrio(); });
    Loop.RunFor(ms);
    Poll.TellEnd();
    EXPECT_EQ(Observer.Ends, std::vector<bool>{ms > 1000}) << ms;
    Controller.Silent = false;
    Controller.Send(Controller.Reply("? VR(19)"));
    Loop.RunFor(30000);
  }
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
