// Runs from start to end, their stops, and the ends of link and console.
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "JournalPlant.h"
#include "supervision/ProgramDigest.h"

namespace torvane::supervision {

using namespace tests;
namespace {

TEST_F(RunJournalTest, AnIdleMachineWritesNothing) {
  Idle(100);
  Journal->ConsoleEnds(false);
  EXPECT_TRUE(Files.Log.empty());
}

TEST_F(RunJournalTest, ARunFromStartToEndIsOneLine) {
  Idle();
  RunAt(1, 0.05);
  Loop.RunFor(10000);
  RunAt(2, 10, 50, 0);
  RunAt(4, 20, 100, 20);
  Loop.RunFor(20000);
  RunAt(EndLine, 40, 100, 150);
  CountSheet();
  Idle();
  const RunLine run = OnlyRun();
  EXPECT_EQ(run.Number, 1);
  EXPECT_EQ(run.Begin, RunBegin::Start);
  EXPECT_EQ(run.Directory, "SHOP");
  EXPECT_EQ(run.Program, "STAR");
  EXPECT_EQ(run.Digest, Sha256(Text + "1"));
  EXPECT_EQ(run.Slot, 1);
  EXPECT_EQ(run.Material, "Brass");
  EXPECT_EQ(run.Sheets, 1);
  EXPECT_DOUBLE_EQ(run.Seconds, 40);
  EXPECT_NEAR(run.Length, 100 + 50 + 50 * 3.14159265, 0.06);
  EXPECT_EQ(run.Ended, RunEnd::End);
  EXPECT_EQ(run.StopCount, 0);
  EXPECT_EQ(TimeText(run.Start), "2026-03-04 00:00:00");
  EXPECT_EQ(TimeText(run.End), "2026-03-04 00:00:30");
}

TEST_F(RunJournalTest, TheRunTimeThatTheControllerClearsAtTheEndIsKept) {
  Idle();
  RunAt(2, 12.5);
  RunAt(EndLine, 30.25);
  See([](Seen& at) { at = {}; }, 2);
  EXPECT_DOUBLE_EQ(OnlyRun().Seconds, 30.25);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End) << "the end line was reached before the counter went";
}

TEST_F(RunJournalTest, TheRunTimesOfRunsWhoseGapNobodySawAddUp) {
  Idle();
  RunAt(2, 5);
  RunAt(EndLine, 40);
  RunAt(2, 0.05);
  RunAt(4, 10);
  RunAt(EndLine, 38);
  Idle();
  EXPECT_DOUBLE_EQ(OnlyRun().Seconds, 78);
}

TEST_F(RunJournalTest, OneWrongRunTimeAddsNothing) {
  Idle();
  RunAt(2, 5);
  RunAt(4, 0);
  RunAt(4, 6);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_DOUBLE_EQ(OnlyRun().Seconds, 9);
}

TEST_F(RunJournalTest, ARunTimeThatIsStillThatOfTheRunBeforeCountsNothing) {
  Idle();
  for (const double seconds : {40.0, 12.0}) {
    See([](Seen& at) { at.Running = true; });
    RunAt(2, 0.05);
    RunAt(EndLine, seconds);
    Idle();
    EXPECT_DOUBLE_EQ(Runs().back().Seconds, seconds);
  }
  EXPECT_EQ(Runs().size(), 2U);
}

TEST_F(RunJournalTest, FiguresBeyondAllMeasureLeaveALineThatCanBeRead) {
  System.Programs[1].BatchCounters.SheetsCompleted = -2147483647;
  Idle();
  RunAt(2, 1e30);
  auto& batch = System.Programs[1].BatchCounters;
  core::Batch read = batch;
  for (const int sheets : {-2147483647, 2147483647, -2147483647, 2147483647}) {
    read.SheetsCompleted = sheets;
    const core::Batch before = std::exchange(batch, read);
    Journal->BatchRead({1, before, read, true});
  }
  RunAt(EndLine, 1e30);
  Idle();
  EXPECT_EQ(OnlyRun().Sheets, MostOfAFigure);
  EXPECT_EQ(OnlyRun().Seconds, MostOfAFigure);
}

TEST_F(RunJournalTest, AFeedHoldIsAStopWithItsPlace) {
  Idle();
  RunAt(2, 5, 30, 0);
  See([](Seen& at) { at.Hold = true; }, 10);
  See([](Seen& at) { at.Hold = false; }, 2);
  RunAt(EndLine, 40);
  Idle();
  const RunLine run = OnlyRun();
  EXPECT_EQ(run.StopCount, 1);
  EXPECT_EQ(Causes(run), "[feed hold]");
  ASSERT_EQ(run.Stops.size(), 1U);
  EXPECT_EQ(run.Stops[0].Place.Block, 20);
  EXPECT_EQ(run.Stops[0].Place.Record, 2);
  EXPECT_EQ(run.Stops[0].Place.X, 30);
  EXPECT_EQ(run.Ended, RunEnd::End);
}

TEST_F(RunJournalTest, AMessageThatComesUpWithAHoldIsItsCause) {
  Idle();
  RunAt(2, 5);
  See([](Seen& at) { at.Hold = at.Error = true; });
  See([](Seen& at) { at.Messages = "Gas pressure low"; }, 3);
  See([](Seen& at) { at.Messages = "Door open"; });
  Idle();
  EXPECT_EQ(Causes(OnlyRun()), "[error: Gas pressure low][stop: Door open]")
      << "what was read of it while it stood, and first";
}

TEST_F(RunJournalTest, AMessageThatStoodBeforeIsNoCause) {
  Idle();
  RunAt(2, 5);
  See([](Seen& at) { at.Error = true; }, 60);
  See([](Seen& at) { at.Hold = true; }, 2);
  See([](Seen& at) { at.Running = at.Hold = false; }, 2);
  EXPECT_EQ(Causes(OnlyRun()), "[feed hold][stop]");
}

TEST_F(RunJournalTest, AProgramStopIsAStopFromItsSecondTickOn) {
  Idle();
  RunAt(2, 5);
  RunAt(3, 6, 100, 0);
  RunAt(4, 6.05, 100, 0);
  Idle();
  EXPECT_EQ(Causes(OnlyRun()), "[stop]") << "a stop that is skipped was seen on the way";
  RunAt(2, 5);
  RunAt(3, 6, 100, 0);
  RunAt(3, 6, 100, 0);
  RunAt(3, 6, 100, 0);
  RunAt(4, 7, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(Causes(Runs().at(1)), "[program stop]");
  EXPECT_EQ(Runs().at(1).Stops.at(0).Place.Block, 30);
}

TEST_F(RunJournalTest, AStopBeforeTheEndCountsWhatWasCut) {
  Idle();
  RunAt(1, 1);
  RunAt(5, 20, 50, 100);
  See([](Seen& at) { at.Running = false; }, 2);
  const RunLine run = OnlyRun();
  EXPECT_EQ(run.Ended, RunEnd::Stop);
  EXPECT_EQ(Causes(run), "[stop]");
  EXPECT_NEAR(run.Length, 150 + 25 * 3.14159265, 0.06) << "half of the half circle";
  EXPECT_EQ(run.Last.Block, 50);
  EXPECT_EQ(run.Last.Record, 5);
  EXPECT_EQ(run.Sheets, 0);
}

TEST_F(RunJournalTest, TwoRunsAndTwoSlotsInOneSession) {
  for (const int slot : {1, 2, 1}) {
    System.ActiveSlot = slot;
    Idle();
    RunAt(2, 5);
    RunAt(EndLine, 9);
    CountSheet();
    Idle();
  }
  ASSERT_EQ(Runs().size(), 3U);
  EXPECT_EQ(Runs()[1].Program, "NEST");
  EXPECT_EQ(Runs()[1].Digest, Sha256(Text + "2"));
  EXPECT_EQ(Runs()[1].Slot, 2);
  EXPECT_EQ(Runs()[2].Number, 3);
  for (const auto& run : Runs()) EXPECT_EQ(run.Sheets, 1);
}

TEST_F(RunJournalTest, ACounterThatIsStillThatOfTheRunBeforeCutsNothing) {
  Idle();
  RunAt(2, 5);
  RunAt(EndLine, 9);
  See([](Seen& at) { at.Running = false; }, 2);
  See([](Seen& at) {
    at.Running = true;
    at.Seconds = 0.05;
  });
  RunAt(2, 1, 40, 0);
  See([](Seen& at) { at.Running = false; }, 2);
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::Stop);
  EXPECT_NEAR(Runs()[1].Length, 40, 0.06);
}

TEST_F(RunJournalTest, ARunThatIsStoppedInTheLineOfTheStopBeforeHasItsPlace) {
  for (const int line : {2, 4}) {
    for (const double cut : {80, 60}) {
      Idle();
      const core::Vector2 at = line == 2 ? core::Vector2{cut, 0} : core::Vector2{100, cut / 2};
      for (int tick = 1; tick <= 5; ++tick) RunAt(line, 0.05 * tick, at.X, at.Y);
      Idle();
      EXPECT_EQ(Runs().back().Last.Record, line) << cut;
      EXPECT_EQ(Runs().back().Last.Block, line * 10) << cut;
      EXPECT_NEAR(Runs().back().Length, line == 2 ? cut : 100 + cut / 2, 0.06) << line;
      ASSERT_TRUE(Journal->PlaceOfLastRun(1));
      EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, line * 10) << cut;
    }
  }
}

