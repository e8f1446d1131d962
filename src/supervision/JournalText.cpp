#include "supervision/JournalText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/General.h"
#include "supervision/CsvFields.h"

namespace torvane::supervision {

namespace {

using platform::LocalTime;

constexpr std::string_view BetweenStops = "; ";
constexpr int DigestDigits = 64;

constexpr std::array<std::pair<RunBegin, std::string_view>, 3> BeginWords = {{
    {RunBegin::Start, "start"},
    {RunBegin::Restart, "restart"},
    {RunBegin::Found, "found running"},
}};
constexpr std::array<std::pair<RunEnd, std::string_view>, 4> EndWords = {{
    {RunEnd::End, "end"},
    {RunEnd::Stop, "stop"},
    {RunEnd::LinkLost, "link lost"},
    {RunEnd::ConsoleEnded, "console ended"},
}};

template <typename Value, std::size_t Count>
std::string_view WordOf(const std::array<std::pair<Value, std::string_view>, Count>& words,
                        Value value) {
  const auto* const found =
      std::find_if(words.begin(), words.end(), [&](const auto& row) { return row.first == value; });
  return found == words.end() ? std::string_view{} : found->second;
}

template <typename Value, std::size_t Count>
bool ReadWord(const std::array<std::pair<Value, std::string_view>, Count>& words,
              std::string_view word, Value& value) {
  const auto* const found =
      std::find_if(words.begin(), words.end(), [&](const auto& row) { return row.second == word; });
  if (found == words.end()) return false;
  value = found->first;
  return true;
}

template <typename Number>
bool ReadNumber(std::string_view text, Number& value) {
  const auto* const end = text.data() + text.size();
  const auto [stopped, fault] = std::from_chars(text.data(), end, value);
  if (fault != std::errc() || stopped != end || text.empty()) return false;
  if constexpr (std::is_floating_point_v<Number>) return std::isfinite(value);
  return true;
}

/// A number that cannot be below 0.
bool ReadCount(std::string_view text, std::int32_t& value) {
  return ReadNumber(text, value) && value >= 0;
}

/// A number within what a line can hold.
template <typename Number>
bool ReadFigure(std::string_view text, Number& value) {
  return ReadNumber(text, value) && value >= 0 && value <= MostOfAFigure;
}

// ---- times ----

bool ReadTime(std::string_view text, LocalTime& time) {
  constexpr std::string_view Form = "0000-00-00 00:00:00";
  if (text.size() != Form.size()) return false;
  for (std::size_t i = 0; i < Form.size(); ++i) {
    if (Form[i] == '0' ? text[i] < '0' || text[i] > '9' : text[i] != Form[i]) return false;
  }
  const std::array<std::pair<int*, std::size_t>, 6> parts = {{{&time.Year, 0},
                                                              {&time.Month, 5},
                                                              {&time.Day, 8},
                                                              {&time.Hour, 11},
                                                              {&time.Minute, 14},
                                                              {&time.Second, 17}}};
  for (const auto& [part, at] : parts) {
    if (!ReadNumber(text.substr(at, at == 0 ? 4 : 2), *part)) return false;
  }
  return time.Month >= 1 && time.Month <= 12 && time.Day >= 1 && time.Day <= 31 &&
         time.Hour <= 23 && time.Minute <= 59 && time.Second <= 60;
}

// ---- stops: "2026-03-04 05:06:07 block 12 record 40 X123.40 Y55.00 feed hold" ----

void AddPlace(std::string& text, const RunPlace& place) {
  text.append(" block ").append(core::LongText(place.Block));
  text.append(" record ").append(core::LongText(place.Record)).append(" X");
  core::AppendNumber(text, place.X, 2);
  text.append(" Y");
  core::AppendNumber(text, place.Y, 2);
}

std::string StopsText(const std::vector<RunStop>& stops) {
  std::string text;
  for (const RunStop& stop : stops) {
    if (!text.empty()) text.append(BetweenStops);
    text.append(TimeText(stop.At));
    AddPlace(text, stop.Place);
    text.append(" ");
    const std::size_t cause = text.size();
    text.append(stop.Cause);
    std::replace(text.begin() + static_cast<std::ptrdiff_t>(cause), text.end(), ';', ',');
  }
  return text;
}

/// The word up to the next blank, which goes with it.
std::string_view TakeWord(std::string_view& rest) {
  const std::string_view word = rest.substr(0, rest.find(' '));
  rest.remove_prefix(std::min(rest.size(), word.size() + 1));
  return word;
}

/// A number after its letter.
bool ReadCoordinate(std::string_view word, char letter, double& value) {
  return word.starts_with(letter) && ReadNumber(word.substr(1), value);
}

bool ReadStop(std::string_view text, RunStop& stop) {
  constexpr std::size_t TimeSize = 19;
  if (text.size() <= TimeSize || !ReadTime(text.substr(0, TimeSize), stop.At)) return false;
  text.remove_prefix(TimeSize + 1);
  RunPlace& place = stop.Place;
  if (TakeWord(text) != "block" || !ReadNumber(TakeWord(text), place.Block)) return false;
  if (TakeWord(text) != "record" || !ReadNumber(TakeWord(text), place.Record)) return false;
  if (!ReadCoordinate(TakeWord(text), 'X', place.X)) return false;
  if (!ReadCoordinate(TakeWord(text), 'Y', place.Y)) return false;
  stop.Cause = text;
  return !text.empty();
}

bool ReadStops(std::string_view text, std::vector<RunStop>& stops) {
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(BetweenStops));
    RunStop stop;
    if (!ReadStop(one, stop)) return false;
    stops.push_back(std::move(stop));
    text.remove_prefix(std::min(text.size(), one.size() + BetweenStops.size()));
  }
  return true;
}

