// Answers a console as a recorded controller answered, and finds where the console differs.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "simulator/ControllerEnd.h"
#include "simulator/ReplayTrace.h"

namespace torvane::simulator {

/// A line of the console that is not the one that the trace has next.
struct ReplayDifference {
  std::size_t Exchange = 0;  ///< of the session, from 1
  TracePlace Place;          ///< of its record
  std::string Recorded;
  std::string Came;
};

/// What became of a session.
struct ReplayCount {
  std::size_t Recorded = 0;   ///< exchanges of the session
  std::size_t Answered = 0;   ///< of these, asked for and answered
  std::size_t Different = 0;  ///< lines that came in place of others
  std::size_t After = 0;      ///< lines after the last of the trace, which says nothing of them
  std::size_t Before = 0;     ///< lines of a start that the trace has lost

  /// All went as recorded, to the end.
  [[nodiscard]] bool Good() const { return Different == 0 && Answered == Recorded; }
};

/// Plays one session of a trace after the other. What the trace does not hold is chosen so:
///
/// - Times: each answer comes at once, or after a time that is the same for all.
/// - Bare carriage returns (the request for a prompt, at the opening and after a failure): a prompt
///   comes, but for the one between two time-outs, where the line counts as dead.
/// - A failed exchange stands where its failure was answered for, later than it was sent: its line
///   may come sooner.
/// - An exchange that the end of the console gave up has no record: one line without one may come
///   before the last readings.
///
/// A line that differs is told, and the replay goes on as well as it can: a query that the trace
/// has before its next command is looked up there, and so is a command further on; any other query
/// has the answer that it had last, and any other command is taken.
class ReplayController final : public ControllerEnd {
 public:
  /// The trace outlives this.
  explicit ReplayController(const ReplayTrace& trace, double replySeconds = 0)
      : trace_(trace), replySeconds_(replySeconds) {}

  /// Told of each difference.
  void OnDifference(std::function<void(const ReplayDifference&)> told) { told_ = std::move(told); }

  /// From the first exchange of a session of the trace on.
  void Begin(std::size_t session);
  /// The console has gone.
  void EndSession();
  [[nodiscard]] const ReplayCount& Count() const { return count_; }

  void Advance(double seconds) override;
  void Receive(std::string_view bytes) override;
  [[nodiscard]] std::string TakeOutput() override;
  [[nodiscard]] std::optional<double> OutputDueIn() const override;

 private:
  struct Answer {
    double Due = 0;
    std::string Bytes;
  };

  void Obey(std::string_view line);
  [[nodiscard]] bool LeadIn(std::string_view line);
  void Differ(std::string_view line);
  void JudgePending(bool givenUp);
  void Improvise(std::string_view line);
  void Play(std::size_t exchange);
  void Send(std::string bytes);
  [[nodiscard]] bool LineDead() const;
  [[nodiscard]] bool BeforeLastReadings() const;
  [[nodiscard]] std::optional<std::size_t> FailedAhead(std::string_view line) const;
  [[nodiscard]] std::optional<std::size_t> Ahead(std::string_view line) const;
  [[nodiscard]] std::string BestAnswer(std::string_view line) const;
  [[nodiscard]] const TraceExchange& At(std::size_t exchange) const {
    return trace_.Exchanges()[exchange];
  }

  const ReplayTrace& trace_;
  double replySeconds_;
  std::function<void(const ReplayDifference&)> told_;
  TraceSession session_;
  ReplayCount count_;
  std::size_t at_ = 0;               ///< the exchange that the trace has next
  std::set<std::size_t> played_;     ///< exchanges after it that have been asked for already
  std::optional<std::size_t> last_;  ///< the one answered last
  std::map<std::string_view, std::size_t> answers_;  ///< the last good one of each line
  std::optional<ReplayDifference> pending_;
  bool leadIn_ = false;
  std::string line_;
  std::deque<Answer> output_;
  double now_ = 0;
};

}  // namespace torvane::simulator
