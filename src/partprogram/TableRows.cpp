#include "partprogram/TableRows.h"

#include <algorithm>
#include <charconv>

namespace torvane::partprogram {

namespace {

constexpr std::size_t SecondHalfCount = 6;
constexpr std::size_t FirstHalfSettings = 6;

int SkipOf(double value) {
  if (value == 1) return 1;
  return value == 2 ? 2 : 0;
}

void ReadEnd(std::span<const double>, TableRow&) {}

void ReadPoint(std::span<const double> v, TableRow& row) {
  row.X = v[1];
  row.Y = v[2];
  row.Z = v[3];
  row.Action = v[4];
  row.Feed = v[5];
  row.Skip = SkipOf(v[6]);
}

void ReadLine(std::span<const double> v, TableRow& row) {
  ReadPoint(v, row);
  row.Blended = row.Action != 0;
  row.Action = 0;
}

void ReadArc(std::span<const double> v, TableRow& row) {
  row.X = v[1];
  row.Y = v[2];
  row.I = v[3];
  row.J = v[4];
  row.Blended = v[5] != 0;
  row.Feed = v[6];
  row.Skip = SkipOf(v[7]);
}

void ReadSettings(std::span<const double> v, TableRow& row) { row.Skip = SkipOf(v[1]); }

void ReadFirstHalf(std::span<const double> v, TableRow& row) {
  std::copy_n(v.begin() + 1, FirstHalfSettings, row.Settings.begin());
}

struct RowForm {
  RowType Type;
  std::size_t Count;  ///< values, the type included
  void (*Read)(std::span<const double>, TableRow&);
};

constexpr RowForm RowForms[] = {
    {RowType::Point, 7, ReadPoint},       {RowType::Line, 7, ReadLine},
    {RowType::ArcNegative, 8, ReadArc},   {RowType::ArcPositive, 8, ReadArc},
    {RowType::Settings, 2, ReadSettings}, {RowType::SettingsPair, 7, ReadFirstHalf},
    {RowType::Other, 7, ReadPoint},       {RowType::End, 1, ReadEnd},
};

}  // namespace

std::span<const double> ReadTableLine(std::string_view line,
                                      std::array<double, LongestRow>& values) {
  constexpr std::string_view Head = "TABLE(";
  if (!line.starts_with(Head) || !line.ends_with(')')) return {};
  const char* at = line.data() + Head.size();
  const char* const end = line.data() + line.size() - 1;
  int index = 0;
  const auto head = std::from_chars(at, end, index);
  if (head.ec != std::errc()) return {};
  std::size_t count = 0;
  for (at = head.ptr; at != end && *at == ',' && count < LongestRow; ++count) {
    const auto value = std::from_chars(at + 1, end, values[count]);
    if (value.ec != std::errc()) return {};
    at = value.ptr;
  }
  return at == end ? std::span<const double>(values).first(count) : std::span<const double>();
}

std::optional<TableRow> ReadRow(std::span<const double> values) {
  if (values.empty()) return std::nullopt;
  for (const auto& form : RowForms) {
    if (values[0] != static_cast<double>(form.Type) || values.size() != form.Count) continue;
    TableRow row;
    row.Type = form.Type;
    form.Read(values, row);
    return row;
  }
  return std::nullopt;
}

bool ReadSecondHalf(std::span<const double> values, TableRow& row) {
  if (values.size() != SecondHalfCount) return false;
  std::copy_n(values.begin(), SettingCount - FirstHalfSettings,
              row.Settings.begin() + FirstHalfSettings);
  row.Skip = SkipOf(values[SecondHalfCount - 1]);
  return true;
}

}  // namespace torvane::partprogram
