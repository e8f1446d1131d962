#include "tools/JournalSums.h"

#include <map>
#include <tuple>

#include "supervision/JournalText.h"

namespace torvane::tools {

namespace {

using supervision::RunLine;

void Add(JournalSum& sum, const RunLine& run) {
  ++sum.Runs;
  if (run.Ended == supervision::RunEnd::End) ++sum.Ended;
  sum.Sheets += run.Sheets;
  sum.Stops += run.StopCount;
  sum.Seconds += run.Seconds;
  sum.Length += run.Length;
}

/// A program that saves a text may put it in front.
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

JournalRuns ReadJournal(std::string_view text) {
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  JournalRuns read;
  int number = 0;
  for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    ++number;
    if (line.empty() || line == "\r" || supervision::IsJournalHeader(line)) continue;
    if (auto run = supervision::ReadJournalLine(line)) {
      read.Runs.push_back(std::move(*run));
    } else {
      read.Damaged.push_back(number);
    }
  }
  return read;
}

std::string DayOf(const RunLine& run) {
  constexpr std::size_t DaySize = 10;
  return supervision::TimeText(run.Start).substr(0, DaySize);
}

std::vector<JournalSum> SumUp(const std::vector<RunLine>& runs, SumKeys keys) {
  std::map<std::tuple<std::string, std::string, std::string>, JournalSum> sums;
  for (const RunLine& run : runs) {
    const std::string day = keys.Day ? DayOf(run) : std::string();
    const std::string directory = keys.Program ? run.Directory : std::string();
    const std::string program = keys.Program ? run.Program : std::string();
    JournalSum& sum = sums[{day, directory, program}];
    sum.Day = day;
    sum.Directory = directory;
    sum.Program = program;
    Add(sum, run);
  }
  std::vector<JournalSum> ordered;
  ordered.reserve(sums.size());
  for (auto& [key, sum] : sums) ordered.push_back(std::move(sum));
  return ordered;
}

JournalSum Total(const std::vector<RunLine>& runs) {
  JournalSum total;
  for (const RunLine& run : runs) Add(total, run);
  return total;
}

}  // namespace torvane::tools
