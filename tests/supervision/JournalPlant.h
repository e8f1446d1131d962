// A machine that the run journal looks at, tick by tick, and the console that keeps it.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "JournalRuns.h"
#include "SlotMaker.h"
#include "core/SlotFiles.h"
#include "platform/VirtualLoop.h"
#include "supervision/RunJournal.h"
#include "support/MemoryFiles.h"

namespace torvane::tests {

using namespace torvane::supervision;
using partprogram::DrawRecord;
using partprogram::Figure;
namespace RecordCode = partprogram::RecordCode;

inline const std::string JournalFile = "C:\\Service\\Journal.csv";
inline const std::string Text = "G71\r\nG00 X0\r\nM30\r\n";
inline constexpr int EndLine = 6;

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

inline DrawRecord Made(std::int16_t code, int line, int block) {
  DrawRecord record;
  record.Code = code;
  record.TableLine = static_cast<std::int16_t>(line);
  record.BlockNumber = static_cast<std::int16_t>(block);
  return record;
}

inline DrawRecord Cut(int line, int block, core::Vector2 from, core::Vector2 to) {
  DrawRecord record = Made(RecordCode::LineProfile, line, block);
  record.StartPoint = {static_cast<float>(from.X), static_cast<float>(from.Y), 0};
  record.EndPoint = {static_cast<float>(to.X), static_cast<float>(to.Y), 0};
  record[Figure::Length] = static_cast<float>(std::hypot(to.X - from.X, to.Y - from.Y));
  return record;
}

/// Half a circle from (100, 50) to (100, 150) about (100, 100), clockwise over (50, 100).
inline DrawRecord HalfCircle(int line, int block) {
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
inline std::string KerfFile() {
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

}  // namespace torvane::tests
