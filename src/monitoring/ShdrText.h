// The text that an MTConnect agent reads from an adapter, line by line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane::monitoring {

/// Value of an item of which nothing is known.
inline constexpr std::string_view Unavailable = "UNAVAILABLE";

/// A moment in UTC with milliseconds, as in 2026-03-04T05:06:07.089Z. `wallMs` counts from 1970.
[[nodiscard]] std::string TimestampText(std::int64_t wallMs);

/// A text as a field of a line: UTF-8 made of single bytes, line ends and other control characters
/// as blanks. One that holds the divider is quoted, with the divider escaped.
[[nodiscard]] std::string Field(std::string_view text);

/// "TIMESTAMP|KEY|VALUE" with its line feed. The value is a field already, or several.
[[nodiscard]] std::string ItemLine(std::string_view timestamp, std::string_view key,
                                   std::string_view value);

/// The agent's heartbeat, and the answer to it: an agent may expect a line every so many ms.
[[nodiscard]] bool IsPing(std::string_view line);
[[nodiscard]] std::string PongLine(int heartbeatMs);

}  // namespace torvane::monitoring
