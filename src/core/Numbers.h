// Numbers to text and back, and the one way of rounding. Pure functions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane::core {

/// "No value" in word readers, stored settings and intersections; it also ends a table.
inline constexpr double NoValue = -999.0;

/// The leading number of a text: leading blanks and tabs skipped, reading stops at the first
/// character that cannot continue the number (sign, digits, one point, an exponent E or D), no
/// number gives 0. A number beyond the range of a double is infinite.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// Truncated toward zero and held within the type's range; a value that is no number gives 0.
[[nodiscard]] std::int16_t TruncateToInt16(double value);
[[nodiscard]] std::int32_t TruncateToInt32(double value);
/// Half to even, held within the type's range; a value that is no number gives 0.
[[nodiscard]] std::int16_t RoundToInt16(double value);
[[nodiscard]] std::int32_t RoundToInt32(double value);

/// `value` rounded to `places` decimals (held to 0 to 15), half to even on the exact value of the
/// double, not on a scaled product: 1.005 lies below the half and gives 1. Never gives a negative
/// zero. A value that is not finite comes back as it is.
[[nodiscard]] double RoundPlaces(double value, int places);

/// The one text form of a number that is shown or sent. Always plain decimals, at any size; what
/// is no finite number gives zero, and a zero has no sign.
/// `places` < 0: shortest decimal text that reads back the same; below 0.0001 in size "0".
/// `places` 0: whole. `places` 1 to 6 (more counts as 6): that many decimals, always.
[[nodiscard]] std::string NumberText(double value, int places);
/// The same for a single: its shortest text is the single's own, 12.3 stays "12.3".
[[nodiscard]] std::string NumberText(float value, int places);
/// Appends NumberText(value, places) without a temporary.
void AppendNumber(std::string& out, double value, int places);
void AppendNumber(std::string& out, float value, int places);

[[nodiscard]] std::string IntegerText(std::int16_t value);
[[nodiscard]] std::string LongText(std::int32_t value);
/// The last `width` digits of `width` zeros followed by the number.
[[nodiscard]] std::string PadInteger(std::int32_t value, int width);

}  // namespace torvane::core
