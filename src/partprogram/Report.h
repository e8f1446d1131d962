// Reverse.txt in the making: the head, one entry for each problem, the end mark.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "partprogram/ReverseModule.h"
#include "platform/Clock.h"

namespace torvane::partprogram {

/// "dd/mm/yy hh:mm".
[[nodiscard]] std::string ReportTime(const platform::LocalTime& time);

/// The three head lines of a pass report.
[[nodiscard]] std::string ReportHead(std::string_view program, std::string_view directory,
                                     const platform::LocalTime& time);

/// Characters of a block that a report shows.
inline constexpr std::size_t LongestReportBlock = 200;

/// An entry: a blank line, the kind of error, the message, the block.
[[nodiscard]] std::string ReportEntry(std::string_view block, std::string_view message,
                                      bool critical);

/// The line that ends a report.
inline constexpr std::string_view ReportEnd = "******\r\n";

/// Adds an entry to the report and the list of a result; only a critical one counts.
void WriteError(ConversionResult& result, const ProgramError& error);

/// The same for a report that has ended: the entry goes in front of the end mark.
void WriteLateError(ConversionResult& result, const ProgramError& error);

}  // namespace torvane::partprogram
