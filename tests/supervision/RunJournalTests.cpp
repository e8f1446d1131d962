#include <functional>
#include <map>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "JournalRuns.h"
#include "SlotMaker.h"
#include "core/SlotFiles.h"
#include "platform/VirtualLoop.h"
#include "supervision/ProgramDigest.h"
#include "supervision/RunJournal.h"
#include "support/MemoryFiles.h"

namespace torvane::supervision {

using namespace tests;
namespace {

using partprogram::DrawRecord;
using partprogram::Figure;
namespace RecordCode = partprogram::RecordCode;

const std::string JournalFile = "C:\\Service\\Journal.csv";
const std::string Text = "G71\r\nG00 X0\r\nM30\r\n";
constexpr int EndLine = 6;

/// The loop's time as a time of day.
class LoopClock final : public platform::Clock {
 public:
  explicit LoopClock(platform::VirtualLoop& loop) : loop_(loop) {}
  [[nodiscard]] platform::LocalTime Now() const override {
    const auto seconds = static_cast<int>(loop_.NowMs() / 1000);
    return {2026, 3, 4, seconds / 3600, seconds / 60 % 60, seconds % 60};
  }

 private:
  platform::VirtualLoop& loop_;
};

DrawRecord Made(std::int16_t code, int line, int block) {
  DrawRecord record;
  record.Code = code;
  record.TableLine = static_cast<std::int16_t>(line);
  record.BlockNumber = static_cast<std::int16_t>(block);
  return record;
}

DrawRecord Cut(int line, int block, core::Vector2 from, core::Vector2 to) {
  DrawRecord record = Made(RecordCode::LineProfile, line, block);
  record.StartPoint = {static_cast<float>(from.X), static_cast<float>(from.Y), 0};
  record.EndPoint = {static_cast<float>(to.X), static_cast<float>(to.Y), 0};
  record[Figure::Length] = static_cast<float>(std::hypot(to.X - from.X, to.Y - from.Y));
  return record;
}

/// Half a circle from (100, 50) to (100, 150) about (100, 100), clockwise over (50, 100).
DrawRecord HalfCircle(int line, int block) {
  DrawRecord record = Made(RecordCode::ArcProfile, line, block);
  record.StartPoint = {100, 50, 0};
  record.EndPoint = {100, 150, 0};
  record.CentrePoint = {100, 100, 0};
  record[Figure::Radius] = 50;
  record[Figure::ArcLength] = static_cast<float>(50 * 3.14159265);
  record[Figure::StartAngle] = 270;
  record[Figure::Sweep] = -180;
  return record;
}

/// A move, 100 mm, a program stop, 50 mm, half a circle, the end line. Each is the block of its
/// table line's number times ten.
std::string KerfFile() {
  std::string bytes;
  SlotMaker::Append(bytes, Made(RecordCode::Sheet, 0, 0));
  SlotMaker::Append(bytes, Made(RecordCode::Move, 1, 10));
  SlotMaker::Append(bytes, Cut(2, 20, {0, 0}, {100, 0}));
  SlotMaker::Append(bytes, Made(RecordCode::ProgramStop, 3, 30));
  SlotMaker::Append(bytes, Cut(4, 40, {100, 0}, {100, 50}));
  SlotMaker::Append(bytes, HalfCircle(5, 50));
  return bytes;
}

/// What the poll reads of a machine in one tick.
struct Seen {
  bool Running = false;
  bool Hold = false;
  bool Cycle = false;
  bool Error = false;
  int Line = 0;
  double Seconds = 0;
  double X = 0;
  double Y = 0;
  bool Blind = false;
  std::string Messages = {};
};

struct Plant {
  Plant() {
    SlotMaker::SetDirectories(System.Directories);
    PutInSlot(1, "STAR", EndLine);
    PutInSlot(2, "NEST", EndLine);
    System.Link.TrioLinkEnabled = true;
    Begin();
  }

  /// A program is selected into the slot.
  void PutInSlot(core::Slot slot, const std::string& name, int lines) {
    auto& program = System.Programs[slot];
    program = {};
    program.Selected = true;
    program.DirectoryName = "SHOP";
    program.ProgramName = name;
    program.Material = "Brass";
    program.TableLines = static_cast<std::int16_t>(lines);
    Files.Put(core::SlotFile(System.Directories, slot, "krw"), KerfFile());
    Files.Put(core::SlotFile(System.Directories, slot, "prg"),
              Text + std::to_string(slot.Number()));
  }

