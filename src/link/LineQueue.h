// The line to the controller: one caller at a time, in the order of their coming, and what the
// controller still owes.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "core/LinkSettings.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace torvane::link {

/// What ends every reply of the controller.
inline constexpr std::string_view Prompt = ">>";

/// The controller's error mark, anywhere in a reply.
inline constexpr char ErrorMark = '%';

/// What came of one line.
struct LineReply {
  std::string Text;       ///< all that came, echo and prompt included
  bool TimedOut = false;  ///< no prompt within the limit
  bool Aborted = false;   ///< the conversation ended first; nothing is known of the reply

  [[nodiscard]] bool HasErrorMark() const { return Text.find(ErrorMark) != std::string::npos; }
  [[nodiscard]] bool Failed() const { return TimedOut || HasErrorMark(); }
};

/// Who goes before whom among those that wait. Nobody overtakes the one who has the line.
enum class LinePlace {
  Urgent,    ///< a stop
  Recovery,  ///< the request for a prompt after a failure
  Last       ///< everybody else
};

/// First come, first served. Whoever has the line sends one line and collects its reply, and keeps
/// the line until the exchange is over, its recovery included.
///
/// A reply that misses its time may still come, into the exchange of another. The queue counts what
/// it is owed: while it is owed anything, a reply that does not begin with the echo of the line in
/// hand is a late one and is dropped, and the wait goes on. The late reply may be one to the very
/// same line, so an echo that fits settles nothing; only a dropped reply does.
class LineQueue {
 public:
  class Turn;

  LineQueue(platform::EventLoop& loop, platform::SerialPort& port, core::LinkSettings& settings);
  ~LineQueue();
  LineQueue(const LineQueue&) = delete;
  LineQueue& operator=(const LineQueue&) = delete;

  // ---- for the one who has the line ----

  /// Notes the line as the last one and writes it with its carriage return.
  void Send(std::string_view line);
  /// Sleeps until the reply to the line just sent is whole or its time is over. Bytes that are in
  /// the port belong to it. With `yielding` the time is over, too, when an urgent line comes.
  [[nodiscard]] LineReply Collect(bool yielding);

  /// Drops what has come while nobody collects; bytes of a reply that is awaited are never touched.
  void FlushTrioInput();

  // ---- for everybody ----

  [[nodiscard]] bool Waiting() const { return !waiting_.empty(); }
  [[nodiscard]] bool UrgentWaiting() const;

  /// Takes those out who wait with a line that may be withdrawn; it is never sent.
  void Withdraw();

  /// Ends every exchange under way, as aborted, and all that wait for one but the urgent ones.
  /// Later ones go on as ever.
  void AbortAll();
  /// The same, and later ones end at once until `Open`.
  void Close();
  void Open();
  [[nodiscard]] bool Closed() const { return closed_; }
  /// How often exchanges were aborted: a wait within one ends when this changes.
  [[nodiscard]] std::uint64_t Aborts() const { return aborts_; }

 private:
  void TakeReceived();
  void ReplyTimeOut();
  void TakeReplies();
  /// What came up to the prompt at that place is the reply to the line in hand.
  [[nodiscard]] bool Fits(std::size_t prompt) const;
  [[nodiscard]] std::string Read();
  void DropInput();
  void Settle(std::size_t replies);

  platform::EventLoop& loop_;
  platform::SerialPort& port_;
  core::LinkSettings& settings_;
  std::unique_ptr<platform::Timer> outTimer_;
  std::list<Turn*> waiting_;
  Turn* owner_ = nullptr;
  std::string outgoing_;  ///< the line in hand with its carriage return, as its echo begins
  std::string reply_;
  std::size_t owed_ = 0;
  std::uint64_t aborts_ = 0;
  bool collecting_ = false;
  bool whole_ = false;
  bool halfPrompt_ = false;  ///< the end of what was dropped may be the first half of a late prompt
  bool closed_ = false;
};

/// One caller's hold of the line, from its coming to the end of its exchange.
class LineQueue::Turn {
 public:
  explicit Turn(LineQueue& queue, LinePlace place = LinePlace::Last, bool mayBeWithdrawn = false);
  ~Turn();
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

  /// Sleeps until the line is this caller's. False when it never will be: the conversation ended,
  /// or the line was withdrawn.
  [[nodiscard]] bool Await();
  [[nodiscard]] bool Withdrawn() const { return withdrawn_; }

 private:
  friend class LineQueue;
  LineQueue& queue_;
  LinePlace place_;
  std::uint64_t aborts_;
  bool mayBeWithdrawn_;
  bool withdrawn_ = false;
};

}  // namespace torvane::link
