// Lines of a text as fixed records of 80 bytes, blank-padded: ".tbl" from ".tbx", ".rnd" from
// ".bdy".
#pragma once

#include <string>
#include <string_view>

namespace torvane::partprogram {

/// Empty lines are left out when `skipEmpty`; a longer line is cut.
struct FixedLines {
  std::string Bytes;
  int Count = 0;
};
[[nodiscard]] FixedLines MakeFixedLines(std::string_view text, bool skipEmpty);

/// The next lines of `text` as fixed records, as many as a part of a file holds; they are taken off
/// the text. Nothing is left when `bytes` stays empty.
void TakeFixedLines(std::string_view& text, bool skipEmpty, std::string& bytes);

}  // namespace torvane::partprogram