  /// A console comes up; the one before it was killed unless it ended.
  void Begin() {
    Journal.emplace(JournalParts{System, Files, Clock, Loop});
    Machine = {};
  }
  void Tick(const Seen& seen) {
    Loop.RunFor(50);
    auto& state = System.State;
    state.MachineRunning = seen.Running && !seen.Blind;
    state.MachineFeedhold = seen.Hold && !seen.Blind;
    state.MachineCycleBit = seen.Cycle && !seen.Blind;
    state.MachineInError = seen.Error && !seen.Blind ? 4096 : 0;
    state.RunningBlock = static_cast<std::int16_t>(seen.Blind ? 0 : seen.Line);
    state.XPosition = static_cast<float>(seen.X);
    state.YPosition = static_cast<float>(seen.Y);
    Journal->TickRead(
        {seen.Blind, seen.Blind ? 0 : static_cast<float>(seen.Seconds), seen.Messages});
  }
  /// Ticks with the machine as it is, after `change`.
  template <typename Change>
  void See(const Change& change, int ticks = 1) {
    change(Machine);
    for (; ticks > 0; --ticks) Tick(Machine);
  }
  void Idle(int ticks = 3) {
    See([](Seen& at) { at.Running = at.Hold = at.Cycle = at.Error = at.Blind = false; }, ticks);
  }
  /// The controller lets the bit go in a feed hold.
  void HoldWithoutTheBit() {
    See(
        [](Seen& at) {
          at.Running = false;
          at.Hold = true;
        },
        30);
  }
  void RunAt(int line, double seconds, double x = 0, double y = 0) {
    See([&](Seen& at) {
      at = {.Running = true, .Line = line, .Seconds = seconds, .X = x, .Y = y};
    });
  }
  void CountSheet(bool good = true, int sheets = 1) {
    auto& batch = System.Programs[System.ActiveSlot].BatchCounters;
    core::Batch read = batch;
    if (good) read.SheetsCompleted += sheets;
    if (!good) read = {};
    const core::Batch before = std::exchange(batch, read);
    Journal->BatchRead({System.ActiveSlot, before, read, good});
  }
  [[nodiscard]] std::vector<RunLine> Runs() const { return RunsOf(Files.Text(JournalFile)); }
  [[nodiscard]] RunLine OnlyRun() const {
    const auto runs = Runs();
    EXPECT_EQ(runs.size(), 1U);
    return runs.empty() ? RunLine() : runs.back();
  }

