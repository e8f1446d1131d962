// Text of the system: single bytes, kept as they are. Pure functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::core {

/// Blanks and tabs and line ends off both sides.
[[nodiscard]] std::string_view Trim(std::string_view text);
/// a to z become A to Z; every other byte stays.
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
/// After the last "/", "\" or ":".
[[nodiscard]] std::string_view NamePart(std::string_view path);
/// The lines of a text without their ends; CR LF, LF alone and CR alone all end a line. A last
/// line without an end counts, an empty rest does not. The views point into `text`.
[[nodiscard]] std::vector<std::string_view> SplitLines(std::string_view text);
/// Cuts the first line off `rest`, by the rule of SplitLines, without a list of them all.
/// False when nothing is left.
bool TakeLine(std::string_view& rest, std::string_view& line);
[[nodiscard]] bool EqualNoCase(std::string_view left, std::string_view right);

}  // namespace torvane::core