TEST_F(RunJournalTest, AProgramStopInWhichTheRunBeforeWasStoppedIsAStopAgain) {
  for (int run = 0; run < 2; ++run) {
    Idle();
    for (int tick = 1; tick <= 8; ++tick) RunAt(3, 0.05 * tick, 100, 0);
    Idle();
    EXPECT_EQ(Causes(Runs().back()), "[program stop][stop]") << run;
  }
}

TEST_F(RunJournalTest, AnEndLineOfTheRunBeforeMakesNoEndHoweverLongItStands) {
  Idle();
  RunAt(2, 5);
  RunAt(EndLine, 9);
  Idle();
  See([](Seen& at) { at = {.Running = true, .Line = EndLine, .Seconds = 0.05}; }, 50);
  Idle();
  EXPECT_EQ(Runs().at(1).Ended, RunEnd::Stop);
  EXPECT_EQ(Runs().at(1).Length, 0);
  See([](Seen& at) { at = {.Running = true, .Line = EndLine, .Seconds = 0.05}; }, 50);
  RunAt(2, 1, 40, 0);
  Idle();
  EXPECT_EQ(Runs().at(2).Ended, RunEnd::Stop);
  EXPECT_NEAR(Runs().at(2).Length, 40, 0.06) << "no pass went before";
}

