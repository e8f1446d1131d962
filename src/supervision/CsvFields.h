// Fields of a line divided by commas, quoted as spreadsheets do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvane::supervision {

/// A line as it grows, field by field.
class CsvLine {
 public:
  /// Quoted where it holds a comma or a quote, or has a blank at an end.
  void Field(std::string_view field);
  /// A text that somebody has made up: control bytes become "?", and what a spreadsheet would take
  /// for a formula gets an apostrophe in front.
  void Text(std::string_view text);
  void Number(std::int64_t value);
  /// With that many decimals.
  void Number(double value, int places);

  /// The line with CR LF.
  [[nodiscard]] std::string Ended() const { return line_ + "\r\n"; }

 private:
  std::string line_;
  bool begun_ = false;
};

/// The fields of a line without its end; nothing where a quote is missing or in the wrong place.
[[nodiscard]] std::optional<std::vector<std::string>> SplitFields(std::string_view line);

/// A field of CsvLine::Text as it was, without the apostrophe.
[[nodiscard]] std::string TextOfField(std::string_view field);

}  // namespace torvane::supervision
