// Whose sheet it is that the controller has counted, and what it says of the end of a run.

#include <gtest/gtest.h>

#include "JournalPlant.h"

namespace torvane::supervision {

using namespace tests;
namespace {

TEST_F(RunJournalTest, SheetsAreWhatTheControllerHasCounted) {
  System.Programs[1].BatchCounters.SheetsCompleted = 40;
  Idle();
  RunAt(2, 5);
  System.Programs[1].BatchCounters.SheetsCompleted = 10;  // the operator sets the counters
  CountSheet();
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().Sheets, 1);
}

TEST_F(RunJournalTest, CountersThatCouldNotBeReadCountNothing) {
  System.Programs[1].BatchCounters.SheetsCompleted = 40;
  Idle();
  RunAt(2, 5);
  CountSheet(false);
  System.Programs[1].BatchCounters.SheetsCompleted = 0;
  const core::Batch zeros;
  core::Batch read;
  read.SheetsCompleted = 41;
  Journal->BatchRead({1, zeros, read, true});
  Idle();
  EXPECT_EQ(OnlyRun().Sheets, 1);
}

TEST_F(RunJournalTest, AStopInALaterSheetOfACycleIsAStopWithItsPlace) {
  struct Case {
    int Sheets;  ///< found when the bit falls: nobody has read them before
    RunEnd Ended;
  };
  for (const Case& at : {Case{1, RunEnd::Stop}, Case{2, RunEnd::End}}) {
    Idle();
    RunAt(2, 1, 50, 0);
    RunAt(EndLine, 9, 100, 150);
    RunAt(2, 10, 50, 0);
    RunAt(4, 15, 100, 20);
    CountSheet(true, at.Sheets);
    Idle();
    const RunLine run = Runs().back();
    const bool stopped = at.Ended == RunEnd::Stop;
    EXPECT_EQ(run.Ended, at.Ended);
    EXPECT_EQ(run.Sheets, at.Sheets);
    EXPECT_EQ(Causes(run), stopped ? "[stop]" : "");
    EXPECT_NEAR(run.Length, 150 + 50 * 3.14159265 + (stopped ? 120 : 150 + 50 * 3.14159265), 0.06);
    const auto place = Journal->PlaceOfLastRun(1);
    EXPECT_EQ(place ? place->Block : 0, stopped ? 40 : 0);
  }
}

TEST_F(RunJournalTest, TheEndOfTheConsoleInALaterSheetOfACycleIsNoEnd) {
  Idle();
  RunAt(2, 1, 50, 0);
  RunAt(EndLine, 9, 100, 150);
  RunAt(2, 10, 50, 0);
  RunAt(4, 15, 100, 20);
  CountSheet();
  Journal->ConsoleEnds(false);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::ConsoleEnded);
  EXPECT_TRUE(Journal->PlaceOfLastRun(1));
}

TEST_F(RunJournalTest, AStopInALaterSheetIsAStopThoughTheEndOfTheOneBeforeWasOverlooked) {
  Idle();
  RunAt(2, 1);
  RunAt(4, 8, 100, 20);
  RunAt(2, 10, 50, 0);
  RunAt(4, 15, 100, 20);
  CountSheet();
  Idle();
  EXPECT_EQ(OnlyRun().Ended, RunEnd::Stop);
}

TEST_F(RunJournalTest, ASheetThatIsReadBetweenTwoPassesLeavesTheLastOneItsOwn) {
  for (const bool reached : {false, true}) {
    Idle();
    RunAt(2, 1);
    RunAt(5, 8, 100, 150);
    CountSheet();
    See([](Seen& at) {
      at.Running = false;
      at.Cycle = true;  // until the next sheet lies there
    });
    RunAt(2, 10, 50, 0);
    RunAt(5, 15, 50, 100);
    CountSheet(true, reached ? 1 : 0);  // its end line is overlooked
    Idle();
    EXPECT_EQ(Runs().back().Ended, reached ? RunEnd::End : RunEnd::Stop) << reached;
  }
  EXPECT_EQ(Runs().size(), 2U);
}

TEST_F(RunJournalTest, ASheetThatIsCountedAMomentAfterItsPassIsThatOfThePass) {
  Idle();
  RunAt(2, 1);
  RunAt(EndLine, 8, 100, 150);
  RunAt(2, 10, 50, 0);
  CountSheet(true, 0);  // the batch screen has it read
  RunAt(4, 15, 100, 20);
  CountSheet();
  Idle();
  EXPECT_EQ(OnlyRun().Ended, RunEnd::Stop);
}

