// How the configuration files are read: line by line or field by field, with faults that name the
// file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvane::core {

/// The line that ends a list.
inline constexpr std::string_view EndMarker = "******";

/// Lines of a text, from the first. `path` is named in a fault; both must outlive the reader.
class LineReader {
 public:
  LineReader(std::string_view text, std::string_view path);

  [[nodiscard]] bool AtEnd() const { return next_ >= lines_.size(); }

  /// The next line as it is. A file that ends before it is too short: RuntimeFault.
  std::string_view Required();

  /// The next line, nothing at the end of the file.
  std::optional<std::string_view> Optional();

  /// The next row of a list, trimmed. Nothing at its end: the marker, an empty line, or the end of
  /// the file, which is tested before the line just read is used, so that a last line without a
  /// marker after it is lost.
  std::optional<std::string_view> Row();

 private:
  std::string_view path_;
  std::vector<std::string_view> lines_;
  std::size_t next_ = 0;
};

/// Free-format fields, divided by commas and line ends alike, in double quotes or bare. A bare
/// field is trimmed.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  /// The next field, nothing at the end of the file.
  std::optional<std::string_view> Next();

  /// Passes over what is left of the line of the last field; nothing where the field ended it.
  void SkipLine();

 private:
  /// Takes what divides two fields: a comma, or one line end.
  void SkipDivider();

  std::string_view rest_;
  bool lineEnded_ = true;  ///< the last field was the last of its line
};

/// A yes/no field: a "Y" anywhere, in either case.
[[nodiscard]] bool IsYes(std::string_view text);

/// Narrowed to 32 bits; what a single cannot hold becomes the largest one.
[[nodiscard]] float ToSingle(double value);

/// A number that must be one: the whole trimmed text, nothing but a number, and finite.
[[nodiscard]] std::optional<double> WholeNumber(std::string_view text);

/// WholeNumber of a line of a file of the store; a RuntimeFault that names the file where the text
/// is none, or where it lies outside the range.
[[nodiscard]] double StoredNumber(std::string_view text, std::string_view path, double low,
                                  double high);

}  // namespace torvane::core