TEST_F(RunJournalTest, OneWrongReplyEndsNoRun) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Running = false; });
  RunAt(2, 5.1, 51, 0);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
  EXPECT_EQ(OnlyRun().StopCount, 0);
}

TEST_F(RunJournalTest, ALinkThatComesBackLeavesTheRunWhatItIs) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Blind = true; }, 20);
  RunAt(4, 8, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  const RunLine run = OnlyRun();
  EXPECT_EQ(Causes(run), "[link lost]");
  EXPECT_EQ(run.Stops.at(0).Place.Block, 20);
  EXPECT_EQ(run.Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARunThatIsGoneWhenTheLinkComesBackWasLost) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Blind = true; }, 20);
  Idle();
  EXPECT_EQ(OnlyRun().Ended, RunEnd::LinkLost);
}

TEST_F(RunJournalTest, AControllerThatIsSwitchedOffLeavesThePlaceWhereTheHeadWas) {
  for (const bool seen : {true, false}) {
    Idle();
    RunAt(5, 20, 50, 100);
    See([](Seen& at) { at.Blind = true; }, seen ? 0 : 20);
    See([](Seen& at) { at = {}; }, 3);
    const RunPlace place = Runs().back().Last;
    EXPECT_EQ(place.Block, 50) << seen;
    EXPECT_EQ(place.X, 50) << seen;
    EXPECT_EQ(place.Y, 100) << seen;
    EXPECT_NEAR(Runs().back().Length, 150 + 25 * 3.14159265, 0.06) << seen;
  }
}