  core::System System;
  MemoryFiles Files;
  platform::VirtualLoop Loop;
  LoopClock Clock{Loop};
  std::optional<RunJournal> Journal;
  Seen Machine;
};

class RunJournalTest : public ::testing::Test, protected Plant {
 protected:
  static std::string Causes(const RunLine& run) {
    std::string causes;
    for (const RunStop& stop : run.Stops) causes += "[" + stop.Cause + "]";
    return causes;
  }
};

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

TEST_F(RunJournalTest, ARestartIsALineOfItsOwnThatCountsFromItsPlace) {
  Idle();
  RunAt(2, 5, 80, 0);
  See([](Seen& at) { at.Running = false; }, 2);
  See([](Seen& at) {
    at.Running = true;
    at.Seconds = 0;
  });
  Journal->RunContinued({20, 60, 0});
  RunAt(2, 1, 60, 0);
  RunAt(4, 3, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  const RunLine run = Runs()[1];
  EXPECT_EQ(run.Begin, RunBegin::Restart);
  EXPECT_EQ(run.FromBlock, 20);
  EXPECT_NEAR(run.Length, 40 + 50 + 50 * 3.14159265, 0.06);
  EXPECT_EQ(run.Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARestartWhoseLineComesALittleLateCountsFromItsPlace) {
  for (const int stopLine : {4, 5}) {
    Idle();
    RunAt(2, 1, 80, 0);
    RunAt(stopLine, 5, 100, 50);
    Idle();
    RunAt(stopLine, 0, 60, 0);
    Journal->RunContinued({20, 60, 0});
    RunAt(stopLine, 0.05, 60, 0);
    RunAt(2, 0.1, 60, 0);
    RunAt(4, 3, 100, 10);
    RunAt(EndLine, 9);
    Idle();
    EXPECT_EQ(Runs().back().Begin, RunBegin::Restart) << stopLine;
    EXPECT_NEAR(Runs().back().Length, 40 + 50 + 50 * 3.14159265, 0.06) << stopLine;
  }
}

TEST_F(RunJournalTest, ThePassAfterARestartIsAPassAllTheSame) {
  Idle();
  RunAt(2, 1, 80, 0);
  Idle();
  RunAt(5, 0.05, 100, 50);
  Journal->RunContinued({50, 100, 50});
  See([](Seen& /*at*/) {}, 10);
  RunAt(2, 9, 10, 0);
  RunAt(EndLine, 20);
  Idle();
  EXPECT_NEAR(Runs().back().Length, 150 + 2 * 50 * 3.14159265, 0.06);
}

TEST_F(RunJournalTest, ARestartThatIsToldBeforeItIsSeenIsNamedToo) {
  Idle();
  Journal->RunContinued({40, 100, 0});
  RunAt(4, 1, 100, 0);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().Begin, RunBegin::Restart);
  Journal->RunContinued({40, 100, 0});
  Idle();
  RunAt(2, 1);
  Idle();
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Start) << "that restart came to nothing";
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

TEST_F(RunJournalTest, AControllerThatLetsTheBitGoInAHoldStillHasOneRun) {
  Idle();
  RunAt(2, 5, 50, 0);
  See(
      [](Seen& at) {
        at.Running = false;
        at.Cycle = at.Hold = true;
      },
      30);
  RunAt(4, 8);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(Causes(OnlyRun()), "[feed hold]");
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
}

TEST_F(RunJournalTest, AShorterProgramThatIsSelectedMeanwhileMakesNoEndOfAStop) {
  for (const bool blind : {false, true}) {
    Idle();
    RunAt(2, 1, 50, 0);
    RunAt(4, 5, 100, 20);
    See(
        [&](Seen& at) {
          at.Running = false;
          at.Hold = true;
          at.Blind = blind;
        },
        3);
    PutInSlot(1, "SHORT", 3);
    Idle();
    EXPECT_EQ(Runs().back().Ended, blind ? RunEnd::LinkLost : RunEnd::Stop) << blind;
    EXPECT_EQ(Runs().back().Program, "STAR") << blind;
    EXPECT_NEAR(Runs().back().Length, 120, 0.06) << blind;
    PutInSlot(1, "STAR", EndLine);
  }
  EXPECT_EQ(Runs().size(), 2U);
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
    EXPECT_EQ(Journal->PlaceOfLastRun(1).has_value(), stopped);
    if (stopped) EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, 40);
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

TEST_F(RunJournalTest, ThePlaceOfARunThatDidNotEndIsFoundByItsText) {
  Idle();
  RunAt(2, 5, 50, 0);
  Begin();
  Idle();
  ASSERT_TRUE(Journal->PlaceOfLastRun(1));
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(2)) << "another slot";
  Files.Put("C:\\Actvprg1.prg", Text + "1 ");
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "another text";
  Files.Put("C:\\Actvprg1.prg", Text + "1");
  RunAt(2, 5);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it has come to its end since";
}

TEST_F(RunJournalTest, ThePlaceOfARunIsKnownWhileTheHoldStaysOn) {
  const auto hold = [](Seen& at) {
    at.Running = false;
    at.Hold = true;
  };
  Idle();
  RunAt(4, 5, 100, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it runs";
  See([](Seen& at) { at.Hold = true; });
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it stands, and may go on";
  See(hold, 20);
  ASSERT_TRUE(Journal->PlaceOfLastRun(1));
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, 40);
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Y, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(2)) << "another slot";
  Files.Put("C:\\Actvprg1.prg", Text + "1 ");
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "another text";
  Files.Put("C:\\Actvprg1.prg", Text + "1");
  RunAt(EndLine, 9);
  See(hold, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it has come to its end";
}

TEST_F(RunJournalTest, ARestartOutOfAHoldIsALineOfItsOwn) {
  struct Case {
    double Before;  ///< run time of the run that is held, s
    double First;   ///< as the tick reads it that sees the restart run
  };
  for (const Case& at : {Case{5, 0.05}, Case{5, 5}, Case{0.3, 0.05}}) {
    SCOPED_TRACE(at.First);
    Idle();
    RunAt(2, at.Before / 2, 50, 0);
    RunAt(4, at.Before, 100, 20);
    HoldWithoutTheBit();
    RunAt(4, at.First, 100, 10);
    Journal->RunContinued({40, 100, 10});
    RunAt(4, 0.1, 100, 10);
    RunAt(EndLine, 9);
    Idle();
    const auto runs = Runs();
    ASSERT_GE(runs.size(), 2U);
    const RunLine& held = runs[runs.size() - 2];
    EXPECT_EQ(held.Begin, RunBegin::Start);
    EXPECT_EQ(held.Ended, RunEnd::Stop);
    EXPECT_EQ(Causes(held), "[feed hold][stop]");
    EXPECT_EQ(held.Last.Y, 20);
    EXPECT_NEAR(held.Seconds, at.Before, 1e-6);
    EXPECT_NEAR(held.Length, 120, 0.06);
    const RunLine& restart = runs.back();
    EXPECT_EQ(restart.Begin, RunBegin::Restart);
    EXPECT_EQ(restart.FromBlock, 40);
    EXPECT_EQ(restart.Ended, RunEnd::End);
    EXPECT_EQ(restart.StopCount, 0);
    EXPECT_NE(TimeText(restart.Start), TimeText(held.Start));
    EXPECT_NEAR(restart.Seconds, 9, 1e-6);
    EXPECT_NEAR(restart.Length, 40 + 50 * 3.14159265, 0.06);
  }
  EXPECT_EQ(Runs().size(), 6U);
}

TEST_F(RunJournalTest, ARestartOutOfAHoldMayBeToldBeforeItIsSeen) {
  Idle();
  RunAt(4, 5, 100, 20);
  HoldWithoutTheBit();
  Journal->RunContinued({40, 100, 10});
  RunAt(4, 5, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[0].Ended, RunEnd::Stop);
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Restart);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARestartThatIsHeldAtOnceKeepsThatStop) {
  Idle();
  RunAt(4, 5, 100, 20);
  HoldWithoutTheBit();
  See([](Seen& at) { at.Running = true; });
  Journal->RunContinued({40, 100, 10});
  RunAt(4, 0.1, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Causes(Runs()[0]), "[feed hold][stop]");
  EXPECT_EQ(Causes(Runs()[1]), "[feed hold]");
}

TEST_F(RunJournalTest, AProgramThatIsStartedOutOfTheHoldOfAnotherIsALineOfItsOwn) {
  struct Case {
    const char* What;
    std::function<void()> Change;
    const char* Program;
  };
  const std::vector<Case> cases = {
      {"another slot", [this] { System.ActiveSlot = 2; }, "NEST"},
      {"another program", [this] { PutInSlot(1, "DISC", EndLine); }, "DISC"},
      {"another text", [this] { Files.Put("C:\\Actvprg1.prg", Text + "1 "); }, "STAR"}};
  for (const Case& at : cases) {
    SCOPED_TRACE(at.What);
    System.ActiveSlot = 1;
    PutInSlot(1, "STAR", EndLine);
    Idle();
    RunAt(2, 1, 50, 0);
    RunAt(4, 5, 100, 20);
    HoldWithoutTheBit();
    at.Change();
    RunAt(4, 5, 100, 20);  // neither figure is cleared yet
    RunAt(2, 0.1, 10, 0);
    RunAt(EndLine, 9);
    Idle();
    const auto runs = Runs();
    ASSERT_GE(runs.size(), 2U);
    EXPECT_EQ(runs[runs.size() - 2].Ended, RunEnd::Stop);
    EXPECT_EQ(runs[runs.size() - 2].Program, "STAR");
    EXPECT_EQ(runs[runs.size() - 2].StopCount, 2);
    EXPECT_EQ(runs.back().Program, at.Program);
    EXPECT_EQ(runs.back().StopCount, 0);
    EXPECT_EQ(runs.back().Ended, RunEnd::End);
    EXPECT_NEAR(runs.back().Seconds, 9, 1e-6);
  }
  EXPECT_EQ(Runs().size(), 6U);
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