// ---- the columns ----

/// How a column is written, and read: false where the field is no such value.
struct Column {
  std::string_view Name;
  void (*Write)(CsvLine& line, const RunLine& run);
  bool (*Read)(std::string_view field, RunLine& run);
};

bool IsDigest(std::string_view text) {
  return text.empty() || (text.size() == DigestDigits &&
                          text.find_first_not_of("0123456789abcdef") == std::string_view::npos);
}

/// The order of the file.
constexpr std::array<Column, 20> Columns = {{
    {"Run", [](CsvLine& line, const RunLine& run) { line.Number(run.Number); },
     [](std::string_view field, RunLine& run) {
       return ReadNumber(field, run.Number) && run.Number > 0 && run.Number <= MostRuns;
     }},
    {"Start", [](CsvLine& line, const RunLine& run) { line.Field(TimeText(run.Start)); },
     [](std::string_view field, RunLine& run) { return ReadTime(field, run.Start); }},
    {"End", [](CsvLine& line, const RunLine& run) { line.Field(TimeText(run.End)); },
     [](std::string_view field, RunLine& run) { return ReadTime(field, run.End); }},
    {"Begin", [](CsvLine& line, const RunLine& run) { line.Field(BeginWord(run.Begin)); },
     [](std::string_view field, RunLine& run) { return ReadWord(BeginWords, field, run.Begin); }},
    {"From block", [](CsvLine& line, const RunLine& run) { line.Number(run.FromBlock); },
     [](std::string_view field, RunLine& run) { return ReadCount(field, run.FromBlock); }},
    {"Directory", [](CsvLine& line, const RunLine& run) { line.Text(run.Directory); },
     [](std::string_view field, RunLine& run) {
       run.Directory = TextOfField(field);
       return true;
     }},
    {"Program", [](CsvLine& line, const RunLine& run) { line.Text(run.Program); },
     [](std::string_view field, RunLine& run) {
       run.Program = TextOfField(field);
       return true;
     }},
    {"SHA-256", [](CsvLine& line, const RunLine& run) { line.Field(run.Digest); },
     [](std::string_view field, RunLine& run) {
       run.Digest = field;
       return IsDigest(field);
     }},
    {"Slot", [](CsvLine& line, const RunLine& run) { line.Number(run.Slot); },
     [](std::string_view field, RunLine& run) { return ReadCount(field, run.Slot); }},
    {"Material", [](CsvLine& line, const RunLine& run) { line.Text(run.Material); },
     [](std::string_view field, RunLine& run) {
       run.Material = TextOfField(field);
       return true;
     }},
    {"Sheets", [](CsvLine& line, const RunLine& run) { line.Number(run.Sheets); },
     [](std::string_view field, RunLine& run) { return ReadFigure(field, run.Sheets); }},
    {"Seconds", [](CsvLine& line, const RunLine& run) { line.Number(run.Seconds, 2); },
     [](std::string_view field, RunLine& run) { return ReadFigure(field, run.Seconds); }},
    {"Length mm", [](CsvLine& line, const RunLine& run) { line.Number(run.Length, 1); },
     [](std::string_view field, RunLine& run) { return ReadFigure(field, run.Length); }},
    {"Ended", [](CsvLine& line, const RunLine& run) { line.Field(EndWord(run.Ended)); },
     [](std::string_view field, RunLine& run) { return ReadWord(EndWords, field, run.Ended); }},
    {"Block", [](CsvLine& line, const RunLine& run) { line.Number(run.Last.Block); },
     [](std::string_view field, RunLine& run) { return ReadCount(field, run.Last.Block); }},
    {"Record", [](CsvLine& line, const RunLine& run) { line.Number(run.Last.Record); },
     [](std::string_view field, RunLine& run) { return ReadCount(field, run.Last.Record); }},
    {"X", [](CsvLine& line, const RunLine& run) { line.Number(run.Last.X, 2); },
     [](std::string_view field, RunLine& run) { return ReadNumber(field, run.Last.X); }},
    {"Y", [](CsvLine& line, const RunLine& run) { line.Number(run.Last.Y, 2); },
     [](std::string_view field, RunLine& run) { return ReadNumber(field, run.Last.Y); }},
    {"Stops", [](CsvLine& line, const RunLine& run) { line.Number(run.StopCount); },
     [](std::string_view field, RunLine& run) { return ReadCount(field, run.StopCount); }},
    {"Stop list", [](CsvLine& line, const RunLine& run) { line.Text(StopsText(run.Stops)); },
     [](std::string_view field, RunLine& run) { return ReadStops(field, run.Stops); }},
}};

