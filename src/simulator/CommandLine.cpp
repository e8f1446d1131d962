#include "simulator/CommandLine.h"

#include "core/General.h"
#include "simulator/Expressions.h"
#include "simulator/Statements.h"

namespace torvane::simulator {

namespace {

constexpr std::string_view Prompt = ">>";
constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view QueryMark = "? ";
constexpr int ValuePlaces = 4;  // the controller prints at most four decimals

}  // namespace

void CommandLine::Receive(std::string_view bytes,
                          const std::function<void(const ReceivedLine&)>& whole) {
  for (const char c : bytes) {
    if (c == '\r') {
      whole({line_, tooLong_});
      line_.clear();
      tooLong_ = false;
    } else if (static_cast<unsigned char>(c) < ' ') {
      continue;
    } else if (line_.size() < LongestLine) {
      line_ += c;
    } else {
      tooLong_ = true;
    }
  }
}

std::string_view CommandLine::Answer(const ReceivedLine& line) {
  answer_.clear();
  if (!line.Text.empty() || line.TooLong) {
    answer_.append(line.Text).append(LineEnd);
    const std::string_view text = core::Trim(line.Text);
    bool good = !line.TooLong;
    if (good && line.Text.starts_with(QueryMark)) {
      good = Query(line.Text.substr(QueryMark.size()));
    } else if (good && !text.empty()) {
      good = CarryOut(text, memory_);
    }
    if (!good) answer_.append("%").append(LineEnd);
  }
  answer_.append(Prompt);
  return answer_;
}

std::string_view CommandLine::Refuse(const ReceivedLine& line) {
  answer_.assign(line.Text).append(LineEnd).append("%").append(LineEnd).append(Prompt);
  return answer_;
}

bool CommandLine::Query(std::string_view expression) {
  const auto value = Evaluate(expression, memory_);
  if (!value) return false;
  core::AppendNumber(answer_, core::RoundPlaces(*value, ValuePlaces), -1);
  answer_.append(LineEnd);
  return true;
}

}  // namespace torvane::simulator
