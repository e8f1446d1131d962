// Text, numbers and geometry that every floor uses. Everything here is a pure function.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace torvane::core {

/// Pi to nine figures, everywhere in the system: results hold to the digit.
inline constexpr double Pi = 3.14159265;

/// "No value" in word readers, stored settings and intersections; it also ends a table.
inline constexpr double NoValue = -999.0;

// ---- text ----

/// Blanks and tabs and line ends off both sides.
[[nodiscard]] std::string_view Trim(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] std::string RemoveBlanks(std::string_view text);
/// Left and right of the first "!", trimmed. No "!": the whole text, and nothing.
[[nodiscard]] std::string_view BlockPart(std::string_view line);
[[nodiscard]] std::string_view CommentPart(std::string_view line);
/// Left of the first ";", trimmed.
[[nodiscard]] std::string_view SemicolonPart(std::string_view line);
/// Right of the first ":", trimmed; the whole text, trimmed, where there is none.
[[nodiscard]] std::string_view AfterColon(std::string_view line);
/// Left of the last ".", trimmed.
[[nodiscard]] std::string_view StripExtension(std::string_view name);
/// Behind the last "/", "\" or ":".
[[nodiscard]] std::string_view NamePart(std::string_view path);
/// The lines of a text without their ends; CR LF, LF alone and CR alone all end a line. A last
/// line without an end counts, an empty rest does not. The views point into `text`.
[[nodiscard]] std::vector<std::string_view> SplitLines(std::string_view text);
[[nodiscard]] bool EqualNoCase(std::string_view left, std::string_view right);

// ---- numbers ----

/// The leading number of a text: blanks skipped, reading stops at the first character that cannot
/// continue the number (sign, digits, one point, an exponent E or D), no number gives 0.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// Truncated toward zero and held within the type's range.
[[nodiscard]] std::int16_t TruncateToInt16(double value);
[[nodiscard]] std::int32_t TruncateToInt32(double value);
/// Half to even, held within the type's range.
[[nodiscard]] std::int16_t RoundToInt16(double value);
[[nodiscard]] std::int32_t RoundToInt32(double value);

/// `value` rounded to `places` decimals (0 to 15), half to even on the exact value of the double,
/// not on a scaled product. Never gives a negative zero.
[[nodiscard]] double RoundPlaces(double value, int places);

/// The one text form of a number that is shown or sent.
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

/// A value reader's result. `Found` is false when the key is absent, when nothing could be read or
/// when the value is -999; `Value` is then -999.
struct WordValue {
  double Value = NoValue;
  bool Found = false;
};

/// The text behind the first `key`: digits . + - * / ( ) are taken, a blank behind the first
/// character or any other character ends it; read as a plain number, nothing is evaluated.
[[nodiscard]] WordValue GetPlainValue(std::string_view block, std::string_view key);

/// Digits only behind the first `key`; a value of -999 counts as found here.
[[nodiscard]] WordValue GetPlainInteger(std::string_view block, std::string_view key);

/// What Calculate gives: the value, and whether brackets were unbalanced or a division by zero met.
struct Calculation {
  double Value = 0;
  bool Empty = true;             ///< nothing was worked out
  bool ArithmeticError = false;  ///< unbalanced brackets or a division by zero
};

/// Left to right, no precedence, brackets from the inside with a trip through text.
[[nodiscard]] Calculation Calculate(std::string_view expression);

// ---- geometry, degrees and mm ----

/// 0 up to below 360. A value that is no finite angle gives 0.
[[nodiscard]] double NormaliseAngle(double degrees);
[[nodiscard]] double RadiansToDegrees(double radians);

struct Vector2 {
  double X = 0;
  double Y = 0;
};
struct Polar {
  double Length = 0;
  double Angle = 0;  ///< degrees, 0 up to below 360
};

[[nodiscard]] Vector2 PolarToXY(double length, double angle);
[[nodiscard]] Polar XYToPolar(double dx, double dy);
/// `point` turned by `angle` degrees about `centre`, by way of its polar form.
[[nodiscard]] Vector2 RotateAbout(Vector2 centre, double angle, Vector2 point);
/// True inside or on the edge, corners in any order, compared as singles.
[[nodiscard]] bool PointInBox(float x1, float y1, float x2, float y2, float x, float y);

}  // namespace torvane::core
