#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "Bench.h"

namespace torvane::supervision {

using namespace tests;
namespace {

const std::string Refusal = "warning 1 1 \nCan Not Change Program\nWhile Machine Is Running !";

class ProgramChangeTest : public ::testing::Test, public Bench {
 protected:
  ProgramChangeTest() {
    Select(1, "ONE", 3);
    Select(2, "TWO", 30);
    System.Programs[2].DirectoryName = "NEST";
    System.Programs[2].BatchCounters = {1, 2, 3, 4, 5};
    Controller.Values = {{"VR(82)", "11"}, {"VR(83)", "12"}, {"VR(84)", "13"}, {"VR(85)", "14"}};
  }
  void ExpectRefused() {
    EXPECT_EQ(Happened(), (Events{"press 1"}));
    EXPECT_EQ(System.ActiveSlot, 1);
    EXPECT_EQ(Sent(), Lines{});
  }
};

const Lines BatchQueries = {"? VR(82)", "? VR(83)", "? VR(84)", "? VR(85)"};

TEST_F(ProgramChangeTest, BringsTheOtherProgramInForceInItsOrder) {
  System.TableSent = 17;
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(Sent(),
            Join({BatchQueries,
                  Table(2, 1, 20),
                  {"VR(91)=2", "VR(87)=125.50", "VR(82)=1", "VR(83)=2", "VR(84)=3", "VR(85)=4"}}));
  EXPECT_EQ(System.ActiveSlot, 2);
  EXPECT_EQ(System.TableSent, 20);
  EXPECT_EQ(System.Programs[1].BatchCounters.PartsPerSheet, 11);
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "11\r\n12\r\n13\r\n14\r\n-1\r\n******\r\n")
      << "the old slot's counters are saved";
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "NEST");
  EXPECT_EQ(System.Directories.ProgramDirectory, "C:\\Programs\\NEST\\");
  EXPECT_EQ(Temp.Get("Control.cfg"), "C:\\\r\nC:\\Programs\\\r\nNEST\r\n2\r\n******\r\n");
  EXPECT_EQ(System.State.RunningBlockShown, -1);
  EXPECT_EQ(System.State.RunningSlotShown, -1);
}

TEST_F(ProgramChangeTest, ShowsThePlotBeforeTheLinesAndTheButtonLast) {
  Screens.Stages[PollStage::Batch] = [this] { Log.emplace_back("batch shown"); };
  Change.ChangeActiveProgram(2);
  const auto happened = Happened();
  const auto at = [&](const std::string& event) {
    return std::find(happened.begin(), happened.end(), event) - happened.begin();
  };
  EXPECT_LT(at("batch shown"), at("plotbox 2"));
  EXPECT_LT(at("plotbox 2"), at("> TABLE(2,1)"));
  EXPECT_EQ(happened.back(), "press 2");
}

TEST_F(ProgramChangeTest, TheSlotInForceGoesThroughTheWholeChangeAgain) {
  Change.ChangeActiveProgram(1);
  EXPECT_EQ(
      Sent(),
      Join({BatchQueries,
            Table(1, 1, 3),
            {"VR(91)=1", "VR(87)=125.50", "VR(82)=11", "VR(83)=12", "VR(84)=13", "VR(85)=14"}}));
  EXPECT_TRUE(Temp.Has("Actvprg1.btc"));
}

TEST_F(ProgramChangeTest, AnyOtherNumberIsSlotOne) {
  System.ActiveSlot = 2;
  Change.ChangeActiveProgram(9);
  EXPECT_EQ(System.ActiveSlot, 1);
}

TEST_F(ProgramChangeTest, AMachineWithAHeadGetsItsOffsetsBeforeTheBatch) {
  System.Machine.MachineVariant = 3;
  Change.ChangeActiveProgram(2);
  const auto sent = Sent();
  const auto tail = Lines(sent.end() - 9, sent.end());
  EXPECT_EQ(tail, (Lines{"VR(91)=2", "VR(87)=125.50", "M848=0", "M849=0", "M850=0", "VR(82)=1",
                         "VR(83)=2", "VR(84)=3", "VR(85)=4"}));
}

