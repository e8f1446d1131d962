// Runs for tests of the journal.
#pragma once

#include <string>
#include <vector>

#include "core/General.h"
#include "supervision/JournalText.h"
#include "supervision/RunLine.h"

namespace torvane::tests {

using namespace torvane::supervision;

/// 64 digits.
inline std::string Digest(char digit) { return std::string(64, digit); }

inline RunLine AnyRun(int number = 7) {
  RunLine run;
  run.Number = number;
  run.Start = {2026, 3, 4, 5, 6, 7};
  run.End = {2026, 3, 4, 5, 36, 0};
  run.Begin = RunBegin::Restart;
  run.FromBlock = 12;
  run.Directory = "SHOP";
  run.Program = "STAR";
  run.Digest = Digest('a');
  run.Slot = 2;
  run.Material = "Brass 1.5 mm";
  run.Sheets = 1;
  run.Seconds = 1793.05;
  run.Length = 20417.5;
  run.Ended = RunEnd::Stop;
  run.Last = {31, 88, 123.4, -5};
  run.StopCount = 2;
  run.Stops = {{{2026, 3, 4, 5, 10, 0}, {12, 40, 100, 55.25}, "feed hold"},
               {{2026, 3, 4, 5, 36, 0}, {31, 88, 123.4, -5}, "stop"}};
  return run;
}

/// The runs of a journal's text; a line that is none is a fault of the test.
inline std::vector<RunLine> RunsOf(const std::string& text, int* damaged = nullptr) {
  std::vector<RunLine> runs;
  bool header = true;
  for (const std::string_view line : core::SplitLines(text)) {
    if (std::exchange(header, false)) continue;
    if (auto run = ReadJournalLine(line)) {
      runs.push_back(std::move(*run));
    } else if (damaged != nullptr) {
      ++*damaged;
    }
  }
  return runs;
}

}  // namespace torvane::tests