TEST_F(RunJournalTest, ARunThatCameToItsEndMeanwhileHasEnded) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Blind = true; }, 20);
  See([](Seen& at) { at = {.Line = EndLine, .Seconds = 9}; }, 3);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
}

TEST_F(RunJournalTest, AnotherRunThatBeganMeanwhileIsALineOfItsOwn) {
  Idle();
  RunAt(4, 50, 100, 10);
  See([](Seen& at) { at.Blind = true; }, 20);
  RunAt(2, 1, 10, 0);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[0].Ended, RunEnd::LinkLost);
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Start);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::End);
}

TEST_F(RunJournalTest, TheEndOfTheConsoleEndsTheLine) {
  Idle();
  RunAt(2, 5, 50, 0);
  Journal->ConsoleEnds(false);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::ConsoleEnded);
  EXPECT_EQ(OnlyRun().StopCount, 0);
  EXPECT_NEAR(OnlyRun().Length, 50, 0.06);
  Journal->ConsoleEnds(false);
  EXPECT_EQ(Runs().size(), 1U) << "once";
}

TEST_F(RunJournalTest, TheEndOfTheConsoleAfterASheetThatWasJustCountedIsTheEndOfTheRun) {
  Idle();
  RunAt(2, 5, 50, 0);
  CountSheet();  // of a tick that the console's end cuts short
  Journal->ConsoleEnds(false);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
  EXPECT_FALSE(Journal->PlaceOfLastRun(1));
  RunAt(2, 5, 50, 0);
  CountSheet();
  RunAt(2, 6, 50, 0);
  Journal->ConsoleEnds(false);
  EXPECT_EQ(Runs().at(1).Ended, RunEnd::ConsoleEnded) << "the next sheet is under way";
}

TEST_F(RunJournalTest, TheEndOfTheConsoleOnADeadLineIsALostLink) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Blind = true; });
  Journal->ConsoleEnds(false);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::LinkLost);
}

TEST_F(RunJournalTest, TheEndOfTheConsoleInTheMiddleOfABlindTickIsALostLink) {
  for (const bool stopped : {false, true}) {
    Idle();
    RunAt(2, 5, 50, 0);
    if (stopped) See([](Seen& at) { at.Hold = true; });
    const std::string heard = TimeText(Clock.Now());
    Loop.RunFor(15000);
    Journal->ConsoleEnds(true);
    EXPECT_EQ(Runs().back().Ended, RunEnd::LinkLost);
    EXPECT_EQ(TimeText(Runs().back().End), heard) << "the last thing that was heard";
    EXPECT_EQ(Causes(Runs().back()), stopped ? "[feed hold][link lost]" : "[link lost]");
  }
  EXPECT_EQ(Runs().size(), 2U);
}

TEST_F(RunJournalTest, ASheetThatTheLastReadingsHaveCountedIsAnEndAllTheSame) {
  Idle();
  RunAt(2, 5, 50, 0);
  CountSheet();
  Journal->ConsoleEnds(true);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
}

TEST_F(RunJournalTest, AKilledConsoleTellsTheEndThatItHadSeen) {
  struct Case {
    int Line;
    bool Hold;
    RunEnd Ended;
    std::string Causes;
  };
  for (const Case& at :
       {Case{EndLine, false, RunEnd::End, ""}, Case{EndLine, true, RunEnd::End, ""},
        Case{4, false, RunEnd::Stop, "[stop]"}, Case{4, true, RunEnd::Stop, "[feed hold][stop]"}}) {
    const bool listed = !at.Causes.empty();
    Idle();
    RunAt(at.Line, 5, 100, 20);
    See([&](Seen& seen) {
      seen.Running = false;
      seen.Hold = at.Hold && listed;
      seen.Cycle = at.Hold;
    });
    Begin();
    Idle();
    EXPECT_EQ(Runs().back().Ended, at.Ended) << at.Line << at.Hold;
    EXPECT_EQ(Causes(Runs().back()), at.Causes) << at.Line << at.Hold;
  }
  EXPECT_EQ(Runs().size(), 4U);
}