TEST_F(ProgramChangeTest, AnEmptySlotKeepsTheDirectory) {
  Store.ClearSlot(2);
  Happened();
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "SHOP");
  EXPECT_EQ(Sent(),
            Join({BatchQueries,
                  {"VR(91)=2", "VR(87)=77.25", "VR(82)=0", "VR(83)=0", "VR(84)=0", "VR(85)=0"}}));
}

TEST_F(ProgramChangeTest, WhileRunningOnTheMainScreenAloneShowsTheWarning) {
  System.State.MachineRunning = true;
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(Happened(), (Events{Refusal, "press 1"}));
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(ProgramChangeTest, WhileRunningWithABlockingScreenShowsNothing) {
  System.State.MachineRunning = true;
  ProgramScreens.Forms = {"SetupForm"};
  Change.ChangeActiveProgram(2);
  ExpectRefused();
}

TEST_F(ProgramChangeTest, EveryBlockingScreenRefusesWithoutAWord) {
  for (const auto name : ChangeBlockingForms) {
    ProgramScreens.Forms = {"FrontEnd", std::string(name)};
    Change.ChangeActiveProgram(2);
    ExpectRefused();
  }
  EXPECT_EQ(ChangeBlockingForms.size(), 11U);
}

TEST_F(ProgramChangeTest, OtherScreensDoNotBlock) {
  ProgramScreens.Forms = {"FrontEnd",    "LaserStatusForm", "StatusMenuForm", "MachineForm",
                          "MessageForm", "UserForm",        "XYPositionForm", "FileHandleForm"};
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.ActiveSlot, 2);
}

TEST_F(ProgramChangeTest, LockedScreensAndPlotKeysRefuseWithoutAWord) {
  System.Console.FormsLocked = true;
  Change.ChangeActiveProgram(2);
  ExpectRefused();
  System.Console.FormsLocked = false;
  System.Console.PlotKeysActive = true;
  Change.ChangeActiveProgram(2);
  ExpectRefused();
  System.Console.PlotKeysActive = false;
  System.Console.PlotKeyMode = 1;
  Change.ChangeActiveProgram(2);
  ExpectRefused();
  System.Console.PlotKeyMode = 0;
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.ActiveSlot, 2);
}

TEST_F(ProgramChangeTest, FeedHoldAndAnOpenCycleDoNotRefuse) {
  System.State.MachineFeedhold = true;
  System.State.MachineCycleBit = true;
  System.State.MachineInError = 4096;
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.ActiveSlot, 2);
}

TEST_F(ProgramChangeTest, TheButtonsOwnEventDoesNotChangeAgain) {
  int presses = 0;
  ProgramScreens.OnPress = [&](core::Slot slot) {
    ++presses;
    Change.ChangeActiveProgram(slot);
  };
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(presses, 1);
}

TEST_F(ProgramChangeTest, OfThePressesDuringAChangeTheLastIsCarriedOutAfterIt) {
  const Lines rest = {"VR(87)=125.50", "VR(82)=1", "VR(83)=2", "VR(84)=3", "VR(85)=4"};
  bool pressed = false;
  Controller.OnLine = [&](const std::string& line) {
    if (line != "TABLE(2,5)" || std::exchange(pressed, true)) return;
    for (const int slot : {1, 2, 1}) Loop.Start([this, slot] { Change.ChangeActiveProgram(slot); });
  };
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.ActiveSlot, 2) << "whole, before the next begins";
  EXPECT_EQ(Sent(), Join({BatchQueries, Table(2, 1, 20), {"VR(91)=2"}, rest}));
  Loop.RunFor(1000);
  EXPECT_EQ(System.ActiveSlot, 1);
  const Lines sent = Sent();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(91)=1"), 1);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "VR(91)=2"), 0);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "TABLE(1,1)"), 1);
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
}

TEST_F(ProgramChangeTest, TheSameSlotAgainDuringItsChangeSendsNothingTwice) {
  bool pressed = false;
  Controller.OnLine = [&](const std::string& line) {
    if (line != "TABLE(2,5)" || std::exchange(pressed, true)) return;
    for (const int slot : {1, 2}) Loop.Start([this, slot] { Change.ChangeActiveProgram(slot); });
  };
  Change.ChangeActiveProgram(2);
  Loop.RunFor(1000);
  EXPECT_EQ(System.ActiveSlot, 2);
  const Lines sent = Sent();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "TABLE(2,1)"), 1);
}

