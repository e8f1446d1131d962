// Sums over the runs of a journal, by day and by program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "supervision/RunLine.h"

namespace torvane::tools {

/// What the runs of one sum have in common.
struct SumKeys {
  bool Day = true;      ///< the day on which a run began
  bool Program = true;  ///< directory and program
};

struct JournalSum {
  std::string Day;  ///< "2026-03-04"; empty where it is no key
  std::string Directory;
  std::string Program;
  int Runs = 0;
  int Ended = 0;  ///< of them, those that came to the program's end
  std::int64_t Sheets = 0;
  std::int64_t Stops = 0;
  double Seconds = 0;
  double Length = 0;  ///< mm
};

/// The whole runs of a journal's text.
struct JournalRuns {
  std::vector<supervision::RunLine> Runs;
  std::vector<int> Damaged;  ///< numbers of the lines that are neither a run nor the header, from 1
};

/// A last line without an end is one that is just being written, or was never finished: it counts
/// for nothing, and neither do an empty line and the marks that other programs save with a text.
[[nodiscard]] JournalRuns ReadJournal(std::string_view text);

/// "2026-03-04".
[[nodiscard]] std::string DayOf(const supervision::RunLine& run);

/// One sum for each combination of the keys, in their order.
[[nodiscard]] std::vector<JournalSum> SumUp(const std::vector<supervision::RunLine>& runs,
                                            SumKeys keys);
/// Over all of them.
[[nodiscard]] JournalSum Total(const std::vector<supervision::RunLine>& runs);

}  // namespace torvane::tools
