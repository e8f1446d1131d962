#include "simulator/ReplayTrace.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/General.h"
#include "link/Variables.h"

namespace torvane::simulator {

namespace {

constexpr std::string_view TitleMark = "*** ";
constexpr std::string_view TitleEnd = " ***";
constexpr std::string_view QueryLabel = "Query   :";
constexpr std::string_view ReplyLabel = "Response:";
constexpr std::string_view StatusLabel = "Status  :";
constexpr std::string_view Prompt = ">>";
constexpr std::string_view ParametersTag = "DownParameters";
constexpr std::string_view DownloadTag = "Download";
constexpr std::string_view ScaleTag = "GetRspnsSngl";
constexpr std::string_view ScaleQuery = "? ";  // and the divisor, which only a start asks for

/// Goes through a text line by line.
class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : text_(text) { Measure(); }

  [[nodiscard]] bool AtEnd() const { return at_ >= text_.size(); }
  [[nodiscard]] std::size_t At() const { return at_; }
  [[nodiscard]] std::size_t Number() const { return number_; }
  /// Without its end.
  [[nodiscard]] std::string_view Line() const {
    std::string_view line = text_.substr(at_, end_ - at_);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }
  /// Ended by a line feed alone.
  [[nodiscard]] bool LineFeedOnly() const {
    return end_ < text_.size() && (end_ == at_ || text_[end_ - 1] != '\r');
  }
  void Next() {
    at_ = std::min(end_ + 1, text_.size());
    ++number_;
    Measure();
  }

 private:
  void Measure() { end_ = std::min(text_.find('\n', at_), text_.size()); }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::size_t number_ = 1;
};

/// The tag of a title; nothing for any other line. A record that was cut short may stand before the
/// title in its line: what is appended next goes on there.
std::optional<std::string_view> TagIn(std::string_view line) {
  if (!line.ends_with(TitleEnd)) return std::nullopt;
  line.remove_suffix(TitleEnd.size());
  const auto mark = line.rfind(TitleMark);
  if (mark == std::string_view::npos) return std::nullopt;
  return line.substr(mark + TitleMark.size());
}

/// The first two lines of a record.
bool AtRecord(LineCursor cursor) {
  if (!TagIn(cursor.Line())) return false;
  cursor.Next();
  return cursor.Line().starts_with(QueryLabel);
}

std::string_view After(std::string_view line, std::string_view label) {
  return core::Trim(line.substr(label.size()));
}

/// A status line that ends a record: its value is one of the two, and an empty line or the end of
/// the file follows. The reply may hold anything.
std::optional<bool> StatusAt(LineCursor cursor) {
  if (!cursor.Line().starts_with(StatusLabel)) return std::nullopt;
  const std::string_view value = After(cursor.Line(), StatusLabel);
  if (value != "-1" && value != "0") return std::nullopt;
  cursor.Next();
  if (!cursor.AtEnd() && !cursor.Line().empty()) return std::nullopt;
  return value == "-1";
}

/// Reads the record at the cursor, which it moves past it. What is wrong with it otherwise; the
/// cursor is then at the line that does not belong to it any more.
std::string_view ReadRecord(std::string_view text, LineCursor& cursor, TraceExchange& record) {
  record.LineFeeds = cursor.LineFeedOnly();
  record.Tag = TagIn(cursor.Line()).value_or("");
  cursor.Next();
  record.Query = After(cursor.Line(), QueryLabel);
  cursor.Next();
  if (!cursor.Line().starts_with(ReplyLabel)) return "a record without a response";
  const std::size_t reply = cursor.At() + ReplyLabel.size();
  for (cursor.Next(); !cursor.AtEnd() && !AtRecord(cursor); cursor.Next()) {
    const auto status = StatusAt(cursor);
    if (!status) continue;
    record.Good = *status;
    record.Reply = core::Trim(text.substr(reply, cursor.At() - reply));
    cursor.Next();
    if (!cursor.AtEnd()) cursor.Next();
    return {};
  }
  return "a record that was cut short";
}

}  // namespace

