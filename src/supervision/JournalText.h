// The text of the run journal: a header and one line a run, as a spreadsheet opens it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "supervision/RunLine.h"

namespace torvane::supervision {

/// The names of the columns, with CR LF.
[[nodiscard]] const std::string& JournalHeader();

/// A header as it was, or as a spreadsheet has saved it: with or without quotes. `line` is without
/// its end.
[[nodiscard]] bool IsJournalHeader(std::string_view line);

/// The line of a run, with CR LF. Fields are divided by commas and quoted where they must be.
/// Bytes below a blank become "?", so that a run is one line whatever its names hold; a name that a
/// spreadsheet would take for a formula has an apostrophe before it.
[[nodiscard]] std::string JournalText(const RunLine& run);

/// The run of a line, without its end; nothing for the header and for a line that is damaged, as
/// one is whose figures cannot be: below 0, or above what a line holds. Names come back as they
/// were, but for the bytes above.
[[nodiscard]] std::optional<RunLine> ReadJournalLine(std::string_view line);

/// "2026-03-04 05:06:07".
[[nodiscard]] std::string TimeText(const platform::LocalTime& time);

/// The words of the columns "Begin" and "Ended".
[[nodiscard]] std::string_view BeginWord(RunBegin begin);
[[nodiscard]] std::string_view EndWord(RunEnd ended);

}  // namespace torvane::supervision