TEST_F(RunJournalTest, ALineOfTheRunBeforeThatStandsForLongIsNoPass) {
  Idle();
  RunAt(4, 5, 100, 20);
  Idle();
  See([](Seen& at) { at = {.Running = true, .Line = 4, .Seconds = 0.05}; }, 10);
  RunAt(2, 1, 50, 0);
  RunAt(5, 8, 50, 100);
  CountSheet();  // its end line is overlooked
  Idle();
  EXPECT_EQ(Runs().at(1).Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARestartThatCompletesItsSheetHasEnded) {
  Idle();
  RunAt(2, 1, 80, 0);
  RunAt(4, 5, 100, 50);
  CountSheet(true, 0);
  Idle();
  RunAt(4, 0, 60, 0);
  Journal->RunContinued({20, 60, 0});
  RunAt(2, 0.1, 60, 0);  // its line comes late, and is no next pass
  RunAt(5, 3, 50, 100);
  CountSheet();  // its end line is overlooked
  Idle();
  EXPECT_EQ(Runs().at(1).Begin, RunBegin::Restart);
  EXPECT_EQ(Runs().at(1).Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ASheetAfterASelectionIsCountedThoughTheLastReadingFailed) {
  System.Programs[1].BatchCounters.SheetsCompleted = 40;
  Idle();
  RunAt(2, 1);
  CountSheet();
  See([](Seen& at) { at.Blind = true; });
  CountSheet(false);
  Idle();
  PutInSlot(1, "STAR", EndLine);  // its counters are 0, as the bad reading has left them
  RunAt(2, 1);
  CountSheet();
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[1].Sheets, 1);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARunThatEndsOverTheBatchEntryIsCountedWhenTheEntryIsLeft) {
  Idle();
  RunAt(4, 5);
  CountSheet(true, 0);
  System.Console.BatchEditing = true;
  RunAt(4, 9, 100, 20);
  Idle(50);
  EXPECT_TRUE(Runs().empty()) << "nobody has read the sheets yet";
  EXPECT_TRUE(Journal->PlaceOfLastRun(1));
  System.Console.BatchEditing = false;
  CountSheet();
  EXPECT_FALSE(Journal->PlaceOfLastRun(1));
  Idle(1);
  EXPECT_EQ(OnlyRun().Sheets, 1);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
  EXPECT_EQ(TimeText(OnlyRun().End), "2026-03-04 00:00:00") << "when it fell";
}

TEST_F(RunJournalTest, ARunThatBeginsOverTheBatchEntryEndsTheOneBefore) {
  System.Console.BatchEditing = true;
  for (int i = 0; i < 2; ++i) {
    Idle();
    RunAt(2, 5);
    RunAt(EndLine, 9);
  }
  Idle();
  Journal->ConsoleEnds(false);
  ASSERT_EQ(Runs().size(), 2U);
  for (const RunLine& run : Runs()) EXPECT_EQ(run.Ended, RunEnd::End);
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Start);
}

TEST_F(RunJournalTest, ASheetOfTheRunBeforeThatNobodyCouldReadMakesNoEndOfAStop) {
  System.Programs[1].TableLines = 0;  // the sheets alone tell of an end
  Idle();
  RunAt(2, 1);
  CountSheet(true, 0);
  RunAt(4, 5);
  See([](Seen& at) { at.Blind = true; });  // the reading of its end fails
  Idle();
  EXPECT_EQ(Runs()[0].Ended, RunEnd::LinkLost);
  for (const int sheets : {1, 0, 1}) {
    RunAt(2, 1);
    CountSheet(true, sheets);
    Idle();
  }
  ASSERT_EQ(Runs().size(), 4U);
  EXPECT_EQ(Runs()[1].Sheets, 1);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::Stop);
  EXPECT_EQ(Runs()[2].Ended, RunEnd::Stop);
  EXPECT_EQ(Runs()[3].Ended, RunEnd::End) << "its own";
}

TEST_F(RunJournalTest, ASheetThatIsCountedAMomentAfterItsRunMakesNoEndOfAStopInTheNext) {
  Idle();
  RunAt(EndLine, 9);
  CountSheet(true, 0);  // in the tick in which the bit goes
  Idle();
  EXPECT_EQ(Runs().at(0).Ended, RunEnd::End);
  EXPECT_EQ(Runs().at(0).Sheets, 0);
  RunAt(2, 1);
  RunAt(4, 5, 100, 20);
  CountSheet();  // it is that of the run before
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::Stop);
  EXPECT_EQ(Causes(Runs()[1]), "[stop]");
  EXPECT_EQ(Runs()[1].Sheets, 1);
  EXPECT_TRUE(Journal->PlaceOfLastRun(1));
  RunAt(2, 1);
  CountSheet();
  Idle();
  EXPECT_EQ(Runs().at(2).Ended, RunEnd::End) << "its own";
}

TEST_F(RunJournalTest, ASheetThatWasNotCountedInTimeIsNotAwaitedForEver) {
  for (const std::int64_t later : {1000, 3000}) {
    Idle();
    RunAt(EndLine, 9);
    CountSheet(true, 0);
    Idle();
    Loop.RunFor(later);
    CountSheet(true, 0);
    RunAt(2, 1);
    CountSheet();
    Idle();
    EXPECT_EQ(Runs().back().Ended, later < 2000 ? RunEnd::Stop : RunEnd::End) << later;
  }
}

TEST_F(RunJournalTest, ASheetThatIsCountedInTheRunItselfIsAnEndWhateverWasBefore) {
  System.Programs[1].TableLines = 0;
  Idle();
  RunAt(4, 5);
  Idle();  // nobody has read its sheets
  RunAt(2, 1);
  CountSheet();
  RunAt(4, 5);
  CountSheet();
  Idle();
  EXPECT_EQ(Runs()[1].Sheets, 2);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::End);
}

}  // namespace
}  // namespace torvane::supervision
