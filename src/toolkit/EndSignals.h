// The operating system's requests to end the program, as events of the loop.
#pragma once

#include <array>
#include <csignal>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace torvane::toolkit {

/// SIGTERM, SIGINT and SIGHUP, from construction to destruction; one of these at a time. A signal
/// that was ignored when the program started (by nohup, or a shell that put it into the background)
/// stays ignored. Needs an application object.
class EndSignals {
 public:
  /// `asked` is called from the event loop, once a signal (several at once count as one). It must
  /// not wait: it posts a job that may.
  explicit EndSignals(std::function<void()> asked);
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 private:
  static constexpr std::array<int, 3> Signals = {SIGTERM, SIGINT, SIGHUP};

  std::array<int, 2> pipe_{-1, -1};
  std::array<struct sigaction, Signals.size()> before_{};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace torvane::toolkit