TEST_F(ProgramChangeTest, APressDuringAChangeIsRefusedAfterItWhereAScreenForbidsIt) {
  bool pressed = false;
  Controller.OnLine = [&](const std::string& line) {
    if (line != "TABLE(2,5)" || std::exchange(pressed, true)) return;
    Loop.Start([this] { Change.ChangeActiveProgram(1); });
    ProgramScreens.Forms.emplace_back("ProgramForm");
  };
  Change.ChangeActiveProgram(2);
  Loop.RunFor(1000);
  EXPECT_EQ(System.ActiveSlot, 2);
}

TEST_F(ProgramChangeTest, APressInTheMiddleOfARefillEndsTheRefillAfterItsLine) {
  Select(1, "ONE", 60);
  System.TableSent = 20;
  System.State.RunningBlock = 10;
  Controller.OnLine = [&](const std::string& line) {
    if (line == "TABLE(1,22)") Loop.Start([&] { Change.ChangeActiveProgram(2); });
  };
  Poll.TopUpTable();
  Loop.RunFor(100);
  EXPECT_EQ(System.ActiveSlot, 2);
  EXPECT_EQ(System.TableSent, 20);
  EXPECT_EQ(Sent(),
            Join({Table(1, 21, 22),
                  BatchQueries,
                  Table(2, 1, 20),
                  {"VR(91)=2", "VR(87)=125.50", "VR(82)=1", "VR(83)=2", "VR(84)=3", "VR(85)=4"}}));
}

TEST_F(ProgramChangeTest, APressInAnyWaitOfATickEndsTheTickThere) {
  Select(1, "ONE", 60);
  Controller.Values["VR(81)"] = "40";
  for (const std::string line :
       {"? VR(19)", "? VR(52)", "? MPOS AXIS(0)", "? VR(98)", "? VR(81)"}) {
    SCOPED_TRACE(line);
    System.ActiveSlot = 1;
    System.TableSent = 20;
    System.State.RunningBlock = 0;
    Sent();
    bool pressed = false;
    Controller.OnLine = [&](const std::string& sent) {
      if (sent != line || std::exchange(pressed, true)) return;
      Loop.Start([&] { Change.ChangeActiveProgram(2); });
    };
    Poll.PollTrio();
    EXPECT_FALSE(Poll.Changes().Held() && System.TableSent > 20);
    Loop.RunFor(100);
    EXPECT_EQ(System.State.RunningBlock, 0) << "what was read belongs to the program that was";
    EXPECT_EQ(System.ActiveSlot, 2);
    EXPECT_EQ(System.TableSent, 20);
    const Lines all = Sent();
    const auto table =
        static_cast<std::size_t>(std::count_if(all.begin(), all.end(), [](const std::string& each) {
          return each.starts_with("TABLE(");
        }));
    EXPECT_EQ(table, 20U) << "no refill by the number of the old program";
  }
}

TEST_F(ProgramChangeTest, ATickBesideAChangeDoesNothingAndThePollStartsAfreshAfterIt) {
  Select(2, "TWO", 60);
  Controller.ByteDelayMs = 1;
  Controller.Values["VR(81)"] = "40";
  System.Link.PollingWanted = true;
  Loop.Start([&] { Change.ChangeActiveProgram(2); });
  Loop.RunFor(100);
  ASSERT_TRUE(Poll.Changes().Held());
  Sent();
  const auto before = Poll.Changes().Begun();
  Poll.PollTrio();
  EXPECT_EQ(Poll.Changes().Begun(), before);
  EXPECT_EQ(Sent(), Lines{});
  int ticks = 0;
  Trio.SetPollTick([&] { ++ticks; });
  Loop.RunFor(5000);
  EXPECT_FALSE(Poll.Changes().Held());
  EXPECT_GT(ticks, 0);
}

TEST_F(ProgramChangeTest, OfflineTheSlotsChangeAndNothingGoesOut) {
  System.Link.TrioLinkEnabled = false;
  Change.ChangeActiveProgram(2);
  EXPECT_EQ(System.ActiveSlot, 2);
  EXPECT_EQ(Sent(), Lines{});
}

}  // namespace
}  // namespace torvane::supervision