std::string_view WithoutCr(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::string_view BeginWord(RunBegin begin) { return WordOf(BeginWords, begin); }
std::string_view EndWord(RunEnd ended) { return WordOf(EndWords, ended); }

std::string TimeText(const LocalTime& time) {
  const auto two = [](int value) { return core::PadInteger(value, 2); };
  std::string text = core::PadInteger(time.Year, 4);
  text.append("-").append(two(time.Month)).append("-").append(two(time.Day));
  text.append(" ").append(two(time.Hour));
  text.append(":").append(two(time.Minute)).append(":").append(two(time.Second));
  return text;
}

const std::string& JournalHeader() {
  static const std::string header = [] {
    CsvLine line;
    for (const Column& column : Columns) line.Field(column.Name);
    return line.Ended();
  }();
  return header;
}

bool IsJournalHeader(std::string_view line) {
  const auto fields = SplitFields(WithoutCr(line));
  return fields && std::equal(fields->begin(), fields->end(), Columns.begin(), Columns.end(),
                              [](const std::string& field, const Column& column) {
                                return field == column.Name;
                              });
}

std::string JournalText(const RunLine& run) {
  CsvLine line;
  for (const Column& column : Columns) column.Write(line, run);
  return line.Ended();
}

std::optional<RunLine> ReadJournalLine(std::string_view line) {
  const auto fields = SplitFields(WithoutCr(line));
  if (!fields || fields->size() != Columns.size()) return std::nullopt;
  RunLine run;
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    if (!Columns[i].Read((*fields)[i], run)) return std::nullopt;
  }
  const auto listed = std::min(static_cast<std::size_t>(run.StopCount), MostStops);
  if (run.Stops.size() != listed) return std::nullopt;
  return run;
}

}  // namespace torvane::supervision
