#include "GoldenCompare.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string_view>

namespace torvane::tests {
namespace {

enum class Kind { Word, Long, Single, Text };

/// One field of the record of 516 bytes, as the documentation of the file lists it.
struct FieldRow {
  const char* Name;
  std::size_t Offset;
  Kind Form;
  std::size_t Count;  ///< numbers in it, or bytes of a text
};

constexpr std::size_t RecordSize = 516;
constexpr std::size_t LineSize = 80;

constexpr std::array RecordFields = {
    FieldRow{"Code", 0, Kind::Word, 1},
    FieldRow{"Name", 2, Kind::Text, 18},
    FieldRow{"Material", 20, Kind::Text, 72},
    FieldRow{"BlockNumber", 92, Kind::Word, 1},
    FieldRow{"SubNumber", 94, Kind::Word, 1},
    FieldRow{"SubBlock", 96, Kind::Word, 1},
    FieldRow{"RecordIndex", 98, Kind::Word, 1},
    FieldRow{"TableLine", 100, Kind::Word, 1},
    FieldRow{"SkipLevel", 102, Kind::Word, 1},
    FieldRow{"StartPoint", 104, Kind::Single, 3},
    FieldRow{"MidPoint", 116, Kind::Single, 3},
    FieldRow{"EndPoint", 128, Kind::Single, 3},
    FieldRow{"CentrePoint", 140, Kind::Single, 3},
    FieldRow{"ProfileStart", 152, Kind::Single, 3},
    FieldRow{"ProfileEnd", 164, Kind::Single, 3},
    FieldRow{"Values", 176, Kind::Single, 18},
    FieldRow{"Flags", 248, Kind::Word, 12},
    FieldRow{"KerfSide", 272, Kind::Word, 1},
    FieldRow{"Reserved", 274, Kind::Word, 1},
    FieldRow{"BoxInner", 276, Kind::Single, 4},
    FieldRow{"BoxOuter", 292, Kind::Single, 4},
    FieldRow{"BeamState1.On", 308, Kind::Word, 1},
    FieldRow{"BeamState1.Kind", 310, Kind::Text, 1},
    FieldRow{"BeamState1.ToolName", 311, Kind::Text, 18},
    FieldRow{"BeamState1.Floats", 329, Kind::Single, 4},
    FieldRow{"BeamState1.StationNumber", 345, Kind::Word, 1},
    FieldRow{"BeamState1.StationType", 347, Kind::Word, 1},
    FieldRow{"BeamState1.Words", 349, Kind::Long, 3},
    FieldRow{"BeamState2.On", 361, Kind::Word, 1},
    FieldRow{"BeamState2.Kind", 363, Kind::Text, 1},
    FieldRow{"BeamState2.ToolName", 364, Kind::Text, 18},
    FieldRow{"BeamState2.Floats", 382, Kind::Single, 4},
    FieldRow{"BeamState2.StationNumber", 398, Kind::Word, 1},
    FieldRow{"BeamState2.StationType", 400, Kind::Word, 1},
    FieldRow{"BeamState2.Words", 402, Kind::Long, 3},
    FieldRow{"Feed", 414, Kind::Single, 1},
    FieldRow{"Settings", 418, Kind::Single, 24},
    FieldRow{"Blended", 514, Kind::Word, 1},
};

constexpr std::size_t SizeOf(Kind kind) {
  switch (kind) {
    case Kind::Word:
      return 2;
    case Kind::Long:
    case Kind::Single:
      return 4;
    case Kind::Text:
      return 1;
  }
  return 1;
}

constexpr bool RowsCoverTheRecord() {
  std::size_t next = 0;
  for (const FieldRow& row : RecordFields) {
    if (row.Offset != next) return false;
    next += row.Count * SizeOf(row.Form);
  }
  return next == RecordSize;
}
static_assert(RowsCoverTheRecord());

template <typename Number>
std::string NumberAt(std::string_view bytes, std::size_t at) {
  Number value{};
  std::memcpy(&value, bytes.data() + at, sizeof value);
  std::ostringstream out;
  out.precision(9);
  out << value;
  return out.str();
}

std::string ValueAt(const FieldRow& row, std::size_t index, std::string_view record) {
  const std::size_t at = row.Offset + index * SizeOf(row.Form);
  switch (row.Form) {
    case Kind::Word:
      return NumberAt<std::int16_t>(record, at);
    case Kind::Long:
      return NumberAt<std::int32_t>(record, at);
    case Kind::Single:
      return NumberAt<float>(record, at);
    case Kind::Text:
      return "\"" + std::string(record.substr(row.Offset, row.Count)) + "\"";
  }
  return "";
}

std::string Sentence(const std::string& where, const std::string& expected,
                     const std::string& actual) {
  return where + " is " + actual + " and should be " + expected;
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::size_t FirstDifferentByte(const std::string& expected, const std::string& actual) {
  const auto [left, right] =
      std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  return static_cast<std::size_t>(left - expected.begin());
}

std::string CountDifference(const char* what, std::size_t size, const std::string& expected,
                            const std::string& actual) {
  return Sentence(std::string("the number of ") + what, std::to_string(expected.size() / size),
                  std::to_string(actual.size() / size));
}

std::string RecordDifference(const std::string& expected, const std::string& actual) {
  const std::size_t at = FirstDifferentByte(expected, actual);
  const std::size_t start = at / RecordSize * RecordSize;
  if (start + RecordSize > std::min(expected.size(), actual.size())) {
    return CountDifference("records", RecordSize, expected, actual);
  }
  const auto* row = std::find_if(RecordFields.rbegin(), RecordFields.rend(),
                                 [&](const auto& field) { return field.Offset <= at - start; })
                        .base() -
                    1;
  const std::size_t index =
      row->Form == Kind::Text ? 0 : (at - start - row->Offset) / SizeOf(row->Form);
  std::string where = "record " + std::to_string(start / RecordSize + 1) + ", " + row->Name;
  if (row->Form != Kind::Text && row->Count > 1) where += "[" + std::to_string(index) + "]";
  return Sentence(where, ValueAt(*row, index, std::string_view(expected).substr(start, RecordSize)),
                  ValueAt(*row, index, std::string_view(actual).substr(start, RecordSize)));
}

std::string FixedLineDifference(const std::string& expected, const std::string& actual) {
  const std::size_t start = FirstDifferentByte(expected, actual) / LineSize * LineSize;
  if (start + LineSize > std::min(expected.size(), actual.size())) {
    return CountDifference("records", LineSize, expected, actual);
  }
  return Sentence("record " + std::to_string(start / LineSize + 1),
                  Quoted(expected.substr(start, LineSize)), Quoted(actual.substr(start, LineSize)));
}

/// From the start of the line to its end, the end shown.
std::string LineAround(const std::string& text, std::size_t start) {
  if (start >= text.size()) return "(the end of the file)";
  std::string line = text.substr(start, text.find('\n', start) - start);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return Quoted(line);
}

std::string TextDifference(const std::string& expected, const std::string& actual) {
  const std::size_t at = FirstDifferentByte(expected, actual);
  const auto before = expected.rfind('\n', at == 0 ? 0 : at - 1);
  const std::size_t start = at == 0 || before == std::string::npos ? 0 : before + 1;
  const auto line = std::count(expected.begin(), expected.begin() + static_cast<long>(start), '\n');
  const std::string left = LineAround(expected, start);
  const std::string right = LineAround(actual, start);
  const std::string where = "line " + std::to_string(line + 1);
  if (left == right) return where + " ends in another way (CR LF, LF or the end of the file)";
  return Sentence(where, left, right);
}

}  // namespace

std::string FirstDifference(const std::string& name, const std::string& expected,
                            const std::string& actual) {
  if (expected == actual) return "";
  const auto dot = name.rfind('.');
  const std::string extension = dot == std::string::npos ? "" : name.substr(dot);
  if (extension == ".drw" || extension == ".krw") return RecordDifference(expected, actual);
  if (extension == ".tbl" || extension == ".rnd") return FixedLineDifference(expected, actual);
  return TextDifference(expected, actual);
}

}  // namespace torvane::tests