TEST_F(RunJournalTest, AStopOutOfAHoldIsListedOnceWithItsOwnCause) {
  for (const bool stands : {false, true}) {
    Idle();
    RunAt(2, 5, 50, 0);
    if (stands) See([](Seen& at) { at.Hold = true; });
    See(
        [](Seen& at) {
          at.Running = false;
          at.Hold = at.Cycle = true;
        },
        3);
    Idle();
    EXPECT_EQ(Causes(Runs().back()), "[feed hold][stop]") << stands;
    EXPECT_EQ(Runs().back().StopCount, 2) << stands;
  }
}

TEST_F(RunJournalTest, AnOpenCycleIsNoStopBesideTheOneThatEndsTheRun) {
  const auto close = [this] {
    See([](Seen& at) {
      at.Running = false;
      at.Cycle = true;
    });
    Idle();
  };
  Idle();
  RunAt(2, 5, 50, 0);
  close();
  EXPECT_EQ(Causes(Runs().back()), "[stop]");
  RunAt(EndLine, 9);
  close();
  EXPECT_EQ(Causes(Runs().back()), "") << "it came to its end";
}

TEST_F(RunJournalTest, ARunThatGoesOnHasNoStopOfAWrongReply) {
  Idle();
  RunAt(2, 5, 50, 0);
  See([](Seen& at) { at.Running = false; });
  RunAt(2, 5.1, 51, 0);
  Begin();
  Idle();
  EXPECT_EQ(OnlyRun().Ended, RunEnd::ConsoleEnded);
  EXPECT_EQ(OnlyRun().StopCount, 0);
}

TEST_F(RunJournalTest, AKilledConsoleIsToldAtTheNextStart) {
  Idle();
  RunAt(2, 5, 50, 0);
  Loop.RunFor(NoteAgainMs);
  RunAt(4, 7, 100, 30);
  Begin();
  EXPECT_FALSE(Files.FileExists(JournalFile));
  Idle(1);
  const RunLine run = OnlyRun();
  EXPECT_EQ(run.Ended, RunEnd::ConsoleEnded);
  EXPECT_EQ(run.Last.Block, 40);
  EXPECT_NEAR(run.Length, 130, 0.06);
}

TEST_F(RunJournalTest, AMachineThatRunsWhenTheConsoleComesUpIsFoundRunning) {
  Idle();
  RunAt(2, 5, 50, 0);
  Begin();
  RunAt(4, 30, 100, 20);
  RunAt(EndLine, 50);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[0].Ended, RunEnd::ConsoleEnded);
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Found);
  EXPECT_DOUBLE_EQ(Runs()[1].Seconds, 20) << "what the first line tells is not told twice";
  EXPECT_NEAR(Runs()[1].Length, 30 + 50 * 3.14159265, 0.06);
}

TEST_F(RunJournalTest, AProgramWithoutFilesRunsAllTheSame) {
  Files.DeleteFile("C:\\Actvprg1.krw");
  Files.DeleteFile("C:\\Actvprg1.prg");
  Idle();
  RunAt(2, 5);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().Digest, "");
  EXPECT_EQ(OnlyRun().Length, 0);
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ADamagedKerfFileIsNoLength) {
  Files.Put("C:\\Actvprg1.krw", std::string(516 * 4 + 17, '\xFF'));
  Idle();
  RunAt(2, 5);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(Runs().size(), 1U);
}

TEST_F(RunJournalTest, ManyStopsAreCountedAndTheFirstAreListed) {
  Idle();
  RunAt(2, 5);
  for (int i = 0; i < 300; ++i) {
    See([](Seen& at) { at.Hold = true; });
    See([](Seen& at) { at.Hold = false; });
  }
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().StopCount, 300);
  EXPECT_EQ(OnlyRun().Stops.size(), MostStops);
}

