// The line to the controller as one queue: who owns it, what has come for the owner, when to stop.
#pragma once

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

/// One line out and the wait for its prompt. It lives in the frame of its caller, but goes on
/// whichever frame the loop happens to run in.
struct LineSession {
  enum class State {
    Fresh,    ///< not handed to the queue yet
    Queued,   ///< another session has the line
    Pausing,  ///< sent, in the pause that a slow controller needs
    Waiting,  ///< sent, collecting the reply
    Done
  };

  std::string_view Text;  ///< without its carriage return; empty asks for a bare prompt
  bool FlushFirst = false;
  bool PauseAfterSend = false;
  bool FlushAfter = false;
  /// Takes the line at once, ahead of the queue, when this session fails while others wait:
  /// their frames stand above the caller's, which could not ask for it before they are through.
  LineSession* Recovery = nullptr;

  std::string Reply;      ///< all that came, echo and prompt included
  bool TimedOut = false;  ///< no prompt within the limit
  bool Aborted = false;   ///< the port was closed for good; nothing is known of the reply
  State Phase = State::Fresh;
  LineSession* Next = nullptr;

  [[nodiscard]] bool Done() const { return Phase == State::Done; }
  [[nodiscard]] bool HasErrorMark() const { return Reply.find(ErrorMark) != std::string::npos; }
  [[nodiscard]] bool Failed() const { return TimedOut || HasErrorMark(); }
};

/// What happens around the pause after a send.
class PauseHandler {
 public:
  virtual ~PauseHandler() = default;
  virtual void PauseBegins() = 0;
  virtual void PauseEnds() = 0;
};

/// First come, first served. The queue moves on in the events of the loop (bytes, time-out, end of
/// a pause) and never waits inside one, so it does not matter whose wait pumps the loop.
class LineQueue {
 public:
  LineQueue(platform::EventLoop& loop, platform::SerialPort& port, core::LinkSettings& settings,
            PauseHandler& pause);
  ~LineQueue();
  LineQueue(const LineQueue&) = delete;
  LineQueue& operator=(const LineQueue&) = delete;

  /// Sends at once if the line is free, otherwise behind those that wait. On a closed queue the
  /// session is over at once, aborted.
  void Enqueue(LineSession& session);

  /// The same, ahead of those that wait.
  void EnqueueFirst(LineSession& session);

  /// Sleeps in the loop until the session is done.
  void Await(const LineSession& session);

  /// Takes a session out whose caller is being left by an exception.
  void Remove(LineSession& session);

  /// Drops what has come while nobody owns the line; bytes of an owner are never touched.
  void FlushTrioInput();

  /// Ends every session now, and every later one until `Open`.
  void Close();
  void Open() { closed_ = false; }

 private:
  void StartNext();
  void Start(LineSession& session);
  void SendTrioLine(std::string_view text);
  void BeginWait();
  void TakeReceived();
  void ReplyTimeOut();
  void PauseOver();
  void Complete();
  void Abort(LineSession& session);
  void DropInput();
  [[nodiscard]] bool Collecting() const;

  platform::EventLoop& loop_;
  platform::SerialPort& port_;
  core::LinkSettings& settings_;
  PauseHandler& pause_;
  std::unique_ptr<platform::Timer> outTimer_;
  std::unique_ptr<platform::Timer> pauseTimer_;
  std::shared_ptr<LineQueue*> self_ = std::make_shared<LineQueue*>(this);
  LineSession* owner_ = nullptr;
  LineSession* first_ = nullptr;
  std::string outgoing_;
  bool closed_ = false;
};

}  // namespace torvane::link
