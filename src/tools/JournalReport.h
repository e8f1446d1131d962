// The sums of a journal as text, CSV and JSON.
#pragma once

#include <string>
#include <vector>

#include "tools/JournalSums.h"

namespace torvane::tools {

struct JournalReport {
  SumKeys Keys;
  std::vector<JournalSum> Sums;
  JournalSum Total;
  std::vector<int> Damaged;  ///< lines of the journal that could not be read
};

/// Aligned columns for a person, names in UTF-8, with the total at the end.
[[nodiscard]] std::string JournalTextReport(const JournalReport& report);
/// A header and one line a sum, in the bytes of the journal, without a total: a spreadsheet adds
/// up.
[[nodiscard]] std::string JournalCsvReport(const JournalReport& report);
[[nodiscard]] std::string JournalJsonReport(const JournalReport& report);

}  // namespace torvane::tools