bool TraceExchange::Whole() const { return Reply.find(Prompt) != std::string_view::npos; }

std::string TraceExchange::Bytes() const {
  std::string bytes;
  bytes.reserve(Reply.size() + 8);
  for (const char character : Reply) {
    if (character == '\n' && LineFeeds && !bytes.ends_with('\r')) bytes += '\r';
    bytes += character;
  }
  // A success had its prompt, whatever became of the record since.
  if (Good && !Whole()) bytes.append("\r\n").append(Prompt);
  return bytes;
}

ReplayTrace::ReplayTrace(std::vector<TraceFile> files) : files_(std::move(files)) {
  for (std::size_t file = 0; file < files_.size(); ++file) ReadFile(file);
  FindSessions();
}

void ReplayTrace::ReadFile(std::size_t file) {
  constexpr std::size_t ShortestRecord = 80;  // bytes, near enough to reserve by
  const std::string_view text = files_[file].Text;
  exchanges_.reserve(exchanges_.size() + text.size() / ShortestRecord);
  bool lost = false;
  for (LineCursor cursor(text); !cursor.AtEnd();) {
    const TracePlace place{file, cursor.Number()};
    if (!AtRecord(cursor)) {
      if (!lost && !cursor.Line().empty()) remarks_.push_back({place, "no record begins here"});
      lost = lost || !cursor.Line().empty();
      cursor.Next();
      continue;
    }
    lost = false;
    TraceExchange record;
    record.Place = place;
    const std::string_view wrong = ReadRecord(text, cursor, record);
    if (!wrong.empty()) {
      remarks_.push_back({place, std::string(wrong)});
      lost = true;
    } else if (record.Tag == ParametersTag) {
      parameterEnds_.push_back(exchanges_.size());  // the file's name: nothing was sent
    } else {
      exchanges_.push_back(record);
    }
  }
}

/// A start is known by the position divisor, which nothing else asks for. The parameters that were
/// sent before it belong to it.
void ReplayTrace::FindSessions() {
  if (exchanges_.empty()) return;
  const std::string divisor = std::string(ScaleQuery).append(link::Variable::PositionDivisor);
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < exchanges_.size(); ++i) {
    if (exchanges_[i].Tag == ScaleTag && exchanges_[i].Query == divisor) {
      starts.push_back(StartBefore(i));
    }
  }
  if (starts.empty() || starts.front() > 0) sessions_.push_back({0, 0, false});
  for (const std::size_t start : starts) sessions_.push_back({start, 0, true});
  for (std::size_t i = 0; i < sessions_.size(); ++i) {
    sessions_[i].End = i + 1 < sessions_.size() ? sessions_[i + 1].First : exchanges_.size();
  }
}

bool ReplayTrace::ParametersBefore(std::size_t exchange) const {
  return std::binary_search(parameterEnds_.begin(), parameterEnds_.end(), exchange);
}

/// The commands right before the end of a parameter download are its lines. Those of a console that
/// was killed there are told from them by the parameters that the session before began with.
std::size_t ReplayTrace::StartBefore(std::size_t scale) const {
  if (!ParametersBefore(scale)) return scale;
  std::size_t first = scale;
  while (first > 0 && exchanges_[first - 1].Tag == DownloadTag) --first;
  for (const std::size_t end : parameterEnds_) {
    std::size_t begin = end;
    while (begin > 0 && exchanges_[begin - 1].Tag == DownloadTag) --begin;
    const std::size_t count = end - begin;
    if (end >= scale || count >= scale - first) continue;
    const auto same = [](const TraceExchange& a, const TraceExchange& b) {
      return a.Query == b.Query;
    };
    const auto* const all = exchanges_.data();
    if (std::equal(all + begin, all + end, all + (scale - count), same)) return scale - count;
  }
  return first;
}

std::string ReplayTrace::PlaceText(const TracePlace& place) const {
  return files_[place.File].Name + ", line " + std::to_string(place.Line);
}

}  // namespace torvane::simulator