TEST_F(RunJournalTest, TheLengthOfARecordUpToAPoint) {
  const DrawRecord line = Cut(2, 1, {0, 0}, {100, 0});
  EXPECT_DOUBLE_EQ(LengthUpTo(line, 30, 5), 30);
  EXPECT_DOUBLE_EQ(LengthUpTo(line, -30, 5), 0);
  EXPECT_DOUBLE_EQ(LengthUpTo(line, 300, 5), 100);
  const DrawRecord arc = HalfCircle(3, 1);
  EXPECT_NEAR(LengthUpTo(arc, 100, 50), 0, 1e-6);
  EXPECT_NEAR(LengthUpTo(arc, 50, 100), 25 * 3.14159265, 1e-4);
  EXPECT_NEAR(LengthUpTo(arc, 100, 150), 50 * 3.14159265, 1e-4);
  EXPECT_NEAR(LengthUpTo(arc, 140, 120), 50 * 3.14159265, 1e-4) << "the nearer end";
  EXPECT_NEAR(LengthUpTo(arc, 140, 80), 0, 1e-4);
  EXPECT_EQ(LengthUpTo(Made(RecordCode::Move, 1, 1), 5, 5), 0);
  EXPECT_EQ(LengthUpTo(line, std::numeric_limits<double>::quiet_NaN(), 0), 0);
}

/// Ticks of any kind, consoles that are killed and that end among them.
RC_GTEST_PROP(RunJournal, AnyTicksGiveWholeLinesOneARun, ()) {
  Plant plant;
  int begun = 0;
  bool running = false;
  const int ticks = *rc::gen::inRange(1, 120);
  for (int i = 0; i < ticks; ++i) {
    const int what = *rc::gen::inRange(0, 20);
    if (what == 0) {
      if (*rc::gen::arbitrary<bool>()) {
        plant.Journal->ConsoleEnds(*rc::gen::arbitrary<bool>());
      }
      plant.Begin();
      running = false;
      continue;
    }
    if (what == 1) plant.CountSheet(*rc::gen::arbitrary<bool>());
    if (what == 2) plant.Journal->RunContinued({*rc::gen::inRange(0, 60), 10, 0});
    Seen seen;
    seen.Running = *rc::gen::inRange(0, 3) > 0;
    seen.Hold = *rc::gen::inRange(0, 4) == 0;
    seen.Cycle = *rc::gen::inRange(0, 4) == 0;
    seen.Error = *rc::gen::inRange(0, 4) == 0;
    seen.Blind = *rc::gen::inRange(0, 6) == 0;
    seen.Line = *rc::gen::inRange(-1, 9);
    seen.Seconds = *rc::gen::inRange(0, 100);
    seen.X = *rc::gen::inRange(-10, 200);
    if (seen.Running && !seen.Blind && !running) ++begun;
    running = seen.Running && !seen.Blind;
    plant.Tick(seen);
  }
  plant.Journal->ConsoleEnds(false);
  plant.Begin();
  plant.Idle(1);
  const std::string text = plant.Files.Text(JournalFile);
  if (begun == 0) {
    RC_ASSERT(text == "(no file)");
    return;
  }
  int damaged = 0;
  const auto runs = RunsOf(text, &damaged);
  RC_ASSERT(damaged == 0);
  RC_ASSERT(text.ends_with("\r\n"));
  RC_ASSERT(!runs.empty());
  // A run cannot be seen to begin more often than the bit rises or its time is set back.
  for (std::size_t n = 0; n < runs.size(); ++n) {
    RC_ASSERT(runs[n].Number == static_cast<int>(n) + 1);
    RC_ASSERT(runs[n].Length >= 0);
    RC_ASSERT(runs[n].Seconds >= 0);
    RC_ASSERT(runs[n].StopCount >= static_cast<int>(runs[n].Stops.size()));
  }
}

}  // namespace
}  // namespace torvane::supervision
