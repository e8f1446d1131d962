#include "simulator/ReplayController.h"

#include <algorithm>
#include <utility>

#include "core/General.h"
#include "link/Variables.h"

namespace torvane::simulator {

namespace {

constexpr std::string_view QueryMark = "? ";
constexpr std::string_view Prompt = ">>";
constexpr std::string_view TableRow = "TABLE(";
/// Far longer than any line of the console.
constexpr std::size_t LongestLine = 64 * 1024;
/// How far a line is looked for that comes too early: ten minutes of the poll.
constexpr std::size_t FarthestAhead = 100'000;
/// The counters, which are read once more when the console ends.
constexpr std::size_t LastReadings = 4;

bool IsQuery(std::string_view line) { return line.starts_with(QueryMark); }

bool Asks(std::string_view line, std::string_view variable) {
  return IsQuery(line) && line.substr(QueryMark.size()) == variable;
}

}  // namespace

void ReplayController::Begin(std::size_t session) {
  session_ = trace_.Sessions().at(session);
  count_ = {.Recorded = session_.End - session_.First};
  at_ = session_.First;
  leadIn_ = !session_.HasStart;
  played_.clear();
  last_.reset();
  answers_.clear();
  pending_.reset();
  line_.clear();
  output_.clear();
}

void ReplayController::EndSession() { JudgePending(false); }

void ReplayController::Advance(double seconds) { now_ += std::max(seconds, 0.0); }

void ReplayController::Receive(std::string_view bytes) {
  for (const char character : bytes) {
    if (character == '\r') {
      const std::string line = std::exchange(line_, {});
      Obey(core::Trim(line));
    } else if (line_.size() < LongestLine) {
      line_ += character;
    }
  }
}

void ReplayController::Obey(std::string_view line) {
  if (line.empty()) {
    if (!LineDead()) Send(std::string(Prompt));
    return;
  }
  if (LeadIn(line)) return;
  if (at_ < session_.End && At(at_).Query == line) {
    JudgePending(true);
    Play(at_);
    return;
  }
  JudgePending(false);
  if (const auto failed = FailedAhead(line)) {
    Play(*failed);
  } else if (at_ == session_.End) {
    ++count_.After;
    Send(BestAnswer(line));
  } else {
    Differ(line);
  }
}

/// The trace begins in the middle of a session: the console starts on what is known of later, and
/// the replay begins with the first tick of its poll.
bool ReplayController::LeadIn(std::string_view line) {
  if (!leadIn_) return false;
  if (Asks(line, link::Variable::Status)) {
    for (std::size_t i = session_.First; i < session_.End; ++i) {
      if (At(i).Query != line) continue;
      count_.Recorded -= i - session_.First;
      session_.First = i;
      at_ = i;
      leadIn_ = false;
      return false;
    }
  }
  ++count_.Before;
  Send(BestAnswer(line));
  return true;
}

void ReplayController::Differ(std::string_view line) {
  const TraceExchange& recorded = At(at_);
  pending_ = {.Exchange = at_ - session_.First + 1,
              .Place = recorded.Place,
              .Recorded = std::string(recorded.Query),
              .Came = std::string(line)};
  if (BeforeLastReadings()) {
    Send(BestAnswer(line));
    return;
  }
  JudgePending(false);
  Improvise(line);
}

void ReplayController::JudgePending(bool givenUp) {
  if (!pending_) return;
  const ReplayDifference difference = *std::exchange(pending_, {});
  if (givenUp) return;
  ++count_.Different;
  if (told_) told_(difference);
}

void ReplayController::Improvise(std::string_view line) {
  if (const auto ahead = Ahead(line)) {
    at_ = *ahead;
    Play(at_);
  } else {
    Send(BestAnswer(line));
  }
}

void ReplayController::Play(std::size_t exchange) {
  const TraceExchange& recorded = At(exchange);
  ++count_.Answered;
  last_ = exchange;
  if (recorded.Good) answers_[recorded.Query] = exchange;
  if (exchange == at_) {
    ++at_;
  } else {
    played_.insert(exchange);
  }
  while (played_.erase(at_) > 0) ++at_;
  std::string bytes = recorded.Bytes();
  if (!bytes.empty()) Send(std::move(bytes));
}

void ReplayController::Send(std::string bytes) {
  output_.push_back({now_ + replySeconds_, std::move(bytes)});
}

bool ReplayController::LineDead() const {
  const auto silent = [this](std::size_t exchange) {
    return !At(exchange).Good && !At(exchange).Whole();
  };
  return last_ && silent(*last_) && at_ < session_.End && silent(at_);
}

bool ReplayController::BeforeLastReadings() const {
  return session_.End - at_ <= LastReadings && Asks(At(at_).Query, link::Variable::PartsPerSheet);
}

/// The failure dialog that holds a record up lets no other command of the operator's through: only
/// the poll's table rows.
std::optional<std::size_t> ReplayController::FailedAhead(std::string_view line) const {
  const std::size_t end = std::min(session_.End, at_ + FarthestAhead);
  for (std::size_t i = at_; i < end; ++i) {
    const TraceExchange& record = At(i);
    if (record.Query == line && !played_.contains(i)) {
      return record.Good ? std::nullopt : std::optional(i);
    }
    if (record.Good && !IsQuery(record.Query) && !record.Query.starts_with(TableRow)) break;
  }
  return std::nullopt;
}

/// The state that a query asks for belongs to what was commanded: it is not looked for after the
/// next command, which is the operator's to repeat.
std::optional<std::size_t> ReplayController::Ahead(std::string_view line) const {
  const std::size_t end = std::min(session_.End, at_ + FarthestAhead);
  for (std::size_t i = at_; i < end; ++i) {
    if (At(i).Query == line && !played_.contains(i)) return i;
    if (IsQuery(line) && !IsQuery(At(i).Query)) return std::nullopt;
  }
  return std::nullopt;
}

/// The last answer to the line, or else its first one later in the session; or else as a controller
/// answers whose variables are all zero.
std::string ReplayController::BestAnswer(std::string_view line) const {
  if (const auto known = answers_.find(line); known != answers_.end()) {
    return At(known->second).Bytes();
  }
  for (std::size_t i = at_; i < session_.End; ++i) {
    if (At(i).Good && At(i).Query == line) return At(i).Bytes();
  }
  return std::string(line).append(IsQuery(line) ? "\r\n0\r\n" : "\r\n").append(Prompt);
}

std::string ReplayController::TakeOutput() {
  std::string bytes;
  while (!output_.empty() && output_.front().Due <= now_ + 1e-9) {
    bytes += output_.front().Bytes;
    output_.pop_front();
  }
  return bytes;
}

std::optional<double> ReplayController::OutputDueIn() const {
  if (output_.empty()) return std::nullopt;
  return std::max(0.0, output_.front().Due - now_);
}

}  // namespace torvane::simulator
