#include "core/ConfigText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {

LineReader::LineReader(std::string_view text, std::string_view path)
    : path_(path), lines_(SplitLines(text)) {}

std::string_view LineReader::Required() {
  if (AtEnd()) {
    throw platform::RuntimeFault(
        std::string(path_), "ends too soon, line " + std::to_string(next_ + 1) + " is missing");
  }
  return lines_[next_++];
}

std::optional<std::string_view> LineReader::Optional() {
  if (AtEnd()) return std::nullopt;
  return lines_[next_++];
}

std::optional<std::string_view> LineReader::Row() {
  const auto line = Optional();
  if (!line || AtEnd()) return std::nullopt;
  const auto row = Trim(*line);
  if (row.empty() || row == EndMarker) return std::nullopt;
  return row;
}

std::optional<std::string_view> FieldReader::Next() {
  if (AtEnd()) return std::nullopt;
  rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
  std::string_view field;
  if (!rest_.empty() && rest_.front() == '"') {
    rest_.remove_prefix(1);
    const auto length = std::min(rest_.find_first_of("\"\r\n"), rest_.size());
    field = rest_.substr(0, length);
    rest_.remove_prefix(length);
  }
  const auto length = std::min(rest_.find_first_of(",\r\n"), rest_.size());
  if (field.data() == nullptr) field = Trim(rest_.substr(0, length));
  rest_.remove_prefix(length);
  SkipDivider();
  return field;
}

void FieldReader::SkipLine() {
  if (lineEnded_) return;
  rest_.remove_prefix(std::min(rest_.find_first_of("\r\n"), rest_.size()));
  SkipDivider();
}

void FieldReader::SkipDivider() {
  const std::size_t length = rest_.starts_with("\r\n") ? 2 : 1;
  lineEnded_ = !rest_.starts_with(',');
  rest_.remove_prefix(std::min(length, rest_.size()));
}

bool IsYes(std::string_view text) { return text.find_first_of("Yy") != std::string_view::npos; }

float ToSingle(double value) {
  constexpr double Largest = std::numeric_limits<float>::max();
  if (std::isnan(value)) return 0;
  return static_cast<float>(std::clamp(value, -Largest, Largest));
}

std::optional<double> WholeNumber(std::string_view text) {
  std::string_view number = Trim(text);
  if (number.starts_with('+')) number.remove_prefix(1);
  double value = 0;
  const char* end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, value);
  const bool whole = error == std::errc() && stop == end && !number.empty();
  if (!whole || !std::isfinite(value)) return std::nullopt;
  return value;
}

double StoredNumber(std::string_view text, std::string_view path, double low, double high) {
  const auto value = WholeNumber(text);
  if (!value) {
    throw platform::RuntimeFault(std::string(path),
                                 "\"" + std::string(Trim(text)) + "\" stands in place of a number");
  }
  if (*value < low || *value > high) {
    throw platform::RuntimeFault(std::string(path),
                                 "the number " + std::string(Trim(text)) + " is out of range");
  }
  return *value;
}

}  // namespace torvane::core
