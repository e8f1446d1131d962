#include "tools/JournalReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "core/General.h"
#include "platform/NativePaths.h"
#include "supervision/CsvFields.h"
#include "tools/JsonValues.h"

namespace torvane::tools {

namespace {

constexpr double MmPerMetre = 1000;

struct TextColumn {
  std::string Name;
  bool Right = true;  ///< figures
  std::vector<std::string> Cells;
};

/// Hours, minutes and seconds, "12:34:56"; of more than any journal can sum up to, that much.
std::string Duration(double seconds) {
  constexpr std::int64_t Minute = 60;
  constexpr double Most = 1e15;
  const auto whole =
      static_cast<std::int64_t>(core::RoundPlaces(std::min(std::max(0.0, seconds), Most), 0));
  const auto two = [](std::int64_t value) {
    return core::PadInteger(static_cast<std::int32_t>(value), 2);
  };
  return std::to_string(whole / Minute / Minute) + ":" + two(whole / Minute % Minute) + ":" +
         two(whole % Minute);
}

std::vector<TextColumn> TextColumns(const JournalReport& report) {
  std::vector<TextColumn> columns;
  const auto add = [&](const char* name, bool right, auto cell, std::string total) {
    TextColumn column{name, right, {}};
    for (const JournalSum& sum : report.Sums) column.Cells.push_back(cell(sum));
    column.Cells.push_back(std::move(total));
    columns.push_back(std::move(column));
  };
  const auto figure = [&](const char* name, auto cell) {
    add(name, true, cell, cell(report.Total));
  };
  const auto text = [](const std::string& name) { return platform::ToNativeName(name); };
  if (report.Keys.Day) {
    add(
        "Day", false, [](const JournalSum& sum) { return sum.Day; }, "Total");
  }
  if (report.Keys.Program) {
    add(
        "Directory", false, [&](const JournalSum& sum) { return text(sum.Directory); },
        report.Keys.Day ? "" : "Total");
    add(
        "Program", false, [&](const JournalSum& sum) { return text(sum.Program); }, "");
  }
  figure("Runs", [](const JournalSum& sum) { return std::to_string(sum.Runs); });
  figure("Ended", [](const JournalSum& sum) { return std::to_string(sum.Ended); });
  figure("Stops", [](const JournalSum& sum) { return std::to_string(sum.Stops); });
  figure("Sheets", [](const JournalSum& sum) { return std::to_string(sum.Sheets); });
  figure("Time", [](const JournalSum& sum) { return Duration(sum.Seconds); });
  figure("Cut m",
         [](const JournalSum& sum) { return core::NumberText(sum.Length / MmPerMetre, 2); });
  return columns;
}

/// Characters of UTF-8 text.
std::size_t Width(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  }));
}

void AppendRow(std::string& out, const std::vector<TextColumn>& columns,
               const std::vector<std::size_t>& widths, std::size_t row) {
  std::string line;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const TextColumn& column = columns[i];
    const std::string& cell = row == 0 ? column.Name : column.Cells[row - 1];
    const std::string padding(widths[i] - Width(cell), ' ');
    if (i > 0) line.append("  ");
    line.append(column.Right ? padding : "").append(cell).append(column.Right ? "" : padding);
  }
  line.resize(line.find_last_not_of(' ') + 1);
  out.append(line).append("\n");
}

QJsonObject JsonSum(const JournalSum& sum, SumKeys keys) {
  QJsonObject object;
  if (keys.Day) object["day"] = JsonText(sum.Day);
  if (keys.Program) {
    object["directory"] = JsonText(sum.Directory);
    object["program"] = JsonText(sum.Program);
  }
  object["runs"] = sum.Runs;
  object["ended"] = sum.Ended;
  object["stops"] = static_cast<qint64>(sum.Stops);
  object["sheets"] = static_cast<qint64>(sum.Sheets);
  object["seconds"] = core::RoundPlaces(sum.Seconds, 2);
  object["cutMm"] = core::RoundPlaces(sum.Length, 1);
  return object;
}

}  // namespace

std::string JournalTextReport(const JournalReport& report) {
  const std::vector<TextColumn> columns = TextColumns(report);
  std::vector<std::size_t> widths;
  widths.reserve(columns.size());
  for (const TextColumn& column : columns) {
    std::size_t width = Width(column.Name);
    for (const std::string& cell : column.Cells) width = std::max(width, Width(cell));
    widths.push_back(width);
  }
  std::string out;
  for (std::size_t row = 0; row <= report.Sums.size() + 1; ++row) {
    AppendRow(out, columns, widths, row);
  }
  return out;
}

std::string JournalCsvReport(const JournalReport& report) {
  supervision::CsvLine header;
  if (report.Keys.Day) header.Field("Day");
  if (report.Keys.Program) {
    header.Field("Directory");
    header.Field("Program");
  }
  for (const char* name : {"Runs", "Ended", "Stops", "Sheets", "Seconds", "Length mm"}) {
    header.Field(name);
  }
  std::string out = header.Ended();
  for (const JournalSum& sum : report.Sums) {
    supervision::CsvLine line;
    if (report.Keys.Day) line.Field(sum.Day);
    if (report.Keys.Program) {
      line.Text(sum.Directory);
      line.Text(sum.Program);
    }
    line.Number(std::int64_t{sum.Runs});
    line.Number(std::int64_t{sum.Ended});
    line.Number(sum.Stops);
    line.Number(sum.Sheets);
    line.Number(sum.Seconds, 2);
    line.Number(sum.Length, 1);
    out.append(line.Ended());
  }
  return out;
}

std::string JournalJsonReport(const JournalReport& report) {
  QJsonArray sums;
  for (const JournalSum& sum : report.Sums) sums.append(JsonSum(sum, report.Keys));
  QJsonArray damaged;
  for (const int line : report.Damaged) damaged.append(line);
  const QJsonObject object{
      {"sums", sums}, {"total", JsonSum(report.Total, {false, false})}, {"damagedLines", damaged}};
  return QJsonDocument(object).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace torvane::tools
