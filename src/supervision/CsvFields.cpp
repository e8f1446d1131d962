#include "supervision/CsvFields.h"

#include <algorithm>
#include <utility>

#include "core/General.h"

namespace torvane::supervision {

namespace {

constexpr char Quote = '"';
constexpr char Apostrophe = '\'';
constexpr unsigned char FirstPrinting = ' ';
constexpr unsigned char Delete = 0x7F;

/// What a spreadsheet reads as the begin of a formula, and the apostrophe, so that taking it away
/// again leaves what was there.
constexpr std::string_view Guarded = "=+-@'";

bool NeedsQuotes(std::string_view field) {
  return field.find_first_of(",\"") != std::string_view::npos || field.starts_with(' ') ||
         field.ends_with(' ');
}

/// A quoted field from its first quote on; false where it does not end as one.
bool TakeQuoted(std::string_view& rest, std::string& field) {
  rest.remove_prefix(1);
  while (true) {
    const auto quote = rest.find(Quote);
    if (quote == std::string_view::npos) return false;
    field.append(rest.substr(0, quote));
    rest.remove_prefix(quote + 1);
    if (!rest.starts_with(Quote)) return rest.empty() || rest.starts_with(',');
    field += Quote;
    rest.remove_prefix(1);
  }
}

}  // namespace

void CsvLine::Field(std::string_view field) {
  if (std::exchange(begun_, true)) line_ += ',';
  if (!NeedsQuotes(field)) {
    line_ += field;
    return;
  }
  line_ += Quote;
  for (const char byte : field) {
    if (byte == Quote) line_ += Quote;
    line_ += byte;
  }
  line_ += Quote;
}

void CsvLine::Text(std::string_view text) {
  std::string plain;
  plain.reserve(text.size() + 1);
  if (!text.empty() && Guarded.find(text.front()) != std::string_view::npos) plain += Apostrophe;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    plain += code < FirstPrinting || code == Delete ? '?' : byte;
  }
  Field(plain);
}

void CsvLine::Number(std::int64_t value) { Field(std::to_string(value)); }

void CsvLine::Number(double value, int places) { Field(core::NumberText(value, places)); }

std::optional<std::vector<std::string>> SplitFields(std::string_view line) {
  std::vector<std::string> fields;
  fields.reserve(static_cast<std::size_t>(std::count(line.begin(), line.end(), ',')) + 1);
  while (true) {
    std::string field;
    if (line.starts_with(Quote)) {
      if (!TakeQuoted(line, field)) return std::nullopt;
    } else {
      field = line.substr(0, line.find(','));
      if (field.find(Quote) != std::string::npos) return std::nullopt;
      line.remove_prefix(field.size());
    }
    fields.push_back(std::move(field));
    if (line.empty()) return fields;
    line.remove_prefix(1);
  }
}

std::string TextOfField(std::string_view field) {
  const bool guarded = field.size() >= 2 && field.front() == Apostrophe &&
                       Guarded.find(field[1]) != std::string_view::npos;
  return std::string(guarded ? field.substr(1) : field);
}

}  // namespace torvane::supervision
